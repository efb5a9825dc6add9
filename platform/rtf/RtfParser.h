#pragma once

#include "platform/rtf/RtfTokenizer.h"

#include <QColor>
#include <QHash>
#include <QList>
#include <QString>
#include <QTextCharFormat>
#include <QTextCursor>

#include <vector>

class QTextList;

// One reading of one RTF text into a cursor's document: a tokenizer and a
// stack of group states. Text goes into the document in runs of one format,
// paragraph properties when the paragraph ends.
class RtfParser
{
public:
    RtfParser(QByteArrayView data, QTextCursor cursor);

    // False when the RTF was damaged; error says how.
    bool parse(QString *error);

    // Whether a character can stand in a QTextDocument's text as it is.
    static bool isStorable(char32_t unit);

private:
    enum class Destination {
        Text, // document text
        Skip, // read and thrown away
        FontTable,
        ColorTable,
        ListLevel, // {\*\pn ...}: the paragraph's bullet or numbering
        ListText,  // {\pntext ...}: the bullet as text, for readers without \pn
    };

    enum class ListKind { None,
                          Bullet,
                          Numbered };

    struct CharProps
    {
        int font = 0;
        int halfPoints = 24;
        bool bold = false;
        bool italic = false;
        bool underline = false;
        int color = 0;

        bool operator==(const CharProps &) const = default;
    };

    struct ParaProps
    {
        Qt::Alignment alignment = Qt::AlignLeft;
        int leftIndent = 0;  // twips
        int firstIndent = 0; // twips
        ListKind list = ListKind::None;
        int markerHalfPoints = 0; // the bullet's size as written; 0: the text's
    };

    struct GroupState
    {
        Destination destination = Destination::Text;
        CharProps chars;
        ParaProps para;
        int unicodeSkip = 1; // \ucN
    };

    struct FontEntry
    {
        QString name;
        QByteArray pendingName; // name bytes not yet decoded
        int charset = -1;
        int codePage = 0; // \cpgN
    };

    GroupState &state() { return m_stack.back(); }

    void openGroup();
    void closeGroup();
    void controlWord(const RtfTokenizer::Token &token);
    void controlSymbol(char symbol);
    void textBytes(QByteArrayView bytes);
    void textByte(unsigned char byte);
    void unicodeUnit(char32_t unit);

    void fontTableByte(unsigned char byte);
    void finishFontName(int font);
    void colorTableByte(unsigned char byte);

    void prepareText();
    void flushBytes();
    void flushRun();
    void endParagraph();
    void finishParagraph(const GroupState &props);
    int codePageOf(int font);
    QTextCharFormat formatOf(const CharProps &props);

    RtfTokenizer m_tokens;
    QTextCursor m_cursor;
    std::vector<GroupState> m_stack;
    GroupState m_finalState;
    int m_droppedDepth = 0;        // levels inside a group that was too deep
    bool m_nextIsOptional = false; // after \*
    int m_skipCount = 0;           // fallback characters still to pass after \uN
    QString m_error;

    int m_ansiCodePage = 1252;
    int m_defaultFont = 0;
    QHash<int, FontEntry> m_fonts;
    int m_fontBeingDefined = -1;
    int m_cachedFont = -1;
    int m_cachedCodePage = 1252;

    QList<QColor> m_colors;
    int m_red = -1, m_green = -1, m_blue = -1;

    // Text waiting to go into the document, all in m_runProps.
    CharProps m_runProps;
    QByteArray m_pendingBytes;
    int m_pendingCodePage = 0;
    QString m_runText;
    bool m_haveFormat = false;
    CharProps m_formatProps;
    QTextCharFormat m_format;

    bool m_breakPending = false;   // a \par whose new paragraph is not made yet
    bool m_cellTabPending = false; // a \cell: the next text of the row follows a tab
    QTextList *m_list = nullptr;
    ListKind m_listKind = ListKind::None;
};
