#include "FormatFamily.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace metadata {
namespace {

struct ExtensionFamily {
  std::string_view extension;
  FormatFamily family;
};

constexpr std::array<ExtensionFamily, 24> kExtensions{{
    {"mp4", FormatFamily::Mp4},    {"m4a", FormatFamily::Mp4},      {"m4v", FormatFamily::Mp4},
    {"m4r", FormatFamily::Mp4},    {"m4b", FormatFamily::Mp4},      {"mov", FormatFamily::Mp4},
    {"3gp", FormatFamily::Mp4},    {"3g2", FormatFamily::Mp4},      {"mp3", FormatFamily::Mpeg},
    {"flac", FormatFamily::Flac},  {"ogg", FormatFamily::Ogg},      {"oga", FormatFamily::Ogg},
    {"opus", FormatFamily::Ogg},   {"wma", FormatFamily::Asf},      {"wmv", FormatFamily::Asf},
    {"asf", FormatFamily::Asf},    {"aif", FormatFamily::Aiff},     {"aiff", FormatFamily::Aiff},
    {"aifc", FormatFamily::Aiff},  {"wav", FormatFamily::Wav},      {"ape", FormatFamily::Ape},
    {"wv", FormatFamily::WavPack}, {"mpc", FormatFamily::Musepack}, {"tta", FormatFamily::TrueAudio},
}};

}  // namespace

std::optional<FormatFamily> familyForExtension(std::string_view extension) {
  if (extension.starts_with('.')) extension.remove_prefix(1);
  std::string lower(extension);
  std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
  for (const ExtensionFamily& entry : kExtensions) {
    if (entry.extension == lower) return entry.family;
  }
  return std::nullopt;
}

std::optional<FormatFamily> familyForPath(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  if (extension.empty()) return std::nullopt;
  return familyForExtension(extension);
}

}  // namespace metadata
