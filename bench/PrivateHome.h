#pragma once

#include <QTemporaryDir>

// A benchmark's own HOME and XDG folders and a recording power control, set
// before the application starts, so that a run never touches the user's
// files or the machine. Offscreen unless a display is asked for.
class PrivateHome
{
public:
    PrivateHome()
    {
        qputenv("HOME", m_root.path().toLocal8Bit());
        for (const char *name : {"DATA", "CONFIG", "STATE", "CACHE"}) {
            const QByteArray variable = QByteArray("XDG_") + name + "_HOME";
            qputenv(variable.constData(), m_root.filePath(QString::fromLatin1(name).toLower()).toLocal8Bit());
        }
        qputenv("LANTERN_POWER_CONTROL", ("record:" + m_root.filePath("power.log")).toLocal8Bit());
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }

private:
    QTemporaryDir m_root;
};
