// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "ZoomWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! Which buttons and clicks start, move and end a zoom drag. */
class tst_ZoomDragButtons : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void otherButtons_data();
    void otherButtons();
    void otherButtonMeanwhile_data();
    void otherButtonMeanwhile();
    void leftButtonSecond();
    void leftButtonReleasedFirst();
    void leftPressedAgain();
    void doubleClick();
    void doubleClickHeld();
    void doubleClickThenDrag();
    void thirdPress();
    void quickPressOfAnotherButton();
};

void tst_ZoomDragButtons::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ZoomDragButtons::otherButtons_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
    QTest::newRow("back") << Qt::BackButton;
    QTest::newRow("last") << Qt::ExtraButton24;
}

void tst_ZoomDragButtons::otherButtons()
{
    QFETCH(Qt::MouseButton, button);

    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.drag({40.0, 30.0}, {120.0, 80.0}, button);
    QCOMPARE(window.takeLog(), QStringList());
    QCOMPARE(window.bandRect(), QRectF());
}

void tst_ZoomDragButtons::otherButtonMeanwhile_data()
{
    otherButtons_data();
}

void tst_ZoomDragButtons::otherButtonMeanwhile()
{
    QFETCH(Qt::MouseButton, button);

    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    window.mouse.press({60.0, 50.0}, button);
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    window.mouse.move({80.0, 60.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 40.0, 30.0));
    window.mouse.release({80.0, 60.0}, button);
    QCOMPARE(window.takeLog(), QStringList{u"shown"_s});
    window.mouse.move({90.0, 70.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 50.0, 40.0));
    window.mouse.release({90.0, 70.0});
    QCOMPARE(window.takeLog(), QStringList({u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
}

void tst_ZoomDragButtons::leftButtonSecond()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({10.0, 10.0}, Qt::RightButton);
    window.mouse.move({40.0, 30.0});
    window.mouse.press({40.0, 30.0}, Qt::LeftButton);
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 0.0, 0.0));
    window.mouse.move({60.0, 50.0});
    window.mouse.release({60.0, 50.0}, Qt::RightButton);
    QVERIFY(window.isBandShown());
    window.mouse.move({70.0, 50.0});
    window.mouse.release({70.0, 50.0}, Qt::LeftButton);
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 30.0, 20.0));
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
}

void tst_ZoomDragButtons::leftButtonReleasedFirst()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.press({40.0, 30.0}, Qt::RightButton);
    window.mouse.move({60.0, 50.0});
    window.mouse.release({60.0, 50.0}, Qt::LeftButton);
    QVERIFY(!window.isBandShown());
    QCOMPARE(window.zoomCount, 1);
    window.mouse.move({90.0, 70.0});
    window.mouse.release({90.0, 70.0}, Qt::RightButton);
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragButtons::leftPressedAgain()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    // The platform has lost a release. It is a new drag from its own point.
    window.mouse.press({100.0, 80.0});
    QCOMPARE(window.bandRect(), QRectF(100.0, 80.0, 0.0, 0.0));
    window.mouse.move({110.0, 70.0});
    QCOMPARE(window.bandRect(), QRectF(100.0, 70.0, 10.0, 10.0));
    window.mouse.release({110.0, 70.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
}

void tst_ZoomDragButtons::doubleClick()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s}));
    window.mouse.pressQuickly({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    QCOMPARE(window.takeLog(), QStringList());
}

void tst_ZoomDragButtons::doubleClickHeld()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    (void)window.takeLog();
    window.mouse.pressQuickly({40.0, 30.0});
    window.mouse.move({120.0, 80.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 0.0, 0.0));
    window.mouse.release({120.0, 80.0});
    QCOMPARE(window.takeLog(), QStringList());
}

void tst_ZoomDragButtons::doubleClickThenDrag()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    window.mouse.pressQuickly({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    (void)window.takeLog();
    window.mouse.drag({41.0, 31.0}, {120.0, 80.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
    QCOMPARE(window.bandRect(), QRectF(41.0, 31.0, 79.0, 49.0));
}

void tst_ZoomDragButtons::thirdPress()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    window.mouse.pressQuickly({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    // However soon it follows, it is the first one of another click.
    window.mouse.pressQuickly({40.0, 30.0});
    QVERIFY(window.isBandShown());
    window.mouse.move({60.0, 50.0});
    window.mouse.release({60.0, 50.0});
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragButtons::quickPressOfAnotherButton()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0}, Qt::RightButton);
    window.mouse.release({40.0, 30.0}, Qt::RightButton);
    window.mouse.pressQuickly({40.0, 30.0}, Qt::LeftButton);
    QVERIFY(window.isBandShown());
}

QTEST_MAIN(tst_ZoomDragButtons)

#include "tst_zoomdrag_buttons.moc"
