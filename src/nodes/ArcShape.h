// SPDX-License-Identifier: MIT
#ifndef CHARTS_ARCSHAPE_H
#define CHARTS_ARCSHAPE_H

#include <QtCore/QPointF>

namespace Charts {

/*!
    \class Charts::ArcShape
    \brief A circular arc in pixels of an item, angles in radians.

    Angles grow from the x axis towards the y axis, which points downwards: clockwise on the screen.
    A full circle runs from 0 to 2 pi. With all fields 0 there is no arc.
*/
struct ArcShape
{
    /*! Of the circle, in pixels. */
    QPointF center;
    /*! Of the middle of the band that is drawn, in pixels. */
    double radius = 0.0;
    /*! In radians. */
    double startAngle = 0.0;
    /*! In radians; the arc runs to it in the direction of growing angles. */
    double endAngle = 0.0;
};

} // namespace Charts

#endif
