#include "PreviewPicture.h"

#include "EngineLog.h"
#include "PictureGraph.h"
#include "WatermarkImage.h"

namespace engine {

MediaItem sourceRecord(const MediaItem& record, const DisplayGeometry& geometry) {
  MediaItem source = record;
  source.m_RotateAngle = 0;
  source.m_RotateFlip_X = 0;
  source.m_RotateFlip_Y = 0;
  source.m_cropX = 0;
  source.m_cropY = 0;
  source.m_cropW = geometry.displayWidth;
  source.m_cropH = geometry.displayHeight;
  source.m_ViewType = 0;
  source.m_satruation = 0;
  source.m_brightness = 0;
  source.m_Contrast = 0;
  source.m_EffectID[0] = 0;
  source.m_EffectID[1] = 0;
  source.m_watermarkInfo.m_watermarkType = 0;
  source.m_fadeVideoInfo = {};
  return source;
}

bool PreviewPicture::setUp(const MediaItem& record, const DisplayGeometry& geometry, int64_t partLengthUs,
                           const AVFrame& decoded, std::string& error) {
  const MediaItem shown = source_ ? sourceRecord(record, geometry) : record;
  VideoCanvas canvas;
  canvas.width = width_;
  canvas.height = height_;
  canvas.pixelFormat = format_;
  canvas.partLengthUs = partLengthUs;
  const VideoFilterPlan filters = VideoFilterChain::forInput(shown, geometry, canvas);
  picture_ = filters.layout.picture;
  FramePtr watermark;
  if (filters.watermarkArea) {
    std::string watermarkError;
    watermark = WatermarkImage::make(shown.m_watermarkInfo, *filters.watermarkArea, filters.layout.verticalScale(),
                                     watermarkError);
    // The picture is still worth seeing without it; the conversion will say what is wrong.
    if (watermark == nullptr) logLine("preview without the watermark: " + watermarkError);
  }
  graph_ = makePictureGraph(shown, geometry, canvas, &decoded, watermark.get(), error);
  return graph_ != nullptr;
}

std::optional<DrawnPicture> PreviewPicture::draw(const MediaItem& record, const DisplayGeometry& geometry,
                                                 int64_t partLengthUs, const AVFrame& decoded, std::string& error) {
  if (graph_ != nullptr && decoded.pts <= lastPts_) graph_.reset();
  if (graph_ == nullptr && !setUp(record, geometry, partLengthUs, decoded, error)) return std::nullopt;
  // A picture of another size or format than the first sets the filters up again.
  if (graph_->send(0, &decoded) < 0 &&
      (!setUp(record, geometry, partLengthUs, decoded, error) || graph_->send(0, &decoded) < 0)) {
    error = "the picture filters refused a picture";
    return std::nullopt;
  }
  lastPts_ = decoded.pts;
  FramePtr drawn(av_frame_alloc());
  if (drawn == nullptr) {
    error = "out of memory";
    return std::nullopt;
  }
  const int result = graph_->receive(drawn.get());
  if (result < 0) {
    error = "the picture filters gave no picture: " + ffmpegErrorText(result);
    return std::nullopt;
  }
  return DrawnPicture{std::move(drawn), picture_};
}

}  // namespace engine
