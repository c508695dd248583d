// SPDX-License-Identifier: MIT
#ifndef SNIPPETS_ROUNDCOORDINATES_H
#define SNIPPETS_ROUNDCOORDINATES_H

#include <ChartsLibrary/TraceDomain.h>

#include <algorithm>
#include <complex>

//! [set up]
/*! Makes \a domain that of a Smith chart up to the magnitude \a scale. GUI thread. */
inline void setUpSmithDomain(Charts::TraceDomain &domain, double scale, bool isMirrored)
{
    domain.setFormat(Charts::TraceDomain::SmithFormat);
    domain.setRangeXY(-scale, scale, -scale, scale);
    domain.setLeftSmith(isMirrored);
}
//! [set up]

//! [reflection]
/*! The reflection of an impedance at the end of a line of the impedance \a reference, both in ohms. */
inline std::complex<double> reflection(std::complex<double> impedance, double reference = 50.0)
{
    const std::complex<double> normalised = impedance / reference;
    return (normalised - 1.0) / (normalised + 1.0);
}
//! [reflection]

//! [to pixel]
/*! Where the reflection is, in pixels of the item. */
inline QPointF pixelOf(std::complex<double> reflection, const Charts::TraceDomain &domain)
{
    const QSizeF size = domain.size();
    const double radius = std::min(size.width(), size.height()) / 2.0;
    const double scale = domain.maxX();
    const double sign = domain.isLeftSmith() ? -1.0 : 1.0;
    return {size.width() / 2.0 + sign * reflection.real() / scale * radius,
            size.height() / 2.0 - reflection.imag() / scale * radius};
}
//! [to pixel]

//! [from pixel]
/*! Which reflection is at \a pixel. */
inline std::complex<double> reflectionAt(const QPointF &pixel, const Charts::TraceDomain &domain)
{
    const QPointF point = domain.domainPoint(pixel); // 1 at the boundary, y downwards
    const double scale = domain.maxX();
    const double sign = domain.isLeftSmith() ? -1.0 : 1.0;
    return {sign * scale * point.x(), -scale * point.y()};
}
//! [from pixel]

#endif
