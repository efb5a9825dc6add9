#include "app/Title.h"
#include "app/TitleArtwork.h"
#include "support/FileBytes.h"

#include <QTemporaryDir>
#include <QTest>

// The splash picture is drawn by the program; the build draws the same one
// into the skin folder, and a missing or damaged file only means it is drawn.
class TitleTest : public QObject
{
    Q_OBJECT

private slots:
    void pictureIsTheArtworkWhateverTheFile()
    {
        QTemporaryDir folder;
        const QString cut = folder.filePath(QStringLiteral("TITLE.BMP"));
        QVERIFY(writeFileBytes(cut, "BM\x10\x00"));
        const QImage drawn = TitleArtwork::draw(TitleArtwork::size());
        QCOMPARE(Title().size(), QSize(560, 340));
        QCOMPARE(TitleArtwork::size(), QSize(560, 340));
        for (const QString &path : {QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN/") + TitleArtwork::fileName(),
                                    cut, QStringLiteral("/nonexistent/TITLE.BMP")})
            QVERIFY2(Title::picture(path).toImage().convertToFormat(QImage::Format_RGB32) == drawn, qPrintable(path));
    }
};

QTEST_MAIN(TitleTest)
#include "test_title.moc"
