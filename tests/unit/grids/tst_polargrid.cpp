// SPDX-License-Identifier: MIT
#include "GridContract.h"

#include <ChartsLibrary/ArcNode.h>
#include <ChartsLibrary/LineNode.h>
#include <ChartsLibrary/PolarGrid.h>

#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

namespace {

// In the order of their drawing.
enum Container { Spokes, Rings, Axes, Boundary, ContainerCount };

const QList<std::function<void(PolarGrid &)>> outdatingChanges = {
        [](PolarGrid &grid) { grid.setScale(2.0); },
        [](PolarGrid &grid) { grid.setInnerGridLinesColor(Qt::green); },
        [](PolarGrid &grid) { grid.setLineWidth(3.0); },
        [](PolarGrid &grid) {
            grid.setSize({150, 120});
        },
};

} // namespace

// The item and its nodes; the shapes themselves are another test's.
class tst_PolarGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void metaObject();
    void scale_data() { addScaleRows(); }
    void scale() { checkScale<PolarGrid>(); }
    void fromQml();

    void nodeTree();
    void nodesAreKept();
    void pens_data();
    void pens();
    void rebuilds() { checkRebuilds<PolarGrid>(outdatingChanges); }
    void repaints() { checkRepaints<PolarGrid>(outdatingChanges); }
    void newNode() { checkNewNode<PolarGrid>(); }
    void emptySizes() { checkEmptySizes<PaintedGrid<PolarGrid>>(); }
};

void tst_PolarGrid::initTestCase()
{
    FrameWindow::setUp();
}

void tst_PolarGrid::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_PolarGrid::metaObject()
{
    const QMetaObject &meta = PolarGrid::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::PolarGrid");
    QCOMPARE(meta.superClass(), &AbstractGrid::staticMetaObject);
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 1);
    const QMetaProperty scale = meta.property(meta.propertyOffset());
    QCOMPARE(scale.name(), "scale");
    QCOMPARE(scale.metaType(), QMetaType::fromType<double>());
    QVERIFY(scale.isWritable());
    QCOMPARE(scale.notifySignal().methodSignature(), QByteArray("scaleChanged(double)"));
    QCOMPARE(scale.notifySignal().parameterNames(), QByteArrayList{"scale"});
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
}

void tst_PolarGrid::fromQml()
{
    const auto object = createInQml(R"(
PolarGrid {
    scale: 2.5
    property real doubled: scale * 2
    property real seen: 0
    property int seenCount: 0
    onScaleChanged: (scale) => { seen = scale; ++seenCount }
})");
    auto *grid = qobject_cast<PolarGrid *>(object.get());
    QVERIFY(grid);
    QCOMPARE(grid->scale(), 2.5);
    QCOMPARE(grid->QQuickItem::scale(), 1.0);
    QCOMPARE(grid->property("doubled").toDouble(), 5.0);
    const int count = grid->property("seenCount").toInt();
    grid->setScale(4.0);
    QCOMPARE(grid->property("doubled").toDouble(), 8.0);
    QCOMPARE(grid->property("seen").toDouble(), 4.0);
    QCOMPARE(grid->property("seenCount").toInt(), count + 1);
}

void tst_PolarGrid::nodeTree()
{
    PaintedGrid<PolarGrid> grid(QSizeF(200, 100));
    QCOMPARE(grid.paint()->type(), QSGNode::BasicNodeType);
    QCOMPARE(grid.node()->childCount(), int(ContainerCount));
    for (const QSGNode *container : childrenOf(grid.node()))
        QCOMPARE(container->type(), QSGNode::BasicNodeType);
    QCOMPARE(grid.container(Spokes)->childCount(), 28);
    QVERIFY(holdsOnly<LineNode>(grid.container(Spokes)));
    QCOMPARE(grid.container(Rings)->childCount(), 4);
    QVERIFY(holdsOnly<ArcNode>(grid.container(Rings)));
    QCOMPARE(grid.container(Axes)->childCount(), 2);
    QVERIFY(holdsOnly<LineNode>(grid.container(Axes)));
    QCOMPARE(grid.container(Boundary)->childCount(), 1);
    QVERIFY(holdsOnly<ArcNode>(grid.container(Boundary)));
}

void tst_PolarGrid::nodesAreKept()
{
    PaintedGrid<PolarGrid> grid(QSizeF(200, 100));
    const QList<QSGNode *> containers = childrenOf(grid.paint());
    const QList<QSGNode *> spokes = childrenOf(grid.container(Spokes));
    const QList<QSGNode *> rings = childrenOf(grid.container(Rings));
    const QList<QSGNode *> axes = childrenOf(grid.container(Axes));
    QSGNode *const first = grid.container(Boundary)->firstChild();

    grid.setScale(2.0);
    grid.paint();
    QCOMPARE(childrenOf(grid.node()), containers);
    QCOMPARE(childrenOf(grid.container(Spokes)), spokes);
    QCOMPARE(childrenOf(grid.container(Rings)), rings);
    QCOMPARE(childrenOf(grid.container(Axes)), axes);
    QCOMPARE(grid.container(Boundary)->childCount(), 2);
    QCOMPARE(grid.container(Boundary)->firstChild(), first);
    QSGNode *const second = grid.container(Boundary)->lastChild();

    // A surplus node goes from the front; the one that stays is written anew.
    grid.setScale(1.0);
    grid.paint();
    QCOMPARE(childrenOf(grid.container(Boundary)), QList<QSGNode *>{second});
    QVERIFY(DrawnArc(second).deviation({100, 50}, 50.0) < 1e-3);
}

void tst_PolarGrid::pens_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<bool>("isSmooth");
    QTest::addColumn<QColor>("inner");
    QTest::addColumn<QColor>("outer");
    QTest::addColumn<ColorBytes>("innerBytes");
    QTest::addColumn<ColorBytes>("outerBytes");
    const ColorBytes darkGray = {128, 128, 128, 255};
    const ColorBytes gray = {160, 160, 164, 255};
    QTest::newRow("defaults") << 1.0 << true << QColor(Qt::darkGray) << QColor(Qt::gray) << darkGray
                              << gray;
    QTest::newRow("plain") << 1.0 << false << QColor(Qt::darkGray) << QColor(Qt::gray) << darkGray
                           << gray;
    QTest::newRow("wide, coloured") << 4.5 << true << QColor(255, 0, 0) << QColor(0, 0, 255)
                                    << ColorBytes{255, 0, 0, 255} << ColorBytes{0, 0, 255, 255};
    QTest::newRow("plain, coloured") << 2.0 << false << QColor(255, 0, 0) << QColor(0, 0, 255, 0)
                                     << ColorBytes{255, 0, 0, 255} << ColorBytes{0, 0, 0, 0};
    QTest::newRow("no width") << 0.0 << true << QColor(0, 255, 0) << QColor(0, 0, 255)
                              << ColorBytes{0, 255, 0, 255} << ColorBytes{0, 0, 255, 255};
}

void tst_PolarGrid::pens()
{
    QFETCH(double, width);
    QFETCH(bool, isSmooth);
    QFETCH(QColor, inner);
    QFETCH(QColor, outer);
    QFETCH(ColorBytes, innerBytes);
    QFETCH(ColorBytes, outerBytes);
    PaintedGrid<PolarGrid> grid;
    grid.setSize({200, 100});
    grid.setScale(2.0);
    grid.setLineWidth(width);
    grid.setInnerGridLinesColor(inner);
    grid.setOuterGridLinesColor(outer);
    if (!isSmooth)
        grid.setAntialiasing(false); // on by default
    grid.paint();
    checkPen<LineNode, DrawnLine>(grid, Spokes, width, isSmooth, innerBytes);
    checkPen<ArcNode, DrawnArc>(grid, Rings, width, isSmooth, innerBytes);
    checkPen<LineNode, DrawnLine>(grid, Axes, width, isSmooth, outerBytes);
    checkPen<ArcNode, DrawnArc>(grid, Boundary, width, isSmooth, outerBytes);
}

QTEST_MAIN(tst_PolarGrid)
#include "tst_polargrid.moc"
