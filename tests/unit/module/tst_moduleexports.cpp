// SPDX-License-Identifier: MIT
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <dlfcn.h>

using namespace Qt::StringLiterals;

class tst_ModuleExports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void entryPoints_data();
    void entryPoints();
    void classes_data();
    void classes();
    void privateClassesAreHidden();
    void nothingElseInNamespace();
    void nothingElseOutsideNamespace();

private:
    [[nodiscard]] bool isExported(const QString &name) const;

    QStringList m_symbols; // demangled
};

void tst_ModuleExports::initTestCase()
{
    QProcess lister;
    lister.start(QStringLiteral(SYMBOL_LISTER),
            {u"-DC"_s, u"--defined-only"_s, u"--format=posix"_s, QStringLiteral(LIBRARY_FILE)});
    QVERIFY2(lister.waitForFinished(60000), qPrintable(lister.errorString()));
    QCOMPARE(lister.exitCode(), 0);
    m_symbols = QString::fromLocal8Bit(lister.readAllStandardOutput()).split(u'\n');
    QVERIFY(m_symbols.size() > 100);
}

void tst_ModuleExports::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

bool tst_ModuleExports::isExported(const QString &name) const
{
    return std::any_of(m_symbols.cbegin(), m_symbols.cend(),
            [&](const QString &symbol) { return symbol.startsWith(name); });
}

void tst_ModuleExports::entryPoints_data()
{
    QTest::addColumn<QByteArray>("symbol");
    // C++ names: the length, the name, no argument.
    QTest::newRow("registration") << QByteArray("_Z29qml_register_types_zel_chartsv");
    QTest::newRow("init packs") << QByteArray("_Z36qInitResources_ChartsLibrary_shadersv");
    QTest::newRow("clean up packs") << QByteArray("_Z39qCleanupResources_ChartsLibrary_shadersv");
    QTest::newRow("init module") << QByteArray("_Z31qInitResources_qmake_zel_chartsv");
    QTest::newRow("clean up module") << QByteArray("_Z34qCleanupResources_qmake_zel_chartsv");
    QTest::newRow("init sources") << QByteArray("_Z30qInitResources_chart_resourcesv");
    QTest::newRow("clean up sources") << QByteArray("_Z33qCleanupResources_chart_resourcesv");
}

void tst_ModuleExports::entryPoints()
{
    QFETCH(QByteArray, symbol);

    void *library = dlopen(LIBRARY_FILE, RTLD_NOW);
    QVERIFY(library);
    QVERIFY(dlsym(library, symbol.constData()));
    dlclose(library);
}

void tst_ModuleExports::classes_data()
{
    QTest::addColumn<QStringList>("symbols");

    const auto row = [](const char *name, const QStringList &symbols) {
        QTest::newRow(name) << symbols;
    };
    // An application can derive from a class whose table of virtual functions and type information
    // it finds, and can connect to one whose meta-object it finds.
    const auto polymorphicGlobal = [](const QString &name, const QString &constructor) {
        return QStringList{u"vtable for "_s + name, u"typeinfo for "_s + name,
                u"%1::%2(%3)"_s.arg(name, name.section(u"::"_s, -1), constructor),
                u"%1::~%2()"_s.arg(name, name.section(u"::"_s, -1))};
    };
    const auto polymorphic = [&](const QString &name, const QString &constructor) {
        return polymorphicGlobal(u"Charts::"_s + name, constructor);
    };
    const auto object = [&](const QString &name, const QString &constructor) {
        return polymorphic(name, constructor)
               + QStringList{u"Charts::%1::staticMetaObject"_s.arg(name)};
    };
    row("AbstractCurveTransform", object(u"AbstractCurveTransform"_s, u"QObject*"_s));
    row("AbstractRenderNode", polymorphic(u"AbstractRenderNode"_s, {}));
    row("AbstractTrace", object(u"AbstractTrace"_s, u"QObject*"_s));
    row("BoundRange", {u"Charts::BoundRange::push("_s, u"Charts::BoundRange::pop("_s});
    row("AbstractGrid", object(u"AbstractGrid"_s, u"QQuickItem*"_s));
    row("ArcNode", polymorphic(u"ArcNode"_s, QString()));
    row("Chart", object(u"Chart"_s, u"QQuickItem*"_s));
    row("ChartItem", object(u"ChartItem"_s, u"QQuickItem*"_s));
    row("ChartMouseEvent", object(u"ChartMouseEvent"_s, u"QMouseEvent*, QObject*"_s));
    row("Circle", {u"Charts::Circle::include(Charts::Circle const&) const"_s,
                          u"Charts::Circle::exclude(Charts::Circle const&) const"_s,
                          u"Charts::circledLine(QLine, Charts::Circle)"_s,
                          u"Charts::circledCircle(Charts::Circle, Charts::Circle)"_s});
    row("ChartNode", polymorphic(u"ChartNode"_s, u"QQuickWindow*"_s));
    row("Curve", object(u"Curve"_s, u"QQuickItem*"_s));
    row("DomainUtils",
            {u"vtable for Charts::DomainUtils"_s, u"Charts::DomainUtils::staticMetaObject"_s,
                    u"Charts::DomainUtils::mapRangeValue(Charts::Span, Charts::Span, double)"_s});
    row("FillRectProvider", object(u"FillRectProvider"_s, u"QObject*"_s));
    row("GradientCurve", object(u"GradientCurve"_s, u"QQuickItem*"_s));
    // The one class outside the namespace.
    row("GradientNode", polymorphicGlobal(u"GradientNode"_s, QString())
                                + QStringList{u"GradientNode::update(QLineF const&, QColor const&, "
                                              "bool, QSize const&)"_s,
                                        u"GradientNode::update(QList<QPointF> const&, QColor "
                                        "const&, bool, QList<double> const&)"_s});
    row("GradientProvider", object(u"GradientProvider"_s, u"QObject*"_s));
    row("LinearCurveTransform", object(u"LinearCurveTransform"_s, u"QObject*"_s));
    row("LogarithmicCurveTransform", object(u"LogarithmicCurveTransform"_s, u"QObject*"_s));
    row("LineNode", polymorphic(u"LineNode"_s, QString()));
    row("OpenGLRenderNode", object(u"OpenGLRenderNode"_s, u"QQuickWindow*"_s));
    row("PolarGrid", object(u"PolarGrid"_s, u"QQuickItem*"_s));
    row("SmithGrid", object(u"SmithGrid"_s, u"QQuickItem*"_s));
    row("SmoothColorMaterial", polymorphic(u"SmoothColorMaterial"_s, QString()));
    row("Span", {u"Charts::Span::staticMetaObject"_s,
                        u"Charts::operator==(Charts::Span const&, Charts::Span const&)"_s,
                        u"Charts::operator<<(QDebug, Charts::Span const&)"_s});
    row("TraceData", {u"Charts::TraceData::setColor(QColor const&)"_s});
    row("TraceDomain", object(u"TraceDomain"_s, u"QObject*"_s));
    row("XYGrid", object(u"XYGrid"_s, u"QQuickItem*"_s));
    row("ZoomDelegate", object(u"ZoomDelegate"_s, u"QQuickItem*"_s));
}

void tst_ModuleExports::classes()
{
    QFETCH(QStringList, symbols);

    for (const QString &symbol : symbols)
        QVERIFY2(isExported(symbol), qPrintable(symbol));
}

void tst_ModuleExports::privateClassesAreHidden()
{
    const QStringList privateClasses = QStringLiteral(PRIVATE_CLASSES).split(u' ');
    for (const char *name : {"TraceDrawPass", "TraceBuffers", "TraceFramebuffers", "TracePicker",
                 "TraceProgram", "TraceMatrices", "GridColumns", "SmithGeometry",
                 "PointerEventQueue", "MouseResponseDispatcher"})
        QVERIFY2(privateClasses.contains(QLatin1StringView(name)), name);

    for (const QString &name : privateClasses) {
        const QRegularExpression word(u"\\b%1\\b"_s.arg(name));
        QVERIFY2(m_symbols.filter(word).isEmpty(), qPrintable(m_symbols.filter(word).join(u'\n')));
    }
}

// Helpers in the namespace, not in a class, would be exported by accident only.
void tst_ModuleExports::nothingElseInNamespace()
{
    static const QRegularExpression freeFunction(u"^Charts::(\\w+|operator[^\\w\\s(]+)\\("_s);
    QStringList found = m_symbols.filter(freeFunction);
    for (QString &symbol : found)
        symbol = freeFunction.match(symbol).captured(1);
    found.sort();
    const QStringList expected{
            u"circledCircle"_s, u"circledLine"_s, u"operator<<"_s, u"operator=="_s};
    QCOMPARE(found, expected);
}

// Two libraries with a global function of one name would run into each other.
void tst_ModuleExports::nothingElseOutsideNamespace()
{
    // Functions that are there once; what every library has a copy of is weak.
    static const QRegularExpression function(
            u"^([A-Za-z]\\w*)(?:::[^(]*)?\\(.*\\) (?:const )?T "_s);
    QSet<QString> found;
    for (const QString &symbol : m_symbols) {
        const QRegularExpressionMatch match = function.match(symbol);
        if (match.hasMatch() && match.captured(1) != u"Charts"_s)
            found.insert(match.captured(1));
    }
    const QSet<QString> expected{u"GradientNode"_s, u"qml_register_types_zel_charts"_s,
            u"qInitResources_ChartsLibrary_shaders"_s, u"qCleanupResources_ChartsLibrary_shaders"_s,
            u"qInitResources_qmake_zel_charts"_s, u"qCleanupResources_qmake_zel_charts"_s,
            u"qInitResources_chart_resources"_s, u"qCleanupResources_chart_resources"_s};
    QCOMPARE(found, expected);
}

QTEST_GUILESS_MAIN(tst_ModuleExports)

#include "tst_moduleexports.moc"
