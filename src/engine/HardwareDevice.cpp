#include "HardwareDevice.h"

#include <array>
#include <filesystem>
#include <mutex>
#include <utility>

namespace engine {
namespace {

// Each kind is only tried where its device node exists, so machines without
// one pay nothing and log nothing.
constexpr std::array<std::pair<AVHWDeviceType, const char*>, 2> kCandidates{{
    {AV_HWDEVICE_TYPE_VAAPI, "/dev/dri/renderD128"},
    {AV_HWDEVICE_TYPE_CUDA, "/dev/nvidia0"},
}};

HardwareDevice openFirstDevice() {
  for (const auto& [type, node] : kCandidates) {
    std::error_code error;
    if (!std::filesystem::exists(node, error)) continue;
    AVBufferRef* context = nullptr;
    if (av_hwdevice_ctx_create(&context, type, nullptr, nullptr, 0) == 0) return {context, type};
  }
  return {};
}

}  // namespace

const HardwareDevice* hardwareDevice() {
  // Kept for the life of the process: decoders of later conversions share it.
  static std::once_flag opened;
  static HardwareDevice device;
  std::call_once(opened, [] { device = openFirstDevice(); });
  return device.context != nullptr ? &device : nullptr;
}

}  // namespace engine
