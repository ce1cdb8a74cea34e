#include "ConversionPlan.h"

#include <filesystem>

#include "EncoderSetup.h"
#include "OutputSink.h"
#include "RecordText.h"
#include "WatermarkImage.h"

namespace engine {
namespace {

const InputPlan* firstInputWith(const ConversionPlan& plan, int InputPlan::*stream) {
  for (const auto& input : plan.inputs) {
    if ((*input).*stream >= 0) return input.get();
  }
  return nullptr;
}

bool containerTakes(const AVOutputFormat& format, const AVCodecContext& encoder, std::string& error) {
  if (avformat_query_codec(&format, encoder.codec_id, FF_COMPLIANCE_NORMAL) != 0) return true;
  error = std::string("the ") + format.name + " format cannot hold " + avcodec_get_name(encoder.codec_id);
  return false;
}

// Without a size of its own the output takes the size of the first input's picture after crop and turn.
VideoEncoderRequest videoRequest(const ConversionPlan& plan, const InputPlan& first, const OutputParam& output) {
  VideoEncoderRequest request;
  const PictureLayout ownSize = PictureLayout::of(*first.item, first.geometry.displayWidth,
                                                  first.geometry.displayHeight, output.m_Width, output.m_Height);
  request.width = ownSize.canvasWidth;
  request.height = ownSize.canvasHeight;
  AVFormatContext* format = first.file->context();
  request.frameRate = outputFrameRate(output, av_guess_frame_rate(format, format->streams[first.videoStream], nullptr));
  request.keyframesOnRequest = plan.segmentLengthUs > 0;
  return request;
}

bool openEncoders(ConversionPlan& plan, const OutputParam& output, std::string& error) {
  const AVOutputFormat& format = *plan.format;
  const InputPlan* pictures = firstInputWith(plan, &InputPlan::videoStream);
  if (pictures != nullptr && (output.m_VideoEncoder[0] != '\0' || containerCarries(format, AVMEDIA_TYPE_VIDEO))) {
    plan.videoEncoder = openVideoEncoder(output, format, videoRequest(plan, *pictures, output), error);
    if (plan.videoEncoder == nullptr || !containerTakes(format, *plan.videoEncoder, error)) return false;
  }
  const InputPlan* sound = firstInputWith(plan, &InputPlan::audioStream);
  if (sound != nullptr && (output.m_AudioEncoder[0] != '\0' || containerCarries(format, AVMEDIA_TYPE_AUDIO))) {
    const AVCodecParameters& source = *sound->file->context()->streams[sound->audioStream]->codecpar;
    const AudioEncoderRequest request{source.sample_rate, source.ch_layout.nb_channels,
                                      static_cast<AVSampleFormat>(source.format)};
    plan.audioEncoder = openAudioEncoder(output, format, request, error);
    if (plan.audioEncoder == nullptr || !containerTakes(format, *plan.audioEncoder, error)) return false;
  }
  if (plan.videoEncoder == nullptr && plan.audioEncoder == nullptr) {
    error = std::string("nothing to convert: the inputs have no pictures or sound that the ") + format.name +
            " format can hold";
    return false;
  }
  return true;
}

// The watermark's picture is made once, at the size it takes on the canvas.
bool planWatermarks(ConversionPlan& plan, std::string& error) {
  if (plan.videoEncoder == nullptr) return true;
  for (std::size_t index = 0; index < plan.inputs.size(); ++index) {
    InputPlan& input = *plan.inputs[index];
    if (input.videoStream < 0) continue;
    const VideoFilterPlan filters =
        VideoFilterChain::forInput(*input.item, input.geometry, plan.videoCanvas(index, input.lengthUs));
    if (!filters.watermarkArea) continue;
    input.watermark = WatermarkImage::make(input.item->m_watermarkInfo, *filters.watermarkArea,
                                           filters.layout.verticalScale(), error);
    if (input.watermark == nullptr) return false;
  }
  return true;
}

std::vector<std::string> outputPaths(const ConversionPlan& plan) {
  if (plan.segmentLengthUs == 0) return {plan.outputPath};
  std::vector<std::string> paths;
  for (int64_t piece = 0; piece * plan.segmentLengthUs < plan.durationUs; ++piece) {
    paths.push_back(OutputSink::piecePath(plan.outputPath, static_cast<int>(piece)));
  }
  return paths;
}

bool writesOverAnInput(const ConversionPlan& plan, std::string& error) {
  for (const std::string& output : outputPaths(plan)) {
    for (const auto& input : plan.inputs) {
      std::error_code ignored;
      if (std::filesystem::equivalent(output, input->path, ignored)) {
        error = "the output " + output + " would overwrite the input " + input->path;
        return true;
      }
    }
  }
  return false;
}

}  // namespace

std::unique_ptr<ConversionPlan> ConversionPlan::make(const std::vector<MediaItem>& items, const OutputParam& output,
                                                     const PipelineControl& control, std::string& error) {
  auto plan = std::make_unique<ConversionPlan>();
  plan->outputPath = fieldText(output.m_FileName);
  plan->format = outputFormatFor(output);
  if (plan->outputPath.empty() || plan->format == nullptr) {
    error = plan->outputPath.empty()
                ? "no output file is given"
                : "unknown output format \"" + fieldText(output.m_Format) + "\" for " + plan->outputPath;
    return nullptr;
  }
  const int64_t segmentLengthUs = output.m_SegmentLength;
  plan->segmentLengthUs = std::max<int64_t>(0, segmentLengthUs);
  for (const MediaItem& item : items) {
    if (control.stopped()) return nullptr;
    auto input = InputPlan::open(item, output.m_Type != 1, error);
    if (input == nullptr) return nullptr;
    plan->inputs.push_back(std::move(input));
  }
  if (!openEncoders(*plan, output, error)) return nullptr;
  for (const auto& input : plan->inputs) plan->durationUs += input->lengthUs;
  if (writesOverAnInput(*plan, error) || !planWatermarks(*plan, error)) return nullptr;
  return plan;
}

int64_t ConversionPlan::partStartUs(std::size_t index) const {
  int64_t startUs = 0;
  for (std::size_t before = 0; before < index && before < inputs.size(); ++before) {
    startUs += inputs[before]->partLengthUs();
  }
  return startUs;
}

VideoCanvas ConversionPlan::videoCanvas(std::size_t index, int64_t lengthUs) const {
  const AVCodecContext& video = *videoEncoder;
  auto frames = [&](int64_t us) { return av_rescale_q(us, AV_TIME_BASE_Q, video.time_base); };
  const int64_t startUs = partStartUs(index);
  return {video.width, video.height, video.framerate, video.pix_fmt, frames(startUs + lengthUs) - frames(startUs)};
}

AudioCanvas ConversionPlan::audioCanvas(std::size_t index, int64_t lengthUs) const {
  const AVCodecContext& audio = *audioEncoder;
  auto samples = [&](int64_t us) { return av_rescale(us, audio.sample_rate, AV_TIME_BASE); };
  const int64_t startUs = partStartUs(index);
  return {audio.sample_rate, audio.sample_fmt, audio.ch_layout, samples(startUs + lengthUs) - samples(startUs)};
}

}  // namespace engine
