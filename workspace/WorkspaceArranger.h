#pragma once

class InformationBar;
class Workspace;

// Puts every control of the workspace where WorkspaceLayout says for the
// window's size, docks an open pad along the bottom, and grows the type with
// the screen.
class WorkspaceArranger
{
public:
    WorkspaceArranger(Workspace *window, InformationBar *infoBar);

    void arrange();
    // Controls built since the last arrangement take the screen's type too.
    void arrangeWithNewControls();

private:
    void fitToolDialog();
    void scaleType(double unit);

    Workspace *m_window;
    InformationBar *m_infoBar;
    double m_typeUnit = 1.0;
    bool m_arranging = false;
};
