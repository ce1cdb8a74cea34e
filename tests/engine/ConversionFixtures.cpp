#include "ConversionFixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>

#include "TestMedia.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace enginetest {
namespace {

namespace fs = std::filesystem;

// An opened file with the decoder of its first stream of one type.
struct DecodedStream {
  AVFormatContext* format = nullptr;
  AVCodecContext* decoder = nullptr;
  int index = -1;

  DecodedStream(const std::string& path, AVMediaType type) {
    if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0) return;
    if (avformat_find_stream_info(format, nullptr) < 0) return;
    index = av_find_best_stream(format, type, -1, -1, nullptr, 0);
    if (index < 0) return;
    decoder = avcodec_alloc_context3(avcodec_find_decoder(format->streams[index]->codecpar->codec_id));
    avcodec_parameters_to_context(decoder, format->streams[index]->codecpar);
    if (avcodec_open2(decoder, decoder->codec, nullptr) < 0) index = -1;
  }
  ~DecodedStream() {
    avcodec_free_context(&decoder);
    avformat_close_input(&format);
  }

  // Calls `take` with every decoded frame.
  template <typename Take>
  void forEachFrame(Take take) {
    if (index < 0) return;
    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
    auto receiveAll = [&] {
      while (avcodec_receive_frame(decoder, frame) >= 0) {
        take(*frame);
        av_frame_unref(frame);
      }
    };
    while (av_read_frame(format, packet) >= 0) {
      if (packet->stream_index == index && avcodec_send_packet(decoder, packet) >= 0) receiveAll();
      av_packet_unref(packet);
    }
    avcodec_send_packet(decoder, nullptr);
    receiveAll();
    av_frame_free(&frame);
    av_packet_free(&packet);
  }
};

}  // namespace

std::string generatedMedia(const std::string& name, const std::vector<std::string>& ffmpegArguments) {
  static std::map<std::string, std::string> made;
  if (const auto found = made.find(name); found != made.end()) return found->second;
  const fs::path folder = fs::path(scratchFolder()) / "conversion-media";
  fs::create_directories(folder);
  const std::string path = (folder / name).string();
  std::vector<std::string> arguments = ffmpegArguments;
  arguments.push_back(path);
  EXPECT_TRUE(runFfmpeg(arguments)) << "ffmpeg could not make " << name;
  made.emplace(name, path);
  return path;
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
  DecodedStream stream(path, AVMEDIA_TYPE_VIDEO);
  std::vector<RgbPicture> pictures;
  stream.forEachFrame([&](const AVFrame& frame) {
    RgbPicture picture;
    picture.width = frame.width;
    picture.height = frame.height;
    picture.rgb.resize(static_cast<std::size_t>(frame.width) * frame.height * 3);
    SwsContext* scaler =
        sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), frame.width, frame.height,
                       AV_PIX_FMT_RGB24, SWS_POINT, nullptr, nullptr, nullptr);
    uint8_t* planes[1] = {picture.rgb.data()};
    const int strides[1] = {frame.width * 3};
    sws_scale(scaler, frame.data, frame.linesize, 0, frame.height, planes, strides);
    sws_freeContext(scaler);
    pictures.push_back(std::move(picture));
  });
  return pictures;
}

Sound decodeSound(const std::string& path) {
  DecodedStream stream(path, AVMEDIA_TYPE_AUDIO);
  Sound sound;
  stream.forEachFrame([&](const AVFrame& frame) {
    sound.sampleRate = frame.sample_rate;
    sound.channels = frame.ch_layout.nb_channels;
    SwrContext* converter = nullptr;
    AVChannelLayout layout = frame.ch_layout;
    swr_alloc_set_opts2(&converter, &layout, AV_SAMPLE_FMT_FLTP, frame.sample_rate, &layout,
                        static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    swr_init(converter);
    std::vector<std::vector<float>> planes(frame.ch_layout.nb_channels, std::vector<float>(frame.nb_samples));
    std::vector<uint8_t*> out;
    for (auto& plane : planes) out.push_back(reinterpret_cast<uint8_t*>(plane.data()));
    const int converted = swr_convert(converter, out.data(), frame.nb_samples,
                                      const_cast<const uint8_t**>(frame.extended_data), frame.nb_samples);
    swr_free(&converter);
    sound.firstChannel.insert(sound.firstChannel.end(), planes[0].begin(), planes[0].begin() + std::max(0, converted));
  });
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
