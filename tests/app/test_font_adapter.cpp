#include "app/FontAdapter.h"
#include "app/Globals.h"
#include "documents/Applet.h"
#include "platform/FontSubstitution.h"
#include "tools/InfoDlg.h"
#include "workspace/Workspace.h"

#include <QLabel>
#include <QScopeGuard>
#include <QScreen>
#include <QTest>

// The interface-font rules, deliberately uneven between the three faces.
Q_DECLARE_METATYPE(FontAdapter::InterfaceFont)
Q_DECLARE_METATYPE(FontAdapter::Faces)

class FontAdapterTest : public QObject
{
    Q_OBJECT

    using Font = FontAdapter::InterfaceFont;
    using Faces = FontAdapter::Faces;

private slots:
    void adaptedTwice_data()
    {
        QTest::addColumn<Faces>("faces");
        QTest::addColumn<Font>("font");
        QTest::addColumn<float>("scale");
        QTest::addColumn<Font>("once");
        QTest::addColumn<float>("twice");
        const Faces both{true, true}, tahoma{false, true}, neither{false, false};
        const QString meiryo = QStringLiteral("メイリオ"), gothic = QStringLiteral("MS UI Gothic");
        // With Meiryo: 12 becomes 10, 9 and every other size 8, all times the scale.
        QTest::newRow("Meiryo: 12 pt") << both << Font{gothic, 12, 0} << 1.0f << Font{meiryo, 10, 0} << 8.0f;
        QTest::newRow("Meiryo: 9 pt") << both << Font{"Tahoma", 9, 0} << 1.0f << Font{meiryo, 8, 0} << 8.0f;
        QTest::newRow("Meiryo: 11 pt") << both << Font{meiryo, 11, 0} << 1.0f << Font{meiryo, 8, 0} << 8.0f;
        QTest::newRow("Meiryo: 9 pt at 120 dpi") << both << Font{gothic, 7.2, 0} << 0.8f << Font{meiryo, 6.4, 0} << 6.4f;
        QTest::newRow("Meiryo: 12 pt at 120 dpi") << both << Font{gothic, 9.6, 0} << 0.8f << Font{meiryo, 8, 0} << 6.4f;
        // Tahoma without Meiryo: only the 9 pt step drops, and the set is Shift-JIS.
        QTest::newRow("Tahoma: 11 pt") << tahoma << Font{"Tahoma", 11, 0} << 1.0f << Font{"Tahoma", 11, 128} << 11.0f;
        QTest::newRow("Tahoma: 9 pt") << tahoma << Font{gothic, 9, 0} << 1.0f << Font{"Tahoma", 8, 128} << 8.0f;
        QTest::newRow("Tahoma: 12 pt") << tahoma << Font{meiryo, 12, 0} << 1.0f << Font{"Tahoma", 12, 128} << 12.0f;
        // Neither face: MS UI Gothic at the designed size.
        QTest::newRow("neither: 12 pt") << neither << Font{"Tahoma", 12, 0} << 1.0f << Font{gothic, 12, 128} << 12.0f;
        QTest::newRow("neither: 9 pt") << neither << Font{meiryo, 9, 0} << 1.0f << Font{gothic, 9, 128} << 9.0f;
        for (const Faces &faces : {both, tahoma, neither})
            QTest::addRow("other face, %d%d", faces.meiryo, faces.tahoma)
                << faces << Font{"Noto Sans CJK JP", 12, 0} << 1.0f << Font{"Noto Sans CJK JP", 12, 0} << 12.0f;
    }

    void adaptedTwice()
    {
        QFETCH(Faces, faces);
        QFETCH(Font, font);
        QFETCH(float, scale);
        QFETCH(Font, once);
        FontAdapter::adaptFont(font, faces, scale);
        QCOMPARE(font.name, once.name);
        QCOMPARE(float(font.size), float(once.size));
        QCOMPARE(font.charset, once.charset);
        FontAdapter::adaptFont(font, faces, scale);
        QTEST(float(font.size), "twice");
    }

    void ninetySixDotsPerInchIsScaleOne()
    {
        const QScreen *screen = QGuiApplication::primaryScreen();
        if (screen->logicalDotsPerInchX() != 96 || screen->logicalDotsPerInchY() != 96)
            QSKIP("this check is for a screen of 96 dots per inch");
        FontAdapter::resetForTesting();
        QCOMPARE(FontAdapter::ScreenScale(), 1.0f);
    }

    void widgetsOnThisMachine()
    {
        // Neither face here: a designed label ends as "MS UI Gothic" at its
        // size, marked Shift-JIS, and an unrelated label is untouched.
        if (FontAdapter::installedFaces().meiryo || FontAdapter::installedFaces().tahoma)
            QSKIP("this check is for a machine without Meiryo and Tahoma");
        QLabel designed("ようこそ"), other("その他");
        designed.setFont(QFont("Tahoma", 12));
        other.setFont(QFont("Noto Serif CJK JP", 12));
        FontAdapter::adapt(&designed);
        FontAdapter::adapt(&other);
        QCOMPARE(designed.font().family(), QStringLiteral("MS UI Gothic"));
        QCOMPARE(designed.font().pointSizeF(), 12.0);
        QCOMPARE(designed.property("Charset").toInt(), 128);
        QCOMPARE(other.font().family(), QStringLiteral("Noto Serif CJK JP"));
        QVERIFY(!other.property("Charset").isValid());
    }

    // Our type is in pixels of the 96 dots-per-inch design, scaled with the
    // screen from the size kept in "designPixelSize": the rules act on the
    // designed size (16 px = 12 pt) and the shown size follows.
    void pixelSizes_data()
    {
        QTest::addColumn<Faces>("faces");
        QTest::addColumn<QVariant>("design");
        QTest::addColumn<int>("shown");
        QTest::addColumn<QString>("family");
        QTest::addColumn<QVariant>("designAfter");
        QTest::addColumn<int>("shownAfter");
        const QString meiryo = QStringLiteral("メイリオ"), gothic = QStringLiteral("MS UI Gothic");
        QTest::newRow("Meiryo, 12 pt shown at 1.5") << Faces{true, true} << QVariant(16) << 24 << meiryo << QVariant(13) << 20;
        QTest::newRow("Meiryo, nothing kept") << Faces{true, false} << QVariant() << 16 << meiryo << QVariant() << 13;
        QTest::newRow("Tahoma, 9 pt shown at 1.5") << Faces{false, true} << QVariant(12) << 18 << QStringLiteral("Tahoma") << QVariant(11) << 16;
        QTest::newRow("neither, 18 pt shown at 1.5") << Faces{false, false} << QVariant(24) << 36 << gothic << QVariant(24) << 36;
    }

    void pixelSizes()
    {
        QFETCH(Faces, faces);
        QFETCH(QVariant, design);
        QFETCH(int, shown);
        FontAdapter::setFacesForTesting(faces);
        const auto forget = qScopeGuard([] { FontAdapter::resetForTesting(); });
        QLabel label(QStringLiteral("保存して閉じる"));
        QFont font;
        font.setFamilies({QStringLiteral("Tahoma"), QStringLiteral("IPAexGothic")});
        font.setPixelSize(shown);
        label.setFont(font);
        label.setProperty("designPixelSize", design);
        FontAdapter::adapt(&label);
        QTEST(label.font().family(), "family");
        QCOMPARE(label.font().families().mid(1), QStringList{QStringLiteral("IPAexGothic")}); // still draws behind it
        QTEST(label.property("designPixelSize"), "designAfter");
        QTEST(label.font().pixelSize(), "shownAfter");
    }

    // The program's windows at 1366 by 768 with the program's start-up
    // fonts: every control of the main window, the tool dialog and the
    // settings box ends in the face the adapter chose, drawn by an installed
    // Japanese face, at the type sizes the windows were designed with.
    void realWindows()
    {
        if (FontAdapter::installedFaces().meiryo || FontAdapter::installedFaces().tahoma)
            QSKIP("this check is for a machine without Meiryo and Tahoma");
        FontAdapter::prepareApplication();
        Globals::MusicOn = Globals::GraphicOn = Globals::HowToOn = false;
        Workspace::setCharacterRoutine([](QString &) {});
        Workspace w;
        w.setInfoDlg(new InfoDlg(&w));
        w.resize(1366, 768);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.Reload();
        w.setDocument(Workspace::SettingsView);
        w.ToolBoxMode(Workspace::ToolBox::CharacterPad, Workspace::ToolBoxState::Decide);
        QWidget *const windows[] = {&w, w.settingsBox(), w.infoDlg()};

        const QStringList japanese{QStringLiteral("IPAexGothic"), QStringLiteral("Noto Sans CJK JP")};
        for (QWidget *window : windows) {
            for (QWidget *control : window->findChildren<QWidget *>()) {
                bool document = false; // the document's own type
                for (QWidget *up = control; up && !document; up = up->parentWidget())
                    document = qobject_cast<Applet *>(up);
                if (document)
                    continue;
                const QString seen = QStringLiteral("%1 %2: %3 → %4")
                                         .arg(control->metaObject()->className(), control->objectName(), control->font().family(),
                                              QFontInfo(control->font()).family());
                QVERIFY2(control->font().family() == QStringLiteral("MS UI Gothic"), qPrintable(seen));
                QVERIFY2(control->property("Charset").toInt() == 128, qPrintable(seen));
                QVERIFY2(japanese.contains(QFontInfo(control->font()).family()), qPrintable(seen));
            }
        }

        const struct
        {
            int window;
            const char *control; // object or accessible name
            int pixels;
            bool bold;
        } sizes[] = {
            // clang-format off
            {0, "Channels4", 26, false},       {0, "BackToStart", 32, false}, {0, "InfoBarHowToMonitor", 20, false},
            {0, "MenuBoxPages200", 26, true},  {0, "SideMenuBarTopics", 22, true},
            {1, "閉じる", 22, false},           {1, "マイナスイオン", 20, false}, {1, "ランダム", 24, false},
            {2, "変換", 11, false},             {2, "＋", 14, false},
        };
        // clang-format on
        for (const auto &row : sizes) {
            const QString name = QString::fromUtf8(row.control);
            QWidget *control = nullptr;
            for (QWidget *candidate : windows[row.window]->findChildren<QWidget *>()) {
                if (!control && (candidate->objectName() == name || candidate->accessibleName() == name))
                    control = candidate;
            }
            QVERIFY2(control, qPrintable(name));
            QCOMPARE(std::pair(control->font().pixelSize(), control->font().bold()), std::pair(row.pixels, row.bold));
        }
    }
};

QTEST_MAIN(FontAdapterTest)
#include "test_font_adapter.moc"
