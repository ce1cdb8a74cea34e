// `videoconverter frame` run as a user runs it: pictures of edited items at a
// time, judged by ffprobe, and the refusals.
#include <gtest/gtest.h>

#include <QFileInfo>

#include "GeneratedMedia.h"
#include "ProgramRun.h"

namespace {

class FrameCommand : public testing::Test {
 protected:
  void SetUp() override {
    media.clip(QStringLiteral("clip.mp4"), 3);
    media.audio(QStringLiteral("tone.m4a"), 1);
  }

  ProgramResult frame(const QStringList& arguments) const { return runProgram(QStringList{"frame"} + arguments, media.path()); }

  QMap<QString, QString> picture(const QString& name) const {
    return testmedia::ffprobe(media.path(name), QStringLiteral("streams"));
  }

  testmedia::Folder media;
};

TEST_F(FrameCommand, WritesThePictureOfTheEditedItemAtTheTimeAndSize) {
  ProgramResult result = frame({"clip.mp4", "--at", "1.5", "--output", "own.png"});
  ASSERT_EQ(result.exitCode, 0) << result.errorOutput.toStdString();
  EXPECT_EQ(result.standardOutput.trimmed(), media.path(QStringLiteral("own.png")));
  EXPECT_EQ(picture(QStringLiteral("own.png"))["codec_name"], "png");
  EXPECT_EQ(picture(QStringLiteral("own.png"))["width"], "320");

  // Turned on its side and trimmed: the time counts from the trim start, which must leave it inside.
  result = frame({"clip.mp4", "--rotate", "90", "--trim", "1-2", "--at", "0.5", "--size", "120x160", "--output",
                  "turned.jpg"});
  ASSERT_EQ(result.exitCode, 0) << result.errorOutput.toStdString();
  const QMap<QString, QString> turned = picture(QStringLiteral("turned.jpg"));
  EXPECT_EQ(turned["codec_name"], "mjpeg");
  EXPECT_EQ(turned["width"], "120");
  EXPECT_EQ(turned["height"], "160");
}

TEST_F(FrameCommand, RefusesWhatGivesNoPictureWithAReason) {
  const struct {
    QStringList arguments;
    int exitCode;
    const char* says;
  } cases[] = {
      {{"clip.mp4", "--at", "9", "--output", "late.png"}, 1, "past the end"},
      {{"clip.mp4", "--trim", "0-1", "--at", "2", "--output", "late.png"}, 1, "past the end"},
      {{"tone.m4a", "--at", "0.5", "--output", "tone.png"}, 1, "has no pictures"},
      {{"clip.mp4", "--at", "1", "--output", "no/such/folder/x.png"}, 1, "Cannot write"},
      {{"clip.mp4", "--at", "1", "--output", "x.gif"}, 2, ".png or .jpg"},
      {{"clip.mp4", "--output", "x.png"}, 2, "--at is needed"},
      {{"clip.mp4", "--at", "1", "--output", "x.png", "--size", "wide"}, 2, "--size takes"},
  };
  for (const auto& [arguments, exitCode, says] : cases) {
    const ProgramResult result = frame(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << arguments.join(' ').toStdString();
    EXPECT_TRUE(result.errorOutput.contains(QLatin1String(says))) << result.errorOutput.toStdString();
  }
  EXPECT_FALSE(QFileInfo::exists(media.path(QStringLiteral("late.png"))));
}

}  // namespace
