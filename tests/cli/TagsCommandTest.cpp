// The videoconverter program's tags command, run as a user runs it, on files
// made by ffmpeg.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "GeneratedMedia.h"
#include "ProgramRun.h"

namespace {

ProgramResult runTags(const QStringList& arguments) {
  return runProgram(QStringList{QStringLiteral("tags")} + arguments);
}

class TagsCommand : public testing::Test {
 protected:
  testmedia::Folder media;
};

TEST_F(TagsCommand, JsonListsEveryTagAndTheSavedCoverAndNamesWhatCannotBeRead) {
  const QString clip =
      media.tagged(QStringLiteral("clip.mp4"), {"title=Ünïcödé", "album=Album", "track=3/12", "disc=2"}, "png");
  const QString matroska = media.tagged(QStringLiteral("clip.mkv"), {"title=Hidden"});
  const QString gone = media.path(QStringLiteral("gone.mp3"));

  const ProgramResult result = runTags({clip, matroska, gone, "--json"});
  EXPECT_EQ(result.exitCode, 1) << result.errorOutput.toStdString();
  QJsonParseError error;
  const QJsonArray reports = QJsonDocument::fromJson(result.standardOutput.toUtf8(), &error).array();
  ASSERT_EQ(error.error, QJsonParseError::NoError) << result.standardOutput.toStdString();
  ASSERT_EQ(reports.size(), 3);

  const QJsonObject tags = reports[0].toObject();
  EXPECT_EQ(tags[QStringLiteral("file")].toString(), clip);
  EXPECT_EQ(tags[QStringLiteral("title")].toString(), QStringLiteral("Ünïcödé"));
  EXPECT_EQ(tags[QStringLiteral("album")].toString(), QStringLiteral("Album"));
  EXPECT_EQ(tags[QStringLiteral("artist")].toString(), QString());
  EXPECT_EQ(tags[QStringLiteral("curTrackNum")].toInt(), 3);
  EXPECT_EQ(tags[QStringLiteral("totalTrackNum")].toInt(), 12);
  EXPECT_EQ(tags[QStringLiteral("curDiskNum")].toInt(), 2);
  EXPECT_EQ(tags[QStringLiteral("totalDiskNum")].toInt(), 0);
  const QString savedCover = tags[QStringLiteral("image")].toString();
  EXPECT_TRUE(QFileInfo(savedCover).fileName().startsWith(QStringLiteral("thumbNailclip"))) << savedCover.toStdString();
  EXPECT_EQ(testmedia::ffprobe(savedCover, "streams")["codec_name"], "bmp");

  EXPECT_EQ(reports[1].toObject()[QStringLiteral("error")].toString(),
            QStringLiteral("this file format cannot carry tags"));
  EXPECT_EQ(reports[2].toObject()[QStringLiteral("code")].toInt(), 3);
  EXPECT_FALSE(reports[2].toObject()[QStringLiteral("error")].toString().isEmpty());
}

TEST_F(TagsCommand, TextShowsTheTagsThatHaveValuesNamesAFileItCannotReadAndNeedsAFile) {
  const QString song = media.tagged(QStringLiteral("song.mp3"), {"artist=Singer", "track=7/9", "genre=Folk"});
  const QString plain = media.tagged(QStringLiteral("plain.m4a"), {});

  const ProgramResult result = runTags({song, plain});
  EXPECT_EQ(result.exitCode, 0) << result.errorOutput.toStdString();
  const QStringList lines = result.standardOutput.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  ASSERT_GE(lines.size(), 4) << result.standardOutput.toStdString();
  EXPECT_EQ(lines[0], song);
  EXPECT_TRUE(lines.contains(QStringLiteral("  Artist:        Singer"))) << result.standardOutput.toStdString();
  EXPECT_TRUE(lines.contains(QStringLiteral("  Track:         7/9"))) << result.standardOutput.toStdString();
  EXPECT_TRUE(lines.contains(QStringLiteral("  Genre:         Folk"))) << result.standardOutput.toStdString();
  EXPECT_FALSE(result.standardOutput.contains(QStringLiteral("Title:")));
  EXPECT_FALSE(result.standardOutput.contains(QStringLiteral("All genres:"))) << "one genre is shown once";
  const qsizetype plainLine = lines.indexOf(plain);
  ASSERT_GE(plainLine, 0);
  EXPECT_EQ(lines.value(plainLine + 1), QStringLiteral("  No tags"));

  const QString notes = media.write(QStringLiteral("notes.mp4"), "not a film\n");
  const ProgramResult bad = runTags({notes});
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_TRUE(bad.errorOutput.contains(notes)) << bad.errorOutput.toStdString();
  EXPECT_TRUE(bad.errorOutput.contains(QStringLiteral("Cannot read the tags: the file is damaged")))
      << bad.errorOutput.toStdString();
  EXPECT_EQ(media.read(notes), QByteArray("not a film\n"));

  const ProgramResult usage = runTags({"--json"});
  EXPECT_EQ(usage.exitCode, 2);
  EXPECT_TRUE(usage.errorOutput.contains(QStringLiteral("Usage: videoconverter tags FILE... [--json]")));
}

}  // namespace
