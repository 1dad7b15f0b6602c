// SPDX-License-Identifier: MIT
// What is told of wrong elements, and where they stand.
#include "reading/camera_parser.h"
#include "reading/embedded_mesh.h"
#include "reading/emission_parser.h"
#include "reading/material_parser.h"
#include "reading/medium_parser.h"
#include "reading/parameter_parser.h"
#include "reading/parsed_element.h"
#include "reading/parser_state.h"
#include "reading/scene_fixture.h"
#include "reading/settings_parser.h"
#include "reading/shader_parser.h"
#include "reading/spectrum_parser.h"
#include "reading/texture_parser.h"
#include "reading/tonemapping_parser.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <sstream>
#include <string>

namespace Quenza {

namespace {

using Read = std::function<void(ParserState&, const TiXmlElement&)>;

/// How the inside of an element is completed and read.
struct Kind {
    std::string before, after;
    Read read; ///< None for elements that are read with a whole scene.
};

/// A parameter of a material with four textures.
template <class Parse>
Kind parameter(const Parse& parse) {
    return {"<holder>\n", "</holder>",
            [parse](const ParserState& state, const TiXmlElement& e) { parse(state, e, 4); }};
}

/// A mesh that stands in the scene.
Kind mesh(void (*parse)(const TiXmlElement&, Mesh&, double), const std::string& before,
          const std::string& after) {
    return {before, after, [parse](const ParserState&, const TiXmlElement& e) {
                Mesh mesh;
                parse(e, mesh, 1);
            }};
}

const std::string VERTICES =
    "<vertex pos='0 0 0'/><vertex pos='1 0 0'/>\n<vertex pos='1 1 0'/><vertex pos='0 1 0'/>\n";

const std::string MESHES = std::string(MATERIALS) + TRIANGLE;

const std::map<std::string, Kind> KINDS = {
    {"camera", {"<camera>\n", "\n</camera>", parseCamera}},
    {"aperture", {"<camera>\n<aperture_shape>\n", "</aperture_shape>\n</camera>", parseCamera}},
    {"emission", {"<e>\n", "</e>", parseEmissionScale}},
    {"material", {"<material>\n", "</material>", parseMaterial}},
    {"medium", {"<medium>\n", "</medium>", parseMedium}},
    {"settings", {"<renderer_settings>\n", "\n</renderer_settings>", parseRenderSettings}},
    {"tonemapping", {"<tonemapping>\n", "\n</tonemapping>", parseToneMapping}},
    {"spectrum",
     {"<spectrum>\n", "</spectrum>", [](ParserState&, const TiXmlElement& e) { parseSpectrum(e); }}},
    {"texture", {"<holder>\n", "</holder>", parseTexture}},
    {"shader",
     {"<holder>\n", "</holder>",
      [](ParserState& state, const TiXmlElement& e) { parseShaderInfo(state, e); }}},
    {"spectral", parameter(parseWavelengthDependentParam)},
    {"scalar", parameter(parseWavelengthIndependentParam)},
    {"height", parameter(parseDisplacementParam)},
    {"vector", parameter(parseVec3Param)},
    {"volume", {"<holder>\n", "</holder>", parseVolumeParam}},
    {"embedded", mesh(readEmbeddedMesh, "<embedded>\n", "</embedded>")},
    {"triangle_set",
     mesh(readEmbeddedMesh, "<embedded>\n" + VERTICES + "<triangle_set>", "</triangle_set></embedded>")},
    {"embedded_2", mesh(readEmbedded2Mesh, "<embedded_2>\n", "</embedded_2>")},
    {"faces", mesh(readEmbedded2Mesh, "<embedded_2>\n" + VERTICES, "</embedded_2>")},
    {"scene", {"", "\n", {}}},
    {"light", {std::string(TRIANGLE) + "<rectanglelight><pos>0 0 0</pos>", "</rectanglelight>", {}}},
    {"meshlight",
     {std::string(TRIANGLE) +
          "<meshlight><pos>0 0 0</pos><mesh_name>tri</mesh_name><spectrum><uniform><value>3"
          "</value></uniform></spectrum>",
      "</meshlight>",
      {}}},
    {"mesh", {TRIANGLE, "", {}}},
    {"materials", {MESHES, "", {}}},
    {"model2", {MESHES + "<model2><geometry_uid>13</geometry_uid>", "</model2>", {}}},
};

std::string withLineBreaks(std::string text) {
    for (const auto& [escape, character] : {std::pair("\\n", "\n"), std::pair("\\t", "\t")})
        for (size_t at; (at = text.find(escape)) != std::string::npos;)
            text.replace(at, 2, character);
    return text;
}

using RefusedElements = SceneFiles;

/// Two lines each: the kind and what stands inside, and what is told. With QUENZA_WRITE_GOLDEN in the
/// environment the file is written anew.
TEST_F(RefusedElements, TellTheirFaultAndItsPlace) {
    const std::string golden = QUENZA_SOURCE_DIR "/tests/reading/golden/refused_elements.txt";
    const std::string expected = fileBytes(golden);
    std::istringstream lines(expected);
    std::string told;
    for (std::string line, message; std::getline(lines, line) && std::getline(lines, message);) {
        const size_t blank = std::min(line.find(' '), line.size());
        const Kind& kind = KINDS.at(line.substr(0, blank));
        const std::string inside = line.substr(std::min(blank + 1, line.size()));
        const std::string text = kind.before + withLineBreaks(inside) + kind.after;
        ParserState state;
        told += line + "\n    " +
                (kind.read ? Quenza::refusal(text, [&](const TiXmlElement& e) { kind.read(state, e); })
                           : refusal(text)) +
                "\n";
    }
    if (std::getenv("QUENZA_WRITE_GOLDEN")) {
        writeBytes(golden, told);
    }
    EXPECT_NE(told, "");
    EXPECT_EQ(told, expected);
}

} // namespace

} // namespace Quenza
