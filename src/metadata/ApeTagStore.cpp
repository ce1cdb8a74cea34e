#include "ApeTagStore.h"

#include <array>

#include "FieldNames.h"
#include "ImageType.h"

namespace metadata {
namespace {

// Item keys are case-insensitive; TagLib keeps them in upper case.
constexpr std::array<FieldName, 14> kTextItems{{
    {METADATA_KEY_TITLE, "TITLE"},
    {METADATA_KEY_COMMENT, "COMMENT"},
    {METADATA_KEY_ARTIST, "ARTIST"},
    {METADATA_KEY_GENRE, "GENRE"},
    {METADATA_KEY_COMPOSER, "COMPOSER"},
    {METADATA_KEY_ALBUM, "ALBUM"},
    {METADATA_KEY_ALBUM_ARTIST, "ALBUM ARTIST"},
    {METADATA_KEY_GROUPING, "GROUPING"},
    {METADATA_KEY_YEAR, "YEAR"},
    {METADATA_KEY_TV_SHOW_NAME, "TVSHOW"},
    {METADATA_KEY_TV_SEASON, "TVSEASON"},
    {METADATA_KEY_TV_EPISODE, "TVEPISODE"},
    {METADATA_KEY_TV_EPISODE_ID, "TVEPISODEID"},
    {METADATA_KEY_DESCRIPTION, "DESCRIPTION"},
}};

constexpr std::array<FieldName, 2> kNumberItems{{
    {METADATA_KEY_TRACK, "TRACK"},
    {METADATA_KEY_DISK, "DISC"},
}};

constexpr const char* kCoverItem = "COVER ART (FRONT)";

}  // namespace

TagLib::StringList ApeTagStore::text(MetaDataKey key) const {
  const char* name = fieldName(kTextItems, key);
  return name == nullptr ? TagLib::StringList() : item(name);
}

bool ApeTagStore::setText(MetaDataKey key, const TagLib::String& value) {
  const char* name = fieldName(kTextItems, key);
  if (name == nullptr) return false;
  setItem(name, value);
  return true;
}

NumberPair ApeTagStore::number(MetaDataKey key) const {
  const char* name = fieldName(kNumberItems, key);
  if (name == nullptr) return {};
  TagLib::StringList values = item(name);
  return values.isEmpty() ? NumberPair{} : readNumberPair(values.front().to8Bit(true));
}

void ApeTagStore::setNumber(MetaDataKey key, NumberPair value) {
  const char* name = fieldName(kNumberItems, key);
  if (name == nullptr) return;
  setItem(name, value.current > 0 ? TagLib::String(formatNumberPair(value)) : "");
}

std::optional<CoverPicture> ApeTagStore::cover() const {
  const TagLib::APE::ItemListMap& items = tag_.itemListMap();
  auto found = items.find(kCoverItem);
  if (found == items.end() || found->second.type() != TagLib::APE::Item::Binary) return std::nullopt;
  TagLib::ByteVector value = found->second.binaryData();
  int nameEnd = value.find('\0');
  if (nameEnd < 0) return std::nullopt;
  TagLib::ByteVector data = value.mid(nameEnd + 1);
  return CoverPicture{data, imageMimeType(std::string_view(data.data(), data.size()))};
}

void ApeTagStore::setCover(const std::optional<CoverPicture>& picture) {
  tag_.removeItem(kCoverItem);
  if (!picture) return;
  TagLib::ByteVector value(picture->mimeType == "image/png" ? "cover.png" : "cover.jpg");
  value.append('\0');
  value.append(picture->data);
  tag_.setData(kCoverItem, value);
}

TagLib::StringList ApeTagStore::item(const char* name) const {
  const TagLib::APE::ItemListMap& items = tag_.itemListMap();
  auto found = items.find(name);
  if (found == items.end() || found->second.type() != TagLib::APE::Item::Text) return {};
  return found->second.values();
}

void ApeTagStore::setItem(const char* name, const TagLib::String& value) {
  if (value.isEmpty()) {
    tag_.removeItem(name);
  } else {
    tag_.addValue(name, value, true);
  }
}

}  // namespace metadata
