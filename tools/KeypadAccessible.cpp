#include "tools/KeypadAccessible.h"
#include "tools/KeyTable.h"
#include "tools/KeypadView.h"

#include <QWindow>

KeypadAccessible::KeypadAccessible(KeypadView *view)
    : QAccessibleWidget(view, QAccessible::Grouping)
{
}

KeypadView *KeypadAccessible::view() const
{
    return static_cast<KeypadView *>(widget());
}

int KeypadAccessible::childCount() const
{
    return int(view()->keyCells().size());
}

QAccessibleInterface *KeypadAccessible::child(int index) const
{
    const QList<QPoint> cells = view()->keyCells();
    if (index < 0 || index >= cells.size())
        return nullptr;
    return view()->keyInterface(cells.at(index).x(), cells.at(index).y());
}

int KeypadAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *key = dynamic_cast<const KeypadKeyAccessible *>(child);
    return key ? int(view()->keyCells().indexOf(QPoint(key->column(), key->row()))) : -1;
}

QAccessibleInterface *KeypadAccessible::childAt(int x, int y) const
{
    for (int index = 0; index < childCount(); ++index) {
        QAccessibleInterface *key = child(index);
        if (key && key->rect().contains(x, y))
            return key;
    }
    return nullptr;
}

void KeypadAccessible::installFactory()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory([](const QString &className, QObject *object) -> QAccessibleInterface * {
        if (className == QStringLiteral("KeypadView"))
            return new KeypadAccessible(static_cast<KeypadView *>(object));
        return nullptr;
    });
}

KeypadKeyAccessible::KeypadKeyAccessible(KeypadView *view, int column, int row)
    : m_view(view)
    , m_column(column)
    , m_row(row)
{
}

bool KeypadKeyAccessible::isValid() const
{
    return m_view;
}

QWindow *KeypadKeyAccessible::window() const
{
    return m_view ? m_view->window()->windowHandle() : nullptr;
}

QAccessibleInterface *KeypadKeyAccessible::parent() const
{
    return m_view ? QAccessible::queryAccessibleInterface(m_view.data()) : nullptr;
}

QString KeypadKeyAccessible::text(QAccessible::Text type) const
{
    if (!m_view || type != QAccessible::Name)
        return {};
    return m_view->legendAt(m_column, m_row);
}

QRect KeypadKeyAccessible::rect() const
{
    if (!m_view)
        return {};
    const QRect cell = m_view->cellRect(m_column, m_row);
    return QRect(m_view->mapToGlobal(cell.topLeft()), cell.size());
}

QAccessible::State KeypadKeyAccessible::state() const
{
    QAccessible::State state;
    state.invisible = !m_view || !m_view->isVisible();
    return state;
}

void *KeypadKeyAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

QStringList KeypadKeyAccessible::actionNames() const
{
    return {pressAction()};
}

void KeypadKeyAccessible::doAction(const QString &actionName)
{
    if (m_view && actionName == pressAction())
        m_view->pressKey(m_column, m_row);
}
