// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseScene.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! Which signals the events at traces and beside them become, and in which order. */
class tst_MouseSignals : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void buttons_data();
    void buttons();
    void hovers_data();
    void hovers();
    void passedOn_data();
    void passedOn();
    void passedOnByHover_data();
    void passedOnByHover();

    void withoutTraces();
    void longBatch();

private:
    static void check(const QString &passedOn = {});
};

void tst_MouseSignals::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseSignals::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

/*! The row's input brings the row's signals, whether its events come in frames of their own or all
    in one. The handlers of \a passedOn set accepted to false. */
void tst_MouseSignals::check(const QString &passedOn)
{
    QFETCH(QString, input);
    QFETCH(QString, expected);

    for (const bool atOnce : {false, true}) {
        MouseScene scene;
        scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
            if (parts(passedOn).contains(signal.sender + u' ' + signal.name))
                event.setAccepted(false);
        };
        QVERIFY2(scene.start(), scene.error());
        const QStringList logged =
                atOnce ? scene.allAtOnce(parts(input)) : scene.oneByOne(parts(input));
        QCOMPARE(logged, parts(expected));
        // Nothing comes late.
        QCOMPARE(scene.allAtOnce({}), QStringList());
    }
}

void tst_MouseSignals::buttons_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *input, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(input) << QString::fromLatin1(expected);
    };

    row("press", "press A", "A pressed");
    row("press beside", "press off", "chart pressed");
    row("click", "press A, release A", "A pressed, A released, A clicked");
    row("click beside", "press off, release off", "chart pressed, chart released, chart clicked");
    row("from one to the other", "press A, release B", "A pressed, B released, chart clicked");
    row("from a trace to beside", "press A, release off",
            "A pressed, chart released, chart clicked");
    row("from beside to a trace", "press off, release A",
            "chart pressed, A released, chart clicked");
    row("release alone", "release A", "A released, chart clicked");
    row("release alone beside", "release off", "chart released, chart clicked");
    row("two clicks on two traces", "press A, release A, press B, release B",
            "A pressed, A released, A clicked, B pressed, B released, B clicked");

    // A release leaves the pressed trace pressed, only a press changes it.
    row("released again", "press A, release A, release A",
            "A pressed, A released, A clicked, A released, A clicked");
    row("released beside, then on it", "press A, release off, release A",
            "A pressed, chart released, chart clicked, A released, A clicked");
    row("released on the other, then on it", "press A, release B, release A",
            "A pressed, B released, chart clicked, A released, A clicked");
    row("second button pressed on the other", "press A, press B, release A, release B",
            "A pressed, B pressed, A released, chart clicked, B released, B clicked");
    row("second button pressed beside", "press A, press off, release A",
            "A pressed, chart pressed, A released, chart clicked");
    row("flagged press on the other", "press A, second B, release A",
            "A pressed, A released, A clicked");
    row("moves in between", "press A, move B, move off, release A",
            "A pressed, B hovered true, B hovered false, A released, A clicked");

    row("double click", "press A, release A, second A, double A, release A",
            "A pressed, A released, A clicked, A doubleClicked, A released, A clicked");
    row("double click beside", "press off, release off, second off, double off, release off",
            "chart pressed, chart released, chart clicked, "
            "chart doubleClicked, chart released, chart clicked");
    row("double click with an ordinary second press",
            "press A, release A, press A, double A, release A",
            "A pressed, A released, A clicked, A pressed, A doubleClicked, A released, A clicked");
    row("double click slips to the other", "press A, release A, second B, double B, release B",
            "A pressed, A released, A clicked, chart doubleClicked, B released, chart clicked");
    row("double click slips off", "press A, release A, second off, double off, release off",
            "A pressed, A released, A clicked, "
            "chart doubleClicked, chart released, chart clicked");
    row("double click slips onto a trace", "press off, release off, second A, double A, release A",
            "chart pressed, chart released, chart clicked, "
            "chart doubleClicked, A released, chart clicked");
    row("double click alone", "double A", "chart doubleClicked");
    row("double click alone beside", "double off", "chart doubleClicked");
    row("double click leaves it pressed", "press A, double B, double off, release A, double A",
            "A pressed, chart doubleClicked, chart doubleClicked, A released, A clicked, "
            "A doubleClicked");
    row("nothing", "second A", "");
}

void tst_MouseSignals::buttons()
{
    check();
}

void tst_MouseSignals::hovers_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *input, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(input) << QString::fromLatin1(expected);
    };

    // The chart's own signal comes with the first and the last event, never in between.
    row("through the chart", "enter off, move off, leave off",
            "chart hovered true, chart hovered false");
    row("across both traces", "enter off, move A, move off, move B, move off, leave off",
            "chart hovered true, A hovered true, A hovered false, B hovered true, "
            "B hovered false, chart hovered false");
    row("from one to the other", "enter off, move A, move B, leave off",
            "chart hovered true, A hovered true, A hovered false, B hovered true, "
            "chart hovered false");
    row("back and forth", "move A, move B, move A",
            "A hovered true, A hovered false, B hovered true, B hovered false, A hovered true");
    row("along a trace", "move A, move A, move A, move off", "A hovered true, A hovered false");
    row("beside", "move off, move off", "");

    row("enter on a trace", "enter A, move A, move off",
            "A hovered true, chart hovered true, A hovered false");
    row("enter twice", "enter A, enter A",
            "A hovered true, chart hovered true, A hovered true, chart hovered true");
    row("enter on the other", "enter A, enter B, move B, move off",
            "A hovered true, chart hovered true, B hovered true, chart hovered true, "
            "B hovered false");
    row("enter beside keeps the trace", "enter A, enter off, move A, move off",
            "A hovered true, chart hovered true, chart hovered true, A hovered false");

    row("leave on a trace", "enter A, leave A, move off",
            "A hovered true, chart hovered true, A hovered false, chart hovered false");
    row("leave on a trace never entered", "leave A", "A hovered false, chart hovered false");
    row("leave twice", "enter A, leave A, leave A",
            "A hovered true, chart hovered true, A hovered false, chart hovered false, "
            "A hovered false, chart hovered false");
    row("leave beside keeps the trace", "enter A, leave off, move A, move off",
            "A hovered true, chart hovered true, chart hovered false, A hovered false");
    row("leave beside, back on the other", "enter A, leave off, enter B, move off",
            "A hovered true, chart hovered true, chart hovered false, B hovered true, "
            "chart hovered true, B hovered false");
    row("leave beside, on to the other", "enter A, leave off, move B",
            "A hovered true, chart hovered true, chart hovered false, A hovered false, "
            "B hovered true");
    row("leave on the other", "enter A, leave B, move A",
            "A hovered true, chart hovered true, B hovered false, chart hovered false, "
            "A hovered true");

    row("clicks do not matter", "move A, press A, release A, move A, press B, release B, move off",
            "A hovered true, A pressed, A released, A clicked, B pressed, B released, B clicked, "
            "A hovered false");
}

void tst_MouseSignals::hovers()
{
    check();
}

void tst_MouseSignals::passedOn_data()
{
    QTest::addColumn<QString>("passedOn");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *passedOn, const char *input,
                             const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(passedOn) << QString::fromLatin1(input)
                            << QString::fromLatin1(expected);
    };
    const char *click = "press A, release A";
    const char *doubleClick = "press A, release A, second A, double A, release A";

    row("everything", "A pressed, A released, A clicked, A doubleClicked", doubleClick,
            "A pressed, chart pressed, A released, chart released, A clicked, chart clicked, "
            "A doubleClicked, chart doubleClicked, "
            "A released, chart released, A clicked, chart clicked");
    row("press only", "A pressed", click, "A pressed, chart pressed, A released, A clicked");
    row("release only", "A released", click, "A pressed, A released, chart released, A clicked");
    row("click only", "A clicked", click, "A pressed, A released, A clicked, chart clicked");
    row("double click only", "A doubleClicked", doubleClick,
            "A pressed, A released, A clicked, A doubleClicked, chart doubleClicked, "
            "A released, A clicked");
    row("release on the other", "A released", "press B, release A",
            "B pressed, A released, chart released, chart clicked");
    row("press, dragged beside", "A pressed", "press A, release off",
            "A pressed, chart pressed, chart released, chart clicked");
    // A press that was passed on was one on the trace nevertheless.
    row("press and release", "A pressed, A released", click,
            "A pressed, chart pressed, A released, chart released, A clicked");
    row("by the other trace", "B pressed, B released, B clicked", click,
            "A pressed, A released, A clicked");
    // There is nobody behind the chart.
    row("by the chart", "chart pressed, chart released, chart clicked, chart doubleClicked",
            "press off, release off, second off, double off, release off",
            "chart pressed, chart released, chart clicked, "
            "chart doubleClicked, chart released, chart clicked");
    row("by the chart, on a trace", "chart pressed, chart released, chart clicked", click,
            "A pressed, A released, A clicked");
}

void tst_MouseSignals::passedOn()
{
    QFETCH(QString, passedOn);
    check(passedOn);
}

void tst_MouseSignals::passedOnByHover_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("enter and leave on a trace")
            << u"enter A, leave A"_s
            << u"A hovered true, chart hovered true, A hovered false, chart hovered false"_s;
    QTest::newRow("moves") << u"move A, move B, move off"_s
                           << u"A hovered true, A hovered false, B hovered true, B hovered false"_s;
}

void tst_MouseSignals::passedOnByHover()
{
    check(u"A hovered true, A hovered false, B hovered true, B hovered false, "
          "chart hovered true, chart hovered false"_s);
}

void tst_MouseSignals::withoutTraces()
{
    MouseScene scene;
    QVERIFY2(scene.window.start(), scene.error());
    const QStringList everything = parts(u"enter off, move A, press A, release A, second A, "
                                         "double A, release A, move B, leave off"_s);
    QCOMPARE(scene.oneByOne(everything), QStringList());
    QCOMPARE(scene.allAtOnce(everything), QStringList());

    // What came too early is not made up for.
    scene.attach(*scene.a);
    QCOMPARE(scene.allAtOnce({}), QStringList());
    QCOMPARE(scene.allAtOnce({u"release A"_s}), QStringList({u"A released"_s, u"chart clicked"_s}));

    scene.chart().removeTrace(scene.a.get());
    QCOMPARE(scene.oneByOne(everything), QStringList());
    QCOMPARE(scene.allAtOnce(everything), QStringList());
}

// One answer for each event, in the order in which they came.
void tst_MouseSignals::longBatch()
{
    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    QStringList steps;
    QStringList expected;
    for (int i = 0; i < 300; ++i) {
        // Every number's ternary digits are another sequence of places.
        const QString place = QStringList{u"A"_s, u"B"_s, u"off"_s}.at((i + i / 3 + i / 9) % 3);
        const QString sender = place == u"off" ? u"chart"_s : place;
        steps.append(u"press "_s + place);
        expected.append(sender + u" pressed"_s);
        if (i % 7 == 0) {
            steps.append(u"release "_s + place);
            expected.append({sender + u" released"_s, sender + u" clicked"_s});
        }
    }
    QCOMPARE(scene.allAtOnce(steps), expected);
}

QTEST_MAIN(tst_MouseSignals)

#include "tst_mousesignals.moc"
