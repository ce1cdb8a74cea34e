// The preview functions of the public interface, over the one PreviewSession.
#include <system_error>

#include "PictureFileWriter.h"
#include "PreviewSession.h"
#include "videoconverter.h"

namespace engine {
namespace {

VideoConverter_ReadDataFunction readCropFunction = nullptr;
VideoConverter_ReadDataFunction readWatermarkFunction = nullptr;
std::mutex functionsMutex;

VideoConverter_ReadDataFunction installed(const VideoConverter_ReadDataFunction& function) {
  std::lock_guard lock(functionsMutex);
  return function;
}

void install(VideoConverter_ReadDataFunction& slot, VideoConverter_ReadDataFunction function) {
  std::lock_guard lock(functionsMutex);
  slot = function;
}

// The pixels handed out by VideoConverter_GetCurrentBitmap, kept until its next call.
FramePtr& handedOutBitmap() {
  static FramePtr bitmap;
  return bitmap;
}

}  // namespace

PreviewSession& PreviewSession::instance() {
  static PreviewSession session;
  return session;
}

int PreviewSession::start(MediaItem* items, int count, PreviewView first, PreviewView second) {
  release();
  auto renderer = std::make_shared<PreviewRenderer>(items, static_cast<std::size_t>(count), first, second);
  renderer->start();
  std::lock_guard lock(mutex_);
  renderer_ = std::move(renderer);
  return 0;
}

std::shared_ptr<PreviewRenderer> PreviewSession::renderer() const {
  std::lock_guard lock(mutex_);
  return renderer_;
}

bool PreviewSession::release() {
  std::shared_ptr<PreviewRenderer> renderer;
  {
    std::lock_guard lock(mutex_);
    renderer.swap(renderer_);
  }
  // The renderer's thread is joined here, or by whoever still holds it.
  return renderer != nullptr;
}

}  // namespace engine

using engine::PreviewSession;

namespace {

template <typename Action>
int withRenderer(Action action) {
  const auto renderer = PreviewSession::instance().renderer();
  if (renderer == nullptr) return VC_ERROR_NO_PREVIEW;
  return action(*renderer);
}

}  // namespace

extern "C" int VideoConverter_Render(MediaItem* items, void* view, int viewWidth, int viewHeight, int count,
                                     void* effectView, int effectViewWidth, int effectViewHeight) {
  if (items == nullptr || count < 1 || viewWidth < 0 || viewHeight < 0) return VC_ERROR_INVALID_ARGUMENT;
  if (count > VC_MAX_MEDIA_ITEMS) return VC_ERROR_TOO_MANY_RECORDS;
  for (int i = 0; i < count; ++i) {
    if (items[i].m_cbsize != VC_MEDIA_ITEM_SIZE || items[i].m_FileName[0] == '\0') return VC_ERROR_INVALID_ARGUMENT;
  }
  const engine::PreviewView first{static_cast<const VideoConverter_RenderView*>(view), viewWidth, viewHeight};
  const engine::PreviewView second{static_cast<const VideoConverter_RenderView*>(effectView), effectViewWidth,
                                   effectViewHeight};
  try {
    return PreviewSession::instance().start(items, count, first, second);
  } catch (const std::bad_alloc&) {
    return VC_ERROR_OUT_OF_MEMORY;
  } catch (const std::system_error&) {
    return VC_ERROR_OUT_OF_MEMORY;  // no thread could be started
  }
}

extern "C" int VideoConverter_RenderSeek(int64_t positionUs) {
  return withRenderer([&](engine::PreviewRenderer& renderer) -> int {
    renderer.seek(positionUs);
    return 0;
  });
}

extern "C" int VideoConverter_RenderStep(int steps) {
  return withRenderer([&](engine::PreviewRenderer& renderer) -> int {
    renderer.step(steps);
    return 0;
  });
}

extern "C" int VideoConverter_Render_SetCrop(int x, int y, int w, int h) {
  return withRenderer([&](engine::PreviewRenderer& renderer) -> int {
    renderer.setCrop({x, y, w, h});
    return 0;
  });
}

extern "C" int VideoConverter_Render_DragCrop(int x, int y, int w, int h) {
  return withRenderer([&](engine::PreviewRenderer& renderer) -> int {
    const int index = renderer.dragCrop({x, y, w, h});
    if (index < 0) return VC_ERROR_NO_PREVIEW;
    if (const auto read = engine::installed(engine::readCropFunction)) read(index);
    return 0;
  });
}

extern "C" int VideoConverter_Render_DragWatermark(int x, int y, int w, int h) {
  return withRenderer([&](engine::PreviewRenderer& renderer) -> int {
    const int index = renderer.dragWatermark({x, y, w, h});
    if (index < 0) return VC_ERROR_NO_PREVIEW;
    if (const auto read = engine::installed(engine::readWatermarkFunction)) read(index);
    return 0;
  });
}

extern "C" int VideoConverter_Pause(void) {
  return withRenderer([](engine::PreviewRenderer& renderer) -> int {
    renderer.pause();
    return 0;
  });
}

extern "C" int VideoConverter_Resume(void) {
  return withRenderer([](engine::PreviewRenderer& renderer) -> int {
    renderer.resume();
    return 0;
  });
}

extern "C" int VideoConverter_IsEnd(void) {
  const auto renderer = PreviewSession::instance().renderer();
  return renderer != nullptr && !renderer->ended() ? 1 : 0;
}

extern "C" int VideoConverter_GetCurrentBitmap(uint8_t** pixels, int* width, int* height, int* bytesPerRow,
                                               int* bitsPerPixel) {
  if (pixels == nullptr || width == nullptr || height == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  return withRenderer([&](engine::PreviewRenderer& renderer) -> int {
    std::string error;
    engine::FramePtr picture = renderer.currentPicture(*width, *height, AV_PIX_FMT_RGB0, error);
    if (picture == nullptr) return VC_ERROR_NO_PREVIEW;
    engine::FramePtr& bitmap = engine::handedOutBitmap();
    bitmap = std::move(picture);
    *pixels = bitmap->data[0];
    *width = bitmap->width;
    *height = bitmap->height;
    if (bytesPerRow != nullptr) *bytesPerRow = bitmap->linesize[0];
    if (bitsPerPixel != nullptr) *bitsPerPixel = 32;
    return 0;
  });
}

extern "C" int VideoConverter_GetCurrentBitmap2(const char* path) {
  if (path == nullptr || *path == '\0') return VC_ERROR_INVALID_ARGUMENT;
  return withRenderer([&](engine::PreviewRenderer& renderer) -> int {
    std::string error;
    engine::FramePtr picture = renderer.shownPicture(error);
    if (picture == nullptr) return VC_ERROR_NO_PREVIEW;
    return engine::writePictureFile(*picture, path, error) ? 0 : VC_ERROR_CANNOT_WRITE;
  });
}

extern "C" int VideoConverter_SavePicture(const uint8_t* pixels, int width, int height, int bytesPerRow,
                                          const char* kind, const char* path) {
  if (pixels == nullptr || kind == nullptr || path == nullptr || *path == '\0' || width < 1 || height < 1 ||
      bytesPerRow < width * 4) {
    return VC_ERROR_INVALID_ARGUMENT;
  }
  // The caller's pixels, borrowed by a frame that does not own them.
  engine::FramePtr picture(av_frame_alloc());
  if (picture == nullptr) return VC_ERROR_OUT_OF_MEMORY;
  picture->data[0] = const_cast<uint8_t*>(pixels);
  picture->linesize[0] = bytesPerRow;
  picture->width = width;
  picture->height = height;
  picture->format = AV_PIX_FMT_RGB0;
  std::string error;
  return engine::writePictureFile(*picture, kind, path, error) ? 0 : VC_ERROR_CANNOT_WRITE;
}

extern "C" int VideoConverter_SetReadCropDataFunction(VideoConverter_ReadDataFunction function) {
  engine::install(engine::readCropFunction, function);
  return 0;
}

extern "C" int VideoConverter_SetReadWatermarkDataFunction(VideoConverter_ReadDataFunction function) {
  engine::install(engine::readWatermarkFunction, function);
  return 0;
}
