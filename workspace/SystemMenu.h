#pragma once

#include <QMenu>

// The workspace's system menu, Menus: the desktop's volume, display, printer,
// font, date and internet settings, and the printer menu PrinterMenus, which
// makes one of the system's printers the program's own.
class SystemMenu : public QMenu
{
    Q_OBJECT

public:
    explicit SystemMenu(QWidget *parent = nullptr);

    QMenu *printerMenu() const { return m_printers; }

    // Starts the desktop tool of entry `index`; a tool that cannot start is ignored.
    void Menus_Click(int index);
    // Entry 0 is "no printer", entry k the system's printer k-1.
    void PrinterMenus_Click(int index);
    // Asking the print system for its printers takes longer than the whole
    // window takes to appear: the list is filled in each time the menu opens.
    void rebuildPrinterMenu();

private:
    QAction *addNoPrinterEntry();

    QMenu *m_printers;
};
