#include "ConversionRunner.h"

#include <QFileInfo>

#include <utility>

#include "CommonClass/CommonClass.h"
#include "CommonClass/DistributedNotificationCenter.h"
#include "MediaClass/AddMetaDataAction.h"
#include "MediaClass/OutputParamRecord.h"

namespace {

QString converterErrorText(int32_t code) {
  switch (code) {
    case VC_ERROR_INVALID_ARGUMENT: return QStringLiteral("The converter refused the conversion's settings.");
    case VC_ERROR_OUT_OF_MEMORY: return QStringLiteral("The converter ran out of memory.");
    case VC_ERROR_BUSY: return QStringLiteral("Another conversion is still running.");
    default: return QStringLiteral("The converter could not start (code %1).").arg(code);
  }
}

// The output itself, or the pieces of an output cut into "<name>_<n>.<ext>".
QStringList writtenFiles(const QString& outputPath) {
  if (QFileInfo::exists(outputPath)) return {outputPath};
  QStringList pieces;
  for (int index = 0; QFileInfo::exists(OutputParamRecord::piecePath(outputPath, index)); ++index) {
    pieces.append(OutputParamRecord::piecePath(outputPath, index));
  }
  return pieces;
}

// Writes the item's tags into what a finished conversion made; answers the
// files that refused them, each with the tag library's reason.
QStringList writeTags(const NodeInfo& node, const QString& outputPath) {
  QStringList refused;
  for (const AddMetaDataResult::Failure& failure : AddMetaDataAction::addMetaData(node, outputPath).failures) {
    refused.append(QStringLiteral("%1 (%2)").arg(failure.path, QString::fromUtf8(GetMetaDataErrorText(failure.code))));
  }
  return refused;
}

QString formatMicroseconds(double microseconds) { return CommonClass::formatTimeForDouble(microseconds / 1000000.0); }

}  // namespace

ConversionRunner::ConversionRunner(ConversionRunnerDelegate* delegate) : delegate_(delegate) {
  pollTimer_.setInterval(kPollIntervalMs);
  QObject::connect(&pollTimer_, &QTimer::timeout, &pollTimer_, [this] { pollProgress(); });
  // Handled on a later turn of the loop: the end may be announced while
  // encode() is still starting the job.
  DistributedNotificationCenter::defaultCenter().addObserver(
      this, QLatin1String(ConvertMedia::kConvertEndNotification),
      [this](const Notification&) { QTimer::singleShot(0, &pollTimer_, [this] { conversionEnded(); }); });
}

ConversionRunner::~ConversionRunner() { DistributedNotificationCenter::defaultCenter().removeObserver(this); }

void ConversionRunner::start(const NodeInfo::List& nodes) {
  cancelled_ = false;
  waiting_ += nodes;
  if (!isRunning()) startNext();
}

void ConversionRunner::cancel() {
  cancelled_ = true;
  if (isRunning()) {
    job_->stopEnCode();  // its end is reported as cancelled, then the waiting nodes
  } else {
    cancelWaiting();
  }
}

void ConversionRunner::cancelWaiting() {
  const NodeInfo::List nodes = std::exchange(waiting_, {});
  for (const NodeInfo::Ptr& node : nodes) {
    delegate_->conversionDidEnd(
        node, {ConversionOutcome::Status::kCancelled, QString(), QStringLiteral("Cancelled before it started."), {}, {}});
  }
}

void ConversionRunner::startNext() {
  if (cancelled_) cancelWaiting();
  while (!waiting_.isEmpty()) {
    current_ = waiting_.takeFirst();
    job_ = std::make_unique<ConvertMedia>();
    const int32_t result = job_->encode(current_);
    if (result == 0) {
      delegate_->conversionDidStart(current_, job_->videoPath());
      pollTimer_.start();
      return;
    }
    const ConversionOutcome refused{ConversionOutcome::Status::kFailed,
                                    job_->videoPath(),
                                    job_->refusal().isEmpty() ? converterErrorText(result) : job_->refusal(),
                                    {},
                                    {}};
    job_.reset();
    delegate_->conversionDidEnd(std::exchange(current_, nullptr), refused);
  }
  delegate_->allConversionsDidEnd();
}

void ConversionRunner::pollProgress() {
  if (isRunning()) delegate_->conversionProgress(current_, job_->getCurrentTime(), job_->getLength());
}

ConversionOutcome ConversionRunner::outcomeOfEndedJob() const {
  ConversionOutcome outcome{ConversionOutcome::Status::kFinished, job_->videoPath(), QString(),
                            writtenFiles(job_->videoPath()), {}};
  if (cancelled_) {
    outcome.status = ConversionOutcome::Status::kCancelled;
    outcome.reason = QStringLiteral("Stopped before the end.");
    return outcome;
  }
  const double current = job_->getCurrentTime();
  const double length = job_->getLength();
  if (current >= length && !outcome.outputFiles.isEmpty()) return outcome;
  outcome.status = ConversionOutcome::Status::kFailed;
  outcome.reason = QStringLiteral("The converter stopped at %1 of %2 without a finished output.")
                       .arg(formatMicroseconds(current), formatMicroseconds(length));
  return outcome;
}

void ConversionRunner::conversionEnded() {
  // Another program's conversion, also announced by the distributed centre.
  if (!isRunning() || !job_->hasEnded()) return;
  pollTimer_.stop();
  ConversionOutcome outcome = outcomeOfEndedJob();
  if (outcome.status == ConversionOutcome::Status::kFinished) {
    delegate_->conversionProgress(current_, job_->getLength(), job_->getLength());
    outcome.tagFailures = writeTags(*current_, outcome.outputPath);
  }
  job_.reset();
  delegate_->conversionDidEnd(std::exchange(current_, nullptr), outcome);
  startNext();
}
