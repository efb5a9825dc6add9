#include "platform/InstanceGuard.h"
#include "support/FileBytes.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

// Only one copy runs per user: a second copy is refused whatever holds the
// name, a name that could not be taken never counts as taken, and a bus whose
// answer cannot be read does not keep the window from opening.

namespace {

// A bus of the test's own, with the owning of the program's name allowed or
// refused.
class PrivateBus
{
public:
    explicit PrivateBus(bool refuseTheName)
    {
        const QString config = m_folder.filePath(u"bus.conf"_s);
        if (!writeFileBytes(config, u"<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\""
                                    " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
                                    "<busconfig><type>session</type><listen>unix:dir=%1</listen><auth>EXTERNAL</auth>"
                                    "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>%2</policy>"
                                    "</busconfig>"_s.arg(m_folder.path(), refuseTheName ? u"<deny own=\"jp.fernwick.Lantern\"/>"_s : QString())
                                        .toUtf8()))
            return;
        m_daemon.start(u"dbus-daemon"_s, {u"--config-file="_s + config, u"--print-address"_s, u"--nofork"_s});
        if (m_daemon.waitForStarted() && m_daemon.waitForReadyRead(5000))
            m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    ~PrivateBus()
    {
        for (const QString &name : std::as_const(m_connections))
            QDBusConnection::disconnectFromBus(name);
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    bool ready() const { return !m_address.isEmpty(); }

    QDBusConnection connect()
    {
        const QString name = u"guard-test-%1"_s.arg(m_connections.size());
        m_connections.append(name);
        return QDBusConnection::connectToBus(m_address, name);
    }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_connections;
};

} // namespace

class TestInstanceGuard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty())
            QSKIP("dbus-daemon is not installed");
    }

    void onTheBus_data()
    {
        QTest::addColumn<bool>("refused");
        QTest::addColumn<bool>("heldByAnother");
        QTest::addColumn<bool>("claimed");
        QTest::newRow("free") << false << false << true;
        QTest::newRow("held by another copy") << false << true << false;
        QTest::newRow("answer refused") << true << false << true;
    }

    void onTheBus()
    {
        QFETCH(bool, refused);
        QFETCH(bool, heldByAnother);
        QFETCH(bool, claimed);
        PrivateBus bus(refused);
        QVERIFY(bus.ready());
        QDBusConnection other = bus.connect();
        QVERIFY(other.isConnected());
        if (heldByAnother)
            QVERIFY(other.registerService(QString::fromLatin1(InstanceGuard::ServiceName)));
        QDBusConnection own = bus.connect();
        QCOMPARE(InstanceGuard::claim(own), claimed);
        // A refused name is really not had: the window opened without it.
        if (refused)
            QVERIFY(!own.interface()->isServiceRegistered(QString::fromLatin1(InstanceGuard::ServiceName)).value());
        QVERIFY(InstanceGuard::usesSessionBus());
        // Once held, the name keeps a second copy out.
        if (claimed && !refused)
            QVERIFY(!InstanceGuard::claim(bus.connect()));
    }

    // Without a session bus, a local socket in the temporary folder.
    void withoutABus()
    {
        QTemporaryDir folder;
        qputenv("TMPDIR", folder.path().toLocal8Bit());
        const QDBusConnection none(u"no bus at all"_s);
        const QString socket = folder.filePath(u"jp.fernwick.Lantern-%1"_s.arg(getuid()));

        // Something that is no socket sits where the name goes and cannot be
        // cleared away: nothing is held, so this copy must not run.
        QVERIFY(QDir().mkpath(socket + u"/inside"_s));
        QVERIFY(!InstanceGuard::claim(none));
        QVERIFY(!InstanceGuard::usesSessionBus());

        // A stale file is cleared and the name taken; a second copy is refused.
        QVERIFY(QDir(socket).removeRecursively());
        QVERIFY(writeFileBytes(socket, {}));
        QVERIFY(InstanceGuard::claim(none));
        QVERIFY(!InstanceGuard::claim(none));
    }
};

QTEST_GUILESS_MAIN(TestInstanceGuard)
#include "test_instance_guard.moc"
