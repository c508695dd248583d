// SPDX-License-Identifier: MIT
#include "AbstractTrace.h"

#include "FuzzyCompare.h"
#include "ThreadCheck.h"

namespace Charts {

AbstractTrace::AbstractTrace(QObject *parent)
    : QObject(parent)
    , m_domain(new TraceDomain(this))
{
}

AbstractTrace::~AbstractTrace() = default;

void AbstractTrace::setName(const QString &name)
{
    Q_ASSERT(isOnThreadOf(this));
    if (name == m_name)
        return;
    m_name = name;
    Q_EMIT nameChanged();
}

void AbstractTrace::setVisible(bool visible)
{
    Q_ASSERT(isOnThreadOf(this));
    if (visible == m_visible)
        return;
    m_visible = visible;
    Q_EMIT visibleChanged();
}

void AbstractTrace::setZ(double z)
{
    Q_ASSERT(isOnThreadOf(this));
    if (z == m_z)
        return;
    m_z = z;
    Q_EMIT zChanged(z);
}

void AbstractTrace::setColor(const QColor &color)
{
    Q_ASSERT(isOnThreadOf(this));
    if (color == m_color)
        return;
    m_color = color;
    Q_EMIT colorChanged(color);
}

void AbstractTrace::setLineWidth(double lineWidth)
{
    Q_ASSERT(isOnThreadOf(this));
    if (isRelativelyEqual(m_lineWidth, lineWidth))
        return;
    m_lineWidth = lineWidth;
    Q_EMIT lineWidthChaned(lineWidth);
}

} // namespace Charts
