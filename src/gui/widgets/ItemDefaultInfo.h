// The shared layout of one row of the media list, read once from the skin's
// VideoItemView.plist: the pictures of every part of a row and the rectangle
// of each part, kept as the text the file holds ("{{x, y}, {w, h}}"). A
// missing file leaves every field empty; a missing picture leaves its field
// empty. Nothing is reported either way.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QRect>
#include <QString>

class ItemDefaultInfo {
 public:
  // The row the rectangles were drawn for.
  static constexpr int kDesignWidth = 720;
  static constexpr int kRowHeight = 84;
  // Parts from this x on belong to the right-hand group, which stays at the
  // row's right edge; the texts before it widen with the row.
  static constexpr int kRightGroupX = 500;

  // The skin folder of the list's layout: <resources>/skin/classical/form/.
  static QString skinFolder();
  // A rectangle in the file's notation; an empty rectangle for other text.
  static QRect rectFromString(const QString& text);
  // The rectangle `text` names, placed in a row drawn at `row`.
  static QRect placed(const QString& text, const QRect& row);

  // Reads the layout from `skinFolder`'s VideoItemView.plist, drawing the
  // pictures in `palette`'s colours.
  void initInfo(const QPalette& palette, const QString& skinFolder = ItemDefaultInfo::skinFolder());

  // Pictures: no suffix is the plain look, Move the pointer over it, Hight pressed or on.
  // The background is drawn top down, as the file's "flipped" background is meant.
  QIcon bgImage;
  QIcon controllImage, controllMoveImage, controllHightImage;
  QIcon expandImage, expandHightImage;
  QIcon videoImage, videoImage2, videoIco;
  QIcon audioIco, audioBgImage, audioHotBgImage;
  QIcon timeIco, resolutionIco, sizeIco;
  QIcon buttonImage, buttonMoveImage, buttonHightImage;
  QIcon closeImage, closeMoveImage, closeHightImage;
  QIcon metaEditImage, metaEditMoveImage, metaEditHightImage;
  QIcon profileImage, profileHightImage;
  QIcon preButtonImage, preButtonMoveImage, preButtonHightImage;
  QIcon nextButtonImage, nextButtonMoveImage, nextButtonHightImage;
  QIcon progressFillImage, progressBgImage;
  QIcon stopButtonImage, stopButtonMoveImage, stopButtonHightImage;

  // Rectangles, as text.
  QString controllRect, expandRect, videoIcoRect, videoImageRect, videoNameRect;
  QString audioIcoRect, audioRect, timeIcoRect, timeRect, resolutionIcoRect, resolutionRect;
  QString sizeIcoRect, sizeRect, buttonRect, closeButtonRect, metaEditButtonRect, profileImageRect;
  QString preButtonRect, nextButtonRect, progressRect, stopButtonRect;
};
