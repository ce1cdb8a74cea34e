// The one preview of the process behind the public functions. The functions
// that the preview shares with the conversion (position, length, abort,
// release) go to the preview while one exists.
#pragma once

#include <memory>
#include <mutex>

#include "PreviewRenderer.h"

namespace engine {

class PreviewSession {
 public:
  static PreviewSession& instance();

  // Stops a preview already running first. Returns 0 or a VideoConverterError.
  int start(MediaItem* items, int count, PreviewView first, PreviewView second);
  // The running preview, or null; it stays alive while the caller holds it.
  std::shared_ptr<PreviewRenderer> renderer() const;
  // Stops and forgets the preview; false when there was none.
  bool release();

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<PreviewRenderer> renderer_;
};

}  // namespace engine
