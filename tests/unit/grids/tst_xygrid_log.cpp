// SPDX-License-Identifier: MIT
#include "GridLines.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

using namespace Charts;
using namespace Qt::StringLiterals;

class tst_XYGridLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void twoDecades();
    void lines_data();
    void lines();
    void manyDecades();
};

void tst_XYGridLog::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_XYGridLog::twoDecades()
{
    const ColumnGrid grid(XYGrid::LogGrid, {0.0, 2.0});
    const GridLines lines(grid, QRect(0, 0, 200, 50));
    QVERIFY2(lines.error.isEmpty(), lines.error.constData());
    const QList<double> values = {100, 90, 80, 70, 60, 50, 40, 30, 20, 10, 9, 8, 7, 6, 5, 4, 3, 2};
    QVERIFY(lines.values == values);
    // A hundred times the logarithms: 2, 1.954, 1.903, 1.845, 1.778, 1.699, 1.602, 1.477, 1.301.
    QCOMPARE(lines.columns, QList<int>({200, 195, 190, 185, 178, 170, 160, 148, 130, 100, 95, 90,
                                    85, 78, 70, 60, 48, 30}));
}

void tst_XYGridLog::lines_data()
{
    QTest::addColumn<Span>("range");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("count");

    const auto row = [](const char *name, const Span &range, int width, int count) {
        QTest::newRow(name) << range << width << count;
    };
    row("one decade", {0.0, 1.0}, 101, 9);
    row("a higher decade", {3.0, 4.0}, 640, 9);
    row("halves go up at powers of ten", {0.0, 2.0}, 101, 18);
    row("audio", {1.3, 4.3}, 800, 27);
    row("end between two lines", {0.0, 1.5}, 300, 11);
    row("start between two lines", {0.5, 2.0}, 300, 16);
    row("ends within one decade", {2.35, 2.95}, 150, 6);
    row("one line", {2.25, 2.35}, 150, 1);
    row("between two lines", {2.05, 2.25}, 150, 0);
    row("just below a decade", {0.0, 0.9999999}, 1000, 8);
    row("around a decade", {0.96, 1.1}, 1000, 1);
    row("start below 1", {-3.0, 1.0}, 90, 9);
    row("all below 1", {-3.0, -1.0}, 90, 0);
    row("up to 1", {-3.0, 0.0}, 90, 0);
    row("empty", {2.0, 2.0}, 90, 0);
    row("reversed", {2.0, 0.0}, 90, 0);
    row("one pixel", {0.0, 1.0}, 1, 9);
    row("no pixels", {0.0, 1.0}, 0, 9);
    row("negative width", {0.0, 1.0}, -50, 9);
    row("ten decades", {0.0, 10.0}, 1920, 90);
    row("as long as all values are exact", {0.0, 22.0}, 1920, 198);
}

// The lines are looked up among all there are, with the logarithms of a longer floating-point type.
void tst_XYGridLog::lines()
{
    QFETCH(Span, range);
    QFETCH(int, width);

    const long double from = std::max(range.min, 0.0);
    const long double to = std::max(range.max, 0.0);
    QList<double> values;
    QList<int> columns;
    for (int decade = 25; decade >= 0; --decade) {
        for (int digit = 9; digit >= 1; --digit) {
            const long double value = digit * std::pow(10.0L, decade);
            const long double exponent = std::log10(static_cast<long double>(digit)) + decade;
            if (exponent <= from || exponent > to)
                continue;
            values += static_cast<double>(value);
            columns += static_cast<int>(std::round((exponent - from) * width / (to - from)));
        }
    }

    const ColumnGrid grid(XYGrid::LogGrid, range);
    const GridLines lines(grid, QRect(0, 0, width, 50));
    QVERIFY2(lines.error.isEmpty(), lines.error.constData());
    QVERIFY(lines.values == values);
    QCOMPARE(lines.columns, columns);
    QTEST(int(lines.values.size()), "count");
}

// Doubles do not hold the higher powers of ten, whose errors are carried down to the lower ones. It
// begins well, goes down and ends above the start.
void tst_XYGridLog::manyDecades()
{
    for (const double decades : {50.0, 100.0, 300.0, 308.0, 308.25}) {
        const ColumnGrid grid(XYGrid::LogGrid, {0.0, decades});
        const GridLines lines(grid, QRect(0, 0, 10000, 50));
        QVERIFY2(lines.error.isEmpty(), lines.error.constData());
        QVERIFY(lines.values.size() >= 4 * int(decades));
        QVERIFY(lines.values.size() <= 9 * int(decades) + 2);
        QVERIFY(std::is_sorted(lines.values.crbegin(), lines.values.crend(), std::less_equal<>()));
        QVERIFY(lines.values.last() > 1.0);
        QVERIFY(std::is_sorted(lines.columns.crbegin(), lines.columns.crend()));
        QVERIFY(lines.columns.first() <= 10000);
        QVERIFY(lines.columns.last() >= 0);
        const long double first = std::log10(static_cast<long double>(lines.values.first()));
        const long double second = std::log10(static_cast<long double>(lines.values.at(1)));
        QVERIFY(decades - first < 0.25L);
        QVERIFY(first - second < 0.31L);
    }
}

QTEST_MAIN(tst_XYGridLog)

#include "tst_xygrid_log.moc"
