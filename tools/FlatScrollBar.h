#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>

class QAbstractScrollArea;
class QScrollBar;
class QWidget;

// Flat-looking scroll bars for one window, with their range, position and page
// size as properties. A scroll area's own two bars are used; any other window
// gets a pair of bars along its right and bottom edges.
//
// Ranges count as the design does: minimum and maximum of the whole document,
// and a page that is the visible part of it. A page that covers the whole
// range leaves nothing to scroll; the bar then stays on screen, greyed out,
// rather than disappearing.
class FlatScrollBar : public QObject
{
    Q_OBJECT

public:
    // Bar codes
    static constexpr int SB_HORZ = 0;
    static constexpr int SB_VERT = 1;
    static constexpr int SB_BOTH = 3;

    // Property indices
    static constexpr qint32 WSB_PROP_CYVSCROLL = 0x1;
    static constexpr qint32 WSB_PROP_CXHSCROLL = 0x2;
    static constexpr qint32 WSB_PROP_CYHSCROLL = 0x4;
    static constexpr qint32 WSB_PROP_CXVSCROLL = 0x8;
    static constexpr qint32 WSB_PROP_CXHTHUMB = 0x10;
    static constexpr qint32 WSB_PROP_CYVTHUMB = 0x20;
    static constexpr qint32 WSB_PROP_VBKGCOLOR = 0x40;
    static constexpr qint32 WSB_PROP_HBKGCOLOR = 0x80;
    static constexpr qint32 WSB_PROP_VSTYLE = 0x100;
    static constexpr qint32 WSB_PROP_HSTYLE = 0x200;
    static constexpr qint32 WSB_PROP_WINSTYLE = 0x400;
    static constexpr qint32 WSB_PROP_PALETTE = 0x800;

    // The scroll style bits of the window style word.
    static constexpr qint32 WS_HSCROLL = 0x100000;
    static constexpr qint32 WS_VSCROLL = 0x200000;

    explicit FlatScrollBar(QObject *parent = nullptr);
    ~FlatScrollBar() override;

    // The window whose bars are managed; set before any other member.
    QWidget *Window() const;
    void SetWindow(QWidget *window);

    // Gives the bars their flat look; false without a window.
    bool Initialize();
    // Gives them back the program's ordinary look; false when not initialised.
    bool Terminate();

    void SetEnabled(bool enabled);
    void SetVisible(bool visible);
    void Refresh();

    bool HScrollBar() const;
    bool VScrollBar() const;
    qint32 hPal() const;

    qint32 Property(qint32 index) const;
    void SetProperty(qint32 index, qint32 value);

    qint32 HScrollMin() const;
    qint32 HScrollMax() const;
    void HScrollRange(qint32 minimum, qint32 maximum);
    qint32 VScrollMin() const;
    qint32 VScrollMax() const;
    void VScrollRange(qint32 minimum, qint32 maximum);

    qint32 HScrollPosition() const;
    void SetHScrollPosition(qint32 position);
    qint32 VScrollPosition() const;
    void SetVScrollPosition(qint32 position);

    qint32 HScrollPage() const;
    void SetHScrollPage(qint32 page);
    qint32 VScrollPage() const;
    void SetVScrollPage(qint32 page);

    // The bars themselves, for the owner to connect to; null without a window.
    QScrollBar *bar(int code) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Range
    {
        qint32 minimum = 0;
        qint32 maximum = 0;
        qint32 page = 0;
        bool kept = false;
    };

    QAbstractScrollArea *scrollArea() const;
    void makeOwnBars();
    void placeOwnBars();
    bool isShown(int code) const;
    void show(int code, bool visible);
    Range range(int code) const;
    void setRange(int code, const Range &range);
    void setRangeOf(int code, qint32 minimum, qint32 maximum);
    void setPageOf(int code, qint32 page);

    QPointer<QWidget> m_window;
    QPointer<QScrollBar> m_ownBars[2];
    Range m_ranges[2];
    bool m_greyed[2] = {false, false}; // disabled because the page covers the range
    QHash<qint32, qint32> m_properties;
    bool m_initialized = false;
};
