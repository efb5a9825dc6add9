// Colours and underlines taken out of rich text source: control words only,
// never text that merely looks like one.
#include "documents/RichTextCleanup.h"

#include <QtTest>

class TestRichTextCleanup : public QObject
{
    Q_OBJECT

private slots:
    void clean_data();
    void clean();
};

void TestRichTextCleanup::clean_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("removed");

    QTest::newRow("colour table group")
        << QStringLiteral("{\\rtf1{\\fonttbl{\\f0 MS Mincho;}}{\\colortbl ;\\red255\\green0\\blue0;}\\cf1 red\\par}")
        << QStringLiteral("{\\rtf1{\\fonttbl{\\f0 MS Mincho;}}\\cf1 red\\par}") << true;
    QTest::newRow("every colour table")
        << QStringLiteral("{{\\colortbl ;}a{\\colortbl ;\\red1;}b}") << QStringLiteral("{ab}") << true;
    QTest::newRow("groups inside the colour table go with it")
        << QStringLiteral("{\\rtf1 {\\colortbl{\\*\\x}\\red1;}rest}") << QStringLiteral("{\\rtf1 rest}") << true;
    QTest::newRow("the group that holds the word")
        << QStringLiteral("{\\rtf1{\\*\\a}{\\b {\\colortbl ;}}z}") << QStringLiteral("{\\rtf1{\\*\\a}{\\b }z}") << true;
    // The outermost group is the whole document.
    QTest::newRow("colour table word outside any inner group")
        << QStringLiteral("{\\rtf1\\colortbl ;\\red1;x}") << QStringLiteral("{\\rtf1\\colortbl ;\\red1;x}") << false;
    QTest::newRow("escaped backslash before colortbl")
        << QStringLiteral("{\\rtf1{\\f0 a\\\\colortbl b}}") << QStringLiteral("{\\rtf1{\\f0 a\\\\colortbl b}}") << false;
    QTest::newRow("colour table group ending a bare word")
        << QStringLiteral("{\\rtf1\\b{\\colortbl ;}text}") << QStringLiteral("{\\rtf1\\b text}") << true;

    QTest::newRow("ulnone before ul")
        << QStringLiteral("a\\ul b\\ulnone  c") << QStringLiteral("ab c") << true;
    QTest::newRow("ul with a number") << QStringLiteral("a\\ul0 b\\ul1\\par") << QStringLiteral("ab\\par") << true;
    QTest::newRow("ul at the very end") << QStringLiteral("x\\ul") << QStringLiteral("x") << true;
    QTest::newRow("other underline words are other words")
        << QStringLiteral("\\uldb x\\ulw y\\ulnonex z") << QStringLiteral("\\uldb x\\ulw y\\ulnonex z") << false;
    QTest::newRow("escaped backslash before ul letters")
        << QStringLiteral("{\\rtf1 \\'95\\'db\\'91\\'b6\\'90\\'e6 C:\\\\ulrich\\\\docs \\'82\\'c5\\'82\\'b7\\par}")
        << QStringLiteral("{\\rtf1 \\'95\\'db\\'91\\'b6\\'90\\'e6 C:\\\\ulrich\\\\docs \\'82\\'c5\\'82\\'b7\\par}") << false;
    QTest::newRow("escaped backslash before ulnone letters")
        << QStringLiteral("a\\\\ulnone b") << QStringLiteral("a\\\\ulnone b") << false;
    QTest::newRow("escaped backslash, then a real ul")
        << QStringLiteral("a\\\\\\ul b") << QStringLiteral("a\\\\b") << true;
    QTest::newRow("word before ul keeps its end")
        << QStringLiteral("\\b\\ul text") << QStringLiteral("\\b text") << true;
    QTest::newRow("word before ul and ulnone keeps its end")
        << QStringLiteral("\\fs48\\ul\\ulnone  5") << QStringLiteral("\\fs48  5") << true;
    QTest::newRow("word before ul followed by a word")
        << QStringLiteral("\\b\\ul\\i x") << QStringLiteral("\\b\\i x") << true;
    QTest::newRow("nothing to take out")
        << QStringLiteral("{\\rtf1\\ansi\\ansicpg932 \\'93\\'fa\\par}") << QStringLiteral("{\\rtf1\\ansi\\ansicpg932 \\'93\\'fa\\par}")
        << false;
    QTest::newRow("empty") << QString() << QString() << false;
}

void TestRichTextCleanup::clean()
{
    QFETCH(QString, source);
    QFETCH(QString, expected);
    QFETCH(bool, removed);
    bool anything = !removed;
    QCOMPARE(RichTextCleanup::clean(source, &anything), expected);
    QCOMPARE(anything, removed);
}

QTEST_GUILESS_MAIN(TestRichTextCleanup)
#include "test_richtextcleanup.moc"
