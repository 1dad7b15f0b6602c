// SPDX-License-Identifier: MIT
#include "headless/resources/description_loader.h"

#include <utility>

#include "headless/resources/file_lookup.h"
#include "headless/resources/host_bases.h"
#include "headless/resources/numbers.h"
#include "headless/resources/string_table.h"

namespace headless::resources {

namespace fs = std::filesystem;

namespace {

constexpr int maxIncludeDepth = 16;

const Statement& findContainer(const std::vector<Statement>& statements, const std::string& file) {
    if (statements.empty())
        throw ResourceError(file, "is empty; it must hold CONTAINER name { ... }");
    const Statement& container = statements.front();
    if (container.keyword() != "CONTAINER" || container.words.size() != 2 || !container.hasBlock)
        throw ResourceError(file, container.position, "expected CONTAINER name { ... }");
    if (statements.size() > 1)
        throw ResourceError(file, statements[1].position, "a second statement; one file holds one CONTAINER");
    return container;
}

} // namespace

Description DescriptionLoader::load(const std::string& name) {
    description_.name = loadFiles(name);
    assignLabels();
    return std::move(description_);
}

fs::path DescriptionLoader::require(const fs::path& folder, const std::string& fileName) const {
    std::optional<fs::path> found = findFile(folder, fileName);
    if (!found)
        throw ResourceError((folder / fileName).generic_string(),
                            "there is no such file; every description has a .res, a .h and a .str file");
    return *std::move(found);
}

/// Gives the name as the container spells it.
std::string DescriptionLoader::loadFiles(const std::string& fileName) {
    const fs::path folder = root_ / "description";
    const fs::path resource = require(folder, fileName + ".res");
    const fs::path header = require(folder, fileName + ".h");
    const fs::path strings = require(root_ / "strings_us" / "description", fileName + ".str");
    symbols_.readHeader(readTextFile(header), header.generic_string());
    const std::string file = resource.generic_string();
    const std::vector<Statement> statements = parseStatements(readTextFile(resource), file);
    const Statement& container = findContainer(statements, file);
    std::string name = container.words[1].text;
    if (!equalIgnoringCase(name, fileName))
        throw ResourceError(file, container.words[1].position,
                            "the container is called '" + name + "'; give it the name of its file");
    included_.insert(name);
    readStatements(container.block, {file, name, std::nullopt});
    readLabels(strings, name);
    return name;
}

void DescriptionLoader::readLabels(const fs::path& file, const std::string& name) {
    const std::string fileName = file.generic_string();
    for (NamedText& line : parseStringFile(readTextFile(file), fileName)) {
        if (line.symbol != name && !symbols_.find(line.symbol))
            throw ResourceError(fileName, line.position,
                                "'" + line.symbol + "' is not in " + name +
                                    ".h; correct the name or add it there");
        // What includes a description may name its entries anew, and has been read after it.
        labels_[line.symbol] = std::move(line.text);
    }
}

void DescriptionLoader::readStatements(const std::vector<Statement>& statements, const Scope& scope) {
    for (const Statement& statement : statements)
        if (!readDirective(statement, scope))
            readElement(statement, scope);
}

bool DescriptionLoader::readDirective(const Statement& statement, const Scope& scope) {
    const std::string_view keyword = statement.keyword();
    if (statement.hasBlock)
        return false;
    if (keyword == "INCLUDE")
        include(statement, scope);
    else if (keyword == "HIDE" || keyword == "SHOW")
        setHidden(statement, scope, keyword == "HIDE");
    else if (kindOfKeyword(keyword) != EntryKind::other)
        return false;
    // NAME repeats the container's own name; whatever else stands here concerns the look of the page.
    return true;
}

void DescriptionLoader::include(const Statement& statement, const Scope& scope) {
    if (statement.words.size() != 2)
        throw ResourceError(scope.file, statement.position, "INCLUDE takes the name of one description");
    const std::string& name = statement.words[1].text;
    if (findHostBase(name) != nullptr) {
        addHostGroup(name);
        return;
    }
    if (included_.contains(name))
        throw ResourceError(scope.file, statement.position,
                            "'" + name + "' is included already, by itself or by another; remove this line");
    if (++includeDepth_ > maxIncludeDepth)
        throw ResourceError(scope.file, statement.position,
                            "descriptions include each other more than " + std::to_string(maxIncludeDepth) +
                                " deep; include fewer");
    if (!findFile(root_ / "description", name + ".res"))
        throw ResourceError(scope.file, statement.position,
                            "there is no description '" + name + "', neither here nor among the host's own");
    loadFiles(name);
    --includeDepth_;
}

void DescriptionLoader::addHostGroup(std::string_view baseName) {
    const HostBase& base = *findHostBase(baseName);
    if (base.groupSymbol.empty() || indexOfId_.contains(base.groupId))
        return;
    Entry group;
    group.id = base.groupId;
    group.symbol = base.groupSymbol;
    group.keyword = "GROUP";
    group.kind = EntryKind::group;
    group.origin = base.name;
    group.open = true;
    symbols_.add(group.symbol, group.id);
    labels_.emplace(group.symbol, base.label);
    indexOfId_.emplace(group.id, description_.entries.size());
    description_.entries.push_back(std::move(group));
}

void DescriptionLoader::readElement(const Statement& statement, const Scope& scope) {
    Entry entry;
    entry.keyword = statement.keyword();
    entry.kind = kindOfKeyword(entry.keyword);
    entry.origin = scope.origin;
    entry.group = scope.group;
    nameEntry(entry, statement, scope);
    if (entry.kind == EntryKind::group) {
        readGroup(openEntry(std::move(entry), statement, scope), statement, scope);
    } else {
        ElementReader(symbols_, scope.file).read(entry, statement);
        openEntry(std::move(entry), statement, scope);
    }
}

void DescriptionLoader::nameEntry(Entry& entry, const Statement& statement, const Scope& scope) const {
    const auto fail = [&](Position at, const std::string& message) {
        throw ResourceError(scope.file, at, message);
    };
    if (entry.keyword.empty())
        fail(statement.position, "expected an element, such as BOOL, with its name and a block in braces");
    if (statement.words.size() > 2)
        fail(statement.position, entry.keyword + " takes one name; put a ';' or a block in braces behind it");
    if (statement.words.size() < 2) {
        if (!mayBeAnonymous(entry.kind))
            fail(statement.position,
                 entry.keyword + " needs a name; only groups, separators and static texts go without");
        return;
    }
    const Token& name = statement.words[1];
    const bool isNumber = name.kind == Token::Kind::number;
    const std::optional<int32_t> id = isNumber ? parseInteger(name.text) : symbols_.find(name.text);
    if (!id)
        fail(name.position, describe(name) + " has no number; add it to " + scope.origin + ".h");
    if (*id <= 0)
        fail(name.position, "the number of " + describe(name) + " is " + std::to_string(*id) +
                                "; entries have numbers above 0");
    entry.id = *id;
    if (!isNumber)
        entry.symbol = name.text;
}

/// Adds an entry and gives its index. A group that is there already, mostly the host's, is opened again
/// instead.
size_t DescriptionLoader::openEntry(Entry entry, const Statement& statement, const Scope& scope) {
    const size_t index = description_.entries.size();
    if (entry.id != 0) {
        const auto [known, isNew] = indexOfId_.emplace(entry.id, index);
        if (!isNew) {
            const Entry& other = description_.entries[known->second];
            if (entry.kind == EntryKind::group && other.kind == EntryKind::group)
                return known->second;
            throw ResourceError(scope.file, statement.position,
                                "the number " + std::to_string(entry.id) + " of '" + entry.symbol +
                                    "' belongs to '" + other.symbol + "' already; give it a free one");
        }
    }
    description_.entries.push_back(std::move(entry));
    return index;
}

void DescriptionLoader::readGroup(size_t index, const Statement& statement, const Scope& scope) {
    const Scope inner{scope.file, scope.origin, index};
    for (const Statement& part : statement.block) {
        const bool isElement = part.hasBlock || kindOfKeyword(part.keyword()) != EntryKind::other;
        if (isElement)
            readElement(part, inner);
        else
            readGroupProperty(index, part, scope);
    }
}

void DescriptionLoader::readGroupProperty(size_t index, const Statement& property, const Scope& scope) {
    Entry& group = description_.entries[index];
    const ElementReader reader(symbols_, scope.file);
    if (property.keyword() == "DEFAULT")
        group.open = reader.wholeNumber(property) != 0;
    else if (property.keyword() == "COLUMNS")
        group.columns = reader.wholeNumber(property);
    else if (property.keyword() == "HIDDEN")
        group.hidden = true;
    else
        ElementReader::keep(group, property);
}

void DescriptionLoader::setHidden(const Statement& statement, const Scope& scope, bool hidden) {
    const std::optional<int32_t> id =
        statement.words.size() == 2 ? symbols_.find(statement.words[1].text) : std::nullopt;
    const auto found = id ? indexOfId_.find(*id) : indexOfId_.end();
    if (found == indexOfId_.end())
        throw ResourceError(scope.file, statement.position,
                            std::string(statement.keyword()) +
                                " takes the name of an entry that stands above it");
    description_.entries[found->second].hidden = hidden;
}

void DescriptionLoader::assignLabels() {
    const auto labelOf = [this](const std::string& symbol) {
        const auto found = labels_.find(symbol);
        return found == labels_.end() ? std::string() : found->second;
    };
    description_.label = labelOf(description_.name);
    for (Entry& entry : description_.entries) {
        entry.label = labelOf(entry.symbol);
        for (CycleItem& item : entry.cycle)
            item.label = labelOf(item.symbol);
    }
}

} // namespace headless::resources
