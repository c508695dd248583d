// SPDX-License-Identifier: MIT
#include "ImportVariant.h"

#include <ChartsLibrary/Chart.h>

#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// All that a document can name as the type of an object.
const QStringList elements{u"AbstractCurveTransform"_s, u"AbstractGrid"_s, u"AbstractTrace"_s,
        u"Chart"_s, u"ChartItem"_s, u"ChartMouseEvent"_s, u"Curve"_s, u"FillRectProvider"_s,
        u"GradientCurve"_s, u"GradientProvider"_s, u"LinearCurveTransform"_s,
        u"LogarithmicCurveTransform"_s, u"PolarGrid"_s, u"SmithGrid"_s, u"TraceDomain"_s,
        u"XYGrid"_s, u"ZoomDelegate"_s};

} // namespace

// Which elements the module has and what may be done with each.
class tst_Elements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void importPaths();
    void versions_data();
    void versions();
    void creatable_data();
    void creatable();
    void uncreatable_data();
    void uncreatable();
    void unknown_data();
    void unknown();
    void asPropertyTypes_data();
    void asPropertyTypes();
    void enumerations_data();
    void enumerations();
    void singletonPerEngine();
    void parserStatus_data();
    void parserStatus();
    void signalsOfItemsWithoutQtQuick();

private:
    std::unique_ptr<QObject> create(const QString &document);

    std::unique_ptr<QQmlEngine> m_engine;
    QString m_errors;
};

void tst_Elements::initTestCase()
{
    // Keeps the linker from dropping the library, of which nothing else is called by name.
    QVERIFY(Charts::Chart::staticMetaObject.className());
}

void tst_Elements::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_engine = std::make_unique<QQmlEngine>();
    applyImportVariant(*m_engine);
    m_errors.clear();
}

std::unique_ptr<QObject> tst_Elements::create(const QString &document)
{
    QQmlComponent component(m_engine.get());
    component.setData(document.toUtf8(), QUrl(u"document.qml"_s));
    m_errors = component.errorString().trimmed();
    return std::unique_ptr<QObject>(component.isReady() ? component.create() : nullptr);
}

void tst_Elements::importPaths()
{
    const QStringList paths = modulePaths(*m_engine);
    if (importVariant() == u"linked"_s) {
        QCOMPARE(paths, QStringList());
    } else {
        QCOMPARE(paths.size(), 1);
        QCOMPARE(paths.first().startsWith(u':'), importVariant() == u"resources"_s);
    }
}

void tst_Elements::versions_data()
{
    QTest::addColumn<QString>("import");
    QTest::addColumn<bool>("installed");
    QTest::newRow("1.0") << u"zel.charts 1.0"_s << true;
    QTest::newRow("1") << u"zel.charts 1"_s << true;
    QTest::newRow("latest") << u"zel.charts"_s << true;
    QTest::newRow("2.0") << u"zel.charts 2.0"_s << false;
    QTest::newRow("0.9") << u"zel.charts 0.9"_s << false;
    QTest::newRow("1.1") << u"zel.charts 1.1"_s << false;
}

void tst_Elements::versions()
{
    QFETCH(QString, import);
    QFETCH(bool, installed);

    const auto chart = create(u"import %1\nChart {}"_s.arg(import));
    QVERIFY2(bool(chart) == installed, qPrintable(m_errors));
    if (!installed)
        QVERIFY2(m_errors.endsWith(u" is not installed"_s), qPrintable(m_errors));

    const auto qualified = create(u"import %1 as Charts\nCharts.Chart {}"_s.arg(import));
    QVERIFY2(bool(qualified) == installed, qPrintable(m_errors));
}

void tst_Elements::creatable_data()
{
    QTest::addColumn<QStringList>("bases");
    // Elements only, the nearest first.
    const QStringList item{u"ChartItem"_s, u"Item"_s, u"QtObject"_s};
    const QStringList grid = QStringList{u"AbstractGrid"_s} + item;
    const QStringList transform{u"AbstractCurveTransform"_s, u"QtObject"_s};
    QTest::newRow("Chart") << item;
    QTest::newRow("Curve") << item;
    QTest::newRow("FillRectProvider") << QStringList{u"GradientProvider"_s, u"QtObject"_s};
    QTest::newRow("GradientCurve") << QStringList{u"Curve"_s} + item;
    QTest::newRow("LinearCurveTransform") << transform;
    QTest::newRow("LogarithmicCurveTransform") << transform;
    QTest::newRow("PolarGrid") << grid;
    QTest::newRow("SmithGrid") << grid;
    QTest::newRow("XYGrid") << grid;
    QTest::newRow("ZoomDelegate") << QStringList{u"Item"_s, u"QtObject"_s};
}

void tst_Elements::creatable()
{
    QFETCH(QStringList, bases);

    const QString element = QString::fromLatin1(QTest::currentDataTag());
    const auto object = create(u"import zel.charts 1.0\n%1 {}"_s.arg(element));
    QVERIFY2(object, qPrintable(m_errors));
    QCOMPARE(QString::fromLatin1(object->metaObject()->className()), u"Charts::"_s + element);

    // What it is and what it is not, as a document can ask.
    for (const QString &other : elements + QStringList{u"Item"_s, u"QtObject"_s}) {
        const auto answer = create(uR"(
            import QtQml
            import QtQuick
            import zel.charts 1.0
            QtObject {
                property QtObject object: %1 {}
                property var answer: object instanceof %2
            })"_s.arg(element, other));
        QVERIFY2(answer, qPrintable(m_errors));
        const bool expected = other == element || bases.contains(other);
        QVERIFY2(answer->property("answer") == QVariant(expected), qPrintable(other));
    }
}

void tst_Elements::uncreatable_data()
{
    QTest::addColumn<QString>("message");
    // What the engine says of its own accord, for want of a reason.
    const QString noType = u"Type cannot be created in QML."_s;
    for (const char *name : {"AbstractCurveTransform", "AbstractGrid", "AbstractTrace", "ChartItem",
                 "ChartMouseEvent", "GradientProvider", "TraceDomain"})
        QTest::newRow(name) << noType;
    QTest::newRow("Domain") << u"Element is not creatable."_s;
    QTest::newRow("span") << u"Expected type name"_s;
}

void tst_Elements::uncreatable()
{
    QFETCH(QString, message);

    const auto object = create(
            u"import zel.charts 1.0\n%1 {}"_s.arg(QLatin1StringView(QTest::currentDataTag())));
    QVERIFY(!object);
    QCOMPARE(m_errors, u"document.qml:2 "_s + message);
}

void tst_Elements::unknown_data()
{
    QTest::addColumn<QString>("element");
    for (const char *name : {"DomainUtils", "Span", "QQuickItem", "Item", "OpenGLRenderNode",
                 "AbstractRenderNode", "ChartNode", "TraceData", "BoundRange", "ArcNode",
                 "GradientNode", "LineNode", "LimitLineNode", "GridNode", "PolarNode", "SmithNode",
                 "XYNode", "SmoothColorMaterial", "Circle"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_Elements::unknown()
{
    QFETCH(QString, element);

    QVERIFY(!create(u"import zel.charts 1.0\n%1 {}"_s.arg(element)));
    QCOMPARE(m_errors, u"document.qml:2 %1 is not a type"_s.arg(element));
}

void tst_Elements::asPropertyTypes_data()
{
    QTest::addColumn<QString>("type");
    for (const QString &element : elements)
        QTest::newRow(qPrintable(element)) << element;
}

void tst_Elements::asPropertyTypes()
{
    QFETCH(QString, type);

    const auto object = create(
            u"import QtQml\nimport zel.charts 1.0\nQtObject { property %1 value: null }"_s.arg(
                    type));
    QVERIFY2(object, qPrintable(m_errors));
    const QMetaProperty property =
            object->metaObject()->property(object->metaObject()->indexOfProperty("value"));
    QCOMPARE(property.metaType().name(), u"Charts::%1*"_s.arg(type).toLatin1().constData());
}

void tst_Elements::enumerations_data()
{
    QTest::addColumn<int>("value");
    QTest::newRow("TraceDomain.XYFormat") << 0;
    QTest::newRow("TraceDomain.SmithFormat") << 1;
    QTest::newRow("TraceDomain.PolarFormat") << 2;
    QTest::newRow("XYGrid.EquidistantGrid") << 0;
    QTest::newRow("XYGrid.CenteredLinGrid") << 1;
    QTest::newRow("XYGrid.NiceLabelsLinGrid") << 2;
    QTest::newRow("XYGrid.LogGrid") << 3;
    QTest::newRow("ZoomDelegate.Diagonal") << 0;
    QTest::newRow("ZoomDelegate.Vertical") << 1;
    QTest::newRow("ZoomDelegate.Horizontal") << 2;
}

void tst_Elements::enumerations()
{
    QFETCH(int, value);

    const QString key = QString::fromLatin1(QTest::currentDataTag());
    const auto object = create(
            u"import QtQml\nimport zel.charts 1.0\nQtObject { property var value: %1 }"_s.arg(key));
    QVERIFY2(object, qPrintable(m_errors));
    QCOMPARE(object->property("value"), QVariant(value));
}

void tst_Elements::singletonPerEngine()
{
    const QString document =
            u"import QtQml\nimport zel.charts 1.0\nQtObject { property QtObject domain: Domain }"_s;
    const auto domainOf = [](const std::unique_ptr<QObject> &object) {
        return object ? object->property("domain").value<QObject *>() : nullptr;
    };
    const auto first = create(document);
    const auto second = create(document);
    QObject *domain = domainOf(first);
    QVERIFY2(domain, qPrintable(m_errors));
    QCOMPARE(domain->metaObject()->className(), "Charts::DomainUtils");
    QCOMPARE(domainOf(second), domain);

    const std::unique_ptr<QQmlEngine> otherEngine =
            std::exchange(m_engine, std::make_unique<QQmlEngine>());
    applyImportVariant(*m_engine);
    const auto third = create(document);
    QVERIFY(domainOf(third));
    QVERIFY(domainOf(third) != domain);

    // The engine's own: it goes with it.
    QSignalSpy destructions(domainOf(third), &QObject::destroyed);
    m_engine.reset();
    QCOMPARE(destructions.size(), 1);
}

void tst_Elements::parserStatus_data()
{
    QTest::addColumn<QString>("element");
    for (const char *name :
            {"Chart", "Curve", "GradientCurve", "PolarGrid", "SmithGrid", "XYGrid", "ZoomDelegate"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

// classBegin() makes an item incomplete, componentComplete() complete again.
void tst_Elements::parserStatus()
{
    QFETCH(QString, element);

    struct Item : QQuickItem
    {
        static bool isComplete(const QQuickItem &item)
        {
            return (item.*(&Item::isComponentComplete))();
        }
    };
    QQmlComponent component(m_engine.get());
    component.setData(u"import zel.charts 1.0\n%1 {}"_s.arg(element).toUtf8(), {});
    const std::unique_ptr<QObject> object(component.beginCreate(m_engine->rootContext()));
    const auto *item = qobject_cast<QQuickItem *>(object.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    QVERIFY(!Item::isComplete(*item));
    component.completeCreate();
    QVERIFY(Item::isComplete(*item));
}

// The argument is of a type of QtQuick, which the document does not import.
void tst_Elements::signalsOfItemsWithoutQtQuick()
{
    const auto chart = create(uR"(
        import QtQml
        import zel.charts 1.0
        Chart {
            property ZoomDelegate band: ZoomDelegate { width: 20 }
            property real seen: 0
            onRubberBandChanged: rubberBand => { seen = rubberBand.width }
            Component.onCompleted: rubberBand = band
        })"_s);
    QVERIFY2(chart, qPrintable(m_errors));
    QCOMPARE(chart->property("seen").toDouble(), 20.0);
}

QTEST_MAIN(tst_Elements)

#include "tst_elements.moc"
