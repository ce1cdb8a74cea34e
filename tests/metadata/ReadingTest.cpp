// Reading tags that other programs wrote, and the limits of the record.
#include <gtest/gtest.h>

#include "IndependentReaders.h"
#include "MediaFormats.h"
#include "TagAccess.h"

namespace {

using tagtest::TempFolder;

struct ForeignFile {
  std::string format;
  QStringList extraOptions;
  std::string expectedTrack;  // what survives of "3/12" in that format's field
};

std::ostream& operator<<(std::ostream& out, const ForeignFile& file) { return out << file.format; }

class TagsWrittenByFfmpeg : public testing::TestWithParam<ForeignFile> {};

TEST_P(TagsWrittenByFfmpeg, AreRead) {
  const tagtest::MediaFormat& format = tagtest::formatNamed(GetParam().format);
  const std::string path = tagtest::madeWithFfmpeg(
      "foreign." + format.extension,
      format.ffmpegOptions + GetParam().extraOptions +
          QStringList{"-metadata", "title=Foreign title", "-metadata", "artist=Foreign artist", "-metadata",
                      "album=Foreign album", "-metadata", "genre=Jazz", "-metadata", "track=3/12"},
      format.hasVideo);

  tagtest::ReadResult read = tagtest::readTags(path);
  ASSERT_EQ(read.code, METADATA_OK);
  EXPECT_EQ(read.byKey[METADATA_KEY_TITLE], "Foreign title");
  EXPECT_EQ(read.byKey[METADATA_KEY_ARTIST], "Foreign artist");
  EXPECT_EQ(read.byKey[METADATA_KEY_ALBUM], "Foreign album");
  EXPECT_EQ(read.byKey[METADATA_KEY_GENRE], "Jazz");
  EXPECT_EQ(read.byKey[METADATA_KEY_TRACK], GetParam().expectedTrack);
}

// Where only "3" survives, the tags are read from a simpler companion tag that
// has no total. Not listed: FFmpeg writes MOV and 3GP tags into QuickTime and
// 3GPP user-data boxes, which are not read (only the iTunes-style item list
// is), and it cannot write Musepack or APE files at all.
INSTANTIATE_TEST_SUITE_P(Formats, TagsWrittenByFfmpeg,
                         testing::Values(ForeignFile{"mp4", {}, "3/12"}, ForeignFile{"m4a", {}, "3/12"},
                                         ForeignFile{"mp3", {}, "3/12"}, ForeignFile{"flac", {}, "3/12"},
                                         ForeignFile{"ogg_vorbis", {}, "3/12"}, ForeignFile{"opus", {}, "3/12"},
                                         ForeignFile{"wma", {}, "3/12"},
                                         ForeignFile{"aiff", {"-write_id3v2", "1"}, "3/12"},
                                         ForeignFile{"wav", {}, "3"}, ForeignFile{"wavpack", {}, "3/12"},
                                         ForeignFile{"tta", {}, "3"}),
                         [](const auto& info) { return info.param.format; });

TEST(Reading, ValuesLongerThanTheRecordFieldAreCutAtACharacterBoundary) {
  std::string title;
  for (int i = 0; i < 2500; ++i) title += "é";  // 5,000 bytes of two-byte characters
  const std::string path = tagtest::madeWithFfmpeg(
      "long.flac", {"-c:a", "flac", "-metadata", "title=" + QString::fromStdString(title)}, false);

  tagtest::ReadResult read = tagtest::readTags(path);
  ASSERT_EQ(read.code, METADATA_OK);
  std::string cut = read.byKey[METADATA_KEY_TITLE];
  EXPECT_EQ(cut.size(), 4094u);
  EXPECT_TRUE(title.starts_with(cut));
}

TEST(Reading, SeveralGenresGiveTheFirstAndTheWholeList) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("flac"), folder);
  ASSERT_TRUE(tagtest::runWithMutagen(
      "import mutagen, sys\nf = mutagen.File(sys.argv[1])\nf['GENRE'] = ['Rock', 'Jazz']\nf.save()", media));
  tagtest::ReadResult read = tagtest::readTags(media);
  EXPECT_EQ(read.byKey[METADATA_KEY_GENRE], "Rock");
  EXPECT_EQ(read.byKey[METADATA_KEY_GENRES], "Rock; Jazz");
}

// The fixed 128-byte ID3v1 layout: "TAG", then title, artist and album in 30
// bytes each, the year in 4, the comment in 30 and the genre number.
std::string id3v1Block(const std::string& title, const std::string& artist) {
  auto field = [](const std::string& text, size_t size) { return text + std::string(size - text.size(), '\0'); };
  return "TAG" + field(title, 30) + field(artist, 30) + field("", 30) + "1999" + field("", 30) + '\xFF';
}

TEST(Reading, AnId3v1OnlyFileIsReadAndKeptInStep) {
  TempFolder folder;
  const std::string path = folder.file("old.mp3");
  tagtest::writeFile(path, tagtest::readFile(tagtest::madeWithFfmpeg(
                               "old.mp3", {"-c:a", "libmp3lame", "-id3v2_version", "0"}, false)) +
                               id3v1Block("Old", "Band"));
  tagtest::ReadResult read = tagtest::readTags(path);
  EXPECT_EQ(read.byKey[METADATA_KEY_TITLE], "Old");
  EXPECT_EQ(read.byKey[METADATA_KEY_ARTIST], "Band");
  EXPECT_EQ(read.byKey[METADATA_KEY_YEAR], "1999");

  ASSERT_EQ(tagtest::writeTags(path, {{METADATA_KEY_TITLE, "Renamed"}}), METADATA_OK);
  std::string bytes = tagtest::readFile(path);
  std::string id3v1 = bytes.substr(bytes.size() - 128);
  EXPECT_TRUE(id3v1.starts_with("TAGRenamed")) << "the ID3v1 tag still has the old title";
  EXPECT_NE(id3v1.find("Band"), std::string::npos);
  EXPECT_EQ(tagtest::readTags(path).byKey[METADATA_KEY_ARTIST], "Band");
  EXPECT_EQ(tagtest::mutagenTags(path).values("TIT2"), std::vector<std::string>{"Renamed"});
}

}  // namespace
