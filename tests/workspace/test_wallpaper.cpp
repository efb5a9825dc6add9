#include "app/Globals.h"
#include "platform/DesktopBackground.h"
#include "platform/vb/VbRandom.h"
#include "workspace/Wallpaper.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <QImage>
#include <QPainter>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QColor Background(12, 34, 56);

void writePicture(const QString &path, const QColor &colour, const QSize &size = QSize(64, 36))
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    const QString format = path.endsWith(QLatin1String(".BMP")) ? QStringLiteral("BMP") : QStringLiteral("PNG");
    QVERIFY(picture.save(path, qPrintable(format)));
}

void setWallpaper(int type, const QString &directory = QString(), const QString &file = QString())
{
    Globals::WallpaperType = type;
    Globals::WallpaperDirectory = directory;
    Globals::WallpaperFile = file;
}

// The wallpaper painted over a window-sized picture that starts in the
// window's own background colour.
QImage painted(Wallpaper &wallpaper, const QSize &size = QSize(320, 180))
{
    QImage window(size, QImage::Format_RGB32);
    window.fill(Background);
    QPainter painter(&window);
    wallpaper.paint(painter, window.rect());
    return window;
}

bool sameColour(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) <= 2 && qAbs(a.green() - b.green()) <= 2 && qAbs(a.blue() - b.blue()) <= 2;
}

QString screenshotFolder()
{
    QString build = qEnvironmentVariable("LANTERN_BUILD_DIR");
    if (build.isEmpty())
        build = QDir(QStringLiteral(LANTERN_PROGRAM_DIR)).absoluteFilePath(QStringLiteral(".."));
    const QString folder = build + QStringLiteral("/screenshots");
    QDir().mkpath(folder);
    return folder;
}

} // namespace

class TestWallpaper : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_skin;
    QString m_cg;
    QString m_emptyCg;
    QStringList m_rotation;

private slots:
    void initTestCase()
    {
        // SKIN/WELCOME.BMP, SKIN/CG with the five themes (four-letter
        // extension) and seven rotation pictures, each in its own colour.
        QVERIFY(m_skin.isValid());
        m_cg = m_skin.filePath(QStringLiteral("CG"));
        m_emptyCg = m_skin.filePath(QStringLiteral("EMPTY/CG"));
        QVERIFY(QDir().mkpath(m_cg));
        QVERIFY(QDir().mkpath(m_emptyCg));
        QVERIFY(QDir().mkpath(m_cg + QStringLiteral("/SUB.DIR")));
        writePicture(m_skin.filePath(QStringLiteral("WELCOME.BMP")), QColor(200, 100, 0), QSize(100, 50));
        for (int number = 1; number <= Wallpaper::ThemeCount; ++number) {
            const QString path = m_cg + QLatin1Char('/') + Wallpaper::themeFile(number);
            QImage picture(80, 45, QImage::Format_RGB32);
            picture.fill(QColor(number * 40, 255 - number * 40, 128));
            QVERIFY(picture.save(path, "PNG")); // read by content, whatever the extension says
        }
        for (int i = 1; i <= 7; ++i) {
            const QString name = QStringLiteral("PIC%1.PNG").arg(i);
            writePicture(m_cg + QLatin1Char('/') + name, QColor(i * 30, 60, 255 - i * 30));
            m_rotation.append(name);
        }
        writePicture(m_cg + QStringLiteral("/LONG.JPEG"), Qt::white);
        writePicture(m_cg + QStringLiteral("/SHORT.JP"), Qt::white);
        QFile readme(m_cg + QStringLiteral("/README"));
        QVERIFY(readme.open(QIODevice::WriteOnly));
    }

    void init()
    {
        VbRandom::restart();
        setWallpaper(0, QStringLiteral(".."), QStringLiteral("WELCOME.BMP"));
    }

    void themeTable()
    {
        const QStringList names = {QStringLiteral("ウェブログ"), QStringLiteral("マイナスイオン"),
                                   QStringLiteral("オーガニック"), QStringLiteral("クールビズ"),
                                   QStringLiteral("セレブリティ")};
        const QStringList files = {QStringLiteral("ｳｪﾌﾞﾛｸﾞ.JPEG"), QStringLiteral("ﾏｲﾅｽｲｵﾝ.JPEG"),
                                   QStringLiteral("ｵｰｶﾞﾆｯｸ.JPEG"), QStringLiteral("ｸｰﾙﾋﾞｽﾞ.JPEG"),
                                   QStringLiteral("ｾﾚﾌﾞﾘﾃｨ.JPEG")};
        for (int number = 1; number <= 5; ++number) {
            QCOMPARE(Wallpaper::themeName(number), names.at(number - 1));
            QCOMPARE(Wallpaper::themeFile(number), files.at(number - 1));
        }
        QVERIFY(Wallpaper::themeName(0).isEmpty());
        QVERIFY(Wallpaper::themeName(6).isEmpty());
        QVERIFY(Wallpaper::themeFile(6).isEmpty());

        // A theme's pattern is its stem and ".???": three letters after the point.
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("ｵｰｶﾞﾆｯｸ.JPG")), 3);
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("ｾﾚﾌﾞﾘﾃｨ.BMP")), 5);
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("ｵｰｶﾞﾆｯｸ.JPEG")), 0);
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("オーガニック.JPG")), 0);
        QCOMPARE(Wallpaper::themeMatching(QStringLiteral("ｵｰｶﾞﾆｯｸ.jpg")), 3);
    }

    void rotationListsThreeLetterExtensionsOnly()
    {
        const QStringList names = Wallpaper::rotationList(m_cg);
        QCOMPARE(QSet<QString>(names.begin(), names.end()), QSet<QString>(m_rotation.begin(), m_rotation.end()));
        QCOMPARE(names.size(), 7);
        QVERIFY(Wallpaper::rotationList(m_emptyCg).isEmpty());
        QVERIFY(Wallpaper::rotationList(m_skin.filePath(QStringLiteral("MISSING"))).isEmpty());
    }

    void rotationsSeedWithTheNegativeDatePartAndTakeTheNextNumber()
    {
        // Rnd(-1) restarts the generator; the number after that restart is the
        // one used. The quarter, the week and the weekday 1 all seed with -1.
        const float afterMinusOne = 0.0358458f;
        QCOMPARE(qRound(Wallpaper::pickNumber(5, QDate(2026, 11, 22)) * 1e7), qRound(afterMinusOne * 1e7));
        QCOMPARE(qRound(Wallpaper::pickNumber(3, QDate(2026, 2, 14)) * 1e7), qRound(afterMinusOne * 1e7));
        QCOMPARE(qRound(Wallpaper::pickNumber(4, QDate(2026, 1, 2)) * 1e7), qRound(afterMinusOne * 1e7));
        // Monday seeds with -2.
        QCOMPARE(qRound(Wallpaper::pickNumber(5, QDate(2026, 11, 23)) * 1e7), 6624333);
        // Whatever was drawn before does not matter.
        VbRandom::rnd();
        VbRandom::rnd(-7.0f);
        QCOMPARE(qRound(Wallpaper::pickNumber(5, QDate(2026, 11, 23)) * 1e7), 6624333);
    }

    void entryIsFloorOfCountTimesNumberPlusOne()
    {
        QCOMPARE(Wallpaper::entryFor(7, 0.0f), 1);
        QCOMPARE(Wallpaper::entryFor(7, 0.0358458f), 1);
        QCOMPARE(Wallpaper::entryFor(7, 0.6624333f), 5);
        QCOMPARE(Wallpaper::entryFor(7, 0.99999994f), 7);
        QCOMPARE(Wallpaper::entryFor(1, 0.5f), 1);
        QCOMPARE(Wallpaper::entryFor(0, 0.5f), 1); // no entry exists: the caller draws nothing
        for (int i = 0; i < 200; ++i) {
            const int entry = Wallpaper::pickIndex(2, QDate::currentDate(), 7);
            QVERIFY(entry >= 1 && entry <= 7);
        }
    }

    void weekdayRotationGivesTheSamePictureOnTheSameWeekday()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        setWallpaper(5);
        wallpaper.apply(QDate(2026, 11, 23));
        const QString monday = wallpaper.picturePath();
        QVERIFY(!monday.isEmpty());
        QCOMPARE(wallpaper.pressedButton(), 109);
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Stretched);
        wallpaper.apply(QDate(2026, 11, 24));
        wallpaper.apply(QDate(2027, 3, 1)); // a Monday too
        QCOMPARE(wallpaper.picturePath(), monday);

        // The seven weekdays do not all show the same picture.
        QSet<QString> shown;
        for (int day = 0; day < 7; ++day) {
            wallpaper.apply(QDate(2026, 11, 22).addDays(day));
            QVERIFY(wallpaper.picturePath().startsWith(m_cg + QLatin1Char('/')));
            shown.insert(wallpaper.picturePath());
        }
        QVERIFY2(shown.size() >= 3, qPrintable(QStringList(shown.values()).join(", ")));
    }

    void seasonIsTheCalendarQuarter()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        setWallpaper(3);
        wallpaper.apply(QDate(2026, 1, 1));
        const QString january = wallpaper.picturePath();
        QCOMPARE(wallpaper.pressedButton(), 107);
        wallpaper.apply(QDate(2026, 3, 31));
        QCOMPARE(wallpaper.picturePath(), january);
        // Quarter 1 seeds like weekday 1: Sunday's picture.
        setWallpaper(5);
        wallpaper.apply(QDate(2026, 11, 22));
        QCOMPARE(wallpaper.picturePath(), january);
        setWallpaper(3);
        wallpaper.apply(QDate(2026, 4, 1));
        const QString april = wallpaper.picturePath();
        wallpaper.apply(QDate(2026, 6, 30));
        QCOMPARE(wallpaper.picturePath(), april);
    }

    void weekRotationRepeatsInWeekOneOfEveryYear()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        setWallpaper(4);
        wallpaper.apply(QDate(2026, 1, 3)); // Saturday of week 1
        const QString week1 = wallpaper.picturePath();
        QCOMPARE(wallpaper.pressedButton(), 108);
        wallpaper.apply(QDate(2025, 1, 1));
        QCOMPARE(wallpaper.picturePath(), week1);
        wallpaper.apply(QDate(2023, 1, 7)); // 2023 starts on a Sunday
        QCOMPARE(wallpaper.picturePath(), week1);
        // Sunday 4 January 2026 opens week 2 (seed -2: Monday's picture).
        wallpaper.apply(QDate(2026, 1, 4));
        const QString week2 = wallpaper.picturePath();
        setWallpaper(5);
        wallpaper.apply(QDate(2026, 11, 23));
        QCOMPARE(wallpaper.picturePath(), week2);
    }

    void randomPicksAPictureOfTheFolder()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        setWallpaper(2);
        wallpaper.apply();
        QCOMPARE(wallpaper.pressedButton(), 106);
        QVERIFY(m_rotation.contains(QFileInfo(wallpaper.picturePath()).fileName()));
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Stretched);
    }

    void emptyFolderDrawsNothingAndKeepsTheBackground()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_emptyCg);
        for (int type = 2; type <= 5; ++type) {
            setWallpaper(type);
            wallpaper.apply(QDate(2026, 11, 23));
            QCOMPARE(wallpaper.pressedButton(), type + 104);
            QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Nothing);
            QVERIFY(wallpaper.picturePath().isEmpty());
            const QImage window = painted(wallpaper);
            QCOMPARE(window.pixelColor(0, 0), Background);
            QCOMPARE(window.pixelColor(319, 179), Background);
        }
    }

    void missingOrDamagedPictureKeepsTheBackground()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        setWallpaper(0, QStringLiteral(".."), QStringLiteral("NOWHERE.BMP"));
        wallpaper.apply();
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Nothing);
        QCOMPARE(painted(wallpaper).pixelColor(5, 5), Background);

        QFile damaged(m_cg + QStringLiteral("/DAMAGED.BMP"));
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        damaged.write("BM not really a picture");
        damaged.close();
        setWallpaper(0, QStringLiteral("."), QStringLiteral("DAMAGED.BMP"));
        wallpaper.apply();
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Nothing);
        QCOMPARE(painted(wallpaper).pixelColor(5, 5), Background);
        QVERIFY(damaged.remove());

        // A setting that names no known type shows no picture either.
        setWallpaper(42);
        wallpaper.apply();
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Nothing);
        QCOMPARE(wallpaper.pressedButton(), 0);
    }

    void namedPictureAtNaturalSizeFromTheTopLeft()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        wallpaper.apply();
        QCOMPARE(wallpaper.picturePath(), m_cg + QStringLiteral("/../WELCOME.BMP"));
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Natural);
        QCOMPARE(wallpaper.pressedButton(), 0);
        const QImage window = painted(wallpaper);
        QCOMPARE(window.pixelColor(0, 0), QColor(200, 100, 0));
        QCOMPARE(window.pixelColor(99, 49), QColor(200, 100, 0));
        QCOMPARE(window.pixelColor(100, 10), Background);
        QCOMPARE(window.pixelColor(10, 50), Background);
        // Folders written with backslashes still lead to the picture.
        setWallpaper(0, QStringLiteral(".\\.."), QStringLiteral("WELCOME.BMP"));
        wallpaper.apply();
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Natural);
    }

    void themeIsStretchedOverTheWholeArea()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        setWallpaper(1, QStringLiteral("."), Wallpaper::themeFile(2));
        wallpaper.apply();
        QCOMPARE(wallpaper.picturePath(), m_cg + QStringLiteral("/./ﾏｲﾅｽｲｵﾝ.JPEG"));
        QCOMPARE(wallpaper.mode(), Wallpaper::Mode::Stretched);
        const QColor theme(80, 175, 128);
        for (const QSize &size : {QSize(320, 180), QSize(50, 400)}) {
            const QImage window = painted(wallpaper, size);
            QVERIFY(sameColour(window.pixelColor(0, 0), theme));
            QVERIFY(sameColour(window.pixelColor(size.width() - 1, size.height() - 1), theme));
        }
        // The pattern "stem.???" takes three-letter names only: a theme file
        // named with ".JPEG" presses no theme button, one with ".JPG" does.
        QCOMPARE(wallpaper.pressedButton(), 0);
        QVERIFY(QFile::copy(m_cg + QLatin1Char('/') + Wallpaper::themeFile(4), m_cg + QStringLiteral("/ｸｰﾙﾋﾞｽﾞ.PNG")));
        setWallpaper(1, QStringLiteral("."), QStringLiteral("ｸｰﾙﾋﾞｽﾞ.PNG"));
        wallpaper.apply();
        QCOMPARE(wallpaper.pressedButton(), 104);
        QVERIFY(QFile::remove(m_cg + QStringLiteral("/ｸｰﾙﾋﾞｽﾞ.PNG")));
    }

    void desktopTypeTurnsPersistentDrawingOffUntilAnotherTypeIsChosen()
    {
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        wallpaper.apply();
        QVERIFY(wallpaper.persistentDrawing());

        setWallpaper(6);
        wallpaper.apply();
        QVERIFY(wallpaper.isDesktop());
        QVERIFY(!wallpaper.persistentDrawing());
        QCOMPARE(wallpaper.pressedButton(), 110);
        QVERIFY(wallpaper.picturePath().isEmpty());
        // The desktop is painted over the whole window at every repaint;
        // without a display it is a plain colour.
        const bool headless = QGuiApplication::platformName() == QLatin1String("offscreen");
        const QImage first = painted(wallpaper);
        QVERIFY(first.pixelColor(0, 0) != Background);
        QVERIFY(first.pixelColor(319, 179) != Background);
        if (headless)
            QCOMPARE(first.pixelColor(160, 90), DesktopBackground::defaultColour());
        QCOMPARE(painted(wallpaper), first);

        setWallpaper(0, QStringLiteral(".."), QStringLiteral("WELCOME.BMP"));
        wallpaper.apply();
        QVERIFY(!wallpaper.isDesktop());
        QVERIFY(wallpaper.persistentDrawing());
        const QImage window = painted(wallpaper);
        QCOMPARE(window.pixelColor(0, 0), QColor(200, 100, 0));
        QCOMPARE(window.pixelColor(200, 100), Background);
    }

    // On a display the desktop's own settings are asked: here GNOME's, kept
    // in a private settings file of this test's own home folder.
    void desktopPictureComesFromTheDesktopSettings()
    {
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            QSKIP("no display: the desktop is a plain colour");
        if (qEnvironmentVariable("GSETTINGS_BACKEND") != QLatin1String("keyfile")
            || qEnvironmentVariableIsEmpty("LANTERN_TEST_ROOT") || QStandardPaths::findExecutable("gsettings").isEmpty())
            QSKIP("needs gsettings with a private keyfile backend");
        const auto set = [](const QString &key, const QString &value) {
            QCOMPARE(QProcess::execute(QStringLiteral("gsettings"),
                                       {QStringLiteral("set"), QStringLiteral("org.gnome.desktop.background"), key, value}),
                     0);
        };
        const QString picture = m_skin.filePath(QStringLiteral("desk top.png"));
        writePicture(picture, QColor(0, 160, 80));
        set(QStringLiteral("picture-uri"), QUrl::fromLocalFile(picture).toString());
        set(QStringLiteral("picture-options"), QStringLiteral("stretched"));
        set(QStringLiteral("primary-color"), QStringLiteral("#112233"));

        Wallpaper wallpaper;
        wallpaper.setPictureFolder(m_cg);
        setWallpaper(6);
        wallpaper.apply();
        QImage window = painted(wallpaper);
        QCOMPARE(window.pixelColor(0, 0), QColor(0, 160, 80));
        QCOMPARE(window.pixelColor(319, 179), QColor(0, 160, 80));

        set(QStringLiteral("picture-uri"), QStringLiteral(""));
        wallpaper.apply();
        window = painted(wallpaper);
        QCOMPARE(window.pixelColor(0, 0), QColor(0x11, 0x22, 0x33));
    }

    void desktopSettingsAreRead()
    {
        QCOMPARE(DesktopBackground::pathFromSetting(QStringLiteral("'file:///usr/share/backgrounds/a%20b.jpg'\n")),
                 QStringLiteral("/usr/share/backgrounds/a b.jpg"));
        QCOMPARE(DesktopBackground::pathFromSetting(QStringLiteral("/home/u/x.png")), QStringLiteral("/home/u/x.png"));
        QVERIFY(DesktopBackground::pathFromSetting(QStringLiteral("''")).isEmpty());
        QVERIFY(DesktopBackground::pathFromSetting(QStringLiteral("No such key")).isEmpty());
        QCOMPARE(DesktopBackground::colourFromSetting(QStringLiteral("'#023c88'")), QColor(0x02, 0x3c, 0x88));
        QVERIFY(!DesktopBackground::colourFromSetting(QStringLiteral("'rgb(1,2,3)'")).isValid());
        QCOMPARE(DesktopBackground::placementFromSetting(QStringLiteral("'stretched'")),
                 DesktopBackground::Placement::Stretched);
        QCOMPARE(DesktopBackground::placementFromSetting(QStringLiteral("'wallpaper'")),
                 DesktopBackground::Placement::Tiled);
        QCOMPARE(DesktopBackground::placementFromSetting(QStringLiteral("'none'")), DesktopBackground::Placement::Zoom);
    }

    // One picture per type, drawn from the program's own skin over a screen.
    void screenshotsOfEveryType()
    {
        const QString skinPictures = QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN/CG");
        if (!QFileInfo::exists(skinPictures + QStringLiteral("/SPRING.JPG")))
            QSKIP("the skin has not been drawn");
        Wallpaper wallpaper;
        wallpaper.setPictureFolder(skinPictures);
        const QString folder = screenshotFolder();
        const QList<std::tuple<int, QString, QString>> choices = {
            {0, QStringLiteral(".."), QStringLiteral("WELCOME.BMP")},
            {1, QStringLiteral("."), Wallpaper::themeFile(3)},
            {2, QString(), QString()},
            {3, QString(), QString()},
            {4, QString(), QString()},
            {5, QString(), QString()},
            {6, QString(), QString()},
        };
        for (const auto &[type, directory, file] : choices) {
            setWallpaper(type, directory, file);
            wallpaper.apply(QDate(2026, 11, 23));
            QVERIFY2(wallpaper.mode() != Wallpaper::Mode::Nothing, qPrintable(QString::number(type)));
            const QImage screen = painted(wallpaper, QSize(1280, 800));
            QVERIFY(screen.save(folder + QStringLiteral("/wallpaper_type%1.png").arg(type)));
        }
    }
};

QTEST_MAIN(TestWallpaper)
#include "test_wallpaper.moc"
