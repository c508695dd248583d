// SPDX-License-Identifier: MIT
#include "Graphics.h"

#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QSurfaceFormat>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>

#include <array>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Mesa unloads its driver before the leak checker looks. A leak of the driver then has no name any
// more by which it could be told from one of ours, so under the checker nothing is unloaded. The
// checker of threads gives up when a library goes that it has been told about.
extern "C" __attribute__((visibility("default"))) int dlclose(void *)
{
    return 0;
}
#endif

namespace Graphics {

namespace {

// Not defined by the OpenGL ES headers.
constexpr GLenum glContextFlags = 0x821E;
constexpr GLint forwardCompatibleBit = 0x1;

struct Named
{
    const char *name;
    Flavour flavour;
};

constexpr std::array<Named, 6> flavours = {{
        {"compat", Flavour::Compatibility},
        {"core", Flavour::Core},
        {"es", Flavour::Es},
        {"es2", Flavour::Es2},
        {"vulkan", Flavour::Vulkan},
        {"software", Flavour::Software},
}};

QSGRendererInterface::GraphicsApi graphicsApi()
{
    switch (flavour()) {
    case Flavour::Vulkan:
        return QSGRendererInterface::Vulkan;
    case Flavour::Software:
        return QSGRendererInterface::Software;
    default:
        return QSGRendererInterface::OpenGL;
    }
}

bool isEs()
{
    return flavour() == Flavour::Es || flavour() == Flavour::Es2;
}

QString verifyContext(QOpenGLContext *context)
{
    if (!context)
        return QStringLiteral("no OpenGL context is current");
    const QSurfaceFormat format = context->format();
    if (context->isOpenGLES() != isEs())
        return QStringLiteral("OpenGL and OpenGL ES are mixed up");

    switch (flavour()) {
    case Flavour::Compatibility:
        return format.profile() == QSurfaceFormat::CompatibilityProfile
                       ? QString()
                       : QStringLiteral("not a compatibility profile");
    case Flavour::Core: {
        if (format.profile() != QSurfaceFormat::CoreProfile)
            return QStringLiteral("not a core profile");
        // Lines wider than one pixel are an error in such a context.
        GLint flags = 0;
        context->functions()->glGetIntegerv(glContextFlags, &flags);
        return flags & forwardCompatibleBit ? QStringLiteral("forward-compatible core profile")
                                            : QString();
    }
    case Flavour::Es2:
        return format.majorVersion() == 2 ? QString() : QStringLiteral("not OpenGL ES 2");
    default:
        return format.majorVersion() >= 3 ? QString() : QStringLiteral("not OpenGL ES 3");
    }
}

} // namespace

Flavour flavour()
{
    const QByteArray name = qgetenv("CHARTS_TEST_GRAPHICS");
    for (const Named &candidate : flavours) {
        if (name == candidate.name)
            return candidate.flavour;
    }
    qFatal("CHARTS_TEST_GRAPHICS names no flavour of graphics: \"%s\"", name.constData());
}

bool isOpenGL()
{
    return graphicsApi() == QSGRendererInterface::OpenGL;
}

void setUp()
{
    QQuickWindow::setGraphicsApi(graphicsApi());
    if (!isOpenGL())
        return;

    QSurfaceFormat format;
    switch (flavour()) {
    case Flavour::Compatibility:
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setProfile(QSurfaceFormat::CompatibilityProfile);
        format.setOption(QSurfaceFormat::DeprecatedFunctions);
        format.setVersion(4, 5);
        break;
    case Flavour::Core:
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setProfile(QSurfaceFormat::CoreProfile);
        // Without it Qt asks for a forward-compatible context.
        format.setOption(QSurfaceFormat::DeprecatedFunctions);
        format.setVersion(3, 3);
        break;
    default:
        format.setRenderableType(QSurfaceFormat::OpenGLES);
        format.setVersion(flavour() == Flavour::Es2 ? 2 : 3, 0);
        break;
    }
    QSurfaceFormat::setDefaultFormat(format);
}

QString verify(const QQuickWindow &window)
{
    if (window.rendererInterface()->graphicsApi() != graphicsApi())
        return QStringLiteral("the scene graph uses another graphics API");
    return isOpenGL() ? verifyContext(QOpenGLContext::currentContext()) : QString();
}

} // namespace Graphics
