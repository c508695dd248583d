// SPDX-License-Identifier: MIT
#include "DirtyMarks.h"
#include "GridContract.h"

#include <ChartsLibrary/LineNode.h>
#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

// The containers in the order of their drawing.
constexpr qsizetype inner = 0;
constexpr qsizetype outer = 1;

constexpr ColorBytes clear = {0, 0, 0, 0};

using Grid = PaintedGrid<XYGrid>;

QList<QLineF> linesOf(const QList<DrawnLine> &drawn)
{
    QList<QLineF> lines;
    for (const DrawnLine &line : drawn)
        lines += line.line;
    return lines;
}

QList<QLineF> linesOf(const std::vector<QLine> &exact)
{
    return {exact.cbegin(), exact.cend()};
}

/*! Whether each container shows its lines for an item of \a size, in their order. */
bool showsLines(const Grid &grid, const QSize &size)
{
    const QRect rect({0, 0}, size);
    return linesOf(grid.lines(inner)) == linesOf(grid.innerLines(rect).first)
           && linesOf(grid.lines(outer)) == linesOf(grid.outerLines(rect));
}

} // namespace

class tst_XYGridNodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void tree();
    void vertices();
    void smoothVertices();
    void layouts();
    void pens_data();
    void pens();
    void penOfTheBorder();
    void growsAtTheEnd();
    void shrinksFromTheFront();
    void unchangedWritesNothing();
    void rewritesEverything();
    void rebuilds();
    void newNode();
    void emptySizes();
    void changesWhileEmpty();
    void roundedSizes_data();
    void roundedSizes();
};

void tst_XYGridNodes::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_XYGridNodes::tree()
{
    Grid grid(QSizeF(101, 51));
    grid.setXRange({0.0, 10.0});
    grid.setYCount(5);
    const QSGNode *root = grid.paint();
    QVERIFY(root);
    QVERIFY(!root->parent());
    QCOMPARE(root->type(), QSGNode::BasicNodeType);
    QCOMPARE(root->childCount(), 2);
    for (const QSGNode *container : childrenOf(root)) {
        QCOMPARE(container->type(), QSGNode::BasicNodeType);
        QVERIFY(holdsOnly<LineNode>(container));
        // It goes with its parent.
        QVERIFY(container->flags() & QSGNode::OwnedByParent);
    }
    QCOMPARE(grid.container(inner)->childCount(), 9 + 4);
    QCOMPARE(grid.container(outer)->childCount(), 4);
    QVERIFY(showsLines(grid, {101, 51}));

    const QList<QLineF> lines = linesOf(grid.lines(inner));
    QCOMPARE(lines.first(), QLineF(10, 0, 10, 51));
    QCOMPARE(lines.at(8), QLineF(90, 0, 90, 51));
    QCOMPARE(lines.at(9), QLineF(0, 10, 101, 10));
    QCOMPARE(lines.last(), QLineF(0, 40, 101, 40));
    QCOMPARE(linesOf(grid.lines(outer)),
            QList<QLineF>({{0, 0, 0, 51}, {0, 51, 101, 51}, {101, 0, 101, 51}, {101, 0, 0, 0}}));
}

void tst_XYGridNodes::vertices()
{
    Grid grid(QSizeF(101, 51));
    grid.setYCount(1);
    grid.setLineWidth(3.0);
    grid.setInnerGridLinesColor(QColor(255, 0, 0));
    grid.setOuterGridLinesColor(QColor(0, 255, 0));
    grid.paint();

    constexpr ColorBytes red = {255, 0, 0, 255};
    const auto vertical =
            verticesOf(*static_cast<const QSGGeometryNode *>(grid.container(inner)->firstChild()));
    const QList<Vertex> tenth = {
            {8.5F, 0.0F, red, 0.0F, 0.0F},
            {8.5F, 51.0F, red, 0.0F, 0.0F},
            {11.5F, 0.0F, red, 0.0F, 0.0F},
            {11.5F, 51.0F, red, 0.0F, 0.0F},
    };
    QCOMPARE(vertical, tenth);

    constexpr ColorBytes green = {0, 255, 0, 255};
    const auto top =
            verticesOf(*static_cast<const QSGGeometryNode *>(grid.container(outer)->lastChild()));
    const QList<Vertex> toTheLeft = {
            {101.0F, -1.5F, green, 0.0F, 0.0F},
            {0.0F, -1.5F, green, 0.0F, 0.0F},
            {101.0F, 1.5F, green, 0.0F, 0.0F},
            {0.0F, 1.5F, green, 0.0F, 0.0F},
    };
    QCOMPARE(top, toTheLeft);
}

void tst_XYGridNodes::smoothVertices()
{
    Grid grid(QSizeF(101, 51));
    grid.setAntialiasing(true);
    grid.setYCount(1);
    grid.setLineWidth(3.0);
    grid.setInnerGridLinesColor(QColor(255, 0, 0));
    grid.paint();
    constexpr ColorBytes red = {255, 0, 0, 255};
    const float reach = 3.0F * 0.4F;
    const QList<Vertex> tenth = {
            {9.0F, 0.5F, clear, -reach, 0.0F},
            {9.0F, 51.5F, clear, -reach, 0.0F},
            {9.0F, 0.5F, red, reach, -0.0F},
            {9.0F, 51.5F, red, reach, -0.0F},
            {12.0F, 0.5F, red, -reach, 0.0F},
            {12.0F, 51.5F, red, -reach, 0.0F},
            {12.0F, 0.5F, clear, reach, -0.0F},
            {12.0F, 51.5F, clear, reach, -0.0F},
    };
    QCOMPARE(verticesOf(*static_cast<const QSGGeometryNode *>(grid.container(inner)->firstChild())),
            tenth);
}

void tst_XYGridNodes::layouts()
{
    Grid grid(QSizeF(301, 77));
    QSGNode *node = nullptr;
    for (const Span &range : {Span(0.0, 2.0), Span(2.0, 0.0), Span(0.5, 2.5)}) {
        grid.setXRange(range);
        for (int layout = XYGrid::EquidistantGrid; layout <= XYGrid::LogGrid; ++layout) {
            grid.setXLayout(static_cast<XYGrid::GridLayoutMode>(layout));
            QVERIFY(grid.paint());
            QVERIFY(!node || grid.node() == node);
            node = grid.node();
            QVERIFY(showsLines(grid, {301, 77}));
        }
    }
}

void tst_XYGridNodes::pens_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<bool>("isSmooth");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<ColorBytes>("bytes");

    QTest::newRow("plain") << 1.0 << false << QColor(10, 20, 30) << ColorBytes{10, 20, 30, 255};
    QTest::newRow("smooth") << 1.0 << true << QColor(10, 20, 30) << ColorBytes{10, 20, 30, 255};
    QTest::newRow("wide") << 12.5 << false << QColor(255, 0, 0) << ColorBytes{255, 0, 0, 255};
    QTest::newRow("wide and smooth")
            << 12.5 << true << QColor(0, 0, 255) << ColorBytes{0, 0, 255, 255};
    QTest::newRow("translucent") << 2.0 << true << QColor(255, 255, 0, 51)
                                 << ColorBytes{51, 51, 0, 51};
    QTest::newRow("transparent") << 2.0 << true << QColor(Qt::transparent) << ColorBytes{};
    QTest::newRow("no width") << 0.0 << false << QColor(255, 0, 0) << ColorBytes{255, 0, 0, 255};
}

void tst_XYGridNodes::pens()
{
    QFETCH(double, width);
    QFETCH(bool, isSmooth);
    QFETCH(QColor, color);
    QFETCH(ColorBytes, bytes);

    const QColor otherColor(0, 255, 255);
    constexpr ColorBytes otherBytes = {0, 255, 255, 255};
    for (const bool isInner : {true, false}) {
        Grid grid(QSizeF(101, 51));
        grid.paint(); // with another pen
        grid.setAntialiasing(isSmooth);
        grid.setLineWidth(width);
        grid.setInnerGridLinesColor(isInner ? color : otherColor);
        grid.setOuterGridLinesColor(isInner ? otherColor : color);
        grid.paint();
        checkPen<LineNode, DrawnLine>(grid, inner, width, isSmooth, isInner ? bytes : otherBytes);
        checkPen<LineNode, DrawnLine>(grid, outer, width, isSmooth, isInner ? otherBytes : bytes);
    }
}

void tst_XYGridNodes::penOfTheBorder()
{
    Grid grid(QSizeF(101, 51));
    grid.paint();
    // The colours of a new grid.
    checkPen<LineNode, DrawnLine>(grid, inner, 1.0, false, {128, 128, 128, 255});
    checkPen<LineNode, DrawnLine>(grid, outer, 1.0, false, {160, 160, 164, 255});

    // Waits for something else to rebuild the lines.
    grid.setOuterGridLinesColor(QColor(255, 0, 0));
    grid.paint();
    checkPen<LineNode, DrawnLine>(grid, outer, 1.0, false, {160, 160, 164, 255});
    grid.setXRange({0.0, 1.0});
    grid.paint();
    checkPen<LineNode, DrawnLine>(grid, outer, 1.0, false, {255, 0, 0, 255});
}

void tst_XYGridNodes::growsAtTheEnd()
{
    Grid grid(QSizeF(101, 51));
    grid.setYCount(3);
    grid.paint();
    const QList<QSGNode *> before = childrenOf(grid.container(inner));
    const QList<QSGNode *> border = childrenOf(grid.container(outer));
    QCOMPARE(before.size(), 9 + 2);
    grid.setYCount(7);
    grid.paint();
    const QList<QSGNode *> after = childrenOf(grid.container(inner));
    QCOMPARE(after.size(), 9 + 6);
    QCOMPARE(after.first(before.size()), before);
    QCOMPARE(childrenOf(grid.container(outer)), border);
    QVERIFY(showsLines(grid, {101, 51}));
}

void tst_XYGridNodes::shrinksFromTheFront()
{
    Grid grid(QSizeF(101, 51));
    grid.paint();
    const QList<QSGNode *> before = childrenOf(grid.container(inner));
    QCOMPARE(before.size(), 9 + 9);
    grid.setYCount(3);
    grid.paint();
    QCOMPARE(childrenOf(grid.container(inner)), before.last(9 + 2));
    QVERIFY(showsLines(grid, {101, 51}));

    grid.setXLayout(XYGrid::LogGrid);
    grid.setYCount(0);
    grid.paint();
    QCOMPARE(grid.container(inner)->childCount(), 0);
    QVERIFY(showsLines(grid, {101, 51}));
}

void tst_XYGridNodes::unchangedWritesNothing()
{
    Grid grid(QSizeF(101, 51));
    const QSGNode *node = grid.paint();
    const QList<QSGNode *> lines = childrenOf(grid.container(inner));
    // A mark of the test's own, which writing would overwrite.
    auto *first = static_cast<QSGGeometryNode *>(grid.container(inner)->firstChild());
    auto *last = static_cast<QSGGeometryNode *>(grid.container(outer)->lastChild());
    for (QSGGeometryNode *marked : {first, last})
        static_cast<float *>(marked->geometry()->vertexData())[0] = 12345.0F;

    DirtyMarks marks;
    grid.setOuterGridLinesColor(Qt::red);
    grid.setAntialiasing(true);
    grid.setXRange({0.0, 0.0});
    grid.setLineWidth(1.0);
    grid.updateLabels();
    grid.updateGeomerty();
    QCOMPARE(grid.paint(), node);
    QVERIFY(marks.take().isEmpty());
    QCOMPARE(childrenOf(grid.container(inner)), lines);
    QCOMPARE(verticesOf(*first).at(0).x, 12345.0F);
    QCOMPARE(verticesOf(*last).at(0).x, 12345.0F);
}

void tst_XYGridNodes::rewritesEverything()
{
    Grid grid(QSizeF(101, 51));
    grid.paint();
    DirtyMarks marks;
    grid.setYCount(9);
    grid.setYCount(10); // nothing to be seen, but rebuilt all the same
    grid.paint();
    // The border first.
    QList<DirtyMarks::Mark> expected;
    for (const qsizetype container : {outer, inner}) {
        for (const QSGNode *child : childrenOf(grid.container(container)))
            expected += {child, QSGNode::DirtyGeometry};
    }
    QCOMPARE(marks.take(), expected);
    grid.paint();
    QVERIFY(marks.take().isEmpty());
}

void tst_XYGridNodes::rebuilds()
{
    checkRebuilds<XYGrid>({
            [](XYGrid &grid) { grid.setXLayout(XYGrid::LogGrid); },
            [](XYGrid &grid) {
                grid.setXRange({0.0, 1.0});
            },
            [](XYGrid &grid) { grid.setYCount(4); },
            [](XYGrid &grid) {
                grid.setSize({100.0, 100.0});
            },
            [](XYGrid &grid) { grid.setX(10.0); },
            [](XYGrid &grid) { grid.setLineWidth(2.0); },
            [](XYGrid &grid) { grid.setInnerGridLinesColor(Qt::green); },
    });
}

void tst_XYGridNodes::newNode()
{
    checkNewNode<XYGrid>();
}

void tst_XYGridNodes::emptySizes()
{
    checkEmptySizes<PaintedGrid<XYGrid>>();
}

// What changes without an area shows as soon as there is one.
void tst_XYGridNodes::changesWhileEmpty()
{
    Grid grid(QSizeF(101, 51));
    grid.paint();
    grid.setWidth(0.0);
    grid.setYCount(2);
    grid.setOuterGridLinesColor(QColor(255, 0, 0));
    QVERIFY(!grid.paint());
    QVERIFY(!grid.paint());
    grid.setWidth(81.0);
    QVERIFY(grid.paint());
    QVERIFY(showsLines(grid, {81, 51}));
    QCOMPARE(grid.container(inner)->childCount(), 9 + 1);
    checkPen<LineNode, DrawnLine>(grid, outer, 1.0, false, {255, 0, 0, 255});
}

void tst_XYGridNodes::roundedSizes_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSize>("rounded");

    constexpr double inf = std::numeric_limits<double>::infinity();
    const QSize nothing;
    QTest::newRow("whole") << QSizeF(40.0, 30.0) << QSize(40, 30);
    QTest::newRow("down") << QSizeF(40.4, 30.49) << QSize(40, 30);
    QTest::newRow("up") << QSizeF(40.6, 30.51) << QSize(41, 31);
    QTest::newRow("halves up") << QSizeF(40.5, 31.5) << QSize(41, 32);
    QTest::newRow("half a pixel") << QSizeF(0.5, 0.5) << QSize(1, 1);
    QTest::newRow("less than half a pixel") << QSizeF(0.49, 30.0) << nothing;
    // Qt adds a half to round, and the sum is 1.
    QTest::newRow("hardly less than half a pixel")
            << QSizeF(0.49999999999999994, 30.0) << QSize(1, 30);
    QTest::newRow("flat") << QSizeF(40.0, 0.2) << nothing;
    QTest::newRow("huge") << QSizeF(1e300, 30.0) << QSize(2147483647, 30);
    QTest::newRow("infinite") << QSizeF(40.0, inf) << QSize(40, 2147483647);
    QTest::newRow("negative") << QSizeF(-0.6, 30.0) << nothing;
    QTest::newRow("huge and negative") << QSizeF(-1e300, 30.0) << nothing;
    QTest::newRow("lowest") << QSizeF(40.0, -2147483648.0) << nothing;
    QTest::newRow("minus infinity") << QSizeF(-inf, -inf) << nothing;
}

void tst_XYGridNodes::roundedSizes()
{
    QFETCH(QSizeF, size);
    QFETCH(QSize, rounded);

    Grid grid(size);
    grid.setXRange({0.0, 1.0});
    QCOMPARE(grid.paint() != nullptr, rounded.isValid());
    if (!grid.node())
        return;
    QCOMPARE(grid.container(inner)->childCount(), 9 + 9);
    // Large coordinates lose digits as vertices.
    const auto isNear = [](double a, double b) { return std::abs(a - b) <= 1e-6 * std::abs(b); };
    const QLineF right = grid.lines(outer).at(2).line;
    QVERIFY(isNear(right.x1(), rounded.width()) && isNear(right.y2(), rounded.height()));
    if (rounded.width() < 1000 && rounded.height() < 1000)
        QVERIFY(showsLines(grid, rounded));
}

QTEST_MAIN(tst_XYGridNodes)

#include "tst_xygrid_nodes.moc"
