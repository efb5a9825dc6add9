#include "platform/CodePage932.h"

#include <QTest>

#include <thread>

// Microsoft's code page 932, not plain Shift_JIS.
class CodePage932Test : public QObject
{
    Q_OBJECT

private slots:
    void microsoftTableBothWays_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("kanji") << QString::fromUtf8("日本語") << QByteArray("\x93\xfa\x96\x7b\x8c\xea");
        QTest::newRow("ascii") << "Lantern 1.0" << QByteArray("Lantern 1.0");
        QTest::newRow("circled one (NEC)") << QString::fromUtf8("①") << QByteArray("\x87\x40");
        QTest::newRow("kabushiki (NEC)") << QString::fromUtf8("㈱") << QByteArray("\x87\x8a");
        QTest::newRow("roman one") << QString::fromUtf8("Ⅰ") << QByteArray("\x87\x54");
        QTest::newRow("wave dash is the full-width tilde") << QString::fromUtf8("～") << QByteArray("\x81\x60");
        QTest::newRow("full-width minus") << QString::fromUtf8("－") << QByteArray("\x81\x7c");
        QTest::newRow("half-width katakana") << QString::fromUtf8("ｳｪﾌﾞﾛｸﾞ") << QByteArray("\xb3\xaa\xcc\xde\xdb\xb8\xde");
        QTest::newRow("IBM extension") << QString::fromUtf8("髙") << QByteArray("\xfb\xfc");
        // Plain ASCII takes a shorter way than text with Japanese in it: both
        // must give the same bytes for every ASCII code, control codes included.
        for (char16_t code = 0; code < 0x80; ++code) {
            QTest::addRow("0x%02x", code) << QString(QChar(code)) << QByteArray(1, char(code));
            QTest::addRow("0x%02x before kana", code) << QString(QChar(code)) + u'あ' << QByteArray(1, char(code)) + "\x82\xa0";
        }
    }

    void microsoftTableBothWays()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        bool ok = false;
        QCOMPARE(CodePage932::encode(text, &ok), bytes);
        QVERIFY(ok);
        QCOMPARE(CodePage932::decode(bytes), text);
    }

    void unmappableCharactersBecomeQuestionMarks()
    {
        bool ok = true;
        QCOMPARE(CodePage932::encode(QString::fromUtf8("a😀b"), &ok), QByteArray("a?b"));
        QVERIFY(!ok);
        CodePage932::encode(QStringLiteral("a?b"), &ok);
        QVERIFY(ok);
        QVERIFY(!CodePage932::canEncode(0x1F600));
        QVERIFY(!CodePage932::canEncode(0x20BB7)); // 𠮷
        QVERIFY(CodePage932::canEncode(U'あ'));
    }

    // A lone lead byte, bad trail bytes and undefined bytes read as U+FFFD,
    // the same on a fresh converter (a new thread has its own) before and
    // after its first encoding, which used to switch them from 0x1A to U+FFFD.
    void badBytesReadTheSameWhateverCameBefore()
    {
        const QByteArray bad("A\xff\x80\xa0" "B", 5);
        const QString expected = QStringLiteral("A\uFFFD\uFFFD\uFFFDB");
        QString first, second;
        std::thread fresh([&] {
            first = CodePage932::decode(bad);
            CodePage932::encode(QString::fromUtf8("あ"));
            second = CodePage932::decode(bad);
        });
        fresh.join();
        QCOMPARE(first, expected);
        QCOMPARE(second, expected);
        QCOMPARE(CodePage932::decode(QByteArray("A\x81", 2)).front(), u'A');
    }

    void leadBytesAre81To9FAndE0ToFC()
    {
        const std::pair<int, bool> bytes[] = {{0x80, false}, {0x81, true}, {0x9f, true}, {0xa0, false},
                                              {0xdf, false}, {0xe0, true}, {0xfc, true}, {0xfd, false}};
        for (const auto &[byte, lead] : bytes)
            QVERIFY2(CodePage932::isLeadByte(uchar(byte)) == lead, qPrintable(QString::number(byte, 16)));
    }
};

QTEST_GUILESS_MAIN(CodePage932Test)
#include "test_codepage932.moc"
