// One input of a conversion as it will be read: the file opened, the streams
// taken from it, its trimmed part, and what the plan decides for it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "DisplayGeometry.h"
#include "FFmpegPointers.h"
#include "InputFile.h"
#include "videoconverter.h"

namespace engine {

struct InputPlan {
  const MediaItem* item = nullptr;
  std::string path;
  std::unique_ptr<InputFile> file;
  int videoStream = -1;  // -1 when the output takes no pictures from this input
  int audioStream = -1;  // -1 when the output takes no sound from it
  DisplayGeometry geometry;
  int64_t fileStartUs = 0;
  int64_t startUs = 0;   // trim start, from the start of the file
  int64_t lengthUs = 0;  // length of the trimmed part, as the file claims it
  // How much of the trimmed part the streams taken claim to fill: less than
  // lengthUs when another stream of the file lasts longer.
  int64_t streamsLengthUs = 0;
  // Set by the reader once the input has been read, when what it could
  // decode ends clearly before streamsLengthUs (a file cut short or damaged,
  // or one that claims more than it holds): the length decoded. The input's
  // part of the output then lasts only that long.
  std::optional<int64_t> shortLengthUs;
  FramePtr watermark;  // the picture laid over this input's pictures, if any

  int64_t partLengthUs() const { return shortLengthUs.value_or(lengthUs); }

  // Opens the input of a record and finds what the output can take from it:
  // its pictures unless the output or the record is sound only, the chosen
  // sound stream unless the record drops the sound, and a trimmed part that
  // is not empty. Null with `error` set when that fails.
  static std::unique_ptr<InputPlan> open(const MediaItem& item, bool outputMayHavePictures, std::string& error);
};

}  // namespace engine
