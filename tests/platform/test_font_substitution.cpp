// The design's Windows faces draw with installed Japanese faces of the same
// kind: gothic for the gothic names, mincho for the mincho names.
#include "platform/FontSubstitution.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QRawFont>
#include <QTest>

class TestFontSubstitution : public QObject
{
    Q_OBJECT

private slots:
    void designFacesBecomeInstalledJapaneseFaces_data()
    {
        QTest::addColumn<QString>("design");
        QTest::addColumn<bool>("mincho");
        QTest::newRow("MS UI Gothic") << "MS UI Gothic" << false;
        QTest::newRow("MS Gothic") << "ＭＳ ゴシック" << false;
        QTest::newRow("MS PGothic") << "ＭＳ Ｐゴシック" << false;
        QTest::newRow("MS Mincho") << "ＭＳ 明朝" << true;
        QTest::newRow("MS PMincho") << "ＭＳ Ｐ明朝" << true;
    }

    void designFacesBecomeInstalledJapaneseFaces()
    {
        QFETCH(QString, design);
        QFETCH(bool, mincho);
        const QString family = FontSubstitution::family(design);
        QVERIFY2(QFontDatabase::families(QFontDatabase::Japanese).contains(family), qPrintable(family));
        const bool isMincho = family.contains(QStringLiteral("Mincho")) || family.contains(QStringLiteral("Serif"));
        QCOMPARE(isMincho, mincho);

        const QFont font = FontSubstitution::font(design, 12);
        QCOMPARE(QFontInfo(font).family(), family);
        QCOMPARE(font.pointSizeF(), 12.0);
        // The face really has the kana and kanji a letter is written in.
        const QRawFont raw = QRawFont::fromFont(font);
        QVERIFY(!raw.glyphIndexesForString(QStringLiteral("あア漢字。")).contains(0));
    }

    // Installed, the substitutions reach plain fonts; other names are left to Qt.
    void installedSubstitutionsReachPlainFonts()
    {
        FontSubstitution::install();
        QCOMPARE(QFontInfo(QFont(QStringLiteral("ＭＳ 明朝"))).family(), FontSubstitution::family(QStringLiteral("ＭＳ 明朝")));
        QCOMPARE(FontSubstitution::family(QStringLiteral("No Such Face")), QStringLiteral("No Such Face"));
        QVERIFY(FontSubstitution::standIns(QStringLiteral("No Such Face")).isEmpty());
    }
};

QTEST_MAIN(TestFontSubstitution)
#include "test_font_substitution.moc"
