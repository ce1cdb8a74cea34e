#include "MediaMetaData.h"

#include <QStringList>

#include <algorithm>

#include "ValueObject/IntValue.h"

MediaMetaData MediaMetaData::initWithFile(const QString& path, const QString& thumbnailPath, int32_t* result) {
  MediaMetaData tags;
  MetaDataInfo* info = nullptr;
  const QByteArray thumbnail = thumbnailPath.toUtf8();
  const int32_t code =
      GetMetaDataInfo(path.toUtf8().constData(), &info, thumbnail.isEmpty() ? nullptr : thumbnail.constData());
  if (code == METADATA_OK && info != nullptr) tags.getValueFromDataInfos(*info);
  FreeMetaDataInfo(&info);
  if (result != nullptr) *result = code;
  return tags;
}

void MediaMetaData::getValueFromDataInfos(const MetaDataInfo& info) {
  const int32_t count = std::clamp<int32_t>(info.count, 0, METADATA_MAX_ITEMS);
  for (int32_t index = 0; index < count; ++index) {
    const MetaDataItem& item = info.items[index];
    const QString value =
        QString::fromUtf8(item.value, static_cast<qsizetype>(qstrnlen(item.value, sizeof item.value)));
    if (item.key == METADATA_KEY_TRACK) {
      readNumberPair(value, curTrackNum_, totalTrackNum_);
    } else if (item.key == METADATA_KEY_DISK) {
      readNumberPair(value, curDiskNum_, totalDiskNum_);
    } else {
      setText(item.key, value);
    }
  }
}

QString MediaMetaData::text(int32_t key) const {
  QString MediaMetaData::*member = textMember(key);
  return member != nullptr ? this->*member : QString();
}

void MediaMetaData::setText(int32_t key, const QString& value) {
  QString MediaMetaData::*member = textMember(key);
  if (member != nullptr) this->*member = value;
}

QString MediaMetaData::*MediaMetaData::textMember(int32_t key) {
  switch (key) {
    case METADATA_KEY_TITLE: return &MediaMetaData::title_;
    case METADATA_KEY_COMMENT: return &MediaMetaData::comment_;
    case METADATA_KEY_ARTIST: return &MediaMetaData::artist_;
    case METADATA_KEY_GENRE: return &MediaMetaData::genre_;
    case METADATA_KEY_GENRES: return &MediaMetaData::genres_;
    case METADATA_KEY_COMPOSER: return &MediaMetaData::composer_;
    case METADATA_KEY_ALBUM: return &MediaMetaData::album_;
    case METADATA_KEY_ALBUM_ARTIST: return &MediaMetaData::albumArtist_;
    case METADATA_KEY_IMAGE: return &MediaMetaData::image_;
    case METADATA_KEY_GROUPING: return &MediaMetaData::grouping_;
    case METADATA_KEY_YEAR: return &MediaMetaData::year_;
    case METADATA_KEY_TV_SHOW_NAME: return &MediaMetaData::tvShowName_;
    case METADATA_KEY_TV_SEASON: return &MediaMetaData::tvSeason_;
    case METADATA_KEY_TV_EPISODE: return &MediaMetaData::tvEpisode_;
    case METADATA_KEY_TV_EPISODE_ID: return &MediaMetaData::tvEpisodeId_;
    case METADATA_KEY_DESCRIPTION: return &MediaMetaData::metaDescription_;
    default: return nullptr;
  }
}

void MediaMetaData::readNumberPair(const QString& value, int32_t& current, int32_t& total) {
  const QStringList parts = value.split(QLatin1Char('/'));
  if (parts.size() == 1) {
    current = intValue(parts.at(0));
  } else if (parts.size() == 2) {
    current = intValue(parts.at(0));
    total = intValue(parts.at(1));
  }
}
