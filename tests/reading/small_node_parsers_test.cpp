// SPDX-License-Identifier: MIT
#include "reading/small_node_parsers.h"

#include "reading/parsed_element.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

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
