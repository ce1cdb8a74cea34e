#include "Action/PlayVideoAction.h"

#include "Action/NodeInfoAction.h"
#include "CommonClass/CommonClass.h"
#include "videoconverter.h"

namespace {

constexpr double kMicrosecondsPerSecond = 1000000.0;
// This close to the length, playing has reached the end.
constexpr double kEndToleranceSeconds = 0.01;

}  // namespace

PlayVideoAction::PlayVideoAction(QObject* parent) : QObject(parent) {}

PlayVideoAction::~PlayVideoAction() {
  if (playing_ || timer_ != nullptr) stopPlay();
}

void PlayVideoAction::start(const NodeInfo::Ptr& node, const Start& startPlayer) {
  if (playing_) {
    player_.resume();
    return;
  }
  if (startPlayer(node) != 0) return;
  playing_ = true;
  setSlider(0, 0, player_.getLength() / kMicrosecondsPerSecond);
  if (timer_ == nullptr) {
    timer_ = std::make_unique<QTimer>();
    timer_->setInterval(kTimerInterval);
    connect(timer_.get(), &QTimer::timeout, this, &PlayVideoAction::getVideoCurrentTime);
    timer_->start();
  }
}

void PlayVideoAction::playVideo(const NodeInfo::Ptr& node) {
  start(node, [this](const NodeInfo::Ptr& item) { return player_.playVideoByNodeInfo(item, videoView_); });
}

void PlayVideoAction::playOrigisVideo(const NodeInfo::Ptr& node) {
  start(node, [this](const NodeInfo::Ptr& item) { return player_.playOrigisVideoFromNode(item, videoView_); });
}

void PlayVideoAction::playEffectVideo(const NodeInfo::Ptr& node) {
  start(node, [this](const NodeInfo::Ptr& item) { return player_.playVideo(item, videoView_, effectView_); });
}

void PlayVideoAction::pauseVideo() {
  if (!player_.isPlayVideoEnd()) player_.pausePlay();
}

void PlayVideoAction::stopPlay() {
  playing_ = false;
  if (timer_ != nullptr) {
    timer_->stop();
    timer_.reset();
    player_.stopPlay();
  }
  setSlider(0, 0, 0);
  setTimeLabel(QLatin1String(kStoppedLabel));
}

void PlayVideoAction::setCurrentTime(double seconds) {
  if (player_.isPlayVideoEnd()) return;
  player_.setCurrentTime(seconds * kMicrosecondsPerSecond);
}

void PlayVideoAction::stepPicture(int direction) {
  if (player_.mediaDataCount() > 0) player_.stepPictures(direction);
}

void PlayVideoAction::stepSecond(int direction) {
  if (player_.mediaDataCount() == 0) return;
  const double now = player_.getCurrentTime() / kMicrosecondsPerSecond;
  const double length = player_.getLength() / kMicrosecondsPerSecond;
  player_.pausePlay();
  player_.setCurrentTime(std::clamp(now + direction, 0.0, length) * kMicrosecondsPerSecond);
}

void PlayVideoAction::getVideoCurrentTime() {
  const double current = player_.getCurrentTime() / kMicrosecondsPerSecond;
  const double length = player_.getLength();
  if (!isDragSlider_) setSlider(sliderMinimum_, current, sliderMaximum_);
  if (length / kMicrosecondsPerSecond - current < kEndToleranceSeconds) {
    if (delegate_ != nullptr) delegate_->playVideoEnd();
    return;
  }
  setTimeLabel(QStringLiteral("%1|%2").arg(CommonClass::formatTimeForDouble(current),
                                           CommonClass::formatTimeForDouble(length / kMicrosecondsPerSecond)));
}

void PlayVideoAction::syncSlider() {
  if (playing_ && !isDragSlider_) {
    setSlider(sliderMinimum_, player_.getCurrentTime() / kMicrosecondsPerSecond, sliderMaximum_);
  }
}

void PlayVideoAction::updateMediaData(const NodeInfo::Ptr& node) {
  NodeInfoAction::setSameEffect(node);
  player_.updateMediaData(node);
}

int32_t PlayVideoAction::photoCurFile(const QString& path, int32_t imageType) {
  const PreviewPicture picture = player_.currentImage();
  if (picture.isNull()) return 1;
  const char* kind = imageType == 4 ? "png" : imageType == 3 ? "jpg" : "bmp";
  const int result =
      VideoConverter_SavePicture(reinterpret_cast<const uint8_t*>(picture.pixels.constData()), picture.width,
                                 picture.height, picture.bytesPerRow, kind, path.toUtf8().constData());
  return result == 0 ? 0 : 1;
}

void PlayVideoAction::setSlider(double minimum, double value, double maximum) {
  sliderMinimum_ = minimum;
  sliderValue_ = value;
  sliderMaximum_ = maximum;
  emit sliderChanged(minimum, value, maximum);
}

void PlayVideoAction::setTimeLabel(const QString& text) {
  timeLabel_ = text;
  emit timeLabelChanged(text);
}
