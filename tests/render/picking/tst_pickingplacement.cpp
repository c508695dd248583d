// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseLog.h"
#include "PixelBlock.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

#include <cmath>
#include <functional>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize windowSize = {240, 160};

/*! A chart with two blocks of colour, wherever a test puts it. */
struct PlacedChart
{
    PlacedChart(MouseLog &log, QQuickItem *parent, const QString &chartName, const QSizeF &itemSize)
        : name(chartName)
        , imageSize(itemSize.toSize())
        , red(imageSize, part(0.1, 0.55, 0.3, 0.35))
        , blue(imageSize, part(0.5, 0.1, 0.4, 0.25))
    {
        chart->setParentItem(parent);
        chart->setSize(itemSize);
        chart->setAntialiasing(false);
        chart->findChild<QTimer *>()->stop();
        blue.data.setColor(Qt::blue);
        chart->addTrace(&red);
        chart->addTrace(&blue);
        log.watch(*chart, name);
        log.watch(red, name + u" red"_s);
        log.watch(blue, name + u" blue"_s);
    }

    /*! The pixels of the image between these parts of its width and height. */
    [[nodiscard]] QRect part(double x, double y, double width, double height) const
    {
        return {static_cast<int>(x * imageSize.width()), static_cast<int>(y * imageSize.height()),
                static_cast<int>(width * imageSize.width()),
                static_cast<int>(height * imageSize.height())};
    }
    void touchData()
    {
        red.data.dirtyRange().push({0, 1});
        blue.data.dirtyRange().push({0, 1});
    }

    QString name;
    /*! Not the parent's child but as an item, so that it goes with this. */
    std::unique_ptr<Chart> chart = std::make_unique<Chart>();
    QSize imageSize;
    PixelBlock red;
    PixelBlock blue;
};

using Placement = std::function<void(ChartWindow &, PlacedChart &)>;

} // namespace

Q_DECLARE_METATYPE(Placement)

/*!
    Traces are hit where they are seen, wherever the chart stands in its window.

    A mouse event reaches the chart in the item's own coordinates, and its position is taken for
    pixels of the image that the traces are drawn into. That image has the item's size, rounded,
    whatever the scale of the item on the screen and the screen's device pixels are. So positions
    need no conversion, and this test no device pixel ratio but for the picture it grabs: it is run
    with several of them, by way of QT_SCALE_FACTOR.
*/
class tst_PickingPlacement : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void devicePixelRatio();
    void placed_data();
    void placed();
    void flickable_data();
    void flickable();
    void besideEachOther();
    void oneAboveTheOther();
    void movedWithoutANewImage();

private:
    [[nodiscard]] PlacedChart &add(
            const QString &name, const QSizeF &itemSize, QQuickItem *parent = nullptr)
    {
        m_charts.push_back(std::make_unique<PlacedChart>(
                m_log, parent ? parent : m_window->contentItem(), name, itemSize));
        return *m_charts.back();
    }
    [[nodiscard]] bool frame();
    [[nodiscard]] QStringList pressed(const QList<QPointF> &places);
    [[nodiscard]] QString wrongHits(int margin);
    [[nodiscard]] QString seenAt(const QImage &picture, const QPoint &place, int margin) const;
    [[nodiscard]] const PlacedChart *chartAt(const QPointF &place) const;

    std::unique_ptr<ChartWindow> m_window;
    std::vector<std::unique_ptr<PlacedChart>> m_charts;
    MouseLog m_log;
};

void tst_PickingPlacement::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_window = std::make_unique<ChartWindow>(windowSize, ChartWindow::Content::Nothing);
}

void tst_PickingPlacement::cleanup()
{
    m_charts.clear();
    m_window.reset();
    std::ignore = m_log.take();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

bool tst_PickingPlacement::frame()
{
    for (const auto &placed : m_charts)
        placed->chart->updateTraces();
    return m_window->plainFrame();
}

/*! The names of those who are pressed by clicks at \a places of the window, all in one frame. */
QStringList tst_PickingPlacement::pressed(const QList<QPointF> &places)
{
    const auto send = [this](QEvent::Type type, const QPointF &place, Qt::MouseButtons buttons) {
        QMouseEvent event(type, place, place, m_window->mapToGlobal(place), Qt::LeftButton, buttons,
                Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &event);
    };
    for (const auto &placed : m_charts)
        placed->touchData();
    for (const QPointF &place : places) {
        send(QEvent::MouseButtonPress, place, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, place, Qt::NoButton);
    }
    if (!frame() || !frame())
        return {u"no frame"_s};
    QCoreApplication::sendPostedEvents();
    QStringList names;
    for (const MouseSignal &signal : m_log.takeSignals()) {
        if (signal.name == u"pressed")
            names.append(signal.sender);
    }
    return names;
}

/*! The chart that a press at \a place of the window reaches, or null. */
const PlacedChart *tst_PickingPlacement::chartAt(const QPointF &place) const
{
    for (auto placed = m_charts.rbegin(); placed != m_charts.rend(); ++placed) {
        if ((*placed)->chart->contains((*placed)->chart->mapFromScene(place)))
            return placed->get();
    }
    return nullptr;
}

/*! " red", " blue" or nothing where the screen shows only that for \a margin pixels around; "?" at
    borders. */
QString tst_PickingPlacement::seenAt(const QImage &picture, const QPoint &place, int margin) const
{
    const double ratio = m_window->effectiveDevicePixelRatio();
    const QRect around = QRect(
            QPoint(qRound((place.x() - margin) * ratio), qRound((place.y() - margin) * ratio)),
            QSize(1, 1) * qRound((2.0 * margin + 1.0) * ratio))
                                 .intersected(picture.rect());
    const QRgb color = picture.pixel(around.center());
    for (int y = around.top(); y <= around.bottom(); ++y) {
        for (int x = around.left(); x <= around.right(); ++x) {
            if (picture.pixel(x, y) != color)
                return u"?"_s;
        }
    }
    return color == qRgb(255, 0, 0)       ? u" red"_s
           : color == qRgb(0, 0, 255)     ? u" blue"_s
           : color == qRgb(255, 255, 255) ? QString()
                                          : u"?"_s;
}

/*! Compares all over the window what is seen with what is hit. Returns what is wrong. Undecided are
    places less than \a margin pixels away from an edge on the screen: a row of the image. */
QString tst_PickingPlacement::wrongHits(int margin)
{
    if (!frame())
        return QString::fromUtf8(m_window->error());
    const QImage picture = m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
    if (picture.size() != windowSize * m_window->effectiveDevicePixelRatio())
        return u"picture of the wrong size"_s;

    // Each chart answers on its own, in the order of its events.
    QHash<QString, QList<QPointF>> inside;
    QHash<QString, QStringList> expected;
    QList<QPointF> all;
    QList<QPointF> outside;
    for (int y = 2; y < windowSize.height(); y += 3) {
        for (int x = 2; x < windowSize.width(); x += 3) {
            const QPointF place(x + 0.5, y + 0.5);
            const PlacedChart *placed = chartAt(place);
            const QString seen = seenAt(picture, {x, y}, margin);
            if (!placed) {
                outside.append(place);
            } else if (seen != u"?") {
                inside[placed->name].append(place);
                expected[placed->name].append(placed->name + seen);
                all.append(place);
            }
        }
    }

    const QStringList hits = pressed(all);
    for (const auto &placed : m_charts) {
        const QString &name = placed->name;
        const QStringList own = hits.filter(QRegularExpression(u"^%1\\b"_s.arg(name)));
        if (own.size() != expected[name].size())
            return u"%1 answers instead of %2"_s.arg(own.size()).arg(expected[name].size());
        for (qsizetype i = 0; i < own.size(); ++i) {
            if (own[i] != expected[name][i]) {
                return u"%1 at %2, %3, where %4 is seen"_s.arg(own[i])
                        .arg(inside[name][i].x())
                        .arg(inside[name][i].y())
                        .arg(expected[name][i]);
            }
        }
    }
    const QStringList beside = pressed(outside);
    if (!beside.isEmpty())
        return u"%1 hit outside of all charts"_s.arg(beside.first());
    // A test of nothing would not fail either.
    for (const auto &placed : m_charts) {
        for (const QString &name :
                {placed->name, placed->name + u" red"_s, placed->name + u" blue"_s}) {
            const auto count = expected[placed->name].count(name);
            if (count < 10)
                return u"only %1 places of %2"_s.arg(count).arg(name);
        }
    }
    return {};
}

void tst_PickingPlacement::devicePixelRatio()
{
    // What the environment asks for is what the other tests run with.
    const double factor = qEnvironmentVariableIsSet("QT_SCALE_FACTOR")
                                  ? qgetenv("QT_SCALE_FACTOR").toDouble()
                                  : 1.0;
    const PlacedChart &placed = add(u"chart"_s, {100.5, 60.4});
    const GlProbe::Log log;
    QVERIFY2(m_window->start(), m_window->error());
    QCOMPARE(m_window->effectiveDevicePixelRatio(), factor);

    // Both images, for the screen and for selection, have the size of the item.
    QCOMPARE(placed.imageSize, QSize(101, 60));
    QCOMPARE(log.count("glTexImage2D"), 2);
    for (const GlProbe::Call &image : log.calls("glTexImage2D"))
        QCOMPARE(QSize(image.integer(3), image.integer(4)), QSize(101, 60));
}

void tst_PickingPlacement::placed_data()
{
    QTest::addColumn<QSizeF>("itemSize");
    QTest::addColumn<Placement>("place");
    QTest::addColumn<int>("margin");

    const auto row = [](const char *name, const QSizeF &itemSize, int margin,
                             const Placement &place) {
        QTest::newRow(name) << itemSize << place << margin;
    };
    const auto at = [](double x, double y) -> Placement {
        return [x, y](ChartWindow &, PlacedChart &placed) { placed.chart->setPosition({x, y}); };
    };
    const auto turned = [](double angle) -> Placement {
        return [angle](ChartWindow &, PlacedChart &placed) {
            placed.chart->setPosition({60.0, 40.0});
            placed.chart->setRotation(angle);
        };
    };
    const auto scaledParent = [](double scale, const QPointF &position) -> Placement {
        return [scale, position](ChartWindow &window, PlacedChart &placed) {
            auto *parent = new QQuickItem(window.contentItem());
            parent->setTransformOrigin(QQuickItem::TopLeft);
            parent->setPosition(position);
            parent->setScale(scale);
            placed.chart->setParentItem(parent);
            placed.chart->setPosition({3.0, 2.0});
        };
    };

    row("filling the window", windowSize, 3, at(0.0, 0.0));
    row("moved", {120.0, 80.0}, 3, at(70.0, 30.0));
    row("partly outside", {240.0, 160.0}, 3, at(-40.0, 20.0));
    row("at a fraction of a pixel", {120.0, 80.0}, 3, at(40.3, 30.7));
    row("of a fractional size", {100.5, 60.4}, 3, at(20.0, 30.0));
    row("of a fractional size at a fraction", {100.5, 60.4}, 3, at(20.25, 30.6));
    row("scaled by 2", {110.0, 74.0}, 5, scaledParent(2.0, {0.0, 0.0}));
    row("scaled by 1/2", {300.0, 200.0}, 2, scaledParent(0.5, {30.0, 20.0}));
    row("scaled by 3", {70.0, 48.0}, 7, scaledParent(3.0, {6.0, 5.0}));
    row("turned by 90 degrees", {120.0, 80.0}, 3, turned(90.0));
    row("turned by 30 degrees", {120.0, 80.0}, 4, turned(30.0));
    row("turned by 180 degrees", {120.0, 80.0}, 3, turned(180.0));
    row("turned backwards", {120.0, 80.0}, 4, turned(-115.0));
    row("scaled and turned by itself", {120.0, 80.0}, 5, [](ChartWindow &, PlacedChart &placed) {
        placed.chart->setPosition({60.0, 40.0});
        placed.chart->setScale(1.5);
        placed.chart->setRotation(20.0);
    });
    row("mirrored", {120.0, 80.0}, 3, [](ChartWindow &, PlacedChart &placed) {
        placed.chart->setPosition({60.0, 40.0});
        placed.chart->setScale(-1.0);
    });
}

void tst_PickingPlacement::placed()
{
    QFETCH(QSizeF, itemSize);
    QFETCH(Placement, place);
    QFETCH(int, margin);

    place(*m_window, add(u"chart"_s, itemSize));
    QVERIFY2(m_window->start(), m_window->error());
    QCOMPARE(wrongHits(margin), QString());
}

void tst_PickingPlacement::flickable_data()
{
    QTest::addColumn<QPointF>("scrolledTo");

    QTest::newRow("at the beginning") << QPointF(0.0, 0.0);
    QTest::newRow("scrolled") << QPointF(70.0, 40.0);
    QTest::newRow("scrolled by a fraction") << QPointF(33.4, 21.7);
    QTest::newRow("at the end") << QPointF(130.0, 85.0);
}

void tst_PickingPlacement::flickable()
{
    QFETCH(QPointF, scrolledTo);

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\n"
                      "Flickable { contentWidth: 370; contentHeight: 245; pressDelay: 0 }",
            {});
    const std::unique_ptr<QQuickItem> flickable(qobject_cast<QQuickItem *>(component.create()));
    QVERIFY2(flickable, qPrintable(component.errorString()));
    flickable->setParentItem(m_window->contentItem());
    flickable->setSize(windowSize);
    auto *content = flickable->property("contentItem").value<QQuickItem *>();
    QVERIFY(content);

    PlacedChart &placed = add(u"chart"_s, {120.0, 80.0}, content);
    placed.chart->setPosition({130.0, 85.0});
    flickable->setProperty("contentX", scrolledTo.x());
    flickable->setProperty("contentY", scrolledTo.y());
    QVERIFY2(m_window->start(), m_window->error());
    QCOMPARE(wrongHits(3), QString());
    // Clicks scroll nothing, but may align the content with whole pixels.
    QVERIFY(std::abs(flickable->property("contentX").toDouble() - scrolledTo.x()) < 1.0);

    // Scrolled while it is shown.
    flickable->setProperty("contentX", 90.0);
    flickable->setProperty("contentY", 60.0);
    QCOMPARE(wrongHits(3), QString());
    m_charts.clear();
}

void tst_PickingPlacement::besideEachOther()
{
    add(u"left"_s, {110.0, 150.0}).chart->setPosition({4.0, 5.0});
    PlacedChart &upper = add(u"upper"_s, {110.0, 70.0});
    upper.chart->setPosition({120.0, 5.0});
    PlacedChart &lower = add(u"lower"_s, {110.0, 70.0});
    lower.chart->setPosition({120.0, 85.0});
    lower.chart->setRotation(180.0);
    QVERIFY2(m_window->start(), m_window->error());
    QCOMPARE(wrongHits(3), QString());
}

void tst_PickingPlacement::oneAboveTheOther()
{
    // A mouse event belongs to the uppermost chart, also where that is transparent.
    add(u"below"_s, {200.0, 150.0}).chart->setPosition({2.0, 2.0});
    add(u"above"_s, {100.0, 75.0}).chart->setPosition({10.0, 60.0});
    QVERIFY2(m_window->start(), m_window->error());
    const PlacedChart &below = *m_charts[0];
    const PlacedChart &above = *m_charts[1];
    const auto centreOf = [](const PlacedChart &placed, double x, double y) {
        return placed.chart->mapToScene(
                {x * placed.imageSize.width(), y * placed.imageSize.height()});
    };
    // The middles of the blocks and a place on the ground.
    QCOMPARE(pressed({centreOf(above, 0.25, 0.28)}), QStringList({u"above red"_s}));
    QCOMPARE(pressed({centreOf(above, 0.7, 0.78)}), QStringList({u"above blue"_s}));
    QCOMPARE(pressed({centreOf(above, 0.9, 0.1)}), QStringList({u"above"_s}));
    // The lower chart where it is alone, and where the upper one's ground covers its blue block.
    QCOMPARE(pressed({centreOf(below, 0.25, 0.28)}), QStringList({u"below red"_s}));
    QCOMPARE(pressed({centreOf(below, 0.8, 0.78)}), QStringList({u"below blue"_s}));
    QCOMPARE(pressed({centreOf(below, 0.52, 0.7)}), QStringList({u"above"_s}));
}

void tst_PickingPlacement::movedWithoutANewImage()
{
    // Where the chart stands plays no part for its image.
    PlacedChart &placed = add(u"chart"_s, {100.0, 100.0});
    QVERIFY2(m_window->start(), m_window->error());
    QCOMPARE(pressed({{25.0, 28.0}}), QStringList({u"chart red"_s}));
    for (int i = 0; i < 4; ++i) {
        QVERIFY2(frame(), m_window->error());
    }
    placed.chart->setPosition({50.0, 20.0});
    placed.chart->setRotation(180.0);
    const GlProbe::Log log;
    QVERIFY2(frame(), m_window->error());
    // A place that is on the red block before the turn, and one that is now.
    for (const QPointF &place : {QPointF(75.0, 48.0), QPointF(125.0, 92.0)}) {
        QMouseEvent press(QEvent::MouseButtonPress, place, place, place, Qt::LeftButton,
                Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &press);
        QMouseEvent release(QEvent::MouseButtonRelease, place, place, place, Qt::LeftButton,
                Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &release);
    }
    QVERIFY2(frame(), m_window->error());
    QVERIFY2(frame(), m_window->error());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(log.count("glDrawArrays"), 0);
    QCOMPARE(m_log.take().filter(u"pressed"_s),
            QStringList({u"chart blue pressed"_s, u"chart red pressed"_s}));
}

QTEST_MAIN(tst_PickingPlacement)

#include "tst_pickingplacement.moc"
