// SPDX-License-Identifier: MIT
#include "reading/ply_decoder.h"

#include "foundation/string_utils.h"

#include <cmath>
#include <exception>
#include <memory>
#include <rply.h>
#include <type_traits>

namespace Quenza {

namespace {

constexpr u32 NO_UVS[4] = {0, 0, 0, 0};
constexpr u32 MATERIAL_INDEX = 0;

/// What the callbacks fill. They may throw nothing, since the library between is C: they stop the reading and
/// leave the reason here.
struct CallbackState {
    CallbackState(Mesh& m, double s) : mesh(m), scale(s) {}

    Mesh& mesh;
    double scale;
    f32 position[3] = {0, 0, 0};
    u32 num_coordinates = 0; ///< Of the current vertex.
    long num_corners = 0;    ///< Of the current face.
    u32 corners[4] = {0, 0, 0, 0};
    /// Kept back until all vertices are there: the mesh looks at a triangle's area when it takes it.
    Vector<MeshTriangle> triangles;
    std::exception_ptr failure;
};

/// Runs the work of a callback on its state; returns what the callback shall.
template <class Work>
int guarded(p_ply_argument argument, Work&& work) {
    void* user_data = nullptr;
    long user_number = 0;
    ply_get_argument_user_data(argument, &user_data, &user_number);
    auto& state = *static_cast<CallbackState*>(user_data);
    try {
        return work(state, user_number) ? 1 : 0;
    } catch (...) {
        state.failure = std::current_exception();
        return 0;
    }
}

int takeCoordinate(p_ply_argument argument) {
    return guarded(argument, [argument](CallbackState& state, long axis) {
        const f32 value = f32(ply_get_argument_value(argument) * state.scale);
        if (!std::isfinite(value))
            return false;
        state.position[axis] = value;
        if (++state.num_coordinates == 3) {
            state.num_coordinates = 0;
            state.mesh.addVertex({state.position[0], state.position[1], state.position[2]});
        }
        return true;
    });
}

void beginFace(CallbackState& state, long num_corners) {
    if (num_corners != 3 && num_corners != 4)
        throw ModelLoaderExcep("Invalid number of vertices in face: " + toString(i64(num_corners)));
    state.num_corners = num_corners;
}

/// Indices come as real numbers, whatever their type in the file is.
u32 vertexIndex(const CallbackState& state, double value) {
    const double limit = 4294967295.0;
    if (!(value >= 0 && value < limit && value == std::floor(value)))
        throw ModelLoaderExcep(String(state.num_corners == 3 ? "Triangle" : "Quad") +
                               " vertex index is out of bounds. (vertex index=" + doubleToString(value) +
                               ")");
    return u32(value);
}

void endFace(CallbackState& state) {
    const u32* const c = state.corners;
    if (state.num_corners == 3)
        state.triangles.push_back({{c[0], c[1], c[2]}, {0, 0, 0}, MATERIAL_INDEX});
    else
        state.mesh.quads.push_back({{c[0], c[1], c[2], c[3]}, {0, 0, 0, 0}, MATERIAL_INDEX});
}

int takeFaceValue(p_ply_argument argument) {
    return guarded(argument, [argument](CallbackState& state, long) {
        long length = 0;
        long index = 0;
        ply_get_argument_property(argument, nullptr, &length, &index);
        if (index < 0) {
            beginFace(state, length);
            return true;
        }
        state.corners[index] = vertexIndex(state, ply_get_argument_value(argument));
        if (index + 1 == length)
            endFace(state);
        return true;
    });
}

void dropMessage(p_ply /*ply*/, const char* /*message*/) {}

void setCallbacks(p_ply ply, CallbackState& state) {
    const char* const axes[] = {"x", "y", "z"};
    for (long axis = 0; axis < 3; ++axis)
        ply_set_read_cb(ply, "vertex", axes[axis], takeCoordinate, &state, axis);
    if (ply_set_read_cb(ply, "face", "vertex_indices", takeFaceValue, &state, 0) == 0)
        ply_set_read_cb(ply, "face", "vertex_index", takeFaceValue, &state, 0);
}

void readFile(const String& path, CallbackState& state) {
    const std::unique_ptr<std::remove_pointer_t<p_ply>, int (*)(p_ply)> ply(
        ply_open(path.toStdString().c_str(), dropMessage, 0, nullptr), ply_close);
    if (!ply)
        throw ModelLoaderExcep("could not open file '" + path + "' for reading.");
    if (!ply_read_header(ply.get()))
        throw ModelLoaderExcep("could not read header.");
    setCallbacks(ply.get(), state);
    if (!ply_read(ply.get())) {
        if (state.failure)
            std::rethrow_exception(state.failure);
        throw ModelLoaderExcep("read of body failed.");
    }
}

} // namespace

void FormatDecoderPLY::streamModel(const String& path, Mesh& mesh, double scale) {
    mesh.addMaterialUsed("default");
    CallbackState state(mesh, scale);
    readFile(path, state);
    mesh.checkAllIndices();
    for (const MeshTriangle& triangle : state.triangles)
        mesh.addTriangle(triangle.vertex_indices, NO_UVS, MATERIAL_INDEX);
    mesh.endOfModel();
}

} // namespace Quenza
