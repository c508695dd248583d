// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "QueueChart.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! What hover events put into the queue for the renderer, and what they take over from the buttons
    before them. */
class tst_MouseHover : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void types();
    void unrounded_data();
    void unrounded();
    void modifiers();
    void buttons_data();
    void buttons();
    void buttonsWithoutTraces();

    void distance_data();
    void distance();
    void creeping();
    void enterAndLeaveAtTheSamePlace();
    void firstPosition();
    void lastPosition_data();
    void lastPosition();
    void lastPositionWithoutTraces_data();
    void lastPositionWithoutTraces();
};

void tst_MouseHover::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseHover::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_MouseHover::types()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    HoverInput(QEvent::HoverEnter, {1.0, 2.0}).sendTo(scene.chart);
    HoverInput(QEvent::HoverMove, {3.0, 4.0}).sendTo(scene.chart);
    HoverInput(QEvent::HoverLeave, {5.0, 6.0}).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 3);
    QCOMPARE(int(queued.at(0).type), 127);
    QCOMPARE(int(queued.at(1).type), 5); // a mouse move, no hover move
    QCOMPARE(int(queued.at(2).type), 128);
    QCOMPARE(queued.at(0).position, QPointF(1.0, 2.0));
    QCOMPARE(queued.at(1).position, QPointF(3.0, 4.0));
    QCOMPARE(queued.at(2).position, QPointF(5.0, 6.0));
    for (const auto &event : queued)
        QCOMPARE(event.flags, Qt::MouseEventFlags());
}

void tst_MouseHover::unrounded_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::newRow("whole") << QPointF(3.0, 4.0);
    QTest::newRow("fractions") << QPointF(3.25, 4.75);
    QTest::newRow("halves") << QPointF(3.5, -4.5);
    QTest::newRow("no exact fractions") << QPointF(0.1, -0.7);
    QTest::newRow("far away") << QPointF(1e18, -1e-18);
}

void tst_MouseHover::unrounded()
{
    QFETCH(QPointF, position);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave}) {
        // From elsewhere: a move to the same place is none.
        MouseInput(QEvent::MouseButtonPress, {77.0, 77.0}).sendTo(scene.chart);
        HoverInput(type, position).sendTo(scene.chart);
        const auto queued = scene.chart.takeQueued();
        QCOMPARE(queued.size(), 2);
        // Exactly: the comparison of points is a fuzzy one.
        QVERIFY(queued.at(1).position.x() == position.x());
        QVERIFY(queued.at(1).position.y() == position.y());
    }
}

void tst_MouseHover::modifiers()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    // Its own ones, not those of the press before.
    MouseInput(
            QEvent::MouseButtonPress, {7.0, 7.0}, Qt::LeftButton, Qt::LeftButton, Qt::AltModifier)
            .sendTo(scene.chart);
    double x = 10.0;
    for (const Qt::KeyboardModifiers held : {Qt::KeyboardModifiers(Qt::NoModifier),
                 Qt::ShiftModifier | Qt::ControlModifier, Qt::KeyboardModifiers(Qt::MetaModifier)})
        for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave})
            HoverInput(type, {++x, 2.0}, held).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1 + 3 * 3);
    for (int i = 1; i <= 3; ++i) {
        QCOMPARE(queued.at(i).modifiers, Qt::KeyboardModifiers(Qt::NoModifier));
        QCOMPARE(queued.at(i + 3).modifiers, Qt::ShiftModifier | Qt::ControlModifier);
        QCOMPARE(queued.at(i + 6).modifiers, Qt::KeyboardModifiers(Qt::MetaModifier));
    }
}

namespace {

struct Step
{
    QEvent::Type type = QEvent::None;
    Qt::MouseButton button = Qt::NoButton;
    Qt::MouseButtons buttons;
    bool createdDoubleClick = false;

    void sendTo(QQuickItem &item) const
    {
        MouseInput input(type, {50.0, 50.0}, button, buttons);
        if (createdDoubleClick)
            input.setCreatedDoubleClick();
        input.sendTo(item);
    }
};
using Steps = QList<Step>;

} // namespace

void tst_MouseHover::buttons_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("buttons");

    const Step pressed = {QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton};
    const Step released = {QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton};
    const Step doubleClicked = {QEvent::MouseButtonDblClick, Qt::MiddleButton, Qt::MiddleButton};
    const Step rightToo = {
            QEvent::MouseButtonPress, Qt::RightButton, Qt::LeftButton | Qt::RightButton};
    const Step rightReleased = {QEvent::MouseButtonRelease, Qt::RightButton, Qt::LeftButton};
    Step second = rightToo;
    second.createdDoubleClick = true;
    const Step moved = {QEvent::MouseMove, Qt::NoButton, Qt::BackButton};

    QTest::newRow("at first") << Steps{} << 0 << 0;
    QTest::newRow("press") << Steps{pressed} << 1 << 1;
    QTest::newRow("release") << Steps{pressed, released} << 0 << 0;
    QTest::newRow("two presses") << Steps{pressed, rightToo} << 2 << 3;
    QTest::newRow("one of two released") << Steps{pressed, rightToo, rightReleased} << 0 << 1;
    QTest::newRow("release alone") << Steps{rightReleased} << 0 << 1;
    QTest::newRow("double click") << Steps{doubleClicked} << 4 << 4;
    QTest::newRow("after a double click") << Steps{doubleClicked, released} << 0 << 0;
    QTest::newRow("second press") << Steps{pressed, released, second} << 0 << 0;
    QTest::newRow("second press while held") << Steps{pressed, second} << 1 << 1;
    QTest::newRow("move with the grab") << Steps{pressed, moved} << 1 << 1;
}

void tst_MouseHover::buttons()
{
    QFETCH(Steps, steps);
    QFETCH(int, button);
    QFETCH(int, buttons);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const Step &step : steps)
        step.sendTo(scene.chart);
    static_cast<void>(scene.chart.takeQueued());
    double x = 60.0;
    // Hover events themselves change nothing about buttons.
    for (const QEvent::Type type :
            {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave, QEvent::HoverMove})
        HoverInput(type, {++x, 50.0}).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 4);
    for (const auto &event : queued) {
        QCOMPARE(int(event.button), button);
        QCOMPARE(int(event.buttons.toInt()), buttons);
    }
}

// Buttons are remembered, too, while nothing can be hit.
void tst_MouseHover::buttonsWithoutTraces()
{
    QueueScene scene;
    QVERIFY2(scene.window.start(), scene.window.error());
    MouseInput(
            QEvent::MouseButtonPress, {5.0, 5.0}, Qt::RightButton, Qt::LeftButton | Qt::RightButton)
            .sendTo(scene.chart);
    scene.chart.addTrace(&scene.trace);
    HoverInput(QEvent::HoverEnter, {6.0, 6.0}).sendTo(scene.chart);
    scene.chart.removeTrace(&scene.trace);
    MouseInput(QEvent::MouseButtonRelease, {5.0, 5.0}, Qt::RightButton, Qt::LeftButton)
            .sendTo(scene.chart);
    scene.chart.addTrace(&scene.trace);
    HoverInput(QEvent::HoverLeave, {7.0, 7.0}).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 2);
    QCOMPARE(queued.at(0).button, Qt::RightButton);
    QCOMPARE(queued.at(0).buttons, Qt::LeftButton | Qt::RightButton);
    QCOMPARE(queued.at(1).button, Qt::NoButton);
    QCOMPARE(queued.at(1).buttons, Qt::MouseButtons(Qt::LeftButton));
}

void tst_MouseHover::distance_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<bool>("isMove");

    const auto row = [](const char *name, double from, double to, bool isMove) {
        QTest::newRow(name) << from << to << isMove;
    };
    row("same place", 30.0, 30.0, false);
    row("a pixel on", 30.0, 31.0, true);
    row("a thousandth on", 30.0, 30.001, true);

    // One of them zero: the distance counts.
    row("stays at zero", 0.0, 0.0, false);
    row("negative zero", 0.0, -0.0, false);
    row("at the threshold from zero", 0.0, 1e-12, false);
    row("beyond the threshold from zero", 0.0, 1.0001e-12, true);
    row("below zero", 0.0, -1e-12, false);
    row("further below zero", 0.0, -1.0001e-12, true);
    row("back to zero", 1e-12, 0.0, false);
    row("back to zero from further", -1.0001e-12, 0.0, true);

    // Otherwise it counts in proportion. Doubles from 64 to 128 are 2^-46 = 1.42108547...e-14
    // apart: 7036 of these steps are 0.99987...e-10, 7037 are 1.000017...e-10.
    const double step = std::ldexp(1.0, -46);
    row("at the threshold", 100.0, 100.0 + 7036.0 * step, false);
    row("beyond the threshold", 100.0, 100.0 + 7037.0 * step, true);
    row("back at the threshold", 100.0 + 7036.0 * step, 100.0, false);
    row("back beyond the threshold", 100.0 + 7037.0 * step, 100.0, true);
    row("negative, at the threshold", -100.0, -100.0 - 7036.0 * step, false);
    row("negative, beyond the threshold", -100.0, -100.0 - 7037.0 * step, true);
    // From 1 to 2 they are 2^-52 apart: 4503 steps are 0.99986...e-12, 4504 are 1.00008...e-12.
    const double small = std::ldexp(1.0, -52);
    row("at the threshold from one", 1.0, 1.0 + 4503.0 * small, false);
    row("beyond the threshold from one", 1.0, 1.0 + 4504.0 * small, true);
    row("nearer than from zero, in proportion far", 1e-13, 2e-13, true);
    row("across zero", 1e-13, -1e-13, true);
    row("far out", 1e9, 1e9 + 0.0009, false);
    row("further out", 1e9, 1e9 + 0.0011, true);
}

void tst_MouseHover::distance()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(bool, isMove);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    const auto movesFrom = [&scene](const QPointF &first, const QPointF &second) {
        HoverInput(QEvent::HoverEnter, first).sendTo(scene.chart);
        HoverInput(QEvent::HoverMove, second).sendTo(scene.chart);
        return scene.chart.takeQueued().size() - 1;
    };
    QCOMPARE(movesFrom({from, 7.0}, {to, 7.0}), isMove ? 1 : 0);
    QCOMPARE(movesFrom({7.0, from}, {7.0, to}), isMove ? 1 : 0);
    QCOMPARE(movesFrom({from, from}, {to, to}), isMove ? 1 : 0);
    // One coordinate is enough.
    QCOMPARE(movesFrom({from, 7.0}, {to, 8.0}), 1);
    QCOMPARE(movesFrom({8.0, from}, {7.0, to}), 1);
}

// Each place is compared with the one before it, whether that one was queued or not.
void tst_MouseHover::creeping()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    HoverInput(QEvent::HoverEnter, {100.0, 50.0}).sendTo(scene.chart);
    const double step = std::ldexp(1.0, -34); // 5.8e-11
    double x = 100.0;
    for (int i = 0; i < 50; ++i)
        HoverInput(QEvent::HoverMove, {x += step, 50.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 1);
    HoverInput(QEvent::HoverMove, {100.0, 50.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 1);
}

void tst_MouseHover::enterAndLeaveAtTheSamePlace()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverLeave, QEvent::HoverEnter,
                 QEvent::HoverEnter, QEvent::HoverLeave, QEvent::HoverLeave})
        HoverInput(type, {30.0, 40.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 6);
}

// Before anything was seen, the pointer is taken to be at the origin.
void tst_MouseHover::firstPosition()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    HoverInput(QEvent::HoverMove, {0.0, 0.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    HoverInput(QEvent::HoverMove, {0.0, 1.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 1);
}

void tst_MouseHover::lastPosition_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<bool>("createdDoubleClick");
    QTest::addColumn<QPointF>("last");

    const auto row = [](const char *name, QEvent::Type type, const QPointF &at, const QPointF &last,
                             bool createdDoubleClick = false) {
        QTest::newRow(name) << int(type) << at << createdDoubleClick << last;
    };
    const QPointF before(11.25, 12.75);
    row("press", QEvent::MouseButtonPress, {30.0, 40.0}, {30.0, 40.0});
    row("press, rounded", QEvent::MouseButtonPress, {30.5, 40.25}, {31.0, 40.0});
    row("double click, rounded", QEvent::MouseButtonDblClick, {-30.5, -0.5}, {-31.0, -1.0});
    row("release", QEvent::MouseButtonRelease, {30.0, 40.0}, before);
    row("move with the grab", QEvent::MouseMove, {30.0, 40.0}, before);
    row("second press", QEvent::MouseButtonPress, {30.0, 40.0}, before, true);
    row("enter", QEvent::HoverEnter, {30.5, 40.25}, {30.5, 40.25});
    row("move", QEvent::HoverMove, {30.5, 40.25}, {30.5, 40.25});
    row("leave", QEvent::HoverLeave, {30.5, 40.25}, {30.5, 40.25});
}

// Which place a following move has to differ from.
void tst_MouseHover::lastPosition()
{
    QFETCH(int, type);
    QFETCH(QPointF, at);
    QFETCH(bool, createdDoubleClick);
    QFETCH(QPointF, last);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    const auto send = [&] {
        HoverInput(QEvent::HoverEnter, {11.25, 12.75}).sendTo(scene.chart);
        const auto eventType = static_cast<QEvent::Type>(type);
        if (eventType == QEvent::HoverEnter || eventType == QEvent::HoverMove
                || eventType == QEvent::HoverLeave) {
            HoverInput(eventType, at).sendTo(scene.chart);
        } else {
            MouseInput input(eventType, at);
            if (createdDoubleClick)
                input.setCreatedDoubleClick();
            input.sendTo(scene.chart);
        }
        static_cast<void>(scene.chart.takeQueued());
    };
    send();
    HoverInput(QEvent::HoverMove, last).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    for (const QPointF &other : {at, QPointF(11.25, 12.75)}) {
        if (other == last)
            continue;
        send();
        HoverInput(QEvent::HoverMove, other).sendTo(scene.chart);
        QCOMPARE(scene.chart.takeQueued().size(), 1);
    }
}

void tst_MouseHover::lastPositionWithoutTraces_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("press") << int(QEvent::MouseButtonPress);
    QTest::newRow("double click") << int(QEvent::MouseButtonDblClick);
    QTest::newRow("enter") << int(QEvent::HoverEnter);
    QTest::newRow("move") << int(QEvent::HoverMove);
    QTest::newRow("leave") << int(QEvent::HoverLeave);
}

// Places are remembered, too, while nothing can be hit.
void tst_MouseHover::lastPositionWithoutTraces()
{
    QFETCH(int, type);

    QueueScene scene;
    QVERIFY2(scene.window.start(), scene.window.error());
    const auto eventType = static_cast<QEvent::Type>(type);
    if (eventType == QEvent::MouseButtonPress || eventType == QEvent::MouseButtonDblClick)
        MouseInput(eventType, {30.0, 40.0}).sendTo(scene.chart);
    else
        HoverInput(eventType, {30.0, 40.0}).sendTo(scene.chart);
    scene.chart.addTrace(&scene.trace);
    HoverInput(QEvent::HoverMove, {30.0, 40.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    HoverInput(QEvent::HoverMove, {0.0, 0.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 1);
}

QTEST_MAIN(tst_MouseHover)

#include "tst_mousehover.moc"
