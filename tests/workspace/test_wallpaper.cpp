#include "app/Globals.h"
#include "platform/DesktopBackground.h"
#include "platform/vb/VbRandom.h"
#include "workspace/Wallpaper.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

namespace {

const QColor Background(12, 34, 56);
const QColor Welcome(200, 100, 0);

void writePicture(const QString &path, const QColor &colour, const QSize &size = QSize(64, 36))
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    QVERIFY(picture.save(path, "PNG")); // read by content, whatever the extension says
}

void setWallpaper(int type, const QString &directory = QString(), const QString &file = QString())
{
    Globals::WallpaperType = type;
    Globals::WallpaperDirectory = directory;
    Globals::WallpaperFile = file;
}

// The wallpaper painted over a window that starts in its own background colour.
QImage painted(Wallpaper &wallpaper, const QSize &size = QSize(320, 180))
{
    QImage window(size, QImage::Format_RGB32);
    window.fill(Background);
    QPainter painter(&window);
    wallpaper.paint(painter, window.rect());
    return window;
}

} // namespace

class TestWallpaper : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_skin;
    QString m_cg;
    QStringList m_rotation;
    Wallpaper m_wallpaper;

    QString shownOn(int type, const QDate &day)
    {
        setWallpaper(type);
        m_wallpaper.apply(day);
        return m_wallpaper.picturePath();
    }

private slots:
    void initTestCase()
    {
        // SKIN/WELCOME.BMP; SKIN/CG with the five themes (four-letter
        // extension), seven rotation pictures and files the rotation skips.
        m_cg = m_skin.filePath(QStringLiteral("CG"));
        QVERIFY(QDir().mkpath(m_cg + QStringLiteral("/SUB.DIR")));
        writePicture(m_skin.filePath(QStringLiteral("WELCOME.BMP")), Welcome, QSize(100, 50));
        for (int number = 1; number <= Wallpaper::ThemeCount; ++number)
            writePicture(m_cg + QLatin1Char('/') + Wallpaper::themeFile(number), QColor(number * 40, 255 - number * 40, 128));
        for (int i = 1; i <= 7; ++i) {
            m_rotation.append(QStringLiteral("PIC%1.PNG").arg(i));
            writePicture(m_cg + QLatin1Char('/') + m_rotation.last(), QColor(i * 30, 60, 255 - i * 30));
        }
        writePicture(m_cg + QStringLiteral("/SHORT.JP"), Qt::white);
        QFile readme(m_cg + QStringLiteral("/README"));
        QVERIFY(readme.open(QIODevice::WriteOnly));
    }

    void init()
    {
        VbRandom::restart();
        m_wallpaper.setPictureFolder(m_cg);
        setWallpaper(0, QStringLiteral(".."), QStringLiteral("WELCOME.BMP"));
    }

    void themeTableAndPattern()
    {
        const QStringList names = {"ウェブログ", "マイナスイオン", "オーガニック", "クールビズ", "セレブリティ"};
        const QStringList files = {"ｳｪﾌﾞﾛｸﾞ.JPEG", "ﾏｲﾅｽｲｵﾝ.JPEG", "ｵｰｶﾞﾆｯｸ.JPEG", "ｸｰﾙﾋﾞｽﾞ.JPEG", "ｾﾚﾌﾞﾘﾃｨ.JPEG"};
        for (int number = 1; number <= 5; ++number) {
            QCOMPARE(Wallpaper::themeName(number), names.at(number - 1));
            QCOMPARE(Wallpaper::themeFile(number), files.at(number - 1));
        }
        QVERIFY(Wallpaper::themeName(0).isEmpty() && Wallpaper::themeName(6).isEmpty());
        // The pattern is the stem and ".???": exactly three characters after the point.
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("ｵｰｶﾞﾆｯｸ.JPG")), 3);
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("ｾﾚﾌﾞﾘﾃｨ.bmp")), 5);
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("ｵｰｶﾞﾆｯｸ.JPEG")), 0);
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("オーガニック.JPG")), 0);
    }

    void rotationListsThreeLetterExtensionsOnly()
    {
        const QStringList names = Wallpaper::rotationList(m_cg);
        QCOMPARE(QSet<QString>(names.begin(), names.end()), QSet<QString>(m_rotation.begin(), m_rotation.end()));
        QCOMPARE(names.size(), 7);
        QVERIFY(Wallpaper::rotationList(m_skin.filePath(QStringLiteral("MISSING"))).isEmpty());
    }

    void rotationsSeedWithTheNegativeDatePartAndTakeTheNextNumber()
    {
        // Rnd(-n) restarts the generator; r is the number drawn after it.
        // Quarter 1, week 1 and Sunday all seed with -1; Monday with -2.
        const int afterMinusOne = 358458, afterMinusTwo = 6624333;
        QCOMPARE(qRound(Wallpaper::pickNumber(5, QDate(2026, 11, 22)) * 1e7), afterMinusOne);
        QCOMPARE(qRound(Wallpaper::pickNumber(3, QDate(2026, 2, 14)) * 1e7), afterMinusOne);
        QCOMPARE(qRound(Wallpaper::pickNumber(4, QDate(2026, 1, 2)) * 1e7), afterMinusOne);
        VbRandom::rnd(-7.0f); // whatever was drawn before does not matter
        QCOMPARE(qRound(Wallpaper::pickNumber(5, QDate(2026, 11, 23)) * 1e7), afterMinusTwo);

        // The entry is floor(n × r + 1).
        QCOMPARE(Wallpaper::entryFor(7, 0.0f), 1);
        QCOMPARE(Wallpaper::entryFor(7, 0.6624333f), 5);
        QCOMPARE(Wallpaper::entryFor(7, 0.99999994f), 7);
        QCOMPARE(Wallpaper::pickIndex(5, QDate(2026, 11, 23), 7), 5);
    }

    void weekdayRotationGivesTheSamePictureOnTheSameWeekday()
    {
        const QString monday = shownOn(5, QDate(2026, 11, 23));
        QVERIFY(monday.startsWith(m_cg + QLatin1Char('/')));
        QCOMPARE(m_wallpaper.pressedButton(), 109);
        QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Stretched);
        shownOn(5, QDate(2026, 11, 24));
        QCOMPARE(shownOn(5, QDate(2027, 3, 1)), monday);
        QSet<QString> week;
        for (int day = 0; day < 7; ++day)
            week.insert(shownOn(5, QDate(2026, 11, 22).addDays(day)));
        QVERIFY(week.size() >= 3);
    }

    void seasonIsTheCalendarQuarter()
    {
        const QString january = shownOn(3, QDate(2026, 1, 1));
        QCOMPARE(m_wallpaper.pressedButton(), 107);
        QCOMPARE(shownOn(3, QDate(2026, 3, 31)), january);
        QCOMPARE(shownOn(5, QDate(2026, 11, 22)), january); // seeded like a Sunday
        QCOMPARE(shownOn(3, QDate(2026, 4, 1)), shownOn(3, QDate(2026, 6, 30)));
    }

    void weekRotationRepeatsInWeekOneOfEveryYear()
    {
        const QString week1 = shownOn(4, QDate(2026, 1, 3));
        QCOMPARE(m_wallpaper.pressedButton(), 108);
        QCOMPARE(shownOn(4, QDate(2025, 1, 1)), week1);
        QCOMPARE(shownOn(4, QDate(2023, 1, 7)), week1);
        // Sunday 4 January 2026 opens week 2: Monday's picture.
        QCOMPARE(shownOn(4, QDate(2026, 1, 4)), shownOn(5, QDate(2026, 11, 23)));
    }

    void randomPicksAPictureOfTheFolder()
    {
        for (int i = 0; i < 20; ++i) {
            setWallpaper(2);
            m_wallpaper.apply();
            QCOMPARE(m_wallpaper.pressedButton(), 106);
            QVERIFY(m_rotation.contains(QFileInfo(m_wallpaper.picturePath()).fileName()));
        }
    }

    void unloadablePictureKeepsTheBackground()
    {
        // An empty folder for the rotations.
        m_wallpaper.setPictureFolder(m_cg + QStringLiteral("/SUB.DIR"));
        for (int type = 2; type <= 5; ++type) {
            shownOn(type, QDate(2026, 11, 23));
            QCOMPARE(m_wallpaper.pressedButton(), type + 104);
            QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Nothing);
            QCOMPARE(painted(m_wallpaper).pixelColor(0, 0), Background);
            QCOMPARE(painted(m_wallpaper).pixelColor(319, 179), Background);
        }
        m_wallpaper.setPictureFolder(m_cg);

        // A missing file, a damaged one, a type that does not exist.
        QFile damaged(m_cg + QStringLiteral("/DAMAGED.BMP"));
        QVERIFY(damaged.open(QIODevice::WriteOnly) && damaged.write("BM not a picture") > 0);
        damaged.close();
        for (const auto &[type, file] : {std::pair(0, "NOWHERE.BMP"), std::pair(0, "DAMAGED.BMP"), std::pair(42, "")}) {
            setWallpaper(type, QStringLiteral("."), QString::fromLatin1(file));
            m_wallpaper.apply();
            QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Nothing);
            QCOMPARE(painted(m_wallpaper).pixelColor(5, 5), Background);
        }
        QVERIFY(damaged.remove());
    }

    void namedPictureAtNaturalSizeFromTheTopLeft()
    {
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.picturePath(), m_cg + QStringLiteral("/../WELCOME.BMP"));
        QCOMPARE(m_wallpaper.pressedButton(), 0);
        const QImage window = painted(m_wallpaper);
        QCOMPARE(window.pixelColor(0, 0), Welcome);
        QCOMPARE(window.pixelColor(99, 49), Welcome);
        QCOMPARE(window.pixelColor(100, 10), Background);
        QCOMPARE(window.pixelColor(10, 50), Background);
        // Folders written with backslashes still lead to the picture.
        setWallpaper(0, QStringLiteral(".\\.."), QStringLiteral("WELCOME.BMP"));
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Natural);
        // A bitmap with a palette is read too, by the general reader.
        QImage indexed(30, 20, QImage::Format_Indexed8);
        indexed.setColorTable({Welcome.rgb()});
        indexed.fill(0);
        QVERIFY(indexed.save(m_cg + QStringLiteral("/INDEXED.BMP"), "BMP"));
        setWallpaper(0, QStringLiteral("."), QStringLiteral("INDEXED.BMP"));
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Natural);
        QCOMPARE(painted(m_wallpaper).pixelColor(29, 19), Welcome);
        QVERIFY(QFile::remove(m_cg + QStringLiteral("/INDEXED.BMP")));
    }

    void themeIsStretchedOverTheWholeArea()
    {
        setWallpaper(1, QStringLiteral("."), Wallpaper::themeFile(2));
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.picturePath(), m_cg + QStringLiteral("/./ﾏｲﾅｽｲｵﾝ.JPEG"));
        for (const QSize &size : {QSize(320, 180), QSize(50, 400)}) {
            const QImage window = painted(m_wallpaper, size);
            QCOMPARE(window.pixelColor(0, 0), QColor(80, 175, 128));
            QCOMPARE(window.pixelColor(size.width() - 1, size.height() - 1), QColor(80, 175, 128));
        }
        // A ".JPEG" name does not match its theme's pattern; a ".PNG" one does.
        QCOMPARE(m_wallpaper.pressedButton(), 0);
        const QString png = m_cg + QStringLiteral("/ｸｰﾙﾋﾞｽﾞ.PNG");
        QVERIFY(QFile::copy(m_cg + QLatin1Char('/') + Wallpaper::themeFile(4), png));
        setWallpaper(1, QStringLiteral("."), QStringLiteral("ｸｰﾙﾋﾞｽﾞ.PNG"));
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.pressedButton(), 104);
        QVERIFY(QFile::remove(png));
    }

    // The picture read ahead while the window loads is painted before the
    // settings are first applied (the window's first picture already has its
    // wallpaper), and the first apply takes it as it is.
    void pictureReadAheadStandsInUntilApplied()
    {
        const QString theme = m_cg + QLatin1Char('/') + Wallpaper::themeFile(2);
        const QString aside = theme + QStringLiteral(".aside");
        for (const bool stretched : {true, false}) {
            Wallpaper wallpaper;
            wallpaper.setPictureFolder(m_cg);
            if (stretched)
                setWallpaper(1, QStringLiteral("."), Wallpaper::themeFile(2));
            else
                setWallpaper(0, QStringLiteral(".."), QStringLiteral("WELCOME.BMP"));
            wallpaper.readAhead(QSize(320, 180));
            QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Nothing);
            const QImage early = painted(wallpaper);
            QCOMPARE(wallpaper.covers(QRect(0, 0, 320, 180)), stretched);
            if (stretched) {
                QCOMPARE(early.pixelColor(0, 0), QColor(80, 175, 128));
                QCOMPARE(early.pixelColor(319, 179), QColor(80, 175, 128));
                // Gone from the folder now, the file is not read again.
                QVERIFY(QFile::rename(theme, aside));
            } else {
                QCOMPARE(early.pixelColor(99, 49), Welcome);
                QCOMPARE(early.pixelColor(100, 10), Background);
            }
            wallpaper.apply();
            QCOMPARE(wallpaper.mode(), stretched ? Wallpaper::Mode::Stretched : Wallpaper::Mode::Natural);
            QCOMPARE(painted(wallpaper), early);
            if (stretched)
                QVERIFY(QFile::rename(aside, theme));
        }
        // Without a picture read ahead, nothing stands in.
        Wallpaper wallpaper;
        QVERIFY(!wallpaper.covers(QRect(0, 0, 320, 180)));
        QCOMPARE(painted(wallpaper).pixelColor(5, 5), Background);
    }

    void desktopTypeTurnsPersistentDrawingOffUntilAnotherTypeIsChosen()
    {
        m_wallpaper.apply();
        QVERIFY(m_wallpaper.persistentDrawing());
        setWallpaper(6);
        m_wallpaper.apply();
        QVERIFY(m_wallpaper.isDesktop() && !m_wallpaper.persistentDrawing());
        QCOMPARE(m_wallpaper.pressedButton(), 110);
        // The desktop covers the whole window at every repaint; without a
        // display it is a plain colour.
        const QImage first = painted(m_wallpaper);
        QVERIFY(first.pixelColor(0, 0) != Background && first.pixelColor(319, 179) != Background);
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            QCOMPARE(first.pixelColor(160, 90), DesktopBackground::defaultColour());
        QCOMPARE(painted(m_wallpaper), first);

        setWallpaper(0, QStringLiteral(".."), QStringLiteral("WELCOME.BMP"));
        m_wallpaper.apply();
        QVERIFY(!m_wallpaper.isDesktop() && m_wallpaper.persistentDrawing());
        QCOMPARE(painted(m_wallpaper).pixelColor(0, 0), Welcome);
        QCOMPARE(painted(m_wallpaper).pixelColor(200, 100), Background);
    }

    // On a display the desktop's own settings are asked: here GNOME's, kept
    // in a settings file inside this test's own home folder.
    void desktopPictureComesFromTheDesktopSettings()
    {
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            QSKIP("no display: the desktop is a plain colour");
        if (qEnvironmentVariable("GSETTINGS_BACKEND") != QLatin1String("keyfile")
            || qEnvironmentVariableIsEmpty("LANTERN_TEST_ROOT") || QStandardPaths::findExecutable("gsettings").isEmpty())
            QSKIP("needs gsettings with a private keyfile backend");
        const auto set = [](const QString &key, const QString &value) {
            QCOMPARE(QProcess::execute("gsettings", {"set", "org.gnome.desktop.background", key, value}), 0);
        };
        const QString picture = m_skin.filePath(QStringLiteral("desk top.png"));
        writePicture(picture, QColor(0, 160, 80));
        set(QStringLiteral("picture-uri"), QUrl::fromLocalFile(picture).toString());
        set(QStringLiteral("picture-options"), QStringLiteral("stretched"));
        set(QStringLiteral("primary-color"), QStringLiteral("#112233"));
        setWallpaper(6);
        m_wallpaper.apply();
        QCOMPARE(painted(m_wallpaper).pixelColor(0, 0), QColor(0, 160, 80));
        QCOMPARE(painted(m_wallpaper).pixelColor(319, 179), QColor(0, 160, 80));

        set(QStringLiteral("picture-uri"), QString());
        m_wallpaper.apply();
        QCOMPARE(painted(m_wallpaper).pixelColor(0, 0), QColor(0x11, 0x22, 0x33));
    }

    void desktopSettingsAreRead()
    {
        QCOMPARE(DesktopBackground::pathFromSetting("'file:///usr/share/backgrounds/a%20b.jpg'\n"),
                 QStringLiteral("/usr/share/backgrounds/a b.jpg"));
        QVERIFY(DesktopBackground::pathFromSetting("''").isEmpty());
        QCOMPARE(DesktopBackground::colourFromSetting("'#023c88'"), QColor(0x02, 0x3c, 0x88));
        QCOMPARE(DesktopBackground::placementFromSetting("'wallpaper'"), DesktopBackground::Placement::Tiled);
    }

    // One picture per type, drawn from the program's own skin over a screen.
    void screenshotsOfEveryType()
    {
        const QString skinPictures = QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN/CG");
        if (!QFileInfo::exists(skinPictures + QStringLiteral("/SPRING.JPG")))
            QSKIP("the skin has not been drawn");
        QString folder = qEnvironmentVariable("LANTERN_BUILD_DIR", QStringLiteral(LANTERN_PROGRAM_DIR "/.."));
        folder += QStringLiteral("/screenshots");
        QDir().mkpath(folder);
        m_wallpaper.setPictureFolder(skinPictures);
        for (int type = 0; type <= 6; ++type) {
            if (type == 0)
                setWallpaper(0, QStringLiteral(".."), QStringLiteral("WELCOME.BMP"));
            else
                setWallpaper(type, type == 1 ? QStringLiteral(".") : QString(), type == 1 ? Wallpaper::themeFile(3) : QString());
            m_wallpaper.apply(QDate(2026, 11, 23));
            QVERIFY2(m_wallpaper.mode() != Wallpaper::Mode::Nothing, qPrintable(QString::number(type)));
            QVERIFY(painted(m_wallpaper, QSize(1280, 800)).save(folder + QStringLiteral("/wallpaper_type%1.png").arg(type)));
        }
    }
};

QTEST_MAIN(TestWallpaper)
#include "test_wallpaper.moc"
