#include "ProfileAction.h"

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"

std::optional<ProfileSettingInfo> ProfileAction::makeProfileSettingInfo(const KMVProfileDataInfo& entry) {
  const KMVProfileOption* audioBitrates = entry.option(KMVProfileDataInfo::kAudioBitrate);
  if (audioBitrates == nullptr || audioBitrates->ListValue.isEmpty()) return std::nullopt;

  ProfileSettingInfo profile;
  profile.setProfileName(entry.DisplayName);
  profile.setFormat(entry.Format);
  profile.setExtName(entry.ExtName);
  profile.setType(entry.type);
  profile.setDevice(entry.Device);
  profile.setMinWidth(entry.minWidth);
  profile.setMinHeight(entry.minHeight);
  profile.setMaxWidth(entry.maxWidth);
  profile.setMaxHeight(entry.maxHeight);

  auto take = [&entry](const char* key, auto apply) {
    if (const auto choice = entry.defaultChoice(key)) apply(*choice);
  };
  take(KMVProfileDataInfo::kResolution, [&](const QString& value) { profile.setVideoResolution(value); });
  take(KMVProfileDataInfo::kFrameRate, [&](const QString& value) { profile.setVideoFrameRate(value.toDouble()); });
  take(KMVProfileDataInfo::kVideoCodec, [&](const QString& value) { profile.setVideoEncoder(value); });
  take(KMVProfileDataInfo::kVideoBitrate, [&](const QString& value) { profile.setVideoBitrate(value.toInt()); });
  take(KMVProfileDataInfo::kSampleRate, [&](const QString& value) { profile.setAudioSampleRate(value.toInt()); });
  take(KMVProfileDataInfo::kChannels, [&](const QString& value) { profile.setAudioChannels(value.toInt()); });
  take(KMVProfileDataInfo::kAudioCodec, [&](const QString& value) { profile.setAudioEncoder(value); });
  take(KMVProfileDataInfo::kAudioBitrate, [&](const QString& value) { profile.setAudioBitrate(value.toInt()); });
  return profile;
}

bool ProfileAction::initProfileSettingInfo(NodeInfo& node, const KMVProfileDataInfo* entry) {
  if (entry == nullptr || node.curProfileSetting().profileName() == entry->DisplayName) return true;
  const std::optional<ProfileSettingInfo> profile = makeProfileSettingInfo(*entry);
  if (!profile) {
    kProfileName = QLatin1String(ApplicationLifecycle::kDefaultProfileName);
    CommonClass::showMessage(QLatin1String(kCatalogDamagedMessage));
    return false;
  }
  node.setCurProfileSetting(*profile);
  return true;
}
