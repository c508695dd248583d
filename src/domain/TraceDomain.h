// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEDOMAIN_H
#define CHARTS_TRACEDOMAIN_H

#include "ChartsExport.h"
#include "Span.h"

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtQml/qqmlregistration.h>

#include <utility>

namespace Charts {

/*!
    \qmltype TraceDomain
    \inqmlmodule zel.charts
    \brief The coordinate system of one trace: visible ranges, size in pixels, format and zoom.

    Every trace owns one and offers it as its \l{AbstractTrace::domain}{domain}; QML does not create
    domains. Ranges and format are set by the trace in C++, see \l{Charts::TraceDomain}{the class};
    QML binds grids and labels to them. A domain draws nothing by itself: the trace takes what it
    says over into its data, and the grid is bound to the same ranges.

    Bad input is not reported: ranges are stored as passed, never ordered or limited, and a zero
    size or an empty range makes the mappings give infinities or NaN.

    \sa {Smith and polar domains}, {Zoom}
*/
/*!
    \class Charts::TraceDomain
    \brief Maps between data values and item geometry in one of three formats and keeps the zoom.

    Owned by its trace (its QObject parent) and used on the GUI thread only; a trace's
    updateData() may read it, since the GUI thread waits meanwhile.

    While no zoom is in force the base ranges follow the visible ranges: each xRangeChanged() and
    each yRangeChanged() copies the range into its base and emits the base's signal, even when the
    two were equal before. While zoomed the base ranges keep what zoomReset() returns to.
*/
class CHARTS_EXPORT TraceDomain : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

    /*! \qmlproperty span TraceDomain::xRange
        Visible range on X in data units, which a zoom narrows. Read only, default (0, 0). A change
        within the tolerance of spans (1e-12 of its ends, or 1e-12 where one of them is zero) is
        ignored. */
    Q_PROPERTY(Span xRange READ xRange NOTIFY xRangeChanged)
    /*! \qmlproperty span TraceDomain::yRange
        Visible range on Y in data units, like \l xRange. Read only, default (0, 0). */
    Q_PROPERTY(Span yRange READ yRange NOTIFY yRangeChanged)
    /*! \qmlproperty span TraceDomain::argRange
        Range of the argument (frequency, angle) that a round format runs through, in the
        application's unit. The library keeps it and does not use it. Read only, default (0, 0). */
    Q_PROPERTY(Span argRange READ argRange NOTIFY argRangeChanged)
    /*! \qmlproperty enumeration TraceDomain::format
        What kind of chart the trace belongs to. Read only.
        \value TraceDomain.XYFormat  cartesian (default)
        \value TraceDomain.SmithFormat  a Smith chart
        \value TraceDomain.PolarFormat  a polar diagram */
    Q_PROPERTY(TraceFormat format READ format NOTIFY formatChanged)
    /*! \qmlproperty bool TraceDomain::isLeftSmith
        Whether the Smith chart is drawn mirrored, as an admittance chart: a flag for whatever draws
        the trace and its grid. Read only, default false. */
    Q_PROPERTY(bool isLeftSmith READ isLeftSmith NOTIFY leftSmithChanged)
    /*! \qmlproperty bool TraceDomain::isZoomed
        Whether a zoom is in force: while it is, \l baseXRange and \l baseYRange keep what a reset
        returns to. Read only, default false. */
    Q_PROPERTY(bool isZoomed READ isZoomed NOTIFY zoomedChanged)
    /*! \qmlproperty bool TraceDomain::isLogX
        Whether the X axis is meant to be logarithmic; a flag for whatever draws the trace and its
        grid, the mappings of the domain stay linear. Default false. */
    Q_PROPERTY(bool isLogX READ isLogX WRITE setIsLogX NOTIFY isLogXChanged)
    /*! \qmlproperty bool TraceDomain::isRound
        Whether the format is a Smith or a polar chart. Read only, default false. The notify signal
        is that of \l format. */
    Q_PROPERTY(bool isRound READ isRound NOTIFY formatChanged)
    /*! \qmlproperty size TraceDomain::size
        Size of the item in pixels. The chart keeps it equal to its own while that is not empty;
        what is set otherwise lasts until the chart's next change of size. A relative change of at
        most 1e-12 is ignored. Default (0, 0). */
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY sizeChanged)
    /*! \qmlproperty span TraceDomain::baseYRange
        The Y range in data units that a zoom reset returns to. Without a zoom it follows \l yRange.
        Read only, default (0, 0). */
    Q_PROPERTY(Span baseYRange READ baseYRange NOTIFY baseYRangeChanged)
    /*! \qmlproperty span TraceDomain::baseXRange
        The X range in data units that a zoom reset returns to. Without a zoom it follows \l xRange.
        Read only, default (0, 0). */
    Q_PROPERTY(Span baseXRange READ baseXRange NOTIFY baseXRangeChanged)

public:
    /*! \enum Charts::TraceDomain::TraceFormat
        What kind of chart the trace belongs to.
        \value XYFormat Cartesian.
        \value SmithFormat A Smith chart.
        \value PolarFormat A polar diagram. */
    enum TraceFormat {
        XYFormat = 0,
        SmithFormat = 1,
        PolarFormat = 2,
    };
    Q_ENUM(TraceFormat)

    explicit TraceDomain(QObject *parent = nullptr);
    ~TraceDomain() override;

    [[nodiscard]] TraceFormat format() const { return m_format; }
    /*! Lower end of the visible X range. */
    [[nodiscard]] double minX() const { return m_xRange.min; }
    /*! Upper end of the visible X range. */
    [[nodiscard]] double maxX() const { return m_xRange.max; }
    /*! Lower end of the visible Y range. */
    [[nodiscard]] double minY() const { return m_yRange.min; }
    /*! Upper end of the visible Y range. */
    [[nodiscard]] double maxY() const { return m_yRange.max; }
    /*! Length of the visible X range, 0 of a reversed one. */
    [[nodiscard]] double spanX() const { return m_xRange.length(); }
    /*! Length of the visible Y range, 0 of a reversed one. */
    [[nodiscard]] double spanY() const { return m_yRange.length(); }
    [[nodiscard]] Span xRange() const { return m_xRange; }
    [[nodiscard]] Span yRange() const { return m_yRange; }
    [[nodiscard]] Span argRange() const { return m_argRange; }
    [[nodiscard]] Span baseXRange() const { return m_baseXRange; }
    [[nodiscard]] Span baseYRange() const { return m_baseYRange; }
    [[nodiscard]] QSizeF size() const { return m_size; }
    [[nodiscard]] bool isLogX() const { return m_isLogX; }
    [[nodiscard]] bool isLeftSmith() const { return m_isLeftSmith; }
    [[nodiscard]] bool isZoomed() const { return m_isZoomed; }
    [[nodiscard]] bool isRound() const { return m_format != XYFormat; }
    /*! The visible data rectangle: x and y are the lower ends, the extent is (spanX, spanY). */
    [[nodiscard]] QRectF geometry() const;

    /*! Stores \a range as passed and emits xRangeChanged(), unless it equals the present one
        (operator== of Span, so within 1e-12 absolutely where an end is 0). The same holds for the
        ranges below. */
    void setRangeX(Span range);
    void setRangeX(double min, double max);
    /*! Stores \a range as passed, like setRangeX(), and emits yRangeChanged(). */
    void setRangeY(Span range);
    void setRangeY(double min, double max);
    /*! Sets the range \a x, then the range \a y. */
    void setRangeXY(Span x, Span y);
    void setRangeXY(double minX, double maxX, double minY, double maxY);
    /*! While zoomed, makes \a min to \a max the range that a reset returns to and emits
        baseXRangeChanged(), also where it is the same; otherwise the same as setRangeX(). */
    void setBaseRangeX(double min, double max);
    /*! While zoomed, makes \a range the one that a reset returns to, like setBaseRangeX();
        otherwise the same as setRangeY(). */
    void setBaseRangeY(Span range);
    void setBaseRangeY(double min, double max);
    /*! Makes \a min to \a max the range of the argument. Compared without the tolerance around
        zero: leaving 0 is a change, however small. */
    void setRangeArg(double min, double max);
    /*! Sets \a format. Switching to a round format resets a zoom before formatChanged() is emitted.
        */
    void setFormat(TraceFormat format);
    /*! Sets the flag that the Smith chart is mirrored to \a isLeftSmith. */
    void setLeftSmith(bool isLeftSmith);
    void setIsLogX(bool isLogX);
    /*! Sets the flag to \a isZoomed, and nothing else: the ranges stay. See zoomIn() and
        zoomReset(). */
    void setZoomed(bool isZoomed);
    void setSize(const QSizeF &size);

    /*! \qmlmethod void TraceDomain::shiftYRange(real val)
        Adds \a val, in data units, to both ends of \l yRange and emits its signal, also for 0.
        While zoomed the base range stays. */
    Q_INVOKABLE void shiftYRange(double val);

    /*! Zooms to the data ranges \a x and \a y, as passed: not limited to the base ranges, of any
        size and order. A round domain does not zoom, and the ranges already in force are no zoom.
        Emits zoomedChanged() first, where no zoom was in force, then xRangeChanged() and
        yRangeChanged(). */
    void zoomIn(Span x, Span y);
    /*! Zooms to \a rect, in pixels of the item; transformGeometryToDomain() makes data ranges of
        it. A round domain does not zoom. */
    void zoomIn(const QRectF &rect);
    /*! Returns to the base ranges when zoomed. They are read after zoomedChanged() has been
        emitted, so that a handler may still change them. */
    void zoomReset();

    /*! Data value at the pixel column \a geometryX. A round format uses the largest centred square
        of the item. A width or range of 0 gives infinities or NaN. */
    [[nodiscard]] double geometryToDomainX(double geometryX) const;
    /*! Data value at the pixel row \a geometryY, which grows downwards while the data of a
        cartesian domain grow upwards. In a round format it is not the counterpart of
        geometryToDomainX(): there the value grows downwards from minY(), and minY() instead of the
        range is what the side of the square stands for. Use domainPoint() there. */
    [[nodiscard]] double geometryToDomainY(double geometryY) const;
    /*! Data point at the pixel \a point; for a round format its place in the largest centred circle
        of the item, with y growing downwards: (0, 0) in the middle and a magnitude of 1 at the
        boundary, whatever the ranges are. */
    [[nodiscard]] QPointF domainPoint(const QPointF &point) const;
    /*! X span and Y span of the pixel rectangle \a rect, linear whatever the format. */
    [[nodiscard]] std::pair<Span, Span> transformGeometryToDomain(const QRectF &rect) const;

Q_SIGNALS:
    /*! \qmlsignal TraceDomain::updated()
        Never emitted by the library: for the application to tell that the domain as a whole has
        changed. */
    void updated();
    void xRangeChanged();
    void yRangeChanged();
    void baseYRangeChanged();
    void baseXRangeChanged();
    void argRangeChanged();
    /*! The format is \a format now, and isRound() may have changed with it. */
    void formatChanged(TraceDomain::TraceFormat format);
    void sizeChanged(QSizeF);
    void leftSmithChanged(bool);
    void zoomedChanged(bool);
    void isLogXChanged(bool);

private:
    bool m_isLogX = false;
    bool m_isLeftSmith = false;
    Span m_argRange;
    Span m_xRange;
    Span m_yRange;
    bool m_isZoomed = false;
    Span m_baseXRange;
    Span m_baseYRange;
    double m_radiusScale = 1.0;
    QSizeF m_size = {0.0, 0.0};
    TraceFormat m_format = XYFormat;
};

} // namespace Charts

#endif
