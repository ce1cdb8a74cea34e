// The library's records as model objects: addresses, titles, missing texts.

#include <gtest/gtest.h>

#include "Download/ParsedVideoRecords.h"

namespace {

// A record as the library makes them: from the C allocator, zero-filled.
ParsedVideoEntry* record(const char* url, const char* title, ParsedVideoEntry* next = nullptr) {
  auto* entry = static_cast<ParsedVideoEntry*>(std::calloc(1, sizeof(ParsedVideoEntry)));
  entry->url = const_cast<char*>(url);
  entry->title = const_cast<char*>(title);
  entry->next = next;
  return entry;
}

TEST(ParsedVideoRecords, RecordsWithoutAddressAreSkippedTheRestKeepTheirOrderAndTitlesAreDecoded) {
  ParsedVideoEntry* last = record("http://h/b.flv", "B");
  last->width = 640;
  last->height = 360;
  last->length = 95;
  last->size = 123456;
  last->extension = const_cast<char*>("flv");
  last->imageUrl = const_cast<char*>("http://h/my thumb.jpg");
  ParsedVideoEntry* head = record("http://h/my clip a.mp4", nullptr, record(nullptr, "no address", last));

  const QList<DownloadVideoInfo> files = downloadVideoInfosOf(head);
  freeParsedVideoEntries(head);

  ASSERT_EQ(files.size(), 2);
  EXPECT_EQ(files[0].downloadUrl(), "http://h/my%20clip%20a.mp4");
  EXPECT_EQ(files[0].videoTitle(), "");
  EXPECT_EQ(files[0].extention(), "");
  EXPECT_EQ(files[0].imgURL(), "");
  EXPECT_EQ(files[1].downloadUrl(), "http://h/b.flv");
  EXPECT_EQ(files[1].dimension(), QSizeF(640, 360));
  EXPECT_EQ(files[1].length(), 95);
  EXPECT_EQ(files[1].videoSize(), 123456);
  EXPECT_EQ(files[1].extention(), "flv");
  EXPECT_EQ(files[1].imgURL(), "http://h/my%20thumb.jpg");

  const std::vector<std::pair<const char*, QString>> cases{
      {"A/B &amp; C", "A B & C"},
      {"&lt;b&gt; &quot;x&quot; &apos;y&apos;", "<b> \"x\" 'y'"},
      {"&amp;lt;", "<"},                            // "&amp;" first makes a "&lt;" that is decoded next
      {"&amp;iquest;Qu\xC3\xA9?", "`Qu\xC3\xA9?"},  // "&iquest;" becomes a backquote
      {"&#38; &nbsp;", "&#38; &nbsp;"},             // nothing else is decoded
  };
  for (const auto& [title, decoded] : cases) EXPECT_EQ(decodedVideoTitle(title), decoded) << title;
  EXPECT_EQ(decodedVideoTitle(nullptr), "");
}

}  // namespace
