#pragma once

#include "platform/keys/KeyStroke.h"
#include "tools/InfoDlg.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>

// The input pad beside a host window whose text controls keep the focus,
// driven by clicks on the pad's keys and buttons. With a real mouse the
// clicks come from the X server (xdotool), exactly as a user gives them.
class PadDriver
{
public:
    PadDriver(const QString &installPath, InfoDlg::Mode mode, double scale, bool realMouse = false);
    ~PadDriver();
    // Both windows shown, the host active and its text edit focused.
    bool show();

    void click(QWidget *widget, QPoint local);
    void clickButton(int index);
    // Clicks keys by (column, row) of a pad; pad 0 is the number pad.
    void clickKeys(qint32 pad, const QList<QPoint> &cells);
    // Calculator keys by meaning: digits, ".", "<" (back), "C", "+-*/=", "%"
    // and "s" (sign change).
    void pressCalculator(const QString &keys);
    // Gives a text control the focus with the caret after the text.
    void focus(QWidget *control, const QString &text = QString());
    static void settle();
    // The middle of a key, in the pad's own pixel units.
    static QPoint cellCentre(int column, int row) { return {(column - 1) * 30 + 25, (row - 1) * 30 + 25}; }

    InfoDlg *dialog = nullptr;
    QWidget *host = nullptr;
    QTextEdit *edit = nullptr;
    QLineEdit *line = nullptr;
    QPushButton *button = nullptr;

private:
    bool m_realMouse = false;
};

// Records the key strokes that reach the focused widget, in order.
class SentKeys : public QObject
{
public:
    SentKeys();
    QList<KeyStroke> take();
    // The strokes a key string in the key-sending notation stands for.
    static QList<KeyStroke> of(const QString &keys);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<KeyStroke> m_strokes;
};
