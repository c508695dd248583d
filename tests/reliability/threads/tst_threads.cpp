// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "Rounds.h"
#include "WatchedScene.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>
#include <QtCore/QThreadPool>
#include <QtTest/QTest>

#include <array>

/*!
    The whole of it at work in two windows: timers, pool, synchronisation, drawing, mouse, zoom, traces
    that come and go. Everything runs on the thread that its documentation names, and what one thread
    touches no other does meanwhile. The first is asserted here, the second is what a thread sanitizer
    looks at while this runs.
*/
class tst_Threads : public QObject
{
    Q_OBJECT

public:
    static void initMain();

private Q_SLOTS:
    void initTestCase();
    void init();

    void everythingAtOnce();
};

namespace {

/*! What is wrong with \a tally, of which at least \a least are expected. Prints a figure in the long
    form. */
QString complaint(const Tally &tally, const char *what, int least)
{
    if (rounds(0, 1) == 1)
        qInfo("%d %s", tally.right(), what);
    if (tally.wrong() > 0) {
        return QStringLiteral("%1 of %2 %3 on another thread or at another time")
                .arg(tally.wrong())
                .arg(tally.wrong() + tally.right())
                .arg(QString::fromLatin1(what));
    }
    if (tally.right() < least)
        return QStringLiteral("only %1 %2").arg(tally.right()).arg(QString::fromLatin1(what));
    return {};
}

} // namespace

void tst_Threads::initMain()
{
    // The one with a thread of its own for each window.
    qputenv("QSG_RENDER_LOOP", "threaded");
    Graphics::setUp();
}

void tst_Threads::initTestCase()
{
    // Also on a machine with a single processor.
    QThreadPool::globalInstance()->setMaxThreadCount(4);
}

void tst_Threads::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Threads::everythingAtOnce()
{
    ThreadWatch watch;
    {
        std::array<WatchedScene, 2> scenes = {{{watch, {10, 10}, 1U}, {watch, {300, 10}, 2U}}};
        for (WatchedScene &scene : scenes)
            QVERIFY(scene.start());
        QVERIFY(scenes[0].window().renderThread() != QThread::currentThread());
        QVERIFY(scenes[1].window().renderThread() != QThread::currentThread());
        QVERIFY(scenes[0].window().renderThread() != scenes[1].window().renderThread());

        const qint64 duration = rounds(2500, 60000);
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < duration;) {
            for (WatchedScene &scene : scenes)
                scene.act();
            QTest::qWait(5);
        }
    }

    QCOMPARE(complaint(watch.updates, "calls of updateData()", 50), QString());
    QCOMPARE(complaint(watch.reads, "calls of traceData()", 50), QString());
    QCOMPARE(complaint(watch.paintNodes, "updates of the chart's node", 20), QString());
    QCOMPARE(complaint(watch.curvePoints, "updates of the curve's node", 1), QString());
    QCOMPARE(complaint(watch.synchronisations, "synchronisations", 20), QString());
    QCOMPARE(complaint(watch.answers, "answers to mouse events", 10), QString());
    QCOMPARE(complaint(watch.propertySignals, "signals of properties", 10), QString());
    QCOMPARE(complaint(watch.mouseSignals, "mouse signals of charts", 10), QString());
    QCOMPARE(complaint(watch.hits, "mouse signals of traces", 5), QString());
    QCOMPARE(complaint(watch.zoomSignals, "signals of zoom", 5), QString());
    QVERIFY2(watch.updating.greatest() > 1, "traces are updated one after the other");
}

QTEST_MAIN(tst_Threads)
#include "tst_threads.moc"
