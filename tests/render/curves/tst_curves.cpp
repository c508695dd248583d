// SPDX-License-Identifier: MIT
#include "CurveWindow.h"
#include "ExpectedCurve.h"
#include "Graphics.h"

#include <ChartsLibrary/Curve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace Charts;

namespace {

/*! The points of a logarithmic line, with more digits than it has itself. */
QList<QPointF> logarithmicPoints(const QLineF &line, long double decibel, int count)
{
    const long double rate = decibel * std::log(10.0L);
    const long double width = line.x2() - line.x1();
    QList<QPointF> points;
    for (int i = 0; i < count; ++i) {
        const long double x = width * i / (count - 1);
        const long double t = width == 0.0L ? i / (count - 1.0L)
                                            : std::expm1(rate * x) / std::expm1(rate * width);
        points += {double(line.x1() + x), double(line.y1() + (line.y2() - line.y1()) * t)};
    }
    return points;
}

} // namespace

/*! Pixels of curves. */
class tst_Curves : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void profiles_data();
    void profiles();
    void straight_data();
    void straight();
    void translucent_data();
    void translucent();
    void logarithmic_data();
    void logarithmic();
    void withoutSteepness();
    void clipped();
    void sharedTransform();

private:
    /*! Puts a red line, rising to the right, into the window. */
    std::unique_ptr<Curve> curve(AbstractCurveTransform *transform);
    [[nodiscard]] QImage picture() { return m_window->picture(); }

    std::unique_ptr<CurveWindow> m_window;
    LinearCurveTransform m_linear;
};

void tst_Curves::initTestCase()
{
    m_window = std::make_unique<CurveWindow>();
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_Curves::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    m_window->setColor(Qt::white);
    QVERIFY(isBlank(picture()));
}

void tst_Curves::cleanup()
{
    QCOMPARE(CurveWindow::glErrors(), QStringList());
}

void tst_Curves::cleanupTestCase()
{
    QVERIFY(CurveWindow::isWatched());
    m_window.reset();
}

std::unique_ptr<Curve> tst_Curves::curve(AbstractCurveTransform *transform)
{
    auto curve = std::make_unique<Curve>();
    curve->setGeometryTransform(transform);
    curve->setP1({10.0, 50.0});
    curve->setP2({110.0, 10.0});
    curve->setLineWidth(2.0);
    curve->setColor(Qt::red);
    m_window->put(*curve);
    return curve;
}

void tst_Curves::profiles_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<double>("lineWidth");
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<QPoint>("step");
    QTest::addColumn<QList<int>>("levels");

    // A line at n runs through the middle of pixel n. It covers all up to a tenth of its width from
    // there and nothing from nine tenths on.
    const QLineF level(10.0, 30.0, 110.0, 30.0);
    const QLineF upright(60.0, 5.0, 60.0, 55.0);
    const QList<int> two = {255, 128, 0, 128, 255};
    QTest::newRow("level") << level << 2.0 << QPoint(50, 28) << QPoint(0, 1) << two;
    QTest::newRow("upright") << upright << 2.0 << QPoint(58, 30) << QPoint(1, 0) << two;
    // 0.65 / 0.8 of it is covered at a quarter of a pixel, 0.15 / 0.8 at three quarters.
    const QList<int> thinBetween = {255, 207, 48, 255};
    QTest::newRow("thin, at a quarter")
            << level.translated(0.0, 0.25) << 1.0 << QPoint(50, 32) << QPoint(0, -1) << thinBetween;
    QTest::newRow("upright, thin, at three quarters")
            << upright.translated(-0.25, 0.0) << 1.0 << QPoint(58, 30) << QPoint(1, 0)
            << thinBetween;
    // 1.3 / 1.6 at half a pixel, 0.3 / 1.6 at one and a half.
    const QList<int> between = {255, 207, 48, 48, 207, 255};
    QTest::newRow("level, at a half")
            << level.translated(0.0, 0.5) << 2.0 << QPoint(50, 28) << QPoint(0, 1) << between;
    QTest::newRow("upright, at a half")
            << upright.translated(0.5, 0.0) << 2.0 << QPoint(58, 30) << QPoint(1, 0) << between;
    QTest::newRow("wide") << level << 5.0 << QPoint(50, 25) << QPoint(0, 1)
                          << QList<int>{255, 223, 159, 96, 32, 0, 32, 96, 159, 223, 255};
    // Neighbours in a row are 0.7071 apart across the line.
    const QLineF diagonal(20.0, 5.0, 70.0, 55.0);
    const QList<int> slanted = {255, 194, 81, 0, 81, 194, 255};
    QTest::newRow("diagonal") << diagonal << 2.0 << QPoint(42, 30) << QPoint(1, 0) << slanted;
    QTest::newRow("diagonal, downwards")
            << diagonal << 2.0 << QPoint(45, 27) << QPoint(0, 1) << slanted;
    QTest::newRow("other diagonal")
            << QLineF(20.0, 55.0, 70.0, 5.0) << 2.0 << QPoint(42, 30) << QPoint(1, 0) << slanted;
}

// Black on white, level by level.
void tst_Curves::profiles()
{
    QFETCH(QLineF, line);
    QFETCH(double, lineWidth);
    QFETCH(QPoint, start);
    QFETCH(QPoint, step);
    QFETCH(QList<int>, levels);

    if (m_window->effectiveDevicePixelRatio() != 1.0)
        return; // straight() looks at every pixel, whatever its size.
    for (const bool isReversed : {false, true}) {
        const auto item = curve(&m_linear);
        item->setP1(isReversed ? line.p2() : line.p1());
        item->setP2(isReversed ? line.p1() : line.p2());
        item->setLineWidth(lineWidth);
        item->setColor(Qt::black);
        const QImage drawn = picture();
        QPoint pixel = start + CurveWindow::curvePosition.toPoint();
        for (const int level : levels) {
            const QColor color = drawn.pixelColor(pixel);
            QVERIFY2(distanceOf(color, QColor(level, level, level)) <= 2,
                    qPrintable(QStringLiteral("%1 at %2, %3, expected %4")
                                       .arg(color.name())
                                       .arg(pixel.x())
                                       .arg(pixel.y())
                                       .arg(level)));
            pixel += step;
        }
    }
}

void tst_Curves::straight_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<double>("lineWidth");
    QTest::newRow("level") << QLineF(10.0, 30.0, 110.0, 30.0) << 1.0;
    QTest::newRow("level, between pixels") << QLineF(10.3, 30.3, 109.7, 30.3) << 3.0;
    QTest::newRow("upright") << QLineF(60.0, 5.0, 60.0, 55.0) << 1.0;
    QTest::newRow("upwards, wide") << QLineF(60.25, 55.0, 60.25, 5.0) << 12.0;
    QTest::newRow("diagonal") << QLineF(20.0, 5.0, 70.0, 55.0) << 2.0;
    QTest::newRow("shallow") << QLineF(10.0, 35.0, 110.0, 20.0) << 1.0;
    QTest::newRow("steep, backwards") << QLineF(65.0, 55.0, 50.0, 5.0) << 4.0;
    QTest::newRow("short") << QLineF(60.0, 30.0, 61.0, 30.0) << 10.0;
    // What leaves the item is drawn, too.
    QTest::newRow("beyond the item") << QLineF(-30.0, -40.0, 150.0, 90.0) << 2.0;
    QTest::newRow("beside the item") << QLineF(-20.0, -20.0, 140.0, -20.0) << 2.0;
    QTest::newRow("beyond the window") << QLineF(-1000.0, 0.0, 1000.0, 60.0) << 2.0;
    QTest::newRow("broader than long") << QLineF(60.0, 10.0, 60.0, 50.0) << 60.0;
}

void tst_Curves::straight()
{
    QFETCH(QLineF, line);
    QFETCH(double, lineWidth);

    const auto item = curve(&m_linear);
    item->setP1(line.p1());
    item->setP2(line.p2());
    item->setLineWidth(lineWidth);
    const ItemPicture drawn(*m_window, *item);
    QVERIFY(drawnPixels(drawn.image()) > 10);
    const ExpectedCurve expected = {{line.p1(), line.p2()}, lineWidth, Qt::red};
    QCOMPARE(expected.differenceFrom(drawn), QString());
}

void tst_Curves::translucent_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<double>("opacity");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("middle");
    QTest::newRow("half of red on white")
            << QColor(255, 0, 0, 128) << 1.0 << QColor(Qt::white) << QColor(255, 127, 127);
    QTest::newRow("half of orange on blue")
            << QColor(255, 100, 0, 128) << 1.0 << QColor(Qt::blue) << QColor(128, 50, 127);
    QTest::newRow("opacity") << QColor(Qt::black) << 0.5 << QColor(Qt::white)
                             << QColor(128, 128, 128);
    QTest::newRow("both") << QColor(255, 0, 0, 128) << 0.5 << QColor(Qt::black) << QColor(64, 0, 0);
    QTest::newRow("nothing") << QColor(Qt::black) << 0.0 << QColor(Qt::white) << QColor(Qt::white);
}

void tst_Curves::translucent()
{
    QFETCH(QColor, color);
    QFETCH(double, opacity);
    QFETCH(QColor, background);
    QFETCH(QColor, middle);

    m_window->setColor(background);
    const auto item = curve(&m_linear);
    item->setLineWidth(6.0);
    item->setColor(color);
    item->setOpacity(opacity);
    const ItemPicture drawn(*m_window, *item);
    const ExpectedCurve expected = {{item->p1(), item->p2()}, 6.0, color, {}, opacity, background};
    QCOMPARE(expected.differenceFrom(drawn), QString());
    QVERIFY(distanceOf(drawn.colorAt({60.5, 30.5}), middle) <= 2);
}

void tst_Curves::logarithmic_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<double>("decibel");
    QTest::addColumn<int>("pointCount");
    const QLineF rising(10.0, 55.0, 110.0, 5.0);
    QTest::newRow("late") << rising << 0.02 << 100;
    QTest::newRow("early") << rising << -0.02 << 100;
    QTest::newRow("hardly bent") << rising << 1e-4 << 50;
    QTest::newRow("sharp") << rising << 0.1 << 60;
    QTest::newRow("falling") << QLineF(10.0, 5.0, 110.0, 55.0) << 0.01 << 100;
    QTest::newRow("from right to left") << QLineF(110.0, 5.0, 10.0, 55.0) << 0.02 << 30;
    QTest::newRow("across zero") << QLineF(10.0, 40.0, 110.0, -20.0) << 0.02 << 40;
    QTest::newRow("level") << QLineF(10.0, 30.0, 110.0, 30.0) << 0.02 << 40;
    QTest::newRow("upright") << QLineF(60.0, 5.0, 60.0, 55.0) << 0.02 << 11;
    QTest::newRow("two points") << rising << 0.05 << 2;
    QTest::newRow("three points") << rising << -0.02 << 3;
}

void tst_Curves::logarithmic()
{
    QFETCH(QLineF, line);
    QFETCH(double, decibel);
    QFETCH(int, pointCount);

    LogarithmicCurveTransform transform;
    transform.setDecibel(decibel);
    transform.setPointCount(pointCount);
    const auto item = curve(&transform);
    item->setP1(line.p1());
    item->setP2(line.p2());
    item->setLineWidth(4.0);
    const ItemPicture drawn(*m_window, *item);

    ExpectedCurve expected;
    expected.points = logarithmicPoints(line, decibel, pointCount);
    QCOMPARE(expected.points.size(), pointCount);
    expected.lineWidth = 4.0;
    expected.color = Qt::red;
    QCOMPARE(expected.differenceFrom(drawn), QString());

    // Within three quarters of a pixel from each point there is the middle of a pixel, and one more
    // beside it: where lines meet at an angle there is a gap, which one of them may lie in. Ends are
    // cut.
    const int least = int(255.0 * (1.0 - smoothCoverage(0.75, 4.0))) + 2;
    for (qsizetype i = 1; i + 1 < expected.points.size(); ++i) {
        const QPointF place = expected.points[i] + QPointF(0.5, 0.5);
        const QPointF beside(1.0 / drawn.ratio(), 0.0);
        const int darkest = std::min({drawn.colorAt(place).green(),
                drawn.colorAt(place - beside).green(), drawn.colorAt(place + beside).green()});
        QVERIFY2(darkest <= least, qPrintable(drawn.colorAt(place).name()));
    }
}

// There is no bend of steepness 0: the line lies at its second end, or nowhere if zero is between.
void tst_Curves::withoutSteepness()
{
    LogarithmicCurveTransform transform;
    transform.setPointCount(21);
    QCOMPARE(transform.decibel(), 0.0);
    const auto item = curve(&transform);
    {
        const ItemPicture drawn(*m_window, *item);
        const ExpectedCurve expected = {{{10.0, 10.0}, {110.0, 10.0}}, 2.0, Qt::red};
        QCOMPARE(expected.differenceFrom(drawn), QString());
    }
    for (const double y : {-20.0, 0.0}) {
        item->setP1({10.0, y});
        QVERIFY(isBlank(picture()));
    }
    item->setP1({10.0, 50.0});
    QVERIFY(!isBlank(picture()));
}

void tst_Curves::clipped()
{
    const auto item = curve(&m_linear);
    item->setP1({-30.0, -10.0});
    item->setP2({150.0, 70.0});
    item->setClip(true);
    const ItemPicture drawn(*m_window, *item);
    const ExpectedCurve expected = {{item->p1(), item->p2()}, 2.0, Qt::red};
    Mismatches outside;
    int inside = 0;
    drawn.forEachPixel([&](QPoint pixel, const QPointF &place) {
        const QColor color = drawn.image().pixelColor(pixel);
        if (!item->boundingRect().contains(place))
            outside.check(pixel, color, Qt::white, 0.0);
        else
            inside += color != QColor(Qt::white);
    });
    QCOMPARE(outside.text(), QString());
    QVERIFY(outside.checked() > 1000);
    QVERIFY(inside > 150);
    QVERIFY(!expected.differenceFrom(drawn).isEmpty());
}

void tst_Curves::sharedTransform()
{
    const auto first = curve(&m_linear);
    const int alone = drawnPixels(picture());
    const auto second = curve(&m_linear);
    second->setP1({10.0, -20.0});
    second->setP2({110.0, -20.0});
    QVERIFY(drawnPixels(picture()) > alone + 100);
    // One without opacity is left out.
    first->setOpacity(0.0);
    const ItemPicture drawn(*m_window, *second);
    const ExpectedCurve expected = {{second->p1(), second->p2()}, 2.0, Qt::red};
    QCOMPARE(expected.differenceFrom(drawn), QString());
}

QTEST_MAIN(tst_Curves)

#include "tst_curves.moc"
