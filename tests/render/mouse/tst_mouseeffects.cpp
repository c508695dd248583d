// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "QueueChart.h"

#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! What a mouse event does beside being queued, and in which order. Handlers that attach or detach
    the trace tell: only while there is one does an event get into the queue. */
class tst_MouseEffects : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void pressTakesFocus();
    void pressTakesFocusOfScopes();
    void nothingElseTakesFocus_data();
    void nothingElseTakesFocus();
    void focusAfterTheQueue();
    void zoomStartBeforeTheQueue();
    void zoomEndBeforeTheQueue();
    void zoomEndWithButtonsStillHeld();
};

void tst_MouseEffects::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseEffects::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_MouseEffects::pressTakesFocus()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    QQuickItem other(scene.window.contentItem());
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::ForwardButton}) {
        other.forceActiveFocus();
        QVERIFY(!scene.chart.hasFocus());
        MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}, button, button).sendTo(scene.chart);
        QVERIFY(scene.chart.hasFocus());
        QVERIFY(!other.hasFocus());
    }
}

// The scopes around the chart get it, too, or the chart would have it in vain.
void tst_MouseEffects::pressTakesFocusOfScopes()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    QQuickItem scope(scene.window.contentItem());
    scope.setFlag(QQuickItem::ItemIsFocusScope);
    QQuickItem other(scene.window.contentItem());
    Chart chart(&scope);
    other.forceActiveFocus();

    MouseInput(QEvent::MouseButtonPress, {1.0, 1.0}).sendTo(chart);
    QVERIFY(chart.hasFocus());
    QVERIFY(scope.hasFocus());
    QVERIFY(!other.hasFocus());
}

void tst_MouseEffects::nothingElseTakesFocus_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("release") << int(QEvent::MouseButtonRelease);
    QTest::newRow("double click") << int(QEvent::MouseButtonDblClick);
    QTest::newRow("move with the grab") << int(QEvent::MouseMove);
    QTest::newRow("enter") << int(QEvent::HoverEnter);
    QTest::newRow("move") << int(QEvent::HoverMove);
    QTest::newRow("leave") << int(QEvent::HoverLeave);
}

void tst_MouseEffects::nothingElseTakesFocus()
{
    QFETCH(int, type);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    const auto eventType = static_cast<QEvent::Type>(type);
    if (eventType == QEvent::HoverEnter || eventType == QEvent::HoverMove
            || eventType == QEvent::HoverLeave)
        HoverInput(eventType, {30.0, 40.0}).sendTo(scene.chart);
    else
        MouseInput(eventType, {30.0, 40.0}).sendTo(scene.chart);
    QVERIFY(!scene.chart.hasFocus());
}

void tst_MouseEffects::focusAfterTheQueue()
{
    QueueScene scene;
    QVERIFY2(scene.window.start(), scene.window.error());
    const auto connection = connect(&scene.chart, &QQuickItem::focusChanged, &scene.chart,
            [&scene] { scene.chart.addTrace(&scene.trace); });
    MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}).sendTo(scene.chart);
    disconnect(connection);
    QVERIFY(scene.chart.includes(&scene.trace));
    QCOMPARE(scene.chart.takeQueued().size(), 0);
}

void tst_MouseEffects::zoomStartBeforeTheQueue()
{
    QueueScene scene;
    ZoomDelegate rubberBand(&scene.chart);
    rubberBand.setVisible(false);
    scene.chart.setRubberBand(&rubberBand);
    scene.chart.setIsZoomEnabled(true);
    QVERIFY2(scene.window.start(), scene.window.error());
    connect(&rubberBand, &QQuickItem::visibleChanged, &scene.chart,
            [&scene] { scene.chart.addTrace(&scene.trace); });
    MouseInput(QEvent::MouseButtonPress, {100.0, 50.0}).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.first().type, QEvent::MouseButtonPress);
}

void tst_MouseEffects::zoomEndBeforeTheQueue()
{
    QueueScene scene;
    ZoomDelegate rubberBand(&scene.chart);
    scene.chart.setRubberBand(&rubberBand);
    scene.chart.setIsZoomEnabled(true);
    QVERIFY2(scene.start(), scene.window.error());
    connect(&scene.chart, &Chart::zoomedIn, &scene.chart,
            [&scene] { scene.chart.removeTrace(&scene.trace); });
    MouseInput(QEvent::MouseButtonPress, {10.0, 10.0}).sendTo(scene.chart);
    MouseInput(QEvent::MouseMove, {60.0, 60.0}, Qt::NoButton).sendTo(scene.chart);
    MouseInput(QEvent::MouseButtonRelease, {60.0, 60.0}, Qt::LeftButton, Qt::NoButton)
            .sendTo(scene.chart);
    QVERIFY(!scene.chart.includes(&scene.trace));
    QVERIFY(!rubberBand.isVisible());
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.first().type, QEvent::MouseButtonPress);
}

// A drag is an ordinary press and release for the queue, whatever the rubber band does with it.
void tst_MouseEffects::zoomEndWithButtonsStillHeld()
{
    QueueScene scene;
    ZoomDelegate rubberBand(&scene.chart);
    scene.chart.setRubberBand(&rubberBand);
    scene.chart.setIsZoomEnabled(true);
    QVERIFY2(scene.start(), scene.window.error());
    MouseInput(QEvent::MouseButtonPress, {10.5, 10.5}).sendTo(scene.chart);
    MouseInput(QEvent::MouseMove, {60.5, 60.5}, Qt::NoButton).sendTo(scene.chart);
    MouseInput(QEvent::MouseButtonRelease, {60.5, 60.5}, Qt::LeftButton, Qt::RightButton)
            .sendTo(scene.chart);
    HoverInput(QEvent::HoverMove, {61.5, 61.5}).sendTo(scene.chart);
    QVERIFY(scene.chart.isZoomed());
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 3);
    QCOMPARE(queued.at(0).type, QEvent::MouseButtonPress);
    QCOMPARE(queued.at(0).position, QPointF(11.0, 11.0));
    QCOMPARE(queued.at(1).type, QEvent::MouseButtonRelease);
    QCOMPARE(queued.at(1).position, QPointF(61.0, 61.0));
    QCOMPARE(queued.at(2).type, QEvent::MouseMove);
    QCOMPARE(queued.at(2).position, QPointF(61.5, 61.5));
    QCOMPARE(queued.at(2).button, Qt::NoButton);
    QCOMPARE(queued.at(2).buttons, Qt::MouseButtons(Qt::RightButton));
}

QTEST_MAIN(tst_MouseEffects)

#include "tst_mouseeffects.moc"
