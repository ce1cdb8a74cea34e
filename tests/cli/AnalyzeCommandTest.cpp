// videoconverter analyze, run as a user runs it, against a local page.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "LocalHttplibServer.h"
#include "ProgramRun.h"

namespace {

class AnalyzeCommand : public testing::Test {
 protected:
  void SetUp() override {
    httplib.serve("/page.html", R"(<title>Two sizes</title><video poster="/t.jpg">
        <source src="/large.mp4" label="1280x720"><source src="/small.webm" label="640x360"></video>)",
                  "text/html");
    httplib.serve("/empty.html", "<p>no video</p>", "text/html");
    httplib.serve(R"(/(large\.mp4|small\.webm))", std::string(3500000, 'v'), "video/mp4");
  }

  static ProgramResult analyze(const QStringList& arguments) { return runProgram(QStringList{"analyze"} + arguments); }

  LocalHttplibServer httplib;
};

TEST_F(AnalyzeCommand, PrintsTheSiteEveryFileAndTheChosenOneOrWhyThereIsNone) {
  const ProgramResult highest = analyze({httplib.url("/page.html").toString()});
  ASSERT_EQ(highest.exitCode, 0) << highest.errorOutput.toStdString();
  const QString& out = highest.standardOutput;
  EXPECT_TRUE(out.contains("Site:  0"));
  EXPECT_TRUE(out.contains("Files: 2"));
  EXPECT_TRUE(out.contains("mp4, 3.50 MB, 1280x720, 00:00:00"));
  EXPECT_TRUE(out.contains("Title:     Two sizes"));
  EXPECT_TRUE(out.contains("Thumbnail: " + httplib.url("/t.jpg").toString()));
  EXPECT_TRUE(out.contains("Chosen: 0 " + httplib.url("/large.mp4").toString())) << out.toStdString();

  const ProgramResult lowest = analyze({httplib.url("/page.html").toString(), "--quality", "2", "--json"});
  ASSERT_EQ(lowest.exitCode, 0) << lowest.errorOutput.toStdString();
  const QJsonObject report = QJsonDocument::fromJson(lowest.standardOutput.toUtf8()).object();
  EXPECT_EQ(report["site"].toInt(), 0);
  EXPECT_EQ(report["chosen"].toInt(), 1);
  const QJsonArray files = report["files"].toArray();
  ASSERT_EQ(files.size(), 2);
  EXPECT_EQ(files[1].toObject()["url"].toString(), httplib.url("/small.webm").toString());
  EXPECT_EQ(files[1].toObject()["size_text"].toString(), "3.50 MB");
  EXPECT_EQ(files[1].toObject()["width"].toInt(), 640);

  const ProgramResult empty = analyze({httplib.url("/empty.html").toString()});
  EXPECT_EQ(empty.exitCode, 1);
  EXPECT_TRUE(empty.errorOutput.contains("no video was found on the page")) << empty.errorOutput.toStdString();

  const ProgramResult json = analyze({httplib.url("/empty.html").toString(), "--json"});
  EXPECT_EQ(json.exitCode, 1);
  EXPECT_TRUE(QJsonDocument::fromJson(json.standardOutput.toUtf8()).object()["chosen"].isNull());
}

TEST_F(AnalyzeCommand, RefusesBadArgumentsWithItsUsage) {
  for (const QStringList& bad : {QStringList{}, QStringList{"http://a.test/", "--quality", "3"},
                                 QStringList{"http://a.test/", "http://b.test/"}}) {
    const ProgramResult refused = analyze(bad);
    EXPECT_EQ(refused.exitCode, 2) << bad.join(' ').toStdString();
    EXPECT_TRUE(refused.errorOutput.contains("Usage: videoconverter analyze")) << bad.join(' ').toStdString();
  }
}

}  // namespace
