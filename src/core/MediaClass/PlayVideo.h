// The preview player over the converter library. Its probe reads a file's
// properties and answers them from its own copy of the record (the texts of
// a failed probe are composed but not shown, so that adding files can report
// failures together). Its playback fills the library's records from a node,
// as the conversion does, and keeps them up to date while the user edits:
// the library reads them in place.
#pragma once

#include <QByteArray>
#include <QMutex>
#include <QString>

#include <cstdint>
#include <memory>

#include "ValueObject/NodeInfo.h"
#include "ValueObject/WatermarkInfo.h"
#include "videoconverter.h"

// A view the library draws into: the address of its VideoConverter_RenderView
// record and its size in pixels.
// A picture of 4-byte pixels R, G, B, unused; empty when there is none.
struct PreviewPicture {
  int width = 0;
  int height = 0;
  int bytesPerRow = 0;
  QByteArray pixels;

  bool isNull() const { return pixels.isEmpty(); }
};

struct PreviewTarget {
  void* view = nullptr;
  int width = 0;
  int height = 0;
};


class PlayVideo {
 public:
  static constexpr int kMostRecords = VC_MAX_MEDIA_ITEMS;
  // Posted, with no object, when the user dragged the crop or the watermark rectangle in the view.
  static constexpr const char* kReadCropInfo = "READCROPINFO";
  static constexpr const char* kReadWatermarkInfo = "READWATERMARKINFO";

  PlayVideo();
  ~PlayVideo();
  PlayVideo(const PlayVideo&) = delete;
  PlayVideo& operator=(const PlayVideo&) = delete;

  // Probes `path`, writing a thumbnail to `imageName` when one is given.
  // Returns 0, the library's failure code, or -1 for an empty path or a file
  // with neither video nor audio.
  int32_t getMediaInfo(const QString& path, const QString& imageName);
  // Why the last probe failed ("This file is not in a recognizable format.
  // (<name>)", "Invalid video file! (<name>)"); empty after a success or for
  // an empty path.
  const QString& message() const { return message_; }
  // The file last probed.
  const QString& videoPath() const { return videoPath_; }

  // Only ".mp3", ".wma", ".MP3" and ".WMA" are taken as audio-only by name.
  static bool isAudioOnlyByExtension(const QString& path);

  // Answers of the last successful probe (zeros before one).
  int32_t getWidth() const { return info_.m_Width; }
  int32_t getHeight() const { return info_.m_Height; }
  // 0 for a file audio-only by name, else whether the record has video.
  int32_t videoStream() const;
  int32_t audioStream() const { return info_.m_AudioSteamCnt > 0 ? 1 : 0; }
  int32_t getDefaultAudioStream() const { return info_.m_defaultAudioStream; }
  int32_t getAudioSteamCnt() const { return info_.m_AudioSteamCnt; }
  const AudioStremInfo* getAudioStreamInfo() const { return info_.m_AudioStreamInfo; }
  // nullptr until a probe succeeded.
  const DECODER_INFO* decoderInfo() const { return hasInfo_ ? &info_ : nullptr; }

  // Playback. Each start returns 0, or -1 when the node gives no record or
  // the library refuses. The two-view start shows the source in `view` and
  // the result in `effectView` and installs the rectangle callbacks.
  int32_t playVideo(const NodeInfo::Ptr& node, const PreviewTarget& view, const PreviewTarget& effectView);
  int32_t playOrigisVideoFromNode(const NodeInfo::Ptr& node, const PreviewTarget& view);
  int32_t playVideoByNodeInfo(const NodeInfo::Ptr& node, const PreviewTarget& view);
  // Fill records from the node (one per child) or for its untouched source; false when nothing could be filled.
  bool initMediaData(const NodeInfo::Ptr& node);
  bool initOrigistMediaData(const NodeInfo::Ptr& node);
  // Rewrites every record in use from the node's current settings.
  void updateMediaData(const NodeInfo::Ptr& node);
  void pausePlay();
  void resume();
  void stopPlay();
  bool isPlayVideoEnd() const { return VideoConverter_IsEnd() == 0; }
  // Microseconds. The length is the library's timeline while edited records
  // play, else the probed length; then the end time and the begin time apply.
  double getCurrentTime() const;
  void setCurrentTime(double microseconds);
  double getLength() const;
  // One picture forward or back, paused.
  void stepPictures(int count);
  void setBeginTime(float microseconds) { beginTime_ = microseconds; }
  void setEndTime(float microseconds) { endTime_ = microseconds; }
  int mediaDataCount() const { return mediaDataCount_; }
  const MediaItem& mediaData(int index) const { return records_[index]; }
  bool isPlayingOriginal() const { return isPlayOrigisVideo_; }

  void setCropInfo(int32_t x, int32_t y, int32_t w, int32_t h);
  void refreshPlayerCropRect(const NodeInfo::Ptr& node);
  // A dragged rectangle read back from the record the library last reported into the node.
  void cropInfo(const NodeInfo::Ptr& node);
  void watermarkInfo(const NodeInfo::Ptr& node);
  // The record index of the library's last rectangle callback.
  static int currentRecordIndex();

  // The current picture at the probed size; null without a probed record or a picture.
  PreviewPicture currentImage() const;
  // Probes the node's file and writes its picture at whole second `seconds`
  // (at least 3) to "<temp>/<outputFilename><seconds>.bmp"; the node's
  // imageName becomes that path. Returns the library's result.
  int32_t getCurrentImage(const NodeInfo::Ptr& node, int32_t seconds);
  static void showMessage(const QString& text);

 private:
  // Fills the record at mediaDataCount_ for a node without children.
  bool fillRecord(const NodeInfo& node);
  int32_t startRendering(const PreviewTarget& view, const PreviewTarget& effectView);
  int32_t startEdited(const NodeInfo::Ptr& node, const PreviewTarget& view, const PreviewTarget& effectView);

  QString videoPath_;
  QString message_;
  DECODER_INFO info_{};
  bool hasInfo_ = false;

  std::unique_ptr<MediaItem[]> records_;
  int mediaDataCount_ = 0;
  mutable QMutex condition_;
  float beginTime_ = 0;
  float endTime_ = 0;
  bool isPlayOrigisVideo_ = false;
  bool rendering_ = false;
};
