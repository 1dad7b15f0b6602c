// SPDX-License-Identifier: MIT
#include "reading/tonemapping_parser.h"

#include "reading/parsed_element.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

std::string tonemapping(const std::string& children) {
    return "<tonemapping>\n" + children + "\n</tonemapping>";
}

Ref<SceneNodeTonemapping> read(const std::string& text) {
    return parseToneMapping(ParserState(), ParsedElement(text));
}

TEST(ToneMappingParser, readsWhatIsWritten) {
    SceneNodeTonemapping node;
    node.uid = SceneNodeUID(3);
    node.scale = 0.5;
    node.pre_scale = 2;
    node.post_scale = 3;
    node.burn = 0.25;
    node.response_function_path = "data/camera_response_functions/a & b.txt";
    node.film_iso = 400;
    node.ev_adjust = -1.5;
    for (const u32 type :
         {SceneNodeTonemapping::LINEAR, SceneNodeTonemapping::REINHARD, SceneNodeTonemapping::CAMERA}) {
        node.tonemap_type = type;
        const std::string text = xmlText(node);
        EXPECT_EQ(xmlText(*read(text)), text);
    }
}

TEST(ToneMappingParser, takesTheDefaultsOfANewNodeForAbsentChildren) {
    const struct {
        const char* method;
        u32 type;
    } rows[] = {
        {"<linear/>", SceneNodeTonemapping::LINEAR},
        {"<reinhard/>", SceneNodeTonemapping::REINHARD},
        {"<camera/>", SceneNodeTonemapping::CAMERA},
    };
    for (const auto& row : rows) {
        SceneNodeTonemapping expected;
        expected.name = "Tone Mapping";
        expected.tonemap_type = row.type;
        EXPECT_EQ(xmlText(*read(tonemapping(row.method))), xmlText(expected)) << row.method;
    }
}

TEST(ToneMappingParser, refusesWhatIsWrong) {
    const BadElement rows[] = {
        {"<uid>4</uid>",
         "Failed to find tonemapping child.  (In element 'tonemapping', around line 1, column 1)"},
        {"<linear/><reinhard/>", "Found unexpected element 'reinhard',  already parsed mutually exclusive "
                                 "element 'linear'  (In element "
                                 "'reinhard', around line 2, column 10)"},
        {"<reinhard>\n<burn>0</burn></reinhard>",
         "Burn must be greater than 0.0   (In element 'burn', around line 3, column 1)"},
    };
    const auto reader = [](const TiXmlElement& element) { parseToneMapping(ParserState(), element); };
    for (const BadElement& row : rows)
        EXPECT_EQ(refusal(tonemapping(row.text), reader), row.message) << row.text;
}

} // namespace
} // namespace Quenza
