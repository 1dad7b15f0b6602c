// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"

#include <cstddef>
#include <vector>

/// Writes a line to the host's console. Any thread.
void GePrint(const String& line);
/// A text of the plug-in's string table; empty when there is none of that number.
String GeLoadString(int32_t id);
/// Loads the plug-in's string table from its resource folder.
bool GeLoadResource(const Filename& pluginPath);
void GeFreeResource();
/// Milliseconds since some fixed moment; wraps around.
uint32_t GeGetMilliSeconds();
/// Lets the calling thread rest for a while of the host's clock; the main thread never calls it.
void GeSleep(uint32_t milliseconds);
/// The folder of the host's program.
Filename GeGetStartupPath();
/// Number of processor threads.
int32_t GeGetCurrentOptimalThreads();
/// Frees an array that the host handed over.
void GeFree(void* memory);

/// A local date and time.
struct DateTime {
    int32_t year = 2000;
    int32_t month = 1;
    int32_t day = 1;
    int32_t hour = 0;
    int32_t minute = 0;
    int32_t second = 0;
};
void GetDateTimeNow(DateTime& now);

/// The host's preferences, WorldPreference numbers. Never null.
BaseContainer* GetWorldContainerInstance();

/// The status bar of the host's window. Any thread.
void StatusSetText(const String& text);
/// 0 to 100.
void StatusSetBar(int32_t percent);
void StatusClear();

/// Sends a core message to the main thread: dialogs and message plug-ins get it with the two values under
/// BFM_CORE_PAR1 and BFM_CORE_PAR2. Any thread.
void SpecialEventAdd(int32_t messageId, uintptr_t parameter1 = 0, uintptr_t parameter2 = 0);
/// Tells the host that something visible has changed.
void EventAdd();

inline constexpr int32_t BFM_CORE_PAR1 = 0x4D636931;
inline constexpr int32_t BFM_CORE_PAR2 = 0x4D636932;

/// Hands a file to the host as a user preview scene of a material plug-in.
bool AddUserPreviewScene(const Filename& scene, int32_t pluginId);

/// CRC-32 of a block, continued from `seed`; the form of zlib's crc32.
uint32_t CalcCRC32(const void* data, size_t byteCount, uint32_t seed);

/// True when the path exists; with `isDirectory` when it's a folder, else when it's a file.
bool GeFExist(const Filename& path, bool isDirectory = false);
bool GeFCreateDir(const Filename& path);
/// Deletes a file, or with `recursive` a folder and all it holds.
bool GeFKill(const Filename& path, bool recursive = false);
/// Copies a file; with `overwrite` over an existing one. The source may be a "preset://" name of the host's
/// libraries.
bool GeFCopyFile(const Filename& source, const Filename& target, bool overwrite);
/// Appends the names of what lies in a folder, files and folders, in alphabetical order.
bool GeFListDirectory(const Filename& folder, std::vector<Filename>& names);
/// Unpacks a zip archive into an existing folder; nothing is written outside of it. False when the archive
/// can't be read or is refused; what was unpacked until then is removed.
bool GeExtractZip(const Filename& archive, const Filename& folder);

/// Looks for a texture by its name as a document stores it: in `extra`, beside the document, in its folder
/// "tex" and in the host's texture paths. False when there is none. An empty `found` means that the name
/// stands as it is.
bool GenerateTexturePath(const Filename& documentPath, const Filename& name, const Filename& extra,
                         Filename* found);

/// The host's random numbers.
class Random {
public:
    void Init(uint32_t seed);
    /// 0 to 1, below 1.
    float Get01();

private:
    uint32_t state_ = 0x2545F491;
};
