#include "TagRecord.h"

#include <cstring>
#include <string_view>

#include "NumberPair.h"
#include "Utf8.h"

namespace metadata {
namespace {

bool isNumberKey(int key) { return key == METADATA_KEY_TRACK || key == METADATA_KEY_DISK; }

bool validEntry(const MetaDataItem& item) {
  if (item.key < METADATA_FIRST_KEY || item.key > METADATA_LAST_KEY) return false;
  const void* terminator = std::memchr(item.value, '\0', sizeof(item.value));
  if (terminator == nullptr) return false;
  std::string_view value(item.value, static_cast<const char*>(terminator) - item.value);
  if (!isValidUtf8(value)) return false;
  return !isNumberKey(item.key) || value.empty() || parseNumberPair(std::string(value)).has_value();
}

}  // namespace

ParsedRecord parseRecord(const MetaDataInfo& record) {
  if (record.count < 0 || record.count > METADATA_MAX_ITEMS) return {METADATA_ERROR_RECORD, {}};
  ParsedRecord parsed;
  for (int i = 0; i < record.count; ++i) {
    const MetaDataItem& item = record.items[i];
    if (!validEntry(item)) return {METADATA_ERROR_RECORD, {}};
    parsed.entries.push_back({static_cast<MetaDataKey>(item.key), std::string(item.value)});
  }
  return parsed;
}

void fillRecord(MetaDataInfo& record, const TagEntries& entries) {
  std::memset(&record, 0, sizeof(record));
  for (const TagEntry& entry : entries) {
    if (record.count == METADATA_MAX_ITEMS) break;
    MetaDataItem& item = record.items[record.count++];
    item.key = entry.key;
    std::string_view value = utf8Prefix(entry.value, sizeof(item.value) - 1);
    std::memcpy(item.value, value.data(), value.size());
  }
}

}  // namespace metadata
