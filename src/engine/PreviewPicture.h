// What one view of the preview shows of a record's decoded pictures: the
// record's result through the conversion's own picture filters at the view's
// size, or its source, upright and untouched, fitted into the view.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "DisplayGeometry.h"
#include "FFmpegPointers.h"
#include "FilterGraph.h"
#include "FitGeometry.h"
#include "videoconverter.h"

extern "C" {
#include <libavutil/pixfmt.h>
}

namespace engine {

struct DrawnPicture {
  FramePtr frame;
  geometry::Rect picture;  // where the picture lies in the frame
};

class PreviewPicture {
 public:
  // A size of 0 x 0 keeps the picture's own size.
  PreviewPicture(int width, int height, bool source, AVPixelFormat format)
      : width_(width), height_(height), source_(source), format_(format) {}

  // Draws a decoded picture whose pts are microseconds of the part. The
  // filters are set up again after reset() (a seek, a changed record) and
  // whenever the time goes back. Nothing, with `error` set, when they fail.
  std::optional<DrawnPicture> draw(const MediaItem& record, const DisplayGeometry& geometry, int64_t partLengthUs,
                                   const AVFrame& decoded, std::string& error);
  void reset() { graph_.reset(); }

  bool showsSource() const { return source_; }

 private:
  bool setUp(const MediaItem& record, const DisplayGeometry& geometry, int64_t partLengthUs, const AVFrame& decoded,
             std::string& error);

  const int width_;
  const int height_;
  const bool source_;
  const AVPixelFormat format_;
  std::unique_ptr<FilterGraph> graph_;
  geometry::Rect picture_;
  int64_t lastPts_ = 0;
};

// The record as its source is shown: every picture edit undone.
MediaItem sourceRecord(const MediaItem& record, const DisplayGeometry& geometry);

}  // namespace engine
