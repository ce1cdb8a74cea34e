#include "MainFormAction.h"

#include <QDateTime>
#include <QFileInfo>

#include "Action/ApplicationLifecycle.h"
#include "Action/NodeInfoAction.h"
#include "Action/UIAction.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "MediaClass/PlayVideo.h"

int32_t MainFormAction::totalAddFileNum = 0;

namespace {

// "There is 1 file:\n<names> Decode failed" or "There are <n> files:\n...".
QString decodeFailedTitle(int count, const QString& failedNames) {
  const bool one = count == 1;
  const QString detail =
      one ? QStringLiteral("%1 file:\n%2 Decode failed") : QStringLiteral("%1 files:\n%2 Decode failed");
  return (one ? QStringLiteral("There is ") : QStringLiteral("There are ")) +
         detail.arg(QString::number(count), failedNames);
}

// A list node for a probed file with the defaults of a newly added item.
NodeInfo::Ptr makeFileNode(const QString& path, const QString& imageName, const PlayVideo& probe) {
  NodeInfo::Ptr node = NodeInfo::create();
  node->setType(NodeInfo::kTypeFile);
  node->setFileType(1);
  node->setNodeIconName(QStringLiteral("iconVideo"));
  node->setInputFilename(path);
  node->setOutputFilename(QFileInfo(path).completeBaseName());
  node->setDecoderInfo(probe.decoderInfo());
  node->setMediaFileInfo(MainFormAction::makeMediaFileInfo(path, imageName, probe));

  const MediaFileInfo& media = node->mediaFileInfo();
  node->trimSettingInfo().setStartTime(0);
  node->trimSettingInfo().setEndTime(media.iTotalTime());
  node->cropSettingInfo().setRect(0, 0, media.frameWidth(), media.frameHeight());
  node->setSelectAudioStream(probe.getDefaultAudioStream());
  return node;
}

// Reads the file's tags into the node. An embedded cover, saved at
// `coverPath`, becomes the tags' picture and replaces the probe thumbnail.
// Only a cover the tag library reports saving counts, so that a picture left
// at the same path by another file of the same name is not taken for it.
void readTags(NodeInfo& node, const QString& coverPath) {
  MediaMetaData tags = MediaMetaData::initWithFile(node.inputFilename(), coverPath);
  const bool hasCover = !coverPath.isEmpty() && tags.image() == coverPath && QFileInfo::exists(coverPath);
  if (hasCover) {
    node.mediaFileInfo().setImageName(coverPath);
  } else {
    tags.setImage(QString());
  }
  node.setMetaData(tags);
  node.setOrgMetaData(tags);
}

}  // namespace

QString MainFormAction::thumbnailPath(const QString& path, const QString& stamp) {
  if (videoImagePath.isEmpty()) return {};
  return QStringLiteral("%1/%2%3.bmp").arg(videoImagePath, QFileInfo(path).completeBaseName(), stamp);
}

QString MainFormAction::coverThumbnailPath(const QString& path, const QString& stamp) {
  if (videoImagePath.isEmpty()) return {};
  return QStringLiteral("%1/thumbNail%2%3.bmp").arg(videoImagePath, QFileInfo(path).completeBaseName(), stamp);
}

MediaFileInfo MainFormAction::makeMediaFileInfo(const QString& path, const QString& imageName, const PlayVideo& probe) {
  MediaFileInfo media;
  media.setFileName(path);
  if (!imageName.isEmpty() && QFileInfo::exists(imageName)) media.setImageName(imageName);

  const double seconds = probe.getLength() / 1000000.0;
  media.setFrameWidth(probe.getWidth());
  media.setFrameHeight(probe.getHeight());
  media.setDTotalTime(seconds);
  media.setITotalTime(static_cast<int32_t>(seconds));
  media.setTotalTime(seconds);
  media.setVideoStream(probe.videoStream());
  media.setAudioStream(probe.audioStream());
  media.setSource(QFileInfo(path).fileName());
  media.setDefalutAudioStream(probe.getDefaultAudioStream());
  const AudioStremInfo* streams = probe.getAudioStreamInfo();
  for (int32_t index = 0; index < probe.getAudioSteamCnt(); ++index) {
    auto stream = std::make_shared<AudioStream>();
    stream->setAudioStreamName(QString::fromUtf8(streams[index].m_audioStreamName));
    stream->setAudioStream(streams[index].m_bAudioStream);
    media.addAudioStream(std::move(stream));
  }
  media.setSize(static_cast<double>(CommonClass::getFileSizeByBytes(path)));
  return media;
}

void MainFormAction::addFile(const QStringList& paths) {
  QString failedNames;
  int failedCount = 0;
  for (const QString& path : paths) {
    UIAction::creatOutputDirectory(sysTmpPath);
    UIAction::creatOutputDirectory(videoImagePath);
    const QString stamp = ApplicationLifecycle::timeStampUTC8(QDateTime::currentDateTimeUtc());
    const QString imageName = thumbnailPath(path, stamp);

    PlayVideo probe;
    if (probe.getMediaInfo(path, imageName) != 0) {
      failedNames += QFileInfo(path).fileName() + QLatin1Char('\n');
      ++failedCount;
      continue;
    }

    const NodeInfo::Ptr node = makeFileNode(path, imageName, probe);
    node->setAddNum(totalAddFileNum++);
    readTags(*node, coverThumbnailPath(path, stamp));

    const NodeInfo::Ptr root = NodeInfoAction::getRootNode();
    root->addChildNode(node);
    node->setParentNode(root);
    if (delegate_ != nullptr) delegate_->addItemView(node);
  }
  if (failedCount > 0) CommonClass::showMessage(decodeFailedTitle(failedCount, failedNames), QString());
}
