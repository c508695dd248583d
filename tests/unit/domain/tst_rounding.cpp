// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Rounding.h>

#include <QtTest>

#include <limits>

using namespace Charts;

class tst_Rounding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void roundsToInt_data();
    void roundsToInt();
};

void tst_Rounding::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Rounding::roundsToInt_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("rounded");

    const auto row = [](const char *name, double value, int rounded) {
        QTest::newRow(name) << value << rounded;
    };
    using Double = std::numeric_limits<double>;
    constexpr int largest = 2147483647;
    constexpr int lowest = -largest - 1;

    row("whole", 42.0, 42);
    row("down", 2.4, 2);
    row("up", 2.6, 3);
    row("half", 2.5, 3);
    row("half to an odd number", 3.5, 4);
    row("negative, towards zero", -2.4, -2);
    row("negative, away from zero", -2.6, -3);
    row("negative half", -2.5, -3);
    row("one half", 0.5, 1);
    row("minus one half", -0.5, -1);
    // Adding 0.5 to it gives 1.
    row("the largest double below one half", 0.49999999999999994, 0);
    row("the smallest double above minus one half", -0.49999999999999994, 0);
    row("zero", 0.0, 0);
    row("minus zero", -0.0, 0);
    row("denormal", Double::denorm_min(), 0);

    row("the largest int", 2147483647.0, largest);
    row("rounds down to the largest int", 2147483647.25, largest);
    row("rounds up to the largest int", 2147483646.5, largest);
    row("rounds to one less than the largest int", 2147483646.25, largest - 1);
    row("would round above the largest int", 2147483647.5, largest);
    row("one above the largest int", 2147483648.0, largest);
    row("the lowest int", -2147483648.0, lowest);
    row("rounds up to the lowest int", -2147483648.25, lowest);
    row("rounds down to the lowest int", -2147483647.5, lowest);
    row("rounds to one more than the lowest int", -2147483647.25, lowest + 1);
    row("would round below the lowest int", -2147483648.5, lowest);
    row("a multiple of 2 to the 32nd", 4294967296.0, largest);
    row("huge", Double::max(), largest);
    row("huge and negative", Double::lowest(), lowest);
    row("infinity", Double::infinity(), largest);
    row("minus infinity", -Double::infinity(), lowest);
    row("NaN", Double::quiet_NaN(), 0);
}

void tst_Rounding::roundsToInt()
{
    QFETCH(double, value);
    QTEST(roundToInt(value), "rounded");
}

QTEST_GUILESS_MAIN(tst_Rounding)
#include "tst_rounding.moc"
