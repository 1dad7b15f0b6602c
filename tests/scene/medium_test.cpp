// SPDX-License-Identifier: MIT
#include "scene/scene_node_medium.h"

#include "scene/scene_visitor.h"
#include "scene/spectrum.h"
#include "scene/volume_param.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

Ref<SceneNodeMedium> makeMedium(const Ref<Medium>& medium) {
    Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
    node->setUID(SceneNodeUID(5));
    node->setName("Med");
    medium->precedence = 2;
    return node;
}

TEST(Medium, WritesAllClasses) {
    Ref<Atmosphere> atmosphere = new Atmosphere;
    atmosphere->center = {1, 2, -3};
    struct Case {
        Ref<Medium> medium;
        u32 type;
        const char* body;
    };
    const Case cases[] = {
        {new BasicMedium, 0,
         "\t<basic>\n\t\t<ior>1.3</ior>\n\t\t<cauchy_b_coeff>0</cauchy_b_coeff>\n"
         "\t\t<step_size>0.01</step_size>\n\t</basic>\n"},
        {new Dermis, 1, "\t<dermis>\n\t\t<hemoglobin_fraction>0.05</hemoglobin_fraction>\n\t</dermis>\n"},
        {new Epidermis, 2,
         "\t<epidermis>\n\t\t<melanin_fraction>0.25</melanin_fraction>\n"
         "\t\t<melanin_type_blend>0.5</melanin_type_blend>\n\t</epidermis>\n"},
        {atmosphere, 3,
         "\t<atmosphere>\n\t\t<center>1 2 -3</center>\n\t\t<turbidity>2</turbidity>\n\t</atmosphere>\n"},
    };
    XMLWriteOptions by_name;
    by_name.write_uids = false;
    for (const Case& c : cases) {
        const Ref<SceneNodeMedium> node = makeMedium(c.medium);
        const std::string rest =
            "\t<name>Med</name>\n\t<precedence>2</precedence>\n" + std::string(c.body) + "</medium>\n";
        EXPECT_EQ(c.medium->getType(), c.type);
        EXPECT_EQ(xmlText(*node), "<medium>\n\t<uid>5</uid>\n" + rest);
        EXPECT_EQ(xmlText(*node, 0, by_name), "<medium>\n" + rest);
    }
}

/// A basic medium with files in each of its parameters.
Ref<BasicMedium> makeFullBasic() {
    const Ref<ShaderInfo> info = new ShaderInfo("g");
    info->includes.push_back("inc.qsl");
    info->textures.push_back(Texture());
    info->textures[0].path = "tex.png";
    Ref<HenyeyGreensteinPhaseFunction> phase = new HenyeyGreensteinPhaseFunction;
    phase->g_spectrum = new ShaderVolumeParam(info, false);
    Ref<VoxelVolumeParam> voxel = new VoxelVolumeParam;
    voxel->voxeldata_path = "smoke.vox";
    Ref<BasicMedium> medium = new BasicMedium;
    medium->absorption_coefficient = new ConstantVolumeParam(new UniformSpectrum(4));
    medium->subsurface_scattering = new SubsurfaceScattering;
    medium->subsurface_scattering->scattering_coefficient = voxel;
    medium->subsurface_scattering->phase_function = phase;
    return medium;
}

TEST(SceneNodeMedium, VisitsFilesAndItsUID) {
    Ref<SceneNodeMedium> node = makeMedium(makeFullBasic());
    SceneVisitor visitor;
    visitor.mode = SceneVisitor::COLLECT_DEPENDENCIES;
    node->doVisit(visitor);
    ASSERT_EQ(visitor.dependencies.size(), 3u);
    EXPECT_EQ(visitor.dependencies[0].toStdString(), "smoke.vox");
    EXPECT_EQ(visitor.dependencies[1].toStdString(), "inc.qsl");
    EXPECT_EQ(visitor.dependencies[2].toStdString(), "tex.png");

    visitor.mode = SceneVisitor::UPDATE_DEPENDENCIES;
    for (const String& path : visitor.dependencies)
        visitor.path_map.insert(path, "new/" + path);
    node->doVisit(visitor);
    const std::string text = xmlText(*node);
    for (const char* path : {">new/smoke.vox<", ">new/inc.qsl<", ">new/tex.png<"})
        EXPECT_NE(text.find(path), std::string::npos) << path;

    visitor.mode = SceneVisitor::OFFSET_UIDS;
    visitor.uid_offset = 100;
    node->doVisit(visitor);
    EXPECT_EQ(node->getUID().value(), 105u);
}

TEST(SceneNodeMedium, NameLivesOnTheMediumOnceThereIsOne) {
    Ref<SceneNodeMedium> node = new SceneNodeMedium;
    node->setName("mine");
    EXPECT_EQ(node->getName().toStdString(), "mine");
    EXPECT_EQ(xmlText(*node), "<medium>\n\t<uid>4294967295</uid>\n\t<name>mine</name>\n</medium>\n");
    node->medium = new Dermis;
    EXPECT_EQ(node->getName().toStdString(), "");
    node->setName("its");
    EXPECT_EQ(node->medium->name.toStdString(), "its");
    EXPECT_EQ(node->name.toStdString(), "mine");
}

TEST(SceneNodeMedium, CloneSharesTheMedium) {
    Ref<SceneNodeMedium> node = makeMedium(new Dermis);
    const Ref<SceneNode> copy = node->clone();
    EXPECT_TRUE(dynamic_cast<SceneNodeMedium&>(*copy).medium == node->medium);
}

} // namespace
} // namespace Quenza
