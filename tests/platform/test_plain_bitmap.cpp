#include "platform/PlainBitmap.h"
#include "support/GoldenRows.h"

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
    void readsEachFile_data() { addGoldenRows(QStringLiteral("plain_bitmap/read"), QStringLiteral("bmp")); }

    void readsEachFile()
    {
        QFETCH(QString, file);
        const QImage expected(goldenBeside(file, QStringLiteral("ppm")), "PPM");
        QCOMPARE(PlainBitmap::read(file), expected.convertToFormat(QImage::Format_RGB32));
    }

    void refusesEachFile_data() { addGoldenRows(QStringLiteral("plain_bitmap/refused"), QStringLiteral("bmp")); }

    void refusesEachFile()
    {
        QFETCH(QString, file);
        QVERIFY(PlainBitmap::read(file).isNull());
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
