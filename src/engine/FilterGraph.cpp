#include "FilterGraph.h"

#include "EngineLog.h"

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/channel_layout.h>
#include <libavutil/pixdesc.h>
}

namespace engine {
namespace {

struct InOutDeleter {
  void operator()(AVFilterInOut* list) const { avfilter_inout_free(&list); }
};
using InOutPtr = std::unique_ptr<AVFilterInOut, InOutDeleter>;

AVFilterInOut* pad(const std::string& label, AVFilterContext* filter, AVFilterInOut* next) {
  AVFilterInOut* entry = avfilter_inout_alloc();
  if (entry == nullptr) return nullptr;
  entry->name = av_strdup(label.c_str());
  entry->filter_ctx = filter;
  entry->pad_idx = 0;
  entry->next = next;
  return entry;
}

}  // namespace

std::string videoSourceArguments(const AVFrame& frame, AVRational timeBase) {
  const AVRational aspect = frame.sample_aspect_ratio.num > 0 ? frame.sample_aspect_ratio : AVRational{1, 1};
  return "video_size=" + std::to_string(frame.width) + "x" + std::to_string(frame.height) +
         ":pix_fmt=" + std::to_string(frame.format) + ":time_base=" + std::to_string(timeBase.num) + "/" +
         std::to_string(timeBase.den) + ":pixel_aspect=" + std::to_string(aspect.num) + "/" +
         std::to_string(aspect.den);
}

std::string audioSourceArguments(const AVFrame& frame, AVRational timeBase) {
  char layout[128] = {};
  av_channel_layout_describe(&frame.ch_layout, layout, sizeof layout);
  return "time_base=" + std::to_string(timeBase.num) + "/" + std::to_string(timeBase.den) +
         ":sample_rate=" + std::to_string(frame.sample_rate) +
         ":sample_fmt=" + av_get_sample_fmt_name(static_cast<AVSampleFormat>(frame.format)) +
         ":channel_layout=" + layout;
}

std::unique_ptr<FilterGraph> FilterGraph::create(AVMediaType type, const std::string& description,
                                                 const std::vector<FilterInput>& inputs, std::string& error) {
  const bool video = type == AVMEDIA_TYPE_VIDEO;
  std::unique_ptr<FilterGraph> result(new FilterGraph);
  result->graph_.reset(avfilter_graph_alloc());
  AVFilterGraph* graph = result->graph_.get();
  if (graph == nullptr) {
    error = "out of memory";
    return nullptr;
  }
  // Bicubic scaling, the quality players and the ffmpeg command use.
  graph->scale_sws_opts = av_strdup("flags=bicubic");
  AVFilterInOut* openOutputs = nullptr;
  for (const FilterInput& input : inputs) {
    AVFilterContext* source = nullptr;
    const int created =
        avfilter_graph_create_filter(&source, avfilter_get_by_name(video ? "buffer" : "abuffer"), input.label.c_str(),
                                     input.sourceArguments.c_str(), nullptr, graph);
    if (created < 0) {
      avfilter_inout_free(&openOutputs);
      error = "cannot feed the filters: " + ffmpegErrorText(created);
      return nullptr;
    }
    result->sources_.push_back(source);
    openOutputs = pad(input.label, source, openOutputs);
  }
  InOutPtr outputs(openOutputs);
  int made = avfilter_graph_create_filter(&result->sink_, avfilter_get_by_name(video ? "buffersink" : "abuffersink"),
                                          "out", nullptr, nullptr, graph);
  InOutPtr sinkPad(made >= 0 ? pad("out", result->sink_, nullptr) : nullptr);
  if (made >= 0) {
    AVFilterInOut* inputsList = sinkPad.release();
    AVFilterInOut* outputsList = outputs.release();
    made = avfilter_graph_parse_ptr(graph, description.c_str(), &inputsList, &outputsList, nullptr);
    avfilter_inout_free(&inputsList);
    avfilter_inout_free(&outputsList);
  }
  if (made >= 0) made = avfilter_graph_config(graph, nullptr);
  if (made < 0) {
    error = "cannot build the filters \"" + description + "\": " + ffmpegErrorText(made);
    return nullptr;
  }
  return result;
}

int FilterGraph::send(std::size_t input, const AVFrame* frame) {
  return av_buffersrc_add_frame_flags(sources_.at(input), const_cast<AVFrame*>(frame),
                                      AV_BUFFERSRC_FLAG_KEEP_REF | AV_BUFFERSRC_FLAG_PUSH);
}

int FilterGraph::receive(AVFrame* frame) { return av_buffersink_get_frame(sink_, frame); }

}  // namespace engine
