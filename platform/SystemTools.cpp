#include "platform/SystemTools.h"
#include "platform/RuntimeLog.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

QString lastProgram;

} // namespace

QList<QStringList> SystemTools::commandsFor(int menuIndex)
{
    switch (menuIndex) {
    case Volume:
        return {{"pavucontrol"}, {"gnome-control-center", "sound"}, {"xfce4-mixer"}, {"mate-volume-control"}};
    case Display:
        return {{"gnome-control-center", "display"}, {"xfce4-display-settings"}, {"mate-display-properties"}, {"arandr"}};
    case Printers:
        return {{"system-config-printer"}, {"gnome-control-center", "printers"}, {"xfce4-printer-settings"}};
    case Fonts:
        return {{"gnome-control-center", "fonts"}, {"font-manager"}, {"gnome-font-viewer"}};
    case DateTime:
        return {{"gnome-control-center", "datetime"}, {"time-admin"}, {"xfce4-datetime-settings"}};
    case Internet:
        return {{"gnome-control-center", "network"}, {"nm-connection-editor"}, {"xdg-open", "about:preferences"}};
    default:
        return {};
    }
}

bool SystemTools::open(int menuIndex)
{
    for (const QStringList &command : commandsFor(menuIndex)) {
        const QString program = QStandardPaths::findExecutable(command.first());
        if (program.isEmpty())
            continue;
        if (QProcess::startDetached(program, command.mid(1))) {
            lastProgram = command.first();
            return true;
        }
        RuntimeLog::note("SystemTools::open", QStringLiteral("%1 did not start").arg(program));
    }
    return false;
}

QString SystemTools::lastStarted()
{
    return lastProgram;
}
