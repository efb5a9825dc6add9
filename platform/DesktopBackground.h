#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QString>

class QPainter;
class QRect;

// What the desktop itself shows behind the windows: its wallpaper picture and
// its background colour, read from the desktop's own settings (GNOME through
// gsettings, Xfce through xfconf-query). Without a desktop (no display, or a
// desktop that says nothing) it is a plain colour.
class DesktopBackground
{
public:
    // clang-format off
    enum class Placement { Zoom, Stretched, Scaled, Centered, Tiled };
    // clang-format on

    // Asks the running desktop. Never blocks for long: each question has a
    // short time limit, and a headless session asks nothing.
    static DesktopBackground current();

    // A background of one colour only.
    static DesktopBackground plain(const QColor &colour);

    // The colour a desktop shows when it tells us nothing.
    static QColor defaultColour();

    // Reads a path from the answers "'file:///usr/share/a%20b.jpg'",
    // "'/home/x/b.png'" or "/home/x/b.png"; empty for "''" or anything else.
    static QString pathFromSetting(const QString &answer);
    // Reads "'#3465a4'" (or "#3465a4"); an invalid colour for anything else.
    static QColor colourFromSetting(const QString &answer);
    static Placement placementFromSetting(const QString &answer);

    QString picturePath() const { return m_picturePath; }
    QColor colour() const { return m_colour; }
    Placement placement() const { return m_placement; }

    // Loads the picture named by the settings (once); a picture that cannot
    // be loaded leaves the plain colour.
    void loadPicture();
    bool hasPicture() const { return !m_picture.isNull(); }

    void paint(QPainter &painter, const QRect &area) const;

private:
    QPixmap render(const QSize &areaSize) const;

    QString m_picturePath;
    QColor m_colour = defaultColour();
    Placement m_placement = Placement::Zoom;
    QImage m_picture;
    mutable QPixmap m_rendered;
};
