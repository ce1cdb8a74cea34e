#include "SettingFormAction.h"

#include "CommonClass/CommonClass.h"

namespace {

using List = SettingFormAction::List;

constexpr std::pair<List, const char*> kOptionKeys[] = {
    {List::VideoResolution, KMVProfileDataInfo::kResolution}, {List::VideoFrameRate, KMVProfileDataInfo::kFrameRate},
    {List::VideoEncoder, KMVProfileDataInfo::kVideoCodec},    {List::VideoBitrate, KMVProfileDataInfo::kVideoBitrate},
    {List::AudioSampleRate, KMVProfileDataInfo::kSampleRate}, {List::AudioChannels, KMVProfileDataInfo::kChannels},
    {List::AudioEncoder, KMVProfileDataInfo::kAudioCodec},    {List::AudioBitrate, KMVProfileDataInfo::kAudioBitrate},
};

constexpr std::initializer_list<List> kVideoLists = {List::VideoResolution, List::VideoFrameRate, List::VideoEncoder,
                                                     List::VideoBitrate};
constexpr std::initializer_list<List> kAudioLists = {List::AudioSampleRate, List::AudioChannels, List::AudioEncoder,
                                                     List::AudioBitrate};

// Frame rates are compared as numbers, so that "30" finds "30.0".
bool sameValue(List which, const QString& item, const QString& value) {
  if (which == List::VideoFrameRate) return item.toDouble() == value.toDouble();
  return item == value;
}

QString frameRateText(double rate) { return QString::number(rate); }

}  // namespace

void SettingFormAction::setDefaultValue(const KMVProfileDataInfo& entry) {
  for (const auto& [which, key] : kOptionKeys) {
    ListState& list = state(which);
    const KMVProfileOption* option = entry.option(key);
    list.values.clear();
    if (option != nullptr) {
      for (const QString& choice : option->choices()) list.values.append(choice.trimmed());
    }
    if (which == List::VideoResolution) list.values.append(QLatin1String(kCustom));
    const int index = option != nullptr ? option->defaultIndex() : 0;
    list.selected = list.values.isEmpty() ? -1 : (index < 0 || index >= list.values.size() ? 0 : index);
    list.enabled = true;
  }
  customWidth_.clear();
  customHeight_.clear();
  emit changed();
}

void SettingFormAction::showValue(List which, const QString& value) {
  ListState& list = state(which);
  list.enabled = true;
  list.selected = -1;
  for (int index = 0; index < list.values.size(); ++index) {
    if (sameValue(which, list.values[index], value)) list.selected = index;
  }
}

void SettingFormAction::setGroupEnabled(std::initializer_list<List> group, bool enabled) {
  for (List which : group) {
    state(which).enabled = enabled;
    if (!enabled) state(which).selected = -1;
  }
}

void SettingFormAction::displayWithProfileSettingInfo(const ProfileSettingInfo& profile) {
  customWidth_.clear();
  customHeight_.clear();
  if (profile.type() != ProfileSettingInfo::kTypeAudioOnly) {
    showValue(List::VideoResolution, profile.videoResolution());
    if (list(List::VideoResolution).selected < 0 && !profile.videoResolution().isEmpty()) {
      const QStringList size = profile.videoResolution().split(QLatin1Char('x'));
      customWidth_ = QString::number(size.value(0).toInt());
      customHeight_ = QString::number(size.value(1).toInt());
      state(List::VideoResolution).selected = static_cast<int>(list(List::VideoResolution).values.size()) - 1;
    }
    showValue(List::VideoFrameRate, frameRateText(profile.videoFrameRate()));
    showValue(List::VideoEncoder, profile.videoEncoder());
    showValue(List::VideoBitrate, QString::number(profile.videoBitrate()));
  } else {
    setGroupEnabled(kVideoLists, false);
  }
  if (profile.type() != ProfileSettingInfo::kTypeWithoutAudio) {
    showValue(List::AudioSampleRate, QString::number(profile.audioSampleRate()));
    showValue(List::AudioChannels, QString::number(profile.audioChannels()));
    showValue(List::AudioEncoder, profile.audioEncoder());
    showValue(List::AudioBitrate, QString::number(profile.audioBitrate()));
  } else {
    setGroupEnabled(kAudioLists, false);
  }
  const auto column = std::find(kQualityColumns.begin(), kQualityColumns.end(), profile.videoQuality());
  qualityColumn_ = column == kQualityColumns.end() ? 1 : static_cast<int>(column - kQualityColumns.begin());
  emit changed();
}

bool SettingFormAction::settingFinish(NodeInfo& node) {
  ProfileSettingInfo& profile = node.curProfileSetting();
  if (profile.type() == ProfileSettingInfo::kTypeVideo) {
    if (const QString encoder = selectedValue(List::VideoEncoder); !encoder.isEmpty()) profile.setVideoEncoder(encoder);
    if (isCustomResolution()) {
      bool widthIsNumber = false;
      bool heightIsNumber = false;
      const int width = customWidth_.trimmed().toInt(&widthIsNumber);
      const int height = customHeight_.trimmed().toInt(&heightIsNumber);
      const bool fits = widthIsNumber && heightIsNumber && width >= profile.minWidth() &&
                        width <= profile.maxWidth() && height >= profile.minHeight() &&
                        height <= profile.maxHeight() && width % 4 == 0 && height % 4 == 0;
      if (!fits) {
        CommonClass::showMessage(QStringLiteral(" "), QString::fromLatin1(kResolutionRefusal)
                                                          .arg(profile.minWidth())
                                                          .arg(profile.minHeight())
                                                          .arg(profile.maxWidth())
                                                          .arg(profile.maxHeight()));
        return false;
      }
      profile.setVideoResolution(QStringLiteral("%1x%2").arg(width).arg(height));
    } else if (const QString resolution = selectedValue(List::VideoResolution); !resolution.isEmpty()) {
      profile.setVideoResolution(resolution);
    }
    if (const QString rate = selectedValue(List::VideoFrameRate); !rate.isEmpty()) {
      profile.setVideoFrameRate(rate.toDouble());
    }
    if (const QString bitrate = selectedValue(List::VideoBitrate); !bitrate.isEmpty()) {
      profile.setVideoBitrate(bitrate.toInt());
    }
    profile.setVideoQuality(qualityColumn_ == 0 || qualityColumn_ == 2 ? kQualityColumns[qualityColumn_] : 27);
  }
  if (profile.type() == ProfileSettingInfo::kTypeWithoutAudio) return true;
  if (const QString bitrate = selectedValue(List::AudioBitrate); !bitrate.isEmpty()) {
    profile.setAudioBitrate(bitrate.toInt());
  }
  if (const QString rate = selectedValue(List::AudioSampleRate); !rate.isEmpty()) {
    profile.setAudioSampleRate(rate.toInt());
  }
  if (const QString channels = selectedValue(List::AudioChannels); !channels.isEmpty()) {
    profile.setAudioChannels(channels.toInt());
  }
  if (const QString encoder = selectedValue(List::AudioEncoder); !encoder.isEmpty()) profile.setAudioEncoder(encoder);
  return true;
}

void SettingFormAction::select(List which, int index) {
  ListState& list = state(which);
  if (!list.enabled || index < -1 || index >= list.values.size() || list.selected == index) return;
  list.selected = index;
  emit changed();
}

bool SettingFormAction::isCustomResolution() const {
  const ListState& resolutions = list(List::VideoResolution);
  return resolutions.selected >= 0 && resolutions.values.value(resolutions.selected) == QLatin1String(kCustom);
}

void SettingFormAction::setCustomSize(const QString& width, const QString& height) {
  customWidth_ = width;
  customHeight_ = height;
  emit changed();
}

void SettingFormAction::setQualityColumn(int column) {
  if (column == qualityColumn_) return;
  qualityColumn_ = column;
  emit changed();
}

QString SettingFormAction::selectedValue(List which) const {
  const ListState& list = this->list(which);
  return list.enabled && list.selected >= 0 ? list.values.value(list.selected) : QString();
}
