// The playback side of PlayVideo: records filled from nodes, the library's
// renderer started and driven, dragged rectangles read back, pictures taken.
#include <QFileInfo>
#include <QMutexLocker>

#include <atomic>
#include <cstring>

#include "CommonClass/CommonClass.h"
#include "CommonClass/NotificationCenter.h"
#include "CommonClass/StandardPaths.h"
#include "MediaClass/MediaItemRecord.h"
#include "MediaClass/PlayVideo.h"

namespace {

constexpr double kMicrosecondsPerSecond = 1000000.0;
// The library's sign that the watermark was set by the preview.
constexpr int32_t kPreviewWatermarkFlag = 12;
constexpr int32_t kUnchangedVolume = 256;
constexpr int32_t kLeastThumbnailSecond = 3;

// The record the library's last rectangle callback was about.
std::atomic<int> currentRecord{0};

void readCropInfo(int index) {
  currentRecord = index;
  NotificationCenter::defaultCenter().postNotificationName(QLatin1String(PlayVideo::kReadCropInfo));
}

void readWatermarkInfo(int index) {
  currentRecord = index;
  NotificationCenter::defaultCenter().postNotificationName(QLatin1String(PlayVideo::kReadWatermarkInfo));
}

bool hasVideo(const NodeInfo& node) { return node.decoderInfo()->m_bVideoStream > 0; }

// The common part of both fills: file, probed record and sound choice.
void fillSource(const NodeInfo& node, MediaItem& record) {
  const bool withSound = node.selectAudioStream() != -1 && node.mediaFileInfo().getAudioStream() != 0;
  record.m_AudioDisable = withSound ? 0 : 1;
  record.m_audioStreamIndex = withSound ? node.selectAudioStream() : 0;
  record.m_VideoDisable = hasVideo(node) ? 0 : 1;
  record.m_bEnableHwaccel = 1;
}

}  // namespace

PlayVideo::PlayVideo() : records_(new MediaItem[kMostRecords]) {}

PlayVideo::~PlayVideo() { stopPlay(); }

int PlayVideo::currentRecordIndex() { return currentRecord; }

bool PlayVideo::fillRecord(const NodeInfo& node) {
  if (mediaDataCount_ >= kMostRecords || !MediaItemRecord::whyRefused(node).isEmpty()) return false;
  MediaItem& record = records_[mediaDataCount_];
  MediaItemRecord::fill(node, record);
  fillSource(node, record);
  if (record.m_watermarkInfo.m_watermarkType != 0) record.m_watermarkInfo.m_changed_flag = kPreviewWatermarkFlag;
  const CropSettingInfo& crop = node.cropSettingInfo();
  setCropInfo(crop.x(), crop.y(), crop.w(), crop.h());
  ++mediaDataCount_;
  return true;
}

bool PlayVideo::initMediaData(const NodeInfo::Ptr& node) {
  if (node == nullptr) return false;
  if (node->getChildNodeCount() == 0) return fillRecord(*node);
  for (const NodeInfo::Ptr& child : node->childNode()) {
    if (!fillRecord(*child)) return false;
  }
  return true;
}

bool PlayVideo::initOrigistMediaData(const NodeInfo::Ptr& node) {
  if (node == nullptr || !MediaItemRecord::whyRefused(*node).isEmpty()) return false;
  MediaItem& record = records_[0];
  std::memset(&record, 0, sizeof record);
  record.m_cbsize = VC_MEDIA_ITEM_SIZE;
  const QByteArray path = node->inputFilename().toUtf8();
  std::memcpy(record.m_FileName, path.constData(), static_cast<std::size_t>(path.size()));
  std::memcpy(&record.m_Info, node->decoderInfo(), sizeof record.m_Info);
  fillSource(*node, record);
  record.m_MediaEndPos = record.m_Info.m_Duration;
  record.m_cropW = record.m_Info.m_Width;
  record.m_cropH = record.m_Info.m_Height;
  record.m_volume = kUnchangedVolume;
  mediaDataCount_ = 1;
  return true;
}

void PlayVideo::updateMediaData(const NodeInfo::Ptr& node) {
  if (node == nullptr || mediaDataCount_ == 0 || isPlayOrigisVideo_) return;
  const int inUse = mediaDataCount_;
  mediaDataCount_ = 0;
  // The library reads the records in place; a failed fill keeps the count it had.
  if (!initMediaData(node)) mediaDataCount_ = inUse;
}

int32_t PlayVideo::startRendering(const PreviewTarget& view, const PreviewTarget& effectView) {
  if (mediaDataCount_ == 0) return -1;
  if (VideoConverter_Render(records_.get(), view.view, view.width, view.height, mediaDataCount_, effectView.view,
                            effectView.width, effectView.height) != 0) {
    mediaDataCount_ = 0;
    return -1;
  }
  rendering_ = true;
  currentRecord = 0;
  return 0;
}

int32_t PlayVideo::startEdited(const NodeInfo::Ptr& node, const PreviewTarget& view,
                               const PreviewTarget& effectView) {
  // The records are about to be rewritten: a preview still reading them goes first.
  if (rendering_) stopPlay();
  mediaDataCount_ = 0;
  isPlayOrigisVideo_ = false;
  if (!initMediaData(node)) {
    mediaDataCount_ = 0;
    return -1;
  }
  return startRendering(view, effectView);
}

int32_t PlayVideo::playVideo(const NodeInfo::Ptr& node, const PreviewTarget& view, const PreviewTarget& effectView) {
  VideoConverter_SetReadCropDataFunction(&readCropInfo);
  VideoConverter_SetReadWatermarkDataFunction(&readWatermarkInfo);
  return startEdited(node, view, effectView);
}

int32_t PlayVideo::playVideoByNodeInfo(const NodeInfo::Ptr& node, const PreviewTarget& view) {
  return startEdited(node, view, {});
}

int32_t PlayVideo::playOrigisVideoFromNode(const NodeInfo::Ptr& node, const PreviewTarget& view) {
  if (rendering_) stopPlay();
  if (!initOrigistMediaData(node)) return -1;
  const int32_t result = startRendering(view, {});
  isPlayOrigisVideo_ = result == 0;
  return result;
}

void PlayVideo::pausePlay() {
  QMutexLocker lock(&condition_);
  VideoConverter_Pause();
}

void PlayVideo::resume() {
  QMutexLocker lock(&condition_);
  VideoConverter_Resume();
}

void PlayVideo::stopPlay() {
  // Abort and release reach a running conversion when no preview runs: only a preview this player started is stopped.
  const bool rendering = rendering_;
  rendering_ = false;
  {
    QMutexLocker lock(&condition_);
    mediaDataCount_ = 0;
    if (rendering) VideoConverter_Abort();
  }
  if (rendering) VideoConverter_Destory();
  isPlayOrigisVideo_ = false;
}

double PlayVideo::getCurrentTime() const {
  double position = static_cast<double>(VideoConverter_GetCurrentTime());
  if (beginTime_ > 0) position -= beginTime_;
  return position;
}

void PlayVideo::setCurrentTime(double microseconds) { VideoConverter_RenderSeek(static_cast<int64_t>(microseconds)); }

void PlayVideo::stepPictures(int count) { VideoConverter_RenderStep(count); }

double PlayVideo::getLength() const {
  double length = static_cast<double>(info_.m_Duration);
  if (mediaDataCount_ > 0) {
    // The original's length is the one probed; edited records last as long as the library's timeline.
    length = isPlayOrigisVideo_ ? static_cast<double>(records_[0].m_Info.m_Duration)
                                : static_cast<double>(VideoConverter_GetDuration());
  }
  if (endTime_ > 0) length = endTime_;
  if (beginTime_ > 0) length -= beginTime_;
  return length;
}

void PlayVideo::setCropInfo(int32_t x, int32_t y, int32_t w, int32_t h) { VideoConverter_Render_SetCrop(x, y, w, h); }

void PlayVideo::refreshPlayerCropRect(const NodeInfo::Ptr& node) {
  if (node == nullptr) return;
  const CropSettingInfo& crop = node->cropSettingInfo();
  setCropInfo(crop.x(), crop.y(), crop.w(), crop.h());
}

void PlayVideo::cropInfo(const NodeInfo::Ptr& node) {
  const int index = currentRecord;
  if (node == nullptr || index < 0 || index >= mediaDataCount_) return;
  const MediaItem& record = records_[index];
  node->cropSettingInfo().setRect(record.m_cropX, record.m_cropY, record.m_cropW, record.m_cropH);
  updateMediaData(node);
}

void PlayVideo::watermarkInfo(const NodeInfo::Ptr& node) {
  const int index = currentRecord;
  if (node == nullptr || index < 0 || index >= mediaDataCount_) return;
  const _WatermarkInfo& record = records_[index].m_watermarkInfo;
  WatermarkInfo& watermark = node->watermarkInfo();
  if (watermark.m_watermarkType() != WatermarkInfo::kTypeText) {
    watermark.setM_imgX(record.m_x);
    watermark.setM_imgY(record.m_y);
    watermark.setM_imgW(record.m_w);
    watermark.setM_imgH(record.m_h);
  } else {
    watermark.setM_x(record.m_x);
    watermark.setM_y(record.m_y);
    watermark.setM_w(record.m_w);
    watermark.setM_h(record.m_h);
  }
  updateMediaData(node);
}

PreviewPicture PlayVideo::currentImage() const {
  const DECODER_INFO* probed = hasInfo_ ? &info_ : (mediaDataCount_ > 0 ? &records_[0].m_Info : nullptr);
  if (probed == nullptr) return {};
  uint8_t* pixels = nullptr;
  int width = probed->m_Width;
  int height = probed->m_Height;
  int bytesPerRow = 0;
  int bitsPerPixel = 0;
  if (VideoConverter_GetCurrentBitmap(&pixels, &width, &height, &bytesPerRow, &bitsPerPixel) != 0) return {};
  // A copy, since the library's pixels live only until its next call.
  return {width, height, bytesPerRow,
          QByteArray(reinterpret_cast<const char*>(pixels), static_cast<qsizetype>(bytesPerRow) * height)};
}

int32_t PlayVideo::getCurrentImage(const NodeInfo::Ptr& node, int32_t seconds) {
  if (node == nullptr) return -1;
  seconds = std::max(seconds, kLeastThumbnailSecond);
  const QString imagePath = StandardPaths::temporaryDataPath() +
                            QStringLiteral("%1%2.bmp").arg(node->outputFilename()).arg(seconds);
  const int32_t result =
      VideoConverter_GetMediaInfo2(node->inputFilename().toUtf8().constData(), imagePath.toUtf8().constData(), &info_,
                                   static_cast<int64_t>(seconds * kMicrosecondsPerSecond));
  hasInfo_ = result == 0;
  if (result == 0) node->mediaFileInfo().setImageName(imagePath);
  return result;
}

void PlayVideo::showMessage(const QString& text) { CommonClass::showMessage(text); }
