#include "workspace/WorkspaceLayout.h"

#include <algorithm>

namespace {

constexpr double DesignWidth = 1366.0;
constexpr double DesignHeight = 768.0;
// A pad key is 28 of its own units wide: 1.58 makes it 44 pixels.
constexpr double DesignPadScale = 1.58;
// Smaller than this the character would be a smudge: it steps aside instead.
constexpr int MinimumPerch = 64;

double unitFor(QSize window)
{
    return std::min(window.width() / DesignWidth, window.height() / DesignHeight);
}

} // namespace

WorkspaceLayout::WorkspaceLayout(QSize window, QSize toolDialog, Character character)
    : m_window(window)
    , m_unit(unitFor(window))
{
    const int w = window.width();
    const int h = window.height();
    m_margin = std::max(8, int(12 * m_unit));
    m_buttonHeight = std::max(64, int(84 * m_unit));
    // Eight places and the ending button, with a double gap before it.
    const int places = MainButtonPlaces + 1;
    m_buttonWidth = (w - 2 * m_margin - (places - 1) * m_margin - 2 * m_margin) / places;

    const int top = m_margin + m_buttonHeight + m_margin;
    // Room for a hint of two lines.
    const int infoHeight = std::max(76, int(86 * m_unit));
    const int bottom = h - m_margin - infoHeight - m_margin;
    m_sideBarWidth = std::max(210, int(250 * m_unit));
    m_work = QRect(m_margin, top, w - 2 * m_margin, bottom - top);
    m_infoBar = QRect(m_margin, h - m_margin - infoHeight, w - 2 * m_margin, infoHeight);
    m_document = middleOf(m_work);
    if (!toolDialog.isEmpty() && toolDialog.width() <= m_document.width()) {
        // A small pad, such as the calculator, docks at the foot of the
        // document: the side bars keep their height.
        m_toolDialog = QRect(QPoint(m_document.center().x() - toolDialog.width() / 2,
                                    std::max(top, m_work.bottom() + 1 - toolDialog.height())),
                             toolDialog);
        m_document.setBottom(m_toolDialog.top() - m_margin - 1);
    } else if (!toolDialog.isEmpty()) {
        // A wide one docks along the bottom of the window, where the
        // information bar was; the side bars pair their buttons to fit
        // above it, and hints show over the foot of the document.
        m_toolDialog = QRect(QPoint(std::max(0, (w - toolDialog.width()) / 2),
                                    std::max(top, h - m_margin - toolDialog.height())),
                             toolDialog);
        m_work.setBottom(std::max(top, m_toolDialog.top() - m_margin) - 1);
        m_sideBarWidth = m_sideBarWidth * 6 / 5;
        m_document = middleOf(m_work);
        m_infoBar = QRect(m_document.left(), m_work.bottom() + 1 - infoHeight, m_document.width(), infoHeight);
        m_infoBarFloats = true;
    }

    // The boxes keep clear of the buttons and the information bar.
    const int clearance = std::max(top, h - (h - m_margin - infoHeight - m_margin));
    m_boxSize = QSize(std::min(m_work.width(), std::max(760, int(1040 * m_unit))),
                      std::min(h - 2 * clearance, std::max(480, int(600 * m_unit))));

    m_formatBar = QRect(m_work.right() - m_sideBarWidth + 1, m_work.top(), m_sideBarWidth, m_work.height());
    if (character == Character::On && !m_infoBarFloats) {
        // Right of the centred boxes, and no larger than a bird should be.
        const int boxRight = (w + m_boxSize.width()) / 2;
        const int side = std::min(int(140 * m_unit), w - m_margin - (boxRight + m_margin));
        if (side >= MinimumPerch) {
            m_perch = QRect(w - m_margin - side, h - m_margin - side, side, side);
            m_infoBar.setRight(m_perch.left() - m_margin - 1);
            m_formatBar.setBottom(std::min(m_formatBar.bottom(), m_perch.top() - m_margin - 1));
        }
    }
}

double WorkspaceLayout::padScale(QSize window)
{
    return DesignPadScale * unitFor(window);
}

QRect WorkspaceLayout::mainButton(int place) const
{
    return QRect(m_margin + place * (m_buttonWidth + m_margin), m_margin, m_buttonWidth, m_buttonHeight);
}

QRect WorkspaceLayout::endButton() const
{
    return QRect(m_window.width() - m_margin - m_buttonWidth, m_margin, m_buttonWidth, m_buttonHeight);
}

QRect WorkspaceLayout::backToStart() const
{
    const QSize size(std::max(320, int(420 * m_unit)), std::max(96, int(120 * m_unit)));
    return QRect(QPoint(m_work.center().x() - size.width() / 2, m_work.center().y() - size.height() / 2), size);
}

QRect WorkspaceLayout::documentBar() const
{
    return QRect(m_work.left(), m_work.top(), m_sideBarWidth, m_work.height());
}

QRect WorkspaceLayout::formatBar() const
{
    return m_formatBar;
}

QRect WorkspaceLayout::middleOf(const QRect &work) const
{
    return QRect(work.left() + m_sideBarWidth + m_margin, work.top(),
                 work.width() - 2 * (m_sideBarWidth + m_margin), work.height());
}
