#version 440 core
// SPDX-License-Identifier: MIT

layout(location = 0) in vec4 vertex;
layout(location = 1) in vec4 vertexColor;
layout(location = 2) in vec2 vertexOffset;

layout(location = 0) out vec4 color;

layout(std140, binding = 0) uniform AttributesBlock {
    mat4 matrix;
    float opacity;
    vec2 pixelSize;
} attributes;

out gl_PerVertex {
    vec4 gl_Position;
};

// Moves pos along delta by half a pixel on screen, or by all of delta where that is less.
void apply_offset(in vec4 delta, inout vec4 pos)
{
    vec2 dir = delta.xy * pos.w - pos.xy * delta.w;
    vec2 ndir = 0.5 * attributes.pixelSize * normalize(dir / attributes.pixelSize);
    dir -= ndir * delta.w * pos.w;
    float numerator = dot(dir, ndir * pos.w * pos.w);
    float scale = 1.0;
    if (numerator >= 0.0)
        scale = min(1.0, numerator / dot(dir, dir));
    pos += scale * delta;
}

void main()
{
    vec4 pos = attributes.matrix * vertex;
    if (vertexOffset.x != 0.0)
        apply_offset(attributes.matrix[0] * vertexOffset.x, pos);
    if (vertexOffset.y != 0.0)
        apply_offset(attributes.matrix[1] * vertexOffset.y, pos);
    gl_Position = pos;
    color = vertexColor * attributes.opacity;
}
