// SPDX-License-Identifier: MIT
#include "ExactCompare.h"
#include "MetaObjectText.h"

#include <ChartsLibrary/Span.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSequentialIterable>
#include <QtTest/QTest>

#include <type_traits>

using namespace Charts;

namespace {

static_assert(sizeof(Span) == 2 * sizeof(double));
static_assert(std::is_trivially_copyable_v<Span>);
static_assert(Span().min == 0.0 && Span().max == 0.0);
static_assert(Span(1.0, 2.0).min == 1.0 && Span(1.0, 2.0).max == 2.0);
static_assert(!std::is_base_of_v<QObject, Span>);

template<typename Value>
QString debugText(const Value &value, bool isQuoted)
{
    QString text;
    QDebug debug(&text);
    if (!isQuoted)
        debug.noquote();
    debug.nospace() << value;
    return text;
}

} // namespace

class tst_Span : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void stored_data();
    void stored();
    void metaObject();
    void propertyWrite_data();
    void propertyWrite();
    void length_data();
    void length();
    void equality_data();
    void equality();
    void debug_data();
    void debug();
    void debugKeepsStreamState();
    void metaType();
    void listMetaType();
    void listAsSequence();
};

void tst_Span::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Span::stored_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");

    QTest::newRow("ordered") << -1.5 << 2.25;
    QTest::newRow("reversed") << 10.0 << -10.0;
    QTest::newRow("empty") << 3.0 << 3.0;
    QTest::newRow("minus zero") << -0.0 << 0.0;
    QTest::newRow("denormal") << -smallest << smallest;
    QTest::newRow("huge") << -largest << largest;
    QTest::newRow("infinite") << -inf << inf;
    QTest::newRow("NaN") << NaN << NaN;
}

void tst_Span::stored()
{
    QFETCH(double, min);
    QFETCH(double, max);

    const Span span(min, max);
    COMPARE_EXACT(span.min, min);
    COMPARE_EXACT(span.max, max);
    COMPARE_EXACT(Span::staticMetaObject.property(0).readOnGadget(&span).toDouble(), min);
    COMPARE_EXACT(Span::staticMetaObject.property(1).readOnGadget(&span).toDouble(), max);

    const Span copy = span;
    COMPARE_EXACT(copy, span);
}

void tst_Span::metaObject()
{
    const QMetaObject &meta = Span::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::Span");
    QCOMPARE(meta.superClass(), nullptr);
    QCOMPARE(propertyTexts(meta), (QStringList{QStringLiteral("double min read write"),
                                          QStringLiteral("double max read write")}));
    QCOMPARE(meta.methodCount(), 0);
    QCOMPARE(meta.enumeratorCount(), 0);
    QCOMPARE(meta.constructorCount(), 0);
    QCOMPARE(classInfos(meta).value(QStringLiteral("QML.Element")), QStringLiteral("span"));
}

void tst_Span::propertyWrite_data()
{
    QTest::addColumn<double>("before");
    QTest::addColumn<QVariant>("written");
    QTest::addColumn<bool>("isAccepted");
    QTest::addColumn<double>("after");

    const auto row = [](const char *name, double before, const QVariant &written, bool isAccepted,
                             double after) {
        QTest::newRow(name) << before << written << isAccepted << after;
    };
    row("another value", 1.0, 2.5, true, 2.5);
    row("the same value", 1.0, 1.0, true, 1.0);
    // No tolerance at this level.
    row("the next double", 1.0, std::nextafter(1.0, 2.0), true, std::nextafter(1.0, 2.0));
    row("within 1e-12 of zero", 0.0, 1e-13, true, 1e-13);
    row("denormal", 0.0, smallest, true, smallest);
    row("minus zero, which is not different from zero", 0.0, -0.0, true, 0.0);
    row("zero, which is not different from minus zero", -0.0, 0.0, true, -0.0);
    row("huge", 0.0, largest, true, largest);
    row("infinity", 0.0, -inf, true, -inf);
    row("NaN", 0.0, NaN, true, NaN);
    row("a number over NaN", NaN, 4.0, true, 4.0);
    row("an int", 1.0, 7, true, 7.0);
    row("a list", 1.0, QVariantList{1.0}, false, 1.0);
}

void tst_Span::propertyWrite()
{
    QFETCH(double, before);
    QFETCH(QVariant, written);
    QFETCH(bool, isAccepted);
    QFETCH(double, after);

    const QMetaProperty min = Span::staticMetaObject.property(0);
    const QMetaProperty max = Span::staticMetaObject.property(1);

    Span lower(before, 99.0);
    QCOMPARE(min.writeOnGadget(&lower, written), isAccepted);
    COMPARE_EXACT(lower, Span(after, 99.0));

    Span upper(-99.0, before);
    QCOMPARE(max.writeOnGadget(&upper, written), isAccepted);
    COMPARE_EXACT(upper, Span(-99.0, after));
}

void tst_Span::length_data()
{
    QTest::addColumn<Span>("span");
    QTest::addColumn<double>("length");

    QTest::newRow("ordered") << Span(-1.0, 2.5) << 3.5;
    QTest::newRow("reversed") << Span(2.5, -1.0) << 0.0;
    QTest::newRow("reversed by one double") << Span(std::nextafter(1.0, 2.0), 1.0) << 0.0;
    QTest::newRow("empty") << Span(4.0, 4.0) << 0.0;
    QTest::newRow("default") << Span() << 0.0;
    QTest::newRow("denormal") << Span(0.0, smallest) << smallest;
    QTest::newRow("denormal reversed") << Span(smallest, 0.0) << 0.0;
    QTest::newRow("overflow") << Span(-largest, largest) << inf;
    QTest::newRow("overflow reversed") << Span(largest, -largest) << 0.0;
    QTest::newRow("infinite") << Span(0.0, inf) << inf;
    QTest::newRow("infinite reversed") << Span(inf, 0.0) << 0.0;
    QTest::newRow("infinite on both sides") << Span(-inf, inf) << inf;
}

void tst_Span::length()
{
    QFETCH(Span, span);
    QFETCH(double, length);
    COMPARE_EXACT(span.length(), length);
}

void tst_Span::equality_data()
{
    QTest::addColumn<Span>("a");
    QTest::addColumn<Span>("b");
    QTest::addColumn<bool>("isEqual");

    QTest::newRow("the same") << Span(1.0, 2.0) << Span(1.0, 2.0) << true;
    QTest::newRow("default") << Span() << Span(0.0, 0.0) << true;
    QTest::newRow("another min") << Span(1.0, 2.0) << Span(1.5, 2.0) << false;
    QTest::newRow("another max") << Span(1.0, 2.0) << Span(1.0, 2.5) << false;
    QTest::newRow("reversed") << Span(1.0, 2.0) << Span(2.0, 1.0) << false;
    QTest::newRow("zero rule") << Span(0.0, 1.0) << Span(1e-13, 1.0) << true;
    QTest::newRow("zero rule in max") << Span(-1.0, 0.0) << Span(-1.0, -1e-12) << true;
    QTest::newRow("relative rule") << Span(1.0, 2.0) << Span(1.0 + 1e-13, 2.0) << true;
    QTest::newRow("relative rule in max") << Span(1.0, 2e9) << Span(1.0, 2e9 + 1e-4) << true;
    QTest::newRow("small but different") << Span(1e-3, 2.0) << Span(1.1e-3, 2.0) << false;
    QTest::newRow("tiny, neither is zero") << Span(1e-13, 1.0) << Span(2e-13, 1.0) << false;
    QTest::newRow("zero rule broken in max") << Span(0.0, 0.0) << Span(0.0, 2e-12) << false;
    QTest::newRow("one end inside, one outside") << Span(0.0, 1.0) << Span(1e-13, 1.1) << false;
    QTest::newRow("huge") << Span(-largest, largest) << Span(-largest, largest) << true;
    QTest::newRow("infinity is not within any distance of itself")
            << Span(0.0, inf) << Span(0.0, inf) << false;
    QTest::newRow("NaN") << Span(NaN, 1.0) << Span(NaN, 1.0) << false;
    QTest::newRow("NaN in max") << Span(1.0, NaN) << Span(1.0, NaN) << false;
}

void tst_Span::equality()
{
    QFETCH(Span, a);
    QFETCH(Span, b);
    QFETCH(bool, isEqual);

    QCOMPARE(a == b, isEqual);
    QCOMPARE(b == a, isEqual);
    QCOMPARE(a != b, !isEqual);
    QCOMPARE(QMetaType::fromType<Span>().equals(&a, &b), isEqual);
    QCOMPARE(QVariant::fromValue(a) == QVariant::fromValue(b), isEqual);
}

void tst_Span::debug_data()
{
    QTest::addColumn<Span>("span");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const Span &span, const char *text) {
        QTest::newRow(name) << span << QString::fromLatin1(text);
    };
    row("fraction", Span(1.5, 2.0), "Span(1.5, 2)");
    row("default", Span(), "Span(0, 0)");
    row("reversed and negative", Span(10.0, -0.25), "Span(10, -0.25)");
    row("exponents", Span(-1e-5, 1e20), "Span(-1e-05, 1e+20)");
    row("not finite", Span(-inf, NaN), "Span(-inf, nan)");
}

void tst_Span::debug()
{
    QFETCH(Span, span);
    QFETCH(QString, text);

    QCOMPARE(debugText(span, false), text);
    QCOMPARE(debugText(span, true), u'"' + text + u'"');
    QCOMPARE(debugText(QVariant::fromValue(span), false),
            QStringLiteral("QVariant(Charts::Span, %1)").arg(text));
}

void tst_Span::debugKeepsStreamState()
{
    QString text;
    QDebug(&text) << 1 << Span(1.5, 2.0) << 2 << Span(3.0, 4.0);
    QCOMPARE(text.trimmed(), QStringLiteral("1 \"Span(1.5, 2)\" 2 \"Span(3, 4)\""));

    text.clear();
    QDebug(&text).nospace().noquote() << 1 << Span(1.5, 2.0) << 2 << QStringLiteral("end");
    QCOMPARE(text, QStringLiteral("1Span(1.5, 2)2end"));
}

void tst_Span::metaType()
{
    const QMetaType type = QMetaType::fromType<Span>();
    QCOMPARE(type.name(), "Charts::Span");
    QVERIFY(type.isEqualityComparable());
    QVERIFY(type.hasRegisteredDebugStreamOperator());
    QVERIFY(type.flags().testFlag(QMetaType::IsGadget));

    const QVariant created(type);
    COMPARE_EXACT(created.value<Span>(), Span(0.0, 0.0));
}

void tst_Span::listMetaType()
{
    QMetaType type = QMetaType::fromType<QList<Span>>();
    QVERIFY(type.isEqualityComparable());
    QVERIFY(type.hasRegisteredDebugStreamOperator());

    const QList<Span> spans{Span(0.0, 1.0), Span(2.0, 3.0)};
    const QList<Span> close{Span(1e-13, 1.0), Span(2.0, 3.0)};
    const QList<Span> other{Span(0.0, 1.0), Span(2.0, 3.5)};
    QVERIFY(type.equals(&spans, &close));
    QVERIFY(!type.equals(&spans, &other));
    QVERIFY(QVariant::fromValue(spans) == QVariant::fromValue(close));
    QVERIFY(QVariant::fromValue(spans) != QVariant::fromValue(other));
    QVERIFY(QVariant::fromValue(spans) != QVariant::fromValue(spans.first(1)));

    QString text;
    QDebug stream(&text);
    QVERIFY(type.debugStream(stream, &spans));
    QCOMPARE(text.trimmed(), QStringLiteral("QList(\"Span(0, 1)\", \"Span(2, 3)\")"));
}

void tst_Span::listAsSequence()
{
    QVariant list = QVariant::fromValue(QList<Span>{Span(0.0, 1.0), Span(5.0, -5.0)});
    QVERIFY(list.canConvert<QSequentialIterable>());
    const QSequentialIterable sequence = list.value<QSequentialIterable>();
    QCOMPARE(sequence.size(), 2);
    COMPARE_EXACT(sequence.at(0).value<Span>(), Span(0.0, 1.0));
    COMPARE_EXACT(sequence.at(1).value<Span>(), Span(5.0, -5.0));

    QVERIFY(list.canView<QSequentialIterable>());
    QSequentialIterable view = list.view<QSequentialIterable>();
    view.addValue(QVariant::fromValue(Span(7.0, 8.0)));
    view.set(0, QVariant::fromValue(Span(-1.0, 1.0)));
    const QList<Span> changed = list.value<QList<Span>>();
    QCOMPARE(changed.size(), 3);
    COMPARE_EXACT(changed.at(0), Span(-1.0, 1.0));
    COMPARE_EXACT(changed.at(2), Span(7.0, 8.0));
}

QTEST_GUILESS_MAIN(tst_Span)
#include "tst_span.moc"
