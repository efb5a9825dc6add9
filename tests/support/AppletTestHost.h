#pragma once

#include "documents/AppletHost.h"
#include "tools/InfoDlg.h"
#include "tools/Printing.h"

#include <QWidget>

#include <memory>

// A main window stand-in for applet tests: it holds a tool dialog and a
// printing object, as the real one does after start-up.
class AppletTestHost : public QWidget, public AppletHost
{
public:
    AppletTestHost() { resize(1200, 900); }

    InfoDlg *infoDlg() const override { return m_infoDlg.get(); }
    Printing *printing() const override { return m_printing; }

private:
    std::unique_ptr<InfoDlg> m_infoDlg = std::make_unique<InfoDlg>();
    Printing *m_printing = new Printing(this);
};
