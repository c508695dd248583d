// SPDX-License-Identifier: MIT
#ifndef CHARTS_SIGNALSOURCE_H
#define CHARTS_SIGNALSOURCE_H

#include "BenchmarkOptions.h"

#include <QtCore/QtGlobal>
#include <QtGui/QColor>

#include <array>

/*!
    The data of one trace and what becomes of them from frame to frame: the same for every program that
    is compared. The programs keep the points; this says which to write and with what.

    Abscissae are the indices of the points, ordinates lie in [-1, 1]. However many points there are, they
    look alike: six periods of a sine with some noise.
*/
class SignalSource
{
public:
    SignalSource(const BenchmarkOptions &options, int trace);

    static constexpr float lineWidth = 1.0F;

    /*! The colour of a trace; it has two, one of which it wears. */
    [[nodiscard]] static QColor colorOf(int trace, bool isOther);

    /*! Points to write, as indices into the trace. The first of them is sample number \c sample. */
    struct Piece
    {
        int first = 0;
        int length = 0;
        qint64 sample = 0;
    };

    struct Frame
    {
        std::array<Piece, 2> written;
        double visibleFirst = 0.0;
        double visibleLength = 1.0;
    };

    /*! All points, before the first frame. */
    [[nodiscard]] Frame begin();
    [[nodiscard]] Frame next();

    /*! The ordinate of a sample. */
    [[nodiscard]] float valueAt(qint64 sample) const;

private:
    [[nodiscard]] Frame frame(const Piece &first, const Piece &second) const;

    BenchmarkOptions::Mode m_mode;
    int m_pointCount;
    double m_step; // in the table of the sine, from sample to sample
    float m_offset;
    float m_scale;
    qint64 m_sample = 0;
    int m_head = 0;
    double m_visibleFirst = 0.0;
    double m_visibleLength;
};

#endif
