#include "workspace/SkinSounds.h"

#include "app/Globals.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchPanel.h"
#include "workspace/Workspace.h"

#include <QApplication>
#include <QRegularExpression>

QString SkinSounds::folder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/SKIN");
}

QString SkinSounds::arrayName(const QObject *control)
{
    static const QRegularExpression trailingDigits(QStringLiteral("\\d+$"));
    return control->objectName().remove(trailingDigits);
}

qint16 SkinSounds::suppressFor(const QString &array, int index)
{
    const qint16 music = Globals::MusicOn ? -1 : 0;
    if (array == u"Channels")
        return index == Workspace::MusicButton ? music : qint16(~music);
    if (array == u"MenuBoxMiniChannels" || array == u"SideMenuBarMiniChannels")
        return qint16(~music);
    return 0;
}

void SkinSounds::answerSoundQueries(QWidget *root)
{
    for (TouchButton *button : root->findChildren<TouchButton *>()) {
        QObject::connect(button, &TouchButton::soundQuery, root, [button, name = arrayName(button)](qint16 &suppress) {
            suppress = suppressFor(name, button->index());
        });
    }
}

void SkinSounds::assignEverywhere(QWidget *main)
{
    QList<QWidget *> roots = QApplication::topLevelWidgets();
    if (!roots.contains(main))
        roots.append(main);
    assign(roots);
}

void SkinSounds::assign(QList<QWidget *> pending)
{
    const QString skin = folder();
    while (!pending.isEmpty()) {
        QWidget *widget = pending.takeFirst();
        for (QObject *child : widget->children()) {
            if (auto *childWidget = qobject_cast<QWidget *>(child); childWidget && !childWidget->isWindow())
                pending.append(childWidget);
        }
        const QString name = arrayName(widget);
        if (auto *button = qobject_cast<TouchButton *>(widget)) {
            if (name.endsWith(u"MiniChannels"))
                button->setSoundFile(skin + QStringLiteral("/2.WAV"));
            else if (name == u"Channels")
                button->setSoundFile(skin + QStringLiteral("/1.WAV"));
            else if (name == u"NumKeys")
                button->setSoundFile(skin + QStringLiteral("/3.WAV"));
        } else if (auto *panel = qobject_cast<TouchPanel *>(widget); panel && name == u"MIDI") {
            panel->setMusicFile(skin + QStringLiteral("/2.MIDI"));
            panel->setSoundPlaying(Globals::MusicOn);
        }
    }
}
