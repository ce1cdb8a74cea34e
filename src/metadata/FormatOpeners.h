// Opens a stream as a file of one format family with TagLib's class for it.
#pragma once

#include <optional>

#include <taglib/tiostream.h>

#include "FormatFamily.h"
#include "TaggedFile.h"

namespace metadata {

// Nullopt when the stream is not a valid file of the family.
std::optional<TaggedFile::Parts> openFormat(TagLib::IOStream& stream, FormatFamily family);

}  // namespace metadata
