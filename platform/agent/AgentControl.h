#pragma once

#include "platform/agent/AgentCharacters.h"

#include <QObject>

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
