// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_PIXELTRACE_H
#define CHARTS_TEST_PIXELTRACE_H

#include "TestTrace.h"

#include <QtCore/QPointF>
#include <QtCore/QSize>

/*! A trace whose data units are the pixels of a chart of a given size, from its bottom left. */
class PixelTrace : public TestTrace
{
public:
    PixelTrace(const QSize &size, Charts::DrawType drawType, float width, const QColor &color)
    {
        data.setViewPort(
                {0.0F, 0.0F, static_cast<float>(size.width()), static_cast<float>(size.height())});
        data.setDrawType(drawType);
        data.setWidth(width);
        data.setColor(color);
    }

    using TestTrace::setPoints;
    /*! Sets points of full opacity. */
    void setPoints(const std::vector<QPointF> &points) { TestTrace::setPoints(opaque(points)); }

    [[nodiscard]] static std::vector<Charts::TracePoint> opaque(const std::vector<QPointF> &points)
    {
        std::vector<Charts::TracePoint> result;
        result.reserve(points.size());
        for (const QPointF &point : points)
            result.push_back({static_cast<float>(point.x()), static_cast<float>(point.y()), 1.0F});
        return result;
    }
};

#endif
