// SPDX-License-Identifier: MIT
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QMetaEnum>
#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(QMetaProperty)

class tst_ZoomDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void initialState();
    void metaObject();
    void enumeration();
    void minSize();
    void zoomType();

    void startResize();
    void startResizeAgain();
    void updatePoint_data();
    void updatePoint();
    void wholeDrag();
    void boundsAreOfTheStart();
    void stopResize();
    void isAreaValid_data();
    void isAreaValid();
    void resizeArea();
    void corretAccordingToType_data();
    void corretAccordingToType();
    void corretBeforeFirstDrag();
    void corretInfinite();
    void withoutParent();
};

void tst_ZoomDelegate::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ZoomDelegate::initialState()
{
    const ZoomDelegate delegate;
    QCOMPARE(delegate.minSize(), 0);
    QCOMPARE(delegate.zoomType(), ZoomDelegate::Diagonal);
    QCOMPARE(delegate.resizeArea(), QRectF());
    QVERIFY(!delegate.isAreaValid());
    QVERIFY2(delegate.isVisible(), "hiding it before the first drag is up to the application");
}

void tst_ZoomDelegate::metaObject()
{
    const QMetaObject &meta = ZoomDelegate::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::ZoomDelegate");
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 2);

    const QMetaProperty minSize = meta.property(meta.propertyOffset());
    QCOMPARE(minSize.name(), "minSize");
    QCOMPARE(minSize.metaType(), QMetaType::fromType<int>());
    QVERIFY(minSize.isWritable());
    QCOMPARE(minSize.notifySignal().methodSignature(), QByteArray("minSizeChanged()"));

    const QMetaProperty zoomType = meta.property(meta.propertyOffset() + 1);
    QCOMPARE(zoomType.name(), "zoomType");
    QVERIFY(zoomType.isEnumType());
    QVERIFY(!zoomType.isFlagType());
    QVERIFY(zoomType.isWritable());
    QCOMPARE(zoomType.notifySignal().methodSignature(), QByteArray("zoomTypeChanged()"));

    // The operations are for the chart; QML sees the two notify signals only.
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
}

void tst_ZoomDelegate::enumeration()
{
    const auto type = QMetaEnum::fromType<ZoomDelegate::ZoomType>();
    QCOMPARE(type.name(), "ZoomType");
    QCOMPARE(type.keyCount(), 3);
    QCOMPARE(type.key(0), "Diagonal");
    QCOMPARE(type.value(0), 0);
    QCOMPARE(type.key(1), "Vertical");
    QCOMPARE(type.value(1), 1);
    QCOMPARE(type.key(2), "Horizontal");
    QCOMPARE(type.value(2), 2);
}

void tst_ZoomDelegate::minSize()
{
    ZoomDelegate delegate;
    QSignalSpy changes(&delegate, &ZoomDelegate::minSizeChanged);
    delegate.setMinSize(0);
    QCOMPARE(changes.size(), 0);
    int count = 0;
    for (const int size : {5, -3, std::numeric_limits<int>::max()}) {
        delegate.setMinSize(size);
        QCOMPARE(delegate.minSize(), size);
        QCOMPARE(changes.size(), ++count);
        delegate.setMinSize(size);
        QCOMPARE(changes.size(), count);
    }
}

void tst_ZoomDelegate::zoomType()
{
    ZoomDelegate delegate;
    QSignalSpy changes(&delegate, &ZoomDelegate::zoomTypeChanged);
    delegate.setZoomType(ZoomDelegate::Diagonal);
    QCOMPARE(changes.size(), 0);
    int count = 0;
    for (const auto type :
            {ZoomDelegate::Vertical, ZoomDelegate::Horizontal, ZoomDelegate::Diagonal}) {
        delegate.setZoomType(type);
        QCOMPARE(delegate.zoomType(), type);
        QCOMPARE(changes.size(), ++count);
        delegate.setZoomType(type);
        QCOMPARE(changes.size(), count);
    }
}

void tst_ZoomDelegate::startResize()
{
    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    ZoomDelegate delegate(&parent);
    delegate.setVisible(false);
    delegate.setPosition(QPointF(1.0, 2.0));
    delegate.setSize(QSizeF(30.0, 40.0));

    delegate.startResize(QPointF(12.5, 34.25));
    QVERIFY(delegate.isVisible());
    QCOMPARE(delegate.position(), QPointF(12.5, 34.25));
    QCOMPARE(delegate.size(), QSizeF(0.0, 0.0));
    QVERIFY(!delegate.isAreaValid());
}

void tst_ZoomDelegate::startResizeAgain()
{
    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    ZoomDelegate delegate(&parent);
    delegate.startResize(QPointF(10.0, 10.0));
    delegate.updatePoint(QPointF(50.0, 50.0));
    // A second start, without a stop, is a new drag from its own point.
    delegate.startResize(QPointF(100.0, 60.0));
    QCOMPARE(delegate.resizeArea(), QRectF(100.0, 60.0, 0.0, 0.0));
    delegate.updatePoint(QPointF(110.0, 80.0));
    QCOMPARE(delegate.resizeArea(), QRectF(100.0, 60.0, 10.0, 20.0));
}

void tst_ZoomDelegate::updatePoint_data()
{
    QTest::addColumn<ZoomDelegate::ZoomType>("type");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<QRectF>("area"); // in a parent of 200 x 100

    const auto row = [](const char *name, ZoomDelegate::ZoomType type, QPointF from, QPointF to,
                             QRectF area) { QTest::newRow(name) << type << from << to << area; };
    const auto diagonal = ZoomDelegate::Diagonal;
    const auto vertical = ZoomDelegate::Vertical;
    const auto horizontal = ZoomDelegate::Horizontal;
    row("right and down", diagonal, {10, 20}, {40, 70}, {10, 20, 30, 50});
    row("left and up", diagonal, {40, 70}, {10, 20}, {10, 20, 30, 50});
    row("right and up", diagonal, {10, 70}, {40, 20}, {10, 20, 30, 50});
    row("left and down", diagonal, {40, 20}, {10, 70}, {10, 20, 30, 50});
    row("fractions", diagonal, {10, 20}, {10.25, 20.5}, {10, 20, 0.25, 0.5});
    row("beyond right and bottom", diagonal, {150, 60}, {1e9, 1e9}, {150, 60, 50, 40});
    row("beyond left and top", diagonal, {150, 60}, {-5, -1e9}, {0, 0, 150, 60});
    row("from outside to inside", diagonal, {-20, -10}, {30, 40}, {0, 0, 30, 40});
    row("all of it", diagonal, {-1, -1}, {201, 101}, {0, 0, 200, 100});

    row("vertical", vertical, {10, 20}, {40, 70}, {10, 0, 30, 100});
    row("vertical, left and up", vertical, {40, 70}, {10, 20}, {10, 0, 30, 100});
    row("vertical, beyond the right edge", vertical, {150, 20}, {500, 70}, {150, 0, 50, 100});
    row("horizontal", horizontal, {10, 20}, {40, 70}, {0, 20, 200, 50});
    row("horizontal, left and up", horizontal, {40, 70}, {10, 20}, {0, 20, 200, 50});
    row("horizontal, beyond the top", horizontal, {40, 70}, {10, -20}, {0, 0, 200, 70});
}

void tst_ZoomDelegate::updatePoint()
{
    QFETCH(ZoomDelegate::ZoomType, type);
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(QRectF, area);

    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    parent.setPosition(QPointF(1000.0, 2000.0)); // coordinates are the parent's own
    ZoomDelegate delegate(&parent);
    delegate.setZoomType(type);
    delegate.startResize(from);
    delegate.updatePoint(to);
    QCOMPARE(delegate.position(), area.topLeft());
    QCOMPARE(delegate.size(), area.size());
    QCOMPARE(delegate.resizeArea(), area);
    QVERIFY(delegate.isAreaValid());
}

void tst_ZoomDelegate::wholeDrag()
{
    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    ZoomDelegate delegate(&parent);
    delegate.startResize(QPointF(100.0, 50.0));
    delegate.updatePoint(QPointF(150.0, 90.0));
    QCOMPARE(delegate.resizeArea(), QRectF(100.0, 50.0, 50.0, 40.0));
    delegate.updatePoint(QPointF(90.0, 40.0));
    QCOMPARE(delegate.resizeArea(), QRectF(90.0, 40.0, 10.0, 10.0));
    // Back on the start: nothing is spanned.
    delegate.updatePoint(QPointF(100.0, 50.0));
    QCOMPARE(delegate.size(), QSizeF(0.0, 0.0));
    QVERIFY(!delegate.isAreaValid());
    delegate.updatePoint(QPointF(101.0, 51.0));
    QCOMPARE(delegate.resizeArea(), QRectF(100.0, 50.0, 1.0, 1.0));
    delegate.stopResize();
    QCOMPARE(delegate.resizeArea(), QRectF(100.0, 50.0, 1.0, 1.0));
}

void tst_ZoomDelegate::boundsAreOfTheStart()
{
    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    ZoomDelegate delegate(&parent);
    delegate.startResize(QPointF(10.0, 10.0));
    parent.setSize(QSizeF(50.0, 400.0));
    delegate.updatePoint(QPointF(500.0, 500.0));
    QCOMPARE(delegate.resizeArea(), QRectF(10.0, 10.0, 190.0, 90.0));
    delegate.startResize(QPointF(10.0, 10.0));
    delegate.updatePoint(QPointF(500.0, 500.0));
    QCOMPARE(delegate.resizeArea(), QRectF(10.0, 10.0, 40.0, 390.0));
}

void tst_ZoomDelegate::stopResize()
{
    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    ZoomDelegate delegate(&parent);
    delegate.startResize(QPointF(10.0, 10.0));
    delegate.updatePoint(QPointF(50.0, 60.0));
    delegate.stopResize();
    QVERIFY(!delegate.isVisible());
    QCOMPARE(delegate.resizeArea(), QRectF(10.0, 10.0, 40.0, 50.0));
    delegate.stopResize();
    QVERIFY(!delegate.isVisible());
}

void tst_ZoomDelegate::isAreaValid_data()
{
    QTest::addColumn<int>("minSize");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<bool>("valid");

    QTest::newRow("empty") << 0 << QSizeF(0.0, 0.0) << false;
    QTest::newRow("less than a pixel") << 0 << QSizeF(0.001, 0.001) << true;
    QTest::newRow("no width") << 0 << QSizeF(0.0, 50.0) << false;
    QTest::newRow("no height") << 0 << QSizeF(50.0, 0.0) << false;
    QTest::newRow("as large") << 10 << QSizeF(10.0, 10.0) << false;
    QTest::newRow("as wide") << 10 << QSizeF(10.0, 11.0) << false;
    QTest::newRow("as high") << 10 << QSizeF(11.0, 10.0) << false;
    QTest::newRow("a little larger") << 10 << QSizeF(10.0001, 10.0001) << true;
    QTest::newRow("negative minimum") << -1 << QSizeF(0.0, 0.0) << true;
    QTest::newRow("as negative") << -1 << QSizeF(-1.0, 0.0) << false;
    QTest::newRow("largest minimum")
            << std::numeric_limits<int>::max() << QSizeF(1e9, 1e9) << false;
    QTest::newRow("larger than any minimum")
            << std::numeric_limits<int>::max() << QSizeF(1e10, 1e10) << true;
}

void tst_ZoomDelegate::isAreaValid()
{
    QFETCH(int, minSize);
    QFETCH(QSizeF, size);
    QFETCH(bool, valid);

    ZoomDelegate delegate;
    delegate.setMinSize(minSize);
    delegate.setSize(size);
    QCOMPARE(delegate.isAreaValid(), valid);
}

void tst_ZoomDelegate::resizeArea()
{
    ZoomDelegate delegate;
    delegate.setPosition(QPointF(-3.5, 4.25));
    delegate.setSize(QSizeF(5.0, 6.5));
    QCOMPARE(delegate.resizeArea(), QRectF(-3.5, 4.25, 5.0, 6.5));
}

void tst_ZoomDelegate::corretAccordingToType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QRectF>("corrected"); // for bounds of 200 x 100

    const QRectF rect(10.0, 20.0, 30.0, 40.0);
    const QRectF outside(-10.5, 150.0, 1e6, -4.0);
    QTest::newRow("diagonal") << 0 << rect << rect;
    QTest::newRow("diagonal, outside") << 0 << outside << outside;
    QTest::newRow("vertical") << 1 << rect << QRectF(10.0, 0.0, 30.0, 100.0);
    QTest::newRow("vertical, outside") << 1 << outside << QRectF(-10.5, 0.0, 1e6, 100.0);
    QTest::newRow("vertical, empty") << 1 << QRectF() << QRectF(0.0, 0.0, 0.0, 100.0);
    QTest::newRow("horizontal") << 2 << rect << QRectF(0.0, 20.0, 200.0, 40.0);
    QTest::newRow("horizontal, outside") << 2 << outside << QRectF(0.0, 150.0, 200.0, -4.0);
    QTest::newRow("horizontal, empty") << 2 << QRectF() << QRectF(0.0, 0.0, 200.0, 0.0);
    // The only further value that the type of the enumeration can hold.
    QTest::newRow("unknown") << 3 << rect << rect;
    QTest::newRow("unknown, outside") << 3 << outside << outside;
}

void tst_ZoomDelegate::corretAccordingToType()
{
    QFETCH(int, type);
    QFETCH(QRectF, rect);
    QFETCH(QRectF, corrected);

    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    ZoomDelegate delegate(&parent);
    delegate.startResize(QPointF(0.0, 0.0));
    delegate.setZoomType(static_cast<ZoomDelegate::ZoomType>(type));
    const QRectF area = delegate.corretAccordingToType(rect);
    QCOMPARE(area.topLeft(), corrected.topLeft());
    QCOMPARE(area.size(), corrected.size());
}

void tst_ZoomDelegate::corretBeforeFirstDrag()
{
    QQuickItem parent;
    parent.setSize(QSizeF(200.0, 100.0));
    ZoomDelegate delegate(&parent);
    const QRectF rect(10.0, 20.0, 30.0, 40.0);
    QCOMPARE(delegate.corretAccordingToType(rect), rect);
    delegate.setZoomType(ZoomDelegate::Vertical);
    QCOMPARE(delegate.corretAccordingToType(rect), QRectF(10.0, 0.0, 30.0, 0.0));
    delegate.setZoomType(ZoomDelegate::Horizontal);
    QCOMPARE(delegate.corretAccordingToType(rect), QRectF(0.0, 20.0, 0.0, 40.0));
}

void tst_ZoomDelegate::corretInfinite()
{
    // The edge is moved by its distance to 0, which infinity does not come back from.
    const double infinity = std::numeric_limits<double>::infinity();
    ZoomDelegate delegate;
    delegate.setZoomType(ZoomDelegate::Vertical);
    QVERIFY(std::isnan(delegate.corretAccordingToType(QRectF(1.0, infinity, 2.0, 3.0)).y()));
    delegate.setZoomType(ZoomDelegate::Horizontal);
    QVERIFY(std::isnan(delegate.corretAccordingToType(QRectF(-infinity, 1.0, 2.0, 3.0)).x()));
}

void tst_ZoomDelegate::withoutParent()
{
    ZoomDelegate delegate;
    delegate.setVisible(false);
    delegate.startResize(QPointF(10.0, 20.0));
    // Newer versions of Qt tell of an item without a parent that it is hidden, whatever was set.
    QQuickItem parent;
    const auto isSetVisible = [&] {
        delegate.setParentItem(&parent);
        const bool isVisible = delegate.isVisible();
        delegate.setParentItem(nullptr);
        return isVisible;
    };
    QVERIFY(isSetVisible());
    QCOMPARE(delegate.position(), QPointF(10.0, 20.0));
    // There is nothing to drag in.
    delegate.updatePoint(QPointF(50.0, 60.0));
    QCOMPARE(delegate.size(), QSizeF(0.0, 0.0));
    QVERIFY(!delegate.isAreaValid());
    delegate.stopResize();
    QVERIFY(!isSetVisible());
}

QTEST_MAIN(tst_ZoomDelegate)

#include "tst_zoomdelegate.moc"
