#pragma once

#include <QMarginsF>
#include <QSizeF>
#include <QtGlobal>

class QPrinter;

// The system printer as the program sees it: one per process, set up with the
// printer codes a document carries before anything is printed. The codes are
// kept as given (the printing side reads them back) and mapped onto Qt's
// printer where Qt has the setting.
//   paper size:    1 Letter, 5 Legal, 8 A3, 9 and 10 A4, 11 A5, 12 B4, 13 B5,
//                  43 postcard; others keep the printer's paper
//   paper bin:     7 automatic
//   orientation:   1 portrait, 2 landscape
//   colour mode:   1 monochrome, 2 colour
//   print quality: -1 draft, -2 low, -3 medium, -4 high, or dots per inch
//   zoom:          percent, applied by whoever draws the page
class SystemPrinter
{
public:
    struct Codes
    {
        qint16 paperSize = 9;
        qint16 paperBin = 7;
        qint16 orientation = 1;
        qint16 colorMode = 1;
        qint16 printQuality = -3;
        qint16 copies = 1;
        qint32 zoom = 100;
    };

    static bool isInstalled();
    // Created at first use for the default printer.
    static QPrinter *printer();

    static void setPaperSize(qint16 code);
    static void setPaperBin(qint16 code);
    static void setOrientation(qint16 code);
    static void setColorMode(qint16 code);
    static void setPrintQuality(qint16 code);
    static void setCopies(qint16 copies);
    static void setZoom(qint32 percent);
    static const Codes &codes();

    // The whole sheet and the printable margins, in millimetres: the default
    // printer's, or a portrait A4 sheet without margins when none is installed.
    static QSizeF pageSizeMillimetres();
    static QMarginsF marginsMillimetres();

private:
    static Codes &mutableCodes();
};
