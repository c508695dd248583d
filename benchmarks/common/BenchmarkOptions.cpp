// SPDX-License-Identifier: MIT
#include "BenchmarkOptions.h"

#include <QtCore/QCommandLineParser>
#include <QtGui/QSurfaceFormat>

#include <array>

namespace {

struct NamedMode
{
    const char *name;
    BenchmarkOptions::Mode mode;
};

constexpr std::array<NamedMode, 7> modes = {{
        {"idle", BenchmarkOptions::Mode::Idle},
        {"static", BenchmarkOptions::Mode::Static},
        {"append", BenchmarkOptions::Mode::Append},
        {"rewrite", BenchmarkOptions::Mode::Rewrite},
        {"pan", BenchmarkOptions::Mode::Pan},
        {"hover", BenchmarkOptions::Mode::Hover},
        {"grid", BenchmarkOptions::Mode::Grid},
}};

/*! Takes the values out of the parser one by one and remembers the first wrong one. */
class Reader
{
public:
    Reader(const QCommandLineParser &parser, QString &error)
        : m_parser(parser)
        , m_error(error)
    {
    }

    int number(const QString &name, int min, int max)
    {
        bool isNumber = false;
        const int value = text(name).toInt(&isNumber);
        if (!isNumber || value < min || value > max) {
            fail(name, QStringLiteral("a number from %1 to %2").arg(min).arg(max));
            return min;
        }
        return value;
    }

    QSize size(const QString &name)
    {
        const QStringList sides = text(name).split(QLatin1Char('x'));
        QSize size;
        if (sides.size() == 2)
            size = QSize(sides[0].toInt(), sides[1].toInt());
        if (size.width() < 1 || size.height() < 1 || size.width() > 8192 || size.height() > 8192) {
            fail(name, QStringLiteral("WIDTHxHEIGHT, each from 1 to 8192"));
            return {1, 1};
        }
        return size;
    }

    QString oneOf(const QString &name, const QStringList &values)
    {
        if (!values.contains(text(name)))
            fail(name, QStringLiteral("one of ") + values.join(QStringLiteral(", ")));
        return text(name);
    }

private:
    [[nodiscard]] QString text(const QString &name) const { return m_parser.value(name); }

    void fail(const QString &name, const QString &expected)
    {
        if (m_error.isEmpty()) {
            m_error = QStringLiteral("--%1 '%2': expected %3").arg(name, text(name), expected);
        }
    }

    const QCommandLineParser &m_parser;
    QString &m_error;
};

QStringList modeNames()
{
    QStringList names;
    for (const NamedMode &mode : modes)
        names.append(QLatin1String(mode.name));
    return names;
}

} // namespace

QString BenchmarkOptions::modeName() const
{
    for (const NamedMode &candidate : modes) {
        if (candidate.mode == mode)
            return QLatin1String(candidate.name);
    }
    Q_UNREACHABLE();
}

void BenchmarkOptions::addTo(QCommandLineParser &parser)
{
    const BenchmarkOptions defaults;
    const auto add = [&parser](const char *name, const char *description, const char *value,
                             const QString &defaultValue) {
        parser.addOption({QLatin1String(name), QLatin1String(description), QLatin1String(value),
                defaultValue});
    };
    add("points", "Points of each trace.", "N", QString::number(defaults.points));
    add("traces", "Number of traces.", "T", QString::number(defaults.traces));
    add("frames", "Frames to measure.", "F", QString::number(defaults.frames));
    add("blocks", "Blocks of frames; times are medians over them.", "B",
            QString::number(defaults.blocks));
    add("mode",
            "What changes from frame to frame: idle, static, append, rewrite, pan, hover or grid.",
            "MODE", defaults.modeName());
    add("size", "Size of the chart in pixels.", "WxH", QStringLiteral("800x600"));
    add("samples", "Whether the picture is multisampled: on or off.", "on|off",
            QStringLiteral("on"));
    add("gl", "OpenGL context: compat, core or es.", "GL", defaults.gl);
}

BenchmarkOptions BenchmarkOptions::read(const QCommandLineParser &parser, QString &error)
{
    constexpr int maxPoints = 100'000'000;
    constexpr int maxTraces = 100'000;
    constexpr int maxFrames = 1'000'000;

    Reader reader(parser, error);
    BenchmarkOptions options;
    options.points = reader.number(QStringLiteral("points"), 2, maxPoints);
    options.traces = reader.number(QStringLiteral("traces"), 0, maxTraces);
    options.frames = reader.number(QStringLiteral("frames"), 1, maxFrames);
    options.blocks = reader.number(QStringLiteral("blocks"), 1, maxFrames);
    options.size = reader.size(QStringLiteral("size"));
    const auto index = modeNames().indexOf(reader.oneOf(QStringLiteral("mode"), modeNames()));
    if (index >= 0)
        options.mode = modes[static_cast<std::size_t>(index)].mode;
    options.samples =
            reader.oneOf(QStringLiteral("samples"), {QStringLiteral("on"), QStringLiteral("off")})
            == QStringLiteral("on");
    options.gl = reader.oneOf(QStringLiteral("gl"),
            {QStringLiteral("compat"), QStringLiteral("core"), QStringLiteral("es")});

    if (!error.isEmpty())
        return options;
    if (options.blocks > options.frames)
        error = QStringLiteral("--blocks: there are fewer frames than blocks");
    else if (options.mode == Mode::Append && options.points < appendedPoints)
        error = QStringLiteral("--points: the ring takes %1 points a frame").arg(appendedPoints);
    else if (qint64{options.points} * options.traces > maxPoints)
        error = QStringLiteral("--points, --traces: more than %1 points in all").arg(maxPoints);
    return options;
}

void BenchmarkOptions::requestGraphics() const
{
    QSurfaceFormat format;
    format.setSwapInterval(0);
    if (gl == QStringLiteral("es")) {
        format.setRenderableType(QSurfaceFormat::OpenGLES);
        format.setVersion(3, 0);
    } else {
        format.setRenderableType(QSurfaceFormat::OpenGL);
        // Without it Qt asks for a forward-compatible context, which has no wide lines.
        format.setOption(QSurfaceFormat::DeprecatedFunctions);
        const bool isCore = gl == QStringLiteral("core");
        format.setProfile(
                isCore ? QSurfaceFormat::CoreProfile : QSurfaceFormat::CompatibilityProfile);
        format.setVersion(3, 3);
    }
    QSurfaceFormat::setDefaultFormat(format);
}
