// SPDX-License-Identifier: MIT
#include "GridLines.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

// Columns and values were computed in exact fractions and rounded at the end. Rows in which a half
// is rounded are chosen so that the doubles of the grid are the same halves.
class tst_XYGridLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void equidistant_data();
    void equidistant();
    void centered_data();
    void centered();
    void nice_data();
    void nice();
    void noColumns_data();
    void noColumns();
    void orderOfOperations();
    void rows_data();
    void rows();
    void rowsInEveryLayout();
    void outer_data();
    void outer();
    void place();
};

namespace {

void addColumns()
{
    QTest::addColumn<Span>("range");
    QTest::addColumn<int>("width");
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<QList<double>>("values");
}

void row(const char *name, const Span &range, int width, const QList<int> &columns,
        const QList<double> &values)
{
    QTest::newRow(name) << range << width << columns << values;
}

} // namespace

void tst_XYGridLines::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

static void checkColumns(XYGrid::GridLayoutMode layout)
{
    QFETCH(Span, range);
    QFETCH(int, width);
    QFETCH(QList<double>, values);

    const ColumnGrid grid(layout, range);
    const GridLines lines(grid, QRect(0, 0, width, 50));
    QVERIFY2(lines.error.isEmpty(), lines.error.constData());
    QTEST(lines.columns, "columns");
    COMPARE_VALUES(lines.values, values);
    QCOMPARE(lines.rows, QList<int>());
}

void tst_XYGridLines::equidistant_data()
{
    addColumns();
    row("101 pixels", {0.0, 10.0}, 101, {10, 20, 30, 40, 50, 60, 70, 80, 90},
            {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0});
    row("6 pixels: halves go up", {0.0, 10.0}, 6, {1, 1, 2, 2, 3, 3, 4, 4, 5},
            {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0});
    row("1000 pixels", {-1.0, 1.0}, 1000, {100, 200, 300, 400, 500, 599, 699, 799, 899},
            {-0.8, -0.6, -0.4, -0.2, 0.0, 0.2, 0.4, 0.6, 0.8});
    row("two pixels", {-30.0, -20.0}, 2, {0, 0, 0, 0, 1, 1, 1, 1, 1},
            {-29.0, -28.0, -27.0, -26.0, -25.0, -24.0, -23.0, -22.0, -21.0});
    row("one pixel", {0.1, 0.7}, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0},
            {0.16, 0.22, 0.28, 0.34, 0.4, 0.46, 0.52, 0.58, 0.64});
    row("no pixels", {0.0, 10.0}, 0, {0, 0, 0, 0, -1, -1, -1, -1, -1},
            {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0});
    row("a negative width", {0.0, 10.0}, -4, {-1, -1, -2, -2, -3, -3, -4, -4, -5},
            {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0});
    row("the largest width", {0.0, 10.0}, 2147483647,
            {214748365, 429496729, 644245094, 858993458, 1073741823, 1288490188, 1503238552,
                    1717986917, 1932735281},
            {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0});
    row("reversed", {10.0, 0.0}, 101, {10, 20, 30, 40, 50, 60, 70, 80, 90},
            {9.0, 8.0, 7.0, 6.0, 5.0, 4.0, 3.0, 2.0, 1.0});
    row("nothing", {3.0, 3.0}, 201, {20, 40, 60, 80, 100, 120, 140, 160, 180},
            {3.0, 3.0, 3.0, 3.0, 3.0, 3.0, 3.0, 3.0, 3.0});
    row("a huge range", {-1e300, 1e300}, 51, {5, 10, 15, 20, 25, 30, 35, 40, 45},
            {-8e299, -6e299, -4e299, -2e299, 0.0, 2e299, 4e299, 6e299, 8e299});
    row("a tiny range", {0.0, 1e-300}, 51, {5, 10, 15, 20, 25, 30, 35, 40, 45},
            {1e-301, 2e-301, 3e-301, 4e-301, 5e-301, 6e-301, 7e-301, 8e-301, 9e-301});
}

void tst_XYGridLines::equidistant()
{
    checkColumns(XYGrid::EquidistantGrid);
}

void tst_XYGridLines::centered_data()
{
    addColumns();
    row("plain", {0.0, 10.0}, 101, {51, 40, 30, 20, 10, 61, 71, 81, 91},
            {5.0, 4.0, 3.0, 2.0, 1.0, 6.0, 7.0, 8.0, 9.0});
    row("reversed", {10.0, 0.0}, 101, {51, 40, 30, 20, 10, 61, 71, 81, 91},
            {5.0, 6.0, 7.0, 8.0, 9.0, 4.0, 3.0, 2.0, 1.0});
    row("halves go up", {0.0, 20.0}, 5, {3, 2, 2, 1, 1, 3, 4, 4, 5},
            {10.0, 8.0, 6.0, 4.0, 2.0, 12.0, 14.0, 16.0, 18.0});
    row("around 0", {-2.0, 2.0}, 334, {167, 134, 100, 67, 33, 200, 234, 267, 301},
            {0.0, -0.4, -0.8, -1.2, -1.6, 0.4, 0.8, 1.2, 1.6});
    row("negative", {-30.0, -20.0}, 47, {24, 19, 14, 9, 5, 28, 33, 38, 42},
            {-25.0, -26.0, -27.0, -28.0, -29.0, -24.0, -23.0, -22.0, -21.0});
    row("step rounded up", {0.0, 123456.78}, 500, {250, 200, 150, 100, 50, 300, 350, 400, 450},
            {61728.39, 49378.39, 37028.39, 24678.39, 12328.39, 74078.39, 86428.39, 98778.39,
                    111128.39});
    row("step rounded down", {0.0, -12344.4}, 500, {250, 200, 150, 100, 50, 300, 350, 400, 450},
            {-6172.2, -4938.2, -3704.2, -2470.2, -1236.2, -7406.2, -8640.2, -9874.2, -11108.2});
    row("step rounded to the next decade", {0.0, 99.996}, 78, {39, 31, 23, 16, 8, 47, 55, 62, 70},
            {49.998, 39.998, 29.998, 19.998, 9.998, 59.998, 69.998, 79.998, 89.998});
    row("half of the last digit up", {0.0, 10005.0}, 776,
            {388, 310, 233, 155, 77, 466, 543, 621, 699},
            {5002.5, 4001.5, 3000.5, 1999.5, 998.5, 6003.5, 7004.5, 8005.5, 9006.5});
    row("half of the last digit up, reversed", {10005.0, 0.0}, 776,
            {388, 310, 233, 155, 78, 466, 543, 621, 698},
            {5002.5, 6002.5, 7002.5, 8002.5, 9002.5, 4002.5, 3002.5, 2002.5, 1002.5});
    row("one pixel", {0.0, 10.0}, 1, {1, 0, 0, 0, 0, 1, 1, 1, 1},
            {5.0, 4.0, 3.0, 2.0, 1.0, 6.0, 7.0, 8.0, 9.0});
    row("no pixels", {0.0, 10.0}, 0, {0, 0, 0, 0, 0, 0, 0, 0, 0},
            {5.0, 4.0, 3.0, 2.0, 1.0, 6.0, 7.0, 8.0, 9.0});
    row("negative width", {0.0, 10.0}, -4, {-2, -2, -1, -1, 0, -2, -3, -3, -4},
            {5.0, 4.0, 3.0, 2.0, 1.0, 6.0, 7.0, 8.0, 9.0});
    row("small", {0.0, 3e-11}, 200, {100, 80, 60, 40, 20, 120, 140, 160, 180},
            {1.5e-11, 1.2e-11, 9e-12, 6e-12, 3e-12, 1.8e-11, 2.1e-11, 2.4e-11, 2.7e-11});
    row("no step", {0.0, 9.9e-12}, 100, QList<int>(9, 50), QList<double>(9, 4.95e-12));
    row("no step, at the limit", {0.0, 1e-11}, 100, QList<int>(9, 50), QList<double>(9, 5e-12));
    row("no step, away from 0", {1000.0, 1000.00000000000909}, 100, QList<int>(9, 50),
            QList<double>(9, 1000.00000000000455));
    row("huge", {-1e300, 2e300}, 98, {49, 39, 29, 20, 10, 59, 69, 78, 88},
            {5e299, 2e299, -1e299, -4e299, -7e299, 8e299, 1.1e300, 1.4e300, 1.7e300});
}

void tst_XYGridLines::centered()
{
    checkColumns(XYGrid::CenteredLinGrid);
}

void tst_XYGridLines::nice_data()
{
    addColumns();
    row("0 to 1", {0.0, 1.0}, 101, {0, 10, 20, 30, 40, 51, 61, 71, 81, 91},
            {0.0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9});
    row("around 0", {-1.0, 1.0}, 334, {0, 33, 67, 100, 134, 167, 200, 234, 267, 301},
            {-1.0, -0.8, -0.6, -0.4, -0.2, 0.0, 0.2, 0.4, 0.6, 0.8});
    row("halves go up", {0.0, 8.0}, 4, {0, 1, 1, 2, 2, 3, 3, 4},
            {0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0});
    row("ends between multiples", {-7.3, 4.1}, 640, {59, 129, 199, 269, 340, 410, 480, 550, 620},
            {-6.25, -5.0, -3.75, -2.5, -1.25, 0.0, 1.25, 2.5, 3.75});
    row("decimals", {0.1, 0.7}, 997, {33, 133, 233, 332, 432, 532, 631, 731, 831, 931},
            {0.12, 0.18, 0.24, 0.3, 0.36, 0.42, 0.48, 0.54, 0.6, 0.66});
    row("negative", {-30.0, -20.0}, 47, {0, 5, 9, 14, 19, 24, 28, 33, 38, 42},
            {-30.0, -29.0, -28.0, -27.0, -26.0, -25.0, -24.0, -23.0, -22.0, -21.0});
    row("eighths", {0.0, 1.2}, 301, {0, 31, 63, 94, 125, 157, 188, 219, 251, 282},
            {0.0, 0.125, 0.25, 0.375, 0.5, 0.625, 0.75, 0.875, 1.0, 1.125});
    row("three quarters", {2.0, 9.0}, 211, {8, 30, 53, 75, 98, 121, 143, 166, 188},
            {2.25, 3.0, 3.75, 4.5, 5.25, 6.0, 6.75, 7.5, 8.25});
    row("far from 0", {1000000.0, 1000001.0}, 204, {0, 20, 41, 61, 82, 102, 122, 143, 163, 184},
            {1000000.0, 1000000.1, 1000000.2, 1000000.3, 1000000.4, 1000000.5, 1000000.6, 1000000.7,
                    1000000.8, 1000000.9});
    row("one pixel", {0.0, 1.0}, 1, {0, 0, 0, 0, 0, 1, 1, 1, 1, 1},
            {0.0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9});
    row("no pixels", {0.0, 1.0}, 0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
            {0.0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9});
    row("negative width", {0.0, 1.0}, -7, {0, -1, -1, -2, -3, -4, -4, -5, -6, -6},
            {0.0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9});
    row("small", {0.0, 2e-12}, 200, {0, 20, 40, 60, 80, 100, 120, 140, 160, 180},
            {0.0, 2e-13, 4e-13, 6e-13, 8e-13, 1e-12, 1.2e-12, 1.4e-12, 1.6e-12, 1.8e-12});
    row("huge", {-1e300, 2e300}, 98, {3, 13, 23, 33, 42, 52, 62, 72, 82, 91},
            {-9e299, -6e299, -3e299, 0.0, 3e299, 6e299, 9e299, 1.2e300, 1.5e300, 1.8e300});
    row("largest", {0.0, 1.6e308}, 96, {0, 12, 24, 36, 48, 60, 72, 84},
            {0.0, 2e307, 4e307, 6e307, 8e307, 1e308, 1.2e308, 1.4e308});
}

void tst_XYGridLines::nice()
{
    checkColumns(XYGrid::NiceLabelsLinGrid);
}

void tst_XYGridLines::noColumns_data()
{
    QTest::addColumn<Span>("range");
    QTest::newRow("nothing") << Span(0.0, 0.0);
    QTest::newRow("nothing elsewhere") << Span(5.0, 5.0);
    QTest::newRow("nothing, negative") << Span(-5.0, -5.0);
    QTest::newRow("reversed") << Span(10.0, 0.0);
    QTest::newRow("reversed to a negative end") << Span(0.0, -10.0);
    QTest::newRow("reversed, negative") << Span(-5.0, -10.0);
    QTest::newRow("reversed around 0") << Span(5.0, -10.0);
}

void tst_XYGridLines::noColumns()
{
    QFETCH(Span, range);

    for (const auto layout : {XYGrid::NiceLabelsLinGrid, XYGrid::LogGrid}) {
        const GridLines lines(ColumnGrid(layout, range), QRect(0, 0, 100, 50));
        QCOMPARE(lines.columns, QList<int>());
        QCOMPARE(lines.values, QList<double>());
    }
}

// Halves that are none any more after the first of two roundings.
void tst_XYGridLines::orderOfOperations()
{
    // The range is divided by the pixels first: 0.5 / (1 / 93) is just below 46.5.
    const ColumnGrid grid(XYGrid::NiceLabelsLinGrid, {0.0, 1.0});
    QCOMPARE(GridLines(grid, QRect(0, 0, 93, 50)).columns.at(5), 46);
    QCOMPARE(GridLines(grid, QRect(0, 0, 95, 50)).columns.at(5), 48);

    // The height is divided by the bands first: 11 * (15 / 22) is just below 7.5.
    XYGrid bands;
    bands.setYCount(22);
    QCOMPARE(GridLines(bands, QRect(0, 0, 9, 16)).rows.at(10), 7);
    bands.setYCount(20);
    QCOMPARE(GridLines(bands, QRect(0, 0, 9, 16)).rows.at(9), 8);
}

void tst_XYGridLines::rows_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("yCount");
    QTest::addColumn<QList<int>>("rows");

    const auto bands = [](const char *name, int height, int yCount, const QList<int> &rows) {
        QTest::newRow(name) << height << yCount << rows;
    };
    bands("tenths of 101", 101, 10, {10, 20, 30, 40, 50, 60, 70, 80, 90});
    bands("tenths of 100", 100, 10, {10, 20, 30, 40, 50, 59, 69, 79, 89});
    bands("thirds", 50, 3, {16, 33});
    bands("halves go up", 4, 6, {1, 1, 2, 2, 3});
    bands("two bands", 480, 2, {240});
    bands("more bands than pixels", 3, 8, {0, 1, 1, 1, 1, 2, 2});
    bands("one pixel", 1, 3, {0, 0});
    // One less than nothing. The halves go up and the sum is truncated, so these go towards 0.
    bands("no pixels", 0, 4, {0, 0, 0});
    bands("negative height", -9, 4, {-2, -4, -7});
    bands("largest height", std::numeric_limits<int>::max(), 2, {1073741823});
    bands("one band", 101, 1, {});
    bands("no bands", 101, 0, {});
    bands("negative bands", 101, -3, {});
}

void tst_XYGridLines::rows()
{
    QFETCH(int, height);
    QFETCH(int, yCount);

    XYGrid grid;
    grid.setYCount(yCount);
    const GridLines lines(grid, QRect(0, 0, 33, height));
    QVERIFY2(lines.error.isEmpty(), lines.error.constData());
    QTEST(lines.rows, "rows");
    QCOMPARE(lines.columns.size(), 9);
}

void tst_XYGridLines::rowsInEveryLayout()
{
    XYGrid grid;
    grid.setYCount(4);
    for (const Span &range : {Span(0.0, 2.0), Span(2.0, 0.0)}) {
        grid.setXRange(range);
        for (int layout = XYGrid::EquidistantGrid; layout <= XYGrid::LogGrid; ++layout) {
            grid.setXLayout(static_cast<XYGrid::GridLayoutMode>(layout));
            const GridLines lines(grid, QRect(0, 0, 33, 41));
            QVERIFY2(lines.error.isEmpty(), lines.error.constData());
            QCOMPARE(lines.rows, QList<int>({10, 20, 30}));
        }
    }
}

void tst_XYGridLines::outer_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("plain") << QSize(200, 100);
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("no pixels") << QSize(0, 0);
    QTest::newRow("negative") << QSize(-4, -7);
    QTest::newRow("largest") << QSize(2147483647, 2147483647);
}

void tst_XYGridLines::outer()
{
    QFETCH(QSize, size);

    const XYGrid grid;
    const int w = size.width();
    const int h = size.height();
    const std::vector<QLine> expected = {
            {0, 0, 0, h}, // left
            {0, h, w, h}, // bottom
            {w, 0, w, h}, // right
            {w, 0, 0, 0}, // top
    };
    QVERIFY(grid.outerLines(QRect({0, 0}, size)) == expected);
    QVERIFY(grid.outerLines(QRect({30, -40}, size / 2)) == grid.outerLines(QRect({}, size / 2)));
}

// Only the size of a rectangle matters.
void tst_XYGridLines::place()
{
    XYGrid grid;
    grid.setXRange({0.0, 2.0});
    for (int layout = XYGrid::EquidistantGrid; layout <= XYGrid::LogGrid; ++layout) {
        grid.setXLayout(static_cast<XYGrid::GridLayoutMode>(layout));
        const auto here = grid.innerLines(QRect(0, 0, 123, 45));
        QVERIFY(!here.first.empty());
        QVERIFY(grid.innerLines(QRect(-70, 80, 123, 45)) == here);
    }
}

QTEST_MAIN(tst_XYGridLines)

#include "tst_xygrid_lines.moc"
