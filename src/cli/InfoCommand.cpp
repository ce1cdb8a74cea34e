// videoconverter info: runs the start-up sequence headless and prints the
// product name, the version and every folder the program uses.

#include <QTextStream>

#include "Action/ApplicationLifecycle.h"
#include "Action/UIAction.h"
#include "Commands.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/StandardPaths.h"
#include "ProjectVersion.h"

int runInfoCommand(const QStringList& arguments) {
  QTextStream out(stdout);
  if (!arguments.isEmpty()) {
    QTextStream(stderr) << "info takes no arguments" << Qt::endl;
    return 2;
  }
  MainWindowShell headless;
  ApplicationLifecycle::startUp(headless);

  const auto row = [&out](const char* label, const QString& value) {
    out << QStringLiteral("%1 %2").arg(QLatin1String(label), -22).arg(value) << Qt::endl;
  };
  row("Product:", kProductName.isEmpty() ? QStringLiteral("(ProductInfo archive missing or unreadable)") : kProductName);
  row("Version:", QLatin1String(kBundleVersion));
  row("Profile:", kProfileName);
  row("Output folder:", DefOutputPath);
  row("Input folder:", DefInputPath);
  row("Snapshot folder:", photoOutputPath);
  row("Snapshot format:", photoOutputFormat);
  row("Scratch folder:", sysTmpPath);
  row("Thumbnail folder:", videoImagePath);
  row("Run temporary folder:", sharedMemoryPath);
  row("Log folder:", KMVLog::folder());
  row("Configuration:", UIAction::configXmlPath());
  row("Private data:", StandardPaths::privateDataPath());
  row("Caches:", StandardPaths::cacheDataPath());
  row("Resources:", StandardPaths::resourcePath());
  row("Product archive:", CommonClass::productInfoPath());
  row("Update check at start:", isAutoUpdates ? QStringLiteral("Yes") : QStringLiteral("No"));

  return ApplicationLifecycle::applicationShouldTerminate(headless) ? 0 : 1;
}
