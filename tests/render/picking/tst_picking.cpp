// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "PointedWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>

using namespace Charts;
using namespace Qt::StringLiterals;

using Points = std::vector<QPointF>;
Q_DECLARE_METATYPE(Points)

/*! Which places of a trace are hit by the mouse. */
class tst_Picking : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void besideAThinLine();
    void besideASmallPoint();
    void lineReach_data();
    void lineReach();
    void lineEnds();
    void slantedLine();
    void pointReach_data();
    void pointReach();
    void rowsAndColumns();
    void edgesOfTheChart();
    void outsideOfTheChart();
    void betweenPixels_data();
    void betweenPixels();

private:
    static constexpr QSize size = {200, 100};
    static constexpr int height = 100;
};

void tst_Picking::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_Picking::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Picking::besideAThinLine()
{
    PointedWindow window(size);
    window.addLine(u"line"_s, 1.0F, {{50.5, 10.5}, {50.5, 90.5}});
    QVERIFY2(window.start(), window.error());

    // Six pixels wide instead of one: two to each side are safe, five are not.
    QCOMPARE(window.hit({50.0, 50.0}), u"line"_s);
    QCOMPARE(window.hit({48.0, 50.0}), u"line"_s);
    QCOMPARE(window.hit({52.0, 50.0}), u"line"_s);
    QCOMPARE(window.hit({45.0, 50.0}), u"chart"_s);
    QCOMPARE(window.hit({55.0, 50.0}), u"chart"_s);
}

void tst_Picking::besideASmallPoint()
{
    PointedWindow window(size);
    window.add(u"point"_s, DrawType::Points, 1.0F, {{50.5, 40.5}});
    QVERIFY2(window.start(), window.error());

    QCOMPARE(window.hit({50.0, 60.0}), u"point"_s);
    for (int dx = -3; dx <= 3; ++dx) {
        for (int dy = -3; dy <= 3; ++dy) {
            if (dx != 0 || dy != 0)
                QCOMPARE(window.hit({50.0 + dx, 60.0 + dy}), u"chart"_s);
        }
    }
}

void tst_Picking::lineReach_data()
{
    QTest::addColumn<float>("width");
    QTest::addColumn<bool>("isUpright");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");

    const auto row = [](const char *name, float width, int least, int most) {
        QTest::addRow("upright, %s", name) << width << true << least << most;
        QTest::addRow("level, %s", name) << width << false << least << most;
    };
    // Drivers round a fraction of a pixel either way, and six pixels can not be centred on one.
    row("0.5", 0.5F, 5, 6);
    row("1", 1.0F, 6, 6);
    row("1.5", 1.5F, 6, 7);
    row("2", 2.0F, 7, 7);
    row("3", 3.0F, 8, 8);
    row("4", 4.0F, 9, 9);
    row("5", 5.0F, 10, 10);
    row("20", 20.0F, 25, 25);
}

void tst_Picking::lineReach()
{
    QFETCH(float, width);
    QFETCH(bool, isUpright);
    QFETCH(int, least);
    QFETCH(int, most);

    // Through the centres of column 60, or row 60 from the bottom.
    PointedWindow window(size);
    window.addLine(u"line"_s, width,
            isUpright ? Points{{60.5, 10.5}, {60.5, 90.5}} : Points{{10.5, 60.5}, {110.5, 60.5}});
    QVERIFY2(window.start(), window.error());

    QList<QPointF> places;
    for (int i = 60 - 15; i <= 60 + 15; ++i)
        places.append(isUpright ? QPointF(i, 50.0) : QPointF(50.0, height - i));
    const QStringList hits = window.hits(places);
    QCOMPARE(hits.size(), places.size());

    const auto first = hits.indexOf(u"line"_s);
    const auto last = hits.lastIndexOf(u"line"_s);
    const auto count = last - first + 1;
    QCOMPARE(hits.count(u"line"_s), count);
    QCOMPARE(hits.count(u"chart"_s), hits.size() - count);
    QVERIFY2(count >= least && count <= most, qPrintable(QString::number(count)));
    // As far to the one side as to the other; an even width cannot be centred on a pixel.
    const auto before = 15 - first;
    const auto after = last - 15;
    QVERIFY2(std::abs(before - after) == (count % 2 == 0 ? 1 : 0),
            qPrintable(u"%1 before, %2 after"_s.arg(before).arg(after)));
}

void tst_Picking::lineEnds()
{
    PointedWindow window(size);
    window.addLine(u"line"_s, 1.0F, {{20.5, 50.5}, {80.5, 50.5}});
    QVERIFY2(window.start(), window.error());

    // Wider, but not longer.
    QCOMPARE(window.hits({{18.0, 50.0}, {22.0, 50.0}, {78.0, 50.0}, {83.0, 50.0}}),
            QStringList({u"chart"_s, u"line"_s, u"line"_s, u"chart"_s}));
}

void tst_Picking::slantedLine()
{
    PointedWindow window(size);
    window.addLine(u"line"_s, 1.0F, {{50.5, 10.5}, {130.5, 90.5}});
    QVERIFY2(window.start(), window.error());

    // A driver may widen it across its direction or straight up: three or two pixels to the side.
    const double right = std::sqrt(0.5);
    QList<QPointF> places;
    QStringList expected;
    for (const double distance : {-7.0, -5.0, -1.5, 0.0, 1.5, 5.0, 7.0}) {
        places.append(QPointF(90.0 + distance * right, height - 50.0 + distance * right));
        expected.append(std::abs(distance) < 2.0 ? u"line"_s : u"chart"_s);
    }
    QCOMPARE(window.hits(places), expected);
}

void tst_Picking::pointReach_data()
{
    QTest::addColumn<float>("width");
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<QRect>("pixels");

    QTest::newRow("1") << 1.0F << QPointF(60.5, 40.5) << QRect(60, 40, 1, 1);
    QTest::newRow("2") << 2.0F << QPointF(60.0, 40.0) << QRect(59, 39, 2, 2);
    QTest::newRow("3") << 3.0F << QPointF(60.5, 40.5) << QRect(59, 39, 3, 3);
    QTest::newRow("4") << 4.0F << QPointF(60.0, 40.0) << QRect(58, 38, 4, 4);
    QTest::newRow("9") << 9.0F << QPointF(60.5, 40.5) << QRect(56, 36, 9, 9);
    QTest::newRow("21") << 21.0F << QPointF(60.5, 40.5) << QRect(50, 30, 21, 21);
}

void tst_Picking::pointReach()
{
    QFETCH(float, width);
    QFETCH(QPointF, centre);
    QFETCH(QRect, pixels);

    PointedWindow window(size);
    window.add(u"point"_s, DrawType::Points, width, {centre});
    QVERIFY2(window.start(), window.error());

    // As large as on the screen: a square of pixels, with its corners.
    QList<QPointF> places;
    QStringList expected;
    for (int row = pixels.y() - 4; row < pixels.y() + pixels.height() + 4; ++row) {
        for (int column = pixels.x() - 4; column < pixels.x() + pixels.width() + 4; ++column) {
            places.append(QPointF(column, height - row));
            expected.append(pixels.contains(column, row) ? u"point"_s : u"chart"_s);
        }
    }
    QCOMPARE(window.hits(places), expected);
}

void tst_Picking::rowsAndColumns()
{
    // Columns 50 to 69, rows 40 to 59 from the bottom.
    PointedWindow window(size);
    window.addBlock(u"block"_s, {50, 40, 20, 20});
    QVERIFY2(window.start(), window.error());

    // On the screen it covers y from 40 to 60; the position 40 reads the row above its upper edge,
    // and the position 60, on its lower edge, the lowest row of the block.
    QCOMPARE(window.hits({{60.0, 39.0}, {60.0, 40.0}, {60.0, 41.0}, {60.0, 59.0}, {60.0, 60.0},
                     {60.0, 61.0}}),
            QStringList({u"chart"_s, u"chart"_s, u"block"_s, u"block"_s, u"block"_s, u"chart"_s}));
    // It covers x from 50 to 70, and there is no such shift.
    QCOMPARE(window.hits({{49.0, 50.0}, {50.0, 50.0}, {51.0, 50.0}, {68.0, 50.0}, {69.0, 50.0},
                     {70.0, 50.0}}),
            QStringList({u"chart"_s, u"block"_s, u"block"_s, u"block"_s, u"block"_s, u"chart"_s}));
}

void tst_Picking::edgesOfTheChart()
{
    PointedWindow window(size);
    window.addBlock(u"all"_s, {0, 0, 200, 100});
    QVERIFY2(window.start(), window.error());

    // The first position that reads a row of the image is 1; 0 would read one above its top.
    QCOMPARE(window.hits({{0.0, 0.0}, {100.0, 0.0}, {199.0, 0.0}, {0.0, 1.0}, {100.0, 1.0},
                     {199.0, 1.0}, {0.0, 99.0}, {100.0, 99.0}, {199.0, 99.0}, {199.0, 50.0}}),
            QStringList({u"chart"_s, u"chart"_s, u"chart"_s, u"all"_s, u"all"_s, u"all"_s, u"all"_s,
                    u"all"_s, u"all"_s, u"all"_s}));
    // Rounded up, the lowest half pixel reads the lowest row, too; the rightmost half pixel reads
    // beyond the last column, and the uppermost half pixel beyond the top.
    QCOMPARE(window.hits({{100.0, 99.75}, {199.25, 50.0}, {199.75, 50.0}, {100.0, 0.25}}),
            QStringList({u"all"_s, u"all"_s, u"chart"_s, u"chart"_s}));
}

void tst_Picking::outsideOfTheChart()
{
    PointedWindow window(size);
    window.addBlock(u"all"_s, {0, 0, 200, 100});
    QVERIFY2(window.start(), window.error());

    // A button that was pressed inside is released anywhere.
    const auto releasedAt = [&window](const QPointF &place) {
        std::ignore = window.log.take();
        window.touchData();
        window.send(QEvent::MouseButtonPress, {100.0, 50.0});
        window.send(QEvent::MouseButtonRelease, place);
        return window.answerEvents() ? window.log.take() : QStringList();
    };
    const QStringList inside = {u"all pressed"_s, u"all released"_s, u"all clicked"_s};
    const QStringList outside = {u"all pressed"_s, u"chart released"_s, u"chart clicked"_s};
    QCOMPARE(releasedAt({199.0, 50.0}), inside);
    QCOMPARE(releasedAt({200.0, 50.0}), outside);
    QCOMPARE(releasedAt({0.0, 50.0}), inside);
    QCOMPARE(releasedAt({-1.0, 50.0}), outside);
    QCOMPARE(releasedAt({100.0, 100.0}), inside);
    QCOMPARE(releasedAt({100.0, 101.0}), outside);
    QCOMPARE(releasedAt({100.0, 1.0}), inside);
    QCOMPARE(releasedAt({100.0, 0.0}), outside);
    QCOMPARE(releasedAt({100.0, -1.0}), outside);
    QCOMPARE(releasedAt({1e7, 1e7}), outside);
    QCOMPARE(releasedAt({-1e7, -1e7}), outside);
}

void tst_Picking::betweenPixels_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<bool>("isHit");

    const auto row = [](const char *name, const QPointF &place, bool isHit) {
        QTest::newRow(name) << place << isHit;
    };
    // Positions are rounded to whole pixels, halves up.
    row("left of it", {49.49, 50.0}, false);
    row("half a pixel left of it", {49.5, 50.0}, true);
    row("within the last column", {69.49, 50.0}, true);
    row("within the last column, right half", {69.5, 50.0}, false);
    row("above it", {60.0, 40.49}, false);
    row("half a pixel below its upper edge", {60.0, 40.5}, true);
    row("just below it", {60.0, 60.49}, true);
    row("half a pixel below it", {60.0, 60.5}, false);
}

void tst_Picking::betweenPixels()
{
    QFETCH(QPointF, place);
    QFETCH(bool, isHit);

    PointedWindow window(size);
    window.addBlock(u"block"_s, {50, 40, 20, 20});
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hit(place), isHit ? u"block"_s : u"chart"_s);
}

QTEST_MAIN(tst_Picking)

#include "tst_picking.moc"
