// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_ITEMPICTURE_H
#define CHARTS_TEST_ITEMPICTURE_H

#include "ChartWindow.h"

#include <QtCore/QPointF>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

#include <algorithm>
#include <array>
#include <cmath>

/*!
    How much of a smooth line shows at a distance from its middle: everything within a tenth of its
    width, less and less up to nine tenths. Both in pixels of the item, whatever they are on the
    screen.
*/
inline double smoothCoverage(double distance, double width)
{
    return std::clamp((0.9 * width - std::abs(distance)) / (0.8 * width), 0.0, 1.0);
}

/*! By how many of 255 levels the colour at the edge of a smooth line changes with the distance. */
inline double levelsPerPixel(double width)
{
    return 255.0 / (0.8 * width);
}

/*! The largest difference of the two colours' channels. */
inline int distanceOf(const QColor &a, const QColor &b)
{
    return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
            std::abs(a.blue() - b.blue())});
}

/*! What a pixel shows once colours are drawn over it, one after the other. */
class PixelBlend
{
public:
    explicit PixelBlend(const QColor &background)
        : m_channels({background.redF(), background.greenF(), background.blueF()})
    {
    }

    void add(const QColor &color, double coverage)
    {
        const double alpha = coverage * double(color.alphaF());
        const std::array<double, 3> channels = {color.redF(), color.greenF(), color.blueF()};
        for (std::size_t i = 0; i < channels.size(); ++i)
            m_channels[i] += alpha * (channels[i] - m_channels[i]);
        if (alpha == 1.0)
            m_isKnown = true;
    }
    /*! Channels that are taken as multiplied by the alpha already, whether they are or not. */
    void addPremultiplied(const QColor &color, double strength)
    {
        const double alpha = strength * double(color.alphaF());
        const std::array<double, 3> channels = {color.redF(), color.greenF(), color.blueF()};
        for (std::size_t i = 0; i < channels.size(); ++i)
            m_channels[i] = std::min(1.0, (1.0 - alpha) * m_channels[i] + strength * channels[i]);
        if (alpha == 1.0)
            m_isKnown = true;
    }
    /*! Either drawn over or not. */
    void doubt() { m_isKnown = false; }

    [[nodiscard]] bool isKnown() const { return m_isKnown; }
    [[nodiscard]] QColor color() const
    {
        return QColor::fromRgbF(float(m_channels[0]), float(m_channels[1]), float(m_channels[2]));
    }

private:
    std::array<double, 3> m_channels;
    bool m_isKnown = true;
};

/*! A window's picture, in the coordinates of an item in it. */
class ItemPicture
{
public:
    ItemPicture(ChartWindow &window, const QQuickItem &item)
        : m_image(window.picture())
        , m_origin(item.mapToScene({}))
        , m_ratio(window.effectiveDevicePixelRatio())
        , m_isComplete(m_image.size() == window.size() * m_ratio)
    {
    }

    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    [[nodiscard]] const QImage &image() const { return m_image; }
    [[nodiscard]] double ratio() const { return m_ratio; }
    /*! The middle of a pixel of the screen. */
    [[nodiscard]] QPointF placeOf(QPoint pixel) const
    {
        return (QPointF(pixel) + QPointF(0.5, 0.5)) / m_ratio - m_origin;
    }
    [[nodiscard]] QPoint pixelAt(const QPointF &place) const
    {
        const QPointF pixel = (place + m_origin) * m_ratio;
        return {int(std::floor(pixel.x())), int(std::floor(pixel.y()))};
    }
    [[nodiscard]] QColor colorAt(const QPointF &place) const
    {
        return m_image.pixelColor(pixelAt(place));
    }

    /*! Calls \a visit with each pixel and its place. */
    template<typename Visit>
    void forEachPixel(Visit &&visit) const
    {
        for (int row = 0; row < m_image.height(); ++row) {
            for (int column = 0; column < m_image.width(); ++column)
                visit(QPoint(column, row), placeOf({column, row}));
        }
    }

private:
    QImage m_image;
    QPointF m_origin;
    double m_ratio;
    bool m_isComplete;
};

/*! Counts the pixels that are wrong and keeps the first of them. */
class Mismatches
{
public:
    void check(QPoint pixel, const QColor &actual, const QColor &expected, double tolerance)
    {
        ++m_checked;
        if (distanceOf(actual, expected) > tolerance && ++m_count == 1) {
            m_first = QStringLiteral("(%1, %2) is %3, expected %4")
                              .arg(pixel.x())
                              .arg(pixel.y())
                              .arg(actual.name(), expected.name());
        }
    }

    [[nodiscard]] int checked() const { return m_checked; }
    /*! Nothing if there are none. */
    [[nodiscard]] QString text() const
    {
        return m_count == 0 ? QString()
                            : QStringLiteral("%1 of %2 pixels differ; %3")
                                      .arg(m_count)
                                      .arg(m_checked)
                                      .arg(m_first);
    }

private:
    int m_checked = 0;
    int m_count = 0;
    QString m_first;
};

#endif
