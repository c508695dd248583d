// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "QueueChart.h"

#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QPointingDevice>
#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array presses = {
        QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick};

} // namespace

/*! What presses, releases and double clicks put into the queue for the renderer. */
class tst_MouseQueue : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void rounding_data();
    void rounding();
    void beyondIntegers_data();
    void beyondIntegers();
    void buttons_data();
    void buttons();
    void device();
    void inputUntouched();
    void accepted();

    void secondPress();
    void flagsAreNotCopied();
    void grabbedMoves();
    void ungrab();
    void otherTypes();
};

void tst_MouseQueue::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseQueue::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_MouseQueue::rounding_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("rounded");

    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("whole") << 17.0 << 17.0;
    QTest::newRow("below a half") << 1.499 << 1.0;
    QTest::newRow("half") << 0.5 << 1.0;
    QTest::newRow("half after an even number") << 2.5 << 3.0;
    QTest::newRow("half after an odd number") << 3.5 << 4.0;
    QTest::newRow("negative half") << -0.5 << -1.0;
    QTest::newRow("negative half after an even number") << -2.5 << -3.0;
    QTest::newRow("negative below a half") << -1.25 << -1.0;
    // The largest double below a half: adding 0.5 to it gives 1.
    QTest::newRow("just below a half") << std::nextafter(0.5, 0.0) << 0.0;
    QTest::newRow("just below the next half") << std::nextafter(41.5, 0.0) << 41.0;
    QTest::newRow("large") << 2000000000.5 << 2000000001.0;
    QTest::newRow("large and negative") << -2000000000.5 << -2000000001.0;
}

void tst_MouseQueue::rounding()
{
    QFETCH(double, position);
    QFETCH(double, rounded);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : presses) {
        MouseInput(type, {position, 7.0}).sendTo(scene.chart);
        MouseInput(type, {8.0, position}).sendTo(scene.chart);
        const auto queued = scene.chart.takeQueued();
        QCOMPARE(queued.size(), 2);
        QVERIFY(queued.at(0).type == type);
        QVERIFY(queued.at(1).type == type);
        // Exactly: the comparison of points is a fuzzy one.
        QVERIFY(queued.at(0).position.x() == rounded);
        QVERIFY(queued.at(0).position.y() == 7.0);
        QVERIFY(queued.at(1).position.x() == 8.0);
        QVERIFY(queued.at(1).position.y() == rounded);
    }
}

void tst_MouseQueue::beyondIntegers_data()
{
    QTest::addColumn<QPointF>("position");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("huge") << QPointF(1e300, -1e300);
    QTest::newRow("infinite") << QPointF(-infinity, infinity);
    QTest::newRow("not a number") << QPointF(std::numeric_limits<double>::quiet_NaN(), 5.0);
}

// No integer is near these. They hit nothing and do no harm.
void tst_MouseQueue::beyondIntegers()
{
    QFETCH(QPointF, position);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : presses) {
        MouseInput(type, position).sendTo(scene.chart);
        const auto queued = scene.chart.takeQueued();
        QCOMPARE(queued.size(), 1);
        QVERIFY(std::isfinite(queued.first().position.x()));
        QVERIFY(std::isfinite(queued.first().position.y()));
        QVERIFY(queued.first().trace == nullptr);
    }
    for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave}) {
        HoverInput(type, position).sendTo(scene.chart);
        for (const auto &queued : scene.chart.takeQueued())
            QVERIFY(queued.trace == nullptr);
    }
}

void tst_MouseQueue::buttons_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Qt::MouseButtons>("held");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

    const auto row = [](const char *name, Qt::MouseButton button, Qt::MouseButtons held,
                             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::newRow(name) << button << held << modifiers;
    };
    row("left", Qt::LeftButton, Qt::LeftButton);
    row("right", Qt::RightButton, Qt::RightButton, Qt::ShiftModifier);
    row("middle", Qt::MiddleButton, Qt::MiddleButton, Qt::ControlModifier);
    row("back", Qt::BackButton, Qt::BackButton, Qt::AltModifier);
    row("forward", Qt::ForwardButton, Qt::ForwardButton, Qt::MetaModifier);
    row("task", Qt::TaskButton, Qt::TaskButton, Qt::KeypadModifier);
    row("last one", Qt::MaxMouseButton, Qt::MaxMouseButton);
    row("right beside left", Qt::RightButton, Qt::LeftButton | Qt::RightButton,
            Qt::ShiftModifier | Qt::ControlModifier);
    row("all held", Qt::LeftButton, Qt::AllButtons,
            Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier
                    | Qt::KeypadModifier | Qt::GroupSwitchModifier);
    row("others held", Qt::LeftButton, Qt::MiddleButton | Qt::BackButton);
    row("none", Qt::NoButton, Qt::NoButton);
}

void tst_MouseQueue::buttons()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(Qt::MouseButtons, held);
    QFETCH(Qt::KeyboardModifiers, modifiers);

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    QCOMPARE(scene.chart.acceptedMouseButtons(), Qt::MouseButtons(Qt::AllButtons));
    for (const QEvent::Type type : presses) {
        MouseInput(type, {1.0, 2.0}, button, held, modifiers).sendTo(scene.chart);
        const auto queued = scene.chart.takeQueued();
        QCOMPARE(queued.size(), 1);
        QVERIFY(queued.first().type == type);
        QCOMPARE(queued.first().button, button);
        QCOMPARE(queued.first().buttons, held);
        QCOMPARE(queued.first().modifiers, modifiers);
    }
}

void tst_MouseQueue::device()
{
    const QPointingDevice pen(u"pen"_s, 4711, QInputDevice::DeviceType::Stylus,
            QPointingDevice::PointerType::Pen, QInputDevice::Capability::Position, 1, 2);
    QVERIFY(&pen != QPointingDevice::primaryPointingDevice());

    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : presses) {
        MouseInput(type, {1.0, 2.0}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier, &pen)
                .sendTo(scene.chart);
    }
    for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave})
        HoverInput(type, {double(type), 2.0}, Qt::NoModifier, &pen).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 6);
    for (const auto &event : queued)
        QVERIFY(event.device == QPointingDevice::primaryPointingDevice());
}

// The copy shares nothing with the event that is still being delivered.
void tst_MouseQueue::inputUntouched()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : presses) {
        MouseInput input(type, {10.5, 20.25}, Qt::RightButton, Qt::RightButton, Qt::AltModifier);
        input.sendTo(scene.chart);
        QCOMPARE(input.type(), type);
        QCOMPARE(input.position(), QPointF(10.5, 20.25));
        QCOMPARE(input.scenePosition(), QPointF(1010.5, 2020.25));
        QCOMPARE(input.globalPosition(), QPointF(3010.5, 4020.25));
        QCOMPARE(input.button(), Qt::RightButton);
        QCOMPARE(input.modifiers(), Qt::KeyboardModifiers(Qt::AltModifier));
    }
    HoverInput hover(QEvent::HoverEnter, {30.5, 40.25});
    hover.sendTo(scene.chart);
    QCOMPARE(hover.position(), QPointF(30.5, 40.25));
    QCOMPARE(hover.globalPosition(), QPointF(3030.5, 4040.25));
    QCOMPARE(scene.chart.takeQueued().size(), 4);
}

// The chart takes presses, and with them what follows; plain moves go on to what lies behind it.
void tst_MouseQueue::accepted()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : presses) {
        MouseInput input(type, {10.0, 20.0});
        input.sendTo(scene.chart);
        QVERIFY(input.isAccepted());
    }
    MouseInput move(QEvent::MouseMove, {10.0, 20.0}, Qt::NoButton);
    move.sendTo(scene.chart);
    QVERIFY(!move.isAccepted());
}

void tst_MouseQueue::secondPress()
{
    QueueScene scene;
    ZoomDelegate rubberBand(&scene.chart);
    rubberBand.setVisible(false);
    scene.chart.setRubberBand(&rubberBand);
    scene.chart.setIsZoomEnabled(true);
    QVERIFY2(scene.start(), scene.window.error());

    HoverInput(QEvent::HoverMove, {5.0, 6.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 1);
    MouseInput second(QEvent::MouseButtonPress, {30.0, 40.0}, Qt::LeftButton, Qt::LeftButton);
    second.setCreatedDoubleClick();
    second.sendTo(scene.chart);
    QVERIFY(!rubberBand.isVisible());
    QVERIFY(!scene.chart.hasFocus());
    QCOMPARE(scene.chart.takeQueued().size(), 0);

    // Neither position nor buttons were remembered.
    HoverInput(QEvent::HoverMove, {5.0, 6.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    HoverInput(QEvent::HoverMove, {30.0, 40.0}).sendTo(scene.chart);
    const auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.first().button, Qt::NoButton);
    QCOMPARE(queued.first().buttons, Qt::MouseButtons(Qt::NoButton));

    // The same press without the flag does all of it.
    MouseInput(QEvent::MouseButtonPress, {30.0, 40.0}).sendTo(scene.chart);
    QVERIFY(rubberBand.isVisible());
    QVERIFY(scene.chart.hasFocus());
    QCOMPARE(scene.chart.takeQueued().size(), 1);
}

// Only a press is ignored for its flag; a copy carries none.
void tst_MouseQueue::flagsAreNotCopied()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : {QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}) {
        MouseInput input(type, {30.0, 40.0});
        input.setCreatedDoubleClick();
        input.sendTo(scene.chart);
        const auto queued = scene.chart.takeQueued();
        QCOMPARE(queued.size(), 1);
        QVERIFY(queued.first().type == type);
        QCOMPARE(queued.first().flags, Qt::MouseEventFlags());
    }
}

void tst_MouseQueue::grabbedMoves()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    MouseInput(QEvent::MouseButtonPress, {30.0, 50.0}).sendTo(scene.chart);
    for (const double x : {30.0, 31.0, 100.0, -5.0, 1000.0})
        MouseInput(QEvent::MouseMove, {x, 50.0}, Qt::NoButton).sendTo(scene.chart);
    auto queued = scene.chart.takeQueued();
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.first().type, QEvent::MouseButtonPress);

    // The position remembered is still the press's.
    HoverInput(QEvent::HoverMove, {30.0, 50.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 0);
    HoverInput(QEvent::HoverMove, {1000.0, 50.0}).sendTo(scene.chart);
    QCOMPARE(scene.chart.takeQueued().size(), 1);
}

void tst_MouseQueue::ungrab()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    QTest::mousePress(&scene.window, Qt::LeftButton, Qt::NoModifier, {100, 50});
    QTest::mouseMove(&scene.window, {120, 60});
    const auto isPress = [](const QueueChart::Queued &queued) {
        return queued.type == QEvent::MouseButtonPress;
    };
    auto queued = scene.chart.takeQueued();
    QCOMPARE(std::count_if(queued.begin(), queued.end(), isPress), 1);

    scene.chart.ungrabMouse();
    for (const auto &event : scene.chart.takeQueued())
        QVERIFY(event.type == QEvent::MouseMove || event.type == QEvent::HoverEnter);
    QTest::mouseRelease(&scene.window, Qt::LeftButton, Qt::NoModifier, {100, 50});
}

// Events that the chart has no handler for queue nothing, whatever their name.
void tst_MouseQueue::otherTypes()
{
    QueueScene scene;
    QVERIFY2(scene.start(), scene.window.error());
    for (const QEvent::Type type : {QEvent::NonClientAreaMouseButtonPress,
                 QEvent::NonClientAreaMouseMove, QEvent::ContextMenu, QEvent::User}) {
        MouseInput(type, {30.0, 50.0}).sendTo(scene.chart);
    }
    QCOMPARE(scene.chart.takeQueued().size(), 0);
}

QTEST_MAIN(tst_MouseQueue)

#include "tst_mousequeue.moc"
