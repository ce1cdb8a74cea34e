#include "TagWriting.h"

#include <algorithm>

#include "CoverImage.h"
#include "FileAccess.h"
#include "FileReplacement.h"
#include "StoreEntries.h"
#include "TagRecord.h"
#include "TaggedFile.h"

namespace metadata {
namespace {

// The picture named by the last image entry, when that entry names one.
struct CoverChoice {
  MetaDataResult result = METADATA_OK;
  std::optional<CoverPicture> picture;
};

CoverChoice chooseCover(const TagEntries& entries) {
  auto last = std::ranges::find(entries.rbegin(), entries.rend(), METADATA_KEY_IMAGE, &TagEntry::key);
  if (last == entries.rend() || last->value.empty()) return {};
  std::optional<CoverPicture> picture = loadCoverPicture(last->value);
  return picture ? CoverChoice{METADATA_OK, std::move(picture)} : CoverChoice{METADATA_ERROR_PICTURE, {}};
}

// Applies the entries to the copy, saves it, and checks that the saved copy
// reads back as expected.
MetaDataResult editCopy(const std::string& copyPath, FormatFamily family, const TagEntries& entries,
                        const std::optional<CoverPicture>& cover, const TagSnapshot& expected) {
  {
    std::unique_ptr<TaggedFile> copy = TaggedFile::open(copyPath, family, TaggedFile::Access::ReadWrite);
    if (!copy) return METADATA_ERROR_WRITE;
    MetaDataResult applied = applyEntries(copy->tags(), entries, cover);
    if (applied != METADATA_OK) return applied;
    if (!copy->save()) return METADATA_ERROR_WRITE;
  }
  std::unique_ptr<TaggedFile> saved = TaggedFile::open(copyPath, family, TaggedFile::Access::ReadOnly);
  return saved && takeSnapshot(saved->tags()) == expected ? METADATA_OK : METADATA_ERROR_WRITE;
}

MetaDataResult copyFailure(FileReplacement::CopyResult result) {
  return result == FileReplacement::CopyResult::FolderNotWritable ? METADATA_ERROR_READ_ONLY : METADATA_ERROR_WRITE;
}

}  // namespace

MetaDataResult writeTags(const char* path, const MetaDataInfo* record) {
  if (path == nullptr || record == nullptr) return METADATA_ERROR_ARGUMENT;
  ParsedRecord parsed = parseRecord(*record);
  if (parsed.result != METADATA_OK) return parsed.result;
  std::optional<FormatFamily> family = familyForPath(path);
  if (!family) return METADATA_ERROR_FORMAT;
  FileAccess access = fileAccess(path);
  if (access == FileAccess::Unavailable) return METADATA_ERROR_NO_FILE;
  if (access == FileAccess::ReadOnly) return METADATA_ERROR_READ_ONLY;
  CoverChoice cover = chooseCover(parsed.entries);
  if (cover.result != METADATA_OK) return cover.result;

  // The edit is first made in memory on the untouched file: this proves the
  // file valid and the values storable, and gives what the saved copy must read back as.
  TagSnapshot expected;
  {
    std::unique_ptr<TaggedFile> original = TaggedFile::open(path, *family, TaggedFile::Access::ReadOnly);
    if (!original) return METADATA_ERROR_INVALID_FILE;
    if (parsed.entries.empty()) return METADATA_OK;
    MetaDataResult applied = applyEntries(original->tags(), parsed.entries, cover.picture);
    if (applied != METADATA_OK) return applied;
    expected = takeSnapshot(original->tags());
  }

  FileReplacement replacement(path);
  FileReplacement::CopyResult copied = replacement.createCopy();
  if (copied != FileReplacement::CopyResult::Copied) return copyFailure(copied);
  MetaDataResult edited = editCopy(replacement.copyPath(), *family, parsed.entries, cover.picture, expected);
  if (edited != METADATA_OK) return edited;
  return replacement.commit() ? METADATA_OK : METADATA_ERROR_WRITE;
}

}  // namespace metadata
