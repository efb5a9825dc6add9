#include "platform/touch/TouchEdit.h"

#include "platform/touch/CaptionLayout.h"
#include "platform/touch/TouchTheme.h"

#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QPainter>
#include <QStyleOptionFrame>

TouchEdit::TouchEdit(QWidget *parent)
    : QLineEdit(parent)
{
    setFont(TouchTheme::captionFont());
    setCursor(Qt::IBeamCursor);
    applyLook();
}

void TouchEdit::applyLook()
{
    // Padding grows with the type, so a scaled field keeps its proportions.
    const int px = TouchTheme::pixelSize(font());
    if (px == m_lookPixelSize)
        return;
    m_lookPixelSize = px;
    // The field draws its own rounded frame (see paintEvent); a style sheet
    // would do the same, but loading the style-sheet machinery costs more
    // than the whole window takes to appear.
    setFrame(false);
    const int across = qMax(6, px / 2) + FrameWidth;
    const int down = qMax(4, px / 4) + FrameWidth;
    setTextMargins(across, down, across, down);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, TouchTheme::ink());
    colours.setColor(QPalette::Disabled, QPalette::Text, TouchTheme::inkDisabled());
    colours.setColor(QPalette::PlaceholderText, TouchTheme::promptInk());
    colours.setColor(QPalette::Highlight, TouchTheme::accent());
    colours.setColor(QPalette::HighlightedText, Qt::white);
    setPalette(colours);
}

void TouchEdit::paintFrame()
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool focused = hasFocus();
    QColor paper(0xFF, 0xFF, 0xFF);
    QPen edge(TouchTheme::border(), FrameWidth);
    if (!isEnabled()) {
        paper = TouchTheme::disabledFace();
    } else if (focused) {
        paper = QColor(0xFF, 0xFE, 0xF8);
        edge = QPen(TouchTheme::accentDark(), FrameWidth + 1);
    } else if (m_hovered) {
        edge.setColor(TouchTheme::accent());
    }
    const qreal inset = edge.widthF() / 2;
    const qreal radius = qMax(6, m_lookPixelSize / 2);
    painter.setPen(edge);
    painter.setBrush(paper);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

void TouchEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        applyLook();
}

QString TouchEdit::caption() const
{
    return m_caption;
}

void TouchEdit::setCaption(const QString &caption)
{
    m_caption = caption;
    updateAccessibleName();
}

QString TouchEdit::tip() const
{
    return m_tip;
}

void TouchEdit::setTip(const QString &tip)
{
    m_tip = tip;
    setAccessibleDescription(tip);
}

QString TouchEdit::prompt() const
{
    return m_prompt;
}

void TouchEdit::setPrompt(const QString &prompt)
{
    m_prompt = prompt;
    updateAccessibleName();
    updateGeometry();
    update();
}

void TouchEdit::updateAccessibleName()
{
    setAccessibleName(m_caption.isEmpty() ? m_prompt : m_caption);
}

int TouchEdit::imeMode() const
{
    return m_imeMode;
}

void TouchEdit::setImeMode(int mode)
{
    if (mode == m_imeMode)
        return;
    m_imeMode = mode;
    // Qt itself knows "no input method" and "prefer Latin"; the kana modes are
    // for the input-method bridge to switch.
    setAttribute(Qt::WA_InputMethodEnabled, mode != ImeDisable);
    const bool latin = mode == ImeOff || mode == ImeAlpha || mode == ImeAlphaFull;
    setInputMethodHints(latin ? Qt::ImhPreferLatin : Qt::ImhNone);
    emit imeModeChanged(mode);
}

int TouchEdit::index() const
{
    return m_index;
}

void TouchEdit::setIndex(int index)
{
    m_index = index;
}

QSize TouchEdit::sizeHint() const
{
    const QSize base = QLineEdit::sizeHint();
    const int promptWidth = QFontMetrics(font()).horizontalAdvance(m_prompt) + TouchTheme::pixelSize(font()) * 2;
    return QSize(qMax(base.width(), promptWidth), qMax(base.height(), minimumSizeHint().height()));
}

QSize TouchEdit::minimumSizeHint() const
{
    const int px = TouchTheme::pixelSize(font());
    return QSize(px * 4, qMax(QLineEdit::minimumSizeHint().height(), qRound(px * 2.2)));
}

void TouchEdit::enterEvent(QEnterEvent *event)
{
    QLineEdit::enterEvent(event);
    m_hovered = true;
    update();
    emit pointerEntered();
}

void TouchEdit::leaveEvent(QEvent *event)
{
    QLineEdit::leaveEvent(event);
    m_hovered = false;
    update();
    emit pointerLeft();
}

void TouchEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    update();
    emit focusEntered();
}

void TouchEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    update();
}

void TouchEdit::inputMethodEvent(QInputMethodEvent *event)
{
    // While the input method composes, the field is not empty to the eye.
    m_composing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
    update();
}

void TouchEdit::paintEvent(QPaintEvent *event)
{
    paintFrame();
    // The text, its selection and the caret, over the frame.
    QLineEdit::paintEvent(event);
    if (m_prompt.isEmpty() || !text().isEmpty() || m_composing)
        return;
    QStyleOptionFrame option;
    initStyleOption(&option);
    QRect box = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    const QMargins margins = textMargins();
    box = box.adjusted(margins.left() + 2, margins.top(), -margins.right() - 2, -margins.bottom());
    // A prompt too long for one line takes two rather than tiny type.
    const CaptionLayout::Fitted prompt = CaptionLayout::fit(font(), m_prompt, box.size(), true);
    QPainter painter(this);
    painter.setFont(prompt.font);
    painter.setPen(TouchTheme::promptInk());
    painter.drawText(box, Qt::AlignLeft | Qt::AlignVCenter, prompt.text);
}
