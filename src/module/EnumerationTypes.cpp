// SPDX-License-Identifier: MIT
#include "TraceDomain.h"
#include "XYGrid.h"
#include "ZoomDelegate.h"

#include <QtCore/QMetaType>

namespace Charts {

namespace {

/*!
    Makes the enumerations known to the meta-type system by name, for queued connections and
    variants. Newer Qt does it in the registration it generates, Qt 6.4 does not; a second time does
    no harm.
*/
[[maybe_unused]] const bool registered = [] {
    qRegisterMetaType<TraceDomain::TraceFormat>();
    qRegisterMetaType<XYGrid::GridLayoutMode>();
    qRegisterMetaType<ZoomDelegate::ZoomType>();
    return true;
}();

} // namespace

} // namespace Charts
