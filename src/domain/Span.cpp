// SPDX-License-Identifier: MIT
#include "Span.h"

#include "FuzzyCompare.h"

#include <QtCore/QDebug>

namespace Charts {

bool operator==(const Span &a, const Span &b)
{
    return isFuzzyEqual(a.min, b.min) && isFuzzyEqual(a.max, b.max);
}

QDebug operator<<(QDebug debug, const Span &span)
{
    const QDebugStateSaver saver(debug);
    debug.nospace()
            << QStringLiteral("Span(%1, %2)").arg(span.min, 0, 'g', -1).arg(span.max, 0, 'g', -1);
    return debug;
}

} // namespace Charts
