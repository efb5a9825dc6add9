#pragma once

#include <QAccessibleWidget>

class TouchButton;

// How a touch button presents itself to screen readers and test drivers: a
// push button, or a check box when its clicks toggle it; "pressed" while its
// lasting pressed state is on (a chosen tab), "checked" for a ticked check box.
// Its caption is readable as text, each character where it is painted, so
// that a magnifier can follow it and a check can see how it was broken.
class TouchButtonAccessible : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit TouchButtonAccessible(TouchButton *button);

    // Hands Qt this interface for every TouchButton.
    static void install();

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    // The caption as text: read-only, no caret, no selection.
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint &point) const override;
    void selection(int, int *startOffset, int *endOffset) const override;
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int *startOffset, int *endOffset) const override;
    using QAccessibleWidget::text;

private:
    TouchButton *button() const;
};
