// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"

#include <sstream>

namespace headless {

namespace {

class DocumentErrorsTest : public DocumentsTest {
protected:
    std::string errorFor(const std::string& text) const {
        return errorOf([&] { loadDocument(write("a.json", text)); });
    }
    std::string errorInBody(const std::string& body) const { return errorFor(withHead(body)); }
};

TEST_F(DocumentErrorsTest, TellsWhyAFileIsNoDocument) {
    EXPECT_EQ(errorOf([&] { loadDocument(path("missing.json")); }),
              "missing.json: the file can't be opened for reading");
    EXPECT_EQ(errorOf([&] { loadDocument(path("")); }), ": the file can't be opened for reading");
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", "a.json: line 1, column 1: not valid JSON: syntax error while parsing value - unexpected end of "
             "input; expected '[', '{', or a literal"},
        {"{\"format\": \"quenza-headless-document\",\n \"version\"",
         "a.json: line 2, column 11: not valid JSON: syntax error while parsing object separator - "
         "unexpected "
         "end of input; expected ':'"},
        {"{\n  \"a\": [1, 2,]\n}",
         "a.json: line 2, column 14: not valid JSON: syntax error while parsing value - "
         "unexpected ']'; expected '[', '{', or a literal"},
        {"[]", "a.json: an object {...} is expected"},
        {"{}", "a.json: key \"format\" is missing"},
        {"{\"format\": \"x\"}",
         "a.json: format: this is no document: \"quenza-headless-document\" is expected"},
        {"{\"format\": \"quenza-headless-document\"}", "a.json: key \"version\" is missing"},
        {"{\"format\": \"quenza-headless-document\", \"version\": 2}",
         "a.json: version: version 2 is unknown; this program reads version 1"},
        {"{\"format\": \"quenza-headless-document\", \"version\": 1, \"verison\": 1}",
         "a.json: unknown key \"verison\"; known here: format, version, unit, fps, frame, frames, layers, "
         "materials, objects, camera, renderData"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(errorFor(test.text), test.error);
    }
    EXPECT_NE(errorFor("{\"format\": \"\xFC\"}").find("a.json: line 1, column 13: not valid JSON"),
              std::string::npos);
    EXPECT_NE(errorFor("{\"a\": 1e999}").find("a.json: not valid JSON: "), std::string::npos);
}

/// Two lines each: what stands in a document, and the fault with its place.
TEST_F(DocumentErrorsTest, NamesThePlaceOfAFault) {
    const std::string expected = readText(QUENZA_SOURCE_DIR "/tests/headless/golden/document_errors.txt");
    std::istringstream lines(expected);
    std::string told;
    for (std::string body, message; std::getline(lines, body) && std::getline(lines, message);) {
        told += body + "\n    " + errorInBody(body) + "\n";
    }
    EXPECT_NE(told, "");
    EXPECT_EQ(told, expected);
}

TEST_F(DocumentErrorsTest, EndsWhatIsNestedTooDeep) {
    const auto nested = [](int depth, const std::string& open, const std::string& close) {
        std::string text;
        for (int i = 0; i < depth; ++i) {
            text += open;
        }
        for (int i = 0; i < depth; ++i) {
            text += close;
        }
        return text;
    };
    int number = 0;
    std::string layers = "\"layers\": [";
    for (; number < 150; ++number) {
        layers += "{\"name\": \"" + std::to_string(number) + "\", \"children\": [";
    }
    layers += nested(150, "", "]}") + "]";
    EXPECT_NE(errorInBody(layers).find("layers are nested too deep"), std::string::npos);
    EXPECT_NE(errorInBody("\"materials\": [{\"shaders\": [" +
                          nested(150, "{\"type\": \"Bitmap\", \"shaders\": [", "]}") + "]}]")
                  .find("shaders are nested too deep"),
              std::string::npos);
    // Brackets alone, a million deep.
    EXPECT_NE(errorInBody("\"objects\": " + nested(1000000, "[", "]")).find("an object {...} is expected"),
              std::string::npos);
}

} // namespace

} // namespace headless
