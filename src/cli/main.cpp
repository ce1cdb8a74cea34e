// The command line: videoconverter <command> [arguments].

#include <QCoreApplication>
#include <QTextStream>

#include <functional>

#include "Action/ApplicationLifecycle.h"
#include "Commands.h"
#include "CommonClass/PlatformServices.h"
#include "ProjectVersion.h"
#include "TerminalServices.h"

namespace {

struct Command {
  const char* name;
  const char* summary;
  std::function<int(const QStringList&)> run;
};

const Command kCommands[] = {
    {"info", "start up as the program does and print the product, version and folders", runInfoCommand},
    {"fetch", "URL --output FILE [--resume]: download an address, resuming FILE.download", runFetchCommand},
    {"probe", "FILE... [--json]: print the properties of media files as adding them reads them", runProbeCommand},
    {"profiles", "list the output profiles of the catalogue by group", runProfilesCommand},
    {"convert", "FILE... [--profile NAME] [--output DIR] [options]: convert files with edits", runConvertCommand},
    {"tags", "FILE... [--json]: print the tags of media files and save their covers as pictures", runTagsCommand},
    {"analyze", "URL [--quality 0|1|2] [--json]: list the videos of a web page and the one chosen", runAnalyzeCommand},
};

void printUsage(QTextStream& stream) {
  stream << "Usage: videoconverter <command> [arguments]\n"
            "       videoconverter --version\n\nCommands:\n";
  for (const Command& command : kCommands) {
    stream << QStringLiteral("  %1 %2").arg(QLatin1String(command.name), -10).arg(QLatin1String(command.summary))
           << '\n';
  }
  stream.flush();
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  ApplicationLifecycle::identifyApplication();

  TerminalAlertPresenter alerts;
  TerminalFilePanels panels;
  TerminalWorkspace workspace;
  PlatformServices::install(&alerts, &panels, &workspace);

  QStringList arguments = QCoreApplication::arguments().mid(1);
  QTextStream out(stdout);
  QTextStream err(stderr);
  if (arguments.isEmpty() || arguments.first() == QLatin1String("--help") || arguments.first() == QLatin1String("-h")) {
    printUsage(arguments.isEmpty() ? err : out);
    return arguments.isEmpty() ? 2 : 0;
  }
  if (arguments.first() == QLatin1String("--version")) {
    out << "videoconverter " << kBundleVersion << Qt::endl;
    return 0;
  }
  const QString name = arguments.takeFirst();
  for (const Command& command : kCommands) {
    if (name == QLatin1String(command.name)) return command.run(arguments);
  }
  err << "videoconverter: unknown command '" << name << "'\n";
  printUsage(err);
  return 2;
}
