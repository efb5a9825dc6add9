#include "platform/touch/TouchButtonAccessible.h"

#include "platform/touch/TouchButton.h"

namespace {

QAccessibleInterface *createFor(const QString &className, QObject *object)
{
    if (className == QLatin1String("TouchButton"))
        if (auto *button = qobject_cast<TouchButton *>(object))
            return new TouchButtonAccessible(button);
    return nullptr;
}

} // namespace

TouchButtonAccessible::TouchButtonAccessible(TouchButton *button)
    : QAccessibleWidget(button, QAccessible::Button)
{
    addControllingSignal(QStringLiteral("clicked(bool)"));
}

void TouchButtonAccessible::install()
{
    static bool installed = false;
    if (!installed) {
        QAccessible::installFactory(createFor);
        installed = true;
    }
}

TouchButton *TouchButtonAccessible::button() const
{
    return static_cast<TouchButton *>(widget());
}

QAccessible::Role TouchButtonAccessible::role() const
{
    return button()->toggles() ? QAccessible::CheckBox : QAccessible::Button;
}

QAccessible::State TouchButtonAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    if (button()->toggles()) {
        state.checkable = true;
        state.checked = button()->value();
    }
    state.pressed = button()->isDown() || (!button()->toggles() && button()->value());
    return state;
}

QStringList TouchButtonAccessible::actionNames() const
{
    QStringList names;
    if (button()->isEnabled())
        names << (button()->toggles() ? toggleAction() : pressAction());
    return names + QAccessibleWidget::actionNames();
}

void TouchButtonAccessible::doAction(const QString &actionName)
{
    if (!button()->isEnabled())
        return;
    if (actionName == pressAction() || actionName == toggleAction())
        button()->click();
    else
        QAccessibleWidget::doAction(actionName);
}

void *TouchButtonAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString TouchButtonAccessible::text(int startOffset, int endOffset) const
{
    return button()->text().mid(startOffset, endOffset - startOffset);
}

int TouchButtonAccessible::characterCount() const
{
    return int(button()->text().size());
}

QRect TouchButtonAccessible::characterRect(int offset) const
{
    const QList<QRect> rects = button()->captionCharacterRects();
    if (offset < 0 || offset >= rects.size() || rects.at(offset).isNull())
        return QRect();
    return rects.at(offset).translated(button()->mapToGlobal(QPoint(0, 0)));
}

int TouchButtonAccessible::offsetAtPoint(const QPoint &point) const
{
    const QPoint local = button()->mapFromGlobal(point);
    const QList<QRect> rects = button()->captionCharacterRects();
    for (int offset = 0; offset < rects.size(); ++offset) {
        if (rects.at(offset).contains(local))
            return offset;
    }
    return -1;
}

void TouchButtonAccessible::selection(int, int *startOffset, int *endOffset) const
{
    *startOffset = *endOffset = 0;
}

QString TouchButtonAccessible::attributes(int offset, int *startOffset, int *endOffset) const
{
    *startOffset = offset;
    *endOffset = offset + 1;
    return QString();
}
