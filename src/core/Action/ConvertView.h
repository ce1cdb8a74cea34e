// One row of the conversion list, as a model without widgets: the node it
// converts, its progress bar and percentage text, and the state of its start
// and stop buttons. Every change emits changed(), so a view only draws it.
#pragma once

#include <QObject>
#include <QString>

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

  explicit ConvertView(NodeInfo::Ptr node, QObject* parent = nullptr);

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
  // Why its last conversion could not start; empty when it started.
  const QString& refusal() const { return refusal_; }
  void setRefusal(const QString& reason);

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
  QString refusal_;
};
