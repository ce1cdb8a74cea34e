// Reading a file's tags into a record.
#pragma once

#include "metadataedit.h"

namespace metadata {

MetaDataResult readTags(const char* path, MetaDataInfo** info, const char* thumbnailPath);

}  // namespace metadata
