// SPDX-License-Identifier: MIT
#include "TraceMatrices.h"

#include <QtGui/QVector3D>

namespace Charts::TraceMatrices {

namespace {

constexpr float depthScale = 0.001F;

QMatrix4x4 folded(const QMatrix4x4 &main, const QVector3D &line, float angle, const QVector3D &axis)
{
    QMatrix4x4 matrix = main;
    matrix.scale(1.0F, 1.0F, depthScale);
    matrix.translate(line);
    matrix.rotate(angle, axis);
    matrix.translate(-line);
    return matrix;
}

} // namespace

QMatrix4x4 main(const ViewPort &viewPort)
{
    QMatrix4x4 matrix;
    matrix.viewport(viewPort.x, viewPort.y, viewPort.width, viewPort.height, 0.0F, 1.0F);
    return matrix.inverted();
}

std::array<QMatrix4x4, 2> boundingX(const QMatrix4x4 &main, const ViewPort &viewPort, float pixel)
{
    const QVector3D right(viewPort.x + viewPort.width - pixel, 0.0F, 0.0F);
    const QVector3D left(viewPort.x + pixel, 0.0F, 0.0F);
    const QVector3D axis(0.0F, 1.0F, 0.0F);
    return {folded(main, right, -90.0F, axis), folded(main, left, 90.0F, axis)};
}

std::array<QMatrix4x4, 2> boundingY(const QMatrix4x4 &main, const ViewPort &viewPort, float pixel)
{
    const QVector3D top(0.0F, viewPort.y + viewPort.height - pixel, 0.0F);
    const QVector3D bottom(0.0F, viewPort.y + pixel, 0.0F);
    const QVector3D axis(1.0F, 0.0F, 0.0F);
    return {folded(main, top, 90.0F, axis), folded(main, bottom, -90.0F, axis)};
}

} // namespace Charts::TraceMatrices
