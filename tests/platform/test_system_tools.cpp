// The system menu's tools: the first installed command of an entry starts,
// a missing tool is passed over, and an entry with none starts nothing.
#include "platform/SystemTools.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class SystemToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstInstalledCommandStarts();
    void missingToolsAreIgnored();

private:
    // A stand-in tool: a script that writes its name and arguments into a file.
    void install(const QString &name);
    QString startedWith(const QString &name);

    std::unique_ptr<QTemporaryDir> m_binFolder;
    QTemporaryDir &m_bin() { return *m_binFolder; }
    QByteArray m_path;
};

void SystemToolsTest::init()
{
    m_binFolder = std::make_unique<QTemporaryDir>();
    m_path = qgetenv("PATH");
    qputenv("PATH", m_bin().path().toLocal8Bit());
}

void SystemToolsTest::cleanup()
{
    qputenv("PATH", m_path);
}

void SystemToolsTest::install(const QString &name)
{
    QFile script(m_bin().filePath(name));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(QStringLiteral("#!/bin/sh\necho \"$@\" > \"%1.ran\"\n").arg(m_bin().filePath(name)).toLocal8Bit());
    script.close();
    script.setPermissions(script.permissions() | QFile::ExeOwner);
}

QString SystemToolsTest::startedWith(const QString &name)
{
    QFile ran(m_bin().filePath(name + QStringLiteral(".ran")));
    for (int i = 0; i < 50 && !ran.exists(); ++i)
        QTest::qWait(50);
    if (!ran.open(QIODevice::ReadOnly))
        return QStringLiteral("(not started)");
    return QString::fromLocal8Bit(ran.readAll()).trimmed();
}

void SystemToolsTest::firstInstalledCommandStarts()
{
    // Volume: the mixer when it is there; otherwise the desktop's sound page.
    install(QStringLiteral("gnome-control-center"));
    QVERIFY(SystemTools::open(SystemTools::Volume));
    QCOMPARE(SystemTools::lastStarted(), QStringLiteral("gnome-control-center"));
    QCOMPARE(startedWith(QStringLiteral("gnome-control-center")), QStringLiteral("sound"));
    install(QStringLiteral("pavucontrol"));
    QVERIFY(SystemTools::open(SystemTools::Volume));
    QCOMPARE(SystemTools::lastStarted(), QStringLiteral("pavucontrol"));

    const struct
    {
        int entry;
        const char *page;
    } pages[] = {{SystemTools::Display, "display"},   {SystemTools::Printers, "printers"},
                 {SystemTools::Fonts, "fonts"},       {SystemTools::DateTime, "datetime"},
                 {SystemTools::Internet, "network"}};
    for (const auto &page : pages) {
        QFile::remove(m_bin().filePath(QStringLiteral("gnome-control-center.ran")));
        QVERIFY(SystemTools::open(page.entry));
        QCOMPARE(startedWith(QStringLiteral("gnome-control-center")), QString::fromLatin1(page.page));
    }
}

void SystemToolsTest::missingToolsAreIgnored()
{
    for (int entry = 0; entry <= 10; ++entry)
        QVERIFY(!SystemTools::open(entry));
}

QTEST_GUILESS_MAIN(SystemToolsTest)
#include "test_system_tools.moc"
