// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_RENDERSTATESTUB_H
#define CHARTS_TEST_RENDERSTATESTUB_H

#include <QtCore/QByteArray>
#include <QtCore/QRect>
#include <QtGui/QMatrix4x4>
#include <QtQuick/QSGMaterialShader>

/*!
    What a material's shader is told when it is asked for its uniforms. One at a time.

    Only the renderer of a window can make a RenderState that answers. The test program therefore
    defines RenderState's functions itself, which the library then finds instead of Qt's.
*/
struct RenderStateStub
{
    RenderStateStub();
    ~RenderStateStub();
    RenderStateStub(const RenderStateStub &) = delete;
    RenderStateStub &operator=(const RenderStateStub &) = delete;

    /*! A state with this stub's values. */
    [[nodiscard]] QSGMaterialShader::RenderState state() const;

    QSGMaterialShader::RenderState::DirtyStates dirty;
    QMatrix4x4 combinedMatrix;
    float opacity = 1.0F;
    QRect viewport;
    QByteArray uniforms;
};

#endif
