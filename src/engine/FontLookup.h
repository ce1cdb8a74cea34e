// Finds the font file for a font name and style through fontconfig. A name
// that is not installed falls back to the default sans-serif font.
#pragma once

#include <optional>
#include <string>

namespace engine {

struct FontChoice {
  std::string file;
  int faceIndex = 0;
  // The face found lacks the asked-for style, which then has to be imitated.
  bool needsBold = false;
  bool needsSlant = false;
};

// Nothing only when no font at all is installed.
std::optional<FontChoice> findFont(const std::string& name, bool bold, bool italic);

}  // namespace engine
