// SPDX-License-Identifier: MIT
#include "SignalPlayer.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

using Charts::Span;
using Charts::Readers::SampleTable;
using Gallery::SignalPlayer;
using Gallery::SweepTrace;

using Table = SweepTrace::Table;
Q_DECLARE_METATYPE(Table)

class tst_SignalPlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void settings_data();
    void settings();
    void valueRange_data();
    void valueRange();
    void traces();
    void switchesSources();
    void ignoresOtherSources_data();
    void ignoresOtherSources();
    void oldTracesLeaveTheirChart();
    void pauses();
};

namespace {

constexpr float missing = std::numeric_limits<float>::quiet_NaN();

Table tableOf(const std::vector<double> &time, const std::vector<float> &values = {})
{
    auto table = std::make_shared<SampleTable>();
    table->time = time;
    table->columns = {{"value", "V", values}};
    table->columns[0].values.resize(time.size());
    return table;
}

/*! \a count samples from \a start on. */
Table evenly(std::size_t count, double step, double start = 0.0)
{
    std::vector<double> time;
    for (std::size_t i = 0; i < count; ++i)
        time.push_back(start + static_cast<double>(i) * step);
    return tableOf(time);
}

Table valuesOnly(const std::vector<float> &values)
{
    std::vector<double> time;
    for (std::size_t i = 0; i < values.size(); ++i)
        time.push_back(static_cast<double>(i));
    return tableOf(time, values);
}

/*! Two tables: one with a column, one with three. */
std::vector<SignalPlayer::Source> twoSources()
{
    auto second = std::make_shared<SampleTable>();
    second->time = {0.0, 0.5, 1.0};
    second->columns = {{"x", "mV", {0.0F, 1.0F, 2.0F}}, {"y", "mV", {2.0F, 3.0F, 4.0F}},
            {"z", "", {-6.0F, 0.0F, 0.0F}}};
    return {{QStringLiteral("first.csv"), evenly(1001, 0.01)},
            {QStringLiteral("second.csv"), second}};
}

} // namespace

void tst_SignalPlayer::settings_data()
{
    QTest::addColumn<Table>("table");
    QTest::addColumn<double>("length");   // of a sweep, in seconds of the data
    QTest::addColumn<double>("onScreen"); // in seconds of the spectator

    // 4 s at the signal's own rate.
    QTest::newRow("an electrocardiogram") << evenly(108000, 1.0 / 360) << 4.0 << 4.0;
    QTest::newRow("starts late") << evenly(10000, 0.01, 1e6) << 4.0 << 4.0;
    QTest::newRow("just one sweep") << evenly(401, 0.01) << 4.0 << 4.0;
    QTest::newRow("200 samples in 4 s") << evenly(10000, 0.02) << 4.0 << 4.0;
    // All there is, and a sweep takes at least 2 s.
    QTest::newRow("3 s") << evenly(301, 0.01) << 3.0 << 3.0;
    QTest::newRow("1 s") << evenly(101, 0.01) << 1.0 << 2.0;
    QTest::newRow("a microsecond") << evenly(1025, 1.0 / 1024 / 1048576) << 1.0 / 1048576 << 2.0;
    // Slow signals: 200 samples in a sweep, that takes a minute at most.
    QTest::newRow("ten a second") << evenly(10000, 0.125) << 25.0 << 25.0;
    QTest::newRow("one a second") << evenly(10000, 1.0) << 200.0 << 60.0;
    QTest::newRow("one a day") << evenly(1000, 86400.0) << 200 * 86400.0 << 60.0;
    QTest::newRow("one a day for a week") << evenly(8, 86400.0) << 7 * 86400.0 << 60.0;
    QTest::newRow("two samples") << evenly(2, 1.0) << 1.0 << 2.0;
    // Uneven steps count by their mean.
    QTest::newRow("uneven") << tableOf({0.0, 1.0, 998.0, 1000.0}) << 1000.0 << 60.0;
}

void tst_SignalPlayer::settings()
{
    QFETCH(Table, table);
    QFETCH(double, length);
    QFETCH(double, onScreen);

    SignalPlayer::setSources({{QStringLiteral("a"), table}});
    const SignalPlayer player;
    QCOMPARE(player.timeRange().min, 0.0);
    QCOMPARE(player.timeRange().max, length);
    QCOMPARE(length / player.speed(), onScreen);
    // The trace is drawn over the same range.
    QCOMPARE(player.traces().size(), 1);
    QCOMPARE(player.traces().first()->domain()->xRange(), player.timeRange());
    player.traces().first()->updateData();
    QCOMPARE(player.traces().first()->traceData()->viewPort().width, static_cast<float>(length));
}

void tst_SignalPlayer::valueRange_data()
{
    QTest::addColumn<Table>("table");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("greatest");

    const float tiny = std::numeric_limits<float>::min();
    QTest::newRow("plain") << valuesOnly({1.0F, 4.0F, 2.0F}) << 1.0 << 4.0;
    QTest::newRow("negative") << valuesOnly({-4.0F, -2.0F}) << -4.0 << -2.0;
    QTest::newRow("with a gap") << valuesOnly({missing, 1.0F, missing, 3.0F}) << 1.0 << 3.0;
    QTest::newRow("zero") << valuesOnly({0.0F, 0.0F}) << 0.0 << 0.0;
    QTest::newRow("constant") << valuesOnly({5.0F, 5.0F, 5.0F}) << 5.0 << 5.0;
    QTest::newRow("large constant")
            << valuesOnly({-1e20F, -1e20F}) << -double(1e20F) << -double(1e20F);
    QTest::newRow("small constant") << valuesOnly({tiny, tiny}) << double(tiny) << double(tiny);
    QTest::newRow("one sample") << valuesOnly({-3.0F}) << -3.0 << -3.0;
    QTest::newRow("all missing") << valuesOnly({missing, missing}) << 0.0 << 0.0;
    QTest::newRow("large") << valuesOnly({-1e30F, 1e30F}) << -double(1e30F) << double(1e30F);
}

void tst_SignalPlayer::valueRange()
{
    QFETCH(Table, table);
    QFETCH(double, least);
    QFETCH(double, greatest);

    SignalPlayer::setSources({{QStringLiteral("a"), table}});
    const SignalPlayer player;
    const Span range = player.valueRange();
    QVERIFY(std::isfinite(range.min) && std::isfinite(range.max));
    // Every value is seen with some room above and below, and still fills most of the height.
    QVERIFY(range.min < least && range.max > greatest);
    const double below = least - range.min;
    const double above = range.max - greatest;
    if (greatest > least) {
        QVERIFY(std::min(below, above) >= 0.02 * (greatest - least));
        QVERIFY(std::max(below, above) <= 0.3 * (greatest - least));
    } else {
        // A straight line in the middle of a range that its steps can be written in.
        QVERIFY(below >= std::max(1.0, 0.5 * std::abs(least)));
    }
    QCOMPARE(player.traces().first()->domain()->yRange(), range);
}

void tst_SignalPlayer::traces()
{
    SignalPlayer::setSources(twoSources());
    SignalPlayer player;
    QCOMPARE(player.sources(),
            QStringList({QStringLiteral("first.csv"), QStringLiteral("second.csv")}));
    QCOMPARE(player.currentSource(), 0);
    QCOMPARE(player.valueUnit(), QStringLiteral("V"));
    QCOMPARE(player.traces().size(), 1);
    QCOMPARE(player.traces().first()->name(), QStringLiteral("value"));

    player.setCurrentSource(1);
    QCOMPARE(player.valueUnit(), QStringLiteral("mV"));
    const QList<SweepTrace *> traces = player.traces();
    QCOMPARE(traces.size(), 3);
    QCOMPARE(traces[0]->name(), QStringLiteral("x"));
    QCOMPARE(traces[1]->name(), QStringLiteral("y"));
    QCOMPARE(traces[2]->name(), QStringLiteral("z"));
    // One axis for all of them, and a colour for each.
    QVERIFY(player.valueRange().min < -6.0 && player.valueRange().max > 4.0);
    for (qsizetype i = 0; i < traces.size(); ++i) {
        QCOMPARE(traces[i]->domain()->xRange(), player.timeRange());
        QCOMPARE(traces[i]->domain()->yRange(), player.valueRange());
        QVERIFY(traces[i]->color().isValid());
        for (qsizetype j = 0; j < i; ++j)
            QVERIFY(traces[i]->color() != traces[j]->color());
    }
}

void tst_SignalPlayer::switchesSources()
{
    SignalPlayer::setSources(twoSources());
    SignalPlayer player;
    QSignalSpy changes(&player, &SignalPlayer::tracesChanged);
    QSignalSpy pauses(&player, &SignalPlayer::pausedChanged);
    const QPointer<SweepTrace> old = player.traces().first();
    int countInSignal = 0;
    connect(&player, &SignalPlayer::tracesChanged, this,
            [&] { countInSignal = static_cast<int>(player.traces().size()); });

    player.setCurrentSource(1);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(countInSignal, 3);
    QCOMPARE(player.currentSource(), 1);
    QVERIFY(old.isNull());
    QCOMPARE(player.timeRange().max, 1.0);
    QCOMPARE(player.speed(), 0.5);

    QList<QPointer<SweepTrace>> second;
    for (SweepTrace *trace : player.traces())
        second.append(trace);
    player.setCurrentSource(0);
    QCOMPARE(changes.size(), 2);
    QCOMPARE(player.timeRange().max, 4.0);
    QCOMPARE(player.speed(), 1.0);
    for (const QPointer<SweepTrace> &trace : second)
        QVERIFY(trace.isNull());
    QCOMPARE(player.findChildren<SweepTrace *>().size(), 1);
    QCOMPARE(pauses.size(), 0);
}

void tst_SignalPlayer::ignoresOtherSources_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("the current one") << 0;
    QTest::newRow("none") << -1;
    QTest::newRow("one too many") << 2;
    QTest::newRow("far too many") << std::numeric_limits<int>::max();
    QTest::newRow("negative") << std::numeric_limits<int>::min();
}

void tst_SignalPlayer::ignoresOtherSources()
{
    QFETCH(int, index);
    SignalPlayer::setSources(twoSources());
    SignalPlayer player;
    QSignalSpy changes(&player, &SignalPlayer::tracesChanged);
    const QList<SweepTrace *> traces = player.traces();
    player.setCurrentSource(index);
    QCOMPARE(changes.size(), 0);
    QCOMPARE(player.currentSource(), 0);
    QCOMPARE(player.traces(), traces);
}

void tst_SignalPlayer::oldTracesLeaveTheirChart()
{
    SignalPlayer::setSources(twoSources());
    SignalPlayer player;
    Charts::Chart chart;
    const QList<SweepTrace *> old = player.traces();
    for (SweepTrace *trace : old)
        chart.addTrace(trace);
    QVERIFY(chart.includes(old.first()));

    player.setCurrentSource(1);
    QVERIFY(!chart.includes(old.first()));
    for (SweepTrace *trace : player.traces())
        chart.addTrace(trace);
    // Only living traces are called.
    chart.updateTraces();
    for (SweepTrace *trace : player.traces())
        QVERIFY(chart.includes(trace));
}

void tst_SignalPlayer::pauses()
{
    SignalPlayer::setSources(twoSources());
    SignalPlayer player;
    QSignalSpy changes(&player, &SignalPlayer::pausedChanged);
    QVERIFY(!player.isPaused());
    player.setPaused(false);
    QCOMPARE(changes.size(), 0);
    QTest::qSleep(1100);
    player.setPaused(true);
    QVERIFY(player.isPaused());
    player.setPaused(true);
    QCOMPARE(changes.size(), 1);

    // Another source stays paused, and its beam is at the left.
    player.setCurrentSource(1);
    QVERIFY(player.isPaused());
    SweepTrace &trace = *player.traces().first();
    trace.updateData();
    const Gallery::PlaybackClock standing([] { return 0.0; });
    SweepTrace atStart(twoSources()[1].table, 0, {1.0, 0.5}, standing, nullptr);
    atStart.updateData();
    const std::vector<Charts::TracePoint> before = trace.traceData()->array();
    QVERIFY(before == atStart.traceData()->array());
    QTest::qSleep(100);
    trace.updateData();
    QVERIFY(trace.traceData()->array() == before);

    player.setPaused(false);
    QVERIFY(!player.isPaused());
    QCOMPARE(changes.size(), 2);
    // The second of three samples comes due after half of the 2 s that the sweep takes; until
    // then only the gap moves.
    QTest::qSleep(1100);
    trace.updateData();
    QVERIFY(trace.traceData()->array() != before);
}

QTEST_MAIN(tst_SignalPlayer)

#include "tst_signalplayer.moc"
