#include "PictureEffects.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "FilterText.h"

namespace engine {
namespace {

// Relief from the 3 x 3 emboss kernel; its weights add up to 1, which keeps flat areas as they were.
constexpr const char* kEmboss = "format=gray,convolution=0m='-2 -1 0 -1 1 1 0 1 2'";
// Sepia toning, moving grain, darker corners and a slight flicker of the light.
constexpr const char* kOldFilm =
    "colorchannelmixer=.393:.769:.189:0:.349:.686:.168:0:.272:.534:.131,"
    "noise=alls=14:allf=t,vignette=angle=PI/4,"
    "eq=brightness=0.035*sin(t*37)*sin(t*11):eval=frame";

// Channel mixes: the left view feeds the first colour, the right view the second.
struct AnaglyphMix {
  std::string left;
  std::string right;
};

// The grey level of a view (luma weights) into one output channel: what a coloured lens lets through.
std::string greyInto(char channel) {
  const std::string c(1, channel);
  return c + "r=.299:" + c + "g=.587:" + c + "b=.114";
}

AnaglyphMix mixFor(int mode) {
  const std::string noRed = "rr=0", noGreen = "gg=0", noBlue = "bb=0";
  switch (mode) {
    case kAnaglyphRedBlue:
      return {greyInto('r') + ":" + noGreen + ":" + noBlue, noRed + ":" + noGreen + ":" + greyInto('b')};
    case kAnaglyphRedGreen:
      return {greyInto('r') + ":" + noGreen + ":" + noBlue, noRed + ":" + greyInto('g') + ":" + noBlue};
    case kAnaglyphYellowBlue:
      return {greyInto('r') + ":" + greyInto('g') + ":" + noBlue, noRed + ":" + noGreen + ":" + greyInto('b')};
    default: return {};
  }
}

// Moves the picture sideways by `pixels` (right when positive), filling with black.
std::string shifted(int pixels) {
  if (pixels == 0) return "null";
  const std::string amount = std::to_string(std::abs(pixels));
  if (pixels > 0) return "pad=iw+" + amount + ":ih:" + amount + ":0,crop=iw-" + amount + ":ih:0:0";
  return "pad=iw+" + amount + ":ih:0:0,crop=iw-" + amount + ":ih:" + amount + ":0";
}

}  // namespace

std::string levelsFilter(const MediaItem& item) {
  const int brightness = item.m_brightness;
  const int contrast = item.m_Contrast;
  const int saturation = item.m_satruation;
  if (brightness == 0 && contrast == 0 && saturation == 0) return {};
  return "eq=brightness=" + decimal(std::clamp(brightness, -255, 255) / 255.0) +
         ":contrast=" + decimal(1.0 + std::clamp(contrast, -200, 200) / 200.0) +
         ":saturation=" + decimal(1.0 + std::clamp(saturation, -200, 200) / 200.0);
}

std::string specialEffectFilter(const MediaItem& item) {
  switch (item.m_EffectID[0]) {
    case kEffectGray: return "format=gray";
    case kEffectEmboss: return kEmboss;
    case kEffectOldFilm: return kOldFilm;
    default: return {};
  }
}

std::string anaglyphFilter(const MediaItem& item, int pictureWidth) {
  const AnaglyphMix mix = mixFor(item.m_EffectID[1]);
  if (mix.left.empty()) return {};
  // At the deepest setting (20) the views are a twentieth of the width apart.
  const int parallax = static_cast<int>(std::lround(item.m_pEffectArgs[1].arg1 * pictureWidth / 400.0));
  const int leftShift = parallax / 2 + parallax % 2;
  const int rightShift = leftShift - parallax;
  return "format=gbrp,split[left3d][right3d];[left3d]" + shifted(leftShift) + ",colorchannelmixer=" + mix.left +
         "[leftmix3d];[right3d]" + shifted(rightShift) + ",colorchannelmixer=" + mix.right +
         "[rightmix3d];[leftmix3d][rightmix3d]blend=all_mode=addition";
}

}  // namespace engine
