#pragma once

#include <QString>
#include <QStringList>

// The program's entry point: reads the command line, does one of its three
// jobs (help, clear the settings, or start the writing environment) and loads
// the windows in their fixed order behind the splash.
class MyApp
{
public:
    enum class Job { Help,
                     ClearSettings,
                     Start };

    static int Main(int argc, char **argv);

    // The whole command line as one string, compared exactly: "/?", "/C",
    // "/CLR"; anything else starts the program.
    static QString commandLine(int argc, char **argv);
    static Job jobFor(const QString &commandLine);

    // Reads "WINDIR" into WinDir and its first two characters into WinDrive.
    static void readWindowsFolder();
};
