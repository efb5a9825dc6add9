#pragma once

#include <QMap>
#include <QObject>
#include <QString>

class AgentCharacter;
class AgentControl;

// The control's Characters collection: characters loaded from files under
// identifiers of the caller's choosing (letter case ignored).
class AgentCharacters
{
public:
    explicit AgentCharacters(AgentControl *control) : m_control(control) {}

    // Fails for an identifier already in use, a damaged file, or a control
    // that is not connected.
    void Load(const QString &id, const QString &path);
    AgentCharacter &Item(const QString &id) const;
    void Unload(const QString &id);
    void UnloadAll();
    int Count() const { return int(m_characters.size()); }

private:
    AgentControl *m_control;
    QMap<QString, AgentCharacter *> m_characters; // by lower-case identifier
};

// Stands in for the Microsoft Agent control: once connected, it loads
// characters from our "ACS" files and lets the program drive them.
class AgentControl : public QObject
{
    Q_OBJECT

public:
    explicit AgentControl(QObject *parent = nullptr);
    ~AgentControl() override;

    bool Connected() const { return m_connected; }
    // Disconnecting unloads every character.
    void setConnected(bool connected);

    AgentCharacters &Characters() { return m_characters; }

private:
    bool m_connected = false;
    AgentCharacters m_characters;
};
