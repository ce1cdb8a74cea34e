// `videoconverter convert` run as a user runs it, on files made by ffmpeg,
// with the outputs judged by ffprobe.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <csignal>

#include "Action/MainFormController.h"
#include "GeneratedMedia.h"
#include "ProgramRun.h"

namespace {

constexpr int kHangMs = 120000;

class ConvertCommand : public testing::Test {
 protected:
  void SetUp() override {
    media.clip(QStringLiteral("clip.mp4"), 4);
    media.clip(QStringLiteral("small.mkv"), 2);
  }

  ProgramResult convert(const QStringList& arguments) const {
    return runProgram(QStringList{"convert", "--output", output.path()} + arguments, media.path());
  }

  testmedia::Folder media;
  testmedia::Folder output;
};

TEST_F(ConvertCommand, EditsGivenAsOptionsReachTheOutput) {
  const ProgramResult result = convert({"clip.mp4", "--profile", "MPEG-4 AVC", "--trim", "1-3", "--resolution",
                                        "160x120", "--effect", "gray", "--volume", "50", "--audio-bitrate", "96"});
  ASSERT_EQ(result.exitCode, 0) << result.errorOutput.toStdString();
  EXPECT_TRUE(result.standardOutput.contains("Done: " + output.path(QStringLiteral("clip.mp4"))))
      << result.standardOutput.toStdString();
  // The summary: the output with its size and length.
  const QString written = output.path(QStringLiteral("clip.mp4"));
  EXPECT_TRUE(result.standardOutput.contains(
      QRegularExpression("\\n  " + QRegularExpression::escape(written) +
                         "  [0-9.]+ [kM]?B  00:00:0[12]\\n1 converted, 0 failed, 0 cancelled.")))
      << result.standardOutput.toStdString();
  const QMap<QString, QString> picture = testmedia::ffprobe(written, "streams", "v:0");
  EXPECT_EQ(picture["width"], "160");
  EXPECT_EQ(picture["height"], "120");
  EXPECT_NEAR(testmedia::duration(written), 2.0, 0.1);
  EXPECT_EQ(testmedia::streamCount(written, "audio"), 1);
}

TEST_F(ConvertCommand, TagOptionsReplaceTheInputsTagsInEveryOutput) {
  const ProgramResult result = convert({"clip.mp4", "--profile", "MPEG-4 AVC", "--split-clips", "2", "--title", "Given",
                                        "--artist", "Somebody", "--track", "3/9"});
  ASSERT_EQ(result.exitCode, 0) << result.errorOutput.toStdString();
  for (const char* piece : {"clip_0.mp4", "clip_1.mp4"}) {
    const QMap<QString, QString> tags = testmedia::tags(output.path(QLatin1String(piece)));
    EXPECT_EQ(tags["title"], "Given") << piece;
    EXPECT_EQ(tags["artist"], "Somebody") << piece;
    EXPECT_EQ(tags["track"], "3/9") << piece;
  }

  const ProgramResult refused = convert({"clip.mp4", "--track", "9/3"});
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_TRUE(refused.errorOutput.contains(QStringLiteral("--track takes N or N/TOTAL")));
}

TEST_F(ConvertCommand, MergingJoinsTheFilesAndSplittingCutsThePieces) {
  const ProgramResult merged = convert({"--merge", "clip.mp4", "small.mkv", "--profile", "H.264 MKV"});
  ASSERT_EQ(merged.exitCode, 0) << merged.errorOutput.toStdString();
  EXPECT_TRUE(merged.standardOutput.contains(QStringLiteral("Converting 1/1: Merge Video -> ")));
  EXPECT_NEAR(testmedia::duration(output.path("Merge Video.mkv")), 6.0, 0.15);

  const ProgramResult split = convert({"clip.mp4", "--profile", "1301", "--split-clips", "2"});
  ASSERT_EQ(split.exitCode, 0) << split.errorOutput.toStdString();
  for (const char* piece : {"clip_0.mp3", "clip_1.mp3"}) {
    EXPECT_EQ(testmedia::streamCount(output.path(QLatin1String(piece)), "video"), 0) << piece;
    EXPECT_NEAR(testmedia::duration(output.path(QLatin1String(piece))), 2.0, 0.1) << piece;
  }
}

TEST_F(ConvertCommand, BadInputFailsWithTheReasonAndTheOtherFilesAreStillConverted) {
  media.write(QStringLiteral("notes.mp4"), "A shopping list, not a film.\n");
  const ProgramResult undecodable = convert({"notes.mp4", "small.mkv"});
  EXPECT_EQ(undecodable.exitCode, 1);
  EXPECT_TRUE(undecodable.errorOutput.contains(QStringLiteral("There is 1 file:\nnotes.mp4\n Decode failed")))
      << undecodable.errorOutput.toStdString();
  EXPECT_TRUE(QFileInfo::exists(output.path(QStringLiteral("small.mp4"))));

  // A picture file that holds no picture passes every check before the converter reads it.
  media.write(QStringLiteral("logo.png"), "not a picture");
  const ProgramResult unreadable = convert({"clip.mp4", "--watermark-image", "logo.png"});
  EXPECT_EQ(unreadable.exitCode, 1);
  EXPECT_TRUE(unreadable.errorOutput.contains(QStringLiteral("Failed: clip.mp4: ")));
  EXPECT_TRUE(unreadable.errorOutput.contains(QStringLiteral("logo.png"))) << unreadable.errorOutput.toStdString();
  EXPECT_FALSE(QFileInfo::exists(output.path(QStringLiteral("clip.mp4"))));

  const ProgramResult outside = convert({"clip.mp4", "--crop", "100,100,300,200"});
  EXPECT_EQ(outside.exitCode, 1);
  EXPECT_TRUE(outside.errorOutput.contains(QStringLiteral("--crop 100,100,300,200 does not fit the 320x240 picture")));

  const ProgramResult loud = convert({"clip.mp4", "--volume", "500"});
  EXPECT_EQ(loud.exitCode, 2);
  EXPECT_TRUE(loud.errorOutput.contains(QStringLiteral("--volume takes a whole number from 0 to 400, not '500'")));
  EXPECT_EQ(convert({"clip.mp4", "--profile", "No Such Profile"}).exitCode, 2);
  EXPECT_EQ(convert({"clip.mp4", "--merge", "--split-minutes", "1"}).exitCode, 2);
}

TEST_F(ConvertCommand, ACutFileIsConvertedAsFarAsItGoesWithTheWarningBesideItsOutput) {
  // Ten seconds with the index in front, cut to 40 %: the index still lists all ten.
  const QByteArray whole = media.read(testmedia::made(
      QStringLiteral("ten-seconds.mp4"),
      testmedia::picture(10) + testmedia::tone(10) + QStringList{"-pix_fmt", "yuv420p", "-movflags", "+faststart"}));
  media.write(QStringLiteral("cut.mp4"), whole.left(whole.size() * 4 / 10));

  const ProgramResult cut = convert({"cut.mp4"});
  ASSERT_EQ(cut.exitCode, 0) << cut.errorOutput.toStdString();
  EXPECT_TRUE(cut.errorOutput.contains(QStringLiteral("Warning: cut.mp4: The input ends at ")))
      << cut.errorOutput.toStdString();
  static const QRegularExpression besideOutput(
      QStringLiteral("cut\\.mp4 .*\\(warning: The input ends at 00:00:0(\\d) of 00:00:10\\)"));
  const QRegularExpressionMatch warning = besideOutput.match(cut.standardOutput);
  ASSERT_TRUE(warning.hasMatch()) << cut.standardOutput.toStdString();
  const double endsAt = warning.captured(1).toDouble();
  const double length = testmedia::duration(output.path(QStringLiteral("cut.mp4")));
  EXPECT_GE(length, endsAt);
  EXPECT_LT(length, endsAt + 1.1);
}

TEST_F(ConvertCommand, ACoverIntoWindowsMediaIsConvertedOnlyWhenYesIsGiven) {
  media.tagged(QStringLiteral("covered.mp3"), {"title=Song"}, "png");

  const ProgramResult refused = convert({"covered.mp3", "--profile", "WMA"});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_TRUE(refused.errorOutput.contains(QLatin1String(MainFormController::kCoverQuestion) + " [YES/NO] NO"))
      << refused.errorOutput.toStdString();
  EXPECT_TRUE(refused.errorOutput.contains(QStringLiteral("Nothing was converted.")));
  EXPECT_FALSE(QFileInfo::exists(output.path(QStringLiteral("covered.wma"))));

  const ProgramResult accepted = convert({"covered.mp3", "--profile", "WMA", "--yes"});
  ASSERT_EQ(accepted.exitCode, 0) << accepted.errorOutput.toStdString();
  EXPECT_TRUE(accepted.errorOutput.contains(QStringLiteral(" [YES/NO] YES")));
  EXPECT_TRUE(QFileInfo::exists(output.path(QStringLiteral("covered.wma"))));
}

TEST_F(ConvertCommand, CtrlCStopsTheRunningFileAndSkipsTheRest) {
  media.clip(QStringLiteral("long.avi"), 60);
  QProcess process;
  process.setWorkingDirectory(media.path());
  process.start(programPath(), {"convert", "long.avi", "small.mkv", "--output", output.path()});
  ASSERT_TRUE(process.waitForStarted(kHangMs));
  QString printed;
  while (!printed.contains(QStringLiteral("Converting 1/2")) && process.waitForReadyRead(kHangMs)) {
    printed += QString::fromUtf8(process.readAllStandardOutput());
  }
  ASSERT_TRUE(printed.contains(QStringLiteral("Converting 1/2"))) << printed.toStdString();
  ::kill(static_cast<pid_t>(process.processId()), SIGINT);

  const ProgramResult result = finishProgram(process);
  EXPECT_EQ(result.exitCode, 130) << result.errorOutput.toStdString();
  EXPECT_TRUE(result.errorOutput.contains(QStringLiteral("Cancelled: long.avi")));
  EXPECT_TRUE(result.errorOutput.contains(QStringLiteral("Cancelled: small.mkv: Cancelled before it started.")));
  EXPECT_FALSE(result.errorOutput.contains(QLatin1String(MainFormController::kCompleteAlert)));
  EXPECT_TRUE(result.standardOutput.contains(QStringLiteral("0 converted, 0 failed, 2 cancelled.")));
  EXPECT_FALSE(QFileInfo::exists(output.path(QStringLiteral("small.mp4"))));
}

}  // namespace
