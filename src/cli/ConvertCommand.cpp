// videoconverter convert FILE... [--profile NAME] [--output DIR] [options]:
// adds the files as the window does, puts the options into each item's
// settings, and converts the items one after another. The exit code is 1
// when any file failed, 130 when stopped by Ctrl-C, 2 for bad arguments.

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include <unistd.h>

#include "Action/ApplicationLifecycle.h"
#include "Action/MainFormAction.h"
#include "Action/NodeInfoAction.h"
#include "Action/ProfileAction.h"
#include "Commands.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "ConvertEdits.h"
#include "ConvertProgress.h"
#include "ConvertRequest.h"
#include "InterruptWatcher.h"
#include "MediaClass/ConversionRunner.h"
#include "Profile/KMVProfileCatalog.h"

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitInterrupted = 130;

// The nodes the adding step made, in order.
class AddedItems : public MainFormActionDelegate {
 public:
  void addItemView(const NodeInfo::Ptr& node) override { nodes.append(node); }
  NodeInfo::List nodes;
};

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

// The items to convert, each with the profile, the output folder and the
// edits; those the edits do not fit are reported and left out.
NodeInfo::List prepareItems(const NodeInfo::List& added, const ConvertRequest& request,
                            const ProfileSettingInfo& profile, const QString& folder, QTextStream& err) {
  NodeInfo::List items;
  for (const NodeInfo::Ptr& node : added) {
    node->setCurProfileSetting(profile);
    node->setOutputPath(folder);
    if (const QString reason = applyConvertRequest(request, *node); !reason.isEmpty()) {
      err << QStringLiteral("Failed: %1: %2").arg(node->mediaFileInfo().source(), reason) << Qt::endl;
    } else {
      items.append(node);
    }
  }
  return items;
}

int convertItems(const NodeInfo::List& items, int failedBefore) {
  ConvertProgress progress(items.size(), isatty(STDOUT_FILENO) != 0, [] { QCoreApplication::quit(); });
  progress.addFailedBeforeStart(failedBefore);
  ConversionRunner runner(&progress);
  InterruptWatcher interrupt([&runner] {
    QTextStream(stderr) << "Stopping... (Ctrl-C again quits at once)" << Qt::endl;
    runner.cancel();
  });
  runner.start(items);
  if (runner.isRunning()) QCoreApplication::exec();
  if (interrupt.interrupted()) return kExitInterrupted;
  return progress.failedCount() > 0 ? kExitFailed : 0;
}

int convertFiles(const ConvertRequest& request) {
  QTextStream err(stderr);
  const KMVProfileCatalog::Entry entry = findProfile(request.profileName);
  if (entry == nullptr) {
    err << QStringLiteral("Unknown profile '%1': `videoconverter profiles` lists them.").arg(request.profileName)
        << Qt::endl;
    return kExitUsage;
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

  AddedItems added;
  MainFormAction(&added).addFile(absolutePaths(request.files));
  NodeInfo::List items = prepareItems(added.nodes, request, *profile, folder, err);
  const int failedBefore = static_cast<int>(request.files.size() - items.size());
  if (request.merge && !items.isEmpty()) {
    if (failedBefore > 0) {
      err << QStringLiteral("Nothing merged: %1 of the files cannot be used.").arg(failedBefore) << Qt::endl;
      return kExitFailed;
    }
    NodeInfoAction::createMergeTableNodeInfo();
    items = {NodeInfoAction::getMergeRootNode()->getChildNodeAtIndex(0)};
  }
  return convertItems(items, failedBefore);
}

}  // namespace

int runConvertCommand(const QStringList& arguments) {
  const ParsedConvertArguments parsed = parseConvertArguments(arguments);
  if (!parsed.request) {
    QTextStream(stderr) << "videoconverter convert: " << parsed.error << "\n\n" << convertUsage() << Qt::flush;
    return kExitUsage;
  }
  MainWindowShell headless;
  ApplicationLifecycle::startUp(headless);
  const int exitCode = convertFiles(*parsed.request);
  ApplicationLifecycle::applicationShouldTerminate(headless);
  return exitCode;
}
