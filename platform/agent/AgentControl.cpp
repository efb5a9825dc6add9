#include "platform/agent/AgentControl.h"

AgentControl::AgentControl(QObject *parent)
    : QObject(parent)
    , m_characters(this)
{
}

AgentControl::~AgentControl()
{
    m_characters.UnloadAll();
}

void AgentControl::setConnected(bool connected)
{
    if (!connected)
        m_characters.UnloadAll();
    m_connected = connected;
}
