// One tag format's native fields seen through the record's keys. Each format
// family (MP4 atoms, ID3v2 frames, Vorbis comments, ASF attributes, APE items)
// implements it over the TagLib tag it wraps.
#pragma once

#include <optional>
#include <string>

#include <taglib/tbytevector.h>
#include <taglib/tstring.h>
#include <taglib/tstringlist.h>

#include "NumberPair.h"
#include "metadataedit.h"

namespace metadata {

// An embedded picture: the encoded image and its MIME type.
struct CoverPicture {
  TagLib::ByteVector data;
  std::string mimeType;
  int width = 0;
  int height = 0;
};

class TagStore {
 public:
  virtual ~TagStore() = default;

  // The values of a text key (title, comment, artist, genre, composer, album,
  // album artist, grouping, year, the TV-show fields, description).
  virtual TagLib::StringList text(MetaDataKey key) const = 0;
  // Replaces a text key's values; an empty value removes the field. False
  // when the format cannot hold this value.
  virtual bool setText(MetaDataKey key, const TagLib::String& value) = 0;

  // Track or disk number with its total.
  virtual NumberPair number(MetaDataKey key) const = 0;
  // A pair without a current number removes the field.
  virtual void setNumber(MetaDataKey key, NumberPair value) = 0;

  // The front cover, or the first picture when none is marked as such.
  virtual std::optional<CoverPicture> cover() const = 0;
  // Replaces every embedded picture with this one; nullopt removes them.
  virtual void setCover(const std::optional<CoverPicture>& picture) = 0;
};

}  // namespace metadata
