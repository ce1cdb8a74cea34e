#include "ConvertRunReport.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>

#include "CommonClass/CommonClass.h"
#include "MediaClass/MediaFileProbe.h"
#include "MediaClass/OutputParamRecord.h"

namespace {

constexpr int kBarWidth = 30;

// A file's name, or the output name of a merged item.
QString itemName(const NodeInfo& node) {
  const QString source = node.mediaFileInfo().source();
  return source.isEmpty() ? node.outputFilename() : source;
}

}  // namespace

ConvertRunReport::ConvertRunReport(MainFormController& controller, bool onTerminal)
    : controller_(controller), out_(stdout), err_(stderr), onTerminal_(onTerminal) {
  connect(&controller_, &MainFormController::windowStateChanged, this, [this](MainFormController::WindowState state) {
    if (state == MainFormController::WindowState::kConverting) watchRun();
  });
}

void ConvertRunReport::watchRun() {
  runStarted_ = true;
  ConvertViewList* queue = controller_.convertViewList();
  connect(queue, &ConvertViewList::rowStarted, this, &ConvertRunReport::rowStarted);
  connect(queue, &ConvertViewList::rowEnded, this, &ConvertRunReport::rowEnded);
  for (const auto& row : controller_.convertViews()) {
    ConvertView* view = row.get();
    connect(view, &ConvertView::changed, this, [this, view] { rowChanged(view); });
  }
}

void ConvertRunReport::rowStarted(ConvertView* row) {
  running_ = row;
  ++started_;
  lastTenth_ = -1;
  clock_.start();
  out_ << QStringLiteral("Converting %1/%2: %3 -> %4")
              .arg(started_)
              .arg(controller_.convertViews().size())
              .arg(itemName(*row->nodeInfo()), row->outputPath())
       << Qt::endl;
}

void ConvertRunReport::rowChanged(ConvertView* row) {
  const double length = row->progressMaximum();
  if (row != running_ || !row->isConvert() || length <= 0 || row->progressValue() <= 0) return;
  const double fraction = std::clamp(row->progressValue() / length, 0.0, 1.0);
  if (!onTerminal_) {
    const int tenth = static_cast<int>(fraction * 10);
    if (tenth == lastTenth_) return;
    lastTenth_ = tenth;
    out_ << QStringLiteral("%1: %2%").arg(itemName(*row->nodeInfo())).arg(tenth * 10) << Qt::endl;
    return;
  }
  // Seconds of media converted per second of work.
  const double seconds = clock_.elapsed() / 1000.0;
  const double speed = seconds > 0 ? row->progressValue() / seconds : 0;
  drawBar(fraction, speed, speed > 0 ? (length - row->progressValue()) / speed : -1);
}

void ConvertRunReport::drawBar(double fraction, double speed, double secondsLeft) {
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

void ConvertRunReport::endBar() {
  if (!barShown_) return;
  out_ << Qt::endl;
  barShown_ = false;
}

ConvertRunReport::RowEnd ConvertRunReport::judge(const ConvertView& row) {
  using RowOutcome = ConvertView::Outcome;
  switch (row.outcome()) {
    case RowOutcome::kFinished:
      return {Outcome::kFinished, QString(), row.outputFiles()};
    case RowOutcome::kWarning:
      return {Outcome::kFinished, row.outcomeReason(), row.outputFiles()};
    case RowOutcome::kStopped:
    case RowOutcome::kCancelled:
      return {Outcome::kCancelled, row.outcomeReason(), row.outputFiles()};
    case RowOutcome::kFailed:
    case RowOutcome::kWaiting:
    case RowOutcome::kConverting:
      break;
  }
  return {Outcome::kFailed, row.outcomeReason(), {}};
}

void ConvertRunReport::rowEnded(ConvertView* row) {
  endBar();
  if (row == running_) running_ = nullptr;
  const RowEnd end = judge(*row);
  ends_.insert(row, end);
  const QString name = itemName(*row->nodeInfo());
  switch (end.outcome) {
    case Outcome::kFinished:
      out_ << QStringLiteral("Done: %1").arg(end.files.join(QStringLiteral(", "))) << Qt::endl;
      if (!end.reason.isEmpty()) err_ << QStringLiteral("Warning: %1: %2").arg(name, end.reason) << Qt::endl;
      break;
    case Outcome::kFailed:
      err_ << QStringLiteral("Failed: %1: %2").arg(name, end.reason) << Qt::endl;
      break;
    case Outcome::kCancelled:
      err_ << QStringLiteral("Cancelled: %1: %2").arg(name, end.reason);
      if (!end.files.isEmpty()) err_ << " What was written is kept: " << end.files.join(QStringLiteral(", "));
      err_ << Qt::endl;
      break;
  }
}

void ConvertRunReport::printOutput(const QString& path, const QString& warning) {
  const QString size =
      QLocale::c().formattedDataSize(QFileInfo(path).size(), 1, QLocale::DataSizeTraditionalFormat);
  const MediaFileProbe probe = probeMediaFile(path, QString(), false);
  const QString length = probe.result == 0 ? CommonClass::formatTimeForDouble(probe.info.m_Duration / 1000000.0)
                                           : QStringLiteral("length unreadable");
  out_ << QStringLiteral("  %1  %2  %3").arg(path, size, length);
  if (!warning.isEmpty()) out_ << QStringLiteral("  (warning: %1)").arg(warning);
  out_ << Qt::endl;
}

bool ConvertRunReport::printSummary() {
  endBar();
  if (!runStarted_) {
    err_ << "Nothing was converted." << Qt::endl;
    return false;
  }
  int finished = 0;
  int failed = failed_;
  int cancelled = 0;
  QList<std::pair<QString, QString>> outputs;  // file and warning
  for (const auto& row : controller_.convertViews()) {
    if (!ends_.contains(row.get())) {
      err_ << QStringLiteral("Cancelled: %1: Cancelled before it started.").arg(itemName(*row->nodeInfo()))
           << Qt::endl;
      ++cancelled;
      continue;
    }
    const RowEnd& end = ends_.value(row.get());
    if (end.outcome == Outcome::kFinished) {
      for (const QString& file : end.files) outputs.append({file, end.reason});
    }
    finished += end.outcome == Outcome::kFinished ? 1 : 0;
    failed += end.outcome == Outcome::kFailed ? 1 : 0;
    cancelled += end.outcome == Outcome::kCancelled ? 1 : 0;
  }
  if (!outputs.isEmpty()) {
    out_ << "Outputs:" << Qt::endl;
    for (const auto& [path, warning] : outputs) printOutput(path, warning);
  }
  out_ << QStringLiteral("%1 converted, %2 failed, %3 cancelled.").arg(finished).arg(failed).arg(cancelled)
       << Qt::endl;
  return failed == 0 && cancelled == 0;
}
