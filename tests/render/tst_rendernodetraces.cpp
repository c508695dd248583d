// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"
#include "RenderNodeItem.h"

#include <QtCore/QRegularExpression>
#include <QtQuick/QSGImageNode>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

/*! What the renderer makes of the traces it is given, driven by hand, without a chart. */
class tst_RenderNodeTraces : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void noDirtyTrace();
    void oneDirtyFlag();
    void newListClearsNoFlag();
    void listIsCopied();
    void buffersStayUntilTheListIsNew();
    void renderWithoutTraces();

private:
    [[nodiscard]] static QSGImageNode *imageOf(OpenGLRenderNode &node)
    {
        return static_cast<QSGImageNode *>(node.firstChild());
    }

    static constexpr QSize size = {200, 100};
    std::unique_ptr<ChartWindow> m_window;
    RenderNodeItem *m_item = nullptr;
    std::unique_ptr<PixelTrace> m_trace;
};

void tst_RenderNodeTraces::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    m_window = std::make_unique<ChartWindow>(size, ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
    m_item = new RenderNodeItem(*m_window);
    m_trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, Qt::red);
    m_trace->setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
}

void tst_RenderNodeTraces::cleanup()
{
    m_window.reset();
    m_trace.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_RenderNodeTraces::noDirtyTrace()
{
    const GlProbe::Log log;
    QList<int> draws;
    m_trace->data.clearDirty();
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        const auto render = [&] {
            node.render();
            draws.append(log.count("glDrawArrays"));
        };
        node.setTextureSize(size);
        node.setTraceData(true, {m_trace.get()});
        render();
        // Nothing to draw stays nothing to draw...
        node.setTraceData(false, {m_trace.get()});
        render();
        // ... and something stays something.
        node.setTextureSize(size);
        node.setTraceData(false, {m_trace.get()});
        render();
    }));
    QCOMPARE(draws, QList<int>({1, 1, 2}));
}

void tst_RenderNodeTraces::oneDirtyFlag()
{
    PixelTrace other(size, DrawType::LineStrip, 5.0F, Qt::blue);
    other.setPoints(std::vector<QPointF>{{20.0, 20.5}, {180.0, 20.5}});
    QList<bool> flags;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        const std::vector<AbstractTrace *> traces = {m_trace.get(), &other};
        const auto note = [&] { flags.append({m_trace->data.isDirty(), other.data.isDirty()}); };
        node.setTraceData(false, traces);
        note();
        // Its changed range still makes the first one the one that is found.
        node.setTraceData(false, traces);
        note();
        node.setTextureSize(size);
        node.render();
        node.setTraceData(false, traces);
        note();
    }));
    QCOMPARE(flags, QList<bool>({false, true, false, true, false, false}));
    QVERIFY(m_trace->data.dirtyRange().isEmpty());
}

void tst_RenderNodeTraces::newListClearsNoFlag()
{
    QVERIFY(m_trace->data.isDirty());
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setTraceData(true, {m_trace.get()});
        node.render();
    }));
    QVERIFY(m_trace->data.isDirty());
    QVERIFY(m_trace->data.dirtyRange().isEmpty());
}

void tst_RenderNodeTraces::listIsCopied()
{
    const GlProbe::Log log;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        std::vector<AbstractTrace *> traces = {m_trace.get()};
        node.setTraceData(true, traces);
        traces.clear();
        node.render();
    }));
    QCOMPARE(log.count("glDrawArrays"), 1);
}

void tst_RenderNodeTraces::buffersStayUntilTheListIsNew()
{
    PixelTrace other(size, DrawType::LineStrip, 5.0F, Qt::blue);
    other.setPoints(std::vector<QPointF>{{20.0, 20.5}, {180.0, 20.5}});
    const auto buffers = [] {
        return GlProbe::liveObjects().filter(QRegularExpression(QStringLiteral("^buffer"))).size();
    };
    QList<qsizetype> counts;
    const GlProbe::Log log;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setTraceData(true, {m_trace.get(), &other});
        node.render();
        counts.append(buffers());
        // Another list without saying so: it is the one that is drawn from now on.
        other.data.setWidth(3.0F);
        node.setTraceData(false, {&other});
        node.render();
        counts.append(buffers());
        node.setTraceData(true, {&other});
        node.render();
        counts.append(buffers());
        node.setTraceData(true, {});
        counts.append(buffers());
    }));
    QCOMPARE(counts, QList<qsizetype>({2, 2, 1, 0}));
    QCOMPARE(log.count("glDrawArrays"), 2 + 1 + 1);
    QCOMPARE(log.count("glBufferSubData"), 2);
}

void tst_RenderNodeTraces::renderWithoutTraces()
{
    const int made = GlProbe::objectsMade();
    const GlProbe::Log log;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setRect({0.0, 0.0, 200.0, 100.0});
        node.setTraceData(true, {});
        node.setAntialiasing(true);
        node.render();
    }));
    QCOMPARE(GlProbe::objectsMade(), made);
    QCOMPARE(log.count("glClear"), 0);

    // The image collapses with the last trace, whatever rectangle was asked for.
    QRectF rect(1.0, 2.0, 3.0, 4.0);
    QList<int> clears;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTraceData(true, {m_trace.get()});
        node.render();
        const auto note = [&] { clears.append(log.count("glClear")); };
        note();
        node.setTraceData(true, {});
        node.render();
        rect = imageOf(node)->rect();
        note();
        node.setTraceData(true, {});
        node.render();
        node.render();
        note();
    }));
    QCOMPARE(rect, QRectF());
    QVERIFY(clears[1] > clears[0]);
    QCOMPARE(clears[2], clears[1]);
    QCOMPARE(ExpectedPicture(size).compare(m_window->grabWindow()), QString());
}

QTEST_MAIN(tst_RenderNodeTraces)

#include "tst_rendernodetraces.moc"
