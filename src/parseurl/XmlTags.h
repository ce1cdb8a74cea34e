// The tags of an XML document in order, for manifests, which need no more
// than their elements' names, attributes and nesting.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace parseurl {

struct XmlTag {
  std::string name;                               // in lower case, without a namespace prefix
  bool isEnd = false;                             // </name>
  bool isSelfClosing = false;                     // <name/>
  std::map<std::string, std::string> attributes;  // names in lower case, values with references decoded
};

// Calls `visit` for each start and end tag; comments, declarations and
// processing instructions are skipped. Stops at a tag that does not close.
void forEachXmlTag(std::string_view text, const std::function<void(const XmlTag&)>& visit);

}  // namespace parseurl
