// Runs the frames of one input through that input's filter graph, for the
// picture and the sound side alike. The graph is made when the input's first
// item arrives: its first frame, or the end mark when the input has no
// frames of this kind (the graph then makes them itself). The graph pads an
// input to the length its file claims; once the input has ended, the taker
// says when the output has all it takes of it, and the rest is dropped.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "FilterGraph.h"
#include "PipelineControl.h"
#include "StageItem.h"

namespace engine {

using GraphMaker = std::function<std::unique_ptr<FilterGraph>(const AVFrame* firstFrame, std::string& error)>;

enum class Taken {
  kWantMore,
  kHaveEnough,  // only once the input has ended; the frame was not taken
  kStopped,     // the conversion stops (the control was told why, if it failed)
};
// Takes a filtered frame; inputEnded says that the input's end mark has come.
using FrameTaker = std::function<Taken(AVFrame& frame, bool inputEnded)>;

// True once the input's end mark has gone through; false when the conversion stops.
bool filterOneInput(StageQueue& decoded, const std::string& path, PipelineControl& control, const GraphMaker& makeGraph,
                    const FrameTaker& take);

}  // namespace engine
