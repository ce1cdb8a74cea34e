// Scrolls the main window's media list through 1,000 items, drawn by the
// painting delegate from the skin, and a plain list of 1,000 one-line texts
// of the same height in the same run, repainting the view at every step.
// Prints the milliseconds a step takes for both and their ratio. Targets: a
// step of the media list well within a 60 Hz frame (16 ms), and at most a few
// times the plain list's.

#include <QApplication>
#include <QElapsedTimer>
#include <QListView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStringListModel>
#include <QStyledItemDelegate>
#include <QTemporaryDir>

#include <cstdio>

#include "Action/NodeInfoAction.h"
#include "BenchMedia.h"
#include "main/MainWindow.h"
#include "widgets/ItemDefaultInfo.h"

namespace {

constexpr int kItems = 1000;

// Rows of the media list's height, for the plain list.
class TallRows : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return {QStyledItemDelegate::sizeHint(option, index).width(), ItemDefaultInfo::kRowHeight};
  }
};

// Milliseconds a step takes, scrolling from the top to the bottom three rows at a time.
double millisecondsPerStep(QListView& list) {
  QScrollBar* bar = list.verticalScrollBar();
  bar->setValue(0);
  QElapsedTimer timer;
  timer.start();
  int steps = 0;
  for (int value = 0; value <= bar->maximum(); value += 3 * ItemDefaultInfo::kRowHeight, ++steps) {
    bar->setValue(value);
    list.viewport()->repaint();
  }
  return static_cast<double>(timer.nsecsElapsed()) / 1e6 / std::max(1, steps);
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
  qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  const QString clip = home.filePath(QStringLiteral("clip.mp4"));
  if (benchmedia::runQuietly({"ffmpeg", "-y", "-f", "lavfi", "-i", "testsrc2=s=640x360:d=2", "-f", "lavfi", "-i",
                              "sine=d=2", "-c:v", "libx264", "-c:a", "aac", clip.toStdString()}) != 0) {
    std::fprintf(stderr, "ffmpeg could not make the clip\n");
    return 1;
  }

  UIInfoDB db;
  MainWindow window(db);
  window.startUp();
  window.resize(1280, 800);
  window.show();
  QSignalSpy added(&window.controller(), &MainFormController::addingFinished);
  window.addFiles({clip});
  if (!added.wait(60000) || window.controller().videoData().isEmpty()) return 1;
  // One probed item copied: every row draws a real thumbnail, names, sizes and its profile.
  const NodeInfo::Ptr first = window.controller().videoData().front();
  NodeTree& tree = NodeInfoAction::mainList(db);
  for (int i = 1; i < kItems; ++i) {
    NodeInfo::Ptr copy = first->copy();
    copy->setOutputFilename(first->outputFilename() + QString::number(i));
    tree.addChild(tree.root(), copy);
  }
  QApplication::processEvents();
  QListView& mediaList = *window.mediaList();

  QStringListModel texts;
  QStringList lines;
  for (int i = 0; i < kItems; ++i) lines.append(QStringLiteral("Item %1").arg(i));
  texts.setStringList(lines);
  QListView plain;
  plain.setModel(&texts);
  plain.setItemDelegate(new TallRows(&plain));
  plain.setUniformItemSizes(true);
  plain.resize(mediaList.size());
  plain.show();
  QApplication::processEvents();

  const double media = millisecondsPerStep(mediaList);
  const double reference = millisecondsPerStep(plain);
  std::printf("%d rows, view %dx%d: media list %.2f ms a step, plain list %.2f ms, ratio %.1f (targets: < 16 ms, a few times)\n",
              mediaList.model()->rowCount(), mediaList.viewport()->width(), mediaList.viewport()->height(), media,
              reference, media / reference);
  return 0;
}
