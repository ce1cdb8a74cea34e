#include "XiphTagStore.h"

#include <array>

#include "FieldNames.h"

namespace metadata {
namespace {

constexpr std::array<FieldName, 14> kTextFields{{
    {METADATA_KEY_TITLE, "TITLE"},
    {METADATA_KEY_COMMENT, "COMMENT"},
    {METADATA_KEY_ARTIST, "ARTIST"},
    {METADATA_KEY_GENRE, "GENRE"},
    {METADATA_KEY_COMPOSER, "COMPOSER"},
    {METADATA_KEY_ALBUM, "ALBUM"},
    {METADATA_KEY_ALBUM_ARTIST, "ALBUMARTIST"},
    {METADATA_KEY_GROUPING, "GROUPING"},
    {METADATA_KEY_YEAR, "DATE"},
    {METADATA_KEY_TV_SHOW_NAME, "TVSHOW"},
    {METADATA_KEY_TV_SEASON, "TVSEASON"},
    {METADATA_KEY_TV_EPISODE, "TVEPISODE"},
    {METADATA_KEY_TV_EPISODE_ID, "TVEPISODEID"},
    {METADATA_KEY_DESCRIPTION, "DESCRIPTION"},
}};

// The number field, the total field, and the older spelling of the total.
struct NumberFields {
  MetaDataKey key;
  const char* number;
  const char* total;
  const char* legacyTotal;
};

constexpr std::array<NumberFields, 2> kNumberFields{{
    {METADATA_KEY_TRACK, "TRACKNUMBER", "TRACKTOTAL", "TOTALTRACKS"},
    {METADATA_KEY_DISK, "DISCNUMBER", "DISCTOTAL", "TOTALDISCS"},
}};

const NumberFields* numberFields(MetaDataKey key) {
  for (const NumberFields& fields : kNumberFields) {
    if (fields.key == key) return &fields;
  }
  return nullptr;
}

}  // namespace

TagLib::StringList XiphTagStore::text(MetaDataKey key) const {
  const char* name = fieldName(kTextFields, key);
  return name == nullptr ? TagLib::StringList() : field(name);
}

bool XiphTagStore::setText(MetaDataKey key, const TagLib::String& value) {
  const char* name = fieldName(kTextFields, key);
  if (name == nullptr) return false;
  setField(name, value);
  return true;
}

NumberPair XiphTagStore::number(MetaDataKey key) const {
  const NumberFields* fields = numberFields(key);
  if (fields == nullptr) return {};
  TagLib::StringList number = field(fields->number);
  // Some writers keep "N/TOTAL" in the number field itself.
  NumberPair pair = number.isEmpty() ? NumberPair{} : readNumberPair(number.front().to8Bit(true));
  for (const char* totalName : {fields->total, fields->legacyTotal}) {
    TagLib::StringList total = field(totalName);
    if (pair.total == 0 && !total.isEmpty()) pair.total = readNumberPair(total.front().to8Bit(true)).current;
  }
  return pair;
}

void XiphTagStore::setNumber(MetaDataKey key, NumberPair value) {
  const NumberFields* fields = numberFields(key);
  if (fields == nullptr) return;
  bool hasNumber = value.current > 0;
  setField(fields->number, hasNumber ? TagLib::String::number(value.current) : "");
  setField(fields->total, hasNumber && value.total > 0 ? TagLib::String::number(value.total) : "");
  setField(fields->legacyTotal, "");
}

std::optional<CoverPicture> XiphTagStore::cover() const { return frontCover(comment_.pictureList()); }

void XiphTagStore::setCover(const std::optional<CoverPicture>& picture) {
  comment_.removeAllPictures();
  if (picture) comment_.addPicture(newPictureBlock(*picture));
}

std::optional<CoverPicture> XiphTagStore::frontCover(const TagLib::List<TagLib::FLAC::Picture*>& pictures) {
  const TagLib::FLAC::Picture* chosen = nullptr;
  for (const TagLib::FLAC::Picture* picture : pictures) {
    if (chosen == nullptr || picture->type() == TagLib::FLAC::Picture::FrontCover) chosen = picture;
    if (picture->type() == TagLib::FLAC::Picture::FrontCover) break;
  }
  if (chosen == nullptr) return std::nullopt;
  return CoverPicture{chosen->data(), chosen->mimeType().to8Bit(true), chosen->width(), chosen->height()};
}

TagLib::FLAC::Picture* XiphTagStore::newPictureBlock(const CoverPicture& picture) {
  auto* block = new TagLib::FLAC::Picture;
  block->setType(TagLib::FLAC::Picture::FrontCover);
  block->setMimeType(picture.mimeType);
  block->setWidth(picture.width);
  block->setHeight(picture.height);
  block->setColorDepth(24);
  block->setData(picture.data);
  return block;
}

TagLib::StringList XiphTagStore::field(const char* name) const {
  const TagLib::Ogg::FieldListMap& fields = comment_.fieldListMap();
  auto found = fields.find(name);
  return found == fields.end() ? TagLib::StringList() : found->second;
}

void XiphTagStore::setField(const char* name, const TagLib::String& value) {
  if (value.isEmpty()) {
    comment_.removeFields(name);
  } else {
    comment_.addField(name, value, true);
  }
}

std::optional<CoverPicture> FlacTagStore::cover() const { return frontCover(file_.pictureList()); }

void FlacTagStore::setCover(const std::optional<CoverPicture>& picture) {
  file_.removePictures();
  if (picture) file_.addPicture(newPictureBlock(*picture));
}

}  // namespace metadata
