// Adds 100 generated media files to the main list through the main window's
// controller, reading them one at a time and then on the pool of workers,
// and prints both times, their ratio and the longest stretch in which the
// main thread served no event. Targets: pooled at most 0.6 x one at a time
// on two cores; no stall over 50 ms.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "Action/ApplicationLifecycle.h"
#include "Action/MainFormController.h"
#include "BenchMedia.h"
#include "CommonClass/GlobalSettings.h"
#include "videoconverter.h"

namespace {

namespace fs = std::filesystem;

struct AddingRun {
  double seconds = 0;
  qint64 longestStallMs = 0;
  int added = 0;
};

AddingRun addAll(const QStringList& paths, int workers) {
  UIInfoDB db;
  MainFormController controller(db, workers);
  AddingRun run;
  // A timer that should fire every millisecond: the longest gap between two
  // of its calls is the longest time the main thread served nothing.
  QElapsedTimer sinceTick;
  QTimer ticker;
  ticker.setTimerType(Qt::PreciseTimer);
  QObject::connect(&ticker, &QTimer::timeout,
                   [&] { run.longestStallMs = std::max(run.longestStallMs, sinceTick.restart()); });
  QObject::connect(&controller, &MainFormController::addingFinished, &QCoreApplication::quit);

  QElapsedTimer clock;
  clock.start();
  sinceTick.start();
  ticker.start(1);
  controller.addFilesToMainList(paths);
  QCoreApplication::exec();
  run.seconds = clock.nsecsElapsed() / 1e9;
  run.added = static_cast<int>(controller.videoData().size());
  return run;
}

// The better of two runs, so that one disturbed run does not decide.
AddingRun bestOfTwo(const QStringList& paths, int workers) {
  const AddingRun first = addAll(paths, workers);
  const AddingRun second = addAll(paths, workers);
  return first.seconds <= second.seconds ? first : second;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  ApplicationLifecycle::identifyApplication();
  std::string pattern = (fs::temp_directory_path() / "adding-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) return 1;
  const fs::path folder = pattern;
  sysTmpPath = QString::fromStdString(folder.string());
  videoImagePath = sysTmpPath + QStringLiteral("/Images");
  VideoConverter_SetTempPath(folder.c_str());

  QStringList paths;
  for (const fs::path& file : benchmedia::generateFiles(folder)) paths.append(QString::fromStdString(file.string()));
  const AddingRun serial = bestOfTwo(paths, 1);
  const AddingRun pooled = bestOfTwo(paths, 0);

  std::printf("files added:                          %d of %lld, then %d\n", serial.added,
              static_cast<long long>(paths.size()), pooled.added);
  std::printf("one at a time:                        %8.1f ms, longest stall %lld ms\n", serial.seconds * 1000,
              static_cast<long long>(serial.longestStallMs));
  std::printf("pool of %2d workers:                   %8.1f ms, longest stall %lld ms\n", QThread::idealThreadCount(),
              pooled.seconds * 1000, static_cast<long long>(pooled.longestStallMs));
  std::printf("ratio pooled / one at a time:         %8.3f (target <= 0.6 on 2 cores)\n",
              pooled.seconds / serial.seconds);
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  return paths.isEmpty() || serial.added != paths.size() || pooled.added != paths.size() ? 1 : 0;
}
