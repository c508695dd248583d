// SPDX-License-Identifier: MIT
#include "GlCounters.h"

#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>

namespace {

using Procedure = void (*)();

// Not defined by the OpenGL ES 2 headers.
constexpr GLenum maxSamples = 0x8D57;
constexpr GLenum renderbufferSamples = 0x8CAB;

struct Sums
{
    std::atomic<qint64> drawCalls = 0;
    std::atomic<qint64> uploadedBytes = 0;
    std::atomic<qint64> allocatedBytes = 0;
    std::atomic<qint64> passes = 0;
    std::atomic<qint64> readBacks = 0;
    std::atomic<qint64> textureBytes = 0;
};

Sums sums;
std::atomic<int> sampleCount = 0;

void add(std::atomic<qint64> &counter, qint64 value)
{
    counter.fetch_add(value, std::memory_order_relaxed);
}

/*! The wrapper of one function: the driver's own, then what \a observe makes of the arguments. */
template<auto observe, typename... Arguments>
struct Wrapper
{
    using Pointer = void(QOPENGLF_APIENTRY *)(Arguments...);
    static inline std::atomic<Pointer> real = nullptr;

    static void QOPENGLF_APIENTRY call(Arguments... arguments)
    {
        real.load(std::memory_order_relaxed)(arguments...);
        observe(arguments...);
    }

    static Procedure wrap(Procedure procedure)
    {
        real = reinterpret_cast<Pointer>(procedure);
        return reinterpret_cast<Procedure>(&call);
    }
};

constexpr auto countDraw = [](auto...) { add(sums.drawCalls, 1); };
// Another type for another function: wrappers are told apart by it.
constexpr auto countElementsDraw = [](auto...) { add(sums.drawCalls, 1); };
constexpr auto countPass = [](GLbitfield) { add(sums.passes, 1); };
constexpr auto countReadBack = [](auto...) { add(sums.readBacks, 1); };
constexpr auto countUpload = [](GLenum, GLintptr, GLsizeiptr bytes, const void *) {
    add(sums.uploadedBytes, bytes);
};
constexpr auto countAllocation = [](GLenum, GLsizeiptr bytes, const void *data, GLenum) {
    add(data ? sums.uploadedBytes : sums.allocatedBytes, bytes);
};
qint64 textureSize(GLsizei width, GLsizei height, GLenum format)
{
    const bool isOneChannel = format == GL_RED || format == GL_ALPHA;
    return qint64{width} * height * (isOneChannel ? 1 : 4);
}

constexpr auto countTexture = [](GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint,
                                      GLenum format, GLenum, const void *data) {
    add(sums.textureBytes, data ? textureSize(width, height, format) : 0);
};
constexpr auto countTexturePart = [](GLenum, GLint, GLint, GLint, GLsizei width, GLsizei height,
                                          GLenum format, GLenum, const void *) {
    add(sums.textureBytes, textureSize(width, height, format));
};
// Asked for, a driver may grant others.
constexpr auto noteSamples = [](GLenum target, GLsizei, GLenum, GLsizei, GLsizei) {
    GLint granted = 0;
    QOpenGLContext::currentContext()->functions()->glGetRenderbufferParameteriv(
            target, renderbufferSamples, &granted);
    sampleCount = granted;
};
// All programs draw with equally many: one of those compared never asks for more.
constexpr auto limitSamples = [](GLenum name, GLint *value) {
    if (name == maxSamples)
        *value = std::min(*value, GlCounters::mostSamples);
};

struct Entry
{
    std::string_view name;
    Procedure (*wrap)(Procedure);
};

constexpr std::array entries = {
        Entry{"glDrawArrays", &Wrapper<countDraw, GLenum, GLint, GLsizei>::wrap},
        Entry{"glDrawElements",
                &Wrapper<countElementsDraw, GLenum, GLsizei, GLenum, const void *>::wrap},
        Entry{"glClear", &Wrapper<countPass, GLbitfield>::wrap},
        Entry{"glReadPixels", &Wrapper<countReadBack, GLint, GLint, GLsizei, GLsizei, GLenum,
                                      GLenum, void *>::wrap},
        Entry{"glBufferSubData",
                &Wrapper<countUpload, GLenum, GLintptr, GLsizeiptr, const void *>::wrap},
        Entry{"glBufferData",
                &Wrapper<countAllocation, GLenum, GLsizeiptr, const void *, GLenum>::wrap},
        Entry{"glTexImage2D", &Wrapper<countTexture, GLenum, GLint, GLint, GLsizei, GLsizei, GLint,
                                      GLenum, GLenum, const void *>::wrap},
        Entry{"glTexSubImage2D", &Wrapper<countTexturePart, GLenum, GLint, GLint, GLint, GLsizei,
                                         GLsizei, GLenum, GLenum, const void *>::wrap},
        Entry{"glGetIntegerv", &Wrapper<limitSamples, GLenum, GLint *>::wrap},
        Entry{"glRenderbufferStorageMultisample",
                &Wrapper<noteSamples, GLenum, GLsizei, GLenum, GLsizei, GLsizei>::wrap},
};

using LookUp = Procedure (*)(const char *);

Procedure lookUp(LookUp real, const char *name)
{
    const Procedure procedure = real(name);
    for (const Entry &entry : entries) {
        if (procedure && entry.name == name)
            return entry.wrap(procedure);
    }
    return procedure;
}

LookUp nextOf(const char *name)
{
    return reinterpret_cast<LookUp>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) Procedure glXGetProcAddressARB(const char *name)
{
    static const LookUp real = nextOf("glXGetProcAddressARB");
    return lookUp(real, name);
}

__attribute__((visibility("default"))) Procedure glXGetProcAddress(const char *name)
{
    static const LookUp real = nextOf("glXGetProcAddress");
    return lookUp(real, name);
}

__attribute__((visibility("default"))) Procedure eglGetProcAddress(const char *name)
{
    static const LookUp real = nextOf("eglGetProcAddress");
    return lookUp(real, name);
}
}

GlCounters GlCounters::now()
{
    return {sums.drawCalls, sums.uploadedBytes, sums.allocatedBytes, sums.passes, sums.readBacks,
            sums.textureBytes};
}

int GlCounters::samples()
{
    return sampleCount;
}

GlCounters &GlCounters::operator+=(const GlCounters &other)
{
    drawCalls += other.drawCalls;
    uploadedBytes += other.uploadedBytes;
    allocatedBytes += other.allocatedBytes;
    passes += other.passes;
    readBacks += other.readBacks;
    textureBytes += other.textureBytes;
    return *this;
}

GlCounters GlCounters::operator-(const GlCounters &other) const
{
    return {drawCalls - other.drawCalls, uploadedBytes - other.uploadedBytes,
            allocatedBytes - other.allocatedBytes, passes - other.passes,
            readBacks - other.readBacks, textureBytes - other.textureBytes};
}

QJsonObject GlCounters::perFrame(int frames) const
{
    const auto each = [frames](qint64 count) { return static_cast<double>(count) / frames; };
    return {
            {QStringLiteral("draw_calls"), each(drawCalls)},
            {QStringLiteral("uploaded_bytes"), each(uploadedBytes)},
            {QStringLiteral("allocated_bytes"), each(allocatedBytes)},
            {QStringLiteral("passes"), each(passes)},
            {QStringLiteral("read_backs"), each(readBacks)},
    };
}
