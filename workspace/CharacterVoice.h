#pragma once

#include <QString>

#include <functional>

class FirstPicture;

// The workspace's lines for the assistant character. Every line goes through
// one routine; loading the character and starting its voice would hold up
// the window's first picture, so until then the lines wait in order.
class CharacterVoice
{
public:
    using Routine = std::function<void(QString &command)>;
    // Assistant::Character unless replaced.
    static void setRoutine(Routine routine);

    explicit CharacterVoice(FirstPicture *picture);

    void say(const QString &line);
    // Spoken only while "Graphic" is on.
    void sayWhenGraphic(const QString &line);
    // "Hello!" while "Graphic" is on; "Bye!" once when it has been turned off.
    void greetOrLeave();

private:
    FirstPicture *m_picture;
    bool m_shown = false;
};
