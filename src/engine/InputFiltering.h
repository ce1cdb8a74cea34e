// Runs the frames of one input through that input's filter graph, for the
// picture and the sound side alike. The graph is made when the input's first
// item arrives: its first frame, or the end mark when the input has no
// frames of this kind (the graph then makes them itself).
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "FilterGraph.h"
#include "PipelineControl.h"
#include "StageItem.h"

namespace engine {

using GraphMaker = std::function<std::unique_ptr<FilterGraph>(const AVFrame* firstFrame, std::string& error)>;
// Takes a filtered frame; false stops the conversion (having said why to the control, if it failed).
using FrameTaker = std::function<bool(AVFrame& frame)>;

// True once the input's end mark has gone through; false when the conversion stops.
bool filterOneInput(StageQueue& decoded, const std::string& path, PipelineControl& control, const GraphMaker& makeGraph,
                    const FrameTaker& take);

}  // namespace engine
