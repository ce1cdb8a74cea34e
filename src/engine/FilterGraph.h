// A filter graph built from a description with named input pads fed by
// buffer sources and one output pad, [out], read through a buffer sink.
#pragma once

#include <memory>
#include <string>
#include <vector>

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavutil/frame.h>
}

namespace engine {

struct FilterGraphDeleter {
  void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
};
using FilterGraphPtr = std::unique_ptr<AVFilterGraph, FilterGraphDeleter>;

// One input pad: its label in the description and the buffer source's arguments.
struct FilterInput {
  std::string label;
  std::string sourceArguments;
};

// Buffer source arguments describing frames like this one.
std::string videoSourceArguments(const AVFrame& frame, AVRational timeBase);
std::string audioSourceArguments(const AVFrame& frame, AVRational timeBase);

class FilterGraph {
 public:
  // Null with `error` set when the description does not build.
  static std::unique_ptr<FilterGraph> create(AVMediaType type, const std::string& description,
                                             const std::vector<FilterInput>& inputs, std::string& error);

  // Feeds a frame to an input (the frame is not consumed); null ends that input.
  int send(std::size_t input, const AVFrame* frame);
  // 0 with a frame, AVERROR(EAGAIN) when more input is needed, AVERROR_EOF at the end.
  int receive(AVFrame* frame);

 private:
  FilterGraphPtr graph_;
  std::vector<AVFilterContext*> sources_;
  AVFilterContext* sink_ = nullptr;
};

}  // namespace engine
