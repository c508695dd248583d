// SPDX-License-Identifier: MIT
#pragma once

#include "StaticTrace.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace Gallery {

/*! The transmission of Butterworth filters of several orders in decibels, over the logarithm of the
    frequency: 10 Hz to 100 kHz, cutoff at 1 kHz. */
class FilterResponse : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QList<Gallery::StaticTrace *> traces READ traces CONSTANT)

public:
    explicit FilterResponse(QObject *parent = nullptr);

    [[nodiscard]] QList<StaticTrace *> traces() const { return m_traces; }

private:
    QList<StaticTrace *> m_traces;
};

} // namespace Gallery
