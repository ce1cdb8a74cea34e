// videoconverter convert FILE... [--profile NAME] [--output DIR] [options]:
// drives the main window's controller as a user would: adds the files, puts
// the options into each item's settings, starts the conversion and converts
// the items one after another through the window's queue. The exit code is 1
// when any file failed or was cancelled, 130 when stopped by Ctrl-C, 2 for
// bad arguments.

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include <unistd.h>

#include "Action/ApplicationLifecycle.h"
#include "Action/MainFormController.h"
#include "Action/ProfileAction.h"
#include "Commands.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "ConvertEdits.h"
#include "ConvertRequest.h"
#include "ConvertRunReport.h"
#include "InterruptWatcher.h"
#include "Profile/KMVProfileCatalog.h"
#include "TerminalServices.h"

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitInterrupted = 130;

KMVProfileCatalog::Entry findProfile(const QString& name) {
  KMVProfileCatalog& catalog = KMVProfileCatalog::sharedCatalog();
  if (name.isEmpty()) return catalog.selectedProfile();
  if (KMVProfileCatalog::Entry entry = catalog.profileNamed(name)) return entry;
  bool isNumber = false;
  const int identifier = name.toInt(&isNumber);
  return isNumber ? catalog.profileWithIdentifier(identifier) : nullptr;
}

QStringList absolutePaths(const QStringList& files) {
  QStringList paths;
  for (const QString& file : files) paths.append(QFileInfo(file).absoluteFilePath());
  return paths;
}

// Puts the edits into every item of the list; items they do not fit are
// reported and taken off the list. Answers how many were taken off.
int applyEdits(MainFormController& controller, const ConvertRequest& request) {
  int refused = 0;
  for (const NodeInfo::Ptr& item : controller.videoData()) {
    if (const QString reason = applyConvertRequest(request, *item); !reason.isEmpty()) {
      QTextStream(stderr) << QStringLiteral("Failed: %1: %2").arg(item->mediaFileInfo().source(), reason) << Qt::endl;
      controller.deleteItemView(item);
      ++refused;
    }
  }
  return refused;
}

}  // namespace

int convertFiles(const ConvertRequest& request) {
  QTextStream err(stderr);
  const KMVProfileCatalog::Entry entry = findProfile(request.profileName);
  if (entry == nullptr) {
    err << QStringLiteral("Unknown profile '%1': `videoconverter profiles` lists them.").arg(request.profileName)
        << Qt::endl;
    return kExitUsage;
  }
  if (!MainFormController::itemCanSelectProfile(*entry)) {
    // The window's missing-codec alert, asked on the terminal.
    QCoreApplication::processEvents();
    return kExitFailed;
  }
  const std::optional<ProfileSettingInfo> profile = ProfileAction::makeProfileSettingInfo(*entry);
  if (!profile) {
    err << QStringLiteral("The profile %1 is damaged in the catalogue.").arg(entry->DisplayName) << Qt::endl;
    return kExitFailed;
  }
  const QString folder =
      QFileInfo(request.outputFolder.isEmpty() ? DefOutputPath : request.outputFolder).absoluteFilePath();
  if (!CommonClass::creatOutputDirectory(folder) || !QFileInfo(folder).isWritable()) {
    err << QStringLiteral("Cannot write into the output folder %1").arg(folder) << Qt::endl;
    return kExitFailed;
  }

  UIInfoDB db;
  MainFormController controller(db);
  controller.setOutputFolder(folder);
  controller.setMergeChecked(request.merge);
  controller.setCurrentProfile(*profile);
  ConvertRunReport report(controller, isatty(STDOUT_FILENO) != 0);
  InterruptWatcher interrupt([&] {
    QTextStream(stderr) << "Stopping... (Ctrl-C again quits at once)" << Qt::endl;
    controller.cancelAllConvert();
  });
  QObject::connect(&controller, &MainFormController::windowStateChanged, [](MainFormController::WindowState state) {
    if (state != MainFormController::WindowState::kConverting) QCoreApplication::quit();
  });

  QObject::connect(&controller, &MainFormController::addingFinished, &QCoreApplication::quit);
  controller.addFilesToMainList(absolutePaths(request.files));
  if (controller.isAdding()) QCoreApplication::exec();
  report.addFailedBeforeStart(static_cast<int>(request.files.size() - controller.videoData().size()));
  report.addFailedBeforeStart(applyEdits(controller, request));
  if (!interrupt.interrupted()) {
    controller.showConverterWindowModal();
    if (controller.isConverting()) QCoreApplication::exec();
  }
  const bool allConverted = report.printSummary();
  if (interrupt.interrupted()) return kExitInterrupted;
  return allConverted ? 0 : kExitFailed;
}

int runConvertCommand(const QStringList& arguments, TerminalAlertPresenter& alerts) {
  const ParsedConvertArguments parsed = parseConvertArguments(arguments);
  if (!parsed.request) {
    QTextStream(stderr) << "videoconverter convert: " << parsed.error << "\n\n" << convertUsage() << Qt::flush;
    return kExitUsage;
  }
  alerts.setAssumeFirstButton(parsed.request->answerYes);
  MainWindowShell headless;
  ApplicationLifecycle::startUp(headless);
  const int exitCode = convertFiles(*parsed.request);
  ApplicationLifecycle::applicationShouldTerminate(headless);
  return exitCode;
}
