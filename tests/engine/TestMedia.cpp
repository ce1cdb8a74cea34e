#include "TestMedia.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "GeneratedMedia.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;
using testmedia::source;

const QStringList kX264{"-c:v", "libx264", "-preset", "ultrafast"};

// The ffmpeg arguments that make each sample.
QStringList recipe(const std::string& name) {
  static const std::map<std::string, QStringList> table = {
      {"clip.mp4", source("testsrc=size=320x240:rate=25:duration=2") +
                       source("sine=frequency=440:sample_rate=44100:duration=2") +
                       QStringList{"-ac", "2", "-g", "10", "-pix_fmt", "yuv420p", "-c:a", "aac"} + kX264},
      {"front-index.mp4",
       source("testsrc=size=320x240:rate=25:duration=2") + kX264 + QStringList{"-movflags", "+faststart"}},
      {"two-audio.mkv", source("testsrc=size=160x120:rate=10:duration=2") +
                            source("sine=frequency=300:sample_rate=48000:duration=2") +
                            source("sine=frequency=600:sample_rate=48000:duration=2,aformat=channel_layouts=5.1") +
                            QStringList{"-map", "0", "-map", "1", "-map", "2", "-c:a", "aac", "-metadata:s:a:0",
                                        "language=ger", "-metadata:s:a:0", "title=éééééééééééééé", "-metadata:s:a:1",
                                        "language=eng", "-disposition:a:0", "0", "-disposition:a:1", "default"} +
                            kX264},
      {"upright.mov", QStringList{"-filter_complex",
                                  "color=red:size=160x60:duration=1:rate=10[top];color=blue:size=160x60:duration=1:"
                                  "rate=10[bottom];[top][bottom]vstack,format=yuv420p"} +
                          kX264},
      {"clip.avi", source("testsrc=size=176x144:rate=15:duration=2") + source("sine=sample_rate=44100:duration=2") +
                       QStringList{"-c:v", "mpeg4", "-c:a", "libmp3lame"}},
      {"clip.ts", source("testsrc=size=160x120:rate=25:duration=2") + source("sine=sample_rate=48000:duration=2") +
                      QStringList{"-g", "12", "-c:a", "mp2"} + kX264},
      {"clip.webm", source("testsrc=size=160x120:rate=10:duration=2") + source("sine=sample_rate=48000:duration=2") +
                        QStringList{"-c:v", "libvpx", "-deadline", "realtime", "-cpu-used", "8", "-c:a", "libopus"}},
      {"song.mp3", source("sine=sample_rate=44100:duration=2") + QStringList{"-ac", "2", "-c:a", "libmp3lame"}},
      {"song.flac", source("sine=sample_rate=48000:duration=2") + QStringList{"-sample_fmt", "s16", "-c:a", "flac"}},
      {"song.wav", source("sine=sample_rate=22050:duration=2") + QStringList{"-c:a", "pcm_s16le"}},
      {"picture.png", source("testsrc=size=64x48") + QStringList{"-frames:v", "1"}},
      {"black-start.mp4",
       source("testsrc=size=160x120:rate=10:duration=5,drawbox=color=black:t=fill:enable='lt(t,0.3)'") + kX264 +
           QStringList{"-pix_fmt", "yuv420p"}},
      {"anamorphic.mp4", source("testsrc=size=160x120:rate=10:duration=1,setsar=2") + kX264},
      {"interlaced.mpg", source("testsrc=size=176x144:rate=25:duration=1") +
                             QStringList{"-c:v", "mpeg2video", "-flags", "+ilme+ildct", "-top", "1"}},
      {"red-then-blue.mp4",
       QStringList{"-filter_complex",
                   "color=red:size=64x48:rate=10:duration=1[a];color=blue:size=64x48:rate=10:duration=1[b];"
                   "[a][b]concat=n=2,format=yuv420p",
                   "-g", "5"} +
           kX264},
  };
  // Stored upright, then turned a quarter in the container.
  if (name == "rotated.mov")
    return {"-i",       testmedia::made("upright.mov", table.at("upright.mov")), "-c", "copy", "-metadata:s:v:0",
            "rotate=90"};
  const auto found = table.find(name);
  return found != table.end() ? found->second : QStringList();
}

}  // namespace

std::string sample(const std::string& name) {
  const QStringList arguments = recipe(name);
  if (arguments.isEmpty()) {
    ADD_FAILURE() << "no recipe for " << name;
    return "";
  }
  return testmedia::made(QString::fromStdString(name), arguments).toStdString();
}

std::string firstBytesOf(const std::string& source, double fraction, const std::string& name) {
  std::ifstream whole(source, std::ios::binary);
  const std::string content((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
  const fs::path path = fs::path(scratchFolder()) / name;
  std::ofstream(path, std::ios::binary) << content.substr(0, static_cast<std::size_t>(content.size() * fraction));
  return path.string();
}

std::string scratchFolder() {
  static const testmedia::Folder folder;
  return folder.path().toStdString();
}

}  // namespace enginetest
