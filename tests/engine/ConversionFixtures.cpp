#include "ConversionFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>

#include "GeneratedMedia.h"
#include "TestMedia.h"

namespace enginetest {

namespace fs = std::filesystem;

std::string generatedMedia(const std::string& name, const std::vector<std::string>& ffmpegArguments) {
  QStringList arguments;
  for (const std::string& argument : ffmpegArguments) arguments.append(QString::fromStdString(argument));
  return testmedia::made(QString::fromStdString(name), arguments).toStdString();
}

std::string outputPath(const std::string& name) {
  const fs::path folder = fs::path(scratchFolder()) / "conversion-output";
  fs::create_directories(folder);
  return (folder / name).string();
}

std::vector<std::string> outputTemporaries() {
  std::vector<std::string> found;
  for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(outputPath("")).parent_path())) {
    const std::string name = entry.path().filename().string();
    if (name.front() == '.' && name.find(".part-") != std::string::npos) found.push_back(entry.path().string());
  }
  return found;
}

std::string longClip() {
  return generatedMedia("long.mp4", {"-f", "lavfi", "-i", "testsrc2=s=320x240:r=25:d=30", "-f", "lavfi", "-i",
                                     "sine=r=44100:d=30", "-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac"});
}

std::string tenSeconds() {
  return generatedMedia("ten-seconds.mp4",
                        {"-f", "lavfi", "-i", "testsrc2=s=320x240:r=25:d=10", "-f", "lavfi", "-i", "sine=r=44100:d=10",
                         "-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac", "-movflags", "+faststart"});
}

MediaItem recordFor(const std::string& path) {
  MediaItem item{};
  item.m_cbsize = VC_MEDIA_ITEM_SIZE;
  setText(item.m_FileName, path);
  DECODER_INFO* info = nullptr;
  EXPECT_EQ(VideoConverter_GetMediaInfo(path.c_str(), nullptr, &info, 0), 0) << path;
  if (info != nullptr) item.m_Info = *info;
  item.m_cropW = item.m_Info.m_Width;
  item.m_cropH = item.m_Info.m_Height;
  item.m_AudioDisable = item.m_Info.m_AudioSteamCnt > 0 ? 0 : 1;
  const int32_t defaultStream = item.m_Info.m_defaultAudioStream;  // a packed field binds to no reference
  item.m_audioStreamIndex = std::max(0, defaultStream);
  item.m_volume = 256;
  item.m_bEnableHwaccel = 1;
  return item;
}

OutputParam outputFor(const std::string& path, const std::string& format, const std::string& videoEncoder,
                      const std::string& audioEncoder) {
  OutputParam output{};
  output.m_cbsize = VC_OUTPUT_PARAM_SIZE;
  setText(output.m_FileName, path);
  setText(output.m_Format, format);
  setText(output.m_VideoEncoder, videoEncoder);
  setText(output.m_AudioEncoder, audioEncoder);
  output.m_FrameRateNum = 25;
  output.m_FrameRateDen = 1;
  output.m_SampleAspectNum = 1;
  output.m_SampleAspectDen = 1;
  output.m_VideoQuality = 27;
  output.m_SampleRate = 44100;
  output.m_Channels = 2;
  output.m_BitsPerSample = 16;
  return output;
}

OutputParam losslessOutput(const std::string& name) {
  return outputFor(outputPath(name), "matroska", "ffv1", "pcm_s16le");
}

engine::ConversionResult convert(const std::vector<MediaItem>& items, const OutputParam& output) {
  engine::Transcoder transcoder(items, output);
  return transcoder.run();
}

std::vector<RgbPicture> decodePictures(const std::string& path) {
  // Every decoded picture, as stored, without any made up or dropped for a steady rate.
  return ffmpegPictures(
      {"-noautorotate", "-i", path, "-map", "0:v:0", "-fps_mode", "passthrough", "-sws_flags", "neighbor"});
}

Sound decodeSound(const std::string& path) {
  const auto stream = ffprobeFields(path, "streams", "a:0");
  Sound sound;
  sound.sampleRate = std::stoi(stream.count("sample_rate") ? stream.at("sample_rate") : "0");
  sound.channels = std::stoi(stream.count("channels") ? stream.at("channels") : "0");
  const std::string samples = runProcess({"ffmpeg", "-nostdin", "-v", "error", "-i", path, "-map", "0:a:0", "-af",
                                          "pan=mono|c0=c0", "-f", "f32le", "-"})
                                  .output;
  sound.firstChannel.resize(samples.size() / sizeof(float));
  std::memcpy(sound.firstChannel.data(), samples.data(), sound.firstChannel.size() * sizeof(float));
  return sound;
}

double Sound::rms(double from, double to) const {
  const auto first = static_cast<std::size_t>(std::max(0.0, from * sampleRate));
  const auto last = std::min(firstChannel.size(), static_cast<std::size_t>(to * sampleRate));
  if (last <= first) return 0;
  double sum = 0;
  for (std::size_t i = first; i < last; ++i) sum += static_cast<double>(firstChannel[i]) * firstChannel[i];
  return std::sqrt(sum / static_cast<double>(last - first));
}

double Sound::crossingsPerSecond(double from, double to) const {
  const auto first = static_cast<std::size_t>(std::max(0.0, from * sampleRate));
  const auto last = std::min(firstChannel.size(), static_cast<std::size_t>(to * sampleRate));
  int crossings = 0;
  for (std::size_t i = first + 1; i < last; ++i) {
    if ((firstChannel[i - 1] < 0) != (firstChannel[i] < 0)) ++crossings;
  }
  return last > first ? crossings * static_cast<double>(sampleRate) / static_cast<double>(last - first) : 0;
}

double probedDuration(const std::string& path, const std::string& stream) {
  const auto fields = stream.empty() ? ffprobeFields(path, "format") : ffprobeFields(path, "streams", stream);
  const auto duration = fields.find("duration");
  return duration != fields.end() && duration->second != "N/A" ? std::stod(duration->second) : -1;
}

}  // namespace enginetest
