#include "PageFetch.h"

#include <curl/curl.h>

#include <memory>
#include <mutex>

#include "parseurl.h"

namespace parseurl {
namespace {

constexpr const char* kUserAgent =
    "Mozilla/5.0 (X11; Linux x86_64) AppleWebKit/537.36 (KHTML, like Gecko) Chrome/120.0 Safari/537.36";
constexpr long kMostRedirects = 10;

struct CurlDeleter {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};

// What the body callback saw, and why it stopped the transfer.
struct Transfer {
  CURL* curl = nullptr;
  int64_t maxBytes = 0;
  std::string body;
  SniffedKind kind;
  bool headChecked = false;
  bool sniffed = false;
  bool stoppedAtMedia = false;
  bool errorStatus = false;
  bool tooLarge = false;
};

SniffedKind kindOfContentType(const char* contentType) {
  const std::string type = contentType != nullptr ? contentType : "";
  const ResourceKind kind = kindOfType(type);
  if (kind == ResourceKind::Media || kind == ResourceKind::HlsManifest || kind == ResourceKind::DashManifest) {
    return {kind, extensionOfType(type)};
  }
  return {};
}

size_t receiveBody(char* data, size_t size, size_t count, void* context) {
  auto& transfer = *static_cast<Transfer*>(context);
  const size_t bytes = size * count;
  transfer.body.append(data, bytes);
  if (!transfer.headChecked) {
    transfer.headChecked = true;
    long status = 0;
    curl_easy_getinfo(transfer.curl, CURLINFO_RESPONSE_CODE, &status);
    if (status >= 400) {
      transfer.errorStatus = true;
      return 0;
    }
    char* contentType = nullptr;
    curl_easy_getinfo(transfer.curl, CURLINFO_CONTENT_TYPE, &contentType);
    transfer.kind = kindOfContentType(contentType);
  }
  if (!transfer.sniffed && transfer.body.size() >= kSniffBytes) {
    transfer.sniffed = true;
    if (transfer.kind.kind == ResourceKind::Unknown) transfer.kind = sniffBytes(transfer.body);
  }
  if (transfer.kind.kind == ResourceKind::Media && transfer.sniffed) {
    transfer.stoppedAtMedia = true;
    return 0;
  }
  if (static_cast<int64_t>(transfer.body.size()) > transfer.maxBytes) {
    transfer.tooLarge = true;
    return 0;
  }
  return bytes;
}

int resultOf(CURLcode code, const Transfer& transfer, long status) {
  if (transfer.stoppedAtMedia) return PARSE_OK;
  if (transfer.errorStatus) return PARSE_ERROR_HTTP_STATUS;
  if (transfer.tooLarge) return PARSE_ERROR_TOO_LARGE;
  switch (code) {
    case CURLE_OK: return status >= 300 ? PARSE_ERROR_HTTP_STATUS : PARSE_OK;
    case CURLE_OPERATION_TIMEDOUT: return PARSE_ERROR_TIMEOUT;
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL: return PARSE_ERROR_ADDRESS;
    default: return PARSE_ERROR_CONNECTION;
  }
}

}  // namespace

FetchedResource fetchResource(const std::string& address, const Deadline& deadline, int64_t maxBytes) {
  static std::once_flag curlStarted;
  std::call_once(curlStarted, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });

  FetchedResource fetched;
  if (deadline.passed()) {
    fetched.result = PARSE_ERROR_TIMEOUT;
    return fetched;
  }
  const std::unique_ptr<CURL, CurlDeleter> curl(curl_easy_init());
  if (!curl) {
    fetched.result = PARSE_ERROR_CONNECTION;
    return fetched;
  }
  Transfer transfer;
  transfer.curl = curl.get();
  transfer.maxBytes = maxBytes;
  curl_easy_setopt(curl.get(), CURLOPT_URL, address.c_str());
  curl_easy_setopt(curl.get(), CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(curl.get(), CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(curl.get(), CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(curl.get(), CURLOPT_MAXREDIRS, kMostRedirects);
  curl_easy_setopt(curl.get(), CURLOPT_TIMEOUT_MS, static_cast<long>(deadline.remaining().count()));
  curl_easy_setopt(curl.get(), CURLOPT_NOSIGNAL, 1L);
  // No compressed bodies are asked for, so that a media file's announced
  // length is its size.
  curl_easy_setopt(curl.get(), CURLOPT_USERAGENT, kUserAgent);
  // Cookies set by one response of a redirect chain go with the next request.
  curl_easy_setopt(curl.get(), CURLOPT_COOKIEFILE, "");
  curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, receiveBody);
  curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, &transfer);
  const CURLcode code = curl_easy_perform(curl.get());

  curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &fetched.status);
  char* finalAddress = nullptr;
  curl_easy_getinfo(curl.get(), CURLINFO_EFFECTIVE_URL, &finalAddress);
  fetched.finalAddress = finalAddress != nullptr ? finalAddress : address;
  char* contentType = nullptr;
  curl_easy_getinfo(curl.get(), CURLINFO_CONTENT_TYPE, &contentType);
  fetched.contentType = contentType != nullptr ? contentType : "";
  curl_off_t contentLength = -1;
  curl_easy_getinfo(curl.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &contentLength);
  fetched.contentLength = contentLength;

  fetched.result = resultOf(code, transfer, fetched.status);
  if (!transfer.sniffed && transfer.kind.kind == ResourceKind::Unknown) transfer.kind = sniffBytes(transfer.body);
  fetched.kind = transfer.kind;
  fetched.body = std::move(transfer.body);
  return fetched;
}

}  // namespace parseurl
