// videoconverter fetch, run as a user runs it, against local servers.

#include <gtest/gtest.h>

#include <QFile>

#include "GeneratedMedia.h"
#include "LocalHttplibServer.h"
#include "ProgramRun.h"
#include "ScriptedHttpServer.h"

namespace {

const QByteArray kContent = patternBytes(20000);

ProgramResult fetch(const QStringList& arguments) { return runProgram(QStringList{"fetch"} + arguments); }

TEST(FetchCommand, AFailedFetchSaysWhyAndKeepsWhatItGotAndAResumedOneSavesTheWholeBody) {
  ScriptedHttpServer failing([](ScriptedHttpServer::Exchange& exchange) {
    if (exchange.request().target == "/missing") {
      exchange.send(ScriptedHttpServer::response(404, {}, "<html>not here</html>"));
      return;
    }
    exchange.send(ScriptedHttpServer::responseHead(200, {}, kContent.size()) + kContent.left(3000));
    exchange.close();
  });
  testmedia::Folder folder;

  const ProgramResult missing = fetch({failing.url("/missing").toString(), "--output", folder.path("missing.mp4")});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(missing.errorOutput.contains("the server answered with status 404")) << missing.errorOutput.toStdString();
  EXPECT_FALSE(QFile::exists(folder.path("missing.mp4")));

  const ProgramResult dropped =
      fetch({failing.url("/clip.mp4").toString(), "--output", folder.path("clip.mp4"), "--resume"});
  EXPECT_EQ(dropped.exitCode, 1);
  EXPECT_TRUE(dropped.errorOutput.contains("A connection failure occurred")) << dropped.errorOutput.toStdString();
  EXPECT_TRUE(dropped.errorOutput.contains("run again with --resume"));
  EXPECT_EQ(folder.read("clip.mp4.download"), kContent.left(3000));
  EXPECT_EQ(fetch({failing.url("/clip.mp4").toString()}).exitCode, 2) << "no --output";

  LocalHttplibServer httplib;
  QByteArray range;
  httplib.server.Get("/clip.mp4", [&range](const httplib::Request& request, httplib::Response& response) {
    range = QByteArray::fromStdString(request.get_header_value("Range"));
    response.set_content(kContent.toStdString(), "video/mp4");
  });
  const ProgramResult resumed =
      fetch({httplib.url("/clip.mp4").toString(), "--output", folder.path("clip.mp4"), "--resume"});
  EXPECT_EQ(resumed.exitCode, 0) << resumed.errorOutput.toStdString();
  EXPECT_EQ(range, "bytes=3000-");
  EXPECT_EQ(folder.read("clip.mp4"), kContent);
  EXPECT_TRUE(resumed.standardOutput.startsWith("Saved " + folder.path("clip.mp4")));
}

}  // namespace
