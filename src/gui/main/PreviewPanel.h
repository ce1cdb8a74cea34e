// The preview area of the main window: the picture of the current item and
// the player's controls (play, pause, stop, position slider, the
// "position|length" label, snapshot and snapshot folder).
#pragma once

#include <QStyle>
#include <QWidget>

#include "ValueObject/NodeInfo.h"

class QLabel;
class QSlider;
class QToolButton;

class PreviewPanel : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewPanel(QWidget* parent = nullptr);

  // Shows `item`'s picture and length; nothing when null.
  void setItem(const NodeInfo::Ptr& item);
  // Playback needs the player; until then only the still picture is shown.
  void setPlaybackAvailable(bool available);

 signals:
  void snapshotFolderRequested();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QToolButton* addButton(QStyle::StandardPixmap icon, const QString& toolTip);
  void showPicture();

  QLabel* stage_ = nullptr;
  QSlider* slider_ = nullptr;
  QLabel* time_ = nullptr;
  QToolButton* play_ = nullptr;
  QToolButton* pause_ = nullptr;
  QToolButton* stop_ = nullptr;
  QToolButton* snapshot_ = nullptr;
  QToolButton* snapshotFolder_ = nullptr;
  QString picturePath_;
};
