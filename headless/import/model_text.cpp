// SPDX-License-Identifier: MIT
#include "headless/import/model_text.h"

#include "headless/resources/utf8.h"

#include <algorithm>

namespace headless {

std::string modelText(const aiString& text) {
    std::string_view rest(text.data, std::min<size_t>(text.length, sizeof(text.data) - 1));
    std::string valid;
    while (!rest.empty()) {
        const size_t length = resources::utf8SequenceLength(rest);
        if (length == 0) {
            resources::appendUtf8(valid, U'\xFFFD');
        } else {
            valid += rest.substr(0, length);
        }
        rest.remove_prefix(std::max<size_t>(length, 1));
    }
    return valid;
}

} // namespace headless
