// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_HIDEANDWAIT_H
#define CHARTS_TEST_HIDEANDWAIT_H

#include <QtCore/qglobal.h>

#include <functional>

QT_BEGIN_NAMESPACE
class QWindow;
QT_END_NAMESPACE

/*! Calls \a hide, which hides \a window, and waits until the X server has taken the window off the
    screen. Qt complains about one that is shown again before that. */
[[nodiscard]] bool hideAndWait(const QWindow &window, const std::function<void()> &hide);

#endif
