#include "workspace/SettingsBox.h"

#include "app/Globals.h"
#include "platform/RuntimeLog.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchTheme.h"
#include "workspace/ChoiceIcon.h"
#include "workspace/Wallpaper.h"

#include <QGridLayout>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

// Wide enough for the five themes side by side, narrow enough for a
// 1024 by 768 screen.
constexpr int DesignWidth = 960;
// The check boxes' type size as designed; the workspace may make it larger.
constexpr int DesignTypeSize = 22;
// Pictures are kept at twice their designed size, so that they stay sharp
// when the box grows with its type.
constexpr int PictureDetail = 2;

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
        // "マイナスイオン" stays on one line under its picture.
        button(index)->setFont(TouchTheme::captionFont(20));
    }
    for (int index = ShutdownButton; index <= SmartPencilButton; ++index) {
        button(index)->setToggles(true);
        button(index)->setFont(TouchTheme::captionFont(DesignTypeSize));
    }

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(6);

    layout->addWidget(addHeading(QStringLiteral("背景")));
    auto *wallpapers = new QGridLayout;
    wallpapers->setHorizontalSpacing(10);
    wallpapers->setVerticalSpacing(6);
    for (int column = 0; column < Wallpaper::ThemeCount; ++column) {
        wallpapers->addWidget(button(FirstThemeButton + column), 0, column);
        wallpapers->addWidget(button(RandomButton + column), 1, column);
        wallpapers->setColumnStretch(column, 1);
    }
    layout->addLayout(wallpapers);

    layout->addWidget(addHeading(QStringLiteral("ユーザー補助")));
    // The check boxes read from the top, the option met most often first;
    // the close button waits at the bottom right, beside the last of them.
    auto *options = new QGridLayout;
    options->setHorizontalSpacing(16);
    options->setVerticalSpacing(6);
    options->addWidget(button(SmartPencilButton), 0, 0);
    options->addWidget(button(HowToButton), 1, 0);
    options->addWidget(button(ShutdownButton), 2, 0);
    button(CloseButton)->setMinimumWidth(180);
    button(CloseButton)->setFont(TouchTheme::captionFont(22));
    options->addWidget(button(CloseButton), 2, 1, Qt::AlignBottom);
    options->setColumnStretch(0, 1);
    layout->addLayout(options);

    // Until the theme pictures are loaded, each theme button shows an empty
    // frame of the picture's size, so the box never changes its size.
    for (int number = 1; number <= Wallpaper::ThemeCount; ++number)
        showThemePicture(number, QPixmap());
    for (int index = RandomButton; index <= DesktopButton; ++index)
        button(index)->setPicture(ChoiceIcon::draw(index, choiceIconSide() * PictureDetail));

    refreshCheckMarks();
    setPictureHeight(clipArtSize().height(), true);
    resize(DesignWidth, heightForWidth(DesignWidth));
}

QSize SettingsBox::clipArtSize()
{
    return QSize(160, 90);
}

int SettingsBox::choiceIconSide()
{
    return 60;
}

void SettingsBox::resizeEvent(QResizeEvent *event)
{
    TouchPanel::resizeEvent(event);
    // Fitting lays the box out again and again; a hidden box is fitted when
    // it shows.
    if (isVisible())
        fitPictures();
}

void SettingsBox::showEvent(QShowEvent *event)
{
    TouchPanel::showEvent(event);
    fitPictures();
}

// The rows of text keep their size (type that can be read comes first); the
// pictures take the height that is left: the theme pictures shrink, and when
// even that is not enough the changing backgrounds drop their small pictures.
void SettingsBox::fitPictures()
{
    if (!layout())
        return;
    // Pictures grow with the type, up to the detail they are kept in.
    const double typeScale = qBound(1.0, TouchTheme::pixelSize(button(ShutdownButton)->font()) / double(DesignTypeSize),
                                    double(PictureDetail));
    const int largest = qRound(clipArtSize().height() * typeScale);
    for (const bool choiceIcons : {true, false}) {
        const int smallest = choiceIcons ? largest * 6 / 10 : largest / 3;
        for (int pictureHeight = largest; pictureHeight >= smallest; pictureHeight -= 3) {
            setPictureHeight(pictureHeight, choiceIcons);
            if (heightForWidth(width()) <= height())
                return;
        }
    }
}

void SettingsBox::setPictureHeight(int pictureHeight, bool choiceIcons)
{
    const QSize clipArt = clipArtSize().scaled(QSize(10000, pictureHeight), Qt::KeepAspectRatio);
    for (int index = FirstThemeButton; index < RandomButton; ++index)
        button(index)->setIconSize(clipArt);
    const int side = choiceIconSide() * pictureHeight / clipArtSize().height();
    for (int index = RandomButton; index <= DesktopButton; ++index) {
        TouchButton *choice = button(index);
        if (choiceIcons != !choice->icon().isNull())
            choice->setPicture(choiceIcons ? ChoiceIcon::draw(index, choiceIconSide() * PictureDetail) : QPixmap());
        choice->setIconSize(QSize(side, side));
    }
    // The nested grids keep their old heights until the layout runs again.
    if (layout())
        layout()->activate();
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
    heading->setFont(TouchTheme::titleFont(24));
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
            reader.setScaledSize(full.scaled(clipArtSize() * PictureDetail, Qt::KeepAspectRatioByExpanding));
        const QImage picture = reader.read();
        if (picture.isNull())
            RuntimeLog::note("SettingsBox", QStringLiteral("%1: %2").arg(path, reader.errorString()));
        QPixmap clipArt;
        if (!picture.isNull()) {
            // Cut to the button's picture size around the middle.
            QRect middle(QPoint(), clipArtSize() * PictureDetail);
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
    // The five empty frames are alike: drawn once (kept as an image, which
    // may outlive the application object).
    static const QImage frame = [] {
        QImage empty(clipArtSize() * PictureDetail, QImage::Format_ARGB32_Premultiplied);
        empty.fill(Qt::transparent);
        QPainter painter(&empty);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(TouchTheme::border(), 2 * PictureDetail, Qt::DashLine));
        painter.setBrush(TouchTheme::paper().darker(104));
        painter.drawRoundedRect(QRectF(empty.rect()).adjusted(2, 2, -2, -2), 6 * PictureDetail, 6 * PictureDetail);
        return empty;
    }();
    button(FirstThemeButton + number - 1)->setPicture(QPixmap::fromImage(frame));
}
