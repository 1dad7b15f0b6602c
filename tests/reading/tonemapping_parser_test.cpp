// SPDX-License-Identifier: MIT
#include "reading/tonemapping_parser.h"

#include "reading/parsed_element.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

std::string tonemapping(const std::string& children) {
    return "<tonemapping>\n" + children + "\n</tonemapping>";
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
