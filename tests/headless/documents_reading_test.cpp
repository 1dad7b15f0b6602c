// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"

namespace headless {

namespace {

using DocumentReadingTest = DocumentsTest;

TEST_F(DocumentReadingTest, HierarchiesHaveAnyDepth) {
    constexpr int DEPTH = 20000;
    std::string body = "\"objects\": [";
    for (int i = 0; i < DEPTH; ++i) {
        body += "{\"type\": \"Null\", \"name\": \"" + std::to_string(i) + "\", \"children\": [";
    }
    for (int i = 0; i < DEPTH; ++i) {
        body += "]}";
    }
    const auto copy = saveAndLoad(*load(body + "]"));
    int depth = 0;
    for (const Object* object = copy->objects().first(); object; object = object->children().first()) {
        EXPECT_EQ(object->name, std::to_string(depth++));
    }
    EXPECT_EQ(depth, DEPTH);
    // The place of a fault deep down stays readable.
    const std::string fault = errorOf([&] {
        body.replace(body.rfind("\"Null\""), 6, "\"Nul\"");
        load(body + "]");
    });
    EXPECT_TRUE(
        fault.ends_with("children[0].type: unknown object type \"Nul\"; is the plug-in that defines it "
                        "loaded?"));
    EXPECT_LT(fault.size(), 400u);
}

} // namespace

} // namespace headless
