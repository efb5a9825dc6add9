#include "app/Globals.h"
#include "app/MyApp.h"

#include <QTest>

// The command line and the Windows folder as start-up reads them.
class MyAppTest : public QObject
{
    Q_OBJECT

private slots:
    void commandLineIsComparedExactly()
    {
        // "/?", "/C", "/CLR" and no argument are started for real at start-up.
        using enum MyApp::Job;
        const QList<std::pair<QList<QByteArray>, MyApp::Job>> cases{
            {{"/CLR"}, ClearSettings}, {{"/CL"}, Start}, {{"/CLR "}, Start}, {{"/?", "/?"}, Start}};
        for (auto [arguments, job] : cases) {
            QList<char *> argv{const_cast<char *>("lantern")};
            for (QByteArray &argument : arguments)
                argv.append(argument.data());
            const MyApp::Job asked = MyApp::jobFor(MyApp::commandLine(argv.size(), argv.data()));
            QVERIFY2(asked == job, arguments.join(' ').constData());
        }
    }

    // The Windows folder, and its drive: its first two characters, padded with blanks.
    void windowsFolderAndDrive()
    {
        const std::pair<QByteArray, const char *> cases[] = {{"C:\\WINDOWS", "C:"}, {{}, "  "}, {"D", "D "}};
        for (const auto &[windir, drive] : cases) {
            windir.isNull() ? qunsetenv("WINDIR") : qputenv("WINDIR", windir);
            MyApp::readWindowsFolder();
            qunsetenv("WINDIR");
            QCOMPARE(Globals::WinDir, QString::fromLocal8Bit(windir));
            QCOMPARE(Globals::WinDrive, QString::fromLatin1(drive));
        }
    }
};

QTEST_GUILESS_MAIN(MyAppTest)
#include "test_myapp.moc"
