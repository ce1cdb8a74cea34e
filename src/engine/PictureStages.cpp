#include "PictureStages.h"

#include "InputFiltering.h"
#include "PictureGraph.h"

namespace engine {

void PictureFilterStage::run() {
  for (std::size_t index = 0; index < plan_.inputs.size(); ++index) {
    if (!filterInput(index)) return;
  }
  filtered_.push({plan_.inputs.size(), nullptr});
}

bool PictureFilterStage::filterInput(std::size_t index) {
  const InputPlan& input = *plan_.inputs[index];
  const VideoCanvas canvas = plan_.videoCanvas(index, input.lengthUs);
  int64_t taken = 0;
  return filterOneInput(
      decoded_, input.path, control_,
      [&](const AVFrame* firstFrame, std::string& error) {
        return makePictureGraph(*input.item, input.geometry, canvas, firstFrame, input.watermark.get(), error);
      },
      [&](AVFrame& frame, bool inputEnded) {
        if (inputEnded && taken >= plan_.videoCanvas(index, input.partLengthUs()).frameCount) {
          return Taken::kHaveEnough;
        }
        ++taken;
        return filtered_.push({index, FramePtr(av_frame_clone(&frame))}) ? Taken::kWantMore : Taken::kStopped;
      });
}

void PictureEncodeStage::run() {
  AVCodecContext& encoder = encoder_.encoder();
  int64_t frameIndex = 0;
  int64_t nextPiece = 1;
  // The first frame at or after the start of the given piece.
  auto firstFrameOf = [&](int64_t piece) {
    return av_rescale_q_rnd(piece * segmentLengthUs_, AV_TIME_BASE_Q, encoder.time_base, AV_ROUND_UP);
  };
  std::string error;
  while (std::optional<StageItem> item = filtered_.pop()) {
    AVFrame* frame = item->frame.get();
    if (frame == nullptr) {
      if (encoder_.encode(nullptr, error)) {
        control_.stageCompleted();
      } else {
        control_.fail(error);
      }
      return;
    }
    frame->pts = frameIndex;
    frame->pict_type = AV_PICTURE_TYPE_NONE;
    while (segmentLengthUs_ > 0 && frameIndex >= firstFrameOf(nextPiece)) {
      frame->pict_type = AV_PICTURE_TYPE_I;
      ++nextPiece;
    }
    ++frameIndex;
    if (!encoder_.encode(frame, error)) {
      control_.fail(error);
      return;
    }
  }
}

}  // namespace engine
