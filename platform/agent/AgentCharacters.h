#pragma once

#include <QMap>
#include <QString>

class AgentCharacter;
class AgentControl;

// The control's Characters collection: characters loaded from files under
// identifiers of the caller's choosing (letter case ignored).
class AgentCharacters
{
public:
    explicit AgentCharacters(AgentControl *control)
        : m_control(control)
    {}

    // Fails for an identifier already in use, a damaged file, or a control
    // that is not connected.
    void Load(const QString &id, const QString &path);
    AgentCharacter &Item(const QString &id) const;
    // The character loaded under this identifier, or null (never fails).
    AgentCharacter *find(const QString &id) const;
    void Unload(const QString &id);
    void UnloadAll();
    int Count() const { return int(m_characters.size()); }

private:
    AgentControl *m_control;
    QMap<QString, AgentCharacter *> m_characters; // by lower-case identifier
};
