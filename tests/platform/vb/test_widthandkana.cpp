#include "platform/vb/VbStrConv.h"

#include <QTest>

// StrConv's wide, narrow, hiragana and katakana conversions, as the input
// pad applies them before typing a key.
class TestWidthAndKana : public QObject
{
    Q_OBJECT

private slots:
    void wideAndNarrow_data()
    {
        QTest::addColumn<QString>("narrow");
        QTest::addColumn<QString>("wide");
        QTest::newRow("letters and digits") << "Az09" << "Ａｚ０９";
        QTest::newRow("signs and blank") << "!~ @{}" << "！～　＠｛｝";
        QTest::newRow("katakana") << "ｱｲｳｦﾝｯｰ" << "アイウヲンッー";
        QTest::newRow("voiced kana join") << "ｶﾞﾊﾟｳﾞ" << "ガパヴ";
        QTest::newRow("punctuation") << "｡｢｣､･" << "。「」、・";
        QTest::newRow("lone marks") << "ﾞﾟ" << "゛゜";
    }

    void wideAndNarrow()
    {
        QFETCH(QString, narrow);
        QFETCH(QString, wide);
        QCOMPARE(VbStrConv::wide(narrow), wide);
        QCOMPARE(VbStrConv::narrow(wide), narrow);
    }

    void charactersWithoutAnotherWidthStay()
    {
        QCOMPARE(VbStrConv::wide(QStringLiteral("にほん漢字①")), QStringLiteral("にほん漢字①"));
        QCOMPARE(VbStrConv::narrow(QStringLiteral("にほん漢字ヵヶヮ")), QStringLiteral("にほん漢字ヵヶヮ"));
        // A mark that cannot join its kana is widened on its own.
        QCOMPARE(VbStrConv::wide(QStringLiteral("ｱﾞ")), QStringLiteral("ア゛"));
    }

    void hiraganaAndKatakana()
    {
        QCOMPARE(VbStrConv::katakana(QStringLiteral("にほんご、ぁっゔゝ")), QStringLiteral("ニホンゴ、ァッヴヽ"));
        QCOMPARE(VbStrConv::hiragana(QStringLiteral("ニホンゴー、ヴヵヽ")), QStringLiteral("にほんごー、ゔゕゝ"));
        // Half-width katakana and Latin letters are no kana of the other kind.
        QCOMPARE(VbStrConv::hiragana(QStringLiteral("ｶﾅ abc")), QStringLiteral("ｶﾅ abc"));
        QCOMPARE(VbStrConv::katakana(QStringLiteral("ni")), QStringLiteral("ni"));
    }

    // The pad's romaji: katakana then narrow keeps letters and narrows signs.
    void romajiStayAsTyped()
    {
        QCOMPARE(VbStrConv::narrow(VbStrConv::katakana(QStringLiteral("nihongo"))), QStringLiteral("nihongo"));
        QCOMPARE(VbStrConv::narrow(VbStrConv::katakana(QStringLiteral("､｡･｢｣"))), QStringLiteral("､｡･｢｣"));
    }
};

QTEST_APPLESS_MAIN(TestWidthAndKana)
#include "test_widthandkana.moc"
