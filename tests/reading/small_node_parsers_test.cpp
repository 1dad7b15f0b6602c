// SPDX-License-Identifier: MIT
#include "reading/small_node_parsers.h"

#include "reading/parsed_element.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

Ref<SceneNodeMetaData> readMetaData(const std::string& text) {
    return parseMetaData(ParserState(), ParsedElement(text));
}

Ref<SceneNodeSectionPlane> readPlane(const std::string& text) {
    return parseSectionPlane(ParserState(), ParsedElement(text));
}

TEST(SmallNodeParsers, readMetadataAsItIsWritten) {
    SceneNodeMetaData node;
    node.uid = SceneNodeUID(1);
    node.exporter = "An exporter 1.0";
    node.author = " blanks around ";
    node.description = "<two>\nlines & \"quotes\"";
    node.created_date = "9:5:7, 24.11.2026";
    node.platform = "\xC3\xA4";
    node.exporter_specific = "Generated\nby hand";
    const std::string text = xmlText(node);
    EXPECT_EQ(xmlText(*readMetaData(text)), text);

    SceneNodeMetaData empty;
    EXPECT_EQ(xmlText(*readMetaData("<metadata/>")), xmlText(empty));
}

TEST(SmallNodeParsers, readSectionPlanesAsTheyAreWritten) {
    SceneNodeSectionPlane node;
    EXPECT_EQ(xmlText(*readPlane("<section_plane/>")), xmlText(node));
    node.uid = SceneNodeUID(8);
    node.point = {1, 2, 3};
    node.normal = {0, 1, 0};
    node.enabled = false;
    node.cull_geometry = false;
    EXPECT_EQ(xmlText(*readPlane(xmlText(node))), xmlText(node));
    node.object_list.push_back(SceneNodeUID(10));
    node.object_list.push_back(SceneNodeUID(4294967294));
    EXPECT_EQ(xmlText(*readPlane(xmlText(node))), xmlText(node));
    node.object_list_type = SceneNodeSectionPlane::INCLUDE;
    EXPECT_EQ(xmlText(*readPlane(xmlText(node))), xmlText(node));
    node.object_list_type = SceneNodeSectionPlane::EXCLUDE;
    node.object_list.clear();
    EXPECT_EQ(readPlane("<section_plane><object_list_type>exclude</object_list_type></section_plane>")
                  ->object_list_type,
              SceneNodeSectionPlane::EXCLUDE);
}

TEST(SmallNodeParsers, collectLayerNames) {
    ParserState state;
    parseLayerName(state, ParsedElement("<layer_name>Key <!-- the main --> light</layer_name>"));
    parseLayerName(state, ParsedElement("<layer_name/>"));
    ASSERT_EQ(state.layer_names.size(), 2u);
    EXPECT_EQ(state.layer_names[0], "Key light");
    EXPECT_EQ(state.layer_names[1], "");
}

TEST(SmallNodeParsers, refuseWhatIsWrong) {
    EXPECT_EQ(refusal("<metadata><exporter>a</exporter><exporter>b</exporter></metadata>",
                      [](const TiXmlElement& element) { parseMetaData(ParserState(), element); }),
              "Found unexpected element 'exporter' (Already parsed element called 'exporter') in element "
              "'metadata'. (Around line 1, column 33)");
    EXPECT_EQ(refusal("<layer_name><name>Sun</name></layer_name>",
                      [](const TiXmlElement& element) {
                          ParserState state;
                          parseLayerName(state, element);
                      }),
              "Found unexpected element 'name'  (In element 'name', around line 1, column 13)");
    const BadElement rows[] = {
        {"<section_plane><object_list_type>only</object_list_type></section_plane>",
         "Unknown object list type 'only', should be either 'include' or 'exclude'.  (In element "
         "'object_list_type', around line 1, column 16)"},
    };
    const auto reader = [](const TiXmlElement& element) { parseSectionPlane(ParserState(), element); };
    for (const BadElement& row : rows)
        EXPECT_EQ(refusal(row.text, reader), row.message) << row.text;
}

} // namespace
} // namespace Quenza
