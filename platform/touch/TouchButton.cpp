#include "platform/touch/TouchButton.h"

#include "platform/touch/CaptionLayout.h"
#include "platform/touch/SkinSound.h"
#include "platform/touch/TouchButtonAccessible.h"
#include "platform/touch/TouchTheme.h"

#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

// Room around the face for its shadow and for the one-pixel drop when pressed.
constexpr int Margin = 3;

} // namespace

TouchButton::TouchButton(QWidget *parent)
    : TouchButton(QString(), parent)
{
}

TouchButton::TouchButton(const QString &caption, QWidget *parent)
    : QAbstractButton(parent)
{
    TouchButtonAccessible::install();
    // The lasting pressed state is the button's checked state; a click only
    // flips it when the button is used as a check box (see nextCheckState).
    setCheckable(true);
    connect(this, &QAbstractButton::toggled, this, &TouchButton::valueChanged);

    setFont(TouchTheme::captionFont());
    setIconSize(QSize(48, 48));
    // A click must not pull the keyboard focus away from the document being
    // typed into; keyboard users still reach the button with Tab.
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setCaption(caption);
}

QString TouchButton::caption() const
{
    return text();
}

void TouchButton::setCaption(const QString &caption)
{
    setText(caption);
    setAccessibleName(caption);
    updateGeometry();
    update();
}

QString TouchButton::tip() const
{
    return m_tip;
}

void TouchButton::setTip(const QString &tip)
{
    m_tip = tip;
    setAccessibleDescription(tip);
}

bool TouchButton::value() const
{
    return isChecked();
}

void TouchButton::setValue(bool pressed)
{
    setChecked(pressed);
}

bool TouchButton::toggles() const
{
    return m_toggles;
}

void TouchButton::setToggles(bool toggles)
{
    m_toggles = toggles;
    updateGeometry();
    update();
}

void TouchButton::setPicture(const QPixmap &picture)
{
    setIcon(picture.isNull() ? QIcon() : QIcon(picture));
    updateGeometry();
    update();
}

QString TouchButton::soundFile() const
{
    return m_soundFile;
}

void TouchButton::setSoundFile(const QString &path)
{
    m_soundFile = path;
}

int TouchButton::index() const
{
    return m_index;
}

void TouchButton::setIndex(int index)
{
    m_index = index;
}

bool TouchButton::hitButton(const QPoint &pos) const
{
    // A hand that drifts a little while clicking still clicks.
    const int slack = qMax(6, TouchTheme::pixelSize(font()) / 3);
    return rect().adjusted(-slack, -slack, slack, slack).contains(pos);
}

void TouchButton::nextCheckState()
{
    if (m_toggles)
        QAbstractButton::nextCheckState();
}

void TouchButton::playSound()
{
    qint16 suppress = 0;
    emit soundQuery(suppress);
    if (suppress != 0)
        return;
    if (SkinSound::play(m_soundFile))
        emit soundPlayed(m_soundFile);
}

void TouchButton::mousePressEvent(QMouseEvent *event)
{
    QAbstractButton::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && isDown())
        playSound();
}

void TouchButton::keyPressEvent(QKeyEvent *event)
{
    const bool wasDown = isDown();
    QAbstractButton::keyPressEvent(event);
    if (!wasDown && isDown() && !event->isAutoRepeat())
        playSound();
}

void TouchButton::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    m_hovered = true;
    update();
    emit pointerEntered();
}

void TouchButton::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    m_hovered = false;
    update();
    emit pointerLeft();
}

// ----- size -----------------------------------------------------------------

int TouchButton::captionFlags() const
{
    // A check box reads as a line of text after its square.
    const int alignment = m_toggles ? (Qt::AlignLeft | Qt::AlignVCenter) : Qt::AlignCenter;
    return alignment;
}

int TouchButton::naturalCaptionWidth() const
{
    const QFontMetrics metrics(font());
    int widest = 0;
    for (const QString &line : text().split(QLatin1Char('\n')))
        widest = qMax(widest, metrics.horizontalAdvance(line));
    return widest;
}

// The widest part of the caption that no line break may fall inside.
int TouchButton::widestPieceWidth() const
{
    const QFontMetrics metrics(font());
    int widest = 0;
    for (const QString &line : text().split(QLatin1Char('\n'))) {
        for (const QString &piece : CaptionLayout::pieces(line))
            widest = qMax(widest, metrics.horizontalAdvance(piece.trimmed()));
    }
    return widest;
}

QSize TouchButton::minimumSizeHint() const
{
    // Big enough to hit with an unsteady hand, whatever the caption.
    const int px = TouchTheme::pixelSize(font());
    return QSize(qMax(56, qRound(px * 2.5)), qMax(52, qRound(px * 2.3)));
}

QSize TouchButton::sizeHint() const
{
    const int px = TouchTheme::pixelSize(font());
    const int sidePadding = 2 * (Margin + qRound(px * 0.6));
    // Long captions wrap at about ten characters rather than making a bar.
    int width = qMax(widestPieceWidth(), qMin(naturalCaptionWidth(), px * 10)) + sidePadding;
    if (m_toggles)
        width += checkMarkSize() + px / 3;
    if (!icon().isNull())
        width = qMax(width, iconSize().width() + sidePadding);
    width = qMax(width, minimumSizeHint().width());
    return QSize(width, heightForWidth(width));
}

bool TouchButton::hasHeightForWidth() const
{
    return true;
}

int TouchButton::heightForWidth(int width) const
{
    const int px = TouchTheme::pixelSize(font());
    int textWidth = width - 2 * (Margin + qRound(px * 0.6));
    if (m_toggles)
        textWidth -= checkMarkSize() + px / 3;
    textWidth = qMax(1, textWidth);
    int height = 2 * (Margin + qRound(px * 0.4));
    if (!text().isEmpty()) {
        const QFontMetrics metrics(font());
        const QStringList lines = CaptionLayout::lines(text(), metrics, textWidth);
        height += int(std::max<qsizetype>(1, lines.size())) * metrics.lineSpacing();
    }
    if (!icon().isNull())
        height += iconSize().height() + (text().isEmpty() ? 0 : px / 3);
    return qMax(height, minimumSizeHint().height());
}

QList<QRect> TouchButton::captionCharacterRects() const
{
    const QString caption = text();
    QList<QRect> rects(caption.size());
    if (caption.isEmpty())
        return rects;
    const QRect box = captionBox(contentBox());
    const CaptionLayout::Fitted fitted = CaptionLayout::fit(font(), caption, box.size(), true);
    const QFontMetrics metrics(fitted.font);
    const QStringList lines = fitted.text.split(u'\n');
    // Lines stand centred as a block, each centred or, on a check box, at the left.
    int top = box.top() + (box.height() - int(lines.size()) * metrics.lineSpacing()) / 2;
    qsizetype at = 0; // the caption's character the next shown one is
    for (const QString &line : lines) {
        const int width = metrics.horizontalAdvance(line);
        const int left = m_toggles ? box.left() : box.left() + (box.width() - width) / 2;
        for (qsizetype i = 0; i < line.size(); ++i) {
            // Spaces and breaks that the layout took show nowhere.
            while (at < caption.size() && caption.at(at) != line.at(i))
                ++at;
            if (at == caption.size())
                return rects;
            rects[at++] = QRect(left + metrics.horizontalAdvance(line.left(i)), top,
                                metrics.horizontalAdvance(line.at(i)), metrics.height());
        }
        top += metrics.lineSpacing();
    }
    return rects;
}

// The size hints above ask for roomy padding; when a layout or a fixed
// geometry gives less, the caption may use the face nearly to its edge.
QRect TouchButton::contentBox() const
{
    const int px = TouchTheme::pixelSize(font());
    const int side = Margin + qRound(px * 0.35);
    const int top = Margin + qRound(px * 0.2);
    return rect().adjusted(side, top, -side, -top);
}

int TouchButton::checkMarkSize() const
{
    return qRound(TouchTheme::pixelSize(font()) * 1.1);
}

QRect TouchButton::captionBox(const QRect &content) const
{
    const int px = TouchTheme::pixelSize(font());
    QRect box = content;
    if (m_toggles)
        box.setLeft(box.left() + checkMarkSize() + px / 3);
    if (!icon().isNull())
        box.setTop(box.top() + iconSize().height() + px / 3);
    return box;
}

void TouchButton::paintCheckMark(QPainter &painter, const QRect &content) const
{
    // A check box shows an empty square or a ticked one, so "on" never
    // depends on the colour of the face alone.
    const qreal d = checkMarkSize();
    const QRectF square(content.left(), content.center().y() - d / 2.0 + 0.5, d, d);
    const bool enabled = isEnabled();
    painter.save();
    if (value()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(enabled ? TouchTheme::accentDark() : TouchTheme::inkDisabled());
    } else {
        painter.setPen(QPen(enabled ? TouchTheme::border().darker(115) : TouchTheme::inkDisabled(), 2.0));
        painter.setBrush(Qt::white);
    }
    painter.drawRoundedRect(square, d / 5.0, d / 5.0);
    if (value()) {
        QPainterPath tick;
        tick.moveTo(square.left() + d * 0.22, square.top() + d * 0.52);
        tick.lineTo(square.left() + d * 0.42, square.top() + d * 0.72);
        tick.lineTo(square.left() + d * 0.78, square.top() + d * 0.30);
        painter.setPen(QPen(Qt::white, qMax<qreal>(2.5, d / 6.5), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
    }
    painter.restore();
}

// ----- painting -------------------------------------------------------------

void TouchButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    const bool enabled = isEnabled();
    const bool down = isDown();
    const bool sunken = down || value();
    QRectF face = QRectF(rect()).adjusted(Margin - 1, Margin - 2, -(Margin - 1), -Margin - 1);
    const qreal radius = qMin<qreal>(14.0, face.height() / 4.0);

    if (enabled && !down)
        TouchTheme::paintShadow(painter, face, radius, value() ? 2 : 4);
    if (down)
        face.translate(0, 1.5);

    QLinearGradient fill(face.topLeft(), face.bottomLeft());
    if (!enabled) {
        fill.setColorAt(0, TouchTheme::disabledFace());
        fill.setColorAt(1, TouchTheme::disabledFace());
    } else if (sunken) {
        fill.setColorAt(0, TouchTheme::downTop());
        fill.setColorAt(1, TouchTheme::downBottom());
    } else if (m_hovered) {
        fill.setColorAt(0, TouchTheme::hoverTop());
        fill.setColorAt(1, TouchTheme::hoverBottom());
    } else {
        fill.setColorAt(0, TouchTheme::buttonTop());
        fill.setColorAt(1, TouchTheme::buttonBottom());
    }

    QPen frame(TouchTheme::border(), 1.5);
    if (!enabled)
        frame.setColor(TouchTheme::border().lighter(125));
    else if (sunken)
        frame = QPen(TouchTheme::accentDark(), 2.5);
    else if (m_hovered)
        frame = QPen(TouchTheme::accent(), 2.5);
    painter.setPen(frame);
    painter.setBrush(fill);
    painter.drawRoundedRect(face, radius, radius);

    // A thin light line under the top edge makes a raised face read as raised.
    if (enabled && !sunken) {
        painter.setPen(QPen(QColor(255, 255, 255, 200), 1.2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(face.adjusted(2, 2, -2, -2), radius - 1.5, radius - 1.5);
    }

    QRect content = contentBox();
    if (down)
        content.translate(0, 1);
    if (!icon().isNull()) {
        const QRect iconArea = text().isEmpty()
            ? content
            : QRect(content.left(), content.top(), content.width(), iconSize().height());
        const QIcon::Mode mode = enabled ? QIcon::Normal : QIcon::Disabled;
        icon().paint(&painter, iconArea, Qt::AlignCenter, mode, value() ? QIcon::On : QIcon::Off);
    }

    if (!text().isEmpty()) {
        const QRect box = captionBox(content);
        const CaptionLayout::Fitted caption = CaptionLayout::fit(font(), text(), box.size(), true);
        painter.setFont(caption.font);
        painter.setPen(enabled ? TouchTheme::ink() : TouchTheme::inkDisabled());
        painter.drawText(box, captionFlags(), caption.text);
    }

    if (m_toggles)
        paintCheckMark(painter, content);

    // The focus ring is for keyboard users only; a mouse click never takes focus.
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        painter.setPen(QPen(TouchTheme::accentDark(), 1.5, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(face.adjusted(4, 4, -4, -4), radius - 3, radius - 3);
    }
}
