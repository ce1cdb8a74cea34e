#include "MediaItemRecord.h"

#include <cstring>

#include "MediaClass/RecordFields.h"

namespace MediaItemRecord {

namespace {

constexpr int64_t kMicrosecondsPerSecond = 1000000;
// The library's sign that the watermark settings were set by the job.
constexpr int32_t kWatermarkChangedFlag = 8;

bool hasPicturePath(const WatermarkInfo& watermark) {
  return watermark.m_watermarkType() == WatermarkInfo::kTypePicture && !watermark.m_imagePath().isEmpty();
}

void setRect(_WatermarkInfo& record, int32_t x, int32_t y, int32_t w, int32_t h) {
  record.m_x = x;
  record.m_y = y;
  record.m_w = w;
  record.m_h = h;
}

void fillWatermark(const WatermarkInfo& watermark, _WatermarkInfo& record) {
  record.m_watermarkType = watermark.m_watermarkType();
  if (record.m_watermarkType == WatermarkInfo::kTypeNone) return;
  if (hasPicturePath(watermark)) {
    RecordFields::copyUpTo(record.m_imagePath, watermark.m_imagePath().toUtf8());
    setRect(record, watermark.m_imgX(), watermark.m_imgY(), watermark.m_imgW(), watermark.m_imgH());
  } else if (watermark.m_watermarkType() == WatermarkInfo::kTypeText && !watermark.m_text().isEmpty()) {
    RecordFields::copyUpTo(record.m_text, watermark.m_text().toUtf8());
    record.m_fontinfo.m_fontcolor = watermark.m_fontcolor();
    RecordFields::copyUpTo(record.m_fontinfo.m_fontname, watermark.m_fontname().toUtf8());
    record.m_fontinfo.m_fontsize = watermark.m_fontsize();
    record.m_fontinfo.m_fontstyle = watermark.m_fontstyle();
    setRect(record, watermark.m_x(), watermark.m_y(), watermark.m_w(), watermark.m_h());
  } else {
    // Nothing to draw: a picture without a path, a text without text, an unknown kind.
    record.m_watermarkType = WatermarkInfo::kTypeNone;
  }
  // Opacity in percent to 0 ... 255, truncated: 100 % gives 254 and stays so.
  record.m_transparency = static_cast<int32_t>(watermark.m_transparency() * 2.55);
  record.m_changed_flag = kWatermarkChangedFlag;
}

}  // namespace

QString whyRefused(const NodeInfo& node) {
  constexpr std::size_t kPathBytes = sizeof(MediaItem::m_FileName);
  constexpr std::size_t kPictureBytes = sizeof(_WatermarkInfo::m_imagePath);
  const QByteArray path = node.inputFilename().toUtf8();
  if (!RecordFields::fitsTerminated(path, kPathBytes)) {
    return QStringLiteral("The file path is longer than the converter takes (%1 bytes, at most %2): %3")
        .arg(path.size())
        .arg(kPathBytes - 1)
        .arg(node.inputFilename());
  }
  // The picture path may fill its field to the last byte.
  const WatermarkInfo& watermark = node.watermarkInfo();
  const QByteArray picture = watermark.m_imagePath().toUtf8();
  if (hasPicturePath(watermark) && static_cast<std::size_t>(picture.size()) > kPictureBytes) {
    return QStringLiteral("The watermark picture path is longer than the converter takes (%1 bytes, at most %2): %3")
        .arg(picture.size())
        .arg(kPictureBytes)
        .arg(watermark.m_imagePath());
  }
  return {};
}

int32_t volumeLevel(int32_t percent) {
  const double compressed = percent > 100 ? (percent - 100) / 3.0 + 100.0 : percent;
  return static_cast<int32_t>(compressed * 2.56);
}

void fill(const NodeInfo& node, MediaItem& item) {
  std::memset(&item, 0, sizeof item);
  item.m_cbsize = VC_MEDIA_ITEM_SIZE;
  RecordFields::copyTerminated(item.m_FileName, node.inputFilename().toUtf8());
  item.m_MediaType = 0;
  std::memcpy(&item.m_Info, node.decoderInfo(), sizeof item.m_Info);

  const TrimSettingInfo& trim = node.trimSettingInfo();
  item.m_MediaStartPos = trim.startTime() * kMicrosecondsPerSecond;
  item.m_MediaEndPos = trim.endTime() * kMicrosecondsPerSecond;

  const EffectSettingInfo& effect = node.effectSettingInfo();
  const CropSettingInfo& crop = node.cropSettingInfo();
  item.m_RotateAngle = effect.rotateAngle();
  item.m_RotateFlip_X = effect.rotateFlipX();
  item.m_RotateFlip_Y = effect.rotateFlipY();
  item.m_cropX = crop.x();
  item.m_cropY = crop.y();
  item.m_cropW = crop.w();
  item.m_cropH = crop.h();
  item.m_ViewType = crop.zoom();
  item.m_satruation = effect.saturation();
  item.m_brightness = effect.brightness();
  item.m_Contrast = effect.contrast();

  const bool hasAudio = node.selectAudioStream() != -1 && node.mediaFileInfo().getAudioStream() != 0;
  item.m_AudioDisable = hasAudio ? 0 : 1;
  item.m_audioStreamIndex = hasAudio ? node.selectAudioStream() : 0;
  item.m_VideoDisable = node.curProfileSetting().type();

  item.m_EffectID[0] = effect.effectModel();
  item.m_EffectID[1] = effect.modelOf3D();
  item.m_pEffectArgs[1].arg1 = effect.depth() / 5;
  item.m_pEffectArgs[1].arg6 = effect.modelOf3D();

  item.m_fadeIn_len = effect.fadeIn() * kMicrosecondsPerSecond;
  item.m_fadeOut_len = effect.fadeOut() * kMicrosecondsPerSecond;
  item.m_fadeVideoInfo.m_fadeIn_len = effect.videoFadeIn() * kMicrosecondsPerSecond;
  item.m_fadeVideoInfo.m_fadeOut_len = effect.videoFadeOut() * kMicrosecondsPerSecond;
  item.m_volume = volumeLevel(effect.volume());

  fillWatermark(node.watermarkInfo(), item.m_watermarkInfo);
  item.m_bEnableHwaccel = 1;
}

}  // namespace MediaItemRecord
