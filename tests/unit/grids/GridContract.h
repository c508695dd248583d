// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_GRIDCONTRACT_H
#define CHARTS_TEST_GRIDCONTRACT_H

#include "CountedItem.h"
#include "CreateInQml.h"
#include "PaintedGrid.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <functional>
#include <limits>

// What a polar and a Smith chart have in common, as bodies of test functions.

/*! Columns and rows for checkScale(). */
inline void addScaleRows()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::addColumn<bool>("isChange");
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto row = [](const char *name, double first, double second, bool isChange) {
        QTest::newRow(name) << first << second << isChange;
    };
    row("another value", 2.0, 3.0, true);
    row("the same value", 2.0, 2.0, false);
    row("the initial value", 1.0, 1.0, false);
    row("a 10^-13th more", 2.0, 2.0000000000002, false);
    row("a 10^-13th less", 2.0, 1.9999999999998, false);
    row("three 10^-12ths more", 2.0, 2.000000000006, true);
    row("three 10^-12ths less", 2.0, 1.999999999994, true);
    row("relative, small", 1e-20, 1.1e-20, true);
    row("relative, large", 1e20, 1.00000000000001e20, false);
    row("to zero", 2.0, 0.0, true);
    row("zero to zero", 0.0, 0.0, false);
    row("zero to next to nothing", 0.0, 1e-300, true);
    row("next to nothing to zero", 1e-300, 0.0, true);
    row("other sign", 2.0, -2.0, true);
    row("below what is drawn", 0.0005, 0.0004, true);
    row("to infinity", 2.0, infinity, true);
    row("from infinity", infinity, 2.0, true);
    row("to not a number", 2.0, nan, true);
    row("from not a number", nan, 2.0, true);
}

template<typename Grid>
void checkScale()
{
    QFETCH(double, first);
    QFETCH(double, second);
    QFETCH(bool, isChange);
    Grid grid;
    QVERIFY(grid.scale() == 1.0);
    grid.setScale(first);

    double scaleSeenInside = -1.0;
    QObject::connect(
            &grid, &Grid::scaleChanged, &grid, [&](double) { scaleSeenInside = grid.scale(); });
    QSignalSpy changes(&grid, &Grid::scaleChanged);
    const double before = grid.scale();
    grid.setScale(second);
    const auto isSame = [](double a, double b) {
        return a == b || (std::isnan(a) && std::isnan(b));
    };
    QVERIFY(isSame(grid.scale(), isChange ? second : before));
    QCOMPARE(changes.size(), isChange ? 1 : 0);
    if (isChange) {
        QVERIFY(isSame(changes.at(0).at(0).toDouble(), second));
        QVERIFY(isSame(scaleSeenInside, second));
    }
    QVERIFY2(static_cast<QQuickItem &>(grid).QQuickItem::scale() == 1.0,
            "the item itself is not scaled");
}

/*! The vertices stay until something marks the lines as outdated. */
template<typename Grid>
void checkRebuilds(const QList<std::function<void(Grid &)>> &changes)
{
    for (const auto &change : changes) {
        PaintedGrid<Grid> grid(QSizeF(200, 100));
        QSGNode *node = grid.paint();
        const QList<QByteArray> before = grid.picture();
        QVERIFY(!before.isEmpty());

        // Shown with the next rebuild, and cause none.
        grid.setOuterGridLinesColor(Qt::red);
        grid.setAntialiasing(true);
        QCOMPARE(grid.paint(), node);
        QCOMPARE(grid.picture(), before);

        change(grid);
        QCOMPARE(grid.paint(), node);
        const QList<QByteArray> after = grid.picture();
        QVERIFY(after != before);
        QCOMPARE(grid.paint(), node);
        QCOMPARE(grid.picture(), after);
        grid.setAntialiasing(false);
        grid.paint();
        QCOMPARE(grid.picture(), after);
    }
}

/*! The scene graph may have thrown the nodes away, with the window that they were in. */
template<typename Grid>
void checkNewNode()
{
    PaintedGrid<Grid> grid(QSizeF(200, 100));
    grid.paint();
    const QList<QByteArray> picture = grid.picture();
    grid.loseNode();
    QVERIFY(grid.paint());
    QCOMPARE(grid.picture(), picture);
    // The flag is spent all the same.
    grid.setOuterGridLinesColor(Qt::red);
    grid.paint();
    QCOMPARE(grid.picture(), picture);
}

/*! A window asks for new nodes after each of \a changes, and not after a new outer colour. */
template<typename Grid>
void checkRepaints(const QList<std::function<void(Grid &)>> &changes)
{
    FrameWindow window;
    CountedItem<Grid> grid;
    grid.setSize({200, 100});
    grid.setParentItem(window.contentItem());
    QVERIFY(window.start());
    QVERIFY(grid.takeCount() > 0);
    QVERIFY(window.frame());
    QCOMPARE(grid.takeCount(), 0);
    for (const auto &change : changes) {
        change(grid);
        QVERIFY(window.frame());
        QCOMPARE(grid.takeCount(), 1);
        grid.setOuterGridLinesColor(grid.outerGridLinesColor() == Qt::red ? Qt::blue : Qt::red);
        QVERIFY(window.frame());
        QCOMPARE(grid.takeCount(), 0);
    }
}

/*! Lines and arcs of the \a containers: all as wide as \a grid says, in \a color, smooth or not. */
template<typename Node, typename Shape, typename Grid>
void checkPen(const PaintedGrid<Grid> &grid, qsizetype container, double width, bool isSmooth,
        const ColorBytes &color)
{
    QVERIFY(holdsOnly<Node>(grid.container(container)));
    const QList<QSGNode *> children = childrenOf(grid.container(container));
    QVERIFY(!children.isEmpty());
    for (const QSGNode *child : children) {
        const Shape shape(child);
        QCOMPARE(shape.isSmooth, isSmooth);
        QCOMPARE(shape.color, color);
        QVERIFY2(std::abs(shape.width - width) < 1e-4, QByteArray::number(shape.width).constData());
    }
}

#endif
