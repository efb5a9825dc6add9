#include "app/FontAdapter.h"

#include <QLabel>
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
};

QTEST_MAIN(FontAdapterTest)
#include "test_font_adapter.moc"
