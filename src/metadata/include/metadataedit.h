// Public interface of the tag library: C functions and the fixed-layout tag
// record. Strings are UTF-8 and NUL-terminated; every integer is 32-bit,
// little-endian, with no padding between fields.
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Tag keys of the record's entries.
enum MetaDataKey {
  METADATA_KEY_TITLE = 1,
  METADATA_KEY_COMMENT = 2,
  METADATA_KEY_ARTIST = 3,
  METADATA_KEY_GENRE = 4,
  METADATA_KEY_GENRES = 5,  // every genre of the file, "; "-separated; read only, ignored when writing
  METADATA_KEY_COMPOSER = 6,
  METADATA_KEY_ALBUM = 7,
  METADATA_KEY_ALBUM_ARTIST = 8,
  METADATA_KEY_IMAGE = 9,   // path of the cover picture
  METADATA_KEY_TRACK = 10,  // "N" or "N/TOTAL"
  METADATA_KEY_DISK = 11,   // "N" or "N/TOTAL"
  METADATA_KEY_GROUPING = 12,
  METADATA_KEY_YEAR = 13,
  METADATA_KEY_TV_SHOW_NAME = 14,
  METADATA_KEY_TV_SEASON = 15,
  METADATA_KEY_TV_EPISODE = 16,
  METADATA_KEY_TV_EPISODE_ID = 17,
  METADATA_KEY_DESCRIPTION = 18,
};

#define METADATA_FIRST_KEY 1
#define METADATA_LAST_KEY 18
#define METADATA_VALUE_SIZE 4096
#define METADATA_MAX_ITEMS 64

// Result codes: 0 is success, anything else a failure that left the file as it was.
enum MetaDataResult {
  METADATA_OK = 0,
  METADATA_ERROR_ARGUMENT = 1,      // a null path, record or output pointer
  METADATA_ERROR_FORMAT = 2,        // the container cannot carry tags
  METADATA_ERROR_NO_FILE = 3,       // the file does not exist or is not a regular file
  METADATA_ERROR_READ_ONLY = 4,     // the file or its folder cannot be written
  METADATA_ERROR_INVALID_FILE = 5,  // the file is damaged or not of the format its extension says
  METADATA_ERROR_RECORD = 6,        // entry count, key or value malformed
  METADATA_ERROR_VALUE = 7,         // a value the format cannot hold, such as a non-numeric season in MP4
  METADATA_ERROR_PICTURE = 8,       // the cover picture is missing or not an image
  METADATA_ERROR_WRITE = 9,         // saving failed (full disk, I/O error)
  METADATA_ERROR_INTERNAL = 10,     // out of memory or another unexpected failure
};

// One entry: a tag key and its value.
typedef struct MetaDataItem {
  int32_t key;
  char value[METADATA_VALUE_SIZE];
} MetaDataItem;

// The tag record: the number of entries in use, then room for 64 entries.
typedef struct MetaDataInfo {
  int32_t count;
  MetaDataItem items[METADATA_MAX_ITEMS];
} MetaDataInfo;

#ifdef __cplusplus
static_assert(sizeof(MetaDataItem) == 4100, "MetaDataItem is 4100 bytes");
static_assert(offsetof(MetaDataItem, key) == 0, "MetaDataItem key at 0");
static_assert(offsetof(MetaDataItem, value) == 4, "MetaDataItem value at 4");
static_assert(sizeof(MetaDataInfo) == 262404, "MetaDataInfo is 262,404 bytes");
static_assert(offsetof(MetaDataInfo, count) == 0, "MetaDataInfo count at 0");
static_assert(offsetof(MetaDataInfo, items) == 4, "MetaDataInfo entries from 4");
static_assert(offsetof(MetaDataInfo, items) + sizeof(MetaDataItem) == 4104, "entry i at 4 + 4100 * i");
#endif

// 0 when tags can be written into files of this format. The format is a file
// extension, with or without its dot, in any letter case ("mp4", ".M4A").
int32_t CheckFile(const char* format);

// Reads the tags of the file at path into a record the library allocates and
// *info receives (null on failure; release it with FreeMetaDataInfo). When the
// file has a cover picture and thumbnailPath is not null or empty, the
// picture is saved there as a BMP file and reported under the image key.
int32_t GetMetaDataInfo(const char* path, MetaDataInfo** info, const char* thumbnailPath);

// Writes the record's entries into the file at path. An empty value removes
// that tag; tags without an entry are kept. The image entry names a picture
// file: JPEG and PNG are embedded as they are, other pictures as PNG. The
// file is replaced only once the new one has been written and checked; on
// any failure it is left byte for byte as it was.
int32_t SetMetaDataInfo(const char* path, const MetaDataInfo* info);

// Releases a record from GetMetaDataInfo and sets *info to null.
void FreeMetaDataInfo(MetaDataInfo** info);

// A short English description of a result code, for logs and messages.
const char* GetMetaDataErrorText(int32_t result);

#ifdef __cplusplus
}
#endif
