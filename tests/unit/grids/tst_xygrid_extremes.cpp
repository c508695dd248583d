// SPDX-License-Identifier: MIT
#include "GridLines.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

} // namespace

// Whatever the range, there are as many lines as a reader can use, not more.
class tst_XYGridExtremes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void ranges_data();
    void ranges();
    void valuesOfDenseRanges();
    void sizes_data();
    void sizes();
};

void tst_XYGridExtremes::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_XYGridExtremes::ranges_data()
{
    QTest::addColumn<Span>("range");
    // Of the layout with readable values; -1 where rounding decides, 10 at most.
    QTest::addColumn<int>("niceCount");
    // -1 where it is at most nine for each decade that a double can have.
    QTest::addColumn<int>("logCount");

    const auto row = [](const char *name, double min, double max, int niceCount, int logCount) {
        QTest::newRow(name) << Span(min, max) << niceCount << logCount;
    };
    row("NaN", NaN, NaN, 0, 0);
    row("NaN first", NaN, 2.0, 0, -1);
    row("NaN last", 0.0, NaN, 0, -1);
    row("to infinity", 0.0, inf, 0, 0);
    row("to infinity, not from 0", 5.0, inf, 0, 0);
    row("from minus infinity", -inf, 0.0, 0, 0);
    row("from minus infinity, further", -inf, 2.0, 0, 18);
    row("all", -inf, inf, 0, 0);
    row("nothing at infinity", inf, inf, 0, 0);
    row("nothing at minus infinity", -inf, -inf, 0, 0);
    row("reversed infinities", inf, -inf, 0, 0);
    row("reversed to minus infinity", 0.0, -inf, 0, 0);
    row("reversed from infinity", inf, 2.0, 0, 0);
    row("smallest", 0.0, smallest, 1, 0);
    row("tiny", 0.0, 1e-300, 1, 0);
    row("tiny around 0", -1e-300, 1e-300, 1, 0);
    row("tiny, not at 0", 1e-300, 2e-300, 1, 0);
    row("tiny to huge", 1e-300, 1e300, -1, 0);
    row("tiny, reversed", 1e-300, 0.0, 1, 0);
    row("huge", 0.0, 1e300, 10, 0);
    row("huge to tiny", 1e300, 1e-300, 0, 0);
    row("as long as possible", 0.0, 1.7e308, 9, 0);
    row("longer than possible", -1.7e308, 1.7e308, 0, 0);
    row("longer than possible, reversed", 1.7e308, -1.7e308, 0, 0);
    row("nothing", 7.0, 7.0, 0, 0);
    row("nothing, huge", 1e300, 1e300, 0, 0);
    row("nothing, tiny", 1e-300, 1e-300, 0, 0);
    // Steps of 7.5, of which one and a bit lie between a double and the next.
    row("dense", 1e17, 1e17 + 64.0, 8, 0);
    row("dense and negative", -1e17 - 64.0, -1e17, -1, 0);
    row("one double to the next", 1e17, 1e17 + 16.0, -1, 0);
    row("one huge double to the next", std::nextafter(largest, 0.0), largest, -1, 0);
    row("one double to the next, negative", -1.0, std::nextafter(-1.0, 0.0), -1, 0);
    row("one double to the next, above 1", 1.0, std::nextafter(1.0, 2.0), -1, 0);
    row("almost nothing", 1000.0, 1000.0 + 2e-12, -1, 0);
    row("many decades", 0.0, 308.0, -1, -1);
    row("last decade", 308.0, 308.25, -1, -1);
    row("beyond the last decade", 308.0, 309.0, 10, 0);
}

void tst_XYGridExtremes::ranges()
{
    QFETCH(Span, range);
    QFETCH(int, niceCount);
    QFETCH(int, logCount);

    for (int layout = XYGrid::EquidistantGrid; layout <= XYGrid::LogGrid; ++layout) {
        ColumnGrid grid(static_cast<XYGrid::GridLayoutMode>(layout), range);
        grid.setYCount(3);
        for (const int width : {0, 1, 640, std::numeric_limits<int>::max()}) {
            const GridLines lines(grid, QRect(0, 0, width, 31));
            QVERIFY2(lines.error.isEmpty(), lines.error.constData());
            QCOMPARE(lines.rows, QList<int>({10, 20}));
            const auto count = int(lines.values.size());
            const bool isNice = layout == XYGrid::NiceLabelsLinGrid;
            const int expected = isNice ? niceCount : layout == XYGrid::LogGrid ? logCount : 9;
            if (expected >= 0)
                QCOMPARE(count, expected);
            else
                QVERIFY(count <= (isNice ? 17 : 9 * 309));
        }

        // The labels are as many, and sorted as far as there is an order.
        const GridLines lines(grid, QRect(0, 0, 640, 31));
        const QVariantList labels = grid.xLabels();
        QCOMPARE(labels.size(), lines.values.size());
        double previous = -inf;
        for (const QVariant &label : labels) {
            const double value = label.toDouble();
            if (std::isnan(value))
                continue;
            QVERIFY(value >= previous);
            previous = value;
        }
    }
}

// Beyond 2^53 not every multiple of the step is a double; those that are come in order, within the
// range.
void tst_XYGridExtremes::valuesOfDenseRanges()
{
    for (const double start : {1e17, -1e17 - 64.0}) {
        const ColumnGrid grid(XYGrid::NiceLabelsLinGrid, {start, start + 64.0});
        const GridLines lines(grid, QRect(0, 0, 100, 50));
        QVERIFY(lines.values.size() >= 6);
        QVERIFY(std::is_sorted(lines.values.cbegin(), lines.values.cend()));
        QVERIFY(lines.values.first() >= start);
        QVERIFY(lines.values.last() <= start + 64.0);
        QVERIFY(std::is_sorted(lines.columns.cbegin(), lines.columns.cend()));
        QVERIFY(lines.columns.first() >= 0 && lines.columns.last() <= 100);
    }
}

void tst_XYGridExtremes::sizes_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("infinite") << QSizeF(inf, inf);
    QTest::newRow("minus infinity") << QSizeF(-inf, -inf);
    QTest::newRow("huge") << QSizeF(1e300, 1e300);
    QTest::newRow("huge and negative") << QSizeF(-1e300, -1e300);
    QTest::newRow("beyond int") << QSizeF(2147483648.0, 2147483648.0);
    QTest::newRow("beyond int, negative") << QSizeF(-2147483648.0, -2147483649.0);
    QTest::newRow("mixed") << QSizeF(-inf, 1e300);
    QTest::newRow("not numbers") << QSizeF(NaN, NaN);
}

// Nothing about the size matters to the labels.
void tst_XYGridExtremes::sizes()
{
    QFETCH(QSizeF, size);

    for (int layout = XYGrid::EquidistantGrid; layout <= XYGrid::LogGrid; ++layout) {
        ColumnGrid grid(static_cast<XYGrid::GridLayoutMode>(layout), {0.0, 1.0});
        grid.setSize(size);
        grid.setYCount(7);
        grid.setXRange({0.0, 2.0});
        ColumnGrid plain(static_cast<XYGrid::GridLayoutMode>(layout), {0.0, 2.0});
        QCOMPARE(grid.xLabels(), plain.xLabels());
        QVERIFY(!grid.xLabels().isEmpty());
    }
}

QTEST_MAIN(tst_XYGridExtremes)

#include "tst_xygrid_extremes.moc"
