// SPDX-License-Identifier: MIT

varying lowp vec4 color;

void main()
{
    gl_FragColor = color;
}
