#include "workspace/Workspace.h"
#include "app/Globals.h"
#include "app/PowerOff.h"
#include "app/PrivateCharacters.h"
#include "app/SettingsStore.h"
#include "platform/ErrorTrap.h"
#include "tools/InfoDlg.h"
#include "tools/Printing.h"

#include <QCloseEvent>
#include <QLinearGradient>
#include <QPainter>

Workspace::Workspace(QWidget *parent)
    : QWidget(parent)
{
    setWindowTitle(QString::fromLatin1(SettingsStore::ApplicationName));
    setObjectName(QStringLiteral("Workspace"));

    // The font-link guard: link once; a run that ended without unloading left
    // the flag set and the link in force.
    ErrorTrap::run("Workspace::Load: private characters", [this] {
        m_linkedFontNow = !SettingsStore::Runtime();
        if (m_linkedFontNow) {
            SettingsStore::SetRuntime(true);
            PrivateCharacters::Link(true);
        }
    });
}

Workspace::~Workspace()
{
    Unload();
}

void Workspace::setInfoDlg(InfoDlg *dialog)
{
    m_infoDlg = dialog;
}

void Workspace::setPrinting(Printing *printing)
{
    m_printing = printing;
    if (m_printing)
        m_printing->setParent(this);
}

void Workspace::Reload()
{
    if (m_infoDlg)
        m_infoDlg->Reload();
}

void Workspace::ApplySetting()
{
}

void Workspace::Start()
{
}

void Workspace::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QLinearGradient sky(0, 0, 0, height());
    sky.setColorAt(0.0, QColor(0xfd, 0xf6, 0xe3));
    sky.setColorAt(1.0, QColor(0xf3, 0xdf, 0xb8));
    painter.fillRect(rect(), sky);
}

void Workspace::closeEvent(QCloseEvent *event)
{
    Unload();
    event->accept();
}

void Workspace::Unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    if (m_infoDlg)
        m_infoDlg->close();
    ErrorTrap::run("Workspace::Unload: private characters", [] {
        if (SettingsStore::Runtime()) {
            PrivateCharacters::Link(false);
            SettingsStore::SetRuntime(false);
        }
    });
    ErrorTrap::run("Workspace::Unload: save settings", [] { SettingsStore::Save(); });
    ErrorTrap::run("Workspace::Unload: power", [] { PowerOff::QuitRoutine(Globals::ShutdownOnQuit); });
    emit unloaded();
}
