#include "documents/DatabaseApplet.h"

#include "app/ControlScaler.h"
#include "documents/DocumentRecord.h"
#include "documents/PageSheet.h"
#include "documents/RichTextCleanup.h"
#include "documents/RichTextCodec.h"
#include "documents/RichTextPrinter.h"
#include "documents/WordProcessor.h"
#include "platform/ErrorTrap.h"
#include "platform/FlatScrollStyle.h"
#include "platform/RuntimeLog.h"
#include "platform/PrinterDevice.h"
#include "platform/PrinterList.h"
#include "platform/vb/VbDateFormat.h"
#include "platform/vb/VbError.h"
#include "tools/Printing.h"

#include <QHeaderView>
#include <QPageLayout>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

const QString ZoomName = QStringLiteral("Zoom");
const QString FontSizeName = QStringLiteral("Font Size");
const QString AlignmentName = QStringLiteral("Alignment");
const QString BulletName = QStringLiteral("Bullet");
const QString TimestampCommand = QStringLiteral("Timestamp");
const QString TimestampPattern = QStringLiteral("ggge年m月d日 aaaa");

// A value to a whole number the way the runtime converts a floating value:
// halves go to the even neighbour.
double roundHalfToEven(double value)
{
    return std::nearbyint(value);
}

// The fixed-point currency type keeps four decimals.
double toCurrency(const QVariant &value)
{
    return roundHalfToEven(value.toDouble() * 10000.0) / 10000.0;
}

// An idle pause after typing, after which the record is brought up to date
// even if nobody asks for it.
constexpr int IdleSyncMilliseconds = 1000;

constexpr int DefaultPointSize = 12;
// Room kept around the caret when the page scrolls to it, in pixels.
constexpr int CaretMargin = 48;
constexpr int GridRows = 20;
constexpr int GridColumns = 8;

constexpr double CentimetresPerInch = 2.54;
// However narrow the view, the page is not shrunk below this; a view that
// small is only passing through on its way to its real size.
constexpr double SmallestFit = 0.25;

VbError controlMissing()
{
    return VbError(340, QStringLiteral("コントロール配列の要素が存在しません。"));
}

// How much the rich text of a page is shrunk on paper: by the zoom the print
// layout gives the paper size (an A4 layout shrinks to 86 % on B5). The
// document's own zoom, which Define hands to the printer as well, is the
// magnification of the screen and does not enlarge the paper.
double printScale(const PrinterDevice &printer)
{
    const int zoom = Printing::zoomForPaper(printer.paperSize());
    return zoom == 0 ? 1.0 : zoom / 100.0;
}

} // namespace

DatabaseApplet::DatabaseApplet(QWidget *parent)
    : Applet(parent)
    , m_scrollArea(new QScrollArea(this))
    , m_sheet(new PageSheet)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scrollArea);
    // The workspace shows through around the sheet.
    m_scrollArea->setFrameShape(QFrame::NoFrame);
    m_scrollArea->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_scrollArea->viewport()->setAutoFillBackground(false);
    m_sheet->setAutoFillBackground(false);
    m_scrollArea->setWidget(m_sheet);
    // Scroll bars wide enough to take with an unsteady hand.
    for (QScrollBar *bar : {m_scrollArea->horizontalScrollBar(), m_scrollArea->verticalScrollBar()})
        bar->setStyle(FlatScrollStyle::instance());
    // The page follows the width of the view.
    m_scrollArea->installEventFilter(this);

    // The patterns the placed boxes are made from; they never show.
    auto *wordPattern = new WordProcessor(m_sheet->paper());
    wordPattern->setObjectName(QStringLiteral("WordProcessors0"));
    // Text that names no size is written at 12 points, the rich-text box's default.
    QFont writing = wordPattern->font();
    writing.setPointSize(DefaultPointSize);
    wordPattern->setBaseFont(writing);
    wordPattern->hide();
    m_wordProcessors.append(wordPattern);
    auto *gridPattern = new QTableWidget(GridRows, GridColumns, m_sheet->paper());
    gridPattern->setObjectName(QStringLiteral("SpreadSheets0"));
    gridPattern->hide();
    m_spreadSheets.append(gridPattern);

    m_idleSync.setSingleShot(true);
    m_idleSync.setInterval(IdleSyncMilliseconds);
    connect(&m_idleSync, &QTimer::timeout, this, &DatabaseApplet::syncRecord);

    // The printer is asked when a document opens; asking now would only
    // hold up the window.
    measurePage(WithoutPrinter);
    fitShownPage();
}

QList<QWidget *> DatabaseApplet::AllCtrls() const
{
    QList<QWidget *> controls;
    for (WordProcessor *box : m_wordProcessors) {
        if (box)
            controls.append(box);
    }
    for (QTableWidget *grid : m_spreadSheets) {
        if (grid)
            controls.append(grid);
    }
    return controls;
}

void DatabaseApplet::Start()
{
    Applet::Start();
    bool active = true;
    emit started(active);
}

void DatabaseApplet::Quit()
{
    bool active = false;
    emit started(active);
}

void DatabaseApplet::setDocument(qint32 kind)
{
    const qint32 previous = Document();
    if (previous == WordProcessorKind)
        closeShownBoxes();
    Applet::setDocument(kind);
    if (kind == WordProcessorKind) {
        measurePage();
        m_pageZoom = 100;
        fitShownPage();
        m_zoom = 100;
        showPage(1);
        // The page and its boxes show at the document's zoom alike: a copy
        // made at 200 % stays at 200 %.
        if (const DocumentRecord *record = sharedRecord(); record && record->Zoom != 100)
            zoomShownPage(100, record->Zoom);
    }
    if (kind == WordProcessorKind || previous == WordProcessorKind)
        raiseChange(kind == WordProcessorKind, QStringLiteral("Word Processor"));
}

bool DatabaseApplet::Printout()
{
    if (Document() != WordProcessorKind) {
        beep();
        return false;
    }
    const char *where = "DatabaseApplet::Printout";
    bool failed = false;
    auto step = [&](auto &&action) {
        if (!ErrorTrap::run(where, action))
            failed = true;
    };
    Printing *const job = printing();
    auto engine = [job]() -> Printing & {
        if (!job)
            throw VbError(91, QStringLiteral("オブジェクト変数が設定されていません。"));
        return *job;
    };
    auto printer = [&]() -> PrinterDevice & {
        if (!engine().printer())
            throw VbError(484, QStringLiteral("プリンタがありません。"));
        return *engine().printer();
    };

    syncRecord();
    const DocumentRecord *record = sharedRecord();
    // Define hands the document's set-up to the printer on the way.
    step([&] { engine().Alloc(true); });
    const int pageCount = record ? qMin(int(record->PageCount), int(record->Pages.size())) : 0;
    for (int number = 1; number <= pageCount; ++number) {
        step([&] { engine().Alloc(false); });
        const DocumentPage &page = record->page(number);
        const int itemCount = qMin(int(page.ItemCount), int(page.Items.size()));
        // The boxes of the page, each cut into the slices of text it holds.
        std::vector<std::unique_ptr<RichTextPrinter>> boxes;
        int sheets = 1;
        for (int index = 1; index <= itemCount; ++index) {
            step([&] {
                const DocumentItem &item = page.item(index);
                // The printer's scale is centimetres, so a box measured in
                // centimetres (Unit 0) needs no conversion; a box in other
                // units is taken as it stands.
                const QRectF place(item.Left, item.Top, item.Width, item.Height);
                if (item.Kind == DocumentItem::RichText) {
                    // The i-th box of every page prints from element i.
                    WordProcessor *box = WordProcessors(index);
                    if (!box)
                        throw controlMissing();
                    PrinterDevice &device = printer();
                    const double inset = (box->frameWidth() + box->document()->documentMargin())
                        * CentimetresPerInch / box->logicalDpiX();
                    boxes.push_back(std::make_unique<RichTextPrinter>(
                        *box->document(), device, place, inset, printScale(device)));
                    sheets = qMax(sheets, boxes.back()->sliceCount());
                } else if (item.Kind == DocumentItem::Grid) {
                    // Grids are not printed.
                    if (!SpreadSheets(index))
                        throw controlMissing();
                }
            });
        }
        for (int sheet = 0; sheet < sheets; ++sheet) {
            // Text that ran over its box goes on to the next sheets.
            if (sheet > 0)
                step([&] { engine().NewPage(); });
            for (const auto &box : boxes) {
                if (sheet < box->sliceCount())
                    step([&] { box->printSlice(sheet); });
            }
        }
        step([&] { engine().NewPage(); });
    }
    step([&] { engine().EndDoc(); });
    return !failed;
}

QVariant DatabaseApplet::Properties(const QString &name) const
{
    if (name == ZoomName)
        return QVariant::fromValue<qint16>(m_zoom);
    if (name != FontSizeName && name != AlignmentName && name != BulletName)
        return QVariant();
    WordProcessor *box = activeWordProcessor();
    if (!box)
        return QVariant();
    if (name == FontSizeName)
        return box->selFontSize();
    if (name == AlignmentName)
        return box->selAlignment();
    return box->selBullet();
}

void DatabaseApplet::setProperties(const QString &name, const QVariant &value)
{
    if (name == ZoomName) {
        applyZoom(qint32(roundHalfToEven(value.toDouble())));
        return;
    }
    if (name != FontSizeName && name != AlignmentName && name != BulletName)
        return;
    WordProcessor *box = activeWordProcessor();
    if (!box)
        return;
    m_settingProperty = true;
    if (name == FontSizeName)
        formatParagraph(box, QString(), toCurrency(value), QColor());
    else if (name == AlignmentName)
        box->setSelAlignment(value.toInt());
    else
        box->setSelBullet(value.toBool());
    m_settingProperty = false;
    raiseChange(true, QStringLiteral("All Properties"));
}

QVariant DatabaseApplet::Update(const QString &command, const QVariant &)
{
    if (command == TimestampCommand) {
        if (WordProcessor *box = activeWordProcessor())
            box->setSelText(VbDateFormat::format(QDateTime::currentDateTime(), TimestampPattern));
    }
    return QVariant();
}

void DatabaseApplet::setRecord(DocumentRecord *record)
{
    m_unsaved.clear();
    m_recordText.clear();
    Applet::setRecord(record);
    // The screen shows the new contents at once.
    if (Document() == WordProcessorKind)
        showPage(1);
}

void DatabaseApplet::syncRecord()
{
    m_idleSync.stop();
    // A clean-up still waiting comes first: the record never sees colour.
    for (WordProcessor *box : m_wordProcessors) {
        if (box)
            box->cleanUpNow();
    }
    DocumentRecord *record = sharedRecord();
    if (!record || m_shownPage < 1 || m_shownPage > record->Pages.size()) {
        m_unsaved.clear();
        return;
    }
    DocumentPage &page = record->page(m_shownPage);
    for (int index : std::as_const(m_unsaved)) {
        WordProcessor *box = WordProcessors(index);
        if (index < 1 || !box || index > page.Items.size())
            continue;
        QString &text = page.item(index).Text;
        if (!m_recordText.contains(index) || m_recordText.value(index) != text)
            continue; // replaced by the host: the screen is the stale one
        // Colour tables and underlines are taken out of the source as well;
        // the box itself holds none by now, so it needs no reloading.
        text = RichTextCleanup::clean(RichTextCodec::write(box->document()));
        m_recordText.insert(index, text);
    }
    m_unsaved.clear();
}

WordProcessor *DatabaseApplet::WordProcessors(int index) const
{
    return index >= 0 && index < m_wordProcessors.size() ? m_wordProcessors.at(index) : nullptr;
}

QTableWidget *DatabaseApplet::SpreadSheets(int index) const
{
    return index >= 0 && index < m_spreadSheets.size() ? m_spreadSheets.at(index) : nullptr;
}

void DatabaseApplet::showPage(int number)
{
    DocumentRecord *record = sharedRecord();
    if (!record || number < 1 || number > record->PageCount || number > record->Pages.size())
        return;
    if (m_shownPage > 0)
        closeShownBoxes();
    m_shownPage = number;
    const DocumentPage &page = record->page(number);
    const int count = qMin(int(page.ItemCount), int(page.Items.size()));
    for (int index = 1; index <= count; ++index) {
        const DocumentItem &item = page.item(index);
        if (item.Kind == DocumentItem::RichText) {
            WordProcessor *box = newWordProcessor(index);
            box->setGeometry(placeOf(item));
            box->setReservedValue(item.Reserved1);
            // The runtime's Not on a 16-bit value: only -1 turns into False.
            box->setEnabled(qint16(~item.Flags1) != 0);
            if (!item.Text.isEmpty())
                RichTextCodec::read(item.Text, box->document());
            m_recordText.insert(index, item.Text);
            const bool cleaned = box->cleanUpNow();
            box->document()->clearUndoRedoStacks();
            // The record already holds this text, unless the clean-up changed it.
            if (!cleaned)
                m_unsaved.remove(index);
            box->show();
        } else if (item.Kind == DocumentItem::Grid) {
            QTableWidget *grid = newSpreadSheet(index);
            grid->setGeometry(placeOf(item));
            grid->setEnabled(qint16(~item.Flags1) != 0);
            grid->show();
        }
    }
    fitShownPage();
    if (!m_unsaved.isEmpty())
        m_idleSync.start();
}

void DatabaseApplet::formatParagraph(QWidget *control, const QString &fontName, double size, const QColor &colour)
{
    auto *box = qobject_cast<WordProcessor *>(control);
    if (!box)
        return;
    QTextDocument *document = box->document();
    QTextCursor cursor = box->textCursor();
    // The paragraph that holds the caret, its end mark included: in a
    // QTextDocument a paragraph's end mark is its block character format.
    const QTextBlock block = document->findBlock(cursor.selectionStart());
    const int start = block.position();
    const int end = block.position() + block.length() - 1;
    QTextCharFormat format;
    if (!fontName.isEmpty())
        format.setFontFamilies({fontName});
    if (size != 0)
        format.setFontPointSize(size);
    if (colour.isValid())
        format.setForeground(colour);
    cursor.beginEditBlock();
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(format);
    cursor.mergeBlockCharFormat(format);
    cursor.endEditBlock();
    // The caret ends at the paragraph's start, nothing selected.
    cursor.setPosition(start);
    box->setTextCursor(cursor);
}

void DatabaseApplet::applyZoom(qint32 zoom)
{
    DocumentRecord *record = sharedRecord();
    if (!record)
        return;
    if (record->Zoom == 0 || zoom <= 0 || zoom > std::numeric_limits<qint16>::max()) {
        RuntimeLog::note("DatabaseApplet::Zoom", QStringLiteral("zoom %1 to %2 skipped").arg(record->Zoom).arg(zoom));
        return;
    }
    const qint32 old = record->Zoom;
    record->Zoom = zoom;
    zoomShownPage(old, zoom);
}

// The page from one zoom to another: back to 100 % first, with the rounded
// percentage (150 to 100 scales by 67), then to the new zoom.
void DatabaseApplet::zoomShownPage(qint32 from, qint32 zoom)
{
    if (from <= 0 || zoom <= 0 || zoom > std::numeric_limits<qint16>::max())
        return;
    // The fit is taken off first: the zoom steps work on the boxes as the
    // zoom alone left them.
    unfitShownPage();
    const QList<QWidget *> controls = AllCtrls();
    const auto back = qint16(roundHalfToEven(100.0 / from * 100.0));
    for (QWidget *control : controls)
        ControlScaler::scale(control, back);
    for (QWidget *control : controls)
        ControlScaler::scale(control, qint16(zoom));
    for (WordProcessor *box : std::as_const(m_wordProcessors)) {
        if (box)
            box->setTextZoom(zoom);
    }
    m_pageZoom = zoom;
    fitShownPage();
}

bool DatabaseApplet::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_scrollArea) {
        if (event->type() == QEvent::Resize)
            fitShownPage();
        return false;
    }
    return Applet::eventFilter(watched, event);
}

// The share of the page's width at 100 % that the view has room for, the
// sheet's margins and the vertical bar taken off. The bar is counted even
// when the page is short enough to do without it: a page that widened when
// the bar went would only bring it back.
double DatabaseApplet::fitForView() const
{
    if (m_pageSize.width() <= 0)
        return 1.0;
    const int room = m_scrollArea->maximumViewportSize().width() - m_scrollArea->verticalScrollBar()->sizeHint().width()
        - 2 * PageSheet::Margin;
    return std::clamp(double(room) / m_pageSize.width(), SmallestFit, 1.0);
}

// Sizes the paper at the zoom times the fit, and each shown box at its
// unfitted place times the fit. Only the screen changes: the record keeps
// the boxes' places, and the printer takes the letters' own sizes.
void DatabaseApplet::fitShownPage()
{
    m_fit = fitForView();
    const double scale = m_fit / 100.0;
    m_sheet->setPaperSize(QSize(int(double(qint64(m_pageZoom) * m_pageSize.width()) * scale),
                                int(double(qint64(m_pageZoom) * m_pageSize.height()) * scale)));
    for (QWidget *control : shownControls()) {
        auto *box = qobject_cast<WordProcessor *>(control);
        auto state = m_unfitted.find(control);
        if (state == m_unfitted.end())
            state = m_unfitted.insert(control, Unfitted{control->geometry(), control->font(), box ? box->textZoom() : 100});
        const QRect g = state->geometry;
        const QRect fitted(qRound(g.x() * m_fit), qRound(g.y() * m_fit), qRound(g.width() * m_fit),
                           qRound(g.height() * m_fit));
        if (control->geometry() != fitted)
            control->setGeometry(fitted);
        QFont font = state->font;
        if (font.pointSizeF() > 0)
            font.setPointSizeF(font.pointSizeF() * m_fit);
        else if (font.pixelSize() > 0)
            font.setPixelSize(qMax(1, qRound(font.pixelSize() * m_fit)));
        if (control->font() != font)
            control->setFont(font);
        if (box) {
            const int textZoom = qMax(1, qRound(state->textZoom * m_fit));
            if (box->textZoom() != textZoom)
                box->setTextZoom(textZoom);
        }
    }
}

void DatabaseApplet::unfitShownPage()
{
    for (QWidget *control : shownControls()) {
        const auto state = m_unfitted.constFind(control);
        if (state == m_unfitted.constEnd())
            continue;
        if (control->geometry() != state->geometry)
            control->setGeometry(state->geometry);
        if (control->font() != state->font)
            control->setFont(state->font);
        if (auto *box = qobject_cast<WordProcessor *>(control); box && box->textZoom() != state->textZoom)
            box->setTextZoom(state->textZoom);
    }
    m_unfitted.clear();
}

// The placed boxes; the patterns are never fitted, so a box made from one
// starts from the zoom alone like the others.
QList<QWidget *> DatabaseApplet::shownControls() const
{
    QList<QWidget *> controls;
    for (int index = 1; index < m_wordProcessors.size(); ++index) {
        if (m_wordProcessors.at(index))
            controls.append(m_wordProcessors.at(index));
    }
    for (int index = 1; index < m_spreadSheets.size(); ++index) {
        if (m_spreadSheets.at(index))
            controls.append(m_spreadSheets.at(index));
    }
    return controls;
}

void DatabaseApplet::measurePage(PageSource source)
{
    // The whole sheet, and its printable part, at 100 %: the current
    // printer's, set up with the document's codes, or a portrait A4 sheet
    // printable to its edges when no printer is installed.
    const double pixelsPerMillimetreX = logicalDpiX() / 25.4;
    const double pixelsPerMillimetreY = logicalDpiY() / 25.4;
    QRectF paper(0, 0, 210.0, 297.0);
    QRectF printable = paper;
    ErrorTrap::run("DatabaseApplet::measurePage", [&] {
        if (source == WithoutPrinter)
            return;
        const QPrinterInfo info = PrinterList::currentPrinterInfo();
        if (info.isNull())
            return;
        PrinterDevice printer(info);
        applyPrinterSetup(printer);
        const QPageLayout layout = printer.printer()->pageLayout();
        paper = layout.fullRect(QPageLayout::Millimeter);
        printable = layout.paintRect(QPageLayout::Millimeter);
    });
    auto toPixels = [&](const QRectF &rect) {
        return QRect(qRound(rect.x() * pixelsPerMillimetreX), qRound(rect.y() * pixelsPerMillimetreY),
                     qRound(rect.width() * pixelsPerMillimetreX), qRound(rect.height() * pixelsPerMillimetreY));
    };
    m_pageSize = toPixels(paper).size();
    m_printableRect = toPixels(printable);
}

void DatabaseApplet::closeShownBoxes()
{
    DocumentRecord *record = sharedRecord();
    syncRecord();
    if (record && m_shownPage >= 1 && m_shownPage <= record->Pages.size()) {
        const DocumentPage &page = record->page(m_shownPage);
        const int count = qMin(int(page.ItemCount), int(page.Items.size()));
        for (int index = 1; index <= count; ++index) {
            const qint32 kind = page.item(index).Kind;
            if (kind == DocumentItem::RichText && WordProcessors(index)) {
                m_wordProcessors[index]->hide();
                m_wordProcessors[index]->deleteLater();
                m_wordProcessors[index] = nullptr;
            } else if (kind == DocumentItem::Grid && SpreadSheets(index)) {
                m_spreadSheets[index]->hide();
                m_spreadSheets[index]->deleteLater();
                m_spreadSheets[index] = nullptr;
            }
        }
    }
    // Whatever the record no longer names goes as well; the patterns stay.
    for (int index = 1; index < m_wordProcessors.size(); ++index) {
        if (m_wordProcessors[index])
            m_wordProcessors[index]->deleteLater();
    }
    for (int index = 1; index < m_spreadSheets.size(); ++index) {
        if (m_spreadSheets[index])
            m_spreadSheets[index]->deleteLater();
    }
    m_wordProcessors.resize(1);
    m_spreadSheets.resize(1);
    m_unsaved.clear();
    m_recordText.clear();
    m_unfitted.clear();
    m_shownPage = 0;
}

WordProcessor *DatabaseApplet::newWordProcessor(int index)
{
    WordProcessor *pattern = m_wordProcessors.first();
    auto *box = new WordProcessor(m_sheet->paper());
    box->setObjectName(QStringLiteral("WordProcessors%1").arg(index));
    box->setIndex(index);
    box->setBaseFont(pattern->baseFont());
    box->setFrameShape(pattern->frameShape());
    if (m_wordProcessors.size() <= index)
        m_wordProcessors.resize(index + 1);
    m_wordProcessors[index] = box;
    connect(box, &WordProcessor::edited, this, [this, index] { boxEdited(index); });
    connect(box, &QTextEdit::cursorPositionChanged, this, [this, box] {
        // The page scrolls along with the caret, and the side bar follows it
        // into another paragraph.
        const QPoint caret = box->viewport()->mapTo(m_sheet, box->cursorRect().center());
        m_scrollArea->ensureVisible(caret.x(), caret.y(), CaretMargin, CaretMargin);
        if (!m_settingProperty)
            raiseChange(true, QStringLiteral("All Properties"));
    });
    watchInput(box);
    watchInput(box->viewport());
    return box;
}

QTableWidget *DatabaseApplet::newSpreadSheet(int index)
{
    QTableWidget *pattern = m_spreadSheets.first();
    auto *grid = new QTableWidget(pattern->rowCount(), pattern->columnCount(), m_sheet->paper());
    grid->setObjectName(QStringLiteral("SpreadSheets%1").arg(index));
    grid->setFont(pattern->font());
    if (m_spreadSheets.size() <= index)
        m_spreadSheets.resize(index + 1);
    m_spreadSheets[index] = grid;
    watchInput(grid);
    watchInput(grid->viewport());
    return grid;
}

QRect DatabaseApplet::placeOf(const DocumentItem &item) const
{
    if (item.Unit != 0)
        return QRect(qRound(item.Left), qRound(item.Top), qRound(item.Width), qRound(item.Height));
    const double pixelsPerCentimetreX = logicalDpiX() / 2.54;
    const double pixelsPerCentimetreY = logicalDpiY() / 2.54;
    return QRect(qRound(item.Left * pixelsPerCentimetreX), qRound(item.Top * pixelsPerCentimetreY),
                 qRound(item.Width * pixelsPerCentimetreX), qRound(item.Height * pixelsPerCentimetreY));
}

void DatabaseApplet::raiseChange(bool value, const QString &kind)
{
    emit propertiesChanged(value, QVariant::fromValue<QObject *>(this), kind);
}

void DatabaseApplet::boxEdited(int index)
{
    if (index == 0)
        return;
    m_unsaved.insert(index);
    m_idleSync.start();
    emit edited();
}

WordProcessor *DatabaseApplet::activeWordProcessor() const
{
    return qobject_cast<WordProcessor *>(ActiveCtrl());
}
