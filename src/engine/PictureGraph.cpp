#include "PictureGraph.h"

namespace engine {
namespace {

constexpr AVRational kMicroseconds{1, 1000000};

}  // namespace

std::unique_ptr<FilterGraph> makePictureGraph(const MediaItem& item, const DisplayGeometry& geometry,
                                              const VideoCanvas& canvas, const AVFrame* firstFrame,
                                              AVFrame* watermark, std::string& error) {
  if (firstFrame == nullptr) return FilterGraph::create(AVMEDIA_TYPE_VIDEO, VideoFilterChain::blank(canvas), {}, error);
  const VideoFilterPlan filters = VideoFilterChain::forInput(item, geometry, canvas);
  if (!filters.watermarkArea) watermark = nullptr;
  std::vector<FilterInput> pads{{"in", videoSourceArguments(*firstFrame, kMicroseconds)}};
  if (watermark != nullptr) pads.push_back({"wm", videoSourceArguments(*watermark, kMicroseconds)});
  auto graph = FilterGraph::create(AVMEDIA_TYPE_VIDEO, filters.description, pads, error);
  if (graph != nullptr && watermark != nullptr) {
    watermark->pts = 0;
    if (graph->send(1, watermark) < 0 || graph->send(1, nullptr) < 0) {
      error = "cannot lay the watermark over the picture";
      return nullptr;
    }
  }
  return graph;
}

}  // namespace engine
