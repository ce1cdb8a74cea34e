// videoconverter analyze URL [--quality 0|1|2] [--json]: analyses a page the
// way the download window does (the page-analysis library on a worker, the
// size of each file probed, one chosen by the quality rule) and prints the
// site number, every file found and the one chosen. The exit code is 1 when
// nothing can be downloaded from the address.

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <optional>

#include "Commands.h"
#include "CommonClass/CommonClass.h"
#include "Download/DownloadSettings.h"
#include "Download/GetVideoInfoThread.h"
#include "parseurl.h"

namespace {

constexpr const char* kUsage = "Usage: videoconverter analyze URL [--quality 0|1|2] [--json]";

struct AnalyzeArguments {
  QString address;
  int quality = 0;
  bool json = false;
};

std::optional<AnalyzeArguments> parseArguments(const QStringList& arguments, QString* problem) {
  AnalyzeArguments parsed;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (argument == QLatin1String("--json")) {
      parsed.json = true;
    } else if (argument == QLatin1String("--quality")) {
      const QString value = i + 1 < arguments.size() ? arguments[++i] : QString();
      if (value != QLatin1String("0") && value != QLatin1String("1") && value != QLatin1String("2")) {
        *problem = QStringLiteral("--quality takes 0 (highest), 1 (middle) or 2 (lowest)");
        return std::nullopt;
      }
      parsed.quality = value.toInt();
    } else if (argument.startsWith(QLatin1String("--")) || !parsed.address.isEmpty()) {
      *problem = QStringLiteral("unexpected argument '%1'").arg(argument);
      return std::nullopt;
    } else {
      parsed.address = argument;
    }
  }
  if (parsed.address.isEmpty()) {
    *problem = QStringLiteral("an address is needed");
    return std::nullopt;
  }
  return parsed;
}

QString frameText(const DownloadVideoInfo& file) {
  return QStringLiteral("%1x%2").arg(file.dimension().width()).arg(file.dimension().height());
}

// Why nothing was chosen.
QString failureText(const GetVideoInfoThread& worker, const VideoInfoObject& task) {
  if (worker.lastParseResult() != PARSE_OK) return QString::fromLatin1(GetParseErrorText(worker.lastParseResult()));
  if (task.arrFileList().isEmpty()) return QStringLiteral("no file found on the page could be reached");
  return QStringLiteral("no file was chosen");
}

QJsonObject toJson(int site, const VideoInfoObject& task, const QString& failure) {
  QJsonArray files;
  for (const DownloadVideoInfo& file : task.arrFileList()) {
    files.append(QJsonObject{{QStringLiteral("url"), file.downloadUrl()},
                             {QStringLiteral("extension"), file.extention()},
                             {QStringLiteral("size"), file.videoSize()},
                             {QStringLiteral("size_text"), file.videoSizeText()},
                             {QStringLiteral("width"), file.dimension().width()},
                             {QStringLiteral("height"), file.dimension().height()},
                             {QStringLiteral("duration"), file.length()},
                             {QStringLiteral("title"), file.videoTitle()},
                             {QStringLiteral("thumbnail"), file.imgURL()}});
  }
  const bool chosen = !task.downURLStr().isNull();
  QJsonObject object{{QStringLiteral("page"), task.htmUrlStr()},
                     {QStringLiteral("site"), site},
                     {QStringLiteral("files"), files},
                     {QStringLiteral("chosen"), chosen ? QJsonValue(task.selectFileIndex()) : QJsonValue()}};
  if (!chosen) object.insert(QStringLiteral("error"), failure);
  return object;
}

void printText(QTextStream& out, int site, const VideoInfoObject& task) {
  out << "Page:  " << task.htmUrlStr() << Qt::endl << "Site:  " << site << Qt::endl;
  out << "Files: " << task.arrFileList().size() << Qt::endl;
  for (qsizetype index = 0; index < task.arrFileList().size(); ++index) {
    const DownloadVideoInfo& file = task.arrFileList()[index];
    out << QStringLiteral("  %1%2 %3")
               .arg(index == task.selectFileIndex() ? '*' : ' ')
               .arg(index)
               .arg(file.downloadUrl())
        << Qt::endl;
    out << "      " << (file.extention().isEmpty() ? QStringLiteral("?") : file.extention()) << ", "
        << file.videoSizeText() << ", " << frameText(file) << ", "
        << CommonClass::formatTimeForDouble(static_cast<double>(file.length())) << Qt::endl;
    out << "      Title:     " << file.videoTitle() << Qt::endl;
    out << "      Thumbnail: " << (file.imgURL().isEmpty() ? QStringLiteral("none") : file.imgURL()) << Qt::endl;
  }
  if (!task.downURLStr().isNull()) {
    out << "Chosen: " << task.selectFileIndex() << " " << task.downURLStr() << " (" << task.videoFormat() << ", "
        << task.strVideoSize() << ")" << Qt::endl;
  }
}

}  // namespace

QString analyzeUsage() {
  return QLatin1String(kUsage) +
         QStringLiteral(
             "\nAnalyses the page at URL as the download window does and prints the files found, with the one that\n"
             "the quality rule chooses (0 highest, the default; 1 middle; 2 lowest). Exits with 1 when the address\n"
             "has no video to download.\n");
}

int runAnalyzeCommand(const QStringList& arguments) {
  QTextStream out(stdout);
  QTextStream err(stderr);
  QString problem;
  const std::optional<AnalyzeArguments> parsed = parseArguments(arguments, &problem);
  if (!parsed) {
    err << "videoconverter analyze: " << problem << Qt::endl << kUsage << Qt::endl;
    return 2;
  }

  SetWorkPath("/tmp/");
  qualityParam = parsed->quality;
  const auto task = std::make_shared<VideoInfoObject>();
  task->setHtmUrlStr(parsed->address);
  GetVideoInfoThread worker;
  QEventLoop loop;
  QObject::connect(&worker, &GetVideoInfoThread::videoInfoDidFinish, &loop, &QEventLoop::quit);
  worker.getVideoInfo(task);
  loop.exec();

  const int site = GetWebSiteID(parsed->address.toUtf8().constData());
  const QString failure = failureText(worker, *task);
  if (parsed->json) {
    out << QJsonDocument(toJson(site, *task, failure)).toJson(QJsonDocument::Indented) << Qt::flush;
  } else {
    printText(out, site, *task);
  }
  if (task->downURLStr().isNull()) {
    err << "videoconverter analyze: no video to download at " << parsed->address << ": " << failure << Qt::endl;
    return 1;
  }
  return 0;
}
