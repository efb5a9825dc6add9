#include "platform/vb/VbConvert.h"
#include "platform/vb/VbError.h"
#include "platform/vb/VbFormat.h"
#include "platform/vb/VbLike.h"
#include "platform/vb/VbStrConv.h"

#include <QTest>

// The runtime conversions the settings and the character routine rely on.
class VbRuntimeTest : public QObject
{
    Q_OBJECT

private slots:
    void booleanConversion_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected"); // 1 true, 0 false, -1 type mismatch
        QTest::newRow("True") << "True" << 1;
        QTest::newRow("False") << "False" << 0;
        QTest::newRow("upper case") << "TRUE" << 1;
        QTest::newRow("minus one") << "-1" << 1;
        QTest::newRow("zero") << "0" << 0;
        QTest::newRow("fraction") << "0.5" << 1;
        QTest::newRow("maybe") << "maybe" << -1;
        QTest::newRow("empty") << "" << -1;
        QTest::newRow("Japanese") << "はい" << -1;
    }

    void booleanConversion()
    {
        QFETCH(QString, text);
        QFETCH(int, expected);
        if (expected < 0) {
            try {
                VbConvert::toBoolean(text);
                QFAIL("expected a type mismatch");
            } catch (const VbError &error) {
                QCOMPARE(error.number(), 13);
            }
        } else {
            QCOMPARE(VbConvert::toBoolean(text), expected == 1);
        }
    }

    void longConversionRoundsHalvesToEven()
    {
        QCOMPARE(VbConvert::toLong("2.5"), 2);
        QCOMPARE(VbConvert::toLong("3.5"), 4);
        QCOMPARE(VbConvert::toLong(" -7 "), -7);
        QCOMPARE(VbConvert::toLong("&H10"), 16);
        try {
            VbConvert::toLong("3000000000");
            QFAIL("expected an overflow");
        } catch (const VbError &error) {
            QCOMPARE(error.number(), 6);
        }
        try {
            VbConvert::toInteger("40000");
            QFAIL("expected an overflow");
        } catch (const VbError &error) {
            QCOMPARE(error.number(), 6);
        }
    }

    void properCase_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("question") << "What's the date today?" << "What's The Date Today?";
        QTest::newRow("upper") << "HELLO!" << "Hello!";
        QTest::newRow("lower") << "hello!" << "Hello!";
        QTest::newRow("apostrophe") << "let's go home, please." << "Let's Go Home, Please.";
        QTest::newRow("tab and newline") << "on\toff\nyes" << "On\tOff\nYes";
        QTest::newRow("full-width blank") << QString::fromUtf8("abc\u3000def") << QString::fromUtf8("Abc\u3000Def");
        QTest::newRow("Japanese") << "こんにちは" << "こんにちは";
    }

    void properCase()
    {
        QFETCH(QString, text);
        QTEST(VbStrConv::properCase(text), "expected");
    }

    void likePatterns_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("matches");
        QTest::newRow("star") << "/opt/lantern/SKIN/A.TTE" << "/opt/lantern/*" << true;
        QTest::newRow("other folder") << "/usr/share/fonts/A.TTE" << "/opt/lantern/*" << false;
        QTest::newRow("case-sensitive") << "/OPT/lantern/x" << "/opt/lantern/*" << false;
        QTest::newRow("question mark") << "{A778E061-A936}" << "{[Aa]778[Ee]06?-[Aa]936}" << true;
        QTest::newRow("list, lower case") << "{a778e060-a936}" << "{[Aa]778[Ee]06?-[Aa]936}" << true;
        QTest::newRow("question mark needs a character") << "{A778E06-A936}" << "{[Aa]778[Ee]06?-[Aa]936}" << false;
        QTest::newRow("digit") << "ab5" << "ab#" << true;
        QTest::newRow("not a digit") << "abc" << "ab#" << false;
        QTest::newRow("negated list") << "b" << "[!a]" << true;
        QTest::newRow("range") << "m" << "[a-z]" << true;
        QTest::newRow("folder with brackets is a pattern") << "/x/[1]/f" << "/x/[1]/*" << false;
        QTest::newRow("unclosed list") << "a" << "[a" << false;
        QTest::newRow("empty") << "" << "*" << true;
    }

    void likePatterns()
    {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QTEST(VbLike::match(text, pattern), "matches");
    }

    void onOffFormat()
    {
        QCOMPARE(VbFormat::boolean(true, "On/Off"), QStringLiteral("On"));
        QCOMPARE(VbFormat::boolean(false, "On/Off"), QStringLiteral("Off"));
        QCOMPARE(VbConvert::fromBoolean(true), QStringLiteral("True"));
        QCOMPARE(VbConvert::fromBoolean(false), QStringLiteral("False"));
    }
};

QTEST_GUILESS_MAIN(VbRuntimeTest)
#include "test_vb_runtime.moc"
