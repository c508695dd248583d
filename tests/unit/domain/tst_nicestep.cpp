// SPDX-License-Identifier: MIT
#include "ExactCompare.h"

#include <ChartsLibrary/DomainUtils.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>

using namespace Charts;

namespace {
} // namespace

// Every expectation is the last bit, and none comes from floating-point arithmetic of this test:
// they are decimal literals, or were computed as exact quotients and products of the doubles
// involved, rounded once, with Python's fractions.Fraction. They take pow(10, e) to be the double
// nearest to the power, which glibc delivers for every exponent below (but not for all others).
class tst_NiceStep : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void plain_data();
    void plain();
    void thresholds_data();
    void thresholds();
    void lastBit_data();
    void lastBit();
    void extreme_data();
    void extreme();
    void atMostTenParts();
};

void tst_NiceStep::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_NiceStep::plain_data()
{
    QTest::addColumn<Span>("span");
    QTest::addColumn<double>("step");

    const auto row = [](const char *name, double min, double max, double step) {
        QTest::newRow(name) << Span(min, max) << step;
    };
    row("0 to 1", 0.0, 1.0, 0.1);
    row("0 to 1.2", 0.0, 1.2, 0.125);
    row("0 to 2", 0.0, 2.0, 0.2);
    row("0 to 2.4", 0.0, 2.4, 0.25);
    row("0 to 3", 0.0, 3.0, 0.3);
    row("0 to 3.5", 0.0, 3.5, 0.4);
    row("0 to 4.5", 0.0, 4.5, 0.5);
    row("0 to 5.5", 0.0, 5.5, 0.6);
    row("0 to 7", 0.0, 7.0, 0.75);
    row("0 to 8", 0.0, 8.0, 1.0);
    row("0 to 9.99", 0.0, 9.99, 1.0);
    row("0 to 10", 0.0, 10.0, 1.0);
    row("0 to 100", 0.0, 100.0, 10.0);
    row("0 to 360", 0.0, 360.0, 40.0);
    row("0 to 44100", 0.0, 44100.0, 5000.0);
    row("0 to 2.4e9", 0.0, 2.4e9, 2.5e8);
    row("0 to 3e9", 0.0, 3e9, 3e8);
    row("0 to 7.5e15", 0.0, 7.5e15, 7.5e14);
    row("0 to 1e22", 0.0, 1e22, 1e21);
    row("0 to 0.003", 0.0, 0.003, 0.0003);
    row("0 to 4e-7", 0.0, 4e-7, 4e-8);
    row("only the length counts", 1000.0, 1003.0, 0.3);
    row("below zero", -8.0, -1.0, 0.75);
    row("around zero", -5.0, 5.0, 1.0);
    row("around zero, uneven", -80.0, 20.0, 10.0);
}

void tst_NiceStep::plain()
{
    QFETCH(Span, span);
    QFETCH(double, step);
    COMPARE_EXACT(DomainUtils().niceStep(span), step);
}

void tst_NiceStep::thresholds_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("stepBeyond");

    QTest::newRow("1") << 1.0 << 0.1 << 0.125;
    QTest::newRow("1.25") << 1.25 << 0.125 << 0.2;
    QTest::newRow("2") << 2.0 << 0.2 << 0.25;
    QTest::newRow("2.5") << 2.5 << 0.25 << 0.3;
    QTest::newRow("3") << 3.0 << 0.3 << 0.4;
    QTest::newRow("4") << 4.0 << 0.4 << 0.5;
    QTest::newRow("5") << 5.0 << 0.5 << 0.6;
    QTest::newRow("6") << 6.0 << 0.6 << 0.75;
    QTest::newRow("7.5") << 7.5 << 0.75 << 1.0;
    // The same mantissas with another power.
    QTest::newRow("1000") << 1000.0 << 100.0 << 125.0;
    QTest::newRow("1250") << 1250.0 << 125.0 << 200.0;
    QTest::newRow("7500") << 7500.0 << 750.0 << 1000.0;
}

void tst_NiceStep::thresholds()
{
    QFETCH(double, length);
    QFETCH(double, step);
    QFETCH(double, stepBeyond);

    const DomainUtils utils;
    COMPARE_EXACT(utils.niceStep(Span(0.0, length)), step);
    // Far enough for the quotient by the power to show it.
    COMPARE_EXACT(utils.niceStep(Span(0.0, length * (1.0 + 0x1p-50))), stepBeyond);
}

void tst_NiceStep::lastBit_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("otherForm");

    // The second number is what the other form of the operation would give: a product with 0.1,
    // 0.2, 0.3, 0.4, 0.6 or 0.75 instead of the division.
    const auto row = [](const char *name, double length, double step, double otherForm) {
        QTest::newRow(name) << length << step << otherForm;
    };
    row("p / 10, 1e-9", 1e-9, 0x1.b7cdfd9d7bdbbp-34, 0x1.b7cdfd9d7bdbcp-34);
    row("p / 10, 0.1", 0.1, 0x1.47ae147ae147bp-7, 0x1.47ae147ae147cp-7);
    row("p / 5, 2e-9", 2e-9, 0x1.b7cdfd9d7bdbbp-33, 0x1.b7cdfd9d7bdbcp-33);
    row("p / 5, 0.15", 0.15, 0x1.47ae147ae147bp-6, 0x1.47ae147ae147cp-6);
    row("p / 5, 1.9e24", 1.9e24, 0x1.52d02c7e14af6p+77, 0x1.52d02c7e14af7p+77);
    row("p / (10 / 3), 2.7e42", 2.7e42, 0x1.b8cf752a726dap+137, 0x1.b8cf752a726dbp+137);
    row("p / (10 / 3), 2.7e67", 2.7e67, 0x1.c7c989556f8eap+220, 0x1.c7c989556f8ebp+220);
    row("p / (10 / 3), 2.7e287", 2.7e287, 0x1.937e0cfd7e3c8p+951, 0x1.937e0cfd7e3c9p+951);
    row("p / 2.5, 3.5e-9", 3.5e-9, 0x1.b7cdfd9d7bdbbp-32, 0x1.b7cdfd9d7bdbcp-32);
    row("p / 2.5, 0.4", 0.4, 0x1.47ae147ae147bp-5, 0x1.47ae147ae147cp-5);
    row("p / 2.5, 3.5e33", 3.5e33, 0x1.3b8b5b5056e16p+108, 0x1.3b8b5b5056e17p+108);
    row("p / (5 / 3), 5.5e42", 5.5e42, 0x1.b8cf752a726dap+138, 0x1.b8cf752a726dbp+138);
    row("p / (5 / 3), 5.5e67", 5.5e67, 0x1.c7c989556f8eap+221, 0x1.c7c989556f8ebp+221);
    row("p / (4 / 3), 7e-10", 7e-10, 0x1.49da7e361ce4dp-34, 0x1.49da7e361ce4cp-34);
    row("p / (4 / 3), 0.075", 0.075, 0x1.eb851eb851eb9p-8, 0x1.eb851eb851eb8p-8);
    row("p / (4 / 3), 7e32", 7e32, 0x1.d95108f882523p+105, 0x1.d95108f882522p+105);
}

void tst_NiceStep::lastBit()
{
    QFETCH(double, length);
    QFETCH(double, step);
    QFETCH(double, otherForm);

    QVERIFY(step != otherForm);
    COMPARE_EXACT(DomainUtils().niceStep(Span(0.0, length)), step);
}

void tst_NiceStep::extreme_data()
{
    QTest::addColumn<Span>("span");
    QTest::addColumn<double>("step");

    const auto row = [](const char *name, double min, double max, double step) {
        QTest::newRow(name) << Span(min, max) << step;
    };
    row("empty", 0.0, 0.0, 0.0);
    row("empty, not at zero", 5.0, 5.0, 0.0);
    row("tiny", 0.0, 5e-13, 5e-13);
    row("tiny and reversed", 5e-13, 0.0, -5e-13);
    row("denormal", 0.0, smallest, smallest);
    row("denormal and reversed", smallest, 0.0, -smallest);
    row("the longest tiny one", 0.0, 1e-12, 1e-12);
    row("the longest tiny reversed one", 0.0, -1e-12, -1e-12);
    row("just longer than tiny", 0.0, std::nextafter(1e-12, 1.0), 0x1.19799812dea11p-43);
    row("longer than tiny", 0.0, 2e-12, 2e-13);

    // No logarithm of a negative length: the exponent is -300 whatever the length is.
    row("reversed", 10.0, 0.0, 1e-301);
    row("reversed, just longer than tiny", 0.0, std::nextafter(-1e-12, -1.0), 1e-301);
    row("reversed and huge", largest, -largest, 1e-301);
    row("reversed and infinite", inf, 0.0, 1e-301);

    // log10 of a double just below a power may round up to the power's exponent, or not.
    row("just below 1", 0.0, 0x1.fffffffffffffp-1, 0.1);
    row("just below 10", 0.0, 9.999999999999998, 1.0);
    row("just below 1000", 0.0, 999.9999999999999, 100.0);

    row("huge", 0.0, 9e307, 1e307);
    row("the largest power", 0.0, 1e308, 1e307);
    row("the largest length", 0.0, largest, 2e307);
    row("the length overflows", -largest, largest, inf);
    row("infinite", 0.0, inf, inf);
    row("NaN", NaN, 1.0, NaN);
    row("infinite at both ends", inf, inf, NaN);
}

void tst_NiceStep::extreme()
{
    QFETCH(Span, span);
    QFETCH(double, step);
    COMPARE_EXACT(DomainUtils().niceStep(span), step);
}

void tst_NiceStep::atMostTenParts()
{
    const DomainUtils utils;
    double length = 1.1e-12;
    while (length < 1e12) {
        const double step = utils.niceStep(Span(0.0, length));
        // Fewest parts just above a threshold: 1.25 / 0.2.
        const double parts = length / step;
        QVERIFY2(parts <= 10.0 + 1e-9 && parts >= 6.25 - 1e-9, exactText(length).constData());
        length *= 1.037;
    }
}

QTEST_GUILESS_MAIN(tst_NiceStep)
#include "tst_nicestep.moc"
