// SPDX-License-Identifier: MIT
#include "SourceRules.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/*!
    What each folder of src may include, besides itself:

                module
              /        \
          grids         curves
          |    \       /    |
          |     chart       |
          |       |         |
          |     render      |
          |       |         |
        nodes   traces    nodes
                  |
                domain
*/
const QMap<QString, QStringList> allowedArrows{
        {u"domain"_s, {}},
        {u"traces"_s, {u"domain"_s}},
        {u"render"_s, {u"traces"_s, u"domain"_s}},
        {u"chart"_s, {u"render"_s, u"traces"_s, u"domain"_s}},
        {u"nodes"_s, {}},
        {u"grids"_s, {u"chart"_s, u"nodes"_s, u"traces"_s, u"domain"_s}},
        {u"curves"_s, {u"chart"_s, u"nodes"_s, u"traces"_s, u"domain"_s}},
        {u"module"_s, {u"grids"_s, u"curves"_s, u"chart"_s, u"render"_s, u"nodes"_s, u"traces"_s,
                              u"domain"_s}},
};

bool isHeader(const QString &path)
{
    static const QRegularExpression header(u"\\.(h|hpp|hxx|inl)(\\.in)?$"_s);
    return path.contains(header);
}

bool isCpp(const QString &path)
{
    static const QRegularExpression source(u"\\.(cpp|cxx|cc)(\\.in)?$"_s);
    return isHeader(path) || path.contains(source);
}

bool isCMake(const QString &path)
{
    return path.endsWith(u"CMakeLists.txt"_s) || path.contains(u".cmake"_s);
}

bool hasNoComments(const QString &path)
{
    // The text of qmldir is fixed, the others' formats have no room.
    static const QRegularExpression names(u"(^|/)qmldir$|\\.(json|png|jpe?g|svg|webp|ico)$"_s);
    return path.contains(names);
}

/*! The folder of src that \a path stands in, or nothing. */
QString sourceFolder(const QString &path)
{
    const QStringList parts = path.split(u'/');
    return parts.size() > 2 && parts.first() == u"src"_s ? parts.at(1) : QString();
}

} // namespace

SourceRules::SourceRules(const QString &root)
{
    const QDir rootFolder(root);
    QStringList paths = rootFolder.entryList({u"CMakeLists.txt"_s}, QDir::Files);
    for (const QString &folder : {u"src"_s, u"resources"_s, u"toolkit"_s, u"examples"_s, u"tests"_s,
                 u"benchmarks"_s, u"cmake"_s, u"scripts"_s}) {
        QDirIterator walk(rootFolder.filePath(folder), QDir::Files | QDir::Hidden,
                QDirIterator::Subdirectories);
        while (walk.hasNext())
            paths += rootFolder.relativeFilePath(walk.next());
    }
    paths.sort();
    for (const QString &path : paths) {
        if (path.contains(u"/__pycache__/"_s))
            continue;
        QFile file(rootFolder.filePath(path));
        if (file.open(QIODevice::ReadOnly))
            m_files += {path, QString::fromUtf8(file.readAll())};
    }
}

QStringList SourceRules::files() const
{
    QStringList paths;
    for (const File &file : m_files)
        paths += file.path;
    return paths;
}

QList<SourceRules::Include> SourceRules::includesOf(const File &file)
{
    static const QRegularExpression line(
            u"^[ \\t]*#[ \\t]*include(?:_next)?[ \\t]*([<\"])([^>\"\\n]+)[>\"]"_s,
            QRegularExpression::MultilineOption);
    QList<Include> includes;
    auto match = line.globalMatch(file.text);
    while (match.hasNext()) {
        const auto found = match.next();
        includes += {found.captured(2), found.captured(1) == u"\""_s};
    }
    return includes;
}

QString SourceRules::folderOf(const Include &include) const
{
    if (!include.isQuoted && !include.path.startsWith(u"ChartsLibrary/"_s))
        return {};
    const QString end = u'/' + include.path.section(u'/', -1);
    for (const File &file : m_files) {
        if (file.path.endsWith(end) && !sourceFolder(file.path).isEmpty())
            return sourceFolder(file.path);
    }
    return {};
}

int SourceRules::includeCount() const
{
    int count = 0;
    for (const File &file : m_files) {
        if (sourceFolder(file.path).isEmpty())
            continue;
        const QList<Include> includes = includesOf(file);
        count += static_cast<int>(std::count_if(includes.cbegin(), includes.cend(),
                [this](const Include &include) { return !folderOf(include).isEmpty(); }));
    }
    return count;
}

QStringList SourceRules::forbiddenArrows() const
{
    // Made by the build.
    static const QRegularExpression generated(u"^ChartsExport\\.h$|\\.moc$|^moc_\\w+\\.cpp$"_s);
    QStringList found;
    for (const File &file : m_files) {
        if (!isCpp(file.path) || !file.path.startsWith(u"src/"_s))
            continue;
        const QString folder = sourceFolder(file.path);
        if (!allowedArrows.contains(folder)) {
            found += u"%1: stands in no folder of the picture"_s.arg(file.path);
            continue;
        }
        const QList<Include> includes = includesOf(file);
        for (const Include &include : includes) {
            const QString target = folderOf(include);
            if (target.isEmpty()) {
                if (include.isQuoted && !include.path.contains(generated))
                    found += u"%1: includes the unknown \"%2\""_s.arg(file.path, include.path);
            } else if (target != folder && !allowedArrows.value(folder).contains(target)) {
                found += u"%1: includes %2 of %3"_s.arg(file.path, include.path, target);
            }
        }
    }
    return found;
}

QStringList SourceRules::repeatedNames() const
{
    QMap<QString, QString> folders; // by the name in lower case
    QStringList found;
    for (const File &file : m_files) {
        if (!isCpp(file.path) || !file.path.startsWith(u"src/"_s))
            continue;
        const QFileInfo info(file.path);
        const QString name = info.completeBaseName().toLower();
        const QString folder = folders.value(name, info.path());
        if (folder != info.path())
            found += u"%1: the name is taken in %2"_s.arg(file.path, folder);
        folders.insert(name, folder);
    }
    return found;
}

QStringList SourceRules::privateQt() const
{
    static const QRegularExpression header(u"(^|/)(private|rhi|qpa)/|_p\\.h$"_s);
    static const QRegularExpression target(u"\\b(Qt\\w*::\\w+Private|"
                                           u"(Core|Gui|OpenGL|Qml|Quick|ShaderTools)Private)\\b"_s);
    QStringList found;
    for (const File &file : m_files) {
        if (isCpp(file.path)) {
            const QList<Include> includes = includesOf(file);
            for (const Include &include : includes) {
                if (include.path.contains(header))
                    found += u"%1: includes %2"_s.arg(file.path, include.path);
            }
        } else if (isCMake(file.path)) {
            const auto match = target.match(file.text);
            if (match.hasMatch())
                found += u"%1: names %2"_s.arg(file.path, match.captured());
        }
    }
    return found;
}

QStringList SourceRules::withoutLicence() const
{
    static const QRegularExpression licence(u"SPDX-License-Identifier: MIT\\b(?!-)"_s);
    QStringList found;
    for (const File &file : m_files) {
        if (hasNoComments(file.path))
            continue;
        const QString top = file.text.section(u'\n', 0, 2);
        if (!top.contains(licence))
            found += u"%1: names no licence"_s.arg(file.path);
    }
    return found;
}

QStringList SourceRules::usingNamespace() const
{
    static const QRegularExpression directive(
            u"^[ \\t]*using\\s+namespace\\b"_s, QRegularExpression::MultilineOption);
    QStringList found;
    for (const File &file : m_files) {
        if (isHeader(file.path) && file.text.contains(directive))
            found += u"%1: opens a namespace"_s.arg(file.path);
    }
    return found;
}
