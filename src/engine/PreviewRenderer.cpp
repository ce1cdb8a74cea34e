#include "PreviewRenderer.h"

#include <algorithm>
#include <cstring>

#include "EngineLog.h"

namespace engine {
namespace {

using std::chrono::microseconds;

// Pictures decoded ahead of the clock; more while the sound is about to run dry.
constexpr std::size_t kPicturesAhead = 12;
constexpr std::size_t kMostPicturesAhead = 48;
// Sound filtered ahead of what the view took, and what it should hold to play on.
constexpr int kSoundAheadFrames = VC_PREVIEW_SAMPLE_RATE / 4;
constexpr int64_t kSoundLowUs = 200'000;
constexpr int kMostSoundFramesPerCall = VC_PREVIEW_SAMPLE_RATE / 10;
// A device may count what it played in steps; this close to all of it, the sound has ended.
constexpr int64_t kSoundEndSlackUs = 5'000;
// How often a paused preview looks for changed records, and a playing one at most waits.
constexpr microseconds kPausedLook{30'000};
constexpr microseconds kLongestWait{10'000};
// A seek asked for that never arrives (a file that stopped answering) is not waited for longer.
constexpr std::chrono::seconds kSettleBudget{20};

VideoConverter_Rect rectOf(const geometry::Rect& rect) { return {rect.x, rect.y, rect.width, rect.height}; }

FramePtr cloneOf(const AVFrame* frame) { return FramePtr(frame != nullptr ? av_frame_clone(frame) : nullptr); }

}  // namespace

PreviewRenderer::PreviewRenderer(MediaItem* records, std::size_t count, PreviewView first, PreviewView second)
    : records_(records), timeline_(records, count), first_(first), second_(second) {
  const auto format = AV_PIX_FMT_BGRA;
  if (second_.target != nullptr) {
    views_.emplace_back(first_.width, first_.height, true, format);
    views_.emplace_back(second_.width, second_.height, false, format);
  } else {
    views_.emplace_back(first_.width, first_.height, false, format);
  }
}

PreviewRenderer::~PreviewRenderer() {
  abort();
  if (thread_.joinable()) thread_.join();
}

void PreviewRenderer::start() {
  thread_ = std::thread([this] { run(); });
}

void PreviewRenderer::seek(int64_t positionUs) {
  std::lock_guard lock(mutex_);
  seekTarget_ = std::clamp<int64_t>(positionUs, 0, timeline_.durationUs());
  // The position is where the preview was sent, before the picture there is decoded.
  positionUs_ = *seekTarget_;
  steps_ = 0;
  ++requests_;
  wake_.notify_all();
}

void PreviewRenderer::step(int pictures) {
  std::lock_guard lock(mutex_);
  paused_ = true;
  steps_ += pictures;
  ++requests_;
  wake_.notify_all();
}

void PreviewRenderer::pause() {
  std::lock_guard lock(mutex_);
  paused_ = true;
  wake_.notify_all();
}

void PreviewRenderer::resume() {
  std::lock_guard lock(mutex_);
  if (!paused_) return;
  paused_ = false;
  // Playing goes on from the position the pause kept, with the sound flushed at the pause.
  if (pauseHandled_ && !seekTarget_ && !ended_) {
    seekTarget_ = positionUs_;
    ++requests_;
  }
  pauseHandled_ = false;
  wake_.notify_all();
}

void PreviewRenderer::abort() {
  std::lock_guard lock(mutex_);
  aborted_ = true;
  wake_.notify_all();
  settled_.notify_all();
}

bool PreviewRenderer::ended() const {
  std::lock_guard lock(mutex_);
  return ended_;
}

int64_t PreviewRenderer::positionUs() const {
  std::lock_guard lock(mutex_);
  return positionUs_;
}

void PreviewRenderer::setCrop(const VideoConverter_Rect& crop) {
  std::lock_guard lock(mutex_);
  crop_ = crop;
  cropChanged_ = true;
  wake_.notify_all();
}

int PreviewRenderer::dragCrop(const VideoConverter_Rect& crop) {
  std::lock_guard lock(mutex_);
  if (shown_.decoded == nullptr) return -1;
  MediaItem& record = records_[shown_.record];
  record.m_cropX = crop.x;
  record.m_cropY = crop.y;
  record.m_cropW = crop.w;
  record.m_cropH = crop.h;
  crop_ = crop;
  cropChanged_ = true;
  wake_.notify_all();
  return static_cast<int>(shown_.record);
}

int PreviewRenderer::dragWatermark(const VideoConverter_Rect& area) {
  std::lock_guard lock(mutex_);
  if (shown_.decoded == nullptr) return -1;
  _WatermarkInfo& watermark = records_[shown_.record].m_watermarkInfo;
  watermark.m_x = area.x;
  watermark.m_y = area.y;
  watermark.m_w = area.w;
  watermark.m_h = area.h;
  wake_.notify_all();
  return static_cast<int>(shown_.record);
}

bool PreviewRenderer::waitForSettled(std::unique_lock<std::mutex>& lock) {
  return settled_.wait_for(lock, kSettleBudget, [&] {
    return aborted_ || (requestsDone_ >= requests_ && shown_.decoded != nullptr);
  }) && shown_.decoded != nullptr;
}

FramePtr PreviewRenderer::currentPicture(int width, int height, AVPixelFormat format, std::string& error) {
  std::unique_lock lock(mutex_);
  if (!waitForSettled(lock)) {
    error = "no picture has been shown";
    return nullptr;
  }
  FramePtr decoded = cloneOf(shown_.decoded.get());
  const MediaItem record = records_[shown_.record];
  const DisplayGeometry geometry = shown_.geometry;
  const int64_t partLengthUs = shown_.partLengthUs;
  lock.unlock();
  PreviewPicture picture(width, height, false, format);
  std::optional<DrawnPicture> drawn = picture.draw(record, geometry, partLengthUs, *decoded, error);
  return drawn ? std::move(drawn->frame) : nullptr;
}

FramePtr PreviewRenderer::shownPicture(std::string& error) {
  std::unique_lock lock(mutex_);
  if (!waitForSettled(lock) || shown_.result == nullptr) {
    error = "no picture has been shown";
    return nullptr;
  }
  return cloneOf(shown_.result.get());
}

void PreviewRenderer::run() {
  soundDevice_ = soundDeviceAnswers();
  goTo(0);
  std::unique_lock lock(mutex_);
  ++requestsDone_;
  settled_.notify_all();
  while (!aborted_) {
    if (seekTarget_) {
      const int64_t target = *seekTarget_;
      seekTarget_.reset();
      ended_ = false;
      lock.unlock();
      goTo(target);
      lock.lock();
      ++requestsDone_;
      settled_.notify_all();
      continue;
    }
    if (steps_ != 0) {
      const int pictures = steps_;
      steps_ = 0;
      lock.unlock();
      stepBy(pictures);
      lock.lock();
      ++requestsDone_;
      settled_.notify_all();
      continue;
    }
    if (paused_ || ended_) {
      if (paused_ && !pauseHandled_) {
        pauseHandled_ = true;
        lock.unlock();
        onPause();
        lock.lock();
        continue;
      }
      wake_.wait_for(lock, kPausedLook);
      if (aborted_ || seekTarget_ || steps_ != 0) continue;
      lock.unlock();
      redrawIfChanged();
      lock.lock();
      continue;
    }
    lock.unlock();
    const microseconds wait = playOn();
    lock.lock();
    if (wait.count() > 0) {
      wake_.wait_for(lock, wait, [&] { return aborted_ || seekTarget_ || steps_ != 0 || paused_; });
    }
  }
}

bool PreviewRenderer::soundDeviceAnswers() const {
  const VideoConverter_RenderView* view = first_.target;
  return view != nullptr && view->playSound != nullptr && view->soundPlayedUs != nullptr &&
         view->flushSound != nullptr && view->soundPlayedUs(view->context) >= 0;
}

int64_t PreviewRenderer::soundHeardUs() const {
  if (!soundDevice_) return 0;
  return std::max<int64_t>(0, first_.target->soundPlayedUs(first_.target->context));
}

void PreviewRenderer::restartClock(int64_t positionUs) {
  if (soundDevice_) first_.target->flushSound(first_.target->context);
  clock_.restart(positionUs, sound_ != nullptr);
}

void PreviewRenderer::enterPart(std::size_t index, int64_t partUs) {
  input_.reset();
  part_ = index;
  partStartUs_ = timeline_.partStartUs(index);
  partLengthUs_ = PreviewTimeline::partLengthUs(timeline_.record(index));
  std::memcpy(&snapshot_, &timeline_.record(index), sizeof snapshot_);
  std::string error;
  input_ = PreviewInput::open(snapshot_, soundDevice_, error);
  // A record that cannot be read passes as its length of nothing, so the others still play.
  if (input_ == nullptr) logLine("preview: " + error);
  readFrom(partUs);
}

void PreviewRenderer::readFrom(int64_t partUs) {
  pictures_.clear();
  sound_.reset();
  for (PreviewPicture& view : views_) view.reset();
  partRead_ = input_ == nullptr;
  if (input_ == nullptr) return;
  input_->seek(partUs);
  if (input_->hasSound() && soundDevice_) sound_ = std::make_unique<PreviewSoundPart>(snapshot_, partUs, partLengthUs_);
}

void PreviewRenderer::goTo(int64_t positionUs) {
  const TimelinePoint point = timeline_.locate(positionUs);
  if (input_ == nullptr || point.record != part_) {
    enterPart(point.record, point.partUs);
  } else {
    readFrom(point.partUs);
  }
  DecodedFrame picture;
  if (input_ != nullptr && input_->hasPictures() && nextPicture(picture, false)) present(picture);
  {
    std::lock_guard lock(mutex_);
    positionUs_ = partStartUs_ + point.partUs;
  }
  restartClock(partStartUs_ + point.partUs);
}

void PreviewRenderer::onPause() {
  if (soundDevice_) first_.target->flushSound(first_.target->context);
  const int64_t now = std::min(clock_.now(soundHeardUs()), timeline_.durationUs());
  std::lock_guard lock(mutex_);
  // The picture on show is where playing goes on from.
  positionUs_ = shown_.decoded != nullptr ? std::max(shown_.timeUs, std::min(now, positionUs_)) : now;
}

void PreviewRenderer::stepBy(int pictures) {
  if (soundDevice_) first_.target->flushSound(first_.target->context);
  for (; pictures < 0; ++pictures) {
    int64_t shownUs = 0;
    {
      std::lock_guard lock(mutex_);
      shownUs = shown_.timeUs;
    }
    goTo(std::max<int64_t>(0, shownUs - 1));
  }
  for (; pictures > 0; --pictures) {
    DecodedFrame picture;
    if (!nextPicture(picture, true)) break;
    present(picture);
  }
  std::lock_guard lock(mutex_);
  positionUs_ = shown_.timeUs;
  pauseHandled_ = true;
}

bool PreviewRenderer::nextPicture(DecodedFrame& picture, bool mayEnterNext) {
  while (true) {
    if (!pictures_.empty()) {
      picture = std::move(pictures_.front());
      pictures_.pop_front();
      return true;
    }
    if (input_ != nullptr && !partRead_) {
      readOne();
      continue;
    }
    if (!mayEnterNext || part_ + 1 >= timeline_.count()) return false;
    enterPart(part_ + 1);
  }
}

void PreviewRenderer::readAhead() {
  auto soundLow = [&] {
    return sound_ != nullptr && !sound_->done() && sound_->pendingFrames() == 0 &&
           sound_->handedOnUs() - soundHeardUs() < kSoundLowUs;
  };
  while (input_ != nullptr && !partRead_) {
    const std::size_t room = soundLow() ? kMostPicturesAhead : kPicturesAhead;
    if (pictures_.size() >= room) return;
    if (sound_ != nullptr && sound_->pendingFrames() >= kSoundAheadFrames) return;
    readOne();
  }
}

void PreviewRenderer::readOne() {
  std::optional<DecodedFrame> frame = input_->next();
  if (!frame) {
    partRead_ = true;
    if (sound_ != nullptr) sound_->finish();
    return;
  }
  if (frame->picture) {
    pictures_.push_back(std::move(*frame));
    return;
  }
  std::string error;
  if (sound_ != nullptr && !sound_->add(*frame->frame, error)) {
    logLine("preview without sound: " + error);
    clock_.leaveSound(soundHeardUs());
    sound_.reset();
  }
}

void PreviewRenderer::handOnSound() {
  if (sound_ == nullptr) return;
  const VideoConverter_RenderView& view = *first_.target;
  while (sound_->pendingFrames() > 0) {
    const int offered = std::min(sound_->pendingFrames(), kMostSoundFramesPerCall);
    const int taken = view.playSound(view.context, sound_->pending(), offered);
    if (taken < 0) {
      // The device went away: the pictures go on, silent, on the system clock.
      clock_.leaveSound(soundHeardUs());
      soundDevice_ = false;
      sound_.reset();
      return;
    }
    if (taken == 0) return;
    sound_->taken(taken);
  }
}

microseconds PreviewRenderer::playOn() {
  if (takeRecordChange() && sound_ != nullptr) sound_->recordChanged();
  readAhead();
  handOnSound();
  const int64_t heard = soundHeardUs();
  // Sound all heard: the rest of the part goes on the system clock.
  if (clock_.onSound() && (sound_ == nullptr || (sound_->done() && heard + kSoundEndSlackUs >= sound_->handedOnUs()))) {
    clock_.leaveSound(heard);
  }
  const int64_t now = clock_.now(heard);
  {
    std::lock_guard lock(mutex_);
    positionUs_ = std::clamp<int64_t>(now, 0, timeline_.durationUs());
  }
  while (!pictures_.empty() && partStartUs_ + pictures_.front().timeUs <= now) {
    DecodedFrame picture = std::move(pictures_.front());
    pictures_.pop_front();
    // A later picture is due as well: this one comes too late to be seen.
    if (!pictures_.empty() && partStartUs_ + pictures_.front().timeUs <= now) continue;
    present(picture);
  }
  if (!pictures_.empty()) {
    return std::clamp(microseconds(partStartUs_ + pictures_.front().timeUs - now), microseconds(0), kLongestWait);
  }
  if (!partRead_ || (sound_ != nullptr && !sound_->done())) return kLongestWait;
  const int64_t partEndUs = partStartUs_ + partLengthUs_;
  if (now < partEndUs) return std::min(microseconds(partEndUs - now), kLongestWait);
  if (part_ + 1 < timeline_.count()) {
    const bool hadSound = clock_.onSound();
    enterPart(part_ + 1);
    // Sound that goes on without a gap keeps counting; else the clock starts again here.
    if (sound_ != nullptr && !hadSound) restartClock(partStartUs_);
    if (sound_ == nullptr && hadSound) clock_.leaveSound(soundHeardUs());
    return microseconds(0);
  }
  std::lock_guard lock(mutex_);
  ended_ = true;
  positionUs_ = timeline_.durationUs();
  return microseconds(0);
}

bool PreviewRenderer::takeRecordChange() {
  const MediaItem& record = timeline_.record(part_);
  if (std::memcmp(&snapshot_, &record, sizeof snapshot_) == 0) return false;
  std::memcpy(&snapshot_, &record, sizeof snapshot_);
  for (PreviewPicture& view : views_) view.reset();
  return true;
}

void PreviewRenderer::redrawIfChanged() {
  bool cropChanged = false;
  FramePtr decoded;
  int64_t timeUs = 0;
  {
    std::lock_guard lock(mutex_);
    cropChanged = cropChanged_;
    cropChanged_ = false;
    if (shown_.decoded == nullptr || shown_.record != part_) return;
    decoded = cloneOf(shown_.decoded.get());
    timeUs = shown_.timeUs - partStartUs_;
  }
  if (!takeRecordChange() && !cropChanged) return;
  if (sound_ != nullptr) sound_->recordChanged();
  DecodedFrame picture{true, std::move(decoded), timeUs};
  present(picture);
}

VideoConverter_Frame PreviewRenderer::frameRecord(const DrawnPicture& drawn, bool source, int64_t timeUs) const {
  VideoConverter_Frame frame{};
  frame.pixels = drawn.frame->data[0];
  frame.width = drawn.frame->width;
  frame.height = drawn.frame->height;
  frame.bytesPerRow = drawn.frame->linesize[0];
  frame.recordIndex = static_cast<int32_t>(part_);
  frame.timeUs = timeUs;
  frame.isSource = source ? 1 : 0;
  const DisplayGeometry& geometry = input_->plan().geometry;
  frame.sourceWidth = geometry.displayWidth;
  frame.sourceHeight = geometry.displayHeight;
  frame.picture = rectOf(drawn.picture);
  frame.crop = {snapshot_.m_cropX, snapshot_.m_cropY, snapshot_.m_cropW, snapshot_.m_cropH};
  const _WatermarkInfo& watermark = snapshot_.m_watermarkInfo;
  if (watermark.m_watermarkType == 1 || watermark.m_watermarkType == 2) {
    frame.watermark = {watermark.m_x, watermark.m_y, watermark.m_w, watermark.m_h};
  }
  return frame;
}

void PreviewRenderer::present(const DecodedFrame& picture) {
  takeRecordChange();
  const int64_t timeUs = partStartUs_ + picture.timeUs;
  const DisplayGeometry& geometry = input_->plan().geometry;
  std::vector<DrawnPicture> drawn;
  for (PreviewPicture& view : views_) {
    std::string error;
    std::optional<DrawnPicture> viewPicture = view.draw(snapshot_, geometry, partLengthUs_, *picture.frame, error);
    if (!viewPicture) {
      logLine("preview: " + error);
      return;
    }
    drawn.push_back(std::move(*viewPicture));
  }
  std::optional<VideoConverter_Rect> crop;
  {
    // Known as shown before the views hear of it, so that a drag at once finds its record.
    std::lock_guard lock(mutex_);
    shown_.decoded = cloneOf(picture.frame.get());
    shown_.result = cloneOf(drawn.back().frame.get());
    shown_.record = part_;
    shown_.timeUs = timeUs;
    shown_.geometry = geometry;
    shown_.partLengthUs = partLengthUs_;
    crop = crop_;
  }
  for (std::size_t i = 0; i < views_.size(); ++i) {
    const VideoConverter_RenderView* view = i == 0 ? first_.target : second_.target;
    if (view == nullptr || view->showFrame == nullptr) continue;
    VideoConverter_Frame frame = frameRecord(drawn[i], views_[i].showsSource(), timeUs);
    if (crop) frame.crop = *crop;
    view->showFrame(view->context, &frame);
  }
}

}  // namespace engine
