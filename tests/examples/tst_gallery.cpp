// SPDX-License-Identifier: MIT
#include "ComputedSignal.h"
#include "GalleryScene.h"
#include "LadderFilter.h"
#include "LoadTrace.h"
#include "NetworkPlot.h"
#include "PlaybackClock.h"
#include "SignalPlayer.h"

#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/ChartMouseEvent.h>
#include <ChartsLibrary/TraceData.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>

using namespace Charts;

/*! The gallery's pages under the pointer, in the program's own window. */
class tst_Gallery : public QObject
{
    Q_OBJECT

public:
    static void initMain() { setUpGallery(); }

private Q_SLOTS:
    void initTestCase();
    void init();

    void namesTraceUnderPointer();
    void namesWithinTwoFrames();
    void tellsWhereItWasClicked();
    void labelsRows();
    void dragZooms_data();
    void dragZooms();
    void dragIsNoClick();
    void movingTraces();
    void everyPage_data();
    void everyPage();
    void otherSource();

private:
    [[nodiscard]] std::unique_ptr<Scene> open(const QString &page)
    {
        return openPage(m_engine, page);
    }

    QQmlEngine m_engine;
};

void tst_Gallery::initTestCase()
{
    prepare(m_engine);
    const auto table =
            std::make_shared<const Charts::Readers::SampleTable>(Gallery::computedSignal());
    Gallery::SignalPlayer::setSources(
            {{QStringLiteral("first"), table}, {QStringLiteral("second"), table}});
    Gallery::NetworkPlot::setSources({{QStringLiteral("filter"),
            std::make_shared<const Charts::Readers::NetworkData>(
                    Gallery::LadderFilter::butterworth(3, 1e6).measuredAt(
                            {1e5, 5e5, 1e6, 2e6, 3e6}))}});
}

void tst_Gallery::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Gallery::namesTraceUnderPointer()
{
    const auto scene = open(QStringLiteral("Picking"));
    QVERIFY(scene);
    const QList<AbstractTrace *> traces = scene->traces();
    QCOMPARE(traces.size(), 300);

    // The first, the last, and those on both sides of what one byte can count.
    for (const qsizetype index : {0, 255, 256, 257, 137, 299}) {
        AbstractTrace *trace = traces[index];
        const TracePoint point = trace->traceData()->array()[5];
        scene->moveTo(scene->pixelOf(*trace, {point.x, point.y}));
        QTRY_COMPARE_WITH_TIMEOUT(scene->hoveredTrace(), trace, patience);
        QCOMPARE(scene->text("tag"), trace->name());
        QCOMPARE(trace->lineWidth(), 4.0);
        QCOMPARE(trace->z(), 1.0);
    }
    // Between four figures.
    AbstractTrace *last = traces[299];
    scene->moveTo(scene->pixelOf(*last, {9.0 * 3.5, 7.5}));
    QTRY_COMPARE_WITH_TIMEOUT(scene->hoveredTrace(), nullptr, patience);
    QCOMPARE(last->lineWidth(), 2.0);
    QCOMPARE(last->z(), 0.0);

    // The pointer leaves the chart from a trace.
    const TracePoint point = last->traceData()->array()[0];
    scene->moveTo(scene->pixelOf(*last, {point.x, point.y}));
    QTRY_COMPARE_WITH_TIMEOUT(scene->hoveredTrace(), last, patience);
    scene->moveTo({5, 5});
    QTRY_COMPARE_WITH_TIMEOUT(scene->hoveredTrace(), nullptr, patience);
}

void tst_Gallery::namesWithinTwoFrames()
{
    const auto scene = open(QStringLiteral("Picking"));
    QVERIFY(scene);
    scene->moveTo(scene->pixelAt(0.5, 0.5));
    QTest::qWait(300);

    std::atomic<int> frames = 0;
    connect(
            scene->window(), &QQuickWindow::beforeSynchronizing, this, [&frames] { ++frames; },
            Qt::DirectConnection);
    AbstractTrace *trace = scene->traces()[150];
    const TracePoint point = trace->traceData()->array()[0];
    QSignalSpy hovered(trace, &AbstractTrace::hovered);
    int framesUntilNamed = 0;
    connect(trace, &AbstractTrace::hovered, this, [&] { framesUntilNamed = frames; });
    frames = 0;
    scene->moveTo(scene->pixelOf(*trace, {point.x, point.y}));
    QVERIFY(hovered.wait(patience));
    // Handed over in one, answered in the next. The event itself comes through the window's own
    // queue, so that one may have begun just before.
    QVERIFY2(framesUntilNamed == 2 || framesUntilNamed == 3,
            qPrintable(QString::number(framesUntilNamed)));
}

void tst_Gallery::tellsWhereItWasClicked()
{
    const auto scene = open(QStringLiteral("Picking"));
    QVERIFY(scene);
    AbstractTrace *trace = scene->traces()[42];
    const TracePoint point = trace->traceData()->array()[7];
    scene->click(scene->pixelOf(*trace, {point.x, point.y}));
    QTRY_VERIFY_WITH_TIMEOUT(scene->text("readout").startsWith(trace->name()), patience);

    // "1 : 3 at 18°:  17.2°, 2.31"
    static const QRegularExpression numbers(
            QStringLiteral(":  (\\S+)°, (\\S+)$"), QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = numbers.match(scene->text("readout"));
    QVERIFY2(match.hasMatch(), qPrintable(scene->text("readout")));
    const auto value = [&match](int group) {
        return match.captured(group).replace(QChar(0x2212), u'-').toDouble();
    };
    // A pixel is 0.2 degrees wide and 0.03 rows high.
    QVERIFY(std::abs(value(1) - point.x) < 0.3);
    QVERIFY(std::abs(value(2) - point.y) < 0.05);

    scene->click(scene->pixelOf(*trace, {9.0 * 3.5, 7.5}));
    QTRY_COMPARE_WITH_TIMEOUT(scene->text("readout"), QString(), patience);
}

void tst_Gallery::labelsRows()
{
    const auto scene = open(QStringLiteral("Picking"));
    QVERIFY(scene);
    const auto count = [&](const QString &text) {
        int found = 0;
        QList<QQuickItem *> items = {scene->page()};
        while (!items.isEmpty()) {
            const QQuickItem *item = items.takeLast();
            found += item->isVisible() && item->property("text") == text ? 1 : 0;
            items += item->childItems();
        }
        return found;
    };
    QCOMPARE(count(QStringLiteral("1 : 1")), 1);
    QCOMPARE(count(QStringLiteral("2 : 3")), 1);
    QCOMPARE(count(QStringLiteral("5 : 6")), 1);
    // Zoomed to the lower half.
    scene->chart()->zoomIn(QRectF(0.0, scene->chart()->height() / 2.0, scene->chart()->width(),
            scene->chart()->height() / 2.0));
    QCOMPARE(count(QStringLiteral("1 : 1")), 1);
    QCOMPARE(count(QStringLiteral("5 : 6")), 0);
}

void tst_Gallery::dragZooms_data()
{
    QTest::addColumn<int>("zoomType");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("diagonal, double click") << 0 << false;
    QTest::newRow("vertical, Esc") << 1 << true;
    QTest::newRow("horizontal, Esc") << 2 << true;
}

void tst_Gallery::dragZooms()
{
    QFETCH(const int, zoomType);
    QFETCH(const bool, byKey);
    const auto scene = open(QStringLiteral("Picking"));
    QVERIFY(scene);
    QVERIFY(scene->chart()->setProperty("zoomType", zoomType));
    AbstractTrace *trace = scene->traces()[0];
    const Span x = trace->domain()->xRange();
    const Span y = trace->domain()->yRange();

    scene->drag(scene->pixelAt(0.25, 0.25), scene->pixelAt(0.75, 0.5));
    QVERIFY(scene->chart()->isZoomed());
    const double pixelX = x.length() / scene->chart()->width();
    const double pixelY = y.length() / scene->chart()->height();
    const Span zoomedX = trace->domain()->xRange();
    const Span zoomedY = trace->domain()->yRange();
    const double lowX = zoomType == 2 ? 0.0 : 0.25;
    const double highX = zoomType == 2 ? 1.0 : 0.75;
    const double lowY = zoomType == 1 ? 0.0 : 0.5;
    const double highY = zoomType == 1 ? 1.0 : 0.75;
    QVERIFY(std::abs(zoomedX.min - (x.min + lowX * x.length())) < pixelX);
    QVERIFY(std::abs(zoomedX.max - (x.min + highX * x.length())) < pixelX);
    QVERIFY(std::abs(zoomedY.min - (y.min + lowY * y.length())) < pixelY);
    QVERIFY(std::abs(zoomedY.max - (y.min + highY * y.length())) < pixelY);

    // What is seen is what is hit.
    AbstractTrace *middle = scene->traces()[10 * 20 + 10];
    const TracePoint point = middle->traceData()->array()[3];
    if (zoomType != 1)
        QVERIFY(point.y > zoomedY.min && point.y < zoomedY.max);
    scene->moveTo(scene->pixelOf(*middle, {point.x, point.y}));
    QTRY_COMPARE_WITH_TIMEOUT(scene->hoveredTrace(), middle, patience);

    if (byKey) {
        // Shortcuts work in the active window only.
        scene->window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(scene->window()));
        QTest::keyClick(scene->window(), Qt::Key_Escape);
    } else {
        // On a trace it is the same.
        QTest::mouseDClick(scene->window(), Qt::LeftButton, Qt::NoModifier,
                scene->pixelOf(*middle, {point.x, point.y}));
    }
    QTRY_VERIFY_WITH_TIMEOUT(!scene->chart()->isZoomed(), patience);
    QCOMPARE(trace->domain()->xRange(), x);
    QCOMPARE(trace->domain()->yRange(), y);
}

void tst_Gallery::dragIsNoClick()
{
    const auto scene = open(QStringLiteral("Picking"));
    QVERIFY(scene);
    AbstractTrace *trace = scene->traces()[19 * 3];
    const auto pixelOfVertex = [&](std::size_t index) {
        const TracePoint point = trace->traceData()->array()[index];
        return scene->pixelOf(*trace, {point.x, point.y});
    };
    QSignalSpy clicked(trace, &AbstractTrace::clicked);
    const QPoint from = pixelOfVertex(0);
    QPoint to = from;
    for (std::size_t i = 0; i < trace->traceData()->array().size(); ++i) {
        if ((pixelOfVertex(i) - from).manhattanLength() > (to - from).manhattanLength())
            to = pixelOfVertex(i);
    }
    // Without a zoom, under which the trace would not be there any more.
    scene->chart()->setIsZoomEnabled(false);
    scene->drag(from, to);
    QTRY_COMPARE_WITH_TIMEOUT(clicked.size(), 1, patience);
    QCOMPARE(scene->text("readout"), QString());
}

void tst_Gallery::movingTraces()
{
    // As on the page Live, with loads that differ by more than a line is wide.
    double now = 0.0;
    Gallery::PlaybackClock clock([&now] { return now; });
    QObject owner;
    QVariantList traces;
    QList<Gallery::LoadTrace *> loads;
    for (int i = 0; i < 4; ++i) {
        auto *trace = new Gallery::LoadTrace(clock, 120, &owner);
        trace->setName(QStringLiteral("load %1").arg(i));
        trace->setColor(Qt::red);
        loads.append(trace);
        traces.append(QVariant::fromValue<QObject *>(trace));
    }
    // 10 % to 90 %, a flat zigzag.
    const auto loadOf = [](int core) { return 20.0 + 20.0 * core; };
    QTimer timer;
    int sample = 0;
    connect(&timer, &QTimer::timeout, this, [&] {
        now += 0.03;
        ++sample;
        for (int i = 0; i < 4; ++i) {
            loads[i]->append(now, static_cast<float>(loadOf(i) + (sample % 2 == 0 ? 0.5 : -0.5)));
        }
    });
    timer.start(30);

    QQmlComponent component(&m_engine);
    component.setData("import QtQuick\n"
                      "import Gallery\n"
                      "Window {\n"
                      "    id: window\n"
                      "    property var traces\n"
                      "    property alias page: plot\n"
                      "    width: 600\n"
                      "    height: 400\n"
                      "    visible: true\n"
                      "    PlotArea {\n"
                      "        id: plot\n"
                      "        anchors.fill: parent\n"
                      "        traces: window.traces\n"
                      "    }\n"
                      "}\n",
            QUrl(QStringLiteral("qrc:/qt/qml/Gallery/Test.qml")));
    const Scene scene(component, {{QStringLiteral("traces"), traces}});
    QVERIFY(QTest::qWaitForWindowExposed(scene.window()));
    QTest::qWait(600);

    for (int round = 0; round < 2; ++round) {
        for (const int core : {0, 3, 1, 2}) {
            // Where the newest data is, which moves on meanwhile.
            scene.moveTo(scene.pixelOf(*loads[core], {-0.2, loadOf(core)}));
            QTRY_COMPARE_WITH_TIMEOUT(
                    scene.hoveredTrace(), static_cast<AbstractTrace *>(loads[core]), patience);
            QCOMPARE(scene.text("tag"), loads[core]->name());
        }
        if (round == 0) {
            scene.drag(scene.pixelAt(0.9, 0.1), scene.pixelAt(0.999, 0.9));
            QVERIFY(scene.chart()->isZoomed());
        }
    }
}

void tst_Gallery::everyPage_data()
{
    QTest::addColumn<QString>("page");
    for (const QString &page : pages)
        QTest::newRow(qPrintable(page)) << page;
}

void tst_Gallery::everyPage()
{
    QFETCH(const QString, page);
    const auto scene = open(page);
    QVERIFY(scene);
    QTest::qWait(1500);

    // Wherever a trace has left its colour it is named, its data moving or at rest.
    QSignalSpy hovered(scene->chart(), &Chart::hovered);
    const QImage picture = scene->window()->grabWindow();
    const QRect area = scene->chart()->mapRectToScene(scene->chart()->boundingRect()).toRect();
    const QList<AbstractTrace *> traces = scene->traces();
    QVERIFY(!traces.isEmpty());
    bool isNamed = false;
    for (int x = area.right() - 10; x > area.left() && !isNamed; x -= 20) {
        for (int y = area.top() + 1; y < area.bottom() && !isNamed; ++y) {
            const auto trace = std::find_if(traces.begin(), traces.end(), [&](AbstractTrace *t) {
                return QColor(picture.pixel(x, y)) == QColor(t->color().rgb());
            });
            if (trace == traces.end())
                continue;
            scene->moveTo({x, y});
            isNamed = QTest::qWaitFor([&] { return scene->hoveredTrace() != nullptr; }, 300);
        }
    }
    QVERIFY(isNamed);
    QCOMPARE(scene->text("tag"), scene->hoveredTrace()->name());
}

void tst_Gallery::otherSource()
{
    const auto scene = open(QStringLiteral("Signal"));
    QVERIFY(scene);
    const QPointer<AbstractTrace> before = scene->traces().constFirst();
    scene->drag(scene->pixelAt(0.25, 0.25), scene->pixelAt(0.75, 0.5));
    QVERIFY(scene->chart()->isZoomed());

    auto *player = scene->page()->findChild<Gallery::SignalPlayer *>();
    QVERIFY(player);
    player->setCurrentSource(1);
    QVERIFY(!before);
    QVERIFY(!scene->chart()->isZoomed());
    QVERIFY(!scene->traces().isEmpty());
    for (AbstractTrace *trace : scene->traces()) {
        QVERIFY(scene->chart()->includes(trace));
        QVERIFY(!trace->domain()->isZoomed());
    }
}

QTEST_MAIN(tst_Gallery)

#include "tst_gallery.moc"
