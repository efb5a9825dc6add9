#pragma once

#include <QFont>
#include <QSize>
#include <QString>
#include <QStringList>

class QFontMetrics;

// How a caption is broken into lines. Qt's word wrap breaks Japanese between
// any two characters, which splits words ("文字入" / "力"); a caption here
// breaks only where the text allows it: after a space, after 、 。 and
// closing brackets, before opening brackets, after a particle that ends a
// phrase ("タイトルを|入力してください"), and at its own line breaks.
// Where that leaves a line too wide, the caption takes a smaller type.
class CaptionLayout
{
public:
    // The pieces of one line of text that no line break may fall inside.
    static QStringList pieces(const QString &line);

    // The caption in lines no wider than width, broken only between pieces;
    // empty when a piece alone is wider than width.
    static QStringList lines(const QString &caption, const QFontMetrics &metrics, int width);

    // The caption in the largest type, from the font's own size down to the
    // theme's smallest, whose lines fit the box; at the smallest size when
    // none does. Without wrapping, only the caption's own breaks are used.
    struct Fitted
    {
        QFont font;
        QString text; // the lines joined with '\n'
    };
    static Fitted fit(const QFont &font, const QString &caption, const QSize &box, bool wrap);
};
