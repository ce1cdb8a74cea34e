// The split window's logic: which item is on screen, the two fields and the
// radio row, and the commands of its buttons. Only the request is recorded on
// the node (splitRow, VideoMinutes, videoClips); cutting the output is the
// conversion's business. The window only draws this state and forwards input.
#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

#include "ValueObject/NodeInfo.h"

class SplitController;

// Told when the split window closes.
class SplitControllerDelegate {
 public:
  virtual ~SplitControllerDelegate() = default;
  virtual void splitWindowClose(SplitController* /*controller*/) {}
};

class SplitController : public QObject {
  Q_OBJECT

 public:
  // Rows of the radio group.
  static constexpr int kRowMinutes = 0;
  static constexpr int kRowClips = 1;

  static constexpr const char* kClipsOverLength = "Clips should not more than video length.";
  static constexpr const char* kClipsUnderOne = "Splitting clips should not be less than one clip.";
  static constexpr const char* kMinutesOverLength =
      "The durations should not be more than the original length of video.";
  static constexpr const char* kMinutesUnderOne = "Set spitting duration more than 1 minute.";

  explicit SplitController(QObject* parent = nullptr) : QObject(parent) {}

  void setDelegate(SplitControllerDelegate* delegate) { delegate_ = delegate; }

  // Opens the window on `items` and shows `selected` (the first item when null).
  void showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected = nullptr);
  bool isShown() const { return shown_; }
  const NodeInfo::List& items() const { return items_; }
  const NodeInfo::Ptr& currentNode() const { return nodeInfo_; }

  // Saves the item on screen (its answer is ignored), then shows `node`.
  void itemViewClick(const NodeInfo::Ptr& node);
  // Row 0 enables the minutes field, row 1 the clips field.
  void radioSelectClick(int row);
  void resetButtonClick();
  // Saves; the window stays open when the save is refused.
  void doneButtonClick();
  // Closes without saving the item on screen.
  void cancelButtonClick();
  bool windowShouldClose();

  // Stores the fields of the selected row into the node; false when refused
  // (after an alert) or without a node.
  bool saveData();
  bool saveMinutes();
  bool saveClips();

  // The controls' state.
  int selectedRow() const { return selectedRow_; }
  bool isMinutesEnabled() const { return selectedRow_ == kRowMinutes; }
  bool isClipsEnabled() const { return selectedRow_ == kRowClips; }
  const QString& minutesText() const { return minutesText_; }
  void setMinutesText(const QString& text) { minutesText_ = text; }
  const QString& clipsText() const { return clipsText_; }
  void setClipsText(const QString& text) { clipsText_ = text; }
  // The item's length, "%02d:%02d:%02d".
  const QString& lengthText() const { return lengthText_; }

 signals:
  // Fields, row or length changed.
  void formChanged();
  void windowClosed();

 private:
  void closeWindow();

  SplitControllerDelegate* delegate_ = nullptr;
  NodeInfo::List items_;
  NodeInfo::Ptr nodeInfo_;
  bool shown_ = false;
  int selectedRow_ = kRowClips;
  QString minutesText_;
  QString clipsText_;
  QString lengthText_;
};
