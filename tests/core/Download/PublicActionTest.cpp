// The quality rule and the format preference, with their deliberate quirks.

#include <gtest/gtest.h>

#include "Download/PublicAction.h"

namespace {

DownloadVideoInfo file(double width, double height, const char* extension) {
  DownloadVideoInfo info;
  info.setDimension(QSizeF(width, height));
  info.setExtention(QString::fromLatin1(extension));
  return info;
}

qint64 chosenIndex(const QList<DownloadVideoInfo>& files, int quality, qint64 before = -1) {
  VideoInfoObject task;
  task.setArrFileList(files);
  task.setSelectFileIndex(before);
  PublicAction::autoSetSelectFileIndex(task, quality);
  return task.selectFileIndex();
}

TEST(QualityRule, TheExamplesOfTheThreeRules) {
  const QList<DownloadVideoInfo> files{file(1280, 720, "mp4"), file(1280, 720, "flv"), file(640, 360, "webm")};
  EXPECT_EQ(chosenIndex(files, 0), 0);  // 1280x720 mp4
  EXPECT_EQ(chosenIndex(files, 2), 2);  // 640x360 webm
  EXPECT_EQ(chosenIndex(files, 1), 2);  // two groups: the one at index 1
}

TEST(QualityRule, WithinOneFrameSizeTheBetterFormatWinsAndTheFirstMp4EndsTheSearch) {
  struct Case {
    const char* name;
    QList<DownloadVideoInfo> files;
    int quality;
    qint64 chosen;
  };
  const std::vector<Case> cases{
      {"highest: webm over flv, then mp4",
       {file(1280, 720, "flv"), file(1280, 720, "webm"), file(1280, 720, "MP4")},
       0,
       2},
      {"highest: only the largest frame counts", {file(1280, 720, "flv"), file(640, 360, "mp4")}, 0, 0},
      {"highest: the search stops at the first mp4",
       {file(1280, 720, "webm"), file(1280, 720, "mp4"), file(1280, 720, "mp4 ")},
       0,
       1},
      {"lowest: walks towards the front", {file(1280, 720, "mp4"), file(640, 360, "mp4"), file(640, 360, "flv")}, 2, 1},
      {"middle of three groups",
       {file(1920, 1080, "mp4"), file(1280, 720, "flv"), file(1280, 720, "webm"), file(640, 360, "mp4")},
       1,
       2},
      {"middle groups by whole pixels", {file(1280.4, 720, "flv"), file(1280.2, 720, "mp4")}, 1, 1},
      {"unknown formats keep the first", {file(640, 360, "mkv"), file(640, 360, "mov")}, 0, 0},
  };
  for (const Case& test : cases) EXPECT_EQ(chosenIndex(test.files, test.quality), test.chosen) << test.name;
}

TEST(QualityRule, AnyOtherRuleAndAnEmptyListLeaveTheIndex) {
  EXPECT_EQ(chosenIndex({file(640, 360, "mp4")}, 3, 7), 7);
  EXPECT_EQ(chosenIndex({}, 0, -1), -1);
}

TEST(FormatPreference, EqualExtensionsAndUnknownOnesAreEven) {
  struct Case {
    const char* a;
    const char* b;
    int preference;
  };
  const std::vector<Case> cases{
      {"mp4", "mp4", 0},  {"mp4", "MP4", 1}, {"flv", "mp4", -1}, {"webm", "flv", 1}, {"FLV", "webm", -1},
      {"mkv", "flv", -1}, {"mkv", "mov", 0}, {"", "webm", -1},   {"Mp4", "mp4", 1},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(CompareDownloadQualityParam(file(1, 1, test.a), file(1, 1, test.b)), test.preference)
        << test.a << " vs " << test.b;
  }
}

}  // namespace
