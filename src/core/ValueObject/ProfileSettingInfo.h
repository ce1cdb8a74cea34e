// The output profile of one list node: container, extension, encoders, size
// rules, bitrates (kbit/s), frame rate and audio format. Every node holds its
// own copy; the conversion reads it field by field.
#pragma once

#include <QString>

#include <cstdint>

#include "ValueObject/SettingRange.h"

class ProfileSettingInfo {
 public:
  // Kinds of profile (`type`).
  static constexpr int32_t kTypeVideo = 0;         // video with audio
  static constexpr int32_t kTypeAudioOnly = 1;     // no video settings
  static constexpr int32_t kTypeWithoutAudio = 2;  // no audio settings
  static constexpr int32_t kDefaultVideoQuality = 27;
  // Bitrates a user may set, in kbit/s.
  static constexpr SettingRange kVideoBitrateRange{1, 200000, 0};
  static constexpr SettingRange kAudioBitrateRange{1, 1536, 0};

  // A new profile taking the values of `source` except its picture and the
  // settings panel's current choices (imageName, curVideoEncoder and
  // curVideoResolution stay empty). A plain copy keeps those too.
  static ProfileSettingInfo initWithProfileSettingInfo(const ProfileSettingInfo& source);

  // True when tags can be written into files of this profile's extension.
  bool isCanEditMeta() const;

  const QString& profileName() const { return profileName_; }
  void setProfileName(const QString& name) { profileName_ = name; }
  // Container format name handed to the converter.
  const QString& format() const { return format_; }
  void setFormat(const QString& format) { format_ = format; }
  // Output extension without the dot.
  const QString& extName() const { return extName_; }
  void setExtName(const QString& extension) { extName_ = extension; }
  int32_t type() const { return type_; }
  void setType(int32_t type) { type_ = type; }
  int32_t device() const { return device_; }
  void setDevice(int32_t device) { device_ = device; }
  const QString& videoEncoder() const { return videoEncoder_; }
  void setVideoEncoder(const QString& encoder) { videoEncoder_ = encoder; }
  // "<width>x<height>"; a zero part keeps the source size within the bounds.
  const QString& videoResolution() const { return videoResolution_; }
  void setVideoResolution(const QString& resolution) { videoResolution_ = resolution; }
  const QString& curVideoEncoder() const { return curVideoEncoder_; }
  void setCurVideoEncoder(const QString& encoder) { curVideoEncoder_ = encoder; }
  const QString& curVideoResolution() const { return curVideoResolution_; }
  void setCurVideoResolution(const QString& resolution) { curVideoResolution_ = resolution; }
  // Frames per second; 0 or less means 30.
  double videoFrameRate() const { return videoFrameRate_; }
  void setVideoFrameRate(double rate) { videoFrameRate_ = rate; }
  int32_t videoBitrate() const { return videoBitrate_; }
  void setVideoBitrate(int32_t kbits) { videoBitrate_ = kbits; }
  const QString& audioEncoder() const { return audioEncoder_; }
  void setAudioEncoder(const QString& encoder) { audioEncoder_ = encoder; }
  int32_t audioSampleRate() const { return audioSampleRate_; }
  void setAudioSampleRate(int32_t rate) { audioSampleRate_ = rate; }
  int32_t audioBitrate() const { return audioBitrate_; }
  void setAudioBitrate(int32_t kbits) { audioBitrate_ = kbits; }
  int32_t audioChannels() const { return audioChannels_; }
  void setAudioChannels(int32_t channels) { audioChannels_ = channels; }
  const QString& imageName() const { return imageName_; }
  void setImageName(const QString& name) { imageName_ = name; }
  int32_t minWidth() const { return minWidth_; }
  void setMinWidth(int32_t width) { minWidth_ = width; }
  int32_t minHeight() const { return minHeight_; }
  void setMinHeight(int32_t height) { minHeight_ = height; }
  int32_t maxWidth() const { return maxWidth_; }
  void setMaxWidth(int32_t width) { maxWidth_ = width; }
  int32_t maxHeight() const { return maxHeight_; }
  void setMaxHeight(int32_t height) { maxHeight_ = height; }
  int32_t videoQuality() const { return videoQuality_; }
  void setVideoQuality(int32_t quality) { videoQuality_ = quality; }

  bool operator==(const ProfileSettingInfo&) const = default;

 private:
  QString profileName_;
  QString format_;
  QString extName_;
  int32_t type_ = kTypeVideo;
  int32_t device_ = 0;
  QString videoEncoder_;
  QString videoResolution_;
  QString curVideoEncoder_;
  QString curVideoResolution_;
  double videoFrameRate_ = 0;
  int32_t videoBitrate_ = 0;
  QString audioEncoder_;
  int32_t audioSampleRate_ = 0;
  int32_t audioBitrate_ = 0;
  int32_t audioChannels_ = 0;
  QString imageName_;
  int32_t minWidth_ = 0;
  int32_t minHeight_ = 0;
  int32_t maxWidth_ = 0;
  int32_t maxHeight_ = 0;
  int32_t videoQuality_ = kDefaultVideoQuality;
};
