// SPDX-License-Identifier: MIT
#include "headless/runtime/user.h"

namespace headless {

namespace {

template <typename T>
std::optional<T> takeFirst(std::deque<T>& queue) {
    if (queue.empty()) {
        return std::nullopt;
    }
    std::optional<T> first = std::move(queue.front());
    queue.pop_front();
    return first;
}

} // namespace

void ScriptedUser::tell(std::string message) {
    interactions_.push_back({Interaction::Kind::message, std::move(message), std::nullopt});
}

bool ScriptedUser::ask(std::string question) {
    const std::optional<bool> yes = takeFirst(yesNo_);
    Interaction asked{Interaction::Kind::question, std::move(question), std::nullopt};
    if (yes) {
        asked.answer = *yes ? "yes" : "no";
    }
    interactions_.push_back(std::move(asked));
    return yes.value_or(false);
}

std::optional<std::string> ScriptedUser::selectFile(std::string title) {
    std::optional<std::string> path = takeFirst(files_);
    interactions_.push_back({Interaction::Kind::fileSelection, std::move(title), path});
    return path;
}

std::vector<UserAction> ScriptedUser::nextDialogActions() {
    return takeFirst(dialogs_).value_or(std::vector<UserAction>());
}

} // namespace headless
