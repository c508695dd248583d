// SPDX-License-Identifier: MIT
#ifndef CHARTS_BOUNDINGMETHOD_H
#define CHARTS_BOUNDINGMETHOD_H

namespace Charts {

/*!
    \enum Charts::BoundingMethod
    What happens, on one axis, to the parts of a trace outside the view port. One pixel is that of
    the chart's picture. Extra matrices cost two more draw calls for each axis.

    \value Clamp The coordinate of each vertex is clamped into the view port shrunk by one pixel on
        each side, so that what lies outside is drawn on the border.
    \value ExtraMatrices The parts that leave the view port are drawn once more for each side,
        flattened onto the line one pixel inside the edge, and cut exactly where the trace crosses
        that line.
    \value Unbounded They are not drawn. Any other value means the same.
*/
enum class BoundingMethod : int {
    Clamp = 0,
    ExtraMatrices = 1,
    Unbounded = 2,
};

} // namespace Charts

#endif
