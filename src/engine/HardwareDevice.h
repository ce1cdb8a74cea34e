// The machine's video decoding device (VAAPI or CUDA), opened once per
// process. Machines without one, or whose driver fails, simply have none.
#pragma once

extern "C" {
#include <libavutil/hwcontext.h>
}

namespace engine {

struct HardwareDevice {
  AVBufferRef* context = nullptr;
  AVHWDeviceType type = AV_HWDEVICE_TYPE_NONE;
};

// Null when the machine has no usable device.
const HardwareDevice* hardwareDevice();

}  // namespace engine
