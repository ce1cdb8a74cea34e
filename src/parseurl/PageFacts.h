// What the techniques of the analysis read from a page, gathered in one walk
// of its tree: the base address, the titles, the meta tags, the media
// elements with their sources, the scripts, and the HTML kept in "data-html"
// attributes.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace parseurl {

using Attributes = std::map<std::string, std::string>;

// A <video> or <audio>.
struct MediaElementFacts {
  Attributes attributes;
  std::vector<Attributes> sources;  // its <source> elements
};

struct MetaFacts {
  std::string key;  // "property", "name" or "itemprop", in lower case
  std::string content;
};

struct ScriptFacts {
  std::string type;  // in lower case; empty for plain scripts
  std::string text;
};

struct PageFacts {
  std::string baseHref;
  std::string title;          // of <title>, white space collapsed
  std::string refreshTarget;  // address of a <meta http-equiv="refresh">
  std::vector<MetaFacts> metas;
  std::vector<MediaElementFacts> mediaElements;
  std::vector<ScriptFacts> scripts;
};

// Reads a page (UTF-8). The media elements inside "data-html" attributes are
// read as well, one level deep.
PageFacts readPageFacts(std::string_view html);

// Text with runs of white space made one space, trimmed.
std::string collapsedWhiteSpace(std::string_view text);

}  // namespace parseurl
