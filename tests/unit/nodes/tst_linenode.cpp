// SPDX-License-Identifier: MIT
#include "DirtyMarks.h"
#include "SmoothVertices.h"

#include <ChartsLibrary/LineNode.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>
#include <type_traits>

using namespace Charts;

namespace {

static_assert(std::is_base_of_v<QSGGeometryNode, LineNode>);

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

const QColor blue(0, 0, 255);
constexpr ColorBytes blueBytes = {0, 0, 255, 255};
constexpr ColorBytes clear = {0, 0, 0, 0};

/*! A direction across the line, as far as the text of a row can give it. */
struct Across
{
    float x;
    float y;
};

/*!
    The vertices of a line, its normal being known: in exact arithmetic (products of two floats and
    sums of what rows use are exact in long double), then rounded to what is stored.
*/
QList<Vertex> expectedVertices(
        const QLineF &line, Across normal, float width, const ColorBytes &color, bool isSmooth)
{
    using Exact = long double;
    const Exact half = Exact(width) / 2;
    const double shift = isSmooth ? 0.5 : 0.0;
    const auto side = [&](const QPointF &end, int sign) {
        Vertex vertex;
        vertex.x = float(double(Exact(end.x() + shift) + sign * half * Exact(normal.x)));
        vertex.y = float(double(Exact(end.y() + shift) + sign * half * Exact(normal.y)));
        return vertex;
    };
    // A product of floats is exact in double.
    const auto reach = float(double(width) * double(0.4F));
    const auto offset = [&](Vertex vertex, int sign, const ColorBytes &bytes) {
        vertex.color = bytes;
        vertex.dx = float(sign * (double(reach) * double(normal.x)));
        vertex.dy = float(sign * (double(reach) * double(normal.y)));
        return vertex;
    };
    const auto plain = [&](Vertex vertex) {
        vertex.color = color;
        return vertex;
    };
    const QPointF p = line.p1();
    const QPointF q = line.p2();
    if (!isSmooth)
        return {plain(side(p, 1)), plain(side(q, 1)), plain(side(p, -1)), plain(side(q, -1))};
    return {offset(side(p, 1), 1, clear), offset(side(q, 1), 1, clear),
            offset(side(p, 1), -1, color), offset(side(q, 1), -1, color),
            offset(side(p, -1), 1, color), offset(side(q, -1), 1, color),
            offset(side(p, -1), -1, clear), offset(side(q, -1), -1, clear)};
}

} // namespace

class tst_LineNode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void construction();
    void plainLine();
    void smoothLine();
    void lines_data();
    void lines();
    void normals_data();
    void normals();
    void extremes_data();
    void extremes();
    void polylines_data();
    void polylines();
    void pointsAnew();
    void writesOneLineInPlace_data();
    void writesOneLineInPlace();
    void marks();
};

void tst_LineNode::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_LineNode::construction()
{
    const LineNode node;
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
    const LineNode other;
    QVERIFY(other.geometry() != geometry);
    QVERIFY(other.material() != node.material());
}

void tst_LineNode::plainLine()
{
    LineNode node;
    node.update(QLineF(0.0, 0.0, 10.0, 0.0), 2.0F, blue, false);
    const QList<Vertex> expected = {
            {0.0F, 1.0F, blueBytes, 0.0F, 0.0F},
            {10.0F, 1.0F, blueBytes, 0.0F, 0.0F},
            {0.0F, -1.0F, blueBytes, 0.0F, 0.0F},
            {10.0F, -1.0F, blueBytes, 0.0F, 0.0F},
    };
    QCOMPARE(verticesOf(node), expected);
    QCOMPARE(node.geometry()->indexCount(), 0);
}

void tst_LineNode::smoothLine()
{
    LineNode node;
    node.update(QLineF(0.0, 0.0, 10.0, 0.0), 2.0F, blue, true);
    const QList<Vertex> expected = {
            {0.5F, 1.5F, clear, 0.0F, 0.8F},
            {10.5F, 1.5F, clear, 0.0F, 0.8F},
            {0.5F, 1.5F, blueBytes, -0.0F, -0.8F},
            {10.5F, 1.5F, blueBytes, -0.0F, -0.8F},
            {0.5F, -0.5F, blueBytes, 0.0F, 0.8F},
            {10.5F, -0.5F, blueBytes, 0.0F, 0.8F},
            {0.5F, -0.5F, clear, -0.0F, -0.8F},
            {10.5F, -0.5F, clear, -0.0F, -0.8F},
    };
    QCOMPARE(verticesOf(node), expected);
    QCOMPARE(node.geometry()->indexCount(), 0);
}

void tst_LineNode::lines_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<float>("normalX");
    QTest::addColumn<float>("normalY");
    QTest::addColumn<float>("width");

    const auto row = [](const char *name, const QLineF &line, float x, float y, float width) {
        QTest::newRow(name) << line << x << y << width;
    };
    row("to the right", {1.0, 2.0, 9.0, 2.0}, 0.0F, 1.0F, 2.0F);
    row("to the left", {9.0, 2.0, 1.0, 2.0}, 0.0F, -1.0F, 2.0F);
    row("down", {3.0, 1.0, 3.0, 5.0}, -1.0F, 0.0F, 3.0F);
    row("up", {3.0, 5.0, 3.0, 1.0}, 1.0F, 0.0F, 3.0F);
    // Legs and hypotenuse are whole numbers, so the normal is known without a root.
    row("3-4-5", {0.0, 0.0, 3.0, 4.0}, -0.8F, 0.6F, 1.0F);
    row("3-4-5 back", {3.0, 4.0, 0.0, 0.0}, 0.8F, -0.6F, 1.0F);
    row("5-12-13", {-100.0, 40.0, -95.0, 28.0}, 12.0F / 13.0F, 5.0F / 13.0F, 1.1F);
    row("20-21-29", {0.25, 0.5, -19.75, 21.5}, -21.0F / 29.0F, -20.0F / 29.0F, 5.0F);
    row("broken coordinates", {0.1, 0.7, 0.1, 1000.7}, -1.0F, 0.0F, 1.3F);
    row("no width", {0.0, 0.0, 3.0, 4.0}, -0.8F, 0.6F, 0.0F);
    row("negative width", {0.0, 0.0, 10.0, 0.0}, 0.0F, 1.0F, -2.0F);
    row("wide", {0.0, 0.0, 3.0, 4.0}, -0.8F, 0.6F, 1e6F);
    row("thin", {0.0, 0.0, 3.0, 4.0}, -0.8F, 0.6F, 1e-6F);
    row("no length", {7.0, 8.0, 7.0, 8.0}, 0.0F, 0.0F, 2.0F);
    row("far away", {1e6, 2e6, 1e6 + 3.0, 2e6 + 4.0}, -0.8F, 0.6F, 2.0F);
    row("long", {0.0, 0.0, 3e6, 4e6}, -0.8F, 0.6F, 2.0F);
    row("very long", {0.0, 0.0, 0x3p90, 0x4p90}, -0.8F, 0.6F, 2.0F);
}

void tst_LineNode::lines()
{
    QFETCH(QLineF, line);
    QFETCH(float, normalX);
    QFETCH(float, normalY);
    QFETCH(float, width);

    LineNode node;
    for (const bool isSmooth : {false, true, false}) {
        node.update(line, width, blue, isSmooth);
        QCOMPARE(verticesOf(node),
                expectedVertices(line, {normalX, normalY}, width, blueBytes, isSmooth));
        QCOMPARE(node.geometry()->indexCount(), 0);
    }
}

void tst_LineNode::normals_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<bool>("isSmooth");
    QTest::addColumn<float>("normalX");
    QTest::addColumn<float>("normalY");

    const auto row = [](const char *name, double length, float normal) {
        // The line goes to the right: across it is down.
        QTest::addRow("%s", name) << QLineF(0.0, 0.0, length, 0.0) << false << 0.0F << normal;
        QTest::addRow("%s, down", name)
                << QLineF(0.0, 0.0, 0.0, length) << false << -normal << 0.0F;
    };
    // A length of 1 within 1e-5 is taken for 1.
    row("1 and a bit", 1.0 + 0x1p-17, float(1.0 + 0x1p-17));
    row("1 less a bit", 1.0 - 0x1p-17, float(1.0 - 0x1p-17));
    row("1 and more", 1.0 + 0x1p-16, 1.0F);
    row("1 less more", 1.0 - 0x1p-16, 1.0F);
    // A length of 0 within 1e-5 is taken for 0, others are not, however short.
    row("0 and a bit", 0x1p-17, 0.0F);
    row("0 and more", 0x1p-16, 1.0F);
    row("exactly the limit", double(1e-5F), 0.0F);
    row("beyond the limit", double(std::nextafter(1e-5F, 1.0F)), 1.0F);
    row("smallest", std::numeric_limits<double>::denorm_min(), 0.0F);
    row("largest float", double(std::numeric_limits<float>::max()), 1.0F);

    // The ends are moved before they are subtracted: what gets lost there is lost.
    const QLineF farAway(0x1p52 + 1.0, 0.0, 0x1p52 + 2.0, 0.0);
    QTest::newRow("lost by moving") << farAway << true << 0.0F << 0.0F;
    QTest::newRow("not moved") << farAway << false << 0.0F << 1.0F;
}

void tst_LineNode::normals()
{
    QFETCH(QLineF, line);
    QFETCH(bool, isSmooth);
    QFETCH(float, normalX);
    QFETCH(float, normalY);

    LineNode node;
    node.update(line, 64.0F, blue, isSmooth);
    QCOMPARE(verticesOf(node),
            expectedVertices(line, {normalX + 0.0F, normalY + 0.0F}, 64.0F, blueBytes, isSmooth));
}

void tst_LineNode::extremes_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<float>("width");

    const double largest = std::numeric_limits<double>::max();
    QTest::newRow("infinite end") << QLineF(0.0, 0.0, inf, 0.0) << 1.0F;
    QTest::newRow("infinite ends") << QLineF(-inf, inf, inf, -inf) << 1.0F;
    QTest::newRow("end not a number") << QLineF(0.0, NaN, 1.0, 0.0) << 1.0F;
    QTest::newRow("nothing a number") << QLineF(NaN, NaN, NaN, NaN) << float(NaN);
    QTest::newRow("largest") << QLineF(-largest, -largest, largest, largest) << 1.0F;
    QTest::newRow("infinite width") << QLineF(0.0, 0.0, 3.0, 4.0) << float(inf);
    QTest::newRow("largest width")
            << QLineF(0.0, 0.0, 3.0, 4.0) << std::numeric_limits<float>::max();
    QTest::newRow("width not a number") << QLineF(0.0, 0.0, 3.0, 4.0) << float(NaN);
}

// Nothing is said about the positions, but colours and the number of vertices hold.
void tst_LineNode::extremes()
{
    QFETCH(QLineF, line);
    QFETCH(float, width);

    LineNode node;
    node.update(line, width, blue, false);
    QList<Vertex> vertices = verticesOf(node);
    QCOMPARE(vertices.size(), 4);
    for (const Vertex &vertex : vertices) {
        QVERIFY(vertex.color == blueBytes);
        QCOMPARE(vertex.dx, 0.0F);
        QCOMPARE(vertex.dy, 0.0F);
    }
    node.update(line, width, blue, true);
    vertices = verticesOf(node);
    QCOMPARE(vertices.size(), 8);
    for (qsizetype i = 0; i < 8; ++i)
        QVERIFY(vertices.at(i).color == (i < 2 || i > 5 ? clear : blueBytes));
}

void tst_LineNode::polylines_data()
{
    QTest::addColumn<QList<QPointF>>("points");

    QTest::newRow("one point") << QList<QPointF>{{5.0, 5.0}};
    QTest::newRow("two points") << QList<QPointF>{{5.0, 5.0}, {8.0, 9.0}};
    QTest::newRow("three points") << QList<QPointF>{{5.0, 5.0}, {8.0, 9.0}, {4.0, 12.0}};
    QTest::newRow("there and back") << QList<QPointF>{{0.0, 0.0}, {3.0, 4.0}, {0.0, 0.0}};
    QTest::newRow("one point three times") << QList<QPointF>{{1.0, 2.0}, {1.0, 2.0}, {1.0, 2.0}};
    QList<QPointF> stairs;
    for (int i = 0; i < 3000; ++i)
        stairs += QPointF((i + 1) / 2 * 3.0, i / 2 * 4.0);
    QTest::newRow("many points") << stairs;
}

/*! The normals of lines that are horizontal, vertical or 5 long. */
static Across knownNormal(const QPointF &p, const QPointF &q)
{
    const QPointF way = q - p;
    const double length = way.x() == 0.0   ? std::abs(way.y())
                          : way.y() == 0.0 ? std::abs(way.x())
                                           : 5.0;
    if (length == 0.0)
        return {0.0F, 0.0F};
    return {float(-way.y() / length) + 0.0F, float(way.x() / length) + 0.0F};
}

void tst_LineNode::polylines()
{
    QFETCH(QList<QPointF>, points);

    for (const bool isSmooth : {false, true}) {
        LineNode node;
        QList<Vertex> expected;
        for (qsizetype i = 1; i < points.size(); ++i) {
            const QPointF p = points.at(i - 1);
            const QPointF q = points.at(i);
            expected += expectedVertices({p, q}, knownNormal(p, q), 1.5F, blueBytes, isSmooth);
        }
        node.update(points, 1.5F, blue, isSmooth);
        QCOMPARE(verticesOf(node), expected);
        QCOMPARE(node.geometry()->indexCount(), 0);
    }
}

// Nothing is left of what was drawn before.
void tst_LineNode::pointsAnew()
{
    LineNode node;
    node.update(QList<QPointF>(100, {1.0, 1.0}), 2.0F, Qt::red, true);
    QCOMPARE(node.geometry()->vertexCount(), 8 * 99);
    node.update(QList<QPointF>{{0.0, 0.0}, {10.0, 0.0}}, 2.0F, blue, false);
    LineNode fresh;
    fresh.update(QLineF(0.0, 0.0, 10.0, 0.0), 2.0F, blue, false);
    QCOMPARE(verticesOf(node), verticesOf(fresh));
    node.update(QList<QPointF>{{0.0, 0.0}}, 2.0F, blue, false);
    QCOMPARE(node.geometry()->vertexCount(), 0);
    node.update(QLineF(0.0, 0.0, 10.0, 0.0), 2.0F, blue, false);
    QCOMPARE(verticesOf(node), verticesOf(fresh));
}

void tst_LineNode::writesOneLineInPlace_data()
{
    QTest::addColumn<bool>("isSmooth");
    QTest::addColumn<int>("index");
    QTest::newRow("first") << false << 0;
    QTest::newRow("second") << false << 4;
    QTest::newRow("between") << false << 3;
    QTest::newRow("last") << false << 36;
    QTest::newRow("first, smooth") << true << 0;
    QTest::newRow("between, smooth") << true << 5;
    QTest::newRow("last, smooth") << true << 32;
}

void tst_LineNode::writesOneLineInPlace()
{
    QFETCH(bool, isSmooth);
    QFETCH(int, index);

    LineNode node;
    node.update(QList<QPointF>(11, {1.0, 1.0}), 2.0F, Qt::red, false);
    QList<Vertex> expected = verticesOf(node);
    QCOMPARE(expected.size(), 40);
    const void *data = node.geometry()->vertexData();

    DirtyMarks marks;
    const QLineF line(1.0, 2.0, 4.0, 6.0);
    node.setSmoothVertices(std::size_t(index), line, 2.0F, blue, isSmooth);
    const QList<Vertex> written = expectedVertices(line, {-0.8F, 0.6F}, 2.0F, blueBytes, isSmooth);
    for (qsizetype i = 0; i < written.size(); ++i)
        expected[index + i] = written.at(i);
    QCOMPARE(verticesOf(node), expected);
    QCOMPARE(node.geometry()->vertexData(), data);
    QVERIFY(marks.take().isEmpty());
}

void tst_LineNode::marks()
{
    LineNode node;
    DirtyMarks marks;
    const QList<DirtyMarks::Mark> once = {{&node, QSGNode::DirtyGeometry}};
    const QList<QPointF> points = {{0.0, 0.0}, {1.0, 0.0}, {2.0, 0.0}};

    node.update(QLineF(0.0, 0.0, 10.0, 0.0), 2.0F, blue, true);
    QCOMPARE(marks.take(), once);
    // Also where nothing differs.
    node.update(QLineF(0.0, 0.0, 10.0, 0.0), 2.0F, blue, true);
    QCOMPARE(marks.take(), once);
    node.update(points, 2.0F, blue, false);
    QCOMPARE(marks.take(), once);
    node.update(points.first(1), 2.0F, blue, false);
    QCOMPARE(marks.take(), once);
}

QTEST_APPLESS_MAIN(tst_LineNode)

#include "tst_linenode.moc"
