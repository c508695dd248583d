#version 440 core
// SPDX-License-Identifier: MIT

layout(location = 0) in vec4 color;
layout(location = 0) out vec4 outColor;

void main()
{
    outColor = color;
}
