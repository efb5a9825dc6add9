#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

// The in-memory form of a document: its sheets and the boxes placed on them.
// Sizes are in centimetres. Pages and boxes are numbered from 1, as the rest
// of the program counts them: use page(n) and item(n), which take those
// numbers; Pages[0] and Items[0] are page 1 and box 1. A number outside the
// list raises the runtime's "subscript out of range" (error 9).
//
// Default-constructed values are the empty record (all zero, no pages);
// Database::NewDocument gives the blank document.

// One box placed on a sheet.
struct DocumentItem
{
    // Kind of a box.
    static constexpr qint32 RichText = 5; // shown in a WordProcessors element
    static constexpr qint32 Grid = 6;     // shown in a SpreadSheets element

    qint32 Unit = 0; // 0: the four values below are centimetres
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    qint32 Reserved1 = 0; // handed to the placed box as it is
    qint16 Flags1 = 0;    // a Boolean setting of the placed box is its negation
    qint16 Flags2 = 0;
    qint32 Kind = 0;
    QString Text; // the box's contents as RTF source
};

// One sheet of the document.
struct DocumentPage
{
    qint16 ItemCount = 0;
    QList<DocumentItem> Items;

    DocumentItem &item(int number);
    const DocumentItem &item(int number) const;
};

struct DocumentRecord
{
    QString DocumentTitle;
    // Local time of the last save; invalid while unset (the runtime's zero date).
    QDateTime Timestamp;
    // Printer set-up codes, handed one by one to the printer before printing.
    qint16 PaperSetting1 = 0;
    qint16 PaperSetting2 = 0; // 7: automatic paper source
    qint16 PaperSetting3 = 0;
    qint16 PaperSetting4 = 0;
    qint16 PaperSetting5 = 0; // -3: medium print quality
    qint16 Copies = 0;
    qint32 Zoom = 0; // percent, on screen and on paper
    qint16 PageCount = 0;
    QList<DocumentPage> Pages;

    DocumentPage &page(int number);
    const DocumentPage &page(int number) const;
};
