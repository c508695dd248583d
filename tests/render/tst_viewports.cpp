// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <cmath>

using namespace Charts;

Q_DECLARE_METATYPE(Charts::ViewPort)

/*! Where a trace's view port lies in the chart: over all of it or in the largest centred square. */
class tst_Viewports : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void area_data();
    void area();
    void dataRectangle_data();
    void dataRectangle();
    void eachTraceHasItsOwn();
    void cutAtTheSquare();
    void switchedWhileShown();
    void degenerate_data();
    void degenerate();
};

void tst_Viewports::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Viewports::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Viewports::area_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("isSquared");
    QTest::addColumn<QRect>("area");

    const auto row = [](const char *name, const QSize &size, bool isSquared, const QRect &area) {
        QTest::newRow(name) << size << isSquared << area;
    };
    row("plain, wide", {800, 600}, false, {0, 0, 800, 600});
    row("plain, tall", {150, 401}, false, {0, 0, 150, 401});
    row("squared, wide", {800, 600}, true, {100, 0, 600, 600});
    row("squared, tall", {600, 800}, true, {0, 100, 600, 600});
    row("squared, square", {200, 200}, true, {0, 0, 200, 200});
    row("squared, odd wide", {401, 300}, true, {50, 0, 300, 300});
    row("squared, odd tall", {300, 401}, true, {0, 50, 300, 300});
    row("squared, both odd", {403, 300}, true, {51, 0, 300, 300});
    row("squared, one pixel wider", {301, 300}, true, {0, 0, 300, 300});
    row("squared, one pixel taller", {300, 301}, true, {0, 0, 300, 300});
    row("squared, very wide", {700, 100}, true, {300, 0, 100, 100});
}

void tst_Viewports::area()
{
    QFETCH(QSize, size);
    QFETCH(bool, isSquared);
    QFETCH(QRect, area);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    TestTrace trace;
    trace.data.setDrawType(DrawType::Points);
    trace.data.setViewPort({-1.0F, -1.0F, 2.0F, 2.0F});
    trace.data.setSquaredViewPort(isSquared);
    trace.data.setColor(Qt::red);
    trace.data.setWidth(5.0F);
    const std::vector<QPointF> places = {{0.0, 0.0}, {-0.75, -0.5}, {0.75, 0.5}, {-0.75, 0.75}};
    trace.setPoints(PixelTrace::opaque(places));
    window.chart()->addTrace(&trace);

    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    const auto viewports = log.calls("glViewport");
    QCOMPARE(viewports.size(), std::size_t(1));
    QCOMPARE(QRect(viewports[0].integer(0), viewports[0].integer(1), viewports[0].integer(2),
                     viewports[0].integer(3)),
            area);

    ExpectedPicture expected(size);
    // The centres are at any fraction of a pixel.
    expected.setSlack(0.6);
    for (const QPointF &place : places) {
        const QPointF centre(area.x() + (place.x() + 1.0) / 2.0 * area.width(),
                area.y() + (place.y() + 1.0) / 2.0 * area.height());
        expected.addPoint(centre, 5.0, Qt::red);
    }
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Viewports::dataRectangle_data()
{
    QTest::addColumn<ViewPort>("viewPort");

    QTest::newRow("unit") << ViewPort{0.0F, 0.0F, 1.0F, 1.0F};
    QTest::newRow("pixels") << ViewPort{0.0F, 0.0F, 200.0F, 100.0F};
    QTest::newRow("offset") << ViewPort{10.0F, -5.0F, 20.0F, 10.0F};
    QTest::newRow("negative") << ViewPort{-1000.0F, -3000.0F, 500.0F, 20.0F};
    QTest::newRow("tiny") << ViewPort{0.0F, 0.0F, 1e-12F, 1e-9F};
    QTest::newRow("huge") << ViewPort{-1e12F, -1e12F, 2e12F, 2e12F};
    QTest::newRow("mirrored") << ViewPort{100.0F, 50.0F, -100.0F, -50.0F};
}

void tst_Viewports::dataRectangle()
{
    QFETCH(ViewPort, viewPort);

    const QSize size(200, 100);
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    TestTrace trace;
    trace.data.setDrawType(DrawType::Points);
    trace.data.setViewPort(viewPort);
    trace.data.setColor(Qt::red);
    trace.data.setWidth(5.0F);
    // One point a quarter of the way to the right and an eighth up, one in the middle.
    const auto at = [&viewPort](double right, double up) {
        return QPointF(double{viewPort.x} + right * double{viewPort.width},
                double{viewPort.y} + up * double{viewPort.height});
    };
    trace.setPoints(PixelTrace::opaque({at(0.25, 0.125), at(0.5, 0.5)}));
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    expected.setSlack(0.6);
    expected.addPoint({50.0, 12.5}, 5.0, Qt::red);
    expected.addPoint({100.0, 50.0}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Viewports::eachTraceHasItsOwn()
{
    const QSize size(200, 100);
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    // The same data, each trace with another view port.
    std::vector<std::unique_ptr<PixelTrace>> traces;
    for (const QColor &color : {QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue)}) {
        traces.push_back(std::make_unique<PixelTrace>(size, DrawType::Points, 5.0F, color));
        traces.back()->setPoints(std::vector<QPointF>{{20.5, 20.5}});
        window.chart()->addTrace(traces.back().get());
    }
    traces[1]->data.setViewPort({0.0F, 0.0F, 100.0F, 50.0F});
    traces[2]->data.setViewPort({0.0F, 0.0F, 50.0F, 50.0F});
    traces[2]->data.setSquaredViewPort(true);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    expected.setSlack(0.6);
    expected.addPoint({20.5, 20.5}, 5.0, Qt::red);
    expected.addPoint({41.0, 41.0}, 5.0, Qt::green);
    expected.addPoint({91.0, 41.0}, 5.0, Qt::blue);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Viewports::cutAtTheSquare()
{
    const QSize size(200, 100);
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    TestTrace trace;
    trace.data.setDrawType(DrawType::LineStrip);
    trace.data.setSquaredViewPort(true);
    trace.data.setColor(Qt::red);
    trace.data.setWidth(5.0F);
    trace.setPoints({{-3.0F, 0.505F}, {3.0F, 0.505F}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    expected.addLine({50.0, 50.5}, {150.0, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Viewports::switchedWhileShown()
{
    const QSize size(200, 100);
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    TestTrace trace;
    trace.data.setDrawType(DrawType::Points);
    trace.data.setColor(Qt::red);
    trace.data.setWidth(5.0F);
    trace.setPoints({{0.25F, 0.505F}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    const auto expectedAt = [&size](double x) {
        ExpectedPicture expected(size);
        expected.setSlack(0.6);
        expected.addPoint({x, 50.5}, 5.0, Qt::red);
        return expected;
    };
    QCOMPARE(expectedAt(50.0).compare(window.picture()), QString());
    trace.data.setSquaredViewPort(true);
    QCOMPARE(expectedAt(75.0).compare(window.picture()), QString());
    trace.data.setViewPort({0.0F, 0.0F, 0.5F, 1.0F});
    QCOMPARE(expectedAt(100.0).compare(window.picture()), QString());
    trace.data.setSquaredViewPort(false);
    trace.data.setViewPort({0.2F, 0.0F, 0.2F, 1.0F});
    QCOMPARE(expectedAt(50.0).compare(window.picture()), QString());
}

void tst_Viewports::degenerate_data()
{
    QTest::addColumn<ViewPort>("viewPort");

    const auto nan = std::nanf("");
    const auto infinite = HUGE_VALF;
    QTest::newRow("no width") << ViewPort{0.0F, 0.0F, 0.0F, 100.0F};
    QTest::newRow("no height") << ViewPort{0.0F, 0.0F, 200.0F, 0.0F};
    QTest::newRow("nothing") << ViewPort{0.0F, 0.0F, 0.0F, 0.0F};
    QTest::newRow("not a number") << ViewPort{nan, 0.0F, 200.0F, nan};
    QTest::newRow("infinite") << ViewPort{0.0F, -infinite, infinite, infinite};
}

void tst_Viewports::degenerate()
{
    QFETCH(ViewPort, viewPort);

    // What is drawn is not defined, but nothing else suffers: the other trace is as it should be,
    // and so is the same trace with a better view port.
    const QSize size(200, 100);
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace good(size, DrawType::Points, 5.0F, Qt::blue);
    good.setPoints(std::vector<QPointF>{{150.5, 50.5}});
    good.setZ(1.0);
    std::vector<std::unique_ptr<PixelTrace>> traces;
    for (int i = 0; i < 9; ++i) {
        traces.push_back(std::make_unique<PixelTrace>(size, DrawType::Points, 5.0F, Qt::red));
        traces.back()->setPoints(std::vector<QPointF>{{50.5, 50.5}});
        traces.back()->data.setViewPort(viewPort);
        traces.back()->data.setBoundingX(static_cast<BoundingMethod>(i / 3));
        traces.back()->data.setBoundingY(static_cast<BoundingMethod>(i % 3));
        window.chart()->addTrace(traces.back().get());
    }
    window.chart()->addTrace(&good);
    QVERIFY2(window.start(), window.error());
    const QImage picture = window.picture();
    QCOMPARE(QColor(picture.pixel(150, 49)), QColor(Qt::blue));

    for (const auto &trace : traces) {
        trace->data.setViewPort({0.0F, 0.0F, 200.0F, 100.0F});
        QVERIFY2(window.frame(), window.error());
    }
    ExpectedPicture expected(size);
    expected.addPoint({50.5, 50.5}, 5.0, Qt::red);
    expected.addPoint({150.5, 50.5}, 5.0, Qt::blue);
    QCOMPARE(expected.compare(window.picture()), QString());
}

QTEST_MAIN(tst_Viewports)

#include "tst_viewports.moc"
