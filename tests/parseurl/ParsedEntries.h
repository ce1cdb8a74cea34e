// What the page-analysis tests share besides the local server (see
// LocalHttplibServer.h): StartParse's list read into plain values with its
// records released as a caller must.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LocalHttplibServer.h"

struct ParsedEntry {
  int width = 0;
  int height = 0;
  std::string url;
  std::string extension;
  int64_t length = 0;
  int64_t size = 0;
  std::string title;
  std::string imageUrl;
};

struct ParseOutcome {
  int result = -1;
  std::vector<ParsedEntry> entries;
  // The entry with that address, or null.
  const ParsedEntry* find(const std::string& url) const;
  std::vector<std::string> urls() const;
};

// Checks every field of the entry with expected.url.
void expectEntry(const ParseOutcome& outcome, const ParsedEntry& expected);

// StartParse(url, 0, &list), the list copied and each record freed.
ParseOutcome parse(const std::string& url);

// Bytes that sniff as the start of an MP4 file.
std::string mp4Bytes(size_t size);
