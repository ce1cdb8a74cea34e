#include "ParsedEntries.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "parseurl.h"

const ParsedEntry* ParseOutcome::find(const std::string& url) const {
  for (const ParsedEntry& entry : entries) {
    if (entry.url == url) return &entry;
  }
  return nullptr;
}

std::vector<std::string> ParseOutcome::urls() const {
  std::vector<std::string> result;
  for (const ParsedEntry& entry : entries) result.push_back(entry.url);
  return result;
}

void expectEntry(const ParseOutcome& outcome, const ParsedEntry& expected) {
  const ParsedEntry* entry = outcome.find(expected.url);
  ASSERT_NE(entry, nullptr) << expected.url << " missing";
  EXPECT_EQ(entry->extension, expected.extension) << expected.url;
  EXPECT_EQ(entry->width, expected.width) << expected.url;
  EXPECT_EQ(entry->height, expected.height) << expected.url;
  EXPECT_EQ(entry->length, expected.length) << expected.url;
  EXPECT_EQ(entry->size, expected.size) << expected.url;
  EXPECT_EQ(entry->title, expected.title) << expected.url;
  EXPECT_EQ(entry->imageUrl, expected.imageUrl) << expected.url;
}

ParseOutcome parse(const std::string& url) {
  const auto text = [](const char* value) { return value != nullptr ? std::string(value) : std::string(); };
  ParseOutcome outcome;
  ParsedVideoEntry* list = nullptr;
  outcome.result = StartParse(url.c_str(), 0, &list);
  while (list != nullptr) {
    outcome.entries.push_back({list->width, list->height, text(list->url), text(list->extension), list->length,
                               list->size, text(list->title), text(list->imageUrl)});
    ParsedVideoEntry* next = list->next;
    std::free(list);
    list = next;
  }
  return outcome;
}

std::string mp4Bytes(size_t size) {
  std::string bytes(
      "\x00\x00\x00\x18"
      "ftypisom\x00\x00\x02\x00"
      "isomiso2",
      24);
  while (bytes.size() < size) bytes += static_cast<char>('a' + bytes.size() % 26);
  return bytes;
}
