#pragma once

#include <QObject>
#include <QRect>

// Where the program lets its character stand, and where the character's
// words are shown. A program that hosts the character gives it a perch in
// the free space of its layout, so that it never covers a control, and
// shows its words in a place of its own instead of a floating balloon.
// Without a host the character has the whole screen and a balloon.
class CharacterStage : public QObject
{
    Q_OBJECT

public:
    static CharacterStage *instance();

    bool hosted() const { return m_hosted; }
    // In screen coordinates; empty while the layout has no room: the
    // character then steps aside until it has.
    QRect perch() const { return m_perch; }
    void setPerch(const QRect &perch);

    // The largest picture of the given shape that fits the perch, standing
    // at its bottom right.
    QRect placeIn(QSize picture) const;

signals:
    void perchChanged();
    // Sent by the character while it speaks on a hosted stage.
    void wordsShown(const QString &speaker, const QString &words);

private:
    bool m_hosted = false;
    QRect m_perch;
};
