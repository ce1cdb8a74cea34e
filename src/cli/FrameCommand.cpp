// videoconverter frame FILE --at SECONDS [picture and trim options of
// convert] --output PICTURE.png|.jpg [--size WxH]: adds the file as the
// window does, puts the options into its settings, and writes the picture
// the preview shows at that time, through the same records a window fills.
// The exit code is 2 for bad arguments and 1 when no picture can be made.

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextStream>

#include <optional>

#include "Action/ApplicationLifecycle.h"
#include "Action/MainFormController.h"
#include "Commands.h"
#include "CommonClass/CommonClass.h"
#include "ConvertEdits.h"
#include "ConvertRequest.h"
#include "MediaClass/PlayVideo.h"

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr double kMicrosecondsPerSecond = 1000000.0;

struct FrameRequest {
  ConvertRequest edits;
  double atSeconds = 0;
  QString output;
  QSize size;  // empty: the picture's own size
};

// Takes out the frame command's own options and leaves the rest to convert's parser.
std::optional<FrameRequest> parseFrameArguments(const QStringList& arguments, QString& error) {
  FrameRequest request;
  std::optional<double> at;
  QStringList rest;
  for (int index = 0; index < arguments.size(); ++index) {
    const QString& name = arguments.at(index);
    const bool own = name == QLatin1String("--at") || name == QLatin1String("--output") || name == QLatin1String("--size");
    if (!own) {
      rest.append(name);
      continue;
    }
    if (index + 1 == arguments.size()) {
      error = QStringLiteral("%1 needs a value.").arg(name);
      return std::nullopt;
    }
    const QString value = arguments.at(++index);
    if (name == QLatin1String("--at")) {
      bool ok = false;
      at = value.toDouble(&ok);
      if (!ok || *at < 0) {
        error = QStringLiteral("--at takes seconds from the start, such as 12.5, not %1.").arg(value);
        return std::nullopt;
      }
    } else if (name == QLatin1String("--output")) {
      request.output = QFileInfo(value).absoluteFilePath();
    } else {
      const QRegularExpressionMatch size = QRegularExpression(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$")).match(value);
      request.size = size.hasMatch() ? QSize(size.captured(1).toInt(), size.captured(2).toInt()) : QSize();
      if (request.size.width() < 2 || request.size.height() < 2) {
        error = QStringLiteral("--size takes WIDTHxHEIGHT of at least 2x2, such as 640x360, not %1.").arg(value);
        return std::nullopt;
      }
    }
  }
  if (!at) error = QStringLiteral("--at is needed: the time of the picture, in seconds.");
  const QString kind = QFileInfo(request.output).suffix().toLower();
  if (error.isEmpty() && kind != QLatin1String("png") && kind != QLatin1String("jpg") && kind != QLatin1String("jpeg")) {
    error = QStringLiteral("--output is needed and names a .png or .jpg file.");
  }
  if (!error.isEmpty()) return std::nullopt;
  ParsedConvertArguments edits = parseConvertArguments(rest);
  if (!edits.request) {
    error = edits.error;
    return std::nullopt;
  }
  if (edits.request->files.size() != 1) {
    error = QStringLiteral("frame takes one file.");
    return std::nullopt;
  }
  request.edits = *edits.request;
  request.atSeconds = *at;
  return request;
}

// The item as the window would have it, with the edits; null after saying why not.
NodeInfo::Ptr addedItem(const FrameRequest& request) {
  QTextStream err(stderr);
  UIInfoDB db;
  MainFormController controller(db);
  QObject::connect(&controller, &MainFormController::addingFinished, &QCoreApplication::quit);
  controller.addFilesToMainList({QFileInfo(request.edits.files.front()).absoluteFilePath()});
  if (controller.isAdding()) QCoreApplication::exec();
  if (controller.videoData().isEmpty()) return nullptr;  // the adding said why
  const NodeInfo::Ptr item = controller.videoData().front();
  if (const QString reason = applyConvertRequest(request.edits, *item); !reason.isEmpty()) {
    err << QStringLiteral("Failed: %1").arg(reason) << Qt::endl;
    return nullptr;
  }
  if (item->decoderInfo()->m_bVideoStream <= 0) {
    err << QStringLiteral("%1 has no pictures.").arg(request.edits.files.front()) << Qt::endl;
    return nullptr;
  }
  return item;
}

int writeFrame(const FrameRequest& request) {
  QTextStream err(stderr);
  const NodeInfo::Ptr item = addedItem(request);
  if (item == nullptr) return kExitFailed;
  const QSize size = request.size.isEmpty()
                         ? QSize(item->mediaFileInfo().frameWidth(), item->mediaFileInfo().frameHeight())
                         : request.size;
  PlayVideo player;
  if (player.playVideoByNodeInfo(item, {nullptr, size.width(), size.height()}) != 0) {
    err << QStringLiteral("The preview cannot show %1.").arg(request.edits.files.front()) << Qt::endl;
    return kExitFailed;
  }
  player.pausePlay();
  const double lengthSeconds = player.getLength() / kMicrosecondsPerSecond;
  if (request.atSeconds > lengthSeconds) {
    err << QStringLiteral("--at %1 is past the end: the item lasts %2 (%3 s).")
               .arg(request.atSeconds)
               .arg(CommonClass::formatTimeForDouble(lengthSeconds))
               .arg(lengthSeconds, 0, 'f', 2)
        << Qt::endl;
    return kExitFailed;
  }
  player.setCurrentTime(request.atSeconds * kMicrosecondsPerSecond);
  const int result = VideoConverter_GetCurrentBitmap2(request.output.toUtf8().constData());
  player.stopPlay();
  if (result != 0) {
    err << (result == VC_ERROR_CANNOT_WRITE ? QStringLiteral("Cannot write %1.").arg(request.output)
                                             : QStringLiteral("No picture could be decoded at %1 s.").arg(request.atSeconds))
        << Qt::endl;
    return kExitFailed;
  }
  QTextStream(stdout) << request.output << Qt::endl;
  return 0;
}

}  // namespace

QString frameUsage() {
  return QStringLiteral(
      "Usage: videoconverter frame FILE --at SECONDS --output PICTURE.png|.jpg [--size WxH] [options]\n"
      "Writes the picture the preview shows at SECONDS of the item, after its edits.\n"
      "  --size WxH   the picture's size (the item's own picture size when not given)\n"
      "Every picture and trim option of `videoconverter convert` applies; see `videoconverter convert --help`.\n");
}

int runFrameCommand(const QStringList& arguments) {
  QString error;
  const std::optional<FrameRequest> request = parseFrameArguments(arguments, error);
  if (!request) {
    QTextStream(stderr) << "videoconverter frame: " << error << "\n\n" << frameUsage() << Qt::flush;
    return kExitUsage;
  }
  MainWindowShell headless;
  ApplicationLifecycle::startUp(headless);
  const int exitCode = writeFrame(*request);
  ApplicationLifecycle::applicationShouldTerminate(headless);
  return exitCode;
}
