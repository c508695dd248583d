// SPDX-License-Identifier: MIT
#include "PaintedCurve.h"

#include <ChartsLibrary/Curve.h>
#include <ChartsLibrary/LineNode.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

constexpr ColorBytes clear = {0, 0, 0, 0};
constexpr ColorBytes gray = {160, 160, 164, 255};

using Painted = PaintedCurve<Curve>;
using Ends = RecordingTransform::Ends;

/*! A curve at any place of its own coordinates. */
class PlacedCurve : public Painted
{
public:
    explicit PlacedCurve(const QRectF &place)
        : m_place(place)
    {
    }

    [[nodiscard]] QRectF boundingRect() const override { return m_place; }

private:
    QRectF m_place;
};

} // namespace

class tst_CurveNodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void tree();
    void vertices();
    void polylines_data();
    void polylines();
    void pens_data();
    void pens();
    void shapes();
    void withoutTransform();
    void emptySizes();
    void roundedSizes_data();
    void roundedSizes();
    void extremeSizes();
};

void tst_CurveNodes::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_CurveNodes::tree()
{
    Painted curve;
    const QSGNode *root = curve.paint();
    QVERIFY(root);
    QVERIFY(!root->parent());
    QCOMPARE(root->type(), QSGNode::BasicNodeType);
    QCOMPARE(root->childCount(), 1);
    QVERIFY(dynamic_cast<LineNode *>(root->firstChild()));
    // It goes with its parent.
    QVERIFY(root->firstChild()->flags() & QSGNode::OwnedByParent);
    QCOMPARE(root->firstChild()->childCount(), 0);
}

void tst_CurveNodes::vertices()
{
    LinearCurveTransform transform;
    Painted curve;
    curve.setGeometryTransform(&transform);
    curve.setP2({100.0, 0.0});
    curve.paint();
    const QList<Vertex> toTheRight = {
            {0.5F, 1.0F, clear, 0.0F, 0.4F},
            {100.5F, 1.0F, clear, 0.0F, 0.4F},
            {0.5F, 1.0F, gray, -0.0F, -0.4F},
            {100.5F, 1.0F, gray, -0.0F, -0.4F},
            {0.5F, 0.0F, gray, 0.0F, 0.4F},
            {100.5F, 0.0F, gray, 0.0F, 0.4F},
            {0.5F, 0.0F, clear, -0.0F, -0.4F},
            {100.5F, 0.0F, clear, -0.0F, -0.4F},
    };
    QCOMPARE(curve.lineVertices(), toTheRight);
    QCOMPARE(curve.lineNode()->geometry()->indexCount(), 0);

    curve.setP1({20.0, 10.0});
    curve.setP2({20.0, 90.0});
    curve.setLineWidth(5.0);
    curve.setColor(QColor(255, 0, 0));
    curve.paint();
    constexpr ColorBytes red = {255, 0, 0, 255};
    const QList<Vertex> down = {
            {18.0F, 10.5F, clear, -2.0F, 0.0F},
            {18.0F, 90.5F, clear, -2.0F, 0.0F},
            {18.0F, 10.5F, red, 2.0F, -0.0F},
            {18.0F, 90.5F, red, 2.0F, -0.0F},
            {23.0F, 10.5F, red, -2.0F, 0.0F},
            {23.0F, 90.5F, red, -2.0F, 0.0F},
            {23.0F, 10.5F, clear, 2.0F, -0.0F},
            {23.0F, 90.5F, clear, 2.0F, -0.0F},
    };
    QCOMPARE(curve.lineVertices(), down);
}

void tst_CurveNodes::polylines_data()
{
    QTest::addColumn<QList<QPointF>>("points");
    QTest::newRow("none") << QList<QPointF>();
    QTest::newRow("one point") << QList<QPointF>{{1.0, 2.0}};
    QTest::newRow("one point twice") << QList<QPointF>{{1.0, 2.0}, {1.0, 2.0}};
    QTest::newRow("two points") << QList<QPointF>{{0.0, 0.0}, {100.0, 50.0}};
    QTest::newRow("three points") << QList<QPointF>{{0.0, 0.0}, {10.1, 50.3}, {-7.7, 20.9}};
    QTest::newRow("short steps") << QList<QPointF>{{0.0, 0.0}, {0.6, 0.8}, {0.6, 0.800001}};
    QTest::newRow("outside") << QList<QPointF>{{-1e6, 2e6}, {3e6, -4e6}};
    QList<QPointF> parabola;
    for (int i = 0; i < 1000; ++i)
        parabola.append({0.25 * i, 1e-4 * i * i});
    QTest::newRow("many points") << parabola;
}

// Not the ends decide, but what the transform makes of them.
void tst_CurveNodes::polylines()
{
    QFETCH(QList<QPointF>, points);

    RecordingTransform transform;
    Painted curve;
    curve.setGeometryTransform(&transform);
    curve.setP1({5.5, 6.25});
    curve.setP2({-7.0, 8.0});
    curve.setLineWidth(2.5);
    curve.paint();
    QCOMPARE(curve.lineVertices().size(), 8);
    transform.setAnswer(points);
    curve.setColor(QColor(0, 255, 0));
    curve.paint();
    QCOMPARE(transform.takeQuestions(), QList<Ends>(2, {{5.5, 6.25}, {-7.0, 8.0}}));
    const QList<Vertex> expected = smoothPolyline(points, 2.5F, {0, 255, 0, 255});
    QCOMPARE(expected.size(), 8 * std::max<qsizetype>(0, points.size() - 1));
    QCOMPARE(curve.lineVertices(), expected);
}

void tst_CurveNodes::pens_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<ColorBytes>("bytes");
    QTest::newRow("wide") << 12.5 << QColor(10, 20, 30) << ColorBytes{10, 20, 30, 255};
    QTest::newRow("not a float") << 1.1 << QColor(255, 0, 0) << ColorBytes{255, 0, 0, 255};
    QTest::newRow("translucent") << 2.0 << QColor(255, 255, 0, 51) << ColorBytes{51, 51, 0, 51};
    QTest::newRow("transparent") << 2.0 << QColor(Qt::transparent) << clear;
    QTest::newRow("no width") << 0.0 << QColor(255, 0, 0) << ColorBytes{255, 0, 0, 255};
    QTest::newRow("negative width") << -3.0 << QColor(255, 0, 0) << ColorBytes{255, 0, 0, 255};
    QTest::newRow("infinite width") << inf << QColor(255, 0, 0) << ColorBytes{255, 0, 0, 255};
}

void tst_CurveNodes::pens()
{
    QFETCH(double, width);
    QFETCH(QColor, color);
    QFETCH(ColorBytes, bytes);

    const QList<QPointF> points = {{1.0, 2.0}, {31.0, 42.0}, {31.0, 50.0}};
    RecordingTransform transform(points);
    for (const bool isAntialiasing : {true, false}) { // a curve is smooth all the same
        Painted curve;
        curve.setAntialiasing(isAntialiasing);
        curve.setGeometryTransform(&transform);
        curve.setLineWidth(width);
        curve.setColor(color);
        curve.paint();
        QCOMPARE(curve.lineVertices(), smoothPolyline(points, float(width), bytes));
    }
}

// As an application combines them.
void tst_CurveNodes::shapes()
{
    Painted curve;
    curve.setP1({0.0, 20.0});
    curve.setP2({3.0, 1129.0});
    LinearCurveTransform linear;
    curve.setGeometryTransform(&linear);
    curve.paint();
    QCOMPARE(curve.lineVertices(), smoothPolyline({{0.0, 20.0}, {3.0, 1129.0}}, 1.0F, gray));
    // 999 parts of the way are the powers of ten, less one.
    LogarithmicCurveTransform bend;
    bend.setDecibel(1.0);
    bend.setPointCount(4);
    curve.setGeometryTransform(&bend);
    curve.setP2({3.0, 1019.0});
    curve.paint();
    QCOMPARE(curve.lineVertices(),
            smoothPolyline({{0.0, 20.0}, {1.0, 29.0}, {2.0, 119.0}, {3.0, 1019.0}}, 1.0F, gray));
}

void tst_CurveNodes::withoutTransform()
{
    Painted curve;
    curve.setP2({100.0, 50.0});
    QVERIFY(curve.paint());
    QCOMPARE(curve.lineVertices().size(), 0);
}

void tst_CurveNodes::emptySizes()
{
    RecordingTransform transform;
    checkEmptySizes<Painted>([&](Painted &curve) { curve.setGeometryTransform(&transform); });
}

void tst_CurveNodes::roundedSizes_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("extent");
    QTest::addColumn<bool>("isDrawn");
    const auto row = [](const char *name, double from, double extent, bool isDrawn) {
        QTest::newRow(name) << from << extent << isDrawn;
    };
    row("a pixel", 0.0, 1.0, true);
    row("half a pixel", 0.0, 0.5, true);
    row("less than half a pixel", 0.0, 0.49, false);
    // Qt adds a half to round, and the sum is 1.
    row("hardly less than half a pixel", 0.0, 0.49999999999999994, true);
    row("nothing", 0.0, 0.0, false);
    row("negative, rounds to nothing", 0.0, -0.4, false);
    row("negative", 0.0, -0.6, false);
    // Half of what the place loses goes to the extent.
    row("place rounded down", 0.4, 0.4, true);
    row("place rounded down, too little", 0.4, 0.29, false);
    row("place rounded up", 0.6, 0.6, false);
    row("place rounded up, enough", 0.6, 0.71, true);
    row("half a pixel rounded up", 0.5, 0.7, false);
    row("minus half a pixel rounded down", -0.5, 0.26, true);
    row("negative place rounded up", -0.4, 0.6, false);
    row("negative place rounded up, enough", -0.4, 0.71, true);
    row("huge", 0.0, 1e300, true);
    row("infinite", 0.0, inf, true);
    row("highest", 0.0, 2147483647.0, true);
    row("huge and negative", 0.0, -1e300, false);
    row("minus infinity", 0.0, -inf, false);
    row("lowest", 0.0, -2147483648.0, false);
    row("not a number", 0.0, NaN, false);
}

// The area in whole pixels decides, in each of both directions.
void tst_CurveNodes::roundedSizes()
{
    QFETCH(double, from);
    QFETCH(double, extent);
    QFETCH(bool, isDrawn);
    RecordingTransform transform;
    for (const QRectF &place : {QRectF(from, 0.0, extent, 30.0), QRectF(0.0, from, 30.0, extent)}) {
        PlacedCurve curve(place);
        curve.setGeometryTransform(&transform);
        QCOMPARE(curve.paint() != nullptr, isDrawn);
        QCOMPARE(transform.takeQuestions().size(), isDrawn ? 1 : 0);
    }
}

void tst_CurveNodes::extremeSizes()
{
    RecordingTransform transform;
    for (const double extent : {1e300, inf, -1e300, -inf, NaN}) {
        Painted curve;
        curve.setGeometryTransform(&transform);
        curve.paint();
        curve.setSize({extent, 30.0});
        QCOMPARE(curve.paint() != nullptr, extent > 0.0);
        curve.setSize({30.0, extent});
        QCOMPARE(curve.paint() != nullptr, extent > 0.0);
        curve.setSize({30.0, 30.0});
        QVERIFY(curve.paint());
        QCOMPARE(curve.lineVertices(), smoothPolyline({{0, 0}, {30, 40}}, 1.0F, gray));
    }
}

QTEST_MAIN(tst_CurveNodes)

#include "tst_curve_nodes.moc"
