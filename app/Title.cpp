#include "app/Title.h"
#include "app/TitleArtwork.h"

#include <QCoreApplication>
#include <QFile>
#include <QPainter>

Title::Title(QWidget *parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("Title"));
    setWindowTitle(QStringLiteral("Lantern"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFixedSize(TitleArtwork::size());
    // The load handler's one job: take the picture.
    m_picture = picture(QCoreApplication::applicationDirPath() + QStringLiteral("/SKIN/") + TitleArtwork::fileName());
}

Title::~Title()
{
    // The unload handler releases the picture.
    m_picture = QPixmap();
}

// An uncompressed 24- or 32-bit bitmap, read straight into an image. Qt's
// own readers would first load every image-format plug-in there is, which
// takes longer than the splash is allowed.
QImage Title::readPlainBitmap(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QImage();
    const QByteArray data = file.readAll();
    const auto number = [&data](int at, int size) -> qint64 {
        if (at + size > data.size())
            return -1;
        qint64 value = 0;
        for (int i = size - 1; i >= 0; --i)
            value = (value << 8) | static_cast<unsigned char>(data[at + i]);
        return value;
    };
    if (!data.startsWith("BM") || number(30, 4) != 0)
        return QImage();
    const qint64 offset = number(10, 4);
    const qint64 width = number(18, 4);
    const qint64 rawHeight = number(22, 4);
    const qint64 bits = number(28, 2);
    const qint64 height = rawHeight > 0x7fffffff ? 0x100000000 - rawHeight : rawHeight;
    const bool bottomUp = rawHeight <= 0x7fffffff;
    if ((bits != 24 && bits != 32) || width <= 0 || width > 8192 || height <= 0 || height > 8192)
        return QImage();
    const qint64 stride = (width * bits / 8 + 3) / 4 * 4;
    if (offset < 0 || offset + stride * height > data.size())
        return QImage();
    QImage image(int(width), int(height), QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        const auto *row = reinterpret_cast<const unsigned char *>(data.constData() + offset
                                                                   + stride * (bottomUp ? height - 1 - y : y));
        auto *out = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x, row += bits / 8)
            out[x] = qRgb(row[2], row[1], row[0]);
    }
    return image;
}

QPixmap Title::picture(const QString &path)
{
    // The picture drawn at build time; drawn here only when it is missing
    // or is not a plain bitmap of the splash's size.
    const QImage prepared = readPlainBitmap(path);
    if (prepared.size() == TitleArtwork::size())
        return QPixmap::fromImage(prepared);
    return QPixmap::fromImage(TitleArtwork::draw(TitleArtwork::size()));
}

void Title::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
}
