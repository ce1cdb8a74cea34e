// The file formats whose tags can be read and written, by file extension.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace metadata {

enum class FormatFamily { Mp4, Mpeg, Flac, Ogg, Asf, Aiff, Wav, Ape, WavPack, Musepack, TrueAudio };

// The family of an extension given with or without its dot, in any case.
std::optional<FormatFamily> familyForExtension(std::string_view extension);
// The family of a file, from the extension of its name.
std::optional<FormatFamily> familyForPath(const std::string& path);

}  // namespace metadata
