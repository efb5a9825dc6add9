#include "platform/touch/TouchTheme.h"

#include <QFontMetrics>
#include <QHash>
#include <QImage>
#include <QPair>
#include <QtMath>
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

QStringList TouchTheme::faces()
{
    return familiesFor(uiFace());
}

QString TouchTheme::uiFace() { return QStringLiteral("MS UI Gothic"); }
QString TouchTheme::titleFace() { return QStringLiteral("メイリオ"); }

QStringList TouchTheme::familiesFor(const QString &designFace)
{
    // The design face leads, so that the font adapter finds and moves it; the
    // installed faces behind it draw until then. IPAex Gothic first: a screen
    // of large captions is shaped and drawn for the first time in about half
    // the time it takes with Noto Sans CJK, whose collection of faces is three
    // times the size.
    return {designFace, QStringLiteral("IPAexGothic"), QStringLiteral("Noto Sans CJK JP"), QStringLiteral("IPAGothic"),
            QStringLiteral("Sans Serif")};
}

QFont TouchTheme::captionFont(int pixelSize)
{
    QFont font;
    font.setFamilies(faces());
    font.setPixelSize(pixelSize);
    font.setWeight(QFont::Medium);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

QFont TouchTheme::titleFont(int pixelSize)
{
    QFont font = captionFont(pixelSize);
    font.setFamilies(familiesFor(titleFace()));
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

    // Every repaint of every caption asks again, and each size tried costs a
    // text layout (and, the first time, a font of that size): answers are kept.
    static QHash<QString, int> known;
    const QString key = QStringLiteral("%1|%2|%3x%4|%5").arg(font.key(), text).arg(box.width()).arg(box.height()).arg(flags);
    const auto found = known.constFind(key);
    if (found != known.cend()) {
        fitted.setPixelSize(found.value());
        return fitted;
    }
    if (known.size() > 512)
        known.clear();

    int size = pixelSize(font);
    fitted.setPixelSize(size);
    while (size > smallestPixelSize()) {
        const QRect needed = QFontMetrics(fitted).boundingRect(box, flags, text);
        if (needed.width() <= box.width() && needed.height() <= box.height())
            break;
        --size;
        fitted.setPixelSize(size);
    }
    known.insert(key, size);
    return fitted;
}

namespace {

// Layers that grow and fade give a soft edge without a blur pass.
void paintShadowLayers(QPainter &painter, const QRectF &body, qreal radius, int depth)
{
    painter.save();
    painter.setPen(Qt::NoPen);
    for (int i = depth; i >= 1; --i) {
        const qreal grow = i;
        QRectF layer = body.translated(depth * 0.35, depth * 0.55).adjusted(-grow * 0.4, -grow * 0.4, grow * 0.6, grow * 0.6);
        painter.setBrush(TouchTheme::shadow(qMax(4, 34 / i)));
        painter.drawRoundedRect(layer, radius + grow * 0.5, radius + grow * 0.5);
    }
    painter.restore();
}

// How far a shadow reaches outside its body, and how far in from each edge
// a corner of it still differs from the straight edge beside it.
int shadowReach(int depth) { return qCeil(depth * 1.2) + 1; }
int shadowCorner(qreal radius, int depth) { return shadowReach(depth) + qCeil(radius + depth * 1.1) + 1; }

// The shadow of a small body with the same corners, drawn once: its corners
// are used as they are and its middle row and column are stretched.
// Kept as images, which may outlive the application object.
const QImage &shadowTile(qreal radius, int depth)
{
    static QHash<QPair<int, int>, QImage> tiles;
    const QPair<int, int> key(qRound(radius * 16), depth);
    auto found = tiles.find(key);
    if (found != tiles.end())
        return found.value();
    const int reach = shadowReach(depth);
    const int corner = shadowCorner(radius, depth);
    const int side = 2 * corner + 1;
    QImage tile(side, side, QImage::Format_ARGB32_Premultiplied);
    tile.fill(Qt::transparent);
    QPainter painter(&tile);
    painter.setRenderHint(QPainter::Antialiasing);
    paintShadowLayers(painter, QRectF(reach, reach, side - 2 * reach, side - 2 * reach), radius, depth);
    painter.end();
    return tiles.insert(key, std::move(tile)).value();
}

} // namespace

void TouchTheme::paintShadow(QPainter &painter, const QRectF &body, qreal radius, int depth)
{
    const int reach = shadowReach(depth);
    const int corner = shadowCorner(radius, depth);
    const QRect area = body.toRect().adjusted(-reach, -reach, reach, reach);
    if (area.width() < 2 * corner + 1 || area.height() < 2 * corner + 1) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        paintShadowLayers(painter, body, radius, depth);
        painter.restore();
        return;
    }
    // Filling a large panel's whole shadow layer by layer costs milliseconds;
    // nine pieces of a small drawn shadow cost next to nothing. The middle is
    // left out: the opaque body covers it.
    const QImage &tile = shadowTile(radius, depth);
    const int side = tile.width();
    const int middle = side - 2 * corner;
    const int innerWidth = area.width() - 2 * corner;
    const int innerHeight = area.height() - 2 * corner;
    const int right = area.right() + 1 - corner;
    const int bottom = area.bottom() + 1 - corner;
    const int tileFar = side - corner;
    painter.drawImage(QRect(area.left(), area.top(), corner, corner), tile, QRect(0, 0, corner, corner));
    painter.drawImage(QRect(right, area.top(), corner, corner), tile, QRect(tileFar, 0, corner, corner));
    painter.drawImage(QRect(area.left(), bottom, corner, corner), tile, QRect(0, tileFar, corner, corner));
    painter.drawImage(QRect(right, bottom, corner, corner), tile, QRect(tileFar, tileFar, corner, corner));
    painter.drawImage(QRect(area.left() + corner, area.top(), innerWidth, corner), tile, QRect(corner, 0, middle, corner));
    painter.drawImage(QRect(area.left() + corner, bottom, innerWidth, corner), tile, QRect(corner, tileFar, middle, corner));
    painter.drawImage(QRect(area.left(), area.top() + corner, corner, innerHeight), tile, QRect(0, corner, corner, middle));
    painter.drawImage(QRect(right, area.top() + corner, corner, innerHeight), tile, QRect(tileFar, corner, corner, middle));
}
