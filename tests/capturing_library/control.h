// SPDX-License-Identifier: MIT
#pragma once

// What tests tell the capturing library, and what they ask it. The library implements the run-time library's
// binding without rendering anything: it records its calls, checks what it is told, and fails on demand.

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace capture {

/// A call that the library received. `name` is that of an exported procedure, with a colon and the
/// interface's behind "quenzaCreateInstance", or the interface's, a point and the operation's:
/// "QuenzaInterface.startRendering". The procedure that ends an object is "QuenzaInterface.destroy" and so
/// on, and a message's interface is "Message".
struct Call {
    std::string name;
    std::thread::id thread;
    std::chrono::steady_clock::time_point time;
};

/// What ToneMapperDLLAPI.update took from the nodes.
struct TakenState {
    /// A SceneNodeTonemapping::TonemapType; 0 without a node.
    uint32_t method = 0;
    double scale = 0;
    double preScale = 0;
    double postScale = 0;
    double burn = 0;
    double filmIso = 0;
    double evAdjust = 0;
    std::string responseFunctionPath;
    /// Negative when the settings have none.
    double whiteX = -1;
    double whiteY = -1;
    /// Of each layer, its colour times its gain.
    std::vector<std::array<double, 3>> gains;
    /// As a scene file tells it; empty without a node.
    std::string camera;
};

/// What ToneMapperDLLAPI.setUp was given.
struct SetUp {
    float gamma = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t numLayers = 0;
    uint32_t bytesPerPixel = 0;
    std::string dllDirectory;
    std::string appdataDirectory;
};

struct Progress {
    double elapsedSeconds = 0;
    double samplesPerPixel = 0;
};

using LayerColour = std::function<std::array<float, 3>(uint32_t layer, uint32_t x, uint32_t y)>;

/// One per process, for any thread. Orders stay until the next `reset`.
class Control {
public:
    /// Forgets all records and orders; a held tone mapping run goes on.
    virtual void reset() = 0;

    // Records.
    virtual std::vector<Call> calls() const = 0;
    /// Names of the calls that do something, without those that only ask for a value, a message or its text.
    virtual std::vector<std::string> actions() const = 0;
    virtual size_t count(const std::string& callName) const = 0;
    /// Objects that the library has made and nobody has let go of, messages and device lists included.
    virtual int liveObjects() const = 0;
    /// Threads of the library that have not ended.
    virtual int liveThreads() const = 0;
    /// What the plug-in did against the binding, each once: nodes changed while the library held the root's
    /// mutex, or without a new change stamp; an update of a tone mapper without the mutex; operations of one
    /// object from two threads at a time; a second hand-over of a scene; a render without one; a tone mapping
    /// run during another; calls before the library was set up or after its shutdown; objects that outlive
    /// it.
    virtual std::vector<std::string> violations() const = 0;
    virtual std::vector<TakenState> takenStates() const = 0;
    virtual std::vector<SetUp> setUps() const = 0;
    /// Of the last QuenzaInterface.initialiseWithScene.
    virtual std::vector<std::string> arguments() const = 0;

    // Orders.
    /// Calls of that name return `code` from now on. `text` is the error of a tone mapper's operation, or the
    /// error message that explains the refusal of a scene.
    virtual void fail(const std::string& callName, int32_t code, const std::string& text = "") = 0;
    /// Logs to the newest render, or the next when there is none; type 1 is an error.
    virtual void log(int32_t type, const std::string& text) = 0;
    /// Logs at the next call of that name.
    virtual void logOn(const std::string& callName, int32_t type, const std::string& text) = 0;
    /// The thread of the newest render, or the next, ends by an exception with that text, which becomes an
    /// error message.
    virtual void dieInThread(const std::string& text) = 0;
    /// What started renders report from now on; zeros at first. The function may be called from any thread.
    virtual void followProgress(std::function<Progress()> progress) = 0;
    void setProgress(double elapsedSeconds, double samplesPerPixel) {
        followProgress([=] { return Progress{elapsedSeconds, samplesPerPixel}; });
    }
    /// While it is on, the thread of the render that is on holds the root's mutex; it returns when it does.
    /// At other times the thread lets go of it now and then.
    virtual void holdScene(bool hold) = 0;
    /// While it is on, QuenzaInterface.stop does nothing: a render's thread goes on until its object goes.
    virtual void ignoreStop(bool ignore) = 0;
    /// While it is on, tone mapping runs that start don't end.
    virtual void holdToneMapping(bool hold) = 0;
    /// Runs end with that error, or none for "", and leave the image alone.
    virtual void failToneMapping(const std::string& error) = 0;
    /// The linear colour of a pixel of a layer, which a render writes as it starts. At first layer i is 0.5
    /// in the channel i % 3 and black in the others.
    ///
    /// The display image is, for each channel, the sum of all layers by their gains, times `scale` (linear),
    /// `postScale` (Reinhard) or two to the power of `evAdjust` (camera), from 0 to 1 made 0 to 255 and
    /// rounded, whatever the gamma; a fourth byte is 255. A byte buffer of another size is resized, to three
    /// bytes a pixel unless it has four.
    virtual void setLayers(LayerColour colour) = 0;
    /// Names and kinds that HardwareInfoDLLAPI.getGPUInfo gives; at first "Capture CUDA" (1) and "Capture
    /// OpenCL" (0).
    virtual void setDevices(std::vector<std::pair<std::string, int32_t>> devices) = 0;

protected:
    ~Control() = default;
};

/// Exported as "quenzaCaptureControl".
using GetControl = Control* (*)();
inline constexpr const char* GET_CONTROL = "quenzaCaptureControl";

} // namespace capture
