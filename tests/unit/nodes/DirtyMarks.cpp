// SPDX-License-Identifier: MIT
#include "DirtyMarks.h"

#include <utility>

#include <dlfcn.h>

namespace {

bool isRecording = false;
QList<DirtyMarks::Mark> marks;

} // namespace

void QSGNode::markDirty(DirtyState bits)
{
    using Function = void (*)(QSGNode *, DirtyState);
    static const auto original = reinterpret_cast<Function>(
            dlsym(RTLD_NEXT, "_ZN7QSGNode9markDirtyE6QFlagsINS_13DirtyStateBitEE"));
    if (isRecording)
        marks += {this, bits};
    original(this, bits);
}

DirtyMarks::DirtyMarks()
{
    isRecording = true;
}

DirtyMarks::~DirtyMarks()
{
    isRecording = false;
    marks.clear();
}

QList<DirtyMarks::Mark> DirtyMarks::take()
{
    return std::exchange(marks, {});
}
