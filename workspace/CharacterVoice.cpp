#include "workspace/CharacterVoice.h"

#include "app/Assistant.h"
#include "app/Globals.h"
#include "platform/ErrorTrap.h"
#include "workspace/FirstPicture.h"

namespace {

CharacterVoice::Routine &routine()
{
    static CharacterVoice::Routine character = [](QString &command) { Assistant::Character(command); };
    return character;
}

} // namespace

void CharacterVoice::setRoutine(Routine replacement)
{
    routine() = std::move(replacement);
}

CharacterVoice::CharacterVoice(FirstPicture *picture)
    : m_picture(picture)
{
}

void CharacterVoice::say(const QString &line)
{
    if (!m_picture->isShown()) {
        m_picture->whenShown([this, line] { say(line); });
        return;
    }
    QString command = line;
    ErrorTrap::run("Workspace: character", [&] { routine()(command); });
}

void CharacterVoice::sayWhenGraphic(const QString &line)
{
    if (Globals::GraphicOn)
        say(line);
}

void CharacterVoice::greetOrLeave()
{
    if (Globals::GraphicOn) {
        say(QStringLiteral("Hello!"));
        m_shown = true;
    } else if (m_shown) {
        say(QStringLiteral("Bye!"));
        m_shown = false;
    }
}
