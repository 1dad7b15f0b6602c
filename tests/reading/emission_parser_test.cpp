// SPDX-License-Identifier: MIT
#include "reading/emission_parser.h"

#include "reading/parsed_element.h"
#include "reading/parser_state.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

const ParserState STATE;

TEST(EmissionParser, ReadsWhatIsWritten) {
    EmissionScale scale;
    scale.value = 1.5;
    scale.material_uid = SceneNodeUID(12);
    for (const u32 measure : {0u, 1u, 2u, 3u}) {
        scale.measure = measure;
        const std::string text = xmlText(scale);
        const Ref<EmissionScale> read = parseEmissionScale(STATE, ParsedElement(text));
        EXPECT_EQ(read->measure, measure);
        EXPECT_EQ(xmlText(*read), text);
    }
    IESProfile profile;
    profile.path = "lights & more.ies";
    for (const SceneNodeUID uid : {SceneNodeUID(12), SceneNodeUID::INVALID}) {
        profile.material_uid = uid;
        EXPECT_EQ(xmlText(*parseIESProfile(STATE, ParsedElement(xmlText(profile)))), xmlText(profile));
    }
}

TEST(EmissionParser, RefusesWhatIsWrong) {
    const BadElement scales[] = {
        {"<value>1</value>", "could not find element 'measure'  (In element 'e', around line 1, column 1)"},
        {"<measure>Luminance</measure><value>1</value>",
         "No such measure 'Luminance'  (In element 'e', around line 1, column 1)"},
        {"<measure>lumens</measure><value>1</value>",
         "No such measure 'lumens'  (In element 'e', around line 1, column 1)"},
        {"<measure>luminance</measure><value>1 lm</value>",
         "Parse error while parsing double from '1 lm'  (In element 'value', around line 2, column 29)"},
        {"<measure>luminance</measure><value>1</value><material_uid>1</material_uid><material_name>a"
         "</material_name>",
         "Found unexpected element 'material_name',  already parsed mutually exclusive element "
         "'material_uid'  (In "
         "element 'material_name', around line 2, column 75)"},
    };
    for (const BadElement& row : scales)
        EXPECT_EQ(refusal("<e>\n" + std::string(row.text) + "</e>",
                          [](const TiXmlElement& e) { parseEmissionScale(STATE, e); }),
                  row.message)
            << row.text;
}

} // namespace
} // namespace Quenza
