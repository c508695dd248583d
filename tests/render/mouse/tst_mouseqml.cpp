// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! A trace that documents can declare: a line across the chart, so far from its top. */
class LineTrace : public PixelTrace
{
    Q_OBJECT
    Q_PROPERTY(double height MEMBER m_height)

public:
    LineTrace()
        : PixelTrace({200, 100}, DrawType::LineStrip, 5.0F, Qt::red)
    {
        onUpdate = [this] {
            const double height = 100.0 - m_height + 0.5;
            setPoints(std::vector<QPointF>{{20.0, height}, {180.0, height}});
        };
    }

private:
    double m_height = 0.0;
};

namespace {

// What every document begins and ends with. Each handler notes what it was called with.
constexpr auto head = R"(
    import QtQuick
    import zel.charts 1.0
    import Test 1.0
    Chart {
        id: chart
        width: 200
        height: 100
        property var log: []
        property bool passesOn: false
        function note(text, event) {
            log.push([text, event.x, event.y, event.button, event.buttons, event.modifiers,
                      event.flags, event.accepted].join(" "))
            if (passesOn)
                event.accepted = false
        }
        Component.onCompleted: {
            addTrace(a)
            addTrace(b)
        }
)"_L1;

constexpr auto traces = R"(
        property AbstractTrace a: LineTrace {
            height: 30
            onPressed: event => chart.note("A pressed", event)
            onReleased: event => chart.note("A released", event)
            onClicked: event => chart.note("A clicked", event)
            onDoubleClicked: event => chart.note("A doubleClicked", event)
            onHovered: (event, state) => chart.note("A hovered " + state, event)
        }
        property AbstractTrace b: LineTrace { height: 70 }
        property Connections connections: Connections {
            target: chart.b
            function onPressed(event) { chart.note("B pressed", event) }
            function onReleased(event) { chart.note("B released", event) }
            function onClicked(event) { chart.note("B clicked", event) }
            function onDoubleClicked(event) { chart.note("B doubleClicked", event) }
            function onHovered(event, state) { chart.note("B hovered " + state, event) }
        }
        onPressed: event => note("chart pressed", event)
        onReleased: event => note("chart released", event)
        onClicked: event => note("chart clicked", event)
        onDoubleClicked: event => note("chart doubleClicked", event)
        onHovered: (event, state) => note("chart hovered " + state, event)
    }
)"_L1;

} // namespace

/*! The mouse signals as handlers of documents get them, in a real window. */
class tst_MouseQml : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void click();
    void clickBeside();
    void doubleClick();
    void passedOn();
    void hover();
    void eventAfterwards();
    void readOnly();
    void collectedAway();
    void tracesDestroyedByHandlers();

private:
    bool load(const QString &document);
    void send(void (*action)(QWindow *));
    QStringList answers();

    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<ChartWindow> m_window;
    std::unique_ptr<Chart> m_chart;
    QByteArray m_error;

    static constexpr QPoint onA = {100, 30};
    static constexpr QPoint onB = {101, 70};
    static constexpr QPoint off = {102, 50};
};

void tst_MouseQml::initTestCase()
{
    qmlRegisterType<LineTrace>("Test", 1, 0, "LineTrace");
}

void tst_MouseQml::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_engine = std::make_unique<QQmlEngine>();
    m_window = std::make_unique<ChartWindow>(QSize(200, 100), ChartWindow::Content::Nothing);
}

void tst_MouseQml::cleanup()
{
    m_chart.reset();
    m_window.reset();
    m_engine.reset();
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

bool tst_MouseQml::load(const QString &document)
{
    QQmlComponent component(m_engine.get());
    component.setData(document.toUtf8(), QUrl(u"document.qml"_s));
    QObject *object = component.isReady() ? component.create() : nullptr;
    m_chart.reset(qobject_cast<Chart *>(object));
    m_error = component.errorString().toUtf8();
    if (!m_chart)
        return false;
    m_chart->findChild<QTimer *>()->stop();
    m_chart->setParentItem(m_window->contentItem());
    m_error = m_window->start() ? QByteArray() : QByteArray(m_window->error());
    // A move to where the pointer is already would be none, and it is where the last test left it.
    QTest::mouseMove(m_window.get(), {5, 95});
    static_cast<void>(answers());
    return m_error.isEmpty();
}

QStringList tst_MouseQml::answers()
{
    for (int i = 0; i < 2; ++i) {
        m_chart->updateTraces();
        if (!m_window->plainFrame())
            return {QString::fromUtf8(m_window->error())};
    }
    QCoreApplication::sendPostedEvents();
    const QStringList log = m_chart->property("log").toStringList();
    m_chart->setProperty("log", QVariant::fromValue(m_engine->newArray()));
    return log;
}

void tst_MouseQml::click()
{
    QVERIFY2(load(head + traces), m_error.constData());
    QTest::mouseMove(m_window.get(), onA);
    QCOMPARE(answers(), QStringList{u"A hovered true 100 30 0 0 0 0 true"_s});
    QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::ShiftModifier, onA);
    QCOMPARE(answers(), QStringList({u"A pressed 100 30 1 1 33554432 0 true"_s,
                                u"A released 100 30 1 0 33554432 0 true"_s,
                                u"A clicked 100 30 1 0 33554432 0 true"_s}));
}

void tst_MouseQml::clickBeside()
{
    QVERIFY2(load(head + traces), m_error.constData());
    QTest::mouseMove(m_window.get(), off);
    QCOMPARE(answers(), QStringList());
    QTest::mouseClick(m_window.get(), Qt::RightButton, Qt::NoModifier, off);
    QCOMPARE(answers(), QStringList({u"chart pressed 102 50 2 2 0 0 false"_s,
                                u"chart released 102 50 2 0 0 0 false"_s,
                                u"chart clicked 102 50 2 0 0 0 true"_s}));
}

void tst_MouseQml::doubleClick()
{
    QVERIFY2(load(head + traces), m_error.constData());
    QTest::mouseMove(m_window.get(), onB);
    QCOMPARE(answers().size(), 1);
    QTest::mouseDClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, onB);
    QCOMPARE(answers(),
            QStringList({u"B pressed 101 70 1 1 0 0 true"_s, u"B released 101 70 1 0 0 0 true"_s,
                    u"B clicked 101 70 1 0 0 0 true"_s, u"B doubleClicked 101 70 1 1 0 0 true"_s,
                    u"B released 101 70 1 0 0 0 true"_s, u"B clicked 101 70 1 0 0 0 true"_s}));
}

void tst_MouseQml::passedOn()
{
    QVERIFY2(load(head + traces), m_error.constData());
    for (const auto &[place, name, at] :
            {std::tuple(onA, u"A"_s, u"100 30"_s), std::tuple(onB, u"B"_s, u"101 70"_s)}) {
        QTest::mouseMove(m_window.get(), place);
        m_chart->setProperty("passesOn", false);
        static_cast<void>(answers());
        m_chart->setProperty("passesOn", true);
        QTest::mouseDClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, place);
        QStringList expected;
        const auto expect = [&](const QString &signal, int buttons, bool chartSeesAccepted) {
            const QString fields = at + u" 1 %1 0 0"_s.arg(buttons);
            expected.append(name + u' ' + signal + u' ' + fields + u" true"_s);
            expected.append(u"chart "_s + signal + u' ' + fields
                            + (chartSeesAccepted ? u" true"_s : u" false"_s));
        };
        expect(u"pressed"_s, 1, false);
        expect(u"released"_s, 0, false);
        expect(u"clicked"_s, 0, true);
        expect(u"doubleClicked"_s, 1, false);
        expect(u"released"_s, 0, false);
        expect(u"clicked"_s, 0, true);
        QCOMPARE(answers(), expected);
    }
}

void tst_MouseQml::hover()
{
    QVERIFY2(load(head + traces), m_error.constData());
    m_chart->setWidth(190.0);
    QTest::mouseMove(m_window.get(), {195, 50});
    QCOMPARE(answers(), QStringList{u"chart hovered false 195 50 0 0 0 0 true"_s});
    m_chart->setProperty("passesOn", true);
    QTest::mouseMove(m_window.get(), off);
    QTest::mouseMove(m_window.get(), onA);
    QTest::mouseMove(m_window.get(), onB);
    QTest::mouseMove(m_window.get(), {195, 50});
    QCOMPARE(answers(), QStringList({u"chart hovered true 102 50 0 0 0 0 true"_s,
                                u"A hovered true 100 30 0 0 0 0 true"_s,
                                u"A hovered false 101 70 0 0 0 0 true"_s,
                                // The same event, which A's handler has not accepted.
                                u"B hovered true 101 70 0 0 0 0 false"_s,
                                u"chart hovered false 195 50 0 0 0 0 true"_s}));
}

// Kept against all advice, it is gone and not a memory of something else.
void tst_MouseQml::eventAfterwards()
{
    const auto document = R"(
        property var kept
        property string source
        property string text
        property AbstractTrace a: LineTrace {
            height: 30
            onPressed: event => { chart.kept = event; chart.source = typeof event.source;
                                  chart.text = "" + event }
            onReleased: event => { chart.log.push(chart.kept === null || chart.kept === undefined
                                                  ? "gone" : "still there") }
        }
        property AbstractTrace b: LineTrace { height: 70 }
    }
    )"_L1;
    QVERIFY2(load(head + document), m_error.constData());
    QTest::mouseMove(m_window.get(), onA);
    QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(), QStringList{u"gone"_s});
    QCOMPARE(m_chart->property("source").toString(), u"undefined"_s);
    QVERIFY(m_chart->property("text").toString().startsWith(u"Charts::ChartMouseEvent("_s));
    QVERIFY(!m_chart->property("kept").value<QObject *>());
}

void tst_MouseQml::readOnly()
{
    const auto document = R"(
        property AbstractTrace a: LineTrace {
            height: 30
            onPressed: event => {
                for (const name of ["x", "y", "button", "buttons", "modifiers", "flags"]) {
                    try {
                        event[name] = 5
                        chart.log.push(name + " written")
                    } catch (error) {
                        chart.log.push(name)
                    }
                }
                event.accepted = false
                event.accepted = true
                chart.log.push(String(event.accepted))
            }
        }
        property AbstractTrace b: LineTrace { height: 70 }
        onPressed: log.push("chart")
    }
    )"_L1;
    QVERIFY2(load(head + document), m_error.constData());
    QTest::mousePress(m_window.get(), Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(), QStringList({u"x"_s, u"y"_s, u"button"_s, u"buttons"_s, u"modifiers"_s,
                                u"flags"_s, u"true"_s}));
    QTest::mouseRelease(m_window.get(), Qt::LeftButton, Qt::NoModifier, onA);
}

// The engine does not own the event: it may neither delete it during the signal nor after it.
void tst_MouseQml::collectedAway()
{
    const auto document = R"(
        property AbstractTrace a: LineTrace {
            height: 30
            onPressed: event => { gc(); chart.note("A pressed", event); event.accepted = false }
            onClicked: event => { gc(); event.accepted = false }
        }
        property AbstractTrace b: LineTrace { height: 70 }
        onPressed: event => { gc(); note("chart pressed", event) }
        onClicked: event => { gc(); note("chart clicked", event) }
    }
    )"_L1;
    QVERIFY2(load(head + document), m_error.constData());
    QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, onA);
    QCOMPARE(answers(), QStringList({u"A pressed 100 30 1 1 0 0 true"_s,
                                u"chart pressed 100 30 1 1 0 0 false"_s,
                                u"chart clicked 100 30 1 0 0 0 true"_s}));
    m_engine->collectGarbage();
    QCOMPARE(answers(), QStringList());
}

void tst_MouseQml::tracesDestroyedByHandlers()
{
    const auto document = R"(
        property AbstractTrace a: maker.createObject(null)
        property AbstractTrace b: maker.createObject(null)
        property Component maker: Component {
            LineTrace {
                height: 30
                onPressed: event => {
                    chart.note("pressed", event)
                    destroy()
                }
            }
        }
        onPressed: event => note("chart pressed", event)
    }
    )"_L1;
    QVERIFY2(load(head + document), m_error.constData());
    for (const QString &sender : {u"pressed"_s, u"pressed"_s, QString()}) {
        QTest::mousePress(m_window.get(), Qt::LeftButton, Qt::NoModifier, onA);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, Qt::NoModifier, onA);
        const QStringList log = answers();
        QCOMPARE(log.size(), sender.isEmpty() ? 0 : 1);
        if (!sender.isEmpty())
            QCOMPARE(log.first(), sender + u" 100 30 1 1 0 0 true"_s);
        // destroy() deletes later.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

QTEST_MAIN(tst_MouseQml)

#include "tst_mouseqml.moc"
