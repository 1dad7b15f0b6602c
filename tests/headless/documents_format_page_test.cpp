// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/model/node_types.h"

#include <charconv>

// The page that tells the format: its examples load, and its table is that of the types.

namespace headless {

namespace {

class DocumentFormatPageTest : public DocumentsTest {
protected:
    const std::string page_ =
        readText(std::filesystem::path(QUENZA_SOURCE_DIR) / "docs" / "document-format.md");
};

TEST_F(DocumentFormatPageTest, ItsExamplesAreDocuments) {
    loadPlugin();
    size_t count = 0;
    const std::string fence = "```json\n";
    for (size_t at = page_.find(fence); at != std::string::npos; at = page_.find(fence, at)) {
        at += fence.size();
        const std::string text = page_.substr(at, page_.find("```", at) - at);
        EXPECT_EQ(errorOf([&] { loadDocument(write("example.json", text)); }), "no error") << text;
        ++count;
    }
    EXPECT_EQ(count, 2u);
}

std::string number(float value) {
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

std::string defaultOf(const ParameterPreset& preset) {
    switch (preset.kind) {
    case ParameterKind::boolean:
        return preset.preset[0] != 0.0f ? "true" : "false";
    case ParameterKind::integer:
    case ParameterKind::real:
        return number(preset.preset[0]);
    case ParameterKind::vector:
        return number(preset.preset[0]) + ", " + number(preset.preset[1]) + ", " + number(preset.preset[2]);
    default:
        return "-";
    }
}

const char* kindOf(const ParameterPreset& preset) {
    static constexpr const char* NAMES[] = {"boolean",  "integer", "real", "vector",    "string",
                                            "filename", "link",    "time", "inExclude", "other"};
    return NAMES[static_cast<size_t>(preset.kind)];
}

TEST_F(DocumentFormatPageTest, ItsTableHasAllBuiltInTypesAndParameters) {
    size_t rows = 0;
    for (const NodeTypeInfo* const type : NodeTypes::instance().all()) {
        const std::string title = type->name + " (" + std::to_string(type->id) + ")";
        if (type->presets.empty()) {
            EXPECT_NE(page_.find("`" + type->name + "` (" + std::to_string(type->id) + ")"),
                      std::string::npos)
                << title;
        }
        for (const ParameterPreset& preset : type->presets) {
            const std::string row = "\n| " + title + " | `" + preset.name + "` | " +
                                    std::to_string(preset.id) + " | " + kindOf(preset) + " | " +
                                    defaultOf(preset) + " | ";
            EXPECT_NE(page_.find(row), std::string::npos) << row;
            ++rows;
        }
    }
    size_t listed = 0;
    for (size_t at = 0; (at = page_.find(") | `", at + 1)) != std::string::npos;) {
        ++listed;
    }
    EXPECT_EQ(listed, rows) << "the page lists parameters that there aren't";
}

} // namespace

} // namespace headless
