#include "app/Globals.h"
#include "platform/touch/TouchButton.h"
#include "workspace/SettingsBox.h"
#include "workspace/Wallpaper.h"

#include <QDir>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

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

} // namespace

class TestSettingsBox : public QObject
{
    Q_OBJECT

    QTemporaryDir m_skin;
    QString m_cg;
    Wallpaper m_wallpaper;
    SettingsBox *m_box = nullptr;

private slots:
    void initTestCase()
    {
        // The five themes and one rotation picture (a three-letter extension).
        m_cg = m_skin.filePath(u"CG"_s);
        QVERIFY(QDir().mkpath(m_cg));
        for (int number = 0; number <= Wallpaper::ThemeCount; ++number) {
            QImage picture(320, 180, QImage::Format_RGB32);
            picture.fill(QColor::fromHsv(number * 60, 120, 230));
            QVERIFY(picture.save(m_cg + u'/' + (number ? Wallpaper::themeFile(number) : u"NIGHT.JPG"_s), "JPEG"));
        }
        m_wallpaper.setPictureFolder(m_cg);
        m_box = new SettingsBox;
        m_box->setWallpaper(&m_wallpaper);
        m_box->resize(960, m_box->heightForWidth(960));
        m_box->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_box));
    }

    void cleanupTestCase() { delete m_box; }

    void init()
    {
        Globals::WallpaperType = 0;
        Globals::WallpaperDirectory = u".."_s;
        Globals::WallpaperFile = u"WELCOME.BMP"_s;
        Globals::MusicOn = Globals::GraphicOn = Globals::HowToOn = Globals::SmartPencilOn = true;
        Globals::ShutdownOnQuit = false;
        m_box->refreshCheckMarks();
        m_box->applyWallpaper();
    }

    void buttonsCarryTheirCaptionsAndTips()
    {
        const QString choose = u"クリックすると、背景は%1になります。"_s;
        const QString changes = u"クリックすると、背景は%1に更新されるようになります。"_s;
        const QString check = u"クリックしてチェックすると、%1ようになります。"_s;
        const std::tuple<int, const char *, QString> rows[] = {
            {100, "閉じる", u"クリックすると、[設定] ウィンドウを閉じます。"_s},
            {101, "ウェブログ", choose.arg(u"「ウェブログ」"_s)},
            {102, "マイナスイオン", choose.arg(u"「マイナスイオン」"_s)},
            {103, "オーガニック", choose.arg(u"「オーガニック」"_s)},
            {104, "クールビズ", choose.arg(u"「クールビズ」"_s)},
            {105, "セレブリティ", choose.arg(u"「セレブリティ」"_s)},
            {106, "ランダム", changes.arg(u"任意"_s)},
            {107, "季節ごと", changes.arg(u"季節ごと"_s)},
            {108, "週ごと", changes.arg(u"週ごと"_s)},
            {109, "日替わり", changes.arg(u"曜日ごと"_s)},
            {110, "Windows", u"クリックすると、背景は Windows の [デスクトップ] と同じになります。"_s},
            {111, "コンピュータの電源をつけると起動し 終了と同時に電源も切る", check.arg(u"プログラムがコンピュータの電源とリンクして起動・終了する"_s)},
            {112, "ポイントした場所のヒントを表示する", check.arg(u"マルチメディア機能で操作方法を説明してくれる"_s)},
            {113, "クリックしたら常に [文字入力] で編集する", check.arg(u"編集しているときに [文字入力] ダイアログを表示する"_s)}};
        for (const auto &[index, caption, tip] : rows) {
            TouchButton *button = m_box->button(index);
            const QByteArray which = QByteArray::number(index);
            QVERIFY2(button && button->isVisible() && button->index() == index, which);
            QCOMPARE(button->caption(), QString::fromUtf8(caption));
            QCOMPARE(button->tip(), tip);
            QVERIFY2(button->objectName() == u"MenuBoxMiniChannels"_s && button->toggles() == (index >= 111), which);
        }
        // MenuBoxes(100), draggable, with exactly these buttons and the
        // accessibility group read top down as 113, 112, 111.
        QCOMPARE(m_box->index(), 100);
        QVERIFY(m_box->isDraggable());
        QCOMPARE(m_box->buttons().size(), 14);
        QVERIFY(!m_box->button(99) && !m_box->button(114));
        QStringList labels;
        for (const QLabel *label : m_box->findChildren<QLabel *>())
            labels << label->text();
        QVERIFY2(labels.contains(u"ユーザー補助"_s), qPrintable(labels.join(u'|')));
        const auto top = [this](int index) { return m_box->button(index)->mapTo(m_box, QPoint()).y(); };
        QVERIFY(top(113) < top(112) && top(112) < top(111));
    }

    // Themes set type 1, folder "." and the stem with ".JPEG"; 106-110 set
    // types 2-6 with folder and file emptied and press only their button;
    // 111-113 invert their option only, each time they are clicked; 100 only
    // asks to close.
    void eachButtonChangesItsOwnSettingsOnly()
    {
        const QStringList themeFiles = {"ｳｪﾌﾞﾛｸﾞ.JPEG", "ﾏｲﾅｽｲｵﾝ.JPEG", "ｵｰｶﾞﾆｯｸ.JPEG", "ｸｰﾙﾋﾞｽﾞ.JPEG", "ｾﾚﾌﾞﾘﾃｨ.JPEG"};
        for (int index = 100; index <= 113; ++index) {
            init();
            const QByteArray which = QByteArray::number(index);
            QSignalSpy wallpaper(m_box, &SettingsBox::wallpaperChanged), shutdown(m_box, &SettingsBox::shutdownOptionChanged);
            QSignalSpy accessibility(m_box, &SettingsBox::accessibilityOptionChanged), close(m_box, &SettingsBox::closeRequested);
            for (int round = 1; round <= (index >= 111 ? 2 : 1); ++round) {
                Settings expected = Settings::now();
                if (index >= 101 && index <= 110) {
                    expected.type = index <= 105 ? 1 : index - 104;
                    expected.directory = index <= 105 ? u"."_s : QString();
                    expected.file = index <= 105 ? themeFiles[index - 101] : QString();
                }
                bool *option = index == 111 ? &expected.shutdown : index == 112 ? &expected.howTo
                                                                                : &expected.smartPencil;
                if (index >= 111)
                    *option = !*option;
                QTest::mouseClick(m_box->button(index), Qt::LeftButton, Qt::NoModifier, m_box->button(index)->rect().center());
                QVERIFY2(Settings::now() == expected, which);
                QVERIFY2(index < 111 || m_box->button(index)->value() == *option, which);
                QVERIFY2(shutdown.count() == (index == 111 ? round : 0), which);
                QVERIFY2(accessibility.count() == (index == 112 || index == 113 ? round : 0), which);
            }
            QVERIFY2(wallpaper.count() == (index >= 101 && index <= 110 ? 1 : 0) && close.count() == (index == 100 ? 1 : 0), which);
            for (int other = 101; index >= 106 && index <= 110 && other <= 110; ++other)
                QVERIFY2(m_box->button(other)->value() == (other == index), which);
        }
    }

    void checkMarksFollowTheSettings()
    {
        for (int mask = 0; mask < 8; ++mask) {
            Globals::ShutdownOnQuit = mask & 1;
            Globals::HowToOn = mask & 2;
            Globals::SmartPencilOn = mask & 4;
            m_box->refreshCheckMarks();
            for (int bit = 0; bit < 3; ++bit)
                QCOMPARE(m_box->button(111 + bit)->value(), bool(mask & (1 << bit)));
        }
    }

    // Each theme button shows the middle of its theme file edge to edge; a
    // theme file gone leaves an empty frame on its button only.
    void themePicturesComeFromTheThemeFiles()
    {
        m_box->loadThemePictures();
        for (int number = 1; number <= 5; ++number) {
            QVERIFY(m_box->hasThemePicture(number));
            const QImage shown = m_box->button(100 + number)->icon().pixmap(SettingsBox::clipArtSize()).toImage();
            QCOMPARE(shown.pixelColor(0, 0).alpha(), 255);
        }
        const QString gone = m_cg + u'/' + Wallpaper::themeFile(2);
        QVERIFY(QFile::rename(gone, gone + u".away"_s));
        m_box->loadThemePictures();
        QVERIFY(QFile::rename(gone + u".away"_s, gone));
        QVERIFY(!m_box->hasThemePicture(2) && m_box->hasThemePicture(1));
    }
};

QTEST_MAIN(TestSettingsBox)
#include "test_settings_box.moc"
