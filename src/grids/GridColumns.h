// SPDX-License-Identifier: MIT
#ifndef CHARTS_GRIDCOLUMNS_H
#define CHARTS_GRIDCOLUMNS_H

#include "Span.h"

#include <vector>

namespace Charts {

/*!
    \internal
    Where a cartesian grid has its vertical lines: pixel columns of an item that is \a width pixels
    wide and shows \a range, and the values that they stand for.
*/
class GridColumns
{
public:
    GridColumns(Span range, int width);

    /*! At equal distances. */
    void addEquidistant(int divisions);
    /*! One in the middle, the others at steps of four significant digits to both sides. */
    void addCentered(int divisions);
    /*! At the multiples of a readable step. */
    void addNice();
    /*! The range is in decades: at 1, 2, ... 9 times each power of ten. */
    void addLogarithmic();

    [[nodiscard]] const std::vector<int> &pixels() const { return m_pixels; }
    [[nodiscard]] const std::vector<double> &values() const { return m_values; }

private:
    void add(double column, double value);
    /*! Where the range puts it. */
    void addValue(double value);

    Span m_range;
    double m_span = 0.0;
    int m_width = 0;
    std::vector<int> m_pixels;
    std::vector<double> m_values;
};

} // namespace Charts

#endif
