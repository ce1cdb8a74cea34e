// Adding files to the main list: real files made by ffmpeg, the real probe,
// and the one alert that names the files that could not be decoded.
#include <gtest/gtest.h>

#include "support/ListItems.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTimer>

#include <algorithm>
#include <ctime>

#include "Action/ApplicationLifecycle.h"
#include "Action/MainFormAction.h"
#include "Action/NodeInfoAction.h"
#include "CommonClass/GlobalSettings.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "support/ConversionTestSupport.h"
#include "support/GeneratedMedia.h"

namespace {

// The main window's side: the rows it was asked to add.
class RecordingMainWindow : public MainFormActionDelegate {
 public:
  void addItemView(const NodeInfo::Ptr& node) override { rows.append(node); }
  NodeInfo::List rows;
};

class AddingFiles : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    media = new modeltest::MediaFolder;
    media->videoClip(QStringLiteral("clip.mp4"), 2);
    media->videoClip(QStringLiteral("two voices.mkv"), 1.5, 2);
    media->videoClip(QStringLiteral("été à la plage.mov"), 1);
    media->audioClip(QStringLiteral("song.mp3"), 1.5);
    media->writeFile(QStringLiteral("empty.mp4"), {});
    media->writeFile(QStringLiteral("notes.mp4"), "A shopping list, not a film.\n");
  }
  static void TearDownTestSuite() {
    delete media;
    media = nullptr;
  }

  void SetUp() override {
    modeltest::startWithEmptyList(media->path(QStringLiteral("scratch")), media->folder());
    QDir(sysTmpPath).removeRecursively();
  }
  void TearDown() override { modeltest::endWithEmptyList(); }

  static QStringList paths(const QStringList& names) {
    QStringList result;
    for (const QString& name : names) result.append(media->path(name));
    return result;
  }

  // Adds the files and serves events until the batch has been read.
  void add(const QStringList& names, int workers = 0) {
    MainFormAction adding(db, &window, workers);
    QObject::connect(&adding, &MainFormAction::progress, [this](int done, int total) {
      progress.append({done, total});
    });
    bool finished = false;
    QObject::connect(&adding, &MainFormAction::finished, [&finished] { finished = true; });
    adding.addFile(paths(names));
    ASSERT_TRUE(modeltest::waitUntil([&finished] { return finished; }));
  }

  NodeInfo::List listItems() { return NodeInfoAction::getRootNode(db).get()->childNode(); }

  static modeltest::MediaFolder* media;
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed{&alerts};
  RecordingMainWindow window;
  UIInfoDB db;
  QList<std::pair<int, int>> progress;
};
modeltest::MediaFolder* AddingFiles::media = nullptr;

TEST_F(AddingFiles, DecodableFilesBecomeItemsInOrderAndTheOthersShareOneAlert) {
  const int32_t firstNumber = MainFormAction::totalAddFileNum;
  // Events keep being served while the workers read the files.
  int ticks = 0;
  QTimer ticker;
  QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
  ticker.start(0);
  add({"clip.mp4", "empty.mp4", "two voices.mkv", "notes.mp4", "song.mp3", "clip.mp4", "été à la plage.mov"}, 4);
  EXPECT_GT(ticks, 0);
  ASSERT_FALSE(progress.isEmpty());
  EXPECT_EQ(progress.last(), std::pair(7, 7));
  EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));

  const NodeInfo::List items = listItems();
  QStringList names;
  for (const NodeInfo::Ptr& item : items) names.append(item->mediaFileInfo().source());
  EXPECT_EQ(names, QStringList({"clip.mp4", "two voices.mkv", "song.mp3", "clip.mp4", "été à la plage.mov"}));
  EXPECT_EQ(window.rows, items) << "one row for each added item, in order";
  for (int index = 0; index < items.size(); ++index) {
    EXPECT_EQ(items[index]->addNum(), firstNumber + index);
    EXPECT_EQ(items[index]->parentNode(), NodeInfoAction::getRootNode(db));
  }
  EXPECT_EQ(MainFormAction::totalAddFileNum, firstNumber + 5);

  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].message, QStringLiteral("There are 2 files:\nempty.mp4\nnotes.mp4\n Decode failed"));
  EXPECT_TRUE(alerts.alerts[0].informativeText.isEmpty());
  EXPECT_TRUE(QFileInfo(videoImagePath).isDir());
}

TEST_F(AddingFiles, ASingleFailureIsReportedInTheSingularAndAddsNothing) {
  const int32_t firstNumber = MainFormAction::totalAddFileNum;
  add({"notes.mp4"});
  EXPECT_TRUE(listItems().isEmpty());
  EXPECT_TRUE(window.rows.isEmpty());
  EXPECT_EQ(MainFormAction::totalAddFileNum, firstNumber);
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].message, QStringLiteral("There is 1 file:\nnotes.mp4\n Decode failed"));
}

TEST_F(AddingFiles, AnAddedFileCarriesWhatFfprobeSeesAndTheDefaultsOfANewItem) {
  add({"two voices.mkv"});
  ASSERT_EQ(listItems().size(), 1);
  EXPECT_TRUE(alerts.alerts.empty());
  const NodeInfo::Ptr node = listItems().first();
  const MediaFileInfo& media = node->mediaFileInfo();
  const QString path = AddingFiles::media->path(QStringLiteral("two voices.mkv"));
  const QJsonObject reference = modeltest::ffprobe(path);

  EXPECT_EQ(node->type(), NodeInfo::kTypeFile);
  EXPECT_EQ(node->fileType(), 1);
  EXPECT_EQ(node->nodeIconName(), QStringLiteral("iconVideo"));
  EXPECT_EQ(node->inputFilename(), path);
  EXPECT_EQ(node->outputFilename(), QStringLiteral("two voices"));
  EXPECT_TRUE(node->isSelected());

  EXPECT_EQ(media.fileName(), path);
  EXPECT_EQ(media.source(), QStringLiteral("two voices.mkv"));
  EXPECT_EQ(media.frameWidth(), modeltest::ffprobeVideoField(reference, QStringLiteral("width")));
  EXPECT_EQ(media.frameHeight(), modeltest::ffprobeVideoField(reference, QStringLiteral("height")));
  EXPECT_NEAR(media.dTotalTime(), modeltest::ffprobeDuration(reference), 0.05);
  EXPECT_EQ(media.totalTime(), media.dTotalTime());
  EXPECT_EQ(media.iTotalTime(), static_cast<int32_t>(media.dTotalTime()));
  EXPECT_EQ(media.size(), static_cast<double>(QFileInfo(path).size()));
  EXPECT_EQ(media.videoStream(), 1);
  EXPECT_EQ(media.audioStream(), 1);
  ASSERT_EQ(media.arrAudioStream().size(), modeltest::ffprobeStreamCount(reference, QStringLiteral("audio")));
  for (int index = 0; index < media.arrAudioStream().size(); ++index) {
    EXPECT_EQ(media.arrAudioStream()[index]->audioStreamName(),
              QString::fromUtf8(node->decoderInfo()->m_AudioStreamInfo[index].m_audioStreamName));
    EXPECT_FALSE(media.arrAudioStream()[index]->audioStreamName().isEmpty());
    EXPECT_NE(media.arrAudioStream()[index]->getAudioStream(), 0);
  }
  EXPECT_TRUE(media.formatName().isNull()) << "the probe leaves the container name to others";

  EXPECT_EQ(node->decoderInfo()->m_Width, media.frameWidth());
  EXPECT_EQ(node->decoderInfo()->m_AudioSteamCnt, 2);
  EXPECT_EQ(node->trimSettingInfo().startTime(), 0);
  EXPECT_EQ(node->trimSettingInfo().endTime(), media.iTotalTime());
  const CropSettingInfo& crop = node->cropSettingInfo();
  EXPECT_EQ(QList<int32_t>({crop.x(), crop.y(), crop.w(), crop.h()}),
            QList<int32_t>({0, 0, media.frameWidth(), media.frameHeight()}));
  EXPECT_EQ(node->selectAudioStream(), node->decoderInfo()->m_defaultAudioStream);
  EXPECT_EQ(media.defalutAudioStream(), node->decoderInfo()->m_defaultAudioStream);
  EXPECT_GE(node->selectAudioStream(), 0);
}

TEST_F(AddingFiles, AnAudioFileHasNoPictureNoThumbnailAndAnEmptyCrop) {
  add({"song.mp3"});
  ASSERT_EQ(listItems().size(), 1);
  const NodeInfo::Ptr node = listItems().first();
  EXPECT_EQ(node->mediaFileInfo().videoStream(), 0);
  EXPECT_EQ(node->mediaFileInfo().arrAudioStream().size(), 1);
  EXPECT_TRUE(node->mediaFileInfo().imageName().isEmpty());
  EXPECT_EQ(node->cropSettingInfo().w(), 0);
  EXPECT_EQ(node->cropSettingInfo().h(), 0);
  EXPECT_NEAR(node->mediaFileInfo().dTotalTime(), 1.5, 0.1);
}

// Runs the scope in another local time zone.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const char* zone) : previous_(qgetenv("TZ")), hadZone_(qEnvironmentVariableIsSet("TZ")) {
    qputenv("TZ", zone);
    tzset();
  }
  ~ScopedTimeZone() {
    if (hadZone_) {
      qputenv("TZ", previous_);
    } else {
      qunsetenv("TZ");
    }
    tzset();
  }

 private:
  QByteArray previous_;
  bool hadZone_;
};

TEST_F(AddingFiles, ThumbnailsAreNamedWithTheTimeInUtcPlus8WhateverTheLocalZone) {
  const ScopedTimeZone newYork("America/New_York");
  const QDateTime before = QDateTime::currentDateTimeUtc();
  add({"clip.mp4"});
  const QDateTime after = QDateTime::currentDateTimeUtc();

  ASSERT_EQ(listItems().size(), 1);
  const QString thumbnail = listItems().first()->mediaFileInfo().imageName();
  const QRegularExpression name(
      QStringLiteral("^%1/clip(\\d{14})\\.bmp$").arg(QRegularExpression::escape(videoImagePath)));
  const auto match = name.match(thumbnail);
  ASSERT_TRUE(match.hasMatch()) << thumbnail.toStdString();
  EXPECT_TRUE(QFileInfo(thumbnail).isFile());
  const QString stamp = match.captured(1);
  EXPECT_GE(stamp, ApplicationLifecycle::timeStampUTC8(before));
  EXPECT_LE(stamp, ApplicationLifecycle::timeStampUTC8(after));
  EXPECT_NE(stamp.left(10), before.toLocalTime().toString(QStringLiteral("yyyyMMddHH"))) << "not the local time";
}

}  // namespace
