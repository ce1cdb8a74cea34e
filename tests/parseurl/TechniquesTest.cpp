// Each technique of the analysis on a page of its own: what it finds, with
// extension, frame, length, size, thumbnail and title.

#include <gtest/gtest.h>

#include "ParsedEntries.h"
#include "parseurl.h"

namespace {

class Techniques : public testing::Test {
 protected:
  // Serves `html` at /page.html and analyses it.
  ParseOutcome analyse(const std::string& html) {
    pages.serve("/page.html", html);
    return parse(pages.address("/page.html"));
  }

  LocalHttplibServer pages;
};

TEST_F(Techniques, MediaElementsWithTheirSourcesAndInsideDataHtml) {
  const ParseOutcome outcome = analyse(R"(<html><head><title>Element page</title></head><body>
    <video poster="/img/poster.jpg" title="Clip in a video element" width="640" height="360">
      <source src="/media/clip-720.mp4" type="video/mp4" label="1280x720">
      <source data-src="/media/clip-480.webm" type="video/webm" res="480">
      <source src="/media/still.jpg">
    </video>
    <audio data-video-src="/media/sound.mp3"></audio>
    <video src="/media/uhd" type="video/mp4" title="4K"></video>
    <div data-html='<video data-source="/media/inside.flv" width="320" height="240"></video>'></div>
    </body></html>)");

  ASSERT_EQ(outcome.result, PARSE_OK);
  EXPECT_EQ(outcome.urls(),
            (std::vector<std::string>{pages.address("/media/clip-720.mp4"), pages.address("/media/clip-480.webm"),
                                      pages.address("/media/sound.mp3"), pages.address("/media/uhd"),
                                      pages.address("/media/inside.flv")}));
  const std::string poster = pages.address("/img/poster.jpg");
  expectEntry(outcome,
              {1280, 720, pages.address("/media/clip-720.mp4"), "mp4", 0, 0, "Clip in a video element", poster});
  expectEntry(outcome,
              {854, 480, pages.address("/media/clip-480.webm"), "webm", 0, 0, "Clip in a video element", poster});
  expectEntry(outcome, {0, 0, pages.address("/media/sound.mp3"), "mp3", 0, 0, "Element page", ""});
  // A title that is a quality label gives the frame, not the name; the type gives the extension.
  expectEntry(outcome, {3840, 2160, pages.address("/media/uhd"), "mp4", 0, 0, "Element page", ""});
  expectEntry(outcome, {320, 240, pages.address("/media/inside.flv"), "flv", 0, 0, "Element page", ""});
}

TEST_F(Techniques, JsonLdVideoObjectsAtTheTopInGraphsAndUnderOtherObjects) {
  const ParseOutcome outcome = analyse(R"(<html><head><title>Page title</title>
    <script type="application/ld+json">{"@context": "https://schema.org", "@graph": [
      {"@type": "WebPage", "name": "not a video"},
      {"@type": "VideoObject", "name": "Tom &amp; Jerry", "contentUrl": "/v/ld.mp4?a=1&amp;b=2",
       "encodingFormat": "video/mp4", "width": "1920", "height": 1080, "duration": "PT1H2M3.5S",
       "thumbnailUrl": ["/t/first.jpg", "/t/second.jpg"], "contentSize": "12.5 MB"}]}</script>
    <script type="application/ld+json">{"@type": "NewsArticle", "video": {"@type": "VideoObject", "name": "B",
      "contentUrl": "https://cdn.example.test/b.webm", "thumbnailUrl": {"@type": "ImageObject", "url": "//img.example.test/b.jpg"},
      "width": {"@type": "QuantitativeValue", "value": 640}, "height": "360 px"}}</script>
    <script type="application/ld+json">[{"@type": "Article", "subjectOf": {"@type": ["VideoObject", "CreativeWork"],
      "contentUrl": "c.flv", "duration": "PT45S", "thumbnailUrl": "c.jpg", "contentSize": "2048"}}]</script>
    <script type="application/ld+json">{"@type": "VideoObject", "contentUrl": "/broken", </script>
    </head></html>)");

  ASSERT_EQ(outcome.result, PARSE_OK);
  ASSERT_EQ(outcome.entries.size(), 3u);
  expectEntry(outcome, {1920, 1080, pages.address("/v/ld.mp4?a=1&b=2"), "mp4", 3723, 12500000, "Tom & Jerry",
                        pages.address("/t/first.jpg")});
  expectEntry(outcome,
              {640, 360, "https://cdn.example.test/b.webm", "webm", 0, 0, "B", "http://img.example.test/b.jpg"});
  expectEntry(outcome, {0, 0, pages.address("/c.flv"), "flv", 45, 2048, "Page title", pages.address("/c.jpg")});
}

TEST_F(Techniques, OpenGraphInAnyAttributeOrderAndTheTwitterStream) {
  const ParseOutcome outcome = analyse(R"(<html><head><title>Not this title</title>
    <meta content="/og/clip.mp4" property="og:video:url">
    <meta property="og:video:secure_url" content="https://secure.example.test/og/clip.mp4">
    <meta property="og:video:type" content="video/mp4">
    <meta property="og:video:width" content="1280"><meta property="og:video:height" content="720">
    <meta name="og:image" content="/og/picture.jpg">
    <meta property="og:title" content="Open Graph clip">
    <meta property="og:video" content="/player.swf">
    <meta property="og:video:type" content="application/x-shockwave-flash">
    <meta name="twitter:player:stream" content="/tw/stream.webm">
    <meta name="twitter:player:stream:content_type" content="video/webm">
    </head></html>)");

  // The structure's secure address, the stream, and the plain address the sweep still finds; no player program.
  ASSERT_EQ(outcome.result, PARSE_OK);
  EXPECT_EQ(outcome.urls(),
            (std::vector<std::string>{"https://secure.example.test/og/clip.mp4", pages.address("/tw/stream.webm"),
                                      pages.address("/og/clip.mp4")}));
  const std::string picture = pages.address("/og/picture.jpg");
  expectEntry(outcome, {1280, 720, "https://secure.example.test/og/clip.mp4", "mp4", 0, 0, "Open Graph clip", picture});
  expectEntry(outcome, {0, 0, pages.address("/tw/stream.webm"), "webm", 0, 0, "Open Graph clip", picture});
}

TEST_F(Techniques, PlayerSetUpsLoadsAndSourceLists) {
  const ParseOutcome outcome = analyse(R"(<html><head><title>Player page</title></head><body><script>
    var player = somePlayer("box").setup({
      title: 'Set-up clip',
      image: "/p/setup.jpg",
      duration: 95,
      sources: [
        {file: "/p/setup-hd", label: "1080p HD", type: "mp4"},
        {file: '/p/setup-360.mp4', label: '360p'},  // the small one
      ],
    });
    other.load([{file: "/p/load.webm", image: "/p/load.jpg", title: "Loaded &amp; ready", duration: "61",
                 width: 800, height: 450}]);
    videojs('x').src([{src: "/p/src-720.mp4", type: "video/mp4", res: 720}, "/p/plain.flv"]);
    </script></body></html>)");

  ASSERT_EQ(outcome.result, PARSE_OK);
  const std::string setupImage = pages.address("/p/setup.jpg");
  expectEntry(outcome, {1920, 1080, pages.address("/p/setup-hd"), "mp4", 95, 0, "Set-up clip", setupImage});
  expectEntry(outcome, {640, 360, pages.address("/p/setup-360.mp4"), "mp4", 95, 0, "Set-up clip", setupImage});
  expectEntry(outcome,
              {800, 450, pages.address("/p/load.webm"), "webm", 61, 0, "Loaded & ready", pages.address("/p/load.jpg")});
  expectEntry(outcome, {1280, 720, pages.address("/p/src-720.mp4"), "mp4", 0, 0, "Player page", ""});
  expectEntry(outcome, {0, 0, pages.address("/p/plain.flv"), "flv", 0, 0, "Player page", ""});
}

TEST_F(Techniques, TheFinalSweepFindsAddressesInScriptsAndText) {
  const ParseOutcome outcome = analyse(R"(<html><head><title>Sweep page</title>
    <meta property="og:image" content="/sweep/picture.jpg"></head><body>
    <script>var config = {"hd": "https:\/\/cdn.example.test\/sweep\/hd.mp4", "sd": "\u002Fsweep\u002Fsd.webm?token=a&amp;b=1",
                          "audio": "/sweep/sound.mp4a", "other": "/sweep/clip.mp4.jpg"};</script>
    <a href="//cdn.example.test/sweep/old.flv">old</a>
    <p>Also at http://cdn.example.test/sweep/plain.mp4 and in a file called notes.mp4 here.</p>
    </body></html>)");

  ASSERT_EQ(outcome.result, PARSE_OK);
  EXPECT_EQ(outcome.urls(), (std::vector<std::string>{
                                "https://cdn.example.test/sweep/hd.mp4", pages.address("/sweep/sd.webm?token=a&b=1"),
                                "http://cdn.example.test/sweep/old.flv", "http://cdn.example.test/sweep/plain.mp4"}));
  expectEntry(outcome, {0, 0, pages.address("/sweep/sd.webm?token=a&b=1"), "webm", 0, 0, "Sweep page",
                        pages.address("/sweep/picture.jpg")});
}

TEST_F(Techniques, TheAddressItselfIsAMediaFileByItsTypeOrItsFirstBytes) {
  struct Case {
    std::string path;
    std::string contentType;
    std::string body;
    std::string extension;
    std::string title;
  };
  const std::string webm =
      std::string("\x1A\x45\xDF\xA3\x9F\x42\x86\x81\x01\x42\x82\x84webm", 16) + std::string(900, 'w');
  const std::vector<Case> cases{
      {"/files/clip.mp4", "video/mp4", mp4Bytes(100000), "mp4", "clip.mp4"},
      {"/files/download", "application/octet-stream", mp4Bytes(5000), "mp4", "download"},
      {"/files/mislabelled.txt", "text/plain", webm, "webm", "mislabelled.txt"},
  };
  for (const Case& media : cases) {
    pages.serve(media.path, media.body, media.contentType);
    const ParseOutcome outcome = parse(pages.address(media.path));
    ASSERT_EQ(outcome.result, PARSE_OK) << media.path;
    ASSERT_EQ(outcome.entries.size(), 1u) << media.path;
    expectEntry(outcome, {0, 0, pages.address(media.path), media.extension, 0, static_cast<int64_t>(media.body.size()),
                          media.title, ""});
  }
}

}  // namespace
