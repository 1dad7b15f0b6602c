// SPDX-License-Identifier: MIT
#include "headless/resources/element_reader.h"

#include <numbers>
#include <set>
#include <utility>

#include "headless/resources/numbers.h"

namespace headless::resources {

namespace {

struct KeywordEntry {
    std::string_view keyword;
    EntryKind kind;
};

constexpr KeywordEntry keywordKinds[] = {
    {"GROUP", EntryKind::group},
    {"SEPARATOR", EntryKind::separator},
    {"STATICTEXT", EntryKind::staticText},
    {"BOOL", EntryKind::boolean},
    {"LONG", EntryKind::integer},
    {"REAL", EntryKind::real},
    {"VECTOR", EntryKind::vector},
    {"COLOR", EntryKind::colour},
    {"STRING", EntryKind::string},
    {"FILENAME", EntryKind::filename},
    {"LINK", EntryKind::link},
    {"SHADERLINK", EntryKind::shaderLink},
    {"TEXBOX", EntryKind::shaderLink},
    {"IN_EXCLUDE", EntryKind::inExclude},
    {"BUTTON", EntryKind::button},
    {"BASETIME", EntryKind::time},
    {"GRADIENT", EntryKind::gradient},
    {"SPLINE", EntryKind::spline},
};

struct UnitName {
    std::string_view name;
    Unit unit;
};

constexpr UnitName unitNames[] = {{"REAL", Unit::real},
                                  {"PERCENT", Unit::percent},
                                  {"DEGREE", Unit::degree},
                                  {"METER", Unit::meter},
                                  {"TIME", Unit::time}};

/// What a number of the file is multiplied by to give the stored one.
double storedPerShown(Unit unit) {
    switch (unit) {
    case Unit::percent:
        return 0.01;
    case Unit::degree:
        return std::numbers::pi / 180;
    default:
        return 1;
    }
}

void scale(Value& value, double factor) {
    if (double* real = std::get_if<double>(&value))
        *real *= factor;
    if (auto* vector = std::get_if<std::array<double, 3>>(&value))
        for (double& component : *vector)
            component *= factor;
}

} // namespace

EntryKind kindOfKeyword(std::string_view keyword) {
    for (const KeywordEntry& known : keywordKinds)
        if (known.keyword == keyword)
            return known.kind;
    return EntryKind::other;
}

bool mayBeAnonymous(EntryKind kind) {
    return kind == EntryKind::group || kind == EntryKind::separator || kind == EntryKind::staticText ||
           kind == EntryKind::other;
}

void ElementReader::read(Entry& entry, const Statement& element) const {
    for (const Statement& property : element.block)
        readProperty(entry, property);
    // UNIT may stand behind the numbers that it is about.
    const double factor = storedPerShown(entry.unit);
    if (factor == 1)
        return;
    scale(entry.defaultValue, factor);
    for (std::optional<double>* limit :
         {&entry.min, &entry.max, &entry.step, &entry.minSlider, &entry.maxSlider})
        if (*limit)
            **limit *= factor;
}

void ElementReader::readProperty(Entry& entry, const Statement& property) const {
    const std::string_view name = property.keyword();
    if (name == "DEFAULT")
        readDefault(entry, property);
    else if (name == "UNIT")
        readUnit(entry, property);
    else if (name == "CUSTOMGUI")
        entry.customGui = text(property);
    else if (name == "HIDDEN")
        entry.hidden = true;
    else if (name == "CYCLE" && entry.kind == EntryKind::integer)
        readCycle(entry, property);
    else if (name == "ACCEPT")
        entry.accepts = names(property);
    else if (name == "REFUSE")
        entry.refuses = names(property);
    else if (!readRange(entry, property))
        keep(entry, property);
}

bool ElementReader::readRange(Entry& entry, const Statement& property) const {
    const std::pair<std::string_view, std::optional<double>*> fields[] = {{"MIN", &entry.min},
                                                                          {"MAX", &entry.max},
                                                                          {"STEP", &entry.step},
                                                                          {"MINSLIDER", &entry.minSlider},
                                                                          {"MAXSLIDER", &entry.maxSlider}};
    for (const auto& [name, field] : fields) {
        if (property.keyword() != name)
            continue;
        // Ranges of vectors are given three times; the components share one range here.
        const bool perComponent = entry.kind == EntryKind::vector && property.words.size() == 4;
        *field = number(perComponent ? property.words[1] : onlyArgument(property));
        return true;
    }
    return false;
}

void ElementReader::readUnit(Entry& entry, const Statement& property) const {
    const Token& argument = onlyArgument(property);
    for (const UnitName& known : unitNames)
        if (known.name == argument.text)
            entry.unit = known.unit;
    if (entry.unit == Unit::none)
        keep(entry, property);
}

void ElementReader::readDefault(Entry& entry, const Statement& property) const {
    switch (entry.kind) {
    case EntryKind::boolean: {
        const int32_t value = wholeNumber(property);
        if (value != 0 && value != 1)
            fail(onlyArgument(property).position, "the default of BOOL is 0 or 1");
        entry.defaultValue = value == 1;
        return;
    }
    case EntryKind::integer:
        entry.defaultValue = wholeNumber(property);
        return;
    case EntryKind::real:
        entry.defaultValue = number(onlyArgument(property));
        return;
    case EntryKind::vector:
    case EntryKind::colour:
        if (property.words.size() != 4)
            fail(property.position, "the default of " + entry.keyword + " is three numbers");
        entry.defaultValue = std::array<double, 3>{number(property.words[1]), number(property.words[2]),
                                                   number(property.words[3])};
        return;
    case EntryKind::string:
    case EntryKind::filename:
        entry.defaultValue = text(property);
        return;
    case EntryKind::other:
        keep(entry, property);
        return;
    default:
        fail(property.position, entry.keyword + " takes no default; remove it");
    }
}

void ElementReader::readCycle(Entry& entry, const Statement& property) const {
    entry.isCycle = true;
    std::set<int32_t> seen;
    for (const Statement& item : property.block) {
        // An item may carry an icon, `NAME~1234`, which nothing shows here.
        if (item.hasBlock || item.keyword().empty())
            fail(item.position, "expected the name of a cycle entry and ';'");
        const std::string& symbol = item.words[0].text;
        const std::optional<int32_t> value = symbols_.find(symbol);
        if (!value)
            fail(item.position, "'" + symbol + "' has no number; add it to the header of the description");
        if (!seen.insert(*value).second)
            fail(item.position,
                 "the value of '" + symbol + "' is in this cycle already; give it its own number");
        entry.cycle.push_back({*value, symbol, {}});
    }
}

std::vector<std::string> ElementReader::names(const Statement& property) const {
    std::vector<std::string> result;
    for (const Statement& item : property.block) {
        if (item.hasBlock || item.words.size() != 1)
            fail(item.position, "expected the name or number of one type and ';'");
        result.push_back(item.words[0].text);
    }
    return result;
}

std::string ElementReader::text(const Statement& property) const {
    return onlyArgument(property).text;
}

int32_t ElementReader::wholeNumber(const Statement& property) const {
    const Token& token = onlyArgument(property);
    const std::optional<int32_t> value =
        token.kind == Token::Kind::word ? symbols_.find(token.text) : parseInteger(token.text);
    if (!value || token.kind == Token::Kind::string)
        fail(token.position, describe(token) + " is no whole number and no name of the header");
    return *value;
}

double ElementReader::number(const Token& token) const {
    if (token.kind == Token::Kind::word) {
        if (const std::optional<int32_t> value = symbols_.find(token.text))
            return *value;
    } else if (token.kind == Token::Kind::number) {
        if (const std::optional<double> value = parseReal(token.text))
            return *value;
    }
    fail(token.position, describe(token) + " is no number and no name of the header");
}

const Token& ElementReader::onlyArgument(const Statement& property) const {
    if (property.hasBlock || property.words.size() != 2)
        fail(property.position,
             std::string(property.keyword()) + " takes exactly one value and a ';' behind it");
    return property.words[1];
}

void ElementReader::keep(Entry& entry, const Statement& property) {
    Property kept;
    for (const Token& word : property.words)
        (kept.name.empty() ? kept.name : kept.arguments.emplace_back()) = word.text;
    entry.properties.push_back(std::move(kept));
}

void ElementReader::fail(Position at, const std::string& message) const {
    throw ResourceError(file_, at, message);
}

} // namespace headless::resources
