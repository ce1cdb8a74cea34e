// Probing through the public interface, keeping a copy of the record.
#pragma once

#include <string>

#include "videoconverter.h"

namespace enginetest {

struct Probed {
  int code = 0;
  DECODER_INFO info{};
};

inline Probed probeFile(const std::string& path, const std::string& thumbnailPath = "", int audioOnly = 0) {
  Probed probed;
  DECODER_INFO* record = nullptr;
  probed.code = VideoConverter_GetMediaInfo(path.c_str(), thumbnailPath.empty() ? nullptr : thumbnailPath.c_str(),
                                            &record, audioOnly);
  if (probed.code == 0 && record != nullptr) probed.info = *record;
  return probed;
}

}  // namespace enginetest
