#include "PageServer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>

#include "parseurl.h"

PageServer::PageServer() {
  server.set_logger([this](const httplib::Request& request, const httplib::Response&) {
    std::lock_guard lock(mutex_);
    requested_.push_back(request.path);
  });
  port_ = server.bind_to_any_port("127.0.0.1");
  if (port_ <= 0) throw std::runtime_error("cannot listen on 127.0.0.1");
  thread_ = std::thread([this] { server.listen_after_bind(); });
  while (!server.is_running()) std::this_thread::yield();
}

PageServer::~PageServer() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  released_.notify_all();
  server.stop();
  thread_.join();
}

void PageServer::serve(const std::string& path, const std::string& body, const std::string& contentType) {
  server.Get(path, [body, contentType](const httplib::Request&, httplib::Response& response) {
    response.set_content(body, contentType);
  });
}

void PageServer::redirect(const std::string& path, const std::string& location, int status) {
  server.Get(path, [location, status](const httplib::Request&, httplib::Response& response) {
    response.status = status;
    response.set_header("Location", location);
  });
}

void PageServer::hang(const std::string& path) {
  server.Get(path, [this](const httplib::Request&, httplib::Response&) {
    std::unique_lock lock(mutex_);
    released_.wait(lock, [this] { return stopping_; });
  });
}

std::string PageServer::url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

std::vector<std::string> PageServer::requestedPaths() const {
  std::lock_guard lock(mutex_);
  return requested_;
}

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
