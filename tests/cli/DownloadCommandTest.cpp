// videoconverter download, run as a user runs it in a home of its own,
// against a video site on 127.0.0.1: the list runs to its end with a line
// per task, the list file is the window's and --list shows it, the quality
// starts at the highest in every run, Ctrl-C pauses and the next run
// continues, --convert converts what finished, and bad arguments are
// refused.

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <csignal>

#include "DownloadTestServer.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "LocalHttplibServer.h"
#include "ProgramRun.h"

namespace {

class DownloadCommand : public testing::Test {
 protected:
  ProgramResult download(const QStringList& arguments) {
    return runProgramAs(homeEnvironment(home.path()), QStringList{"download"} + arguments);
  }

  QTemporaryDir home;
  testmedia::Folder folder;
};

TEST_F(DownloadCommand, RunsTheListToItsEndAndKeepsItForTheNextRun) {
  DownloadTestServer server;
  const QString missing = server.pageAddress("missing").replace(".html", ".htm");
  const ProgramResult first = download(
      {server.pageAddress("one"), server.pageAddress("two"), missing, "--folder", folder.path(), "--quality", "2"});
  EXPECT_EQ(first.exitCode, 1) << first.errorOutput.toStdString();
  EXPECT_TRUE(first.standardOutput.contains("Finished one: " + folder.path("one.mp4")));
  EXPECT_TRUE(first.standardOutput.contains("Finished two: " + folder.path("two.mp4")));
  EXPECT_TRUE(first.standardOutput.contains("2 finished, 1 failed"));
  EXPECT_TRUE(first.errorOutput.contains("Failed " + missing + ": no video to download on the page"))
      << first.errorOutput.toStdString();
  EXPECT_EQ(folder.read("one.mp4"), server.video());
  EXPECT_EQ(folder.read("two.mp4"), server.video());

  const ProgramResult listed = download({"--list"});
  EXPECT_EQ(listed.exitCode, 0);
  EXPECT_TRUE(listed.standardOutput.contains("failed    \n          page: " + missing))
      << listed.standardOutput.toStdString();
  EXPECT_TRUE(listed.standardOutput.contains("finished  two\n          page: " + server.pageAddress("two") +
                                             "\n          file: " + folder.path("two.mp4")));

  // Without addresses the list is resumed: the failed task is tried again,
  // the finished ones are left alone; an address already there is said so.
  const ProgramResult again = download({server.pageAddress("one")});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_TRUE(again.standardOutput.contains("Already in the list: " + server.pageAddress("one")));
  EXPECT_TRUE(again.standardOutput.contains("0 finished, 1 failed"));
  EXPECT_EQ(server.rangesAsked("one").size(), 2);  // the size probe and the download, in the first run
}

TEST_F(DownloadCommand, TheQualityOfARunIsNotTheNextRunsThoughTheListSavesIt) {
  LocalHttplibServer site;
  for (const std::string page : {"/first.html", "/second.html"}) {
    site.serve(page, R"(<title>two sizes</title><video><source src="/large.mp4" label="1280x720">
        <source src="/small.mp4" label="640x360"></video>)");
  }
  site.serve("/large.mp4", std::string(3000, 'L'), "video/mp4");
  site.serve("/small.mp4", std::string(3000, 's'), "video/mp4");

  ASSERT_EQ(download({site.url("/first.html").toString(), "--quality", "2", "--folder", folder.path()}).exitCode, 0);
  EXPECT_EQ(folder.read("two sizes.mp4"), QByteArray(3000, 's'));
  ASSERT_EQ(download({site.url("/second.html").toString(), "--folder", folder.path()}).exitCode, 0);
  EXPECT_EQ(folder.read("two sizes(0).mp4"), QByteArray(3000, 'L'));
}

TEST_F(DownloadCommand, CtrlCPausesEverythingAndTheNextRunContinues) {
  DownloadTestServer server;
  server.hold("big");
  QProcess process;
  process.setProcessEnvironment(homeEnvironment(home.path()));
  QString progress;
  QObject::connect(&process, &QProcess::readyReadStandardError,
                   [&] { progress += QString::fromUtf8(process.readAllStandardError()); });
  process.start(programPath(), {"download", server.pageAddress("big"), "--folder", folder.path()});
  // Half of it has come: the progress line of the next second says so.
  ASSERT_TRUE(waitUntil([&] {
    return progress.contains(QRegularExpression("  big   50%  [0-9.]+ Kb/s  0.00 MB/0.00 MB\n"));
  })) << progress.toStdString();
  ::kill(static_cast<pid_t>(process.processId()), SIGINT);
  const ProgramResult stopped = finishProgram(process);
  EXPECT_EQ(stopped.exitCode, 130);
  EXPECT_TRUE((progress + stopped.errorOutput).contains("Pausing every download; the list is saved."));
  EXPECT_TRUE(download({"--list"}).standardOutput.contains("paused    big"));

  server.release("big");
  const ProgramResult resumed = download({});
  EXPECT_EQ(resumed.exitCode, 0) << resumed.errorOutput.toStdString();
  EXPECT_EQ(folder.read("big.mp4"), server.video());
  EXPECT_EQ(server.rangesAsked("big").last(), "bytes=2000-");
}

TEST_F(DownloadCommand, ConvertsWhatFinishedWithTheProfileGiven) {
  const QString clip = testmedia::made("clip.mp4", testmedia::picture(1) + testmedia::tone(1));
  QFile media(clip);
  ASSERT_TRUE(media.open(QIODevice::ReadOnly));
  DownloadTestServer server(media.readAll());
  const ProgramResult result =
      download({server.pageAddress("clip"), "--folder", folder.path(), "--convert", "--profile", "H.264 MKV"});
  ASSERT_EQ(result.exitCode, 0) << result.errorOutput.toStdString();
  const QRegularExpressionMatch done = QRegularExpression("Done: (.+\\.mkv)").match(result.standardOutput);
  ASSERT_TRUE(done.hasMatch()) << result.standardOutput.toStdString();
  EXPECT_NEAR(testmedia::duration(done.captured(1)), 1.0, 0.2);
  EXPECT_EQ(testmedia::streamCount(done.captured(1), "video"), 1);
}

TEST_F(DownloadCommand, RefusesBadArgumentsWithItsUsage) {
  for (const QStringList& bad :
       {QStringList{"--quality", "5"}, QStringList{"--profile", "WMA"}, QStringList{"--list", "http://a.test/x"},
        QStringList{"http://a.test"}, QStringList{"--folder"}, QStringList{"--fast"}}) {
    const ProgramResult refused = download(bad);
    EXPECT_EQ(refused.exitCode, 2) << bad.join(' ').toStdString();
    EXPECT_TRUE(refused.errorOutput.contains("Usage: videoconverter download")) << bad.join(' ').toStdString();
  }
  // Nothing was added by a refused run.
  EXPECT_TRUE(download({"--list"}).standardOutput.contains("The download list is empty."));
}

}  // namespace
