#include "ProfileSettingInfo.h"

#include "metadataedit.h"

ProfileSettingInfo ProfileSettingInfo::initWithProfileSettingInfo(const ProfileSettingInfo& source) {
  ProfileSettingInfo profile;
  profile.videoResolution_ = source.videoResolution_;
  profile.videoBitrate_ = source.videoBitrate_;
  profile.videoFrameRate_ = source.videoFrameRate_;
  profile.videoEncoder_ = source.videoEncoder_;
  profile.audioBitrate_ = source.audioBitrate_;
  profile.audioSampleRate_ = source.audioSampleRate_;
  profile.audioChannels_ = source.audioChannels_;
  profile.audioEncoder_ = source.audioEncoder_;
  profile.format_ = source.format_;
  profile.device_ = source.device_;
  profile.profileName_ = source.profileName_;
  profile.extName_ = source.extName_;
  profile.type_ = source.type_;
  profile.minWidth_ = source.minWidth_;
  profile.minHeight_ = source.minHeight_;
  profile.maxWidth_ = source.maxWidth_;
  profile.maxHeight_ = source.maxHeight_;
  profile.videoQuality_ = source.videoQuality_;
  return profile;
}

bool ProfileSettingInfo::isCanEditMeta() const { return CheckFile(extName_.toUtf8().constData()) == 0; }
