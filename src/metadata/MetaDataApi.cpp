// The library's C functions. Exceptions never cross them: any that escapes
// the implementation becomes METADATA_ERROR_INTERNAL.
#include <cstdlib>
#include <exception>

#include "FormatFamily.h"
#include "TagReading.h"
#include "TagWriting.h"
#include "metadataedit.h"

extern "C" int32_t CheckFile(const char* format) {
  if (format == nullptr) return METADATA_ERROR_ARGUMENT;
  return metadata::familyForExtension(format) ? METADATA_OK : METADATA_ERROR_FORMAT;
}

extern "C" int32_t GetMetaDataInfo(const char* path, MetaDataInfo** info, const char* thumbnailPath) {
  try {
    return metadata::readTags(path, info, thumbnailPath);
  } catch (const std::exception&) {
    return METADATA_ERROR_INTERNAL;
  }
}

extern "C" int32_t SetMetaDataInfo(const char* path, const MetaDataInfo* info) {
  try {
    return metadata::writeTags(path, info);
  } catch (const std::exception&) {
    return METADATA_ERROR_INTERNAL;
  }
}

extern "C" void FreeMetaDataInfo(MetaDataInfo** info) {
  if (info == nullptr) return;
  std::free(*info);
  *info = nullptr;
}

extern "C" const char* GetMetaDataErrorText(int32_t result) {
  switch (result) {
    case METADATA_OK: return "success";
    case METADATA_ERROR_ARGUMENT: return "a required argument is missing";
    case METADATA_ERROR_FORMAT: return "this file format cannot carry tags";
    case METADATA_ERROR_NO_FILE: return "the file does not exist or cannot be read";
    case METADATA_ERROR_READ_ONLY: return "the file or its folder is read-only";
    case METADATA_ERROR_INVALID_FILE: return "the file is damaged or not of the format its name says";
    case METADATA_ERROR_RECORD: return "the tag record is malformed";
    case METADATA_ERROR_VALUE: return "a tag value cannot be stored in this file format";
    case METADATA_ERROR_PICTURE: return "the cover picture is missing or not a readable image";
    case METADATA_ERROR_WRITE: return "the tags could not be saved; the file is unchanged";
    case METADATA_ERROR_INTERNAL: return "an unexpected failure inside the tag library";
    default: return "unknown result code";
  }
}
