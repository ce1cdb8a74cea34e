// The preview: the records' parts played one after another on a thread of
// its own, each picture drawn for one or two views through the conversion's
// own filters and handed over as soon as it is due (late ones are dropped),
// the sound handed to the first view, whose sound heard is then the clock.
// The records are read in place: a change shows on the next picture, or at
// once while paused. Every public function may be called from any thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "PreviewClock.h"
#include "PreviewInput.h"
#include "PreviewPicture.h"
#include "PreviewSoundPart.h"
#include "PreviewTimeline.h"

namespace engine {

struct PreviewView {
  const VideoConverter_RenderView* target = nullptr;
  int width = 0;
  int height = 0;
};

class PreviewRenderer {
 public:
  // With a second view the first shows the source and the second the result.
  PreviewRenderer(MediaItem* records, std::size_t count, PreviewView first, PreviewView second);
  ~PreviewRenderer();
  PreviewRenderer(const PreviewRenderer&) = delete;
  PreviewRenderer& operator=(const PreviewRenderer&) = delete;

  // Starts playing from the start; throws std::system_error when no thread can be started.
  void start();
  void seek(int64_t positionUs);
  void step(int pictures);
  void pause();
  void resume();
  void abort();

  bool ended() const;
  int64_t positionUs() const;
  int64_t durationUs() const { return timeline_.durationUs(); }

  void setCrop(const VideoConverter_Rect& crop);
  // Writes a dragged rectangle into the record shown; its index, or -1 before any picture.
  int dragCrop(const VideoConverter_Rect& crop);
  int dragWatermark(const VideoConverter_Rect& area);

  // The result picture shown last, drawn again at a size (0 x 0: its own) in
  // a pixel format, or as the result view shows it. Both wait for a seek
  // asked for to arrive. Null with `error` set when there is none.
  FramePtr currentPicture(int width, int height, AVPixelFormat format, std::string& error);
  FramePtr shownPicture(std::string& error);

 private:
  // What was shown last, for redrawing, snapshots and drags.
  struct Shown {
    FramePtr decoded;
    FramePtr result;
    std::size_t record = 0;
    int64_t timeUs = 0;
    DisplayGeometry geometry;
    int64_t partLengthUs = 0;
  };

  void run();
  // Opens a record and reads it from partUs.
  void enterPart(std::size_t index, int64_t partUs = 0);
  // Reading of the open record starts again at partUs, with its sound from there.
  void readFrom(int64_t partUs);
  void goTo(int64_t positionUs);
  void stepBy(int pictures);
  void onPause();
  // One round of playing: reads ahead, hands on sound, shows the pictures due. How long to wait next.
  std::chrono::microseconds playOn();
  void readAhead();
  void readOne();
  void handOnSound();
  // The next picture to show; past the part's end only when mayEnterNext.
  bool nextPicture(DecodedFrame& picture, bool mayEnterNext);
  void present(const DecodedFrame& picture);
  void redrawIfChanged();
  bool takeRecordChange();
  int64_t soundHeardUs() const;
  bool soundDeviceAnswers() const;
  void restartClock(int64_t positionUs);
  bool waitForSettled(std::unique_lock<std::mutex>& lock);
  VideoConverter_Frame frameRecord(const DrawnPicture& drawn, bool source, int64_t timeUs) const;

  MediaItem* const records_;
  const PreviewTimeline timeline_;
  const PreviewView first_;
  const PreviewView second_;

  // The render thread's own.
  std::unique_ptr<PreviewInput> input_;
  std::size_t part_ = 0;
  int64_t partStartUs_ = 0;
  int64_t partLengthUs_ = 0;
  bool partRead_ = false;
  MediaItem snapshot_{};  // the record as its pictures are drawn
  std::deque<DecodedFrame> pictures_;
  std::unique_ptr<PreviewSoundPart> sound_;
  std::vector<PreviewPicture> views_;
  PreviewClock clock_;
  bool soundDevice_ = false;

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable settled_;
  std::optional<int64_t> seekTarget_;
  int steps_ = 0;
  bool paused_ = false;
  bool pauseHandled_ = false;
  bool aborted_ = false;
  bool ended_ = false;
  bool cropChanged_ = false;
  int64_t requests_ = 1;  // the start counts as one
  int64_t requestsDone_ = 0;
  int64_t positionUs_ = 0;
  std::optional<VideoConverter_Rect> crop_;
  Shown shown_;
  std::thread thread_;
};

}  // namespace engine
