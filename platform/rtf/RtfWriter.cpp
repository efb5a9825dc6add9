#include "platform/rtf/RtfWriter.h"

#include "platform/rtf/RtfCodePage.h"

#include <QList>
#include <QStringList>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextList>

namespace {

// The indent of a bulleted paragraph: the bullet hangs a quarter inch left of the text.
constexpr int kListIndent = 360;

enum class ListKind { None,
                      Bullet,
                      Numbered };

struct ParaProps
{
    int alignment = 0; // 0 left, 1 centre, 2 right, 3 justify
    ListKind list = ListKind::None;
    int leftIndent = 0;       // twips
    int firstIndent = 0;      // twips
    int markerHalfPoints = 0; // the bullet's or number's size; lists only

    bool operator==(const ParaProps &) const = default;
};

struct CharProps
{
    int font = -1;
    int halfPoints = -1;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    int color = 0;
};

const char hexDigits[] = "0123456789abcdef";

// Lists with a symbol before each item are bullets; counted ones are numbered.
ListKind listKindOf(const QTextList *list)
{
    if (!list)
        return ListKind::None;
    switch (list->format().style()) {
    case QTextListFormat::ListDisc:
    case QTextListFormat::ListCircle:
    case QTextListFormat::ListSquare:
    case QTextListFormat::ListStyleUndefined:
        return ListKind::Bullet;
    default:
        return ListKind::Numbered;
    }
}

class RtfComposer
{
public:
    explicit RtfComposer(const QTextDocument *document)
        : m_document(document)
    {
    }

    QByteArray compose();

private:
    void collectTables();
    QString familyOf(const QTextCharFormat &format) const;
    int halfPointsOf(const QTextCharFormat &format) const;
    CharProps charPropsOf(const QTextCharFormat &format) const;
    ParaProps paraPropsOf(const QTextBlock &block) const;

    void writeHeader();
    void writeParagraphStart(const ParaProps &props, bool changed, int number);
    void writeCharProps(const CharProps &props);
    void writeText(QStringView text);
    void writeFontName(const QString &name);

    void lineBreak();
    void literal(char c);
    void word(const char *name);
    void word(const char *name, int value);
    void hexByte(unsigned char byte);
    void unicode(char16_t unit);

    const QTextDocument *m_document;
    QByteArray m_out;
    bool m_needsDelimiter = false;
    qsizetype m_lineBreakAt = -1; // where the last line break went, while nothing followed it
    QStringList m_fonts;
    QList<QColor> m_colors; // index 0 is "auto" and not written
    bool m_hasBullets = false;
    int m_symbolFont = -1;
    CharProps m_written;
};

QByteArray RtfComposer::compose()
{
    m_out.reserve(4096 + m_document->characterCount() * 4);
    collectTables();
    writeHeader();

    ParaProps previous;
    bool first = true;
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        const ParaProps props = paraPropsOf(block);
        const int number = block.textList() ? block.textList()->itemNumber(block) + 1 : 0;
        writeParagraphStart(props, first || !(props == previous), number);
        previous = props;
        first = false;

        bool wroteText = false;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.isValid() || fragment.length() == 0)
                continue;
            writeCharProps(charPropsOf(fragment.charFormat()));
            writeText(fragment.text());
            wroteText = true;
        }
        if (!wroteText)
            writeCharProps(charPropsOf(block.charFormat()));
        word("par");
        lineBreak();
    }
    m_out.append("}\r\n");
    return m_out;
}

void RtfComposer::collectTables()
{
    m_colors.append(QColor());
    auto note = [this](const QTextCharFormat &format) {
        const QString family = familyOf(format);
        if (!m_fonts.contains(family))
            m_fonts.append(family);
        if (format.hasProperty(QTextFormat::ForegroundBrush) && format.foreground().style() != Qt::NoBrush) {
            const QColor color = format.foreground().color();
            if (!m_colors.contains(color))
                m_colors.append(color);
        }
    };
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        if (listKindOf(block.textList()) == ListKind::Bullet)
            m_hasBullets = true;
        bool any = false;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            if (it.fragment().isValid() && it.fragment().length() > 0) {
                note(it.fragment().charFormat());
                any = true;
            }
        }
        if (!any)
            note(block.charFormat());
    }
    if (m_fonts.isEmpty())
        m_fonts.append(familyOf(QTextCharFormat()));
    if (m_hasBullets) {
        m_symbolFont = m_fonts.size();
        m_fonts.append(QStringLiteral("Symbol"));
    }
}

QString RtfComposer::familyOf(const QTextCharFormat &format) const
{
    const QStringList families = format.fontFamilies().toStringList();
    if (!families.isEmpty() && !families.first().isEmpty())
        return families.first();
    const QString fallback = m_document->defaultFont().family();
    return fallback.isEmpty() ? RtfWriter::fallbackFontName() : fallback;
}

int RtfComposer::halfPointsOf(const QTextCharFormat &format) const
{
    qreal points = format.hasProperty(QTextFormat::FontPointSize) ? format.fontPointSize() : 0;
    if (points <= 0)
        points = m_document->defaultFont().pointSizeF();
    if (points <= 0)
        points = 12;
    return qBound(2, qRound(points * 2), 3276);
}

CharProps RtfComposer::charPropsOf(const QTextCharFormat &format) const
{
    CharProps props;
    props.font = static_cast<int>(m_fonts.indexOf(familyOf(format)));
    props.halfPoints = halfPointsOf(format);
    props.bold = format.fontWeight() >= QFont::DemiBold;
    props.italic = format.fontItalic();
    props.underline = format.fontUnderline();
    if (format.hasProperty(QTextFormat::ForegroundBrush) && format.foreground().style() != Qt::NoBrush)
        props.color = static_cast<int>(m_colors.indexOf(format.foreground().color()));
    return props;
}

ParaProps RtfComposer::paraPropsOf(const QTextBlock &block) const
{
    ParaProps props;
    const QTextBlockFormat format = block.blockFormat();
    const Qt::Alignment horizontal = format.alignment() & Qt::AlignHorizontal_Mask;
    if (horizontal & Qt::AlignHCenter)
        props.alignment = 1;
    else if (horizontal & Qt::AlignRight)
        props.alignment = 2;
    else if (horizontal & Qt::AlignJustify)
        props.alignment = 3;

    props.list = listKindOf(block.textList());
    if (props.list != ListKind::None) {
        props.leftIndent = kListIndent;
        props.firstIndent = -kListIndent;
        // The editor draws the bullet in the format of the paragraph's mark.
        props.markerHalfPoints = halfPointsOf(block.charFormat());
    } else {
        props.leftIndent = qRound(format.leftMargin() * 20);
        props.firstIndent = qRound(format.textIndent() * 20);
    }
    return props;
}

void RtfComposer::writeHeader()
{
    m_out.append("{\\rtf1\\ansi\\ansicpg932\\deff0\\deflang1033\\deflangfe1041{\\fonttbl");
    for (int i = 0; i < m_fonts.size(); ++i) {
        m_out.append("{\\f").append(QByteArray::number(i));
        m_out.append(i == m_symbolFont ? "\\fnil\\fcharset2 " : "\\fnil\\fcharset128 ");
        writeFontName(m_fonts.at(i));
        m_out.append(";}");
    }
    m_out.append("}\r\n");
    if (m_colors.size() > 1) {
        m_out.append("{\\colortbl ;");
        for (int i = 1; i < m_colors.size(); ++i) {
            const QColor &color = m_colors.at(i);
            m_out.append("\\red").append(QByteArray::number(color.red()));
            m_out.append("\\green").append(QByteArray::number(color.green()));
            m_out.append("\\blue").append(QByteArray::number(color.blue())).append(';');
        }
        m_out.append("}\r\n");
    }
    m_out.append("\\viewkind4\\uc1");
    m_needsDelimiter = true;
}

void RtfComposer::writeParagraphStart(const ParaProps &props, bool changed, int number)
{
    if (changed)
        word("pard");
    // The paragraph's visible bullet, for readers that do not know \pn, in
    // the size it is shown in.
    const QByteArray markerSize = QByteArray::number(props.markerHalfPoints);
    if (props.list == ListKind::Bullet) {
        m_out.append("{\\pntext\\f").append(QByteArray::number(m_symbolFont));
        m_out.append("\\fs").append(markerSize).append("\\'B7\\tab}");
    } else if (props.list == ListKind::Numbered) {
        m_out.append("{\\pntext\\f0\\fs").append(markerSize).append(' ');
        m_out.append(QByteArray::number(number)).append(".\\tab}");
    }
    if (props.list != ListKind::None) {
        m_needsDelimiter = false;
        m_lineBreakAt = -1;
    }
    if (changed) {
        if (props.list == ListKind::Bullet) {
            m_out.append("{\\*\\pn\\pnlvlblt\\pnf").append(QByteArray::number(m_symbolFont));
            m_out.append("\\pnfs").append(markerSize).append("\\pnindent0{\\pntxtb\\'B7}}");
        } else if (props.list == ListKind::Numbered) {
            m_out.append("{\\*\\pn\\pnlvlbody\\pnf0\\pnfs").append(markerSize);
            m_out.append("\\pnindent0\\pnstart1\\pndec{\\pntxta.}}");
        }
        if (props.list != ListKind::None) {
            m_needsDelimiter = false;
            m_lineBreakAt = -1;
        }
        if (props.firstIndent != 0)
            word("fi", props.firstIndent);
        if (props.leftIndent != 0)
            word("li", props.leftIndent);
        if (props.alignment == 1)
            word("qc");
        else if (props.alignment == 2)
            word("qr");
        else if (props.alignment == 3)
            word("qj");
    }
}

// Only what changed since the last run is written, as the rich-text box does.
void RtfComposer::writeCharProps(const CharProps &props)
{
    if (props.font != m_written.font)
        word("f", props.font);
    if (props.halfPoints != m_written.halfPoints)
        word("fs", props.halfPoints);
    if (props.bold != m_written.bold)
        props.bold ? word("b") : word("b", 0);
    if (props.italic != m_written.italic)
        props.italic ? word("i") : word("i", 0);
    if (props.underline != m_written.underline)
        props.underline ? word("ul") : word("ulnone");
    if (props.color != m_written.color)
        word("cf", props.color);
    m_written = props;
}

void RtfComposer::writeText(QStringView text)
{
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = text[i].unicode();
        if (unit >= 0x20 && unit < 0x7F) {
            if (unit == u'\\' || unit == u'{' || unit == u'}') {
                m_out.append('\\').append(static_cast<char>(unit));
                m_needsDelimiter = false;
                m_lineBreakAt = -1;
            } else {
                literal(static_cast<char>(unit));
            }
            continue;
        }
        switch (unit) {
        case u'\t':
            word("tab");
            continue;
        case QChar::LineSeparator:
            word("line");
            continue;
        case QChar::Nbsp:
            m_out.append("\\~");
            m_needsDelimiter = false;
            m_lineBreakAt = -1;
            continue;
        case QChar::SoftHyphen:
            m_out.append("\\-");
            m_needsDelimiter = false;
            m_lineBreakAt = -1;
            continue;
        case QChar::ObjectReplacementCharacter:
        case QChar::ParagraphSeparator:
            continue;
        default:
            break;
        }
        if (unit < 0x20 || unit == 0x7F)
            continue;

        const quint16 bytes = RtfCodePage::encode932(unit);
        if (bytes == 0 || QChar::isSurrogate(unit)) {
            unicode(unit);
        } else if (bytes < 0x100) {
            hexByte(static_cast<unsigned char>(bytes));
        } else {
            hexByte(static_cast<unsigned char>(bytes >> 8));
            hexByte(static_cast<unsigned char>(bytes & 0xFF));
        }
    }
}

void RtfComposer::writeFontName(const QString &name)
{
    for (const QChar c : name) {
        const char16_t unit = c.unicode();
        if (unit == u';' || unit < 0x20)
            continue;
        if (unit < 0x7F) {
            if (unit == u'\\' || unit == u'{' || unit == u'}')
                m_out.append('\\');
            m_out.append(static_cast<char>(unit));
            continue;
        }
        const quint16 bytes = RtfCodePage::encode932(unit);
        if (bytes == 0 || QChar::isSurrogate(unit)) {
            unicode(unit);
        } else if (bytes < 0x100) {
            hexByte(static_cast<unsigned char>(bytes));
        } else {
            hexByte(static_cast<unsigned char>(bytes >> 8));
            hexByte(static_cast<unsigned char>(bytes & 0xFF));
        }
    }
}

// Line breaks only make the RTF readable. A reader that joins the lines
// without their ends must still find every control word ended, so the space
// that ends one comes before the break, never after it.
void RtfComposer::lineBreak()
{
    m_out.append("\r\n");
    m_lineBreakAt = m_out.size() - 2;
}

void RtfComposer::literal(char c)
{
    if (m_needsDelimiter) {
        if (m_lineBreakAt >= 0)
            m_out.insert(m_lineBreakAt, ' ');
        else
            m_out.append(' ');
        m_needsDelimiter = false;
    }
    m_lineBreakAt = -1;
    m_out.append(c);
}

void RtfComposer::word(const char *name)
{
    m_lineBreakAt = -1;
    m_out.append('\\').append(name);
    m_needsDelimiter = true;
}

void RtfComposer::word(const char *name, int value)
{
    m_lineBreakAt = -1;
    m_out.append('\\').append(name).append(QByteArray::number(value));
    m_needsDelimiter = true;
}

void RtfComposer::hexByte(unsigned char byte)
{
    const char escape[4] = {'\\', '\'', hexDigits[byte >> 4], hexDigits[byte & 0xF]};
    m_out.append(escape, 4);
    m_needsDelimiter = false;
    m_lineBreakAt = -1;
}

// \uN takes a signed 16-bit number; "?" stands in for readers without \u.
void RtfComposer::unicode(char16_t unit)
{
    const int value = unit > 0x7FFF ? static_cast<int>(unit) - 0x10000 : static_cast<int>(unit);
    m_out.append("\\u").append(QByteArray::number(value)).append('?');
    m_needsDelimiter = false;
    m_lineBreakAt = -1;
}

} // namespace

QByteArray RtfWriter::write(const QTextDocument *document)
{
    if (!document)
        return QByteArray();
    return RtfComposer(document).compose();
}

QByteArray RtfWriter::write(const QTextDocument *document, const QTextCursor &selection)
{
    if (!document)
        return QByteArray();
    QTextDocument part;
    part.setDefaultFont(document->defaultFont());
    QTextCursor(&part).insertFragment(selection.selection());
    return RtfComposer(&part).compose();
}

QString RtfWriter::writeString(const QTextDocument *document)
{
    return QString::fromLatin1(write(document));
}

QString RtfWriter::fallbackFontName()
{
    return QStringLiteral("ＭＳ Ｐゴシック");
}
