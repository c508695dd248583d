// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_EXPECTEDPICTURE_H
#define CHARTS_TEST_EXPECTEDPICTURE_H

#include <QtCore/QPoint>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtCore/QRectF>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QImage>

#include <vector>

/*!
    What a picture should look like, worked out from the geometry.

    Rasterisers agree about pixels well inside a shape and well outside of it, not about those at
    its edge. So each pixel has a set of colours that it may show: adding a shape leaves one colour
    to the pixels inside it by more than the slack, and one more choice to those less than the
    slack away from its edge, on either side.

    Coordinates are pixels with the origin at the bottom left and y upwards, as they are in a
    trace whose view port has the size of the chart: the centre of the lowest left pixel is
    (0.5, 0.5).
*/
class ExpectedPicture
{
public:
    ExpectedPicture(const QSize &size, const QColor &background = Qt::white);

    /*! The slack for the shapes added from now on: beside a line or around a point (default 0.3),
        and beyond a line's ends (default 1, since a driver may leave out the last pixel). */
    void setSlack(double beside, double beyondEnds = 1.0);
    /*! Whether pixels at edges may also show mixtures of their colours. Default false. */
    void setBlended(bool isBlended) { m_isBlended = isBlended; }

    /*! A dot of \a diameter pixels, round or square. */
    void addPoint(const QPointF &centre, double diameter, const QColor &color);
    /*! A straight line, \a width pixels wide. A line too thin to have an inside still has to show
        in each pixel column it runs through, or row if it is steep. */
    void addLine(const QPointF &from, const QPointF &to, double width, const QColor &color);
    /*! Lines between successive points. */
    void addLineStrip(const std::vector<QPointF> &points, double width, const QColor &color);
    /*! Accepts anything within \a rect. */
    void ignore(const QRectF &rect);

    /*! Where \a picture differs, or an empty text. */
    [[nodiscard]] QString compare(const QImage &picture) const;

private:
    struct Unbroken
    {
        std::vector<QPoint> oneOf;
        QRgb color;
    };

    enum class Relation {
        Outside,
        AtTheEdge,
        Inside,
    };

    template<typename RelationOf>
    void add(const QColor &color, RelationOf &&relationOf);
    void expectUnbroken(const QPointF &from, const QPointF &to, double width, QRgb color);
    [[nodiscard]] bool isAccepted(QPoint pixel, QRgb color) const;
    [[nodiscard]] std::size_t indexOf(QPoint pixel) const;

    QSize m_size;
    double m_slack = 0.3;
    double m_endSlack = 1.0;
    bool m_isBlended = false;
    // Row by row from the top. No colour at all: everything is accepted.
    std::vector<std::vector<QRgb>> m_colors;
    std::vector<Unbroken> m_unbroken;
};

#endif
