// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "SelectionCosts.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

using Change = std::function<void(PointedWindow &, PixelTrace &)>;
Q_DECLARE_METATYPE(Change)

namespace {

// Not defined by the headers of all flavours alike.
constexpr int glRgba = 0x1908;
constexpr int glUnsignedByte = 0x1401;

} // namespace

/*! When the selection image is drawn, and what a mouse event costs. */
class tst_PickingImage : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void restingMouse();
    void restingMouseOverTheChart();
    void onePassForAllEvents_data();
    void onePassForAllEvents();
    void onePixelForEachEvent();
    void aloneAndNeverDrawn();
    void aloneInTheOldImage();
    void changedBeforeTheEvent();
    void whatBringsAFreshImage_data();
    void whatBringsAFreshImage();
    void anyTraceBringsAFreshImage();
    void freshEachFrame();

private:
    [[nodiscard]] Costs costsOf(int frames) { return m_costs->costsOf(frames); }
    [[nodiscard]] QStringList answers() { return m_costs->answers(); }

    static constexpr QPointF onLow = CostWindow::onLow;
    static constexpr QPointF onHigh = CostWindow::onHigh;
    static constexpr QPointF onNone = CostWindow::onNone;
    static constexpr QPointF afterMove = CostWindow::afterMove;
    static constexpr Costs nothing = CostWindow::nothing;
    static constexpr Costs visualPass = CostWindow::visualPass;

    std::unique_ptr<CostWindow> m_costs;
    PointedWindow *m_window = nullptr;
    PixelTrace *m_low = nullptr;
    PixelTrace *m_high = nullptr;
};

void tst_PickingImage::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_costs = std::make_unique<CostWindow>();
    m_window = &m_costs->window;
    QVERIFY2(m_costs->start(), m_window->error());
    m_low = m_costs->low;
    m_high = m_costs->high;
}

void tst_PickingImage::cleanup()
{
    m_costs.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_PickingImage::restingMouse()
{
    // Without an event nothing is drawn for selection, nothing read.
    QCOMPARE(costsOf(5), nothing);
    for (int i = 0; i < 5; ++i) {
        m_low->data.dirtyRange().push({0, 1});
        QCOMPARE(costsOf(1), Costs({.passes = 1, .draws = 2, .uploads = 1}));
    }
    m_low->data.setColor(Qt::blue);
    QCOMPARE(costsOf(1), visualPass);
    QCOMPARE(costsOf(3), nothing);
    QCOMPARE(m_window->log.take(), QStringList());
}

void tst_PickingImage::restingMouseOverTheChart()
{
    m_low->data.dirtyRange().push({0, 1});
    m_window->send(QEvent::MouseMove, onLow);
    QVERIFY2(m_window->answerEvents(), m_window->error());
    QCOMPARE(m_window->log.take(), QStringList({u"low hovered true"_s, u"chart hovered true"_s}));

    // The line leaves from under the pointer, which stays where it is: nobody asks.
    m_costs->moveLow();
    QCOMPARE(costsOf(1), Costs({.passes = 1, .draws = 2, .uploads = 1}));
    for (int i = 0; i < 5; ++i) {
        m_low->data.dirtyRange().push({0, 1});
        QCOMPARE(costsOf(1), Costs({.passes = 1, .draws = 2, .uploads = 1}));
    }
    // Moved to where it is already.
    m_window->send(QEvent::MouseMove, onLow);
    QCOMPARE(costsOf(2), nothing);
    QCOMPARE(m_window->log.take(), QStringList());
}

void tst_PickingImage::onePassForAllEvents_data()
{
    QTest::addColumn<int>("count");

    for (const int count : {1, 2, 10, 500})
        QTest::addRow("%d", count) << count;
}

void tst_PickingImage::onePassForAllEvents()
{
    QFETCH(int, count);

    QStringList expected;
    for (int i = 0; i < count; ++i) {
        m_window->pressInChart(i % 2 == 0 ? onLow : onHigh);
        expected.append(i % 2 == 0 ? u"low pressed"_s : u"high pressed"_s);
    }
    m_low->data.dirtyRange().push({0, 1});
    // The pass for the screen has uploaded what the one for selection needs.
    QCOMPARE(costsOf(1),
            Costs({.passes = 2, .selectionPasses = 1, .draws = 4, .uploads = 1, .reads = count}));
    QCOMPARE(costsOf(1), nothing);
    QCOMPARE(answers(), expected);
    QCOMPARE(costsOf(3), nothing);
    QCOMPARE(answers(), QStringList());
}

void tst_PickingImage::onePixelForEachEvent()
{
    const QList<QPoint> places = {{0, 1}, {0, 100}, {199, 1}, {199, 100}, {17, 42}, {100, 50}};
    for (const QPoint &place : places)
        m_window->pressInChart(place);
    m_low->data.dirtyRange().push({0, 1});
    QCOMPARE(costsOf(1).reads, static_cast<int>(places.size()));
    const auto reads = m_costs->log.calls("glReadPixels");
    for (qsizetype i = 0; i < places.size(); ++i) {
        const GlProbe::Call &read = reads[static_cast<std::size_t>(i)];
        QCOMPARE(QPoint(read.integer(0), read.integer(1)),
                QPoint(places[i].x(), 100 - places[i].y()));
        QCOMPARE(QSize(read.integer(2), read.integer(3)), QSize(1, 1));
        QCOMPARE(read.integer(4), glRgba);
        QCOMPARE(read.integer(5), glUnsignedByte);
    }
}

void tst_PickingImage::aloneAndNeverDrawn()
{
    // There is no selection image yet, and an event alone is no reason to draw one.
    m_window->pressInChart(onLow);
    m_window->pressInChart(onHigh);
    QCOMPARE(costsOf(1), Costs({.reads = 2}));
    QCOMPARE(answers(), QStringList({u"chart pressed"_s, u"chart pressed"_s}));
    // Nor is the next one.
    m_window->pressInChart(onLow);
    QCOMPARE(costsOf(1), Costs({.reads = 1}));
    QCOMPARE(answers(), QStringList({u"chart pressed"_s}));
}

void tst_PickingImage::aloneInTheOldImage()
{
    QCOMPARE(m_window->hits({onLow, onHigh, afterMove}),
            QStringList({u"low"_s, u"high"_s, u"chart"_s}));

    // Data at rest, image at rest: exact answers for nothing but the reads.
    m_window->pressInChart(onLow);
    m_window->pressInChart(onNone);
    m_window->pressInChart(onHigh);
    QCOMPARE(costsOf(1), Costs({.reads = 3}));
    QCOMPARE(answers(), QStringList({u"low pressed"_s, u"chart pressed"_s, u"high pressed"_s}));

    // The data move while no event waits: the old picture still answers.
    m_costs->moveLow();
    QCOMPARE(costsOf(1), Costs({.passes = 1, .draws = 2, .uploads = 1}));
    for (int i = 0; i < 2; ++i) {
        m_window->pressInChart(onLow);
        m_window->pressInChart(afterMove);
        QCOMPARE(costsOf(1), Costs({.reads = 2}));
        QCOMPARE(answers(), QStringList({u"low pressed"_s, u"chart pressed"_s}));
    }

    // With the next change, whatever it is, the new one.
    m_high->data.setColor(Qt::blue);
    m_window->pressInChart(onLow);
    m_window->pressInChart(afterMove);
    QCOMPARE(costsOf(1), Costs({.passes = 2, .selectionPasses = 1, .draws = 4, .reads = 2}));
    QCOMPARE(answers(), QStringList({u"chart pressed"_s, u"low pressed"_s}));
}

void tst_PickingImage::changedBeforeTheEvent()
{
    // Change after change without an event, then one change with: one pass makes up for all.
    for (int i = 0; i < 3; ++i) {
        m_low->data.dirtyRange().push({0, 1});
        QCOMPARE(costsOf(1).selectionPasses, 0);
    }
    m_costs->moveLow();
    m_window->pressInChart(afterMove);
    QCOMPARE(costsOf(1),
            Costs({.passes = 2, .selectionPasses = 1, .draws = 4, .uploads = 1, .reads = 1}));
    QCOMPARE(answers(), QStringList({u"low pressed"_s}));
}

void tst_PickingImage::whatBringsAFreshImage_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isFresh");

    const auto row = [](const char *name, bool isFresh, const Change &change) {
        QTest::newRow(name) << change << isFresh;
    };
    const auto rowOfData = [&row](const char *name, bool isFresh, void (*change)(TraceData &)) {
        row(name, isFresh, [change](PointedWindow &, PixelTrace &trace) { change(trace.data); });
    };
    rowOfData("nothing", false, [](TraceData &) {});
    rowOfData("changed range", true, [](TraceData &data) { data.dirtyRange().push({1, 1}); });
    rowOfData("empty changed range", false, [](TraceData &data) {
        data.dirtyRange().push({1, 0});
    });
    rowOfData("filled range", false, [](TraceData &data) { data.filledRange().push({0, 1}); });
    rowOfData("colour", true, [](TraceData &data) { data.setColor(Qt::blue); });
    rowOfData("same colour", false, [](TraceData &data) { data.setColor(Qt::red); });
    rowOfData("width", true, [](TraceData &data) {
        data.setWidth(5.0F);
        data.setWidth(4.0F);
    });
    rowOfData("same width", false, [](TraceData &data) { data.setWidth(4.0F); });
    rowOfData("visibility", true, [](TraceData &data) {
        data.setVisible(false);
        data.setVisible(true);
    });
    rowOfData("squared", true, [](TraceData &data) {
        data.setSquaredViewPort(true);
        data.setSquaredViewPort(false);
    });
    rowOfData("view port", true, [](TraceData &data) {
        data.setViewPort({});
        data.setViewPort({0.0F, 0.0F, 200.0F, 100.0F});
    });
    rowOfData("bounding", true, [](TraceData &data) {
        data.setBoundingX(BoundingMethod::Clamp);
        data.setBoundingX(BoundingMethod::Unbounded);
    });
    rowOfData("draw type", false, [](TraceData &data) {
        data.setDrawType(DrawType::Points);
        data.setDrawType(DrawType::LineStrip);
    });
    row("z", false, [](PointedWindow &, PixelTrace &trace) { trace.setZ(0.5); });
    row("name", false, [](PointedWindow &, PixelTrace &trace) { trace.setName(u"name"_s); });
    row("line width of the trace", false,
            [](PointedWindow &, PixelTrace &trace) { trace.setLineWidth(9.0); });
    row("list", true, [](PointedWindow &window, PixelTrace &trace) {
        window.chart()->removeTrace(&trace);
        window.chart()->addTrace(&trace);
    });
    row("unknown trace removed", false, [](PointedWindow &window, PixelTrace &) {
        TestTrace unknown;
        window.chart()->removeTrace(&unknown);
    });
    row("chart moved", false, [](PointedWindow &window, PixelTrace &) {
        window.chart()->setPosition({3.0, 4.0});
    });
    row("same size", false, [](PointedWindow &window, PixelTrace &) {
        window.chart()->setSize({199.9, 99.9});
    });
    row("size", true, [](PointedWindow &window, PixelTrace &) {
        window.chart()->setSize({199.0, 99.0});
    });
}

void tst_PickingImage::whatBringsAFreshImage()
{
    QFETCH(Change, change);
    QFETCH(bool, isFresh);

    // An image is there already; afterwards the lines are where they were.
    QCOMPARE(m_window->hits({onLow}), QStringList({u"low"_s}));
    change(*m_window, *m_low);
    m_window->pressInChart(onLow);
    m_window->pressInChart(onHigh);
    const Costs costs = costsOf(1);
    QCOMPARE(costs.passes, isFresh ? 2 : 0);
    QCOMPARE(costs.selectionPasses, isFresh ? 1 : 0);
    QCOMPARE(costs.draws, isFresh ? 4 : 0);
    QCOMPARE(costs.reads, 2);
    QCOMPARE(answers(), QStringList({u"low pressed"_s, u"high pressed"_s}));
    QCOMPARE(costsOf(2), nothing);
}

void tst_PickingImage::anyTraceBringsAFreshImage()
{
    QCOMPARE(m_window->hits({onLow}), QStringList({u"low"_s}));
    for (PixelTrace *trace : {m_low, m_high}) {
        trace->data.dirtyRange().push({0, 1});
        m_window->pressInChart(onNone);
        QCOMPARE(costsOf(1),
                Costs({.passes = 2, .selectionPasses = 1, .draws = 4, .uploads = 1, .reads = 1}));
    }

    // One that is not drawn does as well; its data are not uploaded, so it stays changed.
    m_high->data.setVisible(false);
    QCOMPARE(costsOf(1), Costs({.passes = 1, .draws = 1}));
    m_high->data.dirtyRange().push({0, 1});
    for (int i = 0; i < 2; ++i) {
        m_window->pressInChart(onLow);
        const Costs costs = costsOf(1);
        QCOMPARE(costs.passes, 2);
        QCOMPARE(costs.draws, 2);
        QCOMPARE(costs.uploads, 0);
        QCOMPARE(costs.reads, 1);
    }
}

void tst_PickingImage::freshEachFrame()
{
    for (int i = 0; i < 5; ++i) {
        m_low->data.dirtyRange().push({0, 1});
        m_window->pressInChart(onLow);
        m_window->pressInChart(onHigh);
        QCOMPARE(costsOf(1),
                Costs({.passes = 2, .selectionPasses = 1, .draws = 4, .uploads = 1, .reads = 2}));
    }
}

QTEST_MAIN(tst_PickingImage)

#include "tst_pickingimage.moc"
