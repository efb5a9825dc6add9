#pragma once

#include <QObject>

// The page-layout layer over the system printer: text and lines placed in
// centimetres relative to margins the class keeps.
class Printing : public QObject
{
    Q_OBJECT

public:
    explicit Printing(QObject *parent = nullptr);

signals:
    // A print job starts: the host may adjust the printer before anything is
    // drawn. The tag is passed through from Alloc.
    void Define(qint16 tag, QObject *page);
};
