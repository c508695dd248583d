// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseLog.h"
#include "PixelTrace.h"

#include <ChartsLibrary/ChartNode.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtQuick/QSGRectangleNode>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

#include <malloc.h>

using namespace Charts;

namespace {

/*! Lets the test look at the chart's node. */
class VisibleNodeItem : public QQuickItem
{
public:
    explicit VisibleNodeItem(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setFlag(ItemHasContents);
        setSize({200.0, 100.0});
    }

    bool isDone = false;
    AbstractRenderNode *renderNode = nullptr;
    int childCount = -1;

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override
    {
        auto *node = oldNode ? static_cast<ChartNode *>(oldNode) : new ChartNode(window());
        renderNode = node->renderNode();
        childCount = node->childCount();
        isDone = true;
        return node;
    }
};

/*! An item of another kind, to see that the window still draws. */
class FilledItem : public QQuickItem
{
public:
    explicit FilledItem(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setFlag(ItemHasContents);
    }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override
    {
        auto *node = static_cast<QSGRectangleNode *>(oldNode);
        if (!node)
            node = window()->createRectangleNode();
        node->setRect(boundingRect());
        node->setColor(Qt::green);
        return node;
    }
};

} // namespace

/*! A scene graph that does not use OpenGL: charts show no traces, and that is all. */
class tst_WithoutOpenGL : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void noRenderer();
    void noTraces();
    void windowLife();
    void mouseEvents();
    void mouseEventsWithTracesComingAndGoing();
    void queuedEventsAreReleased();

private:
    static constexpr QSize size = {200, 100};
};

void tst_WithoutOpenGL::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_WithoutOpenGL::cleanup()
{
    QCOMPARE(GlProbe::objectsMade(), 0);
    QCOMPARE(GlProbe::totals(), GlProbe::Totals());
}

void tst_WithoutOpenGL::noRenderer()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    VisibleNodeItem item(window.contentItem());
    QVERIFY2(window.plainFrame(), window.error());
    QVERIFY(item.isDone);
    QCOMPARE(item.renderNode, static_cast<AbstractRenderNode *>(nullptr));
    QCOMPARE(item.childCount, 0);
}

void tst_WithoutOpenGL::noTraces()
{
    ChartWindow window(size);
    FilledItem filled(window.contentItem());
    filled.setPosition({10.0, 10.0});
    filled.setSize({20.0, 20.0});
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    expected.setSlack(0.3, 0.3);
    expected.addLine({10.0, 80.0}, {30.0, 80.0}, 20.0, Qt::green);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(expected.compare(window.picture()), QString());
    // Traces are updated all the same; nobody empties what they mark as changed.
    QCOMPARE(trace.updateCount, 3);
    QVERIFY(!trace.data.dirtyRange().isEmpty());
    QVERIFY(trace.data.isDirty());
}

void tst_WithoutOpenGL::windowLife()
{
    auto window = std::make_unique<ChartWindow>(size);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window->chart()->addTrace(&trace);
    QVERIFY2(window->start(), window->error());

    for (const QSizeF &itemSize : {QSizeF(0.0, 100.0), QSizeF(0.3, 0.3), QSizeF(50.5, 20.5),
                 QSizeF(1e9, 1e9), QSizeF(size)}) {
        window->chart()->setSize(itemSize);
        QVERIFY2(window->frame(), window->error());
    }

    // Events that nobody resolves; they go with the chart.
    QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier, {100, 50});
    QTest::mouseMove(window.get(), {120, 50});
    QVERIFY2(window->frame(), window->error());

    window->setPersistentSceneGraph(false);
    window->setPersistentGraphics(false);
    window->hide();
    window->releaseResources();
    QVERIFY2(window->start(), window->error());
    window->chart()->removeTrace(&trace);
    QVERIFY2(window->frame(), window->error());
    window->chart()->addTrace(&trace);
    QVERIFY2(window->frame(), window->error());
    QCOMPARE(ExpectedPicture(size).compare(window->picture()), QString());

    delete window->chart();
    QVERIFY2(window->plainFrame(), window->error());
    window.reset();
}

void tst_WithoutOpenGL::mouseEvents()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    MouseLog log;
    log.watch(*window.chart());
    log.watch(trace, QStringLiteral("trace"));
    QSignalSpy received(window.chart(), &Chart::mouseEventResponsesReceived);
    QVERIFY2(window.start(), window.error());

    // Nobody knows what lies under the pointer, so no signal tells: not of the trace, not of the
    // chart, neither for a change of data.
    const QPoint onTrace(100, 50);
    const QPoint beside(100, 10);
    for (const QPoint &place : {onTrace, beside}) {
        QTest::mouseMove(&window, place);
        QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(&window, Qt::RightButton, Qt::ShiftModifier, place);
        QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseMove(&window, place + QPoint(20, 5));
        QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, place + QPoint(20, 5));
        trace.data.dirtyRange().push({0, 1});
        for (int i = 0; i < 3; ++i)
            QVERIFY2(window.answerEvents(), window.error());
    }
    QHoverEvent leave(QEvent::HoverLeave, QPointF(), QPointF(), beside);
    QCoreApplication::sendEvent(window.chart(), &leave);
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(received.count(), 0);

    // The item itself has got them.
    QVERIFY(window.chart()->hasActiveFocus());
}

void tst_WithoutOpenGL::mouseEventsWithTracesComingAndGoing()
{
    ChartWindow window(size);
    auto trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace->setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    MouseLog log;
    log.watch(*window.chart());
    log.watch(*trace, QStringLiteral("trace"));
    QVERIFY2(window.start(), window.error());
    const auto click = [&window] {
        QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, {100, 50});
    };

    click();
    window.chart()->addTrace(trace.get());
    click();
    QVERIFY2(window.frame(), window.error());
    click();
    window.chart()->setSize({0.0, 100.0});
    QVERIFY2(window.frame(), window.error());
    window.chart()->setSize(size);
    click();
    trace.reset();
    QVERIFY2(window.answerEvents(), window.error());
    click();
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(log.take(), QStringList());

    // Some are still waiting when the chart goes, and when the window goes.
    PixelTrace other(size, DrawType::LineStrip, 5.0F, Qt::red);
    window.chart()->addTrace(&other);
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, {100, 50});
    delete window.chart();
    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, {100, 50});
    QVERIFY2(window.plainFrame(), window.error());
}

void tst_WithoutOpenGL::queuedEventsAreReleased()
{
    // A mouse over such a chart must not fill the memory with questions that nobody answers.
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    constexpr int eventsPerFrame = 5000;
    const auto move = [&window] {
        for (int i = 0; i < eventsPerFrame; ++i) {
            const QPointF place(10.0 + i % 100, 50.0);
            QHoverEvent event(QEvent::HoverMove, place, place, place + QPointF(1.0, 0.0));
            QCoreApplication::sendEvent(window.chart(), &event);
        }
    };
    // What is taken once, and for good, is taken in these frames.
    for (int i = 0; i < 3; ++i) {
        move();
        QVERIFY2(window.frame(), window.error());
    }
    const std::size_t before = mallinfo2().uordblks;
    move();
    [[maybe_unused]] const std::size_t waiting = mallinfo2().uordblks;
    for (int i = 0; i < 10; ++i) {
        QVERIFY2(window.frame(), window.error());
        move();
    }
    QVERIFY2(window.frame(), window.error());
    const std::size_t after = mallinfo2().uordblks;
    const std::size_t ofOneFrame = eventsPerFrame * sizeof(QMouseEvent);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    // A sanitizer has an allocator of its own, which does not show here.
    QVERIFY2(waiting - before >= ofOneFrame, qPrintable(QString::number(waiting - before)));
#endif
    QVERIFY2(after < before + ofOneFrame, qPrintable(QString::number(after - before)));
}

QTEST_MAIN(tst_WithoutOpenGL)

#include "tst_withoutopengl.moc"
