// The records a conversion job hands to the converter, read back byte by
// byte at the offsets the converter reads them from, for items made from
// generated files by the real adding step.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <algorithm>
#include <cstring>
#include <string>
#include <thread>

#include "Action/NodeInfoAction.h"
#include "MediaClass/ConvertMedia.h"
#include "MediaClass/OutputParamRecord.h"
#include "support/GeneratedMedia.h"
#include "support/ListItems.h"

namespace {

template <class T>
T fieldAt(const void* record, size_t offset) {
  T value;
  std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
  return value;
}
int32_t int32At(const void* record, size_t offset) { return fieldAt<int32_t>(record, offset); }
int64_t int64At(const void* record, size_t offset) { return fieldAt<int64_t>(record, offset); }
// The text of a field: up to its NUL, or the whole field when it has none.
std::string textAt(const void* record, size_t offset, size_t size) {
  const char* field = static_cast<const char*>(record) + offset;
  return std::string(field, strnlen(field, size));
}
bool allZero(const void* record, size_t from, size_t to) {
  const char* bytes = static_cast<const char*>(record);
  return std::all_of(bytes + from, bytes + to, [](char byte) { return byte == 0; });
}

class JobRecords : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    media = new modeltest::MediaFolder;
    const QStringList paths{media->videoClip(QStringLiteral("movie.mp4"), 2),
                            media->videoClip(QStringLiteral("two voices.mkv"), 1, 2),
                            media->videoClip(QStringLiteral("silent.mov"), 1, 0)};
    db = new UIInfoDB;
    files = new NodeInfo::List(modeltest::addToList(*db, paths, media->path(QStringLiteral("scratch"))));
  }
  static void TearDownTestSuite() {
    delete files;
    delete db;
    delete media;
  }

  // A copy of an added file with the video profile of most tests.
  static NodeInfo::Ptr item(int index, const QString& profile = QStringLiteral("MPEG-4 AVC")) {
    EXPECT_EQ(files->size(), 3);
    NodeInfo::Ptr node = files->at(index)->copy();
    node->setCurProfileSetting(modeltest::shippedProfile(profile));
    node->setOutputPath(media->folder());
    return node;
  }
  // The first record a fresh job fills for `node`.
  const MediaItem& recordOf(const NodeInfo::Ptr& node) {
    job = std::make_unique<ConvertMedia>();
    EXPECT_EQ(job->initMediaData(node), 0) << job->refusal().toStdString();
    return job->mediaItemAt(0);
  }
  static OutputParam outputOf(const NodeInfo::Ptr& node) {
    OutputParam param;
    OutputParamRecord::fill(*node, QStringLiteral("/out/movie.mp4"), param);
    return param;
  }

  static modeltest::MediaFolder* media;
  static NodeInfo::List* files;
  static inline UIInfoDB* db = nullptr;
  std::unique_ptr<ConvertMedia> job;
};
modeltest::MediaFolder* JobRecords::media = nullptr;
NodeInfo::List* JobRecords::files = nullptr;

TEST_F(JobRecords, AMergedNodeGivesOneRecordPerFileInChildOrder) {
  NodeInfoAction::createMergeTableNodeInfo(*db);
  const NodeInfo::Ptr merged = NodeInfoAction::getMergeRootNode(*db)->getChildNodeAtIndex(0);
  ASSERT_NE(merged, nullptr);
  ASSERT_EQ(merged->getChildNodeCount(), 3);

  ConvertMedia merging;
  ASSERT_EQ(merging.initMediaData(merged), 0);
  ASSERT_EQ(merging.mediaItemCount(), 3);
  for (int index = 0; index < 3; ++index) {
    const MediaItem& record = merging.mediaItemAt(index);
    const NodeInfo::Ptr member = merged->getChildNodeAtIndex(index);
    EXPECT_EQ(int32At(&record, 0), 11990);
    EXPECT_EQ(textAt(&record, 4, 1024), member->inputFilename().toStdString());
    EXPECT_EQ(int32At(&record, 1028), 0);
    EXPECT_EQ(std::memcmp(reinterpret_cast<const char*>(&record) + 1032, member->decoderInfo(), 7648), 0);
    EXPECT_EQ(int32At(&record, 11986), 1);
  }
  // The count is never reset: a second node is appended after the first three.
  ASSERT_EQ(merging.initMediaData(files->at(1)), 0);
  EXPECT_EQ(textAt(&merging.mediaItemAt(3), 4, 1024), files->at(1)->inputFilename().toStdString());
}

TEST_F(JobRecords, EveryEditLandsAtItsOffsetInTheConvertersUnits) {
  const NodeInfo::Ptr node = item(0);
  node->trimSettingInfo().setStartTime(1);
  node->trimSettingInfo().setEndTime(2);
  node->cropSettingInfo().setRect(8, 6, 300, 200);
  node->cropSettingInfo().setZoom(2);
  EffectSettingInfo& effect = node->effectSettingInfo();
  effect.setRotateAngle(90);
  effect.setRotateFlipX(1);
  effect.setSaturation(-150);
  effect.setBrightness(200);
  effect.setContrast(33);
  effect.setEffectModel(1035);
  effect.setModelOf3D(1072);
  effect.setDepth(12);
  effect.setFadeIn(3);
  effect.setFadeOut(2);
  effect.setVideoFadeIn(1);
  effect.setVideoFadeOut(4);
  effect.setVolume(250);

  const MediaItem& record = recordOf(node);
  EXPECT_EQ(int64At(&record, 8680), 1000000);
  EXPECT_EQ(int64At(&record, 8688), 2000000);
  const std::pair<size_t, int32_t> expected[] = {{8696, 0},    {8700, 0},    {8704, 90},  {8708, 1},   {8712, 0},
                                                 {8716, 8},    {8720, 6},    {8724, 300}, {8728, 200}, {8732, 2},
                                                 {8736, -150}, {8740, 200},  {8744, 33},  {8748, 0},   {8752, 384},
                                                 {8772, 1035}, {8776, 1072}, {8804, 2},   {8824, 1072}};
  for (const auto& [offset, value] : expected) EXPECT_EQ(int32At(&record, offset), value) << "offset " << offset;
  EXPECT_EQ(int64At(&record, 8756), 3000000);
  EXPECT_EQ(int64At(&record, 8764), 2000000);
  EXPECT_EQ(int64At(&record, 11970), 1000000);
  EXPECT_EQ(int64At(&record, 11978), 4000000);
  EXPECT_TRUE(allZero(&record, 8780, 8804)) << "the first argument set stays zero";
  EXPECT_TRUE(allZero(&record, 8808, 8824));
}

TEST_F(JobRecords, VolumeAboveHundredIsCompressedAndDepthIsDividedTowardZero) {
  const NodeInfo::Ptr node = item(0);
  const std::pair<int32_t, int32_t> volumes[] = {{0, 0}, {37, 94}, {50, 128}, {100, 256}, {250, 384}, {400, 512}};
  for (const auto& [percent, level] : volumes) {
    node->effectSettingInfo().setVolume(percent);
    EXPECT_EQ(int32At(&recordOf(node), 8752), level) << percent << " %";
  }
  const std::pair<int32_t, int32_t> depths[] = {{12, 2}, {-7, -1}, {4, 0}, {5, 1}};
  for (const auto& [depth, argument] : depths) {
    node->effectSettingInfo().setDepth(depth);
    EXPECT_EQ(int32At(&recordOf(node), 8804), argument) << "depth " << depth;
  }
}

TEST_F(JobRecords, SoundIsKeptOnlyWhenAStreamIsChosenAndTheFileHasOne) {
  const NodeInfo::Ptr twoVoices = item(1);
  twoVoices->setSelectAudioStream(1);
  EXPECT_EQ(int32At(&recordOf(twoVoices), 8700), 0);
  EXPECT_EQ(int32At(&recordOf(twoVoices), 8748), 1);
  twoVoices->setSelectAudioStream(-1);
  EXPECT_EQ(int32At(&recordOf(twoVoices), 8700), 1);
  EXPECT_EQ(int32At(&recordOf(twoVoices), 8748), 0);

  const NodeInfo::Ptr silent = item(2);
  silent->setSelectAudioStream(0);
  EXPECT_EQ(int32At(&recordOf(silent), 8700), 1);
  EXPECT_EQ(int32At(&recordOf(item(0, QStringLiteral("MP3"))), 8696), 1) << "an audio profile disables the video";
}

TEST_F(JobRecords, TheWatermarkReachesTheRecordOnlyWithSomethingToDraw) {
  const NodeInfo::Ptr node = item(0);
  EXPECT_TRUE(allZero(&recordOf(node), 8828, 11970)) << "a fresh watermark writes nothing";

  WatermarkInfo& watermark = node->watermarkInfo();
  watermark.setM_watermarkType(WatermarkInfo::kTypePicture);
  const MediaItem& noPicture = recordOf(node);
  EXPECT_EQ(int32At(&noPicture, 11946), 0);
  EXPECT_EQ(int32At(&noPicture, 11942), 127);
  EXPECT_EQ(int32At(&noPicture, 11966), 8);

  watermark.setM_imagePath(QStringLiteral("/pictures/logo.png"));
  watermark.setM_imgX(10);
  watermark.setM_imgY(20);
  watermark.setM_imgW(30);
  watermark.setM_imgH(40);
  watermark.setM_w(3);
  watermark.setM_transparency(100);
  const MediaItem& picture = recordOf(node);
  EXPECT_EQ(textAt(&picture, 8828, 1024), "/pictures/logo.png");
  EXPECT_EQ(int32At(&picture, 11946), 1);
  EXPECT_EQ(int32At(&picture, 11942), 254) << "100 x 2.55 truncates to 254";
  const std::pair<size_t, int32_t> rectangle[] = {{11950, 10}, {11954, 20}, {11958, 30}, {11962, 40}};
  for (const auto& [offset, value] : rectangle) EXPECT_EQ(int32At(&picture, offset), value);

  watermark.setM_watermarkType(WatermarkInfo::kTypeText);
  watermark.setM_text(QStringLiteral("Été"));
  watermark.setM_fontname(QStringLiteral("DejaVu Sans"));
  watermark.setM_fontsize(24);
  watermark.setM_fontstyle(WatermarkInfo::kStyleBold | WatermarkInfo::kStyleUnderline);
  watermark.setM_fontcolor(0xFF336699);
  const MediaItem& text = recordOf(node);
  EXPECT_TRUE(allZero(&text, 8828, 9852)) << "the picture path is not sent with a text";
  EXPECT_EQ(textAt(&text, 9852, 2048), "Été");
  EXPECT_EQ(textAt(&text, 11900, 30), "DejaVu Sans");
  EXPECT_EQ(int32At(&text, 11930), 5);
  EXPECT_EQ(int32At(&text, 11934), 24);
  EXPECT_EQ(fieldAt<uint32_t>(&text, 11938), 0xFF336699u);
  EXPECT_EQ(int32At(&text, 11946), 2);
  EXPECT_EQ(int32At(&text, 11958), 3);
}

TEST_F(JobRecords, LongTextsFillTheirFieldsWithoutSplittingACharacter) {
  const NodeInfo::Ptr node = item(0);
  WatermarkInfo& watermark = node->watermarkInfo();
  watermark.setM_watermarkType(WatermarkInfo::kTypeText);
  watermark.setM_fontname(QString(40, QLatin1Char('F')));
  watermark.setM_text(QString(3000, QLatin1Char('a')));
  const MediaItem& ascii = recordOf(node);
  EXPECT_EQ(textAt(&ascii, 9852, 2048), std::string(2048, 'a')) << "filled to the last byte, no terminator";
  EXPECT_EQ(textAt(&ascii, 11900, 30), std::string(30, 'F'));

  // 1 + 1024 x 2 bytes: the last "é" would straddle the end of the field.
  watermark.setM_text(QStringLiteral("a") + QString(1024, QChar(0xE9)));
  const std::string copied = textAt(&recordOf(node), 9852, 2048);
  EXPECT_EQ(copied.size(), 2047u);
  EXPECT_EQ(QString::fromUtf8(copied.data(), copied.size()), QStringLiteral("a") + QString(1023, QChar(0xE9)));
}

TEST_F(JobRecords, TheOutputRecordCarriesTheProfileAndZerosElsewhere) {
  const OutputParam video = outputOf(item(0));
  EXPECT_EQ(int32At(&video, 0), 872);
  EXPECT_EQ(textAt(&video, 4, 256), "/out/movie.mp4");
  EXPECT_EQ(textAt(&video, 260, 64), "mp4");
  EXPECT_EQ(textAt(&video, 392, 64), "libx264");
  EXPECT_EQ(textAt(&video, 500, 64), "aac");
  const std::pair<size_t, int32_t> expected[] = {{460, 2000},  {468, 1001}, {472, 30000}, {476, 320}, {480, 240},
                                                 {484, 1},     {488, 1},    {492, 0},     {496, 27},  {568, 128},
                                                 {576, 44100}, {580, 2},    {584, 16}};
  for (const auto& [offset, value] : expected) EXPECT_EQ(int32At(&video, offset), value) << "offset " << offset;
  const std::pair<size_t, size_t> zeroed[] = {{324, 392}, {456, 460}, {464, 468}, {564, 568},
                                              {572, 576}, {588, 612}, {612, 872}};
  for (const auto& [from, to] : zeroed) EXPECT_TRUE(allZero(&video, from, to)) << from << " to " << to;

  const OutputParam audio = outputOf(item(0, QStringLiteral("MP3")));
  EXPECT_TRUE(allZero(&audio, 392, 484)) << "no video fields for an audio profile";
  EXPECT_EQ(int32At(&audio, 492), 1);
  EXPECT_EQ(textAt(&audio, 500, 64), "libmp3lame");
  EXPECT_EQ(int32At(&audio, 568), 192);
}

TEST_F(JobRecords, FrameRatesFollowTheTableWithExactComparison) {
  const NodeInfo::Ptr node = item(0);
  const std::tuple<double, int32_t, int32_t> rates[] = {
      {23.97, 24000, 1001}, {29.97, 30000, 1001}, {30, 30, 1}, {0, 30, 1},
      {-2, 30, 1},          {59.94, 60000, 1001}, {25, 25, 1}, {23.976, 23, 1}};
  for (const auto& [rate, numerator, denominator] : rates) {
    node->curProfileSetting().setVideoFrameRate(rate);
    const OutputParam param = outputOf(node);
    EXPECT_EQ(int32At(&param, 472), numerator) << rate;
    EXPECT_EQ(int32At(&param, 468), denominator) << rate;
  }
}

TEST_F(JobRecords, SplitSettingsBecomeTheSegmentLength) {
  const NodeInfo::Ptr node = item(0);
  node->mediaFileInfo().setITotalTime(100);
  const auto segmentUs = [&node](int32_t splitRow, int32_t minutes, int32_t clips) {
    node->setSplitRow(splitRow);
    node->setVideoMinutes(minutes);
    node->setVideoClips(clips);
    const OutputParam param = outputOf(node);
    return int64At(&param, 604);
  };
  EXPECT_EQ(segmentUs(1, 0, 3), 34000000) << "100 / 3 = 33 leaves 1 over: 34 s pieces";
  EXPECT_EQ(segmentUs(1, 0, 4), 25000000);
  EXPECT_EQ(segmentUs(1, 0, 1), 0);
  EXPECT_EQ(segmentUs(0, 2, 1), 120000000);
  EXPECT_EQ(segmentUs(1, 2, 1), 0) << "minutes count only when split by minutes";
  node->mediaFileInfo().setITotalTime(3);
  EXPECT_EQ(segmentUs(1, 0, 5), 0) << "more clips than seconds keeps one output";
}

TEST_F(JobRecords, OutputSizeFitsTheCropIntoTheProfilesBounds) {
  struct Case {
    const char* resolution;
    int width, height, fit, rotation;
    QSizeF expected;
  };
  const Case cases[] = {{"0x0", 1920, 1080, 0, 0, {1280, 720}}, {"0x0", 1918, 1078, 0, 0, {1280, 716}},
                        {"0x0", 0, 0, 0, 0, {320, 240}},        {"642x482", 100, 100, 0, 0, {642, 482}},
                        {"0x0", 640, 480, 1, 0, {640, 360}},    {"0x0", 1920, 1080, 2, 0, {960, 720}},
                        {"0x0", 640, 480, 0, 90, {480, 640}},   {"0x0", 640, 480, 3, 90, {640, 480}},
                        {"0x0", 100, 50, 0, 0, {288, 144}}};
  const NodeInfo::Ptr node = item(0);
  ProfileSettingInfo& profile = node->curProfileSetting();
  profile.setMinWidth(176);
  profile.setMinHeight(144);
  profile.setMaxWidth(1280);
  profile.setMaxHeight(720);
  for (const Case& sample : cases) {
    profile.setVideoResolution(QLatin1String(sample.resolution));
    node->cropSettingInfo().setRect(0, 0, sample.width, sample.height);
    node->cropSettingInfo().setZoom(sample.fit);
    node->effectSettingInfo().setRotateAngle(sample.rotation);
    EXPECT_EQ(ConvertMedia::getNodeResolutionSize(*node), sample.expected)
        << sample.resolution << " " << sample.width << "x" << sample.height << " fit " << sample.fit;
  }
  EXPECT_EQ(ConvertMedia::getNodeResolutionSize(*item(0, QStringLiteral("MP3"))), QSizeF(0, 0));
}

TEST_F(JobRecords, OutputNamesAreNumberedFromZeroAndSplitOutputsKeepOldPieces) {
  modeltest::MediaFolder folder;
  EXPECT_EQ(OutputParamRecord::freeOutputPath(folder.folder(), "movie", "mp4", false), folder.path("movie.mp4"));
  folder.writeFile(QStringLiteral("movie.mp4"), "x");
  folder.writeFile(QStringLiteral("movie(0).mp4"), "x");
  EXPECT_EQ(OutputParamRecord::freeOutputPath(folder.folder(), "movie", "mp4", false), folder.path("movie(1).mp4"));
  folder.writeFile(QStringLiteral("clip_0.mp3"), "x");
  EXPECT_EQ(OutputParamRecord::freeOutputPath(folder.folder(), "clip", "mp3", true), folder.path("clip(0).mp3"));
}

TEST_F(JobRecords, TooManyFilesOrTooLongPathsAreRefusedBeforeAnythingIsCopied) {
  const NodeInfo::Ptr merged = NodeInfo::create();
  merged->setType(NodeInfo::kTypeMerged);
  for (int index = 0; index < ConvertMedia::kMaxMediaItems + 1; ++index) merged->addChildNode(item(0));
  ConvertMedia full;
  EXPECT_EQ(full.initMediaData(merged), -1);
  EXPECT_EQ(full.mediaItemCount(), 0);
  EXPECT_TRUE(full.refusal().contains(QStringLiteral("255"))) << full.refusal().toStdString();
  merged->removeChildNodeAtIndex(0);
  EXPECT_EQ(full.initMediaData(merged), 0);
  EXPECT_EQ(full.initMediaData(item(1)), -1);
  EXPECT_EQ(full.mediaItemCount(), 255);

  ConvertMedia job;
  const NodeInfo::Ptr node = item(0);
  node->setInputFilename(QLatin1Char('/') + QString(1023, QLatin1Char('p')));
  EXPECT_EQ(job.initMediaData(node), -1);
  node->setInputFilename(QLatin1Char('/') + QString(1022, QLatin1Char('p')));
  EXPECT_EQ(job.initMediaData(node), 0);
  node->watermarkInfo().setM_watermarkType(WatermarkInfo::kTypePicture);
  node->watermarkInfo().setM_imagePath(QLatin1Char('/') + QString(1024, QLatin1Char('w')));
  EXPECT_EQ(job.initMediaData(node), -1);
  node->watermarkInfo().setM_imagePath(QLatin1Char('/') + QString(1023, QLatin1Char('w')));
  ASSERT_EQ(job.initMediaData(node), 0);
  EXPECT_EQ(textAt(&job.mediaItemAt(1), 8828, 1024).size(), 1024u) << "a 1,024-byte path fills its field";
  EXPECT_EQ(job.mediaItemCount(), 2);

  ConvertMedia starter;
  EXPECT_EQ(starter.encode(nullptr), -1);
  const NodeInfo::Ptr deep = item(0);
  deep->setOutputPath(media->folder() + QLatin1Char('/') + QString(250, QLatin1Char('d')));
  EXPECT_EQ(starter.encode(deep), -1);
  EXPECT_EQ(deep->converterState(), 0);
  EXPECT_TRUE(starter.videoPath().isEmpty());
  EXPECT_TRUE(starter.refusal().contains(QStringLiteral("output path"))) << starter.refusal().toStdString();
}

class RecordingDelegate : public ConvertMediaDelegate {
 public:
  void showMessage(const QString& message) override {
    messages.append(message);
    onMainThread = QThread::currentThread() == QCoreApplication::instance()->thread();
  }
  QStringList messages;
  bool onMainThread = false;
};

TEST_F(JobRecords, TheProbeSaysWhyThroughTheDelegateOnTheMainThread) {
  RecordingDelegate delegate;
  ConvertMedia prober;
  prober.setDelegate(&delegate);
  const QString subtitles = media->writeFile(QStringLiteral("words.srt"), "1\n00:00:00,000 --> 00:00:01,000\nHi\n");
  const QString wordsOnly = media->path(QStringLiteral("words only.mkv"));
  ASSERT_TRUE(modeltest::runFfmpeg({"-i", subtitles, wordsOnly}).isEmpty());

  EXPECT_EQ(prober.getMediaInfo(QString(), QString()), -1);
  EXPECT_EQ(prober.getMediaInfo(wordsOnly, QString()), -1);
  EXPECT_EQ(delegate.messages, QStringList({"Please add the video files!", "Invalid video file! (words only.mkv)"}));

  // From another thread the message is shown on the main thread before the probe returns.
  const QString notes = media->writeFile(QStringLiteral("notes.mp4"), "not a film\n");
  QEventLoop loop;
  int32_t result = 0;
  qsizetype shownWhenReturned = 0;
  std::thread worker([&] {
    result = prober.getMediaInfo(notes, QString());
    shownWhenReturned = delegate.messages.size();
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });
  loop.exec();
  worker.join();
  EXPECT_NE(result, 0);
  EXPECT_EQ(shownWhenReturned, 3);
  EXPECT_EQ(delegate.messages.last(), QStringLiteral("This file is not in a recognizable format. (notes.mp4)"));
  EXPECT_TRUE(delegate.onMainThread);

  ASSERT_EQ(prober.getMediaInfo(files->at(0)->inputFilename(), QString()), 0);
  EXPECT_EQ(prober.getLength(), static_cast<double>(files->at(0)->decoderInfo()->m_Duration));
  EXPECT_GT(prober.getLength(), 1.9e6);
}

}  // namespace
