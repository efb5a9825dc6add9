#pragma once

#include "platform/DesktopBackground.h"

#include <QDate>
#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

#include <future>
#include <optional>

class QPainter;
class QRect;

// The workspace's background picture, chosen from the wallpaper settings
// (Globals::WallpaperType, WallpaperDirectory, WallpaperFile):
//   0  a named picture at its natural size from the top left,
//   1  one of the five theme pictures, stretched,
//   2  a picture of the skin picture folder picked at random, stretched,
//   3, 4, 5  a picture of that folder that stays the same for the whole
//      quarter, week of the year or weekday, stretched,
//   6  the desktop's own background, painted afresh on every repaint.
// apply() chooses and loads the picture once; paint() only draws it.
class Wallpaper
{
public:
    // clang-format off
    enum class Mode { Nothing, Natural, Stretched, Desktop };
    // clang-format on

    Wallpaper();

    // The program folder's "SKIN/CG".
    static QString defaultPictureFolder();
    QString pictureFolder() const { return m_folder; }
    void setPictureFolder(const QString &folder) { m_folder = folder; }

    // Starts decoding, on another thread, the picture the settings globals
    // name now, made ready for an area of `areaSize`, so that apply() finds
    // it done; until then paint() shows it. Only the fixed choices (types 0
    // and 1) are read ahead: the rotating ones draw random numbers, and
    // drawing twice changes the pick.
    void readAhead(const QSize &areaSize);

    // Chooses and loads the picture for today from the settings globals.
    void apply();
    void apply(const QDate &today);

    // Paints the background over `area` (the window's client area). With no
    // picture it paints nothing, so the window keeps its own background.
    void paint(QPainter &painter, const QRect &area);

    // True when paint() fills every pixel of `area` with opaque picture.
    bool covers(const QRect &area);
    // paint() over the program's own sky, which is only drawn where the
    // picture leaves something uncovered (a full-screen gradient costs as
    // much as the picture).
    void paintOverSky(QPainter &painter, const QRect &area);

    Mode mode() const { return m_mode; }
    bool isDesktop() const { return m_mode == Mode::Desktop; }
    // The window keeps a picture of its own, except while it shows the desktop.
    bool persistentDrawing() const { return m_mode != Mode::Desktop; }
    // The file shown (empty when none), exactly as it was put together.
    QString picturePath() const { return m_path; }
    // The settings box's wallpaper button that stands for the current choice
    // (101-110), or 0 when none does.
    int pressedButton() const { return m_pressedButton; }

    // The number r in [0, 1) for the rotating types 2-5: from the clock for 2,
    // from the quarter, week of the year or weekday of `today` for 3, 4, 5.
    static float pickNumber(int type, const QDate &today);
    // Entry floor(count × r + 1) of a 1-based list, computed in single
    // precision as the runtime does.
    static int entryFor(int count, float r);
    // Both of the above: the 1-based entry of a list of `count` pictures.
    static int pickIndex(int type, const QDate &today, int count);
    // The files of `folder` with a three-letter extension, in the order the
    // file system lists them.
    static QStringList rotationList(const QString &folder);

    // The theme table: numbers 1-5 (button index - 100).
    static constexpr int ThemeCount = 5;
    static QString themeName(int number); // as written on its button; empty outside 1-5
    static QString themeStem(int number); // half-width file name stem
    static QString themeFile(int number); // stem + ".JPEG"
    // The theme whose pattern (stem + ".???") the file name matches, or 0.
    static int themeMatching(const QString &fileName);

private:
    void chooseRotation(int type, const QDate &today);
    void choosePicture(int type);
    QString pictureFile() const;
    bool load(const QString &path, Mode mode);
    void clear();

    QString m_folder;
    Mode m_mode = Mode::Nothing;
    QString m_path;
    int m_pressedButton = 0;
    QImage m_picture;
    QImage m_shown; // the picture as last painted, scaled to the area

    struct Decoded
    {
        QImage picture;
        QImage shown; // the picture scaled to the size asked for, if any
        QString error;
    };
    static Decoded decode(const QString &path, bool stretched, const QSize &areaSize);
    // The picture read ahead, waited for if need be; null when there is none.
    Decoded *readAheadPicture();
    static bool covers(const QImage &picture, Mode mode, const QRect &area);
    static void paint(QPainter &painter, const QRect &area, const QImage &picture, QImage &shown, Mode mode);
    QString m_aheadPath;
    Mode m_aheadMode = Mode::Nothing;
    std::future<Decoded> m_ahead;
    std::optional<Decoded> m_aheadDone;
    DesktopBackground m_desktop;
};
