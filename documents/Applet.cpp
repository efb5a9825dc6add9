#include "documents/Applet.h"

#include "app/ControlScaler.h"
#include "documents/AppletHost.h"
#include "documents/DocumentRecord.h"
#include "platform/ErrorTrap.h"
#include "platform/PrinterDevice.h"
#include "platform/touch/TouchEdit.h"
#include "tools/InfoDlg.h"
#include "tools/Printing.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

Applet::Applet(QWidget *parent)
    : QWidget(parent)
{
}

qint32 Applet::Handle() const
{
    return qint32(effectiveWinId());
}

QList<QWidget *> Applet::AllCtrls() const
{
    return findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
}

QWidget *Applet::ActiveCtrl() const
{
    const QList<QWidget *> controls = AllCtrls();
    for (QWidget *widget = focusWidget(); widget && widget != this; widget = widget->parentWidget()) {
        if (controls.contains(widget))
            return widget;
    }
    return nullptr;
}

void Applet::Load()
{
    m_innerScaleSet = false;
    for (QWidget *control : AllCtrls()) {
        ControlScaler::scale(control, 0);
        watchInput(control);
    }
    m_innerScaleSet = true;
    m_host = nullptr;
    for (QWidget *widget = parentWidget(); widget && !m_host; widget = widget->parentWidget())
        m_host = dynamic_cast<AppletHost *>(widget);
    if (!m_host)
        RuntimeLog::note("Applet::Load", QStringLiteral("the applet is not inside the main window"));
}

void Applet::Reload()
{
    if (m_infoDlg)
        disconnect(m_infoDlg, nullptr, this, nullptr);
    if (m_printing)
        disconnect(m_printing, nullptr, this, nullptr);
    m_infoDlg = m_host ? m_host->infoDlg() : nullptr;
    m_printing = m_host ? m_host->printing() : nullptr;
    if (m_infoDlg)
        connect(m_infoDlg, &InfoDlg::KeyCheck, this, &Applet::KeyCheckFromDialog);
    if (m_printing)
        connect(m_printing, &Printing::Define, this, &Applet::Printing_Define);
}

void Applet::Unload()
{
}

void Applet::Start()
{
    m_started = true;
    setEnabled(true);
}

void Applet::Quit()
{
}

qint32 Applet::Document() const
{
    return m_kind;
}

void Applet::setDocument(qint32 kind)
{
    m_kind = kind;
    if (kind == ScreenKind)
        resize(InnerWidth, InnerHeight);
}

bool Applet::Printout()
{
    if (Document() != WordProcessorKind)
        beep();
    return false;
}

QVariant Applet::Properties(const QString &) const
{
    return QVariant();
}

void Applet::setProperties(const QString &, const QVariant &)
{
}

void Applet::setPropertiesObject(const QString &, QObject *)
{
}

QVariant Applet::Update(const QString &, const QVariant &)
{
    return QVariant();
}

void Applet::setRecord(DocumentRecord *record)
{
    m_record = record;
}

DocumentRecord *Applet::record()
{
    syncRecord();
    return m_record;
}

void Applet::syncRecord()
{
}

QPointF Applet::innerToPixels(const QPointF &inner) const
{
    if (!m_innerScaleSet)
        return inner;
    return QPointF(inner.x() * width() / InnerWidth, inner.y() * height() / InnerHeight);
}

QPointF Applet::pixelsToInner(const QPointF &pixels) const
{
    if (!m_innerScaleSet || width() == 0 || height() == 0)
        return pixels;
    return QPointF(pixels.x() * InnerWidth / width(), pixels.y() * InnerHeight / height());
}

void Applet::InfoDlg_KeyCheck(qint32 code)
{
    if (code < 4 || code > 8)
        return;
    if (auto *edit = qobject_cast<TouchEdit *>(ActiveCtrl()))
        edit->setImeMode(TouchEdit::ImeHiragana);
}

void Applet::KeyCheckFromDialog(qint32 &first, qint32 &, QString &)
{
    InfoDlg_KeyCheck(first);
}

void Applet::Printing_Define(qint16, QSizeF *)
{
    if (!m_printing || sender() != m_printing || !m_printing->printer())
        return;
    applyPrinterSetup(*m_printing->printer());
}

void Applet::applyPrinterSetup(PrinterDevice &printer)
{
    if (!m_record)
        return;
    const DocumentRecord &record = *m_record;
    // Each code on its own: one the printer refuses does not stop the others.
    ErrorTrap::run("Applet::Printing_Define", [&] { printer.setPaperSize(record.PaperSetting1); });
    ErrorTrap::run("Applet::Printing_Define", [&] { printer.setPaperBin(record.PaperSetting2); });
    ErrorTrap::run("Applet::Printing_Define", [&] { printer.setOrientation(record.PaperSetting3); });
    ErrorTrap::run("Applet::Printing_Define", [&] { printer.setDuplex(record.PaperSetting4); });
    ErrorTrap::run("Applet::Printing_Define", [&] { printer.setPrintQuality(record.PaperSetting5); });
    ErrorTrap::run("Applet::Printing_Define", [&] { printer.setCopies(record.Copies); });
    ErrorTrap::run("Applet::Printing_Define", [&] { printer.setZoom(record.Zoom); });
}

void Applet::beep()
{
    QApplication::beep();
    emit beeped();
}

void Applet::watchInput(QWidget *control)
{
    control->installEventFilter(this);
}

bool Applet::eventFilter(QObject *watched, QEvent *event)
{
    if (m_kind != WordProcessorKind)
        return QWidget::eventFilter(watched, event);
    qint32 code = 0;
    if (event->type() == QEvent::KeyPress)
        code = static_cast<QKeyEvent *>(event)->key();
    else if (event->type() == QEvent::MouseButtonPress)
        code = qint32(static_cast<QMouseEvent *>(event)->button());
    else
        return QWidget::eventFilter(watched, event);
    bool proceed = true;
    emit keyOrPointer(code, proceed);
    return !proceed;
}
