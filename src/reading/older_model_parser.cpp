// SPDX-License-Identifier: MIT
#include "reading/older_model_parser.h"

#include "reading/mesh_parser.h"
#include "reading/model_parser.h"
#include "reading/parser_state.h"
#include "reading/rotation_parser.h"
#include "reading/xml_values.h"
#include "scene/scene_node_material.h"

#include <algorithm>
#include <cmath>
#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

/// How far the turn between two written matrices may be from a true one.
constexpr double TURN_TOLERANCE = 1e-5;

Matrix3d product(const Matrix3d& a, const Matrix3d& b) {
    Matrix3d m{};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            for (int k = 0; k < 3; ++k)
                m.e[3 * row + column] += a.e[3 * row + k] * b.e[3 * k + column];
    return m;
}

Matrix3d transposed(const Matrix3d& m) {
    const double* e = m.e;
    return Matrix3d{{e[0], e[3], e[6], e[1], e[4], e[7], e[2], e[5], e[8]}};
}

Vec3d row(const Matrix3d& m, int index) {
    return {m.e[3 * index], m.e[3 * index + 1], m.e[3 * index + 2]};
}

Vec3d cross(const Vec3d& a, const Vec3d& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const Vec3d& a, const Vec3d& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Cramer's rule; not finite for a matrix without an inverse.
Matrix3d inverse(const Matrix3d& m) {
    const Vec3d a = row(m, 0), b = row(m, 1), c = row(m, 2);
    const Vec3d columns[3] = {cross(b, c), cross(c, a), cross(a, b)};
    const double determinant = dot(a, columns[0]);
    Matrix3d out{};
    for (int i = 0; i < 3; ++i) {
        out.e[i] = columns[i].x / determinant;
        out.e[3 + i] = columns[i].y / determinant;
        out.e[6 + i] = columns[i].z / determinant;
    }
    return out;
}

bool isTurn(const Matrix3d& m) {
    const Matrix3d square = product(m, transposed(m));
    const Matrix3d identity = Matrix3d::identity();
    for (int i = 0; i < 9; ++i)
        if (!(std::abs(square.e[i] - identity.e[i]) < TURN_TOLERANCE))
            return false;
    return dot(row(m, 0), cross(row(m, 1), row(m, 2))) > 0;
}

/// For half a turn the matrix is 2 * a * a^T - 1.
Vec3d axisOfHalfTurn(const Matrix3d& m) {
    int largest = 0;
    for (int i = 1; i < 3; ++i)
        if (m.e[4 * i] > m.e[4 * largest])
            largest = i;
    Vec3d axis = row(m, largest);
    (largest == 0 ? axis.x : largest == 1 ? axis.y : axis.z) += 1;
    const double length = std::sqrt(dot(axis, axis));
    return {axis.x / length, axis.y / length, axis.z / length};
}

void parseWayOfTwoPlaces(const TiXmlElement& element, SceneNodeModel& model) {
    const KeyFrame start = makeStaticKeyFrame(xml::parseVec3(element, "pos"));
    model.keyframes.push_back(start);
    const TiXmlElement* const end_pos = xml::optionalChildElement(element, "end_pos");
    const TiXmlElement* const final_rotation = xml::optionalChildElement(element, "final_rotation");
    if (!end_pos && !final_rotation)
        return;
    KeyFrame end = start;
    end.time = 1;
    if (end_pos)
        end.pos = xml::parseVec3Text(*end_pos);
    if (final_rotation && !findTurn(model.rotation->getMatrix(), parseRotation(*final_rotation)->getMatrix(),
                                    end.rotation_axis, end.rotation_angle))
        throwParserError("The final rotation must be a turn of the rotation. ", *final_rotation);
    model.keyframes.push_back(end);
}

} // namespace

bool findTurn(const Matrix3d& from, const Matrix3d& to, Vec3d& axis, double& angle) {
    const Matrix3d m = product(to, inverse(from));
    if (!isTurn(m))
        return false;
    const double* e = m.e;
    const Vec3d sines = {e[7] - e[5], e[2] - e[6], e[3] - e[1]}; // 2 sin(angle) * axis
    const double length = std::sqrt(dot(sines, sines));
    angle = std::atan2(length, e[0] + e[4] + e[8] - 1);
    if (length > TURN_TOLERANCE)
        axis = {sines.x / length, sines.y / length, sines.z / length};
    else if (angle > 1)
        axis = axisOfHalfTurn(m);
    else
        axis = {0, 0, 1};
    return true;
}

Ref<SceneNodeMesh> parseMeshReference(const ParserState& state, const TiXmlElement& element) {
    const std::string name = xml::parseString(element, "mesh_name");
    Ref<SceneNodeMesh> mesh = state.findMesh(name);
    if (!mesh)
        throwParserError("Model tried to use undefined mesh '" + name + "'. ", element);
    return mesh;
}

void parsePlacement(const TiXmlElement& element, SceneNodeModel& model) {
    if (const TiXmlElement* const rotation = xml::optionalChildElement(element, "rotation"))
        model.rotation = parseRotation(*rotation);
    else
        model.rotation = new MatrixRotation;
    model.scale = xml::parseOptionalDouble(element, "scale", model.scale);
}

Ref<SceneNodeModel> parseOlderModel(ParserState& state, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {
        "pos",       "end_pos",  "rotation",       "final_rotation", "scale",
        "mesh_name", "keyframe", "emission_scale", "ies_profile",    "invisible_to_camera"};
    xml::checkChildrenAreIn(element, NAMES);
    const Ref<SceneNodeMesh> mesh = parseMeshReference(state, element);
    const Ref<SceneNodeModel> model = new SceneNodeModel;
    model->setName(mesh->getName() + " instance");
    model->geometry = mesh;
    parsePlacement(element, *model);
    model->keyframes = parseKeyFrames(element);
    if (model->keyframes.empty())
        parseWayOfTwoPlaces(element, *model);
    model->invisible_to_camera = xml::parseOptionalBool(element, "invisible_to_camera", false);
    for (const String& name : requireLoadedMesh(state, *mesh).used_materials)
        model->materials.push_back(state.findMaterial(name.toStdString(), element));
    parseModelEmission(state, element, *model);
    return model;
}

} // namespace Quenza
