#include "platform/CodePage932.h"
#include "support/CaseTable.h"

#include <QTest>

#include <thread>

// Microsoft's code page 932, not plain Shift_JIS.
class CodePage932Test : public QObject
{
    Q_OBJECT

private slots:
    // Every case in tests/data/codepage932: a text and its bytes.
    void microsoftTableBothWays_data()
    {
        addCaseRows(QStringLiteral("codepage932"), 9);
        // Plain ASCII takes a shorter way than text with Japanese in it: both
        // must give the same bytes for every ASCII code, control codes included.
        for (char16_t code = 0; code < 0x80; ++code) {
            const QString hex = QString::number(code, 16).rightJustified(2, u'0');
            QTest::addRow("0x%s", qPrintable(hex)) << QString(QChar(code)) << hex;
            QTest::addRow("0x%s before kana", qPrintable(hex))
                << QString(QChar(code)) + u'あ' << hex + QStringLiteral("82a0");
        }
    }

    void microsoftTableBothWays()
    {
        QFETCH(QString, asked);
        QFETCH(QString, answer);
        const QByteArray bytes = QByteArray::fromHex(answer.toLatin1());
        bool ok = false;
        QCOMPARE(CodePage932::encode(asked, &ok), bytes);
        QVERIFY(ok);
        QCOMPARE(CodePage932::decode(bytes), asked);
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
        const QByteArray bad("A\xff\x80\xa0"
                             "B",
                             5);
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
        const std::pair<int, bool> bytes[] = {{0x80, false}, {0x81, true}, {0x9f, true}, {0xa0, false}, {0xdf, false}, {0xe0, true}, {0xfc, true}, {0xfd, false}};
        for (const auto &[byte, lead] : bytes)
            QVERIFY2(CodePage932::isLeadByte(uchar(byte)) == lead, qPrintable(QString::number(byte, 16)));
    }
};

QTEST_GUILESS_MAIN(CodePage932Test)
#include "test_codepage932.moc"
