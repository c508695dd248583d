// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

/*! Windows that are hidden, resized, released and destroyed. Each test ends with every object of
    OpenGL deleted that was made. */
class tst_WindowLife : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void windowResized();
    void hidden_data();
    void hidden();
    void sceneGraphReleasedWhileShown();
    void windowDestroyed_data();
    void windowDestroyed();
    void windowDestroyedBeforeItsFirstFrame();
    void windowsAtTheSameTime();

private:
    static std::unique_ptr<PixelTrace> lineAt(double height, const QColor &color);
    static ExpectedPicture withLine(double height, const QColor &color);

    static constexpr QSize size = {200, 100};
};

void tst_WindowLife::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_WindowLife::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

std::unique_ptr<PixelTrace> tst_WindowLife::lineAt(double height, const QColor &color)
{
    auto trace = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, color);
    trace->setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
    return trace;
}

ExpectedPicture tst_WindowLife::withLine(double height, const QColor &color)
{
    ExpectedPicture expected(size);
    expected.setBlended(true);
    expected.addLine({20.0, height}, {180.0, height}, 5.0, color);
    return expected;
}

void tst_WindowLife::windowResized()
{
    ChartWindow window(size);
    const auto trace = lineAt(50.5, Qt::red);
    window.chart()->addTrace(trace.get());
    QVERIFY2(window.start(), window.error());
    for (const QSize &newSize : {QSize(1, 1), QSize(500, 400), QSize(1, 300), size}) {
        window.resize(newSize);
        window.chart()->setSize(newSize);
        QTRY_COMPARE(window.contentItem()->size().toSize(), newSize);
        QVERIFY2(window.frame(), window.error());
    }
    QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());
}

void tst_WindowLife::hidden_data()
{
    QTest::addColumn<bool>("isSceneGraphKept");
    QTest::addColumn<bool>("isGraphicsKept");

    QTest::newRow("all kept") << true << true;
    QTest::newRow("scene graph released") << false << true;
    QTest::newRow("all released") << false << false;
}

void tst_WindowLife::hidden()
{
    QFETCH(bool, isSceneGraphKept);
    QFETCH(bool, isGraphicsKept);

    ChartWindow window(size);
    window.setPersistentSceneGraph(isSceneGraphKept);
    window.setPersistentGraphics(isGraphicsKept);
    const auto trace = lineAt(50.5, Qt::red);
    window.chart()->addTrace(trace.get());
    QVERIFY2(window.start(), window.error());
    const QStringList live = GlProbe::liveObjects();
    QVERIFY(!live.isEmpty());

    for (int i = 0; i < 3; ++i) {
        window.hide();
        window.releaseResources();
        QCoreApplication::processEvents();
        // Qt releases nothing when it draws on the GUI thread.
        const bool isKept = isSceneGraphKept || !window.isThreaded();
        QCOMPARE(GlProbe::liveObjects(), isKept ? live : QStringList());

        // What changes meanwhile is seen when the window comes back.
        const double height = 20.5 + 10.0 * i;
        trace->setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
        window.chart()->updateTraces();
        QVERIFY2(window.start(), window.error());
        QCOMPARE(withLine(height, Qt::red).compare(window.picture()), QString());
        QCOMPARE(GlProbe::liveObjects().size(), live.size());
    }
}

void tst_WindowLife::sceneGraphReleasedWhileShown()
{
    ChartWindow window(size);
    window.setPersistentSceneGraph(false);
    window.setPersistentGraphics(false);
    const auto trace = lineAt(50.5, Qt::red);
    window.chart()->addTrace(trace.get());
    QVERIFY2(window.start(), window.error());
    for (int i = 0; i < 3; ++i) {
        window.releaseResources();
        QCOMPARE(withLine(50.5, Qt::red).compare(window.picture()), QString());
    }
    // Events are waiting for their answers.
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, {100, 50});
    window.hide();
    window.releaseResources();
    QCoreApplication::processEvents();
    // Qt releases nothing when it draws on the GUI thread.
    QCOMPARE(GlProbe::liveObjects().isEmpty(), window.isThreaded());
}

void tst_WindowLife::windowDestroyed_data()
{
    QTest::addColumn<bool>("isTraceFirst");
    QTest::newRow("the window first") << false;
    QTest::newRow("the trace first") << true;
}

void tst_WindowLife::windowDestroyed()
{
    QFETCH(bool, isTraceFirst);
    for (int i = 0; i < 5; ++i) {
        auto window = std::make_unique<ChartWindow>(size);
        auto trace = lineAt(50.5, Qt::red);
        window->chart()->addTrace(trace.get());
        QVERIFY2(window->start(), window->error());
        window->startTicking();
        for (int frame = 0; frame < i; ++frame)
            QVERIFY2(window->frame(), window->error());
        QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier, {100, 50});
        if (isTraceFirst)
            trace.reset();
        window.reset();
        QCOMPARE(GlProbe::liveObjects(), QStringList());
    }
}

void tst_WindowLife::windowDestroyedBeforeItsFirstFrame()
{
    const auto trace = lineAt(50.5, Qt::red);
    {
        ChartWindow neverShown(size);
        neverShown.chart()->addTrace(trace.get());
        neverShown.chart()->updateTraces();
    }
    ChartWindow hardlyShown(size);
    hardlyShown.chart()->addTrace(trace.get());
    hardlyShown.chart()->updateTraces();
    hardlyShown.show();
}

void tst_WindowLife::windowsAtTheSameTime()
{
    std::vector<std::unique_ptr<PixelTrace>> traces;
    std::vector<std::unique_ptr<ChartWindow>> windows;
    for (int i = 0; i < 3; ++i) {
        traces.push_back(lineAt(20.5 + 20.0 * i, QColor::fromHsv(100 * i, 255, 200)));
        windows.push_back(std::make_unique<ChartWindow>(size));
        windows.back()->chart()->addTrace(traces.back().get());
        QVERIFY2(windows.back()->start(), windows.back()->error());
        windows.back()->startTicking();
    }
    for (std::size_t i = 0; i < 3; ++i)
        QTRY_VERIFY(traces[i]->updateCount > 5);
    windows[1].reset();
    for (const std::size_t i : {std::size_t(0), std::size_t(2)}) {
        const double height = 20.5 + 20.0 * static_cast<double>(i);
        QCOMPARE(withLine(height, traces[i]->data.color()).compare(windows[i]->picture()),
                QString());
    }
}

QTEST_MAIN(tst_WindowLife)

#include "tst_windowlife.moc"
