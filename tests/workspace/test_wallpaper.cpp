#include "app/Globals.h"
#include "platform/DesktopBackground.h"
#include "platform/vb/VbRandom.h"
#include "workspace/Wallpaper.h"
#include "support/FileBytes.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QColor Background(12, 34, 56);
const QColor Welcome(200, 100, 0);
const QColor Theme2(80, 175, 128);

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
    // SKIN/WELCOME.BMP (100 by 50); SKIN/CG with the five themes (four-letter
    // extension), seven rotation pictures and files and folders the rotation skips.
    void initTestCase()
    {
        m_cg = m_skin.filePath(u"CG"_s);
        QVERIFY(QDir().mkpath(m_cg + u"/SUB.DIR"_s));
        writePicture(m_skin.filePath(u"WELCOME.BMP"_s), Welcome, QSize(100, 50));
        for (int number = 1; number <= Wallpaper::ThemeCount; ++number)
            writePicture(m_cg + u'/' + Wallpaper::themeFile(number), QColor(number * 40, 255 - number * 40, 128));
        for (int i = 1; i <= 7; ++i) {
            m_rotation.append(u"PIC%1.PNG"_s.arg(i));
            writePicture(m_cg + u'/' + m_rotation.last(), QColor(i * 30, 60, 255 - i * 30));
        }
        writePicture(m_cg + u"/SHORT.JP"_s, Qt::white);
        QVERIFY(writeFileBytes(m_cg + u"/README"_s, {}));
        // Pictures outside the rotation: a damaged one, a bitmap with a palette, a theme as ".PNG".
        QVERIFY(QDir().mkpath(m_cg + u"/PLAIN"_s));
        QVERIFY(writeFileBytes(m_cg + u"/PLAIN/DAMAGED.BMP"_s, "BM not a picture"));
        QImage indexed(30, 20, QImage::Format_Indexed8);
        indexed.setColorTable({Welcome.rgb()});
        indexed.fill(0);
        QVERIFY(indexed.save(m_cg + u"/PLAIN/INDEXED.BMP"_s, "BMP"));
        writePicture(m_cg + u"/PLAIN/ｸｰﾙﾋﾞｽﾞ.PNG"_s, Qt::blue);
    }

    void init()
    {
        VbRandom::restart();
        m_wallpaper.setPictureFolder(m_cg);
        setWallpaper(0, u".."_s, u"WELCOME.BMP"_s);
    }

    // No theme outside 1-5 (their names and files are the settings box's
    // captions and choices); a theme's pattern is its stem and ".???".
    void themeTableAndPattern()
    {
        QVERIFY(Wallpaper::themeName(0).isEmpty() && Wallpaper::themeName(6).isEmpty());
        for (const auto &[file, theme] : {std::pair(u"ｵｰｶﾞﾆｯｸ.JPG", 3), {u"ｾﾚﾌﾞﾘﾃｨ.bmp", 5}, {u"ｵｰｶﾞﾆｯｸ.JPEG", 0}, {u"ｵｰｶﾞﾆｯｸ.JP", 0}, {u"オーガニック.JPG", 0}})
            QVERIFY2(Wallpaper::themeMatching(QString::fromUtf16(file)) == theme, qPrintable(QString::fromUtf16(file)));
        // The rotations list every file with a three-letter extension.
        const QStringList listed = Wallpaper::rotationList(m_cg);
        QCOMPARE(QSet<QString>(listed.begin(), listed.end()), QSet<QString>(m_rotation.begin(), m_rotation.end()));
        QVERIFY(Wallpaper::rotationList(m_skin.filePath(u"MISSING"_s)).isEmpty());
    }

    // Rnd(-n) restarts the generator and r is the number drawn after it,
    // whatever was drawn before; the entry is floor(n × r + 1). Type 3 seeds
    // with the quarter, 4 with the week of the year, 5 with the weekday
    // (Sunday 1): days seeded alike show the same picture.
    void rotationsSeedByQuarterWeekAndWeekday()
    {
        QCOMPARE(qRound(Wallpaper::pickNumber(5, QDate(2026, 11, 22)) * 1e7), 358458);
        VbRandom::rnd(-7.0f);
        QCOMPARE(qRound(Wallpaper::pickNumber(5, QDate(2026, 11, 23)) * 1e7), 6624333);
        for (const auto &[count, r, entry] : {std::tuple(7, 0.0f, 1), {7, 0.6624333f, 5}, {7, 0.99999994f, 7}})
            QCOMPARE(Wallpaper::entryFor(count, r), entry);
        const std::tuple<int, QDate, int, QDate, bool> pairs[] = {{3, QDate(2026, 1, 1), 3, QDate(2026, 3, 31), true}, {3, QDate(2026, 3, 31), 3, QDate(2026, 4, 1), false}, {3, QDate(2026, 4, 1), 3, QDate(2026, 6, 30), true}, {3, QDate(2026, 2, 14), 5, QDate(2026, 11, 22), true}, {4, QDate(2026, 1, 2), 5, QDate(2026, 11, 22), true}, {4, QDate(2026, 1, 3), 4, QDate(2025, 1, 1), true}, {4, QDate(2026, 1, 3), 4, QDate(2023, 1, 7), true}, {4, QDate(2026, 1, 3), 4, QDate(2026, 1, 4), false}, {4, QDate(2026, 1, 4), 5, QDate(2026, 11, 23), true}, {5, QDate(2026, 11, 23), 5, QDate(2027, 3, 1), true}, {5, QDate(2026, 11, 23), 5, QDate(2026, 11, 24), false}};
        for (const auto &[type, day, otherType, otherDay, same] : pairs) {
            const QString shown = shownOn(type, day);
            QVERIFY2((shown == shownOn(otherType, otherDay)) == same,
                     qPrintable(u"type %1 on %2, type %3 on %4"_s.arg(type).arg(day.toString()).arg(otherType).arg(otherDay.toString())));
        }
    }

    // Types 2-5 press button T + 104 and stretch one picture of the folder.
    // What cannot be shown (an empty folder for the rotations, a missing or
    // damaged file, a type that does not exist) leaves the background as it was.
    void rotationsAndPicturesThatCannotBeShown()
    {
        for (int type = 2; type <= 5; ++type) {
            QVERIFY(m_rotation.contains(QFileInfo(shownOn(type, QDate(2026, 11, 23))).fileName()));
            QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Stretched);
            m_wallpaper.setPictureFolder(m_cg + u"/SUB.DIR"_s);
            shownOn(type, QDate(2026, 11, 23));
            QCOMPARE(m_wallpaper.pressedButton(), type + 104);
            QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Nothing);
            m_wallpaper.setPictureFolder(m_cg);
        }
        for (const auto &[type, file] : {std::pair(0, "NOWHERE.BMP"), {0, "DAMAGED.BMP"}, {42, ""}}) {
            setWallpaper(type, u"PLAIN"_s, QString::fromLatin1(file));
            m_wallpaper.apply();
            QVERIFY2(m_wallpaper.mode() == Wallpaper::Mode::Nothing && painted(m_wallpaper).pixelColor(5, 5) == Background, file);
        }
    }

    // Type 0 shows its picture at its natural size from the top left (also
    // from a folder written with backslashes, and a bitmap with a palette).
    // Type 1 stretches it over the whole area and presses the theme button
    // whose pattern matches: a ".PNG" name does, the ".JPEG" the buttons store never.
    void namedPictureAndTheme()
    {
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.picturePath(), m_cg + u"/../WELCOME.BMP"_s);
        const QImage window = painted(m_wallpaper);
        QVERIFY(window.pixelColor(0, 0) == Welcome && window.pixelColor(99, 49) == Welcome);
        QVERIFY(window.pixelColor(100, 10) == Background && window.pixelColor(10, 50) == Background);
        for (const auto &[folder, file] : {std::pair(u".\\..", u"WELCOME.BMP"), {u"PLAIN", u"INDEXED.BMP"}}) {
            setWallpaper(0, QString::fromUtf16(folder), QString::fromUtf16(file));
            m_wallpaper.apply();
            QVERIFY(m_wallpaper.mode() == Wallpaper::Mode::Natural && m_wallpaper.pressedButton() == 0);
            QCOMPARE(painted(m_wallpaper).pixelColor(29, 19), Welcome);
        }
        setWallpaper(1, u"."_s, Wallpaper::themeFile(2));
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.picturePath(), m_cg + u"/./ﾏｲﾅｽｲｵﾝ.JPEG"_s);
        QCOMPARE(m_wallpaper.pressedButton(), 0);
        for (const QSize &size : {QSize(320, 180), QSize(50, 400)}) {
            const QImage stretched = painted(m_wallpaper, size);
            QVERIFY(stretched.pixelColor(0, 0) == Theme2 && stretched.pixelColor(size.width() - 1, size.height() - 1) == Theme2);
        }
        setWallpaper(1, u"PLAIN"_s, u"ｸｰﾙﾋﾞｽﾞ.PNG"_s);
        m_wallpaper.apply();
        QCOMPARE(m_wallpaper.pressedButton(), 104);
    }

    // Type 6 turns persistent drawing off and covers the window with the
    // desktop at every repaint (a plain colour without a display); another
    // type brings persistent drawing back.
    void desktopTypeTurnsPersistentDrawingOffUntilAnotherTypeIsChosen()
    {
        m_wallpaper.apply();
        QVERIFY(m_wallpaper.persistentDrawing());
        setWallpaper(6);
        m_wallpaper.apply();
        QVERIFY(m_wallpaper.isDesktop() && !m_wallpaper.persistentDrawing());
        QCOMPARE(m_wallpaper.pressedButton(), 110);
        const QImage first = painted(m_wallpaper);
        QVERIFY(first.pixelColor(0, 0) != Background && first.pixelColor(319, 179) != Background);
        if (QGuiApplication::platformName() == "offscreen"_L1)
            QCOMPARE(first.pixelColor(160, 90), DesktopBackground::defaultColour());
        QCOMPARE(painted(m_wallpaper), first);
        setWallpaper(0, u".."_s, u"WELCOME.BMP"_s);
        m_wallpaper.apply();
        QVERIFY(!m_wallpaper.isDesktop() && m_wallpaper.persistentDrawing());
        QCOMPARE(painted(m_wallpaper).pixelColor(200, 100), Background);
    }

    // On a display the desktop's own settings are asked: here GNOME's, kept
    // in a settings file inside this test's own home folder.
    void desktopPictureComesFromTheDesktopSettings()
    {
        if (QGuiApplication::platformName() == "offscreen"_L1)
            QSKIP("no display: the desktop is a plain colour");
        if (qEnvironmentVariable("GSETTINGS_BACKEND") != "keyfile"_L1 || qEnvironmentVariableIsEmpty("LANTERN_TEST_ROOT")
            || QStandardPaths::findExecutable("gsettings").isEmpty())
            QSKIP("needs gsettings with a private keyfile backend");
        const auto set = [](const char *key, const QString &value) {
            QCOMPARE(QProcess::execute("gsettings", {"set", "org.gnome.desktop.background", key, value}), 0);
        };
        const QString picture = m_skin.filePath(u"desk top.png"_s);
        writePicture(picture, QColor(0, 160, 80));
        set("picture-uri", QUrl::fromLocalFile(picture).toString());
        set("picture-options", u"stretched"_s);
        set("primary-color", u"#112233"_s);
        setWallpaper(6);
        m_wallpaper.apply();
        QCOMPARE(painted(m_wallpaper).pixelColor(319, 179), QColor(0, 160, 80));
        set("picture-uri", QString());
        m_wallpaper.apply();
        QCOMPARE(painted(m_wallpaper).pixelColor(0, 0), QColor(0x11, 0x22, 0x33));
    }
};

QTEST_MAIN(TestWallpaper)
#include "test_wallpaper.moc"
