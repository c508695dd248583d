// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Rounding.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;

namespace {

using Double = std::numeric_limits<double>;
constexpr int largest = 2147483647;
constexpr int lowest = -largest - 1;

void addColumns()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("rounded");
}

void row(const char *name, double value, int rounded)
{
    QTest::newRow(name) << value << rounded;
}

/*! What ends at the same int in whichever way it is rounded. */
void addValuesBeyondInt()
{
    row("the largest int", 2147483647.0, largest);
    row("one above the largest int", 2147483648.0, largest);
    row("a multiple of 2 to the 32nd", 4294967296.0, largest);
    row("the lowest int", -2147483648.0, lowest);
    row("one below the lowest int", -2147483649.0, lowest);
    row("huge", Double::max(), largest);
    row("huge and negative", Double::lowest(), lowest);
    row("infinity", Double::infinity(), largest);
    row("minus infinity", -Double::infinity(), lowest);
    row("NaN", Double::quiet_NaN(), 0);
    row("NaN with a sign", -Double::quiet_NaN(), 0);
}

} // namespace

class tst_Rounding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void roundsToInt_data();
    void roundsToInt();
    void truncatesToInt_data();
    void truncatesToInt();
    void roundsAsQtDoes_data();
    void roundsAsQtDoes();
    void asQRound();
    void rectangles_data();
    void rectangles();
};

void tst_Rounding::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Rounding::roundsToInt_data()
{
    addColumns();
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

    addValuesBeyondInt();
    row("rounds down to the largest int", 2147483647.25, largest);
    row("rounds up to the largest int", 2147483646.5, largest);
    row("rounds to one less than the largest int", 2147483646.25, largest - 1);
    row("would round above the largest int", 2147483647.5, largest);
    row("rounds up to the lowest int", -2147483648.25, lowest);
    row("rounds down to the lowest int", -2147483647.5, lowest);
    row("rounds to one more than the lowest int", -2147483647.25, lowest + 1);
    row("would round below the lowest int", -2147483648.5, lowest);
}

void tst_Rounding::roundsToInt()
{
    QFETCH(double, value);
    QTEST(roundToInt(value), "rounded");
}

void tst_Rounding::truncatesToInt_data()
{
    addColumns();
    row("whole", 42.0, 42);
    row("negative, whole", -42.0, -42);
    row("down", 2.4, 2);
    row("down from almost the next", 2.9999999999999996, 2);
    row("half", 2.5, 2);
    row("half to an odd number", 3.5, 3);
    row("negative, towards zero", -2.4, -2);
    row("negative, towards zero from almost the next", -2.9999999999999996, -2);
    row("negative half", -2.5, -2);
    row("almost one", 0.99999999999999989, 0);
    row("almost minus one", -0.99999999999999989, 0);
    row("zero", 0.0, 0);
    row("minus zero", -0.0, 0);
    row("denormal", Double::denorm_min(), 0);
    row("down to the largest int", 2147483647.75, largest);
    row("down to one less than the largest int", 2147483646.75, largest - 1);
    row("up to the lowest int", -2147483648.75, lowest);
    row("up to one more than the lowest int", -2147483647.75, lowest + 1);
    addValuesBeyondInt();
}

void tst_Rounding::truncatesToInt()
{
    QFETCH(double, value);
    QTEST(truncateToInt(value), "rounded");
}

void tst_Rounding::roundsAsQtDoes_data()
{
    addColumns();
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
    // The sums with one half are rounded to 1 and to -1.
    row("the largest double below one half", 0.49999999999999994, 1);
    row("the smallest double above minus one half", -0.49999999999999994, -1);
    row("the next double below one half", 0.49999999999999989, 0);
    row("below another half", 2.4999999999999996, 2);
    row("zero", 0.0, 0);
    row("minus zero", -0.0, 0);
    row("denormal", Double::denorm_min(), 0);
    row("denormal and negative", -Double::denorm_min(), 0);
    row("up to the largest int", 2147483646.5, largest);
    row("down to one less than the largest int", 2147483646.25, largest - 1);
    row("would round above the largest int", 2147483647.5, largest);
    row("down to the lowest int", -2147483647.5, lowest);
    row("up to one more than the lowest int", -2147483647.25, lowest + 1);
    row("would round below the lowest int", -2147483648.5, lowest);
    addValuesBeyondInt();
}

void tst_Rounding::roundsAsQtDoes()
{
    QFETCH(double, value);
    QTEST(qRoundSaturated(value), "rounded");
}

// Wherever Qt's own is defined.
void tst_Rounding::asQRound()
{
    for (double value = -2147483647.75; value < 2147483647.0; value += 1234567.0625)
        QCOMPARE(qRoundSaturated(value), qRound(value));
    for (double value = -4.0; value < 4.0; value += 0.03125)
        QCOMPARE(qRoundSaturated(value), qRound(value));
}

void tst_Rounding::rectangles_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QRect>("pixels");

    constexpr int most = std::numeric_limits<int>::max();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("whole pixels") << QRectF(0, 0, 20, 10) << QRect(0, 0, 20, 10);
    QTest::newRow("halves away from zero") << QRectF(0, 0, 20.5, 10.4) << QRect(0, 0, 21, 10);
    // Half of what the position loses goes to the size.
    QTest::newRow("moved") << QRectF(0.4, -0.4, 20.3, 10.3) << QRect(0, 0, 21, 10);
    QTest::newRow("negative") << QRectF(0, 0, -20, -1e300) << QRect(0, 0, 0, 0);
    QTest::newRow("infinite") << QRectF(0, 0, infinity, -infinity) << QRect(0, 0, most, 0);
    QTest::newRow("edge beyond all ints")
            << QRectF(5, 7, 1e300, 1e300) << QRect(5, 7, most - 5, most - 7);
}

void tst_Rounding::rectangles()
{
    QFETCH(QRectF, rect);
    QTEST(toRectSaturated(rect), "pixels");
}

QTEST_GUILESS_MAIN(tst_Rounding)
#include "tst_rounding.moc"
