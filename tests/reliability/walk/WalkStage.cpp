// SPDX-License-Identifier: MIT
#include "WalkStage.h"

#include "TestTrace.h"

WalkStage::WalkStage()
{
    chart.setSize(size);
    // Beside the first: what one window covers of the other would be drawn again.
    m_second.setPosition(window.position() + QPoint(size.width() + 20, 0));
}

bool WalkStage::start()
{
    return window.start() && m_second.start();
}

const char *WalkStage::error() const
{
    return *window.error() ? window.error() : m_second.error();
}

QImage WalkStage::drawAfresh(const Sketches &image, const QSizeF &chartSize, bool antialiasing)
{
    std::vector<std::unique_ptr<TestTrace>> traces;
    WalkChart fresh(m_second.contentItem());
    fresh.setSize(chartSize);
    fresh.setAntialiasing(antialiasing);
    for (const Sketch &sketch : image.traces) {
        TestTrace &trace = *traces.emplace_back(std::make_unique<TestTrace>());
        trace.setPoints(sketch.points);
        trace.data.setDrawType(sketch.look.drawType);
        trace.data.setColor(sketch.look.color);
        trace.data.setWidth(sketch.look.width);
        trace.data.setSquaredViewPort(sketch.look.isSquared);
        trace.data.setViewPort(sketch.look.viewPort);
        trace.data.setBoundingX(sketch.look.boundingX);
        trace.data.setBoundingY(sketch.look.boundingY);
        trace.setZ(static_cast<double>(traces.size()));
        fresh.addTrace(&trace);
    }
    return m_second.picture();
}

QString differenceOf(const QImage &picture, const QImage &expected)
{
    if (picture.isNull() || picture.size() != expected.size())
        return QStringLiteral("no picture, or one of another size");
    int count = 0;
    QString first;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) == expected.pixel(x, y))
                continue;
            if (count++ == 0) {
                first = QStringLiteral("first at %1, %2: %3 instead of %4")
                                .arg(x)
                                .arg(y)
                                .arg(picture.pixelColor(x, y).name(),
                                        expected.pixelColor(x, y).name());
            }
        }
    }
    return count == 0 ? QString() : QStringLiteral("%1 pixels differ, ").arg(count) + first;
}
