#pragma once

#include "documents/AppletHost.h"

#include <QWidget>

class InfoDlg;
class Printing;

// A main window stand-in for applet tests: it holds a tool dialog and a
// printing object, as the real one does after start-up.
class AppletTestHost : public QWidget, public AppletHost
{
    Q_OBJECT

public:
    explicit AppletTestHost(QWidget *parent = nullptr);
    ~AppletTestHost() override;

    InfoDlg *infoDlg() const override { return m_infoDlg; }
    Printing *printing() const override { return m_printing; }

private:
    InfoDlg *m_infoDlg;
    Printing *m_printing;
};
