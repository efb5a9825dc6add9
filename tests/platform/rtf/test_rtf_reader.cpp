#include "documents/Database.h"
#include "platform/rtf/RtfReader.h"

#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QtTest>

// Samples are written here by hand the way WordPad, the rich-text box and
// Word write them.
class TestRtfReader : public QObject
{
    Q_OBJECT

private:
    static QByteArray japaneseHeader(const QByteArray &codePage = "932")
    {
        return "{\\rtf1\\ansi\\ansicpg" + codePage
               + "\\deff0\\deflang1033\\deflangfe1041{\\fonttbl{\\f0\\fnil\\fcharset128 "
                 "\\'82\\'6c\\'82\\'72 \\'82\\'6f\\'83\\'53\\'83\\'56\\'83\\'62\\'83\\'4e;}"
                 "{\\f1\\fnil\\fcharset2 Symbol;}}\r\n\\viewkind4\\uc1\\pard\\f0\\fs24 ";
    }

    static QStringList paragraphs(const QTextDocument &document)
    {
        QStringList out;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            out << block.text();
        return out;
    }

    static QTextCharFormat formatAt(const QTextDocument &document, int position)
    {
        QTextCursor cursor(const_cast<QTextDocument *>(&document));
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }

private slots:
    void readsJapaneseFromTheFontsCharset_data()
    {
        QTest::addColumn<QByteArray>("codePage");
        QTest::newRow("ansicpg932") << QByteArray("932");
        // Common in the wild: the document says 1252 but its font is Japanese.
        QTest::newRow("ansicpg1252") << QByteArray("1252");
    }
    void readsJapaneseFromTheFontsCharset()
    {
        QFETCH(QByteArray, codePage);
        QTextDocument document;
        const QByteArray rtf = japaneseHeader(codePage) + "\\'93\\'fa\\'96\\'7b\\'8c\\'ea abc\\par\r\n}\r\n";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(paragraphs(document), QStringList{u"日本語 abc"_qs});
        const QTextCharFormat format = formatAt(document, 0);
        QCOMPARE(format.fontFamilies().toStringList(), QStringList{u"ＭＳ Ｐゴシック"_qs});
        QCOMPARE(format.fontPointSize(), 12.0);
    }

    void readsExtensionsHalfWidthKanaAndRawBytes()
    {
        QTextDocument document;
        // ① and ㈱ are NEC extensions, ｱ is one byte; the last characters come
        // as raw 8-bit bytes rather than escapes, with a brace and a backslash
        // as second bytes of 本 and 表.
        const QByteArray rtf = japaneseHeader() + "\\'87\\'40\\'87\\'8a\\'b1" + QByteArray("\x8c\xea\x96{\x95\\") + "}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(document.toPlainText(), u"①㈱ｱ語本表"_qs);
    }

    void readsOtherCodePagesByFont()
    {
        QTextDocument document;
        const QByteArray rtf = "{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fnil\\fcharset128 Gothic;}"
                               "{\\f1\\fswiss\\fcharset0 Arial;}{\\f2\\fnil\\fcharset134 SimSun;}"
                               "{\\f3\\fnil Plain;}}"
                               "\\f1 caf\\'e9 \\f2\\'d6\\'d0\\'ce\\'c4 \\f3\\'82\\'a0}";
        QVERIFY(RtfReader::read(rtf, &document));
        // A font without \fcharset falls back to \ansicpg.
        QCOMPARE(document.toPlainText(), u"café 中文 あ"_qs);
        QCOMPARE(formatAt(document, 0).fontFamilies().toStringList(), QStringList{"Arial"});
    }

    void readsUnicodeEscapesAndSkipsTheirFallbacks()
    {
        QTextDocument document;
        const QByteArray rtf = japaneseHeader()
                               + "a\\u26085?b"                 // \uc1 and a "?" fallback
                                 "{\\uc2\\u26412\\'96\\'7bc}"  // two fallback bytes
                                 "\\u-10174?\\u-8265?"          // a surrogate pair: 𠮷
                                 "\\uc0\\u12354 d}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(document.toPlainText(), u"a日b本c𠮷あd"_qs);
    }

    void readsCharacterFormats()
    {
        QTextDocument document;
        const QByteArray rtf = "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fnil Arial;}}"
                               "{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}"
                               "\\f0\\fs20 n\\b b\\b0\\i i\\i0\\ul u\\ulnone\\cf1 r\\cf2\\fs36 B{\\b g}x\\plain p}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(document.toPlainText(), QString("nbiurBgxp"));

        QCOMPARE(formatAt(document, 0).fontPointSize(), 10.0);
        QCOMPARE(formatAt(document, 0).fontWeight(), int(QFont::Normal));
        QCOMPARE(formatAt(document, 1).fontWeight(), int(QFont::Bold));
        QVERIFY(formatAt(document, 2).fontItalic());
        QVERIFY(!formatAt(document, 2).fontUnderline());
        QVERIFY(formatAt(document, 3).fontUnderline());
        QCOMPARE(formatAt(document, 4).foreground().color(), QColor(255, 0, 0));
        QCOMPARE(formatAt(document, 5).foreground().color(), QColor(0, 0, 255));
        QCOMPARE(formatAt(document, 5).fontPointSize(), 18.0);
        // A group keeps its bold to itself.
        QCOMPARE(formatAt(document, 6).fontWeight(), int(QFont::Bold));
        QCOMPARE(formatAt(document, 7).fontWeight(), int(QFont::Normal));
        // \plain: the default font at 12 points, no colour.
        QCOMPARE(formatAt(document, 8).fontPointSize(), 12.0);
        QCOMPARE(formatAt(document, 8).foreground().style(), Qt::NoBrush);
    }

    void readsParagraphsAlignmentAndIndents()
    {
        QTextDocument document;
        const QByteArray rtf = japaneseHeader()
                               + "one\\par\r\n\\pard\\qc two\\par three\\par\r\n\\pard\\qr four\\line five\\tab six\\par"
                                 "\\pard\\li720\\fi-360 seven\\par\\pard\\ql eight\\par\r\n}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(paragraphs(document),
                 (QStringList{"one", "two", "three", u"four\u2028five\tsix"_qs, "seven", "eight"}));
        QList<Qt::Alignment> alignments;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            alignments << (block.blockFormat().alignment() & Qt::AlignHorizontal_Mask);
        // Paragraph properties last until the next \pard.
        QCOMPARE(alignments, (QList<Qt::Alignment>{Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignHCenter,
                                                   Qt::AlignRight, Qt::AlignLeft, Qt::AlignLeft}));
        const QTextBlockFormat indented = document.findBlockByNumber(4).blockFormat();
        QCOMPARE(indented.leftMargin(), 36.0);
        QCOMPARE(indented.textIndent(), -18.0);
    }

    void readsTheLastParagraphMarkIntoTheLastParagraph_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("closing par") << QByteArray("abc\\par\r\n}") << QStringList{"abc"};
        QTest::newRow("no closing par") << QByteArray("abc}") << QStringList{"abc"};
        QTest::newRow("empty last paragraph") << QByteArray("abc\\par\\par}") << QStringList{"abc", ""};
        QTest::newRow("only a par") << QByteArray("\\par}") << QStringList{""};
        QTest::newRow("text after the last par") << QByteArray("a\\par b}") << QStringList{"a", "b"};
    }
    void readsTheLastParagraphMarkIntoTheLastParagraph()
    {
        QFETCH(QByteArray, body);
        QFETCH(QStringList, expected);
        QTextDocument document;
        QVERIFY(RtfReader::read(japaneseHeader() + body, &document));
        QCOMPARE(paragraphs(document), expected);
    }

    void readsEmptyParagraphSizes()
    {
        QTextDocument document;
        QVERIFY(RtfReader::read(japaneseHeader() + "a\\par\\fs48\\par\\fs24 b\\par}", &document));
        QCOMPARE(paragraphs(document), (QStringList{"a", "", "b"}));
        QCOMPARE(document.findBlockByNumber(1).charFormat().fontPointSize(), 24.0);
    }

    void readsRichEditBulletsAsOneList()
    {
        QTextDocument document;
        const QByteArray rtf = japaneseHeader()
                               + "before\\par\r\n"
                                 "\\pard{\\pntext\\f1\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnindent0{\\pntxtb\\'B7}}"
                                 "\\fi-360\\li360 one\\par\r\n"
                                 "{\\pntext\\f1\\'B7\\tab}two\\par\r\n"
                                 "\\pard after\\par\r\n}";
        QVERIFY(RtfReader::read(rtf, &document));
        // The bullet text is only for readers without lists: it is not content.
        QCOMPARE(paragraphs(document), (QStringList{"before", "one", "two", "after"}));
        QVERIFY(!document.findBlockByNumber(0).textList());
        QTextList *list = document.findBlockByNumber(1).textList();
        QVERIFY(list);
        QCOMPARE(list->format().style(), QTextListFormat::ListDisc);
        QCOMPARE(document.findBlockByNumber(2).textList(), list);
        QCOMPARE(list->count(), 2);
        QVERIFY(!document.findBlockByNumber(3).textList());
    }

    // The editor draws a bullet in the format of its paragraph's mark, so
    // that is where the bullet's size must arrive.
    void readsTheBulletsSize_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QList<qreal>>("markerPoints");

        const QByteArray bullet = "\\pard{\\pntext\\f1\\fs48\\'B7\\tab}"
                                  "{\\*\\pn\\pnlvlblt\\pnf1\\pnfs48\\pnindent0{\\pntxtb\\'B7}}\\fi-360\\li360 ";
        QTest::newRow("pntext and pnfs") << bullet + "\\fs48 big\\par}" << QList<qreal>{24};
        QTest::newRow("pntext only")
            << QByteArray("\\pard{\\pntext\\f1\\fs36\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnindent0{\\pntxtb\\'B7}}"
                          "\\fi-360\\li360\\fs36 mid\\par}")
            << QList<qreal>{18};
        QTest::newRow("pnfs only")
            << QByteArray("\\pard{\\pntext\\f1\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnfs40\\pnindent0{\\pntxtb\\'B7}}"
                          "\\fi-360\\li360\\fs40 x\\par}")
            << QList<qreal>{20};
        // Written before bullets carried a size: the text's size stands in.
        QTest::newRow("no size for the bullet")
            << QByteArray("\\pard{\\pntext\\f1\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnindent0{\\pntxtb\\'B7}}"
                          "\\fi-360\\li360\\fs48 big\\par}")
            << QList<qreal>{24};
        // The bullet is the size written for it, not the size of its text.
        QTest::newRow("bullet smaller than the text") << QByteArray(bullet).replace("48", "20") + "\\fs48 big\\par}"
                                                      << QList<qreal>{10};
        QTest::newRow("each paragraph its own size")
            << QByteArray("\\pard{\\pntext\\f1\\fs48\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnfs48\\pnindent0{\\pntxtb\\'B7}}"
                          "\\fi-360\\li360\\fs48 big\\par\r\n{\\pntext\\f1\\fs24\\'B7\\tab}\\fs24 small\\par}")
            << QList<qreal>{24, 12};
        QTest::newRow("empty bulleted paragraph") << bullet + "\\fs48\\par}" << QList<qreal>{24};
    }
    void readsTheBulletsSize()
    {
        QFETCH(QByteArray, body);
        QFETCH(QList<qreal>, markerPoints);
        QTextDocument document;
        QVERIFY(RtfReader::read(japaneseHeader() + body, &document));
        QList<qreal> found;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            QVERIFY(block.textList());
            found << block.charFormat().fontPointSize();
        }
        QCOMPARE(found, markerPoints);
    }

    // A document file's body, read by the document store and then shown: a
    // line end ends the control word before it and is no text.
    void readsBodiesAsTheDocumentStoreLoadsThem_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("shown");

        QTest::newRow("one line") << QByteArray("{\\rtf1\\ansi First\\par Second\\par\\b bold\\b0  end}")
                                  << "First\nSecond\nbold end";
        QTest::newRow("break after par") << QByteArray("{\\rtf1\\ansi First\\par\r\nSecond}") << "First\nSecond";
        QTest::newRow("break after bold") << QByteArray("{\\rtf1\\ansi plain \\b\r\nbold\\b0\r\n text}")
                                          << "plain bold text";
        QTest::newRow("break after a number") << QByteArray("{\\rtf1\\ansi\\fs24\r\n36 sheets}") << "36 sheets";
        QTest::newRow("break inside text") << QByteArray("{\\rtf1\\ansi Hel\r\nlo wor\r\nld}") << "Hello world";
        QTest::newRow("break after an escaped backslash")
            << QByteArray("{\\rtf1\\ansi C:\\\\\r\nparts}") << "C:\\parts";
        QTest::newRow("blank lines") << QByteArray("{\\rtf1\\ansi a\\par\r\n\r\n\r\nb}") << "a\nb";
        QTest::newRow("lone CR ends a line") << QByteArray("{\\rtf1\\ansi a\\par\rb}") << "a\nb";
    }
    void readsBodiesAsTheDocumentStoreLoadsThem()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, shown);
        QTemporaryDir folder;
        const QString path = folder.filePath("d.TXT");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("\"Lines\",#2009-04-01 09:30:15#\r\n" + body + "\r\n");
        file.close();

        const DocumentRecord record = Database::LoadDocument(path, Database::Sequential);
        QTextDocument document;
        QVERIFY(RtfReader::read(record.page(1).item(1).Text, &document));
        QCOMPARE(document.toPlainText(), shown);
    }

    void readsWordListParagraphsAsBullets()
    {
        QTextDocument document;
        const QByteArray rtf = "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}{\\f3\\fcharset2 Symbol;}}"
                               "{\\*\\listtable{\\list\\listtemplateid1{\\listlevel\\levelnfc23{\\leveltext \\'01\\u-3913 ?;}}"
                               "\\listid1}}{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}"
                               "\\pard{\\listtext\\pard\\plain\\f3 \\'b7\\tab}\\ls1\\li720\\fi-360 one\\par"
                               "{\\listtext\\pard\\plain\\f3 \\'b7\\tab}two\\par\\pard three\\par}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(paragraphs(document), (QStringList{"one", "two", "three"}));
        QVERIFY(document.findBlockByNumber(0).textList());
        QCOMPARE(document.findBlockByNumber(0).textList(), document.findBlockByNumber(1).textList());
        QVERIFY(!document.findBlockByNumber(2).textList());
    }

    void readsNumberedParagraphs()
    {
        QTextDocument document;
        const QByteArray rtf = japaneseHeader()
                               + "\\pard{\\pntext\\f0 1.\\tab}{\\*\\pn\\pnlvlbody\\pnf0\\pnindent0\\pnstart1\\pndec"
                                 "{\\pntxta.}}\\fi-360\\li360 one\\par}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(document.toPlainText(), QString("one"));
        QVERIFY(document.begin().textList());
        QCOMPARE(document.begin().textList()->format().style(), QTextListFormat::ListDecimal);
    }

    void skipsWhatIsNotText()
    {
        QTextDocument document;
        const QByteArray rtf =
            "{\\rtf1\\ansi\\ansicpg932\\deff0"
            "{\\fonttbl{\\f0\\fnil\\fcharset128{\\*\\panose 02020609040205080304}{\\*\\falt Mincho}"
            "\\'82\\'6c\\'82\\'72 \\'96\\'be\\'92\\'a9;}}"
            "{\\stylesheet{\\s0 Normal;}{\\s1 heading 1;}}"
            "{\\info{\\title Secret}{\\author Nobody}}"
            "{\\*\\generator Riched20 10.0;}{\\*\\unknowndestination hidden}"
            "\\pard\\f0\\fs24 a{\\pict\\wmetafile8\\picw100 0123456789abcdef}"
            "b{\\*\\shppict{\\pict\\pngblip 89504e47}}{\\nonshppict{\\pict 00}}"
            "c\\bin5 {}}\\d"
            "{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt link}}"
            "{\\upr{e}{\\*\\ud{E}}}\\unknownword42 f\\par}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(document.toPlainText(), QString("abclinkef"));
        QTextCursor cursor(&document);
        cursor.setPosition(1);
        QCOMPARE(cursor.charFormat().fontFamilies().toStringList(), QStringList{u"ＭＳ 明朝"_qs});
    }

    void readsTableCellsAsTabSeparatedText()
    {
        QTextDocument document;
        const QByteArray rtf =
            "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}"
            "\\trowd\\cellx1000\\cellx2000\\cellx3000\\pard\\intbl a\\cell b\\cell c\\cell\\row"
            "\\trowd\\cellx1000\\cellx2000\\cellx3000\\pard\\intbl d\\cell\\cell f\\cell\\row"
            "\\pard after\\par}";
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(paragraphs(document), (QStringList{"a\tb\tc", "d\t\tf", "after"}));
    }

    void ignoresWhatFollowsTheClosingBrace()
    {
        QTextDocument document;
        QVERIFY(RtfReader::read(QByteArray("{\\rtf1 kept}not kept{\\b more}"), &document));
        QCOMPARE(document.toPlainText(), QString("kept"));
    }

    void readsRtfHeldInAString()
    {
        QTextDocument document;
        const QString rtf = QString::fromLatin1(japaneseHeader() + "\\'93\\'fa\x8c\xea\\par}");
        QVERIFY(RtfReader::read(rtf, &document));
        QCOMPARE(document.toPlainText(), u"日語"_qs);

        // A body whose raw bytes were already decoded as code page 932.
        QVERIFY(RtfReader::read(QString::fromLatin1(japaneseHeader()) + u"本\\'93\\'fa\\par}"_qs, &document));
        QCOMPARE(document.toPlainText(), u"本日"_qs);
    }

    void pastesAFragmentAtTheCursor()
    {
        QTextDocument document;
        document.setPlainText("ac");
        QTextCursor cursor(&document);
        cursor.setPosition(1);
        QVERIFY(RtfReader::readFragment("{\\rtf1\\ansi{\\b b}}", &cursor));
        QCOMPARE(document.toPlainText(), QString("abc"));
        QCOMPARE(formatAt(document, 1).fontWeight(), int(QFont::Bold));
    }

    void keepsWhatItCanOfDamagedInput()
    {
        QTextDocument document;
        QString error;

        // Not RTF: the text itself, as the rich-text box shows it.
        QVERIFY(!RtfReader::read(QByteArray("plain\r\n\x93\xfa"), &document, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(paragraphs(document), (QStringList{"plain", u"日"_qs}));

        // Cut off in the middle: everything up to the cut.
        error.clear();
        QVERIFY(!RtfReader::read(japaneseHeader() + "one\\par two\\'93", &document, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(paragraphs(document).value(0), QString("one"));
        QVERIFY(paragraphs(document).value(1).startsWith("two"));

        // Broken escapes, a backslash at the very end, out-of-range numbers.
        QVERIFY(!RtfReader::read(QByteArray("{\\rtf1 a\\'zz\\'4b\\fs99999999999999999 \\u99999999?b"
                                            "\\b-99999999999999 c\\"),
                                 &document));
        QCOMPARE(document.toPlainText(), QString("azzKbc"));
        QCOMPARE(formatAt(document, 4).fontPointSize(), 1638.0);

        // Invalid Shift-JIS: a lead byte without its second byte, a byte that is
        // no character. The text around them stays.
        QVERIFY(RtfReader::read(QByteArray("{\\rtf1\\ansi\\ansicpg932 a\\'81\\'20b\\'fd\\'ffc\\'82}"), &document));
        const QString text = document.toPlainText();
        QVERIFY2(text.startsWith(u'a') && text.contains(u" b") && text.contains(u'c'), qPrintable(text));
    }

    void dropsGroupsNestedTooDeep()
    {
        QTextDocument document;
        QString error;
        const QByteArray deep = "{\\rtf1 a" + QByteArray(100000, '{') + "lost" + QByteArray(100000, '}') + "b}";
        QVERIFY(!RtfReader::read(deep, &document, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(document.toPlainText(), QString("ab"));

        // Shallow enough nesting is read as usual.
        const QByteArray nested = "{\\rtf1 a" + QByteArray(100, '{') + "kept" + QByteArray(100, '}') + "b}";
        QVERIFY(RtfReader::read(nested, &document));
        QCOMPARE(document.toPlainText(), QString("akeptb"));
    }
};

QTEST_MAIN(TestRtfReader)
#include "test_rtf_reader.moc"
