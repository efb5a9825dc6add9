// Colours and underlines taken out of rich text source, by its exact rules.
#include "documents/RichTextCleanup.h"

#include <QtTest>

class TestRichTextCleanup : public QObject
{
    Q_OBJECT

private slots:
    void cleanup_data();
    void cleanup();
};

void TestRichTextCleanup::cleanup_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("removed");

    QTest::newRow("colour table group")
        << QStringLiteral("{\\rtf1{\\fonttbl{\\f0 MS Mincho;}}{\\colortbl ;\\red255\\green0\\blue0;}\\cf1 red\\par}")
        << QStringLiteral("{\\rtf1{\\fonttbl{\\f0 MS Mincho;}}\\cf1 red\\par}") << true;
    QTest::newRow("every colour table")
        << QStringLiteral("{{\\colortbl ;}a{\\colortbl ;\\red1;}b}") << QStringLiteral("{ab}") << true;
    // Inner braces are not counted: the group ends at the first closing brace.
    QTest::newRow("no nesting counted")
        << QStringLiteral("{\\rtf1{\\colortbl{\\*\\x}\\red1;}rest}") << QStringLiteral("{\\rtf1\\red1;}rest}") << true;
    QTest::newRow("the nearest brace before the word")
        << QStringLiteral("{\\rtf1{\\*\\a}{\\b {\\colortbl ;}}z}") << QStringLiteral("{\\rtf1{\\*\\a}{\\b }z}") << true;
    QTest::newRow("ulnone before ul")
        << QStringLiteral("a\\ul b\\ulnone  c") << QStringLiteral("a b  c") << true;
    QTest::newRow("ul as plain text")
        << QStringLiteral("\\uldb x\\ulw y") << QStringLiteral("db xw y") << true;
    QTest::newRow("nothing to take out")
        << QStringLiteral("{\\rtf1\\ansi\\ansicpg932 \\'93\\'fa\\par}") << QStringLiteral("{\\rtf1\\ansi\\ansicpg932 \\'93\\'fa\\par}")
        << false;
    QTest::newRow("empty") << QString() << QString() << false;
}

void TestRichTextCleanup::cleanup()
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
