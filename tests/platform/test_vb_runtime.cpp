#include "platform/vb/VbConvert.h"
#include "platform/vb/VbError.h"
#include "platform/vb/VbFormat.h"
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
