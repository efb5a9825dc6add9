#include "platform/touch/TouchTheme.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QRect>

QColor TouchTheme::paper() { return QColor(0xFF, 0xFA, 0xEE); }
QColor TouchTheme::buttonTop() { return QColor(0xFF, 0xFD, 0xF7); }
QColor TouchTheme::buttonBottom() { return QColor(0xF5, 0xE6, 0xCC); }
QColor TouchTheme::hoverTop() { return QColor(0xFF, 0xF4, 0xDE); }
QColor TouchTheme::hoverBottom() { return QColor(0xFD, 0xE4, 0xBE); }
QColor TouchTheme::downTop() { return QColor(0xF6, 0xBE, 0x7C); }
QColor TouchTheme::downBottom() { return QColor(0xFB, 0xD6, 0xA4); }
QColor TouchTheme::disabledFace() { return QColor(0xEE, 0xEA, 0xE3); }

QColor TouchTheme::titleBar(bool active)
{
    return active ? QColor(0x8A, 0x4B, 0x20) : QColor(0xC9, 0xBE, 0xB0);
}

QColor TouchTheme::titleText(bool active)
{
    return active ? QColor(0xFF, 0xF8, 0xEC) : QColor(0x4A, 0x3B, 0x2E);
}

QColor TouchTheme::ink() { return QColor(0x3A, 0x24, 0x12); }
QColor TouchTheme::inkDisabled() { return QColor(0x9C, 0x92, 0x87); }
QColor TouchTheme::promptInk() { return QColor(0x8F, 0x7A, 0x66); }
QColor TouchTheme::border() { return QColor(0xC8, 0xA0, 0x74); }
QColor TouchTheme::accent() { return QColor(0xE0, 0x7B, 0x28); }
QColor TouchTheme::accentDark() { return QColor(0xB8, 0x5A, 0x12); }

QColor TouchTheme::shadow(int alpha)
{
    return QColor(0x5A, 0x3A, 0x1A, alpha);
}

QFont TouchTheme::captionFont(int pixelSize)
{
    QFont font;
    font.setFamilies({QStringLiteral("Noto Sans CJK JP"), QStringLiteral("IPAexGothic"), QStringLiteral("Sans Serif")});
    font.setPixelSize(pixelSize);
    font.setWeight(QFont::Medium);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

QFont TouchTheme::titleFont(int pixelSize)
{
    QFont font = captionFont(pixelSize);
    font.setWeight(QFont::Bold);
    return font;
}

int TouchTheme::smallestPixelSize()
{
    return 11;
}

int TouchTheme::pixelSize(const QFont &font)
{
    return font.pixelSize() > 0 ? font.pixelSize() : qRound(font.pointSizeF() * 96.0 / 72.0);
}

QFont TouchTheme::fittedFont(const QFont &font, const QString &text, const QRect &box, int flags)
{
    QFont fitted = font;
    if (text.isEmpty() || box.width() <= 0 || box.height() <= 0)
        return fitted;
    int size = pixelSize(font);
    fitted.setPixelSize(size);
    while (size > smallestPixelSize()) {
        const QRect needed = QFontMetrics(fitted).boundingRect(box, flags, text);
        if (needed.width() <= box.width() && needed.height() <= box.height())
            break;
        --size;
        fitted.setPixelSize(size);
    }
    return fitted;
}

void TouchTheme::paintShadow(QPainter &painter, const QRectF &body, qreal radius, int depth)
{
    painter.save();
    painter.setPen(Qt::NoPen);
    // Layers that grow and fade give a soft edge without a blur pass.
    for (int i = depth; i >= 1; --i) {
        const qreal grow = i;
        QRectF layer = body.translated(depth * 0.35, depth * 0.55).adjusted(-grow * 0.4, -grow * 0.4, grow * 0.6, grow * 0.6);
        painter.setBrush(shadow(qMax(4, 34 / i)));
        painter.drawRoundedRect(layer, radius + grow * 0.5, radius + grow * 0.5);
    }
    painter.restore();
}
