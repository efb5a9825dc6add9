#include "platform/ime/IBusFramework.h"
#include "platform/keys/KeySender.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <QTimer>

namespace {

// Qt's IBus input context registers its connection under this name.
const QString QtIBusConnection = QStringLiteral("QIBusProxy");
const QString IBusService = QStringLiteral("org.freedesktop.IBus");
const QString IBusPath = QStringLiteral("/org/freedesktop/IBus");
const QString InputContextInterface = QStringLiteral("org.freedesktop.IBus.InputContext");

// Capabilities of an IBus input context: preedit, focus, property, surrounding text.
constexpr uint CapabilitiesWithProperty = 1 | 8 | 16 | 32;
// IBus's content hint for a context that wants words completed.
constexpr uint WordCompletionHint = 1 << 2;

QDBusConnection ibus()
{
    return QDBusConnection(QtIBusConnection);
}

QDBusArgument argumentOf(const QDBusVariant &variant)
{
    return qvariant_cast<QDBusArgument>(variant.variant());
}

// An IBusText: ("IBusText", attachments, text, attributes).
QString readText(const QDBusArgument &argument)
{
    QString name, text;
    QVariantMap attachments;
    argument.beginStructure();
    argument >> name >> attachments >> text;
    argument.endStructure();
    return text;
}

// An IBusEngineDesc: ("IBusEngineDesc", attachments, name, longname, ...).
QStringList readEngineNames(QVariant value)
{
    // The property is a variant that holds the serialized engine, itself a variant.
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = qvariant_cast<QDBusVariant>(value).variant();
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    const QDBusArgument argument = qvariant_cast<QDBusArgument>(value);
    QString type, name, longName;
    QVariantMap attachments;
    argument.beginStructure();
    argument >> type >> attachments >> name >> longName;
    argument.endStructure();
    return {name, longName};
}

QStringList globalEngine()
{
    QDBusMessage call = QDBusMessage::createMethodCall(IBusService, IBusPath,
                                                       QStringLiteral("org.freedesktop.DBus.Properties"),
                                                       QStringLiteral("Get"));
    call << IBusService << QStringLiteral("GlobalEngine");
    const QDBusMessage reply = ibus().call(call, QDBus::Block, 1000);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    return readEngineNames(reply.arguments().first());
}

} // namespace

IBusFramework::IBusFramework()
{
    if (auto *app = qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        connect(app, &QGuiApplication::focusObjectChanged, this, [this] {
            // Qt tells IBus of the new focus first; ask after it has.
            QTimer::singleShot(0, this, &IBusFramework::focusChanged);
        });
    QTimer::singleShot(0, this, &IBusFramework::focusChanged);
}

bool IBusFramework::reachable()
{
    return ibus().isConnected();
}

IBusFramework::InputMode IBusFramework::modeForSymbol(const QString &symbol)
{
    static const QList<std::pair<QString, InputMode>> modes = {
        {QStringLiteral("あ"), InputMode::Hiragana},
        {QStringLiteral("ア"), InputMode::FullKatakana},
        {QStringLiteral("_ｱ"), InputMode::HalfKatakana},
        {QStringLiteral("Ａ"), InputMode::FullAlphabet},
        {QStringLiteral("_A"), InputMode::HalfAlphabet},
    };
    for (const auto &[known, mode] : modes)
        if (symbol == known)
            return mode;
    return InputMode::Off;
}

QString IBusFramework::engineName() const
{
    return connected() ? globalEngine().value(0) : QString();
}

QString IBusFramework::engineDescription() const
{
    return connected() ? globalEngine().value(1) : QString();
}

void IBusFramework::setOpen(bool open)
{
    if (connected() && open != (mode() != InputMode::Off))
        KeySender::send(QStringLiteral("{KANJI}"));
}

void IBusFramework::updateContentHints(Qt::InputMethodHints hints)
{
    if (!connected() || m_context.isEmpty())
        return;
    // Qt's IBus context hands on no hints: they go to IBus from here.
    QDBusMessage call = QDBusMessage::createMethodCall(IBusService, m_context, InputContextInterface,
                                                       QStringLiteral("SetContentType"));
    const uint ibusHints = hints.testFlag(Qt::ImhNoPredictiveText) ? 0u : WordCompletionHint;
    call << uint(0) << ibusHints; // purpose: free form
    ibus().call(call, QDBus::NoBlock);
}

void IBusFramework::listen()
{
    if (m_listening || !connected())
        return;
    QDBusConnection connection = ibus();
    m_listening = connection.connect(QString(), QString(), InputContextInterface, QStringLiteral("UpdateProperty"),
                                     this, SLOT(updateProperty(QDBusVariant)))
        && connection.connect(QString(), QString(), InputContextInterface, QStringLiteral("RegisterProperties"),
                              this, SLOT(registerProperties(QDBusVariant)));
}

void IBusFramework::focusChanged()
{
    if (!connected())
        return;
    listen();
    QObject *focus = QGuiApplication::focusObject();
    if (!focus)
        return;
    QInputMethodQueryEvent query(Qt::ImEnabled);
    QCoreApplication::sendEvent(focus, &query);
    if (!query.value(Qt::ImEnabled).toBool())
        return;

    const QDBusMessage reply = ibus().call(
        QDBusMessage::createMethodCall(IBusService, IBusPath, IBusService, QStringLiteral("CurrentInputContext")),
        QDBus::Block, 1000);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return;
    const QString path = qvariant_cast<QDBusObjectPath>(reply.arguments().first()).path();
    if (path.isEmpty())
        return;
    m_context = path;
    if (m_upgradedContexts.contains(path))
        return;
    m_upgradedContexts.insert(path);
    auto send = [path](const char *method, const QVariantList &arguments = {}) {
        QDBusMessage call = QDBusMessage::createMethodCall(IBusService, path, InputContextInterface,
                                                           QString::fromLatin1(method));
        call.setArguments(arguments);
        ibus().call(call, QDBus::NoBlock);
    };
    send("SetCapabilities", {CapabilitiesWithProperty});
    send("FocusOut");
    send("FocusIn");
}

void IBusFramework::readProperty(const QDBusArgument &argument)
{
    QString type, key, icon;
    QVariantMap attachments;
    uint kind = 0, state = 0;
    bool sensitive = false, visible = false;
    QDBusVariant label, tooltip, subProperties, symbol;
    argument.beginStructure();
    argument >> type >> attachments >> key >> kind >> label >> icon >> tooltip >> sensitive >> visible >> state
        >> subProperties;
    const bool hasSymbol = !argument.atEnd();
    if (hasSymbol)
        argument >> symbol;
    argument.endStructure();
    if (key != QStringLiteral("InputMode"))
        return;
    QString text = hasSymbol ? readText(argumentOf(symbol)) : QString();
    if (text.isEmpty()) {
        // Older engines give the mode only in the label: "Input Mode (あ)".
        const QString labelText = readText(argumentOf(label));
        const qsizetype open = labelText.lastIndexOf(u'(');
        if (open >= 0 && labelText.endsWith(u')'))
            text = labelText.mid(open + 1, labelText.size() - open - 2);
    }
    if (!text.isEmpty())
        setMode(modeForSymbol(text));
}

void IBusFramework::updateProperty(const QDBusVariant &property)
{
    readProperty(argumentOf(property));
}

void IBusFramework::registerProperties(const QDBusVariant &properties)
{
    const QDBusArgument argument = argumentOf(properties);
    QString type;
    QVariantMap attachments;
    argument.beginStructure();
    argument >> type >> attachments;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant property;
        argument >> property;
        readProperty(argumentOf(property));
    }
    argument.endArray();
    argument.endStructure();
}
