// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MODELDOMAIN_H
#define CHARTS_TEST_MODELDOMAIN_H

#include <ChartsLibrary/Span.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtCore/QStringList>

/*! Whether two numbers count as the same: within 1e-12, absolutely where one of them is 0. */
[[nodiscard]] bool isSame(double a, double b);

/*! What the coordinate system of a trace should hold. Each operation appends the signals that it
    should cause to \a log, after \a name. */
class ModelDomain
{
public:
    void setSize(const QSizeF &size);
    void setRange(bool isX, const Charts::Span &range, const QString &name, QStringList &log);
    void setFormat(bool isRound, const QString &name, QStringList &log);
    void zoomIn(const QRectF &rect, const QString &name, QStringList &log);
    void zoomReset(const QString &name, QStringList &log);

    /*! What differs from \a real, or an empty text. Takes over the last digits of what does not:
        they are not promised, but the next zoom starts from them. */
    [[nodiscard]] QString compare(const Charts::TraceDomain &real);

    [[nodiscard]] const Charts::Span &x() const { return m_x; }

private:
    QSizeF m_size = {0.0, 0.0};
    Charts::Span m_x;
    Charts::Span m_y;
    Charts::Span m_baseX;
    Charts::Span m_baseY;
    bool m_isZoomed = false;
    bool m_isRound = false;
};

#endif
