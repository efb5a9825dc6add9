#include "app/Globals.h"
#include "platform/touch/TouchButton.h"
#include "workspace/SettingsBox.h"
#include "workspace/Wallpaper.h"

#include <QDir>
#include <QLabel>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Every click of the box must change exactly its own settings: a snapshot of
// all of them to compare before and after.
struct Settings
{
    qint32 type = 0;
    QString directory;
    QString file;
    bool music = false;
    bool graphic = false;
    bool shutdown = false;
    bool howTo = false;
    bool smartPencil = false;

    static Settings now()
    {
        return {Globals::WallpaperType, Globals::WallpaperDirectory, Globals::WallpaperFile, Globals::MusicOn,
                Globals::GraphicOn, Globals::ShutdownOnQuit, Globals::HowToOn, Globals::SmartPencilOn};
    }
    bool operator==(const Settings &) const = default;
};

QString screenshotFolder()
{
    QString build = qEnvironmentVariable("LANTERN_BUILD_DIR");
    if (build.isEmpty())
        build = QDir(QStringLiteral(LANTERN_PROGRAM_DIR)).absoluteFilePath(QStringLiteral(".."));
    const QString folder = build + QStringLiteral("/screenshots");
    QDir().mkpath(folder);
    return folder;
}

// A stand-in for the workspace: a screen-sized window that paints the
// wallpaper and holds the settings box in its middle.
class Screen : public QWidget
{
public:
    explicit Screen(Wallpaper *wallpaper)
        : m_wallpaper(wallpaper)
    {
        resize(1280, 860);
        QPalette palette;
        palette.setColor(QPalette::Window, QColor(12, 34, 56));
        setPalette(palette);
        setAutoFillBackground(true);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        m_wallpaper->paint(painter, rect());
    }

private:
    Wallpaper *m_wallpaper;
};

} // namespace

class TestSettingsBox : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_skin;
    QString m_cg;
    Wallpaper m_wallpaper;
    Screen *m_screen = nullptr;
    SettingsBox *m_box = nullptr;

    void click(int index)
    {
        TouchButton *button = m_box->button(index);
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
    }

private slots:
    void initTestCase()
    {
        // Use the program's own skin pictures when they have been drawn, so
        // that the screenshots show the real themes.
        const QString programPictures = QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN/CG");
        m_cg = m_skin.filePath(QStringLiteral("CG"));
        QVERIFY(QDir().mkpath(m_cg));
        for (int number = 1; number <= Wallpaper::ThemeCount; ++number) {
            const QString name = Wallpaper::themeFile(number);
            if (!QFile::copy(programPictures + QLatin1Char('/') + name, m_cg + QLatin1Char('/') + name)) {
                QImage picture(320, 180, QImage::Format_RGB32);
                picture.fill(QColor::fromHsv(number * 60, 120, 230));
                QVERIFY(picture.save(m_cg + QLatin1Char('/') + name, "JPEG"));
            }
        }
        for (const QString &name : {QStringLiteral("SPRING.JPG"), QStringLiteral("NIGHT.JPG")}) {
            if (!QFile::copy(programPictures + QLatin1Char('/') + name, m_cg + QLatin1Char('/') + name)) {
                QImage picture(320, 180, QImage::Format_RGB32);
                picture.fill(name.startsWith('S') ? QColor(250, 200, 220) : QColor(20, 30, 60));
                QVERIFY(picture.save(m_cg + QLatin1Char('/') + name, "JPEG"));
            }
        }
        QImage welcome(400, 300, QImage::Format_RGB32);
        welcome.fill(QColor(240, 200, 150));
        QVERIFY(welcome.save(m_skin.filePath(QStringLiteral("WELCOME.BMP")), "BMP"));
        m_wallpaper.setPictureFolder(m_cg);
        QVERIFY(!m_box);
        {
            // Before the pictures are loaded every theme shows an empty frame.
            SettingsBox fresh;
            for (int number = 1; number <= 5; ++number)
                QVERIFY(!fresh.hasThemePicture(number));
        }

        m_screen = new Screen(&m_wallpaper);
        m_box = new SettingsBox(m_screen);
        m_box->setWallpaper(&m_wallpaper);
        m_box->move((m_screen->width() - m_box->width()) / 2, (m_screen->height() - m_box->height()) / 2);
        m_screen->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_screen));
    }

    void cleanupTestCase()
    {
        delete m_screen;
    }

    void init()
    {
        Globals::WallpaperType = 0;
        Globals::WallpaperDirectory = QStringLiteral("..");
        Globals::WallpaperFile = QStringLiteral("WELCOME.BMP");
        Globals::MusicOn = true;
        Globals::GraphicOn = true;
        Globals::ShutdownOnQuit = false;
        Globals::HowToOn = true;
        Globals::SmartPencilOn = true;
        m_box->refreshCheckMarks();
        m_box->applyWallpaper();
    }

    void buttonsAreTheMiniChannelsWithTheirTips_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("tip");
        QTest::newRow("close") << 100 << QStringLiteral("クリックすると、[設定] ウィンドウを閉じます。");
        QTest::newRow("weblog") << 101 << QStringLiteral("クリックすると、背景は「ウェブログ」になります。");
        QTest::newRow("minus ion") << 102 << QStringLiteral("クリックすると、背景は「マイナスイオン」になります。");
        QTest::newRow("organic") << 103 << QStringLiteral("クリックすると、背景は「オーガニック」になります。");
        QTest::newRow("cool biz") << 104 << QStringLiteral("クリックすると、背景は「クールビズ」になります。");
        QTest::newRow("celebrity") << 105 << QStringLiteral("クリックすると、背景は「セレブリティ」になります。");
        QTest::newRow("random") << 106 << QStringLiteral("クリックすると、背景は任意に更新されるようになります。");
        QTest::newRow("season") << 107 << QStringLiteral("クリックすると、背景は季節ごとに更新されるようになります。");
        QTest::newRow("week") << 108 << QStringLiteral("クリックすると、背景は週ごとに更新されるようになります。");
        QTest::newRow("weekday") << 109 << QStringLiteral("クリックすると、背景は曜日ごとに更新されるようになります。");
        QTest::newRow("desktop") << 110 << QStringLiteral("クリックすると、背景は Windows の [デスクトップ] と同じになります。");
        QTest::newRow("shutdown") << 111 << QStringLiteral("クリックしてチェックすると、プログラムがコンピュータの電源とリンクして起動・終了するようになります。");
        QTest::newRow("how-to") << 112 << QStringLiteral("クリックしてチェックすると、マルチメディア機能で操作方法を説明してくれるようになります。");
        QTest::newRow("smart pencil") << 113 << QStringLiteral("クリックしてチェックすると、編集しているときに [文字入力] ダイアログを表示するようになります。");
    }

    void buttonsAreTheMiniChannelsWithTheirTips()
    {
        QFETCH(int, index);
        QFETCH(QString, tip);
        TouchButton *button = m_box->button(index);
        QVERIFY(button);
        QCOMPARE(button->tip(), tip);
        QCOMPARE(button->index(), index);
        QCOMPARE(button->objectName(), QStringLiteral("MenuBoxMiniChannels"));
        QVERIFY(button->isVisible());
        QVERIFY(!button->caption().isEmpty());
    }

    void boxIsMenuBoxOneHundredWithItsLabels()
    {
        QCOMPARE(m_box->index(), 100);
        QVERIFY(m_box->isDraggable());
        QCOMPARE(m_box->buttons().size(), 14);
        QVERIFY(!m_box->button(99));
        QVERIFY(!m_box->button(114));

        QCOMPARE(m_box->button(101)->caption(), QStringLiteral("ウェブログ"));
        QCOMPARE(m_box->button(102)->caption(), QStringLiteral("マイナスイオン"));
        QCOMPARE(m_box->button(103)->caption(), QStringLiteral("オーガニック"));
        QCOMPARE(m_box->button(104)->caption(), QStringLiteral("クールビズ"));
        QCOMPARE(m_box->button(105)->caption(), QStringLiteral("セレブリティ"));
        QCOMPARE(m_box->button(106)->caption(), QStringLiteral("ランダム"));
        QCOMPARE(m_box->button(109)->caption(), QStringLiteral("日替わり"));
        QCOMPARE(m_box->button(110)->caption(), QStringLiteral("Windows"));
        QCOMPARE(m_box->button(111)->caption(), QStringLiteral("コンピュータの電源をつけると起動し 終了と同時に電源も切る"));
        QCOMPARE(m_box->button(112)->caption(), QStringLiteral("ポイントした場所のヒントを表示する"));
        QCOMPARE(m_box->button(113)->caption(), QStringLiteral("クリックしたら常に [文字入力] で編集する"));
        for (int index = 111; index <= 113; ++index)
            QVERIFY(m_box->button(index)->toggles());

        QStringList labels;
        for (const QLabel *label : m_box->findChildren<QLabel *>())
            labels << label->text();
        QVERIFY2(labels.contains(QStringLiteral("ユーザー補助")), qPrintable(labels.join('|')));
    }

    void themeButtonsChooseTheirTheme_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("file");
        QTest::newRow("101") << 101 << QStringLiteral("ｳｪﾌﾞﾛｸﾞ.JPEG");
        QTest::newRow("102") << 102 << QStringLiteral("ﾏｲﾅｽｲｵﾝ.JPEG");
        QTest::newRow("103") << 103 << QStringLiteral("ｵｰｶﾞﾆｯｸ.JPEG");
        QTest::newRow("104") << 104 << QStringLiteral("ｸｰﾙﾋﾞｽﾞ.JPEG");
        QTest::newRow("105") << 105 << QStringLiteral("ｾﾚﾌﾞﾘﾃｨ.JPEG");
    }

    void themeButtonsChooseTheirTheme()
    {
        QFETCH(int, index);
        QFETCH(QString, file);
        Settings expected = Settings::now();
        expected.type = 1;
        expected.directory = QStringLiteral(".");
        expected.file = file;

        QSignalSpy wallpaper(m_box, &SettingsBox::wallpaperChanged);
        QSignalSpy shutdown(m_box, &SettingsBox::shutdownOptionChanged);
        QSignalSpy close(m_box, &SettingsBox::closeRequested);
        click(index);
        QVERIFY(Settings::now() == expected);
        QCOMPARE(wallpaper.count(), 1);
        QCOMPARE(shutdown.count(), 0);
        QCOMPARE(close.count(), 0);
        QCOMPARE(m_wallpaper.picturePath(), m_cg + QStringLiteral("/./") + file);
        QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Stretched);
    }

    void changingButtonsChooseTypesTwoToSix()
    {
        for (int index = 106; index <= 110; ++index) {
            // Start from a theme so that the folder and file have something to clear.
            click(101);
            Settings expected = Settings::now();
            expected.type = index - 104;
            expected.directory.clear();
            expected.file.clear();

            QSignalSpy wallpaper(m_box, &SettingsBox::wallpaperChanged);
            QSignalSpy shutdown(m_box, &SettingsBox::shutdownOptionChanged);
            click(index);
            QVERIFY2(Settings::now() == expected, qPrintable(QString::number(index)));
            QCOMPARE(wallpaper.count(), 1);
            QCOMPARE(shutdown.count(), 0);
            for (int other = 101; other <= 110; ++other)
                QCOMPARE(m_box->button(other)->value(), other == index);
            QCOMPARE(m_wallpaper.isDesktop(), index == 110);
        }
        // Back from the desktop to a picture of the window's own.
        click(107);
        QVERIFY(m_wallpaper.persistentDrawing());
        QVERIFY(QFileInfo(m_wallpaper.picturePath()).dir() == QDir(m_cg));
    }

    void checkBoxesInvertTheirOptionOnly_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("shutdown") << 111;
        QTest::newRow("how-to") << 112;
        QTest::newRow("smart pencil") << 113;
    }

    void checkBoxesInvertTheirOptionOnly()
    {
        QFETCH(int, index);
        for (int round = 0; round < 2; ++round) {
            Settings expected = Settings::now();
            bool &option = index == 111 ? expected.shutdown : index == 112 ? expected.howTo : expected.smartPencil;
            option = !option;

            QSignalSpy wallpaper(m_box, &SettingsBox::wallpaperChanged);
            QSignalSpy shutdown(m_box, &SettingsBox::shutdownOptionChanged);
            QSignalSpy accessibility(m_box, &SettingsBox::accessibilityOptionChanged);
            click(index);
            QVERIFY(Settings::now() == expected);
            QCOMPARE(wallpaper.count(), 0);
            QCOMPARE(shutdown.count(), index == 111 ? 1 : 0);
            QCOMPARE(accessibility.count(), index == 111 ? 0 : 1);
            QCOMPARE(m_box->button(111)->value(), Globals::ShutdownOnQuit);
            QCOMPARE(m_box->button(112)->value(), Globals::HowToOn);
            QCOMPARE(m_box->button(113)->value(), Globals::SmartPencilOn);
        }
    }

    void closeButtonOnlyAsksToClose()
    {
        const Settings before = Settings::now();
        QSignalSpy close(m_box, &SettingsBox::closeRequested);
        QSignalSpy wallpaper(m_box, &SettingsBox::wallpaperChanged);
        click(100);
        QCOMPARE(close.count(), 1);
        QCOMPARE(wallpaper.count(), 0);
        QVERIFY(Settings::now() == before);
    }

    void checkMarksFollowTheSettings()
    {
        for (int mask = 0; mask < 8; ++mask) {
            Globals::ShutdownOnQuit = mask & 1;
            Globals::HowToOn = mask & 2;
            Globals::SmartPencilOn = mask & 4;
            m_box->refreshCheckMarks();
            QCOMPARE(m_box->button(111)->value(), bool(mask & 1));
            QCOMPARE(m_box->button(112)->value(), bool(mask & 2));
            QCOMPARE(m_box->button(113)->value(), bool(mask & 4));
        }
    }

    void themePicturesComeFromTheThemeFiles()
    {
        const QSize boxSize = m_box->size();
        m_box->loadThemePictures();
        for (int index = 101; index <= 105; ++index) {
            QVERIFY(m_box->hasThemePicture(index - 100));
            // The picture is the middle of the theme file, not a blank frame
            // (whose corners are clear).
            const QImage shown = m_box->button(index)->icon().pixmap(SettingsBox::clipArtSize()).toImage();
            QCOMPARE(shown.pixelColor(0, 0).alpha(), 255);
            QCOMPARE(shown.pixelColor(shown.width() / 2, shown.height() / 2).alpha(), 255);
        }
        QCOMPARE(m_box->size(), boxSize);
        // At full size the changing backgrounds have drawn pictures, the check boxes none.
        for (int index = 106; index <= 110; ++index)
            QVERIFY(!m_box->button(index)->icon().isNull());
        for (int index = 111; index <= 113; ++index)
            QVERIFY(m_box->button(index)->icon().isNull());

        // A theme file gone leaves its button without a picture, the rest keep theirs.
        const QString gone = m_cg + QLatin1Char('/') + Wallpaper::themeFile(2);
        const QString kept = m_skin.filePath(QStringLiteral("kept.JPEG"));
        QVERIFY(QFile::rename(gone, kept));
        m_box->loadThemePictures();
        QVERIFY(!m_box->hasThemePicture(2));
        QVERIFY(m_box->hasThemePicture(1));
        QVERIFY(QFile::rename(kept, gone));
        m_box->loadThemePictures();
        QVERIFY(m_box->hasThemePicture(2));
    }

    void screenshotOverAWallpaper()
    {
        m_box->loadThemePictures();
        click(103);
        click(109);
        QVERIFY(m_box->button(109)->value());
        const QImage screen = m_screen->grab().toImage();
        QCOMPARE(screen.size(), m_screen->size());
        QVERIFY(screen.save(screenshotFolder() + QStringLiteral("/settings_box.png")));
        // At its own size the box fits a 1024 by 768 screen.
        QVERIFY2(m_box->width() <= 1024 && m_box->height() <= 768,
                 qPrintable(QStringLiteral("%1 x %2").arg(m_box->width()).arg(m_box->height())));
        QCOMPARE(m_box->button(101)->iconSize(), SettingsBox::clipArtSize());
    }

    // A workspace on a 1366 by 768 screen leaves the box about 1040 by 552:
    // the pictures shrink so that every caption keeps its full height.
    void lowBoxShrinksItsPicturesNotItsCaptions()
    {
        const QSize natural = m_box->size();
        m_box->loadThemePictures();
        click(105);
        m_screen->resize(1366, 768);
        m_box->resize(1040, 552);
        m_box->move((1366 - 1040) / 2, (768 - 552) / 2);
        QCoreApplication::processEvents();
        QVERIFY2(m_box->heightForWidth(m_box->width()) <= m_box->height(), qPrintable(QString::number(m_box->heightForWidth(m_box->width()))));
        for (const TouchButton *button : m_box->buttons())
            QVERIFY2(button->height() >= button->heightForWidth(button->width()), qPrintable(button->caption()));
        const QSize picture = m_box->button(101)->iconSize();
        QVERIFY2(picture.height() >= 40 && picture.height() < SettingsBox::clipArtSize().height(),
                 qPrintable(QString::number(picture.height())));
        QVERIFY(m_screen->grab().toImage().save(screenshotFolder() + QStringLiteral("/settings_box_1366x768.png")));

        m_box->resize(natural);
        QCoreApplication::processEvents();
        QCOMPARE(m_box->button(101)->iconSize(), SettingsBox::clipArtSize());
    }

    // A workspace on a 1920 by 1080 screen makes all type 1.4 times larger
    // and gives the box about 1456 by 778: the pictures grow with the type.
    void largerTypeGivesLargerPictures()
    {
        const QSize natural = m_box->size();
        m_box->resize(1040, 552);
        QCoreApplication::processEvents();
        const int smallScreenPicture = m_box->button(101)->iconSize().height();
        QHash<QWidget *, QFont> designed;
        for (QWidget *control : m_box->findChildren<QWidget *>()) {
            designed.insert(control, control->font());
            QFont font = control->font();
            font.setPixelSize(qRound(font.pixelSize() * 1.4));
            control->setFont(font);
        }
        m_screen->resize(1920, 1080);
        m_box->resize(1456, 778);
        m_box->move((1920 - 1456) / 2, (1080 - 778) / 2);
        QCoreApplication::processEvents();
        for (const TouchButton *button : m_box->buttons())
            QVERIFY2(button->height() >= button->heightForWidth(button->width()), qPrintable(button->caption()));
        const int largeScreenPicture = m_box->button(101)->iconSize().height();
        QVERIFY2(largeScreenPicture >= smallScreenPicture * 1.3,
                 qPrintable(QStringLiteral("%1 %2").arg(smallScreenPicture).arg(largeScreenPicture)));
        QVERIFY(m_screen->grab().toImage().save(screenshotFolder() + QStringLiteral("/settings_box_1920x1080.png")));

        for (auto it = designed.cbegin(); it != designed.cend(); ++it)
            it.key()->setFont(it.value());
        m_screen->resize(1280, 860);
        m_box->resize(natural);
        QCoreApplication::processEvents();
        QCOMPARE(m_box->button(101)->iconSize(), SettingsBox::clipArtSize());
    }
};

QTEST_MAIN(TestSettingsBox)
#include "test_settings_box.moc"
