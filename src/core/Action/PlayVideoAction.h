// The preview player as the windows drive it: play, pause, stop and seek on
// a PlayVideo, and the models of the play slider (minimum, value, maximum in
// seconds) and of the "position|length" label, refreshed by a half-second
// timer on the main thread. The delegate hears when playing reaches the end.
#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

#include "MediaClass/PlayVideo.h"

class PlayVideoActionDelegate {
 public:
  virtual ~PlayVideoActionDelegate() = default;
  virtual void playVideoEnd() = 0;
};

class PlayVideoAction : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kStoppedLabel = "00:00:00|00:00:00";
  static constexpr int kTimerInterval = 500;  // milliseconds

  explicit PlayVideoAction(QObject* parent = nullptr);
  ~PlayVideoAction() override;

  void setVideoView(const PreviewTarget& view) { videoView_ = view; }
  void setEffectView(const PreviewTarget& view) { effectView_ = view; }
  void setDelegate(PlayVideoActionDelegate* delegate) { delegate_ = delegate; }

  // Plays the node's result, its untouched source, or both in two views; resumes when already playing.
  void playVideo(const NodeInfo::Ptr& node);
  void playOrigisVideo(const NodeInfo::Ptr& node);
  void playEffectVideo(const NodeInfo::Ptr& node);
  void pauseVideo();
  void stopPlay();
  bool isPlaying() const { return playing_; }
  bool isEnded() const { return player_.isPlayVideoEnd(); }

  // Seconds; ignored once playing has ended. The slider's moves come here too.
  void setCurrentTime(double seconds);
  void playSlideChange(double seconds) { setCurrentTime(seconds); }
  void setIsDragSlider(bool dragging) { isDragSlider_ = dragging; }
  // One picture, or one second, forward (1) or back (-1); the start and the end.
  void stepPicture(int direction);
  void stepSecond(int direction);
  void goToStart() { setCurrentTime(0); }
  void goToEnd() { setCurrentTime(player_.getLength() / 1000000.0); }

  // The timer's tick: slider and label follow the position; the end is told to the delegate.
  void getVideoCurrentTime();
  // The slider to the position now, between two ticks, unless it is being dragged:
  // what is read from it then is never half a second old.
  void syncSlider();

  // The node's settings changed: every child gets them, then the records are rewritten.
  void updateMediaData(const NodeInfo::Ptr& node);
  void refreshPlayerCropRect(const NodeInfo::Ptr& node) { player_.refreshPlayerCropRect(node); }
  void cropInfo(const NodeInfo::Ptr& node) { player_.cropInfo(node); }
  void watermarkInfo(const NodeInfo::Ptr& node) { player_.watermarkInfo(node); }

  PreviewPicture getImage() const { return player_.currentImage(); }
  int32_t getCurrentImage(const NodeInfo::Ptr& node, int32_t seconds) { return player_.getCurrentImage(node, seconds); }
  // Saves the current picture as image type 4 (PNG), 3 (JPEG) or else BMP;
  // 0 on success, 1 when there was no picture or it could not be written.
  int32_t photoCurFile(const QString& path, int32_t imageType);

  PlayVideo& player() { return player_; }
  double sliderMinimum() const { return sliderMinimum_; }
  double sliderValue() const { return sliderValue_; }
  double sliderMaximum() const { return sliderMaximum_; }
  const QString& timeLabel() const { return timeLabel_; }

 signals:
  void sliderChanged(double minimum, double value, double maximum);
  void timeLabelChanged(const QString& text);

 private:
  using Start = std::function<int32_t(const NodeInfo::Ptr&)>;
  void start(const NodeInfo::Ptr& node, const Start& startPlayer);
  void setSlider(double minimum, double value, double maximum);
  void setTimeLabel(const QString& text);

  PlayVideo player_;
  PreviewTarget videoView_;
  PreviewTarget effectView_;
  std::unique_ptr<QTimer> timer_;
  bool playing_ = false;
  bool isDragSlider_ = false;
  PlayVideoActionDelegate* delegate_ = nullptr;
  double sliderMinimum_ = 0;
  double sliderValue_ = 0;
  double sliderMaximum_ = 0;
  QString timeLabel_ = QLatin1String(kStoppedLabel);
};
