#include "platform/rtf/RtfReader.h"
#include "platform/rtf/RtfWriter.h"
#include "support/FileBytes.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

// Every <case>.html in tests/data/rtf_writer is a document; <case>.rtf beside
// it holds the bytes written for it, as the Windows rich-text box and WordPad
// write the same content.
class TestRtfWriter : public QObject
{
    Q_OBJECT

private slots:
    void writesEachSample_data()
    {
        QTest::addColumn<QString>("base");
        const QDir folder(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/rtf_writer"));
        const QStringList inputs = folder.entryList({u"*.html"_qs}, QDir::Files, QDir::Name);
        QVERIFY(inputs.size() >= 10);
        for (const QString &name : inputs)
            QTest::newRow(qPrintable(name)) << folder.filePath(name.chopped(5));
    }
    void writesEachSample()
    {
        QFETCH(QString, base);
        QTextDocument document;
        document.setHtml(QString::fromUtf8(fileBytes(base + u".html"_qs)));
        const QByteArray expected = fileBytes(base + u".rtf"_qs);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(RtfWriter::write(&document), expected);
        QCOMPARE(RtfWriter::writeString(&document), QString::fromLatin1(expected));

        // Read back, the text and paragraphs are the same and writing again
        // gives the same bytes, round after round.
        QTextDocument back;
        QVERIFY(RtfReader::read(expected, &back));
        QCOMPARE(back.toPlainText(), document.toPlainText());
        QCOMPARE(back.blockCount(), document.blockCount());
        QCOMPARE(RtfWriter::write(&back), expected);

    }

    void writesOnlyTheSelection()
    {
        QTextDocument document;
        document.setPlainText(u"一二三\nfour"_qs);
        QTextCursor selection(&document);
        selection.setPosition(1);
        selection.setPosition(6, QTextCursor::KeepAnchor);
        QTextDocument back;
        QVERIFY(RtfReader::read(RtfWriter::write(&document, selection), &back));
        QCOMPARE(back.toPlainText(), u"二三\nfo"_qs);
    }
};

QTEST_MAIN(TestRtfWriter)
#include "test_rtf_writer.moc"
