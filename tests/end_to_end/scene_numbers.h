// SPDX-License-Identifier: MIT
#pragma once

#include <sstream>
#include <tinyxml.h>
#include <vector>

/// The numbers in an element of a scene file; none when it is missing.
inline std::vector<double> numbersOf(const TiXmlElement* element) {
    std::istringstream text(element ? element->GetText() : "");
    std::vector<double> numbers;
    for (double number; text >> number;) {
        numbers.push_back(number);
    }
    return numbers;
}
