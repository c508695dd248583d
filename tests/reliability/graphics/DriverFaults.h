// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_DRIVERFAULTS_H
#define CHARTS_TEST_DRIVERFAULTS_H

/*!
    Makes the driver worse than it is, towards charts alone: what Qt's scene graph asks for it gets.

    All but install() may be called at any time; what is set takes effect with the next call that the
    chart makes.
*/
namespace DriverFaults {

enum class Multisampling {
    Granted,
    /*! The driver says that it has no samples to give. */
    NoSamples,
    /*! It says that it has, but no memory for them. */
    NoStorage,
    /*! It makes the image and will not draw into it. */
    Unsupported,
};

/*! To be called before the application object exists. A bare OpenGL ES 2 has no extensions and none
    of the functions that came with version 3, for everybody. */
void install(bool isBareEs2);

/*! Back to the driver as it is. */
void mend();
void setMultisampling(Multisampling multisampling);
/*! 0: what the driver has. */
void setLargestTexture(int size);
/*! No image can be drawn into. */
void setFramebuffersRefused(bool areRefused);
/*! The compiler does not understand the shaders. */
void setShadersRefused(bool areRefused);

/*! How often a chart has made the driver link a program, and complete an image. */
[[nodiscard]] int linkCount();
[[nodiscard]] int framebufferCheckCount();

} // namespace DriverFaults

#endif
