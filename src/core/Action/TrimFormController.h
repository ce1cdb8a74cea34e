// The trim window's logic: the file on screen among the strip's items, its
// segment table, the in and out markers with their steppers, and the preview
// of the source. Closing the window, and leaving a file for another, always
// applies the segments to the list ("Done" and "Cancel" alike): nothing made
// here can be discarded. The window draws this state and forwards input.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

#include <cstdint>

#include "Action/PlayVideoAction.h"
#include "Action/TrimCommit.h"
#include "Action/TrimSegmentList.h"
#include "ValueObject/NodeInfo.h"
#include "ValueObject/UIInfoDB.h"

class TrimFormController : public QObject, public PlayVideoActionDelegate {
  Q_OBJECT

 public:
  // Posted by the markers while they are dragged, with the seconds as object.
  static constexpr const char* kStartTimeChange = "StartTimeChange";
  static constexpr const char* kEndTimeChange = "EndTimeChange";
  // A dragged marker seeks once it has rested this long.
  static constexpr int kSeekDelay = 150;  // milliseconds
  static constexpr double kStepperIncrement = 1.0;
  // Markers set from the play position or a stepper stay this far apart, the in marker first.
  static constexpr double kLeastSegment = 1.0;

  // `db` holds the main list the segments go to; not owned.
  explicit TrimFormController(UIInfoDB& db, QObject* parent = nullptr);
  ~TrimFormController() override;

  void setDelegate(TrimFormDelegate* delegate) { delegate_ = delegate; }
  // The preview of the source: set its view before showing the window.
  PlayVideoAction& player() { return player_; }

  // The source a list item stands for: a segment item's source, else the item.
  static NodeInfo::Ptr trimSourceOf(const NodeInfo::Ptr& item);
  // The strip's items: the sources of the list's items that have a picture, each once.
  static NodeInfo::List getSuitableNode(UIInfoDB& db);

  // Opens the window on the strip's `items` showing `selected` (the first when null).
  void showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected = nullptr);
  bool isShown() const { return shown_; }
  const NodeInfo::List& items() const { return items_; }
  const NodeInfo::Ptr& nodeInfo() const { return nodeInfo_; }
  int selectVideoIndex() const { return static_cast<int>(items_.indexOf(nodeInfo_)); }
  // Another file of the strip: the current one is applied first.
  void itemViewClick(const NodeInfo::Ptr& node);

  const TrimSegmentList& segments() const { return segments_; }
  int selectedRow() const { return selectedRow_; }
  // A row of the table was selected: the markers show it and the preview goes to its start.
  void tableViewSelectDidChange(int row);
  void addSegment();
  void deleteSegment();

  // The markers (seconds) and the range they move in.
  double leftMarker() const { return leftMarker_; }
  double rightMarker() const { return rightMarker_; }
  double markerMaximum() const;
  // Where the file on screen has keyframes (seconds), drawn under the markers.
  const QVector<double>& keyframeTimes() const { return keyframeTimes_; }
  // A marker dragged, as its notification tells.
  void startTimeChange(double seconds);
  void endTimeChange(double seconds);
  // "Mark as in" / "Mark as out": the marker goes to the play position (kept on its side of the other).
  void trimButtonGoLeft();
  void trimButtonGoRight();
  // The steppers: a step of one second, and OK, which moves the marker there (kept on its side of the other).
  double startStepperValue() const { return startStepper_; }
  double endStepperValue() const { return endStepper_; }
  QString startStepperText() const;
  QString endStepperText() const;
  void stepStart(int direction);
  void stepEnd(int direction);
  void setStartStepper(double seconds);
  void setEndStepper(double seconds);
  void trimStartOKButtonClick();
  void trimEndOKButtonClick();
  // The preview goes to the in marker.
  void trimComeLeft();

  bool isMergeChecked() const { return merge_; }
  void setMergeChecked(bool checked) { merge_ = checked; }

  // "Play" plays the source from its start; "Play triming movies" from the in marker.
  void playButtonClick();
  void pauseButtonClick();
  void stopButtonClick();
  void playTrimingMovies();

  // Applies the segments to the list.
  void addTrimNodeInfo();
  // "Done" and "Cancel" both close, and closing applies.
  void doneButtonClick() { windowShouldClose(); }
  void cancelButtonClick() { windowShouldClose(); }
  bool windowShouldClose();

  // PlayVideoActionDelegate: the end of the source sends the preview back to its start.
  void playVideoEnd() override;

 signals:
  // The segment rows changed (their number or their times).
  void tableChanged();
  void selectionChanged(int row);
  void markersChanged();
  void steppersChanged();
  void playingChanged(bool playing);
  void windowClosed();

 private:
  NodeInfo::Ptr selectedSegment() const { return selectedRow_ >= 0 ? segments_.at(selectedRow_) : nullptr; }
  void setMarkers(double left, double right);
  // Where the in (out) marker may go: before (after) the other one.
  double inMarkerAt(double seconds) const;
  double outMarkerAt(double seconds) const;
  void reloadTable();
  void scheduleSeek(double seconds);
  void seek(double seconds);

  UIInfoDB& db_;
  TrimFormDelegate* delegate_ = nullptr;
  PlayVideoAction player_;
  TrimSegmentList segments_;
  NodeInfo::List items_;
  NodeInfo::Ptr nodeInfo_;
  QVector<double> keyframeTimes_;
  bool shown_ = false;
  bool merge_ = false;
  int selectedRow_ = -1;
  double leftMarker_ = 0;
  double rightMarker_ = 0;
  double startStepper_ = 0;
  double endStepper_ = 0;
  double newTime_ = 0;
  QTimer seekTimer_;
};
