#include "Entities.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

namespace parseurl {
namespace {

// The named references that pages and feeds use in titles and addresses.
constexpr std::array<std::pair<std::string_view, char32_t>, 44> kNamed{{
    {"amp", U'&'},     {"lt", U'<'},      {"gt", U'>'},      {"quot", U'"'},    {"apos", U'\''},   {"nbsp", 0xA0},
    {"iexcl", 0xA1},   {"cent", 0xA2},    {"pound", 0xA3},   {"yen", 0xA5},     {"sect", 0xA7},    {"copy", 0xA9},
    {"laquo", 0xAB},   {"reg", 0xAE},     {"deg", 0xB0},     {"middot", 0xB7},  {"raquo", 0xBB},   {"iquest", 0xBF},
    {"Agrave", 0xC0},  {"Aacute", 0xC1},  {"Auml", 0xC4},    {"Ccedil", 0xC7},  {"Eacute", 0xC9},  {"Ouml", 0xD6},
    {"times", 0xD7},   {"Uuml", 0xDC},    {"szlig", 0xDF},   {"agrave", 0xE0},  {"aacute", 0xE1},  {"auml", 0xE4},
    {"ccedil", 0xE7},  {"egrave", 0xE8},  {"eacute", 0xE9},  {"iacute", 0xED},  {"ntilde", 0xF1},  {"oacute", 0xF3},
    {"ouml", 0xF6},    {"uuml", 0xFC},    {"ndash", 0x2013}, {"mdash", 0x2014}, {"lsquo", 0x2018}, {"rsquo", 0x2019},
    {"ldquo", 0x201C}, {"rdquo", 0x201D},
}};

constexpr size_t kLongestReference = 10;

// The code point of the reference between '&' and ';', or 0 when none.
char32_t referencedCodePoint(std::string_view name) {
  if (name.size() > 1 && name[0] == '#') {
    const bool hex = name[1] == 'x' || name[1] == 'X';
    const std::string_view digits = name.substr(hex ? 2 : 1);
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, hex ? 16 : 10);
    if (error != std::errc() || end != digits.data() + digits.size() || digits.empty()) return 0;
    return value == 0 || value > 0x10FFFF ? 0 : value;
  }
  const auto* found =
      std::find_if(kNamed.begin(), kNamed.end(), [name](const auto& entry) { return entry.first == name; });
  return found == kNamed.end() ? 0 : found->second;
}

}  // namespace

void appendUtf8(std::string& out, char32_t codePoint) {
  if ((codePoint >= 0xD800 && codePoint <= 0xDFFF) || codePoint > 0x10FFFF) codePoint = 0xFFFD;
  if (codePoint < 0x80) {
    out += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    out += static_cast<char>(0xC0 | (codePoint >> 6));
    out += static_cast<char>(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    out += static_cast<char>(0xE0 | (codePoint >> 12));
    out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (codePoint & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (codePoint >> 18));
    out += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (codePoint & 0x3F));
  }
}

std::string decodeEntities(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  size_t position = 0;
  while (position < text.size()) {
    const size_t ampersand = text.find('&', position);
    if (ampersand == std::string_view::npos) break;
    out.append(text.substr(position, ampersand - position));
    const size_t semicolon = text.substr(ampersand + 1, kLongestReference + 1).find(';');
    const char32_t codePoint =
        semicolon == std::string_view::npos ? 0 : referencedCodePoint(text.substr(ampersand + 1, semicolon));
    if (codePoint == 0) {
      out += '&';
      position = ampersand + 1;
      continue;
    }
    appendUtf8(out, codePoint);
    position = ampersand + semicolon + 2;
  }
  out.append(text.substr(position));
  return out;
}

}  // namespace parseurl
