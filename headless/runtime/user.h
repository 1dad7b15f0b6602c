// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/gedata.h"

class GeDialog;

namespace headless {

/// What a user does in a dialog, some time after it opened.
struct UserAction {
    enum class Kind { press, set, close, use };

    std::chrono::milliseconds after{0};
    Kind kind = Kind::close;
    /// The gadget pressed or set.
    int32_t gadget = 0;
    /// What a set gadget gets.
    GeData value;
    /// What is done with the dialog for `use`: for a user who looks before he acts.
    std::function<void(GeDialog&)> use = nullptr;
    /// Instead of the number: the gadget's name in its resource, or the text on it.
    std::string gadgetName = {};
};

/// What the plug-in asked of the user or told, and what came back.
struct Interaction {
    enum class Kind { message, question, fileSelection };

    Kind kind = Kind::message;
    /// The text of the message or question, or the title of the file selector.
    std::string text;
    /// The chosen path, "yes" or "no"; nothing when the user cancelled.
    std::optional<std::string> answer;
};

/// The user of this host: answers and actions laid down beforehand. What has no answer is cancelled.
class ScriptedUser {
public:
    void addFileAnswer(std::string path) { files_.push_back(std::move(path)); }
    void addAnswer(bool yes) { yesNo_.push_back(yes); }
    /// For the next dialog that opens; each opening takes one list.
    void addDialogActions(std::vector<UserAction> actions) { dialogs_.push_back(std::move(actions)); }

    void tell(std::string message);
    /// False for no, and for a question that has no answer.
    bool ask(std::string question);
    std::optional<std::string> selectFile(std::string title);
    std::vector<UserAction> nextDialogActions();

    /// Everything so far, in order.
    const std::vector<Interaction>& interactions() const { return interactions_; }

private:
    std::deque<std::string> files_;
    std::deque<bool> yesNo_;
    std::deque<std::vector<UserAction>> dialogs_;
    std::vector<Interaction> interactions_;
};

} // namespace headless
