// SPDX-License-Identifier: MIT
#include "GridContract.h"

#include <ChartsLibrary/ArcNode.h>
#include <ChartsLibrary/LineNode.h>
#include <ChartsLibrary/SmithGrid.h>

#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace Charts;

namespace {

// In the order of their drawing.
enum Container { InnerArcs, Marker, OuterArcs, RealAxis, ContainerCount };

const QList<std::function<void(SmithGrid &)>> outdatingChanges = {
        [](SmithGrid &grid) { grid.setScale(2.0); },
        [](SmithGrid &grid) { grid.setFlip(true); },
        [](SmithGrid &grid) { grid.setInnerGridLinesColor(Qt::green); },
        [](SmithGrid &grid) { grid.setLineWidth(3.0); },
        [](SmithGrid &grid) {
            grid.setSize({150, 120});
        },
};

} // namespace

// The item and its nodes; the shapes themselves are other tests'.
class tst_SmithGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void metaObject();
    void scale_data() { addScaleRows(); }
    void scale() { checkScale<SmithGrid>(); }
    void flip();
    void fromQml();

    void nodeTree();
    void nodesAreKept();
    void pens_data();
    void pens();
    void rebuilds() { checkRebuilds<SmithGrid>(outdatingChanges); }
    void repaints() { checkRepaints<SmithGrid>(outdatingChanges); }
    void newNode() { checkNewNode<SmithGrid>(); }
    void emptySizes() { checkEmptySizes<PaintedGrid<SmithGrid>>(); }
};

void tst_SmithGrid::initTestCase()
{
    FrameWindow::setUp();
}

void tst_SmithGrid::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_SmithGrid::metaObject()
{
    const QMetaObject &meta = SmithGrid::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::SmithGrid");
    QCOMPARE(meta.superClass(), &AbstractGrid::staticMetaObject);
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 2);

    const QMetaProperty scale = meta.property(meta.propertyOffset());
    QCOMPARE(scale.name(), "scale");
    QCOMPARE(scale.metaType(), QMetaType::fromType<double>());
    QVERIFY(scale.isWritable());
    QCOMPARE(scale.notifySignal().methodSignature(), QByteArray("scaleChanged(double)"));
    QCOMPARE(scale.notifySignal().parameterNames(), QByteArrayList{"scale"});

    const QMetaProperty flip = meta.property(meta.propertyOffset() + 1);
    QCOMPARE(flip.name(), "flip");
    QCOMPARE(flip.metaType(), QMetaType::fromType<bool>());
    QVERIFY(flip.isWritable());
    QCOMPARE(flip.notifySignal().methodSignature(), QByteArray("flipChanged(bool)"));
    QCOMPARE(flip.notifySignal().parameterNames(), QByteArrayList{"flip"});

    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
}

void tst_SmithGrid::flip()
{
    SmithGrid grid;
    QVERIFY(!grid.flip());
    QSignalSpy changes(&grid, &SmithGrid::flipChanged);
    bool flipSeenInside = false;
    QObject::connect(
            &grid, &SmithGrid::flipChanged, &grid, [&](bool) { flipSeenInside = grid.flip(); });
    grid.setFlip(false);
    QCOMPARE(changes.size(), 0);
    grid.setFlip(true);
    QVERIFY(grid.flip());
    QVERIFY(flipSeenInside);
    QCOMPARE(changes, QList<QVariantList>{{true}});
    grid.setFlip(true);
    QCOMPARE(changes.size(), 1);
    grid.setFlip(false);
    QVERIFY(!grid.flip());
    QCOMPARE(changes, (QList<QVariantList>{{true}, {false}}));
}

void tst_SmithGrid::fromQml()
{
    const auto object = createInQml(R"(
SmithGrid {
    scale: 2.5
    flip: true
    property string text: scale + " " + flip
    property string seenScale
    property string seenFlip
    onScaleChanged: (scale) => seenScale += scale + ";"
    onFlipChanged: (flip) => seenFlip += flip + ";"
})");
    auto *grid = qobject_cast<SmithGrid *>(object.get());
    QVERIFY(grid);
    QCOMPARE(grid->scale(), 2.5);
    QVERIFY(grid->flip());
    QCOMPARE(grid->QQuickItem::scale(), 1.0);
    QCOMPARE(grid->property("text").toString(), QStringLiteral("2.5 true"));
    grid->setProperty("seenScale", QString());
    grid->setProperty("seenFlip", QString());
    grid->setScale(4.0);
    grid->setFlip(false);
    QCOMPARE(grid->property("text").toString(), QStringLiteral("4 false"));
    QCOMPARE(grid->property("seenScale").toString(), QStringLiteral("4;"));
    QCOMPARE(grid->property("seenFlip").toString(), QStringLiteral("false;"));
}

void tst_SmithGrid::nodeTree()
{
    PaintedGrid<SmithGrid> grid(QSizeF(200, 200));
    QCOMPARE(grid.paint()->type(), QSGNode::BasicNodeType);
    QCOMPARE(grid.node()->childCount(), int(ContainerCount));
    for (const QSGNode *container : childrenOf(grid.node()))
        QCOMPARE(container->type(), QSGNode::BasicNodeType);
    // Five circles and five pairs of arcs.
    QCOMPARE(grid.container(InnerArcs)->childCount(), 15);
    QVERIFY(holdsOnly<ArcNode>(grid.container(InnerArcs)));
    QCOMPARE(grid.container(Marker)->childCount(), 1);
    QVERIFY(holdsOnly<LineNode>(grid.container(Marker)));
    QCOMPARE(grid.container(OuterArcs)->childCount(), 2);
    QVERIFY(holdsOnly<ArcNode>(grid.container(OuterArcs)));
    QCOMPARE(grid.container(RealAxis)->childCount(), 1);
    QVERIFY(holdsOnly<LineNode>(grid.container(RealAxis)));
}

void tst_SmithGrid::nodesAreKept()
{
    PaintedGrid<SmithGrid> grid(QSizeF(200, 200));
    const QList<QSGNode *> containers = childrenOf(grid.paint());
    const QList<QSGNode *> inner = childrenOf(grid.container(InnerArcs));
    QSGNode *const marker = grid.container(Marker)->firstChild();
    const QList<QSGNode *> outer = childrenOf(grid.container(OuterArcs));
    QSGNode *const axis = grid.container(RealAxis)->firstChild();

    // More: appended. Fewer: taken from the front.
    grid.setScale(2.0);
    grid.paint();
    const QList<QSGNode *> more = childrenOf(grid.container(InnerArcs));
    QCOMPARE(more.size(), 21);
    QCOMPARE(more.first(inner.size()), inner);
    QCOMPARE(childrenOf(grid.container(OuterArcs)), outer);

    grid.setScale(0.5);
    grid.paint();
    QCOMPARE(childrenOf(grid.container(InnerArcs)), more.last(13));
    QCOMPARE(childrenOf(grid.container(OuterArcs)), outer.last(1));
    QVERIFY(DrawnArc(outer.last()).deviation({100, 100}, 100.0) < 1e-3);

    grid.setFlip(true);
    grid.paint();
    QCOMPARE(childrenOf(grid.container(InnerArcs)), more.last(13));
    QCOMPARE(childrenOf(grid.node()), containers);
    QCOMPARE(childrenOf(grid.container(Marker)), QList<QSGNode *>{marker});
    QCOMPARE(childrenOf(grid.container(RealAxis)), QList<QSGNode *>{axis});
}

void tst_SmithGrid::pens_data()
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
    QTest::newRow("no width") << 0.0 << true << QColor(0, 255, 0) << QColor(0, 0, 255, 0)
                              << ColorBytes{0, 255, 0, 255} << ColorBytes{0, 0, 0, 0};
}

void tst_SmithGrid::pens()
{
    QFETCH(double, width);
    QFETCH(bool, isSmooth);
    QFETCH(QColor, inner);
    QFETCH(QColor, outer);
    QFETCH(ColorBytes, innerBytes);
    QFETCH(ColorBytes, outerBytes);
    PaintedGrid<SmithGrid> grid;
    grid.setSize({200, 100});
    grid.setScale(2.0); // no line of a length of zero, which has no width
    grid.setLineWidth(width);
    grid.setInnerGridLinesColor(inner);
    grid.setOuterGridLinesColor(outer);
    if (!isSmooth)
        grid.setAntialiasing(false); // on by default
    grid.paint();
    checkPen<ArcNode, DrawnArc>(grid, InnerArcs, width, isSmooth, innerBytes);
    checkPen<LineNode, DrawnLine>(grid, Marker, width, isSmooth, innerBytes);
    checkPen<ArcNode, DrawnArc>(grid, OuterArcs, width, isSmooth, outerBytes);
    checkPen<LineNode, DrawnLine>(grid, RealAxis, width, isSmooth, outerBytes);
}

QTEST_MAIN(tst_SmithGrid)
#include "tst_smithgrid.moc"
