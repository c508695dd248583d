// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <array>

using namespace Charts;

using Points = std::vector<QPointF>;
Q_DECLARE_METATYPE(Points)

/*! Points and lines: where they are drawn, how wide, in which colour and in which order. */
class tst_Drawing : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void points_data();
    void points();
    void lines_data();
    void lines();
    void nothingToSee_data();
    void nothingToSee();
    void unknownDrawType();
    void anyFilledRangeDrawsAll();
    void noMoreThanTheSizeIsDrawn();
    void colors_data();
    void colors();
    void stackingOrder_data();
    void stackingOrder();
    void visibility();
    void drawnTwice();
    void placedInTheWindow();

private:
    static constexpr QSize size = {200, 100};
};

void tst_Drawing::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Drawing::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Drawing::points_data()
{
    QTest::addColumn<float>("width");
    QTest::addColumn<Points>("centres");

    // A point of odd size sits on a pixel's centre, one of even size on a pixel's corner.
    QTest::newRow("1") << 1.0F << Points{{50.5, 20.5}, {150.5, 80.5}, {0.5, 0.5}, {199.5, 99.5}};
    QTest::newRow("2") << 2.0F << Points{{50.0, 20.0}, {150.0, 80.0}};
    QTest::newRow("3") << 3.0F << Points{{50.5, 20.5}, {150.5, 80.5}};
    QTest::newRow("8") << 8.0F << Points{{50.0, 20.0}, {150.0, 80.0}, {100.0, 4.0}};
    QTest::newRow("over the edge") << 9.0F << Points{{0.5, 50.5}, {199.5, 50.5}, {100.5, 99.5}};
}

void tst_Drawing::points()
{
    QFETCH(float, width);
    QFETCH(Points, centres);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, width, Qt::red);
    trace.setPoints(centres);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    for (const QPointF &centre : centres)
        expected.addPoint(centre, width, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::lines_data()
{
    QTest::addColumn<float>("width");
    QTest::addColumn<Points>("strip");
    QTest::addColumn<double>("slack");

    const auto straight = [](const char *name, float width, const QPointF &from,
                                  const QPointF &to) {
        QTest::newRow(name) << width << Points{from, to} << 0.3;
    };
    straight("horizontal, 1", 1.0F, {20.5, 30.5}, {180.5, 30.5});
    straight("horizontal, 3", 3.0F, {20.5, 30.5}, {180.5, 30.5});
    straight("horizontal, 8", 8.0F, {20.0, 30.0}, {180.0, 30.0});
    straight("vertical, 1", 1.0F, {60.5, 10.5}, {60.5, 90.5});
    straight("vertical, 3", 3.0F, {60.5, 90.5}, {60.5, 10.5});
    straight("vertical, 8", 8.0F, {60.0, 10.0}, {60.0, 90.0});
    straight("from edge to edge", 3.0F, {0.0, 50.5}, {200.0, 50.5});
    straight("through the edges", 3.0F, {-100.0, 50.5}, {300.0, 50.5});

    // Drivers widen a slanted line across or along the axes.
    const Points zigzag = {{10.5, 20.5}, {90.5, 30.5}, {100.5, 80.5}, {190.5, 70.5}};
    QTest::newRow("slanted, 1") << 1.0F << zigzag << 0.8;
    QTest::newRow("slanted, 3") << 3.0F << zigzag << 1.2;
    QTest::newRow("slanted, 8") << 8.0F << zigzag << 1.2;
    QTest::newRow("diagonal, 1") << 1.0F << Points{{20.5, 10.5}, {100.5, 90.5}} << 0.8;
    QTest::newRow("back and forth")
            << 3.0F << Points{{20.5, 50.5}, {120.5, 50.5}, {60.5, 50.5}} << 0.3;
    QTest::newRow("point of no length in between")
            << 3.0F << Points{{20.5, 50.5}, {100.5, 50.5}, {100.5, 50.5}, {180.5, 50.5}} << 0.3;
}

void tst_Drawing::lines()
{
    QFETCH(float, width);
    QFETCH(Points, strip);
    QFETCH(double, slack);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, width, Qt::blue);
    trace.setPoints(strip);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    // Where two wide lines meet, the gap outside of the angle is as wide as the lines.
    expected.setSlack(slack, strip.size() > 2 ? 1.0 + width / 2.0 : 1.0);
    expected.addLineStrip(strip, width, Qt::blue);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::nothingToSee_data()
{
    QTest::addColumn<DrawType>("drawType");
    QTest::addColumn<Points>("points");

    QTest::newRow("no points") << DrawType::Points << Points{};
    QTest::newRow("empty strip") << DrawType::LineStrip << Points{};
    QTest::newRow("strip of one point") << DrawType::LineStrip << Points{{100.5, 50.5}};
    QTest::newRow("points outside")
            << DrawType::Points
            << Points{{-50.0, 50.0}, {250.0, 50.0}, {100.0, -50.0}, {100.0, 150.0}};
    QTest::newRow("line outside") << DrawType::LineStrip << Points{{-50.0, 120.0}, {250.0, 120.0}};
    QTest::newRow("far outside") << DrawType::LineStrip << Points{{1e30, 1e30}, {1e30, 2e30}};
    QTest::newRow("not a number") << DrawType::Points << Points{{qQNaN(), 50.0}, {100.0, qQNaN()}};
    QTest::newRow("infinite") << DrawType::Points << Points{{qInf(), 50.0}, {100.0, -qInf()}};
}

void tst_Drawing::nothingToSee()
{
    QFETCH(DrawType, drawType);
    QFETCH(Points, points);

    ChartWindow window(size);
    PixelTrace trace(size, drawType, 3.0F, Qt::red);
    trace.setPoints(points);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());

    // The renderer still works.
    trace.setPoints(Points{{50.5, 50.5}, {150.5, 50.5}});
    trace.data.setDrawType(DrawType::LineStrip);
    ExpectedPicture expected(size);
    expected.setBlended(true);
    expected.addLine({50.5, 50.5}, {150.5, 50.5}, 3.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::unknownDrawType()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace points(size, DrawType::Points, 7.0F, Qt::red);
    points.setPoints(Points{{50.5, 50.5}});
    PixelTrace line(size, DrawType::LineStrip, 1.0F, Qt::green);
    line.setPoints(Points{{20.5, 10.5}, {180.5, 10.5}});
    line.setZ(1.0);
    PixelTrace unknown(size, static_cast<DrawType>(7), 3.0F, Qt::blue);
    unknown.setPoints(Points{{100.5, 50.5}, {150.5, 50.5}});
    unknown.setZ(2.0);
    for (TestTrace *trace : {&points, &line, &unknown})
        window.chart()->addTrace(trace);
    QVERIFY2(window.start(), window.error());

    // As points, as large as those of the last trace that was drawn as points.
    ExpectedPicture expected(size);
    expected.addPoint({50.5, 50.5}, 7.0, Qt::red);
    expected.addLine({20.5, 10.5}, {180.5, 10.5}, 1.0, Qt::green);
    expected.addPoint({100.5, 50.5}, 7.0, Qt::blue);
    expected.addPoint({150.5, 50.5}, 7.0, Qt::blue);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::anyFilledRangeDrawsAll()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(Points{{50.5, 50.5}, {100.5, 50.5}, {150.5, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    trace.data.filledRange().pop(true);
    trace.data.filledRange().push({1, 1});
    trace.data.setColor(Qt::blue);

    ExpectedPicture expected(size);
    for (const double x : {50.5, 100.5, 150.5})
        expected.addPoint({x, 50.5}, 5.0, Qt::blue);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::noMoreThanTheSizeIsDrawn()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(Points{{50.5, 50.5}, {100.5, 50.5}, {150.5, 50.5}});
    // Three points, of which two are said to be there.
    trace.data.filledRange().setSize(2);
    trace.data.filledRange().push({0, 2});
    window.chart()->addTrace(&trace);
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    QCOMPARE(log.calls("glDrawArrays").at(0).integer(2), 2);

    ExpectedPicture expected(size);
    expected.addPoint({50.5, 50.5}, 5.0, Qt::red);
    expected.addPoint({100.5, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::colors_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("shown");

    QTest::newRow("red") << QColor(Qt::red) << QColor(255, 0, 0);
    QTest::newRow("three channels") << QColor(1, 128, 254) << QColor(1, 128, 254);
    QTest::newRow("white") << QColor(Qt::white) << QColor(255, 255, 255);
    QTest::newRow("black") << QColor(Qt::black) << QColor(0, 0, 0);
    QTest::newRow("invalid") << QColor() << QColor(0, 0, 0);
    QTest::newRow("half transparent") << QColor(200, 100, 50, 128) << QColor(200, 100, 50);
    QTest::newRow("transparent") << QColor(200, 100, 50, 0) << QColor(200, 100, 50);
    QTest::newRow("hue") << QColor::fromHsv(120, 255, 255) << QColor(0, 255, 0);
    QTest::newRow("four inks") << QColor::fromCmyk(0, 255, 255, 0) << QColor(255, 0, 0);
    QTest::newRow("brighter than white")
            << QColor::fromRgbF(2.0F, 0.0F, -1.0F) << QColor(255, 0, 0);
}

void tst_Drawing::colors()
{
    QFETCH(QColor, color);
    QFETCH(QColor, shown);

    // Grey, so that no colour and no mixture with it is taken for the background.
    const QColor background(90, 90, 90);
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    window.setColor(background);
    PixelTrace points(size, DrawType::Points, 9.0F, color);
    points.setPoints(Points{{50.5, 80.5}});
    PixelTrace line(size, DrawType::LineStrip, 5.0F, color);
    line.setPoints(Points{{20.5, 30.5}, {180.5, 30.5}});
    window.chart()->addTrace(&points);
    window.chart()->addTrace(&line);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size, background);
    expected.addPoint({50.5, 80.5}, 9.0, shown);
    expected.addLine({20.5, 30.5}, {180.5, 30.5}, 5.0, shown);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::stackingOrder_data()
{
    QTest::addColumn<QList<double>>("z");
    QTest::addColumn<QList<int>>("fromBelow");

    QTest::newRow("as added") << QList<double>{0.0, 1.0, 2.0} << QList<int>{0, 1, 2};
    QTest::newRow("reversed") << QList<double>{2.0, 1.0, 0.0} << QList<int>{2, 1, 0};
    QTest::newRow("negative") << QList<double>{0.0, -3.5, -3.25} << QList<int>{1, 2, 0};
    QTest::newRow("close") << QList<double>{1.0, 1.0 + 1e-15, 1.0 - 1e-15} << QList<int>{2, 0, 1};
    QTest::newRow("infinite") << QList<double>{qInf(), 0.0, -qInf()} << QList<int>{2, 1, 0};
}

void tst_Drawing::stackingOrder()
{
    QFETCH(QList<double>, z);
    QFETCH(QList<int>, fromBelow);

    // Three bars through one place.
    const std::array<QColor, 3> colors = {Qt::red, Qt::green, Qt::blue};
    const std::array<Points, 3> bars = {
            Points{{20.0, 50.0}, {180.0, 50.0}},
            Points{{100.0, 10.0}, {100.0, 90.0}},
            Points{{80.0, 52.0}, {120.0, 52.0}},
    };
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    std::vector<std::unique_ptr<PixelTrace>> traces;
    for (std::size_t i = 0; i < 3; ++i) {
        traces.push_back(std::make_unique<PixelTrace>(size, DrawType::LineStrip, 10.0F, colors[i]));
        traces[i]->setPoints(bars[i]);
        traces[i]->setZ(z.at(static_cast<qsizetype>(i)));
        window.chart()->addTrace(traces[i].get());
    }
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    for (const int index : fromBelow) {
        const auto i = static_cast<std::size_t>(index);
        expected.addLineStrip(bars[i], 10.0, colors[i]);
    }
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Drawing::visibility()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace below(size, DrawType::LineStrip, 5.0F, Qt::red);
    below.setPoints(Points{{20.5, 50.5}, {180.5, 50.5}});
    PixelTrace above(size, DrawType::LineStrip, 5.0F, Qt::blue);
    above.setPoints(Points{{20.5, 50.5}, {180.5, 50.5}});
    above.setZ(1.0);
    window.chart()->addTrace(&below);
    window.chart()->addTrace(&above);
    QVERIFY2(window.start(), window.error());

    const auto expectedWith = [](const QColor &color) {
        ExpectedPicture expected(size);
        expected.addLine({20.5, 50.5}, {180.5, 50.5}, 5.0, color);
        return expected;
    };
    QCOMPARE(expectedWith(Qt::blue).compare(window.picture()), QString());
    above.data.setVisible(false);
    QCOMPARE(expectedWith(Qt::red).compare(window.picture()), QString());
    below.data.setVisible(false);
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
    above.data.setVisible(true);
    QCOMPARE(expectedWith(Qt::blue).compare(window.picture()), QString());

    // The trace's own property is for its subclass, which did not carry it into the data.
    above.setVisible(false);
    above.data.setColor(Qt::green);
    QCOMPARE(expectedWith(Qt::green).compare(window.picture()), QString());
}

void tst_Drawing::drawnTwice()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::Points, 5.0F, Qt::red);
    trace.setPoints(Points{{50.5, 50.5}, {150.5, 50.5}});
    window.chart()->addTrace(&trace);
    window.chart()->addTrace(&trace);

    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    QCOMPARE(log.count("glDrawArrays"), 2);
    QCOMPARE(log.count("glBufferData"), 1);
    QCOMPARE(log.count("glBufferSubData"), 1);

    window.chart()->removeTrace(&trace);
    ExpectedPicture expected(size);
    expected.setBlended(true);
    expected.addPoint({50.5, 50.5}, 5.0, Qt::red);
    expected.addPoint({150.5, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
    QCOMPARE(log.count("glDrawArrays"), 3);
    QCOMPARE(log.count("glBufferData"), 1);
    QCOMPARE(log.count("glBufferSubData"), 1);
}

void tst_Drawing::placedInTheWindow()
{
    const QSize chartSize(80, 40);
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    window.chart()->setPosition({30.0, 20.0});
    window.chart()->setSize(chartSize);
    PixelTrace trace(chartSize, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(Points{{-20.0, 10.5}, {100.0, 10.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    // The chart's bottom left is 40 pixels above the window's. Nothing is drawn beside the chart.
    ExpectedPicture expected(size);
    expected.setSlack(0.3, 0.3);
    expected.addLine({30.0, 50.5}, {110.0, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

QTEST_MAIN(tst_Drawing)

#include "tst_drawing.moc"
