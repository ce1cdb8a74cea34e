// Writing a record's entries into a file.
#pragma once

#include "metadataedit.h"

namespace metadata {

MetaDataResult writeTags(const char* path, const MetaDataInfo* record);

}  // namespace metadata
