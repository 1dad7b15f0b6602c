// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <zlib.h>

#include "foundation/native_path.h"
#include "headless/model/host_memory.h"
#include "headless/runtime/files.h"
#include "headless/runtime/host.h"
#include "headless/runtime/texture_search.h"
#include "headless/runtime/zip_extract.h"

namespace headless {

namespace {

void print(const String& line) {
    Host::current().console().print(line.GetUtf8());
}

String loadString(int32_t id) {
    return String(Host::current().string(id));
}

bool loadResource(const Filename& pluginPath) {
    return Host::current().loadStrings(Quenza::nativePath(pluginPath.GetUtf8()));
}

void freeResource() {
    Host::current().freeStrings();
}

uint32_t getMilliSeconds() {
    return Host::current().clock().milliseconds();
}

void sleep(uint32_t milliseconds) {
    Host::current().sleep(std::chrono::milliseconds(milliseconds));
}

Filename getStartupPath() {
    return Filename(String(Quenza::utf8Path(Host::current().startupPath())));
}

int32_t getThreadCount() {
    return static_cast<int32_t>(std::max(1u, std::thread::hardware_concurrency()));
}

void getDateTimeNow(DateTime& now) {
    now = Host::current().clock().now();
}

BaseContainer* getWorldContainer() {
    return &Host::current().worldPreferences();
}

void statusSetText(const String& text) {
    Host::current().status().setText(text.GetUtf8());
}

void statusSetBar(int32_t percent) {
    Host::current().status().setPercent(percent);
}

void statusClear() {
    Host::current().status().clear();
}

void specialEventAdd(int32_t messageId, uintptr_t parameter1, uintptr_t parameter2) {
    Host::current().sendCoreMessage(messageId, parameter1, parameter2);
}

void eventAdd() {
    Host::current().tellOfChange();
}

bool addUserPreviewScene(const Filename& scene, int32_t pluginId) {
    Host& host = Host::current();
    const Registration* const material = host.registrations().find(pluginId);
    if (!material || material->kind != PLUGINKIND_MATERIAL) {
        return false;
    }
    try {
        host.previewScenes().add(scene.GetUtf8(), pluginId);
        return true;
    } catch (const std::exception& error) {
        host.errors().print(error.what());
        return false;
    }
}

uint32_t calcCRC32(const void* data, size_t byteCount, uint32_t seed) {
    return static_cast<uint32_t>(crc32_z(seed, static_cast<const Bytef*>(data), byteCount));
}

bool fileSelect(Filename& path, int32_t /*mode*/, const String& title) {
    Host& host = Host::current();
    std::optional<std::string> chosen;
    host.onMainThread("FileSelect", [&] {
        chosen = host.user().selectFile(title.GetUtf8());
        host.errors().print("[file selection] " + title.GetUtf8() + " " + chosen.value_or("(cancelled)"));
    });
    if (chosen) {
        path = Filename(String(*chosen));
    }
    return chosen.has_value();
}

bool unpackZip(const Filename& archive, const Filename& folder) {
    const std::string fault = extractZip(files::pathOf(archive), files::pathOf(folder));
    if (!fault.empty()) {
        Host::current().errors().print(archive.GetUtf8() + ": " + fault);
    }
    return fault.empty();
}

BaseContainer* getMenuResource(const String& name) {
    return Host::current().menus().find(name);
}

BaseContainer* searchMenuResource(BaseContainer* menu, const String& entry, int32_t& index) {
    return menu ? Menus::search(*menu, entry, index) : nullptr;
}

} // namespace

const GeneralTable* generalTable() {
    static constexpr GeneralTable table = {
        .Print = print,
        .LoadString = loadString,
        .LoadResource = loadResource,
        .FreeResource = freeResource,
        .GetMilliSeconds = getMilliSeconds,
        .Sleep = sleep,
        .GetStartupPath = getStartupPath,
        .GetThreadCount = getThreadCount,
        .Free = freeForHost,
        .GetDateTimeNow = getDateTimeNow,
        .GetWorldContainer = getWorldContainer,
        .StatusSetText = statusSetText,
        .StatusSetBar = statusSetBar,
        .StatusClear = statusClear,
        .SpecialEventAdd = specialEventAdd,
        .EventAdd = eventAdd,
        .AddUserPreviewScene = addUserPreviewScene,
        .CalcCRC32 = calcCRC32,
        .FileExists = files::exists,
        .CreateDirectory = files::createDirectory,
        .Kill = files::kill,
        .FileSelect = fileSelect,
        .CopyFile = files::copy,
        .ListDirectory = files::list,
        .ExtractZip = unpackZip,
        .GenerateTexturePath = findTexture,
        .GetMenuResource = getMenuResource,
        .SearchMenuResource = searchMenuResource,
    };
    return &table;
}

} // namespace headless
