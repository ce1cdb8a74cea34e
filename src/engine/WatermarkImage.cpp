#include "WatermarkImage.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "FontLookup.h"
#include "FrameGrabber.h"
#include "InputFile.h"
#include "RecordText.h"
#include "TextRenderer.h"

namespace engine {
namespace {

constexpr std::chrono::seconds kPictureReadBudget{10};

std::string readFailure(const std::string& path, int error) {
  if (error == VC_ERROR_FILE_NOT_FOUND) return "the watermark picture " + path + " does not exist or cannot be read";
  return "the watermark picture " + path + " is not a picture that can be read";
}

FramePtr scaledToRgba(const AVFrame& source, int width, int height) {
  FramePtr picture(av_frame_alloc());
  if (picture == nullptr) return nullptr;
  picture->format = AV_PIX_FMT_RGBA;
  picture->width = width;
  picture->height = height;
  if (av_frame_get_buffer(picture.get(), 0) < 0) return nullptr;
  ScaleContextPtr scaler(sws_getContext(source.width, source.height, static_cast<AVPixelFormat>(source.format), width,
                                        height, AV_PIX_FMT_RGBA, SWS_BICUBIC, nullptr, nullptr, nullptr));
  if (scaler == nullptr) return nullptr;
  sws_scale(scaler.get(), source.data, source.linesize, 0, source.height, picture->data, picture->linesize);
  return picture;
}

FramePtr pictureWatermark(const std::string& path, const geometry::Rect& area, std::string& error) {
  int openError = 0;
  std::unique_ptr<InputFile> file = InputFile::open(path, kPictureReadBudget, true, openError);
  if (file == nullptr) {
    error = readFailure(path, openError);
    return nullptr;
  }
  const int stream = av_find_best_stream(file->context(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  FramePtr decoded = stream >= 0 ? FrameGrabber::frameAt(*file, stream, 0) : nullptr;
  FramePtr picture = decoded != nullptr ? scaledToRgba(*decoded, area.width, area.height) : nullptr;
  if (picture == nullptr) error = readFailure(path, VC_ERROR_UNKNOWN_FORMAT);
  return picture;
}

FramePtr textWatermark(const _WatermarkInfo& watermark, const geometry::Rect& area, double scale, std::string& error) {
  const _TextInfo& font = watermark.m_fontinfo;
  const auto choice =
      findFont(fieldText(font.m_fontname), font.m_fontstyle & kFontBold, font.m_fontstyle & kFontItalic);
  if (!choice) {
    error = "no font is installed for the text watermark";
    return nullptr;
  }
  TextStyle style;
  style.pixelSize = std::max(1, static_cast<int>(std::lround(font.m_fontsize * scale)));
  style.rgb = font.m_fontcolor & 0xFFFFFF;
  style.underline = font.m_fontstyle & kFontUnderline;
  style.strikethrough = font.m_fontstyle & kFontStrikethrough;
  return renderText(fieldText(watermark.m_text), *choice, style, area.width, area.height, error);
}

void applyOpacity(AVFrame& picture, int transparency) {
  const int opacity = std::clamp(transparency, 0, 255);
  for (int y = 0; y < picture.height; ++y) {
    uint8_t* row = picture.data[0] + static_cast<std::ptrdiff_t>(y) * picture.linesize[0];
    for (int x = 0; x < picture.width; ++x) row[x * 4 + 3] = static_cast<uint8_t>(row[x * 4 + 3] * opacity / 255);
  }
}

}  // namespace

FramePtr WatermarkImage::make(const _WatermarkInfo& watermark, const geometry::Rect& area, double scale,
                              std::string& error) {
  FramePtr picture;
  if (watermark.m_watermarkType == 1) {
    picture = pictureWatermark(fieldText(watermark.m_imagePath), area, error);
  } else if (watermark.m_watermarkType == 2) {
    picture = textWatermark(watermark, area, scale, error);
  }
  if (picture != nullptr) applyOpacity(*picture, watermark.m_transparency);
  return picture;
}

}  // namespace engine
