// SPDX-License-Identifier: MIT
#include "DriverFaults.h"

#include "GlProbe.h"

#include <QtGui/qopengl.h>

#include <array>
#include <atomic>
#include <string_view>
#include <utility>

namespace DriverFaults {

namespace {

// Not defined by the OpenGL ES headers.
constexpr GLenum glMaxSamples = 0x8D57;
constexpr GLenum glFramebufferUnsupported = 0x8CDD;

std::atomic<Multisampling> multisampling = Multisampling::Granted;
std::atomic<int> largestTexture = 0;
std::atomic<bool> areFramebuffersRefused = false;
std::atomic<bool> areShadersRefused = false;
std::atomic<int> links = 0;
std::atomic<int> framebufferChecks = 0;
thread_local bool isMultisampled = false;

/*! The driver's own function behind \a substitute. */
template<auto substitute>
struct Real;

template<typename Result, typename... Arguments,
        Result(QOPENGLF_APIENTRY *substitute)(Arguments...)>
struct Real<substitute>
{
    static inline std::atomic<Result(QOPENGLF_APIENTRY *)(Arguments...)> function = nullptr;
};

template<auto substitute>
GlProbe::Procedure replace(GlProbe::Procedure driversOwn)
{
    auto &function = Real<substitute>::function;
    function = reinterpret_cast<decltype(function.load())>(driversOwn);
    return reinterpret_cast<GlProbe::Procedure>(substitute);
}

void QOPENGLF_APIENTRY getIntegers(GLenum name, GLint *values)
{
    Real<&getIntegers>::function.load()(name, values);
    if (!GlProbe::isInSection())
        return;
    if (name == glMaxSamples && multisampling == Multisampling::NoSamples)
        *values = 0;
    if (name == GL_MAX_TEXTURE_SIZE && largestTexture > 0)
        *values = largestTexture;
}

void QOPENGLF_APIENTRY storeMultisampled(
        GLenum target, GLsizei samples, GLenum format, GLsizei width, GLsizei height)
{
    isMultisampled = samples > 0;
    // More than any driver has: an error, and no image.
    if (GlProbe::isInSection() && samples > 0 && multisampling == Multisampling::NoStorage)
        samples = 1 << 20;
    Real<&storeMultisampled>::function.load()(target, samples, format, width, height);
}

GLenum QOPENGLF_APIENTRY checkFramebuffer(GLenum target)
{
    if (GlProbe::isInSection()) {
        ++framebufferChecks;
        if (areFramebuffersRefused)
            return glFramebufferUnsupported;
        // Qt asks about the image that it has just made.
        if (std::exchange(isMultisampled, false) && multisampling == Multisampling::Unsupported)
            return glFramebufferUnsupported;
    }
    return Real<&checkFramebuffer>::function.load()(target);
}

void QOPENGLF_APIENTRY setShaderSource(
        GLuint shader, GLsizei count, const char *const *texts, const GLint *lengths)
{
    static constexpr std::array<const char *, 1> nonsense = {"no shader at all"};
    if (GlProbe::isInSection() && areShadersRefused)
        Real<&setShaderSource>::function.load()(shader, 1, nonsense.data(), nullptr);
    else
        Real<&setShaderSource>::function.load()(shader, count, texts, lengths);
}

void QOPENGLF_APIENTRY linkProgram(GLuint program)
{
    if (GlProbe::isInSection())
        ++links;
    Real<&linkProgram>::function.load()(program);
}

const GLubyte *QOPENGLF_APIENTRY noExtensions(GLenum name)
{
    if (name == GL_EXTENSIONS)
        return reinterpret_cast<const GLubyte *>("");
    return Real<&noExtensions>::function.load()(name);
}

GlProbe::Procedure faulty(std::string_view name, GlProbe::Procedure driversOwn)
{
    if (!driversOwn)
        return nullptr;
    if (name == "glGetIntegerv")
        return replace<&getIntegers>(driversOwn);
    if (name == "glRenderbufferStorageMultisample")
        return replace<&storeMultisampled>(driversOwn);
    if (name == "glCheckFramebufferStatus")
        return replace<&checkFramebuffer>(driversOwn);
    if (name == "glShaderSource")
        return replace<&setShaderSource>(driversOwn);
    if (name == "glLinkProgram")
        return replace<&linkProgram>(driversOwn);
    return driversOwn;
}

GlProbe::Procedure bareAndFaulty(std::string_view name, GlProbe::Procedure driversOwn)
{
    // Whatever ending the vendors' forms have.
    for (const std::string_view missing :
            {"glRenderbufferStorageMultisample", "glFramebufferTexture2DMultisample",
                    "glBlitFramebuffer", "glGenVertexArrays", "glBindVertexArray",
                    "glDeleteVertexArrays", "glIsVertexArray", "glMapBuffer", "glGetStringi"}) {
        if (name.starts_with(missing))
            return nullptr;
    }
    if (driversOwn && name == "glGetString")
        return replace<&noExtensions>(driversOwn);
    return faulty(name, driversOwn);
}

} // namespace

void install(bool isBareEs2)
{
    GlProbe::setSubstitute(isBareEs2 ? &bareAndFaulty : &faulty);
}

void mend()
{
    multisampling = Multisampling::Granted;
    largestTexture = 0;
    areFramebuffersRefused = false;
    areShadersRefused = false;
}

void setMultisampling(Multisampling newMultisampling)
{
    multisampling = newMultisampling;
}

void setLargestTexture(int size)
{
    largestTexture = size;
}

void setFramebuffersRefused(bool areRefused)
{
    areFramebuffersRefused = areRefused;
}

void setShadersRefused(bool areRefused)
{
    areShadersRefused = areRefused;
}

int linkCount()
{
    return links;
}

int framebufferCheckCount()
{
    return framebufferChecks;
}

} // namespace DriverFaults
