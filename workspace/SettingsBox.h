#pragma once

#include "platform/touch/TouchPanel.h"

#include <QList>
#include <QSize>

class QLabel;
class TouchButton;
class Wallpaper;

// The settings box, the workspace's draggable box MenuBoxes(100): the
// wallpaper choice (five theme pictures and five changing backgrounds) and
// three accessibility check boxes. Its buttons are MenuBoxMiniChannels
// 100-113. Every click writes its setting into the settings globals at once;
// the settings are saved when the workspace unloads.
class SettingsBox : public TouchPanel
{
    Q_OBJECT

public:
    static constexpr int CloseButton = 100;
    static constexpr int FirstThemeButton = 101; // 101-105: the five themes
    static constexpr int RandomButton = 106;     // wallpaper types 2-6 are
    static constexpr int SeasonButton = 107;     // buttons 106-110
    static constexpr int WeekButton = 108;
    static constexpr int WeekdayButton = 109;
    static constexpr int DesktopButton = 110;
    static constexpr int ShutdownButton = 111;
    static constexpr int HowToButton = 112;
    static constexpr int SmartPencilButton = 113;
    static constexpr int FirstButton = CloseButton;
    static constexpr int LastButton = SmartPencilButton;

    explicit SettingsBox(QWidget *parent = nullptr);

    // MenuBoxMiniChannels(index) for 100-113; nullptr for any other index.
    TouchButton *button(int index) const;
    QList<TouchButton *> buttons() const { return m_buttons; }

    // The wallpaper that the wallpaper buttons choose; the box re-applies it
    // after each choice and shows the choice on its buttons.
    void setWallpaper(Wallpaper *wallpaper);
    Wallpaper *wallpaper() const { return m_wallpaper; }

    // Draws the wallpaper from the settings again and presses the button that
    // stands for it (releasing the other wallpaper buttons).
    void applyWallpaper();
    // Presses wallpaper button `index` (101-110) and releases the others;
    // any other index releases them all.
    void pressWallpaperButton(int index);

    // 111, 112, 113 pressed exactly while "Shutdown", "How-to" and
    // "Smart Pencil" are on.
    void refreshCheckMarks();

    // Loads the picture of every theme button from the theme files; a theme
    // whose file cannot be read shows an empty frame.
    void loadThemePictures();
    // Whether theme `number` (1-5) shows its picture.
    bool hasThemePicture(int number) const;

    // The full size of a theme picture on its button; the pictures shrink
    // when the box is too low for them.
    static QSize clipArtSize();
    // The full side of the drawn pictures on the changing-background buttons.
    static int choiceIconSide();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

signals:
    // Button 100: the box wants to be closed (the workspace goes back to the
    // welcome box).
    void closeRequested();
    // Button 111 changed "Shutdown"; the power-off and quit buttons swap.
    void shutdownOptionChanged();
    // Buttons 112 and 113 changed "How-to" or "Smart Pencil".
    void accessibilityOptionChanged();
    // Buttons 101-110 changed the wallpaper settings; the wallpaper has been
    // applied again when a wallpaper is attached, and needs repainting.
    void wallpaperChanged();

private:
    TouchButton *addButton(int index, const QString &caption, const QString &tip);
    QLabel *addHeading(const QString &text);
    void buttonClicked(int index);
    void chooseTheme(int number);
    void chooseRotation(int type);
    void showThemePicture(int number, const QPixmap &clipArt);
    void fitPictures();
    void setPictureHeight(int pictureHeight, bool choiceIcons);

    QList<TouchButton *> m_buttons; // index 100 first
    Wallpaper *m_wallpaper = nullptr;
    QList<bool> m_themePictures = QList<bool>(5, false);
};
