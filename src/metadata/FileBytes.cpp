#include "FileBytes.h"

#include <fstream>
#include <iterator>

namespace metadata {

std::optional<std::string> readFileBytes(const std::string& path, size_t maxSize) {
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return std::nullopt;
  std::streamoff size = in.tellg();
  if (size < 0 || static_cast<size_t>(size) > maxSize) return std::nullopt;
  std::string bytes(static_cast<size_t>(size), '\0');
  in.seekg(0);
  if (!in.read(bytes.data(), size)) return std::nullopt;
  return bytes;
}

bool writeFileBytes(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  return out.good();
}

}  // namespace metadata
