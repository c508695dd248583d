// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseScene.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>

using namespace Charts;
using namespace Qt::StringLiterals;

using Change = std::function<void(MouseScene &)>;
Q_DECLARE_METATYPE(Change)

/*! Mouse signals whose handlers change the chart: the rest of the answers is still to come. */
class tst_MouseSignalsHandlers : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void inHandlers_data();
    void inHandlers();
    void deletedUnheardOf_data();
    void deletedUnheardOf();
    void nestedEventLoop();
};

void tst_MouseSignalsHandlers::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseSignalsHandlers::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_MouseSignalsHandlers::inHandlers_data()
{
    QTest::addColumn<QString>("handler");
    QTest::addColumn<bool>("passesOn");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");

    struct Ways
    {
        const char *name;
        Change a;
        Change b;
    };
    const Ways ways[] = {
            {"removes", [](MouseScene &scene) { scene.detach(*scene.a); },
                    [](MouseScene &scene) { scene.detach(*scene.b); }},
            {"deletes", [](MouseScene &scene) { scene.a.reset(); },
                    [](MouseScene &scene) { scene.b.reset(); }},
    };
    for (const Ways &way : ways) {
        const Change all = [way](MouseScene &scene) {
            way.a(scene);
            way.b(scene);
        };
        const auto row = [&way](const char *name, const char *handler, bool passesOn,
                                 const Change &change, const char *input, const char *expected) {
            QTest::addRow("%s %s", way.name, name)
                    << QString::fromLatin1(handler) << passesOn << change
                    << QString::fromLatin1(input) << QString::fromLatin1(expected);
        };
        row("itself when pressed", "A pressed", false, way.a, "press A, release A, press B",
                "A pressed, chart released, chart clicked, B pressed");
        row("itself when pressed and passes on", "A pressed", true, way.a, "press A, release A",
                "A pressed, chart pressed, chart released, chart clicked");
        row("itself when released", "A released", false, way.a, "press A, release A",
                "A pressed, A released, chart clicked");
        row("itself when released and passes on", "A released", true, way.a, "press A, release A",
                "A pressed, A released, chart released, chart clicked");
        row("itself when clicked", "A clicked", false, way.a, "press A, release A, release A",
                "A pressed, A released, A clicked, chart released, chart clicked");
        row("itself when clicked and passes on", "A clicked", true, way.a, "press A, release A",
                "A pressed, A released, A clicked, chart clicked");
        row("itself when double-clicked", "A doubleClicked", true, way.a, "press A, double A",
                "A pressed, A doubleClicked, chart doubleClicked");
        row("the other when pressed", "A pressed", false, way.b, "press A, release B, release A",
                "A pressed, chart released, chart clicked, A released, A clicked");
        row("the pressed one when another is released", "B released", false, way.a,
                "press A, release B, release A",
                "A pressed, B released, chart clicked, chart released, chart clicked");
        row("everything when pressed", "A pressed", false, all,
                "press A, release A, press B, double B, enter A, leave B",
                "A pressed, chart released, chart clicked, chart pressed, chart doubleClicked, "
                "chart hovered true, chart hovered false");
        row("a trace in the chart's handler", "chart released", false, way.a,
                "press A, release off, release A",
                "A pressed, chart released, chart clicked, chart released, chart clicked");
        row("everything in the chart's handler", "chart clicked", false, all,
                "press A, release off, press A, press B",
                "A pressed, chart released, chart clicked, chart pressed, chart pressed");

        row("itself when entered", "A hovered true", false, way.a, "enter A, leave A",
                "A hovered true, chart hovered true, chart hovered false");
        row("itself when left", "A hovered false", false, way.a, "move A, move B, move A",
                "A hovered true, A hovered false, B hovered true, B hovered false");
        row("itself when left for good", "A hovered false", false, way.a, "enter A, leave A",
                "A hovered true, chart hovered true, A hovered false, chart hovered false");
        row("the next one when left", "A hovered false", false, way.b, "move A, move B, move off",
                "A hovered true, A hovered false");
        row("both when left", "A hovered false", false, all, "move A, move B, move off",
                "A hovered true, A hovered false");
        row("the one before when hovered", "B hovered true", false, way.a, "move A, move B, move A",
                "A hovered true, A hovered false, B hovered true, B hovered false");
        row("everything when the chart is entered", "chart hovered true", false, all,
                "enter A, leave A", "A hovered true, chart hovered true, chart hovered false");
    }

    const auto row = [](const char *name, const char *handler, const Change &change,
                             const char *input, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(handler) << false << change
                            << QString::fromLatin1(input) << QString::fromLatin1(expected);
    };
    // A trace that is still there, though not in the chart, hears that it is left: what was removed
    // is forgotten with the next answers only.
    row("removed when hovered, then left", "A hovered true", ways[0].a, "move A, move B",
            "A hovered true, A hovered false, B hovered true");
    row("deleted when hovered, then left", "A hovered true", ways[1].a, "move A, move B",
            "A hovered true, B hovered true");
    row(
            "removed and added when pressed", "A pressed",
            [](MouseScene &scene) {
                scene.detach(*scene.a);
                scene.attach(*scene.a);
            },
            "press A, release A", "A pressed, A released, A clicked");
    row(
            "sorted when pressed", "A pressed", [](MouseScene &scene) { scene.a->setZ(5.0); },
            "press A, release A, press B, release B",
            "A pressed, A released, A clicked, B pressed, B released, B clicked");
}

void tst_MouseSignalsHandlers::inHandlers()
{
    QFETCH(QString, handler);
    QFETCH(bool, passesOn);
    QFETCH(Change, change);
    QFETCH(QString, input);
    QFETCH(QString, expected);

    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    bool isDone = false;
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
        if (isDone || signal.sender + u' ' + signal.name != handler)
            return;
        isDone = true;
        event.setAccepted(!passesOn);
        change(scene);
    };
    QCOMPARE(scene.allAtOnce(parts(input)), parts(expected));
    QVERIFY(isDone);
    // The chart goes on with what is left.
    static_cast<void>(scene.oneByOne(parts(u"enter A, move B, press A, release B, leave off"_s)));
}

void tst_MouseSignalsHandlers::deletedUnheardOf_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("press") << u"press A, press B"_s << u"A pressed, chart pressed"_s;
    QTest::newRow("click") << u"press B, press A, release B"_s
                           << u"B pressed, A pressed, chart released, chart clicked"_s;
    QTest::newRow("double click") << u"press A, double B"_s << u"A pressed, chart doubleClicked"_s;
    QTest::newRow("move") << u"press A, move B, move off"_s << u"A pressed"_s;
    QTest::newRow("away") << u"move B, press A, move A"_s
                          << u"B hovered true, A pressed, A hovered true"_s;
    QTest::newRow("enter") << u"press A, enter B, leave B"_s
                           << u"A pressed, chart hovered true, chart hovered false"_s;
}

// Being removed from another chart, a trace has lost its connections to this one, too, which hears
// nothing of its end. It must find out before it turns to the next answer.
void tst_MouseSignalsHandlers::deletedUnheardOf()
{
    QFETCH(QString, input);
    QFETCH(QString, expected);

    MouseScene scene;
    Chart other;
    QVERIFY2(scene.start(), scene.error());
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &) {
        if (signal.sender != u"A" || signal.name != u"pressed")
            return;
        other.addTrace(scene.b.get());
        other.removeTrace(scene.b.get());
        scene.b.reset();
    };
    QCOMPARE(scene.allAtOnce(parts(input)), parts(expected));
}

// A handler that opens a dialog: frames and further answers come before it returns.
void tst_MouseSignalsHandlers::nestedEventLoop()
{
    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    QStringList nested;
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
        if (signal.sender != u"A" || signal.name != u"pressed")
            return;
        const QStringList before = scene.log.take();
        nested = scene.allAtOnce({u"press B"_s, u"release B"_s});
        scene.a.reset();
        QCOMPARE(event.y(), 30.0);
        event.setAccepted(false);
        QCOMPARE(before, QStringList{u"A pressed"_s});
    };
    const QStringList rest =
            scene.allAtOnce({u"press A"_s, u"release off"_s, u"press off"_s, u"release A"_s});
    QCOMPARE(nested, QStringList({u"B pressed"_s, u"B released"_s, u"B clicked"_s}));
    QCOMPARE(rest, QStringList({u"chart pressed"_s, u"chart released"_s, u"chart clicked"_s,
                           u"chart pressed"_s, u"chart released"_s, u"chart clicked"_s}));
    QCOMPARE(scene.allAtOnce({}), QStringList());
}

QTEST_MAIN(tst_MouseSignalsHandlers)

#include "tst_mousesignals_handlers.moc"
