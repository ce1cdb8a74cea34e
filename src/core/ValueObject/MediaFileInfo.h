// The probed properties of one imported file. A copy shares the AudioStream
// objects of its source on purpose: the list of streams is copied, the
// streams are not.
#pragma once

#include <QList>
#include <QString>

#include <cstdint>
#include <memory>

#include "ValueObject/AudioStream.h"

class MediaFileInfo {
 public:
  using AudioStreamList = QList<std::shared_ptr<AudioStream>>;

  MediaFileInfo() { arrAudioStream_.reserve(3); }

  void addAudioStream(std::shared_ptr<AudioStream> stream) { arrAudioStream_.append(std::move(stream)); }
  int32_t getVideoStream() const { return videoStream_; }
  int32_t getAudioStream() const { return audioStream_; }

  // Full path of the file.
  const QString& fileName() const { return fileName_; }
  void setFileName(const QString& path) { fileName_ = path; }
  const QString& formatName() const { return formatName_; }
  void setFormatName(const QString& name) { formatName_ = name; }
  // Duration in seconds.
  double totalTime() const { return totalTime_; }
  void setTotalTime(double seconds) { totalTime_ = seconds; }
  // The duration that progress and trimming use.
  double dTotalTime() const { return dTotalTime_; }
  void setDTotalTime(double seconds) { dTotalTime_ = seconds; }
  int32_t iTotalTime() const { return iTotalTime_; }
  void setITotalTime(int32_t seconds) { iTotalTime_ = seconds; }
  // Bytes for a file; kilobytes for a merged node.
  double size() const { return size_; }
  void setSize(double size) { size_ = size; }
  int32_t frameWidth() const { return frameWidth_; }
  void setFrameWidth(int32_t width) { frameWidth_ = width; }
  int32_t frameHeight() const { return frameHeight_; }
  void setFrameHeight(int32_t height) { frameHeight_ = height; }
  const QString& vcodecName() const { return vcodecName_; }
  void setVcodecName(const QString& name) { vcodecName_ = name; }
  const QString& acodecName() const { return acodecName_; }
  void setAcodecName(const QString& name) { acodecName_ = name; }
  int32_t videoStream() const { return videoStream_; }
  void setVideoStream(int32_t hasVideo) { videoStream_ = hasVideo; }
  int32_t audioStream() const { return audioStream_; }
  void setAudioStream(int32_t hasAudio) { audioStream_ = hasAudio; }
  int32_t bitrate() const { return bitrate_; }
  void setBitrate(int32_t bitrate) { bitrate_ = bitrate; }
  float frameRate() const { return frameRate_; }
  void setFrameRate(float rate) { frameRate_ = rate; }
  const AudioStreamList& arrAudioStream() const { return arrAudioStream_; }
  void setArrAudioStream(const AudioStreamList& streams) { arrAudioStream_ = streams; }
  int32_t defalutAudioStream() const { return defalutAudioStream_; }
  void setDefalutAudioStream(int32_t index) { defalutAudioStream_ = index; }
  const QString& title() const { return title_; }
  void setTitle(const QString& text) { title_ = text; }
  const QString& author() const { return author_; }
  void setAuthor(const QString& text) { author_ = text; }
  const QString& album() const { return album_; }
  void setAlbum(const QString& text) { album_ = text; }
  const QString& genre() const { return genre_; }
  void setGenre(const QString& text) { genre_ = text; }
  const QString& copyright() const { return copyright_; }
  void setCopyright(const QString& text) { copyright_ = text; }
  const QString& track() const { return track_; }
  void setTrack(const QString& text) { track_ = text; }
  const QString& year() const { return year_; }
  void setYear(const QString& text) { year_ = text; }
  // Path of the picture shown for the item.
  const QString& imageName() const { return imageName_; }
  void setImageName(const QString& path) { imageName_ = path; }
  // File name with extension.
  const QString& source() const { return source_; }
  void setSource(const QString& name) { source_ = name; }

 private:
  QString fileName_;
  QString formatName_;
  double totalTime_ = 0;
  double dTotalTime_ = 0;
  int32_t iTotalTime_ = 0;
  double size_ = 0;
  int32_t frameWidth_ = 0;
  int32_t frameHeight_ = 0;
  QString vcodecName_;
  QString acodecName_;
  int32_t videoStream_ = 0;
  int32_t audioStream_ = 0;
  int32_t bitrate_ = 0;
  float frameRate_ = 0;
  AudioStreamList arrAudioStream_;
  int32_t defalutAudioStream_ = 0;
  QString title_;
  QString author_;
  QString album_;
  QString genre_;
  QString copyright_;
  QString track_;
  QString year_;
  QString imageName_;
  QString source_;
};
