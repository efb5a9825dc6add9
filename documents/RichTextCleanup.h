#pragma once

#include <QString>

// Takes colours and underlining out of rich text source. Documents never keep
// them, whatever was pasted: every brace group that holds "\colortbl" is cut
// out (from the nearest "{" before the word to the first "}" after it; inner
// braces are not counted), then every "\ulnone", then every "\ul", each as a
// plain piece of text.
class RichTextCleanup
{
public:
    // The cleaned text; removed tells whether anything was taken out.
    static QString clean(const QString &rtf, bool *removed = nullptr);
};
