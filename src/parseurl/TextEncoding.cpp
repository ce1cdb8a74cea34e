#include "TextEncoding.h"

#include <iconv.h>

#include <algorithm>
#include <cctype>
#include <cerrno>

#include "Entities.h"

namespace parseurl {
namespace {

// How far into a page a <meta> charset declaration is looked for.
constexpr size_t kMetaScanBytes = 4096;

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](unsigned char c) { return std::tolower(c); });
  return result;
}

bool isValidUtf8(std::string_view bytes) {
  size_t i = 0;
  while (i < bytes.size()) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    size_t length = 0;
    if (lead < 0x80) {
      length = 1;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
      length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4;
    } else {
      return false;
    }
    if (i + length > bytes.size()) return false;
    for (size_t k = 1; k < length; ++k) {
      if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0) != 0x80) return false;
    }
    i += length;
  }
  return true;
}

std::string_view byteOrderMarkCharset(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return "utf-8";
  if (bytes.starts_with("\xFF\xFE")) return "utf-16le";
  if (bytes.starts_with("\xFE\xFF")) return "utf-16be";
  return {};
}

// The "charset" parameter of a content type or a <meta> content, in lower
// case without quotes; empty when there is none.
std::string charsetParameter(std::string_view text) {
  const std::string lower = lowerCase(text);
  const size_t key = lower.find("charset");
  if (key == std::string::npos) return {};
  size_t position = key + 7;
  while (position < lower.size() &&
         (lower[position] == ' ' || lower[position] == '=' || lower[position] == '"' || lower[position] == '\'')) {
    ++position;
  }
  size_t end = position;
  while (end < lower.size() && (std::isalnum(static_cast<unsigned char>(lower[end])) || lower[end] == '-' ||
                                lower[end] == '_' || lower[end] == ':' || lower[end] == '.')) {
    ++end;
  }
  return lower.substr(position, end - position);
}

// The charset of the first <meta charset=...> or <meta content="...; charset=...">.
std::string metaCharset(std::string_view bytes) {
  const std::string head = lowerCase(bytes.substr(0, kMetaScanBytes));
  for (size_t meta = head.find("<meta"); meta != std::string::npos; meta = head.find("<meta", meta + 5)) {
    const size_t end = head.find('>', meta);
    const std::string charset = charsetParameter(std::string_view(head).substr(meta, end - meta));
    if (!charset.empty()) return charset;
  }
  return {};
}

// The name iconv knows a charset by: pages labelled Latin-1 or ASCII are
// read as windows-1252, as browsers do.
std::string iconvName(const std::string& charset) {
  if (charset == "iso-8859-1" || charset == "latin1" || charset == "us-ascii" || charset == "ascii") {
    return "WINDOWS-1252";
  }
  return charset;
}

}  // namespace

std::string pageCharset(std::string_view bytes, std::string_view contentType) {
  if (const std::string_view mark = byteOrderMarkCharset(bytes); !mark.empty()) return std::string(mark);
  if (std::string charset = charsetParameter(contentType); !charset.empty()) return charset;
  if (std::string charset = metaCharset(bytes); !charset.empty()) return charset;
  return isValidUtf8(bytes) ? "utf-8" : "windows-1252";
}

std::string toUtf8(std::string_view bytes, const std::string& charset) {
  const std::string_view mark = byteOrderMarkCharset(bytes);
  if (mark == "utf-8") bytes.remove_prefix(3);
  if (!mark.empty() && mark != "utf-8") bytes.remove_prefix(2);

  iconv_t converter = iconv_open("UTF-8", iconvName(charset).c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) converter = iconv_open("UTF-8", "WINDOWS-1252");
  if (converter == reinterpret_cast<iconv_t>(-1)) return std::string(bytes);

  std::string out;
  out.reserve(bytes.size() + bytes.size() / 4);
  char* input = const_cast<char*>(bytes.data());
  size_t inputLeft = bytes.size();
  char buffer[4096];
  while (inputLeft > 0) {
    char* output = buffer;
    size_t outputLeft = sizeof(buffer);
    const size_t converted = iconv(converter, &input, &inputLeft, &output, &outputLeft);
    out.append(buffer, static_cast<size_t>(output - buffer));
    if (converted != static_cast<size_t>(-1)) break;
    if (errno == E2BIG) continue;
    // An invalid or cut-off sequence: mark it and go on after its first byte.
    appendUtf8(out, 0xFFFD);
    ++input;
    --inputLeft;
  }
  iconv_close(converter);
  return out;
}

}  // namespace parseurl
