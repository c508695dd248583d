// SPDX-License-Identifier: MIT
#include "ThreadOperations.h"

#include "ChartWindow.h"
#include "Graphics.h"
#include "RenderNodeItem.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <semaphore>
#include <thread>

/*!
    The library takes no locks: a call from another thread than the documented one is a race. A build
    for debugging ends the program instead, with a message that leads to the function.

    The calls are made in other processes, which are this program with two arguments: how to call,
    and the operation or "all".
*/
class tst_ThreadChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foreignThread_data();
    void foreignThread();
    void programEnds_data();
    void programEnds();
    void rightThread();

private:
    /*! What all operations said, one a line, found out by the first test. */
    QString m_refusals;
};

namespace {

constexpr int timeout = 60000;
// How to call.
constexpr auto onRightThread = "right";
constexpr auto onForeignThread = "foreign";
/*! A thread that is refused stops there: the program goes on with the next operation. */
constexpr auto onThreadsThatStop = "stopping";

struct Ending
{
    bool isCrash = false;
    int exitCode = 0;
    QString output;
};

Ending call(const char *how, const QString &operation)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(how), operation});
    if (!process.waitForFinished(timeout)) {
        process.kill();
        process.waitForFinished();
    }
    return {process.exitStatus() == QProcess::CrashExit, process.exitCode(),
            QString::fromLocal8Bit(process.readAll())};
}

/*! "Class::function" around \a line of a source file: where the last line before it that is not
    indented begins a definition. */
QString functionAt(const QString &fileName, int line)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("no such file: ") + fileName;
    static const QRegularExpression definition(QStringLiteral("^\\w[^=;]*?(\\w+::~?\\w+)\\("));
    QString function;
    for (int i = 0; i < line && !file.atEnd(); ++i) {
        const auto match = definition.match(QString::fromUtf8(file.readLine()));
        if (match.hasMatch())
            function = match.captured(1);
    }
    return function;
}

/*! The function that the first assertion in \a text leads to; empty if there is none. */
QString assertedFunction(const QString &text)
{
    static const QRegularExpression message(
            QStringLiteral("ASSERT: \"isOnThreadOf\\(\\w+\\)\" in file (\\S+), line (\\d+)"));
    const auto match = message.match(text);
    return match.hasMatch() ? functionAt(match.captured(1), match.captured(2).toInt()) : QString();
}

QString assertedIn(const ThreadOperation &operation)
{
    return operation.assertedIn.isEmpty() ? operation.name : operation.assertedIn;
}

} // namespace

void tst_ThreadChecks::foreignThread_data()
{
    QTest::addColumn<QString>("function");
    for (const ThreadOperation &operation : threadOperations())
        QTest::newRow(qPrintable(operation.name)) << assertedIn(operation);
}

void tst_ThreadChecks::foreignThread()
{
#ifdef QT_NO_DEBUG
    QSKIP("a build for release has no assertions");
#endif
    QFETCH(QString, function);
    if (m_refusals.isEmpty()) {
        const Ending ending = call(onThreadsThatStop, QStringLiteral("all"));
        m_refusals = u'\n' + ending.output;
        QVERIFY2(!ending.isCrash && ending.exitCode == 0, qPrintable(ending.output));
    }
    const QString begin = u'\n' + QString::fromUtf8(QTest::currentDataTag()) + u'|';
    const qsizetype start = m_refusals.indexOf(begin);
    QVERIFY2(start >= 0, qPrintable(m_refusals));
    const QString line = m_refusals.mid(start + 1).section(u'\n', 0, 0);
    QVERIFY2(assertedFunction(line) == function, qPrintable(line));
}

void tst_ThreadChecks::programEnds_data()
{
    QTest::addColumn<QString>("function");
    for (const ThreadOperation &operation : threadOperations()) {
        if (operation.isExample)
            QTest::newRow(qPrintable(operation.name)) << assertedIn(operation);
    }
}

void tst_ThreadChecks::programEnds()
{
#ifdef QT_NO_DEBUG
    QSKIP("a build for release has no assertions");
#endif
    QFETCH(QString, function);
    const Ending ending = call(onForeignThread, QString::fromUtf8(QTest::currentDataTag()));
    QVERIFY2(ending.isCrash, qPrintable(ending.output));
    QCOMPARE(assertedFunction(ending.output), function);
}

void tst_ThreadChecks::rightThread()
{
    const Ending ending = call(onRightThread, QStringLiteral("all"));
    QVERIFY2(!ending.isCrash && ending.exitCode == 0, qPrintable(ending.output));
    for (const ThreadOperation &operation : threadOperations())
        QVERIFY2(ending.output.contains(QStringLiteral("\n%1|\n").arg(operation.name)),
                qPrintable(ending.output));
}

namespace {

// --- The other processes

std::binary_semaphore answered(0);
QString refusal;
thread_local bool stops = false;

void noteRefusal(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtFatalMsg || !stops) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
        return;
    }
    refusal = message;
    answered.release();
    while (true)
        pause();
}

void run(const char *how, const std::function<void()> &operation)
{
    refusal.clear();
    if (std::strcmp(how, onRightThread) == 0) {
        operation();
    } else if (std::strcmp(how, onForeignThread) == 0) {
        std::thread(operation).join();
    } else {
        std::thread([operation] {
            stops = true;
            operation();
            answered.release();
        }).detach();
        answered.acquire();
    }
}

int makeCalls(const char *how, const QString &wanted, int argc, char **argv)
{
    // The message is wanted, not the core.
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    if (std::strcmp(how, onThreadsThatStop) == 0)
        qInstallMessageHandler(&noteRefusal);
    Graphics::setUp();
    const QGuiApplication application(argc, argv);

    ThreadObjects objects;
    std::optional<ChartWindow> window;
    std::optional<RenderNodeItem> item;
    std::puts("");
    for (const ThreadOperation &operation : threadOperations()) {
        if (wanted != u"all" && wanted != operation.name)
            continue;
        if (operation.onGui) {
            run(how, [&] { operation.onGui(objects); });
        } else {
            if (!window) {
                window.emplace(QSize(40, 30), ChartWindow::Content::Nothing);
                item.emplace(*window);
                if (!window->start())
                    qFatal("%s", window->error());
            }
            // The scene graph runs this on its own thread.
            const bool isDone = item->run([&](Charts::OpenGLRenderNode &node) {
                run(how, [&] { operation.onRenderer(node); });
            });
            if (!isDone)
                qFatal("%s", window->error());
        }
        std::printf("%s|%s\n", qPrintable(operation.name), qPrintable(refusal));
    }
    std::fflush(stdout);
    // Stopped threads still hold what they were called with.
    if (std::strcmp(how, onThreadsThatStop) == 0)
        _exit(EXIT_SUCCESS);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 3) {
        for (const char *how : {onRightThread, onForeignThread, onThreadsThatStop}) {
            if (std::strcmp(argv[1], how) == 0)
                return makeCalls(how, QString::fromUtf8(argv[2]), argc, argv);
        }
    }
    QCoreApplication application(argc, argv);
    tst_ThreadChecks test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_threadchecks.moc"
