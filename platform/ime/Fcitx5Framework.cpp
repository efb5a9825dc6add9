#include "platform/ime/Fcitx5Framework.h"
#include "platform/ime/StatusNotifierWatcher.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QInputMethod>
#include <QDeadlineTimer>
#include <QTimer>

const QString Fcitx5Framework::Service = QStringLiteral("org.fcitx.Fcitx5");

namespace {

const QString ControllerPath = QStringLiteral("/controller");
const QString ControllerInterface = QStringLiteral("org.fcitx.Fcitx.Controller1");
const QString ItemInterface = QStringLiteral("org.kde.StatusNotifierItem");
constexpr int CallTimeout = 1000; // ms

// Controller1.State: 0 while no input context has the focus, 1 for the plain
// keyboard, 2 while an input method is active.
constexpr int NoContextState = 0;
constexpr int ActiveState = 2;
// Qt's Fcitx context comes some 100-300 ms after the window.
constexpr int ContextTimeout = 2000; // ms

QDBusMessage callController(const QString &method, QDBus::CallMode mode = QDBus::Block)
{
    QDBusMessage call = QDBusMessage::createMethodCall(Fcitx5Framework::Service, ControllerPath,
                                                       ControllerInterface, method);
    call.setAutoStartService(false);
    return QDBusConnection::sessionBus().call(call, mode, CallTimeout);
}

QVariant firstResult(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty() ? reply.arguments().first()
                                                                                      : QVariant();
}

uint processOf(const QString &service)
{
    QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    return bus ? bus->servicePid(service).value() : 0;
}

// The group's first input method that is no keyboard layout ("mozc").
QString engineOfGroup()
{
    const QString group = firstResult(callController(QStringLiteral("CurrentInputMethodGroup"))).toString();
    QDBusMessage call = QDBusMessage::createMethodCall(Fcitx5Framework::Service, ControllerPath, ControllerInterface,
                                                       QStringLiteral("InputMethodGroupInfo"));
    call << group;
    call.setAutoStartService(false);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, CallTimeout);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() < 2)
        return {};
    const QDBusArgument items = qvariant_cast<QDBusArgument>(reply.arguments().at(1));
    QString found;
    items.beginArray();
    while (!items.atEnd()) {
        QString name, layout;
        items.beginStructure();
        items >> name >> layout;
        items.endStructure();
        if (found.isEmpty() && !name.startsWith(QStringLiteral("keyboard-")))
            found = name;
    }
    items.endArray();
    return found;
}

} // namespace

Fcitx5Framework::Fcitx5Framework()
{
    m_watcher = new StatusNotifierWatcher(this);
    connect(m_watcher, &StatusNotifierWatcher::itemsChanged, this, &Fcitx5Framework::findItem);
    findItem();
}

Fcitx5Framework::InputMode Fcitx5Framework::modeForIcon(const QString &icon)
{
    static const QList<std::pair<QString, InputMode>> modes = {
        {QStringLiteral("fcitx_mozc_hiragana"), InputMode::Hiragana},
        {QStringLiteral("fcitx_mozc_katakana_full"), InputMode::FullKatakana},
        {QStringLiteral("fcitx_mozc_katakana_half"), InputMode::HalfKatakana},
        {QStringLiteral("fcitx_mozc_alpha_full"), InputMode::FullAlphabet},
        {QStringLiteral("fcitx_mozc_alpha_half"), InputMode::HalfAlphabet},
    };
    // Icon themes may prefix Fcitx's own names.
    const QString name = icon.startsWith(QStringLiteral("org.fcitx.Fcitx5.")) ? icon.mid(17) : icon;
    for (const auto &[known, mode] : modes)
        if (name == known)
            return mode;
    return InputMode::Off;
}

bool Fcitx5Framework::connected() const
{
    QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(Service).value();
}

Fcitx5Framework::InputMode Fcitx5Framework::mode() const
{
    if (!m_item.isEmpty() || !connected())
        return InputMethodFramework::mode();
    return state() == ActiveState ? InputMode::Hiragana : InputMode::Off;
}

bool Fcitx5Framework::modeKnown() const
{
    return m_item.isEmpty() ? connected() && state() != NoContextState : InputMethodFramework::modeKnown();
}

int Fcitx5Framework::state()
{
    return firstResult(callController(QStringLiteral("State"))).toInt();
}

QString Fcitx5Framework::engineName() const
{
    return connected() ? engineOfGroup() : QString();
}

QString Fcitx5Framework::engineDescription() const
{
    const QString engine = engineName();
    if (engine.isEmpty())
        return {};
    // (unique name, name, native name, icon, label, language, configurable)
    const QDBusArgument methods = qvariant_cast<QDBusArgument>(
        firstResult(callController(QStringLiteral("AvailableInputMethods"))));
    QString description;
    methods.beginArray();
    while (!methods.atEnd()) {
        QString unique, name, native, icon, label, language;
        bool configurable = false;
        methods.beginStructure();
        methods >> unique >> name >> native >> icon >> label >> language >> configurable;
        methods.endStructure();
        if (unique == engine)
            description = name;
    }
    methods.endArray();
    return description;
}

void Fcitx5Framework::setOpen(bool open)
{
    if (!connected())
        return;
    // The controller acts on the focused context: wait until Fcitx has ours.
    const QDeadlineTimer deadline(ContextTimeout);
    while (state() == NoContextState && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 20);
    callController(open ? QStringLiteral("Activate") : QStringLiteral("Deactivate"), QDBus::NoBlock);
    // Without an item to tell the change, the state is read again at once.
    if (m_item.isEmpty())
        QTimer::singleShot(100, this, [this] { setMode(mode()); });
}

void Fcitx5Framework::updateContentHints(Qt::InputMethodHints)
{
    QGuiApplication::inputMethod()->update(Qt::ImHints);
}

void Fcitx5Framework::findItem()
{
    const uint fcitx = processOf(Service);
    QString found;
    for (const QString &item : m_watcher->RegisteredStatusNotifierItems()) {
        if (fcitx != 0 && processOf(item.left(item.indexOf(u'/'))) == fcitx) {
            found = item;
            break;
        }
    }
    if (found == m_item)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!m_item.isEmpty())
        bus.disconnect(m_item.left(m_item.indexOf(u'/')), m_item.mid(m_item.indexOf(u'/')), ItemInterface,
                       QStringLiteral("NewIcon"), this, SLOT(readIcon()));
    m_item = found;
    if (m_item.isEmpty())
        return;
    bus.connect(m_item.left(m_item.indexOf(u'/')), m_item.mid(m_item.indexOf(u'/')), ItemInterface,
                QStringLiteral("NewIcon"), this, SLOT(readIcon()));
    readIcon();
}

void Fcitx5Framework::readIcon()
{
    if (m_item.isEmpty())
        return;
    const qsizetype slash = m_item.indexOf(u'/');
    QDBusMessage call = QDBusMessage::createMethodCall(m_item.left(slash), m_item.mid(slash),
                                                       QStringLiteral("org.freedesktop.DBus.Properties"),
                                                       QStringLiteral("Get"));
    call << ItemInterface << QStringLiteral("IconName");
    call.setAutoStartService(false);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, CallTimeout);
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        setMode(modeForIcon(qvariant_cast<QDBusVariant>(reply.arguments().first()).variant().toString()));
}
