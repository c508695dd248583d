// SPDX-License-Identifier: MIT
#include "SmoothColorMaterial.h"

#include "SmoothVertex.h"

#include <QtCore/QRect>
#include <QtQuick/QSGMaterialShader>

#include <array>
#include <cstring>

namespace Charts {

namespace {

// The uniform block as the shaders declare it: a matrix at byte 0, the opacity at 64 and the pixel
// size at 72.
constexpr int blockSize = 80;
constexpr int opacityOffset = 64;
// Directly behind the opacity, four bytes before the block's pixel size: the shader reads 2 / height
// and then the last four bytes of the block, which are 0. Divided by that, its half a pixel is not a
// number, and so no limit: vertices move by the whole of their offset. The look of all lines and arcs
// is tuned to that; at its proper place the pixel size would make their edges harder.
constexpr int pixelSizeOffset = 68;

class SmoothColorMaterialShader : public QSGMaterialShader
{
public:
    SmoothColorMaterialShader()
    {
        setShaderFileName(
                VertexStage, QStringLiteral(":/Charts/resources/shaders/qt6_smoothcolor.vert.qsb"));
        setShaderFileName(FragmentStage,
                QStringLiteral(":/Charts/resources/shaders/qt6_smoothcolor.frag.qsb"));
    }

    bool updateUniformData(
            RenderState &state, QSGMaterial *newMaterial, QSGMaterial *oldMaterial) override;
};

bool SmoothColorMaterialShader::updateUniformData(
        RenderState &state, QSGMaterial *, QSGMaterial *oldMaterial)
{
    char *block = state.uniformData()->data();
    Q_ASSERT(state.uniformData()->size() >= blockSize);
    bool isChanged = false;
    if (state.isMatrixDirty()) {
        const QMatrix4x4 matrix = state.combinedMatrix();
        std::memcpy(block, matrix.constData(), 16 * sizeof(float));
        isChanged = true;
    }
    if (state.isOpacityDirty()) {
        const float opacity = state.opacity();
        std::memcpy(block + opacityOffset, &opacity, sizeof(opacity));
        isChanged = true;
    }
    // The first material of a pass: the viewport is the same for all that follow.
    if (!oldMaterial) {
        const QRect viewport = state.viewportRect();
        const std::array<float, 2> pixelSize = {static_cast<float>(2.0 / viewport.width()),
                static_cast<float>(2.0 / viewport.height())};
        std::memcpy(block + pixelSizeOffset, pixelSize.data(), sizeof(pixelSize));
        isChanged = true;
    }
    return isChanged;
}

} // namespace

SmoothColorMaterial::SmoothColorMaterial()
{
    setFlag(RequiresFullMatrixExceptTranslate);
    setFlag(Blending);
}

SmoothColorMaterial::~SmoothColorMaterial() = default;

QSGMaterialType *SmoothColorMaterial::type() const
{
    static QSGMaterialType type;
    return &type;
}

QSGMaterialShader *SmoothColorMaterial::createShader(QSGRendererInterface::RenderMode) const
{
    return new SmoothColorMaterialShader;
}

int SmoothColorMaterial::compare(const QSGMaterial *) const
{
    return 0;
}

const QSGGeometry::AttributeSet &SmoothColorMaterial::attributeSet()
{
    static const std::array<QSGGeometry::Attribute, 3> attributes = {
            QSGGeometry::Attribute::createWithAttributeType(
                    0, 2, QSGGeometry::FloatType, QSGGeometry::PositionAttribute),
            QSGGeometry::Attribute::createWithAttributeType(
                    1, 4, QSGGeometry::UnsignedByteType, QSGGeometry::ColorAttribute),
            QSGGeometry::Attribute::createWithAttributeType(
                    2, 2, QSGGeometry::FloatType, QSGGeometry::TexCoordAttribute)};
    static const QSGGeometry::AttributeSet set = {static_cast<int>(attributes.size()),
            static_cast<int>(sizeof(SmoothVertex)), attributes.data()};
    return set;
}

} // namespace Charts
