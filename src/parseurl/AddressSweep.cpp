#include "AddressSweep.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

#include "Entities.h"

namespace parseurl {
namespace {

constexpr std::array<std::string_view, 5> kSweptExtensions{".mp4", ".webm", ".flv", ".m3u8", ".mpd"};
constexpr size_t kMostAddresses = 1000;
constexpr size_t kLongestAddress = 4096;

// Characters that cannot be part of an address written in a page or script.
bool endsAddress(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0 ||
         std::string_view("\"'<>()\\`{}[],;|^").find(c) != std::string_view::npos;
}

bool isQuote(char c) { return c == '"' || c == '\''; }

// The text with the escapes JSON and scripts put in addresses undone.
std::string unescapedAddresses(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '/') {
      result += '/';
      ++i;
    } else if (text[i] == '\\' && (text.substr(i, 6) == "\\u002F" || text.substr(i, 6) == "\\u002f")) {
      result += '/';
      i += 5;
    } else if (text[i] == '\\' && text.substr(i, 6) == "\\u0026") {
      result += '&';
      i += 5;
    } else {
      result += text[i];
    }
  }
  return result;
}

// The end of a query that starts at `from`. In attributes, quotes are
// written as references, which end the query, while "&amp;" continues it.
size_t queryEnd(const std::string& text, size_t from) {
  size_t end = from;
  while (end < text.size() && end - from < kLongestAddress) {
    const std::string_view rest = std::string_view(text).substr(end);
    if (rest.starts_with("&quot;") || rest.starts_with("&#34;") || rest.starts_with("&#39;") ||
        rest.starts_with("&apos;")) {
      break;
    }
    if (rest.starts_with("&amp;")) {
      end += 5;
      continue;
    }
    if (endsAddress(text[end])) break;
    ++end;
  }
  return end;
}

// Where the address that ends at `end` begins, or npos when it is a relative
// one that no quote opens.
size_t addressStart(const std::string& text, size_t end) {
  size_t start = end;
  while (start > 0 && !endsAddress(text[start - 1])) {
    if (end - start >= kLongestAddress) return std::string::npos;
    --start;
  }
  const std::string_view candidate = std::string_view(text).substr(start, end - start);
  for (const std::string_view scheme : {"https://", "http://"}) {
    const size_t at = candidate.find(scheme);
    if (at != std::string_view::npos) return start + at;
  }
  if (candidate.starts_with("//")) return start;
  const bool quoted = start > 0 && isQuote(text[start - 1]);
  return quoted && candidate.find("://") == std::string_view::npos ? start : std::string::npos;
}

}  // namespace

std::vector<FoundVideo> videosOfAddressSweep(std::string_view pageText) {
  const std::string text = unescapedAddresses(pageText);
  std::string lower = text;
  std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });

  std::vector<std::pair<size_t, std::string>> found;  // by position, so that page order is kept
  for (const std::string_view extension : kSweptExtensions) {
    for (size_t at = lower.find(extension); at != std::string::npos && found.size() < kMostAddresses;
         at = lower.find(extension, at + 1)) {
      size_t end = at + extension.size();
      if (end < text.size() && (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '_' ||
                                text[end] == '/' || text[end] == '.' || text[end] == '-')) {
        continue;
      }
      if (end < text.size() && text[end] == '?') end = queryEnd(text, end);
      const size_t start = addressStart(text, at);
      if (start == std::string::npos || start == at) continue;
      found.emplace_back(start, decodeEntities(std::string_view(text).substr(start, end - start)));
    }
  }
  std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });

  std::vector<FoundVideo> videos;
  for (auto& [position, address] : found) {
    FoundVideo video;
    video.url = std::move(address);
    videos.push_back(std::move(video));
  }
  return videos;
}

}  // namespace parseurl
