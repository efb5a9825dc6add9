// Colours and underlines taken out of rich text source: control words only,
// never text that merely looks like one. Each tests/data/richtextcleanup/
// <case>.rtf cleans to <case>.txt; a case that cleans to itself must report
// that nothing was removed.
#include "documents/RichTextCleanup.h"

#include <QDir>
#include <QtTest>

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

} // namespace

class TestRichTextCleanup : public QObject
{
    Q_OBJECT

private slots:
    void clean_data()
    {
        QTest::addColumn<QString>("source");
        const QFileInfoList files = QDir(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/richtextcleanup"))
                                        .entryInfoList({QStringLiteral("*.rtf")}, QDir::Files, QDir::Name);
        QVERIFY(!files.isEmpty());
        for (const QFileInfo &file : files)
            QTest::newRow(qPrintable(file.completeBaseName())) << file.filePath();
    }

    void clean()
    {
        QFETCH(QString, source);
        const QString input = contents(source);
        const QString expected = contents(source.chopped(4) + QStringLiteral(".txt"));
        const bool removed = expected != input;
        bool anything = !removed;
        QCOMPARE(RichTextCleanup::clean(input, &anything), expected);
        QCOMPARE(anything, removed);
    }
};

QTEST_GUILESS_MAIN(TestRichTextCleanup)
#include "test_richtextcleanup.moc"
