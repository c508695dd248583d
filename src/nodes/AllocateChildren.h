// SPDX-License-Identifier: MIT
#ifndef CHARTS_ALLOCATECHILDREN_H
#define CHARTS_ALLOCATECHILDREN_H

#include <QtQuick/QSGNode>

namespace Charts {

/*!
    Gives \a parent exactly \a count child nodes of the type \c Node: appends new ones at the end or
    deletes surplus ones from the front. The caller rewrites all of them afterwards, in order.
    Render thread.
*/
template<typename Node>
void allocateChildren(QSGNode *parent, int count)
{
    int current = parent->childCount();
    for (; current > count; --current) {
        QSGNode *first = parent->firstChild();
        if (!first)
            break;
        parent->removeChildNode(first);
        delete first;
    }
    for (; current < count; ++current)
        parent->appendChildNode(new Node);
}

} // namespace Charts

#endif
