#include "TrailingApeTag.h"

#include <taglib/apefooter.h>

namespace metadata {
namespace {

constexpr long kId3v1Size = 128;

}  // namespace

std::unique_ptr<TrailingApeTag> TrailingApeTag::find(TagLib::File& file) {
  std::optional<Location> location = locate(file);
  if (!location) return nullptr;
  auto tag = std::make_unique<TagLib::APE::Tag>(&file, location->footer);
  return std::unique_ptr<TrailingApeTag>(new TrailingApeTag(file, std::move(tag)));
}

bool TrailingApeTag::save() {
  std::optional<Location> location = locate(file_);
  if (!location) return false;
  file_.insert(tag_->render(), location->start, location->size);
  return true;
}

std::optional<TrailingApeTag::Location> TrailingApeTag::locate(TagLib::File& file) {
  long end = file.length();
  if (end >= kId3v1Size) {
    file.seek(end - kId3v1Size);
    if (file.readBlock(3) == "TAG") end -= kId3v1Size;
  }
  long footerSize = TagLib::APE::Footer::size();
  if (end < footerSize) return std::nullopt;
  file.seek(end - footerSize);
  TagLib::ByteVector footerBytes = file.readBlock(footerSize);
  if (!footerBytes.startsWith(TagLib::APE::Footer::fileIdentifier())) return std::nullopt;
  long size = TagLib::APE::Footer(footerBytes).completeTagSize();
  if (size < footerSize || size > end) return std::nullopt;
  return Location{end - size, size, end - footerSize};
}

}  // namespace metadata
