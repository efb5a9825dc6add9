#include "platform/touch/TouchEdit.h"

#include "platform/touch/TouchTheme.h"

#include <QFocusEvent>

namespace {

int pixelSizeOf(const QFont &font)
{
    return font.pixelSize() > 0 ? font.pixelSize() : qRound(font.pointSizeF() * 96.0 / 72.0);
}

} // namespace

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
    const int px = pixelSizeOf(font());
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
    return placeholderText();
}

void TouchEdit::setPrompt(const QString &prompt)
{
    setPlaceholderText(prompt);
    updateAccessibleName();
}

void TouchEdit::updateAccessibleName()
{
    setAccessibleName(m_caption.isEmpty() ? placeholderText() : m_caption);
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
    const int promptWidth = QFontMetrics(font()).horizontalAdvance(placeholderText()) + pixelSizeOf(font()) * 2;
    return QSize(qMax(base.width(), promptWidth), qMax(base.height(), minimumSizeHint().height()));
}

QSize TouchEdit::minimumSizeHint() const
{
    const int px = pixelSizeOf(font());
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
