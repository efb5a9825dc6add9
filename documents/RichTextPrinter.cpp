#include "documents/RichTextPrinter.h"

#include "platform/PrinterDevice.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPrinter>
#include <QTextDocument>
#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr double CentimetresPerInch = 2.54;

} // namespace

RichTextPrinter::RichTextPrinter(const QTextDocument &source, PrinterDevice &printer,
                                 const QRectF &box, double inset, double scale)
    : m_document(source.clone())
    , m_printer(printer)
    , m_box(box)
    , m_scale(scale)
{
    // The copy is laid out for the printer's own resolution, so that a 12
    // point letter is 12 points on paper whatever the screen's zoom was.
    m_document->setDefaultFont(source.defaultFont());
    m_document->documentLayout()->setPaintDevice(printer.printer());
    m_slice = QSizeF(box.width() * printer.pixelsPerCmX(), box.height() * printer.pixelsPerCmY());
    // The layout counts frame margins and indents in the screen's pixels and
    // scales them to the printer itself.
    const QScreen *screen = QGuiApplication::primaryScreen();
    const double screenDpi = screen ? screen->logicalDotsPerInchY() : 96.0;
    m_document->setDocumentMargin(inset / CentimetresPerInch * screenDpi);
    // Page by page formatting: a line never straddles two slices.
    m_document->setPageSize(m_slice);
}

RichTextPrinter::~RichTextPrinter() = default;

int RichTextPrinter::sliceCount() const
{
    return m_document->pageCount();
}

void RichTextPrinter::printSlice(int slice)
{
    QPainter *painter = m_printer.painter();
    const QRectF visible(0, slice * m_slice.height(), m_slice.width(), m_slice.height());
    painter->save();
    painter->translate(m_printer.toPixels(m_box.topLeft() * m_scale));
    painter->scale(m_scale, m_scale);
    painter->setClipRect(QRectF(QPointF(0, 0), m_slice));
    painter->translate(0, -visible.top());
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = visible;
    context.palette.setColor(QPalette::Text, Qt::black);
    m_document->documentLayout()->draw(painter, context);
    painter->restore();
}
