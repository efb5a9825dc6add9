#include "app/Registry.h"

#include <QTest>

// The registry wrapper over the per-user key store.
class RegistryTest : public QObject
{
    Q_OBJECT

private:
    static const QString Key;

private slots:
    void init()
    {
        QFile::remove(Registry::storePath());
    }

    void openingAMissingKeyLeavesTheHandleEmpty()
    {
        Registry registry;
        QString path = QStringLiteral("Software\\Nowhere");
        registry.Load(path);
        QCOMPARE(registry.Handle(), 0u);
        QCOMPARE(path, QStringLiteral("Software\\Nowhere"));
        QCOMPARE(registry.Data("Anything"), QVariant());
    }

    void textValuesRoundTripAndAreCutAt2047Characters()
    {
        Registry writer;
        writer.CreateInsert(Key);
        QVERIFY(writer.Handle() != 0);
        writer.setData("Short", QStringLiteral("ＭＳ 明朝"));
        writer.setData("Long", QString(3000, u'x'));
        writer.Save();
        writer.Unload();
        QCOMPARE(writer.Handle(), 0u);

        Registry reader;
        QString path = Key;
        reader.Load(path);
        QVERIFY(reader.Handle() != 0);
        QCOMPARE(reader.Data("short").toString(), QStringLiteral("ＭＳ 明朝"));
        QCOMPARE(reader.Data("Long").toString(), QString(2047, u'x'));
        QCOMPARE(reader.Data("Missing").toString(), QString());
    }

    void loadKeepsAKeyThatIsAlreadyOpen()
    {
        Registry registry;
        registry.CreateInsert(Key);
        const quint32 handle = registry.Handle();
        QString other = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders");
        registry.Load(other);
        QCOMPARE(registry.Handle(), handle);
    }

    void integerValuesAndTheKindTheStoreReports()
    {
        Registry registry;
        registry.CreateInsert(Key);
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
        registry.CreateInsert(Key + QStringLiteral("\\Child"));
        registry.setData("Inner", QStringLiteral("1"));
        registry.CreateInsert(Key);
        registry.setData("Kept", QStringLiteral("k"));
        registry.setData("Gone", QStringLiteral("g"));

        registry.Delete(QString(), "Gone");
        QCOMPARE(registry.Data("Gone").toString(), QString());
        QCOMPARE(registry.Data("Kept").toString(), QStringLiteral("k"));

        // With a sub-key name the value name is ignored.
        registry.Delete(QStringLiteral("Child"), "Kept");
        QCOMPARE(registry.Data("Kept").toString(), QStringLiteral("k"));
        Registry child;
        QString childPath = Key + QStringLiteral("\\Child");
        child.Load(childPath);
        QCOMPARE(child.Handle(), 0u);
    }

    void defaultValuesGoThroughSubKeys()
    {
        Registry registry;
        registry.CreateInsert(Key);
        registry.UseDefaultValue = true;
        registry.setData("Sub", QStringLiteral("default text"));
        QCOMPARE(registry.Data("Sub").toString(), QStringLiteral("default text"));

        Registry sub;
        QString subPath = Key + QStringLiteral("\\Sub");
        sub.Load(subPath);
        QVERIFY(sub.Handle() != 0);
        QCOMPARE(sub.Data(QString()).toString(), QStringLiteral("default text"));
    }

    void shellFoldersAnswerTheXdgFolders()
    {
        Registry registry;
        QString path = QString::fromLatin1(Registry::ShellFolders);
        registry.Load(path);
        QVERIFY(registry.Handle() != 0);
        QCOMPARE(registry.Data("AppData").toString(), qEnvironmentVariable("XDG_DATA_HOME"));
        QCOMPARE(registry.Data("Startup").toString(), qEnvironmentVariable("XDG_CONFIG_HOME") + "/autostart");
    }

    void keysOfOtherRootsAreSeparate()
    {
        Registry user;
        user.CreateInsert(Key);
        user.setData("Where", QStringLiteral("user"));
        Registry machine;
        machine.RootKey = Registry::HKEY_LOCAL_MACHINE;
        QString path = Key;
        machine.Load(path);
        QCOMPARE(machine.Handle(), 0u);
    }
};

const QString RegistryTest::Key = QStringLiteral("EUDC\\932");

QTEST_GUILESS_MAIN(RegistryTest)
#include "test_registry.moc"
