// SPDX-License-Identifier: MIT
#ifndef CHARTS_SMITHGEOMETRY_H
#define CHARTS_SMITHGEOMETRY_H

#include "ArcShape.h"
#include "Circle.h"

#include <QtCore/QLineF>
#include <QtCore/QSize>

#include <optional>
#include <vector>

namespace Charts {

/*!
    \internal
    The circles and lines of a Smith chart in whole pixels of an item, clipped to the chart's
    boundary.

                       .-"""""-.
                     .'    |    '.
                    /      |  .-"-\
        real axis  |-------c-|-----g    c: the centre, g: where the reflection is 1 and all
                    \      |  '-.-/        circles meet; with a scale above 1 inside the boundary,
                     '.    |    .'         below 1 outside of it
                       '-.....-'
*/
class SmithGeometry
{
public:
    SmithGeometry(const QSize &size, double scale, bool isFlipped);

    /*! Circles of constant resistance, arcs of constant reactance, the mirrored unit circle. */
    [[nodiscard]] std::vector<ArcShape> innerArcs() const;
    /*! The boundary, and the unit circle where it is not outside of it. */
    [[nodiscard]] std::vector<ArcShape> outerArcs() const;
    /*! The vertical line through the reflection of 1. */
    [[nodiscard]] QLineF marker() const;
    [[nodiscard]] QLineF realAxis() const;

private:
    void addClipped(std::vector<ArcShape> &arcs, double x, double y, double radius) const;
    void addResistances(std::vector<ArcShape> &arcs) const;
    void addReactances(std::vector<ArcShape> &arcs) const;
    [[nodiscard]] std::optional<double> reactanceRadius(int index) const;

    Circle m_boundary;
    double m_scale = 1.0;
    double m_sign = 1.0;       // -1: mirrored
    double m_unitRadius = 0.0; // of the circle of reflections with the magnitude 1
    double m_meetingX = 0.0;   // g in the picture
    double m_leastRadius = 0.0;
};

} // namespace Charts

#endif
