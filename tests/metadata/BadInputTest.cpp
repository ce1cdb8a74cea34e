// Requests the library must refuse with a clear code, leaving files as they were.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "MediaFormats.h"
#include "TagAccess.h"

namespace {

using tagtest::TempFolder;

TEST(CheckFile, AcceptsTheWritableFormatsInAnySpellingAndRefusesContainersWithoutWritableTags) {
  for (const char* format : {"mp4", "m4a", "m4v",  "m4r", "mov", "3gp", "mp3", "flac", "ogg", "opus", "wma",
                             "wmv", "asf", "aiff", "wav", "ape", "wv",  "mpc", "tta",  "MP4", ".m4a", ".Flac"}) {
    EXPECT_EQ(CheckFile(format), METADATA_OK) << format;
  }
  for (const char* format : {"mkv", "avi", "flv", "ts", "webm", "mpg", "vob", "m2ts", "gif", "", ".", "mp4.mkv"}) {
    EXPECT_EQ(CheckFile(format), METADATA_ERROR_FORMAT) << format;
  }
  EXPECT_EQ(CheckFile(nullptr), METADATA_ERROR_ARGUMENT);
}

TEST(BadInput, RealFilesOfUnwritableContainersAreRefusedAndKept) {
  TempFolder folder;
  for (const auto& [extension, codecs] : {std::pair{"mkv", QStringList{"-c:v", "mpeg4", "-c:a", "mp2"}},
                                          std::pair{"avi", QStringList{"-c:v", "mpeg4", "-c:a", "mp2"}},
                                          std::pair{"flv", QStringList{"-c:v", "flv1", "-c:a", "libmp3lame"}},
                                          std::pair{"ts", QStringList{"-c:v", "mpeg2video", "-c:a", "mp2"}}}) {
    const std::string name = std::string("clip.") + extension;
    const std::string path =
        folder.copy(tagtest::madeWithFfmpeg(name, codecs + QStringList{"-metadata", "title=Kept"}, true), name);
    std::string before = tagtest::fingerprint(path);
    EXPECT_EQ(tagtest::writeTags(path, {{METADATA_KEY_TITLE, "New"}}), METADATA_ERROR_FORMAT) << extension;
    EXPECT_EQ(tagtest::readTags(path).code, METADATA_ERROR_FORMAT) << extension;
    EXPECT_EQ(tagtest::fingerprint(path), before) << extension;
  }
}

TEST(BadInput, MissingFilesAndFoldersAreReported) {
  TempFolder folder;
  std::filesystem::create_directory(folder.file("folder.mp4"));
  for (std::string path : {folder.file("absent.mp3"), folder.file("no/such/folder.mp4"), folder.file("folder.mp4")}) {
    EXPECT_EQ(tagtest::readTags(path).code, METADATA_ERROR_NO_FILE) << path;
    EXPECT_EQ(tagtest::writeTags(path, {{METADATA_KEY_TITLE, "x"}}), METADATA_ERROR_NO_FILE) << path;
  }
  EXPECT_FALSE(std::filesystem::exists(folder.file("absent.mp3")));
}

TEST(BadInput, NullArgumentsAreRefused) {
  MetaDataInfo* record = nullptr;
  EXPECT_EQ(GetMetaDataInfo(nullptr, &record, nullptr), METADATA_ERROR_ARGUMENT);
  EXPECT_EQ(GetMetaDataInfo("/tmp/a.mp3", nullptr, nullptr), METADATA_ERROR_ARGUMENT);
  EXPECT_EQ(SetMetaDataInfo("/tmp/a.mp3", nullptr), METADATA_ERROR_ARGUMENT);
  EXPECT_EQ(SetMetaDataInfo(nullptr, tagtest::makeRecord({}).get()), METADATA_ERROR_ARGUMENT);
  FreeMetaDataInfo(nullptr);
  FreeMetaDataInfo(&record);
  EXPECT_EQ(record, nullptr);
}

TEST(BadInput, MalformedRecordsAreRefusedBeforeTheFileIsTouched) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("mp3"), folder);
  std::string original = tagtest::fingerprint(media);
  std::vector<std::unique_ptr<MetaDataInfo>> records;
  for (int32_t count : {-1, METADATA_MAX_ITEMS + 1, 1 << 30}) {
    records.push_back(tagtest::makeRecord({{METADATA_KEY_TITLE, "t"}}));
    records.back()->count = count;
  }
  for (int32_t key : {0, -4, METADATA_LAST_KEY + 1}) records.push_back(tagtest::makeRecord({{key, "t"}}));
  records.push_back(tagtest::makeRecord({{METADATA_KEY_TITLE, "t"}}));
  std::ranges::fill(records.back()->items[0].value, 'a');  // no terminating zero
  for (const char* notUtf8 : {"\xC3", "caf\xE9", "\xED\xA0\x80", "\xC0\xAF"}) {
    records.push_back(tagtest::makeRecord({{METADATA_KEY_TITLE, "t"}, {METADATA_KEY_ARTIST, notUtf8}}));
  }
  for (const char* notNumberOverTotal : {"x", "3/", "/3", "3/4/5", "-1", "3 of 4", "1.5"}) {
    records.push_back(tagtest::makeRecord({{METADATA_KEY_TITLE, "t"}, {METADATA_KEY_DISK, notNumberOverTotal}}));
  }
  for (const auto& record : records) EXPECT_EQ(SetMetaDataInfo(media.c_str(), record.get()), METADATA_ERROR_RECORD);
  EXPECT_EQ(tagtest::fingerprint(media), original);
}

TEST(BadInput, ValueTheFormatCannotHoldIsRefused) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("m4v"), folder);
  std::string original = tagtest::fingerprint(media);
  // MP4 keeps season and episode as numbers.
  EXPECT_EQ(tagtest::writeTags(media, {{METADATA_KEY_TITLE, "t"}, {METADATA_KEY_TV_SEASON, "Season one"}}),
            METADATA_ERROR_VALUE);
  EXPECT_EQ(tagtest::fingerprint(media), original);
}

TEST(BadInput, MissingOrBrokenCoverPictureIsRefused) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("flac"), folder);
  std::string original = tagtest::fingerprint(media);
  std::string jpeg = tagtest::readFile(folder.picture("good.jpg"));
  tagtest::writeFile(folder.file("text.jpg"), "not a picture at all");
  tagtest::writeFile(folder.file("truncated.jpg"), jpeg.substr(0, 20));
  for (std::string picture :
       {folder.file("absent.png"), folder.file("text.jpg"), folder.file("truncated.jpg"), folder.path()}) {
    EXPECT_EQ(tagtest::writeTags(media, {{METADATA_KEY_TITLE, "t"}, {METADATA_KEY_IMAGE, picture}}),
              METADATA_ERROR_PICTURE)
        << picture;
    EXPECT_EQ(tagtest::fingerprint(media), original);
  }
}

}  // namespace
