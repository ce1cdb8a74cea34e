// What `videoconverter convert` prints while the main window's queue
// converts: a line when a row starts, a live bar on a terminal (a line every
// tenth of the way otherwise), a line when it ends, and at the end every
// output with its size and duration. Failures and their reasons go to
// standard error.
#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTextStream>

#include "Action/MainFormController.h"

// A QObject only to own its connections; it has no signals of its own.
class ConvertRunReport : public QObject {
 public:
  // Watches the controller's next run. Not owned; must outlive the report.
  ConvertRunReport(MainFormController& controller, bool onTerminal);

  // Items that never reached the queue: files that could not be added,
  // edits that did not fit.
  void addFailedBeforeStart(int count) { failed_ += count; }

  // Prints the outputs and the counts; true when every item was converted.
  bool printSummary();

 private:
  enum class Outcome { kFinished, kFailed, kCancelled };
  struct RowEnd {
    Outcome outcome = Outcome::kFinished;
    QString reason;
    QStringList files;
  };

  void watchRun();
  void rowStarted(ConvertView* row);
  void rowChanged(ConvertView* row);
  void rowEnded(ConvertView* row);
  // The row's own outcome; a warning's reason stays with the finished files.
  static RowEnd judge(const ConvertView& row);
  void drawBar(double fraction, double speed, double secondsLeft);
  void endBar();
  // One line of the summary: path, size, length, and the warning if any.
  void printOutput(const QString& path, const QString& warning);

  MainFormController& controller_;
  QTextStream out_;
  QTextStream err_;
  const bool onTerminal_;
  bool runStarted_ = false;
  QHash<const ConvertView*, RowEnd> ends_;
  const ConvertView* running_ = nullptr;
  int started_ = 0;
  int failed_ = 0;
  int lastTenth_ = -1;
  bool barShown_ = false;
  QElapsedTimer clock_;
};
