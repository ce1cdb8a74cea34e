#include "FontLookup.h"

#include <fontconfig/fontconfig.h>

#include <memory>
#include <mutex>

namespace engine {
namespace {

struct PatternDeleter {
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using PatternPtr = std::unique_ptr<FcPattern, PatternDeleter>;

struct FontRequest {
  std::string family;
  bool bold;
  bool italic;
};

// Names such as "Helvetica-BoldOblique" carry the style after a dash.
FontRequest requestFor(const std::string& name, bool bold, bool italic) {
  const std::size_t dash = name.rfind('-');
  if (dash == std::string::npos) return {name, bold, italic};
  const std::string style = name.substr(dash + 1);
  const bool styleBold = style.find("Bold") != std::string::npos;
  const bool styleItalic = style.find("Italic") != std::string::npos || style.find("Oblique") != std::string::npos;
  if (!styleBold && !styleItalic) return {name, bold, italic};
  return {name.substr(0, dash), bold || styleBold, italic || styleItalic};
}

PatternPtr bestMatch(const FontRequest& request) {
  PatternPtr pattern(FcPatternCreate());
  if (pattern == nullptr) return nullptr;
  if (!request.family.empty()) {
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(request.family.c_str()));
  }
  // Weaker than the name asked for: used when that family is not installed.
  FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
  FcPatternAddInteger(pattern.get(), FC_WEIGHT, request.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern.get(), FC_SLANT, request.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
  FcDefaultSubstitute(pattern.get());
  FcResult result = FcResultNoMatch;
  return PatternPtr(FcFontMatch(nullptr, pattern.get(), &result));
}

}  // namespace

std::optional<FontChoice> findFont(const std::string& name, bool bold, bool italic) {
  // fontconfig's default configuration is loaded once and shared; matching is kept to one thread at a time.
  static std::mutex lookupMutex;
  std::lock_guard lock(lookupMutex);
  if (!FcInit()) return std::nullopt;
  const FontRequest request = requestFor(name, bold, italic);
  const PatternPtr match = bestMatch(request);
  FcChar8* file = nullptr;
  if (match == nullptr || FcPatternGetString(match.get(), FC_FILE, 0, &file) != FcResultMatch) return std::nullopt;
  FontChoice choice;
  choice.file = reinterpret_cast<const char*>(file);
  FcPatternGetInteger(match.get(), FC_INDEX, 0, &choice.faceIndex);
  int weight = FC_WEIGHT_REGULAR;
  int slant = FC_SLANT_ROMAN;
  FcPatternGetInteger(match.get(), FC_WEIGHT, 0, &weight);
  FcPatternGetInteger(match.get(), FC_SLANT, 0, &slant);
  choice.needsBold = request.bold && weight < FC_WEIGHT_DEMIBOLD;
  choice.needsSlant = request.italic && slant == FC_SLANT_ROMAN;
  return choice;
}

}  // namespace engine
