#include "platform/PlainBitmap.h"

#include <QDir>
#include <QTest>

// The splash and the usual wallpaper are plain bitmaps read without Qt's image
// plug-ins: 24 or 32 bits a pixel, rows either way up, read pixel for pixel;
// anything else is refused so that the caller can fall back. Each file under
// data/plain_bitmap/read/ has the expected pixels beside it as a .ppm; each
// file under refused/ must give no picture.
class PlainBitmapTest : public QObject
{
    Q_OBJECT

private slots:
    void readsOrRefusesEachFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        const QDir data(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/plain_bitmap"));
        QVERIFY2(data.exists(QStringLiteral("read")) && data.exists(QStringLiteral("refused")), qPrintable(data.path()));
        for (const QString folder : {QStringLiteral("read"), QStringLiteral("refused")})
            for (const QFileInfo &file : QDir(data.filePath(folder)).entryInfoList({QStringLiteral("*.bmp")})) {
                const QString ppm = file.path() + u'/' + file.completeBaseName() + QStringLiteral(".ppm");
                QTest::newRow(qPrintable(folder + u'/' + file.fileName()))
                    << file.filePath() << (folder == QLatin1String("read") ? ppm : QString());
            }
    }

    void readsOrRefusesEachFile()
    {
        QFETCH(QString, path);
        QFETCH(QString, expected);
        const QImage image = PlainBitmap::read(path);
        if (expected.isEmpty())
            QVERIFY(image.isNull());
        else
            QCOMPARE(image, QImage(expected, "PPM").convertToFormat(QImage::Format_RGB32));
    }

    void missingFileAndNames()
    {
        QVERIFY(PlainBitmap::read(QStringLiteral("/nonexistent/WELCOME.BMP")).isNull());
        QVERIFY(PlainBitmap::isBitmapName(QStringLiteral("SKIN/WELCOME.BMP")));
        QVERIFY(PlainBitmap::isBitmapName(QStringLiteral("photo.bmp")));
        QVERIFY(!PlainBitmap::isBitmapName(QStringLiteral("ｳｪﾌﾞﾛｸﾞ.JPEG")));
        QVERIFY(!PlainBitmap::isBitmapName(QStringLiteral("BMP")));
    }
};

QTEST_MAIN(PlainBitmapTest)
#include "test_plain_bitmap.moc"
