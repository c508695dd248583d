// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseScene.h"
#include "Rounds.h"

#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QEventLoop>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#include <functional>
#include <memory>
#include <vector>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

struct Scene : MouseScene
{
    Scene() { band.setVisible(false); }

    std::unique_ptr<PixelTrace> addLine(double fromTop)
    {
        auto trace = std::make_unique<PixelTrace>(
                window.size(), DrawType::LineStrip, 5.0F, QColor(Qt::blue));
        const double height = window.height() - fromTop + 0.5;
        trace->setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
        log.watch(*trace, u"new"_s);
        window.chart()->addTrace(trace.get());
        return trace;
    }

    std::vector<std::unique_ptr<PixelTrace>> added;
    ZoomDelegate band; // not the chart's child: outlives it
};

/*! What a handler does, and what is left of the senders "chart", "A" and "B" after it: nothing is
    heard from the others any more. */
struct Action
{
    const char *name;
    std::function<void(Scene &)> run;
    QStringList silent;
};

const Action actions[] = {
        {"deletes the chart", [](Scene &scene) { delete scene.window.chart(); },
                {u"chart"_s, u"A"_s, u"B"_s}},
        {"deletes chart and traces",
                [](Scene &scene) {
                    scene.a.reset();
                    delete scene.window.chart();
                    scene.b.reset();
                },
                {u"chart"_s, u"A"_s, u"B"_s}},
        {"deletes the content of the window",
                [](Scene &scene) { qDeleteAll(scene.window.contentItem()->childItems()); },
                {u"chart"_s, u"A"_s, u"B"_s}},
        {"deletes trace A", [](Scene &scene) { scene.a.reset(); }, {u"A"_s}},
        {"deletes trace B", [](Scene &scene) { scene.b.reset(); }, {u"B"_s}},
        {"deletes both traces",
                [](Scene &scene) {
                    scene.b.reset();
                    scene.a.reset();
                },
                {u"A"_s, u"B"_s}},
        {"removes both traces",
                [](Scene &scene) {
                    scene.detach(*scene.a);
                    scene.detach(*scene.b);
                },
                {}},
        {"replaces trace A",
                [](Scene &scene) {
                    scene.a.reset();
                    scene.added.push_back(scene.addLine(30.0));
                },
                {u"A"_s}},
        {"adds a trace", [](Scene &scene) { scene.added.push_back(scene.addLine(50.0)); }, {}},
        {"reverses the order",
                [](Scene &scene) {
                    if (scene.a && scene.b) {
                        scene.a->setZ(2.0 - scene.a->z());
                        scene.b->setZ(1.0 - scene.b->z());
                    }
                },
                {}},
        {"zooms",
                [](Scene &scene) {
                    scene.chart().zoomIn({10.0, 10.0, 50.0, 50.0});
                },
                {}},
        {"zooms and resets the zoom",
                [](Scene &scene) {
                    scene.chart().zoomIn({10.0, 10.0, 50.0, 50.0});
                    scene.chart().zoomReset();
                },
                {}},
        {"hides the chart", [](Scene &scene) { scene.chart().setVisible(false); }, {}},
        {"shrinks the chart to nothing",
                [](Scene &scene) {
                    scene.chart().setSize({0.0, 0.0});
                },
                {}},
        {"takes the chart out of the window",
                [](Scene &scene) { scene.chart().setParentItem(nullptr); }, {}},
        {"replaces the rubber band",
                [](Scene &scene) {
                    scene.chart().setRubberBand(&scene.band);
                    scene.chart().setRubberBand(nullptr);
                },
                {}},
        {"sends more events",
                [](Scene &scene) {
                    for (const QString &step : {u"press B"_s, u"release A"_s, u"move off"_s})
                        scene.send(step);
                    scene.chart().updateTraces();
                },
                {}},
        {"runs an event loop in which a trace comes and goes",
                [](Scene &scene) {
                    scene.window.startTicking();
                    auto passing = scene.addLine(50.0);
                    QEventLoop loop;
                    QTimer::singleShot(20, &loop, [&] {
                        passing.reset();
                        scene.send(u"press A"_s);
                        passing = scene.addLine(50.0);
                    });
                    QTimer::singleShot(60, &loop, &QEventLoop::quit);
                    loop.exec();
                },
                {}},
        {"runs an event loop in which the chart is deleted",
                [](Scene &scene) {
                    QEventLoop loop;
                    QTimer::singleShot(1, &loop, [&] {
                        delete scene.window.chart();
                        loop.quit();
                    });
                    loop.exec();
                },
                {u"chart"_s, u"A"_s, u"B"_s}},
};

} // namespace

/*! Mouse signals whose handlers do everything that they should better not do. */
class tst_HostileHandlers : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void handlers_data();
    void handlers();
    void everyTime_data();
    void everyTime();
    void zoomInHovered();
    void loopInClicked();
};

void tst_HostileHandlers::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_HostileHandlers::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

namespace {

const QString handlerNames[] = {u"A hovered true"_s, u"chart hovered true"_s, u"A pressed"_s,
        u"A released"_s, u"A clicked"_s, u"A doubleClicked"_s, u"A hovered false"_s,
        u"B hovered true"_s, u"B pressed"_s, u"chart pressed"_s, u"chart released"_s,
        u"chart clicked"_s, u"chart doubleClicked"_s, u"chart hovered false"_s};

/*! Brings all of these signals, as long as everything is there. */
const QString input = u"enter A, press A, release A, double A, move B, press B, release B, "
                      "press off, release off, press off, double off, leave off, move A, leave A"_s;

} // namespace

void tst_HostileHandlers::handlers_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<QString>("handler");

    // The short form takes some of all pairs, with each action and each handler among them.
    const int step = rounds(13, 1);
    int pair = 0;
    for (std::size_t action = 0; action < std::size(actions); ++action) {
        for (const QString &handler : handlerNames) {
            if (pair++ % step == 0) {
                QTest::addRow("%s: %s", qPrintable(handler), actions[action].name)
                        << int(action) << handler;
            }
        }
    }
}

void tst_HostileHandlers::handlers()
{
    QFETCH(int, action);
    QFETCH(QString, handler);

    Scene scene;
    QVERIFY2(scene.start(), scene.error());
    bool isDone = false;
    QStringList before;
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
        if (isDone || signal.sender + u' ' + signal.name != handler)
            return;
        isDone = true;
        before = scene.log.take();
        actions[action].run(scene);
        // Also when everything is gone the event is still there.
        event.setAccepted(false);
    };
    const QStringList after = scene.allAtOnce(parts(input));
    QVERIFY(isDone);
    QCOMPARE(before.last(), handler);
    for (const QString &entry : after)
        QVERIFY2(!actions[action].silent.contains(entry.section(u' ', 0, 0)), qPrintable(entry));

    // What is left goes on.
    scene.log.onSignal = {};
    QVERIFY2(scene.window.plainFrame(), scene.error());
    if (!scene.window.chart())
        return;
    scene.chart().setParentItem(scene.window.contentItem());
    scene.chart().setSize(scene.window.size());
    scene.chart().setVisible(true);
    static_cast<void>(scene.allAtOnce({}));
    const auto last = scene.addLine(30.0);
    last->setZ(10.0);
    QCOMPARE(scene.allAtOnce({u"press A"_s, u"release A"_s}),
            QStringList({u"new pressed"_s, u"new released"_s, u"new clicked"_s}));
}

void tst_HostileHandlers::everyTime_data()
{
    QTest::addColumn<int>("action");
    for (std::size_t i = 0; i < std::size(actions); i += std::size_t(rounds(3, 1)))
        QTest::newRow(actions[i].name) << int(i);
}

// Handlers that do it each time they are called, also while they are being called.
void tst_HostileHandlers::everyTime()
{
    QFETCH(int, action);

    Scene scene;
    QVERIFY2(scene.start(), scene.error());
    int depth = 0;
    scene.log.onSignal = [&](const MouseSignal &, ChartMouseEvent &event) {
        event.setAccepted(depth % 2 == 0);
        if (depth >= 3 || !scene.window.chart())
            return;
        ++depth;
        if (scene.a && scene.b)
            actions[action].run(scene);
        --depth;
    };
    static_cast<void>(scene.allAtOnce(parts(input)));
    static_cast<void>(scene.allAtOnce({}));
    scene.log.onSignal = {};
    QVERIFY2(scene.window.plainFrame(), scene.error());
}

void tst_HostileHandlers::zoomInHovered()
{
    Scene scene;
    QVERIFY2(scene.start(), scene.error());
    scene.a->domain()->setRangeXY({0.0, 200.0}, {0.0, 100.0});
    scene.b->domain()->setRangeXY({0.0, 200.0}, {0.0, 100.0});
    int zooms = 0;
    int resets = 0;
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
        if (signal.name.startsWith(u"hovered"))
            scene.chart().zoomIn({event.x() - 10.0, event.y() - 10.0, 20.0, 20.0});
    };
    // A zoom that undoes itself before it has been told of to the end.
    connect(&scene.chart(), &Chart::zoomedIn, &scene.chart(), [&] {
        ++zooms;
        scene.chart().zoomReset();
    });
    connect(&scene.chart(), &Chart::isZoomedChanged, &scene.chart(),
            [&](bool isZoomed) { resets += isZoomed ? 0 : 1; });
    const QStringList log = scene.allAtOnce(parts(u"move A, move B, move off"_s));
    QCOMPARE(log, parts(u"A hovered true, A hovered false, B hovered true, B hovered false"_s));
    QCOMPARE(zooms, 4);
    QCOMPARE(resets, 4);
    QVERIFY(!scene.chart().isZoomed());
    QCOMPARE(scene.a->domain()->xRange(), Span(0.0, 200.0));
    QCOMPARE(scene.b->domain()->yRange(), Span(0.0, 100.0));
}

// Event loops in event loops, with frames, answers, and traces that come and go in each.
void tst_HostileHandlers::loopInClicked()
{
    Scene scene;
    QVERIFY2(scene.start(), scene.error());
    scene.window.startTicking();
    int depth = 0;
    int deepest = 0;
    int clicks = 0;
    const int wanted = rounds(10, 300);
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
        if (signal.name != u"clicked" || clicks >= wanted)
            return;
        ++clicks;
        deepest = std::max(deepest, ++depth);
        const double y = event.y();
        scene.added.push_back(scene.addLine(50.0));
        if (clicks % 3 == 0)
            scene.added.erase(scene.added.begin());
        if (depth < 5) {
            scene.send(u"press A"_s);
            scene.send(u"release A"_s);
            QTest::qWait(clicks < 20 ? 40 : 10);
        }
        QCOMPARE(event.y(), y);
        --depth;
    };
    while (clicks < wanted) {
        const int before = clicks;
        static_cast<void>(scene.allAtOnce({u"press A"_s, u"release A"_s}));
        QTRY_VERIFY(clicks > before);
    }
    QVERIFY(deepest >= 3);
    QCOMPARE(depth, 0);
    scene.added.clear();
    scene.log.onSignal = {};
    static_cast<void>(scene.log.take());
    QVERIFY2(scene.window.answerEvents(), scene.error());
    static_cast<void>(scene.log.take());
    QCOMPARE(scene.allAtOnce(parts(u"press A, release A"_s)),
            parts(u"A pressed, A released, A clicked"_s));
}

QTEST_MAIN(tst_HostileHandlers)

#include "tst_hostilehandlers.moc"
