// SPDX-License-Identifier: MIT
#include "RenderStateStub.h"

#include <bit>

namespace {

RenderStateStub *current = nullptr;

} // namespace

QMatrix4x4 QSGMaterialShader::RenderState::combinedMatrix() const
{
    return current->combinedMatrix;
}

float QSGMaterialShader::RenderState::opacity() const
{
    return current->opacity;
}

QRect QSGMaterialShader::RenderState::viewportRect() const
{
    return current->viewport;
}

QByteArray *QSGMaterialShader::RenderState::uniformData()
{
    return &current->uniforms;
}

RenderStateStub::RenderStateStub()
{
    current = this;
}

RenderStateStub::~RenderStateStub()
{
    current = nullptr;
}

QSGMaterialShader::RenderState RenderStateStub::state() const
{
    // What is dirty can be read through RenderState, but be set only by Qt.
    struct Layout
    {
        QSGMaterialShader::RenderState::DirtyStates dirty;
        const void *data;
    };
    return std::bit_cast<QSGMaterialShader::RenderState>(Layout{dirty, nullptr});
}
