// SPDX-License-Identifier: MIT
#include "ExactCompare.h"

#include <ChartsLibrary/FuzzyCompare.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>

using namespace Charts;

class tst_FuzzyCompare : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void compare_data();
    void compare();
};

void tst_FuzzyCompare::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_FuzzyCompare::compare_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<bool>("relative");
    QTest::addColumn<bool>("different");
    QTest::addColumn<bool>("fuzzy");

    const auto row = [](const char *name, double a, double b, bool relative, bool different,
                             bool fuzzy) {
        QTest::newRow(name) << a << b << relative << different << fuzzy;
    };

    row("the same value", 3.5, 3.5, true, false, true);
    row("below the tolerance", 1.0, 1.0 + 1e-13, true, false, true);
    row("above the tolerance", 1.0, 1.0 + 2e-12, false, true, false);
    // One part in 1e12 of 1e12 is 1; the neighbouring double is 1.0001220703125 away.
    row("exactly at the tolerance", 1e12, 1000000000001.0, true, false, true);
    row("the next double beyond it", 1e12, 1000000000001.0001220703125, false, true, false);
    row("at the tolerance, negative", -1e12, -1000000000001.0, true, false, true);
    row("beyond it, negative", -1e12, -1000000000001.0001220703125, false, true, false);
    row("opposite signs", 1.0, -1.0, false, true, false);
    row("tiny, of opposite signs", 1e-13, -1e-13, false, true, false);
    row("tiny but neither of them zero", 1e-13, 2e-13, false, true, false);
    row("tiny and close", 1e-300, 1.0000000000001e-300, true, false, true);

    row("zero and zero", 0.0, 0.0, true, false, true);
    row("zero and minus zero", 0.0, -0.0, true, false, true);
    row("zero and the tolerance", 0.0, 1e-12, false, true, true);
    row("zero and minus the tolerance", 0.0, -1e-12, false, true, true);
    row("minus zero and the tolerance", -0.0, 1e-12, false, true, true);
    row("zero and just above the tolerance", 0.0, std::nextafter(1e-12, 1.0), false, true, false);
    row("zero and just below minus the tolerance", 0.0, std::nextafter(-1e-12, -1.0), false, true,
            false);
    row("zero and the smallest number", 0.0, smallest, false, true, true);
    row("zero and one", 0.0, 1.0, false, true, false);
    row("zero and a huge number", 0.0, largest, false, true, false);

    row("denormal, the same", smallest, smallest, true, false, true);
    row("denormal neighbours", smallest, 2.0 * smallest, false, true, false);
    row("huge, the same", largest, largest, true, false, true);
    row("huge neighbours", largest, std::nextafter(largest, 0.0), true, false, true);
    row("huge, and the scaled distance overflows", 1e300, 2e300, false, true, false);
    row("huge, of opposite signs", largest, -largest, false, true, false);

    // The distance of an infinity from itself is not a number, which neither comparison holds for.
    row("infinity and itself", inf, inf, false, false, false);
    row("infinity and a number", inf, 1.0, false, true, false);
    row("infinity and zero", inf, 0.0, false, true, false);
    // Here the distance and the smaller magnitude are both infinite, and infinity <= infinity.
    row("opposite infinities", inf, -inf, true, false, true);
    row("NaN and itself", NaN, NaN, false, false, false);
    row("NaN and a number", NaN, 1.0, false, false, false);
    row("NaN and zero", NaN, 0.0, false, false, false);
    row("NaN and infinity", NaN, inf, false, false, false);
}

void tst_FuzzyCompare::compare()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(bool, relative);
    QFETCH(bool, different);
    QFETCH(bool, fuzzy);

    QCOMPARE(isRelativelyEqual(a, b), relative);
    QCOMPARE(isRelativelyEqual(b, a), relative);
    QCOMPARE(isRelativelyDifferent(a, b), different);
    QCOMPARE(isRelativelyDifferent(b, a), different);
    QCOMPARE(isFuzzyEqual(a, b), fuzzy);
    QCOMPARE(isFuzzyEqual(b, a), fuzzy);
}

QTEST_GUILESS_MAIN(tst_FuzzyCompare)
#include "tst_fuzzycompare.moc"
