#pragma once

#include "app/Globals.h"
#include "platform/keys/KeyNotation.h"
#include "platform/keys/KeyStroke.h"
#include "tools/InfoDlg.h"
#include "tools/KeypadView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

#include <utility>

// The input pad beside a host window whose text controls keep the focus,
// driven by clicks on the pad's keys and buttons. With a real mouse the
// clicks come from the X server (xdotool), exactly as a user gives them.
class PadDriver
{
public:
    PadDriver(const QString &installPath, InfoDlg::Mode mode, double scale, bool realMouse = false)
        : m_realMouse(realMouse)
    {
        Globals::InstallPath = installPath;
        dialog = new InfoDlg;
        dialog->setPadScale(scale);
        dialog->move(0, 320);
        dialog->Begin(mode);
        host = new QWidget;
        auto *layout = new QVBoxLayout(host);
        layout->addWidget(edit = new QTextEdit);
        layout->addWidget(line = new QLineEdit);
        layout->addWidget(button = new QPushButton(QStringLiteral("x")));
        button->setFocusPolicy(Qt::StrongFocus);
        host->setGeometry(0, 0, 600, 260);
    }
    ~PadDriver()
    {
        delete dialog;
        delete host;
    }

    // Both windows shown, the host active and its text edit focused.
    bool show()
    {
        host->show();
        host->activateWindow();
        if (!QTest::qWaitForWindowExposed(dialog) || !QTest::qWaitForWindowActive(host))
            return false;
        focus(edit);
        return edit->hasFocus();
    }

    void click(QWidget *widget, QPoint local)
    {
        const QString xdotool = m_realMouse ? QStandardPaths::findExecutable(QStringLiteral("xdotool")) : QString();
        if (xdotool.isEmpty()) {
            QTest::mouseClick(widget, Qt::LeftButton, {}, local);
            return;
        }
        const QPoint at = widget->mapToGlobal(local);
        QProcess::execute(xdotool, {QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y()), QStringLiteral("click"), QStringLiteral("1")});
        QTest::qWait(30); // let the click arrive before the next one
    }

    // A click on the middle of a button, then its effects.
    void clickCentre(QWidget *widget)
    {
        click(widget, widget->rect().center());
        settle();
    }

    void clickButton(int index) { clickCentre(dialog->MiniChannels[index]); }

    // Clicks keys by (column, row) of a pad; pad 0 is the number pad.
    void clickKeys(qint32 pad, const QList<QPoint> &cells)
    {
        if (pad != KeyTable::Number && dialog->currentPad() != pad)
            clickButton(pad);
        KeypadView *view = pad == KeyTable::Number ? dialog->Numpad : dialog->Keypads[pad];
        for (const QPoint &cell : cells) {
            const QPoint at = cellCentre(cell.x(), cell.y());
            click(view, QPoint(qRound(at.x() * dialog->padScale()), qRound(at.y() * dialog->padScale())));
        }
        settle();
    }

    // Calculator keys by meaning: digits, ".", "<" (back), "C", "+-*/=", "%"
    // and "s" (sign change).
    void pressCalculator(const QString &keys)
    {
        static const QString order = QStringLiteral("0123456789.<C+-*/=%s");
        for (const QChar key : keys) {
            const int index = int(order.indexOf(key));
            if (index < 0)
                qFatal("no calculator key %s", qPrintable(QString(key)));
            clickCentre(dialog->NumKeys[index]);
        }
    }

    // Gives a text control the focus with the caret after `caret` characters
    // of the text, at its end by default.
    void focus(QWidget *control, const QString &text = QString(), int caret = -1)
    {
        if (auto *textEdit = qobject_cast<QTextEdit *>(control)) {
            textEdit->setPlainText(text);
            QTextCursor cursor = textEdit->textCursor();
            cursor.setPosition(caret < 0 ? int(text.size()) : caret);
            textEdit->setTextCursor(cursor);
        } else if (auto *lineEdit = qobject_cast<QLineEdit *>(control)) {
            lineEdit->setText(text);
            lineEdit->setCursorPosition(caret < 0 ? int(text.size()) : caret);
        }
        control->setFocus();
        QTRY_VERIFY(control->hasFocus());
    }

    static void settle()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

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
    SentKeys() { qApp->installEventFilter(this); }

    QList<KeyStroke> take()
    {
        PadDriver::settle();
        return std::exchange(m_strokes, {});
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // A key the focused widget ignores travels on to its parents: count it once.
        if (event->type() == QEvent::KeyPress && watched == QApplication::focusWidget()) {
            const auto *key = static_cast<QKeyEvent *>(event);
            m_strokes.append({key->key(), key->nativeVirtualKey(), key->nativeScanCode(), key->modifiers(), key->text()});
        }
        return false;
    }

private:
    QList<KeyStroke> m_strokes;
};
