#include "platform/PrinterDevice.h"

#include "platform/FontSubstitution.h"
#include "platform/vb/VbError.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPrintEngine>
#include <QPrinter>
#include <QPrinterInfo>

#include <cmath>

namespace {

constexpr double cmPerInch = 2.54;

// Qt's CUPS print engine takes extra job options as name/value pairs under
// this engine property (it is not in Qt's public headers).
const auto cupsOptionsKey = QPrintEngine::PrintEnginePropertyKey(0xfe00);

VbError printerError()
{
    return VbError(482, QStringLiteral("プリンタ エラーです。"));
}

int cupsPrintQuality(int code)
{
    switch (code) {
    case -1:
    case -2:
        return 3; // draft
    case -4:
        return 5; // high
    default:
        return 4; // normal
    }
}

Qt::PenStyle penStyle(int drawStyle)
{
    switch (drawStyle) {
    // clang-format off
    case 1: return Qt::DashLine;
    case 2: return Qt::DotLine;
    case 3: return Qt::DashDotLine;
    case 4: return Qt::DashDotDotLine;
    case 5: return Qt::NoPen;
    default: return Qt::SolidLine;   // 0 and 6 (inside solid)
    }
    // clang-format on
}

} // namespace

PrinterDevice::PrinterDevice(const QPrinterInfo &printer)
    : m_printer(std::make_unique<QPrinter>(printer, QPrinter::HighResolution))
    , m_deviceName(printer.printerName())
    , m_driverName(printer.makeAndModel())
    , m_port(printer.location())
{
}

PrinterDevice::PrinterDevice(const QString &pdfFile)
    : m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
    , m_deviceName(QStringLiteral("PDF"))
    , m_driverName(QStringLiteral("Qt PDF"))
    , m_port(pdfFile)
{
    m_printer->setOutputFormat(QPrinter::PdfFormat);
    m_printer->setOutputFileName(pdfFile);
    m_printer->setPageSize(QPageSize(QPageSize::A4));
}

PrinterDevice::~PrinterDevice()
{
    if (isPrinting())
        m_painter->end();
}

int PrinterDevice::paperSize() const
{
    return m_printer->pageLayout().pageSize().windowsId();
}

void PrinterDevice::setPaperSize(int code)
{
    const QPageSize::PageSizeId id = QPageSize::id(code);
    if (id == QPageSize::Custom)
        throw VbError::invalidArgument();
    m_printer->setPageSize(QPageSize(id));
}

void PrinterDevice::setPaperBin(int code)
{
    // Qt's sources follow the printer codes one lower, with a gap before the
    // cassette (14) and form source (15).
    if (code >= 1 && code <= 11)
        m_printer->setPaperSource(QPrinter::PaperSource(code - 1));
    else if (code == 14)
        m_printer->setPaperSource(QPrinter::Cassette);
    else if (code == 15)
        m_printer->setPaperSource(QPrinter::FormSource);
    else
        throw VbError::invalidArgument();
    m_paperBin = code;
}

void PrinterDevice::setPrintQuality(int code)
{
    if (code < -4 || code == 0)
        throw VbError::invalidArgument();
    m_printQuality = code;
    if (code > 0) {
        m_printer->setResolution(code);
        return;
    }
    if (m_printer->outputFormat() == QPrinter::NativeFormat) {
        QStringList options = m_printer->printEngine()->property(cupsOptionsKey).toStringList();
        const qsizetype at = options.indexOf(QStringLiteral("print-quality"));
        if (at >= 0 && at % 2 == 0)
            options.remove(at, 2);
        options << QStringLiteral("print-quality") << QString::number(cupsPrintQuality(code));
        m_printer->printEngine()->setProperty(cupsOptionsKey, options);
    }
}

int PrinterDevice::orientation() const
{
    return m_printer->pageLayout().orientation() == QPageLayout::Landscape ? 2 : 1;
}

void PrinterDevice::setOrientation(int code)
{
    if (code != 1 && code != 2)
        throw VbError::invalidArgument();
    m_printer->setPageOrientation(code == 2 ? QPageLayout::Landscape : QPageLayout::Portrait);
}

int PrinterDevice::copies() const
{
    return m_printer->copyCount();
}

void PrinterDevice::setCopies(int count)
{
    if (count < 1)
        throw VbError::invalidArgument();
    m_printer->setCopyCount(count);
}

int PrinterDevice::duplex() const
{
    switch (m_printer->duplex()) {
    // clang-format off
    case QPrinter::DuplexLongSide: return 2;
    case QPrinter::DuplexShortSide: return 3;
    default: return 1;
        // clang-format on
    }
}

void PrinterDevice::setDuplex(int code)
{
    switch (code) {
    // clang-format off
    case 1: m_printer->setDuplex(QPrinter::DuplexNone); break;
    case 2: m_printer->setDuplex(QPrinter::DuplexLongSide); break;
    case 3: m_printer->setDuplex(QPrinter::DuplexShortSide); break;
    default: throw VbError::invalidArgument();
        // clang-format on
    }
}

int PrinterDevice::colorMode() const
{
    return m_printer->colorMode() == QPrinter::Color ? 2 : 1;
}

void PrinterDevice::setColorMode(int code)
{
    if (code != 1 && code != 2)
        throw VbError::invalidArgument();
    m_printer->setColorMode(code == 2 ? QPrinter::Color : QPrinter::GrayScale);
}

void PrinterDevice::setZoom(int percent)
{
    if (percent < 0)
        throw VbError::invalidArgument();
    m_zoom = percent;
}

double PrinterDevice::scaleWidth() const
{
    return m_printer->pageLayout().paintRect(QPageLayout::Millimeter).width() / 10.0;
}

double PrinterDevice::scaleHeight() const
{
    return m_printer->pageLayout().paintRect(QPageLayout::Millimeter).height() / 10.0;
}

double PrinterDevice::paperWidth() const
{
    return m_printer->pageLayout().fullRect(QPageLayout::Millimeter).width() / 10.0;
}

double PrinterDevice::paperHeight() const
{
    return m_printer->pageLayout().fullRect(QPageLayout::Millimeter).height() / 10.0;
}

QFont PrinterDevice::font() const
{
    QFont result = FontSubstitution::font(m_fontName, m_fontSize);
    // The font is measured and drawn in the printer's own pixels.
    result.setHintingPreference(QFont::PreferNoHinting);
    return result;
}

void PrinterDevice::setDrawWidth(int pixels)
{
    if (pixels < 1 || pixels > 32767)
        throw VbError::invalidArgument();
    m_drawWidth = pixels;
}

void PrinterDevice::setDrawStyle(int style)
{
    if (style < 0 || style > 6)
        throw VbError::invalidArgument();
    m_drawStyle = style;
}

double PrinterDevice::pixelsPerCmX() const
{
    return m_printer->logicalDpiX() / cmPerInch;
}

double PrinterDevice::pixelsPerCmY() const
{
    return m_printer->logicalDpiY() / cmPerInch;
}

double PrinterDevice::textWidth(const QString &text) const
{
    const QFontMetricsF metrics(font(), m_printer.get());
    double widest = 0;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        QString plain = line;
        plain.remove(QLatin1Char('\r'));
        // A tab is one character cell here, as the printer measures it; Qt
        // would expand it to the next tab stop.
        plain.replace(QLatin1Char('\t'), QLatin1Char(' '));
        widest = std::max(widest, metrics.horizontalAdvance(plain));
    }
    return widest / pixelsPerCmX();
}

double PrinterDevice::textHeight(const QString &text) const
{
    const QFontMetricsF metrics(font(), m_printer.get());
    const qsizetype lines = text.count(QLatin1Char('\n')) + 1;
    return lines * metrics.height() / pixelsPerCmY();
}

void PrinterDevice::print(const QString &text, double horizontalScale)
{
    QPainter *p = painter();
    const QFont printFont = font();
    const QFontMetricsF metrics(printFont, m_printer.get());
    p->save();
    p->setFont(printFont);
    p->setPen(m_foreColor);
    p->setBackgroundMode(m_fontTransparent ? Qt::TransparentMode : Qt::OpaqueMode);
    p->setBackground(Qt::white);
    p->translate(toPixels(QPointF(m_currentX, m_currentY)));
    p->scale(horizontalScale, 1.0);
    p->drawText(QPointF(0, metrics.ascent()), text);
    p->restore();
    m_currentX += textWidth(text) * horizontalScale;
}

void PrinterDevice::line(const QPointF &from, const QPointF &to)
{
    QPainter *p = painter();
    applyPen();
    p->setBrush(Qt::NoBrush);
    p->drawLine(toPixels(from), toPixels(to));
    m_currentX = to.x();
    m_currentY = to.y();
}

void PrinterDevice::box(const QPointF &corner, const QPointF &oppositeCorner, bool filled)
{
    QPainter *p = painter();
    applyPen();
    p->setBrush(filled ? QBrush(m_foreColor) : QBrush(Qt::NoBrush));
    p->drawRect(QRectF(toPixels(corner), toPixels(oppositeCorner)).normalized());
    m_currentX = oppositeCorner.x();
    m_currentY = oppositeCorner.y();
}

void PrinterDevice::startPage()
{
    painter();
}

void PrinterDevice::newPage()
{
    // The sheet is only fed when something is drawn on the next page, so
    // that a job that ends right after a page break has no blank last page.
    painter();
    m_newPagePending = true;
    m_currentX = scaleLeft();
    m_currentY = scaleTop();
}

void PrinterDevice::endDoc()
{
    if (!isPrinting())
        return;
    m_newPagePending = false;
    const bool done = m_painter->end();
    m_painter.reset();
    if (!done)
        throw printerError();
}

bool PrinterDevice::isPrinting() const
{
    return m_painter && m_painter->isActive();
}

QPainter *PrinterDevice::painter()
{
    if (isPrinting()) {
        if (m_newPagePending) {
            m_newPagePending = false;
            if (!m_printer->newPage())
                throw printerError();
        }
        return m_painter.get();
    }
    m_painter = std::make_unique<QPainter>();
    if (!m_painter->begin(m_printer.get())) {
        m_painter.reset();
        throw printerError();
    }
    m_painter->setRenderHint(QPainter::Antialiasing);
    return m_painter.get();
}

void PrinterDevice::applyPen()
{
    QPen pen(m_foreColor, m_drawWidth, penStyle(m_drawStyle));
    pen.setJoinStyle(Qt::MiterJoin);
    pen.setCapStyle(Qt::SquareCap);
    m_painter->setPen(pen);
}

QPointF PrinterDevice::toPixels(const QPointF &cm) const
{
    return QPointF(cm.x() * pixelsPerCmX(), cm.y() * pixelsPerCmY());
}
