// SPDX-License-Identifier: MIT
#ifndef CHARTS_CIRCLE_H
#define CHARTS_CIRCLE_H

#include "ArcShape.h"
#include "ChartsExport.h"

#include <QtCore/QLine>
#include <QtCore/QLineF>
#include <QtCore/QPoint>

namespace Charts {

/*!
    \class Charts::Circle
    \brief A circle in whole pixels of an item.
*/
struct CHARTS_EXPORT Circle
{
    /*! In pixels of the item. */
    QPoint center;
    /*! In pixels, not negative. */
    int radius = 0;

    /*! Whether \a other lies inside this circle or touches it from inside. */
    [[nodiscard]] bool include(const Circle &other) const;
    /*! Whether \a other lies outside this circle or touches it from outside. */
    [[nodiscard]] bool exclude(const Circle &other) const;

    friend bool operator==(const Circle &, const Circle &) = default;
};

/*!
    The chord of the infinite line through the ends of \a line that lies inside \a circle; its first
    end is the one further along from p1 to p2. A tangent gives a line without length, a line that
    misses the circle the line (0, 0) to (0, 0), and one whose ends are the same point NaNs.
*/
[[nodiscard]] CHARTS_EXPORT QLineF circledLine(QLine line, Circle circle);

/*!
    The arc of \a a that lies inside \a b. Without such an arc all fields are 0; so they are where
    the two are the same circle. The whole of \a a is an arc from 0 to 2 pi.
*/
[[nodiscard]] CHARTS_EXPORT ArcShape circledCircle(Circle a, Circle b);

} // namespace Charts

#endif
