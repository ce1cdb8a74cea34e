// Look-up of a format's native field name for a record key.
#pragma once

#include <span>

#include "metadataedit.h"

namespace metadata {

struct FieldName {
  MetaDataKey key;
  const char* name;
};

// The name of key in table, or nullptr when the format has no such field.
inline const char* fieldName(std::span<const FieldName> table, MetaDataKey key) {
  for (const FieldName& entry : table) {
    if (entry.key == key) return entry.name;
  }
  return nullptr;
}

}  // namespace metadata
