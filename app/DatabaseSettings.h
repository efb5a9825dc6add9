#pragma once

#include <QString>

// The "Database Settings" section of the settings store. No operation of the
// program consults these values; they are kept so that they survive a load and
// a save unchanged.
struct DatabaseSettings
{
    bool Previous = false;
    QString Recent;
    qint16 MoreThan = 0;

    static DatabaseSettings load();
    static void save(const DatabaseSettings &settings);

    // The shared record, filled by the settings loader.
    static DatabaseSettings &current();
    // Whether the loader reached the record in this run.
    static bool &loaded();
};
