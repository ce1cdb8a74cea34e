#include "Mp4TagStore.h"

#include <array>

#include <taglib/mp4coverart.h>

#include "FieldNames.h"
#include "NumberPair.h"

namespace metadata {
namespace {

constexpr std::array<FieldName, 12> kTextAtoms{{
    {METADATA_KEY_TITLE, "\251nam"},
    {METADATA_KEY_COMMENT, "\251cmt"},
    {METADATA_KEY_ARTIST, "\251ART"},
    {METADATA_KEY_GENRE, "\251gen"},
    {METADATA_KEY_COMPOSER, "\251wrt"},
    {METADATA_KEY_ALBUM, "\251alb"},
    {METADATA_KEY_ALBUM_ARTIST, "aART"},
    {METADATA_KEY_GROUPING, "\251grp"},
    {METADATA_KEY_YEAR, "\251day"},
    {METADATA_KEY_TV_SHOW_NAME, "tvsh"},
    {METADATA_KEY_TV_EPISODE_ID, "tven"},
    {METADATA_KEY_DESCRIPTION, "desc"},
}};

// Season and episode are unsigned numbers in MP4, not text.
constexpr std::array<FieldName, 2> kNumberAtoms{{
    {METADATA_KEY_TV_SEASON, "tvsn"},
    {METADATA_KEY_TV_EPISODE, "tves"},
}};

constexpr std::array<FieldName, 2> kPairAtoms{{
    {METADATA_KEY_TRACK, "trkn"},
    {METADATA_KEY_DISK, "disk"},
}};

TagLib::MP4::CoverArt::Format coverFormat(const std::string& mimeType) {
  return mimeType == "image/png" ? TagLib::MP4::CoverArt::PNG : TagLib::MP4::CoverArt::JPEG;
}

std::string mimeType(TagLib::MP4::CoverArt::Format format) {
  switch (format) {
    case TagLib::MP4::CoverArt::PNG: return "image/png";
    case TagLib::MP4::CoverArt::BMP: return "image/bmp";
    case TagLib::MP4::CoverArt::GIF: return "image/gif";
    default: return "image/jpeg";
  }
}

}  // namespace

TagLib::StringList Mp4TagStore::text(MetaDataKey key) const {
  if (const char* atom = fieldName(kNumberAtoms, key)) {
    if (!tag_.contains(atom)) return {};
    return TagLib::StringList(TagLib::String::number(static_cast<int>(tag_.item(atom).toUInt())));
  }
  const char* atom = fieldName(kTextAtoms, key);
  if (atom == nullptr || !tag_.contains(atom)) return {};
  return tag_.item(atom).toStringList();
}

bool Mp4TagStore::setText(MetaDataKey key, const TagLib::String& value) {
  if (const char* atom = fieldName(kNumberAtoms, key)) {
    if (value.isEmpty()) {
      tag_.removeItem(atom);
      return true;
    }
    std::optional<NumberPair> number = parseNumberPair(value.to8Bit(true));
    if (!number || number->total != 0) return false;
    tag_.setItem(atom, TagLib::MP4::Item(static_cast<unsigned int>(number->current)));
    return true;
  }
  const char* atom = fieldName(kTextAtoms, key);
  if (atom == nullptr) return false;
  if (value.isEmpty()) {
    tag_.removeItem(atom);
  } else {
    tag_.setItem(atom, TagLib::StringList(value));
  }
  // An old numeric genre atom would otherwise shadow the text one in some readers.
  if (key == METADATA_KEY_GENRE) tag_.removeItem("gnre");
  return true;
}

NumberPair Mp4TagStore::number(MetaDataKey key) const {
  const char* atom = fieldName(kPairAtoms, key);
  if (atom == nullptr || !tag_.contains(atom)) return {};
  TagLib::MP4::Item::IntPair pair = tag_.item(atom).toIntPair();
  return {pair.first, pair.second};
}

void Mp4TagStore::setNumber(MetaDataKey key, NumberPair value) {
  const char* atom = fieldName(kPairAtoms, key);
  if (atom == nullptr) return;
  if (value.current <= 0) {
    tag_.removeItem(atom);
  } else {
    tag_.setItem(atom, TagLib::MP4::Item(value.current, value.total));
  }
}

std::optional<CoverPicture> Mp4TagStore::cover() const {
  if (!tag_.contains("covr")) return std::nullopt;
  TagLib::MP4::CoverArtList covers = tag_.item("covr").toCoverArtList();
  if (covers.isEmpty()) return std::nullopt;
  return CoverPicture{covers.front().data(), mimeType(covers.front().format())};
}

void Mp4TagStore::setCover(const std::optional<CoverPicture>& picture) {
  if (!picture) {
    tag_.removeItem("covr");
    return;
  }
  TagLib::MP4::CoverArtList covers;
  covers.append(TagLib::MP4::CoverArt(coverFormat(picture->mimeType), picture->data));
  tag_.setItem("covr", covers);
}

}  // namespace metadata
