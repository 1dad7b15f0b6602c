// SPDX-License-Identifier: MIT
#include "reading/medium_parser.h"

#include "reading/parsed_element.h"
#include "reading/parser_state.h"
#include "scene/volume_param.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

Ref<SceneNodeMedium> read(const std::string& text) {
    ParserState state;
    return parseMedium(state, ParsedElement(text));
}

/// A basic medium with all of its fields.
Ref<BasicMedium> makeBasic(const Ref<PhaseFunction>& phase_function) {
    const Ref<BasicMedium> medium = new BasicMedium;
    medium->ior = 1.5;
    medium->cauchy_b_coeff = 4e-15;
    medium->step_size = 0.25;
    medium->absorption_coefficient = new ConstantVolumeParam(new RGBSpectrum({1, 2, 3}, 1));
    medium->subsurface_scattering = new SubsurfaceScattering;
    medium->subsurface_scattering->scattering_coefficient = new ShaderVolumeParam(new ShaderInfo("x"), true);
    medium->subsurface_scattering->phase_function = phase_function;
    return medium;
}

TEST(MediumParser, ReadsWhatIsWritten) {
    const Ref<HenyeyGreensteinPhaseFunction> forward = new HenyeyGreensteinPhaseFunction;
    forward->g_spectrum = new ConstantVolumeParam(new UniformSpectrum(0.5));
    const Ref<BasicMedium> scattering_of_nothing = new BasicMedium;
    scattering_of_nothing->subsurface_scattering = new SubsurfaceScattering;
    const Ref<Dermis> dermis = new Dermis;
    dermis->hemoglobin_fraction = 0.1;
    const Ref<Epidermis> epidermis = new Epidermis;
    epidermis->melanin_fraction = 0.1;
    epidermis->melanin_type_blend = 0.2;
    const Ref<Atmosphere> atmosphere = new Atmosphere;
    atmosphere->center = {1, 2, -3};
    atmosphere->turbidity = 4;
    const Ref<Medium> media[] = {new BasicMedium,
                                 makeBasic(forward),
                                 makeBasic(new UniformPhaseFunction),
                                 scattering_of_nothing,
                                 dermis,
                                 epidermis,
                                 atmosphere};
    for (const Ref<Medium>& medium : media) {
        const Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
        node->setUID(SceneNodeUID(7));
        node->setName("Med");
        medium->precedence = -2;
        const std::string text = xmlText(*node);
        EXPECT_EQ(xmlText(*read(text)), text);
    }
}

TEST(MediumParser, FillsInWhatIsAbsent) {
    const struct {
        const char* type;
        Ref<Medium> medium;
    } rows[] = {
        {"<basic/>", new BasicMedium},
        {"<dermis/>", new Dermis},
        {"<epidermis/>", new Epidermis},
        {"<atmosphere/>", new Atmosphere},
    };
    for (const auto& row : rows)
        EXPECT_EQ(xmlText(*read("<medium>" + std::string(row.type) + "</medium>")),
                  xmlText(*Ref<SceneNodeMedium>(new SceneNodeMedium(row.medium))));
}

TEST(MediumParser, TakesTheOlderFormOfAbsorption) {
    EXPECT_EQ(
        xmlText(*read("<medium><basic><absorption_coefficient_spectrum><uniform><value>3</value></uniform>"
                      "</absorption_coefficient_spectrum></basic></medium>")),
        xmlText(*read("<medium><basic><absorption_coefficient><constant><uniform><value>3</value></uniform>"
                      "</constant></absorption_coefficient></basic></medium>")));
}

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
