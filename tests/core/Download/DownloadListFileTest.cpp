// The download list file: each key written by its rule and read back, the
// thumbnail as TIFF that ffmpeg reads too, the user defaults written with
// each save, and a damaged file kept aside.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "CommonClass/KMVLog.h"
#include "CommonClass/PropertyList.h"
#include "CommonClass/UserDefaults.h"
#include "Download/DownloadSettings.h"
#include "Download/DrogItemView.h"
#include "Download/PublicAction.h"
#include "Download/TiffImage.h"
#include "GeneratedMedia.h"
#include "TestEnvironment.h"

namespace {

QImage pattern(int width, int height, bool alpha) {
  QImage image(width, height, alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      image.setPixelColor(x, y, QColor(x * 20, y * 30, 255 - x * y, alpha ? x * 30 : 255));
  }
  return image;
}

QString logText() {
  QString text;
  for (const QFileInfo& file : QDir(KMVLog::folder()).entryInfoList(QDir::Files)) {
    QFile log(file.filePath());
    if (log.open(QIODevice::ReadOnly)) text += QString::fromUtf8(log.readAll());
  }
  return text;
}

TEST(TiffImage, ThumbnailsGoThroughBaselineTiffThatFfmpegReadsAlike) {
  testmedia::Folder folder;
  for (const bool alpha : {false, true}) {
    const QImage source = pattern(7, 5, alpha);
    const QByteArray tiff = TiffImage::encode(source);
    const QImage::Format format = alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888;
    EXPECT_EQ(TiffImage::decode(tiff).convertToFormat(format), source) << "alpha " << alpha;
    // Another reader sees the same picture.
    folder.write("ours.tif", tiff);
    ASSERT_EQ(testmedia::runFfmpeg({"-i", folder.path("ours.tif"), folder.path("theirs.png")}), "");
    EXPECT_EQ(QImage(folder.path("theirs.png")).convertToFormat(format), source) << "alpha " << alpha;
  }
  // A TIFF of ffmpeg's own, big enough for several strips.
  ASSERT_EQ(testmedia::runFfmpeg({"-f", "lavfi", "-i", "testsrc=size=64x48", "-frames:v", "1", "-pix_fmt", "rgb24",
                                  "-compression_algo", "raw", folder.path("made.tif")}),
            "");
  ASSERT_EQ(testmedia::runFfmpeg({"-i", folder.path("made.tif"), folder.path("made.png")}), "");
  EXPECT_EQ(decodeThumbnail(folder.read("made.tif")).convertToFormat(QImage::Format_RGB888),
            QImage(folder.path("made.png")).convertToFormat(QImage::Format_RGB888));

  const QByteArray whole = TiffImage::encode(pattern(7, 5, false));
  EXPECT_TRUE(TiffImage::decode(whole.left(whole.size() - 1)).isNull());
  EXPECT_TRUE(TiffImage::decode("II*\0 not really").isNull());
  EXPECT_TRUE(TiffImage::encode(QImage()).isEmpty());
}

class DownloadList : public testing::Test {
 protected:
  void SetUp() override { TestEnvironment::resetApplicationState(); }
  void TearDown() override {
    qualityParam = 0;
    savePath.clear();
  }
};

TEST_F(DownloadList, EachKeyIsWrittenByItsRuleAndReadBack) {
  auto full = std::make_shared<VideoInfoObject>();
  full->setHtmUrlStr("http://example.test/watch?v=1");
  full->setDownURLStr("http://example.test/clip.mp4");
  full->setTitleStr("A clip");
  full->setSelectFileIndex(1);
  full->setVideoTime("00:01:35");
  full->setVideoFormat("mp4");
  full->setStrVideoSize("2.50 MB");
  full->setSavePath("/videos/A clip.mp4");
  full->setVideoDownState(3);
  DrogItemView withPicture(full);
  withPicture.setBlogImage(pattern(4, 3, false));

  auto bare = std::make_shared<VideoInfoObject>();
  bare->setHtmUrlStr("http://example.test/watch?v=2");
  bare->setUserAgent("");
  bare->setVideoDownState(0);
  DrogItemView without(bare);

  qualityParam = 2;
  savePath = "/videos";
  ASSERT_TRUE(PublicAction::saveDownloadList({&withPicture, &without}));

  const std::optional<QVariant> root = PropertyList::readFile(PublicAction::downloadListPath());
  ASSERT_TRUE(root);
  const QVariantList entries = root->toList();
  ASSERT_EQ(entries.size(), 2);
  const QVariantMap first = entries[0].toMap();
  EXPECT_EQ(first.keys(),
            (QStringList{"SelectFileIndex", "htmlUrl", "savePath", "userAgent", "videoDownState", "videoFormat",
                         "videoImage", "videoSize", "videoTime", "videoTitle", "videoUrl"}));
  EXPECT_EQ(TiffImage::decode(first.value("videoImage").toByteArray()), pattern(4, 3, false));
  EXPECT_EQ(entries[1].toMap().keys(), QStringList{"htmlUrl"});

  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  EXPECT_EQ(defaults.stringForKey("qualityParam"), "2");
  EXPECT_EQ(defaults.stringForKey("DownloadMode"), "0");
  EXPECT_EQ(defaults.stringForKey("SavePath"), "/videos");
  // The folder the next start reads is another key, which only the settings sheet writes.
  EXPECT_NE(DownloadSettings::startSavePath(), "/videos");

  const QList<std::shared_ptr<VideoInfoObject>> tasks = PublicAction::readDownloadList();
  ASSERT_EQ(tasks.size(), 2);
  const VideoInfoObject& read = *tasks[0];
  EXPECT_EQ(read.htmUrlStr(), full->htmUrlStr());
  EXPECT_EQ(read.downURLStr(), full->downURLStr());
  EXPECT_EQ(read.titleStr(), "A clip");
  EXPECT_EQ(read.videoTime(), "00:01:35");
  EXPECT_EQ(read.videoFormat(), "mp4");
  EXPECT_EQ(read.strVideoSize(), "2.50 MB");
  EXPECT_EQ(read.savePath(), "/videos/A clip.mp4");
  EXPECT_EQ(read.videoDownState(), 3);
  EXPECT_EQ(read.userAgent(), QString::fromLatin1(kDownloadUserAgents[0]));
  EXPECT_EQ(read.blogData(), first.value("videoImage").toByteArray());
  // The saved number is no index: it comes from the task's identity.
  EXPECT_EQ(read.selectFileIndex(), static_cast<int32_t>(reinterpret_cast<quintptr>(full.get())));
  EXPECT_EQ(tasks[1]->videoDownState(), 0);
  EXPECT_EQ(tasks[1]->selectFileIndex(), -1);
  EXPECT_TRUE(tasks[1]->downURLStr().isNull());
}

TEST_F(DownloadList, ADamagedListIsKeptAsideAndTheListStartsEmpty) {
  const QString path = PublicAction::downloadListPath();
  for (const QByteArray& damaged :
       {QByteArray("not a property list"), PropertyList::toBinary(QVariantMap{{"htmlUrl", "http://example.test/"}})}) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(damaged);
    file.close();

    EXPECT_TRUE(PublicAction::readDownloadList().isEmpty());
    EXPECT_FALSE(QFile::exists(path));
    const QStringList aside = QDir(QFileInfo(path).path()).entryList({"downloadList-damaged-*.plist"}, QDir::Files);
    ASSERT_EQ(aside.size(), 1);
    QFile kept(QFileInfo(path).dir().filePath(aside.first()));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), damaged);
    kept.remove();
    EXPECT_TRUE(logText().contains(QStringLiteral("The download list %1 is damaged: it was kept as").arg(path)));
  }

  // Entries that are no tasks are left out; the others stay.
  QFile mixed(path);
  ASSERT_TRUE(mixed.open(QIODevice::WriteOnly));
  mixed.write(PropertyList::toBinary(QVariantList{"a text", QVariantMap{{"htmlUrl", "http://example.test/"}}}));
  mixed.close();
  const QList<std::shared_ptr<VideoInfoObject>> tasks = PublicAction::readDownloadList();
  ASSERT_EQ(tasks.size(), 1);
  EXPECT_EQ(tasks[0]->htmUrlStr(), "http://example.test/");
}

}  // namespace
