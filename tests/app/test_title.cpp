#include "app/Title.h"
#include "app/TitleArtwork.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The splash picture is drawn by the program; the build draws the same one
// into the skin folder, and a missing or damaged file only means it is drawn.
class TitleTest : public QObject
{
    Q_OBJECT

private slots:
    void artworkIsDrawn()
    {
        Title title;
        QCOMPARE(title.size(), QSize(560, 340));
        const QImage picture = Title::picture(QStringLiteral("/nonexistent/TITLE.BMP")).toImage();
        QCOMPARE(picture.size(), title.size());
        // The lantern's paper glows warm in the middle of its body, the sky is dark blue at the top.
        const QColor lantern = picture.pixelColor(151, 177), sky = picture.pixelColor(540, 5);
        QVERIFY2(lantern.red() > 200 && lantern.green() > 150, qPrintable(lantern.name()));
        QVERIFY2(sky.blue() > sky.red(), qPrintable(sky.name()));
    }

    void preparedPictureIsTheArtwork()
    {
        const QString path = QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN/") + TitleArtwork::fileName();
        const QImage drawn = TitleArtwork::draw(TitleArtwork::size());
        QCOMPARE(QImage(path).convertToFormat(QImage::Format_RGB32), drawn);
        QCOMPARE(Title::picture(path).toImage().convertToFormat(QImage::Format_RGB32), drawn);
    }

    void damagedPictureIsDrawn()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("TITLE.BMP")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("BM\x10\x00");
        file.close();
        QCOMPARE(Title::picture(file.fileName()).size(), TitleArtwork::size());
    }
};

QTEST_MAIN(TitleTest)
#include "test_title.moc"
