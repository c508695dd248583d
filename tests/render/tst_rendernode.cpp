// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"
#include "RenderNodeItem.h"

#include <ChartsLibrary/ChartNode.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtQuick/QSGImageNode>
#include <QtQuick/QSGTexture>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

/*! The renderer's interface, driven by hand, without a chart. */
class tst_RenderNode : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void freshNode();
    void nodeTree();
    void rectBeforeTheFirstDraw_data();
    void rectBeforeTheFirstDraw();
    void rectAfterTheFirstDraw();
    void imageNode();
    void sameTextureSizeRebuilds();
    void antialiasingRebuildsOnChange();
    void responsesAreHandedOutOnce();
    void deletedWithEventsQueued();

private:
    [[nodiscard]] static std::vector<std::unique_ptr<QMouseEvent>> someEvents(int count);
    [[nodiscard]] static QSGImageNode *imageOf(OpenGLRenderNode &node)
    {
        return static_cast<QSGImageNode *>(node.firstChild());
    }

    static constexpr QSize size = {200, 100};
    std::unique_ptr<ChartWindow> m_window;
    RenderNodeItem *m_item = nullptr;
    std::unique_ptr<PixelTrace> m_trace;
};

void tst_RenderNode::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    m_window = std::make_unique<ChartWindow>(size, ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
    m_item = new RenderNodeItem(*m_window);
    m_trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, Qt::red);
    m_trace->setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
}

void tst_RenderNode::cleanup()
{
    m_window.reset();
    m_trace.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

std::vector<std::unique_ptr<QMouseEvent>> tst_RenderNode::someEvents(int count)
{
    std::vector<std::unique_ptr<QMouseEvent>> events;
    for (int i = 0; i < count; ++i) {
        const QPointF position(10.0 * i, 50.0);
        events.push_back(std::make_unique<QMouseEvent>(QEvent::MouseButtonPress, position, position,
                Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
    return events;
}

void tst_RenderNode::freshNode()
{
    QSize textureSize;
    std::size_t responses = 99;
    std::size_t again = 99;
    int children = -1;
    const int made = GlProbe::objectsMade();
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        textureSize = node.textureSize();
        responses = node.takeMouseEventResponses().size();
        again = node.takeMouseEventResponses().size();
        children = node.childCount();
    }));
    QCOMPARE(textureSize, QSize(1, 1));
    QCOMPARE(responses, std::size_t(0));
    QCOMPARE(again, std::size_t(0));
    QCOMPARE(children, 0);
    QCOMPARE(GlProbe::objectsMade(), made);
}

void tst_RenderNode::nodeTree()
{
    bool isRoot = false;
    bool isOwned = false;
    bool isOnlyChild = false;
    bool isItsThread = false;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        // Both of its bases have parents.
        QSGNode *parent = node.QSGNode::parent();
        isRoot = node.type() == QSGNode::RootNodeType && parent->type() == QSGNode::RootNodeType;
        isOwned = node.flags().testFlag(QSGNode::OwnedByParent);
        isOnlyChild = parent->childCount() == 1
                      && static_cast<ChartNode *>(parent)->renderNode() == &node;
        isItsThread = node.thread() == QThread::currentThread();
    }));
    QVERIFY(isRoot);
    QVERIFY(isOwned);
    QVERIFY(isOnlyChild);
    QVERIFY(isItsThread);
}

void tst_RenderNode::rectBeforeTheFirstDraw_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QRectF>("shown");

    QTest::newRow("plain") << QRectF(0.0, 0.0, 200.0, 100.0) << QRectF(0.0, 0.0, 200.0, 100.0);
    QTest::newRow("offset") << QRectF(-3.5, 4.25, 20.5, 0.5) << QRectF(-3.5, 4.25, 20.5, 0.5);
    QTest::newRow("null") << QRectF() << QRectF();
    QTest::newRow("no width") << QRectF(5.0, 5.0, 0.0, 100.0) << QRectF();
    QTest::newRow("no height") << QRectF(5.0, 5.0, 100.0, 0.0) << QRectF();
    QTest::newRow("negative") << QRectF(5.0, 5.0, -10.0, 10.0) << QRectF();
}

void tst_RenderNode::rectBeforeTheFirstDraw()
{
    QFETCH(QRectF, rect);
    QFETCH(QRectF, shown);

    int childrenBefore = -1;
    int childrenAfter = -1;
    QRectF imageRect(1.0, 2.0, 3.0, 4.0);
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setRect(rect);
        node.setTraceData(true, {m_trace.get()});
        childrenBefore = node.childCount();
        node.render();
        childrenAfter = node.childCount();
        imageRect = imageOf(node)->rect();
    }));
    QCOMPARE(childrenBefore, 0);
    QCOMPARE(childrenAfter, 1);
    QCOMPARE(imageRect, shown);
}

void tst_RenderNode::rectAfterTheFirstDraw()
{
    const std::vector<QRectF> rects = {{1.0, 2.0, 3.0, 4.0}, {}, {5.0, 5.0, -10.0, 10.0}};
    std::vector<QRectF> shown;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setRect({0.0, 0.0, 200.0, 100.0});
        node.setTraceData(true, {m_trace.get()});
        node.render();
        for (const QRectF &rect : rects) {
            node.setRect(rect);
            shown.push_back(imageOf(node)->rect());
        }
    }));
    QCOMPARE(shown, rects);
}

void tst_RenderNode::imageNode()
{
    QSGImageNode *first = nullptr;
    QSGImageNode *second = nullptr;
    QSGTexture::Filtering filtering = QSGTexture::None;
    QSGImageNode::TextureCoordinatesTransformMode transform;
    bool isOwned = false;
    bool hasAlpha = false;
    QSize firstSize;
    QSize secondSize;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setRect({0.0, 0.0, 200.0, 100.0});
        node.setTraceData(true, {m_trace.get()});
        node.render();
        first = imageOf(node);
        filtering = first->filtering();
        transform = first->textureCoordinatesTransform();
        isOwned = first->flags().testFlag(QSGNode::OwnedByParent);
        hasAlpha = first->texture()->hasAlphaChannel();
        firstSize = first->texture()->textureSize();
    }));
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize({50, 60});
        node.render();
        second = imageOf(node);
        secondSize = second->texture()->textureSize();
    }));
    QCOMPARE(filtering, QSGTexture::Linear);
    QCOMPARE(transform,
            QSGImageNode::TextureCoordinatesTransformMode(QSGImageNode::MirrorVertically));
    QVERIFY(isOwned);
    QVERIFY(hasAlpha);
    QCOMPARE(firstSize, size);
    QCOMPARE(second, first);
    QCOMPARE(secondSize, QSize(50, 60));
}

void tst_RenderNode::sameTextureSizeRebuilds()
{
    const GlProbe::Log log;
    QList<int> made;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        const auto note = [&] { made.append(log.count("glGenFramebuffers")); };
        node.setTextureSize(size);
        node.setRect({0.0, 0.0, 200.0, 100.0});
        node.setTraceData(true, {m_trace.get()});
        note();
        node.render();
        note();
        node.render();
        note();
        // The same size, twice: one rebuild, and not before the next draw.
        node.setTextureSize(size);
        node.setTextureSize(size);
        note();
        node.render();
        note();
        node.render();
        note();
    }));
    QCOMPARE(made, QList<int>({0, 2, 2, 2, 4, 4}));
    QCOMPARE(log.count("glDrawArrays"), 2);

    ExpectedPicture expected(size);
    expected.addLine({20.0, 50.5}, {180.0, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(m_window->grabWindow()), QString());
}

void tst_RenderNode::antialiasingRebuildsOnChange()
{
    const GlProbe::Log log;
    QList<int> draws;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize(size);
        node.setTraceData(true, {m_trace.get()});
        for (const bool isEnabled : {false, false, true, true, false}) {
            node.setAntialiasing(isEnabled);
            node.render();
            draws.append(log.count("glDrawArrays"));
        }
    }));
    QCOMPARE(draws, QList<int>({1, 1, 2, 2, 3}));
    QCOMPARE(log.count("glGenFramebuffers"), 2 + 3 + 2);
}

void tst_RenderNode::responsesAreHandedOutOnce()
{
    auto events = someEvents(3);
    const std::vector<const QMouseEvent *> pushed = {
            events[0].get(), events[1].get(), events[2].get()};
    std::size_t left = 99;
    std::size_t tooEarly = 99;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.pushMouseEvents(std::move(events));
        left = events.size();
        node.pushMouseEvents({});
        node.render();
        tooEarly = node.takeMouseEventResponses().size();
    }));
    QCOMPARE(left, std::size_t(0));
    QCOMPARE(tooEarly, std::size_t(0));

    // The frame that was drawn meanwhile has resolved them: without a trace all are on the ground.
    std::vector<MouseEventResponse> responses;
    std::size_t again = 99;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        responses = node.takeMouseEventResponses();
        again = node.takeMouseEventResponses().size();
    }));
    QCOMPARE(again, std::size_t(0));
    QCOMPARE(responses.size(), pushed.size());
    for (std::size_t i = 0; i < pushed.size(); ++i) {
        QCOMPARE(responses[i].event.get(), pushed[i]);
        QCOMPARE(static_cast<int>(responses[i].target), 1);
        QCOMPARE(responses[i].trace, static_cast<AbstractTrace *>(nullptr));
    }
}

void tst_RenderNode::deletedWithEventsQueued()
{
    // Answered and unanswered events go with the renderer; a leak checker sees if they do not.
    QVERIFY(m_item->run([](OpenGLRenderNode &node) { node.pushMouseEvents(someEvents(2)); }));
    QVERIFY(m_item->run([](OpenGLRenderNode &node) { node.pushMouseEvents(someEvents(2)); }));
    std::size_t responses = 99;
    QVERIFY(m_item->runAfresh([&](OpenGLRenderNode &node) {
        responses = node.takeMouseEventResponses().size();
        node.pushMouseEvents(someEvents(2));
    }));
    QCOMPARE(responses, std::size_t(0));
}

QTEST_MAIN(tst_RenderNode)

#include "tst_rendernode.moc"
