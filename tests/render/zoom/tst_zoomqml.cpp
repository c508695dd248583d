// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "Graphics.h"
#include "MousePointer.h"
#include "PixelTrace.h"

#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! A chart as an application declares it. It writes down what it hears. */
const QByteArray document = R"(
import QtQuick
import zel.charts 1.0

Chart {
    id: chart

    property var log: []
    readonly property string state: isZoomed + " " + isZoomEnabled
    readonly property string band: rubberBand ? [rubberBand.x, rubberBand.y, rubberBand.width,
                                                 rubberBand.height].join(" ") : "none"

    function take(): string {
        const text = log.join(", ");
        log = [];
        return text;
    }
    function clearBand() {
        rubberBand = null;
    }
    function setBand() {
        rubberBand = delegate;
    }

    width: 200
    height: 100
    isZoomEnabled: true
    rubberBand: delegate

    onIsZoomedChanged: isZoomed => log.push("isZoomed " + isZoomed)
    onIsZoomEnabledChanged: log.push("isZoomEnabled " + isZoomEnabled)
    onRubberBandChanged: rubberBand => {
        const name = rubberBand === delegate ? "set" : rubberBand === null ? "null" : "other";
        log.push("rubberBand " + name + " " + isZoomed);
    }
    onZoomedIn: log.push("zoomedIn " + isZoomed)

    ZoomDelegate {
        id: delegate

        objectName: "delegate"
        visible: false
        minSize: 5

        onVisibleChanged: chart.log.push("visible " + visible)
        onMinSizeChanged: chart.log.push("minSize " + minSize)
        onZoomTypeChanged: chart.log.push("zoomType " + zoomType)

        Rectangle {
            anchors.fill: parent
            color: "#800000ff"
        }
    }
}
)";

/*! The same in a list that scrolls as soon as the pointer is dragged. */
const QByteArray flickableDocument = R"(
import QtQuick
import zel.charts 1.0

Flickable {
    property alias chart: chart

    width: 200
    height: 100
    contentWidth: 200
    contentHeight: 500
    flickableDirection: Flickable.VerticalFlick

    Chart {
        id: chart

        property int zooms: 0

        width: 200
        height: 500
        isZoomEnabled: true
        rubberBand: ZoomDelegate {
            parent: chart
            visible: false
        }

        onZoomedIn: ++zooms
    }
}
)";

/*! Half of blue over white, give or take a rounding. */
bool isTinted(QRgb color)
{
    return std::abs(qRed(color) - 127) <= 2 && std::abs(qGreen(color) - 127) <= 2
           && qBlue(color) == 255;
}

} // namespace

/*! Zoom as a QML application has it: the rubber band is declared in the chart. */
class tst_ZoomQml : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void drag();
    void bindings();
    void zoomTypes_data();
    void zoomTypes();
    void minSize();
    void disabled();
    void cleared();
    void byMethods();
    void pixels_data();
    void pixels();
    void transparentOverTraces();
    void zoomedTrace();
    void inAFlickable();

private:
    /*! Makes the item and shows it. Returns what went wrong, or an empty text. */
    [[nodiscard]] QString show(const QByteArray &source);
    [[nodiscard]] QString take() const;
    [[nodiscard]] QString band() const { return m_item->property("band").toString(); }
    [[nodiscard]] Chart &chart() const { return dynamic_cast<Chart &>(*m_item); }

    std::unique_ptr<ChartWindow> m_window;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickItem> m_item;
    std::unique_ptr<MousePointer> m_mouse;
};

void tst_ZoomQml::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_engine = std::make_unique<QQmlEngine>();
    m_window = std::make_unique<ChartWindow>(QSize(200, 100), ChartWindow::Content::Nothing);
    m_mouse = std::make_unique<MousePointer>(*m_window);
}

void tst_ZoomQml::cleanup()
{
    m_mouse.reset();
    m_item.reset();
    m_window.reset();
    m_engine.reset();
}

QString tst_ZoomQml::show(const QByteArray &source)
{
    QQmlComponent component(m_engine.get());
    component.setData(source, QUrl(u"document.qml"_s));
    m_item.reset(qobject_cast<QQuickItem *>(component.create()));
    if (!m_item)
        return component.errorString() + u"no item"_s;
    m_item->setParentItem(m_window->contentItem());
    if (!m_window->start())
        return QString::fromUtf8(m_window->error());
    if (source == document)
        (void)take();
    return {};
}

QString tst_ZoomQml::take() const
{
    QString text;
    QMetaObject::invokeMethod(m_item.get(), "take", Q_RETURN_ARG(QString, text));
    return text;
}

void tst_ZoomQml::drag()
{
    QCOMPARE(show(document), QString());
    m_mouse->press({40.0, 30.0});
    QCOMPARE(take(), u"visible true"_s);
    m_mouse->move({60.5, 50.25});
    m_mouse->move({120.0, 80.0});
    QCOMPARE(take(), QString());
    m_mouse->release({120.0, 80.0});
    QCOMPARE(take(), u"visible false, isZoomed true, zoomedIn true"_s);
    m_mouse->drag({20.0, 10.0}, {180.0, 90.0});
    QCOMPARE(take(), u"visible true, visible false, zoomedIn true"_s);
    QVERIFY(QMetaObject::invokeMethod(m_item.get(), "zoomReset"));
    QCOMPARE(take(), u"isZoomed false"_s);
    QVERIFY(QMetaObject::invokeMethod(m_item.get(), "zoomReset"));
    QCOMPARE(take(), QString());
}

void tst_ZoomQml::bindings()
{
    QCOMPARE(show(document), QString());
    QCOMPARE(m_item->property("state").toString(), u"false true"_s);
    m_mouse->press({40.0, 30.0});
    QCOMPARE(band(), u"40 30 0 0"_s);
    m_mouse->move({60.5, 50.25});
    QCOMPARE(band(), u"40 30 20.5 20.25"_s);
    m_mouse->move({-10.0, 300.0});
    QCOMPARE(band(), u"0 30 40 70"_s);
    m_mouse->release({-10.0, 300.0});
    QCOMPARE(band(), u"0 30 40 70"_s);
    QCOMPARE(m_item->property("state").toString(), u"true true"_s);
}

void tst_ZoomQml::zoomTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expectedLog");
    QTest::addColumn<QString>("expectedBand");

    QTest::newRow("diagonal") << 0 << QString() << u"40 30 80 50"_s;
    QTest::newRow("vertical") << 1 << u"zoomType 1"_s << u"40 0 80 100"_s;
    QTest::newRow("horizontal") << 2 << u"zoomType 2"_s << u"0 30 200 50"_s;
}

void tst_ZoomQml::zoomTypes()
{
    QFETCH(int, type);
    QFETCH(QString, expectedLog);
    QFETCH(QString, expectedBand);

    QCOMPARE(show(document), QString());
    auto *delegate = m_item->findChild<ZoomDelegate *>(u"delegate"_s);
    delegate->setProperty("zoomType", type);
    QCOMPARE(take(), expectedLog);
    m_mouse->press({40.0, 30.0});
    m_mouse->move({120.0, 80.0});
    QCOMPARE(band(), expectedBand);
}

void tst_ZoomQml::minSize()
{
    QCOMPARE(show(document), QString());
    m_mouse->drag({40.0, 30.0}, {45.0, 80.0});
    QCOMPARE(take(), u"visible true, visible false"_s);
    m_mouse->drag({40.0, 30.0}, {46.0, 80.0});
    QCOMPARE(take(), u"visible true, visible false, isZoomed true, zoomedIn true"_s);
    m_item->findChild<ZoomDelegate *>(u"delegate"_s)->setProperty("minSize", 6);
    QCOMPARE(take(), u"minSize 6"_s);
    m_mouse->drag({40.0, 30.0}, {46.0, 80.0});
    QCOMPARE(take(), u"visible true, visible false"_s);
}

void tst_ZoomQml::disabled()
{
    QCOMPARE(show(document), QString());
    m_mouse->drag({40.0, 30.0}, {120.0, 80.0});
    (void)take();
    m_item->setProperty("isZoomEnabled", false);
    QCOMPARE(take(), u"isZoomEnabled false, isZoomed false"_s);
    QCOMPARE(m_item->property("state").toString(), u"false false"_s);
    m_mouse->drag({40.0, 30.0}, {120.0, 80.0});
    QCOMPARE(take(), QString());
    m_item->setProperty("isZoomEnabled", true);
    QCOMPARE(take(), u"isZoomEnabled true"_s);
}

void tst_ZoomQml::cleared()
{
    QCOMPARE(show(document), QString());
    m_mouse->drag({40.0, 30.0}, {120.0, 80.0});
    (void)take();
    QVERIFY(QMetaObject::invokeMethod(m_item.get(), "clearBand"));
    QCOMPARE(take(), u"isZoomed false, rubberBand null false"_s);
    QCOMPARE(band(), u"none"_s);
    m_mouse->drag({40.0, 30.0}, {120.0, 80.0});
    QVERIFY(QMetaObject::invokeMethod(m_item.get(), "clearBand"));
    QCOMPARE(take(), QString());

    QVERIFY(QMetaObject::invokeMethod(m_item.get(), "setBand"));
    QCOMPARE(take(), u"rubberBand set false"_s);
    m_mouse->drag({40.0, 30.0}, {120.0, 80.0});
    QCOMPARE(take(), u"visible true, visible false, isZoomed true, zoomedIn true"_s);
}

void tst_ZoomQml::byMethods()
{
    QCOMPARE(show(document), QString());
    m_item->setProperty("isZoomEnabled", false);
    (void)take();
    QVERIFY(QMetaObject::invokeMethod(
            m_item.get(), "zoomIn", Q_ARG(QRectF, QRectF(50.0, 25.0, 1.0, 1.0))));
    QCOMPARE(take(), u"isZoomed true, zoomedIn true"_s);
    QCOMPARE(band(), u"0 0 0 0"_s);
}

void tst_ZoomQml::pixels_data()
{
    QTest::addColumn<ZoomDelegate::ZoomType>("type");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<QRect>("tinted");

    QTest::newRow("diagonal") << ZoomDelegate::Diagonal << QPointF(40, 30) << QPointF(120, 80)
                              << QRect(40, 30, 80, 50);
    QTest::newRow("backwards") << ZoomDelegate::Diagonal << QPointF(120, 80) << QPointF(40, 30)
                               << QRect(40, 30, 80, 50);
    QTest::newRow("beyond a corner") << ZoomDelegate::Diagonal << QPointF(150, 60)
                                     << QPointF(300, 300) << QRect(150, 60, 50, 40);
    QTest::newRow("vertical") << ZoomDelegate::Vertical << QPointF(40, 30) << QPointF(120, 80)
                              << QRect(40, 0, 80, 100);
    QTest::newRow("horizontal") << ZoomDelegate::Horizontal << QPointF(40, 30) << QPointF(120, 80)
                                << QRect(0, 30, 200, 50);
}

void tst_ZoomQml::pixels()
{
    QFETCH(ZoomDelegate::ZoomType, type);
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(QRect, tinted);

    QCOMPARE(show(document), QString());
    m_item->findChild<ZoomDelegate *>(u"delegate"_s)->setZoomType(type);
    const auto countWrong = [&](const QRect &expected) {
        const QImage picture = m_window->picture();
        int wrong = picture.size() == QSize(200, 100) ? 0 : 1;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb color = picture.pixel(x, y);
                if (expected.contains(x, y) ? !isTinted(color) : color != qRgb(255, 255, 255))
                    ++wrong;
            }
        }
        return wrong;
    };
    QCOMPARE(countWrong(QRect()), 0);
    m_mouse->press(from);
    QCOMPARE(countWrong(QRect()), 0);
    m_mouse->move({100.0, 51.0});
    m_mouse->move(to);
    QCOMPARE(countWrong(tinted), 0);
    m_mouse->release(to);
    QCOMPARE(countWrong(QRect()), 0);
}

void tst_ZoomQml::transparentOverTraces()
{
    PixelTrace block({200, 100}, DrawType::LineStrip, 20.0F, Qt::red);
    block.setPoints(std::vector<QPointF>{{0.0, 50.0}, {200.0, 50.0}});
    QCOMPARE(show(document), QString());
    chart().setAntialiasing(false);
    chart().addTrace(&block);
    m_mouse->press({40.0, 20.0});
    m_mouse->move({120.0, 80.0});
    QVERIFY(!m_window->picture().isNull());
    const QImage picture = m_window->picture();
    QVERIFY(isTinted(picture.pixel(80, 25)));
    const QColor inside(picture.pixel(80, 50));
    const QColor outside(picture.pixel(160, 50));
    if (Graphics::isOpenGL()) {
        QCOMPARE(outside, QColor(Qt::red));
        QVERIFY(std::abs(inside.red() - 127) <= 2 && inside.green() == 0
                && std::abs(inside.blue() - 128) <= 2);
    } else {
        QCOMPARE(outside, QColor(Qt::white));
        QVERIFY(isTinted(inside.rgb()));
    }
    chart().removeTrace(&block);
}

void tst_ZoomQml::zoomedTrace()
{
    // A trace that keeps to its domain: zooming shows the wanted part of it in all of the chart.
    PixelTrace trace({200, 100}, DrawType::LineStrip, 20.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{0.0, 30.0}, {200.0, 30.0}});
    trace.domain()->setRangeXY(0.0, 200.0, 0.0, 100.0);
    trace.onUpdate = [&trace] {
        const TraceDomain &domain = *trace.domain();
        trace.data.setViewPort(
                {static_cast<float>(domain.minX()), static_cast<float>(domain.minY()),
                        static_cast<float>(domain.spanX()), static_cast<float>(domain.spanY())});
    };
    QCOMPARE(show(document), QString());
    chart().setAntialiasing(false);
    chart().addTrace(&trace);
    const auto redRowAt = [this](int y) {
        const QRgb expected = Graphics::isOpenGL() ? qRgb(255, 0, 0) : m_window->color().rgb();
        return m_window->picture().pixel(100, y) == expected;
    };
    const auto whiteAt = [this](int y) {
        return m_window->picture().pixel(100, y) == qRgb(255, 255, 255);
    };
    // Counted from the top, the line lies at row 70.
    QVERIFY(redRowAt(70));
    QVERIFY(whiteAt(20));
    m_mouse->drag({50.0, 60.0}, {150.0, 100.0});
    QCOMPARE(trace.domain()->yRange(), Span(0.0, 40.0));
    // 30 of 40 upwards.
    QVERIFY(redRowAt(25));
    QVERIFY(whiteAt(70));
    chart().zoomReset();
    QVERIFY(redRowAt(70));
    QVERIFY(whiteAt(20));
    chart().removeTrace(&trace);
}

void tst_ZoomQml::inAFlickable()
{
    QCOMPARE(show(flickableDocument), QString());
    auto *chart = m_item->property("chart").value<Chart *>();
    QVERIFY(chart);
    ZoomDelegate *band = chart->rubberBand();
    QVERIFY(band);

    // Sideways, nothing scrolls.
    m_mouse->press({40.0, 30.0});
    m_mouse->move({60.0, 33.0});
    m_mouse->move({100.0, 35.0});
    QVERIFY(band->isVisible());
    QCOMPARE(band->resizeArea(), QRectF(40.0, 30.0, 60.0, 5.0));
    m_mouse->release({100.0, 35.0});
    QCOMPARE(chart->property("zooms").toInt(), 1);

    // Upwards, the list takes the mouse, and the band is gone without a zoom.
    m_mouse->press({40.0, 90.0});
    QVERIFY(band->isVisible());
    for (const double y : {80.0, 60.0, 40.0, 20.0})
        m_mouse->move({40.0, y});
    QVERIFY(!band->isVisible());
    QVERIFY(m_item->property("contentY").toDouble() > 0.0);
    m_mouse->release({40.0, 20.0});
    QVERIFY(!band->isVisible());
    QCOMPARE(chart->property("zooms").toInt(), 1);
}

QTEST_MAIN(tst_ZoomQml)

#include "tst_zoomqml.moc"
