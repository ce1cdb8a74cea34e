#include "Address.h"

#include <curl/curl.h>

#include <algorithm>
#include <cctype>
#include <memory>

namespace parseurl {
namespace {

struct UrlHandleDeleter {
  void operator()(CURLU* handle) const { curl_url_cleanup(handle); }
};
using UrlHandle = std::unique_ptr<CURLU, UrlHandleDeleter>;

std::string part(CURLU* handle, CURLUPart which, unsigned flags = 0) {
  char* text = nullptr;
  if (curl_url_get(handle, which, &text, flags) != CURLUE_OK || text == nullptr) return {};
  std::string result(text);
  curl_free(text);
  return result;
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

std::string_view trimmed(std::string_view text) {
  const auto isSpace = [](unsigned char c) { return std::isspace(c) != 0; };
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

bool isWebScheme(const std::string& scheme) { return scheme == "http" || scheme == "https"; }

// The parsed form of an absolute web address; null when it is not one.
UrlHandle parsedWebAddress(std::string_view address) {
  UrlHandle handle(curl_url());
  std::string text(trimmed(address));
  if (text.starts_with("//")) {
    text.insert(0, "http:");
  } else if (!text.empty() && text.find("://") == std::string::npos) {
    text.insert(0, "http://");
  }
  if (!handle || text.empty() ||
      curl_url_set(handle.get(), CURLUPART_URL, text.c_str(), CURLU_URLENCODE) != CURLUE_OK) {
    return nullptr;
  }
  if (!isWebScheme(lowerCase(part(handle.get(), CURLUPART_SCHEME))) || part(handle.get(), CURLUPART_HOST).empty()) {
    return nullptr;
  }
  return handle;
}

}  // namespace

std::string webAddress(std::string_view text) {
  UrlHandle handle = parsedWebAddress(text);
  return handle ? part(handle.get(), CURLUPART_URL) : std::string();
}

std::string resolveAddress(const std::string& base, std::string_view reference) {
  const std::string text(trimmed(reference));
  if (text.empty()) return {};
  UrlHandle handle = parsedWebAddress(base);
  if (!handle) return {};
  if (curl_url_set(handle.get(), CURLUPART_URL, text.c_str(), CURLU_URLENCODE) != CURLUE_OK) return {};
  if (!isWebScheme(lowerCase(part(handle.get(), CURLUPART_SCHEME))) || part(handle.get(), CURLUPART_HOST).empty()) {
    return {};
  }
  return part(handle.get(), CURLUPART_URL);
}

std::string hostOf(std::string_view address) {
  UrlHandle handle = parsedWebAddress(address);
  return handle ? lowerCase(part(handle.get(), CURLUPART_HOST)) : std::string();
}

std::string lastPathPart(std::string_view address) {
  UrlHandle handle = parsedWebAddress(address);
  if (!handle) return {};
  std::string path = part(handle.get(), CURLUPART_PATH, CURLU_URLDECODE);
  while (!path.empty() && path.back() == '/') path.pop_back();
  const size_t slash = path.rfind('/');
  std::string last = slash == std::string::npos ? path : path.substr(slash + 1);
  return last.empty() ? part(handle.get(), CURLUPART_HOST) : last;
}

std::string pathExtension(std::string_view address) {
  UrlHandle handle = parsedWebAddress(address);
  if (!handle) return {};
  const std::string path = part(handle.get(), CURLUPART_PATH);
  const size_t slash = path.rfind('/');
  const size_t dot = path.rfind('.');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return {};
  const std::string extension = lowerCase(path.substr(dot + 1));
  const bool plain = !extension.empty() && extension.size() <= 5 &&
                     std::all_of(extension.begin(), extension.end(), [](unsigned char c) { return std::isalnum(c); });
  const bool digitsOnly =
      std::all_of(extension.begin(), extension.end(), [](unsigned char c) { return std::isdigit(c); });
  return plain && !digitsOnly ? extension : std::string();
}

}  // namespace parseurl
