#pragma once

#include <QList>
#include <QString>

class QPrinterInfo;

// The system's printers as the printer menu shows them, and the program's
// current printer choice (one for the whole process).
class PrinterList
{
public:
    struct Entry
    {
        QString deviceName;
        QString driverName;
    };

    // The system printers in the print system's order.
    static QList<Entry> printers();
    // The system's default printer's device name; empty when there is none.
    static QString defaultPrinter();

    // A menu entry's caption: device name, " (", driver name in proper case, ")".
    static QString caption(const Entry &printer);

    // The program's current printer: the one chosen from the menu, else the
    // system's default (or its first printer). Empty when there is no printer.
    static QString currentPrinter();
    // Chooses a printer by device name; an empty name is the menu's "(なし)":
    // no printer at all. A chosen printer that has gone falls back to the
    // system's default.
    static void setCurrentPrinter(const QString &deviceName);

    // The current printer as Qt knows it; a null QPrinterInfo when there is none.
    static QPrinterInfo currentPrinterInfo();
};
