#include "OutputResolution.h"

#include <QStringList>

#include <algorithm>

#include "FitGeometry.h"

namespace OutputResolution {

namespace {

using geometry::Size;

// The fit mode's shape; the original one turns with the picture, and any
// other value keeps the size.
Size shaped(Size size, int32_t fitMode, int32_t rotateAngle) {
  const auto mode = static_cast<geometry::FitMode>(fitMode);
  if (mode == geometry::FitMode::kWide || mode == geometry::FitMode::kStandard) return geometry::fitShape(size, mode);
  if (mode == geometry::FitMode::kOriginal) return geometry::turnedSize(size, rotateAngle);
  return size;
}

// Scales by the ratio of the dimension that is furthest off, keeping the shape.
Size scaledToward(Size size, int boundWidth, int boundHeight, bool shrinking) {
  const double widthRatio = static_cast<double>(size.width) / boundWidth;
  const double heightRatio = static_cast<double>(size.height) / boundHeight;
  const bool widthLeads = shrinking ? widthRatio > heightRatio : heightRatio > widthRatio;
  if (widthLeads) return {boundWidth, static_cast<int>(size.height / widthRatio)};
  return {static_cast<int>(size.width / heightRatio), boundHeight};
}

// Keeps the size within the profile's bounds; a maximum of 0 sets no bound.
Size fitted(Size size, const ProfileSettingInfo& profile) {
  const bool bounded = profile.maxWidth() > 0 && profile.maxHeight() > 0;
  if (size.width >= profile.minWidth() && size.height >= profile.minHeight()) {
    if (!bounded || (size.width <= profile.maxWidth() && size.height <= profile.maxHeight())) return size;
    size = scaledToward(size, profile.maxWidth(), profile.maxHeight(), true);
    return {std::max(size.width, profile.minWidth()), std::max(size.height, profile.minHeight())};
  }
  size = scaledToward(size, profile.minWidth(), profile.minHeight(), false);
  if (!bounded) return size;
  return {std::min(size.width, profile.maxWidth()), std::min(size.height, profile.maxHeight())};
}

}  // namespace

QSizeF forNode(const NodeInfo& node) {
  const ProfileSettingInfo& profile = node.curProfileSetting();
  if (profile.type() != ProfileSettingInfo::kTypeVideo || profile.videoResolution().isEmpty()) return {0, 0};
  const QStringList parts = profile.videoResolution().split(QLatin1Char('x'));
  const int fixedWidth = parts.value(0).toInt();
  const int fixedHeight = parts.value(1).toInt();
  if (fixedWidth != 0 && fixedHeight != 0) return QSizeF(fixedWidth, fixedHeight);

  const CropSettingInfo& crop = node.cropSettingInfo();
  if (crop.w() == 0 && crop.h() == 0) return {320, 240};
  Size size = shaped({crop.w(), crop.h()}, crop.zoom(), node.effectSettingInfo().rotateAngle());
  size = fitted(size, profile);
  return QSizeF(size.width / 4 * 4, size.height / 4 * 4);
}

}  // namespace OutputResolution
