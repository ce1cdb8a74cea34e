// A page parsed by gumbo, with the few ways the readers walk it.
#pragma once

#include <gumbo.h>

#include <functional>
#include <string>
#include <string_view>

namespace parseurl {

class HtmlTree {
 public:
  explicit HtmlTree(std::string_view text);
  ~HtmlTree();
  HtmlTree(const HtmlTree&) = delete;
  HtmlTree& operator=(const HtmlTree&) = delete;

  // Calls `visit` for every element below `from` (the whole document when
  // null), in document order, without recursion however deep the tree is.
  void forEachElement(const std::function<void(const GumboNode&)>& visit, const GumboNode* from = nullptr) const;

 private:
  GumboOutput* output_;
};

// The value of an attribute (names are lower case); empty when absent.
std::string attribute(const GumboNode& element, const char* name);
bool hasAttribute(const GumboNode& element, const char* name);
// The text directly inside an element (a <title>, a <script>).
std::string ownText(const GumboNode& element);

}  // namespace parseurl
