#include "app/ControlScaler.h"

#include <QLayout>
#include <QScrollArea>
#include <QWidget>

namespace {

// Parts of a scrolling control (its viewport, its bars, the cells' editors)
// are placed by that control whenever it is resized; scaling them again would
// count the factor twice. The page of a scroll area is the one exception:
// unless the area sizes it, its size is the page's own.
enum class Placement { Free,
                       SizeOnly,
                       ByOwner };

Placement placementOf(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    if (!parent)
        return Placement::Free;
    if (qobject_cast<const QAbstractScrollArea *>(parent))
        return Placement::ByOwner;
    const auto *area = qobject_cast<const QAbstractScrollArea *>(parent->parentWidget());
    if (!area || area->viewport() != parent)
        return Placement::Free;
    const auto *scrollArea = qobject_cast<const QScrollArea *>(area);
    if (scrollArea && scrollArea->widget() == widget && !scrollArea->widgetResizable())
        return Placement::SizeOnly;
    return Placement::ByOwner;
}

void scaleOne(QWidget *widget, double factor, bool isRoot)
{
    // A font the control only inherits grows with its parent's already.
    if (isRoot || widget->testAttribute(Qt::WA_SetFont)) {
        QFont font = widget->font();
        if (font.pointSizeF() > 0)
            font.setPointSizeF(font.pointSizeF() * factor);
        else if (font.pixelSize() > 0)
            font.setPixelSize(qMax(1, qRound(font.pixelSize() * factor)));
        widget->setFont(font);
    }

    // A control placed by a layout follows its layout; only free controls
    // (and the object itself) are moved and sized here.
    const bool managedByLayout = widget->parentWidget() && widget->parentWidget()->layout()
        && widget->parentWidget()->layout()->indexOf(widget) >= 0;
    const Placement placement = isRoot ? Placement::Free : placementOf(widget);
    if (placement == Placement::SizeOnly) {
        widget->resize(qRound(widget->width() * factor), qRound(widget->height() * factor));
    } else if (!managedByLayout && placement == Placement::Free) {
        const QRect g = widget->geometry();
        const QPoint topLeft = isRoot && widget->isWindow() ? g.topLeft()
                                                            : QPoint(qRound(g.x() * factor), qRound(g.y() * factor));
        widget->setGeometry(QRect(topLeft, QSize(qRound(g.width() * factor), qRound(g.height() * factor))));
    }
}

} // namespace

qint16 ControlScaler::defaultPercent()
{
    return 100;
}

QWidget *ControlScaler::scale(QWidget *object, qint16 percent)
{
    if (!object)
        return object;
    if (percent == 0)
        percent = defaultPercent();
    if (percent == 100)
        return object;
    const double factor = percent / 100.0;
    scaleOne(object, factor, true);
    for (QWidget *child : object->findChildren<QWidget *>())
        scaleOne(child, factor, false);
    return object;
}
