// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "MouseScene.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <atomic>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! The event that a signal carries: what it holds, and which signals share it. */
class tst_MouseSignalsEvents : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void fields_data();
    void fields();
    void allEventsOfARelease();
    void hoverFields();
    void hoverAfterButtons();
    void accepted_data();
    void accepted();
    void sharedEvents_data();
    void sharedEvents();
    void eventsDieWithTheirSignal();

    void outsideOfSynchronisation();
    void oneSynchronisationLater();
    void withTheTimer();
};

void tst_MouseSignalsEvents::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseSignalsEvents::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_MouseSignalsEvents::fields_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<QPointF>("seen");
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("buttons");
    QTest::addColumn<int>("modifiers");

    const int shift = 0x02000000;
    const int control = 0x04000000;
    QTest::newRow("left on A") << QPointF(100.0, 30.0) << QPointF(100.0, 30.0) << 1 << 1 << 0;
    QTest::newRow("rounded on A") << QPointF(99.5, 29.5) << QPointF(100.0, 30.0) << 2 << 2 << shift;
    QTest::newRow("rounded down on A")
            << QPointF(99.25, 30.375) << QPointF(99.0, 30.0) << 4 << 7 << (shift | control);
    QTest::newRow("beside") << QPointF(10.5, 50.5) << QPointF(11.0, 51.0) << 8 << 9 << control;
    QTest::newRow("outside") << QPointF(-2.5, -0.5) << QPointF(-3.0, -1.0) << 0x4000000 << 0 << 0;
    QTest::newRow("far outside") << QPointF(100000.5, -100000.5) << QPointF(100001.0, -100001.0)
                                 << 1 << 1 << 0;
}

void tst_MouseSignalsEvents::fields()
{
    QFETCH(QPointF, position);
    QFETCH(QPointF, seen);
    QFETCH(int, button);
    QFETCH(int, buttons);
    QFETCH(int, modifiers);

    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    for (const QEvent::Type type :
            {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}) {
        MouseInput(type, position, static_cast<Qt::MouseButton>(button),
                Qt::MouseButtons::fromInt(buttons), Qt::KeyboardModifiers::fromInt(modifiers))
                .sendTo(scene.chart());
    }
    QVERIFY2(scene.window.answerEvents(), scene.error());
    const auto logged = scene.log.takeSignals();
    QCOMPARE(logged.size(), 4U); // pressed, released, clicked, doubleClicked
    for (const MouseSignal &signal : logged) {
        QCOMPARE(signal.sender, seen.x() > 90.0 && seen.y() == 30.0 ? u"A"_s : u"chart"_s);
        QCOMPARE(signal.position, seen);
        QCOMPARE(signal.button, button);
        QCOMPARE(signal.buttons, buttons);
        QCOMPARE(signal.modifiers, modifiers);
        QCOMPARE(signal.source, 0);
        QCOMPARE(signal.flags, 0);
        QVERIFY(signal.onGuiThread);
    }
}

void tst_MouseSignalsEvents::allEventsOfARelease()
{
    MouseScene scene;
    scene.log.onSignal = [](const MouseSignal &, ChartMouseEvent &event) {
        event.setAccepted(false);
    };
    QVERIFY2(scene.start(), scene.error());
    scene.send(u"press A"_s);
    MouseInput(QEvent::MouseButtonRelease, {88.5, 30.0}, Qt::RightButton, Qt::LeftButton,
            Qt::AltModifier)
            .sendTo(scene.chart());
    QVERIFY2(scene.window.answerEvents(), scene.error());
    auto logged = scene.log.takeSignals();
    QCOMPARE(logged.size(), 6U);
    logged.erase(logged.begin(), logged.begin() + 2);
    for (const MouseSignal &signal : logged) {
        QCOMPARE(signal.position, QPointF(89.0, 30.0));
        QCOMPARE(signal.button, 2);
        QCOMPARE(signal.buttons, 1);
        QCOMPARE(signal.modifiers, 0x08000000);
    }
}

void tst_MouseSignalsEvents::hoverFields()
{
    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    HoverInput(QEvent::HoverEnter, {100.5, 29.625}, Qt::ShiftModifier).sendTo(scene.chart());
    HoverInput(QEvent::HoverMove, {101.499, 70.25}, Qt::AltModifier).sendTo(scene.chart());
    HoverInput(QEvent::HoverLeave, {-7.5, 70.0}).sendTo(scene.chart());
    QVERIFY2(scene.window.answerEvents(), scene.error());
    const auto logged = scene.log.takeSignals();
    QCOMPARE(logged.size(), 5U); // A and chart entered, A left, B entered, chart left
    const QPointF positions[] = {
            {101.0, 30.0}, {101.0, 30.0}, {101.0, 70.0}, {101.0, 70.0}, {-8.0, 70.0}};
    const int modifiers[] = {0x02000000, 0x02000000, 0x08000000, 0x08000000, 0};
    for (std::size_t i = 0; i < 5; ++i) {
        QCOMPARE(logged[i].position, positions[i]);
        QCOMPARE(logged[i].modifiers, modifiers[i]);
        QCOMPARE(logged[i].button, 0);
        QCOMPARE(logged[i].buttons, 0);
        QCOMPARE(logged[i].source, 0);
        QCOMPARE(logged[i].flags, 0);
        QVERIFY(logged[i].accepted);
        QVERIFY(logged[i].onGuiThread);
    }
}

// A hovering pointer tells of the button that was pressed last, and of those still held.
void tst_MouseSignalsEvents::hoverAfterButtons()
{
    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    const auto buttonsOfMove = [&scene](const QString &step) {
        scene.send(step);
        if (!scene.window.answerEvents())
            qFatal("%s", scene.error());
        const auto logged = scene.log.takeSignals();
        return logged.size() == 1U ? QPoint(logged.front().button, logged.front().buttons)
                                   : QPoint(-1, -1);
    };
    const auto mouse = [&scene](QEvent::Type type, Qt::MouseButton button,
                               Qt::MouseButtons buttons) {
        MouseInput(type, {100.0, 50.0}, button, buttons).sendTo(scene.chart());
        if (!scene.window.answerEvents())
            qFatal("%s", scene.error());
        QVERIFY(!scene.log.takeSignals().empty());
    };
    QCOMPARE(buttonsOfMove(u"move A"_s), QPoint(0, 0));
    mouse(QEvent::MouseButtonPress, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    QCOMPARE(buttonsOfMove(u"move off"_s), QPoint(2, 3));
    mouse(QEvent::MouseButtonRelease, Qt::RightButton, Qt::LeftButton);
    QCOMPARE(buttonsOfMove(u"move A"_s), QPoint(0, 1));
    mouse(QEvent::MouseButtonDblClick, Qt::MiddleButton, Qt::MiddleButton);
    QCOMPARE(buttonsOfMove(u"move off"_s), QPoint(4, 4));
    mouse(QEvent::MouseButtonRelease, Qt::MiddleButton, Qt::NoButton);
    QCOMPARE(buttonsOfMove(u"move A"_s), QPoint(0, 0));
}

void tst_MouseSignalsEvents::accepted_data()
{
    QTest::addColumn<bool>("passedOn");
    QTest::addColumn<QStringList>("input");
    QTest::addColumn<QStringList>("expected");

    const QStringList onA = {u"press A"_s, u"release A"_s, u"double A"_s};
    const QStringList beside = {u"press off"_s, u"release off"_s, u"double off"_s};
    QTest::newRow("a trace's") << false << onA
                               << QStringList{u"A pressed true"_s, u"A released true"_s,
                                          u"A clicked true"_s, u"A doubleClicked true"_s};
    // The chart sees that nobody took it; only a click's event is another one.
    QTest::newRow("the chart's") << false << beside
                                 << QStringList{u"chart pressed false"_s, u"chart released false"_s,
                                            u"chart clicked true"_s,
                                            u"chart doubleClicked false"_s};
    QTest::newRow("passed on") << true << onA
                               << QStringList{u"A pressed true"_s, u"chart pressed false"_s,
                                          u"A released true"_s, u"chart released false"_s,
                                          u"A clicked true"_s, u"chart clicked true"_s,
                                          u"A doubleClicked true"_s,
                                          u"chart doubleClicked false"_s};
    QTest::newRow("hovering") << false << QStringList{u"enter A"_s, u"move B"_s, u"leave B"_s}
                              << QStringList{u"A hovered true true"_s, u"chart hovered true true"_s,
                                         u"A hovered false true"_s, u"B hovered true true"_s,
                                         u"B hovered false true"_s, u"chart hovered false true"_s};
}

void tst_MouseSignalsEvents::accepted()
{
    QFETCH(bool, passedOn);
    QFETCH(QStringList, input);
    QFETCH(QStringList, expected);

    MouseScene scene;
    QStringList seen;
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
        seen.append(signal.sender + u' ' + signal.name
                    + QString::fromLatin1(signal.accepted ? " true" : " false"));
        if (passedOn)
            event.setAccepted(false);
    };
    QVERIFY2(scene.start(), scene.error());
    for (const QString &step : input)
        scene.send(step);
    QVERIFY2(scene.window.answerEvents(), scene.error());
    QCOMPARE(seen, expected);
}

void tst_MouseSignalsEvents::sharedEvents_data()
{
    QTest::addColumn<QStringList>("input");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("press") << QStringList{u"press A"_s}
                           << QStringList{u"A pressed"_s, u"chart pressed after A pressed"_s};
    QTest::newRow("release") << QStringList{u"release A"_s}
                             << QStringList{u"A released"_s, u"chart released after A released"_s,
                                        u"chart clicked"_s};
    QTest::newRow("release beside") << QStringList{u"release off"_s}
                                    << QStringList{u"chart released"_s, u"chart clicked"_s};
    QTest::newRow("click") << QStringList{u"press A"_s, u"release A"_s}
                           << QStringList{u"A pressed"_s, u"chart pressed after A pressed"_s,
                                      u"A released"_s, u"chart released after A released"_s,
                                      u"A clicked"_s, u"chart clicked"_s};
    QTest::newRow("double click") << QStringList{u"press A"_s, u"double A"_s, u"double off"_s}
                                  << QStringList{u"A pressed"_s, u"chart pressed after A pressed"_s,
                                             u"A doubleClicked"_s,
                                             u"chart doubleClicked after A doubleClicked"_s,
                                             u"chart doubleClicked"_s};
    QTest::newRow("enter and leave")
            << QStringList{u"enter A"_s, u"leave A"_s}
            << QStringList{u"A hovered true"_s, u"chart hovered true after A hovered true"_s,
                       u"A hovered false"_s, u"chart hovered false after A hovered false"_s};
    QTest::newRow("from one to the other")
            << QStringList{u"move A"_s, u"move B"_s, u"move off"_s}
            << QStringList{u"A hovered true"_s, u"A hovered false"_s,
                       u"B hovered true after A hovered false"_s, u"B hovered false"_s};
}

// Each handler leaves its mark in the event. One without a mark is a new one.
void tst_MouseSignalsEvents::sharedEvents()
{
    QFETCH(QStringList, input);
    QFETCH(QStringList, expected);

    MouseScene scene;
    QStringList seen;
    const ChartMouseEvent *previous = nullptr;
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &event) {
        const QString name = signal.sender + u' ' + signal.name;
        const QString mark = event.property("mark").toString();
        seen.append(mark.isEmpty() ? name : name + u" after "_s + mark);
        if (!mark.isEmpty())
            QVERIFY(&event == previous);
        previous = &event;
        event.setProperty("mark", name);
        event.setAccepted(false);
    };
    QVERIFY2(scene.start(), scene.error());
    for (const QString &step : input)
        scene.send(step);
    QVERIFY2(scene.window.answerEvents(), scene.error());
    QCOMPARE(seen, expected);
}

void tst_MouseSignalsEvents::eventsDieWithTheirSignal()
{
    MouseScene scene;
    int alive = 0;
    QObject context;
    scene.log.onSignal = [&](const MouseSignal &, ChartMouseEvent &event) {
        QVERIFY(!event.parent());
        ++alive;
        connect(&event, &QObject::destroyed, &context, [&alive] { --alive; });
    };
    QVERIFY2(scene.start(), scene.error());
    const QStringList signalsOfAll = scene.allAtOnce({u"enter A"_s, u"press A"_s, u"release A"_s,
            u"double A"_s, u"release off"_s, u"move off"_s, u"leave off"_s});
    QCOMPARE(signalsOfAll.size(), 10);
    QCOMPARE(alive, 0);
}

// Handlers may change whatever they like: the scene graph is not looking.
void tst_MouseSignalsEvents::outsideOfSynchronisation()
{
    MouseScene scene;
    std::atomic<bool> isSynchronising = false;
    connect(
            &scene.window, &QQuickWindow::beforeSynchronizing, &scene.window,
            [&] { isSynchronising = true; }, Qt::DirectConnection);
    connect(
            &scene.window, &QQuickWindow::afterSynchronizing, &scene.window,
            [&] { isSynchronising = false; }, Qt::DirectConnection);
    std::atomic<int> received = 0;
    std::atomic<int> receivedOutside = 0;
    connect(
            &scene.chart(), &Chart::mouseEventResponsesReceived, &scene.window,
            [&] { ++(isSynchronising ? received : receivedOutside); }, Qt::DirectConnection);
    int seen = 0;
    int seenInside = 0;
    scene.log.onSignal = [&](const MouseSignal &signal, ChartMouseEvent &) {
        QVERIFY(signal.onGuiThread);
        ++(isSynchronising ? seenInside : seen);
    };
    QVERIFY2(scene.start(), scene.error());
    static_cast<void>(scene.allAtOnce(
            {u"enter A"_s, u"press A"_s, u"release A"_s, u"double off"_s, u"leave off"_s}));
    QCOMPARE(seen, 7);
    QCOMPARE(seenInside, 0);
    // Once for all that came in one frame.
    QCOMPARE(received, 1);
    QCOMPARE(receivedOutside, 0);
}

void tst_MouseSignalsEvents::oneSynchronisationLater()
{
    MouseScene scene;
    std::atomic<int> received = 0;
    connect(
            &scene.chart(), &Chart::mouseEventResponsesReceived, &scene.window, [&] { ++received; },
            Qt::DirectConnection);
    QVERIFY2(scene.start(), scene.error());
    const auto frame = [&scene] {
        const bool isDone = scene.window.frame();
        QCoreApplication::sendPostedEvents();
        return isDone;
    };
    int disturbed = 0;
    for (int i = 0; i < 3; ++i) {
        const int before = scene.window.synchronisations();
        scene.send(u"press A"_s);
        QVERIFY2(frame(), scene.error());
        if (scene.window.synchronisations() != before + 1) {
            // The display server wanted a frame of its own: this round says nothing.
            QVERIFY(++disturbed < 10);
            scene.send(u"release A"_s);
            QVERIFY2(frame() && frame() && frame(), scene.error());
            static_cast<void>(scene.log.take());
            received = i;
            --i;
            continue;
        }
        QCOMPARE(scene.log.take(), QStringList());
        QCOMPARE(received, i);

        scene.send(u"release A"_s);
        QVERIFY2(frame(), scene.error());
        QCOMPARE(scene.window.synchronisations(), before + 2);
        QCOMPARE(scene.log.take(), QStringList{u"A pressed"_s});
        QCOMPARE(received, i + 1);

        QVERIFY2(frame(), scene.error());
        QCOMPARE(scene.log.take(), QStringList({u"A released"_s, u"A clicked"_s}));
        QVERIFY2(frame(), scene.error());
        QCOMPARE(scene.log.take(), QStringList());
        QCOMPARE(received, i + 2);
        received = i + 1;
    }
}

void tst_MouseSignalsEvents::withTheTimer()
{
    MouseScene scene;
    QVERIFY2(scene.start(), scene.error());
    scene.window.startTicking();
    scene.send(u"press A"_s);
    scene.send(u"release A"_s);
    QStringList logged;
    QTRY_VERIFY((logged += scene.log.take()).size() >= 3);
    QCOMPARE(logged, QStringList({u"A pressed"_s, u"A released"_s, u"A clicked"_s}));
}

QTEST_MAIN(tst_MouseSignalsEvents)

#include "tst_mousesignals_events.moc"
