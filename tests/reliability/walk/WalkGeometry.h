// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_WALKGEOMETRY_H
#define CHARTS_TEST_WALKGEOMETRY_H

#include "WalkData.h"

#include <QtCore/QPointF>
#include <QtCore/QRect>

#include <vector>

/*! The pixels, from the bottom left, on which the view port of a trace lies. */
[[nodiscard]] QRect viewportOf(const Look &look, const QSize &size);

/*!
    Says which traces of a selection image may lie at a position: the one on top in the middle of
    its line, and, where the position lies so near to the edge of a line that rounding decides, the
    one below as well. A null stands for the background.
*/
[[nodiscard]] std::vector<const void *> tracesAt(const Sketches &image, const QPointF &position);

#endif
