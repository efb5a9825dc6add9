#include "documents/Database.h"
#include "platform/rtf/RtfReader.h"
#include "platform/rtf/RtfWriter.h"
#include "support/FileBytes.h"
#include "support/GoldenRows.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QtTest>

// Every file in tests/data/rtf_reader is a case: <case>.rtf is read as it is,
// <case>.TXT as a saved document through the document store (the store joins
// the body's lines). <case>.expected describes what was read, one paragraph a
// line followed by its runs of text, each with the formats set on it.
class TestRtf : public QObject
{
    Q_OBJECT

    static QString formats(const QTextCharFormat &format)
    {
        QString out;
        if (!format.fontFamilies().toStringList().isEmpty())
            out += u" font "_qs + format.fontFamilies().toStringList().join(u',');
        if (format.hasProperty(QTextFormat::FontPointSize))
            out += u" %1pt"_qs.arg(format.fontPointSize());
        if (format.fontWeight() == QFont::Bold)
            out += u" bold"_qs;
        if (format.fontItalic())
            out += u" italic"_qs;
        if (format.fontUnderline())
            out += u" underline"_qs;
        if (format.foreground().style() != Qt::NoBrush)
            out += u" colour "_qs + format.foreground().color().name();
        return out;
    }

    static QString describe(const QTextDocument &document)
    {
        QStringList lines;
        QList<QTextList *> lists;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            const QTextBlockFormat paragraph = block.blockFormat();
            const Qt::Alignment alignment = paragraph.alignment() & Qt::AlignHorizontal_Mask;
            QString line = alignment == Qt::AlignHCenter ? u"centre"_qs
                : alignment == Qt::AlignRight            ? u"right"_qs
                : alignment == Qt::AlignLeft             ? u"left"_qs
                                                         : QString::number(alignment);
            if (paragraph.leftMargin() != 0 || paragraph.textIndent() != 0)
                line += u" indent %1 first %2"_qs.arg(paragraph.leftMargin()).arg(paragraph.textIndent());
            if (QTextList *list = block.textList()) {
                if (!lists.contains(list))
                    lists << list;
                const QTextListFormat::Style style = list->format().style();
                line += u" list %1 "_qs.arg(lists.indexOf(list) + 1)
                    + (style == QTextListFormat::ListDisc          ? u"disc"_qs
                           : style == QTextListFormat::ListDecimal ? u"decimal"_qs
                                                                   : QString::number(style));
            }
            // The paragraph mark's format: the editor draws a bullet in it.
            line += u" |"_qs + formats(block.charFormat());
            lines << line;
            for (QTextBlock::iterator run = block.begin(); !run.atEnd(); ++run) {
                QString text = run.fragment().text();
                text.replace(u'\t', u"\\t"_qs).replace(QChar(0x2028), u"\\u2028"_qs);
                lines << u"  \""_qs + text + u'"' + formats(run.fragment().charFormat());
            }
        }
        return lines.join(u'\n') + u'\n';
    }

private slots:
    void readsEachSample_data()
    {
        QTest::addColumn<QString>("input");
        const QDir folder(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/rtf_reader"));
        const QStringList inputs = folder.entryList({u"*.rtf"_qs, u"*.TXT"_qs}, QDir::Files, QDir::Name);
        QVERIFY(inputs.size() >= 30);
        for (const QString &name : inputs)
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
    }
    void readsEachSample()
    {
        QFETCH(QString, input);
        QTextDocument document;
        QString error;
        const bool read = input.endsWith(u".TXT")
            ? RtfReader::read(Database::LoadDocument(input, Database::Sequential).page(1).item(1).Text,
                              &document, &error)
            : RtfReader::read(fileBytes(input), &document, &error);
        // A failed read says why, and keeps what it could.
        QCOMPARE(error.isEmpty(), read);
        const QByteArray expected = fileBytes(input.section(u'.', 0, -2) + u".expected"_qs);
        QVERIFY(!expected.isEmpty());
        QCOMPARE((read ? u"read\n"_qs : u"not read\n"_qs) + describe(document), QString::fromUtf8(expected));
    }

    void pastesAFragmentAtTheCursor()
    {
        QTextDocument document;
        document.setPlainText("ac");
        QTextCursor cursor(&document);
        cursor.setPosition(1);
        QVERIFY(RtfReader::readFragment("{\\rtf1\\ansi{\\b b}}", &cursor));
        QCOMPARE(document.toPlainText(), QString("abc"));
        cursor.setPosition(2);
        QCOMPARE(cursor.charFormat().fontWeight(), int(QFont::Bold));
    }

    // Groups nested too deep are dropped with what they hold; the read fails and says why.
    void dropsGroupsNestedTooDeep()
    {
        for (const auto &[depth, read, text] : {std::tuple{100, true, "akeptb"}, {100000, false, "ab"}}) {
            QTextDocument document;
            QString error;
            const QByteArray rtf = "{\\rtf1 a" + QByteArray(depth, '{') + "kept" + QByteArray(depth, '}') + "b}";
            QCOMPARE(RtfReader::read(rtf, &document, &error), read);
            QCOMPARE(error.isEmpty(), read);
            QCOMPARE(document.toPlainText(), QString::fromLatin1(text));
        }
    }

    // Every <case>.html in tests/data/rtf_writer is a document; <case>.rtf beside
    // it holds the bytes written for it, as the Windows rich-text box and WordPad
    // write the same content.
    void writesEachSample_data() { addGoldenRows(QStringLiteral("rtf_writer"), QStringLiteral("html")); }
    void writesEachSample()
    {
        QFETCH(QString, file);
        QTextDocument document;
        document.setHtml(QString::fromUtf8(fileBytes(file)));
        const QByteArray expected = fileBytes(goldenBeside(file, QStringLiteral("rtf")));
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

QTEST_MAIN(TestRtf)
#include "test_rtf.moc"
