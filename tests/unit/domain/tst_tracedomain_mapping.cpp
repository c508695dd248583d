// SPDX-License-Identifier: MIT
#include "ExactCompare.h"

#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

namespace {

constexpr auto XY = TraceDomain::XYFormat;
constexpr auto Smith = TraceDomain::SmithFormat;
constexpr auto Polar = TraceDomain::PolarFormat;

} // namespace

class tst_TraceDomainMapping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void geometryToDomainX_data();
    void geometryToDomainX();
    void geometryToDomainY_data();
    void geometryToDomainY();
    void domainPoint_data();
    void domainPoint();
    void domainPointIsBothMappings();
    void rectangle_data();
    void rectangle();
    void flagsDoNotMatter();
};

void tst_TraceDomainMapping::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TraceDomainMapping::geometryToDomainX_data()
{
    QTest::addColumn<TraceDomain::TraceFormat>("format");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<Span>("range");
    QTest::addColumn<double>("pixel");
    QTest::addColumn<double>("value");

    const auto row = [](const char *name, TraceDomain::TraceFormat format, const QSizeF &size,
                             Span range, double pixel, double value) {
        QTest::newRow(name) << format << size << range << pixel << value;
    };
    const QSizeF size(200.0, 100.0);
    row("left edge", XY, size, Span(0.0, 10.0), 0.0, 0.0);
    row("inside", XY, size, Span(0.0, 10.0), 50.0, 2.5);
    row("right edge", XY, size, Span(0.0, 10.0), 200.0, 10.0);
    row("outside", XY, size, Span(0.0, 10.0), -20.0, -1.0);
    row("offset range", XY, size, Span(-3.0, 1.0), 150.0, 0.0);
    row("inexact", XY, QSizeF(300.0, 100.0), Span(0.1, 0.7), 100.0, 0.3);
    row("reversed range", XY, size, Span(10.0, 0.0), 50.0, 10.0);
    row("empty range", XY, size, Span(4.0, 4.0), 50.0, 4.0);
    row("no width", XY, QSizeF(0.0, 100.0), Span(0.0, 10.0), 50.0, inf);
    row("no width, left of it", XY, QSizeF(0.0, 100.0), Span(0.0, 10.0), -50.0, -inf);
    row("no width, on it", XY, QSizeF(0.0, 100.0), Span(0.0, 10.0), 0.0, NaN);
    row("neither width nor range", XY, QSizeF(0.0, 100.0), Span(4.0, 4.0), 50.0, NaN);
    row("NaN", XY, size, Span(0.0, 10.0), NaN, NaN);

    // Wide item: the square of side 200 begins at 50.
    const QSizeF wide(300.0, 200.0);
    row("polar, wide, left", Polar, wide, Span(-1.0, 1.0), 50.0, -1.0);
    row("polar, wide, centre", Polar, wide, Span(-1.0, 1.0), 150.0, 0.0);
    row("polar, wide, right", Polar, wide, Span(-1.0, 1.0), 250.0, 1.0);
    row("polar, wide, item's edge", Polar, wide, Span(-1.0, 1.0), 0.0, -1.5);
    row("Smith, wide, right", Smith, wide, Span(-1.0, 1.0), 250.0, 1.0);
    const QSizeF tall(200.0, 300.0);
    row("polar, tall, left", Polar, tall, Span(-1.0, 1.0), 0.0, -1.0);
    row("Smith, tall, right", Smith, tall, Span(-1.0, 1.0), 200.0, 1.0);
    row("polar, offset range", Polar, wide, Span(2.0, 6.0), 100.0, 3.0);
    row("polar, reversed range", Polar, wide, Span(1.0, -1.0), 250.0, 1.0);
    row("polar, no height", Polar, QSizeF(300.0, 0.0), Span(-1.0, 1.0), 200.0, inf);
    row("polar, no height, centre", Polar, QSizeF(300.0, 0.0), Span(-1.0, 1.0), 150.0, NaN);
}

void tst_TraceDomainMapping::geometryToDomainX()
{
    QFETCH(TraceDomain::TraceFormat, format);
    QFETCH(QSizeF, size);
    QFETCH(Span, range);
    QFETCH(double, pixel);
    QFETCH(double, value);

    TraceDomain domain;
    domain.setFormat(format);
    domain.setSize(size);
    domain.setRangeXY(range, Span(-77.0, 777.0));
    COMPARE_CLOSE(domain.geometryToDomainX(pixel), value);
}

void tst_TraceDomainMapping::geometryToDomainY_data()
{
    QTest::addColumn<TraceDomain::TraceFormat>("format");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<Span>("range");
    QTest::addColumn<double>("pixel");
    QTest::addColumn<double>("value");

    const auto row = [](const char *name, TraceDomain::TraceFormat format, const QSizeF &size,
                             Span range, double pixel, double value) {
        QTest::newRow(name) << format << size << range << pixel << value;
    };
    const QSizeF size(200.0, 100.0);
    row("top edge", XY, size, Span(0.0, 5.0), 0.0, 5.0);
    row("inside", XY, size, Span(0.0, 5.0), 20.0, 4.0);
    row("bottom edge", XY, size, Span(0.0, 5.0), 100.0, 0.0);
    row("outside", XY, size, Span(0.0, 5.0), -20.0, 6.0);
    row("offset range", XY, size, Span(-3.0, 1.0), 25.0, 0.0);
    row("inexact", XY, QSizeF(200.0, 300.0), Span(0.1, 0.7), 100.0, 0.5);
    row("reversed range", XY, size, Span(5.0, 0.0), 20.0, 0.0);
    row("empty range", XY, size, Span(4.0, 4.0), 20.0, 4.0);
    row("no height", XY, QSizeF(200.0, 0.0), Span(0.0, 5.0), 20.0, -inf);
    row("no height, above it", XY, QSizeF(200.0, 0.0), Span(0.0, 5.0), -20.0, inf);
    row("no height, on it", XY, QSizeF(200.0, 0.0), Span(0.0, 5.0), 0.0, NaN);
    row("NaN", XY, size, Span(0.0, 5.0), NaN, NaN);

    // A round format counts down from the lower end, and a side of the square is as long as that
    // end's value: with -1 a pixel further down is further below.
    const QSizeF tall(200.0, 300.0);
    row("polar, tall, top of the square", Polar, tall, Span(-1.0, 1.0), 50.0, -1.0);
    row("polar, tall, centre", Polar, tall, Span(-1.0, 1.0), 150.0, -1.5);
    row("polar, tall, bottom of the square", Polar, tall, Span(-1.0, 1.0), 250.0, -2.0);
    row("polar, tall, item's edge", Polar, tall, Span(-1.0, 1.0), 0.0, -0.75);
    row("Smith, tall, centre", Smith, tall, Span(-1.0, 1.0), 150.0, -1.5);
    row("polar, wide", Polar, QSizeF(300.0, 200.0), Span(-1.0, 1.0), 100.0, -1.5);
    row("polar, positive lower end", Polar, QSizeF(300.0, 200.0), Span(2.0, 5.0), 100.0, 3.0);
    row("polar, the upper end does not count", Polar, QSizeF(300.0, 200.0), Span(2.0, 500.0), 100.0,
            3.0);
    row("polar, reversed range", Polar, QSizeF(300.0, 200.0), Span(2.0, -2.0), 100.0, 3.0);
    row("polar, lower end zero", Polar, QSizeF(300.0, 200.0), Span(0.0, 1.0), 100.0, 0.0);
    row("polar, no width", Polar, QSizeF(0.0, 200.0), Span(1.0, 2.0), 150.0, inf);
    row("polar, no width, negative lower end", Polar, QSizeF(0.0, 200.0), Span(-1.0, 2.0), 150.0,
            -inf);
    row("polar, no width, centre", Polar, QSizeF(0.0, 200.0), Span(-1.0, 1.0), 100.0, NaN);
}

void tst_TraceDomainMapping::geometryToDomainY()
{
    QFETCH(TraceDomain::TraceFormat, format);
    QFETCH(QSizeF, size);
    QFETCH(Span, range);
    QFETCH(double, pixel);
    QFETCH(double, value);

    TraceDomain domain;
    domain.setFormat(format);
    domain.setSize(size);
    domain.setRangeXY(Span(-77.0, 777.0), range);
    COMPARE_CLOSE(domain.geometryToDomainY(pixel), value);
}

void tst_TraceDomainMapping::domainPoint_data()
{
    QTest::addColumn<TraceDomain::TraceFormat>("format");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QPointF>("pixel");
    QTest::addColumn<QPointF>("point");

    const auto row = [](const char *name, TraceDomain::TraceFormat format, const QSizeF &size,
                             const QPointF &pixel, const QPointF &point) {
        QTest::newRow(name) << format << size << pixel << point;
    };
    // Ranges (0, 10) and (0, 5), which a round format does not look at.
    const QSizeF wide(300.0, 200.0);
    row("XY, top left", XY, wide, QPointF(0.0, 0.0), QPointF(0.0, 5.0));
    row("XY, bottom right", XY, wide, QPointF(300.0, 200.0), QPointF(10.0, 0.0));
    row("XY, inside", XY, wide, QPointF(75.0, 40.0), QPointF(2.5, 4.0));
    row("polar, centre", Polar, wide, QPointF(150.0, 100.0), QPointF(0.0, 0.0));
    row("polar, right", Polar, wide, QPointF(250.0, 100.0), QPointF(1.0, 0.0));
    row("polar, left", Polar, wide, QPointF(50.0, 100.0), QPointF(-1.0, 0.0));
    row("polar, y grows downwards", Polar, wide, QPointF(150.0, 200.0), QPointF(0.0, 1.0));
    row("polar, outside the circle", Polar, wide, QPointF(0.0, 0.0), QPointF(-1.5, -1.0));
    row("Smith, right", Smith, wide, QPointF(250.0, 100.0), QPointF(1.0, 0.0));
    row("Smith, tall", Smith, QSizeF(200.0, 300.0), QPointF(150.0, 100.0), QPointF(0.5, -0.5));
    row("polar, no size, elsewhere", Polar, QSizeF(0.0, 0.0), QPointF(3.0, -4.0),
            QPointF(inf, -inf));
    row("polar, no size, origin", Polar, QSizeF(0.0, 0.0), QPointF(0.0, 0.0), QPointF(NaN, NaN));
    row("polar, no height", Polar, QSizeF(300.0, 0.0), QPointF(150.0, 1.0), QPointF(NaN, inf));
    row("polar, NaN", Polar, wide, QPointF(NaN, 100.0), QPointF(NaN, 0.0));
}

void tst_TraceDomainMapping::domainPoint()
{
    QFETCH(TraceDomain::TraceFormat, format);
    QFETCH(QSizeF, size);
    QFETCH(QPointF, pixel);
    QFETCH(QPointF, point);

    TraceDomain domain;
    domain.setFormat(format);
    domain.setSize(size);
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    COMPARE_CLOSE(domain.domainPoint(pixel).x(), point.x());
    COMPARE_CLOSE(domain.domainPoint(pixel).y(), point.y());
}

void tst_TraceDomainMapping::domainPointIsBothMappings()
{
    TraceDomain domain;
    domain.setSize(QSizeF(641.0, 479.0));
    domain.setRangeXY(-0.3, 0.4, 1e-3, 7e-3);
    for (int i = -2; i < 20; ++i) {
        const QPointF pixel(33.3 * i, 27.7 * i);
        COMPARE_EXACT(domain.domainPoint(pixel).x(), domain.geometryToDomainX(pixel.x()));
        COMPARE_EXACT(domain.domainPoint(pixel).y(), domain.geometryToDomainY(pixel.y()));
    }
}

void tst_TraceDomainMapping::rectangle_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<Span>("xRange");
    QTest::addColumn<Span>("yRange");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<Span>("x");
    QTest::addColumn<Span>("y");

    const auto row = [](const char *name, const QSizeF &size, Span xRange, Span yRange,
                             const QRectF &rect, Span x, Span y) {
        QTest::newRow(name) << size << xRange << yRange << rect << x << y;
    };
    const QSizeF size(200.0, 100.0);
    const Span wide(0.0, 10.0);
    const Span high(0.0, 5.0);
    row("the whole item", size, wide, high, QRectF(0.0, 0.0, 200.0, 100.0), wide, high);
    row("inside", size, wide, high, QRectF(40.0, 20.0, 40.0, 40.0), Span(2.0, 4.0), Span(2.0, 4.0));
    row("at the bottom", size, wide, high, QRectF(0.0, 80.0, 20.0, 20.0), Span(0.0, 1.0),
            Span(0.0, 1.0));
    row("offset ranges", size, Span(-4.0, 4.0), Span(10.0, 20.0), QRectF(50.0, 50.0, 100.0, 25.0),
            Span(-2.0, 2.0), Span(12.5, 15.0));
    row("larger than the item", size, wide, high, QRectF(-20.0, -20.0, 240.0, 140.0),
            Span(-1.0, 11.0), Span(-1.0, 6.0));
    row("empty", size, wide, high, QRectF(40.0, 20.0, 0.0, 0.0), Span(2.0, 2.0), Span(4.0, 4.0));
    row("drawn from right to left and upwards", size, wide, high, QRectF(80.0, 60.0, -40.0, -40.0),
            Span(4.0, 2.0), Span(4.0, 2.0));
    row("inexact", QSizeF(300.0, 300.0), Span(0.1, 0.7), Span(0.1, 0.7),
            QRectF(100.0, 100.0, 50.0, 50.0), Span(0.3, 0.4), Span(0.4, 0.5));
    row("reversed ranges", size, Span(10.0, 0.0), Span(5.0, 0.0), QRectF(40.0, 20.0, 40.0, 40.0),
            Span(10.0, 10.0), Span(0.0, 0.0));
    row("no size", QSizeF(0.0, 0.0), wide, high, QRectF(40.0, 20.0, 40.0, 40.0), Span(inf, inf),
            Span(-inf, -inf));
    row("no size, at the origin", QSizeF(0.0, 0.0), wide, high, QRectF(0.0, 0.0, 1.0, 1.0),
            Span(NaN, inf), Span(-inf, NaN));
    row("no size and empty ranges", QSizeF(0.0, 0.0), Span(1.0, 1.0), Span(2.0, 2.0),
            QRectF(1.0, 1.0, 1.0, 1.0), Span(NaN, NaN), Span(NaN, NaN));
}

void tst_TraceDomainMapping::rectangle()
{
    QFETCH(QSizeF, size);
    QFETCH(Span, xRange);
    QFETCH(Span, yRange);
    QFETCH(QRectF, rect);
    QFETCH(Span, x);
    QFETCH(Span, y);

    // Linear in every format.
    for (const auto format : {XY, Smith, Polar}) {
        TraceDomain domain;
        domain.setFormat(format);
        domain.setSize(size);
        domain.setRangeXY(xRange, yRange);
        const auto [spanX, spanY] = domain.transformGeometryToDomain(rect);
        COMPARE_CLOSE(spanX, x);
        COMPARE_CLOSE(spanY, y);
        COMPARE_EXACT(domain.xRange(), xRange);
        COMPARE_EXACT(domain.yRange(), yRange);
    }
}

void tst_TraceDomainMapping::flagsDoNotMatter()
{
    TraceDomain domain;
    domain.setSize(QSizeF(200.0, 100.0));
    domain.setRangeXY(1.0, 1000.0, -1.0, 1.0);
    const QRectF rect(20.0, 30.0, 40.0, 50.0);
    const auto mapped = [&domain, &rect](TraceDomain::TraceFormat format) {
        domain.setFormat(format);
        const QPointF point = domain.domainPoint(QPointF(33.0, 44.0));
        const auto [x, y] = domain.transformGeometryToDomain(rect);
        return QList<double>{domain.geometryToDomainX(33.0), domain.geometryToDomainY(44.0),
                point.x(), point.y(), x.min, x.max, y.min, y.max};
    };
    for (const auto format : {XY, Smith, Polar}) {
        domain.setIsLogX(false);
        domain.setLeftSmith(false);
        const QList<double> before = mapped(format);
        domain.setIsLogX(true);
        domain.setLeftSmith(true);
        QVERIFY(before == mapped(format));
    }
}

QTEST_GUILESS_MAIN(tst_TraceDomainMapping)
#include "tst_tracedomain_mapping.moc"
