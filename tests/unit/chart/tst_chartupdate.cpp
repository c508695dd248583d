// SPDX-License-Identifier: MIT
#include "TestTrace.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QMutex>
#include <QtCore/QRegularExpression>
#include <QtCore/QSemaphore>
#include <QtCore/QSet>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGNode>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

// The refresh of all traces, and what it leads to in the scene graph. Nothing is drawn here: the
// scene graph is the one without graphics.
class tst_ChartUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void noTraces();
    void oncePerListing();
    void inThePool();
    void inParallel();
    void returnsWhenAllHave();
    void handlesNoEventsMeanwhile();
    void hiddenTracesToo();

    void ticks();
    void tickRequestsSynchronisation();
    void nodeFollowsTheSize();
};

void tst_ChartUpdate::initTestCase()
{
    // The machine may have a single core.
    QThreadPool::globalInstance()->setMaxThreadCount(2);
}

void tst_ChartUpdate::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ChartUpdate::noTraces()
{
    Chart chart;
    chart.updateTraces();
    QVERIFY(!chart.includes(nullptr));
}

void tst_ChartUpdate::oncePerListing()
{
    Chart chart;
    std::vector<std::unique_ptr<TestTrace>> traces;
    for (int i = 0; i < 100; ++i) {
        traces.push_back(std::make_unique<TestTrace>());
        for (int times = 0; times <= i % 3; ++times)
            chart.addTrace(traces.back().get());
    }
    for (int round = 1; round <= 3; ++round) {
        chart.updateTraces();
        for (std::size_t i = 0; i < traces.size(); ++i)
            QCOMPARE(traces[i]->updateCount.load(), round * (1 + int(i % 3)));
    }
}

void tst_ChartUpdate::inThePool()
{
    Chart chart;
    QMutex mutex;
    QSet<QThread *> threads;
    QList<QThread *> outsiders;
    std::vector<std::unique_ptr<TestTrace>> traces;
    for (int i = 0; i < 50; ++i) {
        traces.push_back(std::make_unique<TestTrace>());
        traces.back()->onUpdate = [&] {
            QThread *thread = QThread::currentThread();
            const QMutexLocker locker(&mutex);
            threads.insert(thread);
            if (!QThreadPool::globalInstance()->contains(thread))
                outsiders += thread;
            QThread::usleep(200);
        };
        chart.addTrace(traces.back().get());
    }
    chart.updateTraces();
    QVERIFY(outsiders.isEmpty());
    QVERIFY(!threads.isEmpty());
    QVERIFY(threads.size() <= 2);
}

void tst_ChartUpdate::inParallel()
{
    Chart chart;
    TestTrace first;
    TestTrace second;
    QSemaphore firstRuns;
    QSemaphore secondRuns;
    bool firstMet = false;
    bool secondMet = false;
    // Neither returns before the other has begun.
    first.onUpdate = [&] {
        firstRuns.release();
        firstMet = secondRuns.tryAcquire(1, 20000);
    };
    second.onUpdate = [&] {
        secondRuns.release();
        secondMet = firstRuns.tryAcquire(1, 20000);
    };
    chart.addTrace(&first);
    chart.addTrace(&second);
    // Threads of the test before may still be on their way out; they would not be used again yet.
    QVERIFY(QThreadPool::globalInstance()->waitForDone(20000));
    chart.updateTraces();
    QVERIFY(firstMet);
    QVERIFY(secondMet);
}

void tst_ChartUpdate::returnsWhenAllHave()
{
    Chart chart;
    std::atomic<int> finished = 0;
    std::vector<std::unique_ptr<TestTrace>> traces;
    for (int i = 0; i < 8; ++i) {
        traces.push_back(std::make_unique<TestTrace>());
        traces.back()->onUpdate = [&finished, i] {
            QThread::msleep(i % 2 == 0 ? 1 : 30);
            ++finished;
        };
        chart.addTrace(traces.back().get());
    }
    chart.updateTraces();
    QCOMPARE(finished.load(), 8);
}

void tst_ChartUpdate::handlesNoEventsMeanwhile()
{
    Chart chart;
    TestTrace trace;
    trace.onUpdate = [] { QThread::msleep(50); };
    chart.addTrace(&trace);
    bool handled = false;
    QTimer::singleShot(0, &chart, [&] { handled = true; });
    chart.updateTraces();
    QVERIFY(!handled);
    QTRY_VERIFY(handled);
}

void tst_ChartUpdate::hiddenTracesToo()
{
    Chart chart;
    TestTrace trace;
    trace.setVisible(false);
    chart.addTrace(&trace);
    chart.setVisible(false);
    chart.updateTraces();
    QCOMPARE(trace.updateCount.load(), 1);
}

void tst_ChartUpdate::ticks()
{
    QElapsedTimer elapsed;
    elapsed.start();
    Chart chart;
    TestTrace trace;
    chart.addTrace(&trace);
    QTRY_VERIFY_WITH_TIMEOUT(trace.updateCount >= 10, 20000);
    // A loaded machine is late, never early; one tick may be just due.
    const int updates = trace.updateCount;
    QVERIFY2(updates <= elapsed.elapsed() / 33 + 1, QByteArray::number(updates).constData());
}

namespace {

/*! Counts its synchronisations and keeps what became of its node. */
class WatchedChart : public Chart
{
public:
    int synchronisations = 0;
    bool hasNode = false;
    int deletedNodes = 0;

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override
    {
        ++synchronisations;
        QSGNode *node = Chart::updatePaintNode(oldNode, data);
        hasNode = node;
        if (node && node != oldNode)
            node->appendChildNode(new Mark(deletedNodes));
        return node;
    }

private:
    class Mark : public QSGNode
    {
    public:
        explicit Mark(int &counter)
            : m_counter(counter)
        {
            setFlag(OwnedByParent);
        }
        ~Mark() override { ++m_counter; }

    private:
        int &m_counter;
    };
};

/*! A window of the scene graph without graphics, which synchronises in this thread. */
class Window : public QQuickWindow
{
public:
    Window()
    {
        resize(200, 100);
        show();
    }
    [[nodiscard]] bool waitForExposed() { return QTest::qWaitForWindowExposed(this); }
};

} // namespace

void tst_ChartUpdate::tickRequestsSynchronisation()
{
    Window window;
    QVERIFY(window.waitForExposed());
    WatchedChart chart;
    chart.setParentItem(window.contentItem());
    chart.setSize(QSizeF(100.0, 50.0));
    auto *timer = chart.findChild<QTimer *>();

    QTRY_VERIFY(chart.synchronisations >= 3); // with nothing but the ticks to cause them
    timer->stop();
    QTest::qWait(50); // what was requested before
    const int before = chart.synchronisations;
    QTest::qWait(100);
    QCOMPARE(chart.synchronisations, before);

    chart.updateTraces();
    QTRY_COMPARE(chart.synchronisations, before + 1);
}

void tst_ChartUpdate::nodeFollowsTheSize()
{
    Window window;
    QVERIFY(window.waitForExposed());
    WatchedChart chart;
    chart.setParentItem(window.contentItem());
    const auto synchronise = [&] {
        const int before = chart.synchronisations;
        chart.updateTraces();
        return QTest::qWaitFor([&] { return chart.synchronisations > before; });
    };
    chart.findChild<QTimer *>()->stop();

    QVERIFY(synchronise());
    QVERIFY(!chart.hasNode);

    chart.setSize(QSizeF(0.5, 0.25));
    QVERIFY(synchronise());
    QVERIFY(chart.hasNode);
    QVERIFY(synchronise());
    QCOMPARE(chart.deletedNodes, 0);

    int deleted = 0;
    for (const QSizeF size : {QSizeF(0.0, 50.0), QSizeF(100.0, 0.0), QSizeF(-1.0, 50.0)}) {
        chart.setSize(size);
        QVERIFY(synchronise());
        QVERIFY(!chart.hasNode);
        QCOMPARE(chart.deletedNodes, ++deleted);

        chart.setSize(QSizeF(100.0, 50.0));
        QVERIFY(synchronise());
        QVERIFY(chart.hasNode);
        QCOMPARE(chart.deletedNodes, deleted);
    }
}

int main(int argc, char *argv[])
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    tst_ChartUpdate test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chartupdate.moc"
