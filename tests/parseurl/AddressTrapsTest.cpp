// The traps of real pages: addresses in every relative form, character
// references, duplicates, things that are no video, redirects of both
// kinds, pages in other charsets, and where a title comes from.

#include <gtest/gtest.h>

#include "PageServer.h"
#include "parseurl.h"

namespace {

class AddressTraps : public testing::Test {
 protected:
  PageServer pages;
};

TEST_F(AddressTraps, EveryFormOfAddressIsResolvedAgainstThePage) {
  struct Case {
    std::string name;
    std::string html;
    std::string expected;  // a path on the server
  };
  const std::vector<Case> cases{
      {"relative", R"(<video src="../media/a.mp4"></video>)", "/dir/media/a.mp4"},
      {"protocol-relative", R"(<video src="//)" + pages.url("/b.mp4").substr(7) + R"("></video>)", "/b.mp4"},
      {"base href", R"(<head><base href="/other/"></head><video src="c.mp4"></video>)", "/other/c.mp4"},
      {"entity in an attribute", R"(<video src="e.mp4?x=1&amp;y=2"></video>)", "/dir/sub/e.mp4?x=1&y=2"},
      {"space in the address", R"(<video src="my clip.mp4"></video>)", "/dir/sub/my%20clip.mp4"},
      {"white space around it", "<video src=\"\n  f.mp4  \"></video>", "/dir/sub/f.mp4"},
  };
  for (const Case& trap : cases) {
    pages.serve("/dir/sub/" + trap.name + ".html", trap.html);
    const ParseOutcome outcome = parse(pages.url("/dir/sub/" + trap.name + ".html"));
    ASSERT_EQ(outcome.result, PARSE_OK) << trap.name;
    EXPECT_EQ(outcome.urls(), std::vector<std::string>{pages.url(trap.expected)}) << trap.name;
  }
}

TEST_F(AddressTraps, OneAddressFoundByEveryTechniqueIsOneEntryWithWhatEachKnew) {
  pages.serve("/page.html", R"(<html><head>
    <meta property="og:video" content="/clip.mp4"><meta property="og:video:width" content="1280">
    <meta property="og:video:height" content="720"><meta property="og:image" content="/og.jpg">
    <script type="application/ld+json">{"@type": "VideoObject", "contentUrl": "/clip.mp4", "duration": "PT2M"}</script>
    </head><body><video src="/clip.mp4" title="Element title"></video><video src="clip.mp4"></video>
    <script>var again = "/clip.mp4";</script></body></html>)");

  const ParseOutcome outcome = parse(pages.url("/page.html"));

  ASSERT_EQ(outcome.result, PARSE_OK);
  ASSERT_EQ(outcome.entries.size(), 1u);
  const ParsedEntry& entry = outcome.entries.front();
  EXPECT_EQ(entry.url, pages.url("/clip.mp4"));
  EXPECT_EQ(entry.width, 1280);
  EXPECT_EQ(entry.height, 720);
  EXPECT_EQ(entry.length, 120);
  EXPECT_EQ(entry.title, "Element title");
  EXPECT_EQ(entry.imageUrl, pages.url("/og.jpg"));
}

TEST_F(AddressTraps, PicturesPlayerProgramsAndPagesAreNoVideos) {
  pages.serve("/page.html", R"(<html><head>
    <meta property="og:video" content="/player.swf?file=x">
    <meta property="og:video" content="/embed/12345"><meta property="og:video:type" content="text/html">
    <script type="application/ld+json">{"@type": "VideoObject", "contentUrl": "/still.jpg"}</script>
    </head><body><video><source src="/poster.jpg"><source src="/clip.php?id=3"></video></body></html>)");

  const ParseOutcome outcome = parse(pages.url("/page.html"));

  // Only the address a <source> plays without saying what it is.
  ASSERT_EQ(outcome.result, PARSE_OK);
  EXPECT_EQ(outcome.urls(), std::vector<std::string>{pages.url("/clip.php?id=3")});
}

TEST_F(AddressTraps, ARedirectAndAMetaRefreshAreFollowedAndLinksResolveFromWhereTheyLed) {
  pages.redirect("/moved", "/new/page.html", 301);
  pages.serve("/new/page.html", R"(<video src="clip.mp4"></video>)");
  pages.serve("/refresh.html",
              R"(<html><head><meta http-equiv="Refresh" content="0; URL='/after/refresh.html'"></head></html>)");
  pages.serve("/after/refresh.html", R"(<video src="clip.webm"></video>)");

  EXPECT_EQ(parse(pages.url("/moved")).urls(), std::vector<std::string>{pages.url("/new/clip.mp4")});
  EXPECT_EQ(parse(pages.url("/refresh.html")).urls(), std::vector<std::string>{pages.url("/after/clip.webm")});
}

TEST_F(AddressTraps, PagesInOtherCharsetsReachTheTitlesAsUtf8) {
  // "Café “quoted”" in windows-1252, told by the header, by a <meta>, or by nothing.
  const std::string title = "Caf\xE9 \x93quoted\x94";
  pages.serve("/header.html", "<title>" + title + "</title><video src=a.mp4></video>",
              "text/html; charset=windows-1252");
  pages.serve("/meta.html", "<meta charset=\"windows-1252\"><title>" + title + "</title><video src=a.mp4></video>");
  pages.serve("/undeclared.html", "<title>" + title + "</title><video src=a.mp4></video>");
  pages.serve("/utf8.html", "<title>Caf\xC3\xA9</title><video src=a.mp4></video>", "text/html; charset=utf-8");

  for (const char* path : {"/header.html", "/meta.html", "/undeclared.html"}) {
    const ParseOutcome outcome = parse(pages.url(path));
    ASSERT_EQ(outcome.entries.size(), 1u) << path;
    EXPECT_EQ(outcome.entries[0].title, "Caf\xC3\xA9 \xE2\x80\x9Cquoted\xE2\x80\x9D") << path;
  }
  EXPECT_EQ(parse(pages.url("/utf8.html")).entries.at(0).title, "Caf\xC3\xA9");
}

TEST_F(AddressTraps, TheTitleFallsBackFromTheVideosOwnToOgTitleToTheTitleToTheAddress) {
  struct Case {
    std::string path;
    std::string html;
    std::string title;
  };
  const std::vector<Case> cases{
      {"/own", R"(<meta property="og:title" content="OG"><title>Tag</title><video src="a.mp4" title="Own"></video>)",
       "Own"},
      {"/og", R"(<meta property="og:title" content="OG"><title>Tag</title><video src="a.mp4"></video>)", "OG"},
      {"/tag", R"(<title>  Tag
          title </title><video src="a.mp4"></video>)",
       "Tag title"},
      {"/watch/my%20clip", R"(<video src="a.mp4"></video>)", "my clip"},
  };
  for (const Case& page : cases) {
    pages.serve(page.path == "/watch/my%20clip" ? "/watch/my clip" : page.path, page.html);
    const ParseOutcome outcome = parse(pages.url(page.path));
    ASSERT_EQ(outcome.entries.size(), 1u) << page.path;
    EXPECT_EQ(outcome.entries[0].title, page.title) << page.path;
  }
}

TEST_F(AddressTraps, APageWithoutVideosAndAnEmptyPageFindNothing) {
  pages.serve("/empty.html", "");
  pages.serve("/plain.html", "<html><head><title>Nothing</title></head><body><a href=/about>About</a></body></html>");

  for (const char* path : {"/empty.html", "/plain.html"}) {
    const ParseOutcome outcome = parse(pages.url(path));
    EXPECT_EQ(outcome.result, PARSE_ERROR_NO_VIDEO) << path;
    EXPECT_TRUE(outcome.entries.empty()) << path;
  }
}

}  // namespace
