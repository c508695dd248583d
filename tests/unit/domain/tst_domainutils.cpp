// SPDX-License-Identifier: MIT
#include "ExactCompare.h"
#include "MetaObjectText.h"

#include <ChartsLibrary/DomainUtils.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;

namespace {
} // namespace

class tst_DomainUtils : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void metaObject();
    void construction();
    void spanAsGiven_data();
    void spanAsGiven();
    void mapRangeValue_data();
    void mapRangeValue();
    void fusedMapping_data();
    void fusedMapping();
    void geometryMapping();
    void reversedDomain_data();
    void reversedDomain();
    void roundTrip();
    void invokable();
    void domainRound_data();
    void domainRound();
};

void tst_DomainUtils::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_DomainUtils::metaObject()
{
    const QMetaObject &meta = DomainUtils::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::DomainUtils");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(propertyTexts(meta), QStringList());
    QCOMPARE(methodTexts(meta, true), QStringList());
    QCOMPARE(methodTexts(meta, false),
            (QStringList{
                    QStringLiteral("double mapToGeometry(Span geometryRange, Span domianRange, "
                                   "double domain)"),
                    QStringLiteral("double mapFromGeometry(Span geometryRange, Span domianRange, "
                                   "double geomtry)"),
                    QStringLiteral("Span span(double min, double max)"),
                    QStringLiteral("double niceStep(Span span)"),
                    QStringLiteral("bool isDomainRound(TraceDomain* domain)"),
            }));
    QCOMPARE(classInfos(meta),
            (QMap<QString, QString>{{QStringLiteral("QML.Element"), QStringLiteral("Domain")},
                    {QStringLiteral("QML.Singleton"), QStringLiteral("true")}}));
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).access(), QMetaMethod::Public);
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Method);
    }
}

void tst_DomainUtils::construction()
{
    QCOMPARE(DomainUtils().parent(), nullptr);

    QObject parent;
    QPointer<DomainUtils> utils = new DomainUtils(&parent);
    QCOMPARE(utils->parent(), &parent);
    delete utils;
}

void tst_DomainUtils::spanAsGiven_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");

    QTest::newRow("ordered") << 1.0 << 2.0;
    QTest::newRow("reversed") << 2.0 << -1.0;
    QTest::newRow("empty") << -3.0 << -3.0;
    QTest::newRow("minus zero") << -0.0 << 0.0;
    QTest::newRow("extreme") << largest << smallest;
    QTest::newRow("not finite") << NaN << -inf;
}

void tst_DomainUtils::spanAsGiven()
{
    QFETCH(double, min);
    QFETCH(double, max);
    COMPARE_EXACT(DomainUtils().span(min, max), Span(min, max));
}

void tst_DomainUtils::mapRangeValue_data()
{
    QTest::addColumn<Span>("from");
    QTest::addColumn<Span>("to");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("mapped");

    const auto row = [](const char *name, const Span &from, const Span &to, double value,
                             double mapped) {
        QTest::newRow(name) << from << to << value << mapped;
    };
    const Span data(-1.0, 1.0);
    const Span pixels(0.0, 200.0);

    row("lower end", data, pixels, -1.0, 0.0);
    row("upper end", data, pixels, 1.0, 200.0);
    row("middle", data, pixels, 0.0, 100.0);
    row("below the range", data, pixels, -2.0, -100.0);
    row("above the range", data, pixels, 3.0, 400.0);
    row("onto an offset range", Span(2.0, 6.0), Span(-8.0, 8.0), 3.0, -4.0);
    row("onto itself", data, data, 0.125, 0.125);
    row("onto an empty range", data, Span(5.0, 5.0), 0.5, 5.0);

    row("onto a reversed range", data, Span(200.0, 0.0), 0.5, 200.0);
    row("onto a reversed range, outside", data, Span(200.0, 0.0), -1e300, 200.0);

    row("from an empty range, above", Span(1.0, 1.0), pixels, 2.0, inf);
    row("from an empty range, below", Span(1.0, 1.0), pixels, 0.5, -inf);
    row("from an empty range, on it", Span(1.0, 1.0), pixels, 1.0, NaN);
    row("from a reversed range, above min", Span(1.0, -1.0), pixels, 2.0, inf);
    row("from a reversed range, below min", Span(1.0, -1.0), pixels, 0.0, -inf);
    row("from a reversed range, on min", Span(1.0, -1.0), pixels, 1.0, NaN);
    row("from an empty range onto an empty one", Span(1.0, 1.0), Span(5.0, 5.0), 2.0, NaN);
    row("from a reversed range onto a reversed one", Span(1.0, 0.0), Span(5.0, 4.0), 2.0, NaN);

    row("denormal ranges", Span(0.0, smallest), Span(0.0, 8.0 * smallest), 2.0 * smallest,
            16.0 * smallest);
    row("a ratio that overflows", Span(0.0, smallest), Span(0.0, 8.0), smallest, inf);
    row("huge ranges", Span(0.0, 1e308), Span(0.0, 5e307), 5e307, 2.5e307);
    row("a length that overflows, as divisor", Span(-largest, largest), pixels, 0.0, 0.0);
    row("a length that overflows, as dividend", data, Span(-largest, largest), 0.0, inf);
    row("an infinite value", data, pixels, inf, inf);
    row("an infinite value below", data, pixels, -inf, -inf);
    row("an infinite value onto an empty range", data, Span(5.0, 5.0), inf, NaN);
    row("a NaN value", data, pixels, NaN, NaN);
    row("a NaN value onto a reversed range", data, Span(200.0, 0.0), NaN, NaN);
    row("a NaN end to map from", Span(NaN, 1.0), pixels, 0.0, NaN);
    row("a NaN end to map to", data, Span(0.0, NaN), 0.0, NaN);
}

void tst_DomainUtils::mapRangeValue()
{
    QFETCH(Span, from);
    QFETCH(Span, to);
    QFETCH(double, value);
    QFETCH(double, mapped);

    COMPARE_EXACT(DomainUtils::mapRangeValue(from, to, value), mapped);
    COMPARE_EXACT(DomainUtils().mapToGeometry(to, from, value), mapped);
    COMPARE_EXACT(DomainUtils().mapFromGeometry(from, to, value), mapped);
}

void tst_DomainUtils::fusedMapping_data()
{
    QTest::addColumn<Span>("from");
    QTest::addColumn<Span>("to");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("mapped");
    QTest::addColumn<double>("roundedTwice");
    QTest::addColumn<double>("ratioLast");

    // With d = value - from.min and r = lenTo / lenFrom as doubles, "mapped" is the rational
    // number d * r + to.min rounded once. Rounding d * r first gives the next column; multiplying
    // d by lenTo first and dividing afterwards gives the last one. All three were computed with
    // Python's fractions.Fraction.
    const auto row = [](const char *name, const Span &from, const Span &to, double value,
                             double mapped, double roundedTwice, double ratioLast) {
        QTest::newRow(name) << from << to << value << mapped << roundedTwice << ratioLast;
    };
    row("sevenths", Span(0.0, 7.0), Span(0.1, 1.1), 2.3, 0x1.b6db6db6db6dbp-2, 0x1.b6db6db6db6dap-2,
            0x1.b6db6db6db6dcp-2);
    row("sevenths with cancellation", Span(0.0, 7.0), Span(-0.7, 0.3), 5.0, 0x1.d41d41d41d420p-7,
            0x1.d41d41d41d400p-7, 0x1.d41d41d41d440p-7);
    row("audio band, 0.2", Span(20.0, 20000.0), Span(0.5, 479.5), 0.2, 0x1.9ec420d780528p-6,
            0x1.9ec420d780530p-6, 0x1.9ec420d780520p-6);
    row("audio band, 0.7", Span(20.0, 20000.0), Span(0.5, 479.5), 0.7, 0x1.3194990e864c7p-5,
            0x1.3194990e864c8p-5, 0x1.3194990e864c0p-5);
    row("audio band, 1.1", Span(20.0, 20000.0), Span(0.5, 479.5), 1.1, 0x1.80236cc3f19c3p-5,
            0x1.80236cc3f19c0p-5, 0x1.80236cc3f19c8p-5);
    row("audio band, 5", Span(20.0, 20000.0), Span(0.5, 479.5), 5.0, 0x1.1f84ff3b31f85p-3,
            0x1.1f84ff3b31f86p-3, 0x1.1f84ff3b31f84p-3);
    // 1e308 * 2 exceeds all doubles, 1e308 * 2 - 1.5e308 does not.
    row("only the product overflows", Span(0.0, 5e307), Span(-1.5e308, -5e307), 1e308, 5e307, inf,
            inf);
}

void tst_DomainUtils::fusedMapping()
{
    QFETCH(Span, from);
    QFETCH(Span, to);
    QFETCH(double, value);
    QFETCH(double, mapped);
    QFETCH(double, roundedTwice);
    QFETCH(double, ratioLast);

    QVERIFY(!isSame(mapped, roundedTwice) && !isSame(mapped, ratioLast));
    COMPARE_EXACT(DomainUtils::mapRangeValue(from, to, value), mapped);
    COMPARE_EXACT(DomainUtils().mapToGeometry(to, from, value), mapped);
    COMPARE_EXACT(DomainUtils().mapFromGeometry(from, to, value), mapped);
}

void tst_DomainUtils::geometryMapping()
{
    const DomainUtils utils;
    COMPARE_EXACT(utils.mapToGeometry(Span(0.0, 200.0), Span(-1.0, 1.0), 0.0), 100.0);
    COMPARE_EXACT(utils.mapToGeometry(Span(0.0, 200.0), Span(-1.0, 1.0), 0.5), 150.0);
    COMPARE_EXACT(utils.mapFromGeometry(Span(0.0, 200.0), Span(-1.0, 1.0), 50.0), -0.5);
    COMPARE_EXACT(utils.mapFromGeometry(Span(0.0, 200.0), Span(-1.0, 1.0), 200.0), 1.0);
}

void tst_DomainUtils::reversedDomain_data()
{
    QTest::addColumn<double>("coordinate");

    QTest::newRow("lower end") << 0.0;
    QTest::newRow("inside") << 123.4;
    QTest::newRow("upper end") << 200.0;
    QTest::newRow("outside") << -5e9;
    QTest::newRow("huge") << largest;
}

void tst_DomainUtils::reversedDomain()
{
    QFETCH(double, coordinate);
    COMPARE_EXACT(
            DomainUtils().mapFromGeometry(Span(0.0, 200.0), Span(3.0, -3.0), coordinate), 3.0);
}

void tst_DomainUtils::roundTrip()
{
    const DomainUtils utils;
    const Span pixels(12.0, 652.0);
    const Span data(-0.3, 17.7);
    for (int i = -10; i <= 30; ++i) {
        const double value = 0.9 * i;
        COMPARE_CLOSE(utils.mapFromGeometry(pixels, data, utils.mapToGeometry(pixels, data, value)),
                value);
    }
}

void tst_DomainUtils::invokable()
{
    DomainUtils utils;
    Span span;
    QVERIFY(QMetaObject::invokeMethod(&utils, "span", Q_RETURN_ARG(Charts::Span, span),
            Q_ARG(double, 4.0), Q_ARG(double, -4.0)));
    COMPARE_EXACT(span, Span(4.0, -4.0));

    TraceDomain domain;
    domain.setFormat(TraceDomain::PolarFormat);
    bool isRound = false;
    QVERIFY(QMetaObject::invokeMethod(
            &utils, "isDomainRound", Q_RETURN_ARG(bool, isRound), Q_ARG(TraceDomain *, &domain)));
    QVERIFY(isRound);
}

void tst_DomainUtils::domainRound_data()
{
    QTest::addColumn<TraceDomain::TraceFormat>("format");
    QTest::addColumn<bool>("isRound");

    QTest::newRow("XYFormat") << TraceDomain::XYFormat << false;
    QTest::newRow("SmithFormat") << TraceDomain::SmithFormat << true;
    QTest::newRow("PolarFormat") << TraceDomain::PolarFormat << true;
    QTest::newRow("no format") << static_cast<TraceDomain::TraceFormat>(3) << true;
}

void tst_DomainUtils::domainRound()
{
    QFETCH(TraceDomain::TraceFormat, format);
    QFETCH(bool, isRound);

    TraceDomain domain;
    domain.setFormat(format);
    QCOMPARE(DomainUtils().isDomainRound(&domain), isRound);
}

QTEST_GUILESS_MAIN(tst_DomainUtils)
#include "tst_domainutils.moc"
