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

    // Plain ASCII takes a shorter way than text with Japanese in it: both
    // must give the same bytes for every ASCII code, control codes included.
    void asciiIsTheSameAloneAndBesideJapanese()
    {
        const QString kana = QString::fromUtf8("あ");
        const QByteArray kanaBytes("\x82\xa0");
        for (char16_t code = 0; code < 0x80; ++code) {
            const QString alone{QChar(code)};
            const QByteArray byte(1, char(code));
            QCOMPARE(CodePage932::encode(alone), byte);
            QCOMPARE(CodePage932::encode(alone + kana), byte + kanaBytes);
            QCOMPARE(CodePage932::decode(byte), alone);
            QCOMPARE(CodePage932::decode(byte + kanaBytes), alone + kana);
        }
    }

    void unmappableCharactersAreReported()
    {
        bool ok = true;
        QCOMPARE(CodePage932::encode(QString::fromUtf8("a😀b"), &ok), QByteArray("a?b"));
        QVERIFY(!ok);
        QVERIFY(!CodePage932::canEncode(0x1F600));
        QVERIFY(!CodePage932::canEncode(0x20BB7)); // 𠮷
        QVERIFY(CodePage932::canEncode(U'あ'));
        ok = false;
        CodePage932::encode(QStringLiteral("a?b"), &ok);
        QVERIFY(ok);
    }

    void invalidBytesNeverFail()
    {
        // A lone lead byte, a bad trail byte and undefined bytes.
        const QString text = CodePage932::decode(QByteArray("A\x81", 2));
        QVERIFY(text.startsWith(u'A'));
        QVERIFY(!CodePage932::decode(QByteArray("\x82\x20\xa0\xfd\xfe\xff", 6)).isEmpty());
        QByteArray garbage(64 * 1024, Qt::Uninitialized);
        for (int i = 0; i < garbage.size(); ++i)
            garbage[i] = char((i * 7919) & 0xff);
        QVERIFY(!CodePage932::decode(garbage).isEmpty());
    }

    // Each thread has a converter of its own, so a new thread shows what a
    // fresh one does: bad bytes read the same before and after the first
    // encoding, which used to switch them from 0x1A to U+FFFD.
    void badBytesReadTheSameWhateverCameBefore()
    {
        const QByteArray bad("A\xff\x80\xa0" "B", 5);
        const QString expected = QStringLiteral("A\uFFFD\uFFFD\uFFFDB");
        QString first;
        QString second;
        std::thread fresh([&] {
            first = CodePage932::decode(bad);
            CodePage932::encode(QString::fromUtf8("あ"));
            second = CodePage932::decode(bad);
        });
        fresh.join();
        QCOMPARE(first, expected);
        QCOMPARE(second, expected);
        QCOMPARE(CodePage932::decode(bad), expected);
    }

    void leadBytes()
    {
        QVERIFY(CodePage932::isLeadByte(0x81));
        QVERIFY(CodePage932::isLeadByte(0x9f));
        QVERIFY(CodePage932::isLeadByte(0xe0));
        QVERIFY(CodePage932::isLeadByte(0xfc));
        QVERIFY(!CodePage932::isLeadByte(0x80));
        QVERIFY(!CodePage932::isLeadByte(0xa0));
        QVERIFY(!CodePage932::isLeadByte(0xb3));
        QVERIFY(!CodePage932::isLeadByte(0xfd));
    }
};

QTEST_GUILESS_MAIN(CodePage932Test)
#include "test_codepage932.moc"
