// Cover pictures in and out: every picture type embedded, the embedded
// picture given back as a BMP file with the same pixels.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "IndependentReaders.h"
#include "MediaFormats.h"
#include "TagAccess.h"

namespace {

using tagtest::TempFolder;

// The picture's pixels as packed RGB, decoded by ffmpeg.
std::string rgbPixels(const std::string& picture) {
  const testmedia::ProgramOutput decoded = testmedia::run(
      "ffmpeg",
      {"-nostdin", "-v", "error", "-i", QString::fromStdString(picture), "-f", "rawvideo", "-pix_fmt", "rgb24", "-"});
  return decoded.exitCode == 0 ? decoded.output.toStdString() : std::string();
}

// Codec and size of the first picture stream, such as an embedded cover.
std::string pictureStream(const std::string& path) {
  const QMap<QString, QString> stream = testmedia::ffprobe(QString::fromStdString(path), "streams", "v:0");
  return (stream["codec_name"] + "," + stream["width"] + "," + stream["height"]).toStdString();
}

double meanDifference(const std::string& a, const std::string& b) {
  if (a.size() != b.size() || a.empty()) return 255;
  double total = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    total += std::abs(static_cast<unsigned char>(a[i]) - static_cast<unsigned char>(b[i]));
  }
  return total / static_cast<double>(a.size());
}

struct PictureType {
  std::string extension;
  std::string embeddedCodec;  // what the file carries: JPEG and PNG as given, the rest converted to PNG
};

std::ostream& operator<<(std::ostream& out, const PictureType& type) { return out << type.extension; }

class CoverFromPicture : public testing::TestWithParam<PictureType> {};

TEST_P(CoverFromPicture, IsEmbeddedAndComesBackAsBmpWithItsPixels) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("mp3"), folder);
  std::string picture = folder.picture("cover." + GetParam().extension);
  ASSERT_EQ(tagtest::writeTags(media, {{METADATA_KEY_IMAGE, picture}}), METADATA_OK);

  EXPECT_EQ(pictureStream(media), GetParam().embeddedCodec + ",64,48");
  bool keptAsGiven = GetParam().embeddedCodec != "png" || GetParam().extension == "png";
  EXPECT_EQ(tagtest::mutagenTags(media, picture).coverMatches, keptAsGiven);

  std::string thumbnail = folder.file("thumbnail.bmp");
  tagtest::ReadResult read = tagtest::readTags(media, thumbnail);
  ASSERT_EQ(read.byKey[METADATA_KEY_IMAGE], thumbnail);
  EXPECT_EQ(pictureStream(thumbnail), "bmp,64,48");
  // Both sides decode the same bits, so only rounding may differ; a wrong colour
  // range or swapped channels differ by several levels on average.
  EXPECT_LT(meanDifference(rgbPixels(thumbnail), rgbPixels(picture)), 0.5);
}

INSTANTIATE_TEST_SUITE_P(Types, CoverFromPicture,
                         testing::Values(PictureType{"jpg", "mjpeg"}, PictureType{"png", "png"},
                                         PictureType{"bmp", "png"}, PictureType{"gif", "png"},
                                         PictureType{"webp", "png"}, PictureType{"tiff", "png"}),
                         [](const auto& info) { return info.param.extension; });

TEST(CoverArt, ThumbnailOnlyForACoverThatCanBeSaved) {
  TempFolder folder;
  std::string media = tagtest::makeMedia(tagtest::formatNamed("m4a"), folder);
  tagtest::ReadResult withoutCover = tagtest::readTags(media, folder.file("thumbnail.bmp"));
  EXPECT_EQ(withoutCover.code, METADATA_OK);
  EXPECT_FALSE(withoutCover.byKey.contains(METADATA_KEY_IMAGE));
  EXPECT_FALSE(std::filesystem::exists(folder.file("thumbnail.bmp")));

  ASSERT_EQ(tagtest::writeTags(media,
                               {{METADATA_KEY_TITLE, "With cover"}, {METADATA_KEY_IMAGE, folder.picture("cover.png")}}),
            METADATA_OK);
  tagtest::ReadResult unsavable = tagtest::readTags(media, folder.file("missing/thumbnail.bmp"));
  EXPECT_EQ(unsavable.code, METADATA_OK);
  EXPECT_EQ(unsavable.byKey[METADATA_KEY_TITLE], "With cover");
  EXPECT_FALSE(unsavable.byKey.contains(METADATA_KEY_IMAGE));
}

}  // namespace
