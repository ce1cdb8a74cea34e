// The records a conversion job hands to the converter, for items made from
// generated files by the real adding step: each setting in the converter's
// units.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "Action/NodeInfoAction.h"
#include "GeneratedMedia.h"
#include "MediaClass/ConvertMedia.h"
#include "MediaClass/OutputParamRecord.h"
#include "support/ListItems.h"

namespace {

// The records are packed: a field is read by copy (into a list of values, or
// as `+field`), never bound to a reference.
using Values = std::vector<int64_t>;

// The text of a field: up to its NUL, or the whole field when it has none.
template <size_t N>
std::string text(const char (&field)[N]) {
  return std::string(field, strnlen(field, N));
}

class JobRecords : public testing::Test {
 protected:
  void SetUp() override {
    const QStringList paths{media.clip(QStringLiteral("movie.mp4"), 2),
                            media.clip(QStringLiteral("two voices.mkv"), 1, 2),
                            media.clip(QStringLiteral("silent.mov"), 1, 0)};
    files = modeltest::addToList(db, paths, media.path(QStringLiteral("scratch")));
    ASSERT_EQ(files.size(), 3);
  }

  // A copy of an added file with the video profile of most tests.
  NodeInfo::Ptr item(int index, const QString& profile = QStringLiteral("MPEG-4 AVC")) {
    NodeInfo::Ptr node = files.at(index)->copy();
    node->setCurProfileSetting(modeltest::shippedProfile(profile));
    node->setOutputPath(media.path());
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

  testmedia::Folder media;
  UIInfoDB db;
  NodeInfo::List files;
  std::unique_ptr<ConvertMedia> job;
};

TEST_F(JobRecords, AMergedNodeGivesOneRecordPerFileInChildOrder) {
  NodeInfoAction::createMergeTableNodeInfo(db);
  const NodeInfo::Ptr merged = NodeInfoAction::getMergeRootNode(db)->getChildNodeAtIndex(0);
  ASSERT_NE(merged, nullptr);
  ASSERT_EQ(merged->getChildNodeCount(), 3);

  ConvertMedia merging;
  ASSERT_EQ(merging.initMediaData(merged), 0);
  ASSERT_EQ(merging.mediaItemCount(), 3);
  for (int index = 0; index < 3; ++index) {
    const MediaItem& record = merging.mediaItemAt(index);
    const NodeInfo::Ptr member = merged->getChildNodeAtIndex(index);
    EXPECT_EQ((Values{record.m_cbsize, record.m_MediaType, record.m_bEnableHwaccel}),
              (Values{VC_MEDIA_ITEM_SIZE, 0, 1}))
        << "size, media type, hardware decoding";
    EXPECT_EQ(text(record.m_FileName), member->inputFilename().toStdString());
    EXPECT_EQ(std::memcmp(&record.m_Info, member->decoderInfo(), sizeof(DECODER_INFO)), 0);
  }
  // The count is never reset: a second node is appended after the first three.
  ASSERT_EQ(merging.initMediaData(files.at(1)), 0);
  EXPECT_EQ(text(merging.mediaItemAt(3).m_FileName), files.at(1)->inputFilename().toStdString());
}

TEST_F(JobRecords, TimesBecomeMicrosecondsAndEffectsTakeTheirPlaces) {
  const NodeInfo::Ptr node = item(0);
  node->trimSettingInfo().setStartTime(1);
  node->trimSettingInfo().setEndTime(2);
  EffectSettingInfo& effect = node->effectSettingInfo();
  effect.setEffectModel(1035);
  effect.setModelOf3D(1072);
  effect.setDepth(12);
  effect.setFadeIn(3);
  effect.setFadeOut(2);
  effect.setVideoFadeIn(1);
  effect.setVideoFadeOut(4);

  const MediaItem& r = recordOf(node);
  EXPECT_EQ((Values{r.m_MediaStartPos, r.m_MediaEndPos, r.m_fadeIn_len, r.m_fadeOut_len, r.m_fadeVideoInfo.m_fadeIn_len,
                    r.m_fadeVideoInfo.m_fadeOut_len, r.m_EffectID[0], r.m_EffectID[1]}),
            (Values{1000000, 2000000, 3000000, 2000000, 1000000, 4000000, 1035, 1072}))
      << "start, end, sound fade-in, sound fade-out, video fade-in, video fade-out, effect, 3D model";
  EffectArgs depthAndModel{};
  depthAndModel.arg1 = 2;
  depthAndModel.arg6 = 1072;
  const EffectArgs none{};
  EXPECT_EQ(std::memcmp(&r.m_pEffectArgs[0], &none, sizeof none), 0) << "the first argument set stays zero";
  EXPECT_EQ(std::memcmp(&r.m_pEffectArgs[1], &depthAndModel, sizeof none), 0);
}

TEST_F(JobRecords, VolumeAboveHundredIsCompressedAndDepthIsDividedTowardZero) {
  const NodeInfo::Ptr node = item(0);
  const std::pair<int32_t, int32_t> volumes[] = {{0, 0}, {37, 94}, {50, 128}, {100, 256}, {250, 384}, {400, 512}};
  for (const auto& [percent, level] : volumes) {
    node->effectSettingInfo().setVolume(percent);
    EXPECT_EQ(+recordOf(node).m_volume, level) << percent << " %";
  }
  const std::pair<int32_t, int32_t> depths[] = {{12, 2}, {-7, -1}, {4, 0}, {5, 1}};
  for (const auto& [depth, argument] : depths) {
    node->effectSettingInfo().setDepth(depth);
    EXPECT_EQ(+recordOf(node).m_pEffectArgs[1].arg1, argument) << "depth " << depth;
  }
}

TEST_F(JobRecords, SoundIsKeptOnlyWhenAStreamIsChosenAndTheFileHasOne) {
  const NodeInfo::Ptr twoVoices = item(1);
  twoVoices->setSelectAudioStream(1);
  EXPECT_EQ(+recordOf(twoVoices).m_AudioDisable, 0);
  EXPECT_EQ(+recordOf(twoVoices).m_audioStreamIndex, 1);
  twoVoices->setSelectAudioStream(-1);
  EXPECT_EQ(+recordOf(twoVoices).m_AudioDisable, 1);
  EXPECT_EQ(+recordOf(twoVoices).m_audioStreamIndex, 0);

  const NodeInfo::Ptr silent = item(2);
  silent->setSelectAudioStream(0);
  EXPECT_EQ(+recordOf(silent).m_AudioDisable, 1);
  EXPECT_EQ(+recordOf(item(0, QStringLiteral("MP3"))).m_VideoDisable, 1) << "an audio profile disables the video";
}

TEST_F(JobRecords, TheWatermarkReachesTheRecordOnlyWithSomethingToDraw) {
  const NodeInfo::Ptr node = item(0);
  const _WatermarkInfo nothing{};
  EXPECT_EQ(std::memcmp(&recordOf(node).m_watermarkInfo, &nothing, sizeof nothing), 0)
      << "a fresh watermark writes nothing";

  WatermarkInfo& watermark = node->watermarkInfo();
  watermark.setM_watermarkType(WatermarkInfo::kTypePicture);
  const _WatermarkInfo& noPicture = recordOf(node).m_watermarkInfo;
  EXPECT_EQ((Values{noPicture.m_watermarkType, noPicture.m_transparency, noPicture.m_changed_flag}),
            (Values{0, 127, 8}))
      << "type, opacity, changed";

  watermark.setM_imagePath(QStringLiteral("/pictures/logo.png"));
  watermark.setM_imgX(10);
  watermark.setM_imgY(20);
  watermark.setM_imgW(30);
  watermark.setM_imgH(40);
  watermark.setM_w(3);
  watermark.setM_transparency(100);
  const _WatermarkInfo& picture = recordOf(node).m_watermarkInfo;
  EXPECT_EQ(text(picture.m_imagePath), "/pictures/logo.png");
  EXPECT_EQ(
      (Values{picture.m_watermarkType, picture.m_transparency, picture.m_x, picture.m_y, picture.m_w, picture.m_h}),
      (Values{1, 254, 10, 20, 30, 40}))
      << "type, opacity: 100 x 2.55 truncated, x, y, w, h";

  watermark.setM_watermarkType(WatermarkInfo::kTypeText);
  watermark.setM_text(QStringLiteral("Été"));
  watermark.setM_fontname(QStringLiteral("DejaVu Sans"));
  watermark.setM_fontsize(24);
  watermark.setM_fontstyle(WatermarkInfo::kStyleBold | WatermarkInfo::kStyleUnderline);
  watermark.setM_fontcolor(0xFF336699);
  const _WatermarkInfo& written = recordOf(node).m_watermarkInfo;
  EXPECT_EQ(text(written.m_imagePath), "") << "the picture path is not sent with a text";
  EXPECT_EQ(text(written.m_text), "Été");
  EXPECT_EQ(text(written.m_fontinfo.m_fontname), "DejaVu Sans");
  EXPECT_EQ((Values{written.m_fontinfo.m_fontstyle, written.m_fontinfo.m_fontsize, written.m_fontinfo.m_fontcolor,
                    written.m_watermarkType, written.m_w}),
            (Values{5, 24, 0xFF336699, 2, 3}))
      << "style, size, colour, type, text's w";
}

TEST_F(JobRecords, LongTextsFillTheirFieldsWithoutSplittingACharacter) {
  const NodeInfo::Ptr node = item(0);
  WatermarkInfo& watermark = node->watermarkInfo();
  watermark.setM_watermarkType(WatermarkInfo::kTypeText);
  watermark.setM_fontname(QString(40, QLatin1Char('F')));
  watermark.setM_text(QString(3000, QLatin1Char('a')));
  const _WatermarkInfo& ascii = recordOf(node).m_watermarkInfo;
  EXPECT_EQ(text(ascii.m_text), std::string(2048, 'a')) << "filled to the last byte, no terminator";
  EXPECT_EQ(text(ascii.m_fontinfo.m_fontname), std::string(30, 'F'));

  // 1 + 1024 x 2 bytes: the last "é" would straddle the end of the field.
  watermark.setM_text(QStringLiteral("a") + QString(1024, QChar(0xE9)));
  const std::string copied = text(recordOf(node).m_watermarkInfo.m_text);
  EXPECT_EQ(copied.size(), 2047u);
  EXPECT_EQ(QString::fromUtf8(copied.data(), copied.size()), QStringLiteral("a") + QString(1023, QChar(0xE9)));
}

TEST_F(JobRecords, TheOutputRecordCarriesTheProfileAndZerosElsewhere) {
  const OutputParam video = outputOf(item(0));
  // Everything the profile does not set stays zero.
  OutputParam expected{};
  expected.m_cbsize = VC_OUTPUT_PARAM_SIZE;
  std::strcpy(expected.m_FileName, "/out/movie.mp4");
  std::strcpy(expected.m_Format, "mp4");
  std::strcpy(expected.m_VideoEncoder, "libx264");
  std::strcpy(expected.m_AudioEncoder, "aac");
  expected.m_VideoBitrate = 2000;
  expected.m_FrameRateNum = 30000;
  expected.m_FrameRateDen = 1001;
  expected.m_Width = 320;
  expected.m_Height = 240;
  expected.m_SampleAspectNum = expected.m_SampleAspectDen = 1;
  expected.m_VideoQuality = 27;
  expected.m_AudioBitrate = 128;
  expected.m_SampleRate = 44100;
  expected.m_Channels = 2;
  expected.m_BitsPerSample = 16;
  EXPECT_EQ(std::memcmp(&video, &expected, sizeof expected), 0);

  const OutputParam audio = outputOf(item(0, QStringLiteral("MP3")));
  EXPECT_EQ(text(audio.m_VideoEncoder), "") << "no video fields for an audio profile";
  EXPECT_EQ((Values{audio.m_VideoBitrate, audio.m_FrameRateNum, audio.m_Width, audio.m_Type, audio.m_AudioBitrate}),
            (Values{0, 0, 0, 1, 192}))
      << "video bitrate, rate, width, type, sound bitrate";
  EXPECT_EQ(text(audio.m_AudioEncoder), "libmp3lame");
}

TEST_F(JobRecords, FrameRatesFollowTheTableWithExactComparison) {
  const NodeInfo::Ptr node = item(0);
  const std::tuple<double, int32_t, int32_t> rates[] = {
      {23.97, 24000, 1001}, {29.97, 30000, 1001}, {30, 30, 1}, {0, 30, 1},
      {-2, 30, 1},          {59.94, 60000, 1001}, {25, 25, 1}, {23.976, 23, 1}};
  for (const auto& [rate, numerator, denominator] : rates) {
    node->curProfileSetting().setVideoFrameRate(rate);
    const OutputParam param = outputOf(node);
    EXPECT_EQ(+param.m_FrameRateNum, numerator) << rate;
    EXPECT_EQ(+param.m_FrameRateDen, denominator) << rate;
  }
}

TEST_F(JobRecords, SplitSettingsBecomeTheSegmentLengthAndOutputNamesAreNumberedFromZero) {
  const NodeInfo::Ptr node = item(0);
  node->mediaFileInfo().setITotalTime(100);
  const auto segmentUs = [&node](int32_t splitRow, int32_t minutes, int32_t clips) {
    node->setSplitRow(splitRow);
    node->setVideoMinutes(minutes);
    node->setVideoClips(clips);
    return outputOf(node).m_SegmentLength;
  };
  EXPECT_EQ(segmentUs(1, 0, 3), 34000000) << "100 / 3 = 33 leaves 1 over: 34 s pieces";
  EXPECT_EQ(segmentUs(1, 0, 4), 25000000);
  EXPECT_EQ(segmentUs(1, 0, 1), 0);
  EXPECT_EQ(segmentUs(0, 2, 1), 120000000);
  EXPECT_EQ(segmentUs(1, 2, 1), 0) << "minutes count only when split by minutes";
  node->mediaFileInfo().setITotalTime(3);
  EXPECT_EQ(segmentUs(1, 0, 5), 0) << "more clips than seconds keeps one output";

  testmedia::Folder folder;
  EXPECT_EQ(OutputParamRecord::freeOutputPath(folder.path(), "movie", "mp4", false), folder.path("movie.mp4"));
  folder.write(QStringLiteral("movie.mp4"), "x");
  folder.write(QStringLiteral("movie(0).mp4"), "x");
  EXPECT_EQ(OutputParamRecord::freeOutputPath(folder.path(), "movie", "mp4", false), folder.path("movie(1).mp4"));
  folder.write(QStringLiteral("clip_0.mp3"), "x");
  EXPECT_EQ(OutputParamRecord::freeOutputPath(folder.path(), "clip", "mp3", true), folder.path("clip(0).mp3"));
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
  EXPECT_EQ(text(job.mediaItemAt(1).m_watermarkInfo.m_imagePath).size(), 1024u) << "a 1,024-byte path fills its field";
  EXPECT_EQ(job.mediaItemCount(), 2);
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
  EXPECT_EQ(prober.getMediaInfo(QString(), QString()), -1);
  EXPECT_EQ(delegate.messages, QStringList{"Please add the video files!"});

  // From another thread the message is shown on the main thread before the probe returns.
  const QString notes = media.write(QStringLiteral("notes.mp4"), "not a film\n");
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
  EXPECT_EQ(shownWhenReturned, 2);
  EXPECT_EQ(delegate.messages.last(), QStringLiteral("This file is not in a recognizable format. (notes.mp4)"));
  EXPECT_TRUE(delegate.onMainThread);

  ASSERT_EQ(prober.getMediaInfo(files.at(0)->inputFilename(), QString()), 0);
  EXPECT_EQ(prober.getLength(), static_cast<double>(files.at(0)->decoderInfo()->m_Duration));
  EXPECT_GT(prober.getLength(), 1.9e6);
}

}  // namespace
