// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_ROUNDS_H
#define CHARTS_TEST_ROUNDS_H

#include <QtCore/QtGlobal>

/*! How often a test repeats what it does: \a longCount times when CHARTS_TEST_SOAK is set, which
    may take minutes, else \a shortCount times. */
[[nodiscard]] inline int rounds(int shortCount, int longCount)
{
    return qEnvironmentVariableIsSet("CHARTS_TEST_SOAK") ? longCount : shortCount;
}

#endif
