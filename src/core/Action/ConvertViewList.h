// The conversion queue: converts the rows of the conversion list one after
// another, front first, each through its own ConvertMedia job. A 0.5 s timer
// shows the running row's progress; "CONVERTEND" ends the row on the main
// thread, writes the node's tags into the output when the row ended by
// itself, and starts the next row. The end of the whole run is told once.
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRecursiveMutex>
#include <QString>
#include <QTimer>

#include <memory>

#include "Action/ConvertView.h"
#include "MediaClass/ConvertMedia.h"

// The main window's side of the queue.
class ConvertViewListDelegate {
 public:
  virtual ~ConvertViewListDelegate() = default;
  // Every row has left the queue.
  virtual void convertEnd() {}
  // A message of a job's probe for the user.
  virtual void showMessage(const QString& /*message*/) {}
};

class ConvertViewList : public QObject, public ConvertViewDelegate, private ConvertMediaDelegate {
  Q_OBJECT

 public:
  static constexpr int kProgressIntervalMs = 500;

  ConvertViewList();
  ~ConvertViewList() override;

  // Not owned.
  void setDelegate(ConvertViewListDelegate* delegate) { delegate_ = delegate; }

  // Starts a run over `rows`, in order. The rows are not owned and must
  // outlive the run.
  void encode(const QList<ConvertView*>& rows);
  // Starts the front row; returns the job's result (0 = started).
  int32_t convert();
  // After a row has left the queue without converting: the next one, or the end.
  void reConvert();

  // ConvertViewDelegate: a row's start and stop buttons.
  void reConvert(ConvertView* row) override;
  void cancelConvert(ConvertView* row) override;

  // The main window's cancel command. The aborted row is then shown as
  // finished, unlike a row stopped by its own button.
  void cancelConvertAll();
  // Aborts the running conversion, if any.
  void stopEncode();

  bool isConvert() const { return isConvert_; }
  int nodeCount() const { return nodeCount_; }
  ConvertView* currentView() const { return currentView_; }
  // Rows still to convert, the running one first.
  QList<ConvertView*> queuedRows() const;

 signals:
  // The row's conversion started; its outputPath() is set.
  void rowStarted(ConvertView* row);
  // The row left the queue after its conversion ended, was stopped or could
  // not start; its outcome() says which. Rows removed while waiting are not told.
  void rowEnded(ConvertView* row);

 private:
  // The timer's handler.
  void getEncodeCurrentTime();
  // The handler of "CONVERTEND".
  void convertEnd();
  void showMessage(const QString& message) override;

  // The row's outcome from the converter's account and how it was stopped.
  void setOutcome(ConvertView& row, const ConvertMedia::Ending& ending, bool stopTooLate) const;
  // The job's converter reached the end of the output.
  bool hasWrittenWholeOutput() const;
  void removeRow(ConvertView* row);
  void startTimer();
  void stopTimer();
  // Stops the timer and tells the delegate once that the run is over.
  void endRun();

  // Recursive: a row's changed() handler may ask for queuedRows().
  mutable QRecursiveMutex condition_;
  std::unique_ptr<ConvertMedia> convertMedia_;
  QTimer* timer_ = nullptr;
  int nodeCount_ = 0;
  ConvertViewListDelegate* delegate_ = nullptr;
  double timeCount_ = 0;
  QList<QPointer<ConvertView>> viewData_;
  QPointer<ConvertView> currentView_;
  bool isConvert_ = false;
  bool isCancelConvert_ = false;
  // The whole run is being cancelled: the running row ends cancelled.
  bool isCancelAll_ = false;
  QElapsedTimer rowClock_;
};
