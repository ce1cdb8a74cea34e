// The preview area of the main window: the current item played through the
// preview player, with play, pause, stop, the position slider, the
// "position|length" label, snapshot and snapshot folder. Before playing, and
// after stopping, the item's thumbnail stands in the picture's place.
#pragma once

#include <QStyle>
#include <QWidget>

#include "Action/PlayVideoAction.h"
#include "ValueObject/NodeInfo.h"

class PreviewSound;
class PreviewView;
class QLabel;
class QSlider;
class QToolButton;

class PreviewPanel : public QWidget, public PlayVideoActionDelegate {
  Q_OBJECT

 public:
  explicit PreviewPanel(QWidget* parent = nullptr);
  ~PreviewPanel() override;

  // Shows `item`, stopping what played unless it is the same item; nothing when null.
  void setItem(const NodeInfo::Ptr& item);
  // The item's settings changed: a playing preview shows them at once.
  void itemEdited(const NodeInfo::Ptr& item);
  void stop();
  // Saves the current picture as image type 4 (PNG), 3 (JPEG) or else BMP; 0 on success.
  int32_t takeSnapshot(const QString& path, int32_t imageType);

  PlayVideoAction& player() { return player_; }
  PreviewView* view() const { return view_; }

 signals:
  void snapshotRequested();
  void snapshotFolderRequested();

 private:
  void playVideoEnd() override;
  QToolButton* addButton(QStyle::StandardPixmap icon, const QString& toolTip);
  void play();
  void togglePlaying();
  void updateButtons();
  // "00:00:00|<length>" of the item while nothing plays.
  void showLength();
  void showSlider(double minimum, double value, double maximum);

  PlayVideoAction player_;
  PreviewSound* sound_ = nullptr;
  PreviewView* view_ = nullptr;
  QSlider* slider_ = nullptr;
  QLabel* time_ = nullptr;
  QToolButton* play_ = nullptr;
  QToolButton* pause_ = nullptr;
  QToolButton* stop_ = nullptr;
  QToolButton* snapshot_ = nullptr;
  QToolButton* snapshotFolder_ = nullptr;
  NodeInfo::Ptr item_;
  bool paused_ = false;
};
