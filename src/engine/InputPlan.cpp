#include "InputPlan.h"

#include <algorithm>
#include <chrono>
#include <initializer_list>

#include "RecordText.h"

namespace engine {
namespace {

// Opening reads the stream parameters; a file that needs longer is not one we can convert.
constexpr std::chrono::seconds kOpenBudget{30};

std::string openFailure(const std::string& path, int error) {
  switch (error) {
    case VC_ERROR_FILE_NOT_FOUND: return "cannot read " + path + ": the file does not exist or cannot be read";
    case VC_ERROR_NO_STREAM_INFO: return "cannot read " + path + ": its streams cannot be read";
    case VC_ERROR_TIMEOUT: return "cannot read " + path + ": reading it took too long";
    case VC_ERROR_OUT_OF_MEMORY: return "cannot read " + path + ": out of memory";
    default: return "cannot read " + path + ": the file is damaged or not in a recognizable format";
  }
}

// The container's duration, else the one the probe found and put in the record.
int64_t durationOf(const AVFormatContext& format, const MediaItem& item) {
  if (format.duration != AV_NOPTS_VALUE && format.duration > 0) return format.duration;
  const int64_t probedUs = item.m_Info.m_Duration;
  return std::max<int64_t>(0, probedUs);
}

// Where the longest of the streams taken claims to end, from the start of
// the file; the file's duration when none says.
int64_t streamsEndUs(const AVFormatContext& format, std::initializer_list<int> streams, int64_t fileStartUs,
                     int64_t durationUs) {
  int64_t end = -1;
  for (const int index : streams) {
    if (index < 0) continue;
    const AVStream& stream = *format.streams[index];
    if (stream.duration == AV_NOPTS_VALUE || stream.duration <= 0) return durationUs;
    const int64_t start = stream.start_time != AV_NOPTS_VALUE ? stream.start_time : 0;
    end = std::max(end, av_rescale_q(start + stream.duration, stream.time_base, AV_TIME_BASE_Q) - fileStartUs);
  }
  return end >= 0 ? end : durationUs;
}

// The picture stream a player would show; cover pictures and streams without a decoder do not count.
int pictureStream(AVFormatContext& format) {
  const int best = av_find_best_stream(&format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (best < 0) return -1;
  const AVStream& stream = *format.streams[best];
  return (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) ? -1 : best;
}

// The n-th sound stream in container order, which is the order the probe lists them in.
int soundStream(const AVFormatContext& format, int n) {
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    if (format.streams[i]->codecpar->codec_type != AVMEDIA_TYPE_AUDIO) continue;
    if (n-- == 0) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace

std::unique_ptr<InputPlan> InputPlan::open(const MediaItem& item, bool outputMayHavePictures, std::string& error) {
  auto input = std::make_unique<InputPlan>();
  input->item = &item;
  input->path = fieldText(item.m_FileName);
  int openError = 0;
  input->file = InputFile::open(input->path, kOpenBudget, true, openError);
  if (input->file == nullptr) {
    error = openFailure(input->path, openError);
    return nullptr;
  }
  AVFormatContext& format = *input->file->context();
  if (outputMayHavePictures && item.m_VideoDisable != 1) input->videoStream = pictureStream(format);
  if (input->videoStream >= 0) input->geometry = DisplayGeometry::of(*format.streams[input->videoStream]);
  if (item.m_AudioDisable == 0) {
    input->audioStream = soundStream(format, item.m_audioStreamIndex);
    if (input->audioStream < 0) {
      error = input->path + " has no sound stream number " + std::to_string(item.m_audioStreamIndex);
      return nullptr;
    }
  }
  if (input->videoStream < 0 && input->audioStream < 0) {
    error = input->path + " has neither pictures nor sound to convert";
    return nullptr;
  }
  const int64_t durationUs = durationOf(format, item);
  input->fileStartUs = format.start_time != AV_NOPTS_VALUE ? format.start_time : 0;
  const int64_t trimStartUs = item.m_MediaStartPos;
  const int64_t trimEndUs = item.m_MediaEndPos;
  input->startUs = std::clamp<int64_t>(trimStartUs, 0, durationUs);
  const int64_t endUs = trimEndUs > 0 ? std::min(trimEndUs, durationUs) : durationUs;
  input->lengthUs = endUs - input->startUs;
  const int64_t streamsEnd =
      streamsEndUs(format, {input->videoStream, input->audioStream}, input->fileStartUs, durationUs);
  input->streamsLengthUs = std::clamp<int64_t>(streamsEnd - input->startUs, 0, input->lengthUs);
  if (input->lengthUs <= 0) {
    error = "the part of " + input->path + " to convert is empty (the file lasts " + std::to_string(durationUs / 1000) +
            " ms)";
    return nullptr;
  }
  return input;
}

}  // namespace engine
