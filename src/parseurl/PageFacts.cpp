#include "PageFacts.h"

#include <algorithm>
#include <cctype>

#include "HtmlTree.h"

namespace parseurl {
namespace {

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

Attributes attributesOf(const GumboNode& element) {
  Attributes attributes;
  const GumboVector& list = element.v.element.attributes;
  for (unsigned i = 0; i < list.length; ++i) {
    const auto* attribute = static_cast<const GumboAttribute*>(list.data[i]);
    attributes.emplace(attribute->name, attribute->value);
  }
  return attributes;
}

// The address in a refresh's content, as in "0; url=/next" or "5;URL='next'".
std::string refreshAddress(const std::string& content) {
  const size_t key = lowerCase(content).find("url");
  if (key == std::string::npos) return {};
  size_t start = content.find('=', key);
  if (start == std::string::npos) return {};
  ++start;
  while (start < content.size() && (content[start] == ' ' || content[start] == '\'' || content[start] == '"')) ++start;
  size_t end = content.size();
  while (end > start && (content[end - 1] == ' ' || content[end - 1] == '\'' || content[end - 1] == '"')) --end;
  return content.substr(start, end - start);
}

void readMeta(const GumboNode& element, PageFacts& facts) {
  const std::string content = attribute(element, "content");
  if (lowerCase(attribute(element, "http-equiv")) == "refresh") {
    if (facts.refreshTarget.empty()) facts.refreshTarget = refreshAddress(content);
    return;
  }
  for (const char* keyAttribute : {"property", "name", "itemprop"}) {
    const std::string key = attribute(element, keyAttribute);
    if (!key.empty()) {
      facts.metas.push_back({lowerCase(key), content});
      return;
    }
  }
}

void readFacts(std::string_view html, PageFacts& facts, bool readDataHtml) {
  const HtmlTree tree(html);
  std::vector<std::string> dataHtmlBlocks;
  tree.forEachElement([&](const GumboNode& element) {
    const GumboTag tag = element.v.element.tag;
    if (tag == GUMBO_TAG_BASE && facts.baseHref.empty()) {
      facts.baseHref = attribute(element, "href");
    } else if (tag == GUMBO_TAG_TITLE && facts.title.empty()) {
      facts.title = collapsedWhiteSpace(ownText(element));
    } else if (tag == GUMBO_TAG_META) {
      readMeta(element, facts);
    } else if (tag == GUMBO_TAG_SCRIPT) {
      facts.scripts.push_back({lowerCase(attribute(element, "type")), ownText(element)});
    } else if (tag == GUMBO_TAG_VIDEO || tag == GUMBO_TAG_AUDIO) {
      MediaElementFacts media{attributesOf(element), {}};
      tree.forEachElement(
          [&media](const GumboNode& inner) {
            if (inner.v.element.tag == GUMBO_TAG_SOURCE) media.sources.push_back(attributesOf(inner));
          },
          &element);
      facts.mediaElements.push_back(std::move(media));
    }
    if (readDataHtml && hasAttribute(element, "data-html")) dataHtmlBlocks.push_back(attribute(element, "data-html"));
  });
  for (const std::string& block : dataHtmlBlocks) {
    PageFacts inner;
    readFacts(block, inner, false);
    std::move(inner.mediaElements.begin(), inner.mediaElements.end(), std::back_inserter(facts.mediaElements));
  }
}

}  // namespace

std::string collapsedWhiteSpace(std::string_view text) {
  std::string result;
  bool pendingSpace = false;
  for (const char c : text) {
    if (std::isspace(static_cast<unsigned char>(c))) {
      pendingSpace = !result.empty();
      continue;
    }
    if (pendingSpace) result += ' ';
    pendingSpace = false;
    result += c;
  }
  return result;
}

PageFacts readPageFacts(std::string_view html) {
  PageFacts facts;
  readFacts(html, facts, true);
  return facts;
}

}  // namespace parseurl
