#include "AsfTagStore.h"

#include <array>

#include <taglib/asfpicture.h>

#include "FieldNames.h"

namespace metadata {
namespace {

constexpr std::array<FieldName, 11> kAttributes{{
    {METADATA_KEY_GENRE, "WM/Genre"},
    {METADATA_KEY_COMPOSER, "WM/Composer"},
    {METADATA_KEY_ALBUM, "WM/AlbumTitle"},
    {METADATA_KEY_ALBUM_ARTIST, "WM/AlbumArtist"},
    {METADATA_KEY_GROUPING, "WM/ContentGroupDescription"},
    {METADATA_KEY_YEAR, "WM/Year"},
    {METADATA_KEY_TV_SHOW_NAME, "TVSHOW"},
    {METADATA_KEY_TV_SEASON, "TVSEASON"},
    {METADATA_KEY_TV_EPISODE, "TVEPISODE"},
    {METADATA_KEY_TV_EPISODE_ID, "TVEPISODEID"},
    {METADATA_KEY_DESCRIPTION, "DESCRIPTION"},
}};

constexpr const char* kTrackNumber = "WM/TrackNumber";
constexpr const char* kTrackTotal = "TRACKTOTAL";
constexpr const char* kPartOfSet = "WM/PartOfSet";
constexpr const char* kPicture = "WM/Picture";

// Attribute values are text or numbers depending on the writer.
TagLib::String attributeValue(const TagLib::ASF::Attribute& attribute) {
  switch (attribute.type()) {
    case TagLib::ASF::Attribute::UnicodeType: return attribute.toString();
    case TagLib::ASF::Attribute::DWordType: return TagLib::String::number(static_cast<int>(attribute.toUInt()));
    case TagLib::ASF::Attribute::WordType: return TagLib::String::number(attribute.toUShort());
    case TagLib::ASF::Attribute::QWordType: return TagLib::String::number(static_cast<int>(attribute.toULongLong()));
    default: return {};
  }
}

TagLib::StringList nonEmpty(const TagLib::String& value) {
  return value.isEmpty() ? TagLib::StringList() : TagLib::StringList(value);
}

}  // namespace

TagLib::StringList AsfTagStore::text(MetaDataKey key) const {
  switch (key) {
    case METADATA_KEY_TITLE: return nonEmpty(tag_.title());
    case METADATA_KEY_ARTIST: return nonEmpty(tag_.artist());
    case METADATA_KEY_COMMENT: return nonEmpty(tag_.comment());
    default: break;
  }
  const char* name = fieldName(kAttributes, key);
  return name == nullptr ? TagLib::StringList() : attributeText(name);
}

bool AsfTagStore::setText(MetaDataKey key, const TagLib::String& value) {
  switch (key) {
    case METADATA_KEY_TITLE: tag_.setTitle(value); return true;
    case METADATA_KEY_ARTIST: tag_.setArtist(value); return true;
    case METADATA_KEY_COMMENT: tag_.setComment(value); return true;
    default: break;
  }
  const char* name = fieldName(kAttributes, key);
  if (name == nullptr) return false;
  setAttributeText(name, value);
  return true;
}

NumberPair AsfTagStore::number(MetaDataKey key) const {
  auto first = [this](const char* name) {
    TagLib::StringList values = attributeText(name);
    return values.isEmpty() ? NumberPair{} : readNumberPair(values.front().to8Bit(true));
  };
  if (key == METADATA_KEY_DISK) return first(kPartOfSet);
  if (key != METADATA_KEY_TRACK) return {};
  NumberPair track = first(kTrackNumber);
  if (track.total == 0) track.total = first(kTrackTotal).current;
  return track;
}

void AsfTagStore::setNumber(MetaDataKey key, NumberPair value) {
  bool hasNumber = value.current > 0;
  if (key == METADATA_KEY_DISK) {
    setAttributeText(kPartOfSet, hasNumber ? TagLib::String(formatNumberPair(value)) : "");
  } else if (key == METADATA_KEY_TRACK) {
    // WM/TrackNumber is read as a plain number, so the total goes beside it.
    setAttributeText(kTrackNumber, hasNumber ? TagLib::String::number(value.current) : "");
    setAttributeText(kTrackTotal, hasNumber && value.total > 0 ? TagLib::String::number(value.total) : "");
  }
}

std::optional<CoverPicture> AsfTagStore::cover() const {
  std::optional<TagLib::ASF::Picture> chosen;
  for (const TagLib::ASF::Attribute& attribute : tag_.attribute(kPicture)) {
    TagLib::ASF::Picture picture = attribute.toPicture();
    if (!picture.isValid()) continue;
    if (!chosen || picture.type() == TagLib::ASF::Picture::FrontCover) chosen = picture;
    if (picture.type() == TagLib::ASF::Picture::FrontCover) break;
  }
  if (!chosen) return std::nullopt;
  return CoverPicture{chosen->picture(), chosen->mimeType().to8Bit(true)};
}

void AsfTagStore::setCover(const std::optional<CoverPicture>& picture) {
  tag_.removeItem(kPicture);
  if (!picture) return;
  TagLib::ASF::Picture attribute;
  attribute.setType(TagLib::ASF::Picture::FrontCover);
  attribute.setMimeType(picture->mimeType);
  attribute.setPicture(picture->data);
  tag_.setAttribute(kPicture, TagLib::ASF::Attribute(attribute));
}

TagLib::StringList AsfTagStore::attributeText(const char* name) const {
  TagLib::StringList values;
  for (const TagLib::ASF::Attribute& attribute : tag_.attribute(name)) {
    TagLib::String value = attributeValue(attribute);
    if (!value.isEmpty()) values.append(value);
  }
  return values;
}

void AsfTagStore::setAttributeText(const char* name, const TagLib::String& value) {
  tag_.removeItem(name);
  if (!value.isEmpty()) tag_.setAttribute(name, TagLib::ASF::Attribute(value));
}

}  // namespace metadata
