// SPDX-License-Identifier: MIT
#include "MetaObjectText.h"

#include <ChartsLibrary/AbstractTrace.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cstddef>
#include <cstring>
#include <type_traits>

using namespace Charts;

namespace {

static_assert(std::is_abstract_v<AbstractTrace>);
static_assert(std::is_base_of_v<QObject, AbstractTrace>);
static_assert(!std::is_convertible_v<QObject *, AbstractTrace *>);

/*! The place of a virtual function in the table, as the Itanium C++ ABI writes it into a pointer
    to it: one more than the offset in bytes, and even for a function that is not virtual. */
template<typename Function>
std::ptrdiff_t tableSlot(Function function)
{
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof words == sizeof function);
    std::memcpy(words, &function, sizeof words);
    return words[0] % 2 == 0 ? -1 : words[0] / std::ptrdiff_t{sizeof(void *)};
}

} // namespace

// What QML and compiled applications rely on: names, types and places.
class tst_AbstractTraceInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void metaObject();
    void virtualTable();
};

void tst_AbstractTraceInterface::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_AbstractTraceInterface::metaObject()
{
    const QMetaObject &meta = AbstractTrace::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::AbstractTrace");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(propertyTexts(meta),
            (QStringList{
                    QStringLiteral("bool visible read write visibleChanged"),
                    QStringLiteral("QString name read write nameChanged"),
                    QStringLiteral("double z read write zChanged"),
                    QStringLiteral("QColor color read write colorChanged"),
                    QStringLiteral("double lineWidth read write lineWidthChaned"),
                    QStringLiteral("Charts::TraceDomain* domain read constant"),
            }));
    QCOMPARE(methodTexts(meta, true),
            (QStringList{
                    QStringLiteral("void nameChanged()"),
                    QStringLiteral("void visibleChanged()"),
                    QStringLiteral("void clicked(Charts::ChartMouseEvent* event)"),
                    QStringLiteral("void hovered(Charts::ChartMouseEvent* event, bool state)"),
                    QStringLiteral("void pressed(Charts::ChartMouseEvent* event)"),
                    QStringLiteral("void released(Charts::ChartMouseEvent* event)"),
                    QStringLiteral("void doubleClicked(Charts::ChartMouseEvent* event)"),
                    QStringLiteral("void zChanged(double z)"),
                    QStringLiteral("void colorChanged(QColor color)"),
                    QStringLiteral("void lineWidthChaned(double lineWidth)"),
            }));
    QCOMPARE(methodTexts(meta, false), QStringList());
    QCOMPARE(meta.enumeratorCount(), QObject::staticMetaObject.enumeratorCount());
    QCOMPARE(classInfos(meta),
            (QMap<QString, QString>{{QStringLiteral("QML.Element"), QStringLiteral("auto")},
                    {QStringLiteral("QML.Creatable"), QStringLiteral("false")},
                    {QStringLiteral("QML.UncreatableReason"), QString()}}));
}

// Applications are compiled against these places.
void tst_AbstractTraceInterface::virtualTable()
{
#ifdef __x86_64__
    // metaObject, qt_metacast, qt_metacall, two destructors, event, eventFilter, timerEvent,
    // childEvent, customEvent, connectNotify, disconnectNotify
    constexpr std::ptrdiff_t inherited = 12;
    QCOMPARE(tableSlot(&QObject::metaObject), 0);
    QCOMPARE(tableSlot(&QObject::eventFilter), 6);
    QCOMPARE(tableSlot(&AbstractTrace::setName), inherited);
    QCOMPARE(tableSlot(&AbstractTrace::setColor), inherited + 1);
    QCOMPARE(tableSlot(&AbstractTrace::traceData), inherited + 2);
    QCOMPARE(tableSlot(&AbstractTrace::updateData), inherited + 3);
    QCOMPARE(tableSlot(&AbstractTrace::setVisible), -1);
    QCOMPARE(tableSlot(&AbstractTrace::setZ), -1);
    QCOMPARE(tableSlot(&AbstractTrace::setLineWidth), -1);
#else
    QSKIP("The encoding of pointers to virtual functions is another one here.");
#endif
}

QTEST_GUILESS_MAIN(tst_AbstractTraceInterface)
#include "tst_abstracttrace_interface.moc"
