#include "app/FontAdapter.h"

#include <QFontDatabase>
#include <QLabel>
#include <QScreen>
#include <QTest>

// The interface-font rules, deliberately uneven between the three faces.
class FontAdapterTest : public QObject
{
    Q_OBJECT

    using Font = FontAdapter::InterfaceFont;
    using Faces = FontAdapter::Faces;

private slots:
    void meiryoInstalled_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("size");
        QTest::addColumn<float>("scale");
        QTest::addColumn<double>("once");
        QTest::addColumn<double>("twice");
        QTest::newRow("12 pt UI Gothic at 96 dpi") << "MS UI Gothic" << 12.0 << 1.0f << 10.0 << 8.0;
        QTest::newRow("9 pt Tahoma at 96 dpi") << "Tahoma" << 9.0 << 1.0f << 8.0 << 8.0;
        QTest::newRow("11 pt Meiryo at 96 dpi") << "メイリオ" << 11.0 << 1.0f << 8.0 << 8.0;
        QTest::newRow("9 pt at 120 dpi") << "MS UI Gothic" << 7.2 << 0.8f << 6.4 << 6.4;
    }

    void meiryoInstalled()
    {
        QFETCH(QString, name);
        QFETCH(double, size);
        QFETCH(float, scale);
        QFETCH(double, once);
        QFETCH(double, twice);
        Font font{name, static_cast<float>(size), 0};
        FontAdapter::adaptFont(font, Faces{true, true}, scale);
        QCOMPARE(font.name, QStringLiteral("メイリオ"));
        QCOMPARE(float(font.size), float(once));
        FontAdapter::adaptFont(font, Faces{true, true}, scale);
        QCOMPARE(float(font.size), float(twice));
    }

    void tahomaWithoutMeiryo()
    {
        Font eleven{"Tahoma", 11, 0};
        FontAdapter::adaptFont(eleven, Faces{false, true}, 1.0f);
        QCOMPARE(eleven.name, QStringLiteral("Tahoma"));
        QCOMPARE(eleven.size, 11.0);
        QCOMPARE(eleven.charset, 128);

        Font nine{"MS UI Gothic", 9, 0};
        FontAdapter::adaptFont(nine, Faces{false, true}, 1.0f);
        QCOMPARE(nine.name, QStringLiteral("Tahoma"));
        QCOMPARE(nine.size, 8.0);
    }

    void neitherFace()
    {
        Font font{"Tahoma", 12, 0};
        FontAdapter::adaptFont(font, Faces{false, false}, 1.0f);
        QCOMPARE(font.name, QStringLiteral("MS UI Gothic"));
        QCOMPARE(font.size, 12.0);
        QCOMPARE(font.charset, 128);
    }

    void otherFacesAreNeverChanged()
    {
        for (const Faces &faces : {Faces{true, true}, Faces{false, true}, Faces{false, false}}) {
            Font font{"Noto Sans CJK JP", 12, 0};
            FontAdapter::adaptFont(font, faces, 1.0f);
            QCOMPARE(font.name, QStringLiteral("Noto Sans CJK JP"));
            QCOMPARE(font.size, 12.0);
            QCOMPARE(font.charset, 0);
        }
    }

    void screenScaleIsComputedOnceFromTheScreen()
    {
        FontAdapter::resetForTesting();
        const float scale = FontAdapter::ScreenScale();
        const QScreen *screen = QGuiApplication::primaryScreen();
        const double expected = (1440.0 / screen->logicalDotsPerInchX() + 1440.0 / screen->logicalDotsPerInchY()) / 2 / 15;
        QCOMPARE(scale, float(expected));
        QCOMPARE(FontAdapter::MeiryoInstalled(), QFontDatabase::families().contains("メイリオ"));
    }

    void widgetsOnThisMachine()
    {
        // This machine has neither face: the label ends as "MS UI Gothic" at
        // its size, marked Shift-JIS, and an unrelated label is untouched.
        if (FontAdapter::installedFaces().meiryo || FontAdapter::installedFaces().tahoma)
            QSKIP("this check is for a machine without Meiryo and Tahoma");
        QLabel designed("ようこそ");
        QFont font("Tahoma");
        font.setPointSizeF(12);
        designed.setFont(font);
        QLabel other("その他");
        QFont otherFont("Noto Serif CJK JP");
        otherFont.setPointSizeF(12);
        other.setFont(otherFont);

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
