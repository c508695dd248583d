// SPDX-License-Identifier: MIT
#include "FurnishedScene.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "HeapUse.h"
#include "MouseInput.h"
#include "MouseLog.h"
#include "Rounds.h"

#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cstdint>

using namespace Charts;

namespace {

enum class Situation {
    Shown,
    Invisible,
    WithoutSize,
    WindowHidden,
    NeverShown,
    WithoutWindow,
};

constexpr int movesBetweenFrames = 2000;

QPoint placeOf(int move)
{
    const QPoint place = move % 2 == 0 ? FurnishedScene::onTrace : FurnishedScene::besideTrace;
    return {20 + move % 60, place.y()};
}

void moveTo(FurnishedScene &scene, const QPoint &place)
{
    HoverInput(QEvent::HoverMove, place).sendTo(*scene.window.chart());
}

/*! What is taken once, and for good, is taken in these frames. */
bool warmUp(FurnishedScene &scene)
{
    for (int frame = 0; frame < 3; ++frame) {
        for (int i = 0; i < movesBetweenFrames; ++i)
            moveTo(scene, placeOf(i));
        if (!scene.window.answerEvents())
            return false;
    }
    return true;
}

/*! Whether frames are drawn. */
bool isDrawn(Situation situation)
{
    return situation < Situation::WindowHidden;
}

/*! Brings the chart of \a scene into the situation, from none. */
bool enter(FurnishedScene &scene, Situation situation)
{
    Chart *chart = scene.window.chart();
    if (situation != Situation::NeverShown && (!scene.start() || !warmUp(scene)))
        return false;
    switch (situation) {
    case Situation::Shown:
        break;
    case Situation::Invisible:
        chart->setVisible(false);
        break;
    case Situation::WithoutSize:
        chart->setSize({0.0, 100.0});
        break;
    case Situation::WindowHidden:
        scene.window.hide();
        break;
    case Situation::NeverShown:
        chart->addTrace(&scene.trace);
        break;
    case Situation::WithoutWindow:
        chart->setParentItem(nullptr);
        break;
    }
    return true;
}

/*! Shows the chart again. */
bool leave(FurnishedScene &scene, Situation situation)
{
    Chart *chart = scene.window.chart();
    chart->setParentItem(scene.window.contentItem());
    chart->setVisible(true);
    chart->setSize(FurnishedScene::size);
    const bool isShown = situation == Situation::WindowHidden || situation == Situation::NeverShown
                                 ? scene.window.start()
                                 : scene.window.frame();
    return isShown && scene.window.answerEvents() && scene.window.answerEvents();
}

} // namespace

/*! Charts that nobody draws, be it that there is no OpenGL or that they are not to be seen: what stands
    beside them is drawn, everything can be done with them, and a mouse that moves for hours leaves
    nothing behind. */
class tst_LongPointer : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void scene();
    void zoom();
    void moves_data();
    void moves();
    void clicksAreKept();
};

void tst_LongPointer::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_LongPointer::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_LongPointer::scene()
{
    FurnishedScene scene;
    QVERIFY2(scene.start(), scene.error());
    // Qt's software renderer knows no custom geometry.
    QCOMPARE(scene.isFurnished(), Graphics::flavour() != Graphics::Flavour::Software);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(scene.differenceWith(Graphics::isOpenGL()), QString());
}

void tst_LongPointer::zoom()
{
    FurnishedScene scene;
    QVERIFY2(scene.start(), scene.error());
    Chart *chart = scene.window.chart();
    TraceDomain *domain = scene.trace.domain();
    domain->setRangeXY({0.0, 200.0}, {0.0, 100.0});
    ZoomDelegate band(chart);
    band.setVisible(false);
    chart->setRubberBand(&band);
    chart->setIsZoomEnabled(true);

    for (int i = 0; i < 3; ++i) {
        QTest::mousePress(&scene.window, Qt::LeftButton, Qt::NoModifier, {50, 20});
        QTest::mouseMove(&scene.window, {150, 70});
        QVERIFY(band.isVisible());
        QVERIFY2(scene.window.frame(), scene.error());
        QTest::mouseRelease(&scene.window, Qt::LeftButton, Qt::NoModifier, {150, 70});
        QVERIFY(!band.isVisible());
        QVERIFY(chart->isZoomed());
        QVERIFY(domain->isZoomed());
        QVERIFY2(scene.window.answerEvents(), scene.error());
        chart->zoomReset();
        QVERIFY(!chart->isZoomed());
        QVERIFY(!domain->isZoomed());

        chart->zoomIn({10.0, 10.0, 20.0, 20.0});
        QVERIFY(domain->isZoomed());
        chart->setIsZoomEnabled(false);
        QVERIFY(!domain->isZoomed());
        chart->setIsZoomEnabled(true);
        QCOMPARE(scene.differenceWith(Graphics::isOpenGL()), QString());
    }
    chart->setRubberBand(nullptr);
}

void tst_LongPointer::moves_data()
{
    QTest::addColumn<Situation>("situation");
    QTest::addColumn<bool>("isThroughWindow");

    for (const bool isThroughWindow : {true, false}) {
        const auto add = [isThroughWindow](const char *name, Situation situation) {
            QTest::addRow("%s, %s", name, isThroughWindow ? "through the window" : "to the chart")
                    << situation << isThroughWindow;
        };
        add("shown", Situation::Shown);
        add("invisible", Situation::Invisible);
        add("without size", Situation::WithoutSize);
        add("window hidden", Situation::WindowHidden);
        add("never shown", Situation::NeverShown);
        if (!isThroughWindow)
            add("without window", Situation::WithoutWindow);
    }
}

void tst_LongPointer::moves()
{
    QFETCH(Situation, situation);
    QFETCH(bool, isThroughWindow);

    FurnishedScene scene;
    QVERIFY2(enter(scene, situation), scene.error());
    // The chart's limit is 10000 moves: half of them reach it. Frames that look up moves take their
    // time, which once in the long form is enough.
    const bool isSlow = situation == Situation::Shown && !isThroughWindow;
    const int count = rounds(22000, isSlow ? 200000 : 2000000);
    constexpr int betweenLooks = 500;

    const auto move = [&scene, isThroughWindow](const QPoint &place) {
        if (!isThroughWindow) {
            moveTo(scene, place);
            return;
        }
        QMouseEvent event(QEvent::MouseMove, place, scene.window.mapToGlobal(place), Qt::NoButton,
                Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&scene.window, &event);
    };

    // Whether the memory is bounded shows in the second half: it takes no more than the first.
    std::int64_t first = 0;
    std::int64_t second = 0;
    const std::int64_t before = heapUse();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i) {
        move(placeOf(i));
        if (i % betweenLooks == betweenLooks - 1) {
            std::int64_t &most = i < count / 2 ? first : second;
            most = std::max(most, heapUse() - before);
        }
        if (isDrawn(situation) && i % movesBetweenFrames == movesBetweenFrames - 1)
            QVERIFY2(scene.window.frame(), scene.error());
    }
    const auto seconds = static_cast<double>(timer.elapsed()) / 1000.0;
    QVERIFY2(second <= first + first / 2 + 100000,
            qPrintable(QStringLiteral("%1 bytes, then %2").arg(first).arg(second)));

    QVERIFY2(leave(scene, situation), scene.error());
    if (isDrawn(situation)) {
        // Nothing waits any more.
        const std::int64_t left = heapUse() - before;
        QVERIFY2(left < 500000, qPrintable(QString::number(left)));
    }
    QCOMPARE(scene.differenceWith(Graphics::isOpenGL()), QString());
    if (rounds(0, 1) == 1) {
        qInfo().noquote() << count << "moves in" << seconds << "s, at most" << first
                          << "bytes in the first half," << second << "in the second";
    }

    // The pointer is followed as ever.
    move(FurnishedScene::besideTrace);
    QVERIFY(scene.window.answerEvents());
    MouseLog log;
    log.watch(scene.trace, QStringLiteral("trace"));
    move(FurnishedScene::onTrace);
    QVERIFY(scene.window.answerEvents());
    QCOMPARE(log.take(), Graphics::isOpenGL() ? QStringList(QStringLiteral("trace hovered true"))
                                              : QStringList());
}

/*! Of what waits until the chart is drawn again only moves are dropped, the older ones first. */
void tst_LongPointer::clicksAreKept()
{
    FurnishedScene scene;
    QVERIFY2(scene.start(), scene.error());
    QVERIFY2(scene.window.answerEvents(), scene.error());
    scene.window.hide();
    MouseLog log;
    log.watch(scene.trace, QStringLiteral("trace"));
    Chart *chart = scene.window.chart();
    const auto moveOften = [&scene] {
        for (int i = 0; i < 25000; ++i)
            moveTo(scene, placeOf(i));
    };

    moveOften();
    MouseInput(QEvent::MouseButtonPress, FurnishedScene::onTrace).sendTo(*chart);
    moveOften();
    MouseInput(QEvent::MouseButtonRelease, FurnishedScene::onTrace).sendTo(*chart);
    moveOften();
    moveTo(scene, FurnishedScene::onTrace);
    // Data that changes makes the renderer look anew.
    chart->updateTraces();
    QVERIFY2(scene.window.start(), scene.error());
    QVERIFY2(scene.window.answerEvents(), scene.error());

    QStringList heard = log.take();
    const QStringList clicks = {QStringLiteral("trace pressed"), QStringLiteral("trace released"),
            QStringLiteral("trace clicked")};
    if (!Graphics::isOpenGL()) {
        QCOMPARE(heard, QStringList());
        return;
    }
    QCOMPARE(heard.mid(0, 3), clicks);
    QCOMPARE(heard.last(), QStringLiteral("trace hovered true"));
    QVERIFY2(
            heard.size() > 1000 && heard.size() < 20000, qPrintable(QString::number(heard.size())));
}

QTEST_MAIN(tst_LongPointer)

#include "tst_longpointer.moc"
