// Colours and underlines taken out of rich text source: control words only,
// never text that merely looks like one. Each tests/data/richtextcleanup/
// <case>.rtf cleans to <case>.txt; a case that cleans to itself must report
// that nothing was removed.
#include "documents/RichTextCleanup.h"
#include "support/FileBytes.h"
#include "support/GoldenRows.h"

#include <QtTest>

class TestRichTextCleanup : public QObject
{
    Q_OBJECT

private slots:
    void clean_data() { addGoldenRows(QStringLiteral("richtextcleanup"), QStringLiteral("rtf")); }

    void clean()
    {
        QFETCH(QString, file);
        const QString input = QString::fromUtf8(fileBytes(file));
        const QString expected = QString::fromUtf8(fileBytes(goldenBeside(file, QStringLiteral("txt"))));
        const bool removed = expected != input;
        bool anything = !removed;
        QCOMPARE(RichTextCleanup::clean(input, &anything), expected);
        QCOMPARE(anything, removed);
    }
};

QTEST_GUILESS_MAIN(TestRichTextCleanup)
#include "test_richtextcleanup.moc"
