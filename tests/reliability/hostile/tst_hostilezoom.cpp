// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "FixedPlace.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "PixelTrace.h"

#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! A chart with two traces and a rubber band, all of which a handler may delete. */
struct Scene
{
    explicit Scene(ChartWindow &window)
        : chart(new Chart(window.contentItem()))
        , other(new Chart(window.contentItem()))
        , band(new ZoomDelegate(window.contentItem()))
        , a(std::make_unique<TestTrace>())
        , b(std::make_unique<TestTrace>())
    {
        band->setVisible(false);
        chart->setSize(window.size());
        chart->setIsZoomEnabled(true);
        chart->setRubberBand(band);
        for (TestTrace *trace : {a.get(), b.get()}) {
            trace->domain()->setRangeXY({0.0, 200.0}, {0.0, 100.0});
            chart->addTrace(trace);
        }
    }
    ~Scene()
    {
        delete chart;
        delete other;
        delete band;
    }

    void addAgain()
    {
        chart->removeTrace(a.get());
        {
            const QSignalBlocker blocker(a->domain());
            a->domain()->setSize({1.0, 1.0});
        }
        chart->addTrace(a.get());
    }
    void drag()
    {
        const auto send = [this](QEvent::Type type, const QPointF &position) {
            if (chart)
                MouseInput(type, position).sendTo(*chart);
        };
        send(QEvent::MouseButtonPress, {20.0, 20.0});
        send(QEvent::MouseMove, {120.0, 80.0});
        send(QEvent::MouseButtonRelease, {120.0, 80.0});
        send(QEvent::MouseButtonPress, {30.0, 30.0});
        send(QEvent::MouseMove, {90.0, 60.0});
        if (chart) {
            QEvent ungrab(QEvent::UngrabMouse);
            QCoreApplication::sendEvent(chart, &ungrab);
        }
    }

    QPointer<Chart> chart;
    QPointer<Chart> other;
    QPointer<ZoomDelegate> band;
    std::unique_ptr<TestTrace> a;
    std::unique_ptr<TestTrace> b;
};

template<typename Function>
struct Named
{
    const char *name;
    Function run;
};

const Named<std::function<void(Scene &)>> triggers[] = {
        {"zoom",
                [](Scene &scene) {
                    scene.chart->zoomIn({20.0, 20.0, 100.0, 50.0});
                }},
        {"reset", [](Scene &scene) { scene.chart->zoomReset(); }},
        {"zoom disabled", [](Scene &scene) { scene.chart->setIsZoomEnabled(false); }},
        {"rubber band taken away", [](Scene &scene) { scene.chart->setRubberBand(nullptr); }},
        {"resized",
                [](Scene &scene) {
                    scene.chart->setSize({150.0, 90.0});
                }},
        {"trace added", [](Scene &scene) { scene.addAgain(); }},
        {"drag", [](Scene &scene) { scene.drag(); }},
};

/*! Calls \a handler in each of these signals. */
using Handler = std::function<void()>;
const Named<std::function<void(Scene &, const Handler &)>> signalsOfZoom[] = {
        {"isZoomedChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.chart, &Chart::isZoomedChanged, handler);
                }},
        {"zoomedIn",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.chart, &Chart::zoomedIn, handler);
                }},
        {"isZoomEnabledChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.chart, &Chart::isZoomEnabledChanged, handler);
                }},
        {"rubberBandChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.chart, &Chart::rubberBandChanged, handler);
                }},
        {"zoomedChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.a->domain(), &TraceDomain::zoomedChanged, handler);
                }},
        {"xRangeChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.a->domain(), &TraceDomain::xRangeChanged, handler);
                }},
        {"yRangeChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.a->domain(), &TraceDomain::yRangeChanged, handler);
                }},
        {"sizeChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.a->domain(), &TraceDomain::sizeChanged, handler);
                }},
        {"visibleChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.band, &QQuickItem::visibleChanged, handler);
                }},
        {"xChanged",
                [](Scene &scene, const Handler &handler) {
                    QObject::connect(scene.band, &QQuickItem::xChanged, handler);
                }},
};

const Named<std::function<void(Scene &)>> endings[] = {
        {"the chart", [](Scene &scene) { delete scene.chart; }},
        {"the chart later", [](Scene &scene) { scene.chart->deleteLater(); }},
        {"the other trace", [](Scene &scene) { scene.b.reset(); }},
        {"chart and other trace",
                [](Scene &scene) {
                    scene.b.reset();
                    delete scene.chart;
                }},
        {"nothing, but moves all",
                [](Scene &scene) {
                    scene.chart->removeTrace(scene.a.get());
                    scene.chart->removeTrace(scene.b.get());
                    scene.other->addTrace(scene.a.get());
                    scene.other->setRubberBand(scene.band);
                    scene.chart->setRubberBand(nullptr);
                }},
        {"nothing, but zooms and resets",
                [](Scene &scene) {
                    scene.chart->zoomReset();
                    scene.chart->zoomIn({30.0, 30.0, 20.0, 20.0});
                    scene.chart->zoomReset();
                }},
};
constexpr std::size_t endingsInTheWindow[] = {1, 2, 4};

} // namespace

/*! Handlers of everything that zooming tells of, and rubber bands that end. */
class tst_HostileZoom : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void handlers_data();
    void handlers();
    void traceDeletedWhileAdded();
    void inTheWindow_data();
    void inTheWindow();
    void bandDestroyed_data();
    void bandDestroyed();

private:
    std::unique_ptr<ChartWindow> m_window;
};

void tst_HostileZoom::initTestCase()
{
    m_window = std::make_unique<ChartWindow>(QSize(200, 100), ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_HostileZoom::cleanupTestCase()
{
    m_window.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_HostileZoom::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_HostileZoom::handlers_data()
{
    QTest::addColumn<std::size_t>("trigger");
    QTest::addColumn<std::size_t>("ending");
    for (std::size_t trigger = 0; trigger < std::size(triggers); ++trigger) {
        for (std::size_t ending = 0; ending < std::size(endings); ++ending) {
            QTest::addRow("%s: deletes %s", triggers[trigger].name, endings[ending].name)
                    << trigger << ending;
        }
    }
}

void tst_HostileZoom::handlers()
{
    QFETCH(std::size_t, trigger);
    QFETCH(std::size_t, ending);

    int handled = 0;
    for (const auto &signal : signalsOfZoom) {
        Scene scene(*m_window);
        // So that there is something to reset; zooming goes further in.
        scene.chart->zoomIn({10.0, 10.0, 150.0, 80.0});
        bool isDone = false;
        signal.run(scene, [&] {
            if (std::exchange(isDone, true))
                return;
            ++handled;
            endings[ending].run(scene);
        });
        triggers[trigger].run(scene);
        isDone = true;
        if (scene.chart) {
            scene.chart->updateTraces();
            scene.chart->zoomIn({10.0, 10.0, 50.0, 50.0});
            scene.chart->setIsZoomEnabled(true);
            scene.chart->setIsZoomEnabled(false);
            QVERIFY2(!scene.chart->isZoomed(), signal.name);
        }
        scene.other->updateTraces();
        QVERIFY(scene.a);
    }
    QVERIFY(handled > 0);
    QVERIFY2(m_window->plainFrame(), m_window->error());
}

// The last thing that its domain does is to tell of its new size.
void tst_HostileZoom::traceDeletedWhileAdded()
{
    Chart chart;
    chart.setSize({20.0, 10.0});
    auto trace = std::make_unique<TestTrace>();
    AbstractTrace *address = trace.get();
    connect(trace->domain(), &TraceDomain::sizeChanged, this, [&] { trace.reset(); });
    chart.addTrace(address);
    QVERIFY(!trace);
    QVERIFY(!chart.includes(address));
    chart.updateTraces();
}

void tst_HostileZoom::inTheWindow_data()
{
    QTest::addColumn<std::size_t>("signal");
    QTest::addColumn<std::size_t>("ending");
    for (std::size_t signal = 0; signal < std::size(signalsOfZoom); ++signal) {
        for (const std::size_t ending : endingsInTheWindow) {
            QTest::addRow("%s: deletes %s", signalsOfZoom[signal].name, endings[ending].name)
                    << signal << ending;
        }
    }
}

// The window goes on delivering events when the one that grabs them is no more. It looks at an item
// again after an event that it gave to it: whatever happens in there may delete it only later.
void tst_HostileZoom::inTheWindow()
{
    QFETCH(std::size_t, signal);
    QFETCH(std::size_t, ending);

    Scene scene(*m_window);
    bool isDone = false;
    signalsOfZoom[signal].run(scene, [&] {
        if (!std::exchange(isDone, true))
            endings[ending].run(scene);
    });
    QTest::mousePress(m_window.get(), Qt::LeftButton, Qt::NoModifier, {20, 20});
    QTest::mouseMove(m_window.get(), {120, 80});
    QTest::mouseRelease(m_window.get(), Qt::LeftButton, Qt::NoModifier, {120, 80});
    QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, {50, 50}, 1000);
    QVERIFY2(m_window->answerEvents(), m_window->error());
}

void tst_HostileZoom::bandDestroyed_data()
{
    QTest::addColumn<bool>("isZoomed");
    QTest::addColumn<bool>("isDragging");
    QTest::newRow("at rest") << false << false;
    QTest::newRow("zoomed") << true << false;
    QTest::newRow("in a drag") << false << true;
    QTest::newRow("zoomed, in a drag") << true << true;
}

void tst_HostileZoom::bandDestroyed()
{
    QFETCH(bool, isZoomed);
    QFETCH(bool, isDragging);

    Scene scene(*m_window);
    Chart &chart = *scene.chart;
    FixedPlace<ZoomDelegate> place;
    QSignalSpy changes(&chart, &Chart::rubberBandChanged);
    QSignalSpy zooms(&chart, &Chart::isZoomedChanged);
    const auto begin = [&] {
        if (isZoomed)
            chart.zoomIn({10.0, 10.0, 100.0, 50.0});
        if (isDragging) {
            MouseInput(QEvent::MouseButtonPress, {20.0, 20.0}).sendTo(chart);
            MouseInput(QEvent::MouseMove, {60.0, 60.0}).sendTo(chart);
        }
        zooms.clear();
        changes.clear();
    };
    const auto goOn = [&] {
        MouseInput(QEvent::MouseMove, {90.0, 70.0}).sendTo(chart);
        MouseInput(QEvent::MouseButtonRelease, {90.0, 70.0}).sendTo(chart);
        MouseInput(QEvent::MouseButtonPress, {20.0, 20.0}).sendTo(chart);
        MouseInput(QEvent::MouseMove, {90.0, 70.0}).sendTo(chart);
        MouseInput(QEvent::MouseButtonRelease, {90.0, 70.0}).sendTo(chart);
    };

    // Set to null afterwards: a zoom is reset as with any other.
    chart.setRubberBand(&place.make(m_window->contentItem()));
    begin();
    place.destroy();
    QVERIFY2(m_window->answerEvents(), m_window->error());
    goOn();
    QCOMPARE(zooms.size(), 0);
    QCOMPARE(chart.isZoomed(), isZoomed);
    chart.setRubberBand(nullptr);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(zooms.size(), isZoomed ? 1 : 0);
    chart.setRubberBand(nullptr);
    QCOMPARE(changes.size(), 1);

    // Replaced by one at the same address, which is another one.
    chart.setRubberBand(&place.make(m_window->contentItem()));
    begin();
    ZoomDelegate &next = place.make(m_window->contentItem());
    next.setVisible(false);
    goOn();
    QCOMPARE(zooms.size(), 0);
    QVERIFY(!next.isVisible());
    chart.setRubberBand(&next);
    QCOMPARE(changes.size(), 1);
    goOn();
    QVERIFY(chart.isZoomed());
    QVERIFY2(m_window->answerEvents(), m_window->error());
    chart.setRubberBand(nullptr);
}

QTEST_MAIN(tst_HostileZoom)

#include "tst_hostilezoom.moc"
