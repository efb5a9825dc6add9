#include "workspace/SettingsBox.h"

#include "app/Globals.h"
#include "platform/RuntimeLog.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchTheme.h"
#include "workspace/ChoiceIcon.h"
#include "workspace/Wallpaper.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

// Wide enough for the five themes side by side, narrow enough for a
// 1024 by 768 screen.
constexpr int DesignWidth = 960;

QString themeTip(int number)
{
    return QStringLiteral("クリックすると、背景は「%1」になります。").arg(Wallpaper::themeName(number));
}

} // namespace

SettingsBox::SettingsBox(QWidget *parent)
    : TouchPanel(QStringLiteral("設定"), parent)
{
    setObjectName(QStringLiteral("MenuBoxes"));
    setIndex(100);
    setDraggable(true);
    setAutoFillBackground(false);

    // The buttons exist in index order, so button(i) is a plain lookup.
    addButton(CloseButton, QStringLiteral("閉じる"), QStringLiteral("クリックすると、[設定] ウィンドウを閉じます。"));
    for (int number = 1; number <= Wallpaper::ThemeCount; ++number)
        addButton(FirstThemeButton + number - 1, Wallpaper::themeName(number), themeTip(number));
    addButton(RandomButton, QStringLiteral("ランダム"),
              QStringLiteral("クリックすると、背景は任意に更新されるようになります。"));
    addButton(SeasonButton, QStringLiteral("季節ごと"),
              QStringLiteral("クリックすると、背景は季節ごとに更新されるようになります。"));
    addButton(WeekButton, QStringLiteral("週ごと"),
              QStringLiteral("クリックすると、背景は週ごとに更新されるようになります。"));
    addButton(WeekdayButton, QStringLiteral("日替わり"),
              QStringLiteral("クリックすると、背景は曜日ごとに更新されるようになります。"));
    addButton(DesktopButton, QStringLiteral("Windows"),
              QStringLiteral("クリックすると、背景は Windows の [デスクトップ] と同じになります。"));
    addButton(ShutdownButton, QStringLiteral("コンピュータの電源をつけると起動し 終了と同時に電源も切る"),
              QStringLiteral("クリックしてチェックすると、プログラムがコンピュータの電源とリンクして起動・終了するようになります。"));
    addButton(HowToButton, QStringLiteral("ポイントした場所のヒントを表示する"),
              QStringLiteral("クリックしてチェックすると、マルチメディア機能で操作方法を説明してくれるようになります。"));
    addButton(SmartPencilButton, QStringLiteral("クリックしたら常に [文字入力] で編集する"),
              QStringLiteral("クリックしてチェックすると、編集しているときに [文字入力] ダイアログを表示するようになります。"));

    for (int index = FirstThemeButton; index < RandomButton; ++index) {
        button(index)->setIconSize(clipArtSize());
        // "マイナスイオン" stays on one line under its picture.
        button(index)->setFont(TouchTheme::captionFont(20));
    }
    for (int index = RandomButton; index <= DesktopButton; ++index) {
        button(index)->setIconSize(QSize(choiceIconSide(), choiceIconSide()));
        button(index)->setPicture(ChoiceIcon::draw(index, choiceIconSide()));
    }
    for (int index = ShutdownButton; index <= SmartPencilButton; ++index)
        button(index)->setToggles(true);

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(8);

    layout->addWidget(addHeading(QStringLiteral("背景")));
    auto *themes = new QGridLayout;
    themes->setHorizontalSpacing(10);
    themes->setVerticalSpacing(8);
    for (int column = 0; column < Wallpaper::ThemeCount; ++column) {
        themes->addWidget(button(FirstThemeButton + column), 0, column);
        themes->addWidget(button(RandomButton + column), 1, column);
        themes->setColumnStretch(column, 1);
    }
    layout->addLayout(themes);

    layout->addSpacing(4);
    layout->addWidget(addHeading(QStringLiteral("ユーザー補助")));
    // Read from the top: the option met most often first.
    layout->addWidget(button(SmartPencilButton));
    layout->addWidget(button(HowToButton));
    layout->addWidget(button(ShutdownButton));

    auto *closing = new QHBoxLayout;
    closing->addStretch(1);
    button(CloseButton)->setMinimumWidth(200);
    closing->addWidget(button(CloseButton));
    layout->addLayout(closing);

    // Until the theme pictures are loaded, each theme button shows an empty
    // frame of the picture's size, so the box never changes its size.
    for (int number = 1; number <= Wallpaper::ThemeCount; ++number)
        showThemePicture(number, QPixmap());

    refreshCheckMarks();
    // The rows wrap their captions to the box's width, so the height follows
    // from the width.
    resize(DesignWidth, heightForWidth(DesignWidth));
}

QSize SettingsBox::clipArtSize()
{
    return QSize(128, 72);
}

int SettingsBox::choiceIconSide()
{
    return 42;
}

TouchButton *SettingsBox::addButton(int index, const QString &caption, const QString &tip)
{
    auto *button = new TouchButton(caption, this);
    button->setObjectName(QStringLiteral("MenuBoxMiniChannels"));
    button->setIndex(index);
    button->setTip(tip);
    connect(button, &TouchButton::clicked, this, [this, index] { buttonClicked(index); });
    m_buttons.append(button);
    return button;
}

QLabel *SettingsBox::addHeading(const QString &text)
{
    auto *heading = new QLabel(text, this);
    heading->setObjectName(QStringLiteral("MenuBoxTopics"));
    heading->setFont(TouchTheme::titleFont());
    QPalette palette = heading->palette();
    palette.setColor(QPalette::WindowText, TouchTheme::ink());
    heading->setPalette(palette);
    return heading;
}

TouchButton *SettingsBox::button(int index) const
{
    if (index < FirstButton || index > LastButton)
        return nullptr;
    return m_buttons.at(index - FirstButton);
}

void SettingsBox::setWallpaper(Wallpaper *wallpaper)
{
    m_wallpaper = wallpaper;
}

void SettingsBox::buttonClicked(int index)
{
    if (index == CloseButton) {
        emit closeRequested();
    } else if (index >= FirstThemeButton && index < RandomButton) {
        chooseTheme(index - 100);
    } else if (index >= RandomButton && index <= DesktopButton) {
        chooseRotation(index - 104);
    } else if (index == ShutdownButton) {
        Globals::ShutdownOnQuit = !Globals::ShutdownOnQuit;
        refreshCheckMarks();
        emit shutdownOptionChanged();
    } else if (index == HowToButton) {
        Globals::HowToOn = !Globals::HowToOn;
        refreshCheckMarks();
        emit accessibilityOptionChanged();
    } else if (index == SmartPencilButton) {
        Globals::SmartPencilOn = !Globals::SmartPencilOn;
        refreshCheckMarks();
        emit accessibilityOptionChanged();
    }
}

void SettingsBox::chooseTheme(int number)
{
    Globals::WallpaperType = 1;
    Globals::WallpaperDirectory = QStringLiteral(".");
    Globals::WallpaperFile = Wallpaper::themeFile(number);
    applyWallpaper();
    emit wallpaperChanged();
}

void SettingsBox::chooseRotation(int type)
{
    Globals::WallpaperType = type;
    Globals::WallpaperDirectory.clear();
    Globals::WallpaperFile.clear();
    applyWallpaper();
    emit wallpaperChanged();
}

void SettingsBox::applyWallpaper()
{
    if (!m_wallpaper)
        return;
    m_wallpaper->apply();
    pressWallpaperButton(m_wallpaper->pressedButton());
}

void SettingsBox::pressWallpaperButton(int index)
{
    for (int i = FirstThemeButton; i <= DesktopButton; ++i)
        button(i)->setValue(i == index);
}

void SettingsBox::refreshCheckMarks()
{
    button(ShutdownButton)->setValue(Globals::ShutdownOnQuit);
    button(HowToButton)->setValue(Globals::HowToOn);
    button(SmartPencilButton)->setValue(Globals::SmartPencilOn);
}

void SettingsBox::loadThemePictures()
{
    const QString folder = m_wallpaper ? m_wallpaper->pictureFolder() : Wallpaper::defaultPictureFolder();
    for (int number = 1; number <= Wallpaper::ThemeCount; ++number) {
        const QString path = folder + QLatin1Char('/') + Wallpaper::themeFile(number);
        QImageReader reader(path);
        reader.setAutoTransform(true);
        // Decoding straight to the small size is much quicker than scaling a
        // full picture down.
        const QSize full = reader.size();
        if (full.isValid())
            reader.setScaledSize(full.scaled(clipArtSize(), Qt::KeepAspectRatioByExpanding));
        const QImage picture = reader.read();
        if (picture.isNull())
            RuntimeLog::note("SettingsBox", QStringLiteral("%1: %2").arg(path, reader.errorString()));
        QPixmap clipArt;
        if (!picture.isNull()) {
            // Cut to the button's picture size around the middle.
            QRect middle(QPoint(), clipArtSize());
            middle.moveCenter(picture.rect().center());
            clipArt = QPixmap::fromImage(picture.copy(middle));
        }
        showThemePicture(number, clipArt);
    }
}

bool SettingsBox::hasThemePicture(int number) const
{
    return m_themePictures.value(number - 1, false);
}

void SettingsBox::showThemePicture(int number, const QPixmap &clipArt)
{
    m_themePictures[number - 1] = !clipArt.isNull();
    if (!clipArt.isNull()) {
        button(FirstThemeButton + number - 1)->setPicture(clipArt);
        return;
    }
    QPixmap frame(clipArtSize());
    frame.fill(Qt::transparent);
    QPainter painter(&frame);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(TouchTheme::border(), 2, Qt::DashLine));
    painter.setBrush(TouchTheme::paper().darker(104));
    painter.drawRoundedRect(QRectF(frame.rect()).adjusted(1, 1, -1, -1), 6, 6);
    painter.end();
    button(FirstThemeButton + number - 1)->setPicture(frame);
}
