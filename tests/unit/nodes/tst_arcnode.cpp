// SPDX-License-Identifier: MIT
#include "DirtyMarks.h"
#include "SmoothVertices.h"

#include <ChartsLibrary/ArcNode.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cstddef>
#include <limits>
#include <type_traits>

using namespace Charts;

namespace {

static_assert(std::is_base_of_v<QSGGeometryNode, ArcNode>);
static_assert(sizeof(ArcShape) == 5 * sizeof(double));
static_assert(offsetof(ArcShape, center) == 0 && offsetof(ArcShape, radius) == 16);
static_assert(offsetof(ArcShape, startAngle) == 24 && offsetof(ArcShape, endAngle) == 32);

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double twoPi = 6.283185307179586;

const QColor blue(0, 0, 255);
constexpr ColorBytes blueBytes = {0, 0, 255, 255};
constexpr ColorBytes clear = {0, 0, 0, 0};

using Indices = QList<std::uint32_t>;

/*! The strip of a smooth band of \a last + 1 samples, each index at its place. */
Indices smoothIndices(int last)
{
    Indices indices(6 * last + 6, 0xFFFFFFFFU);
    for (int i = 0; i <= last; ++i) {
        const auto first = static_cast<std::uint32_t>(4 * i);
        indices[2 * i] = first;
        indices[2 * i + 1] = first + 1;
        indices[4 * last + 2 - 2 * i] = first + 2;
        indices[4 * last + 3 - 2 * i] = first;
        indices[4 * last + 4 + 2 * i] = first + 1;
        indices[4 * last + 5 + 2 * i] = first + 3;
    }
    return indices;
}

Indices plainIndices(int last)
{
    Indices indices;
    for (int i = 0; i < 2 * (last + 1); ++i)
        indices += static_cast<std::uint32_t>(i);
    return indices;
}

} // namespace

class tst_ArcNode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void shape();
    void construction();
    void plainArc();
    void smoothArc();
    void indices_data();
    void indices();
    void widths_data();
    void widths();
    void noRadius();
    void endless_data();
    void endless();
    void arcsAnew();
    void marks();
};

void tst_ArcNode::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ArcNode::shape()
{
    const ArcShape none{};
    QCOMPARE(none.center, QPointF(0.0, 0.0));
    QCOMPARE(none.radius, 0.0);
    QCOMPARE(none.startAngle, 0.0);
    QCOMPARE(none.endAngle, 0.0);

    const ArcShape arc{{1.0, 2.0}, 3.0, 4.0, 5.0};
    QCOMPARE(arc.center, QPointF(1.0, 2.0));
    QCOMPARE(arc.radius, 3.0);
    QCOMPARE(arc.startAngle, 4.0);
    QCOMPARE(arc.endAngle, 5.0);
}

void tst_ArcNode::construction()
{
    const ArcNode node;
    const QSGGeometry *geometry = node.geometry();
    QVERIFY(geometry);
    QCOMPARE(geometry->vertexCount(), 0);
    QCOMPARE(geometry->indexCount(), 0);
    QCOMPARE(geometry->indexType(), int(QSGGeometry::UnsignedIntType));
    QCOMPARE(geometry->drawingMode(), uint(QSGGeometry::DrawTriangleStrip));
    QCOMPARE(geometry->attributes(), SmoothColorMaterial::attributeSet().attributes);
    QCOMPARE(geometry->attributeCount(), 3);
    QCOMPARE(geometry->sizeOfVertex(), 20);

    QVERIFY(dynamic_cast<SmoothColorMaterial *>(node.material()));
    QVERIFY(!node.opaqueMaterial());
    // Geometry and material are parts of the node, not its property.
    QCOMPARE(node.flags(), QSGNode::Flags(QSGNode::OwnedByParent));
}

// One segment from 0 to a tenth. Where the angle is 0, everything is exact.
void tst_ArcNode::plainArc()
{
    ArcNode node;
    node.update({{100.0, 50.0}, 40.0, 0.0, 0.1}, 2.0F, blue, false);
    const auto x = [](long double radius) { return float(100.0L + radius * std::cos(0.1L)); };
    const auto y = [](long double radius) { return float(50.0L + radius * std::sin(0.1L)); };
    const QList<Vertex> expected = {
            {141.0F, 50.0F, blueBytes, -0.0F, -0.0F},
            {139.0F, 50.0F, blueBytes, 0.0F, 0.0F},
            {x(41.0L), y(41.0L), blueBytes, -0.0F, -0.0F},
            {x(39.0L), y(39.0L), blueBytes, 0.0F, 0.0F},
    };
    QCOMPARE(verticesOf(node), expected);
    QCOMPARE(indicesOf(node), (Indices{0, 1, 2, 3}));
}

void tst_ArcNode::smoothArc()
{
    ArcNode node;
    node.update({{100.0, 50.0}, 40.0, 0.0, 0.1}, 2.0F, blue, true);
    const auto x = [](long double radius) { return float(100.0L + radius * std::cos(0.1L)); };
    const auto y = [](long double radius) { return float(50.0L + radius * std::sin(0.1L)); };
    const auto dx = float(0.8L * std::cos(0.1L));
    const auto dy = float(0.8L * std::sin(0.1L));
    const QList<Vertex> expected = {
            {141.0F, 50.0F, blueBytes, -0.8F, -0.0F},
            {139.0F, 50.0F, blueBytes, 0.8F, 0.0F},
            {141.0F, 50.0F, clear, 0.8F, 0.0F},
            {139.0F, 50.0F, clear, -0.8F, -0.0F},
            {x(41.0L), y(41.0L), blueBytes, -dx, -dy},
            {x(39.0L), y(39.0L), blueBytes, dx, dy},
            {x(41.0L), y(41.0L), clear, dx, dy},
            {x(39.0L), y(39.0L), clear, -dx, -dy},
    };
    QCOMPARE(verticesOf(node), expected);
    // Core, outer fringe backwards, inner fringe.
    QCOMPARE(indicesOf(node), (Indices{0, 1, 4, 5, 6, 4, 2, 0, 1, 3, 5, 7}));
}

void tst_ArcNode::indices_data()
{
    QTest::addColumn<double>("radius");
    QTest::addColumn<int>("segments");
    // Arcs of one radian, so they are as long as the radius.
    QTest::newRow("1") << 5.0 << 1;
    QTest::newRow("2") << 10.0 << 2;
    QTest::newRow("3") << 15.0 << 3;
    QTest::newRow("100") << 500.0 << 100;
    // More than indices of 16 bits could tell apart.
    QTest::newRow("40000") << 200000.0 << 40000;
}

void tst_ArcNode::indices()
{
    QFETCH(double, radius);
    QFETCH(int, segments);

    ArcNode node;
    node.update({{0.0, 0.0}, radius, 0.0, 1.0}, 1.0F, blue, false);
    QCOMPARE(node.geometry()->vertexCount(), 2 * (segments + 1));
    QCOMPARE(indicesOf(node), plainIndices(segments));

    node.update({{0.0, 0.0}, radius, 0.0, 1.0}, 1.0F, blue, true);
    QCOMPARE(node.geometry()->vertexCount(), 4 * (segments + 1));
    QCOMPARE(indicesOf(node), smoothIndices(segments));
}

void tst_ArcNode::widths_data()
{
    QTest::addColumn<double>("radius");
    QTest::addColumn<float>("width");
    QTest::addColumn<float>("outer");
    QTest::addColumn<float>("inner");
    QTest::addColumn<float>("offset");

    QTest::newRow("one") << 4.0 << 1.0F << 4.5F << 3.5F << 0.4F;
    QTest::newRow("none") << 4.0 << 0.0F << 4.0F << 4.0F << 0.0F;
    QTest::newRow("negative") << 4.0 << -1.0F << 3.5F << 4.5F << -0.4F;
    QTest::newRow("as wide as the circle") << 4.0 << 8.0F << 8.0F << 0.0F << 3.2F;
    QTest::newRow("wider than the circle") << 4.0 << 10.0F << 9.0F << -1.0F << 4.0F;
    QTest::newRow("huge") << 4.0 << 0x1p80F << 0x1p79F << -0x1p79F << float(0.4 * 0x1p80);
    QTest::newRow("negative radius") << -4.0 << 1.0F << -3.5F << -4.5F << 0.4F;
    // The factor is 0.4 in double: in float, the product would be another.
    QTest::newRow("seven") << 4.0 << 7.0F << 7.5F << 0.5F << float(0.4 * 7.0);
}

// The first sample, at angle 0, shows the radii without rounding.
void tst_ArcNode::widths()
{
    QFETCH(double, radius);
    QFETCH(float, width);
    QFETCH(float, outer);
    QFETCH(float, inner);
    QFETCH(float, offset);

    const float none = 0.0F;
    ArcNode node;
    node.update({{0.0, 0.0}, radius, 0.0, 1.0}, width, blue, true);
    QCOMPARE(node.geometry()->vertexCount(), 8);
    const float dy = std::copysign(none, offset);
    const QList<Vertex> expected = {
            {outer, none, blueBytes, -offset, -dy},
            {inner, none, blueBytes, offset, dy},
            {outer, none, clear, offset, dy},
            {inner, none, clear, -offset, -dy},
    };
    QCOMPARE(verticesOf(node).first(4), expected);

    node.update({{0.0, 0.0}, radius, 0.0, 1.0}, width, blue, false);
    const QList<Vertex> expectedPlain = {
            {outer, none, blueBytes, -0.0F, -0.0F},
            {inner, none, blueBytes, 0.0F, 0.0F},
    };
    QCOMPARE(verticesOf(node).first(2), expectedPlain);
}

void tst_ArcNode::noRadius()
{
    ArcNode node;
    node.update({{10.0, 20.0}, 0.0, 0.0, twoPi}, 2.0F, blue, true);
    const QList<Vertex> vertices = verticesOf(node);
    QCOMPARE(vertices.size(), 8);
    // From angle 0 to 2 pi: once around in one step.
    QCOMPARE(vertices.at(0).x, 11.0F);
    QCOMPARE(vertices.at(0).y, 20.0F);
    QCOMPARE(vertices.at(4).x, 11.0F);
    QCOMPARE(vertices.at(4).y, 20.0F);
    QCOMPARE(vertices.at(5).x, 9.0F);
    QCOMPARE(vertices.at(5).y, 20.0F);
}

void tst_ArcNode::endless_data()
{
    QTest::addColumn<ArcShape>("arc");
    QTest::addColumn<float>("width");
    // 0 where only a limit is fixed.
    QTest::addColumn<int>("segments");

    const auto row = [](const char *name, const ArcShape &arc, float width, int segments) {
        QTest::newRow(name) << arc << width << segments;
    };
    row("radius not a number", {{0.0, 0.0}, NaN, 0.0, twoPi}, 1.0F, 1);
    row("infinite radius", {{0.0, 0.0}, inf, 0.0, twoPi}, 1.0F, 0);
    row("infinite radius, no span", {{0.0, 0.0}, inf, 1.0, 1.0}, 1.0F, 1);
    row("negative infinite radius", {{0.0, 0.0}, -inf, 0.0, twoPi}, 1.0F, 1);
    row("largest radius", {{0.0, 0.0}, std::numeric_limits<double>::max(), 0.0, twoPi}, 1.0F, 0);
    row("negative radius", {{0.0, 0.0}, -1e300, 0.0, twoPi}, 1.0F, 1);
    row("more segments than an int counts", {{0.0, 0.0}, 0x1p34, 0.0, twoPi}, 1.0F, 0);
    row("more segments than there may be", {{0.0, 0.0}, 1e6, 0.0, twoPi}, 1.0F, 0);
    row("start not a number", {{0.0, 0.0}, 100.0, NaN, twoPi}, 1.0F, 1);
    row("end not a number", {{0.0, 0.0}, 100.0, 0.0, NaN}, 1.0F, 1);
    row("infinite start", {{0.0, 0.0}, 100.0, inf, 0.0}, 1.0F, 1);
    row("infinite end", {{0.0, 0.0}, 100.0, 0.0, -inf}, 1.0F, 1);
    row("both infinite", {{0.0, 0.0}, 100.0, inf, inf}, 1.0F, 1);
    row("centre not a number", {{NaN, NaN}, 5.0, 0.0, 1.0}, 1.0F, 1);
    row("infinite centre", {{inf, -inf}, 5.0, 0.0, 1.0}, 1.0F, 1);
    row("infinite width", {{0.0, 0.0}, 5.0, 0.0, 1.0}, float(inf), 1);
    row("width not a number", {{0.0, 0.0}, 5.0, 0.0, 1.0}, float(NaN), 1);
    row("nothing a number", {{NaN, NaN}, NaN, NaN, NaN}, float(NaN), 1);
}

// It ends, soon, and leaves a strip that can be drawn.
void tst_ArcNode::endless()
{
    QFETCH(ArcShape, arc);
    QFETCH(float, width);
    QFETCH(int, segments);

    for (const bool isSmooth : {false, true}) {
        ArcNode node;
        node.update(arc, width, blue, isSmooth);
        const int perSample = isSmooth ? 4 : 2;
        const int vertexCount = node.geometry()->vertexCount();
        if (segments == 0)
            QVERIFY(vertexCount > 100'000 && vertexCount <= 4'000'004);
        else
            QCOMPARE(vertexCount, perSample * (segments + 1));
        const int last = vertexCount / perSample - 1;
        QVERIFY(indicesOf(node) == (isSmooth ? smoothIndices(last) : plainIndices(last)));
        const QList<Vertex> vertices = verticesOf(node);
        for (qsizetype i = 0; i < vertices.size(); ++i) {
            if (vertices.at(i).color != (isSmooth && i % 4 > 1 ? clear : blueBytes))
                QFAIL(qPrintable(QStringLiteral("colour of vertex %1").arg(i)));
        }
    }
}

// Nothing is left of what was drawn before.
void tst_ArcNode::arcsAnew()
{
    const ArcShape small{{10.0, 10.0}, 5.0, 0.0, 1.0};
    const ArcShape large{{10.0, 10.0}, 500.0, 1.0, 6.0};
    const QList<QPair<ArcShape, bool>> steps = {
            {small, false}, {large, true}, {small, true}, {large, false}, {small, false}};
    ArcNode node;
    for (const auto &[arc, isSmooth] : steps) {
        node.update(arc, 3.0F, Qt::red, isSmooth);
        node.update(arc, 2.0F, blue, isSmooth);
        ArcNode fresh;
        fresh.update(arc, 2.0F, blue, isSmooth);
        QCOMPARE(verticesOf(node), verticesOf(fresh));
        QCOMPARE(indicesOf(node), indicesOf(fresh));
    }
}

void tst_ArcNode::marks()
{
    ArcNode node;
    const QList<DirtyMarks::Mark> once = {{&node, QSGNode::DirtyGeometry}};
    DirtyMarks marks;
    const ArcShape arc{{10.0, 10.0}, 5.0, 0.0, 1.0};
    node.update(arc, 2.0F, blue, true);
    QCOMPARE(marks.take(), once);
    // Also where nothing differs, and where there is nothing to see.
    node.update(arc, 2.0F, blue, true);
    QCOMPARE(marks.take(), once);
    node.update({}, 0.0F, Qt::transparent, false);
    QCOMPARE(marks.take(), once);
}

QTEST_APPLESS_MAIN(tst_ArcNode)

#include "tst_arcnode.moc"
