// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "render/runtime/library_ref.h"
#include "sdk/binding.h"

/// The renderer's run-time library, as far as it's there. One per process, made at the plug-in's start.
/// Readable from any thread after the start.
class QuenzaContext : public Quenza::ThreadSafeRefCounted {
public:
    QuenzaContext() = default;
    /// Shuts the library down and closes it.
    ~QuenzaContext() override;

    /// True when all three procedures are there: every feature that renders in the process asks this first.
    bool isLoaded() const { return createInstance && globalLibraryInit && globalLibraryShutdown; }
    /// A new object of the library; null when it knows no such interface, and when it isn't loaded.
    LibraryRef<> makeInstance(const char* interfaceName) const;

    /// UTF-8.
    Quenza::String dllDirectory;
    Quenza::String appdataDirectory;
    void* module = nullptr;
    Quenza::SDK::CreateInstance createInstance = nullptr;
    Quenza::SDK::GlobalLibraryInit globalLibraryInit = nullptr;
    Quenza::SDK::GlobalLibraryShutdown globalLibraryShutdown = nullptr;
};

enum LoadLibraryResult : int32_t {
    LOADLIBRARY_OK = 0,
    LOADLIBRARY_NOT_FOUND = 20,
    /// The file can't be loaded, or lacks a procedure.
    LOADLIBRARY_FAILED = 22,
};

/// Loads the library of a folder into a new context and sets it up. On failure `errorText` says why, and the
/// context isn't loaded. A LoadLibraryResult.
int32_t loadLibrary(QuenzaContext& context, const Quenza::String& dllDirectory,
                    const Quenza::String& appdataDirectory, Quenza::String& errorText);

/// True when the folder holds the full renderer's library, whether it can be loaded or not.
bool hasFullRenderer(const Quenza::String& dllDirectory);

/// The process's context; null before the plug-in's start and after its end.
Quenza::Ref<QuenzaContext>& quenzaContext();
/// True when there is a context and its library is loaded.
bool isLibraryLoaded();
