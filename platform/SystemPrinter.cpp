#include "platform/SystemPrinter.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QPrinterInfo>

#include <memory>

namespace {

std::unique_ptr<QPrinter> &printerSlot()
{
    static std::unique_ptr<QPrinter> printer;
    return printer;
}

QPageSize::PageSizeId pageSizeFor(qint16 code, bool *known)
{
    *known = true;
    switch (code) {
    case 1: return QPageSize::Letter;
    case 5: return QPageSize::Legal;
    case 8: return QPageSize::A3;
    case 9:
    case 10: return QPageSize::A4;
    case 11: return QPageSize::A5;
    case 12: return QPageSize::JisB4;
    case 13: return QPageSize::JisB5;
    case 43: return QPageSize::Postcard;
    default: *known = false; return QPageSize::A4;
    }
}

} // namespace

SystemPrinter::Codes &SystemPrinter::mutableCodes()
{
    static Codes codes;
    return codes;
}

const SystemPrinter::Codes &SystemPrinter::codes()
{
    return mutableCodes();
}

bool SystemPrinter::isInstalled()
{
    return !QPrinterInfo::defaultPrinter().isNull();
}

QPrinter *SystemPrinter::printer()
{
    std::unique_ptr<QPrinter> &slot = printerSlot();
    if (!slot)
        slot = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return slot.get();
}

void SystemPrinter::setPaperSize(qint16 code)
{
    mutableCodes().paperSize = code;
    bool known = false;
    const QPageSize::PageSizeId id = pageSizeFor(code, &known);
    if (known)
        printer()->setPageSize(QPageSize(id));
}

void SystemPrinter::setPaperBin(qint16 code)
{
    mutableCodes().paperBin = code;
    if (code == 7)
        printer()->setPaperSource(QPrinter::Auto);
}

void SystemPrinter::setOrientation(qint16 code)
{
    mutableCodes().orientation = code;
    if (code == 1 || code == 2)
        printer()->setPageOrientation(code == 2 ? QPageLayout::Landscape : QPageLayout::Portrait);
}

void SystemPrinter::setColorMode(qint16 code)
{
    mutableCodes().colorMode = code;
    if (code == 1 || code == 2)
        printer()->setColorMode(code == 2 ? QPrinter::Color : QPrinter::GrayScale);
}

void SystemPrinter::setPrintQuality(qint16 code)
{
    // Qt chooses the resolution from the driver; the code stays for the
    // printing side.
    mutableCodes().printQuality = code;
}

void SystemPrinter::setCopies(qint16 copies)
{
    mutableCodes().copies = copies;
    if (copies > 0)
        printer()->setCopyCount(copies);
}

void SystemPrinter::setZoom(qint32 percent)
{
    mutableCodes().zoom = percent;
}

QSizeF SystemPrinter::pageSizeMillimetres()
{
    if (!isInstalled())
        return QSizeF(210.0, 297.0);
    return printer()->pageLayout().fullRect(QPageLayout::Millimeter).size();
}

QMarginsF SystemPrinter::marginsMillimetres()
{
    if (!isInstalled())
        return QMarginsF();
    return printer()->pageLayout().margins(QPageLayout::Millimeter);
}
