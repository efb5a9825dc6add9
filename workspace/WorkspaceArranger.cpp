#include "workspace/WorkspaceArranger.h"

#include "app/Globals.h"
#include "documents/Applet.h"
#include "platform/agent/CharacterStage.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchTheme.h"
#include "tools/InfoDlg.h"
#include "workspace/InformationBar.h"
#include "workspace/SideMenuBar.h"
#include "workspace/WelcomeBox.h"
#include "workspace/Workspace.h"
#include "workspace/WorkspaceLayout.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace {

// The main buttons along the top, from the left; power-off and quit share
// the place at the right end.
const Workspace::Channel ChannelOrder[] = {Workspace::CharacterPadButton, Workspace::CalculatorButton,
                                           Workspace::PrintButton, Workspace::SettingsButton,
                                           Workspace::MusicButton, Workspace::GraphicButton,
                                           Workspace::HelpButton, Workspace::ProductButton};

} // namespace

WorkspaceArranger::WorkspaceArranger(Workspace *window, InformationBar *infoBar)
    : m_window(window)
    , m_infoBar(infoBar)
{
}

void WorkspaceArranger::arrangeWithNewControls()
{
    m_typeUnit = 0;
    arrange();
}

// The main buttons run along the top, the information bar along the bottom;
// the boxes sit in the middle, the open document between its side bars. An
// open pad docks along the bottom, and the document and its side bars make
// room for it, so that nothing the user may click lies under it.
void WorkspaceArranger::arrange()
{
    // Fitting the pad resizes it, which asks for an arrangement again.
    if (m_arranging)
        return;
    const QScopedValueRollback arranging(m_arranging, true);
    InfoDlg *dialog = m_window->infoDlg();
    const bool docked = dialog && dialog->isVisible();
    if (docked)
        fitToolDialog();
    const WorkspaceLayout layout(m_window->size(), docked ? dialog->frameGeometry().size() : QSize(),
                                 Globals::GraphicOn ? WorkspaceLayout::Character::On : WorkspaceLayout::Character::Off);
    scaleType(layout.unit());

    int place = 0;
    for (Workspace::Channel index : ChannelOrder)
        m_window->Channels(index)->setGeometry(layout.mainButton(place++));
    m_window->Channels(Workspace::PowerOffButton)->setGeometry(layout.endButton());
    m_window->Channels(Workspace::QuitButton)->setGeometry(layout.endButton());

    m_infoBar->setGeometry(layout.infoBar());
    m_infoBar->setFloating(layout.infoBarFloats());
    if (m_infoBar->isVisible())
        m_infoBar->fitHint();

    m_window->welcomeBox()->setBoxSize(layout.boxSize());
    if (QWidget *settings = m_window->MenuBoxes(Workspace::SettingsMenuBox))
        settings->resize(layout.boxSize());
    // Centred while the scale origin is 0, the formula kept as it stands.
    for (Workspace::MenuBox index : {Workspace::SettingsMenuBox, Workspace::WelcomeMenuBox}) {
        if (QWidget *menuBox = m_window->MenuBoxes(index))
            menuBox->move(int(0 + m_window->width() - menuBox->width()) / 2, int(0 + m_window->height() - menuBox->height()) / 2);
    }
    m_window->backToStartButton()->setGeometry(layout.backToStart());

    // The side bars keep one column while it fits, and pair their buttons
    // when a pad or the character leaves too little height for it.
    for (auto [bar, place] : {std::pair(m_window->SideMenuBars(SideMenuBar::DocumentBar), layout.documentBar()),
                              std::pair(m_window->SideMenuBars(SideMenuBar::FormatBar), layout.formatBar())}) {
        const bool column = bar->neededHeight(SideMenuBar::Arrangement::Column, place.width()) <= place.height();
        bar->setArrangement(column ? SideMenuBar::Arrangement::Column : SideMenuBar::Arrangement::Pairs);
        bar->setGeometry(place);
    }
    CharacterStage::instance()->setPerch(layout.perch().isEmpty() ? QRect()
                                                                  : layout.perch().translated(m_window->geometry().topLeft()));
    const QRect middle = layout.document();
    for (Applet *applet : m_window->DatabaseApplets()) {
        applet->resize(middle.size());
        applet->move(middle.left() + (middle.width() - applet->width()) / 2,
                     middle.top() + (middle.height() - applet->height()) / 2);
    }
    if (docked)
        dialog->move(m_window->geometry().topLeft() + layout.toolDialogAt());
    if (m_infoBar->isFloating() && m_infoBar->isVisible())
        m_infoBar->raise();
}

// The pads are as large as the screen allows: keys of a good size, and the
// whole dialog within the window's width.
void WorkspaceArranger::fitToolDialog()
{
    const QSize window = m_window->size();
    m_window->infoDlg()->fitPadScale(WorkspaceLayout::padScale(window), WorkspaceLayout(window).padRoom());
}

// Type grows with the screen: every control keeps the size it was designed
// with at 1366 by 768 and is scaled from it.
void WorkspaceArranger::scaleType(double unit)
{
    unit = std::max(1.0, unit);
    if (qFuzzyCompare(unit, m_typeUnit))
        return;
    m_typeUnit = unit;
    m_infoBar->setTypeUnit(unit);
    const auto ownControl = [this](QWidget *control) {
        // Not the document's own type, nor another window's.
        for (QWidget *w = control; w && w != m_window; w = w->parentWidget()) {
            if (w->isWindow() || qobject_cast<Applet *>(w))
                return false;
        }
        return true;
    };
    for (QWidget *control : m_window->findChildren<QWidget *>()) {
        if (!ownControl(control))
            continue;
        QVariant design = control->property("designPixelSize");
        if (!design.isValid()) {
            const int px = control->font().pixelSize();
            if (px <= 0)
                continue;
            design = px;
            control->setProperty("designPixelSize", px);
        }
        QFont font = control->font();
        font.setPixelSize(std::max(TouchTheme::smallestPixelSize(), int(design.toInt() * unit + 0.5)));
        control->setFont(font);
    }
}
