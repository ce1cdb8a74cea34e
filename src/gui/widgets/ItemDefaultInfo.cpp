#include "ItemDefaultInfo.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QVariantMap>

#include <algorithm>

#include "CommonClass/PropertyList.h"
#include "CommonClass/StandardPaths.h"
#include "widgets/SkinImage.h"

namespace {

struct ImageKey {
  const char* key;
  QIcon ItemDefaultInfo::*field;
};

struct RectKey {
  const char* key;
  QString ItemDefaultInfo::*field;
};

// In the order the file is read.
const ImageKey kImageKeys[] = {
    {"bgImage", &ItemDefaultInfo::bgImage},
    {"controllImage", &ItemDefaultInfo::controllImage},
    {"controllMoveImage", &ItemDefaultInfo::controllMoveImage},
    {"controllHightImage", &ItemDefaultInfo::controllHightImage},
    {"expandImage", &ItemDefaultInfo::expandImage},
    {"expandHightImage", &ItemDefaultInfo::expandHightImage},
    {"videoImage", &ItemDefaultInfo::videoImage},
    {"videoImage2", &ItemDefaultInfo::videoImage2},
    {"videoIco", &ItemDefaultInfo::videoIco},
    {"audioIco", &ItemDefaultInfo::audioIco},
    {"audioBgImage", &ItemDefaultInfo::audioBgImage},
    {"audioBgImage-Hot", &ItemDefaultInfo::audioHotBgImage},
    {"timeIco", &ItemDefaultInfo::timeIco},
    {"resolutionIco", &ItemDefaultInfo::resolutionIco},
    {"sizeIco", &ItemDefaultInfo::sizeIco},
    {"buttonImage", &ItemDefaultInfo::buttonImage},
    {"buttonMoveImage", &ItemDefaultInfo::buttonMoveImage},
    {"buttonHightImage", &ItemDefaultInfo::buttonHightImage},
    {"closeImage", &ItemDefaultInfo::closeImage},
    {"closeMoveImage", &ItemDefaultInfo::closeMoveImage},
    {"closeHightImage", &ItemDefaultInfo::closeHightImage},
    {"metaEditButtonImage", &ItemDefaultInfo::metaEditImage},
    {"metaEditButtonMoveImage", &ItemDefaultInfo::metaEditMoveImage},
    {"metaEditButtonHightImage", &ItemDefaultInfo::metaEditHightImage},
    {"profileImage", &ItemDefaultInfo::profileImage},
    {"profileHightImage", &ItemDefaultInfo::profileHightImage},
    {"preButtonImage", &ItemDefaultInfo::preButtonImage},
    {"preButtonMoveImage", &ItemDefaultInfo::preButtonMoveImage},
    {"preButtonHightImage", &ItemDefaultInfo::preButtonHightImage},
    {"nextButtonImage", &ItemDefaultInfo::nextButtonImage},
    {"nextButtonMoveImage", &ItemDefaultInfo::nextButtonMoveImage},
    {"nextButtonHightImage", &ItemDefaultInfo::nextButtonHightImage},
    {"progressFillImage", &ItemDefaultInfo::progressFillImage},
    {"progressBgImage", &ItemDefaultInfo::progressBgImage},
    {"stopButtonImage", &ItemDefaultInfo::stopButtonImage},
    {"stopButtonMoveImage", &ItemDefaultInfo::stopButtonMoveImage},
    {"stopButtonHightImage", &ItemDefaultInfo::stopButtonHightImage},
};

const RectKey kRectKeys[] = {
    {"controllRect", &ItemDefaultInfo::controllRect},
    {"expandRect", &ItemDefaultInfo::expandRect},
    {"videoIcoRect", &ItemDefaultInfo::videoIcoRect},
    {"videoImageRect", &ItemDefaultInfo::videoImageRect},
    {"videoNameRect", &ItemDefaultInfo::videoNameRect},
    {"audioIcoRect", &ItemDefaultInfo::audioIcoRect},
    {"audioRect", &ItemDefaultInfo::audioRect},
    {"timeIcoRect", &ItemDefaultInfo::timeIcoRect},
    {"timeRect", &ItemDefaultInfo::timeRect},
    {"resolutionIcoRect", &ItemDefaultInfo::resolutionIcoRect},
    {"resolutionRect", &ItemDefaultInfo::resolutionRect},
    {"sizeIcoRect", &ItemDefaultInfo::sizeIcoRect},
    {"sizeRect", &ItemDefaultInfo::sizeRect},
    {"buttonRect", &ItemDefaultInfo::buttonRect},
    {"closeButtonRect", &ItemDefaultInfo::closeButtonRect},
    {"metaEditButtonRect", &ItemDefaultInfo::metaEditButtonRect},
    {"profileImageRect", &ItemDefaultInfo::profileImageRect},
    {"preButtonRect", &ItemDefaultInfo::preButtonRect},
    {"nextButtonRect", &ItemDefaultInfo::nextButtonRect},
    {"progressRect", &ItemDefaultInfo::progressRect},
    {"stopButtonRect", &ItemDefaultInfo::stopButtonRect},
};

}  // namespace

QString ItemDefaultInfo::skinFolder() { return StandardPaths::resourcePath() + QStringLiteral("/skin/classical/form/"); }

QRect ItemDefaultInfo::rectFromString(const QString& text) {
  static const QRegularExpression notation(QStringLiteral(
      "^\\s*\\{\\s*\\{\\s*(-?\\d+)\\s*,\\s*(-?\\d+)\\s*\\}\\s*,\\s*\\{\\s*(\\d+)\\s*,\\s*(\\d+)\\s*\\}\\s*\\}\\s*$"));
  const QRegularExpressionMatch match = notation.match(text);
  if (!match.hasMatch()) return {};
  return {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt(), match.captured(4).toInt()};
}

QRect ItemDefaultInfo::placed(const QString& text, const QRect& row) {
  QRect rect = rectFromString(text);
  if (rect.isEmpty()) return {};
  const int extra = std::max(0, row.width() - kDesignWidth);
  if (rect.x() >= kRightGroupX) {
    rect.translate(extra, 0);
  } else if (rect.right() >= kRightGroupX - 20) {
    rect.setWidth(rect.width() + extra);
  }
  return rect.translated(row.topLeft());
}

void ItemDefaultInfo::initInfo(const QPalette& palette, const QString& skinFolder) {
  const QString layoutFile = QStringLiteral("%1VideoItemView.plist").arg(skinFolder);
  if (!QFileInfo::exists(layoutFile)) return;
  const QVariantMap layout = PropertyList::readFile(layoutFile).value_or(QVariant()).toMap();
  for (const ImageKey& image : kImageKeys) {
    const QString name = layout.value(QLatin1String(image.key)).toString();
    this->*image.field = name.isEmpty() ? QIcon() : SkinImage::load(QStringLiteral("%1/%2").arg(skinFolder, name), palette);
  }
  for (const RectKey& rect : kRectKeys) this->*rect.field = layout.value(QLatin1String(rect.key)).toString();
}
