#pragma once

#include "workspace/Workspace.h"

#include <QObject>
#include <QPointer>

class InfoDlg;

// Keeps the tool dialog and the workspace in step: ToolBoxMode opens and
// closes its pads, the main buttons 電卓 and 文字入力 show what is really on
// the screen, the pad's ↑ and ↓ follow the focus, and the pad's sound status
// reaches the document side bar.
class ToolBoxLink : public QObject
{
    Q_OBJECT

public:
    explicit ToolBoxLink(Workspace *window);

    void setDialog(InfoDlg *dialog);

    // The calculator flag lives as long as the window: 電卓 flips it.
    bool calculatorFlag() const { return m_calculator; }
    void flipCalculatorFlag() { m_calculator = !m_calculator; }

    void ToolBoxMode(Workspace::ToolBox mode, Workspace::ToolBoxState state);

signals:
    // The main buttons follow the pads now on the screen; the window may
    // have to make room for them.
    void padsFollowed();

private:
    void followToolDialog();
    void followFocus(QWidget *focus);
    void InfoDlg_Status(qint16 first, qint16 second);

    Workspace *m_window;
    QPointer<InfoDlg> m_dialog;
    bool m_calculator = false;
};
