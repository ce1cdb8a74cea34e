// Soak run of the conversion queue: 50 rows of a tiny clip, with rows
// stopped, put back and edited at random moments while the run goes on.
// Checks that every row ends finished or stopped, that the run ends, that
// no row's output was written whole twice (a stopped row keeps its partial
// output, so only whole ones count), that nothing else was written, and that
// memory at the end stays within 10 % of memory after the first row. Prints
// the figures; exits 1 on a failure.
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "Action/ConvertView.h"
#include "Action/ConvertViewList.h"
#include "Action/MainFormAction.h"
#include "CommonClass/GlobalSettings.h"

namespace {

constexpr int kRows = 50;
constexpr int kDeadlineMs = 10 * 60 * 1000;

class AddedNodes : public MainFormActionDelegate {
 public:
  void addItemView(const NodeInfo::Ptr& node) override { nodes.append(node); }
  NodeInfo::List nodes;
};

class RunEnd : public ConvertViewListDelegate {
 public:
  void convertEnd() override {
    ++count;
    QCoreApplication::quit();
  }
  int count = 0;
};

// Resident memory in kilobytes, from /proc.
long residentKilobytes() {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return -1;
  for (const QByteArray& line : status.readAll().split('\n')) {
    if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').front().toLong();
  }
  return -1;
}

ProfileSettingInfo smallProfile(int videoBitrate) {
  ProfileSettingInfo profile;
  profile.setFormat(QStringLiteral("mp4"));
  profile.setExtName(QStringLiteral("mp4"));
  profile.setType(ProfileSettingInfo::kTypeVideo);
  profile.setVideoEncoder(QStringLiteral("mpeg4"));
  profile.setVideoResolution(QStringLiteral("160x120"));
  profile.setVideoFrameRate(15);
  profile.setVideoBitrate(videoBitrate);
  profile.setAudioEncoder(QStringLiteral("aac"));
  profile.setAudioSampleRate(44100);
  profile.setAudioBitrate(64);
  profile.setAudioChannels(1);
  return profile;
}

// The output of one start of a row, and whether the row then showed finished.
struct RowRun {
  QString output;
  bool finished = false;
};

bool showsFinished(const ConvertView& row) {
  return row.rateText() == QLatin1String("100%") && !row.isStartButtonEnabled();
}

// Each stream's length in a file as ffprobe reads it, "video,1.000000" and
// "audio,1.021678"; empty when it cannot be read. A stop that lands while the
// sound is being finished leaves a whole picture but not a whole sound, so
// the container's length alone cannot tell a whole output.
QStringList streamLengths(const QString& path) {
  QProcess probe;
  probe.start(QStringLiteral("ffprobe"), {"-v", "error", "-show_entries", "stream=codec_type,duration", "-of",
                                          "csv=p=0", path});
  if (!probe.waitForFinished() || probe.exitCode() != 0) return {};
  QStringList lines = QString::fromUtf8(probe.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  lines.sort();
  return lines;
}

bool makeClip(const QString& path) {
  const int code = QProcess::execute(
      QStringLiteral("ffmpeg"), {"-y", "-hide_banner", "-loglevel", "error", "-f", "lavfi", "-i",
                                 "testsrc=s=160x120:r=15:d=1", "-f", "lavfi", "-i", "sine=d=1", "-c:v", "mpeg4", path});
  return code == 0;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QTemporaryDir folder;
  sysTmpPath = folder.filePath(QStringLiteral("scratch"));
  videoImagePath = sysTmpPath + QStringLiteral("/Images");
  const QString output = folder.filePath(QStringLiteral("out"));
  QDir().mkpath(output);
  VideoConverter_SetTempPath(folder.path().toUtf8().constData());
  const QString clip = folder.filePath(QStringLiteral("clip.mp4"));
  if (!makeClip(clip)) {
    std::fprintf(stderr, "ffmpeg could not make the clip\n");
    return 1;
  }

  AddedNodes added;
  UIInfoDB db;
  MainFormAction adding(db, &added);
  QEventLoop addingDone;
  QObject::connect(&adding, &MainFormAction::finished, &addingDone, &QEventLoop::quit);
  adding.addFile(QStringList(kRows, clip));
  addingDone.exec();
  std::vector<std::unique_ptr<ConvertView>> rows;
  QList<ConvertView*> rowList;
  for (int index = 0; index < added.nodes.size(); ++index) {
    const NodeInfo::Ptr& node = added.nodes[index];
    node->setCurProfileSetting(smallProfile(200));
    node->setOutputPath(output);
    node->setOutputFilename(QStringLiteral("item%1").arg(index, 2, 10, QLatin1Char('0')));
    rows.push_back(std::make_unique<ConvertView>(node));
    rowList.append(rows.back().get());
  }

  // A seed may be given to replay a run's choices (the timing still differs).
  const unsigned seed = argc > 1 ? QByteArray(argv[1]).toUInt() : std::random_device{}();
  std::mt19937 random(seed);
  RunEnd end;
  ConvertViewList queue;
  queue.setDelegate(&end);
  QHash<const ConvertView*, QList<RowRun>> runs;
  QObject::connect(&queue, &ConvertViewList::rowStarted, [&](ConvertView* row) { runs[row].append({row->outputPath()}); });
  QObject::connect(&queue, &ConvertViewList::rowEnded, [&](ConvertView* row) {
    if (!runs[row].isEmpty()) runs[row].back().finished = showsFinished(*row);
  });

  long memoryAfterFirst = -1;
  long memoryHalfway = -1;
  int stops = 0, restarts = 0, edits = 0;
  QTimer meddler;
  QObject::connect(&meddler, &QTimer::timeout, [&] {
    if (memoryAfterFirst < 0 && rows.front()->rateText() == QLatin1String("100%"))
      memoryAfterFirst = residentKilobytes();
    if (rows[kRows / 2]->rateText() == QLatin1String("100%") && memoryHalfway < 0) memoryHalfway = residentKilobytes();
    ConvertView& row = *rows[std::uniform_int_distribution<size_t>(0, rows.size() - 1)(random)];
    switch (std::uniform_int_distribution<int>(0, 9)(random)) {
      case 0:
        if (row.isStopButtonVisible()) {
          row.stopButtonClick();
          ++stops;
        }
        break;
      case 1:
      case 2:
        for (const auto& candidate : rows) {
          if (candidate->isStartButtonVisible() && candidate->isStartButtonEnabled()) {
            candidate->encodeButtonClick();
            ++restarts;
            break;
          }
        }
        break;
      case 3:
        if (!row.isConvert()) {
          row.nodeInfo()->setCurProfileSetting(smallProfile(std::uniform_int_distribution<int>(100, 400)(random)));
          ++edits;
        }
        break;
      case 4:
        // The running row, stopped at whatever point its conversion reached.
        if (ConvertView* running = queue.currentView(); running != nullptr && running->isStopButtonVisible()) {
          running->stopButtonClick();
          ++stops;
        }
        break;
      default: break;
    }
  });
  meddler.start(std::uniform_int_distribution<int>(5, 40)(random));
  QTimer::singleShot(kDeadlineMs, &application, [] {
    std::fprintf(stderr, "FAIL: the run did not end within the deadline\n");
    QCoreApplication::exit(2);
  });

  queue.encode(rowList);
  if (end.count == 0 && QCoreApplication::exec() == 2) return 1;
  meddler.stop();
  // Rows stopped near the end still hold their start buttons; the run is over.
  const long memoryAtEnd = residentKilobytes();

  int finished = 0, stopped = 0, undecided = 0;
  QSet<QString> recorded;
  QStringList wholeLengths;
  for (const auto& row : rows) {
    if (showsFinished(*row)) {
      ++finished;
      if (!runs[row.get()].isEmpty() && wholeLengths.isEmpty()) wholeLengths = streamLengths(runs[row.get()].back().output);
    } else if (row->isStartButtonEnabled() && !row->isStopButtonVisible()) {
      ++stopped;
    } else {
      ++undecided;
    }
    for (const RowRun& run : runs[row.get()]) recorded.insert(QFileInfo(run.output).fileName());
  }
  // Rows whose output was written whole more than once: a stop that came too
  // late, shown as stopped, so that putting the row back converted it again.
  QStringList twice;
  for (const auto& row : rows) {
    // A run stopped before it wrote anything leaves its name free for the next run.
    QSet<QString> whole;
    for (const RowRun& run : runs[row.get()]) {
      if (run.finished || (QFileInfo::exists(run.output) && streamLengths(run.output) == wholeLengths)) {
        whole.insert(run.output);
      }
    }
    if (whole.size() > 1) twice.append(row->nodeInfo()->outputFilename());
  }
  QStringList stray;
  for (const QString& name : QDir(output).entryList(QDir::Files, QDir::Name)) {
    if (!recorded.contains(name)) stray.append(name);
  }
  int finishedRuns = 0;
  for (const QList<RowRun>& rowRuns : runs) {
    for (const RowRun& run : rowRuns) finishedRuns += run.finished ? 1 : 0;
  }

  const double memoryRatio = memoryAfterFirst > 0 ? static_cast<double>(memoryAtEnd) / memoryAfterFirst : 0;
  std::printf("seed %u: %d rows, %d stops, %d restarts, %d edits\n", seed, kRows, stops, restarts, edits);
  std::printf("finished %d, stopped %d, neither %d; finished conversions %d; ends told %d\n", finished, stopped,
              undecided, finishedRuns, end.count);
  std::printf("memory: %ld kB after the first row, %ld kB halfway, %ld kB at the end, ratio %.3f\n", memoryAfterFirst,
              memoryHalfway, memoryAtEnd, memoryRatio);

  bool ok = true;
  auto fail = [&ok](const char* why) {
    std::printf("FAIL: %s\n", why);
    ok = false;
  };
  if (undecided != 0) fail("a row ended neither finished nor stopped");
  if (finishedRuns != finished) fail("a row was converted to the end more than once");
  if (!twice.isEmpty()) {
    fail("a row's output was written whole twice");
    std::printf("  %s\n", qPrintable(twice.join(QStringLiteral(", "))));
  }
  if (!stray.isEmpty()) {
    fail("files were written that no conversion started");
    std::printf("  %s\n", qPrintable(stray.join(QStringLiteral(", "))));
  }
  if (end.count != 1) fail("the end of the run was not told exactly once");
  if (memoryAfterFirst > 0 && memoryRatio > 1.10) fail("memory grew by more than 10 %");
  std::printf(ok ? "PASS\n" : "FAILED\n");
  return ok ? 0 : 1;
}
