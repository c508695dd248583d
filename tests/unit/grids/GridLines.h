// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_GRIDLINES_H
#define CHARTS_TEST_GRIDLINES_H

#include <ChartsLibrary/XYGrid.h>

#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

/*! The inner lines of a grid, taken apart. */
struct GridLines
{
    QList<int> columns;
    QList<double> values;
    QList<int> rows;
    /*! What is wrong with their shape, or nothing: vertical lines over the whole height, one for
        each value, and then horizontal ones over the whole width. */
    QByteArray error;

    GridLines(const Charts::XYGrid &grid, const QRect &rect)
    {
        const auto [lines, labelValues] = grid.innerLines(rect);
        for (const double value : labelValues)
            values += value;
        if (lines.size() < labelValues.size()) {
            error = "more values than lines";
            return;
        }
        const int width = rect.right() - rect.left() + 1;
        const int height = rect.bottom() - rect.top() + 1;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const QLine &line = lines.at(i);
            const bool isColumn = i < labelValues.size();
            if (isColumn)
                columns += line.x1();
            else
                rows += line.y1();
            const QLine expected = isColumn ? QLine(line.x1(), 0, line.x1(), height)
                                            : QLine(0, line.y1(), width, line.y1());
            if (line != expected)
                error = "line " + QByteArray::number(int(i)) + " has a wrong shape";
        }
    }
};

/*! A grid of a layout and a range, without horizontal lines. */
struct ColumnGrid : Charts::XYGrid
{
    ColumnGrid(GridLayoutMode layout, const Charts::Span &range)
    {
        setYCount(1);
        setXLayout(layout);
        // From here, the smallest range is a change, too.
        setXRange({-7.0, 77.0});
        setXRange(range);
    }
};

/*! The first difference beyond a few units in the last place of the largest value. */
inline QByteArray difference(const QList<double> &actual, const QList<double> &expected)
{
    if (actual.size() != expected.size()) {
        return QByteArray::number(actual.size()) + " values, expected "
               + QByteArray::number(expected.size());
    }
    double scale = 0.0;
    for (const double value : expected)
        scale = std::max(scale, std::abs(value));
    for (qsizetype i = 0; i < actual.size(); ++i) {
        if (std::abs(actual.at(i) - expected.at(i)) <= 1e-15 * scale)
            continue;
        return "value " + QByteArray::number(i) + " is " + QByteArray::number(actual.at(i), 'g', 17)
               + ", expected " + QByteArray::number(expected.at(i), 'g', 17);
    }
    return {};
}

#define COMPARE_VALUES(actual, expected)                                                           \
    do {                                                                                           \
        const QByteArray text = difference(actual, expected);                                      \
        QVERIFY2(text.isEmpty(), text.constData());                                                \
    } while (false)

#endif
