// Adding files to the main list: real files made by ffmpeg, the real probe,
// and the one alert that names the files that could not be decoded.
#include <gtest/gtest.h>

#include "support/ListItems.h"

#include <QDateTime>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSize>
#include <QTimer>

#include <algorithm>

#include "Action/ApplicationLifecycle.h"
#include "Action/MainFormAction.h"
#include "Action/NodeInfoAction.h"
#include "CommonClass/GlobalSettings.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"

namespace {

// The main window's side: the rows it was asked to add.
class RecordingMainWindow : public MainFormActionDelegate {
 public:
  void addItemView(const NodeInfo::Ptr& node) override { rows.append(node); }
  NodeInfo::List rows;
};

class AddingFiles : public testing::Test {
 protected:
  void SetUp() override {
    media.clip(QStringLiteral("clip.mp4"), 2);
    media.clip(QStringLiteral("two voices.mkv"), 1.5, 2);
    media.clip(QStringLiteral("été à la plage.mov"), 1);
    media.audio(QStringLiteral("song.mp3"), 1.5);
    media.write(QStringLiteral("empty.mp4"), {});
    media.write(QStringLiteral("notes.mp4"), "A shopping list, not a film.\n");
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path());
  }
  void TearDown() override { TestEnvironment::resetApplicationState(); }

  // Adds the files and serves events until the batch has been read.
  void add(const QStringList& names, int workers = 0) {
    MainFormAction adding(db, &window, workers);
    QObject::connect(&adding, &MainFormAction::progress, [this](int done, int total) {
      progress.append({done, total});
    });
    bool finished = false;
    QObject::connect(&adding, &MainFormAction::finished, [&finished] { finished = true; });
    QStringList paths;
    for (const QString& name : names) paths.append(media.path(name));
    adding.addFile(paths);
    ASSERT_TRUE(waitUntil([&finished] { return finished; }));
  }

  NodeInfo::List listItems() { return NodeInfoAction::getRootNode(db).get()->childNode(); }

  testmedia::Folder media;
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed{&alerts};
  RecordingMainWindow window;
  UIInfoDB db;
  QList<std::pair<int, int>> progress;
};

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

TEST_F(AddingFiles, AnAddedFileCarriesWhatFfprobeSeesTheDefaultsOfANewItemAndAThumbnailStampedInUtcPlus8) {
  const QDateTime before = QDateTime::currentDateTimeUtc();
  add({"two voices.mkv"});
  const QDateTime after = QDateTime::currentDateTimeUtc();
  ASSERT_EQ(listItems().size(), 1);
  EXPECT_TRUE(alerts.alerts.empty());
  const NodeInfo::Ptr node = listItems().first();
  const MediaFileInfo& file = node->mediaFileInfo();
  const QString path = media.path(QStringLiteral("two voices.mkv"));

  EXPECT_EQ(node->type(), NodeInfo::kTypeFile);
  EXPECT_EQ(node->fileType(), 1);
  EXPECT_EQ(node->nodeIconName(), QStringLiteral("iconVideo"));
  EXPECT_EQ(node->inputFilename(), path);
  EXPECT_EQ(node->outputFilename(), QStringLiteral("two voices"));
  EXPECT_TRUE(node->isSelected());

  EXPECT_EQ(file.fileName(), path);
  EXPECT_EQ(file.source(), QStringLiteral("two voices.mkv"));
  EXPECT_EQ(QSize(file.frameWidth(), file.frameHeight()), QSize(320, 240));
  EXPECT_NEAR(file.dTotalTime(), testmedia::duration(path), 0.05);
  EXPECT_EQ(file.totalTime(), file.dTotalTime());
  EXPECT_EQ(file.iTotalTime(), static_cast<int32_t>(file.dTotalTime()));
  EXPECT_EQ(file.size(), static_cast<double>(QFileInfo(path).size()));
  EXPECT_EQ(file.videoStream(), 1);
  EXPECT_EQ(file.audioStream(), 1);
  ASSERT_EQ(file.arrAudioStream().size(), 2);
  for (int index = 0; index < file.arrAudioStream().size(); ++index) {
    EXPECT_EQ(file.arrAudioStream()[index]->audioStreamName(),
              QString::fromUtf8(node->decoderInfo()->m_AudioStreamInfo[index].m_audioStreamName));
    EXPECT_FALSE(file.arrAudioStream()[index]->audioStreamName().isEmpty());
    EXPECT_NE(file.arrAudioStream()[index]->getAudioStream(), 0);
  }
  EXPECT_TRUE(file.formatName().isNull()) << "the probe leaves the container name to others";

  EXPECT_EQ(node->trimSettingInfo().startTime(), 0);
  EXPECT_EQ(node->trimSettingInfo().endTime(), file.iTotalTime());
  const CropSettingInfo& crop = node->cropSettingInfo();
  EXPECT_EQ(QList<int32_t>({crop.x(), crop.y(), crop.w(), crop.h()}), QList<int32_t>({0, 0, 320, 240}));
  EXPECT_EQ(node->selectAudioStream(), node->decoderInfo()->m_defaultAudioStream);
  EXPECT_EQ(file.defalutAudioStream(), node->decoderInfo()->m_defaultAudioStream);
  EXPECT_GE(node->selectAudioStream(), 0);

  const QRegularExpression thumbnail(
      QStringLiteral("^%1/two voices(\\d{14})\\.bmp$").arg(QRegularExpression::escape(videoImagePath)));
  const auto match = thumbnail.match(file.imageName());
  ASSERT_TRUE(match.hasMatch()) << file.imageName().toStdString();
  EXPECT_TRUE(QFileInfo(file.imageName()).isFile());
  EXPECT_GE(match.captured(1), ApplicationLifecycle::timeStampUTC8(before));
  EXPECT_LE(match.captured(1), ApplicationLifecycle::timeStampUTC8(after));
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

}  // namespace
