// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

// The scripts' answers to a wrong call. Whatever they would install or build with stands first in
// the search path as a dummy that leaves a mark: none may be called.
class tst_Scripts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void help_data();
    void help();
    void refusals_data();
    void refusals();
    void unknownPage();

private:
    [[nodiscard]] ProgramResult run(const QString &script, const QStringList &arguments) const;

    QTemporaryDir m_folder;
};

namespace {

const QString scripts = QStringLiteral(SCRIPTS);

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

} // namespace

ProgramResult tst_Scripts::run(const QString &script, const QStringList &arguments) const
{
    QProcessEnvironment environment = environmentWithoutDisplay();
    environment.insert(QStringLiteral("PATH"),
            m_folder.filePath(QStringLiteral("bin:")) + environment.value(QStringLiteral("PATH")));
    return runProgram(QDir(scripts).filePath(script), arguments, m_folder.path(), environment);
}

void tst_Scripts::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("bin")));
    for (const char *name : {"apt-get", "dpkg-query", "sudo", "cmake", "cpack", "ctest", "ninja",
                 "ccache", "xvfb-run", "mktemp", "gcovr", "debootstrap", "unshare", "chroot"}) {
        QFile dummy(m_folder.filePath(QStringLiteral("bin/") + QString::fromUtf8(name)));
        QVERIFY(dummy.open(QIODevice::WriteOnly));
        dummy.write(
                "#!/bin/sh\necho \"$0 $*\" >>'" + m_folder.path().toUtf8() + "/called'\nexit 1\n");
        QVERIFY(dummy.setPermissions(dummy.permissions() | QFile::ExeOwner));
    }
    QFile table(m_folder.filePath(QStringLiteral("good.csv")));
    QVERIFY(table.open(QIODevice::WriteOnly));
    table.write("time,value\n0,1\n1,2\n");
}

void tst_Scripts::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Scripts::cleanup()
{
    QFile called(m_folder.filePath(QStringLiteral("called")));
    if (called.open(QIODevice::ReadOnly))
        QFAIL(called.readAll().constData());
}

void tst_Scripts::help_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("named");

    for (const char *option : {"--help", "-h"}) {
        QTest::addRow("demo.sh %s", option)
                << QStringLiteral("demo.sh") << QString::fromUtf8(option)
                << pageNames().join(QStringLiteral(", "));
        QTest::addRow("test.sh %s", option)
                << QStringLiteral("test.sh") << QString::fromUtf8(option)
                << QStringLiteral("dev (default), release, asan, tsan or coverage");
        QTest::addRow("package.sh %s", option)
                << QStringLiteral("package.sh") << QString::fromUtf8(option)
                << QStringLiteral("build/packages");
        QTest::addRow("check-root.sh %s", option)
                << QStringLiteral("check-root.sh") << QString::fromUtf8(option)
                << QStringLiteral("(bookworm, trixie)");
    }
}

void tst_Scripts::help()
{
    QFETCH(QString, script);
    QFETCH(QString, option);
    QFETCH(QString, named);

    const ProgramResult result = run(script, {option});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.startsWith(QStringLiteral("Usage: scripts/") + script));
    QVERIFY(result.output.contains(QStringLiteral("--help")));
    QVERIFY2(result.output.contains(named), qPrintable(result.output));
}

void tst_Scripts::refusals_data()
{
    QTest::addColumn<QString>("arguments"); // separated by |, the script first
    QTest::addColumn<QString>("message");

    const auto row = [](const char *name, const char *arguments, const char *message) {
        QTest::newRow(name) << QString::fromUtf8(arguments) << QString::fromUtf8(message);
    };
    row("unknown option", "demo.sh|--bogus", "unknown option '--bogus', see --help");
    row("unknown option after a page", "demo.sh|--page|live|-x", "unknown option '-x', see --help");
    row("option after a file", "demo.sh|good.csv|--page",
            "unknown option '--page', options stand before files");
    row("--page without a value", "demo.sh|--page", "--page needs a value");
    row("--page with an empty value", "demo.sh|--page|", "--page needs a value");
    row("--screenshot without a value", "demo.sh|--screenshot", "--screenshot needs a value");
    row("--theme without a value", "demo.sh|--theme", "--theme needs a value");
    row("unknown theme", "demo.sh|--theme|pink",
            "unknown theme 'pink', there are: light, dark, system");
    row("missing file", "demo.sh|missing.csv", "missing.csv: no such file");
    row("second file missing", "demo.sh|--page|Signal|good.csv|no such.csv",
            "no such.csv: no such file");
    row("missing file after --", "demo.sh|--|missing.csv", "missing.csv: no such file");
    row("empty name", "demo.sh|", ": no such file");

    row("unknown preset", "test.sh|--preset|fast",
            "unknown preset 'fast', there are: dev, release, asan, tsan, coverage");
    row("hidden preset", "test.sh|--preset|base",
            "unknown preset 'base', there are: dev, release, asan, tsan, coverage");
    row("no preset", "test.sh|--preset",
            "unknown preset '', there are: dev, release, asan, tsan, coverage");

    row("preset for the coverage", "test.sh|--preset|asan|--coverage",
            "--coverage has a preset of its own, not asan");
    row("two kinds of tests", "test.sh|--soak|--tidy", "--soak and --tidy exclude each other");
    row("unknown preset behind a kind", "test.sh|--tidy|--preset|fast",
            "unknown preset 'fast', there are: dev, release, asan, tsan, coverage");

    row("package.sh, unknown option", "package.sh|--bogus", "unknown option '--bogus', see --help");
    row("package.sh, an argument", "package.sh|rpm", "takes no arguments, got 'rpm'");
    row("package.sh, an empty argument", "package.sh|", "takes no arguments, got ''");

    const char *noDistribution = "unknown distribution '', there are: bookworm, trixie";
    row("no distribution", "check-root.sh", noDistribution);
    row("empty distribution", "check-root.sh|", noDistribution);
    row("unknown distribution", "check-root.sh|sid",
            "unknown distribution 'sid', there are: bookworm, trixie");
    row("two distributions in one", "check-root.sh|bookworm trixie",
            "unknown distribution 'bookworm trixie', there are: bookworm, trixie");
    row("options and no distribution", "check-root.sh|--head|--no-tests", noDistribution);
    row("check-root.sh, unknown option", "check-root.sh|--bogus|trixie",
            "unknown option '--bogus', see --help");
    row("--cache without a value", "check-root.sh|--cache", "--cache needs a value");
    row("--mirror with an empty value", "check-root.sh|--mirror||trixie", "--mirror needs a value");
}

void tst_Scripts::refusals()
{
    QFETCH(QString, arguments);
    QFETCH(QString, message);

    QStringList words = arguments.split(u'|');
    const QString script = words.takeFirst();
    const ProgramResult result = run(script, words);
    QCOMPARE(result.errors, QStringLiteral("%1: %2\n").arg(script, message));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
}

void tst_Scripts::unknownPage()
{
    const ProgramResult result =
            run(QStringLiteral("demo.sh"), {QStringLiteral("--page"), QStringLiteral("Nowhere")});
    QCOMPARE(result.errors, QStringLiteral("demo.sh: unknown page 'Nowhere', there are: %1\n")
                                    .arg(pageNames().join(QStringLiteral(", "))));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
}

QTEST_GUILESS_MAIN(tst_Scripts)

#include "tst_scripts.moc"
