// Filters that change the look of the picture: brightness, contrast and
// saturation, the special effects and the 3D anaglyphs. Each returns a chain
// for a filter description, empty when the setting leaves the picture as is.
#pragma once

#include <string>

#include "videoconverter.h"

namespace engine {

// Effect ids of MediaItem::m_EffectID[0] and [1].
enum EffectId {
  kEffectEmboss = 1034,
  kEffectOldFilm = 1035,
  kEffectGray = 1036,
  kAnaglyphRedBlue = 1071,
  kAnaglyphRedGreen = 1072,
  kAnaglyphYellowBlue = 1073,
};

// Brightness -255..255, contrast and saturation -200..200; 0 leaves each unchanged.
std::string levelsFilter(const MediaItem& item);
std::string specialEffectFilter(const MediaItem& item);
// A red/blue, red/green or yellow/blue picture made of two views of the
// picture shifted apart; the parallax grows with m_pEffectArgs[1].arg1 and
// its sign says which view moves right.
std::string anaglyphFilter(const MediaItem& item, int pictureWidth);

}  // namespace engine
