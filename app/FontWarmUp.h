#pragma once

#include <future>
#include <thread>

// Reads the font configuration and fills the font database on a thread of
// its own while start-up builds the first windows. The two take ten to
// fifteen milliseconds, and no window needs a font before the main window
// is built. Both libraries guard their tables, so the main thread simply
// waits when it asks for a font before the thread is done.
class FontWarmUp
{
public:
    // Starts at once with the font configuration, which needs no application.
    FontWarmUp();
    // Waits for the thread.
    ~FontWarmUp();

    // The application object now exists: the thread may fill Qt's font
    // database. Without this call it stops after the configuration.
    void applicationStarted();
    // Waits until the thread is done; call before the application object goes.
    void finish();

private:
    std::promise<bool> m_application;
    bool m_told = false;
    std::thread m_thread;
};
