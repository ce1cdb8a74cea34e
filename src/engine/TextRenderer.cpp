#include "TextRenderer.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

namespace engine {
namespace {

struct LibraryDeleter {
  void operator()(FT_Library library) const { FT_Done_FreeType(library); }
};
struct FaceDeleter {
  void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using LibraryPtr = std::unique_ptr<FT_LibraryRec_, LibraryDeleter>;
using FacePtr = std::unique_ptr<FT_FaceRec_, FaceDeleter>;

constexpr char32_t kReplacementCharacter = 0xFFFD;

// Code points of UTF-8 text; a malformed byte becomes the replacement character.
std::u32string decodeUtf8(std::string_view text) {
  std::u32string decoded;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const int length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 0;
    bool valid = length > 0 && i + length <= text.size();
    char32_t codePoint = length == 1 ? lead : lead & (0x7F >> length);
    for (int k = 1; valid && k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      valid = (next & 0xC0) == 0x80;
      codePoint = (codePoint << 6) | (next & 0x3F);
    }
    decoded.push_back(valid ? codePoint : kReplacementCharacter);
    i += valid ? length : 1;
  }
  return decoded;
}

std::vector<std::u32string> splitLines(const std::u32string& text) {
  std::vector<std::u32string> lines(1);
  for (char32_t c : text) {
    if (c == U'\n') {
      lines.emplace_back();
    } else if (c != U'\r') {
      lines.back().push_back(c);
    }
  }
  return lines;
}

int pixels(FT_Pos value26Dot6) { return static_cast<int>((value26Dot6 + 32) >> 6); }

// An RGBA picture in the text colour whose alpha is the ink coverage.
class Canvas {
 public:
  Canvas(FramePtr frame, uint32_t rgb) : frame_(std::move(frame)), rgb_(rgb) {}

  void ink(int x, int y, uint8_t coverage) {
    if (x < 0 || y < 0 || x >= frame_->width || y >= frame_->height || coverage == 0) return;
    uint8_t* pixel = frame_->data[0] + static_cast<std::ptrdiff_t>(y) * frame_->linesize[0] + x * 4;
    pixel[0] = static_cast<uint8_t>(rgb_ >> 16);
    pixel[1] = static_cast<uint8_t>(rgb_ >> 8);
    pixel[2] = static_cast<uint8_t>(rgb_);
    pixel[3] = std::max(pixel[3], coverage);
  }

  void glyph(const FT_Bitmap& bitmap, int left, int top) {
    for (unsigned row = 0; row < bitmap.rows; ++row) {
      for (unsigned column = 0; column < bitmap.width; ++column) {
        ink(left + static_cast<int>(column), top + static_cast<int>(row), bitmap.buffer[row * bitmap.pitch + column]);
      }
    }
  }

  void bar(int left, int right, int top, int thickness) {
    for (int y = top; y < top + thickness; ++y) {
      for (int x = left; x < right; ++x) ink(x, y, 255);
    }
  }

  FramePtr release() { return std::move(frame_); }

 private:
  FramePtr frame_;
  uint32_t rgb_;
};

FramePtr transparentPicture(int width, int height) {
  FramePtr frame(av_frame_alloc());
  if (frame == nullptr) return nullptr;
  frame->format = AV_PIX_FMT_RGBA;
  frame->width = width;
  frame->height = height;
  if (av_frame_get_buffer(frame.get(), 0) < 0) return nullptr;
  for (int y = 0; y < height; ++y) std::fill_n(frame->data[0] + y * frame->linesize[0], width * 4, 0);
  return frame;
}

// Draws one line with its baseline at `baseline`; returns the width drawn.
int drawLine(FT_Face face, const FontChoice& font, const std::u32string& line, int baseline, Canvas& canvas) {
  int pen = 0;
  for (char32_t c : line) {
    if (FT_Load_Char(face, c, FT_LOAD_NO_BITMAP) != 0) continue;
    FT_GlyphSlot slot = face->glyph;
    if (font.needsBold) FT_GlyphSlot_Embolden(slot);
    if (font.needsSlant) FT_GlyphSlot_Oblique(slot);
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0) continue;
    canvas.glyph(slot->bitmap, pen + slot->bitmap_left, baseline - slot->bitmap_top);
    pen += pixels(slot->advance.x);
  }
  return pen;
}

}  // namespace

FramePtr renderText(const std::string& utf8Text, const FontChoice& font, const TextStyle& style, int width, int height,
                    std::string& error) {
  FT_Library rawLibrary = nullptr;
  if (FT_Init_FreeType(&rawLibrary) != 0) {
    error = "the font engine cannot start";
    return nullptr;
  }
  LibraryPtr library(rawLibrary);
  FT_Face rawFace = nullptr;
  if (FT_New_Face(library.get(), font.file.c_str(), font.faceIndex, &rawFace) != 0) {
    error = "cannot load the font " + font.file;
    return nullptr;
  }
  FacePtr face(rawFace);
  FT_Set_Pixel_Sizes(face.get(), 0, static_cast<FT_UInt>(std::max(1, style.pixelSize)));
  FramePtr picture = transparentPicture(width, height);
  if (picture == nullptr) {
    error = "out of memory";
    return nullptr;
  }
  Canvas canvas(std::move(picture), style.rgb);
  const FT_Size_Metrics& metrics = face->size->metrics;
  const int lineThickness = std::max(1, pixels(FT_MulFix(face->underline_thickness, metrics.y_scale)));
  const int underlineOffset = std::max(1, -pixels(FT_MulFix(face->underline_position, metrics.y_scale)));
  int baseline = pixels(metrics.ascender);
  for (const std::u32string& line : splitLines(decodeUtf8(utf8Text))) {
    const int lineWidth = drawLine(face.get(), font, line, baseline, canvas);
    if (style.underline) canvas.bar(0, lineWidth, baseline + underlineOffset, lineThickness);
    // Through the middle of the lower-case letters.
    if (style.strikethrough) canvas.bar(0, lineWidth, baseline - style.pixelSize * 3 / 10, lineThickness);
    baseline += pixels(metrics.height);
  }
  return canvas.release();
}

}  // namespace engine
