#include "tools/InfoDlg.h"

InfoDlg::InfoDlg(QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(QStringLiteral("文字入力"));
}

void InfoDlg::Reload()
{
}

void InfoDlg::Begin(qint16 mode)
{
    Q_UNUSED(mode);
    show();
}

void InfoDlg::Finish(qint16 mode)
{
    Q_UNUSED(mode);
    hide();
}
