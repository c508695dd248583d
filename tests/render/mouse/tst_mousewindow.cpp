// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseScene.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! The mouse as it comes from the window system, by way of the application and the window. */
class tst_MouseWindow : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void click();
    void clickInOneFrame();
    void doubleClick_data();
    void doubleClick();
    void buttons_data();
    void buttons();
    void hover();
    void hoverInOneFrame();
    void drag();
    void itemCoordinates();
    void otherItemsOnTop();
    void disabled();
    void hidden();

private:
    static QStringList answers(MouseScene &scene);
    /*! Where the pointer rests before the test begins: the window has seen it enter. */
    static bool startAt(MouseScene &scene, QPoint place);

    static constexpr QPoint onA = {100, 30};
    static constexpr QPoint onB = {100, 70};
    static constexpr QPoint off = {100, 50};
};

void tst_MouseWindow::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_MouseWindow::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

QStringList tst_MouseWindow::answers(MouseScene &scene)
{
    return scene.allAtOnce({});
}

bool tst_MouseWindow::startAt(MouseScene &scene, QPoint place)
{
    if (!scene.start())
        return false;
    // A move to where the pointer is already would be none, and it is where the last test left it.
    QTest::mouseMove(&scene.window, {5, 95});
    QTest::mouseMove(&scene.window, place);
    return answers(scene).contains(u"chart hovered true"_s);
}

void tst_MouseWindow::click()
{
    MouseScene scene;
    QVERIFY2(startAt(scene, onA), scene.error());
    QTest::mousePress(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(scene), QStringList{u"A pressed"_s});
    QVERIFY(scene.chart().hasFocus());
    QTest::mouseRelease(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(scene), QStringList({u"A released"_s, u"A clicked"_s}));
    QCOMPARE(answers(scene), QStringList());
}

void tst_MouseWindow::clickInOneFrame()
{
    MouseScene scene;
    QVERIFY2(startAt(scene, onB), scene.error());
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onB);
    QTest::mouseClick(&scene.window, Qt::RightButton, Qt::NoModifier, onB);
    QCOMPARE(answers(scene), QStringList({u"B pressed"_s, u"B released"_s, u"B clicked"_s,
                                     u"B pressed"_s, u"B released"_s, u"B clicked"_s}));
}

void tst_MouseWindow::doubleClick_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<bool>("passesOn");
    QTest::addColumn<QStringList>("senders");
    QTest::newRow("on a trace") << onA << false << QStringList{u"A"_s};
    QTest::newRow("beside") << off << false << QStringList{u"chart"_s};
    QTest::newRow("passed on") << onB << true << QStringList{u"B"_s, u"chart"_s};
}

// Qt sends press, release, flagged press, double click, release.
void tst_MouseWindow::doubleClick()
{
    QFETCH(QPoint, place);
    QFETCH(bool, passesOn);
    QFETCH(QStringList, senders);

    MouseScene scene;
    QVERIFY2(startAt(scene, place), scene.error());
    scene.log.onSignal = [passesOn](const MouseSignal &, ChartMouseEvent &event) {
        event.setAccepted(!passesOn);
    };
    QStringList expected;
    for (const QString &name : {u"pressed"_s, u"released"_s, u"clicked"_s, u"doubleClicked"_s,
                 u"released"_s, u"clicked"_s}) {
        for (const QString &sender : senders)
            expected.append(sender + u' ' + name);
    }
    QTest::mouseDClick(&scene.window, Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(answers(scene), expected);
}

void tst_MouseWindow::buttons_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("left") << 0x1 << 0;
    QTest::newRow("right with shift") << 0x2 << 0x02000000;
    QTest::newRow("middle with control") << 0x4 << 0x04000000;
    QTest::newRow("back with alt") << 0x8 << 0x08000000;
    QTest::newRow("forward with everything") << 0x10 << 0x1e000000;
    QTest::newRow("one that few mice have") << 0x400000 << 0;
}

void tst_MouseWindow::buttons()
{
    QFETCH(int, button);
    QFETCH(int, modifiers);

    MouseScene scene;
    QVERIFY2(startAt(scene, onA), scene.error());
    QTest::mouseClick(&scene.window, static_cast<Qt::MouseButton>(button),
            Qt::KeyboardModifiers::fromInt(modifiers), onA);
    QVERIFY2(scene.window.answerEvents(), scene.error());
    const auto logged = scene.log.takeSignals();
    QCOMPARE(logged.size(), 3U);
    for (const MouseSignal &signal : logged) {
        QCOMPARE(signal.position, QPointF(onA));
        QCOMPARE(signal.button, button);
        QCOMPARE(signal.buttons, signal.name == u"pressed" ? button : 0);
        QCOMPARE(signal.modifiers, modifiers);
        QCOMPARE(signal.source, 0);
        QCOMPARE(signal.flags, 0);
    }
}

void tst_MouseWindow::hover()
{
    MouseScene scene;
    scene.chart().setSize({180.0, 100.0});
    QVERIFY2(scene.start(), scene.error());
    QTest::mouseMove(&scene.window, off);
    QCOMPARE(answers(scene), QStringList{u"chart hovered true"_s});
    QTest::mouseMove(&scene.window, onA);
    QCOMPARE(answers(scene), QStringList{u"A hovered true"_s});
    QTest::mouseMove(&scene.window, onA + QPoint(1, 0));
    QCOMPARE(answers(scene), QStringList());
    QTest::mouseMove(&scene.window, onB);
    QCOMPARE(answers(scene), QStringList({u"A hovered false"_s, u"B hovered true"_s}));
    QTest::mouseMove(&scene.window, off);
    QCOMPARE(answers(scene), QStringList{u"B hovered false"_s});
    QTest::mouseMove(&scene.window, {190, 50});
    QCOMPARE(answers(scene), QStringList{u"chart hovered false"_s});
    QTest::mouseMove(&scene.window, {191, 51});
    QCOMPARE(answers(scene), QStringList());
}

void tst_MouseWindow::hoverInOneFrame()
{
    MouseScene scene;
    scene.chart().setSize({180.0, 100.0});
    QVERIFY2(scene.start(), scene.error());
    for (const QPoint &place : {off, onA, onB, onA, QPoint(190, 30)})
        QTest::mouseMove(&scene.window, place);
    QCOMPARE(
            answers(scene), QStringList({u"chart hovered true"_s, u"A hovered true"_s,
                                    u"A hovered false"_s, u"B hovered true"_s, u"B hovered false"_s,
                                    u"A hovered true"_s, u"chart hovered false"_s}));
}

// While a button is held the chart has the mouse; what it is dragged over is not asked for.
void tst_MouseWindow::drag()
{
    MouseScene scene;
    QVERIFY2(startAt(scene, off), scene.error());
    QTest::mousePress(&scene.window, Qt::LeftButton, Qt::NoModifier, off);
    QCOMPARE(answers(scene), QStringList{u"chart pressed"_s});
    for (const QPoint &place : {onA, off, onB, QPoint(1, 1)}) {
        QTest::mouseMove(&scene.window, place);
        QCOMPARE(answers(scene), QStringList());
    }
    QTest::mouseRelease(&scene.window, Qt::LeftButton, Qt::NoModifier, onB);
    const QStringList logged = answers(scene);
    QCOMPARE(logged.mid(0, 2), QStringList({u"B released"_s, u"chart clicked"_s}));
}

void tst_MouseWindow::itemCoordinates()
{
    MouseScene scene;
    scene.chart().setPosition({20.0, 10.0});
    QVERIFY2(scene.start(), scene.error());
    QTest::mouseMove(&scene.window, onA + QPoint(20, 10));
    QCOMPARE(answers(scene), QStringList({u"A hovered true"_s, u"chart hovered true"_s}));
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onB + QPoint(20, 10));
    QVERIFY2(scene.window.answerEvents(), scene.error());
    for (const MouseSignal &signal : scene.log.takeSignals()) {
        if (signal.name.startsWith(u"hovered"))
            continue;
        QCOMPARE(signal.sender, u"B"_s);
        QCOMPARE(signal.position, QPointF(onB));
    }
    // Of an item within the chart: still the chart's, which gets what the item does not want.
    QQuickItem inner(&scene.chart());
    inner.setPosition({90.0, 20.0});
    inner.setSize({20.0, 20.0});
    inner.setAcceptedMouseButtons(Qt::AllButtons);
    QTest::mousePress(&scene.window, Qt::LeftButton, Qt::NoModifier, onA + QPoint(20, 10));
    QVERIFY2(scene.window.answerEvents(), scene.error());
    const auto logged = scene.log.takeSignals();
    QVERIFY(!logged.empty());
    QCOMPARE(logged.back().sender, u"A"_s);
    QCOMPARE(logged.back().name, u"pressed"_s);
    QCOMPARE(logged.back().position, QPointF(onA));
    QTest::mouseRelease(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
}

namespace {

/*! Takes every press. */
class Cover : public QQuickItem
{
public:
    using QQuickItem::QQuickItem;

protected:
    void mousePressEvent(QMouseEvent *event) override { event->accept(); }
};

} // namespace

void tst_MouseWindow::otherItemsOnTop()
{
    MouseScene scene;
    QVERIFY2(startAt(scene, onA), scene.error());
    Cover cover(scene.window.contentItem());
    cover.setSize({200.0, 40.0});
    cover.setAcceptedMouseButtons(Qt::LeftButton);
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(scene), QStringList());
    QTest::mouseClick(&scene.window, Qt::RightButton, Qt::NoModifier, onA);
    QCOMPARE(answers(scene), QStringList({u"A pressed"_s, u"A released"_s, u"A clicked"_s}));
}

void tst_MouseWindow::disabled()
{
    MouseScene scene;
    QVERIFY2(startAt(scene, onA), scene.error());
    scene.chart().setEnabled(false);
    static_cast<void>(answers(scene));
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    QTest::mouseDClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(scene), QStringList());
    scene.chart().setEnabled(true);
    static_cast<void>(answers(scene));
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(scene), QStringList({u"A pressed"_s, u"A released"_s, u"A clicked"_s}));
}

// What came before is answered, though there is nothing to be seen any more.
void tst_MouseWindow::hidden()
{
    MouseScene scene;
    QVERIFY2(startAt(scene, onA), scene.error());
    QTest::mousePress(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    scene.chart().setVisible(false);
    QTest::mouseRelease(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    // The window lets the pointer leave, too.
    const QStringList logged = answers(scene);
    QCOMPARE(logged.first(), u"A pressed"_s);
    QVERIFY(!logged.contains(u"A released"_s));
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(scene), QStringList());
    scene.chart().setVisible(true);
    QTest::mouseClick(&scene.window, Qt::LeftButton, Qt::NoModifier, onB);
    // Sooner or later the window lets the pointer enter again.
    QVERIFY(answers(scene).contains(u"B clicked"_s));
}

QTEST_MAIN(tst_MouseWindow)

#include "tst_mousewindow.moc"
