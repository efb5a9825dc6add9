#include "platform/PlainBitmap.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {

// A small picture with a different colour in every pixel.
QImage sample(int width, int height)
{
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgb(x * 30, y * 80, 200 - x * 10));
    return picture;
}

QByteArray bitmapBytes(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "BMP");
    return bytes;
}

QImage fromBytes(const QByteArray &bytes)
{
    return PlainBitmap::fromData(reinterpret_cast<const uchar *>(bytes.constData()), bytes.size());
}

// The same rows written the other way up, or four bytes a pixel: what other
// programs write.
QByteArray topDown32(const QImage &picture)
{
    const int stride = picture.width() * 4;
    QByteArray bytes(54 + stride * picture.height(), '\0');
    auto *data = reinterpret_cast<uchar *>(bytes.data());
    data[0] = 'B';
    data[1] = 'M';
    qToLittleEndian<quint32>(bytes.size(), data + 2);
    qToLittleEndian<quint32>(54, data + 10);
    qToLittleEndian<quint32>(40, data + 14);
    qToLittleEndian<qint32>(picture.width(), data + 18);
    qToLittleEndian<qint32>(-picture.height(), data + 22);
    qToLittleEndian<quint16>(1, data + 26);
    qToLittleEndian<quint16>(32, data + 28);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            uchar *at = data + 54 + y * stride + x * 4;
            at[0] = uchar(qBlue(pixel));
            at[1] = uchar(qGreen(pixel));
            at[2] = uchar(qRed(pixel));
        }
    return bytes;
}

} // namespace

// The splash and the usual wallpaper are plain bitmaps read without Qt's
// image plug-ins: the reader takes what it knows, pixel for pixel, and
// refuses the rest, so that the caller can fall back.
class PlainBitmapTest : public QObject
{
    Q_OBJECT

private slots:
    void readsPlainBitmaps()
    {
        // Odd widths have padded rows.
        for (const QSize size : {QSize(7, 3), QSize(8, 5), QSize(1, 1)}) {
            const QImage picture = sample(size.width(), size.height());
            QCOMPARE(fromBytes(bitmapBytes(picture)), picture);
            QCOMPARE(fromBytes(topDown32(picture)), picture);
        }

        QTemporaryDir folder;
        const QImage picture = sample(9, 4);
        const QString path = folder.filePath(QStringLiteral("PICTURE.BMP"));
        QVERIFY(picture.save(path, "BMP"));
        QCOMPARE(PlainBitmap::read(path), picture);
        QVERIFY(PlainBitmap::read(folder.filePath(QStringLiteral("missing.bmp"))).isNull());
    }

    void refusesTheRest()
    {
        const QByteArray plain = bitmapBytes(sample(7, 3));
        QVERIFY(fromBytes(plain.left(plain.size() - 10)).isNull());
        QVERIFY(fromBytes(plain.left(20)).isNull());
        QVERIFY(fromBytes(QByteArray()).isNull());

        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        sample(7, 3).save(&buffer, "PNG");
        QVERIFY(fromBytes(png).isNull());

        // Eight bits a pixel with a palette, and compressed rows.
        QByteArray indexed = plain;
        qToLittleEndian<quint16>(8, indexed.data() + 28);
        QVERIFY(fromBytes(indexed).isNull());
        QByteArray compressed = plain;
        qToLittleEndian<quint32>(1, compressed.data() + 30);
        QVERIFY(fromBytes(compressed).isNull());
        // Rows said to start past the end.
        QByteArray farOff = plain;
        qToLittleEndian<quint32>(quint32(plain.size()), farOff.data() + 10);
        QVERIFY(fromBytes(farOff).isNull());
    }

    void namesBitmapsBySuffix()
    {
        QVERIFY(PlainBitmap::isBitmapName(QStringLiteral("SKIN/WELCOME.BMP")));
        QVERIFY(PlainBitmap::isBitmapName(QStringLiteral("photo.bmp")));
        QVERIFY(!PlainBitmap::isBitmapName(QStringLiteral("ｳｪﾌﾞﾛｸﾞ.JPEG")));
        QVERIFY(!PlainBitmap::isBitmapName(QStringLiteral("BMP")));
    }
};

QTEST_MAIN(PlainBitmapTest)
#include "test_plain_bitmap.moc"
