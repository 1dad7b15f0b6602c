// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/model/node_types.h"

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

} // namespace

} // namespace headless
