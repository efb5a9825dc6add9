#pragma once

#include <QString>

// Takes colours and underlining out of rich text source. Documents never keep
// them, whatever was pasted: every brace group that holds a \colortbl control
// word is cut out (the group itself, with any groups inside it), then every
// \ulnone and \ul control word, each with its number and the space that ends
// it. Only real control words count: "\\ulrich" is an escaped backslash and
// text, and "\uldb" is another word. What the text shows stays as it was.
//
// The source is taken as the rich-text writer makes it: one character for
// each byte.
class RichTextCleanup
{
public:
    // The cleaned text; removed tells whether anything was taken out.
    static QString clean(const QString &rtf, bool *removed = nullptr);
};
