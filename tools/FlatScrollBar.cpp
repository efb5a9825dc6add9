#include "tools/FlatScrollBar.h"

#include "platform/FlatScrollStyle.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QScrollBar>

FlatScrollBar::FlatScrollBar(QObject *parent)
    : QObject(parent)
{
}

FlatScrollBar::~FlatScrollBar()
{
    if (m_window)
        m_window->removeEventFilter(this);
}

QWidget *FlatScrollBar::Window() const
{
    return m_window;
}

void FlatScrollBar::SetWindow(QWidget *window)
{
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = window;
    for (int code : {SB_HORZ, SB_VERT}) {
        m_ranges[code] = Range();
        m_greyed[code] = false;
    }
    makeOwnBars();
}

QAbstractScrollArea *FlatScrollBar::scrollArea() const
{
    return qobject_cast<QAbstractScrollArea *>(m_window.data());
}

QScrollBar *FlatScrollBar::bar(int code) const
{
    if (!m_window || (code != SB_HORZ && code != SB_VERT))
        return nullptr;
    if (QAbstractScrollArea *area = scrollArea())
        return code == SB_HORZ ? area->horizontalScrollBar() : area->verticalScrollBar();
    return m_ownBars[code];
}

void FlatScrollBar::makeOwnBars()
{
    if (!m_window || scrollArea())
        return;
    // A plain window has no bars of its own: it gets two, hidden until shown
    // or given something to scroll.
    for (int code : {SB_HORZ, SB_VERT}) {
        if (!m_ownBars[code] || m_ownBars[code]->parentWidget() != m_window) {
            auto *created = new QScrollBar(code == SB_HORZ ? Qt::Horizontal : Qt::Vertical, m_window);
            created->hide();
            m_ownBars[code] = created;
        }
    }
    m_window->installEventFilter(this);
    placeOwnBars();
}

void FlatScrollBar::placeOwnBars()
{
    QScrollBar *across = m_ownBars[SB_HORZ];
    QScrollBar *down = m_ownBars[SB_VERT];
    if (!m_window || !across || !down)
        return;
    const QRect area = m_window->rect();
    const int thick = down->sizeHint().width();
    const int high = across->sizeHint().height();
    const int bottomGap = across->isHidden() ? 0 : high;
    const int rightGap = down->isHidden() ? 0 : thick;
    down->setGeometry(area.right() - thick + 1, 0, thick, area.height() - bottomGap);
    across->setGeometry(0, area.bottom() - high + 1, area.width() - rightGap, high);
    down->raise();
    across->raise();
}

bool FlatScrollBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        placeOwnBars();
    return QObject::eventFilter(watched, event);
}

bool FlatScrollBar::Initialize()
{
    if (!m_window)
        return false;
    for (int code : {SB_HORZ, SB_VERT}) {
        if (QScrollBar *b = bar(code))
            b->setStyle(FlatScrollStyle::instance());
    }
    placeOwnBars();
    m_initialized = true;
    return true;
}

bool FlatScrollBar::Terminate()
{
    if (!m_initialized || !m_window)
        return false;
    for (int code : {SB_HORZ, SB_VERT}) {
        if (QScrollBar *b = bar(code))
            b->setStyle(nullptr);
    }
    placeOwnBars();
    m_initialized = false;
    return true;
}

void FlatScrollBar::SetEnabled(bool enabled)
{
    for (int code : {SB_HORZ, SB_VERT}) {
        if (QScrollBar *b = bar(code))
            b->setEnabled(enabled);
    }
}

// ----- showing --------------------------------------------------------------

bool FlatScrollBar::isShown(int code) const
{
    QScrollBar *b = bar(code);
    if (!b)
        return false;
    if (QAbstractScrollArea *area = scrollArea()) {
        const Qt::ScrollBarPolicy policy = code == SB_HORZ ? area->horizontalScrollBarPolicy() : area->verticalScrollBarPolicy();
        if (policy != Qt::ScrollBarAsNeeded)
            return policy == Qt::ScrollBarAlwaysOn;
        return b->maximum() > b->minimum();
    }
    return !b->isHidden();
}

void FlatScrollBar::show(int code, bool visible)
{
    QScrollBar *b = bar(code);
    if (!b)
        return;
    if (QAbstractScrollArea *area = scrollArea()) {
        const Qt::ScrollBarPolicy policy = visible ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
        if (code == SB_HORZ)
            area->setHorizontalScrollBarPolicy(policy);
        else
            area->setVerticalScrollBarPolicy(policy);
        return;
    }
    b->setVisible(visible);
    placeOwnBars();
}

void FlatScrollBar::SetVisible(bool visible)
{
    show(SB_HORZ, visible);
    show(SB_VERT, visible);
}

void FlatScrollBar::Refresh()
{
    SetVisible(true);
    for (int code : {SB_HORZ, SB_VERT}) {
        if (QScrollBar *b = bar(code))
            b->update();
    }
}

bool FlatScrollBar::HScrollBar() const
{
    return Property(WSB_PROP_WINSTYLE) & WS_HSCROLL;
}

bool FlatScrollBar::VScrollBar() const
{
    return Property(WSB_PROP_WINSTYLE) & WS_VSCROLL;
}

// ----- properties -----------------------------------------------------------

qint32 FlatScrollBar::Property(qint32 index) const
{
    if (index == WSB_PROP_WINSTYLE)
        return (isShown(SB_HORZ) ? WS_HSCROLL : 0) | (isShown(SB_VERT) ? WS_VSCROLL : 0);
    return m_properties.value(index, 0);
}

void FlatScrollBar::SetProperty(qint32 index, qint32 value)
{
    // The window style belongs to the window, not to its bars.
    if (index == WSB_PROP_WINSTYLE)
        return;
    m_properties.insert(index, value);
}

qint32 FlatScrollBar::hPal() const
{
    return Property(WSB_PROP_PALETTE);
}

// ----- range, position and page ---------------------------------------------

namespace {

// A scroll bar's own maximum is the last position, which is the document's
// maximum less the page.
int lastPosition(qint32 minimum, qint32 maximum, qint32 page)
{
    return qMax(minimum, page > 0 ? maximum - page + 1 : maximum);
}

} // namespace

FlatScrollBar::Range FlatScrollBar::range(int code) const
{
    QScrollBar *b = bar(code);
    if (!b)
        return {};
    // The bar cannot hold a range smaller than its page, so what was set here
    // is remembered; once the window itself changes the bar, the bar counts.
    const Range &kept = m_ranges[code];
    if (kept.kept && b->minimum() == kept.minimum && b->pageStep() == kept.page
        && b->maximum() == lastPosition(kept.minimum, kept.maximum, kept.page))
        return kept;
    Range read;
    read.minimum = b->minimum();
    read.page = b->pageStep();
    read.maximum = b->maximum() + (read.page > 0 ? read.page - 1 : 0);
    return read;
}

void FlatScrollBar::setRange(int code, const Range &wanted)
{
    QScrollBar *b = bar(code);
    if (!b)
        return;
    Range &kept = m_ranges[code];
    kept = wanted;
    kept.kept = true;
    b->setPageStep(kept.page);
    b->setRange(kept.minimum, lastPosition(kept.minimum, kept.maximum, kept.page));
}

void FlatScrollBar::setRangeOf(int code, qint32 minimum, qint32 maximum)
{
    QScrollBar *b = bar(code);
    if (!b)
        return;
    Range r = range(code);
    r.minimum = minimum;
    r.maximum = maximum;
    setRange(code, r);
    const bool scrollable = r.page <= r.maximum - r.minimum && r.maximum > r.minimum;
    if (m_greyed[code] && scrollable) {
        m_greyed[code] = false;
        b->setEnabled(true);
    }
    // A window's own bars come and go with their range, as a scroll area's do.
    if (!scrollArea() && !m_greyed[code])
        show(code, r.maximum > r.minimum);
}

void FlatScrollBar::setPageOf(int code, qint32 page)
{
    QScrollBar *b = bar(code);
    if (!b)
        return;
    Range r = range(code);
    r.page = qMax(0, page);
    setRange(code, r);
    // Nothing left to scroll: keep the bar in sight, greyed out, not hidden.
    m_greyed[code] = r.page > r.maximum - r.minimum;
    b->setEnabled(!m_greyed[code]);
    show(code, true);
}

qint32 FlatScrollBar::HScrollMin() const
{
    return range(SB_HORZ).minimum;
}

qint32 FlatScrollBar::HScrollMax() const
{
    return range(SB_HORZ).maximum;
}

void FlatScrollBar::HScrollRange(qint32 minimum, qint32 maximum)
{
    setRangeOf(SB_HORZ, minimum, maximum);
}

qint32 FlatScrollBar::VScrollMin() const
{
    return range(SB_VERT).minimum;
}

qint32 FlatScrollBar::VScrollMax() const
{
    return range(SB_VERT).maximum;
}

void FlatScrollBar::VScrollRange(qint32 minimum, qint32 maximum)
{
    setRangeOf(SB_VERT, minimum, maximum);
}

qint32 FlatScrollBar::HScrollPosition() const
{
    QScrollBar *b = bar(SB_HORZ);
    return b ? b->value() : 0;
}

void FlatScrollBar::SetHScrollPosition(qint32 position)
{
    if (QScrollBar *b = bar(SB_HORZ))
        b->setValue(position);
}

qint32 FlatScrollBar::VScrollPosition() const
{
    QScrollBar *b = bar(SB_VERT);
    return b ? b->value() : 0;
}

void FlatScrollBar::SetVScrollPosition(qint32 position)
{
    if (QScrollBar *b = bar(SB_VERT))
        b->setValue(position);
}

qint32 FlatScrollBar::HScrollPage() const
{
    return range(SB_HORZ).page;
}

void FlatScrollBar::SetHScrollPage(qint32 page)
{
    setPageOf(SB_HORZ, page);
}

qint32 FlatScrollBar::VScrollPage() const
{
    return range(SB_VERT).page;
}

void FlatScrollBar::SetVScrollPage(qint32 page)
{
    setPageOf(SB_VERT, page);
}
