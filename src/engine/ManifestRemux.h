// Copies the video and sound of an HLS playlist or a DASH manifest into one
// MP4 file without re-encoding: the packets are read through FFmpeg's
// demuxers, which fetch the segments, and written by its MP4 muxer.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

namespace engine {

class ManifestRemux {
 public:
  // A DASH address may end in "#representation=<id>"; `userAgent` may be empty.
  ManifestRemux(std::string manifestUrl, std::string userAgent, std::string outputPath);

  // Runs to the end on the calling thread. nullopt when the whole programme
  // was written, else the reason it was not (also when aborted).
  std::optional<std::string> run();
  // Makes run() return soon, also from a wait on the network; any thread.
  void abort() { aborted_.store(true); }
  bool aborted() const { return aborted_.load(); }

  // Length written so far and of the whole programme (0 while unknown), microseconds.
  int64_t positionUs() const { return positionUs_.load(); }
  int64_t durationUs() const { return durationUs_.load(); }

 private:
  std::string manifestUrl_;
  std::string userAgent_;
  std::string outputPath_;
  std::atomic<bool> aborted_{false};
  std::atomic<int64_t> positionUs_{0};
  std::atomic<int64_t> durationUs_{0};
};

}  // namespace engine
