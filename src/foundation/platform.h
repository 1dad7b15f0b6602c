// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vector.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// What the operating system gives. All paths and texts are UTF-8; on Windows they pass through the wide
/// form.
namespace Quenza::PlatformUtils {

class PlatformUtilsExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

#ifdef _WIN32
inline constexpr char SEPARATOR = '\\';
#else
inline constexpr char SEPARATOR = '/';
#endif

/// True when `c` separates the parts of a path on this platform.
bool isSeparator(char c);

/// True when the path doesn't depend on a current directory.
bool isAbsolutePath(const String& path);

/// Text of a variable of the environment, "" when it isn't set.
String environment(const char* name);

/// Text of a value below the current user's part of the registry, or "" when it isn't there. Away from
/// Windows the registry is "registry.ini" in the application data folder, with one section a key:
///     [Software\Maker\Product]
///     InstallDirectory=/opt/product
String readRegistryText(const String& key, const String& value);

/// Folder of the user's (roaming) application data: the system's on Windows, else $XDG_CONFIG_HOME or
/// ~/.config. Throws PlatformUtilsExcep "SHGetFolderPath() failed, Error code: " + code.
String getAppDataDirectory();

/// Folder for temporary files, without a separator at its end.
String getTempDirectory();

/// Starts a program that runs on alone: nothing tracks it, and it holds none of this process's files.
/// `executablePath` is the whole path; `commandLine` begins with the program's name (its argv[0]) and is
/// split at blanks outside of double quotes. Returns false when the program couldn't be started.
bool createProcess(const String& executablePath, const String& commandLine, bool lowPriority);

/// The words of the command line, the program's name first, from what `main` got.
std::vector<std::string> commandLineWords(int count, char** words);

/// The line that started the program: to the letter on Windows; elsewhere a program gets words alone, which
/// are put together with blanks.
String commandLine(int count, char** words);

/// Folder of the running program, or "" when the system doesn't tell.
String getProgramDirectory();

/// Lets other programs go before this one from now on. False when the system refuses.
bool lowerPriority();

/// In the numbers of Windows; MyThread tells what becomes of them elsewhere. 0, or the system's error number.
int setThreadPriority(std::thread& thread, int value);

/// Text of the system's last error, or of a given one.
String lastErrorText();
String errorText(int code);
/// Number of the system's last error.
int lastErrorCode();

/// Names the folder in which libraries that are loaded later look for libraries of their own. Away from
/// Windows they bring this along themselves, and nothing is done.
void setLibraryDirectory(const String& directory);
/// Loads a library with all that it needs, its names visible to nobody else. Null on failure, which `error`
/// tells.
void* loadLibrary(const String& path, String& error);
/// Address of an exported procedure; null when there is none of that name.
void* librarySymbol(void* library, const char* name);
void freeLibrary(void* library);
/// For a library itself: it stays in memory until the process ends, whoever frees it. Elsewhere than on
/// Windows it's linked so.
void keepThisLibrary();

enum class PathKind { MISSING, FILE, DIRECTORY };

/// Links are followed. Leaves the reason for MISSING to lastErrorCode().
PathKind pathKind(const String& path);

/// True for what exists and is no ordinary file: a directory, a device, a pipe.
bool isSpecialFile(const String& path);

/// True for a symbolic link, and on Windows for a junction; whatever it leads to.
bool isLink(const String& path);

/// These return false on failure and leave the reason to lastErrorText().
bool makeDirectory(const String& path);
bool removeFile(const String& path);
bool removeDirectory(const String& path);
/// A move within one volume; an existing file at `to` is replaced in one step. On Windows another program's
/// hold on either file is waited out for about a second.
bool replaceFile(const String& from, const String& to);
/// Names in the directory without "." and "..", in byte order.
bool listDirectory(const String& path, Vector<String>& names);
/// Seconds since 1970 UTC of the last change of the file.
bool fileTime(const String& path, i64& seconds);

/// fopen with a UTF-8 path; files are not passed on to child processes. Null on failure, and for a directory.
std::FILE* openFile(const String& path, const char* mode);
/// Size of an open file in bytes, or -1.
i64 openFileSize(std::FILE* file);
bool seekFile(std::FILE* file, i64 offset);
/// Reads `size` bytes that begin at `offset`; false when there are fewer. Threads may share the file. Where
/// the file stands afterwards is left open: seekFile tells it.
bool readFileAt(std::FILE* file, i64 offset, void* out, u64 size);

/// Lets a whole ordinary file be read as memory, most likely from its start to its end. False on failure, and
/// for what is no ordinary file. Empty bytes need no unmapping, but may have it.
bool mapFile(const String& path, std::string_view& bytes);
void unmapFile(std::string_view bytes) noexcept;

} // namespace Quenza::PlatformUtils
