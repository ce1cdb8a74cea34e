#include "MediaType.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace parseurl {
namespace {

using namespace std::string_view_literals;

constexpr std::array<std::string_view, 24> kMediaExtensions{"mp4",  "m4v", "mov", "webm", "flv", "f4v",  "mkv",  "avi",
                                                            "wmv",  "asf", "ogv", "ogg",  "3gp", "mpg",  "mpeg", "ts",
                                                            "m2ts", "mp3", "m4a", "aac",  "wav", "flac", "opus", "oga"};

// Extensions of what is surely no video: pictures, player programs, pages, data.
constexpr std::array<std::string_view, 21> kOtherExtensions{"jpg",   "jpeg", "png", "gif",  "webp", "bmp",  "svg",
                                                            "ico",   "avif", "tif", "tiff", "swf",  "html", "htm",
                                                            "xhtml", "js",   "css", "json", "xml",  "txt",  "pdf"};

// Types whose extension is not their sub-type's name.
constexpr std::array<std::pair<std::string_view, std::string_view>, 13> kTypeExtensions{{
    {"video/x-flv", "flv"},
    {"video/quicktime", "mov"},
    {"video/x-matroska", "mkv"},
    {"video/x-msvideo", "avi"},
    {"video/x-ms-wmv", "wmv"},
    {"video/x-ms-asf", "asf"},
    {"video/mp2t", "ts"},
    {"video/3gpp", "3gp"},
    {"video/mpeg", "mpg"},
    {"audio/mpeg", "mp3"},
    {"audio/mp4", "m4a"},
    {"audio/x-m4a", "m4a"},
    {"audio/x-wav", "wav"},
}};

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](unsigned char c) { return std::tolower(c); });
  return result;
}

// The type without parameters and spaces, in lower case.
std::string bareType(std::string_view type) {
  std::string result = lowerCase(type.substr(0, type.find(';')));
  std::erase_if(result, [](unsigned char c) { return std::isspace(c) != 0; });
  return result;
}

bool startsWith(std::string_view bytes, size_t offset, std::string_view signature) {
  return bytes.size() >= offset + signature.size() && bytes.substr(offset, signature.size()) == signature;
}

}  // namespace

ResourceKind kindOfExtension(std::string_view extension) {
  if (extension.empty()) return ResourceKind::Unknown;
  if (extension == "m3u8") return ResourceKind::HlsManifest;
  if (extension == "mpd") return ResourceKind::DashManifest;
  if (std::find(kMediaExtensions.begin(), kMediaExtensions.end(), extension) != kMediaExtensions.end()) {
    return ResourceKind::Media;
  }
  if (std::find(kOtherExtensions.begin(), kOtherExtensions.end(), extension) != kOtherExtensions.end()) {
    return ResourceKind::Other;
  }
  return ResourceKind::Unknown;
}

ResourceKind kindOfType(std::string_view type) {
  const std::string bare = bareType(type);
  if (bare.empty() || bare == "application/octet-stream" || bare == "binary/octet-stream") {
    return ResourceKind::Unknown;
  }
  if (bare == "hls" || bare == "m3u8" || bare.find("mpegurl") != std::string::npos) return ResourceKind::HlsManifest;
  if (bare == "dash" || bare == "mpd" || bare == "application/dash+xml") return ResourceKind::DashManifest;
  if (bare.starts_with("video/") || bare.starts_with("audio/")) return ResourceKind::Media;
  if (bare.find('/') == std::string::npos) return kindOfExtension(bare);
  return ResourceKind::Other;
}

std::string extensionOfType(std::string_view type) {
  const std::string bare = bareType(type);
  const auto* known = std::find_if(kTypeExtensions.begin(), kTypeExtensions.end(),
                                   [&bare](const auto& entry) { return entry.first == bare; });
  if (known != kTypeExtensions.end()) return std::string(known->second);
  const size_t slash = bare.find('/');
  const std::string subtype = slash == std::string::npos ? bare : bare.substr(slash + 1);
  return kindOfExtension(subtype) == ResourceKind::Media ? subtype : std::string();
}

SniffedKind sniffBytes(std::string_view bytes) {
  if (startsWith(bytes, 4, "ftyp"sv)) return {ResourceKind::Media, "mp4"};
  if (startsWith(bytes, 0, "\x1A\x45\xDF\xA3"sv)) {
    const bool webm = bytes.substr(0, 64).find("webm") != std::string_view::npos;
    return {ResourceKind::Media, webm ? "webm" : "mkv"};
  }
  if (startsWith(bytes, 0, "FLV\x01"sv)) return {ResourceKind::Media, "flv"};
  if (startsWith(bytes, 0, "OggS"sv)) return {ResourceKind::Media, "ogg"};
  if (startsWith(bytes, 0, "RIFF"sv) && startsWith(bytes, 8, "AVI "sv)) return {ResourceKind::Media, "avi"};
  if (startsWith(bytes, 0, "RIFF"sv) && startsWith(bytes, 8, "WAVE"sv)) return {ResourceKind::Media, "wav"};
  if (startsWith(bytes, 0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv)) return {ResourceKind::Media, "wmv"};
  if (startsWith(bytes, 0, "ID3"sv)) return {ResourceKind::Media, "mp3"};
  if (bytes.size() > 188 && bytes[0] == 0x47 && bytes[188] == 0x47) return {ResourceKind::Media, "ts"};
  if (startsWith(bytes, 0, "\x00\x00\x01\xBA"sv)) return {ResourceKind::Media, "mpg"};

  size_t start = 0;
  if (startsWith(bytes, 0, "\xEF\xBB\xBF"sv)) start = 3;
  while (start < bytes.size() && std::isspace(static_cast<unsigned char>(bytes[start]))) ++start;
  if (startsWith(bytes, start, "#EXTM3U"sv)) return {ResourceKind::HlsManifest, {}};
  const std::string head = lowerCase(bytes.substr(start, kSniffBytes));
  if (head.starts_with("<?xml") || head.starts_with("<mpd")) {
    if (head.find("<mpd") != std::string::npos) return {ResourceKind::DashManifest, {}};
  }
  return {};
}

bool looksBinary(std::string_view bytes) {
  // UTF-16 text is full of zero bytes.
  if (startsWith(bytes, 0, "\xFF\xFE"sv) || startsWith(bytes, 0, "\xFE\xFF"sv)) return false;
  return std::any_of(
      bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(bytes.size(), kSniffBytes)), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r' && byte != '\f' && byte != 0x1B;
      });
}

}  // namespace parseurl
