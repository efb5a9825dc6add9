#include "PadDriver.h"

#include "app/Globals.h"
#include "platform/keys/KeyNotation.h"
#include "tools/KeypadView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QVBoxLayout>

PadDriver::PadDriver(const QString &installPath, InfoDlg::Mode mode, double scale, bool realMouse)
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

PadDriver::~PadDriver()
{
    delete dialog;
    delete host;
}

bool PadDriver::show()
{
    host->show();
    host->activateWindow();
    if (!QTest::qWaitForWindowExposed(dialog) || !QTest::qWaitForWindowActive(host))
        return false;
    focus(edit);
    return edit->hasFocus();
}

void PadDriver::click(QWidget *widget, QPoint local)
{
    const QString xdotool = m_realMouse ? QStandardPaths::findExecutable(QStringLiteral("xdotool")) : QString();
    if (xdotool.isEmpty()) {
        QTest::mouseClick(widget, Qt::LeftButton, {}, local);
        return;
    }
    const QPoint at = widget->mapToGlobal(local);
    QProcess::execute(xdotool, {QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y()),
                                QStringLiteral("click"), QStringLiteral("1")});
    QTest::qWait(30);   // let the click arrive before the next one
}

void PadDriver::clickButton(int index)
{
    QAbstractButton *target = dialog->MiniChannels[index];
    click(target, target->rect().center());
    settle();
}

void PadDriver::clickKeys(qint32 pad, const QList<QPoint> &cells)
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

void PadDriver::pressCalculator(const QString &keys)
{
    static const QString order = QStringLiteral("0123456789.<C+-*/=%s");
    for (const QChar key : keys) {
        const int index = int(order.indexOf(key));
        if (index < 0)
            qFatal("no calculator key %s", qPrintable(QString(key)));
        click(dialog->NumKeys[index], dialog->NumKeys[index]->rect().center());
    }
}

void PadDriver::focus(QWidget *control, const QString &text)
{
    if (auto *textEdit = qobject_cast<QTextEdit *>(control)) {
        textEdit->setPlainText(text);
        textEdit->moveCursor(QTextCursor::End);
    } else if (auto *lineEdit = qobject_cast<QLineEdit *>(control)) {
        lineEdit->setText(text);
    }
    control->setFocus();
    QTRY_VERIFY(control->hasFocus());
}

void PadDriver::settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

SentKeys::SentKeys()
{
    qApp->installEventFilter(this);
}

QList<KeyStroke> SentKeys::take()
{
    PadDriver::settle();
    return std::exchange(m_strokes, {});
}

QList<KeyStroke> SentKeys::of(const QString &keys)
{
    return KeyNotation::parse(keys);
}

bool SentKeys::eventFilter(QObject *watched, QEvent *event)
{
    // A key the focused widget ignores travels on to its parents: count it once.
    if (event->type() == QEvent::KeyPress && watched == QApplication::focusWidget()) {
        const auto *key = static_cast<QKeyEvent *>(event);
        m_strokes.append({key->key(), key->nativeVirtualKey(), key->nativeScanCode(), key->modifiers(), key->text()});
    }
    return false;
}
