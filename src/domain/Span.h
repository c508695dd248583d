// SPDX-License-Identifier: MIT
#ifndef CHARTS_SPAN_H
#define CHARTS_SPAN_H

#include "ChartsExport.h"

#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

QT_BEGIN_NAMESPACE
class QDebug;
QT_END_NAMESPACE

namespace Charts {

/*!
    \qmltype span
    \inqmlmodule zel.charts
    \brief An interval of numbers with the ends \c min and \c max.

    A span is a value: assigning it copies it, and a copy tells nobody when it changes. It is not
    normalised, \c min may be greater than \c max; its length counts as 0 then, wherever the library
    asks for it. QML code makes one with \l{Domain::span()}{Domain.span(min, max)}.
*/
/*!
    \class Charts::Span
    \brief An interval of doubles, the value type of every range in the library.

    Plain data without an owner, usable on every thread. The ends are stored as given, never
    ordered.
*/
class CHARTS_EXPORT Span
{
    Q_GADGET
    QML_VALUE_TYPE(span)

    /*! \qmlproperty real span::min
        Lower end, in the unit of whatever the span describes. Default 0. */
    Q_PROPERTY(double min MEMBER min)
    /*! \qmlproperty real span::max
        Upper end, in the same unit. Default 0. */
    Q_PROPERTY(double max MEMBER max)

public:
    /*! The span from 0 to 0. */
    constexpr Span() = default;
    /*! The span from \a lower to \a upper, as given. */
    constexpr Span(double lower, double upper)
        : min(lower)
        , max(upper)
    {
    }

    /*! max - min, or 0 for a reversed span; never negative. A NaN at either end stays a NaN. */
    [[nodiscard]] constexpr double length() const { return max < min ? 0.0 : max - min; }

    double min = 0.0;
    double max = 0.0;
};

/*!
    Compares \c min of \a a and \a b, then \c max, and returns whether both are equal: within 1e-12
    absolutely when one of the two values is exactly 0, otherwise within 1e-12 of the smaller
    magnitude. Near zero that is coarse for ranges whose ends are themselves around 1e-12: choose a
    unit in which they are well above it.
*/
CHARTS_EXPORT bool operator==(const Span &a, const Span &b);

/*! Writes \a span to \a debug as "Span(min, max)", the ends with up to six significant digits, as
    one string, quoted unless the stream has quoting switched off. */
CHARTS_EXPORT QDebug operator<<(QDebug debug, const Span &span);

} // namespace Charts

Q_DECLARE_TYPEINFO(Charts::Span, Q_PRIMITIVE_TYPE);

#endif
