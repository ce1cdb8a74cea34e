// The player's probe on files made by ffmpeg, checked against ffprobe.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "MediaClass/PlayVideo.h"
#include "support/GeneratedMedia.h"

namespace {

class PlayVideoProbe : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    media = new modeltest::MediaFolder;
    VideoConverter_SetTempPath(media->folder().toUtf8().constData());
  }
  static void TearDownTestSuite() {
    delete media;
    media = nullptr;
  }
  static modeltest::MediaFolder* media;
  PlayVideo player;
};
modeltest::MediaFolder* PlayVideoProbe::media = nullptr;

TEST_F(PlayVideoProbe, AnswersWhatFfprobeSeesInAFileWithTwoAudioStreams) {
  const QString path = media->videoClip(QStringLiteral("two voices.mkv"), 2, 2);
  const QJsonObject reference = modeltest::ffprobe(path);
  ASSERT_FALSE(reference.isEmpty());

  ASSERT_EQ(player.getMediaInfo(path, QString()), 0) << player.message().toStdString();
  EXPECT_TRUE(player.message().isEmpty());
  EXPECT_EQ(player.videoPath(), path);
  EXPECT_EQ(player.getWidth(), modeltest::ffprobeVideoField(reference, QStringLiteral("width")));
  EXPECT_EQ(player.getHeight(), modeltest::ffprobeVideoField(reference, QStringLiteral("height")));
  EXPECT_NEAR(player.getLength() / 1e6, modeltest::ffprobeDuration(reference), 0.05);
  EXPECT_EQ(player.videoStream(), 1);
  EXPECT_EQ(player.audioStream(), 1);
  EXPECT_EQ(player.getAudioSteamCnt(), modeltest::ffprobeStreamCount(reference, QStringLiteral("audio")));
  EXPECT_EQ(player.getAudioSteamCnt(), 2);
  EXPECT_EQ(player.getAudioStreamInfo()[1].m_SampleRate, 44100);
  ASSERT_NE(player.decoderInfo(), nullptr);
  EXPECT_EQ(player.decoderInfo()->m_Width, player.getWidth());
}

TEST_F(PlayVideoProbe, FilesThatCannotBeReadGiveTheLibrarysCodeAndTheUnrecognisedText) {
  const QString empty = media->writeFile(QStringLiteral("empty.mp4"), {});
  const QString text = media->writeFile(QStringLiteral("notes.mp4"), "These are notes, not a film.\n");
  const QString missing = media->path(QStringLiteral("missing.mov"));
  for (const QString& path : {empty, text, missing}) {
    const int32_t result = player.getMediaInfo(path, QString());
    EXPECT_NE(result, 0) << path.toStdString();
    EXPECT_EQ(player.message(),
              QStringLiteral("This file is not in a recognizable format. (%1)").arg(QFileInfo(path).fileName()));
    EXPECT_EQ(player.decoderInfo(), nullptr);
  }
}

TEST_F(PlayVideoProbe, AFileWithoutPictureOrSoundIsInvalid) {
  const QString subtitles = media->writeFile(QStringLiteral("words.srt"), "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
  const QString path = media->path(QStringLiteral("words only.mkv"));
  ASSERT_TRUE(modeltest::runFfmpeg({"-i", subtitles, path}).isEmpty());

  EXPECT_EQ(player.getMediaInfo(path, QString()), -1);
  EXPECT_EQ(player.message(), QStringLiteral("Invalid video file! (words only.mkv)"));
  EXPECT_EQ(player.decoderInfo(), nullptr);
}

TEST_F(PlayVideoProbe, AnEmptyPathIsRefusedWithoutAText) {
  EXPECT_EQ(player.getMediaInfo(QString(), QString()), -1);
  EXPECT_TRUE(player.message().isEmpty());
}

TEST_F(PlayVideoProbe, OnlyTheFourAudioSpellingsSkipThePicture) {
  const QString clip = media->videoClip(QStringLiteral("source.mp4"), 1);
  for (const auto& [name, audioOnly] : {std::pair{"film.MP3", true}, std::pair{"film.wma", true},
                                        std::pair{"film.Mp3", false}, std::pair{"film.mp4", false}}) {
    SCOPED_TRACE(name);
    const QString path = media->path(QLatin1String(name));
    QFile::remove(path);
    ASSERT_TRUE(QFile::copy(clip, path));
    const QString thumbnail = media->path(QLatin1String(name) + QStringLiteral(".bmp"));

    ASSERT_EQ(player.getMediaInfo(path, thumbnail), 0) << player.message().toStdString();
    EXPECT_EQ(player.videoStream(), audioOnly ? 0 : 1);
    EXPECT_EQ(QFileInfo::exists(thumbnail), !audioOnly) << "the library is told to skip all video work";
  }
}

}  // namespace
