#include "XmlTags.h"

#include <algorithm>
#include <cctype>

#include "Entities.h"

namespace parseurl {
namespace {

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

bool isNameCharacter(char c) { return !isSpace(c) && c != '=' && c != '>' && c != '/' && c != '"' && c != '\''; }

std::string localName(std::string_view name) {
  const size_t colon = name.find(':');
  std::string local(colon == std::string_view::npos ? name : name.substr(colon + 1));
  std::transform(local.begin(), local.end(), local.begin(), [](unsigned char c) { return std::tolower(c); });
  return local;
}

// Reads the tag whose '<' is at `start`; the position after it, or npos.
size_t readTag(std::string_view text, size_t start, XmlTag& tag) {
  size_t position = start + 1;
  if (position < text.size() && text[position] == '/') {
    tag.isEnd = true;
    ++position;
  }
  const size_t nameStart = position;
  while (position < text.size() && isNameCharacter(text[position])) ++position;
  tag.name = localName(text.substr(nameStart, position - nameStart));
  while (position < text.size()) {
    while (position < text.size() && isSpace(text[position])) ++position;
    if (position >= text.size()) break;
    if (text[position] == '>') return position + 1;
    if (text.substr(position, 2) == "/>") {
      tag.isSelfClosing = true;
      return position + 2;
    }
    const size_t attributeStart = position;
    while (position < text.size() && isNameCharacter(text[position])) ++position;
    const std::string name = localName(text.substr(attributeStart, position - attributeStart));
    while (position < text.size() && isSpace(text[position])) ++position;
    if (position >= text.size() || text[position] != '=') {
      if (position == attributeStart) ++position;  // a stray character
      continue;
    }
    ++position;
    while (position < text.size() && isSpace(text[position])) ++position;
    if (position >= text.size() || (text[position] != '"' && text[position] != '\'')) continue;
    const size_t close = text.find(text[position], position + 1);
    if (close == std::string_view::npos) return std::string_view::npos;
    tag.attributes[name] = decodeEntities(text.substr(position + 1, close - position - 1));
    position = close + 1;
  }
  return std::string_view::npos;
}

}  // namespace

void forEachXmlTag(std::string_view text, const std::function<void(const XmlTag&)>& visit) {
  size_t position = 0;
  while ((position = text.find('<', position)) != std::string_view::npos) {
    const std::string_view rest = text.substr(position);
    if (rest.starts_with("<!--")) {
      const size_t end = text.find("-->", position + 4);
      if (end == std::string_view::npos) return;
      position = end + 3;
      continue;
    }
    if (rest.starts_with("<?") || rest.starts_with("<!")) {
      const size_t end = text.find('>', position);
      if (end == std::string_view::npos) return;
      position = end + 1;
      continue;
    }
    XmlTag tag;
    position = readTag(text, position, tag);
    if (position == std::string_view::npos) return;
    if (!tag.name.empty()) visit(tag);
  }
}

}  // namespace parseurl
