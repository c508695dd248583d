// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEMATRICES_H
#define CHARTS_TRACEMATRICES_H

#include "ViewPort.h"

#include <QtGui/QMatrix4x4>

#include <array>

namespace Charts {

/*!
    \internal
    The transformations with which a trace is drawn. Pure functions, usable on every thread.
*/
namespace TraceMatrices {

/*! Maps the data rectangle onto normalised device coordinates, y upwards, and z = 0 onto the near
    plane. */
[[nodiscard]] QMatrix4x4 main(const ViewPort &viewPort);

/*!
    Two matrices, right and left, that flatten what lies beyond the edge onto the line \a pixel
    (data units) inside it:

                     near plane    line c
        inside  ...      |  o------>|          clipped away: in front of the near plane
        beyond           |          |<---o     drawn on the line, its distance turned into depth

    A quarter turn about the line puts every vertex on it. The distance becomes depth, shrunk so
    far that nothing beyond the edge leaves the clip volume soon. \a main is main(viewPort).
*/
[[nodiscard]] std::array<QMatrix4x4, 2> boundingX(
        const QMatrix4x4 &main, const ViewPort &viewPort, float pixel);
/*! The same for the top and the bottom edge. */
[[nodiscard]] std::array<QMatrix4x4, 2> boundingY(
        const QMatrix4x4 &main, const ViewPort &viewPort, float pixel);

} // namespace TraceMatrices

} // namespace Charts

#endif
