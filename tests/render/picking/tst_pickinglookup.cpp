// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelBlock.h"
#include "RenderNodeItem.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! Which trace the renderer finds at a position, driven by hand, without a chart. */
class tst_PickingLookup : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void findsInPixelsOfTheTexture_data();
    void findsInPixelsOfTheTexture();
    void otherPositionsPlayNoPart();
    void findsNothingWithoutTraces();
    void findsNothingBeforeTheFirstImage();
    void findsWhatWasDrawnLast();
    void sizeOfTheImage();

private:
    [[nodiscard]] static std::unique_ptr<QMouseEvent> eventAt(const QPointF &place)
    {
        return std::make_unique<QMouseEvent>(QEvent::MouseButtonPress, place, place, place,
                Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
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

void tst_PickingLookup::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_window = std::make_unique<ChartWindow>(size, ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
    m_item = new RenderNodeItem(*m_window);
    m_trace = std::make_unique<PixelBlock>(size, QRect(50, 40, 20, 20));
}

void tst_PickingLookup::cleanup()
{
    m_window.reset();
    m_trace.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_PickingLookup::findsInPixelsOfTheTexture_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<int>("hit");

    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto row = [](const char *name, double x, double y, int hit) {
        QTest::newRow(name) << QPointF(x, y) << hit;
    };
    // The block has the columns 50 to 69, and the rows 40 to 59 from the bottom of 100.
    row("inside", 60.0, 50.0, 1);
    row("left half up", 49.5, 50.0, 1);
    row("left less than half", 49.49999, 50.0, 0);
    row("right less than half", 69.49999, 50.0, 1);
    row("right half up", 69.5, 50.0, 0);
    row("top half up", 60.0, 40.5, 1);
    row("top less than half", 60.0, 40.49999, 0);
    row("bottom", 60.0, 60.0, 1);
    row("bottom less than half", 60.0, 60.49999, 1);
    row("bottom half up", 60.0, 60.5, 0);
    row("upper left", 50.0, 41.0, 1);
    row("upper right", 69.0, 41.0, 1);
    row("lower left", 50.0, 60.0, 1);
    row("lower right", 69.0, 60.0, 1);
    // 2 is the ground over the whole image.
    row("first column", 0.0, 50.0, 2);
    row("before the first column", -1.0, 50.0, -1);
    row("half a column before the first", -0.5, 50.0, -1);
    row("less than half a column before the first", -0.49999, 50.0, 2);
    row("last column", 199.0, 50.0, 2);
    row("after the last column", 200.0, 50.0, -1);
    row("half a column before the end", 199.5, 50.0, -1);
    row("uppermost row", 100.0, 1.0, 2);
    row("above", 100.0, 0.0, -1);
    row("half a row above", 100.0, 0.5, 2);
    row("less than half a row", 100.0, 0.49999, -1);
    row("far above", 100.0, -1.0, -1);
    row("lowest row", 100.0, 100.0, 2);
    row("below", 100.0, 101.0, -1);
    row("half a row below", 100.0, 100.5, -1);
    row("less than half a row below", 100.0, 100.49999, 2);
    row("origin", 0.0, 0.0, -1);
    row("far away", 1e9, 1e9, -1);
    row("far away on the other side", -1e9, -1e9, -1);
    row("beyond an int", 1e300, 50.0, -1);
    row("beyond a negative int", 60.0, -1e300, -1);
    row("infinite", 60.0, infinity, -1);
    row("negative infinite", -infinity, 50.0, -1);
}

void tst_PickingLookup::findsInPixelsOfTheTexture()
{
    QFETCH(QPointF, place);
    QFETCH(int, hit);

    // Two images: with the ground, for the edges, and without.
    const auto ground = std::make_unique<PixelBlock>(size, QRect(QPoint(0, 0), size));
    AbstractTrace *alone = nullptr;
    AbstractTrace *above = nullptr;
    AbstractTrace *again = nullptr;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        const auto event = eventAt(place);
        draw(node, {m_trace.get()});
        node.renderSelection();
        alone = node.findTraceAtEvent(event.get());
        draw(node, {ground.get(), m_trace.get()});
        node.renderSelection();
        above = node.findTraceAtEvent(event.get());
        again = node.findTraceAtEvent(event.get());
    }));
    AbstractTrace *const block = m_trace.get();
    QCOMPARE(alone, hit == 1 ? block : nullptr);
    QCOMPARE(above, hit == 1 ? block : hit == -1 ? nullptr : ground.get());
    QCOMPARE(again, above);
}

void tst_PickingLookup::otherPositionsPlayNoPart()
{
    AbstractTrace *inside = nullptr;
    AbstractTrace *outside = m_trace.get();
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        draw(node, {m_trace.get()});
        node.renderSelection();
        const QPointF hit(60.0, 50.0);
        const QPointF miss(10.0, 10.0);
        QMouseEvent first(QEvent::MouseButtonPress, hit, miss, miss, Qt::LeftButton, Qt::LeftButton,
                Qt::NoModifier);
        inside = node.findTraceAtEvent(&first);
        QMouseEvent second(QEvent::MouseButtonPress, miss, hit, hit, Qt::LeftButton, Qt::LeftButton,
                Qt::NoModifier);
        outside = node.findTraceAtEvent(&second);
    }));
    QCOMPARE(inside, static_cast<AbstractTrace *>(m_trace.get()));
    QCOMPARE(outside, static_cast<AbstractTrace *>(nullptr));
}

void tst_PickingLookup::findsNothingWithoutTraces()
{
    AbstractTrace *fresh = m_trace.get();
    AbstractTrace *emptied = m_trace.get();
    AbstractTrace *filledAgain = nullptr;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        const auto event = eventAt({60.0, 50.0});
        fresh = node.findTraceAtEvent(event.get());
        draw(node, {m_trace.get()});
        node.renderSelection();
        node.setTraceData(true, {});
        emptied = node.findTraceAtEvent(event.get());
        // The image is as it was.
        node.setTraceData(true, {m_trace.get()});
        filledAgain = node.findTraceAtEvent(event.get());
    }));
    QCOMPARE(fresh, static_cast<AbstractTrace *>(nullptr));
    QCOMPARE(emptied, static_cast<AbstractTrace *>(nullptr));
    QCOMPARE(filledAgain, static_cast<AbstractTrace *>(m_trace.get()));
}

void tst_PickingLookup::findsNothingBeforeTheFirstImage()
{
    AbstractTrace *notDrawn = m_trace.get();
    AbstractTrace *drawnForTheScreen = m_trace.get();
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        const auto event = eventAt({60.0, 50.0});
        node.setTextureSize(size);
        node.setTraceData(true, {m_trace.get()});
        notDrawn = node.findTraceAtEvent(event.get());
        node.render();
        drawnForTheScreen = node.findTraceAtEvent(event.get());
    }));
    QCOMPARE(notDrawn, static_cast<AbstractTrace *>(nullptr));
    QCOMPARE(drawnForTheScreen, static_cast<AbstractTrace *>(nullptr));
}

void tst_PickingLookup::findsWhatWasDrawnLast()
{
    const auto other = std::make_unique<PixelBlock>(size, QRect(100, 40, 20, 20));
    QList<AbstractTrace *> found;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        const auto left = eventAt({60.0, 50.0});
        const auto right = eventAt({110.0, 50.0});
        const auto note = [&] {
            found.append({node.findTraceAtEvent(left.get()), node.findTraceAtEvent(right.get())});
        };
        draw(node, {m_trace.get(), other.get()});
        node.renderSelection();
        note();
        // Fewer traces: the numbers of the others are not taken from the pass before.
        node.setTraceData(true, {other.get()});
        node.renderSelection();
        note();
        m_trace->data.setVisible(false);
        node.setTraceData(true, {m_trace.get(), other.get()});
        node.renderSelection();
        note();
        m_trace->data.setVisible(true);
        node.renderSelection();
        note();
    }));
    AbstractTrace *const none = nullptr;
    QCOMPARE(found, QList<AbstractTrace *>({m_trace.get(), other.get(), none, other.get(), none,
                            other.get(), m_trace.get(), other.get()}));
}

void tst_PickingLookup::sizeOfTheImage()
{
    // Positions are in pixels of the image, whatever size it is shown in, and its height counts for
    // the rows: the middle of the data lies at 200, 25 in an image of 400 x 50.
    PixelTrace trace(size, DrawType::Points, 9.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{100.0, 50.0}});
    QList<AbstractTrace *> found;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        node.setTextureSize({400, 50});
        node.setRect({0.0, 0.0, 200.0, 100.0});
        node.setTraceData(true, {&trace});
        node.render();
        node.renderSelection();
        for (const QPointF &place : {QPointF(200.0, 25.0), QPointF(100.0, 50.0),
                     QPointF(100.0, 25.0), QPointF(200.0, 15.0), QPointF(200.0, 35.0)})
            found.append(node.findTraceAtEvent(eventAt(place).get()));
    }));
    QCOMPARE(found, QList<AbstractTrace *>({&trace, nullptr, nullptr, nullptr, nullptr}));
}

QTEST_MAIN(tst_PickingLookup)

#include "tst_pickinglookup.moc"
