#include "platform/ime/StatusNotifierWatcher.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace {

const QString WatcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString WatcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString DefaultItemPath = QStringLiteral("/StatusNotifierItem");

} // namespace

StatusNotifierWatcher::StatusNotifierWatcher(QObject *parent)
    : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    m_services = new QDBusServiceWatcher(this);
    m_services->setConnection(bus);
    m_services->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(m_services, &QDBusServiceWatcher::serviceUnregistered, this, &StatusNotifierWatcher::serviceGone);
    // A panel that starts later takes the name over; we follow its list then.
    auto *watcher = new QDBusServiceWatcher(WatcherService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { becomeWatcherOrFollow(); });
    bus.connect(WatcherService, WatcherPath, WatcherService, QStringLiteral("StatusNotifierItemRegistered"), this,
                SLOT(readPanelItems()));
    bus.connect(WatcherService, WatcherPath, WatcherService, QStringLiteral("StatusNotifierItemUnregistered"), this,
                SLOT(readPanelItems()));
    becomeWatcherOrFollow();
}

QString StatusNotifierWatcher::itemFor(const QString &registered, const QString &sender)
{
    if (registered.startsWith(u'/'))
        return sender + registered;
    if (registered.contains(u'/'))
        return registered;
    return registered + DefaultItemPath;
}

void StatusNotifierWatcher::becomeWatcherOrFollow()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    QDBusConnectionInterface *names = bus.interface();
    const QString owner = names->serviceOwner(WatcherService).value();
    if (m_own && owner == bus.baseService())
        return;
    if (m_own && owner != bus.baseService()) {
        // A panel's watcher replaced ours.
        m_own = false;
        bus.unregisterObject(WatcherPath);
    }
    if (owner.isEmpty()) {
        bus.registerObject(WatcherPath, this,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals
                               | QDBusConnection::ExportAllProperties);
        m_own = names->registerService(WatcherService, QDBusConnectionInterface::DontQueueService,
                                       QDBusConnectionInterface::AllowReplacement)
                    .value()
            == QDBusConnectionInterface::ServiceRegistered;
        if (!m_own)
            bus.unregisterObject(WatcherPath);
        m_items.clear();
        emit itemsChanged();
        if (m_own)
            return;
    }
    readPanelItems();
}

void StatusNotifierWatcher::readPanelItems()
{
    if (m_own)
        return;
    QDBusMessage call = QDBusMessage::createMethodCall(WatcherService, WatcherPath,
                                                       QStringLiteral("org.freedesktop.DBus.Properties"),
                                                       QStringLiteral("Get"));
    call << WatcherService << QStringLiteral("RegisteredStatusNotifierItems");
    call.setAutoStartService(false);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 1000);
    QStringList items;
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        for (const QString &item : qvariant_cast<QDBusVariant>(reply.arguments().first()).variant().toStringList())
            items << itemFor(item, QString());
    if (items != m_items) {
        m_items = items;
        emit itemsChanged();
    }
}

void StatusNotifierWatcher::RegisterStatusNotifierItem(const QString &service)
{
    const QString sender = calledFromDBus() ? message().service() : QString();
    const QString item = itemFor(service, sender);
    if (m_items.contains(item))
        return;
    m_items << item;
    m_services->addWatchedService(item.left(item.indexOf(u'/')));
    emit StatusNotifierItemRegistered(item);
    emit itemsChanged();
}

void StatusNotifierWatcher::RegisterStatusNotifierHost(const QString &)
{
    emit StatusNotifierHostRegistered();
}

void StatusNotifierWatcher::serviceGone(const QString &service)
{
    m_services->removeWatchedService(service);
    const QString prefix = service + u'/';
    bool changed = false;
    for (qsizetype i = m_items.size() - 1; i >= 0; --i) {
        if (m_items[i].startsWith(prefix)) {
            emit StatusNotifierItemUnregistered(m_items.takeAt(i));
            changed = true;
        }
    }
    if (changed)
        emit itemsChanged();
}
