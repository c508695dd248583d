// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelBlock.h"
#include "RenderNodeItem.h"

#include <ChartsLibrary/MouseEventResponse.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>
#include <type_traits>

using namespace Charts;
using namespace Qt::StringLiterals;

using Events = std::vector<std::unique_ptr<QMouseEvent>>;

static_assert(std::is_move_constructible_v<MouseEventResponse>);
static_assert(std::is_move_assignable_v<MouseEventResponse>);
static_assert(!std::is_copy_constructible_v<MouseEventResponse>);
static_assert(!std::is_copy_assignable_v<MouseEventResponse>);
static_assert(sizeof(MouseEventResponse::target) == 4);
static_assert(static_cast<int>(MouseEventResponse::Target::Trace) == 0);
static_assert(static_cast<int>(MouseEventResponse::Target::Background) == 1);
static_assert(std::is_same_v<decltype(MouseEventResponse::event), std::unique_ptr<QMouseEvent>>);
static_assert(std::is_same_v<decltype(MouseEventResponse::trace), AbstractTrace *>);

/*! The renderer's part in picking, driven by hand, without a chart. */
class tst_PickingNode : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void pushTakesTheVectorOver();
    void emptyVector();
    void answersAreGathered();
    void answersOfAnEmptyList();
    void answersWithoutRender();
    void eventsStayAsTheyAre();
    void handleMouseEventsAtOnce();
    void handleMouseEventsWithoutEvents();

private:
    [[nodiscard]] static std::unique_ptr<QMouseEvent> eventAt(const QPointF &place)
    {
        return std::make_unique<QMouseEvent>(QEvent::MouseButtonPress, place, place, place,
                Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    }
    [[nodiscard]] static Events eventsAt(const QList<QPointF> &places)
    {
        Events events;
        for (const QPointF &place : places)
            events.push_back(eventAt(place));
        return events;
    }
    static void draw(OpenGLRenderNode &node, const std::vector<AbstractTrace *> &traces)
    {
        node.setTextureSize(size);
        node.setTraceData(true, traces);
        node.render();
    }

    static constexpr QSize size = {200, 100};
    std::unique_ptr<ChartWindow> m_window;
    RenderNodeItem *m_item = nullptr;
    std::unique_ptr<PixelBlock> m_trace;
};

void tst_PickingNode::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_window = std::make_unique<ChartWindow>(size, ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
    m_item = new RenderNodeItem(*m_window);
    m_trace = std::make_unique<PixelBlock>(size, QRect(50, 40, 20, 20));
}

void tst_PickingNode::cleanup()
{
    m_window.reset();
    m_trace.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_PickingNode::pushTakesTheVectorOver()
{
    Events first = eventsAt({{60.0, 50.0}, {10.0, 50.0}});
    Events second = eventsAt({{61.0, 51.0}});
    const std::vector<const QMouseEvent *> pushed = {
            first[0].get(), first[1].get(), second[0].get()};
    std::size_t left = 99;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setTraceData(true, {m_trace.get()});
        node.pushMouseEvents(std::move(first));
        node.pushMouseEvents(std::move(second));
        left = first.size() + second.size();
        // The vector is the caller's again.
        first.push_back(eventAt({60.0, 50.0}));
        node.render();
    }));
    QCOMPARE(left, std::size_t(0));
    QCOMPARE(first.size(), std::size_t(1));

    std::vector<MouseEventResponse> responses;
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { responses = node.takeMouseEventResponses(); }));
    QCOMPARE(responses.size(), pushed.size());
    const std::vector<AbstractTrace *> traces = {m_trace.get(), nullptr, m_trace.get()};
    for (std::size_t i = 0; i < pushed.size(); ++i) {
        QCOMPARE(responses[i].event.get(), pushed[i]);
        QCOMPARE(responses[i].trace, traces[i]);
        QCOMPARE(static_cast<int>(responses[i].target), traces[i] ? 0 : 1);
    }
}

void tst_PickingNode::emptyVector()
{
    const GlProbe::Log log;
    std::size_t responses = 99;
    Events none;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) { draw(node, {m_trace.get()}); }));
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.pushMouseEvents(std::move(none));
        node.pushMouseEvents({});
        // Without an event there is no pass for selection, though the data have changed.
        m_trace->data.dirtyRange().push({0, 1});
        node.setTraceData(false, {m_trace.get()});
        node.render();
    }));
    QCOMPARE(log.count("glDrawArrays"), 2);
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { responses = node.takeMouseEventResponses().size(); }));
    QCOMPARE(none.size(), std::size_t(0));
    QCOMPARE(responses, std::size_t(0));
}

void tst_PickingNode::answersAreGathered()
{
    // Three frames with events, nobody takes the answers before the fourth.
    const QList<QList<QPointF>> frames = {
            {{60.0, 50.0}, {10.0, 50.0}}, {{61.0, 50.0}}, {{62.0, 50.0}, {63.0, 50.0}, {1.0, 1.0}}};
    for (const QList<QPointF> &places : frames) {
        QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
            node.setTextureSize(size);
            node.setTraceData(true, {m_trace.get()});
            node.pushMouseEvents(eventsAt(places));
            node.render();
        }));
    }
    std::vector<MouseEventResponse> responses;
    std::size_t again = 99;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        responses = node.takeMouseEventResponses();
        again = node.takeMouseEventResponses().size();
    }));
    QList<QPointF> places;
    QList<bool> found;
    for (const MouseEventResponse &response : responses) {
        places.append(response.event->position());
        found.append(response.trace == m_trace.get());
    }
    QCOMPARE(places, frames[0] + frames[1] + frames[2]);
    QCOMPARE(found, QList<bool>({true, false, true, true, true, false}));
    QCOMPARE(again, std::size_t(0));
}

void tst_PickingNode::answersOfAnEmptyList()
{
    // The last image showed a trace; with an empty list all events fall on the background.
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.pushMouseEvents(eventsAt({{60.0, 50.0}}));
        draw(node, {m_trace.get()});
    }));
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.pushMouseEvents(eventsAt({{60.0, 50.0}, {61.0, 50.0}}));
        draw(node, {});
    }));
    std::vector<MouseEventResponse> responses;
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { responses = node.takeMouseEventResponses(); }));
    QCOMPARE(responses.size(), std::size_t(3));
    QCOMPARE(responses[0].trace, static_cast<AbstractTrace *>(m_trace.get()));
    for (const std::size_t i : {1, 2}) {
        QCOMPARE(responses[i].trace, static_cast<AbstractTrace *>(nullptr));
        QCOMPARE(static_cast<int>(responses[i].target), 1);
    }
}

void tst_PickingNode::answersWithoutRender()
{
    // Nobody asks the renderer to draw; the window's next frame resolves the events all the same.
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.pushMouseEvents(eventsAt({{60.0, 50.0}}));
        draw(node, {m_trace.get()});
    }));
    QVERIFY(m_item->run([](OpenGLRenderNode &node) {
        node.pushMouseEvents(eventsAt({{61.0, 50.0}}));
    }));
    QVERIFY2(m_window->plainFrame(), m_window->error());
    std::vector<MouseEventResponse> responses;
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { responses = node.takeMouseEventResponses(); }));
    QCOMPARE(responses.size(), std::size_t(2));
    QCOMPARE(responses[1].trace, static_cast<AbstractTrace *>(m_trace.get()));
}

void tst_PickingNode::eventsStayAsTheyAre()
{
    // Every kind is looked up; what becomes of it is the chart's business.
    const QList<QEvent::Type> types = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
            QEvent::MouseButtonDblClick, QEvent::MouseMove, QEvent::HoverEnter, QEvent::HoverLeave};
    Events events;
    for (const QEvent::Type type : types) {
        events.push_back(std::make_unique<QMouseEvent>(type, QPointF(60.25, 50.25),
                QPointF(1.0, 2.0), QPointF(3.0, 4.0), Qt::RightButton,
                Qt::RightButton | Qt::LeftButton, Qt::ShiftModifier));
    }
    std::vector<MouseEventResponse> responses;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.pushMouseEvents(std::move(events));
        draw(node, {m_trace.get()});
    }));
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { responses = node.takeMouseEventResponses(); }));
    QCOMPARE(responses.size(), static_cast<std::size_t>(types.size()));
    for (qsizetype i = 0; i < types.size(); ++i) {
        const MouseEventResponse &response = responses[static_cast<std::size_t>(i)];
        QCOMPARE(response.event->type(), types[i]);
        QCOMPARE(response.event->position(), QPointF(60.25, 50.25));
        QCOMPARE(response.event->button(), Qt::RightButton);
        QCOMPARE(response.event->buttons(), Qt::RightButton | Qt::LeftButton);
        QCOMPARE(response.event->modifiers(), Qt::ShiftModifier);
        QCOMPARE(response.trace, static_cast<AbstractTrace *>(m_trace.get()));
    }
}

void tst_PickingNode::handleMouseEventsAtOnce()
{
    QList<std::size_t> counts;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.pushMouseEvents(eventsAt({{60.0, 50.0}, {1.0, 1.0}}));
        draw(node, {m_trace.get()});
        counts.append(node.takeMouseEventResponses().size());
        node.handleMouseEvents();
        node.handleMouseEvents();
        counts.append(node.takeMouseEventResponses().size());
    }));
    // Nothing is left for the frame.
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { counts.append(node.takeMouseEventResponses().size()); }));
    QCOMPARE(counts, QList<std::size_t>({0, 2, 0}));
}

void tst_PickingNode::handleMouseEventsWithoutEvents()
{
    const GlProbe::Log log;
    qsizetype calls = 99;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        draw(node, {m_trace.get()});
        const auto before = log.everything().size();
        node.handleMouseEvents();
        calls = static_cast<qsizetype>(log.everything().size() - before);
    }));
    QCOMPARE(calls, 0);
}

QTEST_MAIN(tst_PickingNode)

#include "tst_pickingnode.moc"
