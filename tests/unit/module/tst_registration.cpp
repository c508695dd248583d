// SPDX-License-Identifier: MIT

// What the library hands to the engine when a document first imports the module. This program puts
// its own definition in front of the two Qt functions that take it; the dynamic linker takes the
// program's first. Each notes the call and passes it on to Qt.

#include "MetaObjectText.h"
#include "Signatures.h"

#include <ChartsLibrary/OpenGLRenderNode.h>
#include <ChartsLibrary/Span.h>

#include <QtCore/QRegularExpression>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/qqml.h>
#include <QtQuick/QQuickItem>
#include <QtTest/QTest>

#include <dlfcn.h>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

struct Registered
{
    const QMetaObject *metaObject = nullptr;
    QTypeRevision version;
    bool isObject = false;
    bool isSingleton = false;
    bool isAnonymous = false;
    bool isConstructible = false;
    int parserStatus = -1; // offset of QQmlParserStatus in an object, or -1
    QMetaType list;
    QMetaSequence sequence;
};

struct Log
{
    QList<Registered> types;
    QStringList modules; // "URI version after number-of-types"
};

Log &log()
{
    static Log log;
    return log;
}

bool isOurs(const char *uri)
{
    return qstrcmp(uri, "zel.charts") == 0;
}

bool isObject(const QMetaType &type)
{
    return type.flags().testFlag(QMetaType::PointerToQObject);
}

void note(QQmlPrivate::RegistrationType kind, const void *data)
{
    switch (kind) {
    case QQmlPrivate::TypeRegistration: {
        const auto &type = *static_cast<const QQmlPrivate::RegisterType *>(data);
        if (isOurs(type.uri))
            log().types.append(
                    {type.metaObject, type.version, isObject(type.typeId), false, !type.elementName,
                            type.create != nullptr, type.parserStatusCast, type.listId, {}});
        break;
    }
    case QQmlPrivate::TypeAndRevisionsRegistration: {
        const auto &type = *static_cast<const QQmlPrivate::RegisterTypeAndRevisions *>(data);
        if (isOurs(type.uri))
            log().types.append({type.metaObject, type.version, isObject(type.typeId), false,
                    type.forceAnonymous, type.create != nullptr, type.parserStatusCast, type.listId,
                    type.listMetaSequence});
        break;
    }
    case QQmlPrivate::SingletonAndRevisionsRegistration: {
        const auto &type =
                *static_cast<const QQmlPrivate::RegisterSingletonTypeAndRevisions *>(data);
        if (isOurs(type.uri))
            log().types.append({type.instanceMetaObject, type.version, isObject(type.typeId), true,
                    false, bool(type.qObjectApi), -1, {}, {}});
        break;
    }
    default:
        break;
    }
}

} // namespace

Q_DECL_EXPORT int QQmlPrivate::qmlregister(RegistrationType kind, void *data)
{
    // Newer versions of Qt call it from within for each part of a registration.
    static int depth = 0;
    if (depth == 0)
        note(kind, data);
    using Function = int (*)(RegistrationType, void *);
    const auto next = reinterpret_cast<Function>(
            dlsym(RTLD_NEXT, "_ZN11QQmlPrivate11qmlregisterENS_16RegistrationTypeEPv"));
    ++depth;
    const int result = next(kind, data);
    --depth;
    return result;
}

Q_DECL_EXPORT void qmlRegisterModule(const char *uri, int versionMajor, int versionMinor)
{
    if (isOurs(uri))
        log().modules.append(u"%1 %2.%3 after %4"_s.arg(QLatin1StringView(uri))
                                     .arg(versionMajor)
                                     .arg(versionMinor)
                                     .arg(log().types.size()));
    using Function = void (*)(const char *, int, int);
    const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_Z17qmlRegisterModulePKcii"));
    next(uri, versionMajor, versionMinor);
}

Q_DECLARE_METATYPE(Signature)
Q_DECLARE_METATYPE(Registered)

class tst_Registration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void order();
    void module();
    void onceForAllEngines();
    void rows_data();
    void rows();
    void classInfos_data() { rows_data(); }
    void classInfos();
    void valueType();
    void notRegistered();

private:
    QList<Signature> m_signatures;
};

namespace {

void importModule()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQml\nimport zel.charts 1.0\nQtObject {}", {});
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
}

QString classOf(const Registered &type)
{
    return QString::fromLatin1(type.metaObject->className());
}

} // namespace

void tst_Registration::initTestCase()
{
    m_signatures = readSignatures(QStringLiteral(SIGNATURES_FILE));
    QCOMPARE(m_signatures.size(), 20);
    QVERIFY2(log().types.isEmpty(), "nothing is registered before a document wants it");
    importModule();
}

void tst_Registration::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

// The engine keeps types in the order of their registration, and tools list them so.
void tst_Registration::order()
{
    QStringList seen;
    for (const Registered &type : log().types)
        seen.append(classOf(type));
    QStringList expected;
    for (const Signature &signature : m_signatures)
        expected.append(signature.className);
    QCOMPARE(seen, expected);
}

void tst_Registration::module()
{
    QCOMPARE(log().modules, QStringList{u"zel.charts 1.0 after 20"_s});
}

void tst_Registration::onceForAllEngines()
{
    const auto count = log().types.size();
    importModule();
    QCOMPARE(log().types.size(), count);
    QCOMPARE(log().modules.size(), 1);
}

void tst_Registration::rows_data()
{
    QTest::addColumn<Signature>("signature");
    QTest::addColumn<Registered>("type");
    for (const Signature &signature : m_signatures) {
        const auto type = std::find_if(log().types.cbegin(), log().types.cend(),
                [&](const Registered &other) { return classOf(other) == signature.className; });
        QTest::newRow(qPrintable(signature.className))
                << signature << (type == log().types.cend() ? Registered() : *type);
    }
}

void tst_Registration::rows()
{
    QFETCH(Signature, signature);
    QFETCH(Registered, type);

    QVERIFY(type.metaObject);
    const QMetaObject *base = type.metaObject->superClass();
    QCOMPARE(base ? QString::fromLatin1(base->className()) : QString(), signature.base);
    QCOMPARE(type.version.majorVersion(), 1);
    if (!signature.element.isEmpty())
        QVERIFY2(!type.version.hasMinorVersion(), "there from 1.0 on");
    QCOMPARE(type.isObject, signature.kind != u"value"_s);
    QCOMPARE(type.isAnonymous, signature.element.isEmpty());
    QCOMPARE(type.isSingleton, signature.isSingleton);
    // A value is no object to be made in place: the engine copies one.
    QCOMPARE(type.isConstructible, signature.isConstructible && signature.kind != u"value"_s);
    QCOMPARE(type.parserStatus >= 0, signature.kind == u"item"_s);
    QCOMPARE(type.metaObject->inherits(&QQuickItem::staticMetaObject), signature.kind == u"item"_s);
}

void tst_Registration::classInfos()
{
    QFETCH(Signature, signature);
    QFETCH(Registered, type);

    QVERIFY(type.metaObject);
    if (type.metaObject == &QQuickItem::staticMetaObject)
        return; // its own module's
    const QString className = signature.className.section(u"::"_s, -1);
    QMap<QString, QString> expected{
            {u"QML.Element"_s, signature.element == className ? u"auto"_s : signature.element}};
    if (!signature.isCreatable) {
        expected.insert(u"QML.Creatable"_s, u"false"_s);
        expected.insert(u"QML.UncreatableReason"_s, QString());
    }
    if (signature.isSingleton)
        expected.insert(u"QML.Singleton"_s, u"true"_s);
    QMap<QString, QString> seen = ::classInfos(*type.metaObject);
    if (signature.kind == u"value"_s) {
        // Qt's macro for value types adds others, which differ from version to version.
        seen.removeIf([](auto info) { return info.key() != u"QML.Element"_s; });
    }
    QCOMPARE(seen, expected);
}

// Together with its list, which documents fill from arrays.
void tst_Registration::valueType()
{
    const auto span = std::find_if(log().types.cbegin(), log().types.cend(),
            [](const Registered &type) { return type.metaObject == &Span::staticMetaObject; });
    QVERIFY(span != log().types.cend());
    QCOMPARE(span->list, QMetaType::fromType<QList<Span>>());
    QVERIFY(span->sequence == QMetaSequence::fromContainer<QList<Span>>());
    QVERIFY(span->sequence.valueMetaType() == QMetaType::fromType<Span>());
}

// It has a meta-object, for its signals only.
void tst_Registration::notRegistered()
{
    QVERIFY(::classInfos(OpenGLRenderNode::staticMetaObject).isEmpty());
    QVERIFY(OpenGLRenderNode::staticMetaObject.inherits(&QObject::staticMetaObject));
}

QTEST_GUILESS_MAIN(tst_Registration)

#include "tst_registration.moc"
