// SPDX-License-Identifier: MIT
#pragma once

#include "readers/NetworkData.h"

#include <complex>
#include <vector>

namespace Gallery {

/*!
    A low-pass filter of series inductors and shunt capacitors, beginning with an inductor:

        port 1 o---L1---+---L3---+--- ... ---o port 2
                        |        |
                        C2       C4
                        |        |
*/
struct LadderFilter
{
    double resistance = 50.0; // of source and load, ohms
    /*! Henries and farads, in turns. */
    std::vector<double> elements;

    /*! With the element values of a maximally flat response (G. L. Matthaei, L. Young and
        E. M. T. Jones, Microwave Filters, 1964). \a cutoff is where it has fallen by 3 dB, in
        hertz. */
    [[nodiscard]] static LadderFilter butterworth(int order, double cutoff);

    /*! S11, S12, S21, S22 at \a frequency, in hertz, from the chain matrix (D. A. Frickey, IEEE
        Trans. Microwave Theory Tech. 42, 1994). */
    [[nodiscard]] std::vector<std::complex<double>> scattering(double frequency) const;
    /*! The same at many frequencies, as from a file. */
    [[nodiscard]] Charts::Readers::NetworkData measuredAt(std::vector<double> frequencies) const;
};

} // namespace Gallery
