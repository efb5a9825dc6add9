#include "documents/WordProcessor.h"

#include "documents/RichTextCodec.h"
#include "platform/FlatScrollStyle.h"

#include <QAbstractTextDocumentLayout>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextList>

namespace {

const QStringList rtfMimeTypes = {QStringLiteral("text/rtf"), QStringLiteral("application/rtf"),
                                  QStringLiteral("text/richtext")};

QString rtfFormatIn(const QMimeData *source)
{
    for (const QString &type : rtfMimeTypes) {
        if (source->hasFormat(type))
            return type;
    }
    return QString();
}

bool hasColourOrUnderline(const QTextCharFormat &format)
{
    return format.hasProperty(QTextFormat::ForegroundBrush) || format.hasProperty(QTextFormat::BackgroundBrush)
        || format.hasProperty(QTextFormat::TextUnderlineColor) || format.fontUnderline()
        || format.underlineStyle() != QTextCharFormat::NoUnderline;
}

QTextCharFormat withoutColourOrUnderline(QTextCharFormat format)
{
    format.clearForeground();
    format.clearBackground();
    format.clearProperty(QTextFormat::TextUnderlineColor);
    format.clearProperty(QTextFormat::TextUnderlineStyle);
    format.clearProperty(QTextFormat::FontUnderline);
    return format;
}

} // namespace

WordProcessor::WordProcessor(QWidget *parent)
    : QTextEdit(parent)
    , m_zoomDevice(1, 1, QImage::Format_RGB32)
{
    setAcceptRichText(true);
    m_baseFont = font();
    m_cleanupTimer.setSingleShot(true);
    m_cleanupTimer.setInterval(0);
    connect(&m_cleanupTimer, &QTimer::timeout, this, &WordProcessor::cleanUpNow);
    connect(document(), &QTextDocument::contentsChange, this, &WordProcessor::noteChange);
    // A box that overflows scrolls with bars as wide as the page's.
    for (QScrollBar *bar : {horizontalScrollBar(), verticalScrollBar()})
        bar->setStyle(FlatScrollStyle::instance());
}

void WordProcessor::noteChange(int position, int removed, int added)
{
    if (!m_cleaning) {
        // Grow the waiting range to cover this change too; what lies after the
        // change has moved by the difference.
        const int end = position + added;
        if (m_pendingFrom < 0) {
            m_pendingFrom = position;
            m_pendingTo = end;
        } else {
            if (m_pendingTo > position)
                m_pendingTo = qMax(m_pendingTo + added - removed, end);
            else
                m_pendingTo = qMax(m_pendingTo, end);
            m_pendingFrom = qMin(m_pendingFrom, position);
        }
        m_cleanupTimer.start();
    }
    emit edited();
}

bool WordProcessor::cleanUpNow()
{
    m_cleanupTimer.stop();
    if (m_pendingFrom < 0)
        return false;
    const int from = m_pendingFrom;
    const int to = m_pendingTo;
    m_pendingFrom = m_pendingTo = -1;
    m_cleaning = true;
    const bool stripped = stripColourAndUnderline(document(), from, to, true);
    m_cleaning = false;
    return stripped;
}

bool WordProcessor::stripColourAndUnderline(QTextDocument *document, int from, int to, bool joinUndo)
{
    const int last = document->characterCount() - 1;
    from = qBound(0, from, last);
    to = qBound(from, to, last);

    // First find what needs changing, then change it: changing formats
    // rearranges the fragments being walked.
    struct Run
    {
        int start;
        int end;
        QTextCharFormat format;
    };
    QList<Run> runs;
    QList<QTextBlock> marks;
    for (QTextBlock block = document->findBlock(from); block.isValid() && block.position() <= to;
         block = block.next()) {
        for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const int start = qMax(fragment.position(), from);
            const int end = qMin(fragment.position() + fragment.length(), to);
            if (start < end && hasColourOrUnderline(fragment.charFormat()))
                runs.append({start, end, withoutColourOrUnderline(fragment.charFormat())});
        }
        // The paragraph's own mark: text typed into an empty paragraph takes it.
        if (hasColourOrUnderline(block.charFormat()))
            marks.append(block);
    }
    if (runs.isEmpty() && marks.isEmpty())
        return false;

    QTextCursor cursor(document);
    // One undo step with the change that brought the colour in.
    if (joinUndo)
        cursor.joinPreviousEditBlock();
    else
        cursor.beginEditBlock();
    for (const Run &run : std::as_const(runs)) {
        cursor.setPosition(run.start);
        cursor.setPosition(run.end, QTextCursor::KeepAnchor);
        cursor.setCharFormat(run.format);
    }
    for (const QTextBlock &block : std::as_const(marks)) {
        cursor.setPosition(block.position());
        cursor.setBlockCharFormat(withoutColourOrUnderline(block.charFormat()));
    }
    cursor.endEditBlock();
    return true;
}

void WordProcessor::setBaseFont(const QFont &font)
{
    m_baseFont = font;
    setFont(font);
    document()->setDefaultFont(font);
}

void WordProcessor::setTextZoom(int percent)
{
    if (percent <= 0)
        return;
    m_textZoom = percent;
    // Letters are laid out for a device of the zoomed resolution; at 100 the
    // box's own screen resolution applies.
    QAbstractTextDocumentLayout *layout = document()->documentLayout();
    if (percent == 100) {
        layout->setPaintDevice(nullptr);
    } else {
        const double dpi = logicalDpiY() * percent / 100.0;
        const int dotsPerMetre = qRound(dpi / 0.0254);
        m_zoomDevice.setDotsPerMeterX(dotsPerMetre);
        m_zoomDevice.setDotsPerMeterY(dotsPerMetre);
        layout->setPaintDevice(&m_zoomDevice);
    }
    const bool cleaning = m_cleaning;
    m_cleaning = true;
    document()->markContentsDirty(0, document()->characterCount());
    m_cleaning = cleaning;
}

void WordProcessor::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    // The box's own font grows with the zoom of the controls; its letters
    // follow the text zoom instead, so the document keeps the designed font.
    if (event->type() == QEvent::FontChange)
        document()->setDefaultFont(m_baseFont);
}

void WordProcessor::setVisible(bool visible)
{
    // A text set into the box before it first shows opens at its start, the
    // caret with it: the first page is what the user reads first, and only
    // that much has to be laid out before the box can paint. The caret is
    // moved while nothing is laid out yet; left at the end of a long text it
    // would have the whole text laid out at once when the box shows.
    if (visible && !m_shownBefore) {
        m_shownBefore = true;
        QTextCursor start = textCursor();
        if (!start.hasSelection() && start.position() != 0) {
            start.setPosition(0);
            setTextCursor(start);
        }
    }
    QTextEdit::setVisible(visible);
}

bool WordProcessor::canInsertFromMimeData(const QMimeData *source) const
{
    return !rtfFormatIn(source).isEmpty() || source->hasHtml() || source->hasText();
}

void WordProcessor::insertFromMimeData(const QMimeData *source)
{
    if (isReadOnly() || !source)
        return;
    QTextDocument pasted;
    pasted.setDefaultFont(document()->defaultFont());
    const QString rtfType = rtfFormatIn(source);
    if (!rtfType.isEmpty()) {
        RichTextCodec::read(source->data(rtfType), &pasted);
    } else if (source->hasHtml()) {
        pasted.setHtml(source->html());
    } else if (source->hasText()) {
        textCursor().insertText(source->text());
        ensureCursorVisible();
        return;
    } else {
        return;
    }
    stripColourAndUnderline(&pasted, 0, pasted.characterCount(), false);
    QTextCursor cursor = textCursor();
    cursor.insertFragment(QTextDocumentFragment(&pasted));
    setTextCursor(cursor);
    ensureCursorVisible();
}

QList<QTextBlock> WordProcessor::selectedBlocks() const
{
    const QTextCursor cursor = textCursor();
    QList<QTextBlock> blocks;
    const QTextBlock last = document()->findBlock(cursor.selectionEnd());
    for (QTextBlock block = document()->findBlock(cursor.selectionStart()); block.isValid(); block = block.next()) {
        blocks.append(block);
        if (block == last)
            break;
    }
    return blocks;
}

QVariant WordProcessor::selFontSize() const
{
    const QTextCursor cursor = textCursor();
    const double fallback = document()->defaultFont().pointSizeF();
    auto sizeOf = [fallback](const QTextCharFormat &format) {
        const double size = format.fontPointSize();
        return size > 0 ? size : fallback;
    };
    if (!cursor.hasSelection())
        return sizeOf(cursor.charFormat());
    const int from = cursor.selectionStart();
    const int to = cursor.selectionEnd();
    double found = -1;
    for (const QTextBlock &block : selectedBlocks()) {
        for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.position() >= to || fragment.position() + fragment.length() <= from)
                continue;
            const double size = sizeOf(fragment.charFormat());
            if (found >= 0 && !qFuzzyCompare(found, size))
                return QVariant();
            found = size;
        }
    }
    return found >= 0 ? QVariant(found) : QVariant(sizeOf(cursor.charFormat()));
}

void WordProcessor::setSelFontSize(double points)
{
    if (points <= 0)
        return;
    QTextCharFormat format;
    format.setFontPointSize(points);
    QTextCursor cursor = textCursor();
    cursor.mergeCharFormat(format);
    mergeCurrentCharFormat(format);
}

QVariant WordProcessor::selAlignment() const
{
    auto codeOf = [](Qt::Alignment alignment) {
        if (alignment & Qt::AlignHCenter)
            return 2;
        if (alignment & (Qt::AlignRight | Qt::AlignTrailing))
            return 1;
        return 0;
    };
    int found = -1;
    for (const QTextBlock &block : selectedBlocks()) {
        const int code = codeOf(block.blockFormat().alignment());
        if (found >= 0 && found != code)
            return QVariant();
        found = code;
    }
    return found < 0 ? 0 : found;
}

void WordProcessor::setSelAlignment(int alignment)
{
    static const Qt::Alignment alignments[] = {Qt::AlignLeft | Qt::AlignAbsolute,
                                               Qt::AlignRight | Qt::AlignAbsolute, Qt::AlignHCenter};
    if (alignment < 0 || alignment > 2)
        return;
    QTextBlockFormat format;
    format.setAlignment(alignments[alignment]);
    textCursor().mergeBlockFormat(format);
}

QVariant WordProcessor::selBullet() const
{
    int withBullet = 0;
    const QList<QTextBlock> blocks = selectedBlocks();
    for (const QTextBlock &block : blocks) {
        if (block.textList())
            ++withBullet;
    }
    if (withBullet == 0)
        return false;
    if (withBullet == blocks.size())
        return true;
    return QVariant();
}

void WordProcessor::setSelBullet(bool bullet)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    if (bullet) {
        QTextListFormat format;
        format.setStyle(QTextListFormat::ListDisc);
        format.setIndent(1);
        if (QTextList *list = cursor.currentList()) {
            // Paragraphs already in a list join it; the list shows discs.
            list->setFormat(format);
            for (const QTextBlock &block : selectedBlocks()) {
                if (!block.textList())
                    list->add(block);
            }
        } else {
            cursor.createList(format);
        }
    } else {
        for (const QTextBlock &block : selectedBlocks()) {
            if (QTextList *list = block.textList()) {
                list->remove(block);
                QTextCursor at(block);
                QTextBlockFormat format = block.blockFormat();
                format.setIndent(0);
                at.setBlockFormat(format);
            }
        }
    }
    cursor.endEditBlock();
}

void WordProcessor::setSelText(const QString &text)
{
    QTextCursor cursor = textCursor();
    cursor.insertText(text);
    setTextCursor(cursor);
}
