#include "MediaFileImporter.h"

#include <QDateTime>
#include <QFileInfo>
#include <QMetaObject>
#include <QThread>

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"

namespace {

// A list node for a probed file with the defaults of a newly added item.
NodeInfo::Ptr makeFileNode(const QString& path, const QString& imageName, const PlayVideo& probe) {
  NodeInfo::Ptr node = NodeInfo::create();
  node->setType(NodeInfo::kTypeFile);
  node->setFileType(1);
  node->setNodeIconName(QStringLiteral("iconVideo"));
  node->setInputFilename(path);
  node->setOutputFilename(QFileInfo(path).completeBaseName());
  node->setDecoderInfo(probe.decoderInfo());
  node->setMediaFileInfo(MediaFileImporter::makeMediaFileInfo(path, imageName, probe));

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

MediaFileImporter::MediaFileImporter(int workerCount, QObject* parent) : QObject(parent) {
  pool_.setMaxThreadCount(workerCount > 0 ? workerCount : QThread::idealThreadCount());
}

MediaFileImporter::~MediaFileImporter() {
  *cancelled_ = true;
  pool_.waitForDone();
}

void MediaFileImporter::add(const QStringList& paths) {
  for (const QString& path : paths) {
    const std::size_t index = results_.size();
    results_.emplace_back();
    pool_.start([this, path, index, cancelled = cancelled_] {
      if (*cancelled) return;
      const Result result = importFile(path);
      QMetaObject::invokeMethod(
          this, [this, index, result] { store(index, result); }, Qt::QueuedConnection);
    });
  }
}

void MediaFileImporter::store(std::size_t index, const Result& result) {
  results_[index] = std::make_unique<Result>(result);
  while (delivered_ < results_.size() && results_[delivered_] != nullptr) {
    const Result ready = *results_[delivered_];
    ++delivered_;
    emit fileImported(ready);
  }
  if (delivered_ < results_.size()) return;
  results_.clear();
  delivered_ = 0;
  emit finished();
}

MediaFileImporter::Result MediaFileImporter::importFile(const QString& path) {
  const QString stamp = ApplicationLifecycle::timeStampUTC8(QDateTime::currentDateTimeUtc());
  const QString imageName = thumbnailPath(path, stamp);
  PlayVideo probe;
  if (probe.getMediaInfo(path, imageName) != 0) return {path, nullptr};
  const NodeInfo::Ptr node = makeFileNode(path, imageName, probe);
  readTags(*node, coverThumbnailPath(path, stamp));
  return {path, node};
}

QString MediaFileImporter::thumbnailPath(const QString& path, const QString& stamp) {
  if (videoImagePath.isEmpty()) return {};
  return QStringLiteral("%1/%2%3.bmp").arg(videoImagePath, QFileInfo(path).completeBaseName(), stamp);
}

QString MediaFileImporter::coverThumbnailPath(const QString& path, const QString& stamp) {
  if (videoImagePath.isEmpty()) return {};
  return QStringLiteral("%1/thumbNail%2%3.bmp").arg(videoImagePath, QFileInfo(path).completeBaseName(), stamp);
}

MediaFileInfo MediaFileImporter::makeMediaFileInfo(const QString& path, const QString& imageName,
                                                   const PlayVideo& probe) {
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
