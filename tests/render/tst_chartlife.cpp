// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

/*! Charts and traces that come and go in every order. Each test ends with every object of OpenGL
    deleted that was made. */
class tst_ChartLife : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void withoutWindow();
    void updatedBeforeTheFirstFrame();
    void chartInvisible();
    void chartMovedToAnotherWindow();
    void chartTakenOutOfItsWindow();
    void chartDestroyed_data();
    void chartDestroyed();
    void traceDestroyedBetweenUpdateAndFrame();
    void twoChartsOneTrace();
    void anythingAtAnyTime_data();
    void anythingAtAnyTime();

private:
    static std::unique_ptr<PixelTrace> lineAt(double height, const QColor &color);
    static ExpectedPicture withLine(double height, const QColor &color);

    static constexpr QSize size = {200, 100};
};

void tst_ChartLife::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ChartLife::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

std::unique_ptr<PixelTrace> tst_ChartLife::lineAt(double height, const QColor &color)
{
    auto trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, color);
    trace->setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
    return trace;
}

ExpectedPicture tst_ChartLife::withLine(double height, const QColor &color)
{
    ExpectedPicture expected(size);
    expected.setBlended(true);
    expected.addLine({20.0, height}, {180.0, height}, 5.0, color);
    return expected;
}

void tst_ChartLife::withoutWindow()
{
    const auto trace = lineAt(50.5, Qt::red);
    Chart chart;
    chart.setSize(size);
    chart.addTrace(trace.get());
    chart.updateTraces();
    QCOMPARE(trace->updateCount, 1);
    QTRY_VERIFY(trace->updateCount >= 3);
    chart.removeTrace(trace.get());
}

void tst_ChartLife::updatedBeforeTheFirstFrame()
{
    ChartWindow window(size);
    window.chart()->updateTraces();
    const auto trace = lineAt(50.5, Qt::red);
    trace->onUpdate = [&trace] {
        trace->setPoints(std::vector<QPointF>{{20.0, 60.5}, {180.0, 60.5}});
    };
    window.chart()->addTrace(trace.get());
    for (int i = 0; i < 10; ++i)
        window.chart()->updateTraces();
    QVERIFY2(window.start(), window.error());
    QCOMPARE(withLine(60.5, Qt::red).compare(window.picture()), QString());
}

void tst_ChartLife::chartInvisible()
{
    ChartWindow window(size);
    const auto trace = lineAt(50.5, Qt::red);
    window.chart()->addTrace(trace.get());
    QVERIFY2(window.start(), window.error());
    window.chart()->setVisible(false);
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
    trace->setPoints(std::vector<QPointF>{{20.0, 70.5}, {180.0, 70.5}});
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
    window.chart()->setVisible(true);
    QCOMPARE(withLine(70.5, Qt::red).compare(window.picture()), QString());
}

void tst_ChartLife::chartMovedToAnotherWindow()
{
    ChartWindow first(size);
    ChartWindow second(size, ChartWindow::Content::Nothing);
    const auto trace = lineAt(50.5, Qt::red);
    Chart *chart = first.chart();
    chart->addTrace(trace.get());
    QVERIFY2(first.start(), first.error());
    QVERIFY2(second.start(), second.error());
    const auto alive = GlProbe::liveObjects().size();

    for (int i = 0; i < 3; ++i) {
        chart->setParentItem(second.contentItem());
        chart->updateTraces();
        QCOMPARE(withLine(50.5, Qt::red).compare(second.picture()), QString());
        QCOMPARE(ExpectedPicture(size).compare(first.picture()), QString());
        // The first window's renderer is gone, the second one's has all that it needs.
        QCOMPARE(GlProbe::liveObjects().size(), alive);

        chart->setParentItem(first.contentItem());
        chart->updateTraces();
        QCOMPARE(ExpectedPicture(size).compare(second.picture()), QString());
        QCOMPARE(withLine(50.5, Qt::red).compare(first.picture()), QString());
        QCOMPARE(GlProbe::liveObjects().size(), alive);
    }
}

void tst_ChartLife::chartTakenOutOfItsWindow()
{
    const auto trace = lineAt(50.5, Qt::red);
    auto window = std::make_unique<ChartWindow>(size);
    const std::unique_ptr<Chart> chart(window->chart());
    chart->addTrace(trace.get());
    QVERIFY2(window->start(), window->error());

    chart->setParent(nullptr);
    chart->setParentItem(nullptr);
    chart->updateTraces();
    QCOMPARE(ExpectedPicture(size).compare(window->picture()), QString());
    QCOMPARE(GlProbe::liveObjects(), QStringList());

    chart->setParentItem(window->contentItem());
    QCOMPARE(withLine(50.5, Qt::red).compare(window->picture()), QString());

    // It outlives its window.
    window.reset();
    QCOMPARE(GlProbe::liveObjects(), QStringList());
    chart->updateTraces();
    QVERIFY(chart->includes(trace.get()));

    ChartWindow another(size, ChartWindow::Content::Nothing);
    chart->setParentItem(another.contentItem());
    QVERIFY2(another.start(), another.error());
    QCOMPARE(withLine(50.5, Qt::red).compare(another.picture()), QString());
}

void tst_ChartLife::chartDestroyed_data()
{
    QTest::addColumn<bool>("isTicking");
    QTest::newRow("between two frames") << false;
    QTest::newRow("while it draws") << true;
}

void tst_ChartLife::chartDestroyed()
{
    QFETCH(bool, isTicking);

    ChartWindow window(size);
    const auto trace = lineAt(50.5, Qt::red);
    window.chart()->addTrace(trace.get());
    QVERIFY2(window.start(), window.error());
    if (isTicking) {
        trace->onUpdate = [&trace] { trace->data.dirtyRange().push({0, 2}); };
        window.startTicking();
        QTRY_VERIFY(trace->updateCount > 5);
    }
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, {100, 50});
    window.chart()->updateTraces();
    delete window.chart();
    QVERIFY2(window.plainFrame(), window.error());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
    QCOMPARE(ExpectedPicture(size).compare(window.grabWindow()), QString());

    // The trace is not the chart's; it may move on to another one.
    auto *next = new Chart(window.contentItem());
    next->setSize(size);
    next->addTrace(trace.get());
    QVERIFY2(window.plainFrame(), window.error());
    QCOMPARE(withLine(50.5, Qt::red).compare(window.grabWindow()), QString());
}

void tst_ChartLife::traceDestroyedBetweenUpdateAndFrame()
{
    ChartWindow window(size);
    QVERIFY2(window.start(), window.error());
    const auto stays = lineAt(30.5, Qt::blue);
    window.chart()->addTrace(stays.get());
    for (int i = 0; i < 10; ++i) {
        auto trace = lineAt(50.5, Qt::red);
        window.chart()->addTrace(trace.get());
        if (i % 2 == 0)
            QVERIFY2(window.frame(), window.error());
        window.chart()->updateTraces();
        trace.reset();
        QVERIFY2(window.plainFrame(), window.error());
        QCOMPARE(withLine(30.5, Qt::blue).compare(window.grabWindow()), QString());
    }
}

void tst_ChartLife::twoChartsOneTrace()
{
    ChartWindow window(size);
    auto trace = lineAt(50.5, Qt::red);
    Chart other(window.contentItem());
    other.setSize(size);
    window.chart()->addTrace(trace.get());
    other.addTrace(trace.get());
    QVERIFY2(window.start(), window.error());
    QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());

    window.chart()->removeTrace(trace.get());
    other.updateTraces();
    QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());
    // Being removed from one chart, the trace has lost its connections to the other one.
    other.removeTrace(trace.get());
    trace.reset();
    other.updateTraces();
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
}

void tst_ChartLife::anythingAtAnyTime_data()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : {1U, 2U, 3U})
        QTest::addRow("%u", seed) << seed;
}

void tst_ChartLife::anythingAtAnyTime()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    QVERIFY2(window.start(), window.error());
    std::vector<std::unique_ptr<PixelTrace>> traces;
    const auto any = [&] {
        return traces.begin() + random.bounded(static_cast<int>(traces.size()));
    };

    for (int step = 0; step < 150; ++step) {
        const int action = traces.empty() ? 0 : random.bounded(10);
        switch (action) {
        case 0:
        case 1:
            traces.push_back(lineAt(random.bounded(100) + 0.5, QColor(random.bounded(256), 0, 0)));
            traces.back()->setZ(random.bounded(5));
            window.chart()->addTrace(traces.back().get());
            break;
        case 2:
            traces.erase(any());
            break;
        case 3: {
            PixelTrace *trace = any()->get();
            window.chart()->removeTrace(trace);
            if (random.bounded(2) == 0)
                window.chart()->addTrace(trace);
            break;
        }
        case 4:
            window.chart()->setSize(random.bounded(3) == 0 ? QSizeF(0.0, 0.0) : QSizeF(size));
            break;
        case 5:
            (*any())->setPoints(std::vector<QPointF>(
                    static_cast<std::size_t>(random.bounded(50)), QPointF(50.5, 50.5)));
            break;
        case 6:
            (*any())->data.setVisible(random.bounded(2) == 0);
            break;
        case 7:
            window.chart()->setAntialiasing(random.bounded(2) == 0);
            break;
        case 8:
            QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier,
                    {random.bounded(200), random.bounded(100)});
            break;
        default:
            (*any())->setZ(random.bounded(5));
            break;
        }
        if (random.bounded(2) == 0)
            QVERIFY2(window.frame(), window.error());
    }

    // Whatever came before, this is what there is now.
    while (!traces.empty())
        traces.pop_back();
    window.chart()->setSize(size);
    window.chart()->setAntialiasing(false);
    traces.push_back(lineAt(50.5, Qt::blue));
    window.chart()->addTrace(traces.back().get());
    QCOMPARE(withLine(50.5, Qt::blue).compare(window.picture()), QString());
}

QTEST_MAIN(tst_ChartLife)

#include "tst_chartlife.moc"
