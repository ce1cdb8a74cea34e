// The external extractor: asked first for the known sites, and for other
// pages when they gave nothing; its formats mapped; and the library's own
// result when it is missing, fails or hangs. A stand-in program on the PATH
// prints canned JSON and notes its arguments.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "PageServer.h"
#include "parseurl.h"

namespace {

const char* const kCannedJson = R"({"title": "Extracted &amp; mapped", "duration": 185.4,
  "thumbnail": "https://img.example.test/t.jpg",
  "formats": [
    {"url": "https://media.example.test/storyboard", "ext": "mhtml", "vcodec": "none"},
    {"url": "https://media.example.test/sound.m4a", "ext": "m4a", "vcodec": "none", "filesize": 1000},
    {"url": "https://media.example.test/v?itag=18", "ext": "mp4", "width": 640, "height": 360, "filesize": 5000000,
     "protocol": "https", "vcodec": "avc1"},
    {"url": "https://media.example.test/hls/720.m3u8", "ext": "mp4", "width": 1280, "height": 720,
     "filesize_approx": 9000000.5, "protocol": "m3u8_native"},
    {"ext": "webm", "width": 1920, "height": 1080}
  ]})";

class Extractor : public testing::Test {
 protected:
  void SetUp() override {
    folder = std::filesystem::temp_directory_path() / ("extractor-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "canned.json") << kCannedJson;
    savedPath = std::getenv("PATH") != nullptr ? std::getenv("PATH") : "";
    setenv("PATH", folder.c_str(), 1);
    SetWorkPath(folder.c_str());
  }
  void TearDown() override {
    setenv("PATH", savedPath.c_str(), 1);
    SetParseLimits(0, 0);
    std::filesystem::remove_all(folder);
  }

  // A stand-in that notes its arguments and working folder, then runs `body`.
  void installStandIn(const std::string& body) {
    const std::filesystem::path program = folder / "yt-dlp";
    std::ofstream(program) << "#!/bin/sh\nprintf '%s\\n' \"$@\" > " << (folder / "arguments").string() << "\npwd > "
                           << (folder / "folder").string() << "\n"
                           << body << "\n";
    chmod(program.c_str(), 0755);
  }
  void installCannedStandIn() { installStandIn("exec /bin/cat " + (folder / "canned.json").string()); }

  bool wasAsked() const { return std::filesystem::exists(folder / "arguments"); }
  std::string noted(const char* name) const {
    std::ifstream file(folder / name);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  PageServer pages;
  std::filesystem::path folder;
  std::string savedPath;
};

TEST_F(Extractor, AKnownSiteIsAskedFirstAndItsFormatsAreMapped) {
  installCannedStandIn();
  const std::string address = "https://www.youtube.com/watch?v=abc";

  const ParseOutcome outcome = parse(address);

  ASSERT_EQ(outcome.result, PARSE_OK);
  EXPECT_EQ(noted("arguments"), "-J\n--no-playlist\n" + address + "\n");
  EXPECT_EQ(noted("folder"), folder.string() + "\n");
  EXPECT_EQ(outcome.urls(), (std::vector<std::string>{"https://media.example.test/v?itag=18",
                                                      "https://media.example.test/hls/720.m3u8"}));
  const std::string title = "Extracted & mapped";
  const std::string thumbnail = "https://img.example.test/t.jpg";
  expectEntry(outcome, {640, 360, "https://media.example.test/v?itag=18", "mp4", 185, 5000000, title, thumbnail});
  expectEntry(outcome, {1280, 720, "https://media.example.test/hls/720.m3u8", "mp4", 185, 9000000, title, thumbnail});
}

TEST_F(Extractor, AnOtherPageAsksOnlyWhenItGaveNothing) {
  installCannedStandIn();
  pages.serve("/with-video.html", "<video src=own.mp4></video>");
  pages.serve("/without.html", "<p>nothing here</p>");

  EXPECT_EQ(parse(pages.url("/with-video.html")).urls(), std::vector<std::string>{pages.url("/own.mp4")});
  EXPECT_FALSE(wasAsked());

  const ParseOutcome outcome = parse(pages.url("/without.html"));
  EXPECT_TRUE(wasAsked());
  EXPECT_EQ(outcome.result, PARSE_OK);
  EXPECT_EQ(outcome.entries.size(), 2u);
}

TEST_F(Extractor, AMissingFailingOrHangingExtractorLeavesTheLibrarysOwnResult) {
  pages.serve("/without.html", "<p>nothing here</p>");
  SetParseLimits(1, 0);

  EXPECT_EQ(parse(pages.url("/without.html")).result, PARSE_ERROR_NO_VIDEO);

  installStandIn("echo '{\"formats\": [{\"url\": \"https://x.example.test/a.mp4\"}]}'; exit 1");
  EXPECT_EQ(parse(pages.url("/without.html")).result, PARSE_ERROR_NO_VIDEO);
  EXPECT_TRUE(wasAsked());

  installStandIn("echo 'not json'");
  EXPECT_EQ(parse(pages.url("/without.html")).result, PARSE_ERROR_NO_VIDEO);

  installStandIn("exec /bin/sleep 600");
  EXPECT_EQ(parse(pages.url("/without.html")).result, PARSE_ERROR_NO_VIDEO);
}

}  // namespace
