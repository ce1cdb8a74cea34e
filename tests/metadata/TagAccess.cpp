#include "TagAccess.h"

#include <cstring>
#include <stdexcept>

namespace tagtest {

ReadResult readTags(const std::string& path, const std::string& thumbnailPath) {
  ReadResult result;
  MetaDataInfo* record = nullptr;
  result.code = GetMetaDataInfo(path.c_str(), &record, thumbnailPath.empty() ? nullptr : thumbnailPath.c_str());
  if (record == nullptr) return result;
  for (int i = 0; i < record->count; ++i) {
    const MetaDataItem& item = record->items[i];
    result.entries.emplace_back(item.key, std::string(item.value, strnlen(item.value, sizeof(item.value))));
    result.byKey[item.key] = result.entries.back().second;
  }
  FreeMetaDataInfo(&record);
  if (record != nullptr) throw std::logic_error("FreeMetaDataInfo left the pointer set");
  return result;
}

std::unique_ptr<MetaDataInfo> makeRecord(const Entries& entries) {
  auto record = std::make_unique<MetaDataInfo>();
  std::memset(record.get(), 0, sizeof(MetaDataInfo));
  for (const auto& [key, value] : entries) {
    if (value.size() >= sizeof(MetaDataItem::value)) throw std::invalid_argument("value too long for a record");
    MetaDataItem& item = record->items[record->count++];
    item.key = key;
    std::memcpy(item.value, value.data(), value.size());
  }
  return record;
}

int32_t writeTags(const std::string& path, const Entries& entries) {
  return SetMetaDataInfo(path.c_str(), makeRecord(entries).get());
}

}  // namespace tagtest
