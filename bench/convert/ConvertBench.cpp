// Runs the same conversion jobs through the engine (its C functions, as the
// application calls them) and through the ffmpeg command with the same
// settings, and prints each wall time and the ratio engine / ffmpeg.
// Target: at most 0.95 on every job. Each side runs every job twice; the
// faster run counts, which keeps other work on the machine out of the figures.

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "BenchMedia.h"
#include "videoconverter.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Arguments = std::vector<std::string>;

constexpr int kRuns = 2;
constexpr const char* kFont = "DejaVu Sans";

bool ffmpeg(const Arguments& arguments) {
  Arguments command{"ffmpeg", "-nostdin", "-y", "-v", "error"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return benchmedia::runQuietly(command) == 0;
}

template <std::size_t N>
void setText(char (&field)[N], const std::string& text) {
  std::snprintf(field, N, "%s", text.c_str());
}

// The record of a whole file, as the conversion job fills it.
MediaItem recordFor(const std::string& path) {
  MediaItem item{};
  item.m_cbsize = VC_MEDIA_ITEM_SIZE;
  setText(item.m_FileName, path);
  DECODER_INFO* info = nullptr;
  if (VideoConverter_GetMediaInfo(path.c_str(), nullptr, &info, 0) == 0) item.m_Info = *info;
  item.m_cropW = item.m_Info.m_Width;
  item.m_cropH = item.m_Info.m_Height;
  item.m_AudioDisable = item.m_Info.m_AudioSteamCnt > 0 ? 0 : 1;
  item.m_audioStreamIndex = std::max(0, item.m_Info.m_defaultAudioStream);
  item.m_volume = 256;
  item.m_bEnableHwaccel = 1;
  return item;
}

OutputParam videoOutput(const std::string& path) {
  OutputParam output{};
  output.m_cbsize = VC_OUTPUT_PARAM_SIZE;
  setText(output.m_FileName, path);
  setText(output.m_Format, "mp4");
  setText(output.m_VideoEncoder, "libx264");
  output.m_VideoBitrate = 2000;
  output.m_FrameRateNum = 30;
  output.m_FrameRateDen = 1;
  output.m_Width = 1280;
  output.m_Height = 720;
  output.m_SampleAspectNum = 1;
  output.m_SampleAspectDen = 1;
  output.m_VideoQuality = 27;
  setText(output.m_AudioEncoder, "aac");
  output.m_AudioBitrate = 128;
  output.m_SampleRate = 48000;
  output.m_Channels = 2;
  output.m_BitsPerSample = 16;
  return output;
}

// ffmpeg's settings for the same output.
const Arguments kVideoSettings{"-c:v", "libx264", "-b:v", "2000k", "-r",    "30",  "-c:a",
                               "aac",  "-b:a",    "128k", "-ar",   "48000", "-ac", "2"};

struct Job {
  std::string name;
  std::vector<MediaItem> items;
  OutputParam output;
  Arguments ffmpegArguments;  // without the output path
  std::string ffmpegOutput;
};

std::mutex endMutex;
std::condition_variable endChanged;
bool conversionEnded = false;

void onConversionEnd() {
  std::lock_guard lock(endMutex);
  conversionEnded = true;
  endChanged.notify_all();
}

double seconds(Clock::duration elapsed) { return std::chrono::duration<double>(elapsed).count(); }

// Wall time of one conversion through the engine; negative when it failed.
double timeEngine(Job& job) {
  fs::remove(job.output.m_FileName);
  conversionEnded = false;
  const auto start = Clock::now();
  if (VideoConverter_Convert(job.items.data(), static_cast<int>(job.items.size()), &job.output, nullptr, 640, 480, 0) !=
      0) {
    return -1;
  }
  VideoConverter_ConvertEndCallBack(&onConversionEnd);
  {
    std::unique_lock lock(endMutex);
    endChanged.wait(lock, [] { return conversionEnded; });
  }
  const double elapsed = seconds(Clock::now() - start);
  const bool complete = VideoConverter_GetCurrentTime() == VideoConverter_GetDuration();
  VideoConverter_Destory();
  return complete && fs::exists(job.output.m_FileName) ? elapsed : -1;
}

double timeFfmpeg(const Job& job) {
  Arguments arguments = job.ffmpegArguments;
  arguments.push_back(job.ffmpegOutput);
  const auto start = Clock::now();
  return ffmpeg(arguments) ? seconds(Clock::now() - start) : -1;
}

bool makeMedia(const fs::path& folder) {
  std::printf("Making the media in %s ...\n", folder.c_str());
  std::fflush(stdout);
  const Arguments clip{"-c:v",     "libx264", "-preset", "veryfast", "-crf", "20",
                       "-pix_fmt", "yuv420p", "-c:a",    "aac",      "-b:a", "160k"};
  auto video = [&](const std::string& source, int seconds, const std::string& name) {
    Arguments arguments{"-f",  "lavfi", "-i", source + "=s=1920x1080:r=30:d=" + std::to_string(seconds),
                        "-f",  "lavfi", "-i", "sine=f=440:r=48000:d=" + std::to_string(seconds),
                        "-ac", "2"};
    arguments.insert(arguments.end(), clip.begin(), clip.end());
    arguments.push_back((folder / name).string());
    return ffmpeg(arguments);
  };
  return video("testsrc2", 20, "hd.mp4") && video("testsrc2", 7, "part1.mp4") && video("smptehdbars", 7, "part2.mp4") &&
         video("rgbtestsrc", 6, "part3.mp4") &&
         ffmpeg({"-f", "lavfi", "-i", "sine=f=440:r=44100:d=300", "-f", "lavfi", "-i", "anoisesrc=r=44100:d=300:a=0.1",
                 "-filter_complex", "[0][1]amerge=inputs=2", "-c:a", "flac", (folder / "song.flac").string()});
}

std::vector<Job> makeJobs(const fs::path& folder) {
  const std::string hd = (folder / "hd.mp4").string();
  std::vector<Job> jobs;

  Job transcode{
      "1080p H.264 to 720p H.264 2000k + AAC 128k", {recordFor(hd)}, videoOutput((folder / "1.mp4").string()), {}, {}};
  transcode.ffmpegArguments = {"-i", hd, "-vf", "scale=1280:720"};
  jobs.push_back(transcode);

  Job song{"audio to MP3 192k", {recordFor((folder / "song.flac").string())}, {}, {}, {}};
  song.output = videoOutput((folder / "2.mp3").string());
  song.output.m_Type = 1;
  setText(song.output.m_Format, "mp3");
  setText(song.output.m_AudioEncoder, "libmp3lame");
  song.output.m_AudioBitrate = 192;
  song.output.m_SampleRate = 44100;
  song.items[0].m_VideoDisable = 1;
  song.ffmpegArguments = {
      "-i", (folder / "song.flac").string(), "-vn", "-c:a", "libmp3lame", "-b:a", "192k", "-ar", "44100", "-ac", "2"};
  jobs.push_back(song);

  Job merge{"three 1080p files joined to 720p", {}, videoOutput((folder / "3.mp4").string()), {}, {}};
  for (const char* part : {"part1.mp4", "part2.mp4", "part3.mp4"}) {
    merge.items.push_back(recordFor((folder / part).string()));
    merge.ffmpegArguments.insert(merge.ffmpegArguments.end(), {"-i", (folder / part).string()});
  }
  merge.ffmpegArguments.insert(
      merge.ffmpegArguments.end(),
      {"-filter_complex", "[0:v][0:a][1:v][1:a][2:v][2:a]concat=n=3:v=1:a=1[v][a];[v]scale=1280:720[picture]", "-map",
       "[picture]", "-map", "[a]"});
  jobs.push_back(merge);

  // Crop 1600 x 900 from (160, 90), levels +20, and text drawn at half opacity
  // at (400, 200) of the source, 60 points there: (192, 88) and 48 pixels on the 720p output.
  Job edited{"720p job with crop, levels and a text watermark",
             {recordFor(hd)},
             videoOutput((folder / "4.mp4").string()),
             {},
             {}};
  MediaItem& item = edited.items[0];
  item.m_cropX = 160;
  item.m_cropY = 90;
  item.m_cropW = 1600;
  item.m_cropH = 900;
  item.m_brightness = 20;
  item.m_Contrast = 20;
  item.m_satruation = 20;
  _WatermarkInfo& watermark = item.m_watermarkInfo;
  watermark.m_watermarkType = 2;
  setText(watermark.m_text, "Sample watermark");
  setText(watermark.m_fontinfo.m_fontname, kFont);
  watermark.m_fontinfo.m_fontsize = 60;
  watermark.m_fontinfo.m_fontcolor = 0xFFFFFFFF;
  watermark.m_x = 400;
  watermark.m_y = 200;
  watermark.m_w = 800;
  watermark.m_h = 100;
  watermark.m_transparency = 127;
  watermark.m_changed_flag = 8;
  edited.ffmpegArguments = {"-i", hd, "-vf",
                            "crop=1600:900:160:90,scale=1280:720,eq=brightness=0.0784:contrast=1.1:saturation=1.1,"
                            "drawtext=font='" +
                                std::string(kFont) +
                                "':text='Sample watermark':fontsize=48:fontcolor=white@0.5:x=192:y=88"};
  jobs.push_back(edited);

  for (Job& job : jobs) {
    if (job.output.m_Type == 0)
      job.ffmpegArguments.insert(job.ffmpegArguments.end(), kVideoSettings.begin(), kVideoSettings.end());
    const fs::path engineOutput(job.output.m_FileName);
    job.ffmpegOutput = (folder / ("ffmpeg-" + engineOutput.filename().string())).string();
  }
  return jobs;
}

double fastest(const std::vector<double>& times) {
  if (std::any_of(times.begin(), times.end(), [](double time) { return time < 0; })) return -1;
  return *std::min_element(times.begin(), times.end());
}

}  // namespace

int main() {
  std::string pattern = (fs::temp_directory_path() / "convert-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) return 1;
  const fs::path folder = pattern;
  VideoConverter_SetTempPath(folder.c_str());
  int status = 0;
  if (!makeMedia(folder)) {
    std::fprintf(stderr, "ffmpeg could not make the media\n");
    status = 1;
  } else {
    std::printf("%-50s %10s %10s %8s\n", "job", "engine s", "ffmpeg s", "ratio");
    for (Job& job : makeJobs(folder)) {
      std::vector<double> engineTimes;
      std::vector<double> ffmpegTimes;
      for (int run = 0; run < kRuns; ++run) {
        engineTimes.push_back(timeEngine(job));
        ffmpegTimes.push_back(timeFfmpeg(job));
      }
      const double engine = fastest(engineTimes);
      const double reference = fastest(ffmpegTimes);
      if (engine < 0 || reference < 0) {
        std::printf("%-50s failed (engine %s, ffmpeg %s)\n", job.name.c_str(), engine < 0 ? "failed" : "ok",
                    reference < 0 ? "failed" : "ok");
        status = 1;
        continue;
      }
      std::printf("%-50s %10.2f %10.2f %8.3f\n", job.name.c_str(), engine, reference, engine / reference);
      std::fflush(stdout);
    }
  }
  fs::remove_all(folder);
  return status;
}
