// SPDX-License-Identifier: MIT

// What the library does while it is loaded, before main(). This program puts its own definition
// in front of each Qt function that the library's static initialisers call; the dynamic linker
// takes the program's first. Each notes the call and passes it on to Qt.

#include <QtCore/QRegularExpression>
#include <QtQml/qqmlmoduleregistration.h>
#include <QtTest/QTest>

#include <dlfcn.h>

#include <array>
#include <cstring>

void qml_register_types_zel_charts();

namespace {

// The names of the first entry of each resource tree.
constexpr std::array<const char16_t *, 3> rootNames = {u"qt", u"Charts", u"shaders"};

struct Call
{
    const char16_t *what = nullptr;
    int version = 0;
};

// Filled before this program's own static objects exist, hence without constructors.
struct Log
{
    std::array<Call, 16> calls;
    int count;
    const char *uri;
    void (*registerTypes)();
};
constinit Log calls = {};

void note(const char16_t *what, int version)
{
    calls.calls.at(static_cast<std::size_t>(calls.count++)) = {what, version};
}

// A name table holds, for each name, its length as 16 bits, a hash of 32 bits and the characters
// as 16 bits each, all big-endian.
bool startsWithName(const unsigned char *names, const char16_t *name)
{
    const std::size_t length = std::char_traits<char16_t>::length(name);
    if (names[0] != 0 || names[1] != length)
        return false;
    for (std::size_t i = 0; i < length; ++i) {
        if (names[6 + 2 * i] != 0 || names[7 + 2 * i] != name[i])
            return false;
    }
    return true;
}

} // namespace

Q_DECL_EXPORT bool qRegisterResourceData(int version, const unsigned char *tree,
        const unsigned char *name, const unsigned char *data)
{
    for (const char16_t *rootName : rootNames) {
        if (startsWithName(name, rootName))
            note(rootName, version);
    }
    using Function =
            bool (*)(int, const unsigned char *, const unsigned char *, const unsigned char *);
    const auto next =
            reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_Z21qRegisterResourceDataiPKhS0_S0_"));
    return next(version, tree, name, data);
}

QQmlModuleRegistration::QQmlModuleRegistration(const char *uri, void (*registerFunction)())
{
    if (std::strcmp(uri, "zel.charts") == 0) {
        note(u"registration", 0);
        calls.uri = uri;
        calls.registerTypes = registerFunction;
    }
    using Function = void (*)(QQmlModuleRegistration *, const char *, void (*)());
    const auto next =
            reinterpret_cast<Function>(dlsym(RTLD_NEXT, "_ZN22QQmlModuleRegistrationC1EPKcPFvvE"));
    next(this, uri, registerFunction);
}

class tst_ModuleLoading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void order();
    void formatVersion();
    void registeredFunction();
};

void tst_ModuleLoading::order()
{
    QStringList names;
    for (int i = 0; i < calls.count; ++i)
        names += QString::fromUtf16(calls.calls.at(static_cast<std::size_t>(i)).what);
    const QStringList expected{QStringLiteral("Charts"), QStringLiteral("registration"),
            QStringLiteral("qt"), QStringLiteral("shaders")};
    QCOMPARE(names, expected);
}

void tst_ModuleLoading::formatVersion()
{
    int sets = 0;
    for (int i = 0; i < calls.count; ++i) {
        const Call &call = calls.calls.at(static_cast<std::size_t>(i));
        if (std::u16string_view(call.what) == u"registration")
            continue;
        QCOMPARE(call.version, 3);
        ++sets;
    }
    QCOMPARE(sets, 3);
}

void tst_ModuleLoading::registeredFunction()
{
    QCOMPARE(calls.uri, "zel.charts");
    QVERIFY(calls.registerTypes == &qml_register_types_zel_charts);
}

QTEST_GUILESS_MAIN(tst_ModuleLoading)

#include "tst_moduleloading.moc"
