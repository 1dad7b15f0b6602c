// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace engine {

/// What a render tells its user about the scene: each text once, in the order of the first mention.
class Notices {
public:
    void tell(const std::string& text) {
        for (const std::string& told : texts_) {
            if (told == text) {
                return;
            }
        }
        texts_.push_back(text);
    }
    const std::vector<std::string>& texts() const { return texts_; }

private:
    std::vector<std::string> texts_;
};

} // namespace engine
