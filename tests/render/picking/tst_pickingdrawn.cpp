// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "PointedWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! What is not drawn of a trace is not hit; what is drawn elsewhere is hit there. */
class tst_PickingDrawn : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void fadedLine();
    void fadedPoints();
    void notFilled();
    void bounded_data();
    void bounded();
    void boundedLine_data();
    void boundedLine();
    void squared_data();
    void squared();

private:
    static constexpr QSize size = {200, 100};
};

void tst_PickingDrawn::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_PickingDrawn::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_PickingDrawn::fadedLine()
{
    // The opacity falls from 1 to 0 over 160 pixels, under 0.1 at x = 20 + 0.9 * 160.
    PointedWindow window(size);
    PixelTrace &trace = window.addLine(u"line"_s, 4.0F, {});
    trace.setPoints(std::vector<TracePoint>{{20.0F, 50.5F, 1.0F}, {180.0F, 50.5F, 0.0F}});
    QVERIFY2(window.start(), window.error());

    QCOMPARE(window.hits({{30.0, 50.0}, {161.0, 50.0}, {167.0, 50.0}, {178.0, 50.0}}),
            QStringList({u"line"_s, u"line"_s, u"chart"_s, u"chart"_s}));
}

void tst_PickingDrawn::fadedPoints()
{
    PointedWindow window(size);
    PixelTrace &below = window.add(u"below"_s, DrawType::Points, 9.0F, {});
    PixelTrace &above = window.add(u"above"_s, DrawType::Points, 5.0F, {});
    const std::vector<float> opacities = {1.0F, 0.5F, 0.11F, 0.09F, 0.0F, -1.0F};
    std::vector<TracePoint> points;
    QList<QPointF> places;
    for (const float opacity : opacities) {
        const double x = 20.0 * static_cast<double>(points.size() + 1);
        points.push_back({static_cast<float>(x) + 0.5F, 50.5F, opacity});
        places.append(QPointF(x, 50.0));
    }
    above.setPoints(points);
    for (TracePoint &point : points)
        point.opacity = 1.0F;
    below.setPoints(points);
    QVERIFY2(window.start(), window.error());

    QCOMPARE(window.hits(places),
            QStringList({u"above"_s, u"above"_s, u"above"_s, u"below"_s, u"below"_s, u"below"_s}));
}

void tst_PickingDrawn::notFilled()
{
    PointedWindow window(size);
    window.addLine(u"below"_s, 4.0F, {{20.0, 50.5}, {180.0, 50.5}});
    PixelTrace &above = window.addLine(u"above"_s, 4.0F, {{20.0, 50.5}, {180.0, 50.5}});
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hit({100.0, 50.0}), u"above"_s);

    // What is not drawn is not hit.
    above.data.filledRange().pop(true);
    QCOMPARE(window.hit({100.0, 50.0}), u"below"_s);
    above.data.filledRange().push({0, 2});
    QCOMPARE(window.hit({100.0, 50.0}), u"above"_s);
}

void tst_PickingDrawn::bounded_data()
{
    QTest::addColumn<BoundingMethod>("method");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPointF>("place");

    const auto rows = [](const char *name, const QPointF &point, const QPointF &place) {
        QTest::addRow("%s, clamped", name) << BoundingMethod::Clamp << point << place;
        QTest::addRow("%s, flattened", name) << BoundingMethod::ExtraMatrices << point << place;
        QTest::addRow("%s, unbounded", name) << BoundingMethod::Unbounded << point << place;
    };
    // Outside by 30 pixels; shown, if at all, on the line one pixel inside the edge.
    rows("top", {100.5, 130.0}, {100.0, 2.0});
    rows("bottom", {100.5, -30.0}, {100.0, 99.0});
    rows("left", {-30.0, 40.5}, {1.0, 60.0});
    rows("right", {230.0, 40.5}, {198.0, 60.0});
}

void tst_PickingDrawn::bounded()
{
    QFETCH(BoundingMethod, method);
    QFETCH(QPointF, point);
    QFETCH(QPointF, place);

    PointedWindow window(size);
    PixelTrace &trace = window.add(u"point"_s, DrawType::Points, 5.0F, {point});
    trace.data.setBoundingX(method);
    trace.data.setBoundingY(method);
    QVERIFY2(window.start(), window.error());

    const QPointF centre(100.0, 50.0);
    const QPointF inwards = centre - place;
    const QPointF further = place + inwards / std::hypot(inwards.x(), inwards.y()) * 10.0;
    QCOMPARE(window.hits({place, further}),
            QStringList(
                    {method == BoundingMethod::Unbounded ? u"chart"_s : u"point"_s, u"chart"_s}));
}

void tst_PickingDrawn::boundedLine_data()
{
    QTest::addColumn<BoundingMethod>("method");
    QTest::addColumn<QStringList>("hits");

    // At the upper edge under the tip, at the upper edge beside it, on the steep way up, and where
    // the way up would be if the tip were moved down to the edge.
    QTest::newRow("clamped") << BoundingMethod::Clamp
                             << QStringList({u"line"_s, u"chart"_s, u"chart"_s, u"line"_s});
    QTest::newRow("flattened") << BoundingMethod::ExtraMatrices
                               << QStringList({u"line"_s, u"line"_s, u"line"_s, u"chart"_s});
    QTest::newRow("unbounded") << BoundingMethod::Unbounded
                               << QStringList({u"chart"_s, u"chart"_s, u"line"_s, u"chart"_s});
}

void tst_PickingDrawn::boundedLine()
{
    QFETCH(BoundingMethod, method);
    QFETCH(QStringList, hits);

    // A peak that reaches five times as high as the chart. It leaves at x = 65 and comes back at
    // 135; with its tip clamped to the edge it would be at half its height at x = 80.
    PointedWindow window(size);
    PixelTrace &trace = window.addLine(
            u"line"_s, 2.0F, {{20.5, 50.5}, {60.5, 50.5}, {100.5, 500.5}, {140.5, 50.5}});
    trace.data.setBoundingY(method);
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hits({{100.0, 2.0}, {75.0, 2.0}, {62.0, 33.0}, {80.0, 25.0}}), hits);
}

void tst_PickingDrawn::squared_data()
{
    QTest::addColumn<QSize>("chartSize");
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<QPoint>("elsewhere");

    // The point lies at three quarters of the width and a quarter of the height.
    QTest::newRow("wide") << QSize(200, 100) << QPoint(125, 25) << QPoint(150, 25);
    QTest::newRow("tall") << QSize(100, 200) << QPoint(75, 75) << QPoint(75, 50);
    QTest::newRow("square") << QSize(120, 120) << QPoint(90, 30) << QPoint(60, 60);
}

void tst_PickingDrawn::squared()
{
    QFETCH(QSize, chartSize);
    QFETCH(QPoint, pixel);
    QFETCH(QPoint, elsewhere);

    PointedWindow window(chartSize);
    PixelTrace &trace = window.add(u"point"_s, DrawType::Points, 6.0F, {{0.5, -0.5}});
    trace.data.setViewPort({-1.0F, -1.0F, 2.0F, 2.0F});
    trace.data.setSquaredViewPort(true);
    QVERIFY2(window.start(), window.error());

    const auto placeOf = [&](const QPoint &at) {
        return QPointF(at.x(), chartSize.height() - at.y());
    };
    QCOMPARE(window.hits({placeOf(pixel), placeOf(elsewhere)}),
            QStringList({u"point"_s, u"chart"_s}));
}

QTEST_MAIN(tst_PickingDrawn)

#include "tst_pickingdrawn.moc"
