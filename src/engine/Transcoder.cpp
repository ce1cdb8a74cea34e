#include "Transcoder.h"

#include <new>
#include <optional>
#include <system_error>
#include <thread>

#include "ConversionPlan.h"
#include "EngineLog.h"
#include "InputReader.h"
#include "OutcomeText.h"
#include "OutputSink.h"
#include "PictureStages.h"
#include "SoundStage.h"

namespace engine {
namespace {

// Decoded pictures are large; a few in each queue keep every thread busy.
constexpr std::size_t kPictureQueueLength = 8;
constexpr std::size_t kSoundQueueLength = 64;

// Before a conversion's length is known, the records' trim windows give it.
int64_t lengthFromRecords(const std::vector<MediaItem>& items) {
  int64_t total = 0;
  for (const MediaItem& item : items) {
    const int64_t start = item.m_MediaStartPos;
    const int64_t end = item.m_MediaEndPos > 0 ? item.m_MediaEndPos : item.m_Info.m_Duration;
    total += std::max<int64_t>(0, end - std::max<int64_t>(0, start));
  }
  return total;
}

// A thread of the pipeline: anything thrown stops the whole conversion instead of the process.
std::thread pipelineThread(PipelineControl& control, std::function<void()> work) {
  return std::thread([&control, work = std::move(work)] {
    try {
      work();
    } catch (const std::bad_alloc&) {
      control.fail("out of memory");
    } catch (const std::exception& exception) {
      control.fail(exception.what());
    }
  });
}

}  // namespace

Transcoder::Transcoder(std::vector<MediaItem> items, const OutputParam& output)
    : items_(std::move(items)), output_(output), durationUs_(lengthFromRecords(items_)) {
  quietenLibraries();
}

void Transcoder::abort() { control_.abort(); }

ConversionResult Transcoder::run() {
  try {
    return convert();
  } catch (const std::bad_alloc&) {
    return {ConversionResult::Outcome::kFailed, "out of memory", {}};
  } catch (const std::exception& exception) {
    return {ConversionResult::Outcome::kFailed, exception.what(), {}};
  }
}

ConversionResult Transcoder::convert() {
  std::string error;
  std::unique_ptr<ConversionPlan> plan = ConversionPlan::make(items_, output_, control_, error);
  if (plan == nullptr) {
    if (control_.aborted()) return {ConversionResult::Outcome::kAborted, stoppedReason(0, durationUs_), {}};
    return {ConversionResult::Outcome::kFailed, error, {}};
  }
  durationUs_ = plan->durationUs;

  OutputSink sink(plan->outputPath, *plan->format, plan->segmentLengthUs, [this](int64_t writtenUs) {
    progressUs_ = writtenUs;
    if (progressObserver_) progressObserver_(writtenUs);
  });
  std::optional<PacketEncoder> pictureEncoder;
  std::optional<PacketEncoder> soundEncoder;
  // The picture stream comes first: progress is measured on it.
  if (plan->videoEncoder != nullptr)
    pictureEncoder.emplace(*plan->videoEncoder, sink, sink.addStream(*plan->videoEncoder));
  if (plan->audioEncoder != nullptr)
    soundEncoder.emplace(*plan->audioEncoder, sink, sink.addStream(*plan->audioEncoder));

  StageQueue decodedPictures(kPictureQueueLength);
  StageQueue filteredPictures(kPictureQueueLength);
  StageQueue decodedSound(kSoundQueueLength);
  for (StageQueue* queue : {&decodedPictures, &filteredPictures, &decodedSound}) {
    control_.addStopAction([queue] { queue->close(); });
  }
  InputReader reader(*plan, control_, pictureEncoder ? &decodedPictures : nullptr,
                     soundEncoder ? &decodedSound : nullptr);
  std::vector<std::thread> threads;
  try {
    threads.push_back(pipelineThread(control_, [&] { reader.run(); }));
    if (pictureEncoder) {
      threads.push_back(pipelineThread(
          control_, [&] { PictureFilterStage(*plan, control_, decodedPictures, filteredPictures).run(); }));
      threads.push_back(pipelineThread(control_, [&] {
        PictureEncodeStage(*pictureEncoder, plan->segmentLengthUs, control_, filteredPictures).run();
      }));
    }
    if (soundEncoder) {
      threads.push_back(
          pipelineThread(control_, [&] { SoundStage(*plan, *soundEncoder, control_, decodedSound).run(); }));
    }
  } catch (const std::system_error&) {
    control_.fail("the system refused to start another thread");
  }
  for (std::thread& thread : threads) thread.join();
  control_.removeStopActions();

  // An abort that came after the last stage had flushed stopped nothing.
  const int lastStages = (pictureEncoder ? 1 : 0) + (soundEncoder ? 1 : 0);
  const bool whole = control_.completedStages() == lastStages;
  std::string failure = control_.failure();
  if (failure.empty()) sink.finishAll(failure);
  // The sink removes the files it did not keep: a half-written output would pass for a finished one.
  if (!failure.empty()) return {ConversionResult::Outcome::kFailed, failure, {}};
  ConversionResult result{ConversionResult::Outcome::kFinished, {}, sink.files()};
  if (control_.aborted() && !whole) {
    result.outcome = ConversionResult::Outcome::kAborted;
    result.reason = stoppedReason(progressUs_, durationUs_);
  } else {
    // Inputs that ended early made the output shorter than planned.
    durationUs_ = plan->partStartUs(plan->inputs.size());
    progressUs_ = durationUs_.load();
    result.reason = shortInputsWarning(*plan);
    if (!result.reason.empty()) result.outcome = ConversionResult::Outcome::kFinishedWithWarning;
  }
  result.writtenUs = progressUs_;
  return result;
}

}  // namespace engine
