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

// Every click must change exactly its own settings: all of them, to compare.
struct Settings
{
    qint32 type;
    QString directory, file;
    bool music, graphic, shutdown, howTo, smartPencil;

    static Settings now()
    {
        return {Globals::WallpaperType, Globals::WallpaperDirectory, Globals::WallpaperFile, Globals::MusicOn,
                Globals::GraphicOn, Globals::ShutdownOnQuit, Globals::HowToOn, Globals::SmartPencilOn};
    }
    bool operator==(const Settings &) const = default;
};

QString screenshotPath(const QString &name)
{
    QString build = qEnvironmentVariable("LANTERN_BUILD_DIR");
    if (build.isEmpty())
        build = QStringLiteral(LANTERN_PROGRAM_DIR "/..");
    QDir().mkpath(build + QStringLiteral("/screenshots"));
    return build + QStringLiteral("/screenshots/") + name;
}

// The program's own skin picture when it has been drawn (so the screenshots
// show the real themes), else a plain one.
void providePicture(const QString &folder, const QString &name, const QColor &colour)
{
    if (QFile::copy(QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN/CG/") + name, folder + QLatin1Char('/') + name))
        return;
    QImage picture(320, 180, QImage::Format_RGB32);
    picture.fill(colour);
    QVERIFY(picture.save(folder + QLatin1Char('/') + name, "JPEG"));
}

// A stand-in for the workspace: a screen-sized window that paints the wallpaper.
class Screen : public QWidget
{
public:
    explicit Screen(Wallpaper *wallpaper)
        : m_wallpaper(wallpaper)
    {
        resize(1280, 860);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(12, 34, 56));
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

    void showOnScreen(const QSize &screen, const QSize &box)
    {
        m_screen->resize(screen);
        m_box->resize(box);
        m_box->move((screen.width() - box.width()) / 2, (screen.height() - box.height()) / 2);
        QCoreApplication::processEvents();
    }

    void verifyCaptionsFit()
    {
        for (const TouchButton *button : m_box->buttons())
            QVERIFY2(button->height() >= button->heightForWidth(button->width()), qPrintable(button->caption()));
    }

private slots:
    void initTestCase()
    {
        m_cg = m_skin.filePath(QStringLiteral("CG"));
        QVERIFY(QDir().mkpath(m_cg));
        for (int number = 1; number <= Wallpaper::ThemeCount; ++number)
            providePicture(m_cg, Wallpaper::themeFile(number), QColor::fromHsv(number * 60, 120, 230));
        providePicture(m_cg, QStringLiteral("NIGHT.JPG"), QColor(20, 30, 60));
        QImage welcome(400, 300, QImage::Format_RGB32);
        welcome.fill(QColor(240, 200, 150));
        QVERIFY(welcome.save(m_skin.filePath(QStringLiteral("WELCOME.BMP")), "BMP"));
        m_wallpaper.setPictureFolder(m_cg);

        m_screen = new Screen(&m_wallpaper);
        m_box = new SettingsBox(m_screen);
        m_box->setWallpaper(&m_wallpaper);
        m_screen->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_screen));
    }

    void cleanupTestCase() { delete m_screen; }

    void init()
    {
        Globals::WallpaperType = 0;
        Globals::WallpaperDirectory = QStringLiteral("..");
        Globals::WallpaperFile = QStringLiteral("WELCOME.BMP");
        Globals::MusicOn = Globals::GraphicOn = true;
        Globals::ShutdownOnQuit = false;
        Globals::HowToOn = Globals::SmartPencilOn = true;
        m_box->refreshCheckMarks();
        m_box->applyWallpaper();
        showOnScreen(QSize(1280, 860), QSize(960, m_box->heightForWidth(960)));
    }

    void buttonsCarryTheirCaptionsAndTips_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("tip");
        const QString choose = QStringLiteral("クリックすると、背景は%1になります。");
        const QString changes = QStringLiteral("クリックすると、背景は%1に更新されるようになります。");
        const QString check = QStringLiteral("クリックしてチェックすると、%1ようになります。");
        QTest::newRow("100") << 100 << "閉じる" << "クリックすると、[設定] ウィンドウを閉じます。";
        QTest::newRow("101") << 101 << "ウェブログ" << choose.arg("「ウェブログ」");
        QTest::newRow("102") << 102 << "マイナスイオン" << choose.arg("「マイナスイオン」");
        QTest::newRow("103") << 103 << "オーガニック" << choose.arg("「オーガニック」");
        QTest::newRow("104") << 104 << "クールビズ" << choose.arg("「クールビズ」");
        QTest::newRow("105") << 105 << "セレブリティ" << choose.arg("「セレブリティ」");
        QTest::newRow("106") << 106 << "ランダム" << changes.arg("任意");
        QTest::newRow("107") << 107 << "季節ごと" << changes.arg("季節ごと");
        QTest::newRow("108") << 108 << "週ごと" << changes.arg("週ごと");
        QTest::newRow("109") << 109 << "日替わり" << changes.arg("曜日ごと");
        QTest::newRow("110") << 110 << "Windows" << "クリックすると、背景は Windows の [デスクトップ] と同じになります。";
        QTest::newRow("111") << 111 << "コンピュータの電源をつけると起動し 終了と同時に電源も切る"
                             << check.arg("プログラムがコンピュータの電源とリンクして起動・終了する");
        QTest::newRow("112") << 112 << "ポイントした場所のヒントを表示する"
                             << check.arg("マルチメディア機能で操作方法を説明してくれる");
        QTest::newRow("113") << 113 << "クリックしたら常に [文字入力] で編集する"
                             << check.arg("編集しているときに [文字入力] ダイアログを表示する");
    }

    void buttonsCarryTheirCaptionsAndTips()
    {
        QFETCH(int, index);
        QFETCH(QString, caption);
        QFETCH(QString, tip);
        TouchButton *button = m_box->button(index);
        QVERIFY(button);
        QCOMPARE(button->caption(), caption);
        QCOMPARE(button->tip(), tip);
        QCOMPARE(button->index(), index);
        QCOMPARE(button->objectName(), QStringLiteral("MenuBoxMiniChannels"));
        QVERIFY(button->isVisible());
        QCOMPARE(button->toggles(), index >= 111);
    }

    void boxIsMenuBoxOneHundred()
    {
        QCOMPARE(m_box->index(), 100);
        QVERIFY(m_box->isDraggable());
        QCOMPARE(m_box->buttons().size(), 14);
        QVERIFY(!m_box->button(99) && !m_box->button(114));
        QStringList labels;
        for (const QLabel *label : m_box->findChildren<QLabel *>())
            labels << label->text();
        QVERIFY2(labels.contains(QStringLiteral("ユーザー補助")), qPrintable(labels.join('|')));
    }

    void themeButtonsChooseTheirTheme()
    {
        const QStringList stems = {"ｳｪﾌﾞﾛｸﾞ", "ﾏｲﾅｽｲｵﾝ", "ｵｰｶﾞﾆｯｸ", "ｸｰﾙﾋﾞｽﾞ", "ｾﾚﾌﾞﾘﾃｨ"};
        for (int index = 101; index <= 105; ++index) {
            Settings expected = Settings::now();
            expected.type = 1;
            expected.directory = QStringLiteral(".");
            expected.file = stems.at(index - 101) + QStringLiteral(".JPEG");
            QSignalSpy wallpaper(m_box, &SettingsBox::wallpaperChanged);
            QSignalSpy shutdown(m_box, &SettingsBox::shutdownOptionChanged);
            click(index);
            QVERIFY2(Settings::now() == expected, qPrintable(QString::number(index)));
            QCOMPARE(wallpaper.count(), 1);
            QCOMPARE(shutdown.count(), 0);
            QCOMPARE(m_wallpaper.picturePath(), m_cg + QStringLiteral("/./") + expected.file);
            QCOMPARE(m_wallpaper.mode(), Wallpaper::Mode::Stretched);
        }
    }

    void changingButtonsChooseTypesTwoToSix()
    {
        for (int index = 106; index <= 110; ++index) {
            click(101); // a theme first, so that the folder and file have something to clear
            Settings expected = Settings::now();
            expected.type = index - 104;
            expected.directory.clear();
            expected.file.clear();
            QSignalSpy wallpaper(m_box, &SettingsBox::wallpaperChanged);
            click(index);
            QVERIFY2(Settings::now() == expected, qPrintable(QString::number(index)));
            QCOMPARE(wallpaper.count(), 1);
            for (int other = 101; other <= 110; ++other)
                QCOMPARE(m_box->button(other)->value(), other == index);
            QCOMPARE(m_wallpaper.isDesktop(), index == 110);
        }
        click(107); // from the desktop back to a picture of the window's own
        QVERIFY(m_wallpaper.persistentDrawing());
        QCOMPARE(QFileInfo(m_wallpaper.picturePath()).fileName(), QStringLiteral("NIGHT.JPG"));
    }

    void checkBoxesInvertTheirOptionOnly()
    {
        for (int index = 111; index <= 113; ++index) {
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
                QCOMPARE(m_box->button(index)->value(), option);
            }
        }
    }

    void closeButtonOnlyAsksToClose()
    {
        const Settings before = Settings::now();
        QSignalSpy close(m_box, &SettingsBox::closeRequested);
        click(100);
        QCOMPARE(close.count(), 1);
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
        SettingsBox fresh; // before loading, every theme shows an empty frame
        for (int number = 1; number <= 5; ++number)
            QVERIFY(!fresh.hasThemePicture(number));

        const QSize boxSize = m_box->size();
        m_box->loadThemePictures();
        for (int number = 1; number <= 5; ++number) {
            QVERIFY(m_box->hasThemePicture(number));
            // The middle of the theme file, edge to edge (an empty frame's corners are clear).
            const QImage shown = m_box->button(100 + number)->icon().pixmap(SettingsBox::clipArtSize()).toImage();
            QCOMPARE(shown.pixelColor(0, 0).alpha(), 255);
        }
        QCOMPARE(m_box->size(), boxSize);
        for (int index = 106; index <= 113; ++index)
            QCOMPARE(m_box->button(index)->icon().isNull(), index >= 111);

        // A theme file gone leaves its button with the frame, the rest keep their pictures.
        const QString gone = m_cg + QLatin1Char('/') + Wallpaper::themeFile(2);
        QVERIFY(QFile::rename(gone, gone + QStringLiteral(".away")));
        m_box->loadThemePictures();
        QVERIFY(!m_box->hasThemePicture(2) && m_box->hasThemePicture(1));
        QVERIFY(QFile::rename(gone + QStringLiteral(".away"), gone));
    }

    // The workspace gives the box about 1040 by 552 on a 1366 by 768 screen,
    // and 1456 by 778 with type 1.4 times larger on a 1920 by 1080 one.
    void picturesFitTheBoxTheWorkspaceGives()
    {
        m_box->loadThemePictures();
        click(103);
        click(109);
        QVERIFY(m_box->width() <= 1024 && m_box->height() <= 768);
        QCOMPARE(m_box->button(101)->iconSize(), SettingsBox::clipArtSize());
        QVERIFY(m_screen->grab().save(screenshotPath(QStringLiteral("settings_box.png"))));

        showOnScreen(QSize(1366, 768), QSize(1040, 552));
        verifyCaptionsFit();
        const int small = m_box->button(101)->iconSize().height();
        QVERIFY2(small >= 40 && small < SettingsBox::clipArtSize().height(), qPrintable(QString::number(small)));
        QVERIFY(m_screen->grab().save(screenshotPath(QStringLiteral("settings_box_1366x768.png"))));

        QHash<QWidget *, QFont> designed;
        for (QWidget *control : m_box->findChildren<QWidget *>()) {
            designed.insert(control, control->font());
            QFont font = control->font();
            font.setPixelSize(qRound(font.pixelSize() * 1.4));
            control->setFont(font);
        }
        showOnScreen(QSize(1920, 1080), QSize(1456, 778));
        verifyCaptionsFit();
        const int large = m_box->button(101)->iconSize().height();
        QVERIFY2(large >= small * 1.3, qPrintable(QStringLiteral("%1 %2").arg(small).arg(large)));
        QVERIFY(m_screen->grab().save(screenshotPath(QStringLiteral("settings_box_1920x1080.png"))));
        for (auto it = designed.cbegin(); it != designed.cend(); ++it)
            it.key()->setFont(it.value());
    }
};

QTEST_MAIN(TestSettingsBox)
#include "test_settings_box.moc"
