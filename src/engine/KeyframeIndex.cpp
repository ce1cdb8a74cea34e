#include "KeyframeIndex.h"

#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "AtomicFile.h"
#include "InputFile.h"

namespace engine {
namespace {

constexpr char kHeader[] = "VCKEYFRAMES 1";
// Reading every packet of a long file takes a while on a slow disk.
constexpr std::chrono::seconds kScanBudget{60};

uint64_t fnv1a(const std::string& text, uint64_t hash = 14695981039346656037ull) {
  for (unsigned char c : text) hash = (hash ^ c) * 1099511628211ull;
  return hash;
}

// Changes whenever the file is replaced or rewritten, so a stale index is never reused.
std::optional<std::string> indexNameFor(const std::string& mediaPath) {
  std::error_code error;
  const std::filesystem::path path(mediaPath);
  const auto size = std::filesystem::file_size(path, error);
  if (error) return std::nullopt;
  const auto modified = std::filesystem::last_write_time(path, error);
  if (error) return std::nullopt;
  const std::string identity = std::filesystem::absolute(path, error).string() + '\n' + std::to_string(size) + '\n' +
                               std::to_string(modified.time_since_epoch().count());
  char name[32];
  std::snprintf(name, sizeof name, "%016" PRIx64 ".keyframes", fnv1a(identity));
  return name;
}

// Reads packets without decoding them, nor analysing the streams: the
// demuxer marks the keyframes.
std::optional<std::vector<Keyframe>> scanKeyframes(const std::string& mediaPath, int streamIndex, int64_t fileStartUs) {
  int error = 0;
  std::unique_ptr<InputFile> file = InputFile::open(mediaPath, kScanBudget, false, error);
  if (file == nullptr) return std::nullopt;
  AVFormatContext& format = *file->context();
  if (streamIndex < 0 || static_cast<unsigned>(streamIndex) >= format.nb_streams ||
      format.streams[streamIndex]->codecpar->codec_type != AVMEDIA_TYPE_VIDEO) {
    return std::nullopt;
  }
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    if (static_cast<int>(i) != streamIndex) format.streams[i]->discard = AVDISCARD_ALL;
  }
  const AVRational timeBase = format.streams[streamIndex]->time_base;
  PacketPtr packet(av_packet_alloc());
  if (packet == nullptr) return std::nullopt;
  std::vector<Keyframe> keyframes;
  int result = 0;
  while ((result = av_read_frame(&format, packet.get())) >= 0) {
    const int64_t timestamp = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
    if (packet->stream_index == streamIndex && (packet->flags & AV_PKT_FLAG_KEY) && timestamp != AV_NOPTS_VALUE) {
      keyframes.push_back({av_rescale_q(timestamp, timeBase, AV_TIME_BASE_Q) - fileStartUs, packet->pos});
    }
    av_packet_unref(packet.get());
  }
  // A read cut short by the deadline would leave an index that ends early.
  if (result != AVERROR_EOF || file->deadlinePassed()) return std::nullopt;
  return keyframes;
}

bool save(const std::vector<Keyframe>& keyframes, const std::string& indexPath) {
  return writeFileAtomically(indexPath, [&](std::FILE* file) {
    if (std::fprintf(file, "%s\n", kHeader) < 0) return false;
    for (const Keyframe& keyframe : keyframes) {
      if (std::fprintf(file, "%" PRId64 " %" PRId64 "\n", keyframe.timeUs, keyframe.bytePosition) < 0) return false;
    }
    return true;
  });
}

}  // namespace

std::string KeyframeIndex::build(const std::string& mediaPath, int streamIndex, int64_t fileStartUs,
                                 const std::string& folder) {
  if (folder.empty()) return "";
  const std::optional<std::string> name = indexNameFor(mediaPath);
  if (!name) return "";
  const std::string indexPath = (std::filesystem::path(folder) / *name).string();
  if (load(indexPath)) return indexPath;
  const std::optional<std::vector<Keyframe>> keyframes = scanKeyframes(mediaPath, streamIndex, fileStartUs);
  if (!keyframes || !save(*keyframes, indexPath)) return "";
  return indexPath;
}

std::optional<std::vector<Keyframe>> KeyframeIndex::load(const std::string& indexPath) {
  std::ifstream input(indexPath);
  std::string line;
  if (!std::getline(input, line) || line != kHeader) return std::nullopt;
  std::vector<Keyframe> keyframes;
  while (std::getline(input, line)) {
    std::istringstream fields(line);
    Keyframe keyframe;
    std::string rest;
    if (!(fields >> keyframe.timeUs >> keyframe.bytePosition) || (fields >> rest)) return std::nullopt;
    keyframes.push_back(keyframe);
  }
  return keyframes;
}

}  // namespace engine
