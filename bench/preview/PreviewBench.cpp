// The preview against ffmpeg on the same 720p clip (H.264 with a keyframe
// every five seconds, and sound), in the same run:
// - exact seeks: twenty seeks to times between keyframes, each until its
//   picture is ready, against one `ffmpeg -ss T -i clip -frames:v 1` each;
//   target: the preview's total at most half of ffmpeg's.
// - playing: every picture of the clip decoded, drawn at 640x360 and handed
//   to the view one step after another, against `ffmpeg -i clip -f null`
//   decoding it; target: at least four times faster than real time, so that
//   playing keeps up with every picture on a slower machine.

#include <sys/resource.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "BenchMedia.h"
#include "videoconverter.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr double kClipSeconds = 20;
constexpr int kSeeks = 20;

double since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

struct Counters {
  std::atomic<int> pictures{0};
  std::atomic<int64_t> heardUs{0};
};

VideoConverter_RenderView countingView(Counters& counters) {
  VideoConverter_RenderView view{};
  view.context = &counters;
  view.showFrame = [](void* context, const VideoConverter_Frame*) { ++static_cast<Counters*>(context)->pictures; };
  view.playSound = [](void* context, const int16_t*, int count) {
    static_cast<Counters*>(context)->heardUs += static_cast<int64_t>(count) * 1000000 / VC_PREVIEW_SAMPLE_RATE;
    return count;
  };
  view.soundPlayedUs = [](void* context) { return static_cast<Counters*>(context)->heardUs.load(); };
  view.flushSound = [](void* context) { static_cast<Counters*>(context)->heardUs = 0; };
  return view;
}

long peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

}  // namespace

int main() {
  std::string pattern = (fs::temp_directory_path() / "preview-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) return 1;
  const fs::path folder = pattern;
  VideoConverter_SetTempPath(folder.c_str());
  const fs::path clip = folder / "clip.mp4";
  const std::string seconds = std::to_string(static_cast<int>(kClipSeconds));
  if (benchmedia::runQuietly({"ffmpeg", "-y", "-f", "lavfi", "-i", "testsrc2=s=1280x720:r=25:d=" + seconds, "-f",
                              "lavfi", "-i", "sine=d=" + seconds, "-c:v", "libx264", "-preset", "veryfast", "-g", "125",
                              "-c:a", "aac", clip.string()}) != 0) {
    std::fprintf(stderr, "ffmpeg could not make the clip\n");
    return 1;
  }
  MediaItem record{};
  record.m_cbsize = VC_MEDIA_ITEM_SIZE;
  clip.string().copy(record.m_FileName, sizeof record.m_FileName - 1);
  DECODER_INFO* info = nullptr;
  if (VideoConverter_GetMediaInfo(clip.c_str(), nullptr, &info, 0) != 0) return 1;
  record.m_Info = *info;
  record.m_cropW = info->m_Width;
  record.m_cropH = info->m_Height;
  record.m_volume = 256;
  record.m_bEnableHwaccel = 1;

  // Between keyframes, where an exact seek has the most to decode.
  std::vector<double> times;
  for (int i = 0; i < kSeeks; ++i) times.push_back(0.5 + (i * 4.37) - static_cast<int>((i * 4.37) / 19) * 19);

  const Clock::time_point ffmpegSeeksStart = Clock::now();
  for (double time : times) {
    benchmedia::runQuietly({"ffmpeg", "-ss", std::to_string(time), "-i", clip.string(), "-frames:v", "1", "-f",
                            "null", "-"});
  }
  const double ffmpegSeeks = since(ffmpegSeeksStart);

  Counters seekCounters;
  VideoConverter_RenderView seekView = countingView(seekCounters);
  if (VideoConverter_Render(&record, &seekView, 640, 360, 1, nullptr, 0, 0) != 0) return 1;
  VideoConverter_Pause();
  uint8_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  VideoConverter_GetCurrentBitmap(&pixels, &width, &height, nullptr, nullptr);  // opened and first picture shown
  const Clock::time_point previewSeeksStart = Clock::now();
  for (double time : times) {
    VideoConverter_RenderSeek(static_cast<int64_t>(time * 1e6));
    width = 320;
    height = 180;
    if (VideoConverter_GetCurrentBitmap(&pixels, &width, &height, nullptr, nullptr) != 0) return 1;
  }
  const double previewSeeks = since(previewSeeksStart);
  VideoConverter_Destory();

  const Clock::time_point decodeStart = Clock::now();
  benchmedia::runQuietly({"ffmpeg", "-i", clip.string(), "-f", "null", "-"});
  const double ffmpegDecode = since(decodeStart);

  Counters playCounters;
  VideoConverter_RenderView playView = countingView(playCounters);
  const int total = static_cast<int>(kClipSeconds * 25);
  if (VideoConverter_Render(&record, &playView, 640, 360, 1, nullptr, 0, 0) != 0) return 1;
  VideoConverter_Pause();
  VideoConverter_GetCurrentBitmap(&pixels, &width, &height, nullptr, nullptr);
  const Clock::time_point playStart = Clock::now();
  for (int picture = playCounters.pictures; picture < total; ++picture) {
    VideoConverter_RenderStep(1);
    while (playCounters.pictures <= picture && since(playStart) < 10 * kClipSeconds) std::this_thread::yield();
  }
  const double playing = since(playStart);
  VideoConverter_Destory();
  const int shown = playCounters.pictures.load();

  std::printf("exact seeks (%d): preview %.2f s, ffmpeg %.2f s, ratio %.3f (target <= 0.5)\n", kSeeks, previewSeeks,
              ffmpegSeeks, previewSeeks / ffmpegSeeks);
  std::printf("playing %.0f s: preview %.2f s (%.1fx real time, target >= 4), ffmpeg decoding %.2f s, ratio %.2f\n",
              kClipSeconds, playing, kClipSeconds / playing, ffmpegDecode, playing / ffmpegDecode);
  std::printf("pictures shown %d of %d, peak memory %ld MB\n", shown, total, peakMegabytes());
  fs::remove_all(folder);
  return 0;
}
