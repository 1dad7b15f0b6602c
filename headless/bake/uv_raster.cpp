// SPDX-License-Identifier: MIT
#include "headless/bake/uv_raster.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

constexpr int32_t BAND_ROWS = 16;
/// A triangle of more bands is looked at for all rows: lists of each band would take too much memory.
constexpr int32_t MANY_BANDS = 8;

/// The band of a row that may lie outside the image.
int32_t bandOf(double row, int32_t rows) {
    return static_cast<int32_t>(std::clamp(row, 0.0, static_cast<double>(rows - 1))) / BAND_ROWS;
}

} // namespace

UVRaster::UVRaster(std::span<const CPolygon> polygons, std::span<const UVWStruct> records,
                   const UVRange& range, int32_t columns, int32_t rows)
    : range_(range), columns_(columns), rows_(rows) {
    const size_t count = std::min(polygons.size(), records.size());
    triangles_.reserve(count * 2);
    for (size_t i = 0; i < count; ++i) {
        const UVWStruct& record = records[i];
        add(record.a, record.b, record.c);
        if (!polygons[i].IsTriangle()) {
            add(record.a, record.c, record.d);
        }
    }
    sortIntoBands();
}

void UVRaster::add(const Vector& a, const Vector& b, const Vector& c) {
    const auto toGrid = [this](const Vector& uvw) {
        return Point{(uvw.x - range_.left) / (range_.right - range_.left) * columns_,
                     (uvw.y - range_.top) / (range_.bottom - range_.top) * rows_};
    };
    Triangle triangle{{toGrid(a), toGrid(b), toGrid(c)}, {a.z, b.z, c.z}};
    for (const Point& corner : triangle.corners) {
        if (!std::isfinite(corner.x) || !std::isfinite(corner.y)) {
            return;
        }
    }
    const double side = sideOf(triangle.corners[0], triangle.corners[1], triangle.corners[2]);
    if (side == 0.0) {
        return;
    }
    if (side < 0.0) {
        std::swap(triangle.corners[1], triangle.corners[2]);
        std::swap(triangle.w[1], triangle.w[2]);
    }
    triangles_.push_back(triangle);
}

void UVRaster::sortIntoBands() {
    bands_.resize(static_cast<size_t>((rows_ - 1) / BAND_ROWS) + 1);
    for (size_t i = 0; i < triangles_.size(); ++i) {
        const auto [first, second, third] = triangles_[i].corners;
        const double top = std::min({first.y, second.y, third.y});
        const double bottom = std::max({first.y, second.y, third.y});
        if (bottom < 0.0 || top > rows_) {
            continue;
        }
        const int32_t from = bandOf(top, rows_);
        const int32_t to = bandOf(bottom, rows_);
        if (to - from >= MANY_BANDS) {
            tall_.push_back(static_cast<int32_t>(i));
            continue;
        }
        for (int32_t band = from; band <= to; ++band) {
            bands_[static_cast<size_t>(band)].push_back(static_cast<int32_t>(i));
        }
    }
}

/// Positive to the right of the way from one point to the other as the image shows it, where y points down.
/// The same number, but for its sign, for the way back: two triangles agree about their common edge.
double UVRaster::sideOf(const Point& from, const Point& to, const Point& place) {
    const bool isOrdered = from.y < to.y || (from.y == to.y && from.x < to.x);
    const Point& first = isOrdered ? from : to;
    const Point& second = isOrdered ? to : from;
    const double side =
        (second.x - first.x) * (place.y - first.y) - (second.y - first.y) * (place.x - first.x);
    return isOrdered ? side : -side;
}

bool UVRaster::covers(const Triangle& triangle, const Point& place) {
    for (size_t i = 0; i < 3; ++i) {
        const Point& from = triangle.corners[i];
        const Point& to = triangle.corners[(i + 1) % 3];
        const double side = sideOf(from, to, place);
        // A middle on an edge belongs to the triangle whose left or upper edge it is.
        const bool ownsEdge = to.y < from.y || (to.y == from.y && to.x > from.x);
        if (side < 0.0 || (side == 0.0 && !ownsEdge)) {
            return false;
        }
    }
    return true;
}

/// Makes a triangle the owner of the middles that it covers in the row with the height `middle`.
void UVRaster::mark(int32_t index, double middle, std::vector<int32_t>& owners) const {
    const Triangle& triangle = triangles_[static_cast<size_t>(index)];
    double left = columns_;
    double right = 0.0;
    for (size_t i = 0; i < 3; ++i) {
        const Point& a = triangle.corners[i];
        const Point& b = triangle.corners[(i + 1) % 3];
        if (std::min(a.y, b.y) > middle || std::max(a.y, b.y) < middle) {
            continue;
        }
        const double x = a.y == b.y ? a.x : a.x + (b.x - a.x) * ((middle - a.y) / (b.y - a.y));
        left = std::min({left, x, a.y == b.y ? b.x : x});
        right = std::max({right, x, a.y == b.y ? b.x : x});
    }
    // A column more on each side than the rounded crossings tell; `covers` is exact.
    const auto from = static_cast<int32_t>(std::clamp(std::floor(left) - 1.0, 0.0, columns_ * 1.0));
    const auto to = static_cast<int32_t>(std::clamp(std::ceil(right) + 1.0, 0.0, columns_ * 1.0));
    for (int32_t column = from; column < to; ++column) {
        if (covers(triangle, {column + 0.5, middle})) {
            owners[static_cast<size_t>(column)] = std::max(owners[static_cast<size_t>(column)], index);
        }
    }
}

void UVRaster::coveredOf(int32_t row, Scratch& scratch, std::vector<UVSample>& samples) const {
    constexpr int32_t NOBODY = -1;
    scratch.owners.assign(static_cast<size_t>(columns_), NOBODY);
    const double middle = row + 0.5;
    for (const int32_t index : tall_) {
        mark(index, middle, scratch.owners);
    }
    for (const int32_t index : bands_[static_cast<size_t>(row / BAND_ROWS)]) {
        mark(index, middle, scratch.owners);
    }
    samples.clear();
    for (int32_t column = 0; column < columns_; ++column) {
        const int32_t owner = scratch.owners[static_cast<size_t>(column)];
        if (owner != NOBODY) {
            const Triangle& triangle = triangles_[static_cast<size_t>(owner)];
            samples.push_back({column, uvwOf(triangle, {column + 0.5, middle})});
        }
    }
}

/// U and V follow from the place itself, W from the corners.
Vector UVRaster::uvwOf(const Triangle& triangle, const Point& place) const {
    const auto& [a, b, c] = triangle.corners;
    const double area = sideOf(a, b, c);
    const double w = (sideOf(b, c, place) * triangle.w[0] + sideOf(c, a, place) * triangle.w[1] +
                      sideOf(a, b, place) * triangle.w[2]) /
                     area;
    return {static_cast<float>(range_.left + (range_.right - range_.left) * (place.x / columns_)),
            static_cast<float>(range_.top + (range_.bottom - range_.top) * (place.y / rows_)),
            static_cast<float>(w)};
}

} // namespace headless
