#include "platform/agent/SpeechBalloon.h"
#include "platform/DesktopCompositing.h"
#include "platform/touch/TouchTheme.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QScreen>

namespace {

constexpr int FontPixels = 32;
constexpr int MaxTextWidth = 15 * FontPixels; // about fifteen characters a line
constexpr int Padding = 22;
constexpr int TailHeight = 26;
constexpr int Shadow = 5;
constexpr int Radius = 24;

QFont balloonFont()
{
    QFont font;
    font.setFamilies(TouchTheme::faces());
    font.setPixelSize(FontPixels);
    font.setWeight(QFont::Medium);
    return font;
}

} // namespace

SpeechBalloon::SpeechBalloon()
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::Tool | Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput)
    , m_background(0xFF, 0xFB, 0xEE)
    , m_border(0xC9, 0xA8, 0x6A)
    , m_textColour(0x4A, 0x36, 0x22)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFont(balloonFont());
    setWindowTitle(QStringLiteral("Lantern balloon"));
}

void SpeechBalloon::setColours(const QColor &background, const QColor &border, const QColor &text)
{
    m_background = background;
    m_border = border;
    m_textColour = text;
    update();
}

void SpeechBalloon::showText(const QString &text, const QRect &character)
{
    m_text = text;
    const QFontMetrics metrics(font());
    const QRect textBox = metrics.boundingRect(QRect(0, 0, MaxTextWidth, 10000),
                                               Qt::TextWordWrap | Qt::AlignLeft, m_text);
    const int width = std::max(textBox.width(), 3 * FontPixels) + 2 * Padding + Shadow;
    const int height = textBox.height() + 2 * Padding + TailHeight + Shadow;
    setFixedSize(width, height);
    follow(character);
    show();
    raise();
    update();
}

void SpeechBalloon::follow(const QRect &character)
{
    const QScreen *screen = QGuiApplication::screenAt(character.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1920, 1080);

    m_tailDown = character.top() - height() >= area.top();
    const int y = m_tailDown ? character.top() - height() + 4 : character.bottom() - 4;
    const int x = std::clamp(character.center().x() - width() / 2, area.left(), std::max(area.left(), area.right() - width()));
    m_tailX = std::clamp(character.center().x() - x, Radius + 10, width() - Radius - 10 - Shadow);
    move(x, y);
    update();
}

QRect SpeechBalloon::textArea() const
{
    const int top = m_tailDown ? 0 : TailHeight;
    return QRect(Padding, top + Padding, width() - 2 * Padding - Shadow, height() - TailHeight - 2 * Padding - Shadow);
}

void SpeechBalloon::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);

    const int top = m_tailDown ? 0 : TailHeight;
    const QRectF body(1.5, top + 1.5, width() - Shadow - 3, height() - TailHeight - Shadow - 3);
    QPainterPath path;
    path.addRoundedRect(body, Radius, Radius);
    QPainterPath tail;
    if (m_tailDown) {
        tail.moveTo(m_tailX - 16, body.bottom() - 2);
        tail.lineTo(m_tailX + 2, height() - Shadow - 2);
        tail.lineTo(m_tailX + 16, body.bottom() - 2);
    } else {
        tail.moveTo(m_tailX - 16, body.top() + 2);
        tail.lineTo(m_tailX + 2, 2);
        tail.lineTo(m_tailX + 16, body.top() + 2);
    }
    tail.closeSubpath();
    path = path.united(tail);
    if (!DesktopCompositing::active()) {
        // Without a compositor the corners would show black: cut the window
        // to the balloon and its shadow.
        const QRegion shape = QRegion(path.toFillPolygon().toPolygon())
                                  .united(QRegion(path.translated(Shadow, Shadow).toFillPolygon().toPolygon()));
        if (mask() != shape)
            setMask(shape);
    }

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 40));
    painter.drawPath(path.translated(Shadow, Shadow));
    painter.setBrush(m_background);
    painter.setPen(QPen(m_border, 3));
    painter.drawPath(path);

    painter.setPen(m_textColour);
    painter.drawText(textArea(), Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignVCenter, m_text);
}
