#include "workspace/SystemMenu.h"

#include "platform/ErrorTrap.h"
#include "platform/PrinterList.h"
#include "platform/SystemTools.h"
#include "platform/touch/TouchTheme.h"

SystemMenu::SystemMenu(QWidget *parent)
    : QMenu(parent)
{
    setObjectName(QStringLiteral("Menus"));
    setFont(TouchTheme::captionFont(24));
    const auto entry = [this](int index, const QString &caption) {
        QAction *action = addAction(caption);
        action->setObjectName(QStringLiteral("Menus%1").arg(index));
        connect(action, &QAction::triggered, this, [this, index] { Menus_Click(index); });
    };
    entry(SystemTools::Volume, QStringLiteral("ボリューム"));
    entry(SystemTools::Display, QStringLiteral("画面..."));
    m_printers = addMenu(QStringLiteral("既定のプリンタ"));
    m_printers->setObjectName(QStringLiteral("PrinterMenus"));
    m_printers->setFont(TouchTheme::captionFont(24));
    entry(SystemTools::Printers, QStringLiteral("プリンタ..."));
    addSeparator();
    entry(SystemTools::Fonts, QStringLiteral("フォント"));
    addSeparator();
    entry(SystemTools::DateTime, QStringLiteral("日付と時刻..."));
    addSeparator();
    entry(SystemTools::Internet, QStringLiteral("インターネット オプション..."));
    addNoPrinterEntry();
}

QAction *SystemMenu::addNoPrinterEntry()
{
    QAction *none = m_printers->addAction(QStringLiteral("(なし)"));
    none->setObjectName(QStringLiteral("PrinterMenus0"));
    none->setCheckable(true);
    connect(none, &QAction::triggered, this, [this] { PrinterMenus_Click(0); });
    return none;
}

void SystemMenu::rebuildPrinterMenu()
{
    m_printers->clear();
    QAction *none = addNoPrinterEntry();
    QList<PrinterList::Entry> printers;
    ErrorTrap::run("Workspace: printer list", [&] { printers = PrinterList::printers(); });
    const QString current = PrinterList::currentPrinter();
    none->setChecked(current.isEmpty());
    for (int k = 1; k <= printers.size(); ++k) {
        const PrinterList::Entry &printer = printers.at(k - 1);
        QAction *action = m_printers->addAction(PrinterList::caption(printer));
        action->setObjectName(QStringLiteral("PrinterMenus%1").arg(k));
        action->setCheckable(true);
        action->setChecked(printer.deviceName == current);
        connect(action, &QAction::triggered, this, [this, k] { PrinterMenus_Click(k); });
    }
}

void SystemMenu::Menus_Click(int index)
{
    ErrorTrap::run("Workspace: system menu", [index] { SystemTools::open(index); });
}

void SystemMenu::PrinterMenus_Click(int index)
{
    QList<PrinterList::Entry> printers;
    ErrorTrap::run("Workspace: printer list", [&] { printers = PrinterList::printers(); });
    if (index == 0)
        PrinterList::setCurrentPrinter(QString());
    else if (index - 1 < printers.size())
        PrinterList::setCurrentPrinter(printers.at(index - 1).deviceName);
    rebuildPrinterMenu();
}
