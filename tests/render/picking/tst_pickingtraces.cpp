// SPDX-License-Identifier: MIT
#include "GlProbe.h"
#include "Graphics.h"
#include "PointedWindow.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! Which of several traces is hit by the mouse. */
class tst_PickingTraces : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void background();
    void emptyChart();
    void overlapping();
    void widenedLineCoversItsNeighbour();
    void sortedByZ();
    void sortedAnew();
    void invisible_data();
    void invisible();
    void toggledVisibility();
    void listedTwice();
    void removed();
    void destroyed();
    void manyTraces();
    void colorsAreNotTheTraces();
    void borders_data();
    void borders();
    void inOrder();
    void frameByFrame();
    void hovered();

private:
    static constexpr QSize size = {200, 100};
    static constexpr int height = 100;
};

void tst_PickingTraces::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_PickingTraces::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_PickingTraces::background()
{
    // The first trace has the number 0, which is black; so is the cleared image, but transparent.
    PointedWindow window(size);
    window.addBlock(u"first"_s, {50, 40, 20, 20});
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hits({{60.0, 50.0}, {10.0, 50.0}, {190.0, 10.0}}),
            QStringList({u"first"_s, u"chart"_s, u"chart"_s}));

    window.touchData();
    window.click({10.0, 50.0});
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(window.log.take(),
            QStringList({u"chart pressed"_s, u"chart released"_s, u"chart clicked"_s}));
    window.touchData();
    window.click({60.0, 50.0});
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(window.log.take(),
            QStringList({u"first pressed"_s, u"first released"_s, u"first clicked"_s}));
}

void tst_PickingTraces::emptyChart()
{
    PointedWindow window(size);
    PixelTrace &trace = window.addBlock(u"trace"_s, {50, 40, 20, 20});
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hit({60.0, 50.0}), u"trace"_s);

    // Sent while there was a trace, looked up when there is none: nothing is hit.
    window.click({60.0, 50.0});
    window.chart()->removeTrace(&trace);
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(window.log.take(),
            QStringList({u"chart pressed"_s, u"chart released"_s, u"chart clicked"_s}));

    // Sent while there is none: no signal at all, not even later.
    window.click({60.0, 50.0});
    QVERIFY2(window.answerEvents(), window.error());
    window.chart()->addTrace(&trace);
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(window.log.take(), QStringList());
    QCOMPARE(window.hit({60.0, 50.0}), u"trace"_s);
}

void tst_PickingTraces::overlapping()
{
    PointedWindow window(size);
    window.addBlock(u"A"_s, {20, 20, 60, 60});
    window.addBlock(u"B"_s, {60, 20, 60, 60});
    window.addBlock(u"C"_s, {40, 40, 60, 20});
    QVERIFY2(window.start(), window.error());

    // A alone, A and C, all three, B and C, B alone, A and B without C.
    QCOMPARE(window.hits({{30.0, 50.0}, {50.0, 50.0}, {70.0, 50.0}, {90.0, 50.0}, {110.0, 50.0},
                     {70.0, 30.0}}),
            QStringList({u"A"_s, u"C"_s, u"C"_s, u"C"_s, u"B"_s, u"B"_s}));
}

void tst_PickingTraces::widenedLineCoversItsNeighbour()
{
    // Four rows apart: on the screen each is alone, but the widened later one reaches the other.
    PointedWindow window(size);
    window.addLine(u"A"_s, 2.0F, {{20.5, 50.5}, {180.5, 50.5}});
    PixelTrace &later = window.addLine(u"B"_s, 2.0F, {{20.5, 46.5}, {180.5, 46.5}});
    QVERIFY2(window.start(), window.error());

    // A has the rows 47 to 53, B the rows 43 to 49, three of which they share.
    const QList<QPointF> places = {{100.0, height - 43}, {100.0, height - 47}, {100.0, height - 49},
            {100.0, height - 50}, {100.0, height - 53}};
    QCOMPARE(window.hits(places), QStringList({u"B"_s, u"B"_s, u"B"_s, u"A"_s, u"A"_s}));
    later.setZ(-1.0);
    QCOMPARE(window.hits(places), QStringList({u"B"_s, u"A"_s, u"A"_s, u"A"_s, u"A"_s}));
}

void tst_PickingTraces::sortedByZ()
{
    PointedWindow window(size);
    PixelTrace &a = window.addBlock(u"A"_s, {20, 20, 60, 60});
    PixelTrace &b = window.addBlock(u"B"_s, {20, 20, 60, 60});
    PixelTrace &c = window.addBlock(u"C"_s, {20, 20, 60, 60});
    QVERIFY2(window.start(), window.error());

    QCOMPARE(window.hit({50.0, 50.0}), u"C"_s);
    c.setZ(-1.0);
    QCOMPARE(window.hit({50.0, 50.0}), u"B"_s);
    a.setZ(1.5);
    QCOMPARE(window.hit({50.0, 50.0}), u"A"_s);
    b.setZ(1e300);
    QCOMPARE(window.hit({50.0, 50.0}), u"B"_s);
    b.setZ(-1e300);
    QCOMPARE(window.hit({50.0, 50.0}), u"A"_s);
}

void tst_PickingTraces::sortedAnew()
{
    // Apart from each other: the numbers change with the order, what they stand for must follow.
    PointedWindow window(size);
    PixelTrace &a = window.addBlock(u"A"_s, {20, 40, 20, 20});
    window.addBlock(u"B"_s, {80, 40, 20, 20});
    PixelTrace &c = window.addBlock(u"C"_s, {140, 40, 20, 20});
    QVERIFY2(window.start(), window.error());

    const QList<QPointF> places = {{30.0, 50.0}, {90.0, 50.0}, {150.0, 50.0}};
    const QStringList names = {u"A"_s, u"B"_s, u"C"_s};
    QCOMPARE(window.hits(places), names);
    a.setZ(10.0);
    QCOMPARE(window.hitsInOldImage(places), names);
    QCOMPARE(window.hits(places), names);
    c.setZ(-10.0);
    QCOMPARE(window.hitsInOldImage(places), names);
    QCOMPARE(window.hits(places), names);
}

void tst_PickingTraces::invisible_data()
{
    QTest::addColumn<QString>("hidden");

    for (const char *hidden : {"", "A", "B", "C", "AB", "AC", "BC", "ABC"})
        QTest::addRow("without \"%s\"", hidden) << QString::fromLatin1(hidden);
}

void tst_PickingTraces::invisible()
{
    QFETCH(QString, hidden);

    // All cover the left half; at the right each has a place of its own.
    PointedWindow window(size);
    QList<QPointF> places = {{50.0, 50.0}};
    QStringList expected = {u"chart"_s};
    for (const QString &name : {u"A"_s, u"B"_s, u"C"_s}) {
        const int x = 110 + 30 * static_cast<int>(places.size() - 1);
        std::vector<QPointF> points = centresOf({20, 20, 60, 60});
        const std::vector<QPointF> own = centresOf({x, 40, 20, 20});
        points.insert(points.end(), own.begin(), own.end());
        PixelTrace &trace = window.add(name, DrawType::Points, 1.0F, points);
        trace.data.setVisible(!hidden.contains(name));
        places.append(QPointF(x + 10, 50.0));
        expected.append(trace.data.visible() ? name : u"chart"_s);
        if (trace.data.visible())
            expected[0] = name;
    }
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hits(places), expected);
}

void tst_PickingTraces::toggledVisibility()
{
    PointedWindow window(size);
    window.addBlock(u"A"_s, {20, 40, 20, 20});
    PixelTrace &b = window.addBlock(u"B"_s, {80, 40, 20, 20});
    window.addBlock(u"C"_s, {140, 40, 20, 20});
    QVERIFY2(window.start(), window.error());

    const QList<QPointF> places = {{30.0, 50.0}, {90.0, 50.0}, {150.0, 50.0}};
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(window.hits(places), QStringList({u"A"_s, u"B"_s, u"C"_s}));
        b.data.setVisible(false);
        QCOMPARE(window.hits(places), QStringList({u"A"_s, u"chart"_s, u"C"_s}));
        b.data.setVisible(true);
    }
}

void tst_PickingTraces::listedTwice()
{
    PointedWindow window(size);
    PixelTrace &a = window.addBlock(u"A"_s, {20, 40, 60, 20});
    PixelTrace &b = window.addBlock(u"B"_s, {60, 40, 60, 20});
    window.chart()->addTrace(&a);
    window.chart()->addTrace(&b);
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hits({{30.0, 50.0}, {70.0, 50.0}, {110.0, 50.0}}),
            QStringList({u"A"_s, u"B"_s, u"B"_s}));
}

void tst_PickingTraces::removed()
{
    PointedWindow window(size);
    PixelTrace &a = window.addBlock(u"A"_s, {20, 40, 20, 20});
    PixelTrace &b = window.addBlock(u"B"_s, {80, 40, 20, 20});
    QVERIFY2(window.start(), window.error());
    const QList<QPointF> places = {{30.0, 50.0}, {90.0, 50.0}};
    QCOMPARE(window.hits(places), QStringList({u"A"_s, u"B"_s}));

    // A list that changed is reason enough for a new image.
    window.chart()->removeTrace(&a);
    QCOMPARE(window.hitsInOldImage(places), QStringList({u"chart"_s, u"B"_s}));
    window.chart()->addTrace(&a);
    QCOMPARE(window.hitsInOldImage(places), QStringList({u"A"_s, u"B"_s}));
    window.chart()->removeTrace(&b);
    QCOMPARE(window.hitsInOldImage(places), QStringList({u"A"_s, u"chart"_s}));

    // Drawn in the image, and not in the chart any more when the answer arrives.
    window.click({30.0, 50.0});
    QVERIFY2(window.frame(), window.error());
    window.chart()->addTrace(&b);
    window.chart()->removeTrace(&a);
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(window.log.take(),
            QStringList({u"chart pressed"_s, u"chart released"_s, u"chart clicked"_s}));
}

void tst_PickingTraces::destroyed()
{
    PointedWindow window(size);
    PixelTrace &stays = window.addBlock(u"stays"_s, {20, 40, 20, 20});
    PixelTrace &goes = window.addBlock(u"goes"_s, {80, 40, 20, 20});
    QVERIFY2(window.start(), window.error());
    const QList<QPointF> places = {{30.0, 50.0}, {90.0, 50.0}};
    QCOMPARE(window.hits(places), QStringList({u"stays"_s, u"goes"_s}));

    window.destroy(goes);
    // One frame without an event: the old image still shows what is gone.
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(window.hitsInOldImage(places), QStringList({u"stays"_s, u"chart"_s}));
    stays.data.dirtyRange().push({0, 1});
    QCOMPARE(window.hitsInOldImage(places), QStringList({u"stays"_s, u"chart"_s}));
}

void tst_PickingTraces::manyTraces()
{
    // More than one byte of a colour can count: 30 columns and 10 rows of them.
    PointedWindow window({300, 100});
    QList<QPointF> places;
    QStringList names;
    for (int i = 0; i < 300; ++i) {
        const int column = i % 30 * 10 + 3;
        const int row = i / 30 * 10 + 3;
        names.append(QString::number(i));
        window.addBlock(names.last(), {column, row, 4, 4});
        places.append(QPointF(column + 2, height - row - 2));
    }
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hits(places), names);
}

void tst_PickingTraces::colorsAreNotTheTraces()
{
    // A trace's own colour, its transparency and a colour that is none play no part.
    PointedWindow window(size);
    window.addBlock(u"A"_s, {20, 40, 20, 20}).data.setColor(Qt::transparent);
    window.addBlock(u"B"_s, {80, 40, 20, 20}).data.setColor(QColor(0, 0, 0));
    window.addBlock(u"C"_s, {140, 40, 20, 20}).data.setColor(QColor());
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.hits({{30.0, 50.0}, {90.0, 50.0}, {150.0, 50.0}}),
            QStringList({u"A"_s, u"B"_s, u"C"_s}));
}

void tst_PickingTraces::borders_data()
{
    QTest::addColumn<bool>("isAntialiased");

    QTest::newRow("antialiased") << true;
    QTest::newRow("aliased") << false;
}

void tst_PickingTraces::borders()
{
    QFETCH(bool, isAntialiased);

    // The colours of the traces 1 and 3 mixed would be that of trace 2, those of 3 and the
    // background that of 1 or 2. So where 1 and 3 meet, and at their edges, nobody else is hit.
    PointedWindow window(size, isAntialiased);
    window.addBlock(u"0"_s, {0, 0, 5, 5});
    window.addLine(u"1"_s, 20.0F, {{20.3, 20.7}, {179.1, 61.9}});
    window.addBlock(u"2"_s, {195, 0, 5, 5});
    window.addLine(u"3"_s, 8.0F, {{20.8, 70.2}, {178.6, 24.4}});
    QVERIFY2(window.start(), window.error());
    // Proof that the picture on the screen is blended: white and red alone make no pink.
    bool hasPink = false;
    const QImage picture = window.picture();
    for (int x = 0; x < picture.width() && !hasPink; ++x) {
        for (int y = 0; y < picture.height() && !hasPink; ++y) {
            const int green = qGreen(picture.pixel(x, y));
            hasPink = green > 20 && green < 235;
        }
    }
    QCOMPARE(hasPink, isAntialiased);

    QList<QPointF> places;
    for (int x = 60; x < 140; x += 3) {
        for (int y = 15; y < 90; ++y)
            places.append(QPointF(x, y));
    }
    const QStringList hits = window.hits(places);
    QCOMPARE(hits.size(), places.size());
    QCOMPARE(hits.count(u"0"_s), 0);
    QCOMPARE(hits.count(u"2"_s), 0);
    QVERIFY(hits.count(u"1"_s) > 300);
    QVERIFY(hits.count(u"3"_s) > 300);
    QVERIFY(hits.count(u"chart"_s) > 300);
    // From the outside to the crossing's middle there are few changes, and never from 3 to 1 and
    // back within the one line on top.
    for (int column = 0; column < hits.size() / 75; ++column) {
        const QStringList ofColumn = hits.mid(column * 75, 75);
        const auto first = ofColumn.indexOf(u"3"_s);
        const auto last = ofColumn.lastIndexOf(u"3"_s);
        QCOMPARE(ofColumn.count(u"3"_s), last - first + 1);
    }
    QCOMPARE(window.hits({{2.0, 98.0}, {197.0, 98.0}}), QStringList({u"0"_s, u"2"_s}));
}

void tst_PickingTraces::inOrder()
{
    PointedWindow window(size);
    window.addBlock(u"A"_s, {20, 40, 20, 20});
    window.addBlock(u"B"_s, {80, 40, 20, 20});
    QVERIFY2(window.start(), window.error());

    window.touchData();
    const QList<QPointF> places = {{90.0, 50.0}, {30.0, 50.0}, {5.0, 5.0}, {30.0, 51.0},
            {30.0, 49.0}, {90.0, 48.0}, {195.0, 95.0}, {90.0, 50.0}};
    for (const QPointF &place : places)
        window.pressInChart(place);
    QVERIFY2(window.answerEvents(), window.error());

    const QStringList senders = {
            u"B"_s, u"A"_s, u"chart"_s, u"A"_s, u"A"_s, u"B"_s, u"chart"_s, u"B"_s};
    const auto signalList = window.log.takeSignals();
    QCOMPARE(signalList.size(), static_cast<std::size_t>(places.size()));
    for (qsizetype i = 0; i < places.size(); ++i) {
        const MouseSignal &signal = signalList[static_cast<std::size_t>(i)];
        QCOMPARE(signal.sender, senders[i]);
        QCOMPARE(signal.name, u"pressed"_s);
        QCOMPARE(signal.position, places[i]);
        QVERIFY(signal.onGuiThread);
    }
}

void tst_PickingTraces::frameByFrame()
{
    // A block that jumps to another place each frame, and an event each frame.
    PointedWindow window(size);
    window.addBlock(u"rests"_s, {0, 0, 10, 10});
    PixelTrace &trace = window.addBlock(u"jumps"_s, {0, 40, 20, 20});
    QVERIFY2(window.start(), window.error());
    QVERIFY(window.settle());
    QStringList expected;
    for (int i = 0; i < 8; ++i) {
        trace.setPoints(centresOf({20 * i, 40, 20, 20}));
        // Where it is, where it was and where it will be.
        for (const int offset : {0, -20, 20})
            window.pressInChart({20.0 * i + 10.0 + offset, 50.0});
        expected += {u"jumps pressed"_s, u"chart pressed"_s, u"chart pressed"_s};
        QVERIFY2(window.frame(), window.error());
        QCoreApplication::sendPostedEvents();
    }
    QVERIFY2(window.answerEvents(), window.error());
    QCOMPARE(window.log.take(), expected);
}

void tst_PickingTraces::hovered()
{
    PointedWindow window(size);
    window.addBlock(u"A"_s, {20, 40, 60, 20});
    window.addBlock(u"B"_s, {80, 40, 60, 20});
    QVERIFY2(window.start(), window.error());
    const auto movedTo = [&window](const QPointF &place) {
        window.touchData();
        window.send(QEvent::MouseMove, place);
        return window.answerEvents() ? window.log.take() : QStringList();
    };
    QCOMPARE(movedTo({10.0, 50.0}), QStringList({u"chart hovered true"_s}));
    QCOMPARE(movedTo({19.4, 50.0}), QStringList());
    QCOMPARE(movedTo({19.5, 50.0}), QStringList({u"A hovered true"_s}));
    QCOMPARE(movedTo({79.4, 50.0}), QStringList());
    QCOMPARE(movedTo({79.6, 50.0}), QStringList({u"A hovered false"_s, u"B hovered true"_s}));
    QCOMPARE(movedTo({100.0, 60.4}), QStringList());
    QCOMPARE(movedTo({100.0, 60.5}), QStringList({u"B hovered false"_s}));
    QCOMPARE(movedTo({100.0, 40.5}), QStringList({u"B hovered true"_s}));
    QCOMPARE(movedTo({100.0, 40.4}), QStringList({u"B hovered false"_s}));
}

QTEST_MAIN(tst_PickingTraces)

#include "tst_pickingtraces.moc"
