#include "InputFiltering.h"

#include "EngineLog.h"

namespace engine {

bool filterOneInput(StageQueue& decoded, const std::string& path, PipelineControl& control, const GraphMaker& makeGraph,
                    const FrameTaker& take) {
  std::unique_ptr<FilterGraph> graph;
  bool graphHasInput = false;
  bool graphEnded = false;
  bool inputEnded = false;
  FramePtr filtered(av_frame_alloc());
  // Hands on whatever the graph has ready.
  auto drain = [&] {
    int result = 0;
    while ((result = graph->receive(filtered.get())) >= 0) {
      const Taken taken = take(*filtered, inputEnded);
      av_frame_unref(filtered.get());
      if (taken == Taken::kStopped) return false;
      if (taken == Taken::kHaveEnough) return true;
    }
    graphEnded = result == AVERROR_EOF;
    if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return true;
    control.fail("the filters of " + path + " failed: " + ffmpegErrorText(result));
    return false;
  };
  while (std::optional<StageItem> item = decoded.pop()) {
    if (graph == nullptr) {
      std::string error;
      graphHasInput = item->frame != nullptr;
      graph = makeGraph(item->frame.get(), error);
      if (graph == nullptr) {
        control.fail("cannot set up the filters of " + path + ": " + error);
        return false;
      }
    }
    if (item->frame == nullptr) {
      // With its input ended (a graph making its own frames has none) the graph runs to its own end.
      inputEnded = true;
      if (graphHasInput) graph->send(0, nullptr);
      return drain();
    }
    // Once the graph has made all it makes, the rest of the input is dropped.
    if (!graphEnded && graph->send(0, item->frame.get()) >= 0 && !drain()) return false;
  }
  return false;
}

}  // namespace engine
