// The main window driven as a person does it: clicks on its buttons and on
// the rows of its lists, with the real document store under a private HOME.
#include "app/Globals.h"
#include "app/PrivateCharacters.h"
#include "app/SettingsStore.h"
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/RecoveryJournal.h"
#include "documents/WordProcessor.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "tools/FlatScrollBar.h"
#include "tools/InfoDlg.h"
#include "tools/QuestionBox.h"
#include "workspace/ChimeClock.h"
#include "workspace/SettingsBox.h"
#include "workspace/SideMenuBar.h"
#include "workspace/WelcomeBox.h"
#include "workspace/Workspace.h"
#include "support/DocumentRecords.h"
#include "support/EudcValues.h"
#include "support/FileSizeLimit.h"

#include <QDBusInterface>
#include <QDBusReply>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

// An applet that keeps its properties in a table and writes down commands, so
// that the side bars' rules can be seen for any value.
class RecordingApplet : public Applet
{
public:
    QVariant Properties(const QString &name) const override { return values.value(name); }
    void setProperties(const QString &name, const QVariant &value) override
    {
        values[name] = value;
        bool changed = true;
        emit propertiesChanged(changed, QVariant(), u"All Properties"_s);
    }
    QVariant Update(const QString &command, const QVariant &) override
    {
        updates.append(command);
        return {};
    }
    QHash<QString, QVariant> values;
    QStringList updates;
};

QStringList spoken;

void click(QWidget *button)
{
    QVERIFY2(button && button->isVisible() && button->isEnabled(), "the control cannot be clicked");
    QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
}

void clickCell(QTableWidget *grid, int row, int column)
{
    QTableWidgetItem *item = grid->item(row, column);
    QVERIFY2(item, "no such cell");
    grid->scrollToItem(item);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualItemRect(item).center());
}

QStringList documentFiles()
{
    return QDir(SettingsStore::DocumentFolder()).entryList({u"*.TXT"_s}, QDir::Files, QDir::Name);
}

} // namespace

class WorkspaceTest : public QObject
{
    Q_OBJECT

    Workspace *w = nullptr;

    TouchButton *side(int index)
    {
        return w->SideMenuBars(index < 200 ? SideMenuBar::DocumentBar : SideMenuBar::FormatBar)
            ->SideMenuBarMiniChannels(SideMenuBar::Action(index));
    }
    TouchEdit *title() { return w->SideMenuBars(SideMenuBar::DocumentBar)->titleField(); }
    QTableWidget *list(int page) { return w->welcomeBox()->MenuBoxFigures(page); }
    WordProcessor *box() { return qobject_cast<DatabaseApplet *>(w->activeApplet())->WordProcessors(1); }
    void openTemplate() { clickCell(list(WelcomeBox::TemplatesPage), 0, 0); }
    // Answers the question that the next click asks, in the real question box.
    static void answerNext(bool yes)
    {
        QTimer::singleShot(0, [yes] {
            auto *question = qobject_cast<QuestionBox *>(QApplication::activeModalWidget());
            QVERIFY(question && !question->findChild<QLabel *>(u"QuestionText"_s)->text().isEmpty());
            QCOMPARE(question->yesButton()->caption(), u"はい"_s);
            QCOMPARE(question->noButton()->caption(), u"いいえ"_s);
            click(yes ? question->yesButton() : question->noButton());
        });
    }
private slots:
    void init()
    {
        QDir(SettingsStore::DocumentFolder()).removeRecursively();
        spoken.clear();
        Workspace::setCharacterRoutine([](QString &line) { spoken.append(line); });
        Globals::MusicOn = Globals::GraphicOn = Globals::HowToOn = false;
        Globals::SmartPencilOn = Globals::ShutdownOnQuit = false;
        w = new Workspace;
        w->setInfoDlg(new InfoDlg(w));
        w->setMessageRoutine([](QWidget *, const QString &message) { QFAIL(qPrintable(message)); });
        w->resize(1366, 768);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w));
        w->Reload();
        w->ApplySetting();
        w->Start();
        QTRY_VERIFY(!w->waitingForFirstPicture());
    }

    void cleanup()
    {
        delete w;
        w = nullptr;
    }

    void viewsSwitchBetweenTheBoxesAndTheDocument()
    {
        WelcomeBox *welcome = w->welcomeBox();
        QVERIFY(welcome->isVisible());
        QCOMPARE(w->Document(), 0);
        QCOMPARE(welcome->caption(), u"スタート"_s);
        QVERIFY(!w->Channels(Workspace::PrintButton)->isEnabled());
        QVERIFY(w->Channels(Workspace::QuitButton)->isVisible() && !w->Channels(Workspace::PowerOffButton)->isVisible());
        // The tabs act as one radio group over the two pages.
        for (const int tab : {WelcomeBox::RecentTab, WelcomeBox::TemplatesTab}) {
            click(welcome->MenuBoxMiniChannels(tab));
            QCOMPARE(welcome->shownPage(), tab == WelcomeBox::RecentTab ? WelcomeBox::RecentPage : WelcomeBox::TemplatesPage);
            QCOMPARE(welcome->MenuBoxMiniChannels(WelcomeBox::RecentTab)->value(), tab == WelcomeBox::RecentTab);
            QCOMPARE(welcome->MenuBoxMiniChannels(WelcomeBox::TemplatesTab)->value(), tab == WelcomeBox::TemplatesTab);
        }
        // Settings box (view 1): "Shutdown" there swaps quit for power-off at once.
        click(w->Channels(Workspace::SettingsButton));
        QVERIFY(w->settingsBox()->isVisible() && !welcome->isVisible());
        auto *settings = static_cast<SettingsBox *>(w->settingsBox());
        for (const bool on : {true, false}) {
            click(settings->button(SettingsBox::ShutdownButton));
            QVERIFY(w->Channels(Workspace::PowerOffButton)->isVisible() == on && w->Channels(Workspace::QuitButton)->isVisible() == !on);
        }
        click(settings->button(SettingsBox::CloseButton));
        QVERIFY(!w->settingsBox()->isVisible() && welcome->isVisible());
        // A template opens the document (view 10) with both side bars, unnamed.
        openTemplate();
        QCOMPARE(w->Document(), 10);
        QVERIFY(!welcome->isVisible() && w->activeApplet()->isVisible() && w->Channels(Workspace::PrintButton)->isEnabled());
        QVERIFY(w->SideMenuBars(SideMenuBar::DocumentBar)->isVisible() && w->SideMenuBars(SideMenuBar::FormatBar)->isVisible());
        QVERIFY(w->currentPath().isEmpty());
        QCOMPARE(title()->prompt(), u"タイトルを入力してください"_s);
        // Saved, back to the welcome box; its close button leaves nothing open (view 0).
        click(side(SideMenuBar::Save));
        QVERIFY(welcome->isVisible());
        click(welcome->MenuBoxMiniChannels(WelcomeBox::CloseButton));
        QVERIFY(!welcome->isVisible() && !w->Channels(Workspace::PrintButton)->isEnabled());
        QCOMPARE(w->Document(), 0);
    }

    // The pointed control's caption and tip go to the information bar while
    // "How-to" is on (with it off, no bar shows: followed end to end).
    void howToBar()
    {
        // Main buttons 1-9, side bars 100-206, welcome box 1206-1209.
        const std::pair<int, const char *> tips[] = {
            {1, "クリックすると、編集したドキュメントを自動保存してコンピュータの電源を切ります。電源をつけると再び起動します。"},
            {2, "クリックすると、編集したドキュメントを自動保存して終了します。"},
            {3, "クリックすると、ヘルプを参照します。必要であれば、インターネットに接続して最新情報を確認できます。"},
            {4, "クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。"},
            {5, "クリックするたびに、音楽・効果音を再生するかどうかを選択します。"},
            {6, "クリックするたびに、音声付きアニメーションを再生するかどうかを選択します。"},
            {7, "クリックすると、表示されているドキュメントを印刷します。まずはプリンタの準備をしておいてください。"},
            {8, "クリックするたびに、[電卓] ダイアログを開いたり閉じたりします。"},
            {9, "クリックすると、[文字入力] ダイアログを開きます。手書きのように文字入力ができるパッドです。"},
            {100, "クリックすると、拡大します。"},
            {101, "クリックすると、縮小します。"},
            {102, "クリックすると、このドキュメントの今までの作業をすべてキャンセルして、保存された状態に復元します。"},
            {103, "クリックすると、このドキュメントをコピーします。"},
            {104, "クリックすると、このドキュメントを削除します。"},
            {105, "クリックすると、このドキュメントを保存します。"},
            {200, "クリックすると、文字のサイズを大きくします。"},
            {201, "クリックすると、文字のサイズを小さくします。"},
            {202, "クリックすると、行を左端に揃えます。"},
            {203, "クリックすると、行を中央に揃えます。"},
            {204, "クリックすると、行を右端に揃えます。"},
            {205, "クリックしてチェックすると、行の始めに記号を付けます。"},
            {206, "クリックすると、指定した場所にタイムスタンプを挿入します。"},
            {1206, "クリックすると、[ようこそ] ウィンドウを閉じます。"},
            {1207, "クリックすると、キーワードに関連付けられた情報を検索します。"},
            {1208, "クリックし続けると、前へ戻っていきます。"},
            {1209, "クリックし続けると、後ろへ進んでいきます。"},
        };
        Globals::HowToOn = true;
        for (const auto &[index, tip] : tips) {
            TouchButton *button = index < 100 ? w->Channels(Workspace::Channel(index))
                : index < 1000                ? side(index)
                                              : w->welcomeBox()->MenuBoxMiniChannels(index - 1000);
            emit button->pointerEntered();
            QVERIFY2(w->InfoBar()->isVisible(), QByteArray::number(index));
            QCOMPARE(std::pair(index, w->InfoBarTopic()->text()), std::pair(index, button->caption()));
            QCOMPARE(std::pair(index, w->InfoBarContent()->text()), std::pair(index, QString::fromUtf8(tip)));
            emit button->pointerLeft();
            QCOMPARE(std::pair(index, w->InfoBarContent()->text()), std::pair(index, QString()));
        }
        // Clicking the how-to display hides the bar; the character speaks only
        // with "Graphic" on.
        for (const bool graphic : {false, true}) {
            Globals::GraphicOn = graphic;
            w->HowTo(u"設定"_s, u"短いヒント"_s);
            click(w->findChild<TouchButton *>(u"InfoBarHowToMonitor"_s));
            QVERIFY(!w->InfoBar()->isVisible());
            QCOMPARE(spoken.contains(u"Let's go home, please."_s), graphic);
        }
    }

    // Opening and closing either pad by its button is followed end to end.
    void toolBoxModeRules()
    {
        InfoDlg *dialog = w->infoDlg();
        // State 2 opens the pad only with "Smart Pencil" on, and once open it stays.
        using ToolBox = Workspace::ToolBox;
        using State = Workspace::ToolBoxState;
        w->ToolBoxMode(ToolBox::CharacterPad, State::Decide);
        QVERIFY(!dialog->isVisible());
        Globals::SmartPencilOn = true;
        for (int twice = 0; twice < 2; ++twice) {
            w->ToolBoxMode(ToolBox::CharacterPad, State::Decide);
            QVERIFY(dialog->isOpen(InfoDlg::CharacterMode) && !w->Channels(Workspace::CharacterPadButton)->isEnabled());
        }
        // The calculator follows the window's flag (clear here), and its button shows the state.
        for (const State state : {State::Decide, State::Open}) {
            w->ToolBoxMode(ToolBox::Calculator, state);
            const bool open = state == State::Open;
            QVERIFY(w->Channels(Workspace::CalculatorButton)->value() == open && dialog->isOpen(InfoDlg::CalculatorMode) == open);
        }
    }

    // The zoom buttons go by the document's own zoom (the applet answers
    // "Zoom" with 100 whatever the page shows); only 100 and 200 move.
    void zoomButtons()
    {
        openTemplate();
        for (const auto &[start, button, expected] : {std::tuple(100, 100, 200), {200, 101, 100}, {200, 100, 200}, {100, 101, 100}, {150, 100, 150}, {150, 101, 150}}) {
            w->activeApplet()->setProperties(u"Zoom"_s, start);
            click(side(button));
            QVERIFY2(w->currentRecord().Zoom == expected, qPrintable(u"%1 by button %2"_s.arg(start).arg(button)));
        }
    }

    // The format bar's rules, seen on an applet that takes any value.
    void formatBar()
    {
        auto *applet = new RecordingApplet;
        w->addApplet(applet);
        openTemplate();
        const auto sizeAfter = [&](double start, int button) {
            applet->values[u"Font Size"_s] = start;
            click(side(button));
            return applet->values.value(u"Font Size"_s).toDouble();
        };
        const QList<int> ladder = {9, 12, 16, 24, 32, 48, 72, 96};
        for (int step = 0; step + 1 < ladder.size(); ++step) {
            QCOMPARE(sizeAfter(ladder[step], SideMenuBar::Larger), double(ladder[step + 1]));
            QCOMPARE(sizeAfter(ladder[step + 1], SideMenuBar::Smaller), double(ladder[step]));
        }
        // The ends and sizes off the ladder stay.
        for (const auto &[start, button] : {std::pair(96.0, 200), {9.0, 201}, {10.0, 200}, {10.0, 201}, {12.5, 200}})
            QCOMPARE(sizeAfter(start, button), start);
        // Left 0, centre 2, right 1; exactly the button of the paragraph's alignment is pressed.
        for (const auto &[button, code] : {std::pair(202, 0), {203, 2}, {204, 1}}) {
            click(side(button));
            QCOMPARE(applet->values.value(u"Alignment"_s).toInt(), code);
            for (int other = 202; other <= 204; ++other)
                QCOMPARE(side(other)->value(), other == button);
        }
        for (const bool on : {true, false}) {
            click(side(SideMenuBar::Bullet));
            QVERIFY(applet->values.value(u"Bullet"_s).toBool() == on && side(SideMenuBar::Bullet)->value() == on);
        }
        click(side(SideMenuBar::Timestamp));
        QCOMPARE(applet->updates, QStringList{u"Timestamp"_s});
        // The document side bar follows the editing view.
        for (bool shown : {false, true}) {
            emit applet->propertiesChanged(shown, QVariant(), u"Word Processor"_s);
            QCOMPARE(w->SideMenuBars(SideMenuBar::DocumentBar)->isVisible(), shown);
        }
    }

    void recentListOrderSearchAndScrolling()
    {
        for (const auto &[title, day, body] :
             {std::tuple(u"旅行の計画", 3, "{\\rtf1\\ansi trip\\par}"), {u"", 9, "{\\rtf1\\ansi carrot soup\\par}"}, {u"買い物", 1, "{\\rtf1\\ansi Carrots and eggs\\par}"}, {u"日記", 7, "{\\rtf1\\ansi rain\\par}"}, {u"旅行の写真", 5, "{\\rtf1\\ansi photos\\par}"}}) {
            // Named out of order: the list goes by the save time, not the name.
            const QString path = Database::NewFileName(QDateTime(QDate(2023, 1, 10 - day), QTime(8, 0)));
            Database::SaveDocument(path, blankDocument(QString::fromUtf16(title), QDateTime(QDate(2024, 6, day), QTime(10, 0)), QString::fromLatin1(body)), Database::Sequential);
        }
        w->setDocument(Workspace::WelcomeView);
        WelcomeBox *welcome = w->welcomeBox();
        QTableWidget *recent = list(WelcomeBox::RecentPage);
        const auto search = [&](const QString &keyword) {
            welcome->keywordField()->setText(keyword);
            click(welcome->MenuBoxMiniChannels(WelcomeBox::SearchButton));
            QStringList shown;
            for (int column = 0; column < recent->columnCount(); ++column)
                shown.append(recent->item(0, column)->text());
            return shown;
        };
        click(welcome->MenuBoxMiniChannels(WelcomeBox::RecentTab));
        QCOMPARE(search(QString()), (QStringList{u"(なし)"_s, u"日記"_s, u"旅行の写真"_s, u"旅行の計画"_s, u"買い物"_s}));
        // Saved more than a day ago: the long date.
        QCOMPARE(recent->item(1, 0)->text(), u"2024年6月9日"_s);
        QCOMPARE(welcome->keywordField()->prompt(), u"検索したいキーワードを入力してください"_s);
        // The keyword is looked for in titles and in the text, case ignored.
        QCOMPARE(search(u"旅行"_s), (QStringList{u"旅行の写真"_s, u"旅行の計画"_s}));
        QCOMPARE(search(u"CARROT"_s), (QStringList{u"(なし)"_s, u"買い物"_s}));
        // The chosen entry is the one shown in that column.
        clickCell(recent, 0, 1);
        QCOMPARE(title()->text(), u"買い物"_s);
        click(side(SideMenuBar::Save));
        QCOMPARE(search(QString()).size(), 5);
        // The scroll buttons move the list a column at a time, and repeat.
        click(welcome->MenuBoxMiniChannels(WelcomeBox::ForwardButton));
        QCOMPARE(welcome->scrollBar()->HScrollPosition(), 1);
        QVERIFY(welcome->MenuBoxMiniChannels(WelcomeBox::ForwardButton)->autoRepeat());
    }

    // Revert asks first: no keeps everything; yes gives the blank document for
    // a document never saved (not its template), the stored document (at
    // 100 %) otherwise.
    void revertAndDeleteAskFirst()
    {
        openTemplate();
        box()->insertPlainText(u"消える文"_s);
        title()->setText(u"下書き"_s);
        answerNext(false);
        click(side(SideMenuBar::Revert));
        QVERIFY(box()->toPlainText().contains(u"消える文"_s) && title()->text() == u"下書き"_s);
        answerNext(true);
        click(side(SideMenuBar::Revert));
        QCOMPARE(w->Document(), 10);
        QVERIFY(w->currentRecord().DocumentTitle.isEmpty() && title()->text().isEmpty() && box()->toPlainText().isEmpty());
        QCOMPARE(w->currentRecord().Zoom, Database::NewDocument(1000).Zoom);
        QVERIFY(documentFiles().isEmpty());
        click(side(SideMenuBar::Save));
        click(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::RecentTab));
        clickCell(list(WelcomeBox::RecentPage), 0, 0);
        click(side(SideMenuBar::ZoomIn));
        answerNext(true);
        click(side(SideMenuBar::Revert));
        QCOMPARE(w->currentRecord().Zoom, 100);
        // Delete asks too: いいえ keeps the document open and on disk, はい
        // deletes it and goes back to the welcome box.
        for (const bool yes : {false, true}) {
            answerNext(yes);
            click(side(SideMenuBar::Delete));
            QCOMPARE(documentFiles().size(), yes ? 0 : 1);
            QCOMPARE(w->Document(), yes ? 0 : 10);
        }
        QVERIFY(w->welcomeBox()->isVisible());
        QCOMPARE(list(WelcomeBox::RecentPage)->columnCount(), 0);
    }

    // Box and side-bar buttons are silent while music is off; the music button
    // is the other way round, so that it sounds as music is switched on.
    void soundQueryRule()
    {
        const auto suppressed = [](TouchButton *button) {
            qint16 suppress = 0;
            emit button->soundQuery(suppress);
            return suppress != 0;
        };
        TouchButton *music = w->Channels(Workspace::MusicButton);
        TouchButton *others[] = {w->Channels(Workspace::HelpButton), w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::RecentTab), side(SideMenuBar::Save)};
        for (const bool musicOn : {false, true}) {
            QCOMPARE(suppressed(music), musicOn);
            for (TouchButton *button : others)
                QCOMPARE(suppressed(button), !musicOn);
            if (!musicOn)
                click(music);
            QVERIFY(Globals::MusicOn && music->value());
        }
        // The skin sounds go by control name, in boxes built late too.
        others[0] = static_cast<SettingsBox *>(w->settingsBox())->button(SettingsBox::RandomButton);
        for (TouchButton *button : {w->Channels(Workspace::HelpButton), others[0], others[1], others[2]})
            QCOMPARE(button->soundFile().section(u'/', -2), button == w->Channels(Workspace::HelpButton) ? u"SKIN/1.WAV"_s : u"SKIN/2.WAV"_s);
    }

    // Beeps on minutes 00 and 30 with "Music" on; the time is told on 00, 10,
    // 15, 20, 30, 40, 45 and 50 with "Graphic" on; once per minute however
    // often the clock ticks in it.
    void clockChecksOncePerMinute()
    {
        ChimeClock *clock = w->clock();
        QDateTime now;
        clock->setTimeSource([&now] { return now; });
        QSignalSpy beeps(clock, &ChimeClock::beep);
        const std::tuple<int, int, int, bool, bool, bool, bool> ticks[] = {{10, 0, 5, true, true, true, true}, {10, 0, 35, true, true, false, false}, {10, 1, 0, true, true, false, false}, {10, 10, 0, true, true, false, true}, {10, 15, 0, true, true, false, true}, {10, 20, 0, true, true, false, true}, {10, 29, 0, true, true, false, false}, {10, 30, 0, true, true, true, true}, {10, 40, 0, true, true, false, true}, {10, 45, 0, true, true, false, true}, {10, 50, 0, true, true, false, true}, {10, 59, 0, true, true, false, false}, {11, 0, 0, false, true, false, true}, {11, 30, 0, true, false, true, false}};
        for (const auto &[hour, minute, second, music, graphic, beep, speak] : ticks) {
            Globals::MusicOn = music;
            Globals::GraphicOn = graphic;
            const qsizetype beepsBefore = beeps.count(), linesBefore = spoken.size();
            now = QDateTime(QDate(2026, 11, 23), QTime(hour, minute, second));
            clock->tick();
            clock->tick();
            const QByteArray at = now.toString(u"hh:mm:ss").toLatin1();
            QVERIFY2(beeps.count() - beepsBefore == (beep ? 1 : 0), at);
            QVERIFY2(spoken.mid(linesBefore) == (speak ? QStringList{u"What time is it now?"_s} : QStringList()), at);
        }
    }

    void systemMenuCaptions()
    {
        QStringList captions;
        for (QAction *action : w->systemMenu()->actions())
            if (!action->isSeparator())
                captions.append(action->text());
        QCOMPARE(captions, (QStringList{u"ボリューム"_s, u"画面..."_s, u"既定のプリンタ"_s, u"プリンタ..."_s, u"フォント"_s, u"日付と時刻..."_s, u"インターネット オプション..."_s}));
    }

    // Start tells the date; a closing that is not one of the four known ones
    // is refused; quitting thanks and lets the character go.
    void closingSavesAndSpeaks()
    {
        Globals::GraphicOn = true;
        spoken.clear();
        w->Start();
        QCOMPARE(std::exchange(spoken, {}), QStringList{u"What's the date today?"_s});
        openTemplate();
        QVERIFY(!w->QueryUnload(Workspace::OtherClose));
        QCOMPARE(std::exchange(spoken, {}), QStringList{u"Sorry."_s});
        QCOMPARE(w->Document(), 10);
        QSignalSpy unloaded(w, &Workspace::unloaded);
        click(w->Channels(Workspace::QuitButton));
        QCOMPARE(unloaded.count(), 1);
        QCOMPARE(spoken, (QStringList{u"Thank you."_s, u"Off"_s}));
    }

    // A save that fails keeps the document on the screen, and neither a copy
    // nor quitting goes on without it (the message, the words kept and the
    // save once there is room are followed end to end).
    void failedSaveKeepsTheDocument()
    {
        int told = 0;
        w->setMessageRoutine([&told](QWidget *, const QString &) { ++told; });
        openTemplate();
        title()->setText(u"大事"_s);
        {
            FileSizeLimit full(10);
            for (TouchButton *button : {side(SideMenuBar::Save), side(SideMenuBar::Copy), w->Channels(Workspace::QuitButton)})
                click(button);
        }
        QCOMPARE(told, 3);
        QVERIFY(w->isVisible() && documentFiles().isEmpty());
        QCOMPARE(w->Document(), 10);
        QCOMPARE(title()->text(), u"大事"_s);
        click(side(SideMenuBar::Save));
        QCOMPARE(documentFiles().size(), 1);
        QCOMPARE(QDir(RecoveryJournal::folder()).entryList(QDir::Files), QStringList());
    }

    // Over the session bus "[X]" closes the window as "[QUIT]" does, and only
    // these exact words do.
    void busExecute()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected())
            QSKIP("no session bus");
        QDBusInterface lantern(bus.baseService(), u"/Lantern"_s, u"jp.fernwick.Lantern"_s, bus);
        QSignalSpy unloaded(w, &Workspace::unloaded);
        for (const QString &refused : {u"[FOO]"_s, u"[quit]"_s, u"[X] "_s, u"[x]"_s})
            QVERIFY2(!QDBusReply<bool>(lantern.call(u"Execute"_s, refused)).value(), qPrintable(refused));
        QDBusReply<bool> reply = lantern.call(u"Execute"_s, u"[X]"_s);
        QVERIFY(reply.isValid() && reply.value());
        QTRY_COMPARE(unloaded.count(), 1);
        QVERIFY(!w->isVisible());
    }

    // The window links the program's private-character font once per run: a
    // run that ended without unloading left the "Runtime" flag set, and the
    // next one leaves the link as it is. Unloading takes the link back.
    void fontLinkGuard()
    {
        const auto linked = [] { return eudcValues().first() == PrivateCharacters::fontPath(QCoreApplication::applicationDirPath()); };
        cleanup();
        QVERIFY(!SettingsStore::Runtime() && !linked());
        for (const bool leftOver : {false, true}) {
            SettingsStore::SetRuntime(leftOver);
            Workspace window;
            window.show();
            window.Start();
            QTRY_VERIFY(!window.waitingForFirstPicture());
            QVERIFY(SettingsStore::Runtime());
            QCOMPARE(linked(), !leftOver);
            window.closeWithMode(Workspace::ByCode);
            QVERIFY(!SettingsStore::Runtime() && !linked());
        }
    }
};

QTEST_MAIN(WorkspaceTest)
#include "test_workspace.moc"
