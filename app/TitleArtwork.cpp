#include "app/TitleArtwork.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

QString TitleArtwork::fileName()
{
    return QStringLiteral("TITLE.BMP");
}

QSize TitleArtwork::size()
{
    return QSize(560, 340);
}

QImage TitleArtwork::draw(const QSize &size)
{
    QImage picture(size, QImage::Format_RGB32);
    QPainter p(&picture);
    p.setRenderHint(QPainter::Antialiasing);

    const QRectF all(QPointF(0, 0), QSizeF(size));
    QLinearGradient sky(all.topLeft(), all.bottomLeft());
    sky.setColorAt(0.0, QColor(0x2b, 0x3a, 0x67));
    sky.setColorAt(0.6, QColor(0x6b, 0x5b, 0x95));
    sky.setColorAt(1.0, QColor(0xf2, 0xa6, 0x5a));
    p.fillRect(all, sky);

    // The lantern's glow.
    const QPointF centre(size.width() * 0.27, size.height() * 0.52);
    QRadialGradient glow(centre, size.height() * 0.45);
    glow.setColorAt(0.0, QColor(255, 214, 130, 200));
    glow.setColorAt(1.0, QColor(255, 214, 130, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(centre, size.height() * 0.45, size.height() * 0.45);

    // A paper lantern: a rounded body with ribs, a cap and a foot.
    const double w = size.height() * 0.30;
    const double h = size.height() * 0.40;
    const QRectF body(centre.x() - w / 2, centre.y() - h / 2, w, h);
    QRadialGradient paper(centre, w * 0.7);
    paper.setColorAt(0.0, QColor(0xff, 0xf1, 0xc9));
    paper.setColorAt(1.0, QColor(0xe8, 0x6a, 0x3a));
    p.setBrush(paper);
    p.drawRoundedRect(body, w * 0.45, h * 0.35);
    p.setPen(QPen(QColor(0xb4, 0x45, 0x25, 150), 1.5));
    p.setBrush(Qt::NoBrush);
    for (int i = 1; i < 5; ++i) {
        const double y = body.top() + h * i / 5.0;
        const double inset = w * 0.08 * (i == 1 || i == 4 ? 1.6 : 0.4);
        p.drawLine(QPointF(body.left() + inset, y), QPointF(body.right() - inset, y));
    }
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x3b, 0x2a, 0x20));
    p.drawRoundedRect(QRectF(centre.x() - w * 0.28, body.top() - h * 0.07, w * 0.56, h * 0.09), 3, 3);
    p.drawRoundedRect(QRectF(centre.x() - w * 0.28, body.bottom() - h * 0.02, w * 0.56, h * 0.09), 3, 3);
    p.setPen(QPen(QColor(0x3b, 0x2a, 0x20), 2));
    p.drawLine(QPointF(centre.x(), body.top() - h * 0.07), QPointF(centre.x(), 0));

    // The name.
    p.setPen(QColor(0xff, 0xf6, 0xe0));
    QFont name(QStringLiteral("Noto Serif CJK JP"));
    name.setPixelSize(size.height() / 7);
    name.setBold(true);
    p.setFont(name);
    const QRectF text(size.width() * 0.47, size.height() * 0.28, size.width() * 0.5, size.height() * 0.25);
    p.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Lantern"));
    QFont sub(QStringLiteral("Noto Sans CJK JP"));
    sub.setPixelSize(size.height() / 16);
    p.setFont(sub);
    p.drawText(text.translated(0, size.height() * 0.2), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("やさしい文書づくり"));
    p.setPen(QColor(0xff, 0xf6, 0xe0, 180));
    p.drawText(QRectF(0, size.height() * 0.86, size.width() - 18, size.height() * 0.1), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("Fernwick Nib 2007　準備しています…"));
    p.end();
    return picture;
}
