// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "Rounds.h"
#include "TestTrace.h"
#include "walk/RandomWalk.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <optional>

/*! Whatever is done to a chart, in whatever order: it does what a plain model of it does, and shows
    what a chart shows that has been given the same traces at once. */
class tst_RandomWalk : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void walk();
    void addressOfDestroyedTrace();
};

namespace {

/*! The short form always takes the same way, so that it fails for what has changed; the long one
    each time another. */
unsigned seed()
{
    bool isGiven = false;
    const unsigned given = qEnvironmentVariable("CHARTS_TEST_SEED").toUInt(&isGiven);
    if (isGiven)
        return given;
    return rounds(1, 0) == 1 ? 1 : QRandomGenerator::system()->generate();
}

} // namespace

void tst_RandomWalk::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_RandomWalk::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_RandomWalk::walk()
{
    RandomWalk walk(seed());
    QVERIFY2(walk.start(), walk.report().constData());
    QElapsedTimer timer;
    timer.start();
    const bool isRight = walk.run(rounds(2000, 100000), rounds(20, 100));
    QVERIFY2(isRight, walk.report().constData());
    qInfo().noquote() << walk.summary() << "in" << static_cast<double>(timer.elapsed()) / 1000.0
                      << "s";
}

/*! What a walk has met: memory is used again, so a new trace may lie where one was that the chart has
    not heard of being gone. */
void tst_RandomWalk::addressOfDestroyedTrace()
{
    Charts::Chart chart;
    std::optional<TestTrace> trace(std::in_place);
    chart.addTrace(&*trace);
    chart.addTrace(&*trace);
    // The second entry stays, but nothing the trace says is heard any more.
    chart.removeTrace(&*trace);
    QVERIFY(chart.includes(&*trace));
    trace.reset();
    trace.emplace();
    QVERIFY(!chart.includes(&*trace));

    // Not attached, so nothing is cut off.
    const QSignalSpy zSpy(&*trace, &TestTrace::zChanged);
    chart.removeTrace(&*trace);
    trace->setZ(1.0);
    QCOMPARE(zSpy.count(), 1);

    chart.addTrace(&*trace);
    QVERIFY(chart.includes(&*trace));
    chart.updateTraces();
    QCOMPARE(trace->updateCount.load(), 1);
    chart.removeTrace(&*trace);
    QVERIFY(!chart.includes(&*trace));
}

QTEST_MAIN(tst_RandomWalk)

#include "tst_randomwalk.moc"
