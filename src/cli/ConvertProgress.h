// What `videoconverter convert` prints while it converts: a line when a file
// starts and ends, and in between a live bar (percentage, speed, time left)
// on a terminal or a line every tenth of the way otherwise. Failures and
// their reasons go to standard error.
#pragma once

#include <QElapsedTimer>
#include <QTextStream>

#include <functional>

#include "MediaClass/ConversionRunner.h"

class ConvertProgress : public ConversionRunnerDelegate {
 public:
  // `total` is the number of items that will be converted; `onAllEnded` runs
  // after the summary.
  ConvertProgress(int total, bool onTerminal, std::function<void()> onAllEnded);

  void conversionDidStart(const NodeInfo::Ptr& node, const QString& outputPath) override;
  void conversionProgress(const NodeInfo::Ptr& node, double currentUs, double lengthUs) override;
  void conversionDidEnd(const NodeInfo::Ptr& node, const ConversionOutcome& outcome) override;
  void allConversionsDidEnd() override;

  // Items that failed before they reached the runner (files that could not be
  // added, edits that did not fit), counted in the summary.
  void addFailedBeforeStart(int count) { failed_ += count; }
  int failedCount() const { return failed_; }
  int cancelledCount() const { return cancelled_; }

 private:
  void drawBar(double fraction, double speed, double secondsLeft);
  void endBar();

  QTextStream out_;
  QTextStream err_;
  const int total_;
  const bool onTerminal_;
  std::function<void()> onAllEnded_;
  int started_ = 0;
  int finished_ = 0;
  int failed_ = 0;
  int cancelled_ = 0;
  int lastTenth_ = -1;
  bool barShown_ = false;
  QElapsedTimer clock_;
};
