// SPDX-License-Identifier: MIT
#ifndef CHARTS_SHOWUPDATED_H
#define CHARTS_SHOWUPDATED_H

#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGGeometryNode>

#include <utility>

namespace Charts {

/*!
    \internal
    Updates \a node, a LineNode or a GradientNode, so that it shows also when it had no vertices
    before: Qt's renderer has left such a node out, and looks at it again for a new material only.
    Render thread.
*/
template<typename Node, typename... Arguments>
void showUpdated(Node &node, Arguments &&...arguments)
{
    const bool wasEmpty = node.geometry()->vertexCount() == 0;
    node.update(std::forward<Arguments>(arguments)...);
    if (wasEmpty)
        node.markDirty(QSGNode::DirtyMaterial);
}

} // namespace Charts

#endif
