// SPDX-License-Identifier: MIT
#pragma once

#include "StaticTrace.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

namespace Gallery {

/*!
    300 Lissajous figures: a row for each of 15 frequency ratios, a column for each of 20 phase
    differences from 0 to 171 degrees. X is the phase in degrees, Y the row, from 0.
*/
class FigureTable : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QList<Gallery::StaticTrace *> traces READ traces CONSTANT)
    /*! Names of the rows, as "2 : 3". */
    Q_PROPERTY(QStringList ratios READ ratios CONSTANT)

public:
    explicit FigureTable(QObject *parent = nullptr);

    [[nodiscard]] QList<StaticTrace *> traces() const { return m_traces; }
    [[nodiscard]] QStringList ratios() const;

private:
    QList<StaticTrace *> m_traces;
};

} // namespace Gallery
