#include "workspace/ToolBoxLink.h"

#include "app/Globals.h"
#include "documents/Applet.h"
#include "platform/ErrorTrap.h"
#include "platform/touch/TouchButton.h"
#include "tools/InfoDlg.h"

#include <QApplication>

ToolBoxLink::ToolBoxLink(Workspace *window)
    : QObject(window)
    , m_window(window)
{
}

void ToolBoxLink::setDialog(InfoDlg *dialog)
{
    m_dialog = dialog;
    connect(dialog, &InfoDlg::Status, this, &ToolBoxLink::InfoDlg_Status);
    // The pad's own buttons 閉じる (0) and しまう (1) put the character pad
    // away the same way as from here; "Smart Pencil" brings it back.
    connect(dialog, &InfoDlg::Quit, this,
            [this](qint16) { ToolBoxMode(Workspace::ToolBox::CharacterPad, Workspace::ToolBoxState::Close); });
    connect(dialog, &InfoDlg::padsChanged, this, &ToolBoxLink::followToolDialog);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { followFocus(now); });
    followFocus(QApplication::focusWidget());
}

void ToolBoxLink::ToolBoxMode(Workspace::ToolBox mode, Workspace::ToolBoxState state)
{
    using State = Workspace::ToolBoxState;
    if (mode == Workspace::ToolBox::Calculator) {
        if (state == State::Decide)
            state = m_calculator ? State::Open : State::Close;
        m_window->Channels(Workspace::CalculatorButton)->setValue(state != State::Close);
    } else if (mode == Workspace::ToolBox::CharacterPad) {
        if (state == State::Decide && !(m_dialog && m_dialog->isOpen(InfoDlg::CharacterMode)) && Globals::SmartPencilOn)
            state = State::Open;
        if (state == State::Close)
            m_window->Channels(Workspace::CharacterPadButton)->setEnabled(true);
        else if (state == State::Open)
            m_window->Channels(Workspace::CharacterPadButton)->setEnabled(false);
    }
    if (!m_dialog)
        return;
    if (state == State::Close)
        ErrorTrap::run("Workspace::ToolBoxMode: finish", [&] { m_dialog->Finish(InfoDlg::Mode(mode)); });
    else if (state == State::Open)
        ErrorTrap::run("Workspace::ToolBoxMode: begin", [&] { m_dialog->Begin(InfoDlg::Mode(mode)); });
    followToolDialog();
}

// However a pad was opened or closed: 文字入力 can be clicked whenever the
// character pad is not there, and 電卓 is pressed exactly while the
// calculator is.
void ToolBoxLink::followToolDialog()
{
    if (!m_dialog)
        return;
    m_window->Channels(Workspace::CharacterPadButton)->setEnabled(!m_dialog->isOpen(InfoDlg::CharacterMode));
    m_calculator = m_dialog->isOpen(InfoDlg::CalculatorMode);
    m_window->Channels(Workspace::CalculatorButton)->setValue(m_calculator);
    emit padsFollowed();
}

// While a document's text has the focus, the pad's ↑ and ↓ move the caret
// a line; elsewhere they step from field to field.
void ToolBoxLink::followFocus(QWidget *focus)
{
    if (!m_dialog)
        return;
    bool inDocument = false;
    for (QWidget *w = focus; w; w = w->parentWidget()) {
        if (qobject_cast<Applet *>(w)) {
            inDocument = InfoDlg::isTextControl(focus);
            break;
        }
    }
    const qint32 options = m_dialog->Options();
    m_dialog->setOptions(inDocument ? options | InfoDlg::ArrowKeys : options & ~InfoDlg::ArrowKeys);
}

// The pad tells when its sound should interrupt the music.
void ToolBoxLink::InfoDlg_Status(qint16 first, qint16 second)
{
    if (Globals::MusicOn && (first != 0 || second != 0))
        m_window->SideMenuBars(SideMenuBar::DocumentBar)->setSoundPlaying(first == 0);
}
