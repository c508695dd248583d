// SPDX-License-Identifier: MIT

/*
    Part of every test that is built with ThreadSanitizer.

    A distribution's Qt is not instrumented, and its QMutex, QSemaphore and atomic counters are inlined
    machine code: the sanitizer does not see them, and takes what one thread hands to another under
    their protection for a race. Here the places are announced to it where Qt hands over between the
    threads that a chart works on. Each function below stands in for Qt's own and calls it, or does the
    same. (What Qt and the graphics driver do with memory themselves is not looked at: tsan.supp.)

        GUI thread                       pool thread                       render thread

        QThreadPool::start()  --started-->  ThreadEngineBase::run()
                                              updateData() ...
        waitForFinished()   <--finished---    the end of run()

        QWaitCondition::wait() ----------- blocked ------------->  beforeSynchronizing
        it returns           <------ the condition itself -------  QWaitCondition::wakeOne()

    An announcement orders only what the announcing thread did before it. What the GUI thread does
    after waitForFinished() is not ordered with what a pool thread does after run(), nor is a pool
    thread with one that it did not start, nor what two render threads do, nor what the GUI thread
    does while the render thread draws: races there are found, tst_races looks after that.
*/

#include <QtConcurrent/qtconcurrentthreadengine.h>
#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QEvent>
#include <QtCore/QFutureInterface>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtCore/QWaitCondition>
#include <QtQuick/QQuickWindow>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>
#include <unistd.h>

namespace {

// Only their addresses are of interest.
char started;
char finished;
char blocked;

/*! Qt's own function, given the type of a pointer to it that takes the object first. */
template<typename Pointer>
Pointer qt(const char *symbol)
{
    if (void *function = dlsym(RTLD_NEXT, symbol))
        return reinterpret_cast<Pointer>(function);
    qFatal("Qt has no %s any more", symbol);
}

void acquireBlocked()
{
    __tsan_acquire(&blocked);
}

/*! Connects to each window before it is drawn for the first time. */
class WindowFinder : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::PlatformSurface) {
            if (auto *window = qobject_cast<QQuickWindow *>(watched)) {
                disconnect(window, nullptr, this, nullptr);
                // All of them on the render thread, while the GUI thread is blocked.
                connect(window, &QQuickWindow::sceneGraphInitialized, this, &acquireBlocked,
                        Qt::DirectConnection);
                connect(window, &QQuickWindow::beforeSynchronizing, this, &acquireBlocked,
                        Qt::DirectConnection);
                connect(window, &QQuickWindow::sceneGraphAboutToStop, this, &acquireBlocked,
                        Qt::DirectConnection);
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

void watchWindows()
{
    QCoreApplication *application = QCoreApplication::instance();
    application->installEventFilter(new WindowFinder(application));
}
Q_COREAPP_STARTUP_FUNCTION(watchWindows)

} // namespace

// The render loop blocks the GUI thread in here ...
bool QWaitCondition::wait(QMutex *mutex, QDeadlineTimer deadline)
{
    static const auto wait = qt<bool (*)(QWaitCondition *, QMutex *, QDeadlineTimer)>(
            "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    if (gettid() == getpid())
        __tsan_release(&blocked);
    const bool isWoken = wait(this, mutex, deadline);
    __tsan_acquire(this);
    return isWoken;
}

// ... until the render thread wakes it.
void QWaitCondition::wakeOne()
{
    static const auto wakeOne = qt<void (*)(QWaitCondition *)>("_ZN14QWaitCondition7wakeOneEv");
    __tsan_release(this);
    wakeOne(this);
}

// QtConcurrent begins with this one ...
void QThreadPool::start(QRunnable *runnable, int priority)
{
    static const auto start =
            qt<void (*)(QThreadPool *, QRunnable *, int)>("_ZN11QThreadPool5startEP9QRunnablei");
    __tsan_release(&started);
    start(this, runnable, priority);
}

// ... and a thread of the pool that finds more to do calls others.
bool QThreadPool::tryStart(QRunnable *runnable)
{
    static const auto tryStart =
            qt<bool (*)(QThreadPool *, QRunnable *)>("_ZN11QThreadPool8tryStartEP9QRunnable");
    __tsan_release(&started);
    return tryStart(this, runnable);
}

void QtConcurrent::ThreadEngineBase::run()
{
    __tsan_acquire(&started);
    if (!isCanceled()) {
        startThreads();
        while (threadFunction() == ThrottleThread) {
            if (threadThrottleExit()) {
                __tsan_release(&finished);
                return;
            }
            reportIfSuspensionDone();
        }
    }
    __tsan_release(&finished);
    // The last one reports that all have finished.
    threadExit();
}

void QFutureInterfaceBase::reportFinished()
{
    static const auto reportFinished =
            qt<void (*)(QFutureInterfaceBase *)>("_ZN20QFutureInterfaceBase14reportFinishedEv");
    __tsan_acquire(&finished);
    reportFinished(this);
}

void QFutureInterfaceBase::waitForFinished()
{
    static const auto waitForFinished =
            qt<void (*)(QFutureInterfaceBase *)>("_ZN20QFutureInterfaceBase15waitForFinishedEv");
    waitForFinished(this);
    __tsan_acquire(&finished);
}
