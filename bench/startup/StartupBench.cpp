// Start-up to the first painted main window, against the start-up of a
// program that shows an empty QWidget, both measured here in the same run:
// from starting the process to the moment its window has painted once.
// Each is started seven times (the first, which warms the disk cache and
// makes the configuration, is not counted) in a home of its own; medians
// are printed with their ratio. Run under a display, or offscreen.
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "ApplicationIdentity.h"
#include "QtPlatformServices.h"
#include "ValueObject/UIInfoDB.h"
#include "main/MainWindow.h"

namespace {

constexpr int kRuns = 7;

// Says "painted" on standard output and quits at the first paint of `window`.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(QWidget* window) { window->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && !told_) {
      told_ = true;
      std::puts("painted");
      std::fflush(stdout);
      QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  bool told_ = false;
};

// The program's own start-up, as its main function runs it.
int showMainWindow(int argc, char** argv) {
  QApplication app(argc, argv);
  setUpApplicationIdentity();
  DesktopServices services;
  UIInfoDB db;
  MainWindow window(db);
  services.setParentWindow(&window);
  FirstPaint told(&window);
  window.startUp();
  window.show();
  return QApplication::exec();
}

int showEmptyWidget(int argc, char** argv) {
  QApplication app(argc, argv);
  QWidget window;
  window.resize(1180, 700);
  FirstPaint told(&window);
  window.show();
  return QApplication::exec();
}

// Milliseconds from starting `mode` in a child process to its first paint; -1 when it never painted.
double timeToFirstPaint(const QString& program, const QString& mode, const QProcessEnvironment& environment) {
  QProcess child;
  child.setProcessEnvironment(environment);
  QElapsedTimer clock;
  clock.start();
  child.start(program, {QStringLiteral("--child"), mode});
  while (child.waitForReadyRead(30000)) {
    if (child.readAllStandardOutput().contains("painted")) {
      const double elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
      child.waitForFinished(30000);
      return elapsed;
    }
  }
  child.kill();
  child.waitForFinished();
  return -1;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string(argv[1]) == "--child") {
    return std::string(argv[2]) == "app" ? showMainWindow(argc, argv) : showEmptyWidget(argc, argv);
  }
  QCoreApplication app(argc, argv);
  QTemporaryDir home;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("HOME"), home.path());
  environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path() + QStringLiteral("/.config"));
  environment.insert(QStringLiteral("XDG_DATA_HOME"), home.path() + QStringLiteral("/.local/share"));
  if (!environment.contains(QStringLiteral("DISPLAY")) && !environment.contains(QStringLiteral("WAYLAND_DISPLAY"))) {
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  }

  const QString program = QCoreApplication::applicationFilePath();
  std::vector<double> mainWindow;
  std::vector<double> emptyWidget;
  for (int run = 0; run < kRuns; ++run) {
    const double ours = timeToFirstPaint(program, QStringLiteral("app"), environment);
    const double reference = timeToFirstPaint(program, QStringLiteral("empty"), environment);
    if (ours < 0 || reference < 0) {
      std::fprintf(stderr, "A window never painted.\n");
      return 1;
    }
    if (run == 0) continue;
    mainWindow.push_back(ours);
    emptyWidget.push_back(reference);
  }
  const double ours = median(mainWindow);
  const double reference = median(emptyWidget);
  std::printf("start-up to the first paint, median of %d:\n", kRuns - 1);
  std::printf("  main window   %8.1f ms\n", ours);
  std::printf("  empty widget  %8.1f ms (reference)\n", reference);
  std::printf("  ratio         %8.2f\n", ours / reference);
  return 0;
}
