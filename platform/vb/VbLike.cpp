#include "platform/vb/VbLike.h"

namespace {

// Matches one bracketed list at pattern[p] against c; moves p past the list.
// A list without its closing bracket matches nothing.
bool matchList(const QString &pattern, qsizetype &p, QChar c, bool &valid)
{
    qsizetype i = p + 1;
    bool negate = false;
    if (i < pattern.size() && pattern[i] == u'!') {
        negate = true;
        ++i;
    }
    bool found = false;
    const qsizetype start = i;
    while (i < pattern.size() && (pattern[i] != u']' || i == start)) {
        const QChar low = pattern[i];
        if (i + 2 < pattern.size() && pattern[i + 1] == u'-' && pattern[i + 2] != u']') {
            if (c >= low && c <= pattern[i + 2])
                found = true;
            i += 3;
        } else {
            if (c == low)
                found = true;
            ++i;
        }
    }
    valid = i < pattern.size();
    p = i + 1;
    return found != negate;
}

bool matchFrom(const QString &text, qsizetype t, const QString &pattern, qsizetype p)
{
    while (p < pattern.size()) {
        const QChar token = pattern[p];
        if (token == u'*') {
            // Runs of stars mean one star.
            while (p < pattern.size() && pattern[p] == u'*')
                ++p;
            if (p == pattern.size())
                return true;
            for (qsizetype k = t; k <= text.size(); ++k)
                if (matchFrom(text, k, pattern, p))
                    return true;
            return false;
        }
        if (t >= text.size())
            return false;
        if (token == u'?') {
            ++p;
        } else if (token == u'#') {
            if (!text[t].isDigit())
                return false;
            ++p;
        } else if (token == u'[') {
            bool valid = true;
            if (!matchList(pattern, p, text[t], valid) || !valid)
                return false;
        } else {
            if (text[t] != token)
                return false;
            ++p;
        }
        ++t;
    }
    return t == text.size();
}

} // namespace

bool VbLike::match(const QString &text, const QString &pattern)
{
    return matchFrom(text, 0, pattern, 0);
}
