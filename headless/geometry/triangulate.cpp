// SPDX-License-Identifier: MIT
#include "headless/geometry/triangulate.h"

#include <cmath>
#include <cstddef>
#include <deque>

namespace headless::geometry {

namespace {

struct Point2 {
    double x;
    double y;
    bool operator==(const Point2&) const = default;
};

/// Twice the area of the triangle; positive when it's wound like the polygon.
double signedArea(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The corners seen along the axis that is nearest to the polygon's normal, so that its winding is positive.
std::vector<Point2> flatten(std::span<const int32_t> corners, std::span<const Vector> points) {
    const auto at = [&](std::size_t i) { return Vec3(points[static_cast<std::size_t>(corners[i])]); };
    Vec3 normal;
    const Vec3 origin = at(0);
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        normal += cross(at(i) - origin, at(i + 1) - origin);
    }
    const Vec3 size(std::abs(normal.x), std::abs(normal.y), std::abs(normal.z));
    std::vector<Point2> flat;
    flat.reserve(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Vec3 p = at(i) - origin;
        if (size.x > size.y && size.x > size.z) {
            flat.push_back(normal.x > 0.0 ? Point2{p.y, p.z} : Point2{p.z, p.y});
        } else if (size.y > size.z) {
            flat.push_back(normal.y > 0.0 ? Point2{p.z, p.x} : Point2{p.x, p.z});
        } else {
            flat.push_back(normal.z > 0.0 ? Point2{p.x, p.y} : Point2{p.y, p.x});
        }
    }
    return flat;
}

class EarCutter {
public:
    explicit EarCutter(std::vector<Point2> points) : points_(std::move(points)), remaining_(points_.size()) {
        const std::size_t n = points_.size();
        next_.resize(n);
        previous_.resize(n);
        removed_.resize(n);
        for (std::size_t i = 0; i < n; ++i) {
            next_[i] = (i + 1) % n;
            previous_[i] = (i + n - 1) % n;
        }
        triangles_.reserve(n - 2);
    }

    std::vector<std::array<int32_t, 3>> cut() {
        while (remaining_ > 3 && work_ < workLimit) {
            findReflexCorners();
            const std::size_t before = remaining_;
            cutAllEars();
            if (remaining_ == before) {
                break;
            }
        }
        fanRest();
        return std::move(triangles_);
    }

private:
    /// Tests of a point against a triangle: some seconds at the most.
    static constexpr std::size_t workLimit = 400'000'000;

    bool isConvex(std::size_t i) const {
        return signedArea(points_[previous_[i]], points_[i], points_[next_[i]]) > 0.0;
    }

    /// Only reflex corners can lie inside an ear. Corners turn convex as the polygon shrinks, never reflex.
    void findReflexCorners() {
        reflex_.clear();
        candidates_.clear();
        work_ += points_.size();
        for (std::size_t i = 0; i < points_.size(); ++i) {
            if (removed_[i]) {
                continue;
            }
            if (isConvex(i)) {
                candidates_.push_back(i);
            } else {
                reflex_.push_back(i);
            }
        }
    }

    bool isEar(std::size_t i) {
        const Point2& a = points_[previous_[i]];
        const Point2& b = points_[i];
        const Point2& c = points_[next_[i]];
        if (!isConvex(i)) {
            return false;
        }
        for (std::size_t k = 0; k < reflex_.size() && work_ < workLimit; ++k) {
            const std::size_t r = reflex_[k];
            if (removed_[r] || isConvex(r)) {
                reflex_[k--] = reflex_.back();
                reflex_.pop_back();
                continue;
            }
            ++work_;
            const Point2& p = points_[r];
            // A polygon with a hole touches itself along the cut to it: equal corners don't block.
            const bool inside =
                signedArea(a, b, p) >= 0.0 && signedArea(b, c, p) >= 0.0 && signedArea(c, a, p) >= 0.0;
            if (inside && p != a && p != b && p != c) {
                return false;
            }
        }
        return true;
    }

    /// A cut only changes what its two neighbours are.
    void cutAllEars() {
        while (!candidates_.empty() && remaining_ > 3 && work_ < workLimit) {
            const std::size_t i = candidates_.front();
            candidates_.pop_front();
            if (removed_[i] || !isEar(i)) {
                continue;
            }
            addTriangle(previous_[i], i, next_[i]);
            removed_[i] = true;
            --remaining_;
            next_[previous_[i]] = next_[i];
            previous_[next_[i]] = previous_[i];
            candidates_.push_back(previous_[i]);
            candidates_.push_back(next_[i]);
        }
    }

    void fanRest() {
        std::size_t centre = 0;
        while (removed_[centre]) {
            ++centre;
        }
        for (std::size_t i = next_[centre]; next_[i] != centre; i = next_[i]) {
            addTriangle(centre, i, next_[i]);
        }
    }

    void addTriangle(std::size_t a, std::size_t b, std::size_t c) {
        triangles_.push_back({static_cast<int32_t>(a), static_cast<int32_t>(b), static_cast<int32_t>(c)});
    }

    std::vector<Point2> points_;
    std::size_t remaining_;
    std::size_t work_ = 0;
    std::vector<std::size_t> next_;
    std::vector<std::size_t> previous_;
    std::vector<bool> removed_;
    std::vector<std::size_t> reflex_;
    std::deque<std::size_t> candidates_;
    std::vector<std::array<int32_t, 3>> triangles_;
};

} // namespace

std::vector<std::array<int32_t, 3>> triangulatePlaces(std::span<const int32_t> corners,
                                                      std::span<const Vector> points) {
    if (corners.size() < 3) {
        return {};
    }
    return EarCutter(flatten(corners, points)).cut();
}

std::vector<std::array<int32_t, 3>> triangulate(std::span<const int32_t> corners,
                                                std::span<const Vector> points) {
    std::vector<std::array<int32_t, 3>> triangles = triangulatePlaces(corners, points);
    for (auto& triangle : triangles) {
        for (int32_t& index : triangle) {
            index = corners[static_cast<std::size_t>(index)];
        }
    }
    return triangles;
}

} // namespace headless::geometry
