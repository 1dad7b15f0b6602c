// SPDX-License-Identifier: MIT
// Any bytes as the text of a shader: it is refused with a reason and a place, or runs to an end.
#include "engine/qsl_program.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace engine;
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const QSLEntry& entry :
         {QSLEntry{true, QSLType::VEC3}, QSLEntry{true, QSLType::REAL}, QSLEntry{false, QSLType::REAL}}) {
        try {
            const QSLProgram program({{"", text}}, entry, {});
            SurfacePoint point;
            point.position = {1.5f, -2.25f, 1e8f};
            const Vec value = program.at(point);
            if (!std::isfinite(value.x) || !std::isfinite(value.y) || !std::isfinite(value.z)) {
                std::abort();
            }
        } catch (const QSLFault& fault) {
            if (fault.reason.empty() || fault.place.line == 0 || fault.place.column == 0) {
                std::abort();
            }
        }
    }
    return 0;
}
