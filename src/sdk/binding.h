// SPDX-License-Identifier: MIT
#pragma once

// How the renderer's run-time library is called: names of exported procedures and interfaces, and the
// positions of the operations in the interfaces' tables. Both sides are built from this description and share
// nothing else but the scene graph's own classes.
//
// Strings, vectors and Ref handles cross the boundary as the scene library lays them out, and both sides
// allocate from the same heap. No exception crosses it. Any thread may call, but one object from one thread
// at a time unless said otherwise.

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vector.h"
#include "scene/scene_node.h"
#include "scene/scene_node_root.h"
#include "sdk/render_buffer.h"

namespace Quenza::SDK {

/// The library's file: the full renderer's, and that of the realtime edition. The first that exists is taken.
inline constexpr const char* LIBRARY_FILE = "quenza_sdk.dll";
inline constexpr const char* RT_LIBRARY_FILE = "quenza_rt_sdk.dll";

struct InterfaceBase;

/// Exported as "quenzaCreateInstance": a new object of the interface with that name, counted once for the
/// caller. Returns 0, or another number and leaves `object` alone.
using CreateInstance = i32 (*)(const String& interface_name, InterfaceBase*& object);
/// Exported as "quenzaGlobalLibraryInit": once, before all else. The string stays where it is until the
/// shutdown.
using GlobalLibraryInit = void (*)(const String* dll_directory);
/// Exported as "quenzaGlobalLibraryShutdown": once, after the last object has gone.
using GlobalLibraryShutdown = void (*)();

inline constexpr const char* CREATE_INSTANCE = "quenzaCreateInstance";
inline constexpr const char* GLOBAL_LIBRARY_INIT = "quenzaGlobalLibraryInit";
inline constexpr const char* GLOBAL_LIBRARY_SHUTDOWN = "quenzaGlobalLibraryShutdown";

inline constexpr const char* RENDERER_INTERFACE = "QuenzaInterface";
inline constexpr const char* TONE_MAPPER_INTERFACE = "ToneMapperDLLAPI";
inline constexpr const char* HARDWARE_INFO_INTERFACE = "HardwareInfoDLLAPI";

/// An entry of an interface's table; each operation has its own signature, below.
using Procedure = void (*)();

/// What every object of the library begins with. Its holders count themselves (atomically), and the last one
/// calls `destroy`: the memory is the library's. Position 0 of a table is the library's own.
struct InterfaceBase {
    const Procedure* table = nullptr;
    i32 ref_count = 1;
    void (*destroy)(InterfaceBase* object) = nullptr;
};

/// Calls the operation at `position` of the object's table: `call<Signature>(object, position,
/// arguments...)`, where the signature is without the object, which goes first.
template <class Signature>
struct Operation;

template <class Result, class... Arguments>
struct Operation<Result(Arguments...)> {
    using Type = Result (*)(InterfaceBase*, Arguments...);
    u32 position;

    Result operator()(InterfaceBase* object, Arguments... arguments) const {
        return reinterpret_cast<Type>(object->table[position])(object, arguments...);
    }
};

/// A queued log message.
namespace Message {
inline constexpr u32 TABLE_SIZE = 3;
/// Values of getType. Others are for information.
inline constexpr i32 TYPE_ERROR = 1;
inline constexpr Operation<i32()> getType{1};
inline constexpr Operation<void(String& text)> getText{2};
} // namespace Message

/// "QuenzaInterface": one render.
namespace RendererInterface {
inline constexpr u32 TABLE_SIZE = 24;
/// Right after creation. `appdata_directory` is the renderer's folder of the user's application data. 0 is
/// success.
inline constexpr Operation<i32(const String& dll_directory, const String& appdata_directory)> initialise{1};
/// Of the image so far; 0 before the start.
inline constexpr Operation<double()> getSamplesPerPixel{4};
/// Seconds of rendering, pauses left out; 0 before the start.
inline constexpr Operation<double()> getElapsedTime{5};
/// Hands over the scene and where its image goes. `arguments` are those of the renderer's command line. 0 is
/// success; else the reason is among the messages. Before startRendering, once.
inline constexpr Operation<i32(const Ref<SceneNodeRoot>& root, const Ref<RenderBuffer>& buffer,
                               const Vector<String>& arguments)>
    initialiseWithScene{7};
/// The tree has changed: takes over the nodes that are marked as changed (camera and tone mapping; the image
/// starts anew when the camera has moved), under the root's mutex. 0 is success.
inline constexpr Operation<i32(const Ref<SceneNodeRoot>& root)> updateScene{8};
/// Starts the render's threads and returns.
inline constexpr Operation<void()> startRendering{9};
/// These may be called from another thread than the one that polls. `stop` returns when no thread renders any
/// more.
inline constexpr Operation<void()> pause{10};
inline constexpr Operation<void()> resume{11};
inline constexpr Operation<void()> stop{12};
/// Moves what the render's threads have logged into the queue of nextMessage. `list` is left as it is.
inline constexpr Operation<void(Vector<InterfaceBase*>& list)> getMessages{21};
inline constexpr Operation<bool()> messagesEmpty{22};
/// The oldest message, counted once for the caller; null when the queue is empty.
inline constexpr Operation<InterfaceBase*()> nextMessage{23};
} // namespace RendererInterface

/// "ToneMapperDLLAPI": makes display images of a render's buffer on a thread of the library.
namespace ToneMapperInterface {
inline constexpr u32 TABLE_SIZE = 6;
/// `bytes` gets the display image, three or four bytes a pixel, rows from the top; `floats` the same linear,
/// in floats, unless it is empty. 0 is success, else `error` says why.
inline constexpr Operation<i32(const String& dll_directory, const String& appdata_directory,
                               const Ref<RenderBuffer>& buffer, float gamma, const Ref<UInt8Buffer>& bytes,
                               const Ref<FloatBuffer>& floats, String& error)>
    setUp{1};
/// Copies what the nodes say, for the runs that start later. The nodes may be null, but for the settings. The
/// caller keeps them still. 0 is success.
inline constexpr Operation<i32(SceneNode* tonemapping, SceneNode* camera, SceneNode* settings)> update{2};
/// Starts one run and returns. Not while one is on.
inline constexpr Operation<void()> startTonemapping{3};
/// True before the first run, and when the last has ended. From the start of a run until then the byte buffer
/// is the library's.
inline constexpr Operation<bool()> isFinished{4};
/// Why the last run failed; empty when it didn't.
inline constexpr Operation<void(String& text)> getError{5};
} // namespace ToneMapperInterface

/// A device that can render.
struct GPUInfo {
    /// Values of `kind`.
    static constexpr i32 OPENCL = 0;
    static constexpr i32 CUDA = 1;

    String name;
    i32 kind = OPENCL;
};

/// Made by the library and counted as its other objects; no operations.
struct GPUInfoList : InterfaceBase {
    Vector<GPUInfo> devices;
};

/// "HardwareInfoDLLAPI".
namespace HardwareInfoInterface {
inline constexpr u32 TABLE_SIZE = 3;
/// The list is counted once for the caller. 0 is success.
inline constexpr Operation<i32(GPUInfoList*& list)> getGPUInfo{1};
} // namespace HardwareInfoInterface

} // namespace Quenza::SDK
