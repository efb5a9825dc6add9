#include "workspace/Workspace.h"

#include "app/Assistant.h"
#include "app/FontAdapter.h"
#include "app/Globals.h"
#include "app/PowerOff.h"
#include "app/PrivateCharacters.h"
#include "app/SettingsStore.h"
#include "documents/DatabaseApplet.h"
#include "documents/WordProcessor.h"
#include "platform/ErrorTrap.h"
#include "platform/HelpViewer.h"
#include "platform/RuntimeLog.h"
#include "platform/touch/SkinSound.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchPanel.h"
#include "platform/MusicPlayer.h"
#include "platform/touch/TouchTheme.h"
#include "platform/vb/VbFormat.h"
#include "tools/FlatScrollBar.h"
#include "tools/IME.h"
#include "tools/InfoDlg.h"
#include "platform/agent/CharacterStage.h"
#include "tools/Printing.h"
#include "workspace/ChimeClock.h"
#include "workspace/DocumentSession.h"
#include "workspace/InformationBar.h"
#include "workspace/SettingsBox.h"
#include "workspace/SideMenuBar.h"
#include "workspace/SkinSounds.h"
#include "workspace/SystemMenu.h"
#include "workspace/Wallpaper.h"
#include "workspace/WelcomeBox.h"
#include "workspace/WorkspaceArranger.h"
#include "workspace/WorkspaceBus.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace {

Workspace::CharacterRoutine &characterRoutine()
{
    static Workspace::CharacterRoutine routine = [](QString &command) { Assistant::Character(command); };
    return routine;
}

struct ChannelText
{
    const char16_t *caption;
    const char16_t *tip;
};

// The main buttons, by index.
const ChannelText ChannelTexts[10] = {
    {u"製品情報", u"Fernwick Nib 2007 バージョン 1.0　かんたん文書作成ソフト"},
    {u"電源を切る", u"クリックすると、編集したドキュメントを自動保存してコンピュータの電源を切ります。電源をつけると再び起動します。"},
    {u"終了", u"クリックすると、編集したドキュメントを自動保存して終了します。"},
    {u"ヘルプ", u"クリックすると、ヘルプを参照します。必要であれば、インターネットに接続して最新情報を確認できます。"},
    {u"設定", u"クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。"},
    {u"音楽", u"クリックするたびに、音楽・効果音を再生するかどうかを選択します。"},
    {u"アニメ", u"クリックするたびに、音声付きアニメーションを再生するかどうかを選択します。"},
    {u"印刷", u"クリックすると、表示されているドキュメントを印刷します。まずはプリンタの準備をしておいてください。"},
    {u"電卓", u"クリックするたびに、[電卓] ダイアログを開いたり閉じたりします。"},
    {u"文字入力", u"クリックすると、[文字入力] ダイアログを開きます。手書きのように文字入力ができるパッドです。"},
};

const QList<int> FontSizeLadder = {9, 12, 16, 24, 32, 48, 72, 96};

// Long enough for the character's goodbye before its perch goes.
constexpr int FarewellMilliseconds = 4000;

} // namespace

void Workspace::setCharacterRoutine(CharacterRoutine routine)
{
    characterRoutine() = std::move(routine);
}

// ---- Load ----------------------------------------------------------------

Workspace::Workspace(QWidget *parent)
    : QWidget(parent)
    , m_session(new DocumentSession(this))
{
    setObjectName(QStringLiteral("Workspace"));

    // The font-link guard: link once; a run that ended without unloading left
    // the flag set and the link in force. The decision is made now; the
    // link itself (settings, registry and font files written, the font
    // loaded) waits for the window to show, as nothing can use it before.
    ErrorTrap::run("Workspace::Load: private characters", [this] { m_linkedFontNow = !SettingsStore::Runtime(); });
    if (m_linkedFontNow) {
        whenPictureShown([] {
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
    connect(m_infoBar, &InformationBar::closedByUser, this, [this] { sayWhenGraphic(QStringLiteral("Let's go home, please.")); });

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
    whenPictureShown([this] { settings(); });

    m_documentBar = new SideMenuBar(SideMenuBar::DocumentBar, this);
    m_formatBar = new SideMenuBar(SideMenuBar::FormatBar, this);
    for (SideMenuBar *bar : {m_documentBar, m_formatBar}) {
        bar->hide();
        connect(bar, &SideMenuBar::buttonClicked, this, &Workspace::SideMenuBarMiniChannels_Click);
    }
    m_arranger = std::make_unique<WorkspaceArranger>(this, m_infoBar);

    m_menu = new SystemMenu(this);

    // The character's words show in the information bar, which covers nothing.
    connect(CharacterStage::instance(), &CharacterStage::wordsShown, m_infoBar, &InformationBar::showNotice);

    m_clock = new ChimeClock(this);
    connect(m_clock, &ChimeClock::beep, this, &Workspace::Clock_Beep);
    connect(m_clock, &ChimeClock::tellTime, this, [this] { say(QStringLiteral("What time is it now?")); });

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
    say(VbFormat::boolean(true, QStringLiteral("On/Off")));
    m_clock->start();
}

Workspace::~Workspace()
{
    Unload();
}

void Workspace::buildChannels()
{
    for (int index = 0; index < 10; ++index) {
        auto *button = new TouchButton(QString::fromUtf16(ChannelTexts[index].caption), this);
        button->setObjectName(QStringLiteral("Channels%1").arg(index));
        button->setIndex(index);
        button->setTip(QString::fromUtf16(ChannelTexts[index].tip));
        button->setFont(TouchTheme::captionFont(26));
        connect(button, &QAbstractButton::clicked, this, [this, index] { Channels_Click(index); });
        m_channels.append(button);
    }
    Channels(7)->setEnabled(false);
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
    for (TouchButton *button : root->findChildren<TouchButton *>()) {
        connect(button, &TouchButton::pointerEntered, this, [this, button] { HowTo(button->caption(), button->tip()); });
        connect(button, &TouchButton::pointerLeft, this, [this] { HowTo(QString(), QString()); });
        const QString name = SkinSounds::arrayName(button);
        connect(button, &TouchButton::soundQuery, this, [this, button, name](qint16 &suppress) {
            suppress = SkinSounds::suppressFor(name, button->index());
        });
    }
    for (TouchEdit *edit : root->findChildren<TouchEdit *>()) {
        connect(edit, &TouchEdit::pointerEntered, this, [this, edit] {
            HowTo(edit->caption(), edit->tip().isEmpty() ? edit->prompt() : edit->tip());
        });
        connect(edit, &TouchEdit::pointerLeft, this, [this] { HowTo(QString(), QString()); });
    }
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
            ToolBoxMode(1, 2);
    });
    ErrorTrap::run("Workspace: applet load", [applet] { applet->Load(); });
    if (m_infoDlg)
        ErrorTrap::run("Workspace: applet reload", [applet] { applet->Reload(); });
}

Applet *Workspace::activeApplet() const
{
    return m_active;
}

void Workspace::setInfoDlg(InfoDlg *dialog)
{
    m_infoDlg = dialog;
    if (!m_infoDlg)
        return;
    m_infoDlg->setIME(m_ime);
    connect(m_infoDlg, &InfoDlg::HowTo, this, &Workspace::HowTo);
    connect(m_infoDlg, &InfoDlg::Status, this, &Workspace::InfoDlg_Status);
    // The pad's own buttons 閉じる (0) and しまう (1) put the character pad
    // away the same way as from here; "Smart Pencil" brings it back.
    connect(m_infoDlg, &InfoDlg::Quit, this, [this](qint16) { ToolBoxMode(1, 0); });
    connect(m_infoDlg, &InfoDlg::padsChanged, this, &Workspace::followToolDialog);
    connect(m_infoDlg, &InfoDlg::resized, this, &Workspace::layOut);
    connect(m_infoDlg, &InfoDlg::Notice, m_infoBar, &InformationBar::showNotice);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { followFocus(now); });
    followFocus(QApplication::focusWidget());
    if (auto *music = m_infoDlg->findChild<TouchPanel *>(QStringLiteral("MIDI"))) {
        m_music = new MusicPlayer(this);
        // Rendering the tune starts a synthesizer: not before the window shows.
        whenPictureShown([this, panel = QPointer<TouchPanel>(music)] {
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

TouchButton *Workspace::Channels(int index) const
{
    return index >= 0 && index < m_channels.size() ? m_channels.at(index) : nullptr;
}

DocumentRecord &Workspace::currentRecord()
{
    return m_session->record();
}

QString Workspace::currentPath() const
{
    return m_session->path();
}

RecoveryJournal *Workspace::journal() const
{
    return m_session->journal();
}

void Workspace::setQuestionRoutine(QuestionRoutine routine)
{
    m_session->setQuestionRoutine(std::move(routine));
}

void Workspace::setMessageRoutine(MessageRoutine routine)
{
    m_session->setMessageRoutine(std::move(routine));
}

QMenu *Workspace::systemMenu() const
{
    return m_menu;
}

TouchPanel *Workspace::InfoBar() const
{
    return m_infoBar;
}

QLabel *Workspace::InfoBarTopic() const
{
    return m_infoBar->topic();
}

QLabel *Workspace::InfoBarContent() const
{
    return m_infoBar->content();
}

TouchPanel *Workspace::MenuBoxes(MenuBox index) const
{
    switch (index) {
    case SettingsMenuBox:
        return m_settingsBox;
    case WelcomeMenuBox:
        return m_welcome;
    }
    return nullptr;
}

SideMenuBar *Workspace::SideMenuBars(int index) const
{
    return index == SideMenuBar::DocumentBar ? m_documentBar : index == SideMenuBar::FormatBar ? m_formatBar : nullptr;
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
    say(VbFormat::boolean(true, QStringLiteral("On/Off")));
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
    sayWhenGraphic(QStringLiteral("What's the date today?"));
}

void Workspace::ToolBoxMode(qint16 mode, qint16 state)
{
    if (mode == 0) {
        if (state == 2)
            state = m_calculator ? 1 : 0;
        Channels(8)->setValue(state != 0);
    } else if (mode == 1) {
        if (state == 2 && !(m_infoDlg && m_infoDlg->isOpen(InfoDlg::CharacterMode)) && Globals::SmartPencilOn)
            state = 1;
        if (state == 0)
            Channels(9)->setEnabled(true);
        else if (state == 1)
            Channels(9)->setEnabled(false);
    }
    if (!m_infoDlg)
        return;
    if (state == 0) {
        ErrorTrap::run("Workspace::ToolBoxMode: finish", [&] { m_infoDlg->Finish(mode); });
    } else if (state == 1) {
        ErrorTrap::run("Workspace::ToolBoxMode: begin", [&] { m_infoDlg->Begin(mode); });
    }
    followToolDialog();
}

// The main buttons show what is really on the screen, however a pad was
// opened or closed: 文字入力 can be clicked whenever the character pad is
// not there, and 電卓 is pressed exactly while the calculator is.
void Workspace::followToolDialog()
{
    if (!m_infoDlg)
        return;
    Channels(9)->setEnabled(!m_infoDlg->isOpen(InfoDlg::CharacterMode));
    m_calculator = m_infoDlg->isOpen(InfoDlg::CalculatorMode);
    Channels(8)->setValue(m_calculator);
    layOut();
}

// While a document's text has the focus, the pad's ↑ and ↓ move the caret
// a line; elsewhere they step from field to field.
void Workspace::followFocus(QWidget *focus)
{
    if (!m_infoDlg)
        return;
    bool inDocument = false;
    for (QWidget *w = focus; w; w = w->parentWidget()) {
        if (qobject_cast<Applet *>(w)) {
            inDocument = InfoDlg::isTextControl(focus);
            break;
        }
    }
    const qint32 options = m_infoDlg->Options();
    m_infoDlg->setOptions(inDocument ? options | InfoDlg::ArrowKeys : options & ~InfoDlg::ArrowKeys);
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

void Workspace::setDocument(qint16 view)
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
    if (current == DocumentView && !leaveDocument())
        return;

    Channels(7)->setEnabled(view == DocumentView);
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
        whenPictureShown([this] {
            ErrorTrap::run("Workspace::Document: lists", [this] {
                m_welcome->fillLists();
                m_welcome->offerLeftBehind(m_session->leftBehindTitle());
            });
        });
        break;
    case DocumentView:
        enterDocument();
        break;
    default:
        break;
    }
}

// Shows the current record in the applet, between its side bars.
void Workspace::enterDocument()
{
    m_documentBar->show();
    m_formatBar->show();
    m_documentBar->titleField()->setText(m_session->record().DocumentTitle);
    if (m_active) {
        m_active->setDocument(DocumentView);
        m_active->show();
        m_active->raise();
        // The first box takes the caret, so the format buttons act at once.
        if (auto *document = qobject_cast<DatabaseApplet *>(m_active)) {
            if (WordProcessor *box = document->WordProcessors(1))
                box->setFocus();
        }
        // The format bar shows the paragraph at the caret from the start.
        bool changed = true;
        applet_propertiesChanged(changed, QVariant(), QStringLiteral("All Properties"));
    }
    m_session->cancelJournalPause();
    layOut();
}

// Hides the document and saves it. A document that could not be saved comes
// back on the screen as it was, and the user is told: what they wrote is
// never dropped.
bool Workspace::leaveDocument()
{
    const bool saved = m_session->leave();
    m_documentBar->hide();
    m_formatBar->hide();
    update();
    if (!saved) {
        enterDocument();
        m_session->tellNotSaved();
    }
    return saved;
}

// ---- The main buttons ----------------------------------------------------

void Workspace::Channels_Click(int index)
{
    switch (index) {
    case 1:
    case 2:
        closeWithMode(ByCode);
        break;
    case 3:
        ErrorTrap::run("Workspace: help", [] { HelpViewer::show(QCoreApplication::applicationDirPath()); });
        break;
    case 4:
        setDocument(SettingsView);
        break;
    case 5:
        Globals::MusicOn = !Globals::MusicOn;
        Channels(5)->setValue(Globals::MusicOn);
        SkinSounds::assignEverywhere(this);
        break;
    case 6:
        Globals::GraphicOn = !Globals::GraphicOn;
        Channels(6)->setValue(Globals::GraphicOn);
        // The character comes to its perch, or leaves it after saying goodbye.
        if (Globals::GraphicOn)
            layOut();
        else
            QTimer::singleShot(FarewellMilliseconds, this, &Workspace::layOut);
        showCharacter();
        break;
    case 7:
        if (m_active)
            ErrorTrap::run("Workspace: print", [this] { m_active->Printout(); });
        break;
    case 8:
        m_calculator = !m_calculator;
        ToolBoxMode(0, 2);
        break;
    case 9:
        ToolBoxMode(1, 1);
        break;
    default:
        break;
    }
}

void Workspace::contextMenuEvent(QContextMenuEvent *event)
{
    m_menu->rebuildPrinterMenu();
    m_menu->popup(event->globalPos());
}

// ---- The side bars ---------------------------------------------------------

void Workspace::SideMenuBarMiniChannels_Click(int index)
{
    Applet *applet = m_active;
    if (!applet)
        return;
    switch (index) {
    // The applet answers "Zoom" with its own value, which stays 100; the
    // document's zoom is what the page really shows.
    case SideMenuBar::ZoomIn:
        if (m_session->record().Zoom == 100)
            applet->setProperties(QStringLiteral("Zoom"), 200);
        break;
    case SideMenuBar::ZoomOut:
        if (m_session->record().Zoom == 200)
            applet->setProperties(QStringLiteral("Zoom"), 100);
        break;
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
    case SideMenuBar::Larger:
    case SideMenuBar::Smaller: {
        const QVariant value = applet->Properties(QStringLiteral("Font Size"));
        const double size = value.toDouble();
        const int step = FontSizeLadder.indexOf(int(size));
        if (!value.isValid() || step < 0 || double(int(size)) != size)
            break;
        const int next = index == SideMenuBar::Larger ? step + 1 : step - 1;
        if (next >= 0 && next < FontSizeLadder.size())
            applet->setProperties(QStringLiteral("Font Size"), FontSizeLadder.at(next));
        break;
    }
    case SideMenuBar::AlignLeft:
        applet->setProperties(QStringLiteral("Alignment"), 0);
        break;
    case SideMenuBar::AlignCenter:
        applet->setProperties(QStringLiteral("Alignment"), 2);
        break;
    case SideMenuBar::AlignRight:
        applet->setProperties(QStringLiteral("Alignment"), 1);
        break;
    case SideMenuBar::Bullet:
        applet->setProperties(QStringLiteral("Bullet"), applet->Properties(QStringLiteral("Bullet")).toInt() == 0);
        break;
    case SideMenuBar::Timestamp:
        applet->Update(QStringLiteral("Timestamp"));
        break;
    default:
        break;
    }
}

void Workspace::applet_propertiesChanged(bool &value, const QVariant &, const QString &kind)
{
    if (kind == u"Word Processor") {
        m_documentBar->setVisible(value);
        m_documentBar->update();
    } else if (kind == u"All Properties" && m_active) {
        const int alignment = m_active->Properties(QStringLiteral("Alignment")).toInt();
        m_formatBar->SideMenuBarMiniChannels(SideMenuBar::AlignLeft)->setValue(alignment == 0);
        m_formatBar->SideMenuBarMiniChannels(SideMenuBar::AlignCenter)->setValue(alignment == 2);
        m_formatBar->SideMenuBarMiniChannels(SideMenuBar::AlignRight)->setValue(alignment == 1);
        m_formatBar->SideMenuBarMiniChannels(SideMenuBar::Bullet)
            ->setValue(m_active->Properties(QStringLiteral("Bullet")).toInt() != 0);
    }
}

// ---- Tool dialog, clock, character ------------------------------------------

void Workspace::InfoDlg_Status(qint16 first, qint16 second)
{
    if (Globals::MusicOn && (first != 0 || second != 0))
        m_documentBar->setSoundPlaying(first == 0);
}

void Workspace::Clock_Beep()
{
    if (!SkinSound::play(SkinSounds::folder() + QStringLiteral("/BEEP.WAV")))
        QApplication::beep();
}

void Workspace::say(const QString &line)
{
    // Loading the character and starting its voice would hold up the
    // window's first picture: until then, what it is told waits in order.
    if (!m_pictureShown) {
        whenPictureShown([this, line] { say(line); });
        return;
    }
    QString command = line;
    ErrorTrap::run("Workspace: character", [&] { characterRoutine()(command); });
}

void Workspace::whenPictureShown(std::function<void()> job)
{
    if (m_pictureShown)
        job();
    else
        m_afterFirstPicture.append(std::move(job));
}

void Workspace::firstPictureShown()
{
    if (m_pictureShown)
        return;
    m_pictureShown = true;
    const QList<std::function<void()>> jobs = std::exchange(m_afterFirstPicture, {});
    for (const std::function<void()> &job : jobs)
        job();
}

void Workspace::sayWhenGraphic(const QString &line)
{
    if (Globals::GraphicOn)
        say(line);
}

void Workspace::showCharacter()
{
    Channels(6)->setValue(Globals::GraphicOn);
    Channels(5)->setValue(Globals::MusicOn);
    if (Globals::GraphicOn) {
        say(QStringLiteral("Hello!"));
        m_characterShown = true;
    } else if (m_characterShown) {
        say(QStringLiteral("Bye!"));
        m_characterShown = false;
    }
}

void Workspace::refreshCheckMarks()
{
    if (m_settingsBox)
        m_settingsBox->refreshCheckMarks();
    Channels(1)->setVisible(Globals::ShutdownOnQuit);
    Channels(2)->setVisible(!Globals::ShutdownOnQuit);
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
    // A full-screen gradient costs as much as the picture: it is only drawn
    // where a picture leaves something uncovered.
    if (!m_wallpaper->covers(rect())) {
        QLinearGradient sky(0, 0, 0, height());
        sky.setColorAt(0.0, QColor(0xfd, 0xf6, 0xe3));
        sky.setColorAt(1.0, QColor(0xf3, 0xdf, 0xb8));
        painter.fillRect(rect(), sky);
    }
    // A picture, or with type 6 the desktop's own background, over it.
    ErrorTrap::run("Workspace::Paint", [&] { m_wallpaper->paint(painter, rect()); });
    // What waits for the first picture starts once it is on the screen: the
    // first screen in full, after Start has opened the welcome box. Start-up
    // paints the window once before that, with its buttons only.
    if (!m_pictureShown && m_started)
        QMetaObject::invokeMethod(this, &Workspace::firstPictureShown, Qt::QueuedConnection);
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
        sayWhenGraphic(QStringLiteral("Sorry."));
        return false;
    }
    setDocument(NothingView);
    // A document that could not be saved keeps the program open with it.
    if (Document() == DocumentView)
        return false;
    sayWhenGraphic(QStringLiteral("Thank you."));
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
    m_afterFirstPicture.clear();
    m_pictureShown = true;
    say(VbFormat::boolean(false, QStringLiteral("On/Off")));
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
