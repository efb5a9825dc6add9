#include "platform/ime/InputMethodFramework.h"
#include "platform/ime/Fcitx5Framework.h"
#include "platform/ime/IBusFramework.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <private/qguiapplication_p.h>
#include <qpa/qplatforminputcontext.h>
#include <qpa/qplatformintegration.h>

namespace {

// The module of the input context Qt loaded, where QT_IM_MODULE names none.
QString loadedModule()
{
    QPlatformIntegration *integration = QGuiApplicationPrivate::platformIntegration();
    QPlatformInputContext *context = integration ? integration->inputContext() : nullptr;
    if (!context)
        return {};
    const QString type = QString::fromLatin1(context->metaObject()->className());
    if (type.contains(QStringLiteral("IBus"), Qt::CaseInsensitive))
        return QStringLiteral("ibus");
    if (type.contains(QStringLiteral("Fcitx"), Qt::CaseInsensitive))
        return QStringLiteral("fcitx");
    return {};
}

bool ownedOnSessionBus(const QString &name)
{
    // Asks the bus itself: a call to the name would start it by activation.
    QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(name).value();
}

} // namespace

InputMethodFramework::InputMethodFramework(QObject *parent)
    : QObject(parent)
{
}

InputMethodFramework::Kind InputMethodFramework::choose(const QString &imModule, bool fcitxOnBus, bool ibusOnBus)
{
    const QString module = imModule.trimmed().toLower();
    if (module == QStringLiteral("ibus"))
        return IBus;
    if (module == QStringLiteral("fcitx") || module == QStringLiteral("fcitx5"))
        return Fcitx5;
    if (fcitxOnBus)
        return Fcitx5;
    return ibusOnBus ? IBus : NoFramework;
}

std::unique_ptr<InputMethodFramework> InputMethodFramework::forThisDesktop()
{
    QString module = qEnvironmentVariable("QT_IM_MODULE");
    if (choose(module, false, false) == NoFramework)
        module = loadedModule();
    const bool fcitx = ownedOnSessionBus(Fcitx5Framework::Service);
    // Qt's own IBus connection, or the name IBus keeps on the session bus.
    const bool ibus = IBusFramework::reachable() || ownedOnSessionBus(QStringLiteral("org.freedesktop.portal.IBus"));
    return create(choose(module, fcitx, ibus));
}

std::unique_ptr<InputMethodFramework> InputMethodFramework::create(Kind kind)
{
    switch (kind) {
    // clang-format off
    case IBus: return std::make_unique<IBusFramework>();
    case Fcitx5: return std::make_unique<Fcitx5Framework>();
    case NoFramework: break;
        // clang-format on
    }
    return std::make_unique<InputMethodFramework>();
}

QString InputMethodFramework::symbolFor(InputMode mode)
{
    switch (mode) {
    // clang-format off
    case InputMode::Hiragana: return QStringLiteral("あ");
    case InputMode::FullKatakana: return QStringLiteral("ア");
    case InputMode::HalfKatakana: return QStringLiteral("_ｱ");
    case InputMode::FullAlphabet: return QStringLiteral("Ａ");
    case InputMode::HalfAlphabet: return QStringLiteral("_A");
    case InputMode::Off: break;
        // clang-format on
    }
    return QStringLiteral("A");
}

void InputMethodFramework::setMode(InputMode mode)
{
    const bool changed = mode != m_mode || !m_modeKnown;
    m_mode = mode;
    m_modeKnown = true;
    if (changed)
        emit modeChanged(mode);
}
