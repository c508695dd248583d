// SPDX-License-Identifier: MIT
#include "PaintedGrid.h"

#include <ChartsLibrary/SmithGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <array>
#include <complex>
#include <numbers>

using namespace Charts;

namespace {

// Containers in the order of their drawing.
enum Container { InnerArcs, Marker, OuterArcs, RealAxis };

constexpr std::array resistances = {0.2, 0.5, 1.0, 2.0, 5.0};

/*! The reactances that the chart shows, upper and lower arcs: tan 15, 30, 45, 60 and 75 degrees. */
const std::array<double, 5> reactances = {
        2.0 - std::sqrt(3.0), 1.0 / std::sqrt(3.0), 1.0, std::sqrt(3.0), 2.0 + std::sqrt(3.0)};

/*! The plane of the reflection coefficient, as a chart of a certain size shows it. */
struct Plane
{
    Plane(const QSizeF &size, bool isFlipped)
        : center(std::floor(size.width() / 2.0), std::floor(size.height() / 2.0))
        , radius(std::floor(std::min(size.width(), size.height()) / 2.0))
        , sign(isFlipped ? -1.0 : 1.0)
    {
    }

    [[nodiscard]] QPointF pixelOf(const std::complex<double> &reflection) const
    {
        // Upwards is positive.
        return center + QPointF(sign * reflection.real(), -reflection.imag()) * radius;
    }
    [[nodiscard]] std::complex<double> reflectionAt(const QPointF &pixel) const
    {
        const QPointF distance = (pixel - center) / radius;
        return {sign * distance.x(), -distance.y()};
    }

    QPointF center;
    double radius;
    double sign;
};

/*! Normalised. */
std::complex<double> impedanceOf(const std::complex<double> &reflection)
{
    return (1.0 + reflection) / (1.0 - reflection);
}

std::complex<double> reflectionOf(const std::complex<double> &impedance)
{
    return (impedance - 1.0) / (impedance + 1.0);
}

} // namespace

// A chart of the scale 1 against the circles of the textbook (P. H. Smith, Transmission Line
// Calculator, Electronics, January 1939): in the plane of the reflection coefficient, a normalised
// resistance r is the circle around (r / (1 + r), 0) with the radius 1 / (1 + r), a normalised
// reactance x the circle around (1, 1 / x) with the radius 1 / |x|.
class tst_SmithTextbook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void resistanceCircles_data() { addSizes(); }
    void resistanceCircles();
    void reactanceArcs_data() { addSizes(); }
    void reactanceArcs();
    void impedancesAlongArcs();
    void meetingOfArcs_data() { addSizes(); }
    void meetingOfArcs();

private:
    static void addSizes();

    // Centre and radius are rounded to whole pixels, each by half a pixel at most; that of the
    // library's own approximation of sine and cosine is a hundredth.
    static constexpr double tolerance = 1.02;
};

void tst_SmithTextbook::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_SmithTextbook::addSizes()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<bool>("isFlipped");
    for (const QSizeF &size : {QSizeF(200, 200), QSizeF(200, 120), QSizeF(37, 53),
                 QSizeF(1001, 801), QSizeF(643, 1019), QSizeF(4000, 3000)}) {
        QTest::addRow("%g x %g", size.width(), size.height()) << size << false;
        QTest::addRow("%g x %g, flipped", size.width(), size.height()) << size << true;
    }
}

void tst_SmithTextbook::resistanceCircles()
{
    QFETCH(QSizeF, size);
    QFETCH(bool, isFlipped);
    PaintedGrid<SmithGrid> grid(size);
    grid.setFlip(isFlipped);
    grid.paint();
    const QList<DrawnArc> arcs = grid.arcs(InnerArcs);
    QCOMPARE(arcs.size(), qsizetype(resistances.size() + 2 * reactances.size()));
    const Plane plane(size, isFlipped);
    for (std::size_t i = 0; i < resistances.size(); ++i) {
        const double r = resistances[i];
        const double deviation = arcs[qsizetype(i)].deviation(
                plane.pixelOf(r / (1.0 + r)), plane.radius / (1.0 + r));
        QVERIFY2(deviation < tolerance,
                (QByteArray::number(r) + " is off by " + QByteArray::number(deviation))
                        .constData());
    }
}

void tst_SmithTextbook::reactanceArcs()
{
    QFETCH(QSizeF, size);
    QFETCH(bool, isFlipped);
    PaintedGrid<SmithGrid> grid(size);
    grid.setFlip(isFlipped);
    grid.paint();
    const QList<DrawnArc> arcs = grid.arcs(InnerArcs);
    QCOMPARE(arcs.size(), qsizetype(resistances.size() + 2 * reactances.size()));
    const Plane plane(size, isFlipped);
    qsizetype index = qsizetype(resistances.size());
    for (const double magnitude : reactances) {
        for (const double x : {magnitude, -magnitude}) {
            const double deviation = arcs[index++].deviation(
                    plane.pixelOf({1.0, 1.0 / x}), plane.radius / magnitude);
            QVERIFY2(deviation < tolerance,
                    (QByteArray::number(x) + " is off by " + QByteArray::number(deviation))
                            .constData());
        }
    }
}

void tst_SmithTextbook::impedancesAlongArcs()
{
    // The other way round, on a chart so large that a pixel is little: what impedance is under the
    // points of an arc? Not near the reflection 1, where it grows without bounds.
    const QSizeF size(4000, 4000);
    PaintedGrid<SmithGrid> grid(size);
    grid.paint();
    const QList<DrawnArc> arcs = grid.arcs(InnerArcs);
    const Plane plane(size, false);
    qsizetype index = 0;
    int pointCount = 0;
    const auto check = [&](const DrawnArc &arc, double expected, const auto &part) {
        for (const QPointF &point : arc.middle) {
            const std::complex<double> reflection = plane.reflectionAt(point);
            const double nearness = std::abs(1.0 - reflection);
            if (nearness < 0.5)
                continue;
            ++pointCount;
            // dz = 2 / (1 - reflection)^2 d(reflection)
            const double pixel = 2.0 / (nearness * nearness) / plane.radius;
            if (!(std::abs(part(impedanceOf(reflection)) - expected) < tolerance * pixel))
                return false;
        }
        return true;
    };
    const auto real = [](const std::complex<double> &z) { return z.real(); };
    const auto imaginary = [](const std::complex<double> &z) { return z.imag(); };
    for (const double r : resistances)
        QVERIFY2(check(arcs[index++], r, real), QByteArray::number(r).constData());
    for (const double x : reactances) {
        QVERIFY2(check(arcs[index++], x, imaginary), QByteArray::number(x).constData());
        QVERIFY2(check(arcs[index++], -x, imaginary), QByteArray::number(-x).constData());
    }
    QVERIFY(pointCount > 5000);
}

void tst_SmithTextbook::meetingOfArcs()
{
    // All circles meet where the reflection is 1. The arcs of a reactance run from there to the
    // boundary, at the reflection of that reactance alone: one each 30 degrees.
    QFETCH(QSizeF, size);
    QFETCH(bool, isFlipped);
    PaintedGrid<SmithGrid> grid(size);
    grid.setFlip(isFlipped);
    grid.paint();
    const QList<DrawnArc> arcs = grid.arcs(InnerArcs);
    const Plane plane(size, isFlipped);
    const QPointF meeting = plane.pixelOf(1.0);
    for (qsizetype i = 0; i < arcs.size(); ++i) {
        const DrawnArc &arc = arcs[i];
        // Where the boundary's radius is odd, rounding may let a resistance circle end a pixel
        // outside of it. Nothing is drawn of it there.
        if (std::size_t(i) < resistances.size() && !arc.isClosed()) {
            QVERIFY(int(plane.radius) % 2 == 1);
            continue;
        }
        double nearest = std::numeric_limits<double>::infinity();
        for (const QPointF &point : arc.middle)
            nearest = std::min(nearest, distanceOf(point, meeting));
        // A sample each 5 pixels.
        QVERIFY2(nearest < 2.5 + tolerance, QByteArray::number(nearest).constData());
    }
    qsizetype index = qsizetype(resistances.size());
    for (int degrees = 150; degrees >= 30; degrees -= 30) {
        for (const int sign : {1, -1}) {
            const DrawnArc &arc = arcs[index];
            const double angle = sign * degrees * std::numbers::pi / 180.0;
            const QPointF end = plane.pixelOf(std::polar(1.0, angle));
            const double x = sign * reactances[std::size_t(index - 5) / 2];
            QVERIFY(distanceOf(plane.pixelOf(reflectionOf({0.0, x})), end) < 1e-6);
            const double distance = std::min(
                    distanceOf(arc.middle.first(), end), distanceOf(arc.middle.last(), end));
            // The radius by half a pixel and the centre, too: where the arc meets the boundary
            // moves by up to twice as much, as the two meet at a right angle.
            QVERIFY2(distance < 2.0 * tolerance, QByteArray::number(distance).constData());
            ++index;
        }
    }
    QCOMPARE(index, arcs.size());
}

QTEST_GUILESS_MAIN(tst_SmithTextbook)
#include "tst_smithtextbook.moc"
