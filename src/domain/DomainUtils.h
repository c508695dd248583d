// SPDX-License-Identifier: MIT
#ifndef CHARTS_DOMAINUTILS_H
#define CHARTS_DOMAINUTILS_H

#include "ChartsExport.h"
#include "Span.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

Q_MOC_INCLUDE("ChartsLibrary/TraceDomain.h")

namespace Charts {

class TraceDomain;

/*!
    \qmltype Domain
    \inqmlmodule zel.charts
    \brief Singleton with the mappings between data ranges and item geometry.

    All of its methods are linear and know nothing of logarithms: of a logarithmic axis give them
    the exponents. Nothing is reported on bad input: a range of length zero in the divisor gives
    infinities or NaN, a reversed range has the length 0.
*/
/*!
    \class Charts::DomainUtils
    \brief Stateless mapping helpers, the QML singleton "Domain".

    The engine creates and owns one instance. The functions touch no state and can be called on
    any thread, except isDomainRound(), which reads an object of the GUI thread.
*/
class CHARTS_EXPORT DomainUtils : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Domain)
    QML_SINGLETON

public:
    explicit DomainUtils(QObject *parent = nullptr);

    /*! \qmlmethod real Domain::mapToGeometry(span geometryRange, span domianRange, real domain)
        Maps the data value \a domain from \a domianRange to \a geometryRange, both ends of one to
        those of the other, and values beyond them in proportion. It never turns a range over: in
        an item y grows downwards, so subtract what the method returns for y from the item's height.
        Where \a domianRange has no length the value returned is infinite or NaN; where
        \a geometryRange has none, or is reversed, it is its \c min. */
    Q_INVOKABLE double mapToGeometry(Span geometryRange, Span domianRange, double domain) const;

    /*! \qmlmethod real Domain::mapFromGeometry(span geometryRange, span domianRange, real geomtry)
        Maps the coordinate \a geomtry from \a geometryRange to \a domianRange, the inverse of
        mapToGeometry(): for y pass the item's height less the coordinate. Where \a geometryRange
        has no length the value returned is infinite or NaN; where \a domianRange has none, or is
        reversed, it is its \c min. */
    Q_INVOKABLE double mapFromGeometry(Span geometryRange, Span domianRange, double geomtry) const;

    /*! \qmlmethod span Domain::span(real min, real max)
        Returns the span (\a min, \a max) as given, not reordered: how QML code makes a span. */
    Q_INVOKABLE Span span(double min, double max) const;

    /*! \qmlmethod real Domain::niceStep(span span)
        Returns a readable step that divides \a span into at most ten parts: 0.1, 0.125, 0.2, 0.25,
        0.3, 0.4, 0.5, 0.6, 0.75 or 1 times a power of ten. A span from 0 to 1 gives 0.1, one to 1.2
        gives 0.125, one to 7 gives 0.75 and one to 100 gives 10. Where |max - min| is at most 1e-12
        the difference itself is the step, with its sign; a span reversed further gives 1e-301, one
        that is not finite no finite step. */
    Q_INVOKABLE double niceStep(Span span) const;

    /*! \qmlmethod bool Domain::isDomainRound(TraceDomain domain)
        Returns whether \a domain, which must not be null, is drawn as a Smith or a polar chart; the
        same as TraceDomain::isRound. */
    Q_INVOKABLE bool isDomainRound(TraceDomain *domain) const;

    /*!
        Maps \a value linearly so that the lower end of \a from lands on that of \a to and a step of
        one length of \a from is a step of one length of \a to; the two methods for QML call it. A
        \a from without length gives infinities or NaN. The multiplication and the addition are one
        fused operation, so that equal positions computed in different places stay equal to the last
        bit.
    */
    [[nodiscard]] static double mapRangeValue(Span from, Span to, double value);
};

} // namespace Charts

#endif
