#include "platform/agent/AgentCharacters.h"
#include "platform/agent/AgentCharacter.h"
#include "platform/agent/AgentControl.h"
#include "platform/agent/AgentError.h"
#include "platform/agent/CharacterFile.h"

void AgentCharacters::Load(const QString &id, const QString &path)
{
    if (!m_control->Connected())
        throw AgentError::notConnected();
    const QString key = id.toLower();
    if (m_characters.contains(key))
        throw AgentError::alreadyLoaded(id);
    const CharacterFile file = CharacterFile::read(path);
    m_characters.insert(key, new AgentCharacter(id, file, m_control));
}

AgentCharacter *AgentCharacters::find(const QString &id) const
{
    return m_characters.value(id.toLower());
}

AgentCharacter &AgentCharacters::Item(const QString &id) const
{
    AgentCharacter *character = find(id);
    if (!character)
        throw AgentError::notLoaded(id);
    return *character;
}

void AgentCharacters::Unload(const QString &id)
{
    AgentCharacter *character = m_characters.take(id.toLower());
    if (!character)
        throw AgentError::notLoaded(id);
    delete character;
}

void AgentCharacters::UnloadAll()
{
    qDeleteAll(m_characters);
    m_characters.clear();
}
