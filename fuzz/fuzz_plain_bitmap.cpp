// Any bytes into the bitmap reader: it either refuses them or makes a picture
// whose rows all lie inside the bytes it was given.
// Fuzz library: lantern_core

#include "platform/PlainBitmap.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QImage picture = PlainBitmap::fromData(data, static_cast<qint64>(size));
    if (picture.isNull())
        return 0;
    // Three bytes a pixel at the least, after the 54 bytes of headers.
    const qint64 pixels = qint64(picture.width()) * picture.height();
    if (picture.format() != QImage::Format_RGB32 || 54 + 3 * pixels > qint64(size))
        abort();
    return 0;
}
