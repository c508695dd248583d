// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_SWEEPMODEL_H
#define CHARTS_TEST_SWEEPMODEL_H

#include "DrawnLine.h"
#include "SweepTrace.h"

#include <QtCore/QString>

#include <cstddef>
#include <vector>

/*!
    What an oscilloscope shows of one column of a table at a given time, worked out anew each time.

    The first sweep stands on the screen when the beam starts with the second one. What lies left of
    the beam was written by this sweep, what lies right of the gap by the sweep before.
*/
class SweepModel
{
public:
    SweepModel(Gallery::SweepTrace::Table table, std::size_t column,
            const Gallery::SweepSettings &settings);

    /*! Where the beam is after \a seconds, in seconds of data from the left. */
    [[nodiscard]] double beamAt(double seconds) const;
    [[nodiscard]] double gapEndAt(double seconds) const;
    /*! How many samples this sweep has written. */
    [[nodiscard]] std::size_t writtenAt(double seconds) const;
    /*! Counted on from the one on the screen at the start, which is 0. */
    [[nodiscard]] long long sweepAt(double seconds) const;

    /*!
        What is wrong with \a vertices as the picture after \a seconds, or an empty text. Each sweep
        of a table whose samples are \a evenlySpaced replaces the one before vertex for vertex: all
        of it has to be there up to the gap.
    */
    [[nodiscard]] QString defectOf(const std::vector<Charts::TracePoint> &vertices, double seconds,
            bool evenlySpaced) const;

private:
    struct Sample
    {
        double x = 0.0; // from the left
        float value = 0.0F;
    };

    [[nodiscard]] std::vector<Sample> samplesOf(long long sweep) const;
    /*! The lines between neighbouring samples that both have a value. */
    [[nodiscard]] static std::vector<DrawnLine::Piece> linesOf(const std::vector<Sample> &samples);
    [[nodiscard]] QString defectOfOld(
            std::vector<DrawnLine::Piece> pieces, double seconds, bool evenlySpaced) const;

    Gallery::SweepTrace::Table m_table;
    std::size_t m_column;
    Gallery::SweepSettings m_settings;
    long long m_sweepCount = 1;
};

#endif
