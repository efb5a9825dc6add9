#include "tools/Printing.h"

#include "platform/PrinterDevice.h"
#include "platform/PrinterList.h"
#include "platform/vb/VbError.h"

#include <QPrinterInfo>
#include <QStringList>

#include <cmath>

namespace {

const QStringList faces = {
    QStringLiteral("MS UI Gothic"),
    QStringLiteral("ＭＳ ゴシック"),
    QStringLiteral("ＭＳ Ｐゴシック"),
    QStringLiteral("ＭＳ 明朝"),
    QStringLiteral("ＭＳ Ｐ明朝"),
};

// Windows paper numbers the zoom rule knows.
constexpr int paperA4 = 9;
constexpr int paperB5 = 13;

// The side of the square that marks a marked text, in centimetres.
constexpr double markSize = 0.1;

VbError printerMissing()
{
    return VbError(484, QStringLiteral("プリンタ情報の取得中にエラーが発生しました。"
                                       "プリンタが正しく設定されているか確認してください。"));
}

} // namespace

Printing::Printing(QObject *parent)
    : QObject(parent)
{
}

Printing::~Printing() = default;

void Printing::setPrinter(std::unique_ptr<PrinterDevice> printer)
{
    m_printer = std::move(printer);
    m_printerGiven = m_printer != nullptr;
}

PrinterDevice &Printing::device() const
{
    if (!m_printer)
        throw printerMissing();
    return *m_printer;
}

void Printing::openJob()
{
    if (m_printerGiven) {
        device().endDoc();
        return;
    }
    // A system printer is opened afresh for every job, so that a printer
    // chosen from the menu in between is the one used.
    m_printer.reset();
    const QPrinterInfo current = PrinterList::currentPrinterInfo();
    if (current.isNull())
        throw printerMissing();
    m_printer = std::make_unique<PrinterDevice>(current);
}

int Printing::zoomForPaper(int paperCode)
{
    switch (paperCode) {
    // clang-format off
    case paperA4: return 0;
    case paperB5: return 86;
    default: return 100;
        // clang-format on
    }
}

void Printing::Alloc(bool newJob, QSizeF *page, qint16 tag)
{
    if (newJob) {
        openJob();
        PrinterDevice &printer = device();
        m_deviceName = printer.deviceName();
        m_driverName = printer.driverName();
        m_port = printer.port();

        printer.setPaperBin(7);
        printer.setZoom(zoomForPaper(printer.paperSize()));
        printer.setPrintQuality(-3);
        printer.setCopies(1);
        printer.setDuplex(1);
        if (page) {
            // Integer division of whole numbers: at least as tall as wide is portrait.
            // (each side rounded first, halves to even).
            const auto width = qint64(std::nearbyint(page->width()));
            const auto height = qint64(std::nearbyint(page->height()));
            if (width == 0)
                throw VbError::divisionByZero();
            printer.setOrientation(height / width != 0 ? 1 : 2);
        }
        emit Define(tag, page);
    }

    PrinterDevice &printer = device();
    printer.setForeColor(Qt::black);
    // Both widths on purpose: the second assignment is the one that counts.
    printer.setDrawWidth(32767);
    printer.setDrawWidth(1);
    printer.setDrawStyle(0);
    printer.setFontTransparent(false);
    printer.setFontCharset(128);
    printer.setFontName(faces.at(0));
    printer.setFontSize(9);

    printer.startPage();
    printer.setCurrentX(0);
    printer.setCurrentY(0);
    printer.setCurrentX(printer.scaleLeft());
    printer.setCurrentY(printer.scaleTop());
}

void Printing::Margins(qint32 which, float value)
{
    switch (which) {
    case 0:
        m_leftMargin = m_rightMargin = m_topMargin = m_bottomMargin = value;
        break;
    // clang-format off
    case 1: m_topMargin = value; break;
    case 2: m_bottomMargin = value; break;
    case 3: m_leftMargin = value; break;
    case 4: m_rightMargin = value; break;
    default: break;
        // clang-format on
    }
}

float Printing::PaddingX() const
{
    const PrinterDevice &printer = device();
    return float((printer.paperWidth() - printer.scaleWidth()) / 2);
}

float Printing::PaddingY() const
{
    const PrinterDevice &printer = device();
    return float((printer.paperHeight() - printer.scaleHeight()) / 2);
}

void Printing::Locate(float x, float y, bool relative)
{
    PrinterDevice &printer = device();
    if (relative) {
        printer.setCurrentX(printer.currentX() + x);
        printer.setCurrentY(printer.currentY() + y);
        return;
    }
    if (x != -1)
        printer.setCurrentX(printer.scaleLeft() + m_leftMargin + x);
    if (y != -1)
        printer.setCurrentY(printer.scaleTop() + m_topMargin + y);
}

bool Printing::IsViewportX(float dx) const
{
    const PrinterDevice &printer = device();
    return printer.currentX() + dx < printer.scaleLeft() + printer.scaleWidth() - m_rightMargin;
}

bool Printing::IsViewportY(float dy) const
{
    const PrinterDevice &printer = device();
    return printer.currentY() + dy < printer.scaleTop() + printer.scaleHeight() - m_bottomMargin;
}

void Printing::StepX(float dx)
{
    PrinterDevice &printer = device();
    printer.setCurrentX(printer.currentX() + (dx != 0 ? dx : printer.textWidth(QStringLiteral("\t"))));
}

void Printing::StepY(float dy)
{
    PrinterDevice &printer = device();
    printer.setCurrentY(printer.currentY()
                        + (dy != 0 ? dy : printer.textHeight(QStringLiteral("\r\n")) / 2));
}

void Printing::SetFont(qint32 face, float size)
{
    PrinterDevice &printer = device();
    if (face >= 0 && face < faces.size())
        printer.setFontName(faces.at(face));
    if (size != 0) {
        const int zoom = printer.zoom();
        printer.setFontSize(zoom != 0 ? size * float(zoom) / 100 : size);
    }
}

void Printing::SetDrawing(qint32 style, float width)
{
    PrinterDevice &printer = device();
    if (style != -1)
        printer.setDrawStyle(style);
    if (width != 0) {
        const int zoom = printer.zoom();
        const double scaled = zoom != 0 ? double(width) * zoom / 100 : double(width);
        printer.setDrawWidth(int(scaled * printer.pixelsPerCmX() + 0.5));
    }
}

void Printing::LPrint(qint32 align, const QString &text, float x, bool relative, bool marked,
                      PrintPosition position, float scale)
{
    PrinterDevice &printer = device();
    const double width = printer.textWidth(text) * scale;

    double startX = 0;
    switch (align) {
    case AlignRight:
        startX = relative ? printer.currentX() - x - width
                          : printer.scaleLeft() + printer.scaleWidth() - m_rightMargin - x - width;
        break;
    case AlignCenter:
        startX = printer.scaleLeft() + m_leftMargin
            + (printer.scaleWidth() - m_leftMargin - m_rightMargin - width) / 2;
        break;
    default:
        startX = (relative ? printer.currentX() : printer.scaleLeft() + m_leftMargin) + x;
        break;
    }

    // The text sits with its vertical middle on the line.
    const double lineY = printer.currentY();
    printer.setCurrentX(startX);
    printer.setCurrentY(lineY - printer.textHeight(QStringLiteral(" ")) / 2);

    if (marked || scale == 1) {
        printer.print(text);
        if (position == PrintPosition::NextZone) {
            const double zone = 14 * printer.textWidth(QStringLiteral("0"));
            const double column = (printer.currentX() - printer.scaleLeft()) / zone;
            printer.setCurrentX(printer.scaleLeft() + std::ceil(column) * zone);
        }
        if (marked) {
            const QPointF corner(startX - markSize / 2, lineY - markSize / 2);
            const double afterX = printer.currentX();
            printer.box(corner, corner + QPointF(markSize, markSize), true);
            printer.setCurrentX(afterX);
        }
    } else {
        // Condensed or stretched through a derived font; the caller's font stays.
        printer.print(text, scale);
    }

    printer.setCurrentY(lineY);
    if (align == AlignCenter)
        printer.setCurrentX(printer.scaleLeft() + printer.scaleWidth() / 2);
}

void Printing::Line(float x1, float y1, float x2, float y2, Shape shape)
{
    PrinterDevice &printer = device();
    const QPointF origin(printer.scaleLeft() + m_leftMargin, printer.scaleTop() + m_topMargin);
    const QPointF from = origin + QPointF(x1, y1);
    const QPointF to = origin + QPointF(x2, y2);
    if (shape == Shape::Rule)
        printer.line(from, to);
    else
        printer.box(from, to, shape == Shape::FilledBox);
}

void Printing::NewPage()
{
    device().newPage();
}

void Printing::EndDoc()
{
    device().endDoc();
}
