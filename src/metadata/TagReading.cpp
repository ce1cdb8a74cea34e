#include "TagReading.h"

#include <algorithm>
#include <cstdlib>

#include "CoverImage.h"
#include "FileAccess.h"
#include "StoreEntries.h"
#include "TagRecord.h"
#include "TaggedFile.h"

namespace metadata {

MetaDataResult readTags(const char* path, MetaDataInfo** info, const char* thumbnailPath) {
  if (path == nullptr || info == nullptr) return METADATA_ERROR_ARGUMENT;
  *info = nullptr;
  std::optional<FormatFamily> family = familyForPath(path);
  if (!family) return METADATA_ERROR_FORMAT;
  if (fileAccess(path) == FileAccess::Unavailable) return METADATA_ERROR_NO_FILE;
  std::unique_ptr<TaggedFile> file = TaggedFile::open(path, *family, TaggedFile::Access::ReadOnly);
  if (!file) return METADATA_ERROR_INVALID_FILE;

  TagEntries entries = readEntries(file->tags());
  std::optional<CoverPicture> cover = file->tags().cover();
  // A cover that does not decode or cannot be saved is left out; the text tags still count.
  if (cover && thumbnailPath != nullptr && *thumbnailPath != '\0' &&
      saveCoverAsBmp(std::string_view(cover->data.data(), cover->data.size()), thumbnailPath)) {
    entries.push_back({METADATA_KEY_IMAGE, thumbnailPath});
    std::ranges::stable_sort(entries, {}, &TagEntry::key);
  }

  auto* record = static_cast<MetaDataInfo*>(std::calloc(1, sizeof(MetaDataInfo)));
  if (record == nullptr) return METADATA_ERROR_INTERNAL;
  fillRecord(*record, entries);
  *info = record;
  return METADATA_OK;
}

}  // namespace metadata
