// SPDX-License-Identifier: MIT
#include "FurnishedScene.h"

#include "ExpectedPicture.h"

#include <QtCore/QRect>
#include <QtGui/QColor>

#include <vector>

using namespace Charts;

namespace {

// The line's rows stay away from the boundary between pixels, and its ends from the other half.
constexpr QPointF from = {20.0, 50.5};
constexpr QPointF to = {80.0, 50.5};
constexpr QRect rightHalf = {100, 0, 100, 100};

int countOf(const QImage &picture, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == color;
    }
    return count;
}

} // namespace

FurnishedScene::FurnishedScene(bool isAntialiased)
    : window(size)
    , trace(size, DrawType::LineStrip, 5.0F, Qt::red)
    , m_isAntialiased(isAntialiased)
    , m_grid(window.contentItem())
    , m_curve(window.contentItem())
{
    window.chart()->setAntialiasing(isAntialiased);
    trace.setPoints(std::vector<QPointF>{from, to});
    // As one that is measured all the time.
    trace.onUpdate = [this] { trace.data.dirtyRange().push({0, 2}); };

    m_grid.setPosition({110.0, 5.0});
    m_grid.setSize({80.0, 50.0});
    m_grid.setLineWidth(3.0);
    m_grid.setInnerGridLinesColor(Qt::blue);
    m_grid.setOuterGridLinesColor(Qt::green);
    m_curve.setPosition({110.0, 65.0});
    m_curve.setSize({80.0, 30.0});
    m_curve.setGeometryTransform(&m_shape);
    m_curve.setP1({0.0, 0.0});
    m_curve.setP2({80.0, 30.0});
    m_curve.setLineWidth(5.0);
    m_curve.setColor(Qt::black);
}

bool FurnishedScene::start()
{
    if (!window.start())
        return false;
    m_furniture = window.picture();
    window.chart()->addTrace(&trace);
    return !m_furniture.isNull();
}

bool FurnishedScene::isFurnished() const
{
    return countOf(m_furniture, Qt::blue) > 20 && countOf(m_furniture, Qt::green) > 20
           && countOf(m_furniture, Qt::black) > 20;
}

QString FurnishedScene::differenceWith(bool isTraceShown)
{
    const QImage picture = window.picture();
    if (picture.isNull())
        return QString::fromLatin1(window.error());
    if (!m_furniture.isNull() && picture.copy(rightHalf) != m_furniture.copy(rightHalf))
        return QStringLiteral("what stands beside the chart is drawn otherwise");
    ExpectedPicture expected(size);
    expected.setBlended(m_isAntialiased);
    expected.setSlack(m_isAntialiased ? 1.2 : 0.3, m_isAntialiased ? 4.0 : 1.0);
    if (isTraceShown)
        expected.addLine(from, to, 5.0, Qt::red);
    expected.ignore(rightHalf);
    return expected.compare(picture);
}
