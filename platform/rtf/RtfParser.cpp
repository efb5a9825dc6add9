#include "platform/rtf/RtfParser.h"

#include "platform/rtf/RtfCodePage.h"
#include "platform/rtf/RtfKeyword.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

namespace {

// Deeper groups than this are dropped whole: real documents stay far below.
constexpr int kMaxGroupDepth = 256;

// Surrogates from \uN pairs arrive one at a time and are kept as they come.
void appendUnit(QString &text, char32_t unit)
{
    if (unit > 0xFFFF)
        text.append(QString::fromUcs4(&unit, 1));
    else
        text.append(QChar(static_cast<char16_t>(unit)));
}

} // namespace

// Characters that are not text in a QTextDocument: line and paragraph
// breaks (they would split blocks), the frame and object markers that Qt
// keeps in the text itself, and control characters other than the tab
// (ICU's code page 932 table turns byte 0x1C into DEL).
bool RtfParser::isStorable(char32_t unit)
{
    if (unit < 0x20)
        return unit == u'\t';
    return unit != 0x7F && unit != QChar::ParagraphSeparator && unit != QChar::ObjectReplacementCharacter
        && !(unit >= 0xFDD0 && unit <= 0xFDEF) && unit != 0x85;
}

RtfParser::RtfParser(QByteArrayView data, QTextCursor cursor)
    : m_tokens(data)
    , m_cursor(std::move(cursor))
{
    m_stack.reserve(64);
}

bool RtfParser::parse(QString *error)
{
    m_cursor.beginEditBlock();
    bool started = false;
    bool closed = false;
    for (;;) {
        if (!m_stack.empty()) {
            const bool inFontTable = state().destination == Destination::FontTable;
            m_tokens.setDoubleByteCodePage(codePageOf(inFontTable ? m_fontBeingDefined : state().chars.font));
        }
        const RtfTokenizer::Token token = m_tokens.next();
        if (token.kind == RtfTokenizer::Kind::End)
            break;
        if (!started) {
            // The caller checked the "{\rtf" start: this is the root group.
            if (token.kind == RtfTokenizer::Kind::GroupStart) {
                m_stack.push_back(GroupState());
                started = true;
            }
            continue;
        }
        if (m_droppedDepth > 0) {
            if (token.kind == RtfTokenizer::Kind::GroupStart)
                ++m_droppedDepth;
            else if (token.kind == RtfTokenizer::Kind::GroupEnd)
                --m_droppedDepth;
            continue;
        }
        switch (token.kind) {
        case RtfTokenizer::Kind::GroupStart:
            openGroup();
            break;
        case RtfTokenizer::Kind::GroupEnd:
            closeGroup();
            break;
        case RtfTokenizer::Kind::ControlWord:
            controlWord(token);
            break;
        case RtfTokenizer::Kind::ControlSymbol:
            controlSymbol(token.symbol);
            break;
        case RtfTokenizer::Kind::HexByte:
            m_nextIsOptional = false;
            if (m_skipCount > 0)
                --m_skipCount;
            else
                textByte(token.byte);
            break;
        case RtfTokenizer::Kind::Text:
            m_nextIsOptional = false;
            textBytes(token.word);
            break;
        case RtfTokenizer::Kind::End:
            break;
        }
        if (m_stack.empty()) {
            closed = true; // the root group is closed: what follows is not read
            break;
        }
    }

    flushRun();
    if (started && !m_breakPending)
        finishParagraph(m_stack.empty() ? m_finalState : state());
    m_cursor.endEditBlock();

    if (!closed && m_error.isEmpty())
        m_error = QStringLiteral("the RTF ends before its last group is closed");
    if (error)
        *error = m_error;
    return m_error.isEmpty();
}

void RtfParser::openGroup()
{
    m_nextIsOptional = false;
    m_skipCount = 0;
    if (static_cast<int>(m_stack.size()) >= kMaxGroupDepth) {
        m_droppedDepth = 1;
        if (m_error.isEmpty())
            m_error = QStringLiteral("groups nested too deep were left out");
        return;
    }
    const GroupState inherited = m_stack.back();
    m_stack.push_back(inherited);
}

void RtfParser::closeGroup()
{
    m_nextIsOptional = false;
    m_skipCount = 0;
    const GroupState closing = m_stack.back();
    if (closing.destination == Destination::FontTable && m_fontBeingDefined >= 0)
        finishFontName(m_fontBeingDefined);
    m_stack.pop_back();
    if (m_stack.empty()) {
        m_finalState = closing; // the last paragraph still takes its properties
        return;
    }
    // A list level group describes the paragraph it sits in.
    if (closing.destination == Destination::ListLevel && state().destination != Destination::ListLevel)
        state().para.list = closing.para.list;
    // So does the size of the bullet, in either group.
    const bool listGroup = closing.destination == Destination::ListLevel || closing.destination == Destination::ListText;
    if (listGroup && state().destination == Destination::Text && closing.para.markerHalfPoints > 0)
        state().para.markerHalfPoints = closing.para.markerHalfPoints;
}

void RtfParser::controlWord(const RtfTokenizer::Token &token)
{
    const bool optional = m_nextIsOptional;
    m_nextIsOptional = false;
    if (m_skipCount > 0) {
        --m_skipCount;
        return;
    }

    const RtfKeyword *keyword = RtfKeyword::find(token.word);
    if (!keyword) {
        // An unknown destination after \* is skipped whole.
        if (optional)
            state().destination = Destination::Skip;
        return;
    }
    if (optional && keyword->word != RtfKeyword::ListLevel) {
        state().destination = Destination::Skip;
        return;
    }

    const int value = token.parameter;
    const bool on = !token.hasParameter || value != 0;
    GroupState &group = state();
    switch (keyword->word) {
    case RtfKeyword::Rtf:
        break;
    case RtfKeyword::Ansi:
        m_ansiCodePage = 1252;
        break;
    case RtfKeyword::Mac:
        m_ansiCodePage = 10000;
        break;
    case RtfKeyword::Pc:
        m_ansiCodePage = 437;
        break;
    case RtfKeyword::Pca:
        m_ansiCodePage = 850;
        break;
    case RtfKeyword::AnsiCodePage:
        if (token.hasParameter && value > 0 && value < 100000)
            m_ansiCodePage = value;
        m_cachedFont = -1;
        break;
    case RtfKeyword::DefaultFont:
        m_defaultFont = token.hasParameter ? value : 0;
        group.chars.font = m_defaultFont;
        break;
    case RtfKeyword::FontTable:
        group.destination = Destination::FontTable;
        break;
    case RtfKeyword::ColorTable:
        group.destination = Destination::ColorTable;
        break;
    case RtfKeyword::ListLevel:
        group.destination = Destination::ListLevel;
        group.para.list = ListKind::None;
        break;
    case RtfKeyword::SkipDestination:
        group.destination = Destination::Skip;
        break;
    case RtfKeyword::ListText:
        group.destination = Destination::ListText;
        break;
    case RtfKeyword::Font:
        if (group.destination == Destination::FontTable) {
            if (m_fontBeingDefined >= 0)
                finishFontName(m_fontBeingDefined);
            m_fontBeingDefined = token.hasParameter ? value : 0;
            m_fonts[m_fontBeingDefined] = FontEntry();
            m_cachedFont = -1;
        } else {
            group.chars.font = token.hasParameter ? value : 0;
        }
        break;
    case RtfKeyword::Charset:
        if (group.destination == Destination::FontTable && m_fontBeingDefined >= 0) {
            m_fonts[m_fontBeingDefined].charset = value;
            m_cachedFont = -1;
        }
        break;
    case RtfKeyword::CodePage:
        if (group.destination == Destination::FontTable && m_fontBeingDefined >= 0) {
            m_fonts[m_fontBeingDefined].codePage = value;
            m_cachedFont = -1;
        }
        break;
    case RtfKeyword::Red:
        m_red = qBound(0, value, 255);
        break;
    case RtfKeyword::Green:
        m_green = qBound(0, value, 255);
        break;
    case RtfKeyword::Blue:
        m_blue = qBound(0, value, 255);
        break;
    case RtfKeyword::Plain:
        group.chars = CharProps();
        group.chars.font = m_defaultFont;
        break;
    case RtfKeyword::FontSize:
        // Half-points; RichEdit keeps sizes between 1 and 1638 points.
        group.chars.halfPoints = token.hasParameter ? qBound(2, value, 3276) : 24;
        if (group.destination == Destination::ListText)
            group.para.markerHalfPoints = group.chars.halfPoints;
        break;
    case RtfKeyword::ListFontSize:
        if (group.destination == Destination::ListLevel && token.hasParameter)
            group.para.markerHalfPoints = qBound(2, value, 3276);
        break;
    case RtfKeyword::Bold:
        group.chars.bold = on;
        break;
    case RtfKeyword::Italic:
        group.chars.italic = on;
        break;
    case RtfKeyword::Underline:
        group.chars.underline = on;
        break;
    case RtfKeyword::UnderlineNone:
        group.chars.underline = false;
        break;
    case RtfKeyword::Color:
        group.chars.color = qMax(0, value);
        break;
    case RtfKeyword::Pard:
        group.para = ParaProps();
        break;
    case RtfKeyword::Left:
        group.para.alignment = Qt::AlignLeft;
        break;
    case RtfKeyword::Center:
        group.para.alignment = Qt::AlignHCenter;
        break;
    case RtfKeyword::Right:
        group.para.alignment = Qt::AlignRight;
        break;
    case RtfKeyword::Justify:
        group.para.alignment = Qt::AlignJustify;
        break;
    case RtfKeyword::LeftIndent:
        group.para.leftIndent = qBound(-31680, value, 31680);
        break;
    case RtfKeyword::FirstIndent:
        group.para.firstIndent = qBound(-31680, value, 31680);
        break;
    case RtfKeyword::ListOverride:
        // Word's own lists: without reading its list table, a bullet is the best guess.
        group.para.list = value > 0 ? ListKind::Bullet : ListKind::None;
        break;
    case RtfKeyword::ListBullet:
        group.para.list = ListKind::Bullet;
        break;
    case RtfKeyword::ListBody:
        if (group.para.list != ListKind::Bullet)
            group.para.list = ListKind::Numbered;
        break;
    case RtfKeyword::ListContinue:
        group.para.list = ListKind::None;
        break;
    case RtfKeyword::Par:
        endParagraph();
        break;
    case RtfKeyword::Cell:
        if (group.destination != Destination::Text)
            break;
        if (m_cellTabPending) {
            m_cellTabPending = false;
            unicodeUnit(u'\t');
        }
        m_cellTabPending = true;
        break;
    case RtfKeyword::Row:
        if (group.destination != Destination::Text)
            break;
        m_cellTabPending = false;
        endParagraph();
        break;
    case RtfKeyword::Unicode: {
        int unit = value;
        if (unit < 0)
            unit += 65536;
        if (unit >= 0 && unit <= 0x10FFFF)
            unicodeUnit(static_cast<char32_t>(unit));
        m_skipCount = group.unicodeSkip;
        break;
    }
    case RtfKeyword::UnicodeSkip:
        group.unicodeSkip = qBound(0, value, 65535);
        break;
    case RtfKeyword::Binary:
        m_tokens.skipBytes(value);
        break;
    case RtfKeyword::Character:
        unicodeUnit(keyword->character);
        break;
    }
}

void RtfParser::controlSymbol(char symbol)
{
    if (symbol == '*') {
        m_nextIsOptional = true;
        return;
    }
    m_nextIsOptional = false;
    if (m_skipCount > 0) {
        --m_skipCount;
        return;
    }
    switch (symbol) {
    case '\\':
    case '{':
    case '}':
        textByte(static_cast<unsigned char>(symbol));
        break;
    case '~':
        unicodeUnit(0x00A0);
        break;
    case '-':
        unicodeUnit(0x00AD);
        break;
    case '_':
        unicodeUnit(0x2011);
        break;
    case '\n':
        endParagraph();
        break;
    default:
        break; // \:, \| and other symbols carry nothing we show
    }
}

void RtfParser::textBytes(QByteArrayView bytes)
{
    if (m_skipCount > 0) {
        const qsizetype skipped = qMin<qsizetype>(m_skipCount, bytes.size());
        m_skipCount -= static_cast<int>(skipped);
        bytes = bytes.sliced(skipped);
    }
    if (bytes.isEmpty())
        return;

    switch (state().destination) {
    case Destination::Text:
        prepareText();
        if (m_pendingCodePage != codePageOf(state().chars.font))
            flushBytes();
        m_pendingCodePage = codePageOf(state().chars.font);
        m_pendingBytes.append(bytes.data(), bytes.size());
        break;
    case Destination::FontTable:
        for (const char c : bytes)
            fontTableByte(static_cast<unsigned char>(c));
        break;
    case Destination::ColorTable:
        for (const char c : bytes)
            colorTableByte(static_cast<unsigned char>(c));
        break;
    case Destination::Skip:
    case Destination::ListLevel:
    case Destination::ListText:
        break;
    }
}

void RtfParser::textByte(unsigned char byte)
{
    const char c = static_cast<char>(byte);
    textBytes(QByteArrayView(&c, 1));
}

void RtfParser::unicodeUnit(char32_t unit)
{
    if (!isStorable(unit))
        return;
    switch (state().destination) {
    case Destination::Text:
        prepareText();
        flushBytes();
        appendUnit(m_runText, unit);
        break;
    case Destination::FontTable:
        if (m_fontBeingDefined >= 0) {
            FontEntry &font = m_fonts[m_fontBeingDefined];
            font.name += RtfCodePage::decode(codePageOf(m_fontBeingDefined), font.pendingName);
            font.pendingName.clear();
            appendUnit(font.name, unit);
        }
        break;
    default:
        break;
    }
}

void RtfParser::fontTableByte(unsigned char byte)
{
    if (m_fontBeingDefined < 0)
        return;
    if (byte == ';') {
        finishFontName(m_fontBeingDefined);
        return;
    }
    m_fonts[m_fontBeingDefined].pendingName.append(static_cast<char>(byte));
}

void RtfParser::finishFontName(int font)
{
    FontEntry &entry = m_fonts[font];
    entry.name += RtfCodePage::decode(codePageOf(font), entry.pendingName);
    entry.pendingName.clear();
    entry.name = entry.name.trimmed();
    m_cachedFont = -1;
}

void RtfParser::colorTableByte(unsigned char byte)
{
    if (byte != ';')
        return;
    if (m_red < 0 && m_green < 0 && m_blue < 0)
        m_colors.append(QColor()); // "auto": the text's own colour
    else
        m_colors.append(QColor(qMax(0, m_red), qMax(0, m_green), qMax(0, m_blue)));
    m_red = m_green = m_blue = -1;
}

// Text is about to be added: start the paragraph a \par asked for, put the
// tab between table cells, and start a new run when the formatting changed.
void RtfParser::prepareText()
{
    if (m_breakPending) {
        flushRun();
        m_cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
        m_breakPending = false;
    }
    if (!(m_runProps == state().chars)) {
        flushRun();
        m_runProps = state().chars;
    }
    if (m_cellTabPending) {
        m_cellTabPending = false;
        flushBytes();
        m_runText.append(u'\t');
    }
}

void RtfParser::flushBytes()
{
    if (m_pendingBytes.isEmpty())
        return;
    QString decoded = RtfCodePage::decode(m_pendingCodePage, m_pendingBytes);
    m_pendingBytes.clear();
    decoded.removeIf([](QChar c) { return !isStorable(c.unicode()); });
    m_runText += decoded;
}

void RtfParser::flushRun()
{
    flushBytes();
    if (m_runText.isEmpty())
        return;
    m_cursor.insertText(m_runText, formatOf(m_runProps));
    m_runText.clear();
}

void RtfParser::endParagraph()
{
    if (state().destination != Destination::Text)
        return;
    if (m_breakPending) {
        // The paragraph before was empty: it still gets made.
        m_cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
        m_breakPending = false;
    }
    flushRun();
    finishParagraph(state());
    m_breakPending = true;
}

void RtfParser::finishParagraph(const GroupState &props)
{
    QTextBlockFormat format;
    format.setAlignment(props.para.alignment);
    if (props.para.list == ListKind::None) {
        if (props.para.leftIndent != 0)
            format.setLeftMargin(props.para.leftIndent / 20.0);
        if (props.para.firstIndent != 0)
            format.setTextIndent(props.para.firstIndent / 20.0);
    }
    m_cursor.setBlockFormat(format);

    if (props.para.list == ListKind::None) {
        m_list = nullptr;
    } else if (m_list && m_listKind == props.para.list) {
        m_list->add(m_cursor.block());
    } else {
        QTextListFormat listFormat;
        listFormat.setStyle(props.para.list == ListKind::Bullet ? QTextListFormat::ListDisc
                                                                : QTextListFormat::ListDecimal);
        listFormat.setIndent(1);
        m_list = m_cursor.createList(listFormat);
        m_listKind = props.para.list;
    }

    // An empty paragraph keeps its size through the format of its mark. The
    // editor draws a bullet in that format too: it takes the size written
    // for the bullet, or else the size of the paragraph's text.
    if (props.para.list != ListKind::None) {
        CharProps marker = props.chars;
        if (props.para.markerHalfPoints > 0)
            marker.halfPoints = props.para.markerHalfPoints;
        m_cursor.setBlockCharFormat(formatOf(marker));
    } else if (m_cursor.block().length() <= 1) {
        m_cursor.setBlockCharFormat(formatOf(props.chars));
    }
}

int RtfParser::codePageOf(int font)
{
    if (font == m_cachedFont)
        return m_cachedCodePage;
    int codePage = m_ansiCodePage;
    const auto found = m_fonts.constFind(font);
    if (found != m_fonts.constEnd()) {
        if (found->codePage > 0)
            codePage = found->codePage;
        else if (const int fromCharset = RtfCodePage::forCharset(found->charset))
            codePage = fromCharset;
    }
    m_cachedFont = font;
    m_cachedCodePage = codePage;
    return codePage;
}

QTextCharFormat RtfParser::formatOf(const CharProps &props)
{
    if (m_haveFormat && m_formatProps == props)
        return m_format;
    QTextCharFormat format;
    const auto font = m_fonts.constFind(props.font);
    if (font != m_fonts.constEnd() && !font->name.isEmpty())
        format.setFontFamilies(QStringList(font->name));
    format.setFontPointSize(props.halfPoints / 2.0);
    format.setFontWeight(props.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(props.italic);
    format.setFontUnderline(props.underline);
    if (props.color > 0 && props.color < m_colors.size() && m_colors.at(props.color).isValid())
        format.setForeground(m_colors.at(props.color));
    m_format = format;
    m_formatProps = props;
    m_haveFormat = true;
    return format;
}
