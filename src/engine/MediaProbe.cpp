#include "MediaProbe.h"

#include <algorithm>
#include <chrono>
#include <string_view>

#include "AudioStreamName.h"
#include "DisplayGeometry.h"
#include "FrameGrabber.h"
#include "InputFile.h"
#include "KeyframeIndex.h"
#include "TempPath.h"
#include "ThumbnailWriter.h"
#include "Utf8Text.h"

namespace engine {
namespace {

constexpr std::chrono::seconds kOpenBudget{15};
constexpr std::chrono::seconds kThumbnailBudget{10};
// The thumbnail shows the picture at a tenth of the duration, but no later
// than this, so that a black opening frame is not what the user sees.
constexpr int64_t kLatestThumbnailUs = 3'000'000;

int64_t durationOf(const AVFormatContext& format) {
  if (format.duration != AV_NOPTS_VALUE && format.duration > 0) return format.duration;
  int64_t longest = 0;
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    const AVStream& stream = *format.streams[i];
    if (stream.duration != AV_NOPTS_VALUE && stream.duration > 0) {
      longest = std::max(longest, av_rescale_q(stream.duration, stream.time_base, AV_TIME_BASE_Q));
    }
  }
  return longest;
}

// Picture formats such as PNG or JPEG open as a one-frame video stream; they are no video.
bool readsStillPictures(const AVInputFormat& inputFormat) {
  const std::string_view name = inputFormat.name;
  return name == "image2" || name.ends_with("pipe");
}

bool isVideo(const AVStream& stream) {
  return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO && !(stream.disposition & AV_DISPOSITION_ATTACHED_PIC) &&
         avcodec_find_decoder(stream.codecpar->codec_id) != nullptr;
}

// The stream a player would show, skipping cover pictures; -1 when there is none.
int mainVideoStream(AVFormatContext& format) {
  if (readsStillPictures(*format.iformat)) return -1;
  const int best = av_find_best_stream(&format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (best >= 0 && isVideo(*format.streams[best])) return best;
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    if (isVideo(*format.streams[i])) return static_cast<int>(i);
  }
  return -1;
}

bool isInterlaced(AVFieldOrder order) { return order != AV_FIELD_UNKNOWN && order != AV_FIELD_PROGRESSIVE; }

void fillVideo(AVFormatContext& format, int streamIndex, DECODER_INFO& info) {
  AVStream& stream = *format.streams[streamIndex];
  const DisplayGeometry geometry = DisplayGeometry::of(stream);
  info.m_bVideoStream = 1;
  info.m_VideoFormat = stream.codecpar->codec_id;
  info.m_Width = geometry.displayWidth;
  info.m_Height = geometry.displayHeight;
  info.m_CodecWidth = geometry.codedWidth;
  info.m_CodecHeight = geometry.codedHeight;
  const AVRational frameRate = av_guess_frame_rate(&format, &stream, nullptr);
  info.m_FrameRateNum = frameRate.num;
  info.m_FrameRateDen = frameRate.num > 0 ? frameRate.den : 1;
  info.m_Can_Deinterlace = isInterlaced(stream.codecpar->field_order) ? 1 : 0;
}

int bitsPerSample(const AVCodecParameters& parameters) {
  if (parameters.bits_per_raw_sample > 0) return parameters.bits_per_raw_sample;
  if (parameters.bits_per_coded_sample > 0) return parameters.bits_per_coded_sample;
  return av_get_bytes_per_sample(static_cast<AVSampleFormat>(parameters.format)) * 8;
}

void fillAudioStream(const AVStream& stream, AudioStremInfo& entry) {
  const AVCodecParameters& parameters = *stream.codecpar;
  copyToField(entry.m_audioStreamName, audioStreamName(stream));
  entry.m_audioSteamId = stream.index;
  entry.m_AudioFormat = parameters.codec_id;
  entry.m_SampleRate = parameters.sample_rate;
  entry.m_nChannel = parameters.ch_layout.nb_channels;
  entry.m_BitsPerSample = bitsPerSample(parameters);
  entry.m_bAudioStream = avcodec_find_decoder(parameters.codec_id) != nullptr && parameters.sample_rate > 0 &&
                                 parameters.ch_layout.nb_channels > 0
                             ? 1
                             : 0;
}

void fillAudio(AVFormatContext& format, int videoStreamIndex, DECODER_INFO& info) {
  const int best = av_find_best_stream(&format, AVMEDIA_TYPE_AUDIO, -1, videoStreamIndex, nullptr, 0);
  info.m_defaultAudioStream = -1;
  for (unsigned i = 0; i < format.nb_streams && info.m_AudioSteamCnt < VC_MAX_AUDIO_STREAMS; ++i) {
    const AVStream& stream = *format.streams[i];
    if (stream.codecpar->codec_type != AVMEDIA_TYPE_AUDIO) continue;
    if (static_cast<int>(i) == best) info.m_defaultAudioStream = info.m_AudioSteamCnt;
    fillAudioStream(stream, info.m_AudioStreamInfo[info.m_AudioSteamCnt++]);
  }
  if (info.m_defaultAudioStream < 0 && info.m_AudioSteamCnt > 0) info.m_defaultAudioStream = 0;
}

int64_t thumbnailTime(const ProbeRequest& request, int64_t durationUs) {
  if (request.thumbnailTimeUs) return std::clamp<int64_t>(*request.thumbnailTimeUs, 0, durationUs);
  return std::min(durationUs / 10, kLatestThumbnailUs);
}

void writeThumbnail(InputFile& file, int streamIndex, const ProbeRequest& request, DECODER_INFO& info) {
  file.restartDeadline(kThumbnailBudget);
  FramePtr frame = FrameGrabber::frameAt(file, streamIndex, thumbnailTime(request, info.m_Duration));
  if (frame == nullptr) return;
  if (frame->interlaced_frame) info.m_Can_Deinterlace = 1;
  const DisplayGeometry geometry = DisplayGeometry::of(*file.context()->streams[streamIndex]);
  if (ThumbnailWriter::write(*frame, geometry, request.thumbnailPath)) {
    copyToField(info.m_Thumbnail, request.thumbnailPath);
  }
}

}  // namespace

int MediaProbe::probe(const ProbeRequest& request, DECODER_INFO& info) {
  info = {};
  info.m_defaultAudioStream = -1;
  if (request.path.empty() || request.thumbnailPath.size() >= sizeof info.m_Thumbnail) {
    return VC_ERROR_INVALID_ARGUMENT;
  }
  int error = 0;
  std::unique_ptr<InputFile> file = InputFile::open(request.path, kOpenBudget, true, error);
  if (file == nullptr) return error;
  AVFormatContext& format = *file->context();
  info.m_Duration = durationOf(format);
  info.m_Seekable = (format.pb != nullptr && (format.pb->seekable & AVIO_SEEKABLE_NORMAL)) ? 1 : 0;
  const int videoStreamIndex = request.audioOnly ? -1 : mainVideoStream(format);
  fillAudio(format, videoStreamIndex, info);
  if (videoStreamIndex < 0) return 0;
  fillVideo(format, videoStreamIndex, info);
  const std::string indexPath = KeyframeIndex::build(request.path, videoStreamIndex, file->startTimeUs(), tempPath());
  if (indexPath.size() < sizeof info.m_framesPosFileName) copyToField(info.m_framesPosFileName, indexPath);
  if (!request.thumbnailPath.empty()) writeThumbnail(*file, videoStreamIndex, request, info);
  return 0;
}

}  // namespace engine
