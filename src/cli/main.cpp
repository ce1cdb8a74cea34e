// The command line: videoconverter <command> [arguments].

#include <QCoreApplication>
#include <QTextStream>

#include <functional>

#include "Action/ApplicationLifecycle.h"
#include "Commands.h"
#include "ConvertRequest.h"
#include "ProjectVersion.h"
#include "TerminalServices.h"

namespace {

struct Command {
  const char* name;
  const char* synopsis;
  const char* summary;
  std::function<int(const QStringList&, TerminalServices&)> run;
  // A longer usage text than the synopsis and summary, when the command has options to explain.
  std::function<QString()> usage = nullptr;
};

template <int (*run)(const QStringList&)>
int withoutServices(const QStringList& arguments, TerminalServices& /*services*/) {
  return run(arguments);
}

const Command kCommands[] = {
    {"info", "", "start up as the program does and print the product, version and folders",
     withoutServices<runInfoCommand>},
    {"fetch", "URL --output FILE [--resume]", "download an address, resuming FILE.download",
     withoutServices<runFetchCommand>},
    {"probe", "FILE... [--json]", "print the properties of media files as adding them reads them",
     withoutServices<runProbeCommand>},
    {"profiles", "", "list the output profiles of the catalogue by group", withoutServices<runProfilesCommand>},
    {"convert", "FILE... [--profile NAME] [--output DIR] [options]", "convert files with edits",
     [](const QStringList& arguments, TerminalServices& services) {
       return runConvertCommand(arguments, services.alerts);
     },
     convertUsage},
    {"frame", "FILE --at SECONDS --output PICTURE [--size WxH] [options]",
     "write the picture the preview shows at a time, after the edits", withoutServices<runFrameCommand>, frameUsage},
    {"tags", "FILE... [--json]", "print the tags of media files and save their covers as pictures",
     withoutServices<runTagsCommand>},
    {"analyze", "URL [--quality 0|1|2] [--json]", "list the videos of a web page and the one chosen",
     withoutServices<runAnalyzeCommand>, analyzeUsage},
    {"download", "[URL...] [--quality 0|1|2] [--folder DIR] [--list] [--convert [--profile NAME]]",
     "download the videos of web pages through the download list", withoutServices<runDownloadCommand>, downloadUsage},
};

void printUsage(QTextStream& stream) {
  stream << "Usage: videoconverter <command> [arguments]\n"
            "       videoconverter <command> --help\n"
            "       videoconverter --version\n\nCommands:\n";
  for (const Command& command : kCommands) {
    stream << QStringLiteral("  %1 %2").arg(QLatin1String(command.name), -10).arg(QLatin1String(command.summary))
           << '\n';
  }
  stream.flush();
}

void printCommandUsage(const Command& command, QTextStream& stream) {
  if (command.usage) {
    stream << command.usage();
  } else {
    stream << QStringLiteral("Usage: videoconverter %1 %2\n%3.\n")
                  .arg(QLatin1String(command.name), QLatin1String(command.synopsis), QLatin1String(command.summary));
  }
  stream.flush();
}

bool asksForHelp(const QStringList& arguments) {
  return arguments.contains(QLatin1String("--help")) || arguments.contains(QLatin1String("-h"));
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  ApplicationLifecycle::identifyApplication();

  TerminalServices services;
  PlatformServices::install(&services.alerts, &services.panels, &services.workspace);

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
    if (name != QLatin1String(command.name)) continue;
    if (asksForHelp(arguments)) {
      printCommandUsage(command, out);
      return 0;
    }
    return command.run(arguments, services);
  }
  err << "videoconverter: unknown command '" << name << "'\n";
  printUsage(err);
  return 2;
}
