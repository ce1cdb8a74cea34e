// Files the library must not damage: read-only, corrupt or mislabelled ones,
// and the file's permissions and folder around a successful write.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "MediaFormats.h"
#include "TagAccess.h"

namespace {

using tagtest::TempFolder;
namespace fs = std::filesystem;

const tagtest::Entries kEdit{{METADATA_KEY_TITLE, "New title"}, {METADATA_KEY_TRACK, "2/9"}};

std::vector<std::string> folderEntries(const TempFolder& folder) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder.path())) {
    names.push_back(entry.path().filename().string());
  }
  std::ranges::sort(names);
  return names;
}

// Writing must fail with a non-zero code, reading must fail too, and the file
// must keep every byte.
void expectRefusedAndIntact(const std::string& path) {
  std::string before = tagtest::fingerprint(path);
  EXPECT_NE(tagtest::writeTags(path, kEdit), METADATA_OK) << path;
  EXPECT_NE(tagtest::readTags(path).code, METADATA_OK) << path;
  EXPECT_EQ(tagtest::fingerprint(path), before) << path;
}

TEST(FileSafety, ReadOnlyFileIsReportedAndLeftIntact) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("m4a"), folder);
  ASSERT_EQ(tagtest::writeTags(media, {{METADATA_KEY_TITLE, "Before"}}), METADATA_OK);
  std::string before = tagtest::fingerprint(media);
  fs::permissions(media, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);

  EXPECT_EQ(tagtest::writeTags(media, kEdit), METADATA_ERROR_READ_ONLY);
  EXPECT_EQ(tagtest::fingerprint(media), before);
  tagtest::ReadResult read = tagtest::readTags(media);
  EXPECT_EQ(read.code, METADATA_OK);
  EXPECT_EQ(read.byKey[METADATA_KEY_TITLE], "Before");
}

TEST(FileSafety, GarbageWithAMediaExtensionIsLeftIntact) {
  TempFolder folder;
  std::string garbage;
  for (int i = 0; i < 20000; ++i) garbage.push_back(static_cast<char>((i * 7919 + i / 13) % 251));
  for (const tagtest::MediaFormat& format : tagtest::writableFormats()) {
    std::string path = folder.file("garbage." + format.extension);
    tagtest::writeFile(path, garbage);
    expectRefusedAndIntact(path);
  }
}

TEST(FileSafety, DamagedAndMislabelledFilesAreLeftIntact) {
  TempFolder folder;
  // An MP4 cut in half loses the index at its end.
  std::string mp4 = tagtest::makeMedia(tagtest::formatNamed("mp4"), folder);
  std::string whole = tagtest::readFile(mp4);
  tagtest::writeFile(mp4, whole.substr(0, whole.size() / 2));
  expectRefusedAndIntact(mp4);

  // An MP3 named as FLAC.
  std::string mp3 = tagtest::makeMedia(tagtest::formatNamed("mp3"), folder);
  fs::rename(mp3, folder.file("named.flac"));
  expectRefusedAndIntact(folder.file("named.flac"));

  // FLAC in an Ogg container, which the tag writer cannot save readably.
  expectRefusedAndIntact(
      folder.copy(tagtest::madeWithFfmpeg("flac-in-ogg.ogg", {"-c:a", "flac", "-f", "ogg"}, false), "flac-in-ogg.ogg"));
}

TEST(FileSafety, WritingKeepsPermissionsAndLeavesNoScratchFiles) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("mp3"), folder);
  fs::permissions(media, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  struct stat before {};
  ASSERT_EQ(::stat(media.c_str(), &before), 0);

  ASSERT_EQ(tagtest::writeTags(media, kEdit), METADATA_OK);
  EXPECT_NE(tagtest::writeTags(media, {{METADATA_KEY_TITLE, "x"}, {METADATA_KEY_IMAGE, folder.file("none.png")}}),
            METADATA_OK);

  struct stat after {};
  ASSERT_EQ(::stat(media.c_str(), &after), 0);
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_uid, before.st_uid);
  EXPECT_EQ(folderEntries(folder), std::vector<std::string>{"input.mp3"});
  EXPECT_EQ(tagtest::readTags(media).byKey[METADATA_KEY_TITLE], "New title");
}

TEST(FileSafety, WritingThroughASymbolicLinkUpdatesTheFileItNamesAndAnEmptyRecordChangesNothing) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("flac"), folder);
  fs::create_symlink(media, folder.file("link.flac"));
  ASSERT_EQ(tagtest::writeTags(folder.file("link.flac"), kEdit), METADATA_OK);
  EXPECT_TRUE(fs::is_symlink(folder.file("link.flac")));
  EXPECT_EQ(tagtest::readTags(media).byKey[METADATA_KEY_TITLE], "New title");

  const std::string before = tagtest::fingerprint(media);
  EXPECT_EQ(tagtest::writeTags(media, {}), METADATA_OK);
  EXPECT_EQ(tagtest::fingerprint(media), before) << "an empty record changed the file";
}

}  // namespace
