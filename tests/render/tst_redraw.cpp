// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace Charts;

using Change = std::function<void(PixelTrace &)>;
Q_DECLARE_METATYPE(Change)

/*! When the image is drawn again, and when it is left as it is. */
class tst_Redraw : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void attributes_data();
    void attributes();
    void drawTypeWaitsForAnotherChange();
    void zWaitsForAnotherChange();
    void oneFlagAFrame();
    void emptyChart();
    void lastTraceRemoved();
    void clearedOnceAndForAll();
    void addedAfterTheChartWasEmpty();
    void traceDestroyed();
    void chartResized();
    void chartMoved();
    void anotherItemRedraws();
    void ticksByItself();

private:
    /*! Passes are counted by their draw calls: one each for a trace without extra matrices. */
    static int drawsIn(ChartWindow &window, int frames);
    static bool settle(ChartWindow &window);
    static ExpectedPicture withLine(double height, const QColor &color);

    static constexpr QSize size = {200, 100};
};

void tst_Redraw::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Redraw::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

int tst_Redraw::drawsIn(ChartWindow &window, int frames)
{
    const GlProbe::Totals before = GlProbe::totals();
    for (int i = 0; i < frames; ++i) {
        if (!window.frame())
            return -1;
    }
    return static_cast<int>(GlProbe::totals().drawCalls - before.drawCalls);
}

/*! Lets frames pass until nothing is drawn any more: the attributes set before the first frame are
    still marked, one trace a frame. */
bool tst_Redraw::settle(ChartWindow &window)
{
    for (int i = 0; i < 20; ++i) {
        if (drawsIn(window, 1) == 0)
            return true;
    }
    return false;
}

ExpectedPicture tst_Redraw::withLine(double height, const QColor &color)
{
    ExpectedPicture expected(size);
    expected.addLine({20.0, height}, {180.0, height}, 5.0, color);
    return expected;
}

void tst_Redraw::attributes_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("draws");

    const auto row = [](const char *name, int draws, const Change &change) {
        QTest::newRow(name) << change << draws;
    };
    row("nothing", 0, [](PixelTrace &) {});
    row("colour", 1, [](PixelTrace &trace) { trace.data.setColor(Qt::blue); });
    row("same colour", 0, [](PixelTrace &trace) { trace.data.setColor(Qt::red); });
    row("alpha of the colour", 1,
            [](PixelTrace &trace) { trace.data.setColor(QColor(255, 0, 0, 9)); });
    row("width", 1, [](PixelTrace &trace) { trace.data.setWidth(2.0F); });
    row("nearly the same width", 0, [](PixelTrace &trace) { trace.data.setWidth(5.00002F); });
    row("invisible", 0, [](PixelTrace &trace) { trace.data.setVisible(false); });
    row("view port", 1, [](PixelTrace &trace) {
        trace.data.setViewPort({0.0F, 0.0F, 9.0F, 9.0F});
    });
    row("squared", 1, [](PixelTrace &trace) { trace.data.setSquaredViewPort(true); });
    row("bounding on x", 1,
            [](PixelTrace &trace) { trace.data.setBoundingX(BoundingMethod::Clamp); });
    row("bounding on y", 1,
            [](PixelTrace &trace) { trace.data.setBoundingY(BoundingMethod::Clamp); });
    row("data", 1, [](PixelTrace &trace) { trace.data.dirtyRange().push({0, 1}); });
    row("draw type", 0, [](PixelTrace &trace) { trace.data.setDrawType(DrawType::Points); });
    row("z", 0, [](PixelTrace &trace) { trace.setZ(5.0); });
    row("name", 0, [](PixelTrace &trace) { trace.setName(QStringLiteral("name")); });
    row("the trace's colour", 0, [](PixelTrace &trace) { trace.setColor(Qt::blue); });
    row("filled range only", 0, [](PixelTrace &trace) { trace.data.filledRange().pop(true); });
}

void tst_Redraw::attributes()
{
    QFETCH(Change, change);
    QFETCH(int, draws);

    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(settle(window));

    change(trace);
    QCOMPARE(drawsIn(window, 3), draws);
    QVERIFY(!trace.data.isDirty());
}

void tst_Redraw::drawTypeWaitsForAnotherChange()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(settle(window));

    trace.data.setDrawType(DrawType::Points);
    QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());
    QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());

    trace.data.setColor(Qt::blue);
    ExpectedPicture points(size);
    // Their centres lie between two pixels.
    points.setSlack(0.6);
    points.addPoint({20.0, 50.5}, 5.0, Qt::blue);
    points.addPoint({180.0, 50.5}, 5.0, Qt::blue);
    QCOMPARE(points.compare(window.picture()), QString());
}

void tst_Redraw::zWaitsForAnotherChange()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace red(size, DrawType::LineStrip, 5.0F, Qt::red);
    PixelTrace blue(size, DrawType::LineStrip, 5.0F, Qt::blue);
    for (PixelTrace *trace : {&red, &blue}) {
        trace->setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
        window.chart()->addTrace(trace);
    }
    blue.setZ(1.0);
    QVERIFY2(window.start(), window.error());
    QVERIFY(settle(window));
    QCOMPARE(withLine(50.5, Qt::blue).compare(window.picture()), QString());

    // Sorted at once, but shown with the next pass, whichever trace asks for it.
    red.setZ(2.0);
    QCOMPARE(withLine(50.5, Qt::blue).compare(window.picture()), QString());
    QCOMPARE(withLine(50.5, Qt::blue).compare(window.picture()), QString());
    blue.data.dirtyRange().push({0, 1});
    QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());
}

void tst_Redraw::oneFlagAFrame()
{
    ChartWindow window(size);
    std::vector<std::unique_ptr<PixelTrace>> traces;
    for (int i = 0; i < 3; ++i) {
        traces.push_back(std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, Qt::red));
        traces.back()->setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
        traces.back()->setZ(i);
        window.chart()->addTrace(traces.back().get());
    }
    const auto flags = [&traces] {
        QList<bool> result;
        for (const auto &trace : traces)
            result.append(trace->data.isDirty());
        return result;
    };
    // The frame that brings a new list clears no flag.
    QVERIFY2(window.start(), window.error());
    QCOMPARE(flags(), QList<bool>({true, true, true}));
    // Each later one clears the first that is set, and draws all traces.
    QCOMPARE(drawsIn(window, 1), 3);
    QCOMPARE(flags(), QList<bool>({false, true, true}));
    QCOMPARE(drawsIn(window, 1), 3);
    QCOMPARE(flags(), QList<bool>({false, false, true}));
    QCOMPARE(drawsIn(window, 1), 3);
    QCOMPARE(flags(), QList<bool>({false, false, false}));
    QCOMPARE(drawsIn(window, 3), 0);

    traces[1]->data.setWidth(2.0F);
    traces[2]->data.setWidth(2.0F);
    QCOMPARE(drawsIn(window, 1), 3);
    QCOMPARE(flags(), QList<bool>({false, false, true}));
    QCOMPARE(drawsIn(window, 5), 3);
    QCOMPARE(flags(), QList<bool>({false, false, false}));
}

void tst_Redraw::emptyChart()
{
    const int made = GlProbe::objectsMade();
    const GlProbe::Totals before = GlProbe::totals();
    ChartWindow window(size);
    QVERIFY2(window.start(), window.error());
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
    QCOMPARE(GlProbe::objectsMade(), made);
    QCOMPARE(GlProbe::totals(), before);
}

void tst_Redraw::lastTraceRemoved()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace first(size, DrawType::LineStrip, 5.0F, Qt::red);
    PixelTrace second(size, DrawType::LineStrip, 5.0F, Qt::blue);
    first.setPoints(std::vector<QPointF>{{20.0, 30.5}, {180.0, 30.5}});
    second.setPoints(std::vector<QPointF>{{20.0, 70.5}, {180.0, 70.5}});
    window.chart()->addTrace(&first);
    window.chart()->addTrace(&second);
    QVERIFY2(window.start(), window.error());

    window.chart()->removeTrace(&first);
    QCOMPARE(withLine(70.5, Qt::blue).compare(window.picture()), QString());
    window.chart()->removeTrace(&second);
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
}

void tst_Redraw::clearedOnceAndForAll()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(settle(window));

    const GlProbe::Log log;
    window.chart()->removeTrace(&trace);
    QVERIFY2(window.frame(), window.error());
    QVERIFY(log.count("glClear") > 0);
    QCOMPARE(log.count("glDrawArrays"), 0);

    const GlProbe::Totals after = GlProbe::totals();
    for (int i = 0; i < 3; ++i)
        QVERIFY2(window.frame(), window.error());
    QCOMPARE(GlProbe::totals(), after);

    // Not for a list that changed and is still empty either.
    window.chart()->addTrace(&trace);
    window.chart()->removeTrace(&trace);
    QVERIFY2(window.frame(), window.error());
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(GlProbe::totals().drawCalls, after.drawCalls);
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
}

void tst_Redraw::addedAfterTheChartWasEmpty()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    QVERIFY2(window.start(), window.error());
    for (int i = 0; i < 3; ++i) {
        window.chart()->addTrace(&trace);
        QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());
        window.chart()->removeTrace(&trace);
        QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
    }
}

void tst_Redraw::traceDestroyed()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace stays(size, DrawType::LineStrip, 5.0F, Qt::red);
    stays.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&stays);
    auto goes = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, Qt::blue);
    goes->setPoints(std::vector<QPointF>{{20.0, 80.5}, {180.0, 80.5}});
    window.chart()->addTrace(goes.get());
    window.chart()->addTrace(goes.get());
    QVERIFY2(window.start(), window.error());

    goes.reset();
    QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());
}

void tst_Redraw::chartResized()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(settle(window));

    // Half the size: the same data in fewer pixels, from the window's top left.
    const GlProbe::Log log;
    window.chart()->setSize({100.0, 50.0});
    ExpectedPicture expected(size);
    expected.setSlack(0.6);
    expected.addLine({10.0, 75.25}, {90.0, 75.25}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
    QCOMPARE(log.count("glGenFramebuffers"), 2);
    QCOMPARE(log.count("glDeleteFramebuffers"), 2);
    QCOMPARE(log.calls("glViewport").at(0).integer(2), 100);
    QCOMPARE(log.count("glDrawArrays"), 1);
    // The vertices did not change.
    QCOMPARE(log.count("glBufferSubData"), 0);
    QCOMPARE(drawsIn(window, 3), 0);
}

void tst_Redraw::chartMoved()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {100.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(settle(window));

    const GlProbe::Totals before = GlProbe::totals();
    window.chart()->setPosition({40.0, 10.0});
    ExpectedPicture expected(size);
    expected.addLine({60.0, 40.5}, {140.0, 40.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
    QCOMPARE(GlProbe::totals(), before);
}

void tst_Redraw::anotherItemRedraws()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {100.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(settle(window));

    // Frames in which the chart has no part: its changes wait for its own update.
    const GlProbe::Totals before = GlProbe::totals();
    trace.data.setColor(Qt::blue);
    QVERIFY2(window.plainFrame(), window.error());
    QCOMPARE(GlProbe::totals(), before);
    QCOMPARE(drawsIn(window, 1), 1);
}

void tst_Redraw::ticksByItself()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    // The line rises by ten pixels with the fifth update.
    trace.onUpdate = [&trace] {
        if (trace.updateCount == 5)
            trace.setPoints(std::vector<QPointF>{{20.0, 60.5}, {180.0, 60.5}});
    };
    window.startTicking();
    QTRY_VERIFY(trace.updateCount >= 8);
    QCOMPARE(withLine(60.5, Qt::red).compare(window.grabWindow()), QString());
}

QTEST_MAIN(tst_Redraw)

#include "tst_redraw.moc"
