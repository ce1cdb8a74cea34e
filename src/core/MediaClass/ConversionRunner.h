// Converts list nodes one after another, each through its own ConvertMedia
// job, on the main thread's event loop: a job is started, polled every half
// second, and released when "CONVERTEND" arrives; then the next one starts.
#pragma once

#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>

#include "MediaClass/ConvertMedia.h"
#include "ValueObject/NodeInfo.h"

// What the conversion of one node came to.
struct ConversionOutcome {
  enum class Status { kFinished, kFailed, kCancelled };
  Status status = Status::kFinished;
  // The output chosen; empty when the job was refused before choosing one.
  QString outputPath;
  // Why it failed or was not converted.
  QString reason;
  // What was written: the output, or the pieces it was cut into.
  QStringList outputFiles;
  // Outputs of a finished conversion that refused the item's tags, with why.
  QStringList tagFailures;
};

// Told what happens, on the main thread.
class ConversionRunnerDelegate {
 public:
  virtual ~ConversionRunnerDelegate() = default;
  virtual void conversionDidStart(const NodeInfo::Ptr& /*node*/, const QString& /*outputPath*/) {}
  // Microseconds written so far and the output's whole length.
  virtual void conversionProgress(const NodeInfo::Ptr& /*node*/, double /*currentUs*/, double /*lengthUs*/) {}
  virtual void conversionDidEnd(const NodeInfo::Ptr& /*node*/, const ConversionOutcome& /*outcome*/) {}
  virtual void allConversionsDidEnd() {}
};

class ConversionRunner {
 public:
  static constexpr int kPollIntervalMs = 500;

  // The delegate is not owned and must outlive the runner.
  explicit ConversionRunner(ConversionRunnerDelegate* delegate);
  ~ConversionRunner();
  ConversionRunner(const ConversionRunner&) = delete;
  ConversionRunner& operator=(const ConversionRunner&) = delete;

  // Starts converting `nodes` in order; returns at once.
  void start(const NodeInfo::List& nodes);
  // Stops the running conversion and drops the nodes still waiting; each is
  // reported as cancelled.
  void cancel();
  bool isRunning() const { return job_ != nullptr; }

 private:
  void startNext();
  void pollProgress();
  void conversionEnded();
  ConversionOutcome outcomeOfEndedJob() const;
  void cancelWaiting();

  ConversionRunnerDelegate* delegate_;
  NodeInfo::List waiting_;
  NodeInfo::Ptr current_;
  std::unique_ptr<ConvertMedia> job_;
  QTimer pollTimer_;
  bool cancelled_ = false;
};
