// SPDX-License-Identifier: MIT
#include "MetaObjectText.h"
#include "Qmltypes.h"
#include "Signatures.h"

#include <QtCore/QFile>
#include <QtCore/QMetaEnum>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

void qml_register_types_zel_charts();

Q_DECLARE_METATYPE(Signature)

// signatures.txt against what the engine and what tools get to see: the meta-objects, and the
// description in the module's folder, or another one that CHARTS_TEST_QMLTYPES names.
class tst_Signatures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void metaObject_data() { addClasses(); }
    void metaObject();
    void metaObjectTypes_data() { addClasses(); }
    void metaObjectTypes();
    void metaObjectPlain_data() { addClasses(); }
    void metaObjectPlain();

    void qmltypesModule();
    void qmltypesComponent_data() { addClasses(); }
    void qmltypesComponent();
    void qmltypesMembers_data() { addClasses(); }
    void qmltypesMembers();

private:
    void addClasses() const;
    [[nodiscard]] QmltypesObject component(const QString &className) const;

    QList<Signature> m_signatures;
    QmltypesObject m_qmltypes;
};

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

const QMetaObject *metaObjectOf(const Signature &signature)
{
    const QString type = signature.className + (signature.kind == u"value"_s ? u""_s : u"*"_s);
    return QMetaType::fromName(type.toLatin1()).metaObject();
}

// Which lines differ, or else their order.
void compareMembers(const QStringList &seen, const QStringList &expected)
{
    const auto without = [](QStringList lines, const QStringList &others) {
        lines.removeIf([&](const QString &line) { return others.contains(line); });
        return lines.join(u"\n    "_s);
    };
    const QString unexpected = without(seen, expected);
    const QString missing = without(expected, seen);
    QVERIFY2(unexpected.isEmpty() && missing.isEmpty(),
            qPrintable(u"\nunexpected:\n    %1\nmissing:\n    %2"_s.arg(unexpected, missing)));
    QCOMPARE(seen, expected);
}

QStringList enumTexts(const QMetaObject &meta)
{
    QStringList texts;
    for (int i = meta.enumeratorOffset(); i < meta.enumeratorCount(); ++i) {
        const QMetaEnum enumerator = meta.enumerator(i);
        QStringList keys;
        for (int key = 0; key < enumerator.keyCount(); ++key)
            keys.append(u"%1 = %2"_s.arg(QLatin1StringView(enumerator.key(key)))
                                .arg(enumerator.value(key)));
        const QString kind = enumerator.isFlag()     ? u"flag "_s
                             : enumerator.isScoped() ? u"scoped "_s
                                                     : QString();
        texts.append(kind + QString::fromLatin1(enumerator.name()) + u' ' + keys.join(u", "_s));
    }
    return texts;
}

} // namespace

void tst_Signatures::initTestCase()
{
    m_signatures = readSignatures(QStringLiteral(SIGNATURES_FILE));
    QCOMPARE(m_signatures.size(), 20);

    const QString path =
            qEnvironmentVariable("CHARTS_TEST_QMLTYPES", QStringLiteral(QMLTYPES_FILE));
    m_qmltypes = readQmltypes(contents(path));
    QVERIFY2(m_qmltypes.name == u"Module"_s, qPrintable(path));

    qml_register_types_zel_charts();
}

void tst_Signatures::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_Signatures::addClasses() const
{
    QTest::addColumn<Signature>("signature");
    for (const Signature &signature : m_signatures) {
        if (!signature.element.isEmpty())
            QTest::newRow(qPrintable(signature.element)) << signature;
    }
}

// Types as the headers spell them where connections by name go by them.
void tst_Signatures::metaObject()
{
    QFETCH(Signature, signature);

    const QMetaObject *meta = metaObjectOf(signature);
    QVERIFY(meta);
    QCOMPARE(QString::fromLatin1(meta->className()), signature.className);
    const QMetaObject *base = meta->superClass();
    QCOMPARE(base ? QString::fromLatin1(base->className()) : QString(), signature.base);

    Signature expected = signature;
    for (QString &property : expected.properties)
        property = qualified(property, signature, m_signatures);
    Signature seen;
    seen.enums = enumTexts(*meta);
    seen.properties = propertyTexts(*meta);
    seen.signalsOf = methodTexts(*meta, true);
    seen.methods = methodTexts(*meta, false);
    compareMembers(seen.members(), expected.members());
}

// What the spelled names stand for: the engine needs to find every type.
void tst_Signatures::metaObjectTypes()
{
    QFETCH(Signature, signature);

    const QMetaObject *meta = metaObjectOf(signature);
    QVERIFY(meta);
    const auto compare = [&](const QMetaType &type, const QByteArray &spelled) {
        QVERIFY2(type.isValid(), spelled.constData());
        QCOMPARE(QString::fromLatin1(type.name()),
                qualified(QString::fromLatin1(spelled), signature, m_signatures));
    };
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        compare(method.returnMetaType(), method.typeName());
        for (int parameter = 0; parameter < method.parameterCount(); ++parameter)
            compare(method.parameterMetaType(parameter), method.parameterTypes().at(parameter));
    }
}

// Nothing about a member that would make documents treat it in a special way.
void tst_Signatures::metaObjectPlain()
{
    QFETCH(Signature, signature);

    const QMetaObject *meta = metaObjectOf(signature);
    QVERIFY(meta);
    QCOMPARE(meta->constructorCount(), 0);
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const bool isSpecial = property.isResettable() || property.isFinal()
                               || property.isRequired() || property.isBindable()
                               || property.isUser() || property.revision() != 0;
        QVERIFY2(!isSpecial, property.name());
        QVERIFY2(property.isScriptable() && property.isDesignable() && property.isStored(),
                property.name());
    }
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        QCOMPARE(method.access(), QMetaMethod::Public);
        QCOMPARE(method.revision(), 0);
        QVERIFY2((method.attributes() & (QMetaMethod::Cloned | QMetaMethod::Scriptable)) == 0,
                method.methodSignature().constData());
        QCOMPARE(method.tag(), "");
    }
}

QmltypesObject tst_Signatures::component(const QString &className) const
{
    for (const QmltypesObject &component : m_qmltypes.objects) {
        if (component.text(u"name"_s) == className)
            return component;
    }
    return {};
}

void tst_Signatures::qmltypesModule()
{
    QVERIFY2(m_qmltypes.bindings.isEmpty(), "tools find what the module needs in its qmldir");
    QStringList seen;
    for (const QmltypesObject &object : m_qmltypes.objects) {
        QCOMPARE(object.name, u"Component"_s);
        seen.append(object.text(u"name"_s));
    }
    QStringList expected;
    for (const Signature &signature : m_signatures) {
        // An anonymous one may be left out.
        if (!signature.element.isEmpty() || seen.contains(signature.className))
            expected.append(signature.className);
    }
    seen.sort();
    expected.sort();
    QCOMPARE(seen, expected);
}

void tst_Signatures::qmltypesComponent()
{
    QFETCH(Signature, signature);

    QMap<QString, QStringList> expected{{u"name"_s, {signature.className}},
            {u"accessSemantics"_s, {signature.kind == u"value"_s ? u"value"_s : u"reference"_s}},
            {u"exports"_s, {u"zel.charts/%1 1.0"_s.arg(signature.element)}},
            {u"exportMetaObjectRevisions"_s, {u"256"_s}}}; // 1.0
    if (!signature.base.isEmpty())
        expected.insert(u"prototype"_s, {signature.base});
    if (!signature.isCreatable || signature.isSingleton || signature.kind == u"value"_s)
        expected.insert(u"isCreatable"_s, {u"false"_s});
    if (signature.isSingleton)
        expected.insert(u"isSingleton"_s, {u"true"_s});
    if (signature.base == u"QQuickItem"_s) {
        // What an item of QtQuick says of itself, repeated by those directly derived from it.
        expected.insert(u"defaultProperty"_s, {u"data"_s});
        expected.insert(u"parentProperty"_s, {u"parent"_s});
    }
    QMap<QString, QStringList> seen = component(signature.className).bindings;
    seen.remove(u"file"_s);
    QCOMPARE(seen, expected);
}

void tst_Signatures::qmltypesMembers()
{
    QFETCH(Signature, signature);

    QStringList expected;
    for (QString line : signature.members()) {
        // See Qmltypes.h.
        static const bool tellsConstant = QT_VERSION >= QT_VERSION_CHECK(6, 8, 0);
        static const QRegularExpression left(
                tellsConstant ? u" = \\d+"_s : u" = \\d+| constant$"_s);
        line.remove(left);
        expected.append(
                line.startsWith(u"enum "_s) ? line : qualified(line, signature, m_signatures));
    }
    compareMembers(component(signature.className).members(), expected);
}

QTEST_GUILESS_MAIN(tst_Signatures)

#include "tst_signatures.moc"
