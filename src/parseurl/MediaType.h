// What kind of resource an address, a declared type or the first bytes of a
// response are: a media file, a streaming manifest, or something else.
#pragma once

#include <string>
#include <string_view>

namespace parseurl {

enum class ResourceKind {
  Unknown,       // nothing said either way
  Media,         // a video or sound file
  HlsManifest,   // an HLS playlist (.m3u8)
  DashManifest,  // a DASH manifest (.mpd)
  Other,         // a picture, a page, a player program, ...
};

// What a lower-case file extension says ("mp4", "m3u8", "jpg"); Unknown for
// extensions that say nothing either way ("php").
ResourceKind kindOfExtension(std::string_view extension);

// What a MIME type says ("video/mp4; codecs=...", "application/x-mpegURL"),
// and the short forms players use for it ("mp4", "hls", "dash").
ResourceKind kindOfType(std::string_view type);

// The file extension of a media type ("video/webm" gives "webm"); empty when
// it names none.
std::string extensionOfType(std::string_view type);

// What the first bytes of a response are, with the extension of the format
// when they are media.
struct SniffedKind {
  ResourceKind kind = ResourceKind::Unknown;
  std::string extension;
};
SniffedKind sniffBytes(std::string_view firstBytes);

// True when the bytes hold control characters that no text has.
bool looksBinary(std::string_view firstBytes);

// The number of bytes sniffBytes() and looksBinary() need to decide.
inline constexpr size_t kSniffBytes = 512;

}  // namespace parseurl
