#include "ConvertEdits.h"

#include <QFileInfo>

#include <cmath>

#include "ValueObject/SplitLimits.h"

namespace {

QString rectText(const QRect& rect) {
  return QStringLiteral("%1,%2,%3,%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

// Why the request does not fit the item; empty when it does.
QString whyNotApplicable(const ConvertRequest& request, const NodeInfo& node) {
  const MediaFileInfo& media = node.mediaFileInfo();
  const ProfileSettingInfo& profile = node.curProfileSetting();
  if ((request.resolution || request.videoBitrate) && profile.type() != ProfileSettingInfo::kTypeVideo) {
    return QStringLiteral("The profile %1 writes no picture: --resolution and --video-bitrate do not apply.")
        .arg(profile.profileName());
  }
  if (request.audioBitrate && profile.type() == ProfileSettingInfo::kTypeWithoutAudio) {
    return QStringLiteral("The profile %1 has no sound settings: --audio-bitrate does not apply.")
        .arg(profile.profileName());
  }
  if (request.hasPictureEdits() && media.videoStream() == 0) {
    return QStringLiteral("The file has no picture for the picture options.");
  }
  const int length = static_cast<int>(std::ceil(media.dTotalTime()));
  if (request.trimEnd && *request.trimEnd > length) {
    return QStringLiteral("--trim ends at %1 s, after the end of the file (%2 s).").arg(*request.trimEnd).arg(length);
  }
  // The split editor's own texts.
  if (request.splitMinutes && !SplitLimits::minutesRange(media.iTotalTime()).contains(*request.splitMinutes)) {
    return QStringLiteral("The durations should not be more than the original length of video.");
  }
  if (request.splitClips && !SplitLimits::clipsRange(media.iTotalTime()).contains(*request.splitClips)) {
    return QStringLiteral("Clips should not more than video length.");
  }
  const QRect frame(0, 0, media.frameWidth(), media.frameHeight());
  for (const auto& [name, rect] :
       {std::pair{"--crop", request.crop}, std::pair{"--watermark-rect", request.watermarkRect}}) {
    if (rect && !frame.contains(*rect)) {
      return QStringLiteral("%1 %2 does not fit the %3x%4 picture.")
          .arg(QLatin1String(name), rectText(*rect))
          .arg(frame.width())
          .arg(frame.height());
    }
  }
  if (request.audioStream && *request.audioStream >= media.arrAudioStream().size()) {
    return QStringLiteral("The file has %1 audio stream(s), counted from 0: there is no stream %2.")
        .arg(media.arrAudioStream().size())
        .arg(*request.audioStream);
  }
  if (!request.watermarkImage.isEmpty() && !QFileInfo(request.watermarkImage).isFile()) {
    return QStringLiteral("The watermark picture does not exist: %1").arg(request.watermarkImage);
  }
  return {};
}

void applyProfileEdits(const ConvertRequest& request, ProfileSettingInfo& profile) {
  if (request.resolution) {
    profile.setVideoResolution(
        QStringLiteral("%1x%2").arg(request.resolution->width()).arg(request.resolution->height()));
  }
  if (request.videoBitrate) profile.setVideoBitrate(*request.videoBitrate);
  if (request.audioBitrate) profile.setAudioBitrate(*request.audioBitrate);
}

void applyTimeEdits(const ConvertRequest& request, NodeInfo& node) {
  if (request.trimStart) node.trimSettingInfo().setStartTime(*request.trimStart);
  if (request.trimEnd) node.trimSettingInfo().setEndTime(*request.trimEnd);
  if (request.splitMinutes) {
    node.setSplitRow(0);
    node.setVideoMinutes(*request.splitMinutes);
    node.setVideoClips(SplitLimits::startedMinutes(node.mediaFileInfo().iTotalTime()) / *request.splitMinutes);
  }
  if (request.splitClips) {
    node.setSplitRow(1);
    node.setVideoClips(*request.splitClips);
  }
}

void applyPictureEdits(const ConvertRequest& request, NodeInfo& node) {
  CropSettingInfo& crop = node.cropSettingInfo();
  if (request.crop) crop.setRect(request.crop->x(), request.crop->y(), request.crop->width(), request.crop->height());
  if (request.fit) crop.setZoom(*request.fit);

  EffectSettingInfo& effect = node.effectSettingInfo();
  if (request.rotate) effect.setRotateAngle(*request.rotate);
  if (request.flipHorizontal) effect.setRotateFlipX(1);
  if (request.flipVertical) effect.setRotateFlipY(1);
  if (request.brightness) effect.setBrightness(*request.brightness);
  if (request.contrast) effect.setContrast(*request.contrast);
  if (request.saturation) effect.setSaturation(*request.saturation);
  if (request.effect) effect.setEffectModel(*request.effect);
  if (request.model3D) effect.setModelOf3D(*request.model3D);
  if (request.depth) effect.setDepth(*request.depth);
  if (request.videoFadeIn) effect.setVideoFadeIn(*request.videoFadeIn);
  if (request.videoFadeOut) effect.setVideoFadeOut(*request.videoFadeOut);
}

void applySoundEdits(const ConvertRequest& request, NodeInfo& node) {
  EffectSettingInfo& effect = node.effectSettingInfo();
  if (request.volume) effect.setVolume(*request.volume);
  if (request.fadeIn) effect.setFadeIn(*request.fadeIn);
  if (request.fadeOut) effect.setFadeOut(*request.fadeOut);
  if (request.audioStream) node.setSelectAudioStream(*request.audioStream);
}

// As the watermark editor does: without a rectangle, a quarter of the picture at the top left.
void applyWatermark(const ConvertRequest& request, NodeInfo& node) {
  WatermarkInfo& watermark = node.watermarkInfo();
  const MediaFileInfo& media = node.mediaFileInfo();
  const QRect rect = request.watermarkRect.value_or(QRect(0, 0, media.frameWidth() / 4, media.frameHeight() / 4));
  if (!request.watermarkImage.isEmpty()) {
    watermark.setM_watermarkType(WatermarkInfo::kTypePicture);
    watermark.setM_imagePath(QFileInfo(request.watermarkImage).absoluteFilePath());
    watermark.setM_imgX(rect.x());
    watermark.setM_imgY(rect.y());
    watermark.setM_imgW(rect.width());
    watermark.setM_imgH(rect.height());
  } else if (!request.watermarkText.isEmpty()) {
    watermark.setM_watermarkType(WatermarkInfo::kTypeText);
    watermark.setM_text(request.watermarkText);
    watermark.setM_x(rect.x());
    watermark.setM_y(rect.y());
    watermark.setM_w(rect.width());
    watermark.setM_h(rect.height());
  }
  if (request.opacity) watermark.setM_transparency(*request.opacity);
}

// Tags given as options replace the ones read from the file.
void applyTagEdits(const ConvertRequest& request, NodeInfo& node) {
  MediaMetaData& tags = node.metaData();
  for (auto tag = request.tags.constBegin(); tag != request.tags.constEnd(); ++tag)
    tags.setText(tag.key(), tag.value());
  if (request.track) {
    tags.setCurTrackNum(request.track->first);
    tags.setTotalTrackNum(request.track->second);
  }
  if (!request.cover.isEmpty()) tags.setImage(request.cover);
}

}  // namespace

QString applyConvertRequest(const ConvertRequest& request, NodeInfo& node) {
  if (QString reason = whyNotApplicable(request, node); !reason.isEmpty()) return reason;
  applyProfileEdits(request, node.curProfileSetting());
  applyTimeEdits(request, node);
  applyPictureEdits(request, node);
  applySoundEdits(request, node);
  applyWatermark(request, node);
  applyTagEdits(request, node);
  return {};
}
