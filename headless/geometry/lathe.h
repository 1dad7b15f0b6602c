// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "headless/geometry/axis_frame.h"
#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

/// Length of a parameter: zero when negative or not finite.
double validLength(float length);

/// Turns a mesh made around +Y to the orientation, with its texture upright as in `axisFrames`. Numbers that
/// name no direction leave it around +Y.
void orient(PolyMesh& mesh, Axis orientation);

/// Builds a surface of revolution around the Y axis from rows, which are circles or single points on the
/// axis, and bands between two rows. Faces look outward when bands go down the outside of the profile (from
/// the top to the bottom, the inner wall of a tube upwards), which is also the direction of the texture's v.
class Lathe {
public:
    /// Room is made for `rows` rows and as many bands.
    Lathe(int segments, int rows);

    /// A circle with as many points as there are segments; returns the row's number.
    int addRing(double radius, double y);
    /// A point on the axis.
    int addPole(double y);

    /// A band around which the texture is wrapped once: v from `vFrom` at row `from` to `vTo` at row `to`.
    void addWall(int from, int to, double vFrom, double vTo);
    /// A flat band seen from above (`upward`) or from below. The texture's square lies around `radius`.
    void addCap(int from, int to, double radius, bool upward);

    /// The mesh around +Y turned to the orientation. The lathe is empty afterwards.
    PolyMesh take(Axis orientation);

private:
    struct Row {
        int32_t firstPoint;
        double radius;
        bool pole;
    };

    template <class TexCoord>
    void addBand(int from, int to, const TexCoord& texCoord);

    int segments_;
    /// Cosine and sine of each segment, with the first repeated at the end.
    std::vector<double> cosines_;
    std::vector<double> sines_;
    std::vector<Row> rows_;
    PolyMesh mesh_;
};

} // namespace headless::geometry
