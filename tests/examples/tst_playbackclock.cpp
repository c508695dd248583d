// SPDX-License-Identifier: MIT
#include "PlaybackClock.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using Gallery::PlaybackClock;

class tst_PlaybackClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void startsAtZeroWhateverTheTime_data();
    void startsAtZeroWhateverTheTime();
    void runs();
    void pauses();
    void samePauseTwice();
    void restarts();
    void restartsWhilePaused();
    void timeOfTheMachine();
};

// All times are sums of powers of two: the differences are exact.

void tst_PlaybackClock::startsAtZeroWhateverTheTime_data()
{
    QTest::addColumn<double>("now");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("long after boot") << 1e7;
    QTest::newRow("negative") << -3.5;
}

void tst_PlaybackClock::startsAtZeroWhateverTheTime()
{
    QFETCH(double, now);
    PlaybackClock clock([&now] { return now; });
    QCOMPARE(clock.seconds(), 0.0);
    QVERIFY(!clock.isPaused());
    now += 0.5;
    QCOMPARE(clock.seconds(), 0.5);
}

void tst_PlaybackClock::runs()
{
    double now = 100.0;
    PlaybackClock clock([&now] { return now; });
    for (const double seconds : {0.0, 0.03125, 0.03125, 4.0, 86400.0}) {
        now = 100.0 + seconds;
        QCOMPARE(clock.seconds(), seconds);
        QCOMPARE(clock.seconds(), seconds);
    }
}

void tst_PlaybackClock::pauses()
{
    double now = 8.0;
    PlaybackClock clock([&now] { return now; });
    now += 2.0;
    clock.setPaused(true);
    QVERIFY(clock.isPaused());
    QCOMPARE(clock.seconds(), 2.0);
    now += 1000.0;
    QCOMPARE(clock.seconds(), 2.0);

    clock.setPaused(false);
    QVERIFY(!clock.isPaused());
    QCOMPARE(clock.seconds(), 2.0);
    now += 0.25;
    QCOMPARE(clock.seconds(), 2.25);

    clock.setPaused(true);
    now += 5.0;
    clock.setPaused(false);
    now += 0.5;
    QCOMPARE(clock.seconds(), 2.75);
}

void tst_PlaybackClock::samePauseTwice()
{
    double now = 0.0;
    PlaybackClock clock([&now] { return now; });
    now = 1.0;
    clock.setPaused(false);
    QCOMPARE(clock.seconds(), 1.0);
    clock.setPaused(true);
    now = 3.0;
    clock.setPaused(true);
    QCOMPARE(clock.seconds(), 1.0);
    clock.setPaused(false);
    now = 4.0;
    clock.setPaused(false);
    QCOMPARE(clock.seconds(), 2.0);
}

void tst_PlaybackClock::restarts()
{
    double now = 0.0;
    PlaybackClock clock([&now] { return now; });
    now = 7.0;
    clock.setPaused(true);
    clock.setPaused(false);
    now = 9.0;
    clock.restart();
    QVERIFY(!clock.isPaused());
    QCOMPARE(clock.seconds(), 0.0);
    now = 9.5;
    QCOMPARE(clock.seconds(), 0.5);
}

void tst_PlaybackClock::restartsWhilePaused()
{
    double now = 0.0;
    PlaybackClock clock([&now] { return now; });
    now = 3.0;
    clock.setPaused(true);
    now = 4.0;
    clock.restart();
    QVERIFY(clock.isPaused());
    QCOMPARE(clock.seconds(), 0.0);
    now = 6.0;
    QCOMPARE(clock.seconds(), 0.0);
    clock.setPaused(false);
    now = 6.5;
    QCOMPARE(clock.seconds(), 0.5);
}

void tst_PlaybackClock::timeOfTheMachine()
{
    QElapsedTimer reference;
    reference.start();
    const PlaybackClock clock;
    const double before = clock.seconds();
    QCOMPARE_GE(before, 0.0);
    QTest::qSleep(50);
    const double after = clock.seconds();
    QCOMPARE_GE(after - before, 0.049);
    QCOMPARE_LE(after, static_cast<double>(reference.nsecsElapsed()) * 1e-9 + 1e-6);
}

QTEST_GUILESS_MAIN(tst_PlaybackClock)

#include "tst_playbackclock.moc"
