// SPDX-License-Identifier: MIT
#include "LimitReading.h"
#include "LimitTest.h"
#include "SpectrumTrace.h"
#include "StaticTrace.h"

#include <ChartsLibrary/Curve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

using Charts::TracePoint;
using Gallery::LimitReading;
using Gallery::LimitSide;
using Gallery::LimitTest;
using Gallery::PlaybackClock;
using Gallery::SpectrumTrace;
using Gallery::StaticTrace;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

using Points = QList<QPointF>;

std::vector<TracePoint> vertices(const Points &points)
{
    std::vector<TracePoint> result;
    for (const QPointF &point : points) {
        result.push_back({static_cast<float>(point.x()), static_cast<float>(point.y()), 1.0F});
    }
    return result;
}

/*! A trace over which a curve lies in a chart of 200 x 100 pixels: x from 10 to 20, y from -100 to 0,
    so that a pixel is 0.05 wide and 1 high. */
struct Scene
{
    explicit Scene(const Points &points)
        : trace(vertices(points), nullptr)
    {
        trace.domain()->setRangeXY(10.0, 20.0, -100.0, 0.0);
        trace.domain()->setSize({200.0, 100.0});
        curve.setSize({200.0, 100.0});
        curve.setGeometryTransform(&straight);
        test.setTrace(&trace);
        test.setCurve(&curve);
    }

    StaticTrace trace;
    Charts::LinearCurveTransform straight;
    Charts::Curve curve;
    LimitTest test;
};

} // namespace

/*! The limit test of the page Limits, and the spectrum that it is shown with. */
class tst_LimitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void readings_data();
    void readings();
    void values_data();
    void values();

    void comparesWhatIsDrawn_data();
    void comparesWhatIsDrawn();
    void lowerLimit();
    void bentCurve();
    void zoomed();
    void nothingToCompare();
    void comparesUnasked();

    void spectrumIsWhatItClaims();
    void spectrumMoves();
    void spectrumDependsOnTheClockOnly();
    void spectrumAfterAHalt();
    void spectrumTakesOverAttributes();
};

void tst_LimitTest::readings_data()
{
    QTest::addColumn<Points>("trace");
    QTest::addColumn<Points>("limit");
    QTest::addColumn<LimitSide>("side");
    QTest::addColumn<QList<double>>("expected"); // x, y, margin; empty: nothing

    const auto row = [](const char *name, const Points &trace, const Points &limit, LimitSide side,
                             const QList<double> &expected) {
        QTest::newRow(name) << trace << limit << side << expected;
    };
    const auto upper = LimitSide::Upper;
    const auto lower = LimitSide::Lower;
    const Points peak = {{0, 0}, {4, 8}, {8, 0}};

    row("below", peak, {{0, 10}, {8, 10}}, upper, {4, 8, 2});
    row("above", peak, {{0, 5}, {8, 5}}, upper, {4, 8, -3});
    row("on it", peak, {{0, 8}, {8, 8}}, upper, {4, 8, 0});
    row("falling limit", peak, {{0, 20}, {8, 2}}, upper, {8, 0, 2});
    row("rising limit", peak, {{0, 2}, {8, 20}}, upper, {0, 0, 2});
    row("limit between its points", peak, {{-10, 2}, {10, 12}}, upper, {4, 8, 1});
    // Both vertices of the trace are 5 below; halfway between them the limit dips to -5.
    row("corner of the limit between vertices", {{0, 0}, {8, 0}}, {{0, 5}, {4, -5}, {8, 5}}, upper,
            {4, 0, -5});
    row("corner over a slope", {{0, 0}, {8, 16}}, {{0, 20}, {2, 3}, {8, 40}}, upper, {2, 4, -1});
    row("limit over a part", peak, {{6, 1}, {7, 9}}, upper, {6, 4, -3});
    row("limit that begins within", {{0, 0}, {10, 0}}, {{5, -1}, {20, 30}}, upper, {5, 0, -1});
    row("ends touch", peak, {{8, 3}, {12, 3}}, upper, {8, 0, 3});
    row("to the right", peak, {{8.5, 3}, {12, 3}}, upper, {});
    row("to the left", peak, {{-5, 3}, {-0.5, 3}}, upper, {});
    row("first of equals", {{0, 1}, {1, 1}, {2, 1}}, {{0, 3}, {2, 3}}, upper, {0, 1, 2});
    row("step in the limit", {{0, 0}, {8, 0}}, {{0, 9}, {4, 9}, {4, 2}, {8, 3}}, upper, {4, 0, 2});
    row("upright limit", peak, {{2, 6}, {2, 3}}, upper, {2, 4, -1});

    row("lower, above it", peak, {{0, -3}, {8, -1}}, lower, {8, 0, 1});
    row("lower, below it", {{0, 0}, {4, -8}, {8, 0}}, {{0, -5}, {8, -5}}, lower, {4, -8, -3});
    row("lower, corner", {{0, 0}, {8, 0}}, {{0, -5}, {4, 6}, {8, -5}}, lower, {4, 0, -6});

    row("trace with a gap", {{0, 0}, {2, none}, {4, 3}, {6, 0}}, {{0, 5}, {6, 5}}, upper,
            {4, 3, 2});
    row("nothing but gaps", {{0, none}, {2, none}}, {{0, 5}, {6, 5}}, upper, {});
    row("limit that is no number", peak, {{0, none}, {4, none}, {8, none}}, upper, {});
    row("limit with a gap", peak, {{0, 5}, {4, none}, {8, 5}}, upper, {0, 0, 5});
    row("infinitely high", peak, {{0, qInf()}, {8, qInf()}}, upper, {});
    row("no trace", {}, {{0, 5}, {8, 5}}, upper, {});
    row("trace of one point", {{4, 8}}, {{0, 5}, {8, 5}}, upper, {});
    row("no limit", peak, {}, upper, {});
    row("limit of one point", peak, {{4, 5}}, upper, {});
}

void tst_LimitTest::readings()
{
    QFETCH(const Points, trace);
    QFETCH(const Points, limit);
    QFETCH(const LimitSide, side);
    QFETCH(const QList<double>, expected);
    const auto reading = Gallery::limitReading(vertices(trace), limit, side);
    QCOMPARE(reading.has_value(), !expected.isEmpty());
    if (reading)
        QCOMPARE((QList<double>{reading->x, reading->y, reading->margin}), expected);
}

void tst_LimitTest::values_data()
{
    QTest::addColumn<Points>("polyline");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y"); // NaN: none
    const Points line = {{0, 4}, {2, 8}, {10, -8}};
    QTest::newRow("first point") << line << 0.0 << 4.0;
    QTest::newRow("inner point") << line << 2.0 << 8.0;
    QTest::newRow("last point") << line << 10.0 << -8.0;
    QTest::newRow("rising") << line << 0.5 << 5.0;
    QTest::newRow("falling") << line << 7.0 << -2.0;
    QTest::newRow("before") << line << -0.25 << none;
    QTest::newRow("behind") << line << 10.25 << none;
    QTest::newRow("nowhere") << line << none << none;
    QTest::newRow("one point") << Points{{1, 2}} << 1.0 << none;
    QTest::newRow("empty") << Points{} << 1.0 << none;
}

void tst_LimitTest::values()
{
    QFETCH(const Points, polyline);
    QFETCH(const double, x);
    QFETCH(const double, y);
    const std::optional<double> value = Gallery::valueAt(polyline, x);
    QCOMPARE(value.has_value(), !std::isnan(y));
    if (value)
        QCOMPARE(*value, y);
}

void tst_LimitTest::comparesWhatIsDrawn_data()
{
    QTest::addColumn<QPointF>("p1"); // pixels
    QTest::addColumn<QPointF>("p2");
    QTest::addColumn<double>("margin");
    QTest::addColumn<bool>("isExceeded");
    // The peak is at (15, -50), which is pixel (100, 50).
    QTest::newRow("above") << QPointF(0, 40) << QPointF(200, 40) << 10.0 << false;
    QTest::newRow("below") << QPointF(0, 70) << QPointF(200, 70) << -20.0 << true;
    QTest::newRow("on it") << QPointF(0, 50) << QPointF(200, 50) << 0.0 << false;
    QTest::newRow("slope") << QPointF(0, 30) << QPointF(200, 78) << -4.0 << true;
    QTest::newRow("from right to left") << QPointF(200, 78) << QPointF(0, 30) << -4.0 << true;
    QTest::newRow("outside the chart")
            << QPointF(-1000, -300) << QPointF(1200, 300) << 50.0 << false;
}

void tst_LimitTest::comparesWhatIsDrawn()
{
    QFETCH(const QPointF, p1);
    QFETCH(const QPointF, p2);
    QFETCH(const double, margin);
    QFETCH(const bool, isExceeded);
    Scene scene({{10, -90}, {15, -50}, {20, -90}});
    scene.curve.setP1(p1);
    scene.curve.setP2(p2);
    QVERIFY(!scene.test.isValid());
    QSignalSpy updated(&scene.test, &LimitTest::updated);
    scene.test.update();
    QCOMPARE(updated.size(), 1);
    QVERIFY(scene.test.isValid());
    QCOMPARE(scene.test.place(), QPointF(15.0, -50.0));
    QVERIFY(std::abs(scene.test.margin() - margin) < 1e-9);
    QCOMPARE(scene.test.isExceeded(), isExceeded);
    QVERIFY(std::abs(scene.test.limitAt(15.0) - (-50.0 + margin)) < 1e-9);
}

void tst_LimitTest::lowerLimit()
{
    Scene scene({{10, -80}, {12, -96}, {20, -80}});
    scene.curve.setP1({0, 90});
    scene.curve.setP2({200, 90});
    scene.test.update();
    QVERIFY(!scene.test.isLower());
    QCOMPARE(scene.test.margin(), -10.0);
    QCOMPARE(scene.test.place(), QPointF(10.0, -80.0));
    scene.test.setIsLower(true);
    QVERIFY(scene.test.isLower());
    scene.test.update();
    QVERIFY(scene.test.isExceeded());
    QCOMPARE(scene.test.margin(), -6.0);
    QCOMPARE(scene.test.place(), QPointF(12.0, -96.0));
}

void tst_LimitTest::bentCurve()
{
    // Three points, from (10, -20) to (20, -70) in units; the one between is 1/11 of the way down,
    // as 10^1 - 1 is of 10^2 - 1.
    Scene scene({{10, -90}, {20, -90}});
    Charts::LogarithmicCurveTransform bent;
    bent.setDecibel(0.01);
    bent.setPointCount(3);
    scene.curve.setGeometryTransform(&bent);
    scene.curve.setP1({0, 20});
    scene.curve.setP2({200, 70});
    const double middle = -20.0 - 50.0 / 11.0;
    QVERIFY(std::abs(scene.test.limitAt(15.0) - middle) < 1e-9);
    // The line is a polyline: straight between its points.
    QVERIFY(std::abs(scene.test.limitAt(17.5) - (middle - 70.0) / 2.0) < 1e-9);
    scene.test.update();
    QVERIFY(std::abs(scene.test.margin() - 20.0) < 1e-9);
    QCOMPARE(scene.test.place(), QPointF(20.0, -90.0));
}

void tst_LimitTest::zoomed()
{
    Scene scene({{10, -90}, {15, -50}, {20, -90}});
    scene.curve.setP1({0, 70});
    scene.curve.setP2({200, 70});
    // Pixels stand for other levels now.
    scene.trace.domain()->setRangeXY(10.0, 20.0, -60.0, -40.0);
    scene.test.update();
    QVERIFY(std::abs(scene.test.margin() + 4.0) < 1e-9);
}

void tst_LimitTest::nothingToCompare()
{
    Scene scene({{10, -90}, {15, -50}, {20, -90}});
    scene.curve.setP1({0, 70});
    scene.curve.setP2({200, 70});
    const auto isEmpty = [&scene] {
        scene.test.update();
        return !scene.test.isValid() && !scene.test.isExceeded()
               && std::isnan(scene.test.limitAt(15.0)) && scene.test.margin() == 0.0
               && scene.test.place() == QPointF();
    };
    QVERIFY(!isEmpty());
    scene.curve.setGeometryTransform(nullptr);
    QVERIFY(isEmpty());
    scene.curve.setGeometryTransform(&scene.straight);
    QVERIFY(!isEmpty());
    scene.test.setTrace(nullptr);
    QVERIFY(isEmpty());
    scene.test.setTrace(&scene.trace);
    QVERIFY(!isEmpty());
    {
        Charts::Curve other;
        scene.test.setCurve(&other);
    }
    QVERIFY(isEmpty());
    scene.test.setCurve(&scene.curve);
    QVERIFY(!isEmpty());
    // A chart without a size: no pixel stands for anything.
    scene.trace.domain()->setSize({0.0, 0.0});
    QVERIFY(isEmpty());
}

void tst_LimitTest::comparesUnasked()
{
    Scene scene({{10, -90}, {15, -50}, {20, -90}});
    scene.curve.setP1({0, 70});
    scene.curve.setP2({200, 70});
    QSignalSpy updated(&scene.test, &LimitTest::updated);
    QTRY_VERIFY(updated.size() >= 2);
    QCOMPARE(scene.test.margin(), -20.0);
}

namespace {

struct Playback
{
    double now = 0.0;
    PlaybackClock clock{[this] { return now; }};
    std::unique_ptr<SpectrumTrace> trace = std::make_unique<SpectrumTrace>(clock, nullptr);

    void advanceTo(double seconds)
    {
        now = seconds;
        trace->updateData();
    }
    [[nodiscard]] QList<float> levels() const
    {
        QList<float> result;
        for (const TracePoint &point : trace->traceData()->array())
            result.append(point.y);
        return result;
    }
};

} // namespace

void tst_LimitTest::spectrumIsWhatItClaims()
{
    Playback playback;
    playback.trace->updateData();
    const auto &array = playback.trace->traceData()->array();
    QCOMPARE(array.size(), std::size_t(1001));
    QCOMPARE(array.front().x, 97.0F);
    QCOMPARE(array.back().x, 107.0F);
    QCOMPARE(array[1].x, 97.01F);
    QVERIFY(std::all_of(array.begin(), array.end(), [](const TracePoint &point) {
        return std::isfinite(point.y) && point.opacity == 1.0F;
    }));
    QVERIFY(std::is_sorted(array.begin(), array.end(),
            [](const TracePoint &a, const TracePoint &b) { return a.x < b.x; }));

    // The carrier is the highest point, and as wide as the filter, a Gaussian: 3 dB less 30 kHz beside
    // it, four times that in 60 kHz.
    const auto highest = std::max_element(array.begin(), array.end(),
            [](const TracePoint &a, const TracePoint &b) { return a.y < b.y; });
    QCOMPARE(highest->x, 98.0F);
    QVERIFY(std::abs(highest->y - -10.0F) < 0.1F);
    QVERIFY(std::abs((highest - 3)->y - -13.01F) < 0.1F);
    QVERIFY(std::abs((highest + 3)->y - -13.01F) < 0.1F);
    QVERIFY(std::abs((highest + 6)->y - -22.04F) < 0.2F);

    // Far from the carrier and from lines there is noise. Its levels have a mean of 10 log10 of its
    // power less 10 times Euler's constant / ln 10; the power is that of the floor, -88 dBm, and what
    // is left at 8.5 MHz of the carrier's noise, which has -67 dBm at 1 MHz.
    double sum = 0.0;
    int count = 0;
    for (const TracePoint &point : array) {
        if (point.x >= 106.2F && point.x <= 106.8F) {
            sum += point.y;
            ++count;
        }
    }
    const double ofCarrier = std::pow(10.0, -6.7) / (8.5 * 8.5);
    const double power = 10.0 * std::log10(std::pow(10.0, -8.8) + ofCarrier);
    const double expected = power - 10.0 * 0.5772157 / std::log(10.0);
    // 5.6 dB for one reading, averaged over about 15 sweeps and 61 points: 0.2 dB.
    QVERIFY2(std::abs(sum / count - expected) < 0.6,
            qPrintable(QStringLiteral("%1, expected %2").arg(sum / count).arg(expected)));
}

void tst_LimitTest::spectrumMoves()
{
    Playback playback;
    playback.trace->updateData();
    Charts::TraceData &data = *playback.trace->traceData();
    QVERIFY(data.filledRange().contain(0) && data.filledRange().contain(1000));
    QVERIFY(data.dirtyRange().contain(0) && data.dirtyRange().contain(1000));
    data.dirtyRange().pop(true);
    const QList<float> before = playback.levels();

    // Nothing new within a sweep.
    playback.advanceTo(0.02);
    QVERIFY(data.dirtyRange().isEmpty());
    QCOMPARE(playback.levels(), before);

    playback.advanceTo(0.04);
    QVERIFY(data.dirtyRange().contain(0) && data.dirtyRange().contain(1000));
    const QList<float> after = playback.levels();
    int moved = 0;
    float most = 0.0F;
    for (qsizetype i = 0; i < after.size(); ++i) {
        moved += after[i] != before[i] ? 1 : 0;
        most = std::max(most, std::abs(after[i] - before[i]));
    }
    // A little: an eighth of what a reading differs, which is seldom more than 30 dB.
    QVERIFY(moved > 900);
    QVERIFY2(most < 6.0F, qPrintable(QString::number(double(most))));

    playback.clock.setPaused(true);
    playback.advanceTo(5.0);
    QCOMPARE(playback.levels(), after);
}

void tst_LimitTest::spectrumDependsOnTheClockOnly()
{
    Playback often;
    Playback seldom;
    for (int i = 1; i <= 30; ++i)
        often.advanceTo(i / 60.0);
    seldom.advanceTo(0.5);
    QCOMPARE(often.levels(), seldom.levels());
}

void tst_LimitTest::spectrumAfterAHalt()
{
    // The line at 102 MHz swells by 9 dB and back within 9 s.
    const auto lineAt = [](double seconds) {
        Playback playback;
        playback.advanceTo(seconds);
        return playback.levels()[500];
    };
    const float high = lineAt(2.25 + 9000.0);
    const float low = lineAt(6.75 + 9000.0);
    QVERIFY2(std::abs(high - -62.0F) < 1.0F, qPrintable(QString::number(double(high))));
    QVERIFY2(low < -75.0F && low > -82.0F, qPrintable(QString::number(double(low))));
}

void tst_LimitTest::spectrumTakesOverAttributes()
{
    Playback playback;
    SpectrumTrace &trace = *playback.trace;
    trace.setColor(Qt::red);
    trace.setLineWidth(3.0);
    trace.setVisible(false);
    trace.updateData();
    const Charts::TraceData &data = *trace.traceData();
    QCOMPARE(data.drawType(), Charts::DrawType::LineStrip);
    QCOMPARE(data.color(), QColor(Qt::red));
    QCOMPARE(data.width(), 3.0F);
    QVERIFY(!data.visible());
    const Charts::ViewPort whole = {.x = 97.0F, .y = -100.0F, .width = 10.0F, .height = 100.0F};
    QVERIFY(data.viewPort() == whole);
    trace.domain()->setRangeXY(100.0, 102.0, -80.0, -60.0);
    trace.updateData();
    const Charts::ViewPort zoomed = {.x = 100.0F, .y = -80.0F, .width = 2.0F, .height = 20.0F};
    QVERIFY(data.viewPort() == zoomed);
}

QTEST_MAIN(tst_LimitTest)

#include "tst_limittest.moc"
