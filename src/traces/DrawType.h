// SPDX-License-Identifier: MIT
#ifndef CHARTS_DRAWTYPE_H
#define CHARTS_DRAWTYPE_H

namespace Charts {

/*!
    \enum Charts::DrawType
    What is drawn of the vertices.

    \value Points One point a vertex; the trace's width is the diameter in pixels.
    \value LineStrip A line through the vertices in the order of their index; the trace's width is
        the line's width.

    Any other value is drawn as points with the point size of whichever trace was drawn before.
*/
enum class DrawType : int {
    Points = 0,
    LineStrip = 1,
};

} // namespace Charts

#endif
