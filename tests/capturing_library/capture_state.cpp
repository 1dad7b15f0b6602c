// SPDX-License-Identifier: MIT
#include "capturing_library/capture_state.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace capture {

namespace {

/// Operations that only ask: a loop that polls repeats them.
constexpr const char* QUESTIONS[] = {
    "QuenzaInterface.getSamplesPerPixel",
    "QuenzaInterface.getElapsedTime",
    "QuenzaInterface.getMessages",
    "QuenzaInterface.messagesEmpty",
    "QuenzaInterface.nextMessage",
    "ToneMapperDLLAPI.isFinished",
    "ToneMapperDLLAPI.getError",
    "Message.getType",
    "Message.getText",
    "Message.destroy",
};

} // namespace

CaptureState& captureState() {
    static CaptureState state;
    return state;
}

std::array<float, 3> CaptureState::plainColour(uint32_t layer, uint32_t /*x*/, uint32_t /*y*/) {
    std::array<float, 3> colour{};
    colour[layer % 3] = 0.5f;
    return colour;
}

void CaptureState::reset() {
    const std::lock_guard lock(mutex_);
    now_ = Changeable();
    heldChanged_.notify_all();
}

std::vector<Call> CaptureState::calls() const {
    const std::lock_guard lock(mutex_);
    return now_.calls;
}

std::vector<std::string> CaptureState::actions() const {
    std::vector<std::string> names;
    for (const Call& call : calls()) {
        if (std::find(std::begin(QUESTIONS), std::end(QUESTIONS), call.name) == std::end(QUESTIONS)) {
            names.push_back(call.name);
        }
    }
    return names;
}

size_t CaptureState::count(const std::string& callName) const {
    const std::lock_guard lock(mutex_);
    return static_cast<size_t>(std::count_if(now_.calls.begin(), now_.calls.end(),
                                             [&](const Call& call) { return call.name == callName; }));
}

int CaptureState::liveObjects() const {
    const std::lock_guard lock(mutex_);
    return objects_;
}

int CaptureState::liveThreads() const {
    const std::lock_guard lock(mutex_);
    return threads_;
}

std::vector<std::string> CaptureState::violations() const {
    const std::lock_guard lock(mutex_);
    return {now_.violations.begin(), now_.violations.end()};
}

std::vector<TakenState> CaptureState::takenStates() const {
    const std::lock_guard lock(mutex_);
    return now_.takenStates;
}

std::vector<SetUp> CaptureState::setUps() const {
    const std::lock_guard lock(mutex_);
    return now_.setUps;
}

std::vector<std::string> CaptureState::arguments() const {
    const std::lock_guard lock(mutex_);
    return now_.arguments;
}

void CaptureState::fail(const std::string& callName, int32_t code, const std::string& text) {
    const std::lock_guard lock(mutex_);
    now_.failures[callName] = {code, text};
}

void CaptureState::log(int32_t type, const std::string& text) {
    const std::lock_guard lock(mutex_);
    now_.log.push_back({type, text});
}

void CaptureState::logOn(const std::string& callName, int32_t type, const std::string& text) {
    const std::lock_guard lock(mutex_);
    now_.logOn.insert({callName, Message{type, text}});
}

void CaptureState::dieInThread(const std::string& text) {
    const std::lock_guard lock(mutex_);
    now_.death = text;
}

void CaptureState::followProgress(std::function<Progress()> progress) {
    const std::lock_guard lock(mutex_);
    now_.progress = std::move(progress);
}

void CaptureState::holdScene(bool hold) {
    std::unique_lock lock(mutex_);
    now_.sceneHeld = hold;
    isSceneKept_ = false;
    heldChanged_.wait(lock, [&] { return isSceneKept_ == hold; });
}

bool CaptureState::keepsScene() {
    const std::lock_guard lock(mutex_);
    isSceneKept_ = now_.sceneHeld;
    heldChanged_.notify_all();
    return isSceneKept_;
}

void CaptureState::ignoreStop(bool ignore) {
    const std::lock_guard lock(mutex_);
    now_.stopIgnored = ignore;
}

bool CaptureState::ignoresStop() const {
    const std::lock_guard lock(mutex_);
    return now_.stopIgnored;
}

void CaptureState::holdToneMapping(bool hold) {
    const std::lock_guard lock(mutex_);
    now_.held = hold;
    heldChanged_.notify_all();
}

void CaptureState::failToneMapping(const std::string& error) {
    const std::lock_guard lock(mutex_);
    now_.toneMappingError = error;
}

void CaptureState::setLayers(LayerColour colour) {
    const std::lock_guard lock(mutex_);
    now_.colour = std::move(colour);
}

void CaptureState::setDevices(std::vector<std::pair<std::string, int32_t>> devices) {
    const std::lock_guard lock(mutex_);
    now_.devices = std::move(devices);
}

void CaptureState::record(const std::string& callName) {
    const std::lock_guard lock(mutex_);
    now_.calls.push_back({callName, std::this_thread::get_id(), std::chrono::steady_clock::now()});
    if (!isSetUp_) {
        now_.violations.insert(callName + " while the library isn't set up");
    }
    const auto [first, last] = now_.logOn.equal_range(callName);
    for (auto entry = first; entry != last; ++entry) {
        now_.log.push_back(entry->second);
    }
    now_.logOn.erase(first, last);
}

void CaptureState::setUpDone(bool isSetUp) {
    const std::lock_guard lock(mutex_);
    if (isSetUp == isSetUp_) {
        now_.violations.insert(isSetUp ? "a second set-up" : "a shutdown without a set-up");
    }
    isSetUp_ = isSetUp;
    if (!isSetUp && objects_ > 0) {
        now_.violations.insert("objects outlive the library");
    }
}

void CaptureState::objectMade() {
    const std::lock_guard lock(mutex_);
    ++objects_;
}

void CaptureState::objectGone() {
    const std::lock_guard lock(mutex_);
    --objects_;
}

void CaptureState::threadStarted() {
    const std::lock_guard lock(mutex_);
    ++threads_;
}

void CaptureState::threadEnded() {
    const std::lock_guard lock(mutex_);
    --threads_;
}

void CaptureState::violation(const std::string& what) {
    const std::lock_guard lock(mutex_);
    now_.violations.insert(what);
}

void CaptureState::took(const TakenState& state) {
    const std::lock_guard lock(mutex_);
    now_.takenStates.push_back(state);
}

void CaptureState::wasSetUp(const SetUp& setUp) {
    const std::lock_guard lock(mutex_);
    now_.setUps.push_back(setUp);
}

void CaptureState::gotArguments(std::vector<std::string> arguments) {
    const std::lock_guard lock(mutex_);
    now_.arguments = std::move(arguments);
}

int32_t CaptureState::outcome(const std::string& callName, std::string* text) const {
    const std::lock_guard lock(mutex_);
    const auto failure = now_.failures.find(callName);
    if (failure == now_.failures.end()) {
        return 0;
    }
    if (text) {
        *text = failure->second.text;
    }
    return failure->second.code;
}

std::vector<CaptureState::Message> CaptureState::takeLog() {
    const std::lock_guard lock(mutex_);
    return std::exchange(now_.log, {});
}

std::optional<std::string> CaptureState::takeDeath() {
    const std::lock_guard lock(mutex_);
    return std::exchange(now_.death, {});
}

Progress CaptureState::progress() const {
    std::function<Progress()> progress;
    {
        const std::lock_guard lock(mutex_);
        progress = now_.progress;
    }
    return progress();
}

LayerColour CaptureState::layerColour() const {
    const std::lock_guard lock(mutex_);
    return now_.colour;
}

std::vector<std::pair<std::string, int32_t>> CaptureState::devices() const {
    const std::lock_guard lock(mutex_);
    return now_.devices;
}

std::string CaptureState::toneMappingError() const {
    const std::lock_guard lock(mutex_);
    return now_.toneMappingError;
}

void CaptureState::waitWhileHeld(const bool& closing) {
    std::unique_lock lock(mutex_);
    heldChanged_.wait(lock, [&] { return !now_.held || closing; });
}

void CaptureState::wakeRuns(bool& closing) {
    const std::lock_guard lock(mutex_);
    closing = true;
    heldChanged_.notify_all();
}

} // namespace capture
