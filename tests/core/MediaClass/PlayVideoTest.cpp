// The player's probe on files made by ffmpeg: what it says of files it cannot
// read, and which names make it skip the picture.
#include <gtest/gtest.h>

#include <QFileInfo>

#include "GeneratedMedia.h"
#include "MediaClass/PlayVideo.h"

namespace {

class PlayVideoProbe : public testing::Test {
 protected:
  void SetUp() override { VideoConverter_SetTempPath(media.path().toUtf8().constData()); }
  testmedia::Folder media;
  PlayVideo player;
};

TEST_F(PlayVideoProbe, FilesThatCannotBeReadSayWhyAndKeepNoRecord) {
  const QString subtitles = media.write(QStringLiteral("words.srt"), "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
  const QString wordsOnly = media.path(QStringLiteral("words only.mkv"));
  ASSERT_EQ(testmedia::runFfmpeg({"-i", subtitles, wordsOnly}), QString());
  const std::pair<QString, QString> files[] = {
      {media.write(QStringLiteral("empty.mp4"), {}), "This file is not in a recognizable format. (empty.mp4)"},
      {wordsOnly, "Invalid video file! (words only.mkv)"},
      {QString(), QString()},
  };
  for (const auto& [path, message] : files) {
    EXPECT_NE(player.getMediaInfo(path, QString()), 0) << path.toStdString();
    EXPECT_EQ(player.message(), message);
    EXPECT_EQ(player.decoderInfo(), nullptr);
  }
}

TEST_F(PlayVideoProbe, OnlyTheFourAudioSpellingsSkipThePicture) {
  const QString clip = media.clip(QStringLiteral("source.mp4"), 1);
  for (const auto& [name, audioOnly] : {std::pair{"film.MP3", true}, std::pair{"film.wma", true},
                                        std::pair{"film.Mp3", false}, std::pair{"film.mp4", false}}) {
    SCOPED_TRACE(name);
    const QString path = media.copy(clip, QLatin1String(name));
    const QString thumbnail = media.path(QLatin1String(name) + QStringLiteral(".bmp"));

    ASSERT_EQ(player.getMediaInfo(path, thumbnail), 0) << player.message().toStdString();
    EXPECT_EQ(player.videoStream(), audioOnly ? 0 : 1);
    EXPECT_EQ(QFileInfo::exists(thumbnail), !audioOnly) << "the library is told to skip all video work";
  }
}

}  // namespace
