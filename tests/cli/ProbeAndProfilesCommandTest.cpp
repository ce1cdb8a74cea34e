// The videoconverter program's probe and profiles commands, run as a user
// runs them, on files made by ffmpeg.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "GeneratedMedia.h"
#include "ProgramRun.h"

namespace {

class CommandLine : public testing::Test {
 protected:
  testmedia::Folder media;
};

TEST_F(CommandLine, ProbeJsonDescribesEachFileAndNamesTheOneThatFails) {
  const QString clip = media.clip(QStringLiteral("two voices.mkv"), 1.5, 2);
  const QString song = media.audio(QStringLiteral("song.flac"), 1);
  const QString text = media.write(QStringLiteral("notes.mp4"), "not a film\n");

  const ProgramResult result = runProgram({"probe", clip, text, song, "--json"});
  EXPECT_EQ(result.exitCode, 1) << result.errorOutput.toStdString();
  QJsonParseError error;
  const QJsonArray reports = QJsonDocument::fromJson(result.standardOutput.toUtf8(), &error).array();
  ASSERT_EQ(error.error, QJsonParseError::NoError) << result.standardOutput.toStdString();
  ASSERT_EQ(reports.size(), 3);

  const QJsonObject video = reports[0].toObject();
  EXPECT_EQ(video[QStringLiteral("file")].toString(), clip);
  EXPECT_NEAR(video[QStringLiteral("duration_us")].toDouble() / 1e6, testmedia::duration(clip), 0.05);
  EXPECT_EQ(video[QStringLiteral("width")].toInt(), 320);
  EXPECT_EQ(video[QStringLiteral("height")].toInt(), 240);
  EXPECT_DOUBLE_EQ(video[QStringLiteral("frame_rate")].toDouble(), 25.0);
  EXPECT_TRUE(video[QStringLiteral("has_video")].toBool());
  const QJsonArray streams = video[QStringLiteral("audio_streams")].toArray();
  ASSERT_EQ(streams.size(), 2);
  EXPECT_EQ(streams[1].toObject()[QStringLiteral("sample_rate")].toInt(), 44100);
  EXPECT_FALSE(streams[0].toObject()[QStringLiteral("name")].toString().isEmpty());
  EXPECT_TRUE(video[QStringLiteral("thumbnail")].toString().endsWith(QStringLiteral(".bmp")));

  EXPECT_EQ(reports[1].toObject()[QStringLiteral("error")].toString(),
            QStringLiteral("This file is not in a recognizable format. (notes.mp4)"));

  const QJsonObject audio = reports[2].toObject();
  EXPECT_FALSE(audio[QStringLiteral("has_video")].toBool());
  EXPECT_EQ(audio[QStringLiteral("audio_streams")].toArray().size(), 1);
  EXPECT_TRUE(audio[QStringLiteral("thumbnail")].isNull());
}

TEST_F(CommandLine, ProbeTextPrintsTheFailureTextAndSucceedsOnlyWhenEveryFileDoes) {
  const QString song = media.audio(QStringLiteral("song.wav"), 1);
  const ProgramResult good = runProgram({"probe", song});
  EXPECT_EQ(good.exitCode, 0) << good.errorOutput.toStdString();
  EXPECT_TRUE(good.standardOutput.contains(QStringLiteral("song.wav")));

  const ProgramResult bad = runProgram({"probe", media.path(QStringLiteral("gone.avi"))});
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_TRUE(bad.errorOutput.contains(QStringLiteral("This file is not in a recognizable format. (gone.avi)")))
      << bad.errorOutput.toStdString();

  EXPECT_EQ(runProgram({"probe"}).exitCode, 2);
}

TEST_F(CommandLine, ProfilesListsTheShippedCatalogueByGroup) {
  const ProgramResult result = runProgram({"profiles"});
  EXPECT_EQ(result.exitCode, 0) << result.errorOutput.toStdString();
  const QStringList lines = result.standardOutput.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  ASSERT_FALSE(lines.isEmpty());
  EXPECT_EQ(lines.first(), QStringLiteral("General Video"));
  const auto avc = std::find_if(lines.begin(), lines.end(),
                                [](const QString& line) { return line.contains(QStringLiteral("MPEG-4 AVC")); });
  ASSERT_NE(avc, lines.end());
  EXPECT_TRUE(avc->contains(QStringLiteral("1001")) && avc->contains(QStringLiteral(".mp4")) &&
              avc->contains(QStringLiteral("libx264")));
  EXPECT_TRUE(lines.contains(QStringLiteral("Audio")));
}

}  // namespace
