#pragma once

#include "tools/Calculator.h"
#include "tools/IME.h"
#include "tools/KeyTable.h"

#include <QList>
#include <QTimer>
#include <QWidget>

#include <utility>

class HandwritingPad;
class KeypadView;
class QAbstractButton;
class QLabel;

// The floating tool dialog: the character-input pad (number pad, five
// character pads, command buttons) and the calculator pad. It floats above
// the workspace and never takes the keyboard focus: every key becomes a key
// string sent to whatever control has the focus, and kana-to-kanji
// conversion is left to the system input method, driven through IME.
class InfoDlg : public QWidget
{
    Q_OBJECT

public:
    // Option flags of the dialog, set by its host.
    enum Option : qint32 {
        TransferResults = 1, // hand calculator results on to the focused control
        ArrowKeys = 256,     // up and down move the caret, not the focus
    };

    // Pad pages for Begin and Finish.
    enum Mode : qint16 { CalculatorMode = 0,
                         CharacterMode = 1 };

    explicit InfoDlg(QWidget *parent = nullptr);

    void Reload();
    // Opens (Begin) or closes (Finish) a pad: mode 0 the calculator, 1 the
    // character-input pad.
    // The two pads open and close separately; the dialog shows while
    // either is open.
    void Begin(Mode mode);
    void Finish(Mode mode);
    // Whether that pad is on the screen.
    bool isOpen(Mode mode) const;

    qint32 Options() const { return m_options; }
    void setOptions(qint32 options) { m_options = options; }

    // The visible character pad (11 to 15, or 21 for handwriting).
    qint32 currentPad() const;
    void setPad(KeyTable::Pad pad);

    // How much larger than their own units the pads are drawn.
    double padScale() const { return m_scale; }
    void setPadScale(double scale);
    // The preferred scale, or less when the dialog would be wider than `room`.
    void fitPadScale(double preferred, int room);

    KeypadView *Numpad = nullptr;
    // Indexed by pad number: 11 to 15; the lower entries are empty.
    QList<KeypadView *> Keypads;
    // The handwriting page, pad 21; shown in the place of the character pads.
    HandwritingPad *Handwriting = nullptr;
    // Indexed 0 to 21.
    QList<QAbstractButton *> MiniChannels;

    // The calculator pad: keys 0 to 19 and the two-line display.
    QList<QAbstractButton *> NumKeys;
    QLabel *DisplayDigit = nullptr;
    Calculator &calculator() { return m_calculator; }

    const KeyTable &keyTable() const { return m_keys; }
    // The input-method bridge the pad presses keys through: the host's
    // (the workspace owns one); without a host the dialog makes its own.
    void setIME(IME *ime) { m_ime = ime; }
    IME &ime();

    // The cell under a pad position (in the pad's own units); false when the
    // position is on no key of that pad.
    static bool cellAt(qint32 pad, int x, int y, int &column, int &row);
    // Whether keys can type into this control (edits, editable combo boxes).
    static bool isTextControl(const QWidget *control);
    // The tip of a command button.
    static QString tip(int index);

signals:
    void Status(qint16 first, qint16 second);
    void Quit(qint16 argument);
    // Raised before a pad key is typed: the input method's status (4 to 8
    // while a Japanese mode is on), the pad number, and the key's text,
    // which the host may change.
    void KeyCheck(qint32 &first, qint32 &second, QString &text);
    void HowTo(const QString &topic, const QString &content);
    // Something the user should read even with hints off: why a button
    // could not do what it says.
    void Notice(const QString &topic, const QString &content);
    // A pad was opened or closed, by the host, by a button or by the
    // window manager.
    void padsChanged();
    // The dialog took a new size: its pads changed or were scaled.
    void resized();
    // A calculator result for a focused control that is no text control; the
    // host may take or change it.
    void ResultTransfer(Currency &amount);

public slots:
    void MiniChannels_Click(int index);
    void NumKeys_Click(int index);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void Keypads_MouseDown(int x, int y);
    void Keypads_MouseUp(int x, int y);
    void Numpad_MouseDown(int x, int y);
    void Numpad_MouseUp(int x, int y);
    void monitorInputMethod();
    void Calculator_Change();
    void typeCandidate(const QString &text);

private:
    void buildCharacterPage(QWidget *page);
    void buildCalculatorPage(QWidget *page);
    void showDisplay(const QString &first, const QString &second);
    void transferResult();
    void send(const QString &keys);
    void deleteCharacter();
    void refreshButtons();
    void convert();
    void showPages(bool calculator, bool character);
    void keepOnScreen();
    void disableHandwriting();

    KeyTable m_keys;
    Calculator m_calculator;
    bool m_transferSuppressed = false;
    IME *m_ime = nullptr;
    QWidget *m_calculatorPage = nullptr;
    QWidget *m_characterPage = nullptr;
    QTimer m_monitor;
    int m_lastStatus = -1;
    int m_pressedColumn = 0;
    int m_pressedRow = 0;
    qint32 m_options = 0;
    double m_scale = 1.0;
    bool m_scaled = false;
    std::pair<double, int> m_fittedFor;
};
