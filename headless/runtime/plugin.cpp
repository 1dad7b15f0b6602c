// SPDX-License-Identifier: MIT
#include "headless/runtime/plugin.h"

#include "foundation/native_path.h"
#include "headless/runtime/files.h"
#include "headless/runtime/host_error.h"

namespace headless {

namespace {

constexpr const char* ENTRY = "c4d_main";
constexpr int32_t REFUSED = -3;

} // namespace

Plugin::Plugin(std::filesystem::path file, const HostTable& table) : file_(std::move(file)) {
    const std::string name = Quenza::utf8Path(file_);
    if (!files::isFile(file_)) {
        throw HostError("There is no plug-in " + name);
    }
    hostFolder_ = Filename(String(Quenza::utf8Path(folder())));
    library_.emplace(file_);
    entry_ = reinterpret_cast<PluginEntry>(library_->find(ENTRY));
    if (!entry_) {
        throw HostError(name + " is no plug-in: it exports no " + ENTRY);
    }
    const int32_t result = call(C4DPL_INIT, const_cast<HostTable*>(&table), nullptr, &hostFolder_);
    if (result == REFUSED) {
        throw HostError(name + " refused this host, whose interface version is " +
                        std::to_string(table.apiVersion));
    }
    if (result != 1) {
        throw HostError(name + " could not be initialised (result " + std::to_string(result) + ")");
    }
}

Plugin::~Plugin() = default;

bool Plugin::loadResources() {
    return message(C4DMSG_LOAD_RESOURCES);
}

bool Plugin::start() {
    return call(C4DPL_START) == 1;
}

bool Plugin::buildMenus() {
    return message(C4DMSG_BUILD_MENUS);
}

void Plugin::end() {
    call(C4DPL_END);
}

bool Plugin::message(int32_t id) {
    return call(C4DPL_MESSAGE, reinterpret_cast<void*>(static_cast<intptr_t>(id))) == 1;
}

int32_t Plugin::call(int32_t action, void* p1, void* p2, void* p3) {
    try {
        return entry_(action, p1, p2, p3);
    } catch (const std::exception& error) {
        throw HostError(Quenza::utf8Path(file_) + ": action " + std::to_string(action) +
                        " ended with an exception: " + error.what());
    }
}

} // namespace headless
