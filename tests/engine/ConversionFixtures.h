// What the conversion tests share: media made by the ffmpeg command, records
// filled the way the conversion job fills them, and outputs read back with
// FFmpeg's libraries, picture by picture and sample by sample.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "ExternalTools.h"
#include "Transcoder.h"
#include "videoconverter.h"

namespace enginetest {

// Copies text into a fixed-size record field.
template <std::size_t N>
void setText(char (&field)[N], const std::string& text) {
  const std::size_t length = std::min(text.size(), N - 1);
  text.copy(field, length);
  field[length] = '\0';
}

// A file made by `ffmpeg <arguments> <file>` once per test process.
std::string generatedMedia(const std::string& name, const std::vector<std::string>& ffmpegArguments);
// A path for an output in this process's scratch folder.
std::string outputPath(const std::string& name);
// The hidden temporary files that outputs are written under, left in that folder.
std::vector<std::string> outputTemporaries();
// Thirty seconds of pictures and sound: no conversion of it ends before a stop reaches it.
std::string longClip();
// Ten seconds of pictures and sound with the index in front.
std::string tenSeconds();

// The record of a whole, probed file: volume unchanged, the default sound
// stream (sound dropped when there is none), the full frame as crop.
MediaItem recordFor(const std::string& path);
// An output with the given container and encoders, 25 frames a second, the
// inputs' own picture size, sound at 44,100 Hz in stereo.
OutputParam outputFor(const std::string& path, const std::string& format, const std::string& videoEncoder,
                      const std::string& audioEncoder);
// A lossless output, so that pixels and samples can be compared exactly.
OutputParam losslessOutput(const std::string& name);

engine::ConversionResult convert(const std::vector<MediaItem>& items, const OutputParam& output);

// Every picture of the first video stream, upright as decoded.
std::vector<RgbPicture> decodePictures(const std::string& path);

struct Sound {
  int sampleRate = 0;
  int channels = 0;
  std::vector<float> firstChannel;
  // Root mean square of the first channel between two times in seconds.
  double rms(double from, double to) const;
  // How often the first channel changes sign per second, between two times.
  double crossingsPerSecond(double from, double to) const;
  double seconds() const { return sampleRate > 0 ? static_cast<double>(firstChannel.size()) / sampleRate : 0; }
};
// The samples of the first sound stream.
Sound decodeSound(const std::string& path);

// Duration in seconds as ffprobe reports it for the file or a stream ("v:0", "a:0").
double probedDuration(const std::string& path, const std::string& stream = "");

}  // namespace enginetest
