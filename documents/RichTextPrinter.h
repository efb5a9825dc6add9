#pragma once

#include <QRectF>

#include <memory>

class PrinterDevice;
class QTextDocument;

// Prints one rich-text box: a copy of its document, laid out for the
// printer at the box's width, cut into slices as tall as the box. The first
// slice goes into the box on the current sheet; each further slice is the
// text that ran over the box, for the same rectangle on a following sheet.
class RichTextPrinter
{
public:
    // box: where the box lies on the sheet, in centimetres from the printable
    // area's top-left corner, at full size. inset: the room between the box's
    // edge and its text, in centimetres. scale: the whole box (place, size and
    // letters) is shrunk or grown by it, as a printer's zoom does.
    RichTextPrinter(const QTextDocument &source, PrinterDevice &printer, const QRectF &box,
                    double inset, double scale);
    ~RichTextPrinter();

    RichTextPrinter(const RichTextPrinter &) = delete;
    RichTextPrinter &operator=(const RichTextPrinter &) = delete;

    int sliceCount() const;
    // Draws one slice (0 is the first) on the printer's current sheet.
    void printSlice(int slice);

private:
    std::unique_ptr<QTextDocument> m_document;
    PrinterDevice &m_printer;
    QRectF m_box;
    double m_scale;
    // The box's size at full size in the printer's pixels.
    QSizeF m_slice;
};
