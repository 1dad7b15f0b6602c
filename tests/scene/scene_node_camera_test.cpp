// SPDX-License-Identifier: MIT
#include "scene/scene_node_camera.h"

#include "scene/scene_visitor.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

Ref<SceneNodeCamera> newCamera() {
    const Ref<SceneNodeCamera> camera = new SceneNodeCamera;
    camera->uid = SceneNodeUID(2);
    return camera;
}

std::string dependencies(SceneNode& node) {
    SceneVisitor visitor;
    visitor.mode = SceneVisitor::COLLECT_DEPENDENCIES;
    node.doVisit(visitor);
    std::string paths;
    for (const String& path : visitor.dependencies)
        paths += path.toStdString() + " ";
    return paths;
}

/// A camera of which every field differs from its default.
Ref<SceneNodeCamera> changedCamera() {
    const Ref<SceneNodeCamera> camera = newCamera();
    camera->name = "Eye";
    camera->aperture_radius = 0.25;
    camera->focus_distance = 3;
    camera->sensor_width = 0.5;
    camera->lens_sensor_dist = 0.125;
    camera->exposure_duration = 2;
    camera->lens_shift_up_distance = -0.01;
    camera->lens_shift_right_distance = 0.02;
    camera->autofocus = false;
    camera->obstacle_map_path = "dust.png";
    const Ref<ApertureImage> image = new ApertureImage;
    image->path = "star.png";
    camera->aperture_shape = image;
    camera->keyframes = {KeyFrame{{1, 2, 3}, 0, {0, 1, 0}, 0.5}, KeyFrame{{4, 5, 6}, 1, {0, 1, 0}, 0.5}};
    camera->up = {0, 1, 0};
    camera->forwards = {1, 0, 0};
    camera->camera_type = SceneNodeCamera::ORTHOGRAPHIC;
    return camera;
}

TEST(CameraTest, NewCameraHasAutofocusAndACircularAperture) {
    EXPECT_EQ(xmlText(*newCamera()),
              "<camera>\n\t<uid>2</uid>\n\t<name></name>\n"
              "\t<aperture_radius>0.001</aperture_radius>\n\t<focus_distance>20</focus_distance>\n"
              "\t<sensor_width>0.036</sensor_width>\n\t<lens_sensor_dist>0.036</lens_sensor_dist>\n"
              "\t<exposure_duration>0.333</exposure_duration>\n"
              "\t<lens_shift_up_distance>0</lens_shift_up_distance>\n"
              "\t<lens_shift_right_distance>0</lens_shift_right_distance>\n\t<autofocus/>\n"
              "\t<aperture_shape>\n\t\t<circular/>\n\t</aperture_shape>\n"
              "\t<up>0 0 1</up>\n\t<forwards>0 1 0</forwards>\n"
              "\t<camera_type>thin-lens-perspective</camera_type>\n</camera>\n");
}

TEST(CameraTest, WritesAndClonesEveryField) {
    const Ref<SceneNodeCamera> camera = changedCamera();
    const std::string xml =
        "<camera>\n\t<uid>2</uid>\n\t<name>Eye</name>\n"
        "\t<aperture_radius>0.25</aperture_radius>\n\t<focus_distance>3</focus_distance>\n"
        "\t<sensor_width>0.5</sensor_width>\n\t<lens_sensor_dist>0.125</lens_sensor_dist>\n"
        "\t<exposure_duration>2</exposure_duration>\n"
        "\t<lens_shift_up_distance>-0.01</lens_shift_up_distance>\n"
        "\t<lens_shift_right_distance>0.02</lens_shift_right_distance>\n"
        "\t<obstacle_map>\n\t\t<path>dust.png</path>\n\t</obstacle_map>\n"
        "\t<aperture_shape>\n\t\t<image>\n\t\t\t<path>star.png</path>\n\t\t</image>\n\t</aperture_shape>\n"
        "\t<keyframe>\n\t\t<time>0</time>\n\t\t<pos>1 2 3</pos>\n"
        "\t\t<rotation_quaternion>\n\t\t\t<axis>0 1 0</axis>\n\t\t\t<angle>0.5</angle>\n"
        "\t\t</rotation_quaternion>\n\t</keyframe>\n"
        "\t<keyframe>\n\t\t<time>1</time>\n\t\t<pos>4 5 6</pos>\n"
        "\t\t<rotation_quaternion>\n\t\t\t<axis>0 1 0</axis>\n\t\t\t<angle>0.5</angle>\n"
        "\t\t</rotation_quaternion>\n\t</keyframe>\n"
        "\t<up>0 1 0</up>\n\t<forwards>1 0 0</forwards>\n"
        "\t<camera_type>orthographic</camera_type>\n</camera>\n";
    EXPECT_EQ(xmlText(*camera), xml);
    const Ref<SceneNode> copy = camera->clone();
    EXPECT_EQ(xmlText(*copy), xml);
    EXPECT_EQ(static_cast<SceneNodeCamera&>(*copy).aperture_shape, camera->aperture_shape);
}

TEST(CameraTest, GeneratedApertureAndCameraTypesHaveTheirWords) {
    const Ref<ApertureGenerated> generated = new ApertureGenerated;
    generated->num_blades = 5;
    generated->blade_offset = 0.5;
    generated->blade_curvature_radius = 2;
    generated->start_angle = 0.25;
    EXPECT_EQ(xmlText(*generated, 1),
              "\t<aperture_shape>\n\t\t<generated>\n\t\t\t<num_blades>5</num_blades>\n"
              "\t\t\t<blade_offset>0.5</blade_offset>\n"
              "\t\t\t<blade_curvature_radius>2</blade_curvature_radius>\n"
              "\t\t\t<start_angle>0.25</start_angle>\n\t\t</generated>\n\t</aperture_shape>\n");
    const Ref<SceneNodeCamera> camera = newCamera();
    const std::pair<u32, const char*> types[] = {{SceneNodeCamera::SPHERICAL, "spherical"}, {3, ""}};
    for (const auto& [type, word] : types) {
        camera->camera_type = type;
        EXPECT_NE(xmlText(*camera).find(std::string("<camera_type>") + word + "</camera_type>"),
                  std::string::npos);
    }
}

TEST(CameraTest, VisitsFilesPathAndUID) {
    const Ref<SceneNodeCamera> camera = changedCamera();
    EXPECT_EQ(dependencies(*newCamera()), "");
    EXPECT_EQ(dependencies(*camera), "dust.png star.png ");

    SceneVisitor update;
    update.mode = SceneVisitor::UPDATE_DEPENDENCIES;
    update.path_map.insert("dust.png", "a/dust.png");
    EXPECT_EQ(thrownText([&] { camera->doVisit(update); }),
              "While updating dependencies: Missing mapping for old path 'star.png'.");
    update.path_map.insert("a/dust.png", "b/dust.png");
    update.path_map.insert("star.png", "b/star.png");
    camera->doVisit(update);
    EXPECT_EQ(dependencies(*camera), "b/dust.png b/star.png ");

    SceneVisitor box;
    box.mode = SceneVisitor::BOUNDING_BOX;
    camera->doVisit(box);
    EXPECT_EQ(box.aabb_min[0], 1.0f);
    EXPECT_EQ(box.aabb_max[2], 6.0f);
    EXPECT_EQ(thrownText([&] { newCamera()->doVisit(box); }), "Must be at least one frame.");

    SceneVisitor offset;
    offset.mode = SceneVisitor::OFFSET_UIDS;
    offset.uid_offset = 40;
    camera->doVisit(offset);
    EXPECT_EQ(camera->uid.value(), 42u);
}

} // namespace
} // namespace Quenza
