// The settings panel's logic: eight choice lists filled from the catalogue
// entry of the item's profile (resolution, frame rate, video encoder and
// bitrate, sample rate, channels, audio encoder and bitrate), the custom
// width and height, and the video quality, shown for a profile and written
// back into an item's profile when the user confirms.
#pragma once

#include <QObject>
#include <QStringList>

#include <array>
#include <cstdint>

#include "Profile/KMVProfileDataInfo.h"
#include "ValueObject/NodeInfo.h"

class SettingFormAction : public QObject {
  Q_OBJECT

 public:
  // The lists, in the panel's order.
  enum class List {
    VideoResolution,
    VideoFrameRate,
    VideoEncoder,
    VideoBitrate,
    AudioSampleRate,
    AudioChannels,
    AudioEncoder,
    AudioBitrate,
  };
  static constexpr int kListCount = 8;
  // The resolution list's last item: the width and height fields decide.
  static constexpr const char* kCustom = "custom";
  // Video quality values of the three columns.
  static constexpr std::array<int32_t, 3> kQualityColumns{25, 27, 30};
  static constexpr const char* kResolutionRefusal =
      "Please input an appropriate resolution (Both values must be multiples of 4 and range from {%1x%2} to {%3x%4}).";

  struct ListState {
    QStringList values;  // the value of every item, as text
    int selected = -1;
    bool enabled = true;
  };

  explicit SettingFormAction(QObject* parent = nullptr) : QObject(parent) {}

  // Fills the lists from `entry`'s options (the resolution list ends with
  // the custom item) and selects each option's default; a negative default
  // selects the first item.
  void setDefaultValue(const KMVProfileDataInfo& entry);
  // Shows `profile`'s values: the matching items selected, a resolution
  // that no item has as the custom one with its width and height; the lists
  // a profile of its kind has no settings for disabled and emptied.
  void displayWithProfileSettingInfo(const ProfileSettingInfo& profile);
  // Writes the panel into `node`'s profile. False, with the resolution
  // alert and nothing more written, when the custom size is refused.
  bool settingFinish(NodeInfo& node);

  const ListState& list(List which) const { return lists_[static_cast<size_t>(which)]; }
  void select(List which, int index);
  bool isCustomResolution() const;
  const QString& customWidth() const { return customWidth_; }
  const QString& customHeight() const { return customHeight_; }
  void setCustomSize(const QString& width, const QString& height);
  int qualityColumn() const { return qualityColumn_; }
  void setQualityColumn(int column);

 signals:
  void changed();

 private:
  ListState& state(List which) { return lists_[static_cast<size_t>(which)]; }
  QString selectedValue(List which) const;
  void showValue(List which, const QString& value);
  void setGroupEnabled(std::initializer_list<List> group, bool enabled);

  std::array<ListState, kListCount> lists_;
  QString customWidth_;
  QString customHeight_;
  int qualityColumn_ = 1;
};
