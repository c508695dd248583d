// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "QueueChart.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <array>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array presses = {
        QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick};

} // namespace

/*! Whether and when the queue for the renderer is filled, and when it is handed over. */
class tst_MouseQueueFrames : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void withoutTraces();
    void addedAfterTheEvent();
    void removedBeforeTheFrame();
    void destroyedBeforeTheFrame();
    void withoutSize();
    void requestsAFrame();
    void manyInOneFrame();
};

void tst_MouseQueueFrames::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseQueueFrames::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_MouseQueueFrames::withoutTraces()
{
    QueueScene scene;
    QVERIFY2(scene.window.start(), scene.window.error());
    QVERIFY2(scene.window.plainFrame(), scene.window.error());
    const int frames = scene.window.synchronisations();

    for (const QEvent::Type type : presses)
        MouseInput(type, {100.0, 50.0}).sendTo(scene.chart);
    for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave})
        HoverInput(type, {double(type), 50.0}).sendTo(scene.chart);
    QTest::qWait(100);
    QCOMPARE(scene.window.synchronisations(), frames);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    // Focus is no matter of traces.
    QVERIFY(scene.chart.hasFocus());
}

void tst_MouseQueueFrames::addedAfterTheEvent()
{
    QueueScene scene;
    QVERIFY2(scene.window.start(), scene.window.error());
    MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}).sendTo(scene.chart);
    scene.chart.addTrace(&scene.trace);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    MouseInput(QEvent::MouseButtonRelease, {100.0, 50.0}).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.first().type, QEvent::MouseButtonRelease);
    QCOMPARE(queued.first().trace, &scene.trace);
    QVERIFY(queued.first().target == MouseEventResponse::Target::Trace);
}

// What was queued is answered all the same, though nothing is there any more to be hit.
void tst_MouseQueueFrames::removedBeforeTheFrame()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 1);

    MouseInput(QEvent::MouseButtonRelease, {100.0, 50.0}).sendTo(scene.chart);
    scene.chart.removeTrace(&scene.trace);
    MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.first().type, QEvent::MouseButtonRelease);
    QVERIFY(queued.first().trace == nullptr);
    QVERIFY(queued.first().target == MouseEventResponse::Target::Background);
}

void tst_MouseQueueFrames::destroyedBeforeTheFrame()
{
    QueueScene scene;
    {
        PixelTrace other({200, 100}, DrawType::LineStrip, 5.0F, Qt::blue);
        other.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
        scene.chart.addTrace(&other);
        QVERIFY2(scene.window.start(), scene.window.error());
        MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}).sendTo(scene.chart);
    }
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1);
    QVERIFY(queued.first().trace == nullptr);
}

// A chart that nobody sees draws nothing. Its events wait.
void tst_MouseQueueFrames::withoutSize()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    scene.chart.setSize({0.0, 0.0});
    MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}).sendTo(scene.chart);
    MouseInput(QEvent::MouseButtonRelease, {100.0, 50.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    scene.chart.setSize({200.0, 100.0});
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 2);
    QCOMPARE(queued.at(0).type, QEvent::MouseButtonPress);
    QCOMPARE(queued.at(1).type, QEvent::MouseButtonRelease);
}

// No tick is needed to hand an event over.
void tst_MouseQueueFrames::requestsAFrame()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    QVERIFY2(scene.window.plainFrame(), scene.window.error());
    for (const QEvent::Type type : presses) {
        const int frames = scene.window.synchronisations();
        MouseInput(type, {100.0, 50.0}).sendTo(scene.chart);
        QTRY_VERIFY(scene.window.synchronisations() > frames);
        QCOMPARE(scene.chart.takeQueued().size(), 1);
    }
    double x = 10.0;
    for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave}) {
        const int frames = scene.window.synchronisations();
        HoverInput(type, {++x, 50.0}).sendTo(scene.chart);
        QTRY_VERIFY(scene.window.synchronisations() > frames);
        QCOMPARE(scene.chart.takeQueued().size(), 1);
    }

    const int frames = scene.window.synchronisations();
    HoverInput(QEvent::HoverMove, {x, 50.0}).sendTo(scene.chart);
    MouseInput(QEvent::MouseMove, {50.0, 50.0}).sendTo(scene.chart);
    MouseInput second(QEvent::MouseButtonPress, {50.0, 50.0});
    second.setCreatedDoubleClick();
    second.sendTo(scene.chart);
    QTest::qWait(100);
    QCOMPARE(scene.window.synchronisations(), frames);
}

void tst_MouseQueueFrames::manyInOneFrame()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    constexpr int count = 500;
    for (int i = 0; i < count; ++i) {
        if (i % 2 == 0)
            MouseInput(presses[static_cast<std::size_t>(i) % 3], QPointF(i, 50.0))
                    .sendTo(scene.chart);
        else
            HoverInput(QEvent::HoverMove, QPointF(i, 50.0)).sendTo(scene.chart);
    }
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), count);
    for (int i = 0; i < count; ++i) {
        QCOMPARE(queued.at(i).position, QPointF(i, 50.0));
        const QEvent::Type type =
                i % 2 == 0 ? presses[static_cast<std::size_t>(i) % 3] : QEvent::MouseMove;
        QCOMPARE(queued.at(i).type, type);
        // Well inside or well outside of the line.
        if (i > 25 && i < 175)
            QCOMPARE(queued.at(i).trace, &scene.trace);
        if (i < 15 || i > 185)
            QVERIFY(queued.at(i).trace == nullptr);
    }
}

QTEST_MAIN(tst_MouseQueueFrames)

#include "tst_mousequeue_frames.moc"
