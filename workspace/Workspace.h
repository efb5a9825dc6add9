#pragma once

#include "documents/AppletHost.h"
#include "documents/DocumentRecord.h"
#include "workspace/CharacterVoice.h"
#include "workspace/DocumentSession.h"
#include "workspace/FirstPicture.h"
#include "workspace/InformationBar.h"
#include "workspace/SideMenuBar.h"
#include "workspace/SystemMenu.h"

#include <QList>
#include <QVariant>
#include <QWidget>

#include <functional>
#include <memory>

class Applet;
class ChimeClock;
class IME;
class InfoDlg;
class InformationBar;
class MusicPlayer;
class Printing;
class QLabel;
class QMenu;
class RecoveryJournal;
class SettingsBox;
class Wallpaper;
class TouchButton;
class TouchPanel;
class ToolBoxLink;
class WelcomeBox;
class WorkspaceArranger;
class WorkspaceBus;

// The program's single full-screen main window: the big main buttons along
// the top, the welcome box with the document lists, the settings box, the
// open document between its two side bars, and the information bar at the
// bottom that explains whatever the pointer rests on.
//
// What it shows is chosen by the view code written to setDocument: 0 nothing
// (what was open is saved and closed), 1 the settings box, 2 the welcome box,
// 10 the current document.
class Workspace : public QWidget, public AppletHost
{
    Q_OBJECT

public:
    // View codes: what the window shows.
    // clang-format off
    enum View : qint16 { NothingView = 0, SettingsView = 1, WelcomeView = 2, DocumentView = 10 };
    // clang-format on
    // The main buttons, Channels(index).
    enum Channel : qint16 {
        ProductButton = 0,
        PowerOffButton = 1,
        QuitButton = 2,
        HelpButton = 3,
        SettingsButton = 4,
        MusicButton = 5,
        GraphicButton = 6,
        PrintButton = 7,
        CalculatorButton = 8,
        CharacterPadButton = 9,
    };
    // The draggable boxes, MenuBoxes(index).
    enum MenuBox : qint16 { SettingsMenuBox = 100,
                            WelcomeMenuBox = 200 };
    // The pads of the tool dialog, and what ToolBoxMode does with them.
    // clang-format off
    enum class ToolBox : qint16 { Calculator = 0, CharacterPad = 1 };
    enum class ToolBoxState : qint16 { Close = 0, Open = 1, Decide = 2 };
    // How the window is being closed.
    enum CloseMode : qint16 { ControlMenu = 0, ByCode = 1, SessionEnd = 2, TaskManager = 3, OtherClose = 4 };
    // clang-format on

    // The character routine: every line for the assistant goes through it.
    using CharacterRoutine = CharacterVoice::Routine;
    static void setCharacterRoutine(CharacterRoutine routine) { CharacterVoice::setRoutine(std::move(routine)); }
    using QuestionRoutine = DocumentSession::QuestionRoutine;
    using MessageRoutine = DocumentSession::MessageRoutine;

    explicit Workspace(QWidget *parent = nullptr);
    ~Workspace() override;
    Wallpaper *wallpaper() const { return m_wallpaper.get(); }

    void setInfoDlg(InfoDlg *dialog);
    InfoDlg *infoDlg() const override { return m_infoDlg; }
    void setPrinting(Printing *printing);
    Printing *printing() const override { return m_printing; }

    // 1. Fonts, skin sounds, the applets and the tool dialog again.
    void Reload();
    // 2. Wallpaper, layout, character, settings-box check marks.
    void ApplySetting();
    // 3. The applets start and the welcome box opens.
    void Start();
    // 4. Opens or closes the calculator or the character-input pad;
    //    Decide opens the calculator by the window's flag, the character pad
    //    with "Smart Pencil" on, and otherwise does nothing.
    void ToolBoxMode(ToolBox mode, ToolBoxState state);
    // 5. The hint in the information bar.
    void HowTo(const QString &topic, const QString &content);
    // 6. The active applet's view code while no box is shown; otherwise 0.
    qint32 Document() const;
    // 7. Leaves what is shown (an open document is saved) and shows the view.
    void setDocument(View view);

    // Closes the window the orderly way, as the given closing mode.
    void closeWithMode(CloseMode mode);
    // Whether the window may close in that mode; runs the closing steps.
    bool QueryUnload(CloseMode mode);

    // The hosted applets; the active one shows the current document.
    QList<Applet *> DatabaseApplets() const { return m_applets; }
    Applet *activeApplet() const { return m_active; }
    // Hosts one more applet (loaded at once) and makes it the active one.
    void addApplet(Applet *applet);

    // The current document and its file; the path is empty until it is saved.
    DocumentRecord &currentRecord() { return m_session->record(); }
    QString currentPath() const { return m_session->path(); }
    // Where unsaved writing is kept until the document is saved.
    RecoveryJournal *journal() const { return m_session->journal(); }
    DocumentSession *session() const { return m_session; }

    bool calculatorFlag() const;
    // True until the window's first full picture (after Start) is on the
    // screen: the character and the music wait for it.
    bool waitingForFirstPicture() const { return !m_picture.isShown(); }

    TouchButton *Channels(Channel index) const;
    WelcomeBox *welcomeBox() const { return m_welcome; }
    // The way back to the documents when nothing is open.
    TouchButton *backToStartButton() const { return m_backToStart; }
    // Built on first use, or once the window shows.
    QWidget *settingsBox();
    // The box, or nullptr for the settings box while it is not built yet.
    TouchPanel *MenuBoxes(MenuBox index) const;
    SideMenuBar *SideMenuBars(SideMenuBar::Bar index) const;
    InformationBar *InfoBar() const { return m_infoBar; }
    QLabel *InfoBarTopic() const { return m_infoBar->topic(); }
    QLabel *InfoBarContent() const { return m_infoBar->content(); }
    QMenu *systemMenu() const { return m_menu; }
    ChimeClock *clock() const { return m_clock; }

    // Handlers of the controls, by index.
    void Channels_Click(Channel index);
    void SideMenuBarMiniChannels_Click(SideMenuBar::Action index);

    // The yes/no question; QuestionBox unless replaced.
    void setQuestionRoutine(QuestionRoutine routine) { m_session->setQuestionRoutine(std::move(routine)); }
    // The message box; QuestionBox::tell unless replaced.
    void setMessageRoutine(MessageRoutine routine) { m_session->setMessageRoutine(std::move(routine)); }

signals:
    // The window has unloaded: the settings are saved.
    void unloaded();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void buildChannels();
    SettingsBox *settings();
    // Every button and field tells the information bar about itself, and
    // asks before it sounds.
    void connectHints(QWidget *root);
    // The main buttons 音楽 and アニメ show the settings; the character comes or goes.
    void showCharacter();
    // Settings-box check marks, and power-off or quit by "Shutdown".
    void refreshCheckMarks();
    void layOut();
    void applyWallpaper();

    void applet_propertiesChanged(bool &value, const QVariant &applet, const QString &kind);
    // One system beep, from the skin when it has one.
    void Clock_Beep();

    void Unload();

    InfoDlg *m_infoDlg = nullptr;
    // The input-method bridge of the window, lent to the tool dialog.
    IME *m_ime = nullptr;
    MusicPlayer *m_music = nullptr;
    Printing *m_printing = nullptr;
    QList<TouchButton *> m_channels;
    WelcomeBox *m_welcome = nullptr;
    TouchButton *m_backToStart = nullptr;
    std::unique_ptr<Wallpaper> m_wallpaper;
    std::unique_ptr<WorkspaceArranger> m_arranger;
    SettingsBox *m_settingsBox = nullptr;
    bool m_reloaded = false;
    SideMenuBar *m_documentBar = nullptr;
    SideMenuBar *m_formatBar = nullptr;
    InformationBar *m_infoBar = nullptr;
    SystemMenu *m_menu = nullptr;
    ChimeClock *m_clock = nullptr;
    WorkspaceBus *m_bus = nullptr;
    QList<Applet *> m_applets;
    Applet *m_active = nullptr;
    DocumentSession *m_session = nullptr;
    ToolBoxLink *m_toolBox = nullptr;
    FirstPicture m_picture;
    CharacterVoice m_voice{&m_picture};
    CloseMode m_closeMode = ControlMenu;
    bool m_unloaded = false;
    bool m_linkedFontNow = false;
    bool m_started = false;
};
