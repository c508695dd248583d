// SPDX-License-Identifier: MIT
#include "ExactCompare.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/ChartMouseEvent.h>
#include <ChartsLibrary/TraceData.h>

#include <QtGui/QMouseEvent>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <functional>

using namespace Charts;

namespace {

// What an application writes: it carries name and colour into its own data.
class ExampleTrace : public AbstractTrace
{
public:
    using AbstractTrace::AbstractTrace;

    void setName(const QString &name) override
    {
        setNames.append(name);
        AbstractTrace::setName(name);
    }
    void setColor(const QColor &color) override
    {
        data.setColor(color);
        AbstractTrace::setColor(color);
    }
    TraceData *traceData() override { return &data; }
    void updateData() override { ++updates; }

    TraceData data;
    QStringList setNames;
    int updates = 0;
};

using Change = std::function<void(AbstractTrace &)>;

/*! Writes down the change signals of a trace; connects itself to all of them. */
class TraceSignalLog : public QObject
{
public:
    explicit TraceSignalLog(AbstractTrace &trace)
    {
        const auto add = [this](const QString &entry) { m_entries.append(entry); };
        connect(&trace, &AbstractTrace::nameChanged, this, [add] { add(QStringLiteral("name")); });
        connect(&trace, &AbstractTrace::visibleChanged, this,
                [add] { add(QStringLiteral("visible")); });
        connect(&trace, &AbstractTrace::zChanged, this,
                [add](double z) { add(QStringLiteral("z %1").arg(z)); });
        connect(&trace, &AbstractTrace::colorChanged, this, [add](const QColor &color) {
            add(QStringLiteral("color %1").arg(color.name(QColor::HexArgb)));
        });
        connect(&trace, &AbstractTrace::lineWidthChaned, this,
                [add](double width) { add(QStringLiteral("lineWidth %1").arg(width)); });
        const auto mouse = [add] { add(QStringLiteral("mouse")); };
        connect(&trace, &AbstractTrace::clicked, this, mouse);
        connect(&trace, &AbstractTrace::hovered, this, mouse);
        connect(&trace, &AbstractTrace::pressed, this, mouse);
        connect(&trace, &AbstractTrace::released, this, mouse);
        connect(&trace, &AbstractTrace::doubleClicked, this, mouse);
    }

    QStringList take() { return std::exchange(m_entries, {}); }

private:
    QStringList m_entries;
};

} // namespace

class tst_AbstractTrace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void defaults();
    void domain();
    void propertyContract_data();
    void propertyContract();
    void emissions_data();
    void emissions();
    void numbers_data();
    void numbers();
    void refusedWrites_data();
    void refusedWrites();
    void overrides();
    void settersLeaveDataAlone();
    void mouseSignals();
};

void tst_AbstractTrace::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_AbstractTrace::defaults()
{
    const ExampleTrace trace;
    QCOMPARE(trace.parent(), nullptr);
    QVERIFY(trace.isVisible());
    QVERIFY(trace.name().isNull());
    COMPARE_EXACT(trace.z(), 0.0);
    COMPARE_EXACT(trace.lineWidth(), 1.5);
    QCOMPARE(trace.color(), QColor());
    QVERIFY(!trace.color().isValid());
    QVERIFY(trace.domain());
}

void tst_AbstractTrace::domain()
{
    QPointer<TraceDomain> domain;
    QPointer<AbstractTrace> trace;
    {
        QObject parent;
        trace = new ExampleTrace(&parent);
        QCOMPARE(trace->parent(), &parent);
        domain = trace->domain();
        QCOMPARE(domain->parent(), trace.data());
        QCOMPARE(trace->property("domain").value<TraceDomain *>(), domain.data());

        TraceDomain other;
        QVERIFY(!trace->setProperty("domain", QVariant::fromValue(&other)));
        QCOMPARE(trace->domain(), domain.data());
        QVERIFY(ExampleTrace().domain() != domain.data());
    }
    QVERIFY(trace.isNull());
    QVERIFY(domain.isNull());
}

void tst_AbstractTrace::propertyContract_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("initial");
    QTest::addColumn<QVariant>("first");
    QTest::addColumn<QVariant>("second");
    QTest::addColumn<bool>("hasArgument");

    const auto row = [](const char *name, const QVariant &initial, const QVariant &first,
                             const QVariant &second, bool hasArgument) {
        QTest::newRow(name) << QByteArray(name) << initial << first << second << hasArgument;
    };
    row("visible", true, false, true, false);
    row("name", QString(), QStringLiteral("S11"), QString(), false);
    row("z", 0.0, -2.5, 1e300, true);
    row("color", QColor(), QColor(10, 20, 30, 40), QColor(Qt::transparent), true);
    row("lineWidth", 1.5, 1.6, 0.0, true);
}

void tst_AbstractTrace::propertyContract()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, initial);
    QFETCH(QVariant, first);
    QFETCH(QVariant, second);
    QFETCH(bool, hasArgument);

    ExampleTrace trace;
    const QMetaObject &meta = AbstractTrace::staticMetaObject;
    const QMetaProperty property = meta.property(meta.indexOfProperty(name));
    QSignalSpy spy(&trace, property.notifySignal());
    QVERIFY(spy.isValid());
    TraceSignalLog log(trace);

    QCOMPARE(property.read(&trace), initial);
    QVERIFY(property.write(&trace, initial));
    QCOMPARE(log.take(), QStringList());
    for (const QVariant &value : {first, second, initial, first}) {
        const bool isChange = property.read(&trace) != value;
        QVERIFY(property.write(&trace, value));
        QCOMPARE(property.read(&trace), value);
        QCOMPARE(spy.size(), isChange ? 1 : 0);
        QCOMPARE(log.take().size(), isChange ? 1 : 0);
        if (isChange)
            QCOMPARE(spy.takeFirst(), hasArgument ? QVariantList{value} : QVariantList());

        QVERIFY(property.write(&trace, value));
        QCOMPARE(spy.size(), 0);
        QCOMPARE(log.take(), QStringList());
    }
}

void tst_AbstractTrace::emissions_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QStringList>("log");

    const auto row = [](const char *name, const Change &change, const QStringList &log) {
        QTest::newRow(name) << change << log;
    };
    const QString red = QStringLiteral("color #ffff0000");
    row("setVisible", [](AbstractTrace &t) { t.setVisible(false); }, {QStringLiteral("visible")});
    row("setName", [](AbstractTrace &t) { t.setName(QStringLiteral("a")); },
            {QStringLiteral("name")});
    row("setName, empty for null", [](AbstractTrace &t) { t.setName(QStringLiteral("")); }, {});
    row("setName, another case",
            [](AbstractTrace &t) {
                t.setName(QStringLiteral("a"));
                t.setName(QStringLiteral("A"));
            },
            {QStringLiteral("name"), QStringLiteral("name")});
    row("setColor", [](AbstractTrace &t) { t.setColor(Qt::red); }, {red});
    row("setColor, invalid", [](AbstractTrace &t) { t.setColor(QColor()); }, {});
    row("setColor, equal",
            [](AbstractTrace &t) {
                t.setColor(Qt::red);
                t.setColor(QColor(255, 0, 0));
            },
            {red});
    row("setColor, only the alpha",
            [](AbstractTrace &t) {
                t.setColor(Qt::red);
                t.setColor(QColor(255, 0, 0, 0));
            },
            {red, QStringLiteral("color #00ff0000")});
    row("setZ", [](AbstractTrace &t) { t.setZ(3.0); }, {QStringLiteral("z 3")});
    row("setLineWidth", [](AbstractTrace &t) { t.setLineWidth(1.6); },
            {QStringLiteral("lineWidth 1.6")});
}

void tst_AbstractTrace::emissions()
{
    QFETCH(Change, change);
    QFETCH(QStringList, log);

    ExampleTrace trace;
    TraceSignalLog heard(trace);
    change(trace);
    QCOMPARE(heard.take(), log);
}

void tst_AbstractTrace::numbers_data()
{
    QTest::addColumn<bool>("isZ");
    QTest::addColumn<double>("before");
    QTest::addColumn<double>("after");
    QTest::addColumn<bool>("isChange");

    const auto z = [](const char *name, double before, double after, bool isChange) {
        QTest::addRow("z, %s", name) << true << before << after << isChange;
    };
    z("the same", 2.0, 2.0, false);
    z("another", 2.0, -3.0, true);
    z("the next double", 2.0, std::nextafter(2.0, 3.0), true);
    z("the smallest number", 0.0, smallest, true);
    z("minus zero is zero", 0.0, -0.0, false);
    z("huge", 0.0, -largest, true);
    z("infinity", 0.0, inf, true);
    z("infinity again", inf, inf, false);
    z("NaN", 0.0, NaN, true);
    z("NaN again", NaN, NaN, true);

    const auto width = [](const char *name, double before, double after, bool isChange) {
        QTest::addRow("lineWidth, %s", name) << false << before << after << isChange;
    };
    width("the same", 1.5, 1.5, false);
    width("another", 1.5, 1.6, true);
    width("within the tolerance", 1.5, 1.5 + 1e-13, false);
    width("beyond the tolerance", 1.5, 1.5 + 2e-12, true);
    width("at the tolerance", 1e12, 1000000000001.0, false);
    width("the next double beyond it", 1e12, 1000000000001.0001220703125, true);
    width("zero again", 0.0, 0.0, false);
    // No tolerance around zero.
    width("from zero by the smallest step", 0.0, smallest, true);
    width("to zero", 1e-13, 0.0, true);
    width("minus zero is zero", 0.0, -0.0, false);
    width("the other sign", 1.0, -1.0, true);
    width("huge", 1.5, largest, true);
    width("huge again", largest, largest, false);
    width("infinity", 1.5, inf, true);
    width("infinity again, at no distance from itself", inf, inf, true);
    width("NaN", 1.5, NaN, true);
    width("NaN again", NaN, NaN, true);
}

void tst_AbstractTrace::numbers()
{
    QFETCH(bool, isZ);
    QFETCH(double, before);
    QFETCH(double, after);
    QFETCH(bool, isChange);

    ExampleTrace trace;
    const auto set = [&trace, isZ](double value) {
        if (isZ)
            trace.setZ(value);
        else
            trace.setLineWidth(value);
    };
    const auto get = [&trace, isZ] { return isZ ? trace.z() : trace.lineWidth(); };
    set(before);
    COMPARE_EXACT(get(), before);
    QList<double> emitted;
    const auto listen = [&emitted](double value) { emitted.append(value); };
    if (isZ)
        connect(&trace, &AbstractTrace::zChanged, this, listen);
    else
        connect(&trace, &AbstractTrace::lineWidthChaned, this, listen);
    TraceSignalLog log(trace);

    set(after);
    COMPARE_EXACT(get(), isChange ? after : before);
    QCOMPARE(log.take().size(), isChange ? 1 : 0);
    QCOMPARE(emitted.size(), isChange ? 1 : 0);
    if (isChange)
        COMPARE_EXACT(emitted.first(), after);
}

void tst_AbstractTrace::refusedWrites_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("z, a list") << QByteArray("z") << QVariant(QVariantList{1.0});
    QTest::newRow("lineWidth, a colour") << QByteArray("lineWidth") << QVariant(QColor(Qt::red));
    QTest::newRow("color, a size") << QByteArray("color") << QVariant(QSizeF(1.0, 2.0));
    QTest::newRow("name, a size") << QByteArray("name") << QVariant(QSizeF(1.0, 2.0));
    QTest::newRow("visible, a size") << QByteArray("visible") << QVariant(QSizeF(1.0, 2.0));
}

void tst_AbstractTrace::refusedWrites()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);

    ExampleTrace trace;
    TraceSignalLog log(trace);
    const QVariant before = trace.property(name);
    QVERIFY(!trace.setProperty(name, value));
    QCOMPARE(trace.property(name), before);
    QCOMPARE(log.take(), QStringList());
}

// The properties write through the virtual setters, so that QML reaches the override too.
void tst_AbstractTrace::overrides()
{
    ExampleTrace trace;
    AbstractTrace &base = trace;
    base.setName(QStringLiteral("S21"));
    QVERIFY(base.setProperty("name", QStringLiteral("S22")));
    QCOMPARE(trace.setNames, (QStringList{QStringLiteral("S21"), QStringLiteral("S22")}));

    base.setColor(Qt::green);
    QCOMPARE(trace.data.color(), QColor(Qt::green));
    QVERIFY(base.setProperty("color", QColor(Qt::blue)));
    QCOMPARE(trace.data.color(), QColor(Qt::blue));

    QCOMPARE(base.traceData(), &trace.data);
    QCOMPARE(trace.updates, 0);
    base.updateData();
    QCOMPARE(trace.updates, 1);
}

void tst_AbstractTrace::settersLeaveDataAlone()
{
    ExampleTrace trace;
    trace.setVisible(false);
    trace.setZ(7.0);
    trace.setLineWidth(9.0);
    trace.AbstractTrace::setColor(Qt::red);
    trace.AbstractTrace::setName(QStringLiteral("x"));
    QVERIFY(trace.data.visible());
    QVERIFY(trace.data.width() == TraceData().width());
    QCOMPARE(trace.data.color(), QColor());
    QVERIFY(!trace.data.isDirty());
    QCOMPARE(trace.updates, 0);
}

// The chart emits them on the trace; a listener gets the event object itself.
void tst_AbstractTrace::mouseSignals()
{
    ExampleTrace trace;
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1.0, 2.0), QPointF(1.0, 2.0),
            Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    ChartMouseEvent chartEvent(&press, nullptr);
    ChartMouseEvent *const event = &chartEvent;
    QList<std::pair<int, ChartMouseEvent *>> heard;
    const auto listen = [&heard](int which) {
        return [&heard, which](ChartMouseEvent *e) { heard.append({which, e}); };
    };
    connect(&trace, &AbstractTrace::clicked, this, listen(1));
    connect(&trace, &AbstractTrace::pressed, this, listen(2));
    connect(&trace, &AbstractTrace::released, this, listen(3));
    connect(&trace, &AbstractTrace::doubleClicked, this, listen(4));
    connect(&trace, &AbstractTrace::hovered, this, [&heard](ChartMouseEvent *e, bool state) {
        heard.append({state ? 5 : 6, e});
    });

    Q_EMIT trace.clicked(event);
    Q_EMIT trace.pressed(event);
    Q_EMIT trace.released(event);
    Q_EMIT trace.doubleClicked(event);
    Q_EMIT trace.hovered(event, true);
    Q_EMIT trace.hovered(nullptr, false);
    const QList<std::pair<int, ChartMouseEvent *>> expected{
            {1, event}, {2, event}, {3, event}, {4, event}, {5, event}, {6, nullptr}};
    QCOMPARE(heard, expected);
}

QTEST_GUILESS_MAIN(tst_AbstractTrace)
#include "tst_abstracttrace.moc"
