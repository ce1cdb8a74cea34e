// videoconverter download [URL...] [--quality 0|1|2] [--folder DIR] [--list]
// [--convert [--profile NAME]]: works on the download window's list as the
// window does. The addresses are added, then the whole list runs like
// "Resume all" (five downloads at once) until every task has finished or
// failed; Ctrl-C pauses everything and saves the list. The exit code is 1
// when a task failed, 130 when stopped, 2 for bad arguments; with --convert,
// the finished files are converted as `videoconverter convert` does.

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QTextStream>

#include <unistd.h>

#include <optional>

#include "Action/ApplicationLifecycle.h"
#include "Commands.h"
#include "CommonClass/CommonClass.h"
#include "ConvertRequest.h"
#include "Download/DownloadFormController.h"
#include "Download/DownloadSettings.h"
#include "Download/PublicAction.h"
#include "DownloadRunReport.h"
#include "InterruptWatcher.h"

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitInterrupted = 130;

constexpr const char* kUsage =
    "Usage: videoconverter download [URL...] [--quality 0|1|2] [--folder DIR] [--list] [--convert [--profile NAME]]";

struct DownloadArguments {
  QStringList addresses;
  std::optional<int> quality;
  QString folder;
  bool list = false;
  bool convert = false;
  QString profile;
};

// The value after an option, or nullopt (and the problem) when there is none.
std::optional<QString> valueOf(const QStringList& arguments, qsizetype& i, QString* problem) {
  if (i + 1 < arguments.size() && !arguments[i + 1].startsWith(QLatin1String("--"))) return arguments[++i];
  *problem = QStringLiteral("%1 needs a value").arg(arguments[i]);
  return std::nullopt;
}

std::optional<DownloadArguments> parseArguments(const QStringList& arguments, QString* problem) {
  DownloadArguments parsed;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (argument == QLatin1String("--list")) {
      parsed.list = true;
    } else if (argument == QLatin1String("--convert")) {
      parsed.convert = true;
    } else if (argument == QLatin1String("--quality")) {
      const std::optional<QString> value = valueOf(arguments, i, problem);
      if (!value) return std::nullopt;
      if (*value != QLatin1String("0") && *value != QLatin1String("1") && *value != QLatin1String("2")) {
        *problem = QStringLiteral("--quality takes 0 (highest), 1 (middle) or 2 (lowest)");
        return std::nullopt;
      }
      parsed.quality = value->toInt();
    } else if (argument == QLatin1String("--folder") || argument == QLatin1String("--profile")) {
      const std::optional<QString> value = valueOf(arguments, i, problem);
      if (!value) return std::nullopt;
      (argument == QLatin1String("--folder") ? parsed.folder : parsed.profile) = *value;
    } else if (argument.startsWith(QLatin1String("--"))) {
      *problem = QStringLiteral("unknown option '%1'").arg(argument);
      return std::nullopt;
    } else if (DownloadFormController::pageAddressOf(argument).isEmpty()) {
      *problem = QStringLiteral("'%1' is no web page address").arg(argument);
      return std::nullopt;
    } else {
      parsed.addresses.append(argument);
    }
  }
  if (!parsed.profile.isEmpty() && !parsed.convert) {
    *problem = QStringLiteral("--profile goes with --convert");
    return std::nullopt;
  }
  if (parsed.list && (!parsed.addresses.isEmpty() || parsed.quality || !parsed.folder.isEmpty() || parsed.convert)) {
    *problem = QStringLiteral("--list takes no other arguments");
    return std::nullopt;
  }
  return parsed;
}

QString stateWord(qint64 state) {
  switch (state) {
    case kVideoDownStateAnalysing: return QStringLiteral("analysing");
    // Nothing runs while the list is only read: a download is paused.
    case kVideoDownStateDownloading: return QStringLiteral("paused");
    case kVideoDownStateFinished: return QStringLiteral("finished");
    case kVideoDownStateFailed: return QStringLiteral("failed");
    case kVideoDownStateWaiting: return QStringLiteral("waiting");
    default: return QStringLiteral("state %1").arg(state);
  }
}

int printList() {
  QTextStream out(stdout);
  const QList<std::shared_ptr<VideoInfoObject>> tasks = PublicAction::readDownloadList();
  if (tasks.isEmpty()) out << "The download list is empty." << Qt::endl;
  for (const std::shared_ptr<VideoInfoObject>& task : tasks) {
    out << QStringLiteral("%1 %2").arg(stateWord(task->videoDownState()), -9).arg(task->titleStr()) << Qt::endl;
    out << "          page: " << task->htmUrlStr() << Qt::endl;
    if (!task->savePath().isEmpty()) out << "          file: " << task->savePath() << Qt::endl;
  }
  return 0;
}

// Nothing is analysed, downloading or queued any more.
bool hasSettled(const DownloadFormController& controller) {
  return controller.arrCurDownload().isEmpty() && controller.arrWaitForDownload().isEmpty() &&
         controller.curParamView() == nullptr && controller.arrWaitForParam().isEmpty();
}

int failedTasks(DownloadFormController& controller) {
  int failed = 0;
  for (const DrogItemView* item : controller.droglineView().getChildItem()) {
    if (item->itemInfo()->videoDownState() == kVideoDownStateFailed) ++failed;
  }
  return failed;
}

int runList(const DownloadArguments& parsed) {
  QTextStream out(stdout);
  QTextStream err(stderr);
  if (parsed.quality) qualityParam = *parsed.quality;
  DownloadFormController controller(nullptr);
  controller.windowDidLoad();
  if (!parsed.folder.isEmpty()) {
    const QString folder = QFileInfo(parsed.folder).absoluteFilePath();
    if (!CommonClass::creatOutputDirectory(folder) || !QFileInfo(folder).isWritable()) {
      err << "videoconverter download: cannot write into the folder " << folder << Qt::endl;
      return kExitFailed;
    }
    savePath = folder;
  }

  DownloadRunReport report(controller, isatty(STDERR_FILENO) != 0);
  for (const QString& address : parsed.addresses) {
    if (controller.addPageAddress(address) == DownloadFormController::AddResult::kExists) {
      out << "Already in the list: " << DownloadFormController::pageAddressOf(address) << Qt::endl;
    }
  }
  controller.resumeAllClick();
  if (controller.droglineView().getChildItem().isEmpty()) out << "The download list is empty." << Qt::endl;

  QEventLoop loop;
  QObject::connect(&controller, &DownloadFormController::downloadListSaved, &loop, [&controller, &loop] {
    if (hasSettled(controller)) loop.quit();
  });
  InterruptWatcher interrupt([&] {
    report.finish();
    err << "Pausing every download; the list is saved. (Ctrl-C again quits at once)" << Qt::endl;
    controller.pauseAllClick();
    loop.quit();
  });
  if (!hasSettled(controller)) loop.exec();
  report.finish();
  if (interrupt.interrupted()) return kExitInterrupted;

  const int failed = failedTasks(controller);
  out << report.finishedFiles().size() << " finished, " << failed << " failed" << Qt::endl;
  int convertExit = 0;
  if (parsed.convert && !report.finishedFiles().isEmpty()) {
    ConvertRequest request;
    request.files = report.finishedFiles();
    request.profileName = parsed.profile;
    convertExit = convertFiles(request);
  }
  return failed > 0 ? kExitFailed : convertExit;
}

}  // namespace

QString downloadUsage() {
  return QLatin1String(kUsage) +
         QStringLiteral(
             "\nWorks on the download window's list. Adds the pages at the URLs, then runs the whole list as\n"
             "\"Resume all\" does, five downloads at once, with a progress line for each, until every task has\n"
             "finished or failed; without URLs it only resumes the list. Ctrl-C pauses everything and saves the\n"
             "list. Exits with 1 when a task failed.\n\n"
             "  --quality 0|1|2   which of a page's videos: 0 the largest (the default), 1 middle, 2 the smallest\n"
             "  --folder DIR      download new tasks into DIR for this run\n"
             "  --list            print every task of the list with its state, and do nothing else\n"
             "  --convert         convert the files finished in this run as `videoconverter convert` does\n"
             "  --profile NAME    the profile of --convert (the one selected last when not given)\n");
}

int runDownloadCommand(const QStringList& arguments) {
  QString problem;
  const std::optional<DownloadArguments> parsed = parseArguments(arguments, &problem);
  if (!parsed) {
    QTextStream(stderr) << "videoconverter download: " << problem << Qt::endl << kUsage << Qt::endl;
    return kExitUsage;
  }
  if (parsed->list) return printList();
  MainWindowShell headless;
  ApplicationLifecycle::startUp(headless);
  const int exitCode = runList(*parsed);
  // What the list let go of on its last turn goes now, not with the process.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  ApplicationLifecycle::applicationShouldTerminate(headless);
  return exitCode;
}
