#pragma once

#include <QList>

#include <functional>

// Work that would hold up the window's first full picture (the character,
// the music, the font link, the document lists) waits here until the picture
// is on the screen, and then runs in the order it was asked for.
class FirstPicture
{
public:
    bool isShown() const { return m_shown; }
    // Runs the job once the picture is shown; at once after that.
    void whenShown(std::function<void()> job);
    void markShown();
    // A window that never showed: what waited is dropped, later jobs run at once.
    void dropWaiting();

private:
    bool m_shown = false;
    QList<std::function<void()>> m_waiting;
};
