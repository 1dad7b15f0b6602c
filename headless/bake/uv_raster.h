// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

#include <span>
#include <vector>

namespace headless {

/// The part of the texture space that fills an image.
struct UVRange {
    double left = 0.0;
    double right = 1.0;
    double top = 0.0;
    double bottom = 1.0;
};

/// A place of the texture space that belongs to a polygon.
struct UVSample {
    int32_t column = 0;
    Vector uvw;
};

/// Which places of a grid in texture space polygons cover: columns by rows of cells over a UVRange, asked at
/// the cells' middles. Where two triangles share an edge, a middle on it belongs to one of them; where
/// polygons lie over each other the last one counts. Rows may be asked for by many threads.
class UVRaster {
public:
    /// `records` has the corners of `polygons`; those whose coordinates aren't finite are left out.
    UVRaster(std::span<const CPolygon> polygons, std::span<const UVWStruct> records, const UVRange& range,
             int32_t columns, int32_t rows);

    /// Memory of one thread for `coveredOf`.
    struct Scratch {
        std::vector<int32_t> owners;
    };
    /// Replaces `samples` by the covered middles of a row, from left to right.
    void coveredOf(int32_t row, Scratch& scratch, std::vector<UVSample>& samples) const;

private:
    /// In cells from the range's upper left corner.
    struct Point {
        double x;
        double y;
    };
    /// Clockwise as the image shows it.
    struct Triangle {
        Point corners[3];
        float w[3];
    };

    void add(const Vector& a, const Vector& b, const Vector& c);
    void sortIntoBands();
    static double sideOf(const Point& from, const Point& to, const Point& place);
    static bool covers(const Triangle& triangle, const Point& place);
    void mark(int32_t index, double middle, std::vector<int32_t>& owners) const;
    Vector uvwOf(const Triangle& triangle, const Point& place) const;

    UVRange range_;
    int32_t columns_;
    int32_t rows_;
    std::vector<Triangle> triangles_;
    /// Triangles that reach into each band of rows, by rising number; those of many bands stand in `tall_`.
    std::vector<std::vector<int32_t>> bands_;
    std::vector<int32_t> tall_;
};

} // namespace headless
