// One entry of the profile catalogue: what a conversion with this profile
// produces, and under short option keys the lists of choices the settings
// panel offers with the index of each default choice.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

// The choices of one option: `ListValue` is a comma-separated list,
// `DefaultValue` the index of the default choice as text.
struct KMVProfileOption {
  QString ListValue;
  QString DefaultValue;

  QStringList choices() const { return ListValue.split(QLatin1Char(',')); }
  // DefaultValue read as an integer; text that is not a number reads as 0.
  int defaultIndex() const { return DefaultValue.trimmed().toInt(); }
  // The choice at the default index; none for a negative or too large index.
  std::optional<QString> defaultChoice() const;
};

class KMVProfileDataInfo {
 public:
  // Option keys.
  static constexpr const char* kResolution = "s";
  static constexpr const char* kFrameRate = "r";
  static constexpr const char* kVideoCodec = "vcodec";
  static constexpr const char* kVideoBitrate = "b";
  static constexpr const char* kSampleRate = "ar";
  static constexpr const char* kChannels = "ac";
  static constexpr const char* kAudioCodec = "acodec";
  static constexpr const char* kAudioBitrate = "ab";

  int32_t identifier = 0;
  QString group;
  QString DisplayName;
  QString Format;    // container format name of the converter
  QString ExtName;   // output extension without the dot
  int32_t type = 0;  // as ProfileSettingInfo's type
  int32_t Device = 0;
  int32_t minWidth = 0;
  int32_t minHeight = 0;
  int32_t maxWidth = 0;
  int32_t maxHeight = 0;
  QString imageName;  // skin picture shown for the profile
  QMap<QString, KMVProfileOption> subs;

  // The option under `key`; nullptr when the entry has none.
  const KMVProfileOption* option(const char* key) const;
  // The default choice of the option under `key`, when it has one.
  std::optional<QString> defaultChoice(const char* key) const;
};
