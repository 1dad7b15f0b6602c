// SPDX-License-Identifier: MIT
#include "render/runtime/quenza_context.h"

#include "foundation/platform.h"
#include "render/runtime/never_destroyed.h"

#include <string>

using Quenza::String;
namespace Platform = Quenza::PlatformUtils;

namespace {

String pathIn(const String& directory, const char* file) {
    return directory + "/" + file;
}

/// The first of the library's files that is there; empty when none is, and the system's last error tells of
/// it.
String findLibrary(const String& directory) {
    for (const char* const file : {Quenza::SDK::LIBRARY_FILE, Quenza::SDK::RT_LIBRARY_FILE}) {
        String path = pathIn(directory, file);
        if (Platform::pathKind(path) != Platform::PathKind::MISSING) {
            return path;
        }
    }
    return String();
}

template <class Procedure>
bool findProcedure(void* module, const char* name, Procedure& procedure, String& errorText) {
    procedure = reinterpret_cast<Procedure>(Platform::librarySymbol(module, name));
    if (!procedure) {
        errorText = String("unable to get address of procedure '") + name + "'";
    }
    return procedure != nullptr;
}

} // namespace

QuenzaContext::~QuenzaContext() {
    if (isLoaded()) {
        globalLibraryShutdown();
    }
    if (module) {
        Platform::freeLibrary(module);
    }
}

LibraryRef<> QuenzaContext::makeInstance(const char* interfaceName) const {
    Quenza::SDK::InterfaceBase* object = nullptr;
    if (!isLoaded() || createInstance(interfaceName, object) != 0) {
        return {};
    }
    return LibraryRef<>::adopt(object);
}

int32_t loadLibrary(QuenzaContext& context, const String& dllDirectory, const String& appdataDirectory,
                    String& errorText) {
    errorText.clear();
    context.dllDirectory = dllDirectory;
    context.appdataDirectory = appdataDirectory;
    Platform::setLibraryDirectory(dllDirectory);
    const String path = findLibrary(dllDirectory);
    if (path.empty()) {
        const int code = Platform::lastErrorCode();
        errorText = String("Failed to load DLL from '") + dllDirectory +
                    "' (Error code: " + std::to_string(code) + ")";
        return LOADLIBRARY_NOT_FOUND;
    }
    context.module = Platform::loadLibrary(path, errorText);
    if (!context.module ||
        !findProcedure(context.module, Quenza::SDK::CREATE_INSTANCE, context.createInstance, errorText) ||
        !findProcedure(context.module, Quenza::SDK::GLOBAL_LIBRARY_INIT, context.globalLibraryInit,
                       errorText) ||
        !findProcedure(context.module, Quenza::SDK::GLOBAL_LIBRARY_SHUTDOWN, context.globalLibraryShutdown,
                       errorText)) {
        return LOADLIBRARY_FAILED;
    }
    context.globalLibraryInit(&context.dllDirectory);
    return LOADLIBRARY_OK;
}

bool hasFullRenderer(const String& dllDirectory) {
    return Platform::pathKind(pathIn(dllDirectory, Quenza::SDK::LIBRARY_FILE)) == Platform::PathKind::FILE;
}

Quenza::Ref<QuenzaContext>& quenzaContext() {
    static NeverDestroyed<Quenza::Ref<QuenzaContext>> context;
    return context.get();
}

bool isLibraryLoaded() {
    return quenzaContext() && quenzaContext()->isLoaded();
}
