#include "StoreEntries.h"

#include "NumberPair.h"

namespace metadata {
namespace {

std::string joined(const TagLib::StringList& values) { return values.toString("; ").to8Bit(true); }

std::string entryValue(const TagStore& store, MetaDataKey key) {
  switch (key) {
    case METADATA_KEY_GENRE: {
      TagLib::StringList genres = store.text(METADATA_KEY_GENRE);
      return genres.isEmpty() ? std::string() : genres.front().to8Bit(true);
    }
    case METADATA_KEY_GENRES: return joined(store.text(METADATA_KEY_GENRE));
    case METADATA_KEY_IMAGE: return {};
    case METADATA_KEY_TRACK:
    case METADATA_KEY_DISK: return formatNumberPair(store.number(key));
    default: return joined(store.text(key));
  }
}

}  // namespace

TagEntries readEntries(const TagStore& store) {
  TagEntries entries;
  for (int key = METADATA_FIRST_KEY; key <= METADATA_LAST_KEY; ++key) {
    std::string value = entryValue(store, static_cast<MetaDataKey>(key));
    if (!value.empty()) entries.push_back({static_cast<MetaDataKey>(key), std::move(value)});
  }
  return entries;
}

MetaDataResult applyEntries(TagStore& store, const TagEntries& entries, const std::optional<CoverPicture>& cover) {
  for (const TagEntry& entry : entries) {
    switch (entry.key) {
      case METADATA_KEY_GENRES: break;
      case METADATA_KEY_IMAGE: store.setCover(entry.value.empty() ? std::nullopt : cover); break;
      case METADATA_KEY_TRACK:
      case METADATA_KEY_DISK:
        store.setNumber(entry.key, entry.value.empty() ? NumberPair{} : parseNumberPair(entry.value).value());
        break;
      default:
        if (!store.setText(entry.key, TagLib::String(entry.value, TagLib::String::UTF8))) return METADATA_ERROR_VALUE;
    }
  }
  return METADATA_OK;
}

TagSnapshot takeSnapshot(const TagStore& store) {
  std::optional<CoverPicture> cover = store.cover();
  return {readEntries(store), cover ? std::optional(cover->data) : std::nullopt};
}

}  // namespace metadata
