#include "tools/InfoDlg.h"

#include <cmath>
#include "platform/touch/TouchPanel.h"
#include "app/Globals.h"
#include "platform/keys/KeySender.h"
#include "platform/vb/VbStrConv.h"
#include "tools/HandwritingPad.h"
#include "tools/KeypadView.h"

#include <QApplication>
#include <QResizeEvent>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr int ButtonCount = 22;
constexpr int MonitorInterval = 200; // ms
constexpr int RepeatDelay = 400;     // ms before a held movement button repeats
constexpr int RepeatInterval = 80;   // ms between repeats

// The captions of the command buttons, by index.
const char16_t *const Captions[ButtonCount] = {
    // clang-format off
    u"閉じる", u"スペース", u"削除", u"しまう", u"←", u"→", u"↑", u"↓", u"空白", u"削除", u"改行",
    u"ABC", u"あ", u"ア", u"記号1", u"記号2", u"漢字", u"変換", u"無変換", u"確定", u"取消",
    u"手書き",
};
// clang-format on

// The order in which the command buttons stand in their row.
const int ButtonOrder[ButtonCount] = {11, 12, 13, 14, 15, 21, 16, 1, 17, 18, 19, 20, 4, 6, 7, 5, 8, 10, 2, 9, 3, 0};

bool inRange(int value, int low, int high)
{
    return value >= low && value <= high;
}

// The calculator keys: the text each one gives, and its caption.
struct NumKey
{
    const char16_t *text;
    const char16_t *caption;
};

const NumKey NumKeyTable[20] = {
    // clang-format off
    {u"0", u"0"}, {u"1", u"1"}, {u"2", u"2"}, {u"3", u"3"}, {u"4", u"4"}, {u"5", u"5"}, {u"6", u"6"},
    {u"7", u"7"}, {u"8", u"8"}, {u"9", u"9"}, {u".", u"."}, {u"\b", u"←"}, {u"C", u"C"},
    {u"+", u"＋"}, {u"-", u"－"}, {u"*", u"×"}, {u"/", u"÷"}, {u"=", u"＝"}, {u"%", u"%"}, {u"±", u"±"},
};
// clang-format on

// Where the calculator keys stand: five rows of four.
const int NumKeyGrid[5][4] = {
    // clang-format off
    {12, 11, 18, 16}, {7, 8, 9, 15}, {4, 5, 6, 14}, {1, 2, 3, 13}, {0, 10, 19, 17},
};
// clang-format on

// A number in the format "0%": times one hundred, rounded half away from
// zero to a whole number, with a percent sign.
QString percentText(const Decimal &value)
{
    const QString digits = (value * Decimal(100)).toString();
    const bool negative = digits.startsWith(u'-');
    const QString plain = negative ? digits.mid(1) : digits;
    const qsizetype point = plain.indexOf(u'.');
    QString whole = point < 0 ? plain : plain.left(point);
    if (point >= 0 && point + 1 < plain.size() && plain.at(point + 1) >= u'5')
        whole = (Decimal::fromText(whole) + Decimal(1)).toString();
    const bool zero = whole.count(u'0') == whole.size();
    return (negative && !zero ? QStringLiteral("-") : QString()) + whole + u'%';
}

// A currency amount as the runtime writes it: no trailing zeros.
QString moneyText(const Currency &amount)
{
    QString text = amount.toString();
    if (text.contains(u'.')) {
        while (text.endsWith(u'0'))
            text.chop(1);
        if (text.endsWith(u'.'))
            text.chop(1);
    }
    return text;
}

} // namespace

InfoDlg::InfoDlg(QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(QStringLiteral("文字入力"));

    m_keys.loadSettings(KeyTable::installedTable());

    m_characterPage = new QWidget;
    buildCharacterPage(m_characterPage);
    m_calculatorPage = new QWidget;
    buildCalculatorPage(m_calculatorPage);
    m_calculatorPage->hide();
    // Both pads open stand side by side: the dialog stays as low as one.
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(m_calculatorPage, 0, Qt::AlignBottom);
    layout->addWidget(m_characterPage, 0, Qt::AlignBottom);

    // Large enough to read, small enough for the pads to fit on the screen.
    const QScreen *screen = QGuiApplication::primaryScreen();
    const int padsWidth = Numpad->sizeHint().width() + Keypads[KeyTable::Alpha]->sizeHint().width() + 40;
    setPadScale(screen ? qBound(1.0, 0.9 * screen->availableGeometry().width() / padsWidth, 2.0) : 1.0);

    // The dialog's music: the window gives this panel its tune, and it plays
    // while the skin's sounds are on.
    auto *music = new TouchPanel(this);
    music->setObjectName(QStringLiteral("MIDI"));
    music->hide();

    connect(&m_monitor, &QTimer::timeout, this, &InfoDlg::monitorInputMethod);
    m_monitor.start(MonitorInterval);
    monitorInputMethod();
}

void InfoDlg::buildCharacterPage(QWidget *page)
{
    auto *buttonRow = new QHBoxLayout;
    buttonRow->setSpacing(2);
    MiniChannels.resize(ButtonCount);
    auto *padGroup = new QButtonGroup(this);
    for (int index = 0; index < ButtonCount; ++index) {
        auto *button = new QToolButton;
        button->setText(QString::fromUtf16(Captions[index]));
        button->setToolTip(tip(index));
        button->setAccessibleName(button->text());
        button->setAccessibleDescription(button->toolTip());
        button->setFocusPolicy(Qt::NoFocus);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        if (inRange(index, 4, 7)) {
            button->setAutoRepeat(true);
            button->setAutoRepeatDelay(RepeatDelay);
            button->setAutoRepeatInterval(RepeatInterval);
        }
        if (inRange(index, 11, 15) || index == KeyTable::Handwriting) {
            button->setCheckable(true);
            padGroup->addButton(button);
        }
        if (index == 16)
            button->setCheckable(true);
        button->installEventFilter(this);
        connect(button, &QToolButton::clicked, this, [this, index, button] {
            // The click has already toggled the on/off button; the action toggles it itself.
            if (index == 16)
                button->setChecked(!button->isChecked());
            MiniChannels_Click(index);
        });
        MiniChannels[index] = button;
    }
    for (int index : ButtonOrder)
        buttonRow->addWidget(MiniChannels[index]);
    buttonRow->addStretch();

    Numpad = new KeypadView(KeyTable::Number, 4, 5, &m_keys);
    connect(Numpad, &KeypadView::mouseDown, this, &InfoDlg::Numpad_MouseDown);
    connect(Numpad, &KeypadView::mouseUp, this, &InfoDlg::Numpad_MouseUp);

    Keypads.fill(nullptr, KeyTable::Symbol2 + 1);
    auto *padStack = new QGridLayout;
    padStack->setContentsMargins(0, 0, 0, 0);
    for (qint32 pad = KeyTable::Alpha; pad <= KeyTable::Symbol2; ++pad) {
        auto *view = new KeypadView(pad, 20, 5, &m_keys);
        connect(view, &KeypadView::mouseDown, this, &InfoDlg::Keypads_MouseDown);
        connect(view, &KeypadView::mouseUp, this, &InfoDlg::Keypads_MouseUp);
        padStack->addWidget(view, 0, 0);
        Keypads[pad] = view;
    }
    Handwriting = new HandwritingPad;
    Handwriting->hide();
    connect(Handwriting, &HandwritingPad::candidateChosen, this, &InfoDlg::typeCandidate);
    connect(Handwriting, &HandwritingPad::HowTo, this, &InfoDlg::HowTo);
    padStack->addWidget(Handwriting, 0, 0, Qt::AlignLeft | Qt::AlignTop);
    if (!Handwriting->isAvailable())
        disableHandwriting();

    auto *pads = new QHBoxLayout;
    pads->addWidget(Numpad);
    pads->addLayout(padStack);
    pads->addStretch();

    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(buttonRow);
    layout->addLayout(pads);
    setPad(KeyTable::Hiragana);
}

void InfoDlg::buildCalculatorPage(QWidget *page)
{
    DisplayDigit = new QLabel;
    DisplayDigit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    DisplayDigit->setFrameShape(QFrame::Panel);
    DisplayDigit->setFrameShadow(QFrame::Sunken);
    DisplayDigit->setAutoFillBackground(true);
    DisplayDigit->setBackgroundRole(QPalette::Base);
    auto *grid = new QGridLayout;
    grid->setSpacing(2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    NumKeys.resize(20);
    for (int index = 0; index < 20; ++index) {
        auto *button = new QToolButton;
        button->setText(QString::fromUtf16(NumKeyTable[index].caption));
        button->setAccessibleName(button->text());
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QToolButton::clicked, this, [this, index] { NumKeys_Click(index); });
        NumKeys[index] = button;
    }
    for (int row = 0; row < 5; ++row)
        for (int column = 0; column < 4; ++column)
            grid->addWidget(NumKeys[NumKeyGrid[row][column]], row, column);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(DisplayDigit);
    layout->addLayout(grid);

    connect(&m_calculator, &Calculator::Change, this, &InfoDlg::Calculator_Change);
    m_calculator.Clear();
    showDisplay(m_calculator.Text(), QString());
}

void InfoDlg::showDisplay(const QString &first, const QString &second)
{
    DisplayDigit->setText(first + QStringLiteral("\r\n") + second);
}

void InfoDlg::NumKeys_Click(int index)
{
    if (!inRange(index, 0, 19))
        return;
    const QString key = QString::fromUtf16(NumKeyTable[index].text);
    try {
        if (index <= 11) {
            m_calculator.SetText(key.left(1));
            // The pending operator stays on the second line while a number is typed.
            showDisplay(m_calculator.Text(), DisplayDigit->text().section(QStringLiteral("\r\n"), 1));
        } else if (index == 12) {
            m_calculator.Clear();
            showDisplay(m_calculator.Text(), QString());
        } else if (index <= 17) {
            m_calculator.Eval(key.left(1));
            showDisplay(m_calculator.Text(), key.left(1));
        } else if (index == 18) {
            const Decimal percent = m_calculator.EvalPercent();
            DisplayDigit->setText(DisplayDigit->text() + percentText(percent));
        } else {
            // Sign change: the pending operation first, then times minus one.
            m_transferSuppressed = true;
            m_calculator.Eval(QStringLiteral("*"));
            m_calculator.SetText(QStringLiteral("-1"));
            m_calculator.Eval(QStringLiteral("="));
            m_transferSuppressed = false;
            Calculator_Change();
            showDisplay(m_calculator.Text(), QString());
        }
    } catch (const VbError &) {
        m_transferSuppressed = false;
        showDisplay(QStringLiteral("E"), QString());
    }
}

void InfoDlg::Calculator_Change()
{
    if (m_transferSuppressed || !(m_options & TransferResults))
        return;
    transferResult();
}

void InfoDlg::transferResult()
{
    Currency amount = m_calculator.Money();
    QWidget *focus = QApplication::focusWidget();
    if (!isTextControl(focus)) {
        emit ResultTransfer(amount);
        return;
    }
    const QString text = moneyText(amount);
    QLineEdit *line = qobject_cast<QLineEdit *>(focus);
    if (auto *combo = qobject_cast<QComboBox *>(focus))
        line = combo->lineEdit();
    if (line) {
        line->selectAll();
        line->insert(text);
    } else if (auto *rich = qobject_cast<QTextEdit *>(focus)) {
        QTextCursor cursor = rich->textCursor();
        cursor.select(QTextCursor::Document);
        cursor.insertText(text);
    } else if (auto *plain = qobject_cast<QPlainTextEdit *>(focus)) {
        QTextCursor cursor = plain->textCursor();
        cursor.select(QTextCursor::Document);
        cursor.insertText(text);
    }
}

void InfoDlg::setPadScale(double scale)
{
    if (m_scaled && std::abs(scale - m_scale) < 0.001)
        return;
    m_scale = scale;
    m_scaled = true;
    // The command buttons grow with the keys, so that both read alike; their
    // type is a little smaller than a key's legend, so that the whole row of
    // them stays within the pads' width.
    for (QAbstractButton *button : MiniChannels) {
        QFont font = button->font();
        font.setPixelSize(qRound(10.5 * scale));
        button->setFont(font);
        button->setMinimumSize(qRound(30 * scale), qRound(24 * scale));
    }
    for (QAbstractButton *button : NumKeys) {
        QFont font = button->font();
        font.setPixelSize(qRound(14 * scale));
        button->setFont(font);
        button->setFixedSize(qRound(40 * scale), qRound(30 * scale));
    }
    QFont displayFont = DisplayDigit->font();
    displayFont.setPixelSize(qRound(14 * scale));
    DisplayDigit->setFont(displayFont);
    DisplayDigit->setMinimumHeight(qRound(44 * scale));
    Numpad->setScale(scale);
    for (KeypadView *view : Keypads)
        if (view)
            view->setScale(scale);
    Handwriting->setScale(scale);
    if (isVisible()) {
        layout()->activate();
        resize(sizeHint());
    }
}

void InfoDlg::fitPadScale(double preferred, int room)
{
    if (m_fittedFor == std::pair(preferred, room) && frameGeometry().width() <= room)
        return;
    m_fittedFor = {preferred, room};
    setPadScale(preferred);
    // Not all of the dialog grows with the scale: a few rounds find the fit.
    for (int round = 0; round < 4; ++round) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        adjustSize();
        const int wide = frameGeometry().width();
        if (wide <= room)
            return;
        setPadScale(m_scale * room / wide - 0.005);
    }
}

void InfoDlg::Reload()
{
    m_keys.loadSettings(KeyTable::installedTable());
    Numpad->resetKeyInterfaces();
    Numpad->update();
    for (KeypadView *view : Keypads) {
        if (view) {
            view->resetKeyInterfaces();
            view->update();
        }
    }
    refreshButtons();
}

void InfoDlg::Begin(Mode mode)
{
    const bool calculator = mode == CalculatorMode;
    showPages(isOpen(CalculatorMode) || calculator, isOpen(CharacterMode) || !calculator);
}

void InfoDlg::Finish(Mode mode)
{
    const bool calculator = mode == CalculatorMode;
    showPages(isOpen(CalculatorMode) && !calculator, isOpen(CharacterMode) && calculator);
}

bool InfoDlg::isOpen(Mode mode) const
{
    const QWidget *page = mode == CalculatorMode ? m_calculatorPage : m_characterPage;
    return isVisible() && !page->isHidden();
}

// Only the pads shown take room: the dialog fits them, and goes when
// neither is left.
void InfoDlg::showPages(bool calculator, bool character)
{
    const bool wasCalculator = isOpen(CalculatorMode);
    const bool wasCharacter = isOpen(CharacterMode);
    m_calculatorPage->setVisible(calculator);
    m_characterPage->setVisible(character);
    if (calculator || character) {
        layout()->activate();
        resize(sizeHint());
        show();
        keepOnScreen();
    } else {
        hide();
    }
    if (wasCalculator != isOpen(CalculatorMode) || wasCharacter != isOpen(CharacterMode))
        emit padsChanged();
}

// A dialog that grew by a pad stays where the user put it, as far as the
// screen lets it: nothing of it may hang off an edge.
void InfoDlg::keepOnScreen()
{
    const QScreen *where = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!where)
        return;
    const QRect room = where->availableGeometry();
    const QRect frame = frameGeometry();
    QPoint shift;
    if (frame.right() > room.right())
        shift.rx() = room.right() - frame.right();
    if (frame.bottom() > room.bottom())
        shift.ry() = room.bottom() - frame.bottom();
    if (frame.left() + shift.x() < room.left())
        shift.rx() = room.left() - frame.left();
    if (frame.top() + shift.y() < room.top())
        shift.ry() = room.top() - frame.top();
    if (!shift.isNull())
        move(pos() + shift);
}

void InfoDlg::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    emit resized();
}

void InfoDlg::closeEvent(QCloseEvent *event)
{
    // Closed by the window manager: both pads go, and the host hears of it.
    QWidget::closeEvent(event);
    showPages(false, false);
}

qint32 InfoDlg::currentPad() const
{
    if (!Handwriting->isHidden())
        return KeyTable::Handwriting;
    for (qint32 pad = KeyTable::Symbol2; pad >= KeyTable::Alpha; --pad)
        if (Keypads[pad] && !Keypads[pad]->isHidden())
            return pad;
    return -1;
}

void InfoDlg::setPad(KeyTable::Pad pad)
{
    const bool handwriting = pad == KeyTable::Handwriting;
    if (!inRange(pad, KeyTable::Alpha, KeyTable::Symbol2) && !handwriting)
        return;
    // The model is read when the page is first wanted: one that cannot be
    // read leaves the pad as it was.
    if (handwriting && !Handwriting->prepare()) {
        disableHandwriting();
        if (currentPad() >= 0)
            MiniChannels[currentPad()]->setChecked(true);
        return;
    }
    for (qint32 other = KeyTable::Alpha; other <= KeyTable::Symbol2; ++other)
        Keypads[other]->setVisible(other == pad);
    Handwriting->setVisible(handwriting);
    MiniChannels[pad]->setChecked(true);
}

void InfoDlg::disableHandwriting()
{
    QAbstractButton *button = MiniChannels[KeyTable::Handwriting];
    button->setEnabled(false);
    button->setToolTip(HandwritingPad::unavailableTip());
    button->setAccessibleDescription(button->toolTip());
}

bool InfoDlg::cellAt(qint32 pad, int x, int y, int &column, int &row)
{
    column = (x - KeypadView::Margin) / KeypadView::KeySize + 1;
    row = (y - KeypadView::Margin) / KeypadView::KeySize + 1;
    if (!inRange(row, 1, 5))
        return false;
    switch (pad) {
    case KeyTable::Number:
        return inRange(column, 1, 4);
    case KeyTable::Alpha:
        return inRange(column, 1, 15) || inRange(column, 17, 20);
    default:
        return inRange(column, 1, 20);
    }
}

void InfoDlg::Keypads_MouseDown(int x, int y)
{
    const qint32 pad = currentPad();
    if (!inRange(pad, KeyTable::Alpha, KeyTable::Symbol2))
        return;
    if (!cellAt(pad, x, y, m_pressedColumn, m_pressedRow))
        m_pressedColumn = m_pressedRow = 0;
    Keypads[pad]->setHighlight(m_pressedColumn, m_pressedRow);
}

void InfoDlg::Keypads_MouseUp(int, int)
{
    const qint32 pad = currentPad();
    if (!inRange(pad, KeyTable::Alpha, KeyTable::Symbol2))
        return;
    Keypads[pad]->setHighlight(0, 0);
    const KeyTable::Record *key = m_keys.find(pad, m_pressedColumn, m_pressedRow);
    if (!key)
        return;
    const int status = IME::IMEStatus();
    const bool japanese = inRange(status, 4, 8);
    QString text = key->text;
    bool romaji = false;
    if (pad == KeyTable::Hiragana && japanese) {
        const QString letters = m_keys.romaji(m_pressedColumn, m_pressedRow);
        if (!letters.isEmpty()) {
            text = letters;
            romaji = true;
        }
    }
    // The host hears the input method's state (4 to 8: a Japanese mode is
    // on), so that a field can follow it, and which pad typed.
    qint32 first = status;
    qint32 second = pad;
    emit KeyCheck(first, second, text);
    switch (pad) {
    case KeyTable::Alpha:
        text = japanese ? VbStrConv::wide(text) : VbStrConv::narrow(text);
        break;
    case KeyTable::Hiragana:
        if (romaji)
            text = VbStrConv::narrow(VbStrConv::katakana(text));
        else
            text = japanese ? VbStrConv::wide(VbStrConv::hiragana(text)) : VbStrConv::hiragana(text);
        break;
    case KeyTable::Katakana:
        text = VbStrConv::katakana(text);
        break;
    default:
        break;
    }
    send(text);
    update();
}

void InfoDlg::Numpad_MouseDown(int x, int y)
{
    if (!cellAt(KeyTable::Number, x, y, m_pressedColumn, m_pressedRow))
        m_pressedColumn = m_pressedRow = 0;
    Numpad->setHighlight(m_pressedColumn, m_pressedRow);
}

void InfoDlg::Numpad_MouseUp(int, int)
{
    Numpad->setHighlight(0, 0);
    if (const KeyTable::Record *key = m_keys.find(KeyTable::Number, m_pressedColumn, m_pressedRow))
        send(key->text);
    update();
}

IME &InfoDlg::ime()
{
    if (!m_ime)
        m_ime = new IME(this);
    return *m_ime;
}

void InfoDlg::send(const QString &keys)
{
    KeySender::send(keys);
}

// A chosen candidate is typed as it stands, not composed by the input method:
// a digit goes full-width while the input method is on, as the alphabet
// pad's keys do, since a half-width one would start a composition.
void InfoDlg::typeCandidate(const QString &text)
{
    const QString typed = inRange(IME::IMEStatus(), 4, 8) ? VbStrConv::wide(text) : text;
    QString keys;
    for (const QChar c : typed) {
        // The notation's own signs stand for themselves only in braces.
        if (QStringView(u"+^~%{}()[]").contains(c))
            keys += u'{' + QString(c) + u'}';
        else
            keys += c;
    }
    send(keys);
    update();
}

bool InfoDlg::isTextControl(const QWidget *control)
{
    if (qobject_cast<const QLineEdit *>(control) || qobject_cast<const QTextEdit *>(control)
        || qobject_cast<const QPlainTextEdit *>(control))
        return true;
    if (const auto *combo = qobject_cast<const QComboBox *>(control))
        return combo->isEditable();
    return false;
}

void InfoDlg::deleteCharacter()
{
    QWidget *focus = QApplication::focusWidget();
    if (!isTextControl(focus)) {
        // Not a text: take the word at the caret instead.
        send(QStringLiteral("^{LEFT}+^{RIGHT}{BACKSPACE}"));
        return;
    }
    // At the very start there is nothing before the caret: take the
    // character after it, by selecting it first.
    QLineEdit *line = qobject_cast<QLineEdit *>(focus);
    if (auto *combo = qobject_cast<QComboBox *>(focus))
        line = combo->lineEdit();
    if (line) {
        if (!line->hasSelectedText() && line->cursorPosition() == 0)
            line->setSelection(0, 1);
    } else if (auto *rich = qobject_cast<QTextEdit *>(focus)) {
        QTextCursor cursor = rich->textCursor();
        if (!cursor.hasSelection() && cursor.position() == 0) {
            cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            rich->setTextCursor(cursor);
        }
    } else if (auto *plain = qobject_cast<QPlainTextEdit *>(focus)) {
        QTextCursor cursor = plain->textCursor();
        if (!cursor.hasSelection() && cursor.position() == 0) {
            cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            plain->setTextCursor(cursor);
        }
    }
    send(QStringLiteral("{BACKSPACE}"));
}

void InfoDlg::MiniChannels_Click(int index)
{
    switch (index) {
    case 0:
        emit Quit(0);
        break;
    case 1:
    case 8:
        send(QStringLiteral(" "));
        break;
    case 2:
    case 9:
        deleteCharacter();
        break;
    case 3:
        emit Quit(1);
        break;
    case 4:
        send(QStringLiteral("{LEFT}"));
        break;
    case 5:
        send(QStringLiteral("{RIGHT}"));
        break;
    case 6:
        send((m_options & ArrowKeys) ? QStringLiteral("{UP}") : QStringLiteral("+{TAB}"));
        break;
    case 7:
        send((m_options & ArrowKeys) ? QStringLiteral("{DOWN}") : QStringLiteral("{TAB}"));
        break;
    case 10:
        send(QStringLiteral("~"));
        break;
    // clang-format off
    case 11: case 12: case 13: case 14: case 15: case KeyTable::Handwriting:
        setPad(KeyTable::Pad(index));
        // clang-format on
        break;
    case 16:
        // The button shows what was asked at once; the monitor then shows
        // what the input method really did.
        MiniChannels[16]->setChecked(!MiniChannels[16]->isChecked());
        ime().KeyPress(IME::KanjiKey, true);
        break;
    case 17:
        convert();
        break;
    case 18:
        ime().KeyPress(IME::NonConvertKey, false);
        break;
    case 19:
        send(QStringLiteral("{ENTER}"));
        break;
    case 20:
        send(QStringLiteral("{ESC}"));
        break;
    default:
        break;
    }
}

// With the input method off nothing is being composed, so there is nothing
// to convert: the user is told how to get there instead of seeing nothing.
void InfoDlg::convert()
{
    if (!inRange(IME::IMEStatus(), 4, 8)) {
        emit Notice(MiniChannels[17]->text(),
                    QStringLiteral("いまは漢字に変換できません。先に [漢字] をクリックしてから、"
                                   "かなを入力して [変換] をクリックしてください。"));
        return;
    }
    ime().KeyPress(IME::ConvertKey, false);
}

void InfoDlg::mousePressEvent(QMouseEvent *event)
{
    // The dialog moves when dragged by its own surface, between the keys.
    if (event->button() == Qt::LeftButton && windowHandle())
        windowHandle()->startSystemMove();
}

bool InfoDlg::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Enter && Globals::HowToOn) {
        const qsizetype index = MiniChannels.indexOf(static_cast<QAbstractButton *>(watched));
        // The tip of the button as it is now: a disabled one says why.
        if (index >= 0 && !MiniChannels[index]->toolTip().isEmpty())
            emit HowTo(MiniChannels[index]->text(), MiniChannels[index]->toolTip());
    } else if (event->type() == QEvent::Leave) {
        // As with every other button, the hint goes with the pointer.
        emit HowTo(QString(), QString());
    }
    return QWidget::eventFilter(watched, event);
}

void InfoDlg::monitorInputMethod()
{
    const int status = IME::IMEStatus();
    if (status == m_lastStatus)
        return;
    m_lastStatus = status;
    refreshButtons();
}

void InfoDlg::refreshButtons()
{
    // A toggle button shows its own pressed state after a click: set it back
    // to what the input method says.
    MiniChannels[16]->setChecked(inRange(m_lastStatus, 4, 8));
}

QString InfoDlg::tip(int index)
{
    const QString convert = QStringLiteral("クリックすると、入力した かな を漢字に変換します。\n"
                                           "繰り返しクリックすると、次の候補になります。");
    const QString remove = QStringLiteral("クリックすると、指定した場所にある文字を削除します。");
    switch (index) {
    // clang-format off
    case 0: return QStringLiteral("クリックすると、[文字入力] ダイアログを閉じます。");
    case 1: return convert;
    case 2: case 9: return remove;
    case 4: return QStringLiteral("クリックし続けると、指定した場所よりも左へ移動していきます。");
    case 5: return QStringLiteral("クリックし続けると、指定した場所よりも右へ移動していきます。");
    case 6: return QStringLiteral("クリックし続けると、指定した場所よりも上へ移動していきます。");
    case 7: return QStringLiteral("クリックし続けると、指定した場所よりも下へ移動していきます。");
    case 8: return QStringLiteral("クリックすると、指定した場所に空き領域を挿入し、列を区切ります。");
    case 10: return QStringLiteral("クリックすると、指定した場所を右端にして折り返し、新しく入力する場所を次の行の左端にします。");
    case 11: return QStringLiteral("クリックすると、アルファベット・数字を入力できます。");
    case 12: return QStringLiteral("クリックすると、ひらがなを入力できます。");
    case 13: return QStringLiteral("クリックすると、カタカナを入力できます。");
    case 14: case 15: return QStringLiteral("クリックすると、記号を入力できます。");
    case 16: return QStringLiteral("クリックすると、入力した かな を漢字に変換可能な状態にします。\n"
                                   "再びクリックすると、元に戻り、直接入力可能な状態にします。");
    case 17: return convert;
    case 18: return QString();
    case 19: return QStringLiteral("クリックすると、変換している候補を適用します。");
    case 20: return QStringLiteral("クリックすると、変換をキャンセルします。");
    case KeyTable::Handwriting: return QStringLiteral("クリックすると、マウスで書いた文字を入力できます。");
    default: return QString();
        // clang-format on
    }
}
