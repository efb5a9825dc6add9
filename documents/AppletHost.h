#pragma once

class InfoDlg;
class Printing;

// What an applet needs of the window that holds it. The main window
// implements it; an applet takes it from its parent in Load.
class AppletHost
{
public:
    virtual ~AppletHost() = default;

    // The tool dialog whose KeyCheck reaches the applet.
    virtual InfoDlg *infoDlg() const = 0;
    // The print layout object whose Define reaches the applet.
    virtual Printing *printing() const = 0;
};
