// Fetching a page, a manifest or the first bytes of a media file over HTTP
// with libcurl: redirects followed, a time limit, a size limit, and a stop
// as soon as the response shows itself to be media.
#pragma once

#include <cstdint>
#include <string>

#include "Deadline.h"
#include "MediaType.h"

namespace parseurl {

struct FetchedResource {
  int result = 0;  // a ParseResult
  long status = 0;
  std::string finalAddress;  // after redirects
  std::string contentType;
  // The whole body; only its first bytes when it is media.
  std::string body;
  int64_t contentLength = -1;  // as announced; -1 when not
  // Media, or a manifest, by the content type or else by the first bytes.
  SniffedKind kind;
};

// Fetches `address` within the deadline, reading at most `maxBytes` of a
// body that is not media.
FetchedResource fetchResource(const std::string& address, const Deadline& deadline, int64_t maxBytes);

}  // namespace parseurl
