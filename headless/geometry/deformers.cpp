// SPDX-License-Identifier: MIT
#include "headless/geometry/deformers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "foundation/parallel.h"
#include "foundation/trigonometry.h"

namespace headless::geometry {

namespace {

bool isInBox(const Vec3& p, const Vec3& halfSize) {
    return std::abs(p.x) <= halfSize.x && std::abs(p.y) <= halfSize.y && std::abs(p.z) <= halfSize.z;
}

/// Applies `formula(point, h)` in the deformer's space to the points that the mode lets through. `h` is the
/// point's height over the lower side, clamped to the box in mode Limited.
template <class Formula>
bool deform(std::span<Vector> points, const Matrix& toDeformer, const Vector& size, DeformMode mode,
            const Formula& formula) {
    const Affine forth(toDeformer);
    const std::optional<Affine> back = forth.inverse();
    const Vec3 halfSize = Vec3(size) * 0.5;
    if (!back || !std::isfinite(halfSize.y) || halfSize.y <= 0.0) {
        return false;
    }
    Quenza::parallelFor(points.size(), 16384, [&](std::size_t begin, std::size_t end) {
        for (Vector& point : points.subspan(begin, end - begin)) {
            const Vec3 p = forth.point(point);
            if (!p.isFinite() || (mode == DeformMode::WithinBox && !isInBox(p, halfSize))) {
                continue;
            }
            const double h = p.y + halfSize.y;
            const double used = mode == DeformMode::Unlimited ? h : std::clamp(h, 0.0, 2.0 * halfSize.y);
            const Vec3 moved = back->point(formula(p, used));
            point = moved.isFinite() ? moved.toVector() : point;
        }
    });
    return true;
}

/// (1 - cos t) / t and sin t / t, which stay exact for small t.
double versineRatio(double t) {
    return std::abs(t) < 1e-4 ? t / 2.0 : (1.0 - Quenza::cosine(t)) / t;
}

double sineRatio(double t) {
    return std::abs(t) < 1e-4 ? 1.0 - t * t / 6.0 : Quenza::sine(t) / t;
}

Vec3 turned(const Vec3& p, double angle) {
    const double c = Quenza::cosine(angle);
    const double s = Quenza::sine(angle);
    return {p.x * c - p.z * s, p.y, p.x * s + p.z * c};
}

} // namespace

bool bend(std::span<Vector> points, const Matrix& toDeformer, const BendParameters& parameters) {
    const double height = static_cast<double>(parameters.size.y);
    const double halfTurn = std::min(std::abs(parameters.strength), std::numbers::pi);
    const double stretch = parameters.keepAxisLength ? 1.0 : 1.0 / sineRatio(halfTurn / 2.0);
    return deform(points, toDeformer, parameters.size, parameters.mode, [&](const Vec3& point, double h) {
        const Vec3 p = turned(point, -parameters.direction);
        const double t = parameters.strength * h / height;
        // The axis, the cross section on it, and what sticks out of the limits along its tangent.
        const double axisX = stretch * h * versineRatio(t);
        const double axisY = stretch * h * sineRatio(t);
        const double rest = p.y + height / 2.0 - h;
        const Vec3 bent(axisX + p.x * Quenza::cosine(t) + rest * Quenza::sine(t),
                        axisY - p.x * Quenza::sine(t) + rest * Quenza::cosine(t) - height / 2.0, p.z);
        return turned(bent, parameters.direction);
    });
}

bool twist(std::span<Vector> points, const Matrix& toDeformer, const TwistParameters& parameters) {
    const double perHeight = parameters.angle / static_cast<double>(parameters.size.y);
    return deform(points, toDeformer, parameters.size, parameters.mode,
                  [&](const Vec3& p, double h) { return turned(p, perHeight * h); });
}

bool taper(std::span<Vector> points, const Matrix& toDeformer, const TaperParameters& parameters) {
    const double height = static_cast<double>(parameters.size.y);
    const double curvature = parameters.curvature;
    return deform(points, toDeformer, parameters.size, parameters.mode, [&](const Vec3& p, double h) {
        const double q = h / height;
        const double scale = 1.0 - parameters.strength * ((1.0 - curvature) * q + curvature * q * q);
        return Vec3(p.x * scale, p.y, p.z * scale);
    });
}

bool bulge(std::span<Vector> points, const Matrix& toDeformer, const BulgeParameters& parameters) {
    const double height = static_cast<double>(parameters.size.y);
    return deform(points, toDeformer, parameters.size, parameters.mode, [&](const Vec3& p, double h) {
        const double q = h / height;
        const double scale = 1.0 + parameters.strength * 4.0 * q * (1.0 - q);
        return Vec3(p.x * scale, p.y, p.z * scale);
    });
}

} // namespace headless::geometry
