#pragma once

#include <QAccessibleWidget>
#include <QPointer>

class KeypadView;

// Makes each key of a pad a button of its own for screen readers and test
// drivers (AT-SPI): named after its legend, placed over its picture, and
// pressed by the "press" action as by a click.
class KeypadAccessible : public QAccessibleWidget
{
public:
    explicit KeypadAccessible(KeypadView *view);

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;

    // Registered once, before the first pad is made.
    static void installFactory();

private:
    KeypadView *view() const;
};

// One key of a pad.
class KeypadKeyAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    KeypadKeyAccessible(KeypadView *view, int column, int row);

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QList<std::pair<QAccessibleInterface *, QAccessible::Relation>>
    relations(QAccessible::Relation) const override { return {}; }
    QAccessibleInterface *focusChild() const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text type) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Button; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

    int column() const { return m_column; }
    int row() const { return m_row; }

private:
    QPointer<KeypadView> m_view;
    int m_column;
    int m_row;
};
