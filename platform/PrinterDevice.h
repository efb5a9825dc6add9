#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <memory>

class QPrinter;
class QPrinterInfo;

// The printer as the layout code sees it: one page in centimetres with a
// current position, a current font and pen, and the printer's set-up codes.
// It wraps a QPrinter and the QPainter of the job in progress.
//
// Set-up codes are the printer's classic numeric codes, mapped onto Qt and CUPS:
//   paper size   Windows paper numbers (9 = A4, 13 = JIS B5, 1 = Letter ...),
//                turned into a QPageSize through QPageSize::id(windowsId)
//   paper bin    7 = automatic; 1 upper, 2 lower, 3 middle, 4 manual,
//                5 envelope, 6 manual envelope, 8 tractor ... become
//                QPrinter::PaperSource (one less than the code); CUPS gets
//                no option for them and feeds from the queue's default tray,
//                which is what 7 asks for
//   quality      -1 draft, -2 low, -3 medium, -4 high: the CUPS option
//                print-quality 3, 3, 4, 5; a positive value is a resolution
//                in dots per inch
//   orientation  1 portrait, 2 landscape
//   copies       QPrinter::setCopyCount (CUPS "copies")
//   duplex       1 one-sided, 2 long edge (vertical), 3 short edge
//                (horizontal): QPrinter::DuplexMode (CUPS "sides")
//   colour mode  1 monochrome, 2 colour: QPrinter::ColorMode
//   zoom         percent; not a printer option here, the layout scales its
//                fonts and pens by it
//
// A document keeps five set-up values; in its order they are paper size,
// paper bin, orientation, duplex and print quality, followed by copies and zoom.
class PrinterDevice
{
public:
    // A system printer, by its queue name.
    explicit PrinterDevice(const QPrinterInfo &printer);
    // A PDF file written straight by Qt (no print system involved).
    explicit PrinterDevice(const QString &pdfFile);
    ~PrinterDevice();

    PrinterDevice(const PrinterDevice &) = delete;
    PrinterDevice &operator=(const PrinterDevice &) = delete;

    QString deviceName() const { return m_deviceName; }
    QString driverName() const { return m_driverName; }
    QString port() const { return m_port; }

    // Set-up codes (see above).
    int paperSize() const;
    void setPaperSize(int code);
    int paperBin() const { return m_paperBin; }
    void setPaperBin(int code);
    int printQuality() const { return m_printQuality; }
    void setPrintQuality(int code);
    int orientation() const;
    void setOrientation(int code);
    int copies() const;
    void setCopies(int count);
    int duplex() const;
    void setDuplex(int code);
    int colorMode() const;
    void setColorMode(int code);
    int zoom() const { return m_zoom; }
    void setZoom(int percent);

    // The coordinate system, in centimetres: the origin is the top-left corner
    // of the printable area (so scale left and top are 0), the scale size is
    // that area's size, the paper size the whole sheet's.
    double scaleLeft() const { return 0; }
    double scaleTop() const { return 0; }
    double scaleWidth() const;
    double scaleHeight() const;
    double paperWidth() const;
    double paperHeight() const;

    double currentX() const { return m_currentX; }
    double currentY() const { return m_currentY; }
    void setCurrentX(double x) { m_currentX = x; }
    void setCurrentY(double y) { m_currentY = y; }

    // The font, by its design name; it is drawn with an installed stand-in.
    QString fontName() const { return m_fontName; }
    void setFontName(const QString &name) { m_fontName = name; }
    float fontSize() const { return m_fontSize; }
    void setFontSize(float points) { m_fontSize = points; }
    // The character set (128 = Shift-JIS) is kept for callers; Qt picks
    // glyphs by character, and the stand-in faces cover Japanese.
    int fontCharset() const { return m_fontCharset; }
    void setFontCharset(int charset) { m_fontCharset = charset; }
    bool fontTransparent() const { return m_fontTransparent; }
    void setFontTransparent(bool transparent) { m_fontTransparent = transparent; }
    QFont font() const;

    // The pen: width in device pixels, style 0 solid, 1 dash, 2 dot,
    // 3 dash-dot, 4 dash-dot-dot, 5 none, 6 inside solid.
    int drawWidth() const { return m_drawWidth; }
    void setDrawWidth(int pixels);
    int drawStyle() const { return m_drawStyle; }
    void setDrawStyle(int style);
    QColor foreColor() const { return m_foreColor; }
    void setForeColor(const QColor &color) { m_foreColor = color; }

    // Device pixels per centimetre.
    double pixelsPerCmX() const;
    double pixelsPerCmY() const;

    // Measures in the current font, in centimetres. The height counts lines:
    // "\r\n" is two lines high.
    double textWidth(const QString &text) const;
    double textHeight(const QString &text) const;

    // Draws text with its top-left corner at the current position and moves
    // the current x past it. horizontalScale condenses (< 1) or stretches
    // (> 1) the text.
    void print(const QString &text, double horizontalScale = 1.0);
    // A rule from one point to another, or a rectangle between two corners,
    // in the current pen; a filled rectangle is filled in the fore colour.
    void line(const QPointF &from, const QPointF &to);
    void box(const QPointF &corner, const QPointF &oppositeCorner, bool filled);

    // Starts the job's first page when nothing has been drawn yet.
    void startPage();
    void newPage();
    void endDoc();
    bool isPrinting() const;

    // For callers that draw on their own (rich text): the job's painter, with
    // the job started, in device pixels.
    QPainter *painter();
    QPrinter *printer() const { return m_printer.get(); }
    // A point in centimetres as device pixels of the painter.
    QPointF toPixels(const QPointF &cm) const;

private:
    void applyPen();

    std::unique_ptr<QPrinter> m_printer;
    std::unique_ptr<QPainter> m_painter;
    bool m_newPagePending = false;
    QString m_deviceName;
    QString m_driverName;
    QString m_port;
    int m_paperBin = 7;
    int m_printQuality = -3;
    int m_zoom = 100;
    double m_currentX = 0;
    double m_currentY = 0;
    QString m_fontName = QStringLiteral("MS UI Gothic");
    float m_fontSize = 9;
    int m_fontCharset = 128;
    bool m_fontTransparent = true;
    int m_drawWidth = 1;
    int m_drawStyle = 0;
    QColor m_foreColor = Qt::black;
};
