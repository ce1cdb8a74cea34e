#include "ResultList.h"

#include <cstdlib>
#include <cstring>

namespace parseurl {

char* ResultStrings::keep(const std::string& text) {
  if (text.empty()) return nullptr;
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  strings_.push_back(std::move(copy));
  return strings_.back().get();
}

ParsedVideoEntry* makeEntryList(const std::vector<FoundVideo>& videos, ResultStrings& strings) {
  ParsedVideoEntry* head = nullptr;
  ParsedVideoEntry** link = &head;
  for (const FoundVideo& video : videos) {
    auto* entry = static_cast<ParsedVideoEntry*>(std::calloc(1, sizeof(ParsedVideoEntry)));
    if (entry == nullptr) {
      while (head != nullptr) {
        ParsedVideoEntry* next = head->next;
        std::free(head);
        head = next;
      }
      return nullptr;
    }
    entry->width = video.width;
    entry->height = video.height;
    entry->url = strings.keep(video.url);
    entry->extension = strings.keep(video.extension);
    entry->length = video.length;
    entry->size = video.size;
    entry->title = strings.keep(video.title);
    entry->imageUrl = strings.keep(video.imageUrl);
    *link = entry;
    link = &entry->next;
  }
  return head;
}

}  // namespace parseurl
