// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "headless/geometry/poly_mesh.h"

/// The host's deformers. Each has a box of `size` around its origin and acts along the box's Y axis: its
/// lower side is the fixed end. `toDeformer` brings the points into the deformer's space, where the formula
/// is applied; they go back through its inverse. All return false, with the points untouched, when the matrix
/// has no inverse or the box no height. Points that aren't finite, or wouldn't be afterwards, stay as they
/// are. Angles are in radians.
///
/// Below, h is the height of a point over the lower side and H the box's height.
namespace headless::geometry {

enum class DeformMode : int {
    /// The part between the lower and the upper side is deformed; what lies above goes along rigidly.
    Limited = 0,
    /// Only points inside the box move.
    WithinBox = 1,
    /// The formula goes on beyond both sides.
    Unlimited = 2
};

struct BendParameters {
    Vector size{100.0f, 250.0f, 100.0f};
    /// The angle by which the upper side is turned against the lower.
    double strength = 0.0;
    /// Turns the direction of the bend, which is +X, around Y towards +Z.
    double direction = 0.0;
    DeformMode mode = DeformMode::Limited;
    /// With it the axis keeps its length as an arc of radius H / strength. Without, the straight distance of
    /// its ends stays H and the arc grows longer, by up to pi / 2 at half a turn; beyond, the factor stays.
    bool keepAxisLength = false;
};
/// The Y axis becomes a circular arc towards the direction, cross sections stay flat and perpendicular to it:
/// with the angle t = strength * h / H and the arc's radius r, (x, h) goes to (r - (r - x) cos t, (r - x) sin
/// t). From A. Barr, "Global and Local Deformations of Solid Primitives", SIGGRAPH 1984.
bool bend(std::span<Vector> points, const Matrix& toDeformer, const BendParameters& parameters);

struct TwistParameters {
    Vector size{100.0f, 250.0f, 100.0f};
    /// The angle by which the upper side is turned against the lower, from +X towards +Z.
    double angle = 0.0;
    DeformMode mode = DeformMode::Limited;
};
/// Cross sections turn around the Y axis by angle * h / H (Barr).
bool twist(std::span<Vector> points, const Matrix& toDeformer, const TwistParameters& parameters);

struct TaperParameters {
    Vector size{100.0f, 250.0f, 100.0f};
    /// 1 brings the upper side down to a point, negative values widen it.
    double strength = 0.0;
    /// 0 for straight flanks; up to 1 for a parabola that starts out upright.
    double curvature = 0.0;
    DeformMode mode = DeformMode::Limited;
};
/// Cross sections are scaled by 1 - strength * ((1 - curvature) q + curvature q^2) with q = h / H.
bool taper(std::span<Vector> points, const Matrix& toDeformer, const TaperParameters& parameters);

struct BulgeParameters {
    Vector size{100.0f, 250.0f, 100.0f};
    /// How much wider the middle becomes: 0.5 for half as wide again, negative for a waist.
    double strength = 0.0;
    DeformMode mode = DeformMode::Limited;
};
/// Cross sections are scaled by 1 + strength * 4 q (1 - q) with q = h / H: a parabola that leaves both ends
/// as they are.
bool bulge(std::span<Vector> points, const Matrix& toDeformer, const BulgeParameters& parameters);

} // namespace headless::geometry
