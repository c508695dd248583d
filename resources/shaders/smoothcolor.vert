// SPDX-License-Identifier: MIT

attribute highp vec4 vertex;
attribute lowp vec4 vertexColor;
attribute highp vec2 vertexOffset;

uniform highp vec2 pixelSize;
uniform highp mat4 matrix;
uniform lowp float opacity;

varying lowp vec4 color;

// Moves pos along delta by half a pixel on screen, or by all of delta where that is less.
void apply_offset(in highp vec4 delta, inout highp vec4 pos)
{
    highp vec2 dir = delta.xy * pos.w - pos.xy * delta.w;
    highp vec2 ndir = 0.5 * pixelSize * normalize(dir / pixelSize);
    dir -= ndir * delta.w * pos.w;
    highp float numerator = dot(dir, ndir * pos.w * pos.w);
    highp float scale = 1.0;
    if (numerator >= 0.0)
        scale = min(1.0, numerator / dot(dir, dir));
    pos += scale * delta;
}

void main()
{
    highp vec4 pos = matrix * vertex;
    if (vertexOffset.x != 0.0)
        apply_offset(matrix[0] * vertexOffset.x, pos);
    if (vertexOffset.y != 0.0)
        apply_offset(matrix[1] * vertexOffset.y, pos);
    gl_Position = pos;
    color = vertexColor * opacity;
}
