// SPDX-License-Identifier: MIT
#include "export/tonemapping_export.h"

#include "export/exporter_fixture.h"
#include "shared/parameter_ids.h"

namespace {

class TonemappingExportTest : public ExporterTest {
protected:
    /// What the scene tells of the method.
    std::string method() {
        const Quenza::Ref<Quenza::SceneNodeTonemapping> node = new Quenza::SceneNodeTonemapping;
        EXPECT_TRUE(exportTonemapping(node, data));
        const std::string text = xml(*node), name = "<name></name>";
        const size_t start = text.find(name) + name.size();
        return text.substr(start, text.find("</tonemapping>") - start);
    }
    static std::string camera(const char* response, const char* iso) {
        return std::string("<camera><response_function_path>data/camera_response_functions/") + response +
               "</response_function_path><film_iso>" + iso + "</film_iso><ev_adjust>0</ev_adjust></camera>";
    }

    BaseContainer data;
};

} // namespace

TEST_F(TonemappingExportTest, CameraTakesFilmAndResponse) {
    data.SetLong(CAM_TONEMAP_METHOD, CAM_TONEMAP_CAMERA);
    EXPECT_EQ(method(), camera("Advantix-100CD.txt", "200"));
    data.SetReal(CAM_TONEMAP_FILM_ISO, 400.0f);
    const std::pair<int32_t, const char*> cases[] = {
        {0, "Advantix-100CD.txt"},
        {3, "agfachrome-ctpecisa-200CD.txt"},
        {CAM_RESPONSE_AGFACOLOR_FUTURA_II_400, "agfacolor-futuraII-400C.txt"},
        {CAM_RESPONSE_DSC_S315_1, "dscs315.txt"},
        {CAM_RESPONSE_KODACHROME_25, "Kodachrome-25.txt"},
        {57, "Portra-800CD.txt"},
    };
    for (const auto& [index, name] : cases) {
        data.SetLong(CAM_TONEMAP_RESPONSE, index);
        EXPECT_EQ(method(), camera(name, "400"));
    }
    EXPECT_TRUE(consoleLines().empty());
    for (const int32_t unknown : {-1, 58, INT32_MAX, INT32_MIN}) {
        data.SetLong(CAM_TONEMAP_RESPONSE, unknown);
        EXPECT_EQ(method(), camera("dscs315.txt", "400"));
    }
    EXPECT_EQ(consoleLines().size(), 4u);
    EXPECT_EQ(consoleLines().at(0),
              "The Quenza camera tag names response function -1, which there isn't: the "
              "default one is used.");
}
