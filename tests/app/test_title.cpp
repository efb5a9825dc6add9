#include "app/Title.h"
#include "app/TitleArtwork.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The splash picture is drawn by the program: it must show something, at the
// splash's size, in every colour it was drawn with.
class TitleTest : public QObject
{
    Q_OBJECT

private slots:
    void artworkIsDrawn()
    {
        Title title;
        QCOMPARE(title.size(), QSize(560, 340));
        // No picture beside the test program: the splash draws its own.
        const QImage picture = Title::picture(QStringLiteral("/nonexistent/TITLE.BMP")).toImage();
        QCOMPARE(picture.size(), title.size());
        // The lantern's paper glows warm in the middle of its body, the sky is
        // dark blue at the top.
        const QColor lantern = picture.pixelColor(151, 177);
        const QColor sky = picture.pixelColor(540, 5);
        QVERIFY2(lantern.red() > 200 && lantern.green() > 150, qPrintable(lantern.name()));
        QVERIFY2(sky.blue() > sky.red(), qPrintable(sky.name()));
        const QString folder = qEnvironmentVariable("LANTERN_BUILD_DIR");
        if (!folder.isEmpty())
            picture.save(folder + QStringLiteral("/screenshots/splash.png"));
    }

    // The build draws the same picture into the skin folder, and the splash
    // takes that file instead of drawing.
    void preparedPictureIsTheArtwork()
    {
        const QString folder = qEnvironmentVariable("LANTERN_PROGRAM_DIR");
        if (folder.isEmpty())
            QSKIP("LANTERN_PROGRAM_DIR is not set");
        const QString path = folder + QStringLiteral("/SKIN/") + TitleArtwork::fileName();
        const QImage prepared(path);
        QVERIFY2(!prepared.isNull(), qPrintable(path));
        const QImage drawn = TitleArtwork::draw(TitleArtwork::size());
        QCOMPARE(prepared.convertToFormat(QImage::Format_RGB32), drawn);
        QCOMPARE(Title::picture(path).toImage().convertToFormat(QImage::Format_RGB32), drawn);
    }

    // A damaged or foreign file only means the picture is drawn.
    void damagedPictureIsDrawn()
    {
        QTemporaryDir folder;
        const QString cut = folder.filePath(QStringLiteral("TITLE.BMP"));
        QFile file(cut);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("BM\x10\x00");
        file.close();
        QCOMPARE(Title::picture(cut).size(), TitleArtwork::size());
        QCOMPARE(Title::picture(folder.filePath(QStringLiteral("missing.bmp"))).size(), TitleArtwork::size());
    }
};

QTEST_MAIN(TitleTest)
#include "test_title.moc"
