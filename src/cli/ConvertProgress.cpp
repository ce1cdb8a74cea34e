#include "ConvertProgress.h"

#include <algorithm>
#include <utility>

#include "CommonClass/CommonClass.h"

namespace {

constexpr int kBarWidth = 30;

QString itemName(const NodeInfo& node) { return node.mediaFileInfo().source(); }

}  // namespace

ConvertProgress::ConvertProgress(int total, bool onTerminal, std::function<void()> onAllEnded)
    : out_(stdout), err_(stderr), total_(total), onTerminal_(onTerminal), onAllEnded_(std::move(onAllEnded)) {}

void ConvertProgress::conversionDidStart(const NodeInfo::Ptr& node, const QString& outputPath) {
  ++started_;
  lastTenth_ = -1;
  clock_.start();
  out_ << QStringLiteral("Converting %1/%2: %3 -> %4").arg(started_).arg(total_).arg(itemName(*node), outputPath)
       << Qt::endl;
}

void ConvertProgress::conversionProgress(const NodeInfo::Ptr& node, double currentUs, double lengthUs) {
  if (lengthUs <= 0) return;
  const double fraction = std::clamp(currentUs / lengthUs, 0.0, 1.0);
  if (!onTerminal_) {
    const int tenth = static_cast<int>(fraction * 10);
    if (tenth == lastTenth_) return;
    lastTenth_ = tenth;
    out_ << QStringLiteral("%1: %2%").arg(itemName(*node)).arg(tenth * 10) << Qt::endl;
    return;
  }
  // Seconds of media converted per second of work.
  const double seconds = clock_.elapsed() / 1000.0;
  const double speed = seconds > 0 ? currentUs / 1000000.0 / seconds : 0;
  const double secondsLeft = speed > 0 ? (lengthUs - currentUs) / 1000000.0 / speed : -1;
  drawBar(fraction, speed, secondsLeft);
}

void ConvertProgress::drawBar(double fraction, double speed, double secondsLeft) {
  const int filled = static_cast<int>(fraction * kBarWidth);
  const QString bar = QString(filled, QLatin1Char('#')) + QString(kBarWidth - filled, QLatin1Char('-'));
  const QString left = secondsLeft >= 0 ? CommonClass::formatTimeForDouble(secondsLeft) : QStringLiteral("--:--:--");
  // Back to the start of the line, redraw, clear what is left of the old one.
  out_ << QStringLiteral("\r[%1] %2%  %3x  %4 left\033[K")
              .arg(bar)
              .arg(fraction * 100, 5, 'f', 1)
              .arg(speed, 0, 'f', 1)
              .arg(left)
       << Qt::flush;
  barShown_ = true;
}

void ConvertProgress::endBar() {
  if (!barShown_) return;
  out_ << Qt::endl;
  barShown_ = false;
}

void ConvertProgress::conversionDidEnd(const NodeInfo::Ptr& node, const ConversionOutcome& outcome) {
  endBar();
  switch (outcome.status) {
    case ConversionOutcome::Status::kFinished:
      ++finished_;
      out_ << QStringLiteral("Done: %1").arg(outcome.outputFiles.join(QStringLiteral(", "))) << Qt::endl;
      for (const QString& refused : outcome.tagFailures) err_ << "Tags not written into " << refused << Qt::endl;
      break;
    case ConversionOutcome::Status::kFailed:
      ++failed_;
      err_ << QStringLiteral("Failed: %1: %2").arg(itemName(*node), outcome.reason) << Qt::endl;
      break;
    case ConversionOutcome::Status::kCancelled:
      ++cancelled_;
      err_ << QStringLiteral("Cancelled: %1: %2").arg(itemName(*node), outcome.reason);
      if (!outcome.outputFiles.isEmpty()) err_ << " What was written is kept: " << outcome.outputFiles.join(", ");
      err_ << Qt::endl;
      break;
  }
}

void ConvertProgress::allConversionsDidEnd() {
  out_ << QStringLiteral("%1 converted, %2 failed, %3 cancelled.").arg(finished_).arg(failed_).arg(cancelled_)
       << Qt::endl;
  onAllEnded_();
}
