#include "HtmlTree.h"

#include <vector>

namespace parseurl {

HtmlTree::HtmlTree(std::string_view text)
    : output_(gumbo_parse_with_options(&kGumboDefaultOptions, text.data(), text.size())) {}

HtmlTree::~HtmlTree() { gumbo_destroy_output(&kGumboDefaultOptions, output_); }

void HtmlTree::forEachElement(const std::function<void(const GumboNode&)>& visit, const GumboNode* from) const {
  std::vector<const GumboNode*> pending{from != nullptr ? from : output_->root};
  while (!pending.empty()) {
    const GumboNode* node = pending.back();
    pending.pop_back();
    if (node->type != GUMBO_NODE_ELEMENT && node->type != GUMBO_NODE_TEMPLATE) continue;
    if (node != from) visit(*node);
    const GumboVector& children = node->v.element.children;
    for (unsigned i = children.length; i > 0; --i)
      pending.push_back(static_cast<const GumboNode*>(children.data[i - 1]));
  }
}

std::string attribute(const GumboNode& element, const char* name) {
  const GumboAttribute* found = gumbo_get_attribute(&element.v.element.attributes, name);
  return found != nullptr ? std::string(found->value) : std::string();
}

bool hasAttribute(const GumboNode& element, const char* name) {
  return gumbo_get_attribute(&element.v.element.attributes, name) != nullptr;
}

std::string ownText(const GumboNode& element) {
  std::string text;
  const GumboVector& children = element.v.element.children;
  for (unsigned i = 0; i < children.length; ++i) {
    const auto* child = static_cast<const GumboNode*>(children.data[i]);
    if (child->type == GUMBO_NODE_TEXT || child->type == GUMBO_NODE_CDATA || child->type == GUMBO_NODE_WHITESPACE) {
      text += child->v.text.text;
    }
  }
  return text;
}

}  // namespace parseurl
