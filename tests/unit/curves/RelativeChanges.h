// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_RELATIVECHANGES_H
#define CHARTS_TEST_RELATIVECHANGES_H

#include "ExactCompare.h"

#include <QtTest/QTest>

/*! Columns and rows for a property that takes a value as new by its relative distance alone. */
inline void addRelativeChanges()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::addColumn<bool>("isChange");
    const auto row = [](const char *name, double first, double second, bool isChange) {
        QTest::newRow(name) << first << second << isChange;
    };
    row("another value", 2.0, 3.0, true);
    row("the same value", 2.0, 2.0, false);
    row("other sign", 2.0, -2.0, true);
    row("a 10^-13th more", 2.0, 2.0000000000002, false);
    row("a 10^-13th less", 2.0, 1.9999999999998, false);
    row("three 10^-12ths more", 2.0, 2.000000000006, true);
    row("three 10^-12ths less", 2.0, 1.999999999994, true);
    // One part in 1e12 of 1e12 is 1; the next double is further away.
    row("exactly at the tolerance", 1e12, 1000000000001.0, false);
    row("the next double", 1e12, 1000000000001.0001220703125, true);
    row("small", 1e-20, 1.1e-20, true);
    row("small and close", 1e-300, 1.0000000000001e-300, false);
    row("large", 1e300, 1.1e300, true);
    row("large and close", 1e300, 1.0000000000001e300, false);
    // Zero has no tolerance.
    row("to zero", 2.0, 0.0, true);
    row("zero to zero", 0.0, 0.0, false);
    row("zero to minus zero", 0.0, -0.0, false);
    row("zero to next to nothing", 0.0, 1e-300, true);
    row("zero to the smallest", 0.0, smallest, true);
    row("next to nothing to zero", 1e-300, 0.0, true);
    // As the arithmetic has it.
    row("to infinity", 2.0, inf, true);
    row("from infinity", inf, 2.0, true);
    row("infinity to infinity", inf, inf, false);
    row("infinity to minus infinity", inf, -inf, false);
    row("not a number", 2.0, NaN, false);
    row("not a number for zero", 0.0, NaN, false);
    row("not a number for infinity", inf, NaN, false);
}

#endif
