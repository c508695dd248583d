// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "FixedPlace.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "HostileDocuments.h"
#include "MouseInput.h"
#include "PixelTrace.h"
#include "Rounds.h"

#include <ChartsLibrary/ChartMouseEvent.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! A line across the chart, so far from its top. */
class QmlLine : public PixelTrace
{
    Q_OBJECT
    Q_PROPERTY(double fromTop MEMBER m_fromTop)

public:
    QmlLine()
        : PixelTrace({200, 100}, DrawType::LineStrip, 5.0F, Qt::red)
    {
        ++alive;
        domain()->setRangeXY({0.0, 200.0}, {0.0, 100.0});
        onUpdate = [this] {
            const double height = 100.0 - m_fromTop + 0.5;
            setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
        };
    }
    ~QmlLine() override { --alive; }

    static inline int alive = 0;

private:
    double m_fromTop = 0.0;
};

/*! Documents whose handlers and bindings do what they should better not do. */
class tst_HostileQml : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void handlers_data();
    void handlers();
    void keptEvent();
    void eventsAtOneAddress();
    void collectedTraces();
    void loopOfZ();
    void loopOfRubberBand();

private:
    bool load(const QString &document);
    [[nodiscard]] Chart *chart() const
    {
        return m_root ? m_root->property("chart").value<Chart *>() : nullptr;
    }
    QStringList log() const { return m_root->property("log").toStringList(); }
    void clickAndHover();
    void drawFrames();
    QVariant call(const char *function);

    std::unique_ptr<ChartWindow> m_window;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickItem> m_root;
    QByteArray m_error;
};

void tst_HostileQml::initTestCase()
{
    qmlRegisterType<QmlLine>("Test", 1, 0, "QmlLine");
    m_window = std::make_unique<ChartWindow>(QSize(200, 100), ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_HostileQml::cleanupTestCase()
{
    m_window.reset();
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_HostileQml::init()
{
    // The engine breaks loops of bindings, and says so.
    const bool hasLoops = QByteArrayView(QTest::currentTestFunction()).startsWith("loop");
    QTest::failOnWarning(QRegularExpression(
            hasLoops ? u"^(?!.*: Binding loop detected for property \")"_s : u".*"_s));
    m_engine = std::make_unique<QQmlEngine>();
}

void tst_HostileQml::cleanup()
{
    m_root.reset();
    m_engine.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY2(m_window->plainFrame(), m_window->error());
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(QmlLine::alive, 0);
}

bool tst_HostileQml::load(const QString &document)
{
    QQmlComponent component(m_engine.get());
    component.setData((documentHead + document).toUtf8(), QUrl(u"document.qml"_s));
    m_root.reset(qobject_cast<QQuickItem *>(component.create()));
    m_error = component.errorString().toUtf8();
    if (!m_root)
        return false;
    m_root->setParentItem(m_window->contentItem());
    if (chart())
        chart()->findChild<QTimer *>()->stop();
    drawFrames();
    return true;
}

void tst_HostileQml::drawFrames()
{
    for (int i = 0; i < 2; ++i) {
        if (chart())
            chart()->updateTraces();
        if (!m_window->plainFrame())
            qFatal("%s", m_window->error());
    }
    QCoreApplication::sendPostedEvents();
    // destroy() deletes later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_HostileQml::clickAndHover()
{
    const QPointF on(100.0, 30.0);
    const QPointF off(100.0, 70.0);
    HoverInput(QEvent::HoverEnter, on).sendTo(*chart());
    for (const QPointF &position : {on, off}) {
        for (const QEvent::Type type :
                {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick})
            MouseInput(type, position).sendTo(*chart());
    }
    HoverInput(QEvent::HoverMove, off + QPointF(1.0, 0.0)).sendTo(*chart());
    HoverInput(QEvent::HoverLeave, off).sendTo(*chart());
    drawFrames();
}

QVariant tst_HostileQml::call(const char *function)
{
    QVariant result;
    QMetaObject::invokeMethod(m_root.get(), function, Q_RETURN_ARG(QVariant, result));
    return result;
}

void tst_HostileQml::handlers_data()
{
    QTest::addColumn<QString>("handler");
    QTest::addColumn<QString>("action");

    const char *names[] = {"A pressed", "A released", "A clicked", "A doubleClicked",
            "A hovered true", "A hovered false", "chart pressed", "chart released", "chart clicked",
            "chart doubleClicked", "chart hovered true", "chart hovered false", "chart zoomed true",
            "chart zoomedIn", "chart zoomed false", "chart enabled", "domain zoomed true",
            "domain x", "domain y", "domain zoomed false"};
    const std::pair<const char *, const char *> actions[] = {
            {"destroys the chart", "chart.destroy()"},
            {"destroys all", "chart.destroy(); a.destroy()"},
            {"destroys the trace", "a.destroy()"},
            {"collects garbage without the trace", "a = null; gc()"},
            {"removes the trace", "chart.removeTrace(a)"},
            {"replaces the chart", "chart.destroy(); chart = maker.createObject(root)"},
            {"zooms", "chart.zoomIn(Qt.rect(10, 10, 20, 20))"},
            {"resets the zoom", "chart.zoomReset()"},
    };
    int pair = 0;
    for (const char *name : names) {
        for (const auto &[text, action] : actions) {
            if (pair++ % rounds(7, 1) == 0) {
                QTest::addRow("%s: %s", name, text)
                        << QString::fromLatin1(name) << QString::fromLatin1(action);
            }
        }
    }
}

void tst_HostileQml::handlers()
{
    QFETCH(QString, handler);
    QFETCH(QString, action);

    const QString document = QString(handlersDocument).arg(action);
    QVERIFY2(load(document), m_error.constData());
    m_root->setProperty("handler", handler);
    clickAndHover();
    if (chart() && m_root->property("a").value<QObject *>())
        call("zoom");
    drawFrames();
    QVERIFY2(m_root->property("isDone").toBool(), qPrintable(log().join(u", "_s)));
    m_engine->collectGarbage();
    drawFrames();
}

// An event that was kept is empty from the end of its signal on, whatever becomes of its memory.
void tst_HostileQml::keptEvent()
{
    QVERIFY2(load(keptDocument), m_error.constData());
    clickAndHover();
    // Four signals kept theirs. What is left has no properties, takes none, and is no text; as a
    // property of a document it is null.
    const QString expected = u"undefined written TypeError false "_s.repeated(4) + u"null"_s;
    QCOMPARE(call("read").toString(), expected);
    for (int i = 0; i < 3; ++i) {
        m_engine->collectGarbage();
        clickAndHover(); // at the same place on the stack, perhaps
        QCOMPARE(call("read").toString().count(u"undefined written TypeError false "_s),
                4 * (i + 2));
    }
}

// Events of a program of its own, at one address: each is an object of its own for the engine.
void tst_HostileQml::eventsAtOneAddress()
{
    const auto document = R"(
            property var kept: null
            property AbstractTrace a: QmlLine {
                onClicked: event => {
                    root.log.push(event === null ? "null"
                                  : event.x + " " + (event === root.kept) + " " + event.accepted)
                    root.kept = event
                    if (event)
                        event.accepted = false
                    gc()
                }
            }
        }
    )"_L1;
    QVERIFY2(load(document), m_error.constData());
    auto *trace = m_root->property("a").value<AbstractTrace *>();
    FixedPlace<ChartMouseEvent> place;
    const int count = rounds(20, 20000);
    QStringList expected;
    for (int i = 0; i < count; ++i) {
        MouseInput input(QEvent::MouseButtonRelease, {double(i), 0.0});
        ChartMouseEvent &event = place.make(&input, nullptr);
        Q_EMIT trace->clicked(&event);
        QVERIFY(!event.isAccepted());
        expected.append(QString::number(i) + u" false true"_s);
        if (i % 3 == 0) {
            place.destroy();
            Q_EMIT trace->clicked(nullptr);
            expected.append(u"null"_s);
        }
        if (i % 50 == 0)
            m_engine->collectGarbage();
    }
    place.destroy();
    QCOMPARE(log(), expected);
    QVERIFY(!m_root->property("kept").value<QObject *>());
}

// The engine owns objects that nobody keeps, and a chart keeps none.
void tst_HostileQml::collectedTraces()
{
    const auto document = R"(
            property Chart chart: Chart { parent: root; width: 200; height: 100 }
            property Component maker: Component { QmlLine { fromTop: 30 } }
            property var kept: maker.createObject(null)
            function add() {
                for (let i = 0; i < 10; ++i) {
                    const line = maker.createObject(null)
                    chart.addTrace(line)
                    chart.addTrace(line)
                    line.z = -i
                }
                chart.addTrace(kept)
            }
        }
    )"_L1;
    QVERIFY2(load(document), m_error.constData());
    for (int i = 0; i < rounds(5, 500); ++i) {
        call("add");
        drawFrames();
        m_engine->collectGarbage();
        drawFrames();
        QCOMPARE(QmlLine::alive, 1);
    }
    auto *kept = m_root->property("kept").value<QmlLine *>();
    QVERIFY(chart()->includes(kept));
    kept->updateCount = 0;
    chart()->updateTraces();
    QCOMPARE(kept->updateCount.load(), rounds(5, 500));
}

void tst_HostileQml::loopOfZ()
{
    const auto document = R"(
            property Chart chart: Chart {
                parent: root
                width: 200
                height: 100
                Component.onCompleted: { addTrace(root.a); addTrace(root.b) }
            }
            property real height2: 0
            property AbstractTrace a: QmlLine { fromTop: 30; z: root.height2 }
            property AbstractTrace b: QmlLine {
                fromTop: 30
                z: root.a.z + 1
                onZChanged: z => {
                    root.log.push(z)
                    if (root.height2 < 20)
                        root.height2 = z + 1
                }
                onPressed: root.log.push("pressed")
            }
        }
    )"_L1;
    QVERIFY2(load(document), m_error.constData());
    m_root->setProperty("height2", 5.0);
    QCOMPARE(m_root->property("a").value<AbstractTrace *>()->z(), 5.0);
    QCOMPARE(m_root->property("b").value<AbstractTrace *>()->z(), 6.0);
    clickAndHover();
    QCOMPARE(log(), QStringList({u"1"_s, u"6"_s, u"pressed"_s}));
}

void tst_HostileQml::loopOfRubberBand()
{
    const auto document = R"(
            property Chart chart: Chart {
                parent: root
                width: 200
                height: 100
                isZoomEnabled: !isZoomed
                rubberBand: isZoomed ? null : root.band
                onIsZoomedChanged: isZoomed => root.log.push("zoomed " + isZoomed)
                onRubberBandChanged: band => root.log.push("band " + (band === null))
                onZoomedIn: root.log.push("zoomedIn")
                Component.onCompleted: addTrace(root.a)
            }
            property ZoomDelegate band: ZoomDelegate {
                parent: root
                visible: root.chart.isZoomed
                onVisibleChanged: if (visible) root.chart.zoomReset()
            }
            property AbstractTrace a: QmlLine { fromTop: 30 }
        }
    )"_L1;
    QVERIFY2(load(document), m_error.constData());
    chart()->zoomIn({10.0, 10.0, 50.0, 50.0});
    drawFrames();
    // Reset by its own bindings before the traces are zoomed.
    QCOMPARE(log(),
            QStringList({u"band false"_s, u"zoomed true"_s, u"zoomed false"_s, u"zoomedIn"_s}));
    QVERIFY(!chart()->isZoomed());
    MouseInput(QEvent::MouseButtonPress, {20.0, 20.0}).sendTo(*chart());
    MouseInput(QEvent::MouseMove, {60.0, 60.0}).sendTo(*chart());
    MouseInput(QEvent::MouseButtonRelease, {60.0, 60.0}).sendTo(*chart());
    drawFrames();
    QVERIFY(!chart()->isZoomed());
}

QTEST_MAIN(tst_HostileQml)

#include "tst_hostileqml.moc"
