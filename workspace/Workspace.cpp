#include "workspace/Workspace.h"

#include "app/FontAdapter.h"
#include "app/Globals.h"
#include "app/PowerOff.h"
#include "app/PrivateCharacters.h"
#include "app/SettingsStore.h"
#include "documents/DatabaseApplet.h"
#include "platform/ErrorTrap.h"
#include "platform/HelpViewer.h"
#include "platform/RuntimeLog.h"
#include "platform/touch/SkinSound.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/MusicPlayer.h"
#include "platform/touch/TouchTheme.h"
#include "tools/FlatScrollBar.h"
#include "tools/IME.h"
#include "tools/InfoDlg.h"
#include "platform/agent/CharacterStage.h"
#include "tools/Printing.h"
#include "workspace/ChimeClock.h"
#include "workspace/DocumentSession.h"
#include "workspace/FormatActions.h"
#include "workspace/InformationBar.h"
#include "workspace/MainButtons.h"
#include "workspace/SettingsBox.h"
#include "workspace/SideMenuBar.h"
#include "workspace/SkinSounds.h"
#include "workspace/ToolBoxLink.h"
#include "workspace/Wallpaper.h"
#include "workspace/WelcomeBox.h"
#include "workspace/WorkspaceArranger.h"
#include "workspace/WorkspaceBus.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QPointer>
#include <QScreen>

namespace {

// Long enough for the character's goodbye before its perch goes.
constexpr int FarewellMilliseconds = 4000;

} // namespace

// ---- Load ----------------------------------------------------------------

Workspace::Workspace(QWidget *parent)
    : QWidget(parent)
    , m_session(new DocumentSession(this))
{
    setObjectName(QStringLiteral("Workspace"));
    connect(m_session, &DocumentSession::documentShown, this, &Workspace::layOut);

    // The font-link guard: link once; a run that ended without unloading left
    // the flag set and the link in force. The decision is made now; the
    // link itself (settings, registry and font files written, the font
    // loaded) waits for the window to show, as nothing can use it before.
    ErrorTrap::run("Workspace::Load: private characters", [this] { m_linkedFontNow = !SettingsStore::Runtime(); });
    if (m_linkedFontNow) {
        m_picture.whenShown([] {
            ErrorTrap::run("Workspace::Load: private characters", [] {
                SettingsStore::SetRuntime(true);
                PrivateCharacters::Link(true);
            });
        });
    }

    // The window opens full screen; its picture is decoded meanwhile.
    m_wallpaper = std::make_unique<Wallpaper>();
    ErrorTrap::run("Workspace::Load: wallpaper", [this] {
        if (QScreen *screen = QGuiApplication::primaryScreen())
            m_wallpaper->readAhead(screen->geometry().size());
    });

    setWindowTitle(QString::fromLatin1(SettingsStore::ApplicationName));
    setAutoFillBackground(false);
    // paintEvent covers every pixel (a picture, or the gradient under it), so
    // the window's plain background is never filled first.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(800, 600);

    buildChannels();
    m_infoBar = new InformationBar(this);
    connect(m_infoBar, &InformationBar::closedByUser, this, [this] { m_voice.sayWhenGraphic(QStringLiteral("Let's go home, please.")); });

    m_welcome = new WelcomeBox(this);
    m_welcome->hide();
    connect(m_welcome, &WelcomeBox::templateChosen, m_session, &DocumentSession::openTemplate);
    connect(m_welcome, &WelcomeBox::documentChosen, m_session, &DocumentSession::openDocument);
    connect(m_welcome, &WelcomeBox::closeRequested, this, [this] { setDocument(NothingView); });
    connect(m_welcome, &WelcomeBox::leftBehindChosen, m_session, &DocumentSession::openLeftBehind);

    // With nothing open, one big button leads back to the documents.
    m_backToStart = new TouchButton(QStringLiteral("ドキュメントを選ぶ"), this);
    m_backToStart->setObjectName(QStringLiteral("BackToStart"));
    m_backToStart->setTip(QStringLiteral("クリックすると、[スタート] ウィンドウを開きます。"
                                         "新しいドキュメントを作ったり、保存したドキュメントを開いたりできます。"));
    m_backToStart->setFont(TouchTheme::captionFont(32));
    m_backToStart->hide();
    connect(m_backToStart, &QAbstractButton::clicked, this, [this] { setDocument(WelcomeView); });

    // The settings box shows only when asked for: it is built once the
    // window is on the screen (or at once, if asked for before).
    m_picture.whenShown([this] { settings(); });

    m_documentBar = new SideMenuBar(SideMenuBar::DocumentBar, this);
    m_formatBar = new SideMenuBar(SideMenuBar::FormatBar, this);
    for (SideMenuBar *bar : {m_documentBar, m_formatBar}) {
        bar->hide();
        connect(bar, &SideMenuBar::buttonClicked, this, &Workspace::SideMenuBarMiniChannels_Click);
    }
    m_arranger = std::make_unique<WorkspaceArranger>(this, m_infoBar);

    m_menu = new SystemMenu(this);
    m_toolBox = new ToolBoxLink(this);
    connect(m_toolBox, &ToolBoxLink::padsFollowed, this, &Workspace::layOut);

    // The character's words show in the information bar, which covers nothing.
    connect(CharacterStage::instance(), &CharacterStage::wordsShown, m_infoBar, &InformationBar::showNotice);

    m_clock = new ChimeClock(this);
    connect(m_clock, &ChimeClock::beep, this, &Workspace::Clock_Beep);
    connect(m_clock, &ChimeClock::tellTime, this, [this] { m_voice.say(QStringLiteral("What time is it now?")); });

    m_bus = new WorkspaceBus(this);
    if (!m_bus->registerObject())
        RuntimeLog::note("Workspace::Load", QStringLiteral("no session bus for the window's commands"));

    connect(m_documentBar->titleField(), &QLineEdit::textEdited, m_session, &DocumentSession::keepAfterPause);

    // The input method serves this window; a font link left by an earlier
    // run gets one further read-only call.
    m_ime = new IME(this);
    m_ime->setHandle(this);
    m_ime->Associate();
    if (!m_linkedFontNow)
        m_ime->Convert(IME::ReadOnly);

    // The document applet.
    auto *document = new DatabaseApplet(this);
    connect(document, &DatabaseApplet::edited, m_session, &DocumentSession::keepAfterPause);
    addApplet(document);

    connectHints(this);
    // The character is on for the window's life; showing it is a setting.
    m_voice.say(QStringLiteral("On"));
    m_clock->start();
}

Workspace::~Workspace()
{
    Unload();
}

void Workspace::buildChannels()
{
    m_channels = MainButtons::build(this);
    for (TouchButton *button : std::as_const(m_channels))
        connect(button, &QAbstractButton::clicked, this, [this, index = Channel(button->index())] { Channels_Click(index); });
    Channels(PrintButton)->setEnabled(false);
}

QWidget *Workspace::settingsBox()
{
    return settings();
}

SettingsBox *Workspace::settings()
{
    if (m_settingsBox)
        return m_settingsBox;
    auto *box = new SettingsBox(this);
    box->hide();
    m_settingsBox = box;
    box->setWallpaper(m_wallpaper.get());
    connect(box, &SettingsBox::closeRequested, this, [this] { setDocument(WelcomeView); });
    connect(box, &SettingsBox::shutdownOptionChanged, this, &Workspace::refreshCheckMarks);
    connect(box, &SettingsBox::accessibilityOptionChanged, m_infoBar, &InformationBar::hideIfIdle);
    connect(box, &SettingsBox::wallpaperChanged, this, [this] { update(); });
    // What the window did for its other controls when it loaded and reloaded.
    connectHints(box);
    if (m_reloaded) {
        ErrorTrap::run("Workspace: settings box fonts", [box] { FontAdapter::adaptTree(box); });
        SkinSounds::assign({box});
    }
    box->pressWallpaperButton(m_wallpaper->pressedButton());
    box->refreshCheckMarks();
    // Its type grows with the screen like the rest (sizes are kept from the
    // design, so scaling everything again changes nothing else).
    if (m_arranger)
        m_arranger->arrangeWithNewControls();
    return box;
}

// Every button and field of the window tells the information bar about
// itself; the buttons that sound ask the window first.
void Workspace::connectHints(QWidget *root)
{
    m_infoBar->followHints(root);
    SkinSounds::answerSoundQueries(root);
}

void Workspace::addApplet(Applet *applet)
{
    applet->setParent(this);
    applet->hide();
    m_applets.append(applet);
    m_active = applet;
    applet->setRecord(&m_session->record());
    connect(applet, &Applet::propertiesChanged, this,
            [this](bool &value, QVariant source, QString kind) { applet_propertiesChanged(value, source, kind); });
    // A click into the document opens the pad when "Smart Pencil" asks for it.
    connect(applet, &Applet::keyOrPointer, this, [this](qint32 &code, bool &) {
        if (code == Qt::LeftButton)
            ToolBoxMode(ToolBox::CharacterPad, ToolBoxState::Decide);
    });
    ErrorTrap::run("Workspace: applet load", [applet] { applet->Load(); });
    if (m_infoDlg)
        ErrorTrap::run("Workspace: applet reload", [applet] { applet->Reload(); });
}

void Workspace::setInfoDlg(InfoDlg *dialog)
{
    m_infoDlg = dialog;
    if (!m_infoDlg)
        return;
    m_infoDlg->setIME(m_ime);
    connect(m_infoDlg, &InfoDlg::HowTo, this, &Workspace::HowTo);
    m_toolBox->setDialog(m_infoDlg);
    connect(m_infoDlg, &InfoDlg::resized, this, &Workspace::layOut);
    connect(m_infoDlg, &InfoDlg::Notice, m_infoBar, &InformationBar::showNotice);
    if (auto *music = m_infoDlg->findChild<TouchPanel *>(QStringLiteral("MIDI"))) {
        m_music = new MusicPlayer(this);
        // Rendering the tune starts a synthesizer: not before the window shows.
        m_picture.whenShown([this, panel = QPointer<TouchPanel>(music)] {
            if (panel)
                m_music->follow(panel);
        });
    }
}

void Workspace::setPrinting(Printing *printing)
{
    m_printing = printing;
    if (m_printing)
        m_printing->setParent(this);
}

TouchButton *Workspace::Channels(Channel index) const
{
    return index >= 0 && index < m_channels.size() ? m_channels.at(index) : nullptr;
}

TouchPanel *Workspace::MenuBoxes(MenuBox index) const
{
    return index == SettingsMenuBox ? static_cast<TouchPanel *>(m_settingsBox) : index == WelcomeMenuBox ? m_welcome
                                                                                                         : nullptr;
}

SideMenuBar *Workspace::SideMenuBars(SideMenuBar::Bar index) const
{
    return index == SideMenuBar::DocumentBar ? m_documentBar : index == SideMenuBar::FormatBar ? m_formatBar
                                                                                               : nullptr;
}

// ---- Public operations ------------------------------------------------------

void Workspace::Reload()
{
    m_infoBar->restoreContentFont();
    ErrorTrap::run("Workspace::Reload: fonts", [] { FontAdapter::adaptAll(); });
    m_reloaded = true;
    m_infoBar->keepContentFont();
    ErrorTrap::run("Workspace::Reload: sounds", [this] { SkinSounds::assignEverywhere(this); });
    for (Applet *applet : m_applets)
        ErrorTrap::run("Workspace::Reload: applet", [applet] { applet->Reload(); });
    if (m_infoDlg)
        ErrorTrap::run("Workspace::Reload: tool dialog", [this] { m_infoDlg->Reload(); });
    m_voice.say(QStringLiteral("On"));
}

void Workspace::ApplySetting()
{
    // 1. Reserved.
    // 2. The wallpaper.
    ErrorTrap::run("Workspace::ApplySetting: wallpaper", [this] { applyWallpaper(); });
    // 3. The layout.
    layOut();
    // 4. The character.
    showCharacter();
    // 5. The check marks.
    refreshCheckMarks();
}

void Workspace::Start()
{
    for (Applet *applet : m_applets)
        ErrorTrap::run("Workspace::Start: applet", [applet] { applet->Start(); });
    m_started = true;
    setDocument(WelcomeView);
    m_voice.sayWhenGraphic(QStringLiteral("What's the date today?"));
}

void Workspace::ToolBoxMode(ToolBox mode, ToolBoxState state)
{
    m_toolBox->ToolBoxMode(mode, state);
}

bool Workspace::calculatorFlag() const
{
    return m_toolBox->calculatorFlag();
}

void Workspace::HowTo(const QString &topic, const QString &content)
{
    m_infoBar->showHint(topic, content);
}

qint32 Workspace::Document() const
{
    if (m_welcome->isVisibleTo(this) || (m_settingsBox && m_settingsBox->isVisibleTo(this)))
        return 0;
    return m_active ? m_active->Document() : 0;
}

void Workspace::setDocument(View view)
{
    const qint32 current = Document();

    // Leave what is shown.
    if (m_settingsBox && m_settingsBox->isVisibleTo(this)) {
        m_settingsBox->hide();
        update();
    }
    if (m_welcome->isVisibleTo(this)) {
        m_welcome->hide();
        update();
    }
    // A document that could not be saved stays on the screen.
    if (current == DocumentView && !m_session->leave())
        return;

    Channels(PrintButton)->setEnabled(view == DocumentView);
    m_backToStart->setVisible(view == NothingView && !m_unloaded);

    // Enter the new view.
    switch (view) {
    case SettingsView:
        settings()->raise();
        settings()->show();
        ErrorTrap::run("Workspace::Document: theme pictures", [this] { settings()->loadThemePictures(); });
        break;
    case WelcomeView:
        m_session->forgetFile();
        m_welcome->raise();
        m_welcome->show();
        // The box opens on its templates; the recent list, which reads every
        // document's header, is filled in once the window is on the screen.
        m_picture.whenShown([this] {
            ErrorTrap::run("Workspace::Document: lists", [this] {
                m_welcome->fillLists();
                m_welcome->offerLeftBehind(m_session->leftBehindTitle());
            });
        });
        break;
    case DocumentView:
        m_session->enter();
        break;
    case NothingView:
        break;
    }
}

// ---- The main buttons ----------------------------------------------------

void Workspace::Channels_Click(Channel index)
{
    switch (index) {
    case ProductButton:
        break;
    case PowerOffButton:
    case QuitButton:
        closeWithMode(ByCode);
        break;
    case HelpButton:
        ErrorTrap::run("Workspace: help", [] { HelpViewer::show(QCoreApplication::applicationDirPath()); });
        break;
    case SettingsButton:
        setDocument(SettingsView);
        break;
    case MusicButton:
        Globals::MusicOn = !Globals::MusicOn;
        Channels(MusicButton)->setValue(Globals::MusicOn);
        SkinSounds::assignEverywhere(this);
        break;
    case GraphicButton:
        Globals::GraphicOn = !Globals::GraphicOn;
        Channels(GraphicButton)->setValue(Globals::GraphicOn);
        // The character comes to its perch, or leaves it after saying goodbye.
        if (Globals::GraphicOn)
            layOut();
        else
            QTimer::singleShot(FarewellMilliseconds, this, &Workspace::layOut);
        showCharacter();
        break;
    case PrintButton:
        if (m_active)
            ErrorTrap::run("Workspace: print", [this] { m_active->Printout(); });
        break;
    case CalculatorButton:
        m_toolBox->flipCalculatorFlag();
        ToolBoxMode(ToolBox::Calculator, ToolBoxState::Decide);
        break;
    case CharacterPadButton:
        ToolBoxMode(ToolBox::CharacterPad, ToolBoxState::Open);
        break;
    }
}

void Workspace::contextMenuEvent(QContextMenuEvent *event)
{
    m_menu->rebuildPrinterMenu();
    m_menu->popup(event->globalPos());
}

// ---- The side bars ---------------------------------------------------------

void Workspace::SideMenuBarMiniChannels_Click(SideMenuBar::Action index)
{
    if (!m_active)
        return;
    switch (index) {
    case SideMenuBar::Revert:
        m_session->revert();
        break;
    case SideMenuBar::Copy:
        m_session->copy();
        break;
    case SideMenuBar::Delete:
        m_session->remove();
        break;
    case SideMenuBar::Save:
        setDocument(WelcomeView);
        break;
    default:
        FormatActions::apply(m_active, index, m_session->record().Zoom);
        break;
    }
}

void Workspace::applet_propertiesChanged(bool &value, const QVariant &, const QString &kind)
{
    if (kind == u"Word Processor") {
        m_documentBar->setVisible(value);
        m_documentBar->update();
    } else if (kind == u"All Properties" && m_active) {
        FormatActions::showProperties(m_active, m_formatBar);
    }
}

// ---- Tool dialog, clock, character ------------------------------------------

void Workspace::Clock_Beep()
{
    if (!SkinSound::play(SkinSounds::folder() + QStringLiteral("/BEEP.WAV")))
        QApplication::beep();
}

void Workspace::showCharacter()
{
    Channels(GraphicButton)->setValue(Globals::GraphicOn);
    Channels(MusicButton)->setValue(Globals::MusicOn);
    m_voice.greetOrLeave();
}

void Workspace::refreshCheckMarks()
{
    if (m_settingsBox)
        m_settingsBox->refreshCheckMarks();
    Channels(PowerOffButton)->setVisible(Globals::ShutdownOnQuit);
    Channels(QuitButton)->setVisible(!Globals::ShutdownOnQuit);
}

// ---- Wallpaper and layout ---------------------------------------------------

void Workspace::applyWallpaper()
{
    // Drawn again from the settings; the box shows the choice on its buttons.
    if (m_settingsBox)
        m_settingsBox->applyWallpaper();
    else
        m_wallpaper->apply();
    update();
}

void Workspace::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    // A picture, or with type 6 the desktop's own background.
    ErrorTrap::run("Workspace::Paint", [&] { m_wallpaper->paintOverSky(painter, rect()); });
    // What waits for the first picture starts once it is on the screen: the
    // first screen in full, after Start has opened the welcome box. Start-up
    // paints the window once before that, with its buttons only.
    if (!m_picture.isShown() && m_started)
        QMetaObject::invokeMethod(
            this, [this] { m_picture.markShown(); }, Qt::QueuedConnection);
}

void Workspace::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layOut();
}

void Workspace::layOut()
{
    if (m_arranger)
        m_arranger->arrange();
}

// ---- Closing -----------------------------------------------------------------

void Workspace::closeWithMode(CloseMode mode)
{
    m_closeMode = mode;
    close();
    m_closeMode = ControlMenu;
}

bool Workspace::QueryUnload(CloseMode mode)
{
    if (mode > TaskManager) {
        m_voice.sayWhenGraphic(QStringLiteral("Sorry."));
        return false;
    }
    setDocument(NothingView);
    // A document that could not be saved keeps the program open with it.
    if (Document() == DocumentView)
        return false;
    m_voice.sayWhenGraphic(QStringLiteral("Thank you."));
    if (m_infoDlg)
        ErrorTrap::run("Workspace::QueryUnload: tool dialog", [this] { m_infoDlg->close(); });
    for (Applet *applet : m_applets)
        ErrorTrap::run("Workspace::QueryUnload: applet", [applet] { applet->Quit(); });
    if (m_documentBar->isSoundPlaying())
        m_documentBar->setSoundPlaying(false);
    return true;
}

void Workspace::closeEvent(QCloseEvent *event)
{
    if (m_unloaded) {
        event->accept();
        return;
    }
    if (!QueryUnload(m_closeMode)) {
        event->ignore();
        return;
    }
    Unload();
    event->accept();
}

void Workspace::Unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    m_clock->stop();
    // A window that never showed never had its character or its music.
    m_picture.dropWaiting();
    m_voice.say(QStringLiteral("Off"));
    for (Applet *applet : m_applets)
        ErrorTrap::run("Workspace::Unload: applet", [applet] { applet->Unload(); });
    ErrorTrap::run("Workspace::Unload: input method", [this] { m_ime->Dissociate(); });
    ErrorTrap::run("Workspace::Unload: scroll bars", [this] { m_welcome->scrollBar()->Terminate(); });
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
