// SPDX-License-Identifier: MIT
#include "export/tonemapping_export.h"

#include "export/exporter_fixture.h"
#include "shared/parameter_ids.h"

namespace {

class TonemappingExportTest : public ExporterTest {
protected:
    Quenza::SceneNodeTonemapping& exportNode() {
        node_ = new Quenza::SceneNodeTonemapping;
        EXPECT_TRUE(exportTonemapping(node_, data));
        return *node_;
    }

    BaseContainer data;

private:
    Quenza::Ref<Quenza::SceneNodeTonemapping> node_;
};

std::string responsePath(const char* name) {
    return std::string("data/camera_response_functions/") + name;
}

} // namespace

TEST_F(TonemappingExportTest, UnknownMethodsAreReinhardWithItsOwnDefaults) {
    for (const int32_t method : {0, int32_t(CAM_TONEMAP_REINHARD), 1949}) {
        if (method != 0) {
            data.SetLong(CAM_TONEMAP_METHOD, method);
        }
        const Quenza::SceneNodeTonemapping& node = exportNode();
        EXPECT_EQ(node.tonemap_type, Quenza::SceneNodeTonemapping::REINHARD);
        EXPECT_EQ(node.pre_scale, 3);
        EXPECT_EQ(node.post_scale, 1);
        EXPECT_EQ(node.burn, 10);
    }
    data.SetReal(CAM_TONEMAP_SCALE, 0.5f);
    data.SetReal(CAM_TONEMAP_POST_SCALE, 0.25f);
    data.SetReal(CAM_TONEMAP_BURN, 7.0f);
    const Quenza::SceneNodeTonemapping& node = exportNode();
    EXPECT_EQ(node.pre_scale, 0.5);
    EXPECT_EQ(node.post_scale, 0.25);
    EXPECT_EQ(node.burn, 7);
    EXPECT_EQ(node.scale, 1) << "of the linear method";
}

TEST_F(TonemappingExportTest, LinearTakesItsScale) {
    data.SetLong(CAM_TONEMAP_METHOD, CAM_TONEMAP_LINEAR);
    EXPECT_EQ(exportNode().scale, 0) << "without the entry";
    data.SetReal(CAM_TONEMAP_SCALE, 0.1f);
    const Quenza::SceneNodeTonemapping& node = exportNode();
    EXPECT_EQ(node.tonemap_type, Quenza::SceneNodeTonemapping::LINEAR);
    EXPECT_EQ(node.scale, double(0.1f));
    EXPECT_EQ(node.pre_scale, 4) << "of the Reinhard method";
}

TEST_F(TonemappingExportTest, CameraTakesFilmAndResponse) {
    data.SetLong(CAM_TONEMAP_METHOD, CAM_TONEMAP_CAMERA);
    EXPECT_EQ(exportNode().film_iso, 200);
    data.SetReal(CAM_TONEMAP_FILM_ISO, 400.0f);
    data.SetReal(CAM_TONEMAP_EV_ADJUST, -1.5f);
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
        const Quenza::SceneNodeTonemapping& node = exportNode();
        EXPECT_EQ(node.tonemap_type, Quenza::SceneNodeTonemapping::CAMERA);
        EXPECT_EQ(node.response_function_path.toStdString(), responsePath(name));
        EXPECT_EQ(node.film_iso, 400);
        EXPECT_EQ(node.ev_adjust, -1.5);
    }
    EXPECT_TRUE(consoleLines().empty());
}

TEST_F(TonemappingExportTest, UnknownResponseKeepsTheDefault) {
    data.SetLong(CAM_TONEMAP_METHOD, CAM_TONEMAP_CAMERA);
    for (const int32_t index : {-1, 58, INT32_MAX, INT32_MIN}) {
        data.SetLong(CAM_TONEMAP_RESPONSE, index);
        EXPECT_EQ(exportNode().response_function_path.toStdString(), responsePath("dscs315.txt"));
    }
    EXPECT_EQ(consoleLines().size(), 4u);
    EXPECT_EQ(consoleLines().at(0),
              "The Quenza camera tag names response function -1, which there isn't: the "
              "default one is used.");
}
