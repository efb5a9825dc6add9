#pragma once

#include <QRect>
#include <QSize>

// Where the main window puts everything, for one window size: the main
// buttons along the top, the information bar along the bottom, the boxes in
// the middle, the open document between its two side bars, and an open pad
// docked along the bottom edge.
//
// Sizes are designed for 1366 by 768 and follow the window by `unit`, the
// smaller of its two ratios to that size.
class WorkspaceLayout
{
public:
    // Main buttons in a row from the left; the ending button stands alone
    // at the right end.
    static constexpr int MainButtonPlaces = 8;

    enum class Character { Off,
                           On };

    // `toolDialog` is the outer size of the open pad, or empty.
    WorkspaceLayout(QSize window, QSize toolDialog = QSize(), Character character = Character::Off);

    double unit() const { return m_unit; }
    int margin() const { return m_margin; }
    // How large the pads are drawn for this window: keys of at least 44
    // pixels at 1366 by 768, smaller screens in proportion.
    static double padScale(QSize window);
    // How wide the docked pads may be.
    int padRoom() const { return m_window.width() - 2 * m_margin; }

    QRect mainButton(int place) const;
    QRect endButton() const;
    // The bar along the bottom; while a pad is docked, a strip over the
    // bottom of the document, shown only while it has something to say.
    QRect infoBar() const { return m_infoBar; }
    bool infoBarFloats() const { return m_infoBarFloats; }
    // Between the main buttons and the information bar (or the pad).
    QRect work() const { return m_work; }
    QSize boxSize() const { return m_boxSize; }
    QRect backToStart() const;
    int sideBarWidth() const { return m_sideBarWidth; }
    QRect documentBar() const;
    QRect formatBar() const;
    QRect document() const { return m_document; }
    // Where the character stands: free space at the bottom right corner,
    // beside the boxes, under the format bar and after the information bar.
    // Empty while the character is off or a docked pad leaves no room.
    QRect perch() const { return m_perch; }
    // The docked pad's top left corner, in window coordinates.
    QPoint toolDialogAt() const { return m_toolDialog.topLeft(); }

private:
    QRect middleOf(const QRect &work) const;

    QSize m_window;
    double m_unit;
    int m_margin;
    int m_buttonWidth;
    int m_buttonHeight;
    QRect m_toolDialog;
    QRect m_infoBar;
    QRect m_work;
    QRect m_document;
    QRect m_formatBar;
    QRect m_perch;
    bool m_infoBarFloats = false;
    QSize m_boxSize;
    int m_sideBarWidth;
};
