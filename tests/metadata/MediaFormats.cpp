#include "MediaFormats.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>

namespace tagtest {
namespace {

void appendLittleEndian(std::string& bytes, uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
}

// No encoder for this format is packaged, so the file is assembled from its
// documented descriptor and header: one second of 16-bit mono 44.1 kHz in a
// single frame. Tag readers look only at these headers and the tags.
void writeMonkeysAudioFile(const std::string& path) {
  constexpr uint32_t kFrameBytes = 64;
  std::string bytes = "MAC ";
  appendLittleEndian(bytes, 3990, 2);                                     // version
  appendLittleEndian(bytes, 0, 2);                                        // padding
  appendLittleEndian(bytes, 52, 4);                                       // descriptor bytes
  appendLittleEndian(bytes, 24, 4);                                       // header bytes
  appendLittleEndian(bytes, 4, 4);                                        // seek table bytes
  appendLittleEndian(bytes, 0, 4);                                        // stored WAV header bytes
  appendLittleEndian(bytes, kFrameBytes, 4);                              // frame data bytes
  appendLittleEndian(bytes, 0, 4);                                        // frame data bytes, high word
  appendLittleEndian(bytes, 0, 4);                                        // terminating data bytes
  bytes.append(16, '\0');                                                 // MD5 of the audio
  appendLittleEndian(bytes, 2000, 2);                                     // compression level
  appendLittleEndian(bytes, 0, 2);                                        // format flags
  appendLittleEndian(bytes, 73728, 4);                                    // blocks per frame
  appendLittleEndian(bytes, 44100, 4);                                    // blocks in the final frame
  appendLittleEndian(bytes, 1, 4);                                        // total frames
  appendLittleEndian(bytes, 16, 2);                                       // bits per sample
  appendLittleEndian(bytes, 1, 2);                                        // channels
  appendLittleEndian(bytes, 44100, 4);                                    // sample rate
  appendLittleEndian(bytes, static_cast<uint32_t>(bytes.size() + 4), 4);  // seek table: the only frame
  bytes.append(kFrameBytes, '\0');
  writeFile(path, bytes);
}

// No muxer for this format in ffmpeg: its own encoder converts a WAV file.
void writeMusepackFile(const std::string& path) {
  const QString wav = QString::fromStdString(madeWithFfmpeg("musepack-source.wav", {}, false));
  const testmedia::ProgramOutput encoded =
      testmedia::run("mpcenc", {"--silent", "--overwrite", wav, QString::fromStdString(path)});
  EXPECT_EQ(encoded.exitCode, 0) << encoded.errors.toStdString();
}

}  // namespace

const std::vector<MediaFormat>& writableFormats() {
  static const std::vector<MediaFormat> formats{
      {"mp4", "mp4", {"-c:v", "mpeg4", "-c:a", "aac"}, true},
      {"m4a", "m4a", {"-c:a", "aac"}, false},
      {"m4v", "m4v", {"-c:v", "mpeg4", "-c:a", "aac", "-f", "mp4"}, true},
      {"m4r", "m4r", {"-c:a", "aac", "-f", "mp4"}, false},
      {"mov", "mov", {"-c:v", "mpeg4", "-c:a", "aac"}, true},
      {"3gp", "3gp", {"-c:v", "h263", "-c:a", "aac", "-ar", "22050"}, true},
      {"mp3", "mp3", {"-c:a", "libmp3lame"}, false},
      {"flac", "flac", {"-c:a", "flac"}, false},
      {"ogg_vorbis", "ogg", {"-c:a", "libvorbis"}, false},
      {"opus", "opus", {"-c:a", "libopus"}, false},
      {"wma", "wma", {"-c:a", "wmav2"}, false},
      {"wmv", "wmv", {"-c:v", "wmv2", "-c:a", "wmav2"}, true},
      {"aiff", "aiff", {"-c:a", "pcm_s16be"}, false},
      {"wav", "wav", {"-c:a", "pcm_s16le"}, false},
      {"ape", "ape", {}, false, false},
      {"wavpack", "wv", {"-c:a", "wavpack"}, false},
      {"musepack", "mpc", {}, false},
      {"tta", "tta", {"-c:a", "tta"}, false},
  };
  return formats;
}

const MediaFormat& formatNamed(const std::string& name) {
  for (const MediaFormat& format : writableFormats()) {
    if (format.name == name) return format;
  }
  throw std::invalid_argument("no test format " + name);
}

std::string madeWithFfmpeg(const std::string& name, const QStringList& options, bool withVideo) {
  QStringList arguments = withVideo ? testmedia::picture(1, QStringLiteral("128x96"), 10) : QStringList();
  arguments += testmedia::tone(1);
  return testmedia::made(QString::fromStdString(name), arguments + options + QStringList{"-shortest"}).toStdString();
}

std::string makeMedia(const MediaFormat& format, const TempFolder& folder) {
  const std::string path = folder.file("input." + format.extension);
  if (format.extension == "ape") {
    writeMonkeysAudioFile(path);
  } else if (format.extension == "mpc") {
    writeMusepackFile(path);
  } else {
    std::filesystem::copy_file(
        madeWithFfmpeg(format.name + "." + format.extension, format.ffmpegOptions, format.hasVideo), path,
        std::filesystem::copy_options::overwrite_existing);
  }
  return path;
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

std::string fingerprint(const std::string& path) {
  std::string bytes = readFile(path);
  return std::to_string(bytes.size()) + " bytes, hash " + std::to_string(std::hash<std::string>{}(bytes));
}

void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out) throw std::runtime_error("cannot write " + path);
}

}  // namespace tagtest
