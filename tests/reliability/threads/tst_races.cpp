// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "TestTrace.h"
#include "WatchedScene.h"

#include <QtCore/QThreadPool>
#include <QtTest/QTest>

#include <array>
#include <atomic>
#include <thread>

/*! Mistakes of an application, for ThreadSanitizer to find: each function is run by itself and has to
    end with a report that names what is shared. */
class tst_Races : public QObject
{
    Q_OBJECT

public:
    static void initMain();

private Q_SLOTS:
    void initTestCase();

    void besideThePool();
    void betweenTraces();
    void whileDrawing();
    void betweenWindows();
};

namespace {

/*! One access to what no two threads may touch at a time. Named, to be recognised in the report. */
#define SHARED_ACCESS(name)                                                                        \
    Q_NEVER_INLINE void name##Shared(int &value)                                                   \
    {                                                                                              \
        ++value;                                                                                   \
    }
SHARED_ACCESS(besideThePool)
SHARED_ACCESS(betweenTraces)
SHARED_ACCESS(whileDrawing)
SHARED_ACCESS(betweenWindows)
#undef SHARED_ACCESS

void wait()
{
    QTest::qWait(600);
}

} // namespace

void tst_Races::initMain()
{
    qputenv("QSG_RENDER_LOOP", "threaded");
    Graphics::setUp();
}

void tst_Races::initTestCase()
{
    QThreadPool::globalInstance()->setMaxThreadCount(4);
}

/*! A thread of the application's own brings data, and does not wait for updateData(). */
void tst_Races::besideThePool()
{
    ThreadWatch watch;
    WatchedScene scene(watch, {10, 10}, 1U);
    int data = 0;
    TestTrace trace;
    trace.onUpdate = [&data] { besideThePoolShared(data); };
    scene.chart().addTrace(&trace);
    QVERIFY(scene.start());
    std::atomic<bool> isDone = false;
    std::thread source([&] {
        while (!isDone.load(std::memory_order_relaxed)) {
            besideThePoolShared(data);
            QThread::usleep(500);
        }
    });
    wait();
    isDone.store(true, std::memory_order_relaxed);
    source.join();
}

/*! Two traces write the same thing in updateData(). */
void tst_Races::betweenTraces()
{
    ThreadWatch watch;
    WatchedScene scene(watch, {10, 10}, 1U);
    int data = 0;
    std::array<TestTrace, 4> traces;
    for (TestTrace &trace : traces) {
        trace.onUpdate = [&data] {
            QThread::usleep(200);
            betweenTracesShared(data);
        };
        scene.chart().addTrace(&trace);
    }
    QVERIFY(scene.start());
    wait();
    for (TestTrace &trace : traces)
        scene.chart().removeTrace(&trace);
}

/*! The render thread draws, and reads what the GUI thread writes. */
void tst_Races::whileDrawing()
{
    ThreadWatch watch;
    WatchedScene scene(watch, {10, 10}, 1U);
    int data = 0;
    const auto connection = connect(
            &scene.window(), &QQuickWindow::beforeRendering, this,
            [&data] { whileDrawingShared(data); }, Qt::DirectConnection);
    QVERIFY(scene.start());
    for (int i = 0; i < 200; ++i) {
        whileDrawingShared(data);
        QTest::qWait(3);
    }
    disconnect(connection);
}

/*! Two render threads use one thing within their synchronisations. The GUI thread waits for one
    window after the other: only what is done while drawing can meet. */
void tst_Races::betweenWindows()
{
    ThreadWatch watch;
    std::array<WatchedScene, 2> scenes = {{{watch, {10, 10}, 1U}, {watch, {300, 10}, 2U}}};
    int data = 0;
    for (WatchedScene &scene : scenes) {
        connect(
                &scene.window(), &QQuickWindow::beforeRendering, this,
                [&data] { betweenWindowsShared(data); }, Qt::DirectConnection);
        QVERIFY(scene.start());
    }
    wait();
}

QTEST_MAIN(tst_Races)
#include "tst_races.moc"
