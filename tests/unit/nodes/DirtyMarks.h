// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_DIRTYMARKS_H
#define CHARTS_TEST_DIRTYMARKS_H

#include <QtCore/QList>
#include <QtQuick/QSGNode>

/*!
    Records how nodes are marked as changed while it lives. One at a time.

    Qt tells only the renderer of a window. The test program therefore defines QSGNode::markDirty()
    itself, which the library then finds instead of Qt's, and passes all calls on to Qt's.
*/
class DirtyMarks
{
public:
    struct Mark
    {
        const QSGNode *node = nullptr;
        QSGNode::DirtyState state;

        friend bool operator==(const Mark &, const Mark &) = default;
    };

    DirtyMarks();
    ~DirtyMarks();
    DirtyMarks(const DirtyMarks &) = delete;
    DirtyMarks &operator=(const DirtyMarks &) = delete;

    /*! All marks since the last call. */
    [[nodiscard]] QList<Mark> take();
};

#endif
