#include "app/Registry.h"

#include <QTest>

// The registry wrapper over the per-user key store.
class RegistryTest : public QObject
{
    Q_OBJECT

    const QString key = QStringLiteral("EUDC\\932");

    static quint32 openedHandle(QString path, quint32 root = Registry::HKEY_CURRENT_USER)
    {
        Registry registry;
        registry.RootKey = root;
        registry.Load(path);
        return registry.Handle();
    }

private slots:
    void init() { QFile::remove(Registry::storePath()); }

    void missingKeysStayClosed()
    {
        Registry registry;
        QCOMPARE(registry.ValueKind, 1);
        QString path = QStringLiteral("Software\\Nowhere");
        registry.Load(path);
        QCOMPARE(registry.Handle(), 0u);
        QCOMPARE(path, QStringLiteral("Software\\Nowhere"));
        QCOMPARE(registry.Data("Anything"), QVariant());
        // A key made under the user's root is not under the machine's.
        registry.CreateInsert(key);
        QVERIFY(openedHandle(key) != 0);
        QCOMPARE(openedHandle(key, Registry::HKEY_LOCAL_MACHINE), 0u);
    }

    void textIsCutAt2047Characters()
    {
        Registry writer;
        writer.CreateInsert(key);
        writer.setData("Short", QStringLiteral("ＭＳ 明朝"));
        // Beyond code page 932 ("é", "—"), text is still kept exactly.
        writer.setData("Beyond", QStringLiteral("/opt/Lanterne é—①/EUDC.TTE"));
        for (int length : {2047, 2048, 3000})
            writer.setData(QString::number(length), QString(length, u'x'));
        writer.Save();
        writer.Unload();
        QCOMPARE(writer.Handle(), 0u);

        Registry reader;
        QString path = key;
        reader.Load(path);
        QCOMPARE(reader.Data("short").toString(), QStringLiteral("ＭＳ 明朝"));
        QCOMPARE(reader.Data("Beyond").toString(), QStringLiteral("/opt/Lanterne é—①/EUDC.TTE"));
        for (int length : {2047, 2048, 3000})
            QCOMPARE(reader.Data(QString::number(length)).toString(), QString(2047, u'x'));
        // Load leaves a key that is already open in place.
        const quint32 handle = reader.Handle();
        QString other = QString::fromLatin1(Registry::ShellFolders);
        reader.Load(other);
        QCOMPARE(reader.Handle(), handle);
    }

    void integerValuesAndTheKindTheStoreReports()
    {
        Registry registry;
        registry.CreateInsert(key);
        registry.ValueKind = Registry::REG_DWORD;
        registry.setData("Count", 123);
        QCOMPARE(registry.Data("Count").toInt(), 123);
        // A named text read of an integer value reports its kind back.
        registry.ValueKind = Registry::REG_SZ;
        QCOMPARE(registry.Data("Count").toInt(), 123);
        QCOMPARE(registry.ValueKind, Registry::REG_DWORD);
        registry.ValueKind = 3;
        QCOMPARE(registry.Data("Count"), QVariant());
    }

    void deleteRemovesAValueOrAKey()
    {
        Registry registry;
        registry.CreateInsert(key + QStringLiteral("\\Child"));
        registry.CreateInsert(key);
        registry.setData("Kept", QStringLiteral("k"));
        registry.setData("Gone", QStringLiteral("g"));
        registry.Delete(QString(), "Gone");
        QCOMPARE(registry.Data("Gone").toString(), QString());
        // With a sub-key name the value name is ignored.
        registry.Delete(QStringLiteral("Child"), "Kept");
        QCOMPARE(registry.Data("Kept").toString(), QStringLiteral("k"));
        QCOMPARE(openedHandle(key + QStringLiteral("\\Child")), 0u);
    }

    void defaultValuesGoThroughSubKeys()
    {
        Registry registry;
        registry.CreateInsert(key);
        registry.UseDefaultValue = true;
        registry.setData("Sub", QStringLiteral("default text"));
        QCOMPARE(registry.Data("Sub").toString(), QStringLiteral("default text"));
        Registry sub;
        QString subPath = key + QStringLiteral("\\Sub");
        sub.Load(subPath);
        QCOMPARE(sub.Data(QString()).toString(), QStringLiteral("default text"));
    }
};

QTEST_GUILESS_MAIN(RegistryTest)
#include "test_registry.moc"
