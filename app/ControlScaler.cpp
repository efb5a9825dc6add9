#include "app/ControlScaler.h"

#include <QLayout>
#include <QWidget>

namespace {

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
    if (!managedByLayout) {
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
