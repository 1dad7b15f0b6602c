// SPDX-License-Identifier: MIT
#include "headless/app/closest_names.h"

#include <algorithm>
#include <numeric>

namespace headless {

namespace {

constexpr size_t MOST_NAMES = 3;
constexpr size_t SHORTEST_PART = 3;

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

/// Levenshtein's distance.
size_t editDistance(const std::string& a, const std::string& b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t replaced = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::vector<std::string> closestNames(std::string_view word, const std::vector<std::string>& known) {
    const std::string wanted = lower(word);
    std::vector<std::pair<size_t, std::string>> ranked;
    for (const std::string& name : known) {
        const std::string candidate = lower(name);
        const bool holds = wanted.size() >= SHORTEST_PART && candidate.find(wanted) != std::string::npos;
        const size_t distance = holds ? 0 : editDistance(wanted, candidate);
        if (distance <= 1 + wanted.size() / 4) {
            ranked.emplace_back(distance, name);
        }
    }
    std::ranges::stable_sort(ranked, {}, &std::pair<size_t, std::string>::first);
    std::vector<std::string> names;
    for (size_t i = 0; i < std::min(ranked.size(), MOST_NAMES); ++i) {
        names.push_back(ranked[i].second);
    }
    return names;
}

std::string suggestion(std::string_view word, const std::vector<std::string>& known) {
    const std::vector<std::string> names = closestNames(word, known);
    std::string text;
    for (size_t i = 0; i < names.size(); ++i) {
        text += (i == 0 ? "; is " : i + 1 == names.size() ? " or " : ", ") + names[i];
    }
    return text.empty() ? "" : text + " meant?";
}

} // namespace headless
