// SPDX-License-Identifier: MIT
#include "headless/resources/dialog_loader.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "headless/resources/file_lookup.h"
#include "headless/resources/numbers.h"
#include "headless/resources/string_table.h"

namespace headless::resources {

namespace fs = std::filesystem;

namespace {

using Kind = DialogElementKind;

struct KeywordKind {
    std::string_view keyword;
    Kind kind;
};

constexpr KeywordKind ELEMENTS[] = {
    {"GROUP", Kind::group},           {"SCROLLGROUP", Kind::scrollGroup},
    {"STATICTEXT", Kind::staticText}, {"BUTTON", Kind::button},
    {"CHECKBOX", Kind::checkbox},     {"EDITTEXT", Kind::editText},
    {"EDITNUMBER", Kind::editNumber}, {"EDITNUMBERARROWS", Kind::editNumber},
    {"EDITSLIDER", Kind::editNumber}, {"COMBOBOX", Kind::comboBox},
    {"RADIOGROUP", Kind::radioGroup}, {"COLORFIELD", Kind::colourField},
    {"USERAREA", Kind::userArea},     {"SEPARATOR", Kind::separator},
};

/// Properties that say how the host's window is drawn, which no window here is.
constexpr std::string_view LOOKS[] = {
    "FIT_H",     "FIT_V",        "SCALE_H",    "SCALE_V",  "ALIGN_LEFT", "ALIGN_RIGHT",
    "ALIGN_TOP", "ALIGN_BOTTOM", "CENTER_H",   "CENTER_V", "BORDERSIZE", "BORDERSTYLE",
    "SPACE",     "EQUAL_COLS",   "EQUAL_ROWS", "SCROLL_H", "SCROLL_V",   "SCROLL_BORDER"};

std::optional<Kind> kindOfElement(std::string_view keyword) {
    const auto found = std::ranges::find(ELEMENTS, keyword, &KeywordKind::keyword);
    return found == std::end(ELEMENTS) ? std::nullopt : std::optional(found->kind);
}

bool isGroup(Kind kind) {
    return kind == Kind::group || kind == Kind::scrollGroup;
}

bool hasChoices(Kind kind) {
    return kind == Kind::comboBox || kind == Kind::radioGroup;
}

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

const Statement& findDialog(const std::vector<Statement>& statements, const std::string& file) {
    if (statements.empty())
        throw ResourceError(file, "is empty; it must hold DIALOG name { ... }");
    const Statement& dialog = statements.front();
    if (dialog.keyword() != "DIALOG" || dialog.words.size() != 2 || !dialog.hasBlock)
        throw ResourceError(file, dialog.position, "expected DIALOG name { ... }");
    if (statements.size() > 1)
        throw ResourceError(file, statements[1].position, "a second statement; one file holds one DIALOG");
    return dialog;
}

} // namespace

DialogResource DialogLoader::load(int32_t number) {
    readSymbols();
    const std::string name = nameOf(number);
    const fs::path layout = require(root_ / "dialogs", name + ".res");
    readTexts(require(root_ / "strings_us" / "dialogs", name + ".str"));
    file_ = layout.generic_string();
    const std::vector<Statement> statements = parseStatements(readTextFile(layout), file_);
    const Statement& dialog = findDialog(statements, file_);
    dialog_.name = dialog.words[1].text;
    if (!equalIgnoringCase(dialog_.name, name))
        fail(dialog.words[1].position,
             "the dialog is called '" + dialog_.name + "'; give it the name of its file");
    readElements(dialog, nullptr);
    return std::move(dialog_);
}

void DialogLoader::readSymbols() {
    constexpr const char* HEADER = "c4d_symbols.h";
    const fs::path header = findFile(root_, HEADER).value_or(root_ / HEADER);
    symbolsFile_ = header.generic_string();
    symbols_.readHeader(readTextFile(header), symbolsFile_);
}

/// The name of the dialog's files. A number may have several names: the dialog's is one of a file.
std::string DialogLoader::nameOf(int32_t number) const {
    std::vector<std::string> names;
    for (const auto& [symbol, value] : symbols_.all())
        if (value == number)
            names.push_back(lowerCase(symbol));
    if (names.empty())
        throw ResourceError(symbolsFile_, "no name has the number " + std::to_string(number) +
                                              " of a dialog; add one, and the dialog's files under it");
    std::ranges::sort(names);
    const auto withFile = std::ranges::find_if(names, [this](const std::string& name) {
        return findFile(root_ / "dialogs", name + ".res").has_value();
    });
    return withFile == names.end() ? names.front() : *withFile;
}

fs::path DialogLoader::require(const fs::path& folder, const std::string& fileName) const {
    std::optional<fs::path> found = findFile(folder, fileName);
    if (!found)
        throw ResourceError((folder / fileName).generic_string(),
                            "there is no such file; every dialog has a .res and a .str file");
    return *std::move(found);
}

void DialogLoader::readTexts(const fs::path& file) {
    file_ = file.generic_string();
    for (NamedText& line : parseStringFile(readTextFile(file), file_)) {
        if (!symbols_.find(line.symbol))
            fail(line.position, "'" + line.symbol + "' has no number; add it to c4d_symbols.h");
        texts_.emplace(std::move(line.symbol), std::move(line.text));
    }
}

/// What stands in the braces of the dialog, for which `group` is null, or of a group.
void DialogLoader::readElements(const Statement& owner, DialogElement* group) {
    for (const Statement& statement : owner.block) {
        if (const std::optional<Kind> kind = kindOfElement(statement.keyword()))
            readElement(statement, *kind);
        else if (statement.keyword() == "NAME" && !group)
            readName(statement, dialog_.title);
        else
            readProperty(statement, group);
    }
}

void DialogLoader::readElement(const Statement& statement, Kind kind) {
    DialogElement element;
    element.kind = kind;
    if (statement.words.size() > 2)
        fail(statement.position,
             std::string(statement.keyword()) + " takes one name; put a ';' or a block in braces behind it");
    if (statement.words.size() == 2) {
        const Token& name = statement.words[1];
        element.id = numberOf(name);
        element.symbol = name.kind == Token::Kind::word ? name.text : std::string();
        const auto [other, isNew] = symbolOfId_.emplace(element.id, name.text);
        if (element.id <= 0 || !isNew)
            fail(name.position, element.id <= 0 ? "gadgets have numbers above 0"
                                                : "the number " + std::to_string(element.id) +
                                                      " belongs to '" + other->second + "' already");
    } else if (!isGroup(kind) && kind != Kind::staticText && kind != Kind::separator) {
        fail(statement.position, std::string(statement.keyword()) +
                                     " needs a name; only groups, separators and static texts go without");
    }
    if (!isGroup(kind)) {
        for (const Statement& property : statement.block)
            readProperty(property, &element);
        dialog_.elements.push_back(std::move(element));
        return;
    }
    const size_t index = dialog_.elements.size();
    dialog_.elements.push_back(element);
    // The group's own properties may stand behind its gadgets.
    readElements(statement, &element);
    dialog_.elements[index] = std::move(element);
    dialog_.elements.emplace_back().kind = Kind::groupEnd;
}

/// `element` is null for the dialog itself.
void DialogLoader::readProperty(const Statement& property, DialogElement* element) {
    const std::string_view name = property.keyword();
    const bool takesColumns = element && (isGroup(element->kind) || element->kind == Kind::radioGroup);
    if (std::ranges::find(LOOKS, name) != std::end(LOOKS))
        return;
    if (name == "NAME" && element)
        readName(property, element->text);
    else if (name == "SIZE" && element)
        readSize(property, *element);
    else if ((name == "COLUMNS" || name == "ROWS") && takesColumns && property.words.size() == 2)
        // Columns are what counts: rows beyond the first come by themselves.
        element->columns = name == "COLUMNS"                     ? wholeNumber(property.words[1])
                           : wholeNumber(property.words[1]) == 1 ? std::numeric_limits<int32_t>::max()
                                                                 : element->columns;
    else if (name == "DISABLED" && element)
        element->isDisabled = true;
    else if ((name == "MIN" || name == "MAX" || name == "STEP") && element &&
             element->kind == Kind::editNumber)
        readRange(property, *element);
    else if (name == "CHILDS" && element && hasChoices(element->kind))
        readChoices(property, *element);
    else
        fail(property.position, "'" + (property.words.empty() ? std::string("{") : property.words[0].text) +
                                    "' is neither a gadget nor a property that can stand here; correct the "
                                    "word or remove it");
}

void DialogLoader::readName(const Statement& property, std::string& text) const {
    if (property.hasBlock || property.words.size() != 2)
        fail(property.position, "NAME takes the name of one text and a ';' behind it");
    text = textOf(property.words[1]);
}

void DialogLoader::readSize(const Statement& property, DialogElement& element) const {
    if (property.hasBlock || property.words.size() != 4 || !property.words[2].is(','))
        fail(property.position, "SIZE takes a width, a ',' and a height in pixels");
    element.width = wholeNumber(property.words[1]);
    element.height = wholeNumber(property.words[3]);
}

void DialogLoader::readRange(const Statement& property, DialogElement& element) const {
    const std::optional<double> value =
        property.words.size() == 2 ? parseReal(property.words[1].text) : std::nullopt;
    if (!value)
        fail(property.position, std::string(property.keyword()) + " takes one number and a ';' behind it");
    constexpr double UNLIMITED = std::numeric_limits<float>::max();
    if (!element.range)
        element.range = DialogRange{-UNLIMITED, UNLIMITED, 1.0};
    DialogRange& range = *element.range;
    (property.keyword() == "MIN"   ? range.minimum
     : property.keyword() == "MAX" ? range.maximum
                                   : range.step) = *value;
    if (range.minimum > range.maximum)
        fail(property.position, "MIN is above MAX; exchange them");
}

void DialogLoader::readChoices(const Statement& property, DialogElement& element) const {
    for (const Statement& choice : property.block) {
        if (choice.hasBlock || choice.words.size() != 3 || !choice.words[1].is(','))
            fail(choice.position, "expected the name of an entry, a ',', the name of its text and a ';'");
        const int32_t value = numberOf(choice.words[0]);
        if (std::ranges::find(element.choices, value, &DialogChoice::value) != element.choices.end())
            fail(choice.position, "the number of '" + choice.words[0].text +
                                      "' is in this list already; give it its own number");
        element.choices.push_back({value, textOf(choice.words[2])});
    }
}

/// The number of a name, or a number that stands for itself.
int32_t DialogLoader::numberOf(const Token& token) const {
    const std::optional<int32_t> number =
        token.kind == Token::Kind::number ? parseInteger(token.text) : symbols_.find(token.text);
    if (!number || token.kind == Token::Kind::string)
        fail(token.position, describe(token) + " has no number; add it to c4d_symbols.h");
    return *number;
}

/// Of pixels and columns.
int32_t DialogLoader::wholeNumber(const Token& token) const {
    constexpr int32_t MOST = 10000;
    const std::optional<int32_t> number =
        token.kind == Token::Kind::number ? parseInteger(token.text) : std::nullopt;
    if (!number || *number < 0 || *number > MOST)
        fail(token.position, describe(token) + " is no whole number from 0 to " + std::to_string(MOST));
    return *number;
}

const std::string& DialogLoader::textOf(const Token& token) const {
    const auto found = token.kind == Token::Kind::word ? texts_.find(token.text) : texts_.end();
    if (found == texts_.end())
        fail(token.position, describe(token) + " has no text; add it to the dialog's .str file");
    return found->second;
}

void DialogLoader::fail(Position at, const std::string& message) const {
    throw ResourceError(file_, at, message);
}

} // namespace headless::resources
