#pragma once

#include <QObject>
#include <QSizeF>
#include <QString>

#include <memory>

class PrinterDevice;

// The page-layout layer over the system printer: text and lines placed in
// centimetres relative to margins the class keeps. The caller drives it line
// by line; it holds no document. Errors (no printer, a bad value) are thrown
// as VbError to the caller, never trapped here.
class Printing : public QObject
{
    Q_OBJECT

public:
    // clang-format off
    enum Alignment { AlignLeft = 0, AlignRight = 1, AlignCenter = 2 };
    // clang-format on

    // Where the current x goes after a printed text: just past it, or on to
    // the next print zone (14 columns of the width of "0").
    enum class PrintPosition { AfterText,
                               NextZone };

    // clang-format off
    enum class Shape { Rule, Box, FilledBox };
    // clang-format on

    explicit Printing(QObject *parent = nullptr);
    ~Printing() override;

    // The printer the next job goes to. Without one, a new job opens the
    // program's current system printer (PrinterList).
    void setPrinter(std::unique_ptr<PrinterDevice> printer);
    // The printer of the job in progress (for Define handlers and for callers
    // that draw on their own); null before the first job.
    PrinterDevice *printer() const { return m_printer.get(); }

    // The printer the current job was opened on.
    QString deviceName() const { return m_deviceName; }
    QString driverName() const { return m_driverName; }
    QString port() const { return m_port; }

    // The zoom a job takes from its paper size: 0 on A4 (unscaled), 86 on
    // B5 (a layout made for A4 shrinks to fit), 100 on anything else.
    static int zoomForPaper(int paperCode);

    float leftMargin() const { return m_leftMargin; }
    float rightMargin() const { return m_rightMargin; }
    float topMargin() const { return m_topMargin; }
    float bottomMargin() const { return m_bottomMargin; }

    // Prepares the printer for a page; with newJob the job's first page. The
    // page size (centimetres, may be null) decides the orientation and is
    // handed to Define with the tag.
    void Alloc(bool newJob, QSizeF *page = nullptr, qint16 tag = 0);
    // 0 all four margins, 1 top, 2 bottom, 3 left, 4 right; other codes do nothing.
    void Margins(qint32 which, float value);
    float PaddingX() const;
    float PaddingY() const;
    // -1 keeps a coordinate (unless relative).
    void Locate(float x, float y, bool relative);
    bool IsViewportX(float dx) const;
    bool IsViewportY(float dy) const;
    // 0 steps one tab's width / one line of the current font.
    void StepX(float dx);
    void StepY(float dy);
    // Faces 0 to 4: "MS UI Gothic", "ＭＳ ゴシック", "ＭＳ Ｐゴシック", "ＭＳ 明朝", "ＭＳ Ｐ明朝".
    void SetFont(qint32 face, float size);
    // Style -1 keeps the pen style; width (centimetres) 0 keeps the width.
    void SetDrawing(qint32 style, float width);
    void LPrint(qint32 align, const QString &text, float x = 0, bool relative = false,
                bool marked = false, PrintPosition position = PrintPosition::AfterText,
                float scale = 1);
    // A rule or a box between two points given like Locate's (from the
    // margins), in the current pen. The current position ends at the second.
    void Line(float x1, float y1, float x2, float y2, Shape shape = Shape::Rule);

    void NewPage();
    void EndDoc();

signals:
    // A print job starts: the host may adjust the printer before anything is
    // drawn. The tag is passed through from Alloc.
    void Define(qint16 tag, QSizeF *page);

private:
    PrinterDevice &device() const;
    void openJob();

    float m_leftMargin = 0;
    float m_rightMargin = 0;
    float m_topMargin = 0;
    float m_bottomMargin = 0;
    std::unique_ptr<PrinterDevice> m_printer;
    bool m_printerGiven = false;
    QString m_deviceName;
    QString m_driverName;
    QString m_port;
};
