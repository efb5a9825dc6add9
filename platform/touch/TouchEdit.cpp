#include "platform/touch/TouchEdit.h"

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
    const int radius = qMax(6, px / 2);
    // Colours go through the palette: a style-sheet colour would also paint
    // the prompt, only paler, and the prompt has a colour of its own.
    setStyleSheet(QStringLiteral(
        "TouchEdit { background: #FFFFFF; border: 2px solid %1; border-radius: %2px;"
        " padding: %3px %4px; selection-background-color: %5; selection-color: #FFFFFF; }"
        "TouchEdit:hover { border-color: %5; }"
        "TouchEdit:focus { border: 3px solid %6; background: #FFFEF8; }"
        "TouchEdit:disabled { background: %7; }")
        .arg(TouchTheme::border().name())
        .arg(radius)
        .arg(qMax(4, px / 4))
        .arg(qMax(6, px / 2))
        .arg(TouchTheme::accent().name(), TouchTheme::accentDark().name(), TouchTheme::disabledFace().name()));
    QPalette colours = palette();
    colours.setColor(QPalette::Text, TouchTheme::ink());
    colours.setColor(QPalette::Disabled, QPalette::Text, TouchTheme::inkDisabled());
    colours.setColor(QPalette::PlaceholderText, TouchTheme::promptInk());
    setPalette(colours);
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
    emit pointerEntered();
}

void TouchEdit::leaveEvent(QEvent *event)
{
    QLineEdit::leaveEvent(event);
    emit pointerLeft();
}

void TouchEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    emit focusEntered();
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
    QLineEdit::paintEvent(event);
    if (m_prompt.isEmpty() || !text().isEmpty() || m_composing)
        return;
    QStyleOptionFrame option;
    initStyleOption(&option);
    QRect box = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    const QMargins margins = textMargins();
    box = box.adjusted(margins.left() + 2, margins.top(), -margins.right() - 2, -margins.bottom());
    const int flags = Qt::AlignLeft | Qt::AlignVCenter;
    QPainter painter(this);
    painter.setFont(TouchTheme::fittedFont(font(), m_prompt, box, flags));
    painter.setPen(TouchTheme::promptInk());
    painter.drawText(box, flags, m_prompt);
}
