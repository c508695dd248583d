// SPDX-License-Identifier: MIT
#include "DrawnLine.h"
#include "PlaybackClock.h"
#include "SweepModel.h"
#include "SweepTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <tuple>

using Charts::TracePoint;
using Charts::Readers::SampleTable;
using Gallery::PlaybackClock;
using Gallery::SweepSettings;
using Gallery::SweepTrace;

using Table = SweepTrace::Table;
Q_DECLARE_METATYPE(Table)

class tst_SweepTrace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void shows_data();
    void shows();
    void jumps_data() { shows_data(); }
    void jumps();
    void marksWhatChanged_data() { shows_data(); }
    void marksWhatChanged();
    void uploadsLittle();
    void rests();
    void takesOverAttributes();
    void columns();
};

namespace {

constexpr float missing = std::numeric_limits<float>::quiet_NaN();

/*! Values that tell each sample from its neighbours and from those one sweep later. */
float valueAt(std::size_t i)
{
    return static_cast<float>((i * 29) % 127) - 50.0F;
}

Table tableOf(const std::vector<double> &time, const std::vector<std::size_t> &gaps = {})
{
    auto table = std::make_shared<SampleTable>();
    table->time = time;
    table->columns = {{"value", "V", {}}};
    for (std::size_t i = 0; i < time.size(); ++i)
        table->columns[0].values.push_back(valueAt(i));
    for (const std::size_t gap : gaps)
        table->columns[0].values.at(gap) = missing;
    return table;
}

/*! Steps are powers of two or sums of few: all times are exact in double and in float. */
std::vector<double> steps(std::size_t count, double step, double start = 0.0)
{
    std::vector<double> time;
    for (std::size_t i = 0; i < count; ++i)
        time.push_back(start + static_cast<double>(i) * step);
    return time;
}

std::vector<double> unevenSteps(std::size_t count, int longest)
{
    std::minstd_rand random(20240229);
    std::uniform_int_distribution<int> step(1, longest);
    std::vector<double> time = {0.0};
    while (time.size() < count)
        time.push_back(time.back() + step(random) / 1024.0);
    return time;
}

std::vector<std::size_t> everyThird(std::size_t count)
{
    std::vector<std::size_t> gaps;
    for (std::size_t i = 0; i < count; i += 3)
        gaps.push_back(i);
    return gaps;
}

std::vector<std::size_t> all(std::size_t count)
{
    std::vector<std::size_t> gaps(count);
    for (std::size_t i = 0; i < count; ++i)
        gaps[i] = i;
    return gaps;
}

/*! The time between two updates, like that of the chart's timer or longer. No update falls on a
    sample's time, where rounding would decide whether it is due. */
double stepFor(double duration)
{
    return std::max(0.0330003, duration / 700.37);
}

/*! A trace whose time the test sets. */
struct Playback
{
    Playback(const Table &table, const SweepSettings &settings)
        : clock([this] { return now; })
        , trace(table, 0, settings, clock, nullptr)
    {
    }

    void updateAt(double seconds)
    {
        now = seconds;
        trace.updateData();
    }
    [[nodiscard]] const std::vector<TracePoint> &vertices() { return trace.traceData()->array(); }

    double now = 0.0;
    PlaybackClock clock;
    SweepTrace trace;
};

} // namespace

void tst_SweepTrace::shows_data()
{
    QTest::addColumn<Table>("table");
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("speed");
    QTest::addColumn<bool>("evenlySpaced");

    const auto row = [](const char *name, const Table &table, double length, double speed = 1.0,
                             bool evenlySpaced = true) {
        QTest::newRow(name) << table << length << speed << evenlySpaced;
    };
    const double rate64 = 1.0 / 64;
    row("five sweeps", tableOf(steps(1281, rate64)), 4.0);
    row("a part of a sweep at the end", tableOf(steps(650, rate64)), 4.0);
    row("three quarters of a sweep at the end", tableOf(steps(700, rate64)), 4.0);
    row("sweeps of 85 and 86 samples", tableOf(steps(1000, 3.0 / 64)), 4.0);
    row("slowed down", tableOf(steps(300, rate64)), 0.5, 0.25);
    row("sped up", tableOf(steps(3000, 0.5)), 200.0, 10.0);
    row("exactly one sweep", tableOf(steps(257, rate64)), 4.0);
    row("shorter than a sweep", tableOf(steps(60, rate64)), 4.0);
    row("starts before 0", tableOf(steps(1000, rate64, -1000.5)), 4.0);
    row("starts late", tableOf(steps(1000, rate64, 1048576.25)), 4.0);

    row("missing values", tableOf(steps(1000, rate64), {1, 5, 6, 7, 100, 257, 300, 301, 999}), 4.0);
    row("missing values at the ends of sweeps",
            tableOf(steps(1000, rate64), {0, 255, 256, 511, 512, 513, 767, 999}), 4.0);
    row("a third of the values missing", tableOf(steps(1000, rate64), everyThird(1000)), 4.0);
    row("all values missing", tableOf(steps(1000, rate64), all(1000)), 4.0);

    row("uneven", tableOf(unevenSteps(2000, 30)), 4.0, 1.0, false);
    row("uneven with missing values", tableOf(unevenSteps(2000, 30), everyThird(2000)), 4.0, 1.0,
            false);
    row("very uneven", tableOf(unevenSteps(100, 1024)), 4.0, 1.0, false);
    row("a burst in each sweep",
            tableOf({0, 1.0 / 64, 2.0 / 64, 3.0 / 64, 3.5, 4, 5, 7.75, 7.875, 7.9375, 9, 9.5, 11}),
            4.0, 1.0, false);
    row("a long hole", tableOf({0, 0.125, 0.25, 0.375, 0.5, 15, 15.125, 15.25, 16}), 4.0, 1.0,
            false);

    // The gap is narrower than the distance of two samples.
    row("ten samples a sweep", tableOf(steps(11, 0.125)), 1.25, 0.625, false);
    row("three samples", tableOf(steps(3, 0.5)), 1.0, 0.5, false);
    row("two samples", tableOf(steps(2, 1.0)), 1.0, 0.5, false);
    row("one sample", tableOf({12.5}), 4.0, 1.0, false);
}

void tst_SweepTrace::shows()
{
    QFETCH(Table, table);
    QFETCH(double, length);
    QFETCH(double, speed);
    QFETCH(bool, evenlySpaced);

    const SweepSettings settings{length, speed};
    Playback playback(table, settings);
    const SweepModel model(table, 0, settings);
    // Long enough for the table to begin anew.
    const double end = 2.5 * std::max(table->time.back() - table->time.front(), length) / speed;
    const double step = stepFor(end);
    for (double seconds = 0.0; seconds < end; seconds += step) {
        playback.updateAt(seconds);
        const QString defect = model.defectOf(playback.vertices(), seconds, evenlySpaced);
        QVERIFY2(defect.isEmpty(),
                qPrintable(QStringLiteral("after %1 s: %2").arg(seconds).arg(defect)));
    }
}

void tst_SweepTrace::jumps()
{
    QFETCH(Table, table);
    QFETCH(double, length);
    QFETCH(double, speed);
    QFETCH(bool, evenlySpaced);

    // The program was halted now and then: most of a sweep, a whole one or several have passed.
    const SweepSettings settings{length, speed};
    Playback playback(table, settings);
    const SweepModel model(table, 0, settings);
    const double sweep = length / speed;
    double seconds = 0.0;
    for (const double sweeps : {0.0, 0.3017, 0.9043, 1.0, 0.0113, 1.4519, 0.0113, 2.2039, 0.0113,
                 7.7027, 0.0113, 100.3081}) {
        seconds += sweeps * sweep;
        playback.updateAt(seconds);
        const QString defect = model.defectOf(playback.vertices(), seconds, evenlySpaced);
        QVERIFY2(defect.isEmpty(),
                qPrintable(QStringLiteral("after %1 s: %2").arg(seconds).arg(defect)));
    }
}

void tst_SweepTrace::marksWhatChanged()
{
    QFETCH(Table, table);
    QFETCH(double, length);
    QFETCH(double, speed);

    const SweepSettings settings{length, speed};
    Playback playback(table, settings);
    const SweepModel model(table, 0, settings);
    Charts::TraceData &data = *playback.trace.traceData();
    const auto size = static_cast<int>(data.array().size());

    // Everything at first.
    QCOMPARE(data.filledRange().size(), size);
    QVERIFY(!data.filledRange().isEmpty());
    QCOMPARE(data.dirtyRange().size(), size);
    QCOMPARE(static_cast<int>(DrawnLine::takeIndices(data.dirtyRange()).size()), size);

    playback.updateAt(0.0);
    std::ignore = DrawnLine::takeIndices(data.dirtyRange());
    const double end = 2.5 * std::max(table->time.back() - table->time.front(), length) / speed;
    const double step = stepFor(end);
    for (double seconds = step; seconds < end; seconds += step) {
        const std::vector<TracePoint> before = data.array();
        const double last = playback.now;
        playback.updateAt(seconds);

        QCOMPARE(static_cast<int>(data.array().size()), size);
        QCOMPARE(data.dirtyRange().size(), size);
        const std::set<int> changed = DrawnLine::differences(before, data.array());
        const std::set<int> dirty = DrawnLine::takeIndices(data.dirtyRange());
        QVERIFY2(std::includes(dirty.begin(), dirty.end(), changed.begin(), changed.end()),
                qPrintable(QStringLiteral("after %1 s").arg(seconds)));
        if (dirty.empty() || model.sweepAt(seconds) != model.sweepAt(last))
            continue;

        // From the first sample that came due to the end of the gap.
        const auto head = static_cast<int>(model.writtenAt(seconds));
        int gapEnd = head;
        while (gapEnd < size && data.array()[static_cast<std::size_t>(gapEnd)].opacity <= 0.0F)
            ++gapEnd;
        QCOMPARE_GE(*dirty.begin(), static_cast<int>(model.writtenAt(last)));
        QCOMPARE_LT(*dirty.rbegin(), gapEnd);
    }
}

void tst_SweepTrace::uploadsLittle()
{
    // Twelve minutes of 512 samples a second: sweeps of 2048 vertices.
    const Table table = tableOf(steps(720 * 512, 1.0 / 512));
    Playback playback(table, {4.0, 1.0});
    Charts::BoundRange &dirty = playback.trace.traceData()->dirtyRange();
    QCOMPARE(dirty.size(), 2048 + 1);
    std::ignore = DrawnLine::takeIndices(dirty);

    std::size_t uploaded = 0;
    const int updates = 600;
    for (int i = 1; i <= updates; ++i) {
        playback.updateAt(i / 30.0);
        uploaded += DrawnLine::takeIndices(dirty).size();
    }
    // 17 samples come due in an update, and the gap is 82 vertices wide.
    QCOMPARE_LE(uploaded, static_cast<std::size_t>(updates) * (17 + 82 + 3));
}

void tst_SweepTrace::rests()
{
    Playback playback(tableOf(steps(1000, 1.0 / 64)), {4.0, 1.0});
    playback.updateAt(1.7);
    Charts::TraceData &data = *playback.trace.traceData();
    std::ignore = DrawnLine::takeIndices(data.dirtyRange());
    data.clearDirty();
    const std::vector<TracePoint> before = data.array();

    // A paused player: nothing is to be uploaded, nor to be drawn anew.
    playback.clock.setPaused(true);
    for (const double seconds : {1.7, 2.0, 1000.0}) {
        playback.updateAt(seconds);
        QVERIFY(data.dirtyRange().isEmpty());
        QVERIFY(!data.isDirty());
        QVERIFY(data.array() == before);
    }
    playback.clock.setPaused(false);
    playback.updateAt(1000.1);
    QVERIFY(!data.dirtyRange().isEmpty());
    const SweepModel model(tableOf(steps(1000, 1.0 / 64)), 0, {4.0, 1.0});
    const QString defect = model.defectOf(data.array(), playback.clock.seconds(), true);
    QVERIFY2(defect.isEmpty(), qPrintable(defect));
    QVERIFY(std::abs(playback.clock.seconds() - 1.8) < 1e-9);
}

void tst_SweepTrace::takesOverAttributes()
{
    Playback playback(tableOf(steps(1000, 1.0 / 64)), {2.5, 1.0});
    SweepTrace &trace = playback.trace;
    Charts::TraceData &data = *trace.traceData();
    QCOMPARE(data.drawType(), Charts::DrawType::LineStrip);

    trace.setColor(QColor(10, 20, 30));
    trace.setLineWidth(3.5);
    trace.domain()->setRangeXY(0.0, 2.5, -1.5, 6.5);
    playback.updateAt(0.0);
    QCOMPARE(data.color(), QColor(10, 20, 30));
    QCOMPARE(data.width(), 3.5F);
    QVERIFY(data.visible());
    const Charts::ViewPort expected = {.x = 0.0F, .y = -1.5F, .width = 2.5F, .height = 8.0F};
    QVERIFY(data.viewPort() == expected);
    trace.domain()->zoomIn({0.5, 1.5}, {2.0, 4.0});
    playback.updateAt(0.0);
    const Charts::ViewPort zoomed = {.x = 0.5F, .y = 2.0F, .width = 1.0F, .height = 2.0F};
    QVERIFY(data.viewPort() == zoomed);

    trace.setVisible(false);
    playback.updateAt(0.0);
    QVERIFY(!data.visible());
    trace.setVisible(true);
    playback.updateAt(0.0);
    QVERIFY(data.visible());
}

void tst_SweepTrace::columns()
{
    auto table = std::make_shared<SampleTable>();
    table->time = {0.0, 1.0, 2.0};
    table->columns = {{"a", "", {1.0F, 2.0F, 3.0F}}, {"b", "", {-1.0F, -2.0F, -3.0F}}};
    const PlaybackClock clock([] { return 0.0; });
    for (const std::size_t column : {0U, 1U}) {
        SweepTrace trace(table, column, {2.0, 1.0}, clock, nullptr);
        trace.updateData();
        const std::vector<TracePoint> &vertices = trace.traceData()->array();
        const float sign = column == 0 ? 1.0F : -1.0F;
        QVERIFY(std::any_of(vertices.begin(), vertices.end(),
                [sign](const TracePoint &vertex) { return vertex.y == sign * 3.0F; }));
        QVERIFY(std::all_of(vertices.begin(), vertices.end(),
                [sign](const TracePoint &vertex) { return vertex.y * sign >= 0.0F; }));
    }
}

QTEST_GUILESS_MAIN(tst_SweepTrace)

#include "tst_sweeptrace.moc"
