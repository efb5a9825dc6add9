#include "tools/IME.h"
#include "platform/ErrorTrap.h"
#include "platform/RuntimeLog.h"
#include "platform/ime/InputMethodStatus.h"
#include "platform/keys/KeySender.h"

#include <QApplication>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <private/qguiapplication_p.h>
#include <qpa/qplatforminputcontext.h>
#include <qpa/qplatformintegration.h>

namespace {

QPlatformInputContext *platformContext()
{
    return QGuiApplicationPrivate::platformIntegration()
        ? QGuiApplicationPrivate::platformIntegration()->inputContext()
        : nullptr;
}

// Mozc's own settings tool, where it is installed.
QString mozcTool()
{
    for (const QString &path : {QStringLiteral("/usr/lib/mozc/mozc_tool"), QStringLiteral("/usr/libexec/mozc/mozc_tool")})
        if (QFileInfo(path).isExecutable())
            return path;
    return QStandardPaths::findExecutable(QStringLiteral("mozc_tool"));
}

// The reading of a composition: kana (and the romaji still being typed).
bool isReading(const QString &text)
{
    if (text.isEmpty())
        return false;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        const bool kana = (u >= 0x3041 && u <= 0x30ff) || (u >= 0xff61 && u <= 0xff9f);
        const bool latin = u < 0x80 || (u >= 0xff01 && u <= 0xff5e);
        if (!kana && !latin)
            return false;
    }
    return true;
}

// How long a mode key may take before KeyPress stops waiting for it.
constexpr int ModeKeyTimeout = 1000;   // ms

} // namespace

IME::IME(QObject *parent)
    : QObject(parent)
{
    InputMethodStatus &status = InputMethodStatus::instance();
    if (status.connected())
        Layout = QStringLiteral("ibus:") + status.engineName();
    qApp->installEventFilter(this);
}

IME::~IME()
{
    // Releasing the context: the window gets its input method back.
    if (Context != 0 && m_detached)
        Associate();
}

QString IME::Description() const
{
    return Layout.isEmpty() ? QString() : InputMethodStatus::instance().engineDescription();
}

void IME::setHandle(QWidget *window)
{
    Window = window;
    Context = window ? reinterpret_cast<quintptr>(platformContext()) : 0;
}

QStringList IME::dialogCommand(qint32 mode)
{
    const QString tool = mozcTool();
    switch (mode) {
    case 1:
        if (!tool.isEmpty())
            return {tool, QStringLiteral("--mode=config_dialog")};
        if (const QString setup = QStandardPaths::findExecutable(QStringLiteral("ibus-setup")); !setup.isEmpty())
            return {setup};
        return {};
    case 2:
        return tool.isEmpty() ? QStringList() : QStringList{tool, QStringLiteral("--mode=word_register_dialog")};
    case 3:
        return tool.isEmpty() ? QStringList() : QStringList{tool, QStringLiteral("--mode=dictionary_tool")};
    default:
        return {};
    }
}

void IME::Dialog(qint32 mode, const QString &word, const QString &reading)
{
    Q_UNUSED(reading);   // Mozc finds the reading of the word itself.
    const QStringList command = dialogCommand(mode);
    if (command.isEmpty())
        return;
    // Mozc's word-registration dialog starts from the word on the clipboard.
    if (mode == 2 && !word.isEmpty())
        QGuiApplication::clipboard()->setText(word);
    if (!QProcess::startDetached(command.first(), command.mid(1)))
        RuntimeLog::note("IME::Dialog", QStringLiteral("cannot start %1").arg(command.join(u' ')));
}

bool IME::belongsToWindow(QObject *object) const
{
    auto *widget = qobject_cast<QWidget *>(object);
    return widget && Window && (widget == Window || Window->isAncestorOf(widget));
}

void IME::Associate()
{
    if (!Window)
        return;
    m_detached = false;
    QGuiApplication::inputMethod()->update(Qt::ImEnabled);
}

void IME::Dissociate()
{
    if (!Window)
        return;
    // The window's widgets now deny input-method processing (eventFilter).
    QGuiApplication::inputMethod()->reset();
    m_detached = true;
    QGuiApplication::inputMethod()->update(Qt::ImEnabled);
}

bool IME::Enabled() const
{
    return Context != 0 && InputMethodStatus::instance().isOpen();
}

void IME::setEnabled(bool open)
{
    if (Context == 0 || Enabled() == open)
        return;
    KeyPress(KanjiKey, true);
}

qint32 IME::Convert(qint32 mode)
{
    const qint32 previous = m_sentenceMode;
    if (mode != -1)
        m_sentenceMode = mode;
    return previous;
}

QString IME::Read() const
{
    return m_lastResult + QStringLiteral("\r\n") + m_lastReading;
}

void IME::Activate(const QString &path, const QString &title, bool wait)
{
    ErrorTrap::run("IME::Activate", [&] {
        if (!path.isEmpty()) {
            QStringList arguments = QProcess::splitCommand(path);
            if (arguments.isEmpty())
                return;
            const QString program = arguments.takeFirst();
            if (!QProcess::startDetached(program, arguments))
                RuntimeLog::note("IME::Activate", QStringLiteral("cannot start %1").arg(path));
            return;
        }
        if (title.isEmpty())
            return;
        // A window of this program first, then any window the desktop knows.
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && widget->windowTitle() == title) {
                widget->raise();
                widget->activateWindow();
                if (wait) {
                    const QDeadlineTimer deadline(2000);
                    while (!widget->isActiveWindow() && !deadline.hasExpired())
                        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
                }
                return;
            }
        }
        const QString xdotool = QStandardPaths::findExecutable(QStringLiteral("xdotool"));
        if (!xdotool.isEmpty()) {
            QStringList arguments{QStringLiteral("search"), QStringLiteral("--name"),
                                  QStringLiteral("^%1$").arg(QRegularExpression::escape(title)),
                                  QStringLiteral("windowactivate")};
            if (wait)
                arguments << QStringLiteral("--sync");
            QProcess::startDetached(xdotool, arguments);
        }
    });
}

QString IME::keysFor(qint32 code)
{
    switch (code) {
    case KanaKey: return QStringLiteral("{KANA}");
    case KanjiKey: return QStringLiteral("{KANJI}");
    case ConvertKey: return QStringLiteral("{CONVERT}");
    case NonConvertKey: return QStringLiteral("{NONCONVERT}");
    case EscapeKey: return QStringLiteral("{ESCAPE}");
    case PrintScreenKey: return QStringLiteral("{PRTSC}");
    default: return {};
    }
}

void IME::KeyPress(qint32 code, bool wait)
{
    ErrorTrap::run("IME::KeyPress", [&] {
        if (code == ProcessEvents) {
            QCoreApplication::processEvents();
            return;
        }
        const QString keys = keysFor(code);
        if (keys.isEmpty())
            return;
        InputMethodStatus &status = InputMethodStatus::instance();
        const bool changesMode = code == KanaKey || code == KanjiKey;
        if (!wait || !changesMode || !status.connected()) {
            KeySender::send(keys);
            if (wait)
                QCoreApplication::processEvents();
            return;
        }
        // The input method answers on its own time: a mode key has been
        // processed once the input method reports its new mode.
        QEventLoop answered;
        QTimer::singleShot(ModeKeyTimeout, &answered, &QEventLoop::quit);
        connect(&status, &InputMethodStatus::modeChanged, &answered, &QEventLoop::quit);
        KeySender::send(keys);
        answered.exec(QEventLoop::ExcludeUserInputEvents);
    });
}

int IME::IMEStatus()
{
    return InputMethodStatus::instance().status();
}

bool IME::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::InputMethodQuery && m_detached && belongsToWindow(watched)) {
        auto *query = static_cast<QInputMethodQueryEvent *>(event);
        if (query->queries() & Qt::ImEnabled) {
            query->setValue(Qt::ImEnabled, false);
            query->accept();
            return true;
        }
    }
    if (event->type() == QEvent::InputMethod && belongsToWindow(watched)) {
        const auto *input = static_cast<const QInputMethodEvent *>(event);
        if (isReading(input->preeditString()))
            m_reading = input->preeditString();
        if (!input->commitString().isEmpty()) {
            m_lastResult = input->commitString();
            m_lastReading = isReading(m_lastResult) ? m_lastResult : m_reading;
            m_reading.clear();
        }
    }
    return QObject::eventFilter(watched, event);
}
