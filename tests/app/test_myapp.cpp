#include "app/Globals.h"
#include "app/MyApp.h"

#include <QTest>

// The command line and the Windows folder as start-up reads them.
class MyAppTest : public QObject
{
    Q_OBJECT

private slots:
    void commandLineIsComparedExactly_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("job");
        const int help = int(MyApp::Job::Help), clear = int(MyApp::Job::ClearSettings), start = int(MyApp::Job::Start);
        QTest::newRow("/?") << QStringList{"/?"} << help;
        QTest::newRow("/C") << QStringList{"/C"} << clear;
        QTest::newRow("/CLR") << QStringList{"/CLR"} << clear;
        QTest::newRow("empty") << QStringList{} << start;
        QTest::newRow("lower case") << QStringList{"/c"} << start;
        QTest::newRow("leading blank") << QStringList{" /C"} << start;
        QTest::newRow("trailing blank") << QStringList{"/CLR "} << start;
        QTest::newRow("further word") << QStringList{"/C", "x"} << start;
        QTest::newRow("/? twice") << QStringList{"/?", "/?"} << start;
    }

    void commandLineIsComparedExactly()
    {
        QFETCH(QStringList, arguments);
        QList<QByteArray> bytes{"lantern"};
        for (const QString &argument : arguments)
            bytes.append(argument.toLocal8Bit());
        QList<char *> argv;
        for (QByteArray &b : bytes)
            argv.append(b.data());
        const QString line = MyApp::commandLine(argv.size(), argv.data());
        QCOMPARE(line, arguments.join(u' '));
        QTEST(int(MyApp::jobFor(line)), "job");
    }

    void windowsFolderAndDrive_data()
    {
        QTest::addColumn<QByteArray>("windir");
        QTest::addColumn<QString>("drive");
        QTest::newRow("set") << QByteArray("C:\\WINDOWS") << QStringLiteral("C:");
        QTest::newRow("unset") << QByteArray() << QStringLiteral("  ");
        QTest::newRow("one character") << QByteArray("D") << QStringLiteral("D ");
    }

    void windowsFolderAndDrive()
    {
        QFETCH(QByteArray, windir);
        if (windir.isNull())
            qunsetenv("WINDIR");
        else
            qputenv("WINDIR", windir);
        MyApp::readWindowsFolder();
        QCOMPARE(Globals::WinDir, QString::fromLocal8Bit(windir));
        QTEST(Globals::WinDrive, "drive");
        qunsetenv("WINDIR");
    }
};

QTEST_GUILESS_MAIN(MyAppTest)
#include "test_myapp.moc"
