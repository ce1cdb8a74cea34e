#include "VideoFilterChain.h"

#include <algorithm>
#include <vector>

#include "FilterText.h"
#include "PictureEffects.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace engine {
namespace {

std::string size(int width, int height) { return std::to_string(width) + ":" + std::to_string(height); }

std::string cropFilter(const geometry::Rect& rect) {
  return "crop=" + size(rect.width, rect.height) + ":" + std::to_string(rect.x) + ":" + std::to_string(rect.y);
}

std::string formatFilter(AVPixelFormat format) { return std::string("format=pix_fmts=") + av_get_pix_fmt_name(format); }

// Frame rate and exact length: frames are repeated or dropped to the rate
// from time 0 on, and the last one is held when the input ends early.
std::vector<std::string> timingFilters(const VideoCanvas& canvas) {
  std::vector<std::string> filters;
  if (canvas.frameRate.num > 0) filters.push_back("fps=fps=" + ratio(canvas.frameRate) + ":start_time=0");
  if (canvas.frameCount > 0) {
    filters.push_back("tpad=stop=-1:stop_mode=clone");
    filters.push_back("trim=end_frame=" + std::to_string(canvas.frameCount));
  }
  return filters;
}

// Square pixels and the turn the container asks for, so that the picture
// stands as the probe reported it.
std::vector<std::string> uprightFilters(const DisplayGeometry& source) {
  std::vector<std::string> filters;
  const int width = source.turnsSideways() ? source.displayHeight : source.displayWidth;
  const int height = source.turnsSideways() ? source.displayWidth : source.displayHeight;
  if (width != source.codedWidth || height != source.codedHeight) {
    filters.push_back("scale=" + size(width, height));
    filters.push_back("setsar=1");
  }
  switch (source.clockwiseRotation) {
    case 90: filters.push_back("transpose=clock"); break;
    case 180: filters.push_back("hflip,vflip"); break;
    case 270: filters.push_back("transpose=cclock"); break;
    default: break;
  }
  return filters;
}

std::vector<std::string> turnFilters(const PictureLayout& layout) {
  std::vector<std::string> filters;
  if (layout.turn == 90) filters.push_back("transpose=cclock");
  if (layout.turn == 270) filters.push_back("transpose=clock");
  // A half turn is both mirrors; mirrors asked for on top of it cancel out.
  const bool halfTurn = layout.turn == 180;
  if (layout.mirrorX != halfTurn) filters.push_back("hflip");
  if (layout.mirrorY != halfTurn) filters.push_back("vflip");
  return filters;
}

std::vector<std::string> fitFilters(const PictureLayout& layout) {
  std::vector<std::string> filters;
  const geometry::Rect& shape = layout.shape;
  if (shape.size() != geometry::turnedSize(layout.crop.size(), layout.turn)) filters.push_back(cropFilter(shape));
  if (layout.picture.size() != shape.size()) {
    filters.push_back("scale=" + size(layout.picture.width, layout.picture.height));
  }
  return filters;
}

std::vector<std::string> fadeFilters(const MediaItem& item, const VideoCanvas& canvas) {
  std::vector<std::string> filters;
  const double fadeIn = item.m_fadeVideoInfo.m_fadeIn_len / 1e6;
  if (fadeIn > 0) filters.push_back("fade=t=in:st=0:d=" + decimal(fadeIn));
  const double fadeOut = item.m_fadeVideoInfo.m_fadeOut_len / 1e6;
  if (fadeOut > 0 && canvas.frameCount > 0 && canvas.frameRate.num > 0) {
    // Dark by the last frame, which starts one frame before the end.
    const double lastFrame = static_cast<double>(canvas.frameCount - 1) * canvas.frameRate.den / canvas.frameRate.num;
    const double duration = std::min(fadeOut, lastFrame);
    filters.push_back("fade=t=out:st=" + decimal(lastFrame - duration) + ":d=" + decimal(duration));
  } else if (fadeOut > 0 && canvas.partLengthUs > 0) {
    const double length = canvas.partLengthUs / 1e6;
    const double duration = std::min(fadeOut, length);
    filters.push_back("fade=t=out:st=" + decimal(length - duration) + ":d=" + decimal(duration));
  }
  return filters;
}

std::optional<geometry::Rect> watermarkSourceRect(const _WatermarkInfo& watermark) {
  if (watermark.m_watermarkType != 1 && watermark.m_watermarkType != 2) return std::nullopt;
  if (watermark.m_w <= 0 || watermark.m_h <= 0) return std::nullopt;
  return geometry::Rect{watermark.m_x, watermark.m_y, watermark.m_w, watermark.m_h};
}

void append(std::vector<std::string>& to, const std::vector<std::string>& filters) {
  to.insert(to.end(), filters.begin(), filters.end());
}

}  // namespace

VideoFilterPlan VideoFilterChain::forInput(const MediaItem& item, const DisplayGeometry& source,
                                           const VideoCanvas& canvas) {
  VideoFilterPlan plan;
  plan.layout = PictureLayout::of(item, source.displayWidth, source.displayHeight, canvas.width, canvas.height);
  const PictureLayout& layout = plan.layout;

  std::vector<std::string> picture = timingFilters(canvas);
  append(picture, uprightFilters(source));
  if (layout.crop != geometry::Rect{0, 0, source.displayWidth, source.displayHeight}) {
    picture.push_back(cropFilter(layout.crop));
  }
  append(picture, turnFilters(layout));
  append(picture, fitFilters(layout));
  picture.push_back(levelsFilter(item));
  picture.push_back(specialEffectFilter(item));
  picture.push_back(anaglyphFilter(item, layout.picture.width));
  if (!layout.fillsCanvas()) {
    picture.push_back("pad=" + size(layout.canvasWidth, layout.canvasHeight) + ":" + std::to_string(layout.picture.x) +
                      ":" + std::to_string(layout.picture.y) + ":black");
  }
  picture.push_back("setsar=1");

  std::vector<std::string> finish = fadeFilters(item, canvas);
  // Fades and the watermark work on the picture's colours: an alpha channel
  // in the canvas's format is only made at the end, opaque.
  const bool canvasHasAlpha = av_pix_fmt_desc_get(canvas.pixelFormat)->flags & AV_PIX_FMT_FLAG_ALPHA;
  if (canvasHasAlpha) finish.insert(finish.begin(), formatFilter(AV_PIX_FMT_YUV420P));
  finish.push_back(formatFilter(canvas.pixelFormat));

  if (const auto sourceRect = watermarkSourceRect(item.m_watermarkInfo))
    plan.watermarkArea = layout.toCanvas(*sourceRect);
  if (plan.watermarkArea) {
    const geometry::Rect& area = *plan.watermarkArea;
    plan.description = "[in]" + chain(picture) + "[picture];[picture][wm]overlay=x=" + std::to_string(area.x) +
                       ":y=" + std::to_string(area.y) + "," + chain(finish) + "[out]";
  } else {
    append(picture, finish);
    plan.description = "[in]" + chain(picture) + "[out]";
  }
  return plan;
}

std::string VideoFilterChain::blank(const VideoCanvas& canvas) {
  std::vector<std::string> filters{"color=c=black:s=" + std::to_string(canvas.width) + "x" +
                                   std::to_string(canvas.height) + ":r=" + ratio(canvas.frameRate)};
  if (canvas.frameCount > 0) filters.push_back("trim=end_frame=" + std::to_string(canvas.frameCount));
  filters.push_back("setsar=1");
  filters.push_back(formatFilter(canvas.pixelFormat));
  return chain(filters) + "[out]";
}

}  // namespace engine
