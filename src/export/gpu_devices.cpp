// SPDX-License-Identifier: MIT
#include "export/gpu_devices.h"

std::vector<GpuDevice>& gpuDevices() {
    static std::vector<GpuDevice> devices;
    return devices;
}
