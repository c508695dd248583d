// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseScene.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#include <functional>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

using Change = std::function<void(MouseScene &)>;
Q_DECLARE_METATYPE(Change)

/*! Mouse signals while traces come and go: between frames, and in the middle of a signal. */
class tst_MouseSignalsTraces : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void betweenFrames_data();
    void betweenFrames();
    void betweenLookUpAndAnswer_data();
    void betweenLookUpAndAnswer();
    void oneAfterAnother();
    void listedTwice();
    void destroyedAfterAnotherChartRemovedIt();
    void inTwoCharts();
};

void tst_MouseSignalsTraces::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseSignalsTraces::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_MouseSignalsTraces::betweenFrames_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *before, const Change &change,
                             const char *after, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(before) << change << QString::fromLatin1(after)
                            << QString::fromLatin1(expected);
    };
    const auto answer = [](MouseScene &scene) { static_cast<void>(scene.allAtOnce({})); };
    const Change removeA = [](MouseScene &scene) { scene.detach(*scene.a); };
    const Change destroyA = [](MouseScene &scene) { scene.a.reset(); };
    const Change removeBoth = [](MouseScene &scene) {
        scene.detach(*scene.a);
        scene.detach(*scene.b);
    };
    const Change removeAndAddA = [](MouseScene &scene) {
        scene.detach(*scene.a);
        scene.attach(*scene.a);
    };
    // What is forgotten is forgotten with the next answers. Frames alone bring none.
    const Change addAAfterFrames = [answer](MouseScene &scene) {
        scene.detach(*scene.a);
        answer(scene);
        scene.attach(*scene.a);
    };
    const Change addAAfterAnswers = [answer](MouseScene &scene) {
        scene.detach(*scene.a);
        scene.send(u"press off"_s);
        answer(scene);
        scene.attach(*scene.a);
    };
    const Change addAAfterHover = [](MouseScene &scene) {
        scene.detach(*scene.a);
        static_cast<void>(scene.allAtOnce({u"leave off"_s}));
        scene.attach(*scene.a);
    };

    row("pressed one removed", "press A", removeA, "release A", "chart released, chart clicked");
    row("pressed one destroyed", "press A", destroyA, "release A", "chart released, chart clicked");
    row("pressed one removed, released on the other", "press A", removeA, "release B",
            "B released, chart clicked");
    row("pressed one removed, double click", "press A", removeA, "double A", "chart doubleClicked");
    row("pressed one destroyed, double click", "press A", destroyA, "double A",
            "chart doubleClicked");
    row("the other one removed", "press B", removeA, "release B", "B released, B clicked");
    row("all removed", "press A", removeBoth, "release A, press A, move A", "");
    row("pressed one removed and added", "press A", removeAndAddA, "release A",
            "A released, A clicked");
    row("pressed one removed, frames, added", "press A", addAAfterFrames, "release A",
            "A released, A clicked");
    row("pressed one removed, answers, added", "press A", addAAfterAnswers, "release A",
            "A released, chart clicked");
    row("pressed one removed, other answers, added", "press A", addAAfterHover, "release A",
            "A released, chart clicked");

    row("hovered one removed", "move A", removeA, "move off, move A, leave A",
            "chart hovered false");
    row("hovered one destroyed", "move A", destroyA, "move off, move A, leave A",
            "chart hovered false");
    row("hovered one removed, on to the other", "move A", removeA, "move B, move A",
            "B hovered true, B hovered false");
    row("hovered one destroyed, on to the other", "move A", destroyA, "move B, move A",
            "B hovered true, B hovered false");
    row("hovered one removed, enter", "move A", removeA, "enter A", "chart hovered true");
    row("hovered one removed and added", "move A", removeAndAddA, "move A, move off",
            "A hovered false");
    row("hovered one removed, answers, added", "move A", addAAfterAnswers, "move A, move off",
            "A hovered true, A hovered false");
    row("removed while not hovered", "move B", removeA, "move A, leave off",
            "B hovered false, chart hovered false");
    row(
            "added while under the pointer", "",
            [](MouseScene &scene) {
                scene.detach(*scene.a);
                static_cast<void>(scene.allAtOnce({u"move A"_s}));
                scene.attach(*scene.a);
            },
            "move A", "A hovered true");
}

void tst_MouseSignalsTraces::betweenFrames()
{
    QFETCH(QString, before);
    QFETCH(Change, change);
    QFETCH(QString, after);
    QFETCH(QString, expected);

    for (const bool atOnce : {false, true}) {
        MouseScene scene;
        QVERIFY2(scene.start(), scene.error());
        static_cast<void>(scene.allAtOnce(parts(before)));
        change(scene);
        static_cast<void>(scene.log.take());
        const QStringList logged =
                atOnce ? scene.allAtOnce(parts(after)) : scene.oneByOne(parts(after));
        QCOMPARE(logged, parts(expected));
    }
}

void tst_MouseSignalsTraces::betweenLookUpAndAnswer_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<bool>("destroys");
    QTest::addColumn<QString>("expected");

    for (const bool destroys : {false, true}) {
        const auto row = [destroys](const char *name, const char *input, const char *expected) {
            QTest::addRow("%s, %s", name, destroys ? "destroyed" : "removed")
                    << QString::fromLatin1(input) << destroys << QString::fromLatin1(expected);
        };
        row("press", "press A", "chart pressed");
        row("click", "press A, release A", "chart pressed, chart released, chart clicked");
        row("double click", "press A, double A", "chart pressed, chart doubleClicked");
        row("move", "move A", "");
        row("through it", "move B, move A, move off", "B hovered true, B hovered false");
        row("through it to the other", "move A, move B", "B hovered true");
        row("enter and leave", "enter A, leave A", "chart hovered true, chart hovered false");
        row("the other one", "press B, release B", "B pressed, B released, B clicked");
    }
}

// The renderer has named the trace, but it is gone when the answer is handled.
void tst_MouseSignalsTraces::betweenLookUpAndAnswer()
{
    QFETCH(QString, input);
    QFETCH(bool, destroys);
    QFETCH(QString, expected);

    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    for (const QString &step : parts(input))
        scene.send(step);
    QVERIFY2(scene.window.frame(), scene.error());
    QCOMPARE(scene.log.take(), QStringList());
    if (destroys)
        scene.a.reset();
    else
        scene.detach(*scene.a);
    QCOMPARE(scene.allAtOnce({}), parts(expected));
}

// Each new trace stands where the one before it stood, in the chart and often in memory.
void tst_MouseSignalsTraces::oneAfterAnother()
{
    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    for (int i = 0; i < 20; ++i) {
        auto next = std::make_unique<PixelTrace>(
                QSize(200, 100), DrawType::LineStrip, 5.0F, QColor(Qt::blue));
        next->setPoints(std::vector<QPointF>{{20.0, 70.5}, {180.0, 70.5}});
        PixelTrace *trace = next.get();
        next->onUpdate = [trace] { trace->data.dirtyRange().push({0, 2}); };
        scene.log.watch(*next, QString::number(i));
        scene.chart().addTrace(next.get());
        if (scene.a) {
            scene.detach(*scene.a);
            scene.a.reset();
        }
        const QString name = QString::number(i);
        QCOMPARE(scene.oneByOne({u"move A"_s, u"press A"_s, u"release A"_s}),
                QStringList({name + u" hovered true"_s, name + u" pressed"_s, name + u" released"_s,
                        name + u" clicked"_s}));
        next.reset();
        QCOMPARE(scene.oneByOne({u"move off"_s, u"release A"_s}),
                QStringList({u"chart released"_s, u"chart clicked"_s}));
    }
}

void tst_MouseSignalsTraces::listedTwice()
{
    MouseScene scene;
    scene.attach(*scene.a);
    QVERIFY2(scene.start(), scene.error());
    const QStringList click = {u"A pressed"_s, u"A released"_s, u"A clicked"_s};
    // One signal each, not one for each entry.
    QCOMPARE(scene.oneByOne({u"press A"_s, u"release A"_s}), click);
    QCOMPARE(scene.oneByOne({u"move A"_s, u"move A"_s, u"press A"_s}),
            QStringList({u"A hovered true"_s, u"A pressed"_s}));

    // It is still there: neither hovered nor pressed state is lost.
    scene.detach(*scene.a);
    QVERIFY(scene.chart().includes(scene.a.get()));
    QCOMPARE(scene.oneByOne({u"move A"_s, u"release A"_s, u"move off"_s}),
            QStringList({u"A released"_s, u"A clicked"_s, u"A hovered false"_s}));

    scene.detach(*scene.a);
    QVERIFY(!scene.chart().includes(scene.a.get()));
    QCOMPARE(scene.oneByOne({u"release A"_s, u"move A"_s}),
            QStringList({u"chart released"_s, u"chart clicked"_s}));

    // A handler that removes one of two entries leaves the trace where it is.
    scene.attach(*scene.a);
    scene.attach(*scene.a);
    scene.log.onSignal = [&scene](const MouseSignal &signal, ChartMouseEvent &) {
        if (signal.name == u"pressed")
            scene.detach(*scene.a);
    };
    QCOMPARE(scene.allAtOnce({u"press A"_s, u"release A"_s}), click);

    // Both entries go with the trace.
    scene.log.onSignal = nullptr;
    scene.attach(*scene.a);
    scene.log.onSignal = [&scene](const MouseSignal &signal, ChartMouseEvent &) {
        if (signal.name == u"pressed")
            scene.a.reset();
    };
    QCOMPARE(scene.allAtOnce({u"press A"_s, u"release A"_s}),
            QStringList({u"A pressed"_s, u"chart released"_s, u"chart clicked"_s}));
}

// Being removed from one chart, a trace has lost its connections to the other one, which hears
// nothing of its end.
void tst_MouseSignalsTraces::destroyedAfterAnotherChartRemovedIt()
{
    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    Chart other;
    const auto loseConnections = [&](PixelTrace &trace) {
        other.addTrace(&trace);
        other.removeTrace(&trace);
    };
    static_cast<void>(scene.oneByOne({u"move A"_s, u"press A"_s}));
    loseConnections(*scene.a);
    scene.a.reset();
    QCOMPARE(scene.oneByOne({u"release A"_s, u"move B"_s, u"move off"_s}),
            QStringList({u"chart released"_s, u"chart clicked"_s, u"B hovered true"_s,
                    u"B hovered false"_s}));

    // The same between look-up and answer, and in the middle of a batch.
    scene.send(u"press B"_s);
    QVERIFY2(scene.window.frame(), scene.error());
    loseConnections(*scene.b);
    scene.b.reset();
    QCOMPARE(scene.allAtOnce({}), QStringList{u"chart pressed"_s});
}

// Each chart keeps its own count of the pointer. The signals are the trace's one set.
void tst_MouseSignalsTraces::inTwoCharts()
{
    MouseScene scene;
    auto *other = new Chart(scene.window.contentItem());
    other->findChild<QTimer *>()->stop();
    other->setSize(scene.chart().size());
    scene.log.watch(*other, u"other"_s);
    other->addTrace(scene.a.get());
    QVERIFY2(scene.start(), scene.error());
    QCOMPARE(scene.oneByOne({u"press A"_s, u"release A"_s, u"press off"_s}),
            QStringList({u"A pressed"_s, u"A released"_s, u"A clicked"_s, u"chart pressed"_s}));

    QMouseEvent release(QEvent::MouseButtonRelease, {100.0, 30.0}, {100.0, 30.0}, Qt::LeftButton,
            Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(other, &release);
    for (int i = 0; i < 2; ++i) {
        other->updateTraces();
        QVERIFY2(scene.window.plainFrame(), scene.error());
    }
    QCoreApplication::sendPostedEvents();
    QCOMPARE(scene.log.take(), QStringList({u"A released"_s, u"other clicked"_s}));
}

QTEST_MAIN(tst_MouseSignalsTraces)

#include "tst_mousesignals_traces.moc"
