// One record opened for the preview: its file, the picture and sound streams
// it shows, and reading from any position of its trimmed part. Seeking lands
// on the keyframe before the position (from the keyframe index the probe
// wrote, else the container's own index) and decodes forward, so that the
// first picture handed on is the one shown at that position.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "InputPlan.h"
#include "KeyframeIndex.h"
#include "StreamDecoder.h"

namespace engine {

struct DecodedFrame {
  bool picture = false;
  FramePtr frame;  // pictures: pts in microseconds of the part; sound: pts in samples of the part
  int64_t timeUs = 0;  // from the start of the part
};

class PreviewInput {
 public:
  // Null with `error` set when the record's file cannot be shown.
  static std::unique_ptr<PreviewInput> open(const MediaItem& item, bool withSound, std::string& error);

  const InputPlan& plan() const { return *plan_; }
  bool hasPictures() const { return plan_->videoStream >= 0; }
  bool hasSound() const { return plan_->audioStream >= 0; }

  // Reading starts, or goes on, from partUs: the last picture before it
  // comes first, sound ending before it is skipped. Nothing is read before
  // the first seek.
  void seek(int64_t partUs);
  // The next frame in reading order; nothing once the part has been read.
  std::optional<DecodedFrame> next();

 private:
  struct Stream {
    int index = -1;
    std::unique_ptr<StreamDecoder> decoder;
    bool done = true;
  };

  PreviewInput() = default;
  void seekFile(int64_t fileUs);
  // Reads and decodes one packet; false at the end of the file.
  bool readPacket();
  void receive(Stream& stream);
  void takePicture(FramePtr frame);
  void takeSound(FramePtr frame);
  int64_t timeOf(const AVFrame& frame, const AVStream& stream) const;

  std::unique_ptr<InputPlan> plan_;
  std::vector<Keyframe> keyframes_;
  Stream pictures_;
  Stream sound_;
  std::deque<DecodedFrame> ready_;
  FramePtr heldPicture_;  // the latest picture before the target, not yet handed on
  int64_t targetUs_ = 0;
  bool firstPictureAfterSeek_ = true;
  int earlierSeeks_ = 0;
  int64_t askedFileUs_ = 0;
};

}  // namespace engine
