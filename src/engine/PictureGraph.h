// The picture filter graph of one input, as the conversion and the preview
// both build it: the input's filters for a canvas, fed by frames like the
// first one, with the watermark's picture laid over when there is one.
#pragma once

#include <memory>
#include <string>

#include "FilterGraph.h"
#include "VideoFilterChain.h"

namespace engine {

// Frame times are microseconds. A null firstFrame gives black frames
// standing in for an input without pictures. The watermark picture is sent
// once, with time 0, and shown for as long as the video lasts.
std::unique_ptr<FilterGraph> makePictureGraph(const MediaItem& item, const DisplayGeometry& geometry,
                                              const VideoCanvas& canvas, const AVFrame* firstFrame,
                                              AVFrame* watermark, std::string& error);

}  // namespace engine
