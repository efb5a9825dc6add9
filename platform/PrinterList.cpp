#include "platform/PrinterList.h"

#include "platform/vb/VbStrConv.h"

#include <QPrinterInfo>

#include <optional>

namespace {

// Unset until the user chooses; an empty name is the choice "no printer".
std::optional<QString> &chosenPrinter()
{
    static std::optional<QString> name;
    return name;
}

} // namespace

QList<PrinterList::Entry> PrinterList::printers()
{
    QList<Entry> result;
    const QList<QPrinterInfo> available = QPrinterInfo::availablePrinters();
    for (const QPrinterInfo &printer : available)
        result.append({printer.printerName(), printer.makeAndModel()});
    return result;
}

QString PrinterList::defaultPrinter()
{
    return QPrinterInfo::defaultPrinterName();
}

QString PrinterList::caption(const Entry &printer)
{
    return printer.deviceName + QStringLiteral(" (") + VbStrConv::properCase(printer.driverName)
        + QLatin1Char(')');
}

QString PrinterList::currentPrinter()
{
    if (chosenPrinter() && chosenPrinter()->isEmpty())
        return QString();
    if (chosenPrinter() && !QPrinterInfo::printerInfo(*chosenPrinter()).isNull())
        return *chosenPrinter();
    const QString fallback = defaultPrinter();
    if (!fallback.isEmpty())
        return fallback;
    // CUPS may have printers and no default: take the first, as Windows would.
    const QStringList names = QPrinterInfo::availablePrinterNames();
    return names.isEmpty() ? QString() : names.first();
}

void PrinterList::setCurrentPrinter(const QString &deviceName)
{
    chosenPrinter() = deviceName;
}

QPrinterInfo PrinterList::currentPrinterInfo()
{
    const QString name = currentPrinter();
    return name.isEmpty() ? QPrinterInfo() : QPrinterInfo::printerInfo(name);
}
