#pragma once

#include "documents/Applet.h"

#include <QFont>
#include <QHash>
#include <QList>
#include <QRect>
#include <QSet>
#include <QTimer>

class PageSheet;
class QScrollArea;
class QTableWidget;
class WordProcessor;

// The applet that shows and edits the current document. The boxes of one page
// lie on a sheet of the printer's paper size, scaled by the zoom, inside a
// scroll area: rich-text boxes in WordProcessors, grids in SpreadSheets. On
// screen the sheet is shrunk further where the view is narrower than the
// page at 100 %, so that no line needs scrolling sideways to be read. The
// element with index n shows box n of the page; element 0 of each array is
// the hidden pattern the others are made from.
//
// The record always holds what the screen shows: a box's rich text is
// written into the record by syncRecord(), which record() runs, which the
// applet runs itself when the page is closed and a moment after typing stops.
class DatabaseApplet : public Applet
{
    Q_OBJECT

public:
    explicit DatabaseApplet(QWidget *parent = nullptr);

    // The members that differ from the plain applet, in the members' order;
    // Handle, ActiveCtrl, Load, Reload, Unload, Document (read), the object
    // form of Properties and the two handlers are the plain applet's.
    QList<QWidget *> AllCtrls() const override;
    void Start() override;
    void Quit() override;
    void setDocument(qint32 kind) override;
    bool Printout() override;
    QVariant Properties(const QString &name) const override;
    void setProperties(const QString &name, const QVariant &value) override;
    QVariant Update(const QString &command, const QVariant &argument = QVariant()) override;

    // The host has put another document into the record (opened, reverted):
    // what the screen showed of the old one is not written into it.
    void setRecord(DocumentRecord *record) override;
    void syncRecord() override;

    // The control arrays; an index without an element gives nullptr.
    WordProcessor *WordProcessors(int index) const;
    QTableWidget *SpreadSheets(int index) const;
    int wordProcessorCount() const { return int(m_wordProcessors.size()); }

    // Shows page number (1..PageCount of the record; others are ignored).
    void showPage(int number);
    int shownPage() const { return m_shownPage; }

    // The sheet the boxes lie on, and the paper size at 100 %, in pixels.
    PageSheet *sheet() const { return m_sheet; }
    QSize pageSize() const { return m_pageSize; }
    // The printable part of the page at 100 %, in pixels.
    QRect printableRect() const { return m_printableRect; }
    // How much the page is shrunk on top of the document's zoom so that at
    // 100 % it fits the width of the view: 1 when the view is wide enough.
    double fitFactor() const { return m_fit; }

    // The paragraph around the caret gets the font name (when not empty),
    // the size (when not zero) and the colour (when valid); the caret ends at
    // the paragraph's start. Grids are left as they are.
    static void formatParagraph(QWidget *control, const QString &fontName, double size, const QColor &colour);

signals:
    // The text of a box or its formatting changed.
    void edited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void applyZoom(qint32 zoom);
    void zoomShownPage(qint32 from, qint32 zoom);
    double fitForView() const;
    void fitShownPage();
    void unfitShownPage();
    QList<QWidget *> shownControls() const;
    enum PageSource { WithPrinter,
                      WithoutPrinter };
    void measurePage(PageSource source = WithPrinter);
    void closeShownBoxes();
    WordProcessor *newWordProcessor(int index);
    QTableWidget *newSpreadSheet(int index);
    QRect placeOf(const struct DocumentItem &item) const;
    void raiseChange(bool value, const QString &kind);
    void boxEdited(int index);
    WordProcessor *activeWordProcessor() const;

    QScrollArea *m_scrollArea;
    PageSheet *m_sheet;
    QList<WordProcessor *> m_wordProcessors;
    QList<QTableWidget *> m_spreadSheets;
    qint16 m_zoom = 100;
    // The zoom the page and its boxes stand at before fitting.
    qint32 m_pageZoom = 100;
    double m_fit = 1.0;
    // A shown box as the zoom left it, before fitting; each fit starts from
    // here, so shrinking and widening the view again never drifts.
    struct Unfitted
    {
        QRect geometry;
        QFont font;
        int textZoom = 100;
    };
    QHash<QWidget *, Unfitted> m_unfitted;
    // Set while a property is being applied: its own caret moves are not news.
    bool m_settingProperty = false;
    int m_shownPage = 0;
    QSize m_pageSize;
    QRect m_printableRect;
    QSet<int> m_unsaved;
    // The text each shown box last took from or gave to the record; a record
    // holding something else has been replaced by the host since.
    QHash<int, QString> m_recordText;
    QTimer m_idleSync;
};
