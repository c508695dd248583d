// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "ZoomWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! The value at \a position of \a extent pixels that \a range fills, with more digits than a double
    has. A reversed range is as if it ended where it begins. */
long double valueAt(const Span &range, long double position, long double extent)
{
    const auto min = static_cast<long double>(range.min);
    const auto length = std::max(0.0L, static_cast<long double>(range.max) - min);
    return min + length * position / extent;
}

/*! The same counted from the range's upper end. */
long double valueBelow(const Span &range, long double position, long double extent)
{
    const auto max = static_cast<long double>(range.max);
    const auto length = std::max(0.0L, max - static_cast<long double>(range.min));
    return max - length * position / extent;
}

/*! Equal but for a few roundings in numbers of the range's order. */
bool isNear(double actual, long double expected, const Span &range)
{
    const double order = std::max(std::abs(range.min), std::abs(range.max));
    return std::abs(static_cast<long double>(actual) - expected)
           <= 4.0L * std::numeric_limits<double>::epsilon() * static_cast<long double>(order);
}

QString describe(const Span &span)
{
    return u"(%1, %2)"_s.arg(span.min, 0, 'g', 17).arg(span.max, 0, 'g', 17);
}

} // namespace

/*! What a drag does to the domains of the traces. */
class tst_ZoomDragDomains : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void ranges_data();
    void ranges();
    void roundTracesStay();
    void logarithmicTrace();
    void minSize_data();
    void minSize();
    void minSizeChanged();

    void zoomTwice();
    void lateTrace();
    void appliedByTheApplication();
};

void tst_ZoomDragDomains::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ZoomDragDomains::ranges_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");

    QTest::newRow("a quarter") << QSize(200, 100) << QPointF(50, 25) << QPointF(150, 75);
    QTest::newRow("a third") << QSize(300, 99) << QPointF(100, 33) << QPointF(200, 66);
    QTest::newRow("primes") << QSize(211, 103) << QPointF(7, 11) << QPointF(97.7, 61.3);
    QTest::newRow("backwards") << QSize(211, 103) << QPointF(97, 61) << QPointF(7.1, 11.9);
    QTest::newRow("a corner") << QSize(211, 103) << QPointF(150, 40) << QPointF(900, -900);
    QTest::newRow("hardly anything")
            << QSize(200, 100) << QPointF(50, 25) << QPointF(50.001, 24.999);
}

void tst_ZoomDragDomains::ranges()
{
    QFETCH(QSize, size);
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);

    const QList<std::pair<Span, Span>> given = {
            {{0.0, 10.0}, {0.0, 5.0}},
            {{-1.0, 1.0}, {-1e-3, 1e3}},
            {{1e9, 1e9 + 1.0}, {-273.15, -40.0}},
            {{1e-9, 3e-9}, {-1e300, 7e299}},
            {{0.1, 0.7}, {1.0 / 3.0, 2.0 / 3.0}},
            // No length: nothing but one end is left.
            {{10.0, 0.0}, {5.0, -5.0}},
            {{3.0, 3.0}, {0.0, 0.0}},
    };
    ZoomWindow window(size);
    QList<TestTrace *> traces;
    for (const auto &[x, y] : given)
        traces.append(&window.addTrace(x, y));
    QVERIFY2(window.start(), window.error());
    window.mouse.drag(from, to);
    QCOMPARE(window.zoomCount, 1);

    const auto clipped = [](double value, int end) {
        return static_cast<long double>(std::min(std::max(value, 0.0), static_cast<double>(end)));
    };
    const auto left = std::min(clipped(from.x(), size.width()), clipped(to.x(), size.width()));
    const auto right = std::max(clipped(from.x(), size.width()), clipped(to.x(), size.width()));
    const auto top = std::min(clipped(from.y(), size.height()), clipped(to.y(), size.height()));
    const auto bottom = std::max(clipped(from.y(), size.height()), clipped(to.y(), size.height()));
    for (qsizetype i = 0; i < given.size(); ++i) {
        const auto [x, y] = given.at(i);
        const TraceDomain &domain = *traces.at(i)->domain();
        QVERIFY2(isNear(domain.minX(), valueAt(x, left, size.width()), x)
                         && isNear(domain.maxX(), valueAt(x, right, size.width()), x),
                qPrintable(describe(x) + u" became "_s + describe(domain.xRange())));
        QVERIFY2(isNear(domain.minY(), valueBelow(y, bottom, size.height()), y)
                         && isNear(domain.maxY(), valueBelow(y, top, size.height()), y),
                qPrintable(describe(y) + u" became "_s + describe(domain.yRange())));
        QVERIFY(domain.isZoomed() || x.length() + y.length() == 0.0);
        QCOMPARE(domain.baseXRange(), x);
        QCOMPARE(domain.baseYRange(), y);
    }
}

void tst_ZoomDragDomains::roundTracesStay()
{
    ZoomWindow window;
    TestTrace &smith = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    smith.domain()->setFormat(TraceDomain::SmithFormat);
    TestTrace &plain = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    TestTrace &polar = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    polar.domain()->setFormat(TraceDomain::PolarFormat);
    smith.setZ(1.0);
    plain.setZ(2.0);
    polar.setZ(3.0);
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();

    window.mouse.drag({50.0, 20.0}, {150.0, 70.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"T1 zoomed"_s,
                                       u"T1 x"_s, u"T1 y"_s, u"zoomedIn"_s}));
    QCOMPARE(plain.domain()->xRange(), Span(50.0, 150.0));
    QCOMPARE(plain.domain()->yRange(), Span(30.0, 80.0));
    for (const TestTrace *round : {&smith, &polar}) {
        QVERIFY(!round->domain()->isZoomed());
        QCOMPARE(round->domain()->xRange(), Span(0.0, 200.0));
        QCOMPARE(round->domain()->yRange(), Span(0.0, 100.0));
        // They are brought up to date all the same.
        QCOMPARE(round->updateCount.load(), 1);
    }
    window.chart()->zoomReset();
    QCOMPARE(window.takeLog(), QStringList({u"reset"_s, u"T1 reset"_s, u"T1 base x"_s, u"T1 x"_s,
                                       u"T1 base y"_s, u"T1 y"_s}));
}

void tst_ZoomDragDomains::logarithmicTrace()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({1.0, 10001.0}, {0.0, 100.0});
    trace.domain()->setIsLogX(true);
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 0.0}, {100.0, 100.0});
    // The flag is for those who draw; ranges are divided evenly.
    QCOMPARE(trace.domain()->xRange(), Span(2501.0, 5001.0));
    QCOMPARE(trace.domain()->yRange(), Span(0.0, 100.0));
    QVERIFY(trace.domain()->isLogX());
}

void tst_ZoomDragDomains::minSize_data()
{
    QTest::addColumn<int>("minSize");
    QTest::addColumn<ZoomDelegate::ZoomType>("type");
    QTest::addColumn<QSizeF>("extent");
    QTest::addColumn<bool>("zooms");

    const auto row = [](const char *name, int minSize, ZoomDelegate::ZoomType type, QSizeF extent,
                             bool zooms) {
        QTest::newRow(name) << minSize << type << extent << zooms;
    };
    const auto diagonal = ZoomDelegate::Diagonal;
    const auto vertical = ZoomDelegate::Vertical;
    const auto horizontal = ZoomDelegate::Horizontal;
    row("larger", 10, diagonal, {11, 11}, true);
    row("a little larger", 10, diagonal, {10.0625, 10.0625}, true);
    row("as large", 10, diagonal, {10, 10}, false);
    row("as wide", 10, diagonal, {10, 40}, false);
    row("as high", 10, diagonal, {40, 10}, false);
    row("a little narrower", 10, diagonal, {9.9375, 40}, false);
    row("a little lower", 10, diagonal, {40, 9.9375}, false);
    row("as large, backwards", 10, diagonal, {-10, -10}, false);
    row("larger, backwards", 10, diagonal, {-10.5, -10.5}, true);
    row("hardly anything", 0, diagonal, {0.001, 0.001}, true);
    row("nothing", 0, diagonal, {0, 0}, false);
    row("any", -1, diagonal, {0.5, 0.5}, true);
    row("vertical", 10, vertical, {11, 1}, true);
    row("vertical, as wide", 10, vertical, {10, 40}, false);
    row("vertical, lower than the chart", 99, vertical, {99.5, 1}, true);
    row("vertical, as high as the chart", 100, vertical, {110, 40}, false);
    row("horizontal", 10, horizontal, {1, 11}, true);
    row("horizontal, as high", 10, horizontal, {40, 10}, false);
    row("largest", std::numeric_limits<int>::max(), diagonal, {1e6, 1e6}, false);
}

void tst_ZoomDragDomains::minSize()
{
    QFETCH(int, minSize);
    QFETCH(ZoomDelegate::ZoomType, type);
    QFETCH(QSizeF, extent);
    QFETCH(bool, zooms);

    ZoomWindow window;
    window.band()->setMinSize(minSize);
    window.band()->setZoomType(type);
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({64.0, 32.0}, QPointF(64.0 + extent.width(), 32.0 + extent.height()));
    QVERIFY2(!window.isBandShown(), "it goes, whether it zooms or not");
    QCOMPARE(window.zoomCount, zooms ? 1 : 0);
    QCOMPARE(window.chart()->isZoomed(), zooms);
    QCOMPARE(trace.domain()->isZoomed(), zooms);
    QCOMPARE(trace.updateCount.load(), zooms ? 1 : 0);
}

void tst_ZoomDragDomains::minSizeChanged()
{
    ZoomWindow window;
    window.band()->setMinSize(10);
    QVERIFY2(window.start(), window.error());
    // What holds at the release decides.
    window.mouse.press({50.0, 50.0});
    window.mouse.move({70.0, 70.0});
    window.band()->setMinSize(20);
    window.mouse.release({70.0, 70.0});
    QCOMPARE(window.zoomCount, 0);
    window.mouse.press({50.0, 50.0});
    window.mouse.move({70.0, 70.0});
    window.band()->setMinSize(19);
    window.mouse.release({70.0, 70.0});
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragDomains::zoomTwice()
{
    ZoomWindow window;
    TestTrace &first = window.addTrace({0.0, 10.0}, {0.0, 5.0});
    TestTrace &second = window.addTrace({-1.0, 1.0}, {100.0, 300.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    QCOMPARE(first.domain()->xRange(), Span(2.5, 7.5));
    QCOMPARE(second.domain()->yRange(), Span(150.0, 250.0));
    window.mouse.drag({100.0, 50.0}, {0.0, 200.0});
    QCOMPARE(first.domain()->xRange(), Span(2.5, 5.0));
    QCOMPARE(first.domain()->yRange(), Span(1.25, 2.5));
    QCOMPARE(second.domain()->xRange(), Span(-0.5, 0.0));
    QCOMPARE(second.domain()->yRange(), Span(150.0, 200.0));
    QCOMPARE(window.zoomCount, 2);
    (void)window.takeLog();

    // One reset returns to where it all began.
    window.chart()->zoomReset();
    QCOMPARE(first.domain()->xRange(), Span(0.0, 10.0));
    QCOMPARE(first.domain()->yRange(), Span(0.0, 5.0));
    QCOMPARE(second.domain()->xRange(), Span(-1.0, 1.0));
    QCOMPARE(second.domain()->yRange(), Span(100.0, 300.0));
    QCOMPARE(window.takeLog().count(u"reset"_s), 1);
    QCOMPARE(first.updateCount.load(), 3);
}

void tst_ZoomDragDomains::lateTrace()
{
    ZoomWindow window;
    TestTrace &early = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    TestTrace &late = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY(!late.domain()->isZoomed());
    QCOMPARE(late.domain()->xRange(), Span(0.0, 200.0));
    // Not zoomed yet, its base follows its range.
    late.domain()->setRangeX(0.0, 400.0);

    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    QCOMPARE(early.domain()->xRange(), Span(75.0, 125.0));
    QCOMPARE(late.domain()->xRange(), Span(100.0, 300.0));
    QVERIFY(late.domain()->isZoomed());

    TestTrace &last = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    (void)window.takeLog();
    window.chart()->zoomReset();
    QCOMPARE(early.domain()->xRange(), Span(0.0, 200.0));
    QCOMPARE(late.domain()->xRange(), Span(0.0, 400.0));
    QCOMPARE(last.domain()->xRange(), Span(0.0, 200.0));
    QCOMPARE(window.takeLog().filter(u"T2"_s), QStringList());
    QCOMPARE(last.updateCount.load(), 1);
}

void tst_ZoomDragDomains::appliedByTheApplication()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    // A zoom of the trace alone is not the chart's, but the drag and the reset are everybody's.
    trace.domain()->zoomIn(Span(0.0, 100.0), Span(0.0, 50.0));
    QVERIFY(!window.chart()->isZoomed());
    window.mouse.drag({50.0, 0.0}, {150.0, 100.0});
    QCOMPARE(trace.domain()->xRange(), Span(25.0, 75.0));
    QCOMPARE(trace.domain()->yRange(), Span(0.0, 50.0));
    window.chart()->zoomReset();
    QCOMPARE(trace.domain()->xRange(), Span(0.0, 200.0));
    QCOMPARE(trace.domain()->yRange(), Span(0.0, 100.0));
}

QTEST_MAIN(tst_ZoomDragDomains)

#include "tst_zoomdrag_domains.moc"
