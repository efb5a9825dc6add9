#pragma once

#include "documents/AppletHost.h"
#include "documents/DocumentRecord.h"

#include <QFont>
#include <QList>
#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <QWidget>

#include <functional>
#include <memory>

class Applet;
class ChimeClock;
class DocumentSession;
class IME;
class InfoDlg;
class InformationBar;
class MusicPlayer;
class Printing;
class QAction;
class QLabel;
class QMenu;
class RecoveryJournal;
class SettingsBox;
class Wallpaper;
class SideMenuBar;
class SystemMenu;
class TouchButton;
class TouchPanel;
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
    enum View : qint16 { NothingView = 0, SettingsView = 1, WelcomeView = 2, DocumentView = 10 };
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
    enum MenuBox : qint16 { SettingsMenuBox = 100, WelcomeMenuBox = 200 };
    // How the window is being closed.
    enum CloseMode : qint16 { ControlMenu = 0, ByCode = 1, SessionEnd = 2, TaskManager = 3, OtherClose = 4 };

    // The character routine: every line for the assistant goes through it.
    using CharacterRoutine = std::function<void(QString &command)>;
    static void setCharacterRoutine(CharacterRoutine routine);
    // The yes/no question before revert and delete.
    using QuestionRoutine = std::function<bool(QWidget *parent, const QString &question)>;
    // A plain message the user must see, such as a document that cannot be opened.
    using MessageRoutine = std::function<void(QWidget *parent, const QString &message)>;

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
    // 4. Opens (1) or closes (0) the calculator (mode 0) or the
    //    character-input pad (mode 1); state 2 decides by itself.
    void ToolBoxMode(qint16 mode, qint16 state);
    // 5. The hint in the information bar.
    void HowTo(const QString &topic, const QString &content);
    // 6 and 7. The view.
    qint32 Document() const;
    void setDocument(qint16 view);

    // Closes the window the orderly way, as the given closing mode.
    void closeWithMode(CloseMode mode);
    // Whether the window may close in that mode; runs the closing steps.
    bool QueryUnload(CloseMode mode);

    // The hosted applets; the active one shows the current document.
    QList<Applet *> DatabaseApplets() const { return m_applets; }
    Applet *activeApplet() const;
    // Hosts one more applet (loaded at once) and makes it the active one.
    void addApplet(Applet *applet);

    // The current document and its file; the path is empty until it is saved.
    DocumentRecord &currentRecord();
    QString currentPath() const;
    // Where unsaved writing is kept until the document is saved.
    RecoveryJournal *journal() const;
    DocumentSession *session() const { return m_session; }

    bool calculatorFlag() const { return m_calculator; }
    // True until the window's first full picture (after Start) is on the
    // screen: the character and the music wait for it.
    bool waitingForFirstPicture() const { return !m_pictureShown; }

    TouchButton *Channels(int index) const;
    WelcomeBox *welcomeBox() const { return m_welcome; }
    // The way back to the documents when nothing is open.
    TouchButton *backToStartButton() const { return m_backToStart; }
    // Built on first use, or once the window shows.
    QWidget *settingsBox();
    // The box, or nullptr for the settings box while it is not built yet.
    TouchPanel *MenuBoxes(MenuBox index) const;
    SideMenuBar *SideMenuBars(int index) const;
    TouchPanel *InfoBar() const;
    QLabel *InfoBarTopic() const;
    QLabel *InfoBarContent() const;
    QMenu *systemMenu() const;
    ChimeClock *clock() const { return m_clock; }

    // Handlers of the controls, by index.
    void Channels_Click(int index);
    void SideMenuBarMiniChannels_Click(int index);

    // The yes/no question; QuestionBox unless replaced.
    void setQuestionRoutine(QuestionRoutine routine);
    // The message box; QuestionBox::tell unless replaced.
    void setMessageRoutine(MessageRoutine routine);

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
    void connectHints(QWidget *root);
    void say(const QString &line);
    // Runs the job once the window's first full picture is on the screen
    // (at once after that).
    void whenPictureShown(std::function<void()> job);
    void firstPictureShown();
    void sayWhenGraphic(const QString &line);
    void showCharacter();
    void refreshCheckMarks();
    void layOut();
    void applyWallpaper();
    void followToolDialog();
    void followFocus(QWidget *focus);

    void enterDocument();
    bool leaveDocument();
    void applet_propertiesChanged(bool &value, const QVariant &applet, const QString &kind);
    void InfoDlg_Status(qint16 first, qint16 second);
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
    CloseMode m_closeMode = ControlMenu;
    bool m_calculator = false;
    bool m_characterShown = false;
    bool m_pictureShown = false;
    QList<std::function<void()>> m_afterFirstPicture;
    bool m_unloaded = false;
    bool m_linkedFontNow = false;
    bool m_started = false;
};
