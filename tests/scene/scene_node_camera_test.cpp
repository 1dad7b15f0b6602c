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
    EXPECT_EQ(xmlLine(*newCamera()),
              "<camera><uid>2</uid><name></name><aperture_radius>0.001</aperture_radius><focus_distance>20"
              "</focus_distance><sensor_width>0.036</sensor_width><lens_sensor_dist>0.036"
              "</lens_sensor_dist><exposure_duration>0.333</exposure_duration><lens_shift_up_distance>0"
              "</lens_shift_up_distance><lens_shift_right_distance>0</lens_shift_right_distance>"
              "<autofocus/><aperture_shape><circular/></aperture_shape><up>0 0 1</up><forwards>0 1 0"
              "</forwards><camera_type>thin-lens-perspective</camera_type></camera>");
}

TEST(CameraTest, WritesAndClonesEveryField) {
    const Ref<SceneNodeCamera> camera = changedCamera();
    const std::string xml =
        "<camera><uid>2</uid><name>Eye</name><aperture_radius>0.25</aperture_radius><focus_distance>3"
        "</focus_distance><sensor_width>0.5</sensor_width><lens_sensor_dist>0.125</lens_sensor_dist>"
        "<exposure_duration>2</exposure_duration><lens_shift_up_distance>-0.01"
        "</lens_shift_up_distance><lens_shift_right_distance>0.02</lens_shift_right_distance>"
        "<obstacle_map><path>dust.png</path></obstacle_map><aperture_shape><image><path>star.png"
        "</path></image></aperture_shape><keyframe><time>0</time><pos>1 2 3</pos>"
        "<rotation_quaternion><axis>0 1 0</axis><angle>0.5</angle></rotation_quaternion></keyframe>"
        "<keyframe><time>1</time><pos>4 5 6</pos><rotation_quaternion><axis>0 1 0</axis><angle>0.5"
        "</angle></rotation_quaternion></keyframe><up>0 1 0</up><forwards>1 0 0</forwards>"
        "<camera_type>orthographic</camera_type></camera>";
    EXPECT_EQ(xmlLine(*camera), xml);
    const Ref<SceneNode> copy = camera->clone();
    EXPECT_EQ(xmlLine(*copy), xml);
    EXPECT_EQ(static_cast<SceneNodeCamera&>(*copy).aperture_shape, camera->aperture_shape);
}

TEST(CameraTest, CameraTypesHaveTheirWords) {
    const Ref<SceneNodeCamera> camera = newCamera();
    const std::pair<u32, const char*> types[] = {{SceneNodeCamera::SPHERICAL, "spherical"}, {3, ""}};
    for (const auto& [type, word] : types) {
        camera->camera_type = type;
        EXPECT_NE(xmlLine(*camera).find(std::string("<camera_type>") + word + "</camera_type>"),
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
