#include "tools/IME.h"
#include "platform/ErrorTrap.h"
#include "platform/RuntimeLog.h"
#include "platform/ime/InputMethodStatus.h"
#include "platform/ime/InputMethodTool.h"
#include "platform/keys/KeySender.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QProcess>
#include <QRegularExpression>
#include <QMetaEnum>
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
constexpr int ModeKeyTimeout = 1000; // ms

} // namespace

IME::IME(QObject *parent)
    : QObject(parent)
{
    InputMethodStatus &status = InputMethodStatus::instance();
    if (status.connected())
        Layout = QString::fromLatin1(QMetaEnum::fromType<InputMethodFramework::Kind>().valueToKey(status.kind()))
                     .toLower()
            + u':' + status.engineName();
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

void IME::Dialog(qint32 mode, const QString &word, const QString &reading)
{
    if (mode < SettingsDialog || mode > DictionaryDialog)
        return;
    // Only word registration takes the word and its reading.
    const bool registration = mode == WordRegistrationDialog;
    const InputMethodTool::Command command
        = InputMethodTool::command(InputMethodTool::Tool(mode), InputMethodStatus::instance().kind(),
                                   registration ? word : QString(), registration ? reading : QString());
    if (!command.isEmpty() && !InputMethodTool::start(command))
        RuntimeLog::note("IME::Dialog", QStringLiteral("cannot start %1").arg(command.program));
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
    // Done once the input method reports its new mode.
    InputMethodStatus &status = InputMethodStatus::instance();
    QEventLoop answered;
    QTimer::singleShot(ModeKeyTimeout, &answered, &QEventLoop::quit);
    connect(&status, &InputMethodStatus::modeChanged, &answered, &QEventLoop::quit);
    status.framework().setOpen(open);
    answered.exec(QEventLoop::ExcludeUserInputEvents);
}

qint32 IME::Convert(qint32 mode)
{
    const qint32 previous = m_sentenceMode;
    if (mode == ReadOnly)
        return previous;
    // The conversion mode stays as it is; only the sentence mode is given.
    m_sentenceMode = mode;
    if (Window)
        InputMethodStatus::instance().framework().updateContentHints(hintsFor(mode));
    return previous;
}

Qt::InputMethodHints IME::hintsFor(qint32 sentenceMode)
{
    // Mozc predicts phrases as it converts: without that mode the context
    // asks for no prediction.
    return (sentenceMode & PhrasePredict) ? Qt::ImhNone : Qt::ImhNoPredictiveText;
}

IME::ConversionMode IME::conversionMode() const
{
    return conversionModeFor(Context != 0 ? IMEStatus() : 0);
}

IME::ConversionMode IME::conversionModeFor(int status)
{
    using Mode = InputMethodFramework::InputMode;
    switch (Mode(status)) {
    // clang-format off
    case Mode::Hiragana: return Native | FullShape | Roman;
    case Mode::FullKatakana: return Native | Katakana | FullShape | Roman;
    case Mode::HalfKatakana: return Native | Katakana | Roman;
    case Mode::FullAlphabet: return FullShape | Roman;
    case Mode::HalfAlphabet: return Roman;
    case Mode::Off: break;
        // clang-format on
    }
    return Alphanumeric;
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
    // clang-format off
    case KanaKey: return QStringLiteral("{KANA}");
    case KanjiKey: return QStringLiteral("{KANJI}");
    case ConvertKey: return QStringLiteral("{CONVERT}");
    case NonConvertKey: return QStringLiteral("{NONCONVERT}");
    case EscapeKey: return QStringLiteral("{ESCAPE}");
    case PrintScreenKey: return QStringLiteral("{PRTSC}");
    default: return {};
        // clang-format on
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

void IME::answerHints(QObject *watched, QInputMethodQueryEvent *query)
{
    // The widget answers first; the sentence mode adds its hints.
    m_answeringHints = true;
    QCoreApplication::sendEvent(watched, query);
    m_answeringHints = false;
    const auto hints = Qt::InputMethodHints(query->value(Qt::ImHints).toInt()) | hintsFor(m_sentenceMode);
    query->setValue(Qt::ImHints, int(hints));
}

bool IME::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::InputMethodQuery && !m_answeringHints && belongsToWindow(watched)) {
        auto *query = static_cast<QInputMethodQueryEvent *>(event);
        const bool hints = (query->queries() & Qt::ImHints) && hintsFor(m_sentenceMode) != Qt::ImhNone;
        const bool detached = m_detached && (query->queries() & Qt::ImEnabled);
        if (hints)
            answerHints(watched, query);
        if (detached)
            query->setValue(Qt::ImEnabled, false);
        if (hints || detached) {
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
