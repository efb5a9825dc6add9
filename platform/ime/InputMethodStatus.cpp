#include "platform/ime/InputMethodStatus.h"
#include "platform/RuntimeLog.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
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

InputMethodStatus &InputMethodStatus::instance()
{
    static InputMethodStatus *status = new InputMethodStatus;
    return *status;
}

InputMethodStatus::InputMethodStatus()
{
    if (auto *app = qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        connect(app, &QGuiApplication::focusObjectChanged, this, [this] {
            // Qt tells IBus of the new focus first; ask after it has.
            QTimer::singleShot(0, this, &InputMethodStatus::focusChanged);
        });
    QTimer::singleShot(0, this, &InputMethodStatus::focusChanged);
}

bool InputMethodStatus::connected() const
{
    return ibus().isConnected();
}

void InputMethodStatus::listen()
{
    if (m_listening || !connected())
        return;
    QDBusConnection connection = ibus();
    m_listening = connection.connect(QString(), QString(), InputContextInterface, QStringLiteral("UpdateProperty"),
                                     this, SLOT(updateProperty(QDBusVariant)))
        && connection.connect(QString(), QString(), InputContextInterface, QStringLiteral("RegisterProperties"),
                              this, SLOT(registerProperties(QDBusVariant)));
}

void InputMethodStatus::focusChanged()
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
    if (path.isEmpty() || m_upgradedContexts.contains(path))
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

void InputMethodStatus::readProperty(const QDBusArgument &argument)
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
    QString mode = hasSymbol ? readText(argumentOf(symbol)) : QString();
    if (mode.isEmpty()) {
        // Older engines give the mode only in the label: "Input Mode (あ)".
        const QString text = readText(argumentOf(label));
        const qsizetype open = text.lastIndexOf(u'(');
        if (open >= 0 && text.endsWith(u')'))
            mode = text.mid(open + 1, text.size() - open - 2);
    }
    setSymbol(mode);
}

void InputMethodStatus::updateProperty(const QDBusVariant &property)
{
    readProperty(argumentOf(property));
}

void InputMethodStatus::registerProperties(const QDBusVariant &properties)
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

void InputMethodStatus::setSymbol(const QString &symbol)
{
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    emit modeChanged(symbol);
}

int InputMethodStatus::statusForSymbol(const QString &symbol)
{
    static const QStringList modes = {QStringLiteral("あ"), QStringLiteral("ア"), QStringLiteral("_ｱ"),
                                      QStringLiteral("Ａ"), QStringLiteral("_A")};
    const qsizetype at = modes.indexOf(symbol);
    return at < 0 ? 0 : int(4 + at);
}

int InputMethodStatus::status() const
{
    return statusForSymbol(m_symbol);
}

QString InputMethodStatus::engineDescription() const
{
    return connected() ? globalEngine().value(1) : QString();
}

QString InputMethodStatus::engineName() const
{
    return connected() ? globalEngine().value(0) : QString();
}
