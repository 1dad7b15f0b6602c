// SPDX-License-Identifier: MIT
// A plug-in that goes wrong; a definition of the build says how.
#include "host/tables.h"

#include <stdexcept>

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

class Nothing : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override { return true; }
};

[[maybe_unused]] int32_t startHalfway() {
    PluginInfo info;
    info.id = 9000001;
    info.name = "Nothing";
    RegisterCommandPlugin(info, new Nothing);
    return 0;
}

} // namespace

#ifdef HAS_NO_ENTRY
EXPORTED int32_t another_entry() {
    return 0;
}
#else
EXPORTED int32_t c4d_main(int32_t action, void* p1, void* /*p2*/, void* /*p3*/) {
#ifdef REFUSES
    static_cast<void>(p1);
    return action == C4DPL_INIT ? -3 : 1;
#elif defined(THROWS)
    static_cast<void>(p1);
    throw std::runtime_error("out of order in action " + std::to_string(action));
#else
    if (action == C4DPL_INIT) {
        SetHostTables(static_cast<const HostTable*>(p1));
    }
    return action == C4DPL_START ? startHalfway() : 1;
#endif
}
#endif
