#include "platform/rtf/RtfReader.h"
#include "platform/rtf/RtfWriter.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QtTest>

// The expected bytes follow what the Windows rich-text box and WordPad write
// for the same content.
class TestRtfWriter : public QObject
{
    Q_OBJECT

private:
    static QTextCharFormat gothic(qreal points = 12)
    {
        QTextCharFormat format;
        format.setFontFamilies(QStringList{u"ＭＳ Ｐゴシック"_qs});
        format.setFontPointSize(points);
        return format;
    }

    // A document of plain paragraphs in one font and size.
    static void fill(QTextDocument *document, const QStringList &paragraphs, qreal points = 12)
    {
        QTextCursor cursor(document);
        for (int i = 0; i < paragraphs.size(); ++i) {
            if (i > 0)
                cursor.insertBlock();
            cursor.insertText(paragraphs.at(i), gothic(points));
        }
    }

    static const QByteArray &header()
    {
        static const QByteArray text =
            "{\\rtf1\\ansi\\ansicpg932\\deff0\\deflang1033\\deflangfe1041{\\fonttbl"
            "{\\f0\\fnil\\fcharset128 \\'82\\'6c\\'82\\'72 \\'82\\'6f\\'83\\'53\\'83\\'56\\'83\\'62\\'83\\'4e;}";
        return text;
    }

    static QByteArray body(const QByteArray &rtf)
    {
        const qsizetype start = rtf.indexOf("\\viewkind4");
        return start < 0 ? QByteArray() : rtf.mid(start);
    }

private slots:
    void writesTheRichEditHeaderAndCodePage932Bytes()
    {
        QTextDocument document;
        fill(&document, {u"日本語"_qs});
        QCOMPARE(RtfWriter::write(&document),
                 header() + "}\r\n\\viewkind4\\uc1\\pard\\f0\\fs24\\'93\\'fa\\'96\\'7b\\'8c\\'ea\\par\r\n}\r\n");
        QCOMPARE(RtfWriter::writeString(&document), QString::fromLatin1(RtfWriter::write(&document)));
    }

    void writesTextByteByByte_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("rtf");
        QTest::newRow("ascii after a word") << "abc" << QByteArray("\\fs24 abc\\par");
        QTest::newRow("braces and backslash") << "a{b}\\c" << QByteArray("\\fs24 a\\{b\\}\\\\c\\par");
        QTest::newRow("NEC extensions") << u"①㈱Ⅰ"_qs << QByteArray("\\fs24\\'87\\'40\\'87\\'8a\\'87\\'54\\par");
        QTest::newRow("IBM extension") << u"髙"_qs << QByteArray("\\fs24\\'fb\\'fc\\par");
        QTest::newRow("half-width kana") << u"ｱｲ"_qs << QByteArray("\\fs24\\'b1\\'b2\\par");
        QTest::newRow("wave dash") << u"～"_qs << QByteArray("\\fs24\\'81\\'60\\par");
        QTest::newRow("outside the code page") << u"é"_qs << QByteArray("\\fs24\\u233?\\par");
        QTest::newRow("surrogate pair") << u"𠮷"_qs << QByteArray("\\fs24\\u-10174?\\u-8265?\\par");
        QTest::newRow("emoji") << u"a😀b"_qs << QByteArray("\\fs24 a\\u-10179?\\u-8704?b\\par");
        QTest::newRow("tab and line") << u"a\tb\u2028c"_qs << QByteArray("\\fs24 a\\tab b\\line c\\par");
        QTest::newRow("no-break space") << u"a\u00a0b"_qs << QByteArray("\\fs24 a\\~b\\par");
    }
    void writesTextByteByByte()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, rtf);
        QTextDocument document;
        fill(&document, {text});
        const QByteArray written = RtfWriter::write(&document);
        QVERIFY2(written.contains("\\pard\\f0" + rtf), written.constData());
    }

    void writesSizesBoldItalicAndChangesOnly()
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        QTextCharFormat big = gothic(20);
        cursor.insertText("a", big);
        big.setFontWeight(QFont::Bold);
        cursor.insertText("b", big);
        big.setFontItalic(true);
        cursor.insertText("c", big);
        cursor.insertText("d", gothic(10.5));
        QCOMPARE(body(RtfWriter::write(&document)),
                 QByteArray("\\viewkind4\\uc1\\pard\\f0\\fs40 a\\b b\\i c\\fs21\\b0\\i0 d\\par\r\n}\r\n"));
    }

    void writesAlignment()
    {
        QTextDocument document;
        fill(&document, {"left", "centre", "centre too", "right", "left"});
        const Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignHCenter, Qt::AlignRight,
                                            Qt::AlignLeft};
        for (int i = 0; i < 5; ++i) {
            QTextCursor cursor(document.findBlockByNumber(i));
            QTextBlockFormat format;
            format.setAlignment(alignments[i]);
            cursor.setBlockFormat(format);
        }
        // A paragraph like the one before needs no \pard of its own.
        QCOMPARE(body(RtfWriter::write(&document)),
                 QByteArray("\\viewkind4\\uc1\\pard\\f0\\fs24 left\\par\r\n"
                            "\\pard\\qc centre\\par \r\n"
                            "centre too\\par\r\n"
                            "\\pard\\qr right\\par\r\n"
                            "\\pard left\\par\r\n}\r\n"));
    }

    void writesBulletsAsTheRichEditBoxDoes()
    {
        QTextDocument document;
        fill(&document, {"before", "one", "two", "after"});
        QTextCursor cursor(document.findBlockByNumber(1));
        QTextList *list = cursor.createList(QTextListFormat::ListDisc);
        list->add(document.findBlockByNumber(2));

        const QByteArray rtf = RtfWriter::write(&document);
        QVERIFY(rtf.startsWith(header() + "{\\f1\\fnil\\fcharset2 Symbol;}}\r\n"));
        QCOMPARE(body(rtf),
                 QByteArray("\\viewkind4\\uc1\\pard\\f0\\fs24 before\\par\r\n"
                            "\\pard{\\pntext\\f1\\fs24\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnfs24\\pnindent0{\\pntxtb\\'B7}}"
                            "\\fi-360\\li360 one\\par\r\n"
                            "{\\pntext\\f1\\fs24\\'B7\\tab}two\\par\r\n"
                            "\\pard after\\par\r\n}\r\n"));
    }

    // The editor draws a bullet in the format of its paragraph's mark. The
    // paragraph's sizes are set the way the editor sets them: on the whole
    // paragraph, its mark included.
    void keepsTheBulletsSize_data()
    {
        QTest::addColumn<QList<qreal>>("sizes");
        QTest::addColumn<QList<QByteArray>>("written");

        QTest::newRow("larger twice") << QList<qreal>{24}
                                      << QList<QByteArray>{"\\pard{\\pntext\\f1\\fs48\\'B7\\tab}"
                                                           "{\\*\\pn\\pnlvlblt\\pnf1\\pnfs48\\pnindent0{\\pntxtb\\'B7}}"};
        QTest::newRow("plain size") << QList<qreal>{12}
                                    << QList<QByteArray>{"\\pard{\\pntext\\f1\\fs24\\'B7\\tab}"
                                                         "{\\*\\pn\\pnlvlblt\\pnf1\\pnfs24\\pnindent0{\\pntxtb\\'B7}}"};
        // A new size starts the paragraph's properties again.
        QTest::newRow("sizes that change") << QList<qreal>{24, 24, 10.5}
                                           << QList<QByteArray>{"\\pard{\\pntext\\f1\\fs48\\'B7\\tab}{\\*\\pn",
                                                                "\\par\r\n{\\pntext\\f1\\fs48\\'B7\\tab}",
                                                                "\\par\r\n\\pard{\\pntext\\f1\\fs21\\'B7\\tab}"
                                                                "{\\*\\pn\\pnlvlblt\\pnf1\\pnfs21\\pnindent0"};
    }
    void keepsTheBulletsSize()
    {
        QFETCH(QList<qreal>, sizes);
        QFETCH(QList<QByteArray>, written);

        QTextDocument document;
        document.setDefaultFont(QFont(u"ＭＳ Ｐゴシック"_qs, 12));
        QTextCursor cursor(&document);
        for (int i = 0; i < sizes.size(); ++i) {
            if (i > 0)
                cursor.insertBlock();
            cursor.insertText(u"項目"_qs + QString::number(i), gothic(12));
        }
        for (int i = 0; i < sizes.size(); ++i) {
            QTextCursor paragraph(document.findBlockByNumber(i));
            paragraph.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
            if (i == sizes.size() - 1)
                paragraph.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
            paragraph.mergeCharFormat(gothic(sizes.at(i)));
            paragraph.mergeBlockCharFormat(gothic(sizes.at(i)));
        }
        QTextCursor(document.begin()).createList(QTextListFormat::ListDisc);
        for (int i = 1; i < sizes.size(); ++i)
            document.begin().textList()->add(document.findBlockByNumber(i));

        const QByteArray rtf = RtfWriter::write(&document);
        qsizetype from = 0;
        for (const QByteArray &piece : std::as_const(written)) {
            from = rtf.indexOf(piece, from);
            QVERIFY2(from >= 0, piece + "\nnot in order in\n" + rtf);
        }

        QTextDocument back;
        back.setDefaultFont(document.defaultFont());
        QVERIFY(RtfReader::read(rtf, &back));
        QCOMPARE(back.blockCount(), sizes.size());
        for (int i = 0; i < sizes.size(); ++i) {
            const QTextBlock block = back.findBlockByNumber(i);
            QVERIFY(block.textList());
            QCOMPARE(block.charFormat().font().pointSizeF(), sizes.at(i));
            QCOMPARE(block.charFormat().font().pointSizeF(),
                     document.findBlockByNumber(i).charFormat().font().pointSizeF());
        }
    }

    void writesNumberedParagraphsAndReadsThemBack()
    {
        QTextDocument document;
        // The first paragraph's mark has no size of its own: the document's is used.
        document.setDefaultFont(QFont(u"ＭＳ Ｐゴシック"_qs, 12));
        fill(&document, {"one", "two"});
        QTextList *list = QTextCursor(document.begin()).createList(QTextListFormat::ListDecimal);
        list->add(document.findBlockByNumber(1));
        const QByteArray rtf = RtfWriter::write(&document);
        QVERIFY(!rtf.contains("Symbol"));
        QVERIFY2(rtf.contains("\\pard{\\pntext\\f0\\fs24 1.\\tab}{\\*\\pn\\pnlvlbody\\pnf0\\pnfs24\\pnindent0\\pnstart1"
                              "\\pndec{\\pntxta.}}\\fi-360\\li360\\f0\\fs24 one\\par\r\n{\\pntext\\f0\\fs24 2.\\tab}two\\par"),
                 rtf.constData());
        QTextDocument back;
        QVERIFY(RtfReader::read(rtf, &back));
        QCOMPARE(back.toPlainText(), QString("one\ntwo"));
        QVERIFY(back.begin().textList());
        QCOMPARE(back.begin().textList()->format().style(), QTextListFormat::ListDecimal);
        QCOMPARE(back.begin().textList()->count(), 2);
    }

    void writesColoursAndUnderline()
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        QTextCharFormat format = gothic();
        cursor.insertText("a", format);
        format.setForeground(QColor(255, 0, 0));
        format.setFontUnderline(true);
        cursor.insertText("b", format);
        const QByteArray rtf = RtfWriter::write(&document);
        QVERIFY2(rtf.contains("}\r\n{\\colortbl ;\\red255\\green0\\blue0;}\r\n\\viewkind4"), rtf.constData());
        QVERIFY2(rtf.contains("\\fs24 a\\ul\\cf1 b\\par"), rtf.constData());
    }

    void keepsFontNamesAsWritten()
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        for (const QString &name : {u"MS UI Gothic"_qs, u"メイリオ"_qs, u"ＭＳ Ｐゴシック"_qs}) {
            QTextCharFormat format;
            format.setFontFamilies(QStringList{name});
            format.setFontPointSize(12);
            cursor.insertText("x", format);
        }
        const QByteArray rtf = RtfWriter::write(&document);
        QVERIFY(rtf.contains("{\\fonttbl{\\f0\\fnil\\fcharset128 MS UI Gothic;}"
                             "{\\f1\\fnil\\fcharset128 \\'83\\'81\\'83\\'43\\'83\\'8a\\'83\\'49;}"
                             "{\\f2\\fnil\\fcharset128 \\'82\\'6c\\'82\\'72 \\'82\\'6f\\'83\\'53\\'83\\'56\\'83\\'62\\'83\\'4e;}}"));

        QTextDocument back;
        QVERIFY(RtfReader::read(rtf, &back));
        QTextCursor reader(&back);
        reader.setPosition(2);
        QCOMPARE(reader.charFormat().fontFamilies().toStringList(), QStringList{u"メイリオ"_qs});
    }

    void writesOnlyTheSelection()
    {
        QTextDocument document;
        fill(&document, {u"一二三"_qs, "four"});
        QTextCursor selection(&document);
        selection.setPosition(1);
        selection.setPosition(6, QTextCursor::KeepAnchor);
        QTextDocument back;
        QVERIFY(RtfReader::read(RtfWriter::write(&document, selection), &back));
        QCOMPARE(back.toPlainText(), u"二三\nfo"_qs);
    }

    void roundTripKeepsTextAndFormatting()
    {
        QTextDocument document;
        fill(&document, {u"見出し"_qs, u"本文 𠮷 ①"_qs, "", u"項目一"_qs, u"項目二"_qs, "end"}, 16);
        QTextCursor cursor(document.findBlockByNumber(0));
        QTextBlockFormat centred;
        centred.setAlignment(Qt::AlignHCenter);
        cursor.setBlockFormat(centred);
        cursor.select(QTextCursor::BlockUnderCursor);
        QTextCharFormat bold;
        bold.setFontWeight(QFont::Bold);
        bold.setFontPointSize(28);
        cursor.mergeCharFormat(bold);
        QTextCursor italic(document.findBlockByNumber(1));
        italic.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        QTextCharFormat slanted;
        slanted.setFontItalic(true);
        italic.mergeCharFormat(slanted);
        QTextCursor right(document.findBlockByNumber(5));
        QTextBlockFormat rightAligned;
        rightAligned.setAlignment(Qt::AlignRight);
        right.setBlockFormat(rightAligned);
        QTextList *list = QTextCursor(document.findBlockByNumber(3)).createList(QTextListFormat::ListDisc);
        list->add(document.findBlockByNumber(4));

        const QByteArray first = RtfWriter::write(&document);
        QTextDocument back;
        QVERIFY(RtfReader::read(first, &back));

        QCOMPARE(back.blockCount(), 6);
        QCOMPARE(back.toPlainText(), document.toPlainText());
        const QTextBlock heading = back.findBlockByNumber(0);
        QCOMPARE(heading.blockFormat().alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
        QCOMPARE(heading.begin().fragment().charFormat().fontWeight(), int(QFont::Bold));
        QCOMPARE(heading.begin().fragment().charFormat().fontPointSize(), 28.0);
        QVERIFY(back.findBlockByNumber(1).begin().fragment().charFormat().fontItalic());
        QCOMPARE(back.findBlockByNumber(1).begin().fragment().charFormat().fontPointSize(), 16.0);
        QCOMPARE(back.findBlockByNumber(2).charFormat().fontPointSize(), 16.0);
        QVERIFY(back.findBlockByNumber(3).textList());
        QCOMPARE(back.findBlockByNumber(3).textList(), back.findBlockByNumber(4).textList());
        QCOMPARE(back.findBlockByNumber(3).textList()->format().style(), QTextListFormat::ListDisc);
        QVERIFY(!back.findBlockByNumber(5).textList());
        QCOMPARE(back.findBlockByNumber(5).blockFormat().alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);

        // Again and again: the same bytes, and no paragraph creeps in.
        QByteArray previous = first;
        for (int round = 0; round < 3; ++round) {
            QTextDocument again;
            QVERIFY(RtfReader::read(previous, &again));
            QCOMPARE(again.blockCount(), 6);
            const QByteArray next = RtfWriter::write(&again);
            QCOMPARE(next, previous);
            previous = next;
        }
    }

    void survivesTheStoreJoiningItsLines()
    {
        // Joined without its line ends, the body still reads the same.
        QTextDocument document;
        fill(&document, {"one", "two", u"三"_qs, "", "five"});
        QByteArray joined = RtfWriter::write(&document);
        joined.replace("\r\n", "");
        QTextDocument back;
        QVERIFY(RtfReader::read(joined, &back));
        QCOMPARE(back.toPlainText(), document.toPlainText());
    }

    void roundTripOfAnEmptyDocumentStaysEmpty()
    {
        QTextDocument document;
        QByteArray rtf = RtfWriter::write(&document);
        for (int round = 0; round < 3; ++round) {
            QTextDocument back;
            QVERIFY(RtfReader::read(rtf, &back));
            QCOMPARE(back.blockCount(), 1);
            QVERIFY(back.isEmpty());
            rtf = RtfWriter::write(&back);
        }
    }
};

QTEST_MAIN(TestRtfWriter)
#include "test_rtf_writer.moc"
