// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_EXACTCOMPARE_H
#define CHARTS_TEST_EXACTCOMPARE_H

#include <ChartsLibrary/Span.h>

#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>

inline constexpr double inf = std::numeric_limits<double>::infinity();
inline constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double largest = std::numeric_limits<double>::max();
inline constexpr double smallest = std::numeric_limits<double>::denorm_min();

// QCOMPARE compares doubles, and Span compares its ends, with a tolerance. The comparisons below
// have none: NaN is the same as NaN, 0 is not the same as -0.

inline bool isSame(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

inline bool isSame(const Charts::Span &a, const Charts::Span &b)
{
    return isSame(a.min, b.min) && isSame(a.max, b.max);
}

/*! Within 1e-12 of each other, relative to what is expected or to 1; infinities and NaN exactly. */
inline bool isClose(double actual, double expected)
{
    if (!std::isfinite(actual) || !std::isfinite(expected))
        return isSame(actual, expected);
    return std::abs(actual - expected) <= 1e-12 * std::max(1.0, std::abs(expected));
}

inline bool isClose(const Charts::Span &actual, const Charts::Span &expected)
{
    return isClose(actual.min, expected.min) && isClose(actual.max, expected.max);
}

inline QByteArray exactText(double value)
{
    return QByteArray::number(value, 'g', 17);
}

inline QByteArray exactText(const Charts::Span &span)
{
    return '(' + exactText(span.min) + ", " + exactText(span.max) + ')';
}

template<typename Value>
bool compareValues(bool isEqual, const Value &actual, const Value &expected, const char *text,
        const char *file, int line)
{
    const QByteArray message =
            QByteArray(text) + " is " + exactText(actual) + ", expected " + exactText(expected);
    return QTest::qVerify(isEqual, text, message.constData(), file, line);
}

#define COMPARE_EXACT(actual, expected)                                                            \
    do {                                                                                           \
        const auto actualValue = actual;                                                           \
        const decltype(actualValue) expectedValue = expected;                                      \
        if (!compareValues(isSame(actualValue, expectedValue), actualValue, expectedValue,         \
                    #actual, __FILE__, __LINE__))                                                  \
            return;                                                                                \
    } while (false)

#define COMPARE_CLOSE(actual, expected)                                                            \
    do {                                                                                           \
        const auto actualValue = actual;                                                           \
        const decltype(actualValue) expectedValue = expected;                                      \
        if (!compareValues(isClose(actualValue, expectedValue), actualValue, expectedValue,        \
                    #actual, __FILE__, __LINE__))                                                  \
            return;                                                                                \
    } while (false)

#endif
