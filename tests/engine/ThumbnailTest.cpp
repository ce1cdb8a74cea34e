// Thumbnails: upright, display-shaped BMP pictures of a representative frame.
#include <gtest/gtest.h>

#include <filesystem>

#include "ExternalTools.h"
#include "Probe.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

std::string thumbnailPath(const std::string& name) { return scratchFolder() + "/" + name + ".bmp"; }

// Probes with a thumbnail and reads the picture back through ffmpeg.
RgbPicture thumbnailOf(const std::string& sampleName) {
  const std::string path = thumbnailPath(sampleName);
  const Probed probed = probeFile(sample(sampleName), path);
  EXPECT_EQ(probed.code, 0);
  EXPECT_STREQ(probed.info.m_Thumbnail, path.c_str());
  EXPECT_EQ(ffprobeFields(path, "streams", "v:0")["codec_name"], "bmp");
  return decodePicture(path);
}

bool isMostly(const std::vector<double>& colour, int channel) {
  for (int other = 0; other < 3; ++other) {
    if (other != channel && colour[other] > colour[channel] / 2) return false;
  }
  return colour[channel] > 150;
}
constexpr int kRed = 0;
constexpr int kBlue = 2;

// Where the red half of a red and blue picture is: -1 left, 1 right, 0 neither.
int redSide(const RgbPicture& picture) {
  const int half = picture.width / 2;
  const std::vector<double> left = picture.meanColour(0, 0, half, picture.height);
  const std::vector<double> right = picture.meanColour(half, 0, picture.width - half, picture.height);
  if (isMostly(left, kRed) && isMostly(right, kBlue)) return -1;
  if (isMostly(right, kRed) && isMostly(left, kBlue)) return 1;
  return 0;
}

TEST(Thumbnail, IsAtMost160HighWithTheDisplayShapeSkipsABlackOpeningAndIsTurnedUpright) {
  const RgbPicture clip = thumbnailOf("clip.mp4");  // 320 x 240
  EXPECT_EQ(clip.height, 160);
  EXPECT_EQ(clip.width, 213);
  const RgbPicture small = thumbnailOf("clip.ts");  // 160 x 120 is never enlarged
  EXPECT_EQ(small.height, 120);
  EXPECT_EQ(small.width, 160);
  const RgbPicture stretched = thumbnailOf("anamorphic.mp4");  // 160 x 120 with 2:1 pixels
  EXPECT_EQ(stretched.height, 120);
  EXPECT_EQ(stretched.width, 320);

  const std::string video = sample("black-start.mp4");
  ASSERT_LT(decodePicture(video).meanBrightness(), 20) << "the sample should open on black";
  EXPECT_GT(thumbnailOf("black-start.mp4").meanBrightness(), 60);

  // Stored with red above blue and a quarter turn in the container.
  const RgbPicture shown = decodePicture(sample("rotated.mov"));
  const RgbPicture thumbnail = thumbnailOf("rotated.mov");
  ASSERT_EQ(thumbnail.width, shown.width);
  ASSERT_EQ(thumbnail.height, shown.height);
  ASSERT_NE(redSide(shown), 0) << "ffmpeg should show the halves side by side";
  EXPECT_EQ(redSide(thumbnail), redSide(shown));
}

TEST(Thumbnail, SecondFormTakesTheFrameAtTheGivenTime) {
  const std::string video = sample("red-then-blue.mp4");  // one second red, one second blue
  struct Case {
    int64_t timeUs;
    int colour;
  };
  for (const Case& wanted : {Case{500'000, kRed}, Case{1'500'000, kBlue}, Case{0, kRed}, Case{60'000'000, kBlue}}) {
    SCOPED_TRACE(wanted.timeUs);
    const std::string path = thumbnailPath("at-" + std::to_string(wanted.timeUs));
    DECODER_INFO info{};
    ASSERT_EQ(VideoConverter_GetMediaInfo2(video.c_str(), path.c_str(), &info, wanted.timeUs), 0);
    EXPECT_EQ(info.m_Width, 64);
    EXPECT_STREQ(info.m_Thumbnail, path.c_str());
    const RgbPicture picture = decodePicture(path);
    EXPECT_TRUE(isMostly(picture.meanColour(0, 0, picture.width, picture.height), wanted.colour));
  }
}

TEST(Thumbnail, AnUnwritableDestinationLeavesTheProbeIntactAndAWritableOneIsReplacedWhole) {
  const std::string missingFolder = scratchFolder() + "/no such folder";
  const Probed probed = probeFile(sample("clip.mp4"), missingFolder + "/thumb.bmp");
  ASSERT_EQ(probed.code, 0);
  EXPECT_EQ(probed.info.m_Width, 320);
  EXPECT_STREQ(probed.info.m_Thumbnail, "");
  EXPECT_FALSE(std::filesystem::exists(missingFolder));

  // A writable one replaces an older picture and leaves no partial file.
  const std::string path = thumbnailPath("replaced");
  ASSERT_EQ(probeFile(sample("clip.ts"), path).code, 0);
  ASSERT_EQ(probeFile(sample("clip.mp4"), path).code, 0);
  EXPECT_EQ(decodePicture(path).height, 160);
  for (const auto& entry : std::filesystem::directory_iterator(scratchFolder())) {
    EXPECT_EQ(entry.path().filename().string().find(".part"), std::string::npos) << entry.path();
  }
}

}  // namespace
}  // namespace enginetest
