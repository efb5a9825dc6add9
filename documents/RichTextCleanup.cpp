#include "documents/RichTextCleanup.h"

#include "platform/rtf/RtfTokenizer.h"

#include <QList>
#include <QSet>

namespace {

using Kind = RtfTokenizer::Kind;

// A stretch of the source to take out: from up to, not including, to.
struct Cut
{
    qsizetype from;
    qsizetype to;
};

// The tokens of the source, each with the place it starts and ends. The
// tokenizer reads bytes: a character beyond Latin-1 reads as one byte of
// text, so a place in the bytes is the same place in the string.
class TokenWalk
{
public:
    explicit TokenWalk(const QString &source)
        : m_bytes(source.toLatin1())
        , m_tokens(m_bytes)
    {
    }

    // False at the end of the source.
    bool next()
    {
        m_token = m_tokens.next();
        if (m_token.kind == Kind::ControlWord) {
            if (m_token.word == "bin" && m_token.hasParameter)
                m_tokens.skipBytes(m_token.parameter); // raw data, not RTF
            if (m_bytes.at(end() - 1) != ' ')
                m_bareWordEnds.insert(end());
        }
        return m_token.kind != Kind::End;
    }

    const RtfTokenizer::Token &token() const { return m_token; }
    bool isWord(const char *letters) const { return m_token.kind == Kind::ControlWord && m_token.word == letters; }

    // Braces and control words: where the brace or the backslash stands.
    qsizetype start() const
    {
        if (m_token.kind == Kind::ControlWord)
            return m_token.word.data() - m_bytes.constData() - 1;
        return end() - 1;
    }
    qsizetype end() const { return m_tokens.position(); }

    // The places right after a control word that has no delimiter of its own.
    const QSet<qsizetype> &bareWordEnds() const { return m_bareWordEnds; }

private:
    QByteArray m_bytes;
    RtfTokenizer m_tokens;
    RtfTokenizer::Token m_token;
    QSet<qsizetype> m_bareWordEnds;
};

// A character that ends a control word without being text.
bool endsWordBySelf(QChar c)
{
    return c == u'\\' || c == u'{' || c == u'}';
}

// Takes the cuts (in order, none overlapping) out of the source. A control
// word left just before a cut keeps its end: when text follows the cut, a
// space goes in, or "\b\ul text" would become the word "\btext".
QString withoutCuts(const QString &source, const QList<Cut> &cuts, const QSet<qsizetype> &bareWordEnds)
{
    QString result;
    result.reserve(source.size());
    qsizetype copied = 0;
    for (qsizetype i = 0; i < cuts.size(); ++i) {
        Cut cut = cuts.at(i);
        while (i + 1 < cuts.size() && cuts.at(i + 1).from == cut.to)
            cut.to = cuts.at(++i).to;
        result += QStringView(source).sliced(copied, cut.from - copied);
        if (bareWordEnds.contains(cut.from) && cut.to < source.size() && !endsWordBySelf(source.at(cut.to)))
            result += u' ';
        copied = cut.to;
    }
    result += QStringView(source).sliced(copied);
    return result;
}

// Every group holding the colour table word, except the outermost group,
// which is the whole document. A group that never closes stays.
QString cutColourTables(const QString &source, bool *cut)
{
    struct Group
    {
        qsizetype start;
        bool colourTable;
    };
    TokenWalk walk(source);
    QList<Group> open;
    QList<Cut> cuts;
    while (walk.next()) {
        if (walk.token().kind == Kind::GroupStart) {
            open.append({walk.start(), false});
        } else if (walk.token().kind == Kind::GroupEnd && !open.isEmpty()) {
            const Group group = open.takeLast();
            if (!group.colourTable)
                continue;
            // Groups inside this one were cut with it.
            while (!cuts.isEmpty() && cuts.last().from > group.start)
                cuts.removeLast();
            cuts.append({group.start, walk.end()});
        } else if (walk.isWord("colortbl") && open.size() >= 2) {
            open.last().colourTable = true;
        }
    }
    *cut = !cuts.isEmpty();
    return withoutCuts(source, cuts, walk.bareWordEnds());
}

QString cutUnderlines(const QString &source, bool *cut)
{
    TokenWalk walk(source);
    QList<Cut> cuts;
    while (walk.next()) {
        if (walk.isWord("ulnone") || walk.isWord("ul"))
            cuts.append({walk.start(), walk.end()});
    }
    *cut = !cuts.isEmpty();
    return withoutCuts(source, cuts, walk.bareWordEnds());
}

} // namespace

QString RichTextCleanup::clean(const QString &rtf, bool *removed)
{
    bool colours = false;
    bool underlines = false;
    const QString text = cutUnderlines(cutColourTables(rtf, &colours), &underlines);
    if (removed)
        *removed = colours || underlines;
    return text;
}
