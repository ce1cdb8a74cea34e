// What the page-analysis tests share: a cpp-httplib server on 127.0.0.1
// serving pages made in the test, and StartParse's list read into plain
// values with its records released as a caller must.
#pragma once

#include <httplib.h>

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class PageServer {
 public:
  PageServer();
  ~PageServer();
  PageServer(const PageServer&) = delete;
  PageServer& operator=(const PageServer&) = delete;

  // Serves `body` at `path` with that content type.
  void serve(const std::string& path, const std::string& body, const std::string& contentType = "text/html");
  // Answers `path` with a redirect to `location`.
  void redirect(const std::string& path, const std::string& location, int status = 301);
  // Accepts requests for `path` and never answers them.
  void hang(const std::string& path);

  std::string url(const std::string& path) const;
  // Requests the server answered, by path, in order.
  std::vector<std::string> requestedPaths() const;

  httplib::Server server;

 private:
  int port_ = 0;
  std::thread thread_;
  mutable std::mutex mutex_;
  std::condition_variable released_;
  bool stopping_ = false;
  std::vector<std::string> requested_;
};

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
