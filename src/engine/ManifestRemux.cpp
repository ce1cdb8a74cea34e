#include "ManifestRemux.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

#include "EngineLog.h"
#include "FFmpegPointers.h"

extern "C" {
#include <libavutil/dict.h>
#include <libavutil/mathematics.h>
}

namespace engine {
namespace {

constexpr std::string_view kRepresentationMark = "#representation=";
// A server that sends nothing for this long fails the remux.
constexpr const char* kNetworkTimeoutUs = "30000000";

struct InputDeleter {
  void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct OutputDeleter {
  void operator()(AVFormatContext* context) const {
    if (context->pb != nullptr) avio_closep(&context->pb);
    avformat_free_context(context);
  }
};
using InputPtr = std::unique_ptr<AVFormatContext, InputDeleter>;
using OutputPtr = std::unique_ptr<AVFormatContext, OutputDeleter>;

int abortRequested(void* flag) { return static_cast<const std::atomic<bool>*>(flag)->load() ? 1 : 0; }

void initialiseNetworkOnce() {
  static std::once_flag once;
  std::call_once(once, [] { avformat_network_init(); });
}

// What a run found wrong, in the engine's words.
std::string failure(std::string_view what, int errorCode) {
  return std::string(what) + ": " + ffmpegErrorText(errorCode);
}

struct ManifestAddress {
  std::string address;
  std::string representation;  // empty: the best video
};

ManifestAddress splitRepresentation(const std::string& url) {
  const size_t mark = url.rfind(kRepresentationMark);
  if (mark == std::string::npos) return {url, {}};
  return {url.substr(0, mark), url.substr(mark + kRepresentationMark.size())};
}

int videoStreamOf(AVFormatContext* input, const std::string& representation) {
  if (representation.empty()) return av_find_best_stream(input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  for (unsigned i = 0; i < input->nb_streams; ++i) {
    const AVStream* stream = input->streams[i];
    const AVDictionaryEntry* id = av_dict_get(stream->metadata, "id", nullptr, 0);
    if (stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO && id != nullptr && representation == id->value) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

}  // namespace

ManifestRemux::ManifestRemux(std::string manifestUrl, std::string userAgent, std::string outputPath)
    : manifestUrl_(std::move(manifestUrl)), userAgent_(std::move(userAgent)), outputPath_(std::move(outputPath)) {}

std::optional<std::string> ManifestRemux::run() {
  quietenLibraries();
  initialiseNetworkOnce();
  const ManifestAddress manifest = splitRepresentation(manifestUrl_);

  AVFormatContext* opened = avformat_alloc_context();
  if (opened == nullptr) return "Out of memory";
  opened->interrupt_callback = {abortRequested, &aborted_};
  AVDictionary* options = nullptr;
  av_dict_set(&options, "rw_timeout", kNetworkTimeoutUs, 0);
  if (!userAgent_.empty()) av_dict_set(&options, "user_agent", userAgent_.c_str(), 0);
  int result = avformat_open_input(&opened, manifest.address.c_str(), nullptr, &options);
  av_dict_free(&options);
  if (result < 0) return aborted() ? "Aborted" : failure("The manifest cannot be opened", result);
  const InputPtr input(opened);
  if ((result = avformat_find_stream_info(input.get(), nullptr)) < 0) {
    return aborted() ? "Aborted" : failure("The manifest's streams cannot be read", result);
  }
  if (input->duration != AV_NOPTS_VALUE && input->duration > 0) durationUs_.store(input->duration);

  const int video = videoStreamOf(input.get(), manifest.representation);
  if (!manifest.representation.empty() && video < 0) {
    return "The manifest has no video representation " + manifest.representation;
  }
  const int sound = av_find_best_stream(input.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
  if (video < 0 && sound < 0) return std::string("The manifest holds neither video nor sound");

  AVFormatContext* created = nullptr;
  if ((result = avformat_alloc_output_context2(&created, nullptr, "mp4", outputPath_.c_str())) < 0) {
    return failure("The MP4 muxer cannot be made", result);
  }
  const OutputPtr output(created);
  output->interrupt_callback = input->interrupt_callback;
  // Index in the input -> index in the output; -1 for a stream left out.
  std::vector<int> outputIndex(input->nb_streams, -1);
  for (unsigned i = 0; i < input->nb_streams; ++i) {
    AVStream* stream = input->streams[i];
    if (static_cast<int>(i) != video && static_cast<int>(i) != sound) {
      stream->discard = AVDISCARD_ALL;
      continue;
    }
    AVStream* copy = avformat_new_stream(output.get(), nullptr);
    if (copy == nullptr || avcodec_parameters_copy(copy->codecpar, stream->codecpar) < 0) return "Out of memory";
    copy->codecpar->codec_tag = 0;
    copy->time_base = stream->time_base;
    outputIndex[i] = copy->index;
  }
  if ((result = avio_open2(&output->pb, outputPath_.c_str(), AVIO_FLAG_WRITE, &output->interrupt_callback, nullptr)) <
      0) {
    return failure("Cannot write " + outputPath_, result);
  }
  if ((result = avformat_write_header(output.get(), nullptr)) < 0) {
    return failure("The streams cannot go into MP4", result);
  }

  // The programme starts at 0 in the file, whatever its first time stamp.
  const int64_t startUs = input->start_time != AV_NOPTS_VALUE ? input->start_time : 0;
  const PacketPtr packet(av_packet_alloc());
  if (!packet) return "Out of memory";
  while (!aborted()) {
    result = av_read_frame(input.get(), packet.get());
    if (result == AVERROR_EOF) break;
    if (result < 0) return aborted() ? "Aborted" : failure("Reading the stream failed", result);
    const int target =
        packet->stream_index < static_cast<int>(outputIndex.size()) ? outputIndex[packet->stream_index] : -1;
    if (target < 0) {
      av_packet_unref(packet.get());
      continue;
    }
    const AVRational inputBase = input->streams[packet->stream_index]->time_base;
    const int64_t start = av_rescale_q(startUs, AV_TIME_BASE_Q, inputBase);
    if (packet->pts != AV_NOPTS_VALUE) packet->pts -= start;
    if (packet->dts != AV_NOPTS_VALUE) packet->dts -= start;
    const int64_t end = packet->pts != AV_NOPTS_VALUE ? packet->pts + packet->duration : AV_NOPTS_VALUE;
    if (end != AV_NOPTS_VALUE) {
      positionUs_.store(std::max(positionUs_.load(), av_rescale_q(end, inputBase, AV_TIME_BASE_Q)));
    }
    packet->stream_index = target;
    av_packet_rescale_ts(packet.get(), inputBase, output->streams[target]->time_base);
    packet->pos = -1;
    if ((result = av_interleaved_write_frame(output.get(), packet.get())) < 0) {
      return aborted() ? "Aborted" : failure("Writing " + outputPath_ + " failed", result);
    }
  }
  if (aborted()) return std::string("Aborted");
  if ((result = av_write_trailer(output.get())) < 0) return failure("Finishing " + outputPath_ + " failed", result);
  if ((result = avio_closep(&output->pb)) < 0) return failure("Closing " + outputPath_ + " failed", result);
  return std::nullopt;
}

}  // namespace engine
