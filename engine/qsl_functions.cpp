// SPDX-License-Identifier: MIT
#include "engine/qsl_functions.h"

#include <algorithm>
#include <unordered_set>

namespace engine {

namespace {

constexpr size_t MAX_FUNCTIONS = 500;

std::vector<QSLType> typesOf(const QSLFunction& function) {
    std::vector<QSLType> types;
    for (const auto& [type, name] : function.params) {
        types.push_back(type);
    }
    return types;
}

enum class Match { NONE, CONVERTED, EXACT };

template <class TypeAt>
Match matchOf(size_t count, const TypeAt& wanted, const std::vector<QSLType>& given) {
    if (count != given.size()) {
        return Match::NONE;
    }
    Match match = Match::EXACT;
    for (size_t i = 0; i < count; ++i) {
        if (wanted(i) == QSLType::REAL && given[i] == QSLType::INT) {
            match = Match::CONVERTED;
        } else if (wanted(i) != given[i]) {
            return Match::NONE;
        }
    }
    return match;
}

/// The first of the best ones.
template <class List, class MatchOf>
auto best(const List& list, const MatchOf& match) {
    auto found = typename List::value_type{nullptr};
    Match how = Match::NONE;
    for (const auto candidate : list) {
        const Match here = match(*candidate);
        if (here > how) {
            how = here;
            found = candidate;
        }
    }
    return found;
}

using Builtins = std::unordered_map<std::string_view, std::vector<const QSLBuiltin*>>;

const Builtins& builtinsByName() {
    static const Builtins builtins = [] {
        Builtins map;
        for (const QSLBuiltin& builtin : qslBuiltins()) {
            map[builtin.name].push_back(&builtin);
        }
        return map;
    }();
    return builtins;
}

} // namespace

std::string qslSignature(std::string_view name, const std::vector<QSLType>& types) {
    std::string text = std::string(name) + "(";
    for (size_t i = 0; i < types.size(); ++i) {
        text += (i == 0 ? "" : ", ") + std::string(nameOf(types[i]));
    }
    return text + ")";
}

QSLFunctions::QSLFunctions(const QSLTree& tree) {
    std::unordered_set<std::string> known;
    for (const QSLFunction& function : tree.functions) {
        if (known.size() == MAX_FUNCTIONS) {
            throw QSLFault{function.place,
                           "There are more than " + std::to_string(MAX_FUNCTIONS) + " functions"};
        }
        const std::string signature = qslSignature(function.name, typesOf(function));
        if (!known.insert(signature).second) {
            throw QSLFault{function.place, "'" + signature + "' is defined twice"};
        }
        own_[function.name].push_back(&function);
    }
}

QSLFunctions::Found QSLFunctions::find(std::string_view name, const std::vector<QSLType>& arguments) const {
    Found found;
    if (const auto own = own_.find(name); own != own_.end()) {
        found.own = best(own->second, [&](const QSLFunction& f) {
            return matchOf(
                f.params.size(), [&f](size_t i) { return f.params[i].first; }, arguments);
        });
    }
    const auto builtins = builtinsByName().find(name);
    if (!found.own && builtins != builtinsByName().end()) {
        found.builtin = best(builtins->second, [&](const QSLBuiltin& b) {
            return matchOf(
                b.params.size(), [&b](size_t i) { return b.params[i]; }, arguments);
        });
    }
    return found;
}

bool QSLFunctions::knows(std::string_view name) const {
    return own_.count(name) > 0 || builtinsByName().count(name) > 0;
}

const QSLFunction* QSLFunctions::first(std::string_view name) const {
    const auto own = own_.find(name);
    return own == own_.end() ? nullptr : own->second.front();
}

/// Takes away, again and again, the functions that only call such as were taken away.
void refuseRecursion(const QSLTree& tree, const std::vector<std::vector<size_t>>& callees) {
    std::vector<size_t> open(callees.size());
    std::vector<std::vector<size_t>> callers(callees.size());
    std::vector<size_t> ready;
    for (size_t i = 0; i < callees.size(); ++i) {
        open[i] = callees[i].size();
        for (const size_t callee : callees[i]) {
            callers[callee].push_back(i);
        }
        if (open[i] == 0) {
            ready.push_back(i);
        }
    }
    while (!ready.empty()) {
        const size_t done = ready.back();
        ready.pop_back();
        for (const size_t caller : callers[done]) {
            if (--open[caller] == 0) {
                ready.push_back(caller);
            }
        }
    }
    const auto stuck = std::find_if(open.begin(), open.end(), [](size_t count) { return count > 0; });
    if (stuck != open.end()) {
        const QSLFunction& function = tree.functions[size_t(stuck - open.begin())];
        throw QSLFault{function.place,
                       "'" + std::string(function.name) + "' calls itself, or a function that does"};
    }
}

} // namespace engine
