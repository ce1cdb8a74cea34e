#include "ScriptLiteral.h"

#include <cctype>
#include <charconv>
#include <cmath>

#include "Entities.h"

namespace parseurl {
namespace {

constexpr int kDeepestNesting = 32;

bool isNameCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$' || (c & 0x80) != 0;
}

class LiteralReader {
 public:
  LiteralReader(std::string_view text, size_t position) : text_(text), position_(position) {}

  std::optional<Json> value(int depth) {
    skipSpace();
    if (atEnd() || depth > kDeepestNesting) return std::nullopt;
    const char c = text_[position_];
    std::optional<Json> result;
    if (c == '{') {
      result = object(depth);
    } else if (c == '[') {
      result = array(depth);
    } else if (c == '"' || c == '\'' || c == '`') {
      result = string();
    } else {
      result = word();
    }
    if (!result || depth == 0) return result;
    // Anything but a separator after a member makes it part of an expression.
    skipSpace();
    if (!atEnd() && text_[position_] != ',' && text_[position_] != '}' && text_[position_] != ']') {
      if (!skipExpression()) return std::nullopt;
      return Json();
    }
    return result;
  }

  size_t position() const { return position_; }

 private:
  bool atEnd() const { return position_ >= text_.size(); }

  void skipSpace() {
    while (!atEnd()) {
      if (std::isspace(static_cast<unsigned char>(text_[position_]))) {
        ++position_;
      } else if (text_.substr(position_, 2) == "//") {
        const size_t end = text_.find('\n', position_);
        position_ = end == std::string_view::npos ? text_.size() : end;
      } else if (text_.substr(position_, 2) == "/*") {
        const size_t end = text_.find("*/", position_ + 2);
        position_ = end == std::string_view::npos ? text_.size() : end + 2;
      } else {
        return;
      }
    }
  }

  std::optional<Json> object(int depth) {
    ++position_;
    Json result = Json::object();
    while (true) {
      skipSpace();
      if (atEnd()) return std::nullopt;
      if (text_[position_] == '}') {
        ++position_;
        return result;
      }
      std::optional<std::string> key = name();
      skipSpace();
      if (!key || atEnd() || text_[position_] != ':') return std::nullopt;
      ++position_;
      std::optional<Json> member = value(depth + 1);
      if (!member) return std::nullopt;
      result[*key] = std::move(*member);
      if (!separator('}')) return std::nullopt;
    }
  }

  std::optional<Json> array(int depth) {
    ++position_;
    Json result = Json::array();
    while (true) {
      skipSpace();
      if (atEnd()) return std::nullopt;
      if (text_[position_] == ']') {
        ++position_;
        return result;
      }
      std::optional<Json> element = value(depth + 1);
      if (!element) return std::nullopt;
      result.push_back(std::move(*element));
      if (!separator(']')) return std::nullopt;
    }
  }

  // After a member: a comma (consumed) or the closing bracket (left in place).
  bool separator(char closing) {
    skipSpace();
    if (atEnd()) return false;
    if (text_[position_] == ',') {
      ++position_;
      return true;
    }
    return text_[position_] == closing;
  }

  std::optional<std::string> name() {
    if (text_[position_] == '"' || text_[position_] == '\'') {
      std::optional<Json> quoted = string();
      return quoted ? std::optional<std::string>(quoted->get<std::string>()) : std::nullopt;
    }
    const size_t start = position_;
    while (!atEnd() && isNameCharacter(text_[position_])) ++position_;
    if (position_ == start) return std::nullopt;
    return std::string(text_.substr(start, position_ - start));
  }

  std::optional<Json> string() {
    const char quote = text_[position_++];
    std::string result;
    while (!atEnd() && text_[position_] != quote) {
      const char c = text_[position_++];
      if (c != '\\') {
        result += c;
        continue;
      }
      if (atEnd()) return std::nullopt;
      const char escaped = text_[position_++];
      switch (escaped) {
        case 'n': result += '\n'; break;
        case 't': result += '\t'; break;
        case 'r': result += '\r'; break;
        case 'b': result += '\b'; break;
        case 'f': result += '\f'; break;
        case 'u': appendUtf8(result, codeUnits(4)); break;
        case 'x': appendUtf8(result, hexValue(2).value_or(0xFFFD)); break;
        default: result += escaped; break;
      }
    }
    if (atEnd()) return std::nullopt;
    ++position_;
    return Json(std::move(result));
  }

  // The code point of "\uXXXX", joined with a following low surrogate.
  char32_t codeUnits(size_t digits) {
    const std::optional<char32_t> high = hexValue(digits);
    if (!high) return 0xFFFD;
    if (*high >= 0xD800 && *high <= 0xDBFF && text_.substr(position_, 2) == "\\u") {
      const size_t saved = position_;
      position_ += 2;
      const std::optional<char32_t> low = hexValue(4);
      if (low && *low >= 0xDC00 && *low <= 0xDFFF) return 0x10000 + ((*high - 0xD800) << 10) + (*low - 0xDC00);
      position_ = saved;
    }
    return *high;
  }

  std::optional<char32_t> hexValue(size_t digits) {
    if (position_ + digits > text_.size()) return std::nullopt;
    uint32_t value = 0;
    const char* start = text_.data() + position_;
    const auto [end, error] = std::from_chars(start, start + digits, value, 16);
    if (error != std::errc() || end != start + digits) return std::nullopt;
    position_ += digits;
    return value;
  }

  // A number, true, false, null or undefined; anything else is an
  // expression, skipped and read as null.
  std::optional<Json> word() {
    const size_t start = position_;
    while (!atEnd() && (isNameCharacter(text_[position_]) || text_[position_] == '.' || text_[position_] == '-' ||
                        text_[position_] == '+')) {
      ++position_;
    }
    const std::string_view token = text_.substr(start, position_ - start);
    if (token == "true") return Json(true);
    if (token == "false") return Json(false);
    if (token == "null" || token == "undefined") return Json();
    double number = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
    if (!token.empty() && error == std::errc() && end == token.data() + token.size() && std::isfinite(number)) {
      return Json(number);
    }
    position_ = start;
    if (!skipExpression()) return std::nullopt;
    return Json();
  }

  // Moves to the ',', '}' or ']' that ends the expression here; false when
  // the text ends first.
  bool skipExpression() {
    int depth = 0;
    while (!atEnd()) {
      const char c = text_[position_];
      if (c == '"' || c == '\'' || c == '`') {
        if (!string()) return false;
        continue;
      }
      if (c == '(' || c == '[' || c == '{') ++depth;
      if (c == ')' || c == ']' || c == '}') {
        if (depth == 0) return c != ')';
        --depth;
      }
      if (c == ',' && depth == 0) return true;
      ++position_;
    }
    return false;
  }

  std::string_view text_;
  size_t position_;
};

}  // namespace

std::optional<Json> readScriptLiteral(std::string_view script, size_t& position) {
  if (position >= script.size() || (script[position] != '{' && script[position] != '[')) return std::nullopt;
  LiteralReader reader(script, position);
  std::optional<Json> literal = reader.value(0);
  if (literal) position = reader.position();
  return literal;
}

}  // namespace parseurl
