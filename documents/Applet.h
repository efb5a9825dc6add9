#pragma once

#include <QList>
#include <QPointer>
#include <QVariant>
#include <QWidget>

#include "tools/InfoDlg.h"
#include "tools/Printing.h"

class AppletHost;
class PrinterDevice;
struct DocumentRecord;

// The plain applet: a child control that the main window drives through one
// fixed set of members, the same in every applet and in this order. This one
// gives every member its neutral behaviour; DatabaseApplet adds documents.
//
// Document kinds: 10 the word processor, 11 a screen-sized applet; other kinds
// leave the applet idle.
class Applet : public QWidget
{
    Q_OBJECT

public:
    static constexpr qint32 WordProcessorKind = 10;
    static constexpr qint32 ScreenKind = 11;
    // The inner coordinate system runs from (0, 0) to these, whatever the size.
    static constexpr int InnerWidth = 800;
    static constexpr int InnerHeight = 600;

    explicit Applet(QWidget *parent = nullptr);

    // 1. The native window that holds the applet.
    virtual qint32 Handle() const;
    // 2. The applet's controls.
    virtual QList<QWidget *> AllCtrls() const;
    // 3. The control that has the focus inside the applet, or none.
    virtual QWidget *ActiveCtrl() const;
    // 4. Sizes the controls for the screen, sets the inner coordinate system
    //    and takes the parent as the host.
    virtual void Load();
    // 5. Takes the tool dialog and the printing object from the host.
    virtual void Reload();
    // 6.
    virtual void Unload();
    // 7. The applet becomes usable.
    virtual void Start();
    // 8.
    virtual void Quit();
    // 9 and 10. The document kind.
    virtual qint32 Document() const;
    virtual void setDocument(qint32 kind);
    // 11. Whether anything was printed.
    virtual bool Printout();
    // 12, 13 and 14. Named properties: read, write a value, write an object.
    virtual QVariant Properties(const QString &name) const;
    virtual void setProperties(const QString &name, const QVariant &value);
    virtual void setPropertiesObject(const QString &name, QObject *value);
    // 15. A named command with one argument.
    virtual QVariant Update(const QString &command, const QVariant &argument = QVariant());

    // The current document, shared with the host, which owns it. The host
    // calls this again whenever it puts other contents into the record.
    virtual void setRecord(DocumentRecord *record);
    // The record, brought up to date with what the screen shows.
    DocumentRecord *record();
    // Writes what the screen shows into the record; the plain applet shows
    // nothing, so there is nothing to write.
    virtual void syncRecord();

    AppletHost *host() const { return m_host; }
    InfoDlg *infoDlg() const { return m_infoDlg; }
    Printing *printing() const { return m_printing; }
    bool isStarted() const { return m_started; }

    // The inner coordinate system against the real size, in pixels.
    QPointF innerToPixels(const QPointF &inner) const;
    QPointF pixelsToInner(const QPointF &pixels) const;

public slots:
    // A key of the tool dialog's pad: codes 4 to 8 put an input-method edit
    // that has the focus into hiragana input (mode 4).
    void InfoDlg_KeyCheck(qint32 code);
    // A print job starts: hands the document's printer set-up to the printer.
    void Printing_Define(qint16 tag, QSizeF *page);

signals:
    // The host's events, in the order its handlers number them.
    // First: Start (true) or Quit (false).
    void started(bool &active);
    // Third: a key (its key code) or a pointer press (its button) on a control
    // while the kind is 10; clearing proceed cancels the action.
    void keyOrPointer(qint32 &code, bool &proceed);
    // Fourth: something the host shows changed. kind "All Properties": the
    // paragraph properties at the caret; "Word Processor": value tells whether
    // the editing view is shown.
    void propertiesChanged(bool &value, QVariant applet, QString kind);
    // Fifth: an asynchronous property read completed.
    void asyncPropertyRead(QVariant &property);

    // The system beep sounded (Printout with nothing to print).
    void beeped();

protected:
    // Sounds the system beep and says so.
    void beep();
    // The record as it stands, without bringing it up to date.
    DocumentRecord *sharedRecord() const { return m_record; }
    // Applies the document's printer set-up codes to a printer, in the
    // document's order: paper size, paper bin, orientation, duplex, print
    // quality, copies, zoom. A code the printer refuses is skipped.
    void applyPrinterSetup(PrinterDevice &printer);
    // Raises the third event for a key or pointer press on a watched control.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void watchInput(QWidget *control);

private:
    void KeyCheckFromDialog(qint32 &first, qint32 &second, QString &text);

    AppletHost *m_host = nullptr;
    QPointer<InfoDlg> m_infoDlg;
    QPointer<Printing> m_printing;
    DocumentRecord *m_record = nullptr;
    qint32 m_kind = 0;
    bool m_started = false;
    bool m_innerScaleSet = false;
};
