// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_GRAPHICS_H
#define CHARTS_TEST_GRAPHICS_H

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

/*!
    The flavour of graphics that a rendering test runs with: the environment variable
    CHARTS_TEST_GRAPHICS names it.
*/
namespace Graphics {

enum class Flavour {
    Compatibility,
    Core,
    Es,
    /*! What OpenGL ES 3 added is missing. Mesa offers it when told so by an environment variable. */
    Es2,
    Vulkan,
    Software,
};

/*! The flavour asked for. Ends the program when the variable names none. */
[[nodiscard]] Flavour flavour();
[[nodiscard]] bool isOpenGL();

/*! Asks Qt for the flavour. To be called before the application object exists, from initMain(). */
void setUp();

/*! What is wrong with the graphics that \a window got, or an empty text. Runs on the render thread
    with the context current, after the first synchronisation. */
[[nodiscard]] QString verify(const QQuickWindow &window);

} // namespace Graphics

#endif
