#include "app/DatabaseSettings.h"
#include "app/SettingsStore.h"
#include "platform/vb/VbConvert.h"

namespace {
const QString Section = QStringLiteral("Database Settings");
}

DatabaseSettings DatabaseSettings::load()
{
    DatabaseSettings settings;
    settings.Previous = VbConvert::toBoolean(SettingsStore::get(Section, QStringLiteral("Previous"), QStringLiteral("False")));
    settings.Recent = SettingsStore::get(Section, QStringLiteral("Recent"), QString());
    settings.MoreThan = VbConvert::toInteger(SettingsStore::get(Section, QStringLiteral("More Than"), QStringLiteral("0")));
    return settings;
}

void DatabaseSettings::save(const DatabaseSettings &settings)
{
    SettingsStore::put(Section, QStringLiteral("Previous"), VbConvert::fromBoolean(settings.Previous));
    SettingsStore::put(Section, QStringLiteral("Recent"), settings.Recent);
    SettingsStore::put(Section, QStringLiteral("More Than"), QString::number(settings.MoreThan));
}

DatabaseSettings &DatabaseSettings::current()
{
    static DatabaseSettings record;
    return record;
}

bool &DatabaseSettings::loaded()
{
    static bool reached = false;
    return reached;
}
