// SPDX-License-Identifier: MIT
#include "GlProbe.h"

#include <QtGui/QOpenGLContext>
#include <QtGui/qopengl.h>

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <mutex>
#include <set>
#include <tuple>
#include <utility>

namespace {

using GlProbe::Procedure;

// --- What is kept

struct State
{
    std::mutex mutex;
    GlProbe::Totals totals;
    QStringList errors;
    // Names are unique within a share group.
    std::set<std::tuple<QOpenGLContextGroup *, std::string_view, GLuint>> objects;
    int objectsMade = 0;
    bool isLogging = false;
    std::vector<GlProbe::Call> log;
};

State &state()
{
    static State instance;
    return instance;
}

std::atomic<bool> checksErrors = true;
std::atomic<GLenum (*)()> realGetError = nullptr;
std::atomic<GlProbe::Substitute> substitute = nullptr;
thread_local bool inSection = false;

void addToTotals(const GlProbe::Call &call)
{
    GlProbe::Totals &totals = state().totals;
    const auto integer = [&call](std::size_t index) {
        return static_cast<std::int64_t>(call.argument(index));
    };
    if (call.function == "glDrawArrays") {
        ++totals.drawCalls;
        totals.drawnVertices += integer(2);
    } else if (call.function == "glBufferSubData") {
        ++totals.uploads;
        totals.uploadedBytes += integer(2);
    } else if (call.function == "glBufferData") {
        ++totals.allocations;
        totals.allocatedBytes += integer(1);
    } else if (call.function == "glClear") {
        ++totals.clears;
    } else if (call.function == "glBlitFramebuffer") {
        ++totals.blits;
    }
}

void noteError(std::string_view function)
{
    GLenum (*getError)() = realGetError.load();
    if (!getError || !checksErrors)
        return;
    // A lost context would report errors for ever.
    for (int i = 0; i < 16; ++i) {
        const GLenum error = getError();
        if (error == GL_NO_ERROR)
            return;
        const std::lock_guard lock(state().mutex);
        state().errors.append(QStringLiteral("0x%1 at or before %2")
                                      .arg(error, 4, 16, QLatin1Char('0'))
                                      .arg(QLatin1StringView(function.data(),
                                              static_cast<qsizetype>(function.size()))));
    }
}

void note(const GlProbe::Call &call)
{
    const std::lock_guard lock(state().mutex);
    if (call.inSection)
        addToTotals(call);
    if (state().isLogging)
        state().log.push_back(call);
}

void noteObject(std::string_view kind, GLuint name, bool isMade)
{
    if (name == 0)
        return;
    const QOpenGLContext *context = QOpenGLContext::currentContext();
    const std::lock_guard lock(state().mutex);
    const auto key = std::make_tuple(context ? context->shareGroup() : nullptr, kind, name);
    if (!isMade) {
        state().objects.erase(key);
    } else if (inSection) {
        state().objects.insert(key);
        ++state().objectsMade;
    }
}

// --- The wrappers

/*! A string literal as a template argument. */
template<std::size_t Size>
struct Name
{
    constexpr Name(const char (&text)[Size]) { std::copy_n(text, Size, characters); }
    constexpr operator std::string_view() const { return {characters, Size - 1}; }
    char characters[Size] = {};
};

template<typename Argument>
double toNumber(Argument argument)
{
    if constexpr (std::is_pointer_v<Argument>)
        return 0.0;
    else
        return static_cast<double>(argument);
}

/*! The one wrapper of all functions: \a Function, with what \a observe does with its arguments and
    result. */
template<Name Function, typename Signature, auto observe>
struct Wrapper;

template<Name Function, typename Result, typename... Arguments, auto observe>
struct Wrapper<Function, Result(Arguments...), observe>
{
    using Pointer = Result(QOPENGLF_APIENTRY *)(Arguments...);
    static inline std::atomic<Pointer> real = nullptr;

    static Result QOPENGLF_APIENTRY call(Arguments... arguments)
    {
        note({Function, inSection, {toNumber(arguments)...}});
        if constexpr (std::is_void_v<Result>) {
            real.load()(arguments...);
            observe(arguments...);
            if (inSection)
                noteError(Function);
        } else {
            const Result result = real.load()(arguments...);
            observe(result, arguments...);
            if (inSection)
                noteError(Function);
            return result;
        }
    }

    static Procedure wrap(Procedure procedure)
    {
        real = reinterpret_cast<Pointer>(procedure);
        return reinterpret_cast<Procedure>(&call);
    }
};

constexpr auto nothing = [](auto...) {};

template<Name Kind>
constexpr auto made = [](GLsizei count, const GLuint *names) {
    for (GLsizei i = 0; i < count; ++i)
        noteObject(Kind, names[i], true);
};
template<Name Kind>
constexpr auto deleted = [](GLsizei count, const GLuint *names) {
    for (GLsizei i = 0; i < count; ++i)
        noteObject(Kind, names[i], false);
};
template<Name Kind>
constexpr auto madeOne = [](GLuint name, auto...) { noteObject(Kind, name, true); };
template<Name Kind>
constexpr auto deletedOne = [](GLuint name) { noteObject(Kind, name, false); };

struct Entry
{
    std::string_view name;
    Procedure (*wrap)(Procedure);
};

template<Name Function, typename Signature, auto observe = nothing>
constexpr Entry entry()
{
    return {Function, &Wrapper<Function, Signature, observe>::wrap};
}

using Make = void(GLsizei, GLuint *);
using Delete = void(GLsizei, const GLuint *);
using Draw = void(GLenum, GLint, GLsizei);
using Rectangle = void(GLint, GLint, GLsizei, GLsizei);

constexpr Entry entries[] = {
        entry<"glDrawArrays", Draw>(),
        entry<"glDrawElements", void(GLenum, GLsizei, GLenum, const void *)>(),
        entry<"glClear", void(GLbitfield)>(),
        entry<"glViewport", Rectangle>(),
        entry<"glLineWidth", void(GLfloat)>(),
        entry<"glUseProgram", void(GLuint)>(),
        entry<"glVertexAttribPointer",
                void(GLuint, GLint, GLenum, GLboolean, GLsizei, const void *)>(),
        entry<"glEnableVertexAttribArray", void(GLuint)>(),
        entry<"glEnable", void(GLenum)>(),

        entry<"glBindBuffer", void(GLenum, GLuint)>(),
        entry<"glBufferData", void(GLenum, GLsizeiptr, const void *, GLenum)>(),
        entry<"glBufferSubData", void(GLenum, GLintptr, GLsizeiptr, const void *)>(),
        entry<"glMapBuffer", void *(GLenum, GLenum)>(),
        entry<"glMapBufferRange", void *(GLenum, GLintptr, GLsizeiptr, GLbitfield)>(),

        entry<"glBindFramebuffer", void(GLenum, GLuint)>(),
        entry<"glBlitFramebuffer",
                void(GLint, GLint, GLint, GLint, GLint, GLint, GLint, GLint, GLbitfield, GLenum)>(),
        entry<"glReadPixels", void(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void *)>(),
        entry<"glRenderbufferStorage", void(GLenum, GLenum, GLsizei, GLsizei)>(),
        entry<"glRenderbufferStorageMultisample",
                void(GLenum, GLsizei, GLenum, GLsizei, GLsizei)>(),
        entry<"glTexImage2D", void(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum,
                                      const void *)>(),

        entry<"glGenFramebuffers", Make, made<"framebuffer">>(),
        entry<"glDeleteFramebuffers", Delete, deleted<"framebuffer">>(),
        entry<"glGenRenderbuffers", Make, made<"renderbuffer">>(),
        entry<"glDeleteRenderbuffers", Delete, deleted<"renderbuffer">>(),
        entry<"glGenTextures", Make, made<"texture">>(),
        entry<"glDeleteTextures", Delete, deleted<"texture">>(),
        entry<"glGenBuffers", Make, made<"buffer">>(),
        entry<"glDeleteBuffers", Delete, deleted<"buffer">>(),
        entry<"glGenVertexArrays", Make, made<"vertex array">>(),
        entry<"glDeleteVertexArrays", Delete, deleted<"vertex array">>(),
        entry<"glCreateShader", GLuint(GLenum), madeOne<"shader">>(),
        entry<"glDeleteShader", void(GLuint), deletedOne<"shader">>(),
        entry<"glCreateProgram", GLuint(), madeOne<"program">>(),
        entry<"glDeleteProgram", void(GLuint), deletedOne<"program">>(),
};

// --- The look-up functions

using Lookup = Procedure (*)(const unsigned char *);

Procedure lookUp(Lookup real, const unsigned char *name)
{
    if (!realGetError) {
        realGetError = reinterpret_cast<GLenum (*)()>(
                real(reinterpret_cast<const unsigned char *>("glGetError")));
    }
    const std::string_view wanted(reinterpret_cast<const char *>(name));
    const GlProbe::Substitute instead = substitute;
    const Procedure procedure = instead ? instead(wanted, real(name)) : real(name);
    const auto *known = std::find_if(std::begin(entries), std::end(entries),
            [wanted](const Entry &candidate) { return candidate.name == wanted; });
    return procedure && known != std::end(entries) ? known->wrap(procedure) : procedure;
}

Lookup nextOf(const char *name)
{
    return reinterpret_cast<Lookup>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) Procedure glXGetProcAddressARB(const unsigned char *name)
{
    static const Lookup real = nextOf("glXGetProcAddressARB");
    return lookUp(real, name);
}

__attribute__((visibility("default"))) Procedure glXGetProcAddress(const unsigned char *name)
{
    static const Lookup real = nextOf("glXGetProcAddress");
    return lookUp(real, name);
}

__attribute__((visibility("default"))) Procedure eglGetProcAddress(const char *name)
{
    static const Lookup real = nextOf("eglGetProcAddress");
    return lookUp(real, reinterpret_cast<const unsigned char *>(name));
}
}

// --- The interface

namespace GlProbe {

void beginSection()
{
    // What is pending has been raised by someone else.
    GLenum (*getError)() = realGetError.load();
    for (int i = 0; getError && checksErrors && i < 16 && getError() != GL_NO_ERROR; ++i) {
    }
    inSection = true;
}

void endSection()
{
    noteError("the end of the synchronisation");
    inSection = false;
}

bool isInSection()
{
    return inSection;
}

void setSubstitute(Substitute newSubstitute)
{
    substitute = newSubstitute;
}

Totals totals()
{
    const std::lock_guard lock(state().mutex);
    return state().totals;
}

QStringList takeErrors()
{
    const std::lock_guard lock(state().mutex);
    return std::exchange(state().errors, {});
}

void setErrorChecks(bool enabled)
{
    checksErrors = enabled;
}

QStringList liveObjects()
{
    const std::lock_guard lock(state().mutex);
    QStringList names;
    for (const auto &key : state().objects) {
        const std::string_view kind = std::get<1>(key);
        names.append(QString::fromLatin1(kind.data(), static_cast<qsizetype>(kind.size()))
                     + QLatin1Char(' ') + QString::number(std::get<2>(key)));
    }
    names.sort();
    return names;
}

int objectsMade()
{
    const std::lock_guard lock(state().mutex);
    return state().objectsMade;
}

Log::Log()
{
    const std::lock_guard lock(state().mutex);
    Q_ASSERT(!state().isLogging);
    state().isLogging = true;
}

Log::~Log()
{
    const std::lock_guard lock(state().mutex);
    state().isLogging = false;
    state().log.clear();
}

std::vector<Call> Log::calls(std::string_view function) const
{
    const std::lock_guard lock(state().mutex);
    std::vector<Call> found;
    std::copy_if(state().log.begin(), state().log.end(), std::back_inserter(found),
            [function](const Call &call) { return call.inSection && call.function == function; });
    return found;
}

std::vector<Call> Log::everything() const
{
    const std::lock_guard lock(state().mutex);
    return state().log;
}

void Log::clear()
{
    const std::lock_guard lock(state().mutex);
    state().log.clear();
}

} // namespace GlProbe
