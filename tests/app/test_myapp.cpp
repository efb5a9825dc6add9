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
        QTest::addColumn<QList<QByteArray>>("arguments");
        QTest::addColumn<int>("job");
        // "/?", "/C", "/CLR" and no argument are started for real at start-up.
        const int clear = int(MyApp::Job::ClearSettings), start = int(MyApp::Job::Start);
        QTest::newRow("/CLR") << QList<QByteArray>{"/CLR"} << clear;
        QTest::newRow("/CL") << QList<QByteArray>{"/CL"} << start;
        QTest::newRow("trailing blank") << QList<QByteArray>{"/CLR "} << start;
        QTest::newRow("/? twice") << QList<QByteArray>{"/?", "/?"} << start;
    }

    void commandLineIsComparedExactly()
    {
        QFETCH(QList<QByteArray>, arguments);
        arguments.prepend("lantern");
        QList<char *> argv;
        for (QByteArray &argument : arguments)
            argv.append(argument.data());
        QTEST(int(MyApp::jobFor(MyApp::commandLine(argv.size(), argv.data()))), "job");
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
        qunsetenv("WINDIR");
        QCOMPARE(Globals::WinDir, QString::fromLocal8Bit(windir));
        QTEST(Globals::WinDrive, "drive");
    }
};

QTEST_GUILESS_MAIN(MyAppTest)
#include "test_myapp.moc"
