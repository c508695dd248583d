// SPDX-License-Identifier: MIT
#include "DirtyMarks.h"
#include "FillVertices.h"

#include <ChartsLibrary/GradientNode.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QRgba64>
#include <QtQuick/QSGVertexColorMaterial>
#include <QtTest/QTest>

#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

namespace {

static_assert(std::is_base_of_v<QSGGeometryNode, ::GradientNode>);

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

using Points = QList<QPointF>;
using Heights = QList<double>;

const QColor blue(0, 0, 255);
constexpr ColorBytes blueBytes = {0, 0, 255, 255};

ColorBytes bytes(int r, int g, int b, int a)
{
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    return {byte(r), byte(g), byte(b), byte(a)};
}

/*! As Qt hands the colour to those who want 32 bits. */
ColorBytes bytesOf(QRgb color)
{
    return bytes(qRed(color), qGreen(color), qBlue(color), qAlpha(color));
}

} // namespace

Q_DECLARE_METATYPE(ColorBytes)

class tst_GradientNode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void construction();
    void emptyAtFirst();
    void ownsItsMaterial();
    void lines_data();
    void lines();
    void extremeLines_data();
    void extremeLines();
    void polyline();
    void polylines_data();
    void polylines();
    void nothing_data();
    void nothing();
    void colors_data();
    void colors();
    void allBytes();
    void oneAfterAnother();
    void keepsItsMemory();
    void marks();
};

void tst_GradientNode::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_GradientNode::construction()
{
    const GradientNode node;
    const QSGGeometry *geometry = node.geometry();
    QVERIFY(geometry);
    QCOMPARE(geometry->vertexCount(), 4);
    QCOMPARE(geometry->indexCount(), 0);
    QCOMPARE(geometry->indexType(), 0x1403); // GL_UNSIGNED_SHORT
    QCOMPARE(geometry->drawingMode(), 5U);   // GL_TRIANGLE_STRIP
    QCOMPARE(geometry->attributes(), QSGGeometry::defaultAttributes_ColoredPoint2D().attributes);
    QCOMPARE(geometry->attributeCount(), 2);
    QCOMPARE(geometry->sizeOfVertex(), 12);

    QVERIFY(dynamic_cast<QSGVertexColorMaterial *>(node.material()));
    QVERIFY(!node.opaqueMaterial());
    // The geometry is a part of the node, the material its property.
    QCOMPARE(node.flags(), QSGNode::OwnedByParent | QSGNode::OwnsMaterial);
    const GradientNode other;
    QVERIFY(other.geometry() != geometry);
    QVERIFY(other.material() != node.material());
}

// A curve without a shape shows the node before anything was written to it.
void tst_GradientNode::emptyAtFirst()
{
    struct Destroy
    {
        void operator()(GradientNode *node) const { std::destroy_at(node); }
    };
    alignas(GradientNode) std::byte memory[sizeof(GradientNode)];
    for (const int leftover : {0x00, 0x42, 0x7f, 0xff}) {
        std::memset(memory, leftover, sizeof memory);
        const std::unique_ptr<GradientNode, Destroy> node(new (memory) GradientNode);
        for (const FillVertex &vertex : fillVerticesOf(*node))
            QCOMPARE(vertex, FillVertex());
    }
}

void tst_GradientNode::ownsItsMaterial()
{
    struct Witness : QSGVertexColorMaterial
    {
        explicit Witness(bool *isGone)
            : m_isGone(isGone)
        {
        }
        ~Witness() override { *m_isGone = true; }
        bool *m_isGone;
    };
    bool isGone = false;
    {
        QSGNode parent;
        auto *node = new GradientNode;
        parent.appendChildNode(node);
        node->setMaterial(new Witness(&isGone));
        node->update(QLineF(0.0, 0.0, 10.0, 0.0), blue, false, QSize(10, 10));
        QVERIFY(!isGone);
    }
    QVERIFY(isGone);
}

void tst_GradientNode::lines_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPointF>("farAbove");
    QTest::addColumn<QPointF>("farBelow");

    // Where the fill of a line, with ends this high, ends at either end.
    const auto row = [](const char *name, double y1, double y2, int height, const QPointF &above,
                             const QPointF &below) {
        QTest::addRow("%s", name) << QLineF(10.0, y1, 90.0, y2) << QSize(100, height) << above
                                  << below;
        QTest::addRow("%s, to the left", name)
                << QLineF(90.0, y1, 10.0, y2) << QSize(100, height) << above << below;
        QTest::addRow("%s, vertical", name)
                << QLineF(-7.5, y1, -7.5, y2) << QSize(0, height) << above << below;
    };
    row("level", 40.0, 40.0, 100, {0.0, 0.0}, {100.0, 100.0});
    row("down", 20.0, 60.0, 100, {-40.0, 0.0}, {100.0, 140.0});
    row("up", 60.0, 20.0, 100, {0.0, -40.0}, {140.0, 100.0});
    row("top edge", 0.0, 0.0, 100, {0.0, 0.0}, {100.0, 100.0});
    row("bottom edge", 100.0, 100.0, 100, {0.0, 0.0}, {100.0, 100.0});
    row("from edge to edge", 0.0, 100.0, 100, {-100.0, 0.0}, {100.0, 200.0});
    // Above the item there is nothing to fill upwards; below it, what is filled is above the line.
    row("level, above", -30.0, -30.0, 100, {-30.0, -30.0}, {100.0, 100.0});
    row("down, above", -50.0, -10.0, 100, {-50.0, -10.0}, {100.0, 140.0});
    row("down across the top", -20.0, 30.0, 100, {-50.0, 0.0}, {100.0, 150.0});
    row("up across the top", 30.0, -20.0, 100, {0.0, -50.0}, {150.0, 100.0});
    row("level, below", 130.0, 130.0, 100, {0.0, 0.0}, {100.0, 100.0});
    row("down, below", 120.0, 160.0, 100, {-40.0, 0.0}, {100.0, 140.0});
    row("up, below", 160.0, 120.0, 100, {0.0, -40.0}, {140.0, 100.0});
    row("down across the bottom", 80.0, 120.0, 100, {-40.0, 0.0}, {100.0, 140.0});
    row("no height", 40.0, 40.0, 0, {0.0, 0.0}, {0.0, 0.0});
    row("down, no height", 20.0, 60.0, 0, {-40.0, 0.0}, {0.0, 40.0});
    row("negative height", 20.0, 60.0, -50, {-40.0, 0.0}, {-50.0, -10.0});
    row("fractions", 0.25, 0.75, 1, {-0.5, 0.0}, {1.0, 1.5});
    // Added in double: a float holds 2^24 and not the next one.
    row("rounded last", 0x1p24 + 1.0, 0x1p24, 0, {0.0, -1.0}, {1.0, 0.0});
    row("rounded", 0.1, 0.1, 7, {0.0, 0.0}, {7.0, 7.0});
    row("beyond a float", 1e300, 1e300, 100, {0.0, 0.0}, {0.0, 0.0});
    row("infinitely high", -inf, -inf, 100, {-inf, -inf}, {NaN, NaN});

    QTest::newRow("no length") << QLineF(5.0, 25.0, 5.0, 25.0) << QSize(100, 100)
                               << QPointF(0.0, 0.0) << QPointF(100.0, 100.0);
    QTest::newRow("no size") << QLineF(5.0, 25.0, 9.0, 25.0) << QSize() << QPointF(0.0, 0.0)
                             << QPointF(-1.0, -1.0);
    QTest::newRow("far to the side") << QLineF(-1e300, 25.0, inf, 25.0) << QSize(100, 100)
                                     << QPointF(0.0, 0.0) << QPointF(100.0, 100.0);
    QTest::newRow("x not a number") << QLineF(NaN, 25.0, 0.1, 25.0) << QSize(100, 100)
                                    << QPointF(0.0, 0.0) << QPointF(100.0, 100.0);
}

void tst_GradientNode::lines()
{
    QFETCH(QLineF, line);
    QFETCH(QSize, size);
    QFETCH(QPointF, farAbove);
    QFETCH(QPointF, farBelow);

    GradientNode node;
    for (const bool isUp : {true, false, true}) {
        const QPointF far = isUp ? farAbove : farBelow;
        node.update(line, blue, isUp, size);
        const Points strip = {line.p1(), {line.x1(), far.x()}, line.p2(), {line.x2(), far.y()}};
        QCOMPARE(fillVerticesOf(node), fillStrip(strip, blueBytes));
        QCOMPARE(node.geometry()->indexCount(), 0);
    }
}

void tst_GradientNode::extremeLines_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::newRow("first end not a number") << QLineF(0.0, NaN, 10.0, 20.0);
    QTest::newRow("second end not a number") << QLineF(0.0, 20.0, 10.0, NaN);
    QTest::newRow("nothing a number") << QLineF(NaN, NaN, NaN, NaN);
    QTest::newRow("infinitely low") << QLineF(0.0, inf, 10.0, inf);
    QTest::newRow("infinitely far apart") << QLineF(-inf, -inf, inf, inf);
    QTest::newRow("largest") << QLineF(-largest, -largest, largest, largest);
}

// Where the fill ends has no answer, but the line stays where it is and the colours hold.
void tst_GradientNode::extremeLines()
{
    QFETCH(QLineF, line);

    for (const bool isUp : {true, false}) {
        GradientNode node;
        node.update(line, blue, isUp, QSize(100, 100));
        const QList<FillVertex> vertices = fillVerticesOf(node);
        QCOMPARE(vertices.size(), 4);
        const Points ends = {line.p1(), line.p1(), line.p2(), line.p2()};
        const QList<FillVertex> expected = fillStrip(ends, blueBytes);
        for (qsizetype i = 0; i < 4; ++i) {
            QVERIFY(Vertex::isSame(vertices.at(i).x, expected.at(i).x));
            QVERIFY(vertices.at(i).color == expected.at(i).color);
        }
        QCOMPARE(vertices.at(0), expected.at(0));
        QCOMPARE(vertices.at(2), expected.at(2));
    }
}

void tst_GradientNode::polyline()
{
    GradientNode node;
    const Points points = {{0.0, 10.0}, {15.0, 30.0}, {20.0, 20.0}};
    const Heights heights = {5.0, 7.0, 9.0};
    node.update(points, blue, true, heights);
    const Points above = {{0.0, 10.0}, {0.0, 5.0}, {15.0, 30.0}, {15.0, 23.0}, //
            {15.0, 30.0}, {15.0, 23.0}, {20.0, 20.0}, {20.0, 11.0}};
    QCOMPARE(fillVerticesOf(node), fillStrip(above, blueBytes));
    node.update(points, blue, false, heights);
    const Points under = {{0.0, 10.0}, {0.0, 15.0}, {15.0, 30.0}, {15.0, 37.0}, //
            {15.0, 30.0}, {15.0, 37.0}, {20.0, 20.0}, {20.0, 29.0}};
    QCOMPARE(fillVerticesOf(node), fillStrip(under, blueBytes));
}

void tst_GradientNode::polylines_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<Heights>("heights");

    QTest::newRow("two points") << Points{{5.0, 5.0}, {8.0, 9.0}} << Heights{1.0, 2.0};
    QTest::newRow("to the left") << Points{{8.0, 9.0}, {5.0, 5.0}} << Heights{1.0, 2.0};
    QTest::newRow("outside") << Points{{-5.0, -50.0}, {800.0, 900.0}, {-8.0, 9.0}}
                             << Heights{10.0, 20.0, 30.0};
    QTest::newRow("one point three times")
            << Points{{1.0, 2.0}, {1.0, 2.0}, {1.0, 2.0}} << Heights{3.0, 3.0, 3.0};
    QTest::newRow("no heights") << Points{{5.0, 5.0}, {8.0, 9.0}, {9.0, 3.0}}
                                << Heights{0.0, 0.0, 0.0};
    QTest::newRow("negative heights") << Points{{5.0, 5.0}, {8.0, 9.0}} << Heights{-1.0, -20.0};
    QTest::newRow("fractions") << Points{{0.1, 0.25}, {0.7, -0.5}} << Heights{0.125, 0.75};
    // Added in double: a float holds 2^24 and not the next one.
    QTest::newRow("rounded last") << Points{{0.0, 0x1p24 + 1.0}, {1.0, 0x1p24 + 3.0}}
                                  << Heights{0x1p24, 2.0};
    QTest::newRow("beyond a float")
            << Points{{-1e300, 1e300}, {1e300, -1e300}} << Heights{1e300, 1.0};
    QTest::newRow("infinite points") << Points{{-inf, inf}, {inf, -inf}} << Heights{1.0, inf};
    QTest::newRow("infinite heights") << Points{{1.0, 2.0}, {3.0, 4.0}} << Heights{inf, -inf};
    QTest::newRow("points not numbers") << Points{{NaN, 2.0}, {3.0, NaN}} << Heights{1.0, 1.0};
    QTest::newRow("heights not numbers")
            << Points{{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}} << Heights{NaN, 1.0, NaN};
    Points stairs;
    Heights steps;
    for (int i = 0; i < 5000; ++i) {
        stairs += QPointF((i + 1) / 2 * 3.0, i / 2 * 4.0);
        steps += i % 17;
    }
    QTest::newRow("many points") << stairs << steps;
}

void tst_GradientNode::polylines()
{
    QFETCH(Points, points);
    QFETCH(Heights, heights);

    GradientNode node;
    for (const bool isUp : {true, false, true}) {
        Points sides;
        for (qsizetype i = 0; i < points.size(); ++i) {
            const QPointF &point = points.at(i);
            const QPointF way(0.0, heights.at(i));
            sides << point << (isUp ? point - way : point + way);
        }
        // Each point but the first and the last ends one segment and begins the next.
        Points strip;
        for (qsizetype i = 2; i < sides.size(); i += 2)
            strip += sides.mid(i - 2, 4);

        node.update(points, blue, isUp, heights);
        QCOMPARE(fillVerticesOf(node), fillStrip(strip, blueBytes));
        QCOMPARE(node.geometry()->indexCount(), 0);
    }
}

void tst_GradientNode::nothing_data()
{
    QTest::addColumn<int>("pointCount");
    QTest::addColumn<int>("heightCount");
    for (const int points : {0, 1}) {
        for (const int heights : {0, 1, 2})
            QTest::addRow("%d points, %d heights", points, heights) << points << heights;
    }
    for (const int points : {2, 3, 100}) {
        for (const int heights : {0, 1, points - 1, points + 1, 2 * points})
            QTest::addRow("%d points, %d heights", points, heights) << points << heights;
    }
}

// Nothing is left of what was drawn before.
void tst_GradientNode::nothing()
{
    QFETCH(int, pointCount);
    QFETCH(int, heightCount);

    GradientNode node;
    DirtyMarks marks;
    const Points points(pointCount, QPointF(1.0, 2.0));
    const Heights heights(heightCount, 3.0);
    for (const bool isUp : {true, false}) {
        node.update(Points{{0.0, 0.0}, {1.0, 0.0}, {2.0, 0.0}}, blue, isUp, Heights{1.0, 1.0, 1.0});
        QCOMPARE(node.geometry()->vertexCount(), 8);
        QCOMPARE(marks.take().size(), 1);
        node.update(points, blue, isUp, heights);
        QCOMPARE(node.geometry()->vertexCount(), 0);
        QCOMPARE(node.geometry()->indexCount(), 0);
        QCOMPARE(marks.take(), (QList<DirtyMarks::Mark>{{&node, QSGNode::DirtyGeometry}}));
    }
}

void tst_GradientNode::colors_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<ColorBytes>("expected");

    const auto row = [](const char *name, const QColor &color, const ColorBytes &expected) {
        QTest::newRow(name) << color << expected;
    };
    row("channels in order", QColor(10, 20, 30), {10, 20, 30, 255});
    // The alpha is not multiplied in.
    row("translucent", QColor(255, 128, 64, 128), {255, 128, 64, 128});
    row("transparent white", QColor(255, 255, 255, 0), {255, 255, 255, 0});
    row("transparent", Qt::transparent, {0, 0, 0, 0});
    row("white", Qt::white, {255, 255, 255, 255});
    row("invalid", QColor(), {0, 0, 0, 255});
    row("by name", QColor(QStringLiteral("steelblue")), {70, 130, 180, 255});
    row("by digits", QColor(QStringLiteral("#80123456")), {18, 52, 86, 128});
    row("hue, saturation, value", QColor::fromHsv(120, 255, 255, 51), {0, 255, 0, 51});
    row("hue, saturation, lightness", QColor::fromHsl(240, 255, 128, 77), {1, 1, 255, 77});
    row("cyan, magenta, yellow, key", QColor::fromCmyk(0, 255, 0, 0, 51), {255, 0, 255, 51});
    // 65535 makes 255, so 257 makes 1, and what lies between is rounded.
    row("sixteen bits", QColor(QRgba64::fromRgba64(257, 257 * 2 + 128, 257 * 3 + 129, 257 * 254)),
            {1, 2, 4, 254});
    // Beyond white, or black.
    for (const float red : {0.5F, 1.0F, 2.0F, 100.0F, -0.25F}) {
        const QColor color = QColor::fromRgbF(red, 2.0F, 0.5F, 0.5F);
        QTest::addRow("extended, %g", double(red)) << color << bytesOf(color.rgba());
    }
}

void tst_GradientNode::colors()
{
    QFETCH(QColor, color);
    QFETCH(ColorBytes, expected);

    GradientNode node;
    for (const bool isUp : {true, false}) {
        node.update(QLineF(0.0, 0.0, 10.0, 0.0), color, isUp, QSize(10, 0));
        QCOMPARE(fillVerticesOf(node),
                fillStrip({{0.0, 0.0}, {0.0, 0.0}, {10.0, 0.0}, {10.0, 0.0}}, expected));
        node.update(Points{{0.0, 0.0}, {10.0, 0.0}}, color, isUp, Heights{0.0, 0.0});
        QCOMPARE(fillVerticesOf(node),
                fillStrip({{0.0, 0.0}, {0.0, 0.0}, {10.0, 0.0}, {10.0, 0.0}}, expected));
    }
}

void tst_GradientNode::allBytes()
{
    GradientNode node;
    for (int value = 0; value < 256; ++value) {
        const ColorBytes expected = bytes(value, 255 - value, value * 7 % 256, value * 11 % 256);
        node.update(QLineF(), QColor(expected[0], expected[1], expected[2], expected[3]), true,
                QSize(10, 10));
        QCOMPARE(fillVerticesOf(node).at(0).color, expected);
        QCOMPARE(fillVerticesOf(node).at(1).color, ColorBytes());
    }
}

// One form after the other, with more and with fewer vertices.
void tst_GradientNode::oneAfterAnother()
{
    GradientNode node;
    const QLineF line(0.0, 10.0, 10.0, 10.0);
    const auto lineStrip =
            fillStrip({{0.0, 10.0}, {0.0, 0.0}, {10.0, 10.0}, {10.0, 0.0}}, blueBytes);

    node.update(Points(100, {1.0, 1.0}), Qt::red, true, Heights(100, 1.0));
    QCOMPARE(node.geometry()->vertexCount(), 4 * 99);
    node.update(line, blue, true, QSize(10, 10));
    QCOMPARE(fillVerticesOf(node), lineStrip);
    node.update(Points(), Qt::red, true, Heights());
    QCOMPARE(node.geometry()->vertexCount(), 0);
    node.update(line, blue, true, QSize(10, 10));
    QCOMPARE(fillVerticesOf(node), lineStrip);
    node.update(Points{{0.0, 10.0}, {10.0, 10.0}}, blue, true, Heights{10.0, 10.0});
    QCOMPARE(fillVerticesOf(node), lineStrip);
}

void tst_GradientNode::keepsItsMemory()
{
    GradientNode node;
    const void *memory = node.geometry()->vertexData();
    for (const double y : {1.0, 2.0}) {
        node.update(QLineF(0.0, y, 10.0, y), blue, false, QSize(10, 10));
        QCOMPARE(node.geometry()->vertexData(), memory);
        node.update(Points{{0.0, y}, {10.0, y}}, blue, false, Heights{y, y});
        QCOMPARE(node.geometry()->vertexData(), memory);
    }
    const QSGGeometry *geometry = node.geometry();
    node.update(Points(1000, {}), blue, false, Heights(1000, 1.0));
    memory = geometry->vertexData();
    node.update(Points(1000, {5.0, 5.0}), blue, true, Heights(1000, 2.0));
    QCOMPARE(geometry->vertexData(), memory);
    QCOMPARE(node.geometry(), geometry);
}

void tst_GradientNode::marks()
{
    GradientNode node;
    DirtyMarks marks;
    const QList<DirtyMarks::Mark> once = {{&node, QSGNode::DirtyGeometry}};

    // Also where nothing differs.
    for (int i = 0; i < 2; ++i) {
        node.update(QLineF(0.0, 0.0, 10.0, 0.0), blue, true, QSize(10, 10));
        QCOMPARE(marks.take(), once);
    }
    for (int i = 0; i < 2; ++i) {
        node.update(Points{{0.0, 0.0}, {1.0, 0.0}, {2.0, 0.0}}, blue, true, Heights{1.0, 1.0, 1.0});
        QCOMPARE(marks.take(), once);
    }
}

QTEST_APPLESS_MAIN(tst_GradientNode)

#include "tst_gradientnode.moc"
