// The trim window over TrimFormController: the strip of video items, the
// source's preview with its play slider and in/out markers, the steppers,
// the segment table with "Add segment" and "Delete segment", the merge check
// box, and "Done" and "Cancel" (both apply the segments to the list). Keys:
// Space plays or pauses, I and O mark the in and out points, J, K and L go a
// second back, pause and play, Left and Right step one picture (with Shift
// one second), Delete deletes the selected segment.
#pragma once

#include <QDialog>

#include "Action/MainFormController.h"
#include "Action/TrimFormController.h"

class ItemStrip;
class PreviewSound;
class PreviewView;
class QCheckBox;
class QLabel;
class QTableView;
class QToolButton;
class SegmentTableModel;
class TrimMarkers;

class TrimDialog : public QDialog {
  Q_OBJECT

 public:
  // Trims `node` (or, for a segment item, the file it was cut from) of
  // `main`'s list; `main` takes the segments and hears when the window closes.
  TrimDialog(MainFormController& main, const NodeInfo::Ptr& node, QWidget* parent = nullptr);
  ~TrimDialog() override;

  TrimFormController& controller() { return controller_; }

 protected:
  void reject() override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* makeStepper(bool isStart);
  QToolButton* addButton(const QString& text, const QString& toolTip);
  void addShortcut(int key, const std::function<void()>& action);
  // The slider's length and keyframes for the file on screen.
  void showFileRange();
  void showMarkers();
  void showSteppers();
  void showSelection(int row);
  void updateButtons(bool playing);
  void togglePlaying();

  TrimFormController controller_;
  PreviewSound* sound_ = nullptr;
  PreviewView* view_ = nullptr;
  TrimMarkers* markers_ = nullptr;
  QLabel* time_ = nullptr;
  ItemStrip* strip_ = nullptr;
  QTableView* table_ = nullptr;
  SegmentTableModel* model_ = nullptr;
  QCheckBox* merge_ = nullptr;
  QToolButton* play_ = nullptr;
  QToolButton* pause_ = nullptr;
  QToolButton* stop_ = nullptr;
  QLabel* startText_ = nullptr;
  QLabel* endText_ = nullptr;
  bool paused_ = false;
  bool showing_ = false;
};
