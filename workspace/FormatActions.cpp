#include "workspace/FormatActions.h"

#include "documents/Applet.h"
#include "platform/touch/TouchButton.h"

#include <QList>

namespace {

const QList<int> FontSizeLadder = {9, 12, 16, 24, 32, 48, 72, 96};

// The applet's "Alignment" values.
enum Alignment { Left = 0,
                 Right = 1,
                 Center = 2 };

} // namespace

void FormatActions::apply(Applet *applet, SideMenuBar::Action action, qint32 documentZoom)
{
    switch (action) {
    case SideMenuBar::ZoomIn:
        if (documentZoom == 100)
            applet->setProperties(QStringLiteral("Zoom"), 200);
        break;
    case SideMenuBar::ZoomOut:
        if (documentZoom == 200)
            applet->setProperties(QStringLiteral("Zoom"), 100);
        break;
    case SideMenuBar::Larger:
    case SideMenuBar::Smaller: {
        const QVariant value = applet->Properties(QStringLiteral("Font Size"));
        const double size = value.toDouble();
        const int step = FontSizeLadder.indexOf(int(size));
        if (!value.isValid() || step < 0 || double(int(size)) != size)
            break;
        const int next = action == SideMenuBar::Larger ? step + 1 : step - 1;
        if (next >= 0 && next < FontSizeLadder.size())
            applet->setProperties(QStringLiteral("Font Size"), FontSizeLadder.at(next));
        break;
    }
    case SideMenuBar::AlignLeft:
        applet->setProperties(QStringLiteral("Alignment"), Left);
        break;
    case SideMenuBar::AlignCenter:
        applet->setProperties(QStringLiteral("Alignment"), Center);
        break;
    case SideMenuBar::AlignRight:
        applet->setProperties(QStringLiteral("Alignment"), Right);
        break;
    case SideMenuBar::Bullet:
        applet->setProperties(QStringLiteral("Bullet"), applet->Properties(QStringLiteral("Bullet")).toInt() == 0);
        break;
    case SideMenuBar::Timestamp:
        applet->Update(QStringLiteral("Timestamp"));
        break;
    default:
        break;
    }
}

void FormatActions::showProperties(Applet *applet, SideMenuBar *formatBar)
{
    const int alignment = applet->Properties(QStringLiteral("Alignment")).toInt();
    formatBar->SideMenuBarMiniChannels(SideMenuBar::AlignLeft)->setValue(alignment == Left);
    formatBar->SideMenuBarMiniChannels(SideMenuBar::AlignCenter)->setValue(alignment == Center);
    formatBar->SideMenuBarMiniChannels(SideMenuBar::AlignRight)->setValue(alignment == Right);
    formatBar->SideMenuBarMiniChannels(SideMenuBar::Bullet)->setValue(applet->Properties(QStringLiteral("Bullet")).toInt() != 0);
}
