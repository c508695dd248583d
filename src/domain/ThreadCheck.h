// SPDX-License-Identifier: MIT
#ifndef CHARTS_THREADCHECK_H
#define CHARTS_THREADCHECK_H

#include <QtCore/QObject>
#include <QtCore/QThread>

namespace Charts {

/*!
    \internal
    Whether the caller runs on the thread that \a object belongs to, to be asserted by what documents
    that it must: nothing here takes a lock, so a call from elsewhere is a data race.
*/
[[nodiscard]] inline bool isOnThreadOf(const QObject *object)
{
    return object->thread() == QThread::currentThread();
}

} // namespace Charts

#endif
