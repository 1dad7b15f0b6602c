// SPDX-License-Identifier: MIT
#include "reading/medium_parser.h"

#include "reading/parsed_element.h"
#include "reading/parser_state.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

TEST(MediumParser, RefusesWhatIsWrong) {
    const BadElement rows[] = {
        {"<name>m</name>", "Medium type not found.   (In element 'medium', around line 1, column 1)"},
        {"<fog/>", "Medium type not found.   (In element 'medium', around line 1, column 1)"},
        {"<basic/><dermis/>",
         "Found unexpected element 'dermis',  already parsed mutually exclusive element 'basic'  (In element "
         "'dermis', around line 2, column 9)"},
        {"<basic><absorption_coefficient/></basic>",
         "Internal Error.  (In element 'absorption_coefficient', around line 2, column 8)"},
        {"<basic><subsurface_scattering><phase_function/></subsurface_scattering></basic>",
         "Failed to find child for element 'phase_function' - Child should be one of 'uniform', "
         "'henyey_greenstein'  (In element 'phase_function', around line 2, column 31)"},
        {"<basic><subsurface_scattering><phase_function><henyey_greenstein/></phase_function>"
         "</subsurface_scattering></basic>",
         "Failed to find expected element 'g_spectrum'  (In element 'henyey_greenstein', around line 2, "
         "column "
         "47)"},
    };
    for (const BadElement& row : rows)
        EXPECT_EQ(refusal("<medium>\n" + std::string(row.text) + "</medium>",
                          [](const TiXmlElement& element) {
                              ParserState state;
                              parseMedium(state, element);
                          }),
                  row.message)
            << row.text;
}

} // namespace
} // namespace Quenza
