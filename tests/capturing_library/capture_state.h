// SPDX-License-Identifier: MIT
#pragma once

#include "capturing_library/control.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace capture {

/// The library's memory: records and orders. All functions are for any thread.
class CaptureState final : public Control {
public:
    void reset() override;
    std::vector<Call> calls() const override;
    std::vector<std::string> actions() const override;
    size_t count(const std::string& callName) const override;
    int liveObjects() const override;
    int liveThreads() const override;
    std::vector<std::string> violations() const override;
    std::vector<TakenState> takenStates() const override;
    std::vector<SetUp> setUps() const override;
    std::vector<std::string> arguments() const override;
    void fail(const std::string& callName, int32_t code, const std::string& text) override;
    void log(int32_t type, const std::string& text) override;
    void logOn(const std::string& callName, int32_t type, const std::string& text) override;
    void dieInThread(const std::string& text) override;
    void followProgress(std::function<Progress()> progress) override;
    void holdScene(bool hold) override;
    void ignoreStop(bool ignore) override;
    void holdToneMapping(bool hold) override;
    void failToneMapping(const std::string& error) override;
    void setLayers(LayerColour colour) override;
    void setDevices(std::vector<std::pair<std::string, int32_t>> devices) override;

    struct Message {
        int32_t type;
        std::string text;
    };

    // Of the library's own side.

    /// Records a call; it is a violation when the library isn't set up.
    void record(const std::string& callName);
    void setUpDone(bool isSetUp);
    void objectMade();
    void objectGone();
    void threadStarted();
    void threadEnded();
    void violation(const std::string& what);
    void took(const TakenState& state);
    void wasSetUp(const SetUp& setUp);
    void gotArguments(std::vector<std::string> arguments);
    /// The code that calls of that name return; `text` becomes the reason when it isn't 0.
    int32_t outcome(const std::string& callName, std::string* text = nullptr) const;
    /// What was logged since the last call, oldest first.
    std::vector<Message> takeLog();
    /// The text to die with, once; none when the thread is to go on.
    std::optional<std::string> takeDeath();
    Progress progress() const;
    LayerColour layerColour() const;
    std::vector<std::pair<std::string, int32_t>> devices() const;
    std::string toneMappingError() const;
    /// Asked by the thread that holds the root's mutex: whether it is to go on so.
    bool keepsScene();
    bool ignoresStop() const;
    /// Waits until no run is held, or `closing` has been set, which wakeRuns() tells.
    void waitWhileHeld(const bool& closing);
    void wakeRuns(bool& closing);

private:
    struct Failure {
        int32_t code;
        std::string text;
    };

    static std::array<float, 3> plainColour(uint32_t layer, uint32_t x, uint32_t y);

    /// All that `reset` sets back.
    struct Changeable {
        std::vector<Call> calls;
        std::set<std::string> violations;
        std::vector<TakenState> takenStates;
        std::vector<SetUp> setUps;
        std::vector<std::string> arguments;
        std::map<std::string, Failure> failures;
        std::vector<Message> log;
        std::multimap<std::string, Message> logOn;
        std::optional<std::string> death;
        std::function<Progress()> progress = [] { return Progress(); };
        bool sceneHeld = false;
        bool stopIgnored = false;
        bool held = false;
        std::string toneMappingError;
        LayerColour colour = plainColour;
        std::vector<std::pair<std::string, int32_t>> devices{{"Capture CUDA", 1}, {"Capture OpenCL", 0}};
    };

    mutable std::mutex mutex_;
    std::condition_variable heldChanged_;
    bool isSceneKept_ = false;
    Changeable now_;
    bool isSetUp_ = false;
    int objects_ = 0;
    int threads_ = 0;
};

CaptureState& captureState();

} // namespace capture
