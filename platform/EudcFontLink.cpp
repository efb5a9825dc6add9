#include "platform/EudcFontLink.h"
#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"

#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include "platform/CheckedSaveFile.h"

namespace {

int loadedFontId = -1;

QString xmlEscaped(const QString &text)
{
    return text.toHtmlEscaped();
}

} // namespace

QString EudcFontLink::configPath()
{
    return XdgPaths::configHome() + QStringLiteral("/fontconfig/conf.d/90-lantern-private-characters.conf");
}

QString EudcFontLink::familyOf(const QString &fontPath)
{
    if (!QGuiApplication::instance())
        return QString();
    const int id = QFontDatabase::addApplicationFont(fontPath);
    if (id < 0)
        return QString();
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (id != loadedFontId)
        QFontDatabase::removeApplicationFont(id);
    return families.value(0);
}

void EudcFontLink::Enable(bool on, const QString &fontPath)
{
    if (!on) {
        if (loadedFontId >= 0 && QGuiApplication::instance())
            QFontDatabase::removeApplicationFont(loadedFontId);
        loadedFontId = -1;
        return;
    }

    const QFileInfo font(fontPath);
    if (fontPath.isEmpty() || !font.isFile()) {
        QFile::remove(configPath());
        return;
    }

    // Loaded once: every font added makes the font database start over.
    QString family;
    if (QGuiApplication::instance()) {
        if (loadedFontId >= 0)
            QFontDatabase::removeApplicationFont(loadedFontId);
        loadedFontId = QFontDatabase::addApplicationFont(fontPath);
        family = QFontDatabase::applicationFontFamilies(loadedFontId).value(0);
    }

    QDir().mkpath(QFileInfo(configPath()).absolutePath());
    CheckedSaveFile file(configPath());
    if (!file.open()) {
        RuntimeLog::note("EudcFontLink", file.errorString());
        return;
    }
    QString config = QStringLiteral("<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n"
                                    "<!-- The user's private characters, linked by Lantern while it runs. -->\n"
                                    "<fontconfig>\n  <dir>%1</dir>\n")
                         .arg(xmlEscaped(font.absolutePath()));
    if (!family.isEmpty())
        config += QStringLiteral("  <match target=\"pattern\">\n"
                                 "    <edit name=\"family\" mode=\"append_last\" binding=\"weak\"><string>%1</string></edit>\n"
                                 "  </match>\n")
                      .arg(xmlEscaped(family));
    config += QStringLiteral("</fontconfig>\n");
    file.write(config.toUtf8());
    if (!file.commit())
        RuntimeLog::note("EudcFontLink", file.errorString());
}
