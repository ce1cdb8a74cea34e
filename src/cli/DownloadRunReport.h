// What `videoconverter download` prints while the download list runs: a
// line when a task is analysed, starts downloading, waits, finishes or
// fails, and one progress line per running download with its share, speed
// and size: a block redrawn in place each second on a terminal, otherwise a
// line at each further tenth of the way.
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTextStream>

#include <utility>

#include "Download/DownloadFormController.h"

// A QObject only to own its connections; it has no signals of its own.
class DownloadRunReport : public QObject {
 public:
  // Watches the controller's list from now on; the states the items have
  // now are not reported. `onTerminal`: standard error is a terminal.
  DownloadRunReport(DownloadFormController& controller, bool onTerminal);

  // The files of the tasks that finished while watched, in that order.
  const QStringList& finishedFiles() const { return finishedFiles_; }
  // Takes the progress block off the terminal before the last lines.
  void finish();

 private:
  void itemChanged(const DrogItemView* item);
  void showProgress();
  QString progressLine(const DrogItemView& item) const;
  // Takes the block off the terminal, and puts it back.
  void eraseBlock();
  void drawBlock();

  DownloadFormController& controller_;
  bool onTerminal_;
  QHash<const DrogItemView*, qint64> states_;
  // Of the runs not on a terminal: the tenth of the way last printed.
  QHash<const DrogItemView*, int> tenths_;
  // The progress lines by item, and how many of them are on the terminal now.
  QList<std::pair<const DrogItemView*, QString>> block_;
  int drawnLines_ = 0;
  QStringList finishedFiles_;
  QTextStream out_{stdout};
  QTextStream err_{stderr};
};
