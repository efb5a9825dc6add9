#include "app/MyApp.h"
#include "app/ControlScaler.h"
#include "app/FontAdapter.h"
#include "app/FontWarmUp.h"
#include "app/Globals.h"
#include "app/PrivateCharacters.h"
#include "app/SettingsStore.h"
#include "app/Title.h"
#include "platform/BackingStoreWarmUp.h"
#include "platform/ErrorTrap.h"
#include "platform/HelpViewer.h"
#include "platform/InstanceGuard.h"
#include "platform/RuntimeLog.h"
#include "platform/TerminationWatcher.h"
#include "tools/InfoDlg.h"
#include "tools/Printing.h"
#include "workspace/Workspace.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLoggingCategory>
#include <QCoreApplication>
#include <QPointer>
#include <QScopeGuard>
#include <QScreen>
#include <QWindow>

namespace {

// How long each start-up step takes: QT_LOGGING_RULES="lantern.startup=true".
Q_LOGGING_CATEGORY(lcStartup, "lantern.startup", QtWarningMsg)

QElapsedTimer startClock;

// One step of start-up: run under the error policy, timed.
template<typename Step>
void step(const char *name, Step &&body)
{
    const qint64 before = startClock.elapsed();
    ErrorTrap::run(name, std::forward<Step>(body));
    qCDebug(lcStartup, "%s: %lld ms (at %lld ms)", name, startClock.elapsed() - before, startClock.elapsed());
}

// Reports, when tracing, the main window's first two pictures: the one
// start-up paints as soon as the window is on the screen, and the first full
// one, with the welcome box open.
class FirstPaintTracer : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++m_paints;
            qCDebug(lcStartup, "%s of the main window at %lld ms", m_paints == 1 ? "first picture" : "first full picture",
                    startClock.elapsed());
            if (m_paints == 2)
                watched->removeEventFilter(this);
        }
        return false;
    }

private:
    int m_paints = 0;
};

// Paints a window just shown, at once. Until the display has put it on the
// screen a repaint does nothing, and the news that it has is what paints it:
// so this waits for that news (briefly: a display that never answers does
// not hold start-up up), taking no input meanwhile. Qt's GLib event loop
// still hands over socket notifiers, the termination signal's among them,
// whatever the flags say: Main keeps that request for later itself.
void paintAtOnce(QWidget *window)
{
    QWindow *handle = window->windowHandle();
    if (!handle)
        return;
    if (handle->isExposed()) {
        window->repaint();
        return;
    }
    QElapsedTimer waited;
    waited.start();
    while (!handle->isExposed() && waited.elapsed() < 250)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers
                                            | QEventLoop::WaitForMoreEvents,
                                        10);
}

} // namespace

QString MyApp::commandLine(int argc, char **argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));
    return words.join(u' ');
}

MyApp::Job MyApp::jobFor(const QString &commandLine)
{
    if (commandLine == u"/?")
        return Job::Help;
    if (commandLine == u"/C" || commandLine == u"/CLR")
        return Job::ClearSettings;
    return Job::Start;
}

void MyApp::readWindowsFolder()
{
    Globals::WinDir = qEnvironmentVariable("WINDIR");
    // A fixed string of two characters: a left-aligned copy, padded with blanks.
    Globals::WinDrive = Globals::WinDir.left(2).leftJustified(2, u' ');
}

int MyApp::Main(int argc, char **argv)
{
    readWindowsFolder();
    const Job job = jobFor(commandLine(argc, argv));

    // The two jobs that end at once need no window, and so no display.
    if (job != Job::Start) {
        QCoreApplication core(argc, argv);
        if (job == Job::Help)
            step("Main: help", [] { HelpViewer::show(QCoreApplication::applicationDirPath()); });
        else
            step("Main: clear settings", [] {
                // Clearing takes the "Runtime" flag with it, and no later run
                // would know that our font is still linked: unlink it first.
                if (SettingsStore::Runtime())
                    PrivateCharacters::Link(false);
                SettingsStore::Reset();
            });
        return 0;
    }

    startClock.start();
    FontWarmUp fonts;
    QApplication application(argc, argv);
    fonts.applicationStarted();
    const auto fontsDone = qScopeGuard([&fonts] { fonts.finish(); });
    QApplication::setApplicationName(QString::fromLatin1(SettingsStore::ApplicationName));
    QApplication::setOverrideCursor(Qt::WaitCursor);
    FontAdapter::prepareApplication();

    // The session may end while the windows still load. The request is kept
    // until the program's own event loop runs, and acted on there: start-up
    // waits in the event loop for its windows to be on the screen, and a
    // close handled in that wait would come before anything could end the
    // program.
    TerminationWatcher termination;
    bool terminationPending = false;
    bool eventLoopRunning = false;
    QPointer<Workspace> workspace;
    QObject::connect(&termination, &TerminationWatcher::terminationRequested, &application, [&] {
        if (workspace && eventLoopRunning)
            workspace->closeWithMode(Workspace::SessionEnd);
        else
            terminationPending = true;
    });

    step("Main: load settings", [] { SettingsStore::Load(); });
    RuntimeLog::start();

    bool unloaded = false;
    BackingStoreWarmUp windowBuffer;
    if (InstanceGuard::claim()) {
        Title *title = nullptr;
        step("Main: splash", [&] {
            title = new Title;
            ControlScaler::scale(title, 0);
            title->raise();
            title->show();
            paintAtOnce(title);
        });
        step("Main: load workspace", [&] {
            workspace = new Workspace;
            QObject::connect(workspace, &Workspace::unloaded, &application, [&] { unloaded = true; });
            if (lcStartup().isDebugEnabled())
                workspace->installEventFilter(new FirstPaintTracer(workspace));
        });
        step("Main: splash above workspace", [&] {
            if (!workspace)
                return;
            workspace->winId();
            if (title) {
                if (title->windowHandle() && workspace->windowHandle())
                    title->windowHandle()->setTransientParent(workspace->windowHandle());
                title->show();
            }
            // The main window's picture buffer is made ready while the tool
            // dialog loads and the display puts the window on the screen.
            windowBuffer.start(workspace, workspace->screen()->geometry().size());
        });
        step("Main: load tool dialog", [&] {
            workspace->setInfoDlg(new InfoDlg(workspace));
            workspace->setPrinting(new Printing);
        });
        step("Main: show workspace", [&] {
            // Without a window manager "full screen" means nothing, so the
            // window also takes the screen's whole area itself.
            workspace->setGeometry(workspace->screen()->geometry());
            workspace->showFullScreen();
            // Painted at once: its buttons show on their wallpaper while the
            // lists load and the welcome box opens.
            paintAtOnce(workspace);
            workspace->activateWindow();
            workspace->setFocus();
        });
        step("Main: reload", [&] { workspace->Reload(); });
        step("Main: apply settings", [&] { workspace->ApplySetting(); });
        step("Main: remove splash", [&] {
            if (title) {
                title->hide();
                delete title;
            }
        });
    }
    QApplication::restoreOverrideCursor();

    if (!workspace)
        return 0;
    step("Main: start", [&] { workspace->Start(); });
    // The program ends with its last window, even one closed before the
    // event loop ran, when there was no loop yet to quit.
    if (unloaded) {
        delete workspace;
        return 0;
    }
    QObject::connect(workspace, &Workspace::unloaded, &application, &QApplication::quit, Qt::QueuedConnection);
    eventLoopRunning = true;
    if (terminationPending)
        QMetaObject::invokeMethod(
            workspace, [&] { workspace->closeWithMode(Workspace::SessionEnd); }, Qt::QueuedConnection);
    if (lcStartup().isDebugEnabled()) {
        QMetaObject::invokeMethod(
            workspace, [] { qCDebug(lcStartup, "event loop at %lld ms", startClock.elapsed()); },
            Qt::QueuedConnection);
    }
    const int status = QApplication::exec();
    delete workspace;
    return status;
}
