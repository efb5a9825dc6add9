#pragma once

#include <QPoint>
#include <QString>

class SpeechSynthesizer;

// One action waiting in a character's queue. Actions play one after the other.
struct AgentRequest
{
    // clang-format off
    enum class Kind { Show, Hide, Play, Speak, MoveTo, GestureAt };

    explicit AgentRequest(Kind kind) : kind(kind) {}
    // clang-format on

    Kind kind;
    QString animation;                   // Play
    QString text;                        // Speak, with its pause tags
    QPoint point;                        // MoveTo, GestureAt
    int speed = 0;                       // MoveTo: milliseconds for the way
    SpeechSynthesizer *speech = nullptr; // Speak: started as soon as it is queued

    // How the request reads in the character's log: "Play Greet", "MoveTo 0,0".
    QString describe() const
    {
        switch (kind) {
        // clang-format off
        case Kind::Show: return QStringLiteral("Show");
        case Kind::Hide: return QStringLiteral("Hide");
        case Kind::Play: return QStringLiteral("Play ") + animation;
        case Kind::Speak: return QStringLiteral("Speak ") + text;
        case Kind::MoveTo: return QStringLiteral("MoveTo %1,%2").arg(point.x()).arg(point.y());
        case Kind::GestureAt: return QStringLiteral("GestureAt %1,%2").arg(point.x()).arg(point.y());
            // clang-format on
        }
        return QString();
    }
};
