#include "platform/ime/InputMethodTool.h"

#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

QString InputMethodTool::mozcTool()
{
    for (const QString &path : {QStringLiteral("/usr/lib/mozc/mozc_tool"), QStringLiteral("/usr/libexec/mozc/mozc_tool")})
        if (QFileInfo(path).isExecutable())
            return path;
    return QStandardPaths::findExecutable(QStringLiteral("mozc_tool"));
}

InputMethodTool::Command InputMethodTool::command(Tool tool, InputMethodFramework::Kind framework,
                                                  const QString &word, const QString &reading)
{
    const QString mozc = mozcTool();
    switch (tool) {
    case Settings:
        if (!mozc.isEmpty())
            return {mozc, {QStringLiteral("--mode=config_dialog")}, {}};
        // Without Mozc's tool, the framework's own settings.
        for (const QString &name : framework == InputMethodFramework::Fcitx5
                 ? QStringList{QStringLiteral("fcitx5-configtool")}
                 : QStringList{QStringLiteral("ibus-setup")})
            if (const QString path = QStandardPaths::findExecutable(name); !path.isEmpty())
                return {path, {}, {}};
        return {};
    case WordRegistration: {
        if (mozc.isEmpty())
            return {};
        QStringList environment;
        if (!word.isEmpty())
            environment << QStringLiteral("default_entry_of_word_register=") + word;
        if (!reading.isEmpty())
            environment << QStringLiteral("default_reading_entry_of_word_register=") + reading;
        return {mozc, {QStringLiteral("--mode=word_register_dialog")}, environment};
    }
    case Dictionary:
        if (mozc.isEmpty())
            return {};
        return {mozc, {QStringLiteral("--mode=dictionary_tool")}, {}};
    }
    return {};
}

bool InputMethodTool::start(const Command &command)
{
    if (command.isEmpty())
        return false;
    QProcess process;
    process.setProgram(command.program);
    process.setArguments(command.arguments);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &entry : command.environment) {
        const qsizetype equals = entry.indexOf(u'=');
        environment.insert(entry.left(equals), entry.mid(equals + 1));
    }
    process.setProcessEnvironment(environment);
    return process.startDetached();
}
