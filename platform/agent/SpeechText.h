#pragma once

#include <QList>
#include <QString>

// A text to be spoken, with the control's pause tags "\Pau=N\" (N in
// milliseconds) taken apart: what the voice reads, what the balloon shows.
class SpeechText
{
public:
    struct Piece
    {
        QString text;    // words to read; empty for a pause
        int pauseMs = 0; // silence, for a pause
    };

    // The text and the pauses in their order; consecutive pauses are kept
    // apart, blank pieces are dropped.
    static QList<Piece> split(const QString &tagged);
    // The words alone, pause tags removed, for the balloon.
    static QString displayText(const QString &tagged);
};
