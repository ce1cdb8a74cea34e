// Every key through every writable format: written, read back by the library
// and by independent readers, rewritten, and the media still playable.
#include <algorithm>

#include <gtest/gtest.h>

#include "IndependentReaders.h"
#include "MediaFormats.h"
#include "TagAccess.h"

namespace {

using tagtest::MediaFormat;
using tagtest::TempFolder;

const tagtest::Entries kTextEntries{
    {METADATA_KEY_TITLE, "Tïtle ✓ one"},
    {METADATA_KEY_COMMENT, "Comment two"},
    {METADATA_KEY_ARTIST, "Artist three"},
    {METADATA_KEY_GENRE, "Genre four"},
    {METADATA_KEY_COMPOSER, "Composer six"},
    {METADATA_KEY_ALBUM, "Album seven"},
    {METADATA_KEY_ALBUM_ARTIST, "Album artist eight"},
    {METADATA_KEY_TRACK, "3/12"},
    {METADATA_KEY_DISK, "1/2"},
    {METADATA_KEY_GROUPING, "Grouping twelve"},
    {METADATA_KEY_YEAR, "2021"},
    {METADATA_KEY_TV_SHOW_NAME, "Show fourteen"},
    {METADATA_KEY_TV_SEASON, "5"},
    {METADATA_KEY_TV_EPISODE, "7"},
    {METADATA_KEY_TV_EPISODE_ID, "Episode id sixteen"},
    {METADATA_KEY_DESCRIPTION, "Description eighteen"},
};

tagtest::Entries withCover(const std::string& picturePath) {
  tagtest::Entries entries = kTextEntries;
  entries.emplace_back(METADATA_KEY_IMAGE, picturePath);
  return entries;
}

class EveryFormat : public testing::TestWithParam<MediaFormat> {
 protected:
  TempFolder folder;
  std::string media = tagtest::makeMedia(GetParam(), folder);
};

TEST_P(EveryFormat, EveryKeyReadsBackAsWrittenHereAndElsewhereAndTheMediaStillDecodes) {
  const std::string picture = folder.picture("cover.jpg");
  ASSERT_EQ(tagtest::writeTags(media, withCover(picture)), METADATA_OK);

  const std::string thumbnail = folder.file("thumbnail.bmp");
  tagtest::ReadResult read = tagtest::readTags(media, thumbnail);
  ASSERT_EQ(read.code, METADATA_OK);
  for (const auto& [key, value] : kTextEntries) EXPECT_EQ(read.byKey[key], value) << "key " << key;
  EXPECT_EQ(read.byKey[METADATA_KEY_GENRES], "Genre four");
  EXPECT_EQ(read.byKey[METADATA_KEY_IMAGE], thumbnail);
  EXPECT_EQ(read.entries.size(), kTextEntries.size() + 2);
  EXPECT_TRUE(std::ranges::is_sorted(read.entries, {}, &std::pair<int, std::string>::first));
  EXPECT_TRUE(tagtest::readFile(thumbnail).starts_with("BM"));

  tagtest::MutagenView mutagen = tagtest::mutagenTags(media, picture);
  ASSERT_TRUE(mutagen.readable) << mutagen.output;
  for (const auto& [key, value] : kTextEntries) {
    if (key == METADATA_KEY_TRACK || key == METADATA_KEY_DISK) continue;
    EXPECT_TRUE(mutagen.hasValue(value)) << "key " << key << " in\n" << mutagen.output;
  }
  // Track numbers are "3/12" in one field, or the number and the total in two.
  EXPECT_TRUE(mutagen.hasValue("3/12") || (mutagen.hasValue("3") && mutagen.hasValue("12"))) << mutagen.output;
  EXPECT_TRUE(mutagen.coverMatches) << "the embedded JPEG is not the picture file's bytes";

  const QMap<QString, QString> probed = testmedia::tags(QString::fromStdString(media));
  EXPECT_EQ(probed["title"], "Tïtle ✓ one");
  EXPECT_EQ(probed["artist"], "Artist three");
  EXPECT_EQ(probed["album"], "Album seven");

  if (GetParam().decodable) {
    EXPECT_EQ(testmedia::runFfmpeg({"-i", QString::fromStdString(media), "-f", "null", "-"}), QString());
  }
}

TEST_P(EveryFormat, LaterWritesChangeOnlyTheirKeys) {
  ASSERT_EQ(tagtest::writeTags(media, withCover(folder.picture("cover.png"))), METADATA_OK);
  ASSERT_EQ(tagtest::writeTags(media, {{METADATA_KEY_TITLE, "Second title"},
                                       {METADATA_KEY_COMMENT, ""},
                                       {METADATA_KEY_TRACK, ""},
                                       {METADATA_KEY_IMAGE, ""}}),
            METADATA_OK);

  tagtest::ReadResult read = tagtest::readTags(media, folder.file("thumbnail.bmp"));
  ASSERT_EQ(read.code, METADATA_OK);
  EXPECT_EQ(read.byKey[METADATA_KEY_TITLE], "Second title");
  EXPECT_FALSE(read.byKey.contains(METADATA_KEY_COMMENT));
  EXPECT_FALSE(read.byKey.contains(METADATA_KEY_TRACK));
  EXPECT_FALSE(read.byKey.contains(METADATA_KEY_IMAGE));
  EXPECT_EQ(read.byKey[METADATA_KEY_ARTIST], "Artist three");
  EXPECT_EQ(read.byKey[METADATA_KEY_DISK], "1/2");
  EXPECT_EQ(read.byKey[METADATA_KEY_DESCRIPTION], "Description eighteen");
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryFormat, testing::ValuesIn(tagtest::writableFormats()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
