#pragma once

#include <QDBusContext>
#include <QObject>
#include <QStringList>

class QDBusServiceWatcher;

// The status notifier items ("tray icons") of the session: Fcitx 5 shows
// its input method's mode in its item's icon name. Where the desktop's panel
// keeps a watcher, its list is followed; where none runs (a desktop without
// a tray, a private session), this object is the watcher itself, since items
// register only with one. It gives the name up when a panel's watcher comes.
class StatusNotifierWatcher : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ RegisteredStatusNotifierItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ IsStatusNotifierHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ ProtocolVersion)

public:
    explicit StatusNotifierWatcher(QObject *parent = nullptr);

    // Items as "service/path".
    QStringList RegisteredStatusNotifierItems() const { return m_items; }
    bool IsStatusNotifierHostRegistered() const { return true; }
    int ProtocolVersion() const { return 0; }

    // "service/path" for what an item registered with: its own service name,
    // or an object path on the caller's connection.
    static QString itemFor(const QString &registered, const QString &sender);

public slots:
    void RegisterStatusNotifierItem(const QString &service);
    void RegisterStatusNotifierHost(const QString &service);

signals:
    void StatusNotifierItemRegistered(const QString &item);
    void StatusNotifierItemUnregistered(const QString &item);
    void StatusNotifierHostRegistered();
    // The list changed, whoever keeps it.
    void itemsChanged();

private slots:
    void readPanelItems();
    void serviceGone(const QString &service);

private:
    void becomeWatcherOrFollow();

    QStringList m_items;
    QDBusServiceWatcher *m_services = nullptr;
    bool m_own = false;
};
