// SPDX-License-Identifier: MIT
#include <ChartsLibrary/AbstractGrid.h>
#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/ChartItem.h>
#include <ChartsLibrary/ChartMouseEvent.h>
#include <ChartsLibrary/DomainUtils.h>
#include <ChartsLibrary/OpenGLRenderNode.h>
#include <ChartsLibrary/PolarGrid.h>
#include <ChartsLibrary/SmithGrid.h>
#include <ChartsLibrary/Span.h>
#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/XYGrid.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtTest>

using namespace Charts;
using namespace Qt::StringLiterals;

using ClassInfos = QMap<QByteArray, QByteArray>;

class tst_Registration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void order();
    void moduleVersion();
    void classInfos_data();
    void classInfos();
    void valueTypeClassInfo();
    void bases_data();
    void bases();
};

void tst_Registration::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

namespace {

QString registrationFunction()
{
    QFile file(QStringLiteral(REGISTRATION_FILE));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(file.readAll());
    return text.mid(text.indexOf(u"void qml_register_types_zel_charts()"_s));
}

} // namespace

// The engine keeps types in the order of their registration, and tools list them so.
void tst_Registration::order()
{
    static const QRegularExpression row(
            u"qmlRegister(TypesAndRevisions|AnonymousType)<([\\w:]+)[^>]*>\\(\"zel.charts\", 1\\)"_s);
    QStringList classes;
    auto match = row.globalMatch(registrationFunction());
    while (match.hasNext())
        classes += match.next().captured(2);

    const QStringList expected{
            u"Charts::AbstractGrid"_s,
            u"Charts::AbstractTrace"_s,
            u"Charts::Chart"_s,
            u"Charts::ChartItem"_s,
            u"QQuickItem"_s,
            u"Charts::ChartMouseEvent"_s,
            u"Charts::DomainUtils"_s,
            u"Charts::PolarGrid"_s,
            u"Charts::SmithGrid"_s,
            u"Charts::Span"_s,
            u"Charts::TraceDomain"_s,
            u"Charts::XYGrid"_s,
            u"Charts::ZoomDelegate"_s,
    };
    QCOMPARE(classes, expected);
}

void tst_Registration::moduleVersion()
{
    const QString text = registrationFunction();
    const auto module = text.indexOf(u"qmlRegisterModule(\"zel.charts\", 1, 0);"_s);
    QVERIFY(module > 0);
    QVERIFY2(text.indexOf(u"qmlRegister"_s, module + 1) < 0, "the module is registered last");
}

void tst_Registration::classInfos_data()
{
    QTest::addColumn<const QMetaObject *>("metaObject");
    QTest::addColumn<ClassInfos>("infos");

    const ClassInfos creatable{{"QML.Element", "auto"}};
    const ClassInfos uncreatable{
            {"QML.Element", "auto"}, {"QML.Creatable", "false"}, {"QML.UncreatableReason", ""}};
    const auto row = [](const QMetaObject &metaObject, const ClassInfos &infos) {
        QTest::newRow(metaObject.className()) << &metaObject << infos;
    };
    row(AbstractGrid::staticMetaObject, uncreatable);
    row(AbstractTrace::staticMetaObject, uncreatable);
    row(Chart::staticMetaObject, creatable);
    row(ChartItem::staticMetaObject, uncreatable);
    row(ChartMouseEvent::staticMetaObject, uncreatable);
    row(DomainUtils::staticMetaObject, {{"QML.Element", "Domain"}, {"QML.Singleton", "true"}});
    row(PolarGrid::staticMetaObject, creatable);
    row(SmithGrid::staticMetaObject, creatable);
    row(TraceDomain::staticMetaObject, uncreatable);
    row(XYGrid::staticMetaObject, creatable);
    row(ZoomDelegate::staticMetaObject, creatable);
    row(OpenGLRenderNode::staticMetaObject, {});
}

void tst_Registration::classInfos()
{
    QFETCH(const QMetaObject *, metaObject);
    QFETCH(ClassInfos, infos);

    ClassInfos own;
    for (int i = metaObject->classInfoOffset(); i < metaObject->classInfoCount(); ++i)
        own.insert(metaObject->classInfo(i).name(), metaObject->classInfo(i).value());
    QCOMPARE(own, infos);
}

void tst_Registration::valueTypeClassInfo()
{
    // Qt's macro for value types adds others, which differ from version to version.
    const QMetaObject &metaObject = Span::staticMetaObject;
    const int index = metaObject.indexOfClassInfo("QML.Element");
    QVERIFY(index >= 0);
    QCOMPARE(metaObject.classInfo(index).value(), "span");
    QCOMPARE(metaObject.superClass(), nullptr);
}

void tst_Registration::bases_data()
{
    QTest::addColumn<const QMetaObject *>("metaObject");
    QTest::addColumn<QByteArray>("base");

    const auto row = [](const QMetaObject &metaObject, const char *base) {
        QTest::newRow(metaObject.className()) << &metaObject << QByteArray(base);
    };
    row(AbstractGrid::staticMetaObject, "Charts::ChartItem");
    row(AbstractTrace::staticMetaObject, "QObject");
    row(Chart::staticMetaObject, "Charts::ChartItem");
    row(ChartItem::staticMetaObject, "QQuickItem");
    row(ChartMouseEvent::staticMetaObject, "QObject");
    row(DomainUtils::staticMetaObject, "QObject");
    row(PolarGrid::staticMetaObject, "Charts::AbstractGrid");
    row(SmithGrid::staticMetaObject, "Charts::AbstractGrid");
    row(TraceDomain::staticMetaObject, "QObject");
    row(XYGrid::staticMetaObject, "Charts::AbstractGrid");
    row(ZoomDelegate::staticMetaObject, "QQuickItem");
}

void tst_Registration::bases()
{
    QFETCH(const QMetaObject *, metaObject);
    QFETCH(QByteArray, base);

    QCOMPARE(QByteArray(metaObject->superClass()->className()), base);
}

QTEST_GUILESS_MAIN(tst_Registration)

#include "tst_registration.moc"
