#include "support/AppletTestHost.h"

#include "tools/InfoDlg.h"
#include "tools/Printing.h"

AppletTestHost::AppletTestHost(QWidget *parent)
    : QWidget(parent)
    , m_infoDlg(new InfoDlg)
    , m_printing(new Printing(this))
{
    resize(1200, 900);
}

AppletTestHost::~AppletTestHost()
{
    delete m_infoDlg;
}
