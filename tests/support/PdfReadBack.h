#pragma once

#include "support/ToolOutput.h"

#include <QList>
#include <QRectF>
#include <QRegularExpression>
#include <QString>

#include <algorithm>

// Reads a printed PDF back with poppler's tools: its words with their boxes
// (pdftotext -bbox) and its summary (pdfinfo).
namespace PdfReadBack {

// One word, NFKC-folded (some faces name a kanji by its radical form, 文 as
// ⽂, in the PDF's text layer), its box in centimetres from the sheet's
// top-left corner.
struct Word
{
    QString text;
    QRectF box;
};

// The words of one page (counted from 1); none when the file cannot be read.
inline QList<Word> words(const QString &pdf, int page = 1)
{
    constexpr double pointsPerCm = 72 / 2.54;
    const QString html = toolOutput(QStringLiteral("pdftotext"),
                                    {QStringLiteral("-bbox"), QStringLiteral("-f"), QString::number(page),
                                     QStringLiteral("-l"), QString::number(page), pdf, QStringLiteral("-")});
    static const QRegularExpression word(QStringLiteral(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    QList<Word> found;
    for (auto it = word.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        const QPointF topLeft(m.captured(1).toDouble(), m.captured(2).toDouble());
        const QPointF bottomRight(m.captured(3).toDouble(), m.captured(4).toDouble());
        found.append({m.captured(5).normalized(QString::NormalizationForm_KC), QRectF(topLeft / pointsPerCm, bottomRight / pointsPerCm)});
    }
    return found;
}

// The boxes of every word that reads exactly as the text, top to bottom.
inline QList<QRectF> boxesOf(const QList<Word> &words, const QString &text)
{
    QList<QRectF> boxes;
    for (const Word &word : words) {
        if (word.text == text)
            boxes.append(word.box);
    }
    std::sort(boxes.begin(), boxes.end(), [](const QRectF &a, const QRectF &b) { return a.top() < b.top(); });
    return boxes;
}

// The box around every word that is part of the text (a line may be read as
// several words); null when there is none.
inline QRectF boxAround(const QList<Word> &words, const QString &text)
{
    QRectF found;
    for (const Word &word : words) {
        if (text.contains(word.text))
            found = found.isNull() ? word.box : found.united(word.box);
    }
    return found;
}

// What pdfinfo prints: "Pages:", "Page size:" and the rest.
inline QString info(const QString &pdf)
{
    return toolOutput(QStringLiteral("pdfinfo"), {pdf});
}

// -1 when the file cannot be read.
inline int pageCount(const QString &pdf)
{
    static const QRegularExpression pages(QStringLiteral("^Pages:\\s+(\\d+)$"), QRegularExpression::MultilineOption);
    const auto match = pages.match(info(pdf));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

} // namespace PdfReadBack
