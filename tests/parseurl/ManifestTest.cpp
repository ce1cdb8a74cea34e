// Streaming manifests: an HLS master with two variants, a DASH manifest, a
// live playlist, on a page and as the address itself; broken ones dropped.

#include <gtest/gtest.h>

#include "ParsedEntries.h"
#include "parseurl.h"

namespace {

const char* const kMaster = R"(#EXTM3U
#EXT-X-VERSION:3
#EXT-X-STREAM-INF:BANDWIDTH=2000000,RESOLUTION=1280x720,CODECS="avc1.4d401f,mp4a.40.2"
hi/index.m3u8
#EXT-X-STREAM-INF:CODECS="avc1.42e00a,mp4a.40.2",RESOLUTION=640x360,BANDWIDTH=800000
http://cdn.example.test/lo/index.m3u8
)";

// 34.5 seconds, complete.
const char* const kVariant = R"(#EXTM3U
#EXT-X-TARGETDURATION:10
#EXTINF:10.0,
seg0.ts
#EXTINF:10.0,
seg1.ts
#EXTINF:10.0,
seg2.ts
#EXTINF:4.5,
seg3.ts
#EXT-X-ENDLIST
)";

const char* const kDash = R"(<?xml version="1.0" encoding="UTF-8"?>
<MPD xmlns="urn:mpeg:dash:schema:mpd:2011" type="static" mediaPresentationDuration="PT1M0.5S">
  <Period>
    <AdaptationSet mimeType="video/mp4" width="1920" height="1080">
      <Representation id="v1080" bandwidth="4000000"/>
      <Representation id="v480" bandwidth="1000000" width="854" height="480"/>
    </AdaptationSet>
    <AdaptationSet mimeType="audio/mp4">
      <Representation id="a1" bandwidth="128000"/>
    </AdaptationSet>
  </Period>
</MPD>)";

class Manifests : public testing::Test {
 protected:
  void SetUp() override {
    pages.serve("/hls/master.m3u8", kMaster, "application/vnd.apple.mpegurl");
    pages.serve("/hls/hi/index.m3u8", kVariant, "application/vnd.apple.mpegurl");
    pages.serve("/dash/manifest.mpd", kDash, "application/dash+xml");
  }

  // 2 Mbit/s and 0.8 Mbit/s for 34.5 seconds.
  void expectHlsVariants(const ParseOutcome& outcome, const std::string& title, const std::string& picture) {
    ASSERT_EQ(outcome.result, PARSE_OK);
    EXPECT_EQ(outcome.urls(),
              (std::vector<std::string>{pages.address("/hls/hi/index.m3u8"), "http://cdn.example.test/lo/index.m3u8"}));
    expectEntry(outcome, {1280, 720, pages.address("/hls/hi/index.m3u8"), "mp4", 34, 8625000, title, picture});
    expectEntry(outcome, {640, 360, "http://cdn.example.test/lo/index.m3u8", "mp4", 34, 3450000, title, picture});
  }

  LocalHttplibServer pages;
};

TEST_F(Manifests, AnHlsMasterOnAPageOrAsTheAddressItselfByItsTypeOrItsFirstBytesBecomesOneEntryPerVariant) {
  pages.serve("/page.html", R"(<title>Streamed</title><video src="/hls/master.m3u8" poster="/p.jpg"></video>)");
  expectHlsVariants(parse(pages.address("/page.html")), "Streamed", pages.address("/p.jpg"));
  expectHlsVariants(parse(pages.address("/hls/master.m3u8")), "master.m3u8", "");
  pages.serve("/hls/master", kMaster, "text/plain");
  expectHlsVariants(parse(pages.address("/hls/master")), "master", "");
}

TEST_F(Manifests, ADashManifestBecomesOneEntryPerVideoRepresentation) {
  pages.serve("/page.html", R"(<script>var stream = "/dash/manifest.mpd";</script>)");
  // On a page and as the address itself; the title is the address's last part either way.
  for (const auto& [path, title] : {std::pair{"/page.html", "page.html"}, {"/dash/manifest.mpd", "manifest.mpd"}}) {
    const ParseOutcome outcome = parse(pages.address(path));
    ASSERT_EQ(outcome.result, PARSE_OK) << path;
    EXPECT_EQ(outcome.entries.size(), 2u) << path << " " << testing::PrintToString(outcome.urls());
    // 4 and 1 Mbit/s for 60.5 seconds; the second's frame is its own.
    expectEntry(outcome,
                {1920, 1080, pages.address("/dash/manifest.mpd#representation=v1080"), "mp4", 60, 30250000, title, ""});
    expectEntry(outcome,
                {854, 480, pages.address("/dash/manifest.mpd#representation=v480"), "mp4", 60, 7562500, title, ""});
  }
}

TEST_F(Manifests, ALivePlaylistHasNoLengthAndABrokenOneIsDropped) {
  pages.serve("/live.m3u8", "#EXTM3U\n#EXTINF:6.0,\nseg0.ts\n#EXTINF:6.0,\nseg1.ts\n", "application/x-mpegURL");
  pages.serve("/broken.m3u8", "<html>not a playlist</html>", "application/x-mpegURL");
  pages.serve("/page.html",
              R"(<video src="/live.m3u8"></video><video src="/broken.m3u8"></video><video src="/missing.mpd"></video>
                 <video src="/clip.mp4"></video>)");

  const ParseOutcome outcome = parse(pages.address("/page.html"));

  ASSERT_EQ(outcome.result, PARSE_OK);
  EXPECT_EQ(outcome.urls(), (std::vector<std::string>{pages.address("/live.m3u8"), pages.address("/clip.mp4")}));
  EXPECT_EQ(outcome.entries[0].extension, "mp4");
  EXPECT_EQ(outcome.entries[0].length, 0);
}

}  // namespace
