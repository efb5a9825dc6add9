#pragma once

#include <QList>
#include <QRectF>
#include <QString>

// Reads a printed PDF back with poppler's tools: its words with their boxes
// (pdftotext -bbox) and its summary (pdfinfo).
class PdfReadBack
{
public:
    // One word, its box in centimetres from the sheet's top-left corner.
    struct Word
    {
        QString text;
        QRectF box;
    };

    // The words of one page (counted from 1); none when the file cannot be read.
    static QList<Word> words(const QString &pdf, int page = 1);
    // What pdfinfo prints: "Pages:", "Page size:" and the rest.
    static QString info(const QString &pdf);
    // -1 when the file cannot be read.
    static int pageCount(const QString &pdf);
};
