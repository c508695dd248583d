// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>

// Everything that the gallery answers before it opens a window. There is no display here.
class tst_GalleryCommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void help_data();
    void help();
    void refusals_data();
    void refusals();
    void unknownPage_data();
    void unknownPage();
    void leavesNothingBehind();

private:
    [[nodiscard]] ProgramResult run(const QStringList &arguments) const;

    QTemporaryDir m_folder;
    QStringList m_files;
};

namespace {

const QString program = QStringLiteral(GALLERY);

/*! The pages' names, from the documents that they are written in. */
QStringList pageNames()
{
    QStringList names;
    const QStringList documents = QDir(QStringLiteral(GALLERY_SOURCES "/qml"))
                                          .entryList({QStringLiteral("*Page.qml")}, QDir::Files);
    for (const QString &document : documents)
        names.append(document.chopped(QStringLiteral("Page.qml").size()));
    return names;
}

/*! The names that stand in \a text behind \a introduction, sorted. */
QStringList namesBehind(const QString &introduction, const QString &text)
{
    const qsizetype start = text.indexOf(introduction);
    if (start < 0)
        return {};
    QString list = text.mid(start + introduction.size()).section(u'\n', 0, 0);
    list.remove(u'.');
    QStringList names = list.split(QStringLiteral(", "));
    names.sort();
    return names;
}

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

} // namespace

ProgramResult tst_GalleryCommandLine::run(const QStringList &arguments) const
{
    return runProgram(program, arguments, m_folder.path(), environmentWithoutDisplay());
}

void tst_GalleryCommandLine::initTestCase()
{
    QVERIFY(m_folder.isValid());
    const auto writeHere = [this](const char *name, const QByteArray &text) {
        write(m_folder.filePath(QString::fromUtf8(name)), text);
    };
    writeHere("good.csv", "time [s],value [V]\n0,1\n1,2\n");
    writeHere("bad.csv", "time [s],value [V]\n0,1\n1,2\n2,abc\n");
    writeHere("backwards.csv", "# made for a test\ntime,a,b\n0,1,2\n0.5,1,2\n0.25,1,2\n");
    writeHere("short row.csv", "time,a,b\n0,1,2\n1,2\n");
    writeHere("header.csv", "time,value\n");
    writeHere("empty.csv", "");
    writeHere("Ωmeter.csv", "time;value\n0;1e99\n");
    m_files = QDir(m_folder.path()).entryList();
}

void tst_GalleryCommandLine::help_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("--help") << QStringList{QStringLiteral("--help")};
    QTest::newRow("-h") << QStringList{QStringLiteral("-h")};
    QTest::newRow("with a page") << QStringList{
            QStringLiteral("--page"), QStringLiteral("signal"), QStringLiteral("--help")};
    // Someone who asks for help need not have got the rest right.
    QTest::newRow("with a missing file")
            << QStringList{QStringLiteral("no.csv"), QStringLiteral("--help")};
}

void tst_GalleryCommandLine::help()
{
    QFETCH(QStringList, arguments);
    const ProgramResult result = run(arguments);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.startsWith(QStringLiteral("Usage: ")));
    for (const QString &word : {QStringLiteral("--help"), QStringLiteral("--page <NAME>"),
                 QStringLiteral("--screenshot <DIR>"), QStringLiteral("--theme <THEME>"),
                 QStringLiteral("light, dark or system"), QStringLiteral("[FILE...]")})
        QVERIFY2(result.output.contains(word), qPrintable(word));
    QCOMPARE(namesBehind(QStringLiteral("Pages: "), result.output), pageNames());
}

void tst_GalleryCommandLine::refusals_data()
{
    QTest::addColumn<QString>("arguments"); // separated by |
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");

    const auto row = [](const char *name, const char *arguments, int exitCode,
                             const char *message) {
        QTest::newRow(name) << QString::fromUtf8(arguments) << exitCode
                            << QString::fromUtf8(message);
    };
    row("unknown option", "--bogus", 2, "Unknown option 'bogus'.");
    row("unknown option after a file", "good.csv|--bogus", 2, "Unknown option 'bogus'.");
    row("unknown short option", "-x", 2, "Unknown option 'x'.");
    row("two unknown options", "--one|--two", 2, "Unknown options: one, two.");
    row("value for --help", "--help=yes", 2, "Unexpected value after '--help'.");
    row("--page without a value", "--page", 2, "Missing value after '--page'.");
    row("--screenshot without a value", "--screenshot", 2, "Missing value after '--screenshot'.");
    row("empty screenshot folder", "--screenshot=", 2, "--screenshot needs a folder");

    row("--theme without a value", "--theme", 2, "Missing value after '--theme'.");
    for (const char *theme : {"", "blue", "dar", "dark, light", "system.csv"}) {
        QTest::addRow("theme '%s'", theme)
                << QStringLiteral("--theme=") + QString::fromUtf8(theme) << 2
                << QStringLiteral("unknown theme '%1', there are: light, dark, system")
                           .arg(QString::fromUtf8(theme));
    }
    // Known themes, in any letters: what is wrong is something else.
    row("light theme", "--theme|light|missing.csv", 2, "missing.csv: no such file");
    row("dark theme", "--theme=DARK|missing.csv", 2, "missing.csv: no such file");
    row("system theme", "--theme|System|missing.csv", 2, "missing.csv: no such file");

    row("missing file", "missing.csv", 2, "missing.csv: no such file");
    row("missing folder", "no/where.csv", 2, "no/where.csv: no such file");
    row("one of three files is missing", "good.csv|missing.csv|bad.csv", 2,
            "missing.csv: no such file");
    row("missing file that looks like an option", "--|--page", 2, "--page: no such file");
    row("missing file with a name from afar", "μ Größe.csv", 2, "μ Größe.csv: no such file");
    row("empty name", "--|", 2, ": no such file");
    row("line feed in a name", "two\nlines.csv", 2, "two\\nlines.csv: no such file");

    row("a folder", ".", 2, ".: cannot open: Is a directory");
    row("not a number", "bad.csv", 2, "bad.csv:4:2: value \"abc\" is not a number");
    row("not a number, in the second file", "good.csv|bad.csv", 2,
            "bad.csv:4:2: value \"abc\" is not a number");
    row("time runs backwards", "backwards.csv", 2,
            "backwards.csv:5:1: time \"0.25\" is not after the time before it, 0.5");
    row("a field is missing", "short row.csv", 2,
            "short row.csv:3: 2 fields where the header has 3");
    row("only a header", "header.csv", 2, "header.csv: no rows of data after the header");
    row("empty file", "empty.csv", 2, "empty.csv: file is empty");
    row("number too large", "Ωmeter.csv", 2, "Ωmeter.csv:2:2: value \"1e99\" is out of range");
    row("bad file, page Live", "--page|Live|bad.csv", 2,
            "bad.csv:4:2: value \"abc\" is not a number");

    // Said at once and not after the pages have been shown.
    row("screenshots into a file", "--screenshot|good.csv", 1,
            "good.csv: cannot create the folder");
    row("screenshots below a file", "--screenshot|good.csv/shots", 1,
            "good.csv/shots: cannot create the folder");
    row("screenshots into the kernel's folder", "--screenshot|/proc/shots", 1,
            "/proc/shots: cannot create the folder");
}

void tst_GalleryCommandLine::refusals()
{
    QFETCH(QString, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, message);

    const ProgramResult result = run(arguments.split(u'|'));
    QCOMPARE(result.errors, QStringLiteral("gallery: %1\n").arg(message));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, exitCode);
}

void tst_GalleryCommandLine::unknownPage_data()
{
    QTest::addColumn<QString>("page");
    QTest::newRow("no such page") << QStringLiteral("Nowhere");
    QTest::newRow("empty") << QString();
    QTest::newRow("a part of a name") << QStringLiteral("Liv");
    QTest::newRow("a document's name") << QStringLiteral("LivePage");
    QTest::newRow("two names") << QStringLiteral("Live, Signal");
    QTest::newRow("another document") << QStringLiteral("../Main");
}

void tst_GalleryCommandLine::unknownPage()
{
    QFETCH(QString, page);
    const ProgramResult result = run({QStringLiteral("--page=") + page});
    const QString introduction =
            QStringLiteral("gallery: unknown page '%1', there are: ").arg(page);
    QVERIFY2(result.errors.startsWith(introduction), qPrintable(result.errors));
    QCOMPARE(result.errors.count(u'\n'), 1);
    QVERIFY(result.errors.endsWith(u'\n'));
    QCOMPARE(namesBehind(introduction, result.errors), pageNames());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
}

void tst_GalleryCommandLine::leavesNothingBehind()
{
    QCOMPARE(QDir(m_folder.path()).entryList(), m_files);
}

QTEST_GUILESS_MAIN(tst_GalleryCommandLine)

#include "tst_gallerycommandline.moc"
