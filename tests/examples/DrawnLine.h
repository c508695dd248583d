// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_DRAWNLINE_H
#define CHARTS_TEST_DRAWNLINE_H

#include <ChartsLibrary/TraceData.h>

#include <QtCore/QString>

#include <set>
#include <vector>

/*!
    What is to be seen of a trace that is drawn as a line strip.

    A line runs from each vertex to the next one. Along it the opacities of the two are interpolated,
    and what lies below 0.1 is left out: of each line one piece remains, or nothing.
*/
namespace DrawnLine {

struct Piece
{
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;

    friend bool operator==(const Piece &, const Piece &) = default;
};

/*! The pieces in the order of their vertices. A piece that covers less than a hundred-thousandth
    of its line, or a line without length, cannot be seen and is left out. */
[[nodiscard]] std::vector<Piece> pieces(const std::vector<Charts::TracePoint> &vertices);

/*! The same, from left to right. */
[[nodiscard]] std::vector<Piece> sortedPieces(const std::vector<Charts::TracePoint> &vertices);

/*! Where \a actual differs from \a expected, or an empty text. */
[[nodiscard]] QString compare(const std::vector<Piece> &actual, const std::vector<Piece> &expected);

[[nodiscard]] QString toString(const Piece &piece);

/*! The indices of all stored ranges, which are removed. */
[[nodiscard]] std::set<int> takeIndices(Charts::BoundRange &ranges);

/*! The indices at which two arrays of one size differ. */
[[nodiscard]] std::set<int> differences(const std::vector<Charts::TracePoint> &before,
        const std::vector<Charts::TracePoint> &after);

} // namespace DrawnLine

#endif
