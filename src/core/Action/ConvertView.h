// One row of the conversion list, as a model without widgets: the node it
// converts, its progress bar and percentage text, the state of its start
// and stop buttons, its outcome with the reason, and its times. Every change
// emits changed(), so a view only draws it.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include "ValueObject/NodeInfo.h"

class ConvertView;

// The queue's side of a row's buttons.
class ConvertViewDelegate {
 public:
  virtual ~ConvertViewDelegate() = default;
  // The start button of a stopped row: queue it again.
  virtual void reConvert(ConvertView* row) = 0;
  // The stop button: leave the queue, aborting the row if it runs.
  virtual void cancelConvert(ConvertView* row) = 0;
};

class ConvertView : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kStartToolTip = "Convert";
  static constexpr const char* kStopToolTip = "Stop";
  static constexpr const char* kStartImage = "Images/convert1.png";
  static constexpr const char* kStartPressedImage = "Images/convert3.png";
  static constexpr const char* kStopImage = "Images/stopConvert1.png";
  static constexpr const char* kStopPressedImage = "Images/stopConvert3.png";

  // Where the row stands. Finished, warning and failed come from the
  // converter's own account of the conversion; stopped is the row's stop
  // button, cancelled the cancelling of the whole run.
  enum class Outcome { kWaiting, kConverting, kFinished, kWarning, kFailed, kStopped, kCancelled };

  explicit ConvertView(NodeInfo::Ptr node, QObject* parent = nullptr);

  // "Waiting", "Converting", "Finished", "Finished with a warning", "Failed", "Stopped", "Cancelled".
  static QString outcomeText(Outcome outcome);

  const NodeInfo::Ptr& nodeInfo() const { return nodeInfo_; }

  // Not owned.
  ConvertViewDelegate* convertDelegate() const { return convertDelegate_; }
  void setConvertDelegate(ConvertViewDelegate* delegate) { convertDelegate_ = delegate; }

  double progressValue() const { return progressValue_; }
  double progressMaximum() const { return progressMaximum_; }
  void setProgressValue(double value);
  // Minimum 0, value 0, the given maximum.
  void resetProgress(double maximum);
  void fillProgress() { setProgressValue(progressMaximum_); }

  const QString& rateText() const { return rateText_; }
  void setRateText(const QString& text);

  bool isStartButtonVisible() const { return startVisible_; }
  bool isStartButtonEnabled() const { return startEnabled_; }
  bool isStopButtonVisible() const { return stopVisible_; }

  bool isConvert() const { return isConvert_; }
  void setIsConvert(bool converting);

  int progressWidth() const { return progressWidth_; }
  void setProgressWidth(int width);

  // The output its last conversion writes; empty before one started.
  const QString& outputPath() const { return outputPath_; }
  void setOutputPath(const QString& path);
  Outcome outcome() const { return outcome_; }
  // Why it failed or was stopped, or what the warning says; empty otherwise.
  const QString& outcomeReason() const { return outcomeReason_; }
  // The files its last conversion kept under their final names.
  const QStringList& outputFiles() const { return outputFiles_; }
  void setOutcome(Outcome outcome, const QString& reason = QString(), const QStringList& files = QStringList());
  // Ended in a way that counts as converted (with or without a warning).
  bool isConverted() const { return outcome_ == Outcome::kFinished || outcome_ == Outcome::kWarning; }

  // Seconds spent converting, and the estimate of what is left (-1 unknown).
  double elapsedSeconds() const { return elapsedSeconds_; }
  double secondsLeft() const { return secondsLeft_; }
  void setTimes(double elapsed, double left);
  // The row's line of status for people: the percentage with the times
  // while converting, otherwise the outcome with its reason.
  QString statusLine() const;

  // Waiting in the queue or converting: start hidden, stop shown.
  void showQueued();
  // Left the queue unfinished: start shown and enabled, stop hidden, bar and
  // text cleared.
  void showStopped();

  // The row's buttons.
  void encodeButtonClick();
  void stopButtonClick();
  // Ended by itself: start shown but disabled, stop hidden, "100%".
  void finishConvert();

 signals:
  void changed();

 private:
  void setButtons(bool startVisible, bool startEnabled, bool stopVisible);

  NodeInfo::Ptr nodeInfo_;
  ConvertViewDelegate* convertDelegate_ = nullptr;
  double progressValue_ = 0;
  double progressMaximum_ = 0;
  QString rateText_;
  bool startVisible_ = true;
  bool startEnabled_ = true;
  bool stopVisible_ = false;
  bool isConvert_ = false;
  int progressWidth_ = 0;
  QString outputPath_;
  Outcome outcome_ = Outcome::kWaiting;
  QString outcomeReason_;
  QStringList outputFiles_;
  double elapsedSeconds_ = 0;
  double secondsLeft_ = -1;
};
