#pragma once

#include <QAccessibleWidget>

class TouchButton;

// How a touch button presents itself to screen readers and test drivers: a
// push button, or a check box when its clicks toggle it; "pressed" while its
// lasting pressed state is on (a chosen tab), "checked" for a ticked check box.
class TouchButtonAccessible : public QAccessibleWidget
{
public:
    explicit TouchButtonAccessible(TouchButton *button);

    // Hands Qt this interface for every TouchButton.
    static void install();

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &actionName) override;

private:
    TouchButton *button() const;
};
