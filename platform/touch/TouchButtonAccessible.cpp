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
