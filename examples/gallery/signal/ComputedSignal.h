// SPDX-License-Identifier: MIT
#pragma once

#include "readers/SampleTable.h"

namespace Gallery {

/*!
    A minute of a patient monitor's signals, computed: an electrocardiogram as a sum of Gaussian
    waves per beat and the pulse that follows it, both with a heart rate that breathes. 500 samples
    a second. What the page shows when no file is given.
*/
[[nodiscard]] Charts::Readers::SampleTable computedSignal();

} // namespace Gallery
