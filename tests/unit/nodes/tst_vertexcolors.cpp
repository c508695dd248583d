// SPDX-License-Identifier: MIT
#include "SmoothVertices.h"

#include <ChartsLibrary/ArcNode.h>
#include <ChartsLibrary/LineNode.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QRgba64>
#include <QtTest/QTest>

using namespace Charts;

namespace {

QList<Vertex> lineVertices(const QColor &color, bool isSmooth)
{
    static LineNode node;
    node.update(QLineF(0.0, 0.0, 10.0, 0.0), 2.0F, color, isSmooth);
    return verticesOf(node);
}

QList<Vertex> arcVertices(const QColor &color, bool isSmooth)
{
    static ArcNode node;
    node.update({{0.0, 0.0}, 5.0, 0.0, 1.0}, 2.0F, color, isSmooth);
    return verticesOf(node);
}

/*! The colour of the opaque vertices. */
ColorBytes lineBytes(const QColor &color)
{
    return lineVertices(color, false).first().color;
}

ColorBytes arcBytes(const QColor &color)
{
    return arcVertices(color, false).first().color;
}

/*! A colour of eight bits a channel, premultiplied: the products of fractions, rounded down. */
ColorBytes premultiplied(int red, int green, int blue, int alpha)
{
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    return {byte(red * alpha / 255), byte(green * alpha / 255), byte(blue * alpha / 255),
            byte(alpha)};
}

QString text(const ColorBytes &bytes)
{
    QStringList numbers;
    for (const std::uint8_t byte : bytes)
        numbers += QString::number(byte);
    return numbers.join(u' ');
}

} // namespace

Q_DECLARE_METATYPE(ColorBytes)

/*! The colours in the vertices of lines and arcs. */
class tst_VertexColors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void colors_data();
    void colors();
    void allBytes_data();
    void allBytes();
    void everyOpaqueVertex();
};

void tst_VertexColors::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_VertexColors::colors_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<ColorBytes>("bytes");

    const auto row = [](const char *name, const QColor &color, const ColorBytes &bytes) {
        QTest::newRow(name) << color << bytes;
    };
    row("half red", QColor::fromRgbF(1.0F, 0.0F, 0.0F, 0.5F), {127, 0, 0, 127});
    row("channels in order", QColor(10, 20, 30, 255), {10, 20, 30, 255});
    row("translucent", QColor(255, 128, 64, 128), {128, 64, 32, 128});
    row("white", Qt::white, {255, 255, 255, 255});
    row("black", Qt::black, {0, 0, 0, 255});
    row("transparent", Qt::transparent, {0, 0, 0, 0});
    row("transparent white", QColor(255, 255, 255, 0), {0, 0, 0, 0});
    row("hardly there", QColor(255, 254, 1, 1), {1, 0, 0, 1});
    row("invalid", QColor(), {0, 0, 0, 255});
    row("hue", QColor::fromHsv(120, 255, 255, 255), {0, 255, 0, 255});
    row("cyan, magenta, yellow, key", QColor::fromCmyk(0, 255, 0, 0, 51), {51, 0, 51, 51});

    // Channels of 16 bits: 65535 makes 255, so 257 makes 1.
    const auto wide = [](quint16 red, quint16 green, quint16 blue, quint16 alpha) {
        return QColor(QRgba64::fromRgba64(red, green, blue, alpha));
    };
    row("a whole number", wide(257, 2 * 257, 3 * 257, 65535), {1, 2, 3, 255});
    row("just below", wide(256, 2 * 257 - 1, 254 * 257 - 1, 65535), {0, 1, 253, 255});
    row("just above", wide(258, 2 * 257 + 1, 254 * 257 + 1, 65535), {1, 2, 254, 255});
    row("all but opaque", wide(65535, 65535, 65535, 65534), {254, 254, 254, 254});
    row("all but white", wide(65534, 65534, 65534, 65535), {254, 254, 254, 255});
    row("a third", wide(21845, 21845, 21845, 21845), {28, 28, 28, 85});

    // Beyond white: the low byte of 510, 1020 and -63 (half of half of -255, without its fraction).
    row("twice as red", QColor::fromRgbF(2.0F, 0.0F, 0.0F, 1.0F), {254, 0, 0, 255});
    row("four times as green", QColor::fromRgbF(0.0F, 4.0F, 0.0F, 1.0F), {0, 252, 0, 255});
    row("less than black", QColor::fromRgbF(-0.25F, 0.0F, 0.0F, 1.0F), {193, 0, 0, 255});
    // Too large for what QColor keeps, and so infinite: nothing is left to write.
    row("infinitely red", QColor::fromRgbF(1e6F, 0.0F, 0.5F, 1.0F), {0, 0, 127, 255});
    row("infinitely dark", QColor::fromRgbF(0.0F, -1e6F, 0.5F, 1.0F), {0, 0, 127, 255});
    row("not a number", QColor::fromRgbF(1e6F, 0.0F, 0.5F, 0.0F), {0, 0, 0, 0});
}

void tst_VertexColors::colors()
{
    QFETCH(QColor, color);
    QFETCH(ColorBytes, bytes);

    QCOMPARE(text(lineBytes(color)), text(bytes));
    QCOMPARE(text(arcBytes(color)), text(bytes));
}

void tst_VertexColors::allBytes_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 2, 15, 17, 51, 85, 127, 128, 129, 170, 204, 238, 254, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

void tst_VertexColors::allBytes()
{
    QFETCH(int, alpha);

    for (int value = 0; value < 256; ++value) {
        const int other = 255 - value;
        const int third = value * 7 % 256;
        const QColor color(value, other, third, alpha);
        const ColorBytes expected = premultiplied(value, other, third, alpha);
        if (lineBytes(color) != expected || arcBytes(color) != expected) {
            QFAIL(qPrintable(QStringLiteral("%1, line %2, arc %3, expected %4")
                                     .arg(color.name(QColor::HexArgb), text(lineBytes(color)),
                                             text(arcBytes(color)), text(expected))));
        }
    }
}

void tst_VertexColors::everyOpaqueVertex()
{
    const QColor color(200, 100, 50, 204);
    const ColorBytes bytes = premultiplied(200, 100, 50, 204);
    const ColorBytes clear = {};
    for (const Vertex &vertex : lineVertices(color, false) + arcVertices(color, false))
        QCOMPARE(text(vertex.color), text(bytes));

    const QList<Vertex> line = lineVertices(color, true);
    for (qsizetype i = 0; i < line.size(); ++i)
        QCOMPARE(text(line.at(i).color), text(i < 2 || i > 5 ? clear : bytes));
    const QList<Vertex> arc = arcVertices(color, true);
    for (qsizetype i = 0; i < arc.size(); ++i)
        QCOMPARE(text(arc.at(i).color), text(i % 4 < 2 ? bytes : clear));
}

QTEST_APPLESS_MAIN(tst_VertexColors)

#include "tst_vertexcolors.moc"
