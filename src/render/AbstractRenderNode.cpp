// SPDX-License-Identifier: MIT
#include "AbstractRenderNode.h"

namespace Charts {

AbstractRenderNode::AbstractRenderNode() = default;

AbstractRenderNode::~AbstractRenderNode() = default;

} // namespace Charts
