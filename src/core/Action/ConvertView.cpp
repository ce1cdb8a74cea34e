#include "ConvertView.h"

#include <utility>

#include "CommonClass/CommonClass.h"

ConvertView::ConvertView(NodeInfo::Ptr node, QObject* parent) : QObject(parent), nodeInfo_(std::move(node)) {}

void ConvertView::setProgressValue(double value) {
  if (value == progressValue_) return;
  progressValue_ = value;
  emit changed();
}

void ConvertView::resetProgress(double maximum) {
  progressMaximum_ = maximum;
  progressValue_ = 0;
  emit changed();
}

void ConvertView::setRateText(const QString& text) {
  if (text == rateText_) return;
  rateText_ = text;
  emit changed();
}

void ConvertView::setIsConvert(bool converting) {
  if (converting == isConvert_) return;
  isConvert_ = converting;
  emit changed();
}

void ConvertView::setProgressWidth(int width) {
  if (width == progressWidth_) return;
  progressWidth_ = width;
  emit changed();
}

void ConvertView::setOutputPath(const QString& path) {
  if (path == outputPath_) return;
  outputPath_ = path;
  emit changed();
}

QString ConvertView::outcomeText(Outcome outcome) {
  switch (outcome) {
    case Outcome::kWaiting:
      return QStringLiteral("Waiting");
    case Outcome::kConverting:
      return QStringLiteral("Converting");
    case Outcome::kFinished:
      return QStringLiteral("Finished");
    case Outcome::kWarning:
      return QStringLiteral("Finished with a warning");
    case Outcome::kFailed:
      return QStringLiteral("Failed");
    case Outcome::kStopped:
      return QStringLiteral("Stopped");
    case Outcome::kCancelled:
      return QStringLiteral("Cancelled");
  }
  return {};
}

void ConvertView::setOutcome(Outcome outcome, const QString& reason, const QStringList& files) {
  if (outcome == outcome_ && reason == outcomeReason_ && files == outputFiles_) return;
  outcome_ = outcome;
  outcomeReason_ = reason;
  outputFiles_ = files;
  emit changed();
}

void ConvertView::setTimes(double elapsed, double left) {
  if (elapsed == elapsedSeconds_ && left == secondsLeft_) return;
  elapsedSeconds_ = elapsed;
  secondsLeft_ = left;
  emit changed();
}

void ConvertView::setButtons(bool startVisible, bool startEnabled, bool stopVisible) {
  startVisible_ = startVisible;
  startEnabled_ = startEnabled;
  stopVisible_ = stopVisible;
  emit changed();
}

void ConvertView::showQueued() { setButtons(false, true, true); }

void ConvertView::showStopped() {
  setButtons(true, true, false);
  setProgressValue(0);
  setRateText(QString());
}

void ConvertView::encodeButtonClick() {
  if (!startVisible_ || !startEnabled_) return;
  showQueued();
  if (convertDelegate_ != nullptr) convertDelegate_->reConvert(this);
}

void ConvertView::stopButtonClick() {
  if (!stopVisible_) return;
  showStopped();
  if (convertDelegate_ != nullptr) convertDelegate_->cancelConvert(this);
}

void ConvertView::finishConvert() {
  setButtons(true, false, false);
  setRateText(QStringLiteral("100%"));
}

QString ConvertView::statusLine() const {
  const QString elapsed = CommonClass::formatTimeForDouble(elapsedSeconds_);
  switch (outcome_) {
    case Outcome::kConverting: {
      QString line = rateText_.isEmpty() ? outcomeText(outcome_) : rateText_;
      line += QStringLiteral("  \u00b7  %1 elapsed").arg(elapsed);
      if (secondsLeft_ >= 0) {
        line += QStringLiteral("  \u00b7  about %1 left").arg(CommonClass::formatTimeForDouble(secondsLeft_ + 0.5));
      }
      return line;
    }
    case Outcome::kFinished:
      return QStringLiteral("Finished in %1").arg(elapsed);
    case Outcome::kWaiting:
    case Outcome::kStopped:
    case Outcome::kCancelled:
      if (outcomeReason_.isEmpty()) return outcomeText(outcome_);
      [[fallthrough]];
    case Outcome::kWarning:
    case Outcome::kFailed:
      return QStringLiteral("%1: %2").arg(outcomeText(outcome_), outcomeReason_);
  }
  return {};
}
