#include "platform/PlainBitmap.h"

#include <QFile>

namespace {

// A little-endian number of `size` bytes at `at`; -1 past the end.
qint64 number(const uchar *data, qint64 length, qint64 at, int size)
{
    if (at + size > length)
        return -1;
    qint64 value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = (value << 8) | data[at + i];
    return value;
}

} // namespace

QImage PlainBitmap::fromData(const uchar *data, qint64 length)
{
    if (length < 54 || data[0] != 'B' || data[1] != 'M')
        return QImage();
    // Compression 0 is plain rows; 3 (bit fields) and the rest are refused.
    if (number(data, length, 30, 4) != 0)
        return QImage();
    const qint64 offset = number(data, length, 10, 4);
    const qint64 width = number(data, length, 18, 4);
    const qint64 rawHeight = number(data, length, 22, 4);
    const qint64 bits = number(data, length, 28, 2);
    // A negative height stores the rows top down.
    const bool bottomUp = rawHeight <= 0x7fffffff;
    const qint64 height = bottomUp ? rawHeight : 0x100000000 - rawHeight;
    if ((bits != 24 && bits != 32) || width <= 0 || width > 16384 || height <= 0 || height > 16384)
        return QImage();
    const qint64 bytesPerPixel = bits / 8;
    const qint64 stride = (width * bytesPerPixel + 3) / 4 * 4;
    if (offset < 54 || offset + stride * height > length)
        return QImage();

    QImage image(int(width), int(height), QImage::Format_RGB32);
    if (image.isNull())
        return image;
    for (qint64 y = 0; y < height; ++y) {
        const uchar *in = data + offset + stride * (bottomUp ? height - 1 - y : y);
        auto *out = reinterpret_cast<QRgb *>(image.scanLine(int(y)));
        for (qint64 x = 0; x < width; ++x, in += bytesPerPixel)
            out[x] = qRgb(in[2], in[1], in[0]);
    }
    return image;
}

QImage PlainBitmap::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QImage();
    // Mapped, a picture of several megabytes is not copied before it is read.
    if (const uchar *mapped = file.map(0, file.size()))
        return fromData(mapped, file.size());
    const QByteArray data = file.readAll();
    return fromData(reinterpret_cast<const uchar *>(data.constData()), data.size());
}

bool PlainBitmap::isBitmapName(const QString &path)
{
    return path.endsWith(QLatin1String(".bmp"), Qt::CaseInsensitive);
}
