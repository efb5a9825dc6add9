#pragma once

#include <QImage>
#include <QString>

// A reader for the one kind of picture the program reads at start-up: an
// uncompressed 24- or 32-bit Windows bitmap. Qt's own image reader first
// loads every image-format plug-in there is, which costs more than reading
// the picture itself.
class PlainBitmap
{
public:
    // The picture in `path` as an opaque RGB32 image; a null image for a
    // file that is missing, damaged or any other kind of picture.
    static QImage read(const QString &path);
    // The same for the bytes of such a file.
    static QImage fromData(const uchar *data, qint64 length);
    // Whether `path` names a bitmap by its suffix, in any case.
    static bool isBitmapName(const QString &path);
};
