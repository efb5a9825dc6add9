#include "workspace/Wallpaper.h"

#include "app/Globals.h"
#include "platform/PlainBitmap.h"
#include "platform/RuntimeLog.h"
#include "platform/vb/VbDatePart.h"
#include "platform/vb/VbLike.h"
#include "platform/vb/VbRandom.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QImageReader>
#include <QLinearGradient>
#include <QPainter>

#include <cmath>

namespace {

struct Theme
{
    const char16_t *name;
    const char16_t *stem;
};

constexpr Theme Themes[Wallpaper::ThemeCount] = {
    {u"ウェブログ", u"ｳｪﾌﾞﾛｸﾞ"},
    {u"マイナスイオン", u"ﾏｲﾅｽｲｵﾝ"},
    {u"オーガニック", u"ｵｰｶﾞﾆｯｸ"},
    {u"クールビズ", u"ｸｰﾙﾋﾞｽﾞ"},
    {u"セレブリティ", u"ｾﾚﾌﾞﾘﾃｨ"},
};

constexpr int ThemeButtonBase = 100;    // theme n is button 100 + n
constexpr int RotationButtonBase = 104; // types 2-6 are buttons 106-110
constexpr int DesktopType = 6;

// Settings written on Windows may still separate folders with backslashes.
QString withSlashes(QString path)
{
    return path.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

} // namespace

Wallpaper::Wallpaper()
    : m_folder(defaultPictureFolder())
{
}

QString Wallpaper::defaultPictureFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/SKIN/CG");
}

QString Wallpaper::themeName(int number)
{
    if (number < 1 || number > ThemeCount)
        return QString();
    return QString::fromUtf16(Themes[number - 1].name);
}

QString Wallpaper::themeStem(int number)
{
    if (number < 1 || number > ThemeCount)
        return QString();
    return QString::fromUtf16(Themes[number - 1].stem);
}

QString Wallpaper::themeFile(int number)
{
    const QString stem = themeStem(number);
    return stem.isEmpty() ? QString() : stem + QStringLiteral(".JPEG");
}

int Wallpaper::themeMatching(const QString &fileName)
{
    // "?" stands for exactly one character, so the pattern takes names with a
    // three-letter extension only.
    for (int number = 1; number <= ThemeCount; ++number) {
        if (VbLike::match(fileName, themeStem(number) + QStringLiteral(".???")))
            return number;
    }
    return 0;
}

float Wallpaper::pickNumber(int type, const QDate &today)
{
    int part = 0;
    switch (type) {
    case 3:
        part = VbDatePart::quarter(today);
        break;
    case 4:
        part = VbDatePart::weekOfYear(today);
        break;
    case 5:
        part = VbDatePart::weekday(today);
        break;
    default:
        VbRandom::randomizeTimer();
        return VbRandom::rnd();
    }
    // A negative argument restarts the generator at a point fixed by the
    // number; the number used is the one drawn after that restart, so the
    // same quarter, week or weekday always gives the same r.
    VbRandom::rnd(-float(part));
    return VbRandom::rnd();
}

int Wallpaper::entryFor(int count, float r)
{
    const float entry = float(count) * r + 1.0f;
    return int(std::floor(entry));
}

int Wallpaper::pickIndex(int type, const QDate &today, int count)
{
    return entryFor(count, pickNumber(type, today));
}

QStringList Wallpaper::rotationList(const QString &folder)
{
    QStringList names;
    QDirIterator it(folder, {QStringLiteral("*.???")}, QDir::Files);
    while (it.hasNext()) {
        it.next();
        names.append(it.fileName());
    }
    return names;
}

void Wallpaper::apply()
{
    apply(QDate::currentDate());
}

void Wallpaper::apply(const QDate &today)
{
    const int type = Globals::WallpaperType;
    if (type == DesktopType) {
        clear();
        m_pressedButton = RotationButtonBase + DesktopType;
        m_desktop = DesktopBackground::current();
        m_mode = Mode::Desktop;
        return;
    }

    // Any other choice starts from a clean window with a picture of its own.
    clear();
    if (type >= 2 && type <= 5)
        chooseRotation(type, today);
    else if (type == 0 || type == 1)
        choosePicture(type);
    else
        RuntimeLog::note("Wallpaper", QStringLiteral("unknown wallpaper type %1").arg(type));
}

void Wallpaper::chooseRotation(int type, const QDate &today)
{
    m_pressedButton = RotationButtonBase + type;
    const float r = pickNumber(type, today);
    const QStringList names = rotationList(m_folder);
    if (names.isEmpty()) {
        RuntimeLog::note("Wallpaper", QStringLiteral("no pictures in %1").arg(m_folder));
        return;
    }
    const int entry = entryFor(names.size(), r);
    if (entry < 1 || entry > names.size()) {
        RuntimeLog::note("Wallpaper", QStringLiteral("entry %1 of %2 pictures").arg(entry).arg(names.size()));
        return;
    }
    load(m_folder + QLatin1Char('/') + names.at(entry - 1), Mode::Stretched);
}

QString Wallpaper::pictureFile() const
{
    return m_folder + QLatin1Char('/') + withSlashes(Globals::WallpaperDirectory) + QLatin1Char('/')
        + withSlashes(Globals::WallpaperFile);
}

void Wallpaper::choosePicture(int type)
{
    if (type == 1) {
        const int theme = themeMatching(Globals::WallpaperFile);
        m_pressedButton = theme == 0 ? 0 : ThemeButtonBase + theme;
    }
    load(pictureFile(), type == 1 ? Mode::Stretched : Mode::Natural);
}

void Wallpaper::readAhead(const QSize &areaSize)
{
    const int type = Globals::WallpaperType;
    if (type != 0 && type != 1)
        return;
    m_aheadPath = pictureFile();
    m_aheadMode = type == 1 ? Mode::Stretched : Mode::Natural;
    m_ahead = std::async(std::launch::async, &Wallpaper::decode, m_aheadPath, type == 1, areaSize);
}

Wallpaper::Decoded *Wallpaper::readAheadPicture()
{
    if (m_ahead.valid())
        m_aheadDone = m_ahead.get();
    return m_aheadDone ? &*m_aheadDone : nullptr;
}

// Runs on any thread: it touches nothing but its arguments.
Wallpaper::Decoded Wallpaper::decode(const QString &path, bool stretched, const QSize &areaSize)
{
    Decoded result;
    // The usual wallpaper is a plain bitmap, read without Qt's image
    // plug-ins; other bitmaps (with a palette, compressed) and other kinds
    // of picture go to Qt's reader.
    if (PlainBitmap::isBitmapName(path))
        result.picture = PlainBitmap::read(path);
    if (result.picture.isNull()) {
        QImageReader reader(path);
        reader.setAutoTransform(true);
        result.picture = reader.read();
        if (result.picture.isNull()) {
            result.error = reader.errorString();
            return result;
        }
    }
    // In the form the screen is painted in, so that painting copies and
    // never converts.
    result.picture.convertTo(result.picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                              : QImage::Format_RGB32);
    if (stretched && areaSize.isValid())
        result.shown = result.picture.scaled(areaSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return result;
}

bool Wallpaper::load(const QString &path, Mode mode)
{
    const Decoded *ahead = m_aheadPath == path ? readAheadPicture() : nullptr;
    const Decoded decoded = ahead ? *ahead : decode(path, false, QSize());
    // A picture read ahead serves the first apply() only.
    if (m_ahead.valid())
        m_ahead.wait();
    m_ahead = {};
    m_aheadDone.reset();
    m_aheadPath.clear();

    if (decoded.picture.isNull()) {
        RuntimeLog::note("Wallpaper", QStringLiteral("%1: %2").arg(path, decoded.error));
        return false;
    }
    m_picture = std::move(decoded.picture);
    m_shown = std::move(decoded.shown);
    m_path = path;
    m_mode = mode;
    return true;
}

void Wallpaper::clear()
{
    m_mode = Mode::Nothing;
    m_path.clear();
    m_pressedButton = 0;
    m_picture = QImage();
    m_shown = QImage();
    m_desktop = DesktopBackground();
}

bool Wallpaper::covers(const QRect &area)
{
    if (m_mode == Mode::Nothing) {
        const Decoded *ahead = readAheadPicture();
        return ahead && covers(ahead->picture, m_aheadMode, area);
    }
    return covers(m_picture, m_mode, area);
}

bool Wallpaper::covers(const QImage &picture, Mode mode, const QRect &area)
{
    if (picture.isNull() || picture.hasAlphaChannel())
        return false;
    if (mode == Mode::Stretched)
        return true;
    return mode == Mode::Natural && picture.width() >= area.right() + 1 && picture.height() >= area.bottom() + 1;
}

void Wallpaper::paintOverSky(QPainter &painter, const QRect &area)
{
    if (!covers(area)) {
        QLinearGradient sky(0, area.top(), 0, area.top() + area.height());
        sky.setColorAt(0.0, QColor(0xfd, 0xf6, 0xe3));
        sky.setColorAt(1.0, QColor(0xf3, 0xdf, 0xb8));
        painter.fillRect(area, sky);
    }
    paint(painter, area);
}

void Wallpaper::paint(QPainter &painter, const QRect &area)
{
    switch (m_mode) {
    case Mode::Nothing:
        // Until the settings are applied for the first time, the picture
        // read ahead for them stands in: a window painted before that
        // already shows the wallpaper it is about to get.
        if (Decoded *ahead = readAheadPicture(); ahead && !ahead->picture.isNull())
            paint(painter, area, ahead->picture, ahead->shown, m_aheadMode);
        return;
    case Mode::Desktop:
        m_desktop.paint(painter, area);
        return;
    case Mode::Natural:
    case Mode::Stretched:
        paint(painter, area, m_picture, m_shown, m_mode);
        return;
    }
}

void Wallpaper::paint(QPainter &painter, const QRect &area, const QImage &picture, QImage &shown, Mode mode)
{
    if (mode == Mode::Natural) {
        painter.save();
        painter.setClipRect(area);
        painter.drawImage(area.topLeft(), picture);
        painter.restore();
        return;
    }
    // Scaling is slow; repaints of the same area reuse the scaled picture.
    if (shown.size() != area.size())
        shown = picture.scaled(area.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter.drawImage(area.topLeft(), shown);
}
