// SPDX-License-Identifier: MIT
#ifndef CHARTS_BOUNDINGMETHOD_H
#define CHARTS_BOUNDINGMETHOD_H

namespace Charts {

/*!
    \enum Charts::BoundingMethod
    What happens, on one axis, to the parts of a trace outside the view port.

    \value Clamp Each vertex is moved onto the view port shrunk by one pixel on each side.
    \value ExtraMatrices The parts that leave the view port are drawn once more for each side,
        flattened onto the line one pixel inside the edge, and cut exactly where the trace crosses
        that line.
    \value None They are not drawn. Any other value means the same.
*/
enum class BoundingMethod : int {
    Clamp = 0,
    ExtraMatrices = 1,
    None = 2,
};

} // namespace Charts

#endif
