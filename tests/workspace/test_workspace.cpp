// The main window driven as a person does it: clicks on its buttons and on
// the rows of its lists, with the real document store under a private HOME.
#include "app/Globals.h"
#include "app/PrivateCharacters.h"
#include "app/Registry.h"
#include "app/SettingsStore.h"
#include "documents/Applet.h"
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/WordProcessor.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchPanel.h"
#include "support/FileSizeLimit.h"
#include "tools/IME.h"
#include "tools/InfoDlg.h"
#include "tools/QuestionBox.h"
#include "tools/FlatScrollBar.h"
#include "workspace/ChimeClock.h"
#include "workspace/SettingsBox.h"
#include "workspace/SideMenuBar.h"
#include "workspace/WelcomeBox.h"
#include "workspace/Workspace.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QContextMenuEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTextBlock>
#include <QTest>
#include <QTimer>

namespace {

// An applet that keeps its properties in a table and writes down commands, so
// that the side bars' rules can be seen for any value.
class RecordingApplet : public Applet
{
public:
    using Applet::Applet;
    QVariant Properties(const QString &name) const override { return values.value(name); }
    void setProperties(const QString &name, const QVariant &value) override
    {
        values[name] = value;
        writes.append(name);
        if (name != u"Zoom") {
            bool changed = true;
            emit propertiesChanged(changed, QVariant(), QStringLiteral("All Properties"));
        }
    }
    QVariant Update(const QString &command, const QVariant &) override
    {
        updates.append(command);
        return QVariant();
    }
    QHash<QString, QVariant> values;
    QStringList writes;
    QStringList updates;
};

QStringList spoken;

void click(QWidget *button)
{
    QVERIFY2(button, "no such control");
    QVERIFY2(button->isVisible() && button->isEnabled(), qPrintable(button->objectName() + " cannot be clicked"));
    QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
}

void clickCell(QTableWidget *grid, int row, int column)
{
    QTableWidgetItem *item = grid->item(row, column);
    QVERIFY2(item, "no such cell");
    grid->scrollToItem(item);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualItemRect(item).center());
}

// Types any text, as an input method hands it over: one key event per character.
void typeText(QWidget *widget, const QString &text)
{
    for (const QChar ch : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(ch));
        QApplication::sendEvent(widget, &press);
        QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(ch));
        QApplication::sendEvent(widget, &release);
    }
}

QStringList documentFiles()
{
    return QDir(SettingsStore::DocumentFolder()).entryList({QStringLiteral("*.TXT")}, QDir::Files, QDir::Name);
}

} // namespace

class WorkspaceTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startOpensTheWelcomeBoxAndViewsSwitch();
    void templateDocumentIsSavedUnderItsTimeAndListed();
    void calculatorButtonOpensThenCloses();
    void padsOpenAndCloseSeparately_data();
    void padsOpenAndCloseSeparately();
    void toolBoxModeRules();
    void zoomButtons_data();
    void zoomButtons();
    void zoomInAndOutKeepsThePageAndItsBoxesAlike();
    void fontSizeLadder();
    void fontSizeLadderOnTheRealApplet();
    void alignmentBulletAndTimestamp();
    void copyMakesASecondFileTitledCopy();
    void recentListOrderSearchAndScrolling();
    void revertAsksAndRestores();
    void deleteAsksFirst();
    void soundQueryRule();
    void clockChecksOncePerMinute();
    void hintsInTheInformationBar();
    void padHintsAndNotices();
    void arrowKeysMoveTheCaretInADocument();
    void nothingOpenLeadsBackToTheDocuments();
    void copyOfANeverSavedDocumentKeepsTheOriginal();
    void documentThatCannotBeReadStaysClosed();
    void reopenedDocumentShowsItsFormatAtOnce();
    void failedSaveKeepsTheDocumentOnTheScreen();
    void systemAndPrinterMenus();
    void closingSavesAndSpeaks();
    void fontLinkGuard();
    void busExecute_data();
    void busExecute();

private:
    Workspace *w = nullptr;
    QStringList questions;
    bool answer = true;
};

void WorkspaceTest::init()
{
    QDir(SettingsStore::DocumentFolder()).removeRecursively();
    spoken.clear();
    questions.clear();
    answer = true;
    Workspace::setCharacterRoutine([](QString &line) { spoken.append(line); });
    Globals::MusicOn = false;
    Globals::GraphicOn = false;
    Globals::HowToOn = false;
    Globals::SmartPencilOn = false;
    Globals::ShutdownOnQuit = false;
    w = new Workspace;
    w->setInfoDlg(new InfoDlg(w));
    w->setQuestionRoutine([this](QWidget *, const QString &question) {
        questions.append(question);
        return answer;
    });
    w->setMessageRoutine([](QWidget *, const QString &message) { QFAIL(qPrintable(message)); });
    w->resize(1366, 768);
    w->show();
    QVERIFY(QTest::qWaitForWindowExposed(w));
    w->Reload();
    w->ApplySetting();
    w->Start();
    QTRY_VERIFY(!w->waitingForFirstPicture());
}

void WorkspaceTest::cleanup()
{
    delete w;
    w = nullptr;
}

void WorkspaceTest::startOpensTheWelcomeBoxAndViewsSwitch()
{
    WelcomeBox *welcome = w->welcomeBox();
    QVERIFY(welcome->isVisible());
    QCOMPARE(w->Document(), 0);
    QCOMPARE(welcome->caption(), QStringLiteral("スタート"));
    QVERIFY(!w->Channels(7)->isEnabled());
    // Quit shows while "Shutdown" is off, power-off while it is on.
    QVERIFY(w->Channels(2)->isVisible());
    QVERIFY(!w->Channels(1)->isVisible());

    // The tabs act as one radio group over the two pages.
    QCOMPARE(welcome->shownPage(), WelcomeBox::TemplatesPage);
    click(welcome->MenuBoxMiniChannels(WelcomeBox::RecentTab));
    QCOMPARE(welcome->shownPage(), WelcomeBox::RecentPage);
    QVERIFY(welcome->MenuBoxMiniChannels(WelcomeBox::RecentTab)->value());
    QVERIFY(!welcome->MenuBoxMiniChannels(WelcomeBox::TemplatesTab)->value());
    click(welcome->MenuBoxMiniChannels(WelcomeBox::TemplatesTab));
    QCOMPARE(welcome->shownPage(), WelcomeBox::TemplatesPage);
    QVERIFY(!welcome->MenuBoxMiniChannels(WelcomeBox::RecentTab)->value());

    // Settings box (view 1) and back (view 2).
    click(w->Channels(4));
    QVERIFY(w->settingsBox()->isVisible());
    QVERIFY(!welcome->isVisible());
    // "Shutdown" turned on there swaps the quit button for the power-off one at once.
    auto *settings = static_cast<SettingsBox *>(w->settingsBox());
    click(settings->button(SettingsBox::ShutdownButton));
    QVERIFY(Globals::ShutdownOnQuit);
    QVERIFY(w->Channels(1)->isVisible());
    QVERIFY(!w->Channels(2)->isVisible());
    click(settings->button(SettingsBox::ShutdownButton));
    QVERIFY(!w->Channels(1)->isVisible());
    QVERIFY(w->Channels(2)->isVisible());
    // Its buttons sound and explain themselves like every other button.
    QVERIFY(settings->button(SettingsBox::RandomButton)->soundFile().endsWith(QStringLiteral("/SKIN/2.WAV")));
    Globals::HowToOn = true;
    emit settings->button(SettingsBox::RandomButton)->pointerEntered();
    QCOMPARE(w->InfoBarTopic()->text(), QStringLiteral("ランダム"));
    QCOMPARE(w->InfoBarContent()->text(), QStringLiteral("クリックすると、背景は任意に更新されるようになります。"));
    Globals::HowToOn = false;
    click(settings->button(SettingsBox::CloseButton));
    QVERIFY(!w->settingsBox()->isVisible());
    QVERIFY(welcome->isVisible());

    // A template opens the document (view 10) with both side bars.
    clickCell(welcome->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    QCOMPARE(w->Document(), 10);
    QVERIFY(!welcome->isVisible());
    QVERIFY(w->SideMenuBars(100)->isVisible());
    QVERIFY(w->SideMenuBars(200)->isVisible());
    QVERIFY(w->activeApplet()->isVisible());
    QVERIFY(w->Channels(7)->isEnabled());
    QVERIFY(w->currentPath().isEmpty());

    // The welcome box's close button leaves nothing open (view 0).
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
    QVERIFY(welcome->isVisible());
    click(welcome->MenuBoxMiniChannels(WelcomeBox::CloseButton));
    QVERIFY(!welcome->isVisible());
    QCOMPARE(w->Document(), 0);
    QVERIFY(!w->Channels(7)->isEnabled());
}

void WorkspaceTest::templateDocumentIsSavedUnderItsTimeAndListed()
{
    WelcomeBox *welcome = w->welcomeBox();
    clickCell(welcome->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    QVERIFY(applet);
    WordProcessor *box = applet->WordProcessors(1);
    QVERIFY(box);
    QTest::mouseClick(box->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    typeText(box, QStringLiteral("日記の本文"));
    TouchEdit *title = w->SideMenuBars(100)->titleField();
    QCOMPARE(title->prompt(), QStringLiteral("タイトルを入力してください"));
    title->setText(QStringLiteral("春の旅行, 京都"));

    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
    const QDateTime after = QDateTime::currentDateTime().addSecs(1);

    const QStringList files = documentFiles();
    QCOMPARE(files.size(), 1);
    const QDateTime named = QDateTime::fromString(files.first().left(14), QStringLiteral("yyyyMMddhhmmss"));
    QVERIFY(named >= before && named <= after);
    const DocumentRecord stored =
        Database::LoadDocument(SettingsStore::DocumentFolder() + u'/' + files.first(), Database::Sequential);
    QCOMPARE(stored.DocumentTitle, QStringLiteral("春の旅行, 京都"));
    QCOMPARE(stored.Timestamp, named);
    QVERIFY(stored.Pages.first().Items.first().Text.contains(QStringLiteral("\\rtf")));

    // The recent list: its title and its time of day (saved less than a day ago).
    QTableWidget *recent = welcome->MenuBoxFigures(WelcomeBox::RecentPage);
    QCOMPARE(recent->columnCount(), 1);
    QCOMPARE(recent->item(0, 0)->text(), QStringLiteral("春の旅行, 京都"));
    QCOMPARE(recent->item(1, 0)->text(), named.time().toString(QStringLiteral("H:mm:ss")));
    QVERIFY(w->currentPath().isEmpty());

    // Reopened from the list: the same title in the field, the same file kept.
    click(welcome->MenuBoxMiniChannels(WelcomeBox::RecentTab));
    clickCell(recent, 0, 0);
    QCOMPARE(w->Document(), 10);
    QCOMPARE(title->text(), QStringLiteral("春の旅行, 京都"));
    QCOMPARE(w->currentPath(), SettingsStore::DocumentFolder() + u'/' + files.first());
    QVERIFY(qobject_cast<DatabaseApplet *>(w->activeApplet())->WordProcessors(1)->toPlainText().contains(
        QStringLiteral("日記の本文")));
}

void WorkspaceTest::calculatorButtonOpensThenCloses()
{
    InfoDlg *dialog = w->infoDlg();
    click(w->Channels(8));
    QVERIFY(w->calculatorFlag());
    QVERIFY(w->Channels(8)->value());
    QVERIFY(dialog->isVisible());
    click(w->Channels(8));
    QVERIFY(!w->calculatorFlag());
    QVERIFY(!w->Channels(8)->value());
    QVERIFY(!dialog->isVisible());
}

// Each step of a row is a click: "pad" on 文字入力, "calc" on 電卓, "close"
// and "away" on the pad's 閉じる and しまう, "wm" the window manager closing
// the dialog. After every step 文字入力 can be clicked exactly when the
// character pad is not on the screen, and 電卓 is pressed exactly while the
// calculator is.
void WorkspaceTest::padsOpenAndCloseSeparately_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<bool>("characterPad");
    QTest::addColumn<bool>("calculator");
    const auto row = [](const char *name, const char *steps, bool character, bool calculator) {
        QTest::newRow(name) << QString::fromLatin1(steps).split(u' ') << character << calculator;
    };
    row("pad", "pad", true, false);
    row("pad calc", "pad calc", true, true);
    row("pad calc calc", "pad calc calc", true, false);
    row("calc pad calc calc", "calc pad calc calc", true, true);
    row("calc pad calc", "calc pad calc", true, false);
    row("pad calc close", "pad calc close", false, true);
    row("pad away", "pad away", false, false);
    row("pad close pad", "pad close pad", true, false);
    row("pad calc wm", "pad calc wm", false, false);
    row("calc wm pad", "calc wm pad", true, false);
    row("calc wm calc", "calc wm calc", false, true);
}

void WorkspaceTest::padsOpenAndCloseSeparately()
{
    QFETCH(QStringList, steps);
    InfoDlg *dialog = w->infoDlg();
    for (const QString &step : std::as_const(steps)) {
        if (step == u"pad")
            click(w->Channels(9));
        else if (step == u"calc")
            click(w->Channels(8));
        else if (step == u"close")
            QTest::mouseClick(dialog->MiniChannels[0], Qt::LeftButton);
        else if (step == u"away")
            QTest::mouseClick(dialog->MiniChannels[3], Qt::LeftButton);
        else if (step == u"wm")
            dialog->close();
        QCOMPARE(w->Channels(9)->isEnabled(), !dialog->isOpen(InfoDlg::CharacterMode));
        QCOMPARE(w->Channels(8)->value(), dialog->isOpen(InfoDlg::CalculatorMode));
        QCOMPARE(w->calculatorFlag(), dialog->isOpen(InfoDlg::CalculatorMode));
        QCOMPARE(dialog->isVisible(), dialog->isOpen(InfoDlg::CharacterMode) || dialog->isOpen(InfoDlg::CalculatorMode));
    }
    QFETCH(bool, characterPad);
    QFETCH(bool, calculator);
    QCOMPARE(dialog->isOpen(InfoDlg::CharacterMode), characterPad);
    QCOMPARE(dialog->isOpen(InfoDlg::CalculatorMode), calculator);
    QCOMPARE(dialog->MiniChannels[11]->isVisible(), characterPad);
    QCOMPARE(dialog->NumKeys[0]->isVisible(), calculator);
}

void WorkspaceTest::toolBoxModeRules()
{
    InfoDlg *dialog = w->infoDlg();
    // It opens below the main buttons, above the information bar.
    click(w->Channels(9));
    const QRect pad = dialog->frameGeometry();
    QVERIFY2(pad.top() >= w->mapToGlobal(w->Channels(4)->geometry().bottomLeft()).y(), "the pad covers the main buttons");
    QVERIFY(pad.bottom() <= w->mapToGlobal(w->InfoBar()->geometry().topLeft()).y());
    w->ToolBoxMode(1, 0);
    QVERIFY(!dialog->isVisible());
    QVERIFY(w->Channels(9)->isEnabled());

    // State 2 opens the pad only with "Smart Pencil" on.
    w->ToolBoxMode(1, 2);
    QVERIFY(!dialog->isVisible());
    Globals::SmartPencilOn = true;
    w->ToolBoxMode(1, 2);
    QVERIFY(dialog->isOpen(InfoDlg::CharacterMode));
    QVERIFY(!w->Channels(9)->isEnabled());
    // Already open: state 2 stays 2 and changes nothing.
    w->ToolBoxMode(1, 2);
    QVERIFY(dialog->isOpen(InfoDlg::CharacterMode));

    // The calculator follows the window's flag, and its button shows the state.
    w->ToolBoxMode(0, 2);
    QVERIFY(!w->Channels(8)->value());
    QVERIFY(!dialog->isOpen(InfoDlg::CalculatorMode));
    w->ToolBoxMode(0, 1);
    QVERIFY(w->Channels(8)->value());
    QVERIFY(dialog->isOpen(InfoDlg::CalculatorMode));

    // With "Smart Pencil" on, clicking into the document opens the character
    // pad, even while the calculator shows.
    w->ToolBoxMode(1, 0);
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    QVERIFY(dialog->isOpen(InfoDlg::CalculatorMode));
    QVERIFY(!dialog->isOpen(InfoDlg::CharacterMode));
    WordProcessor *box = qobject_cast<DatabaseApplet *>(w->activeApplet())->WordProcessors(1);
    QTest::mouseClick(box->viewport(), Qt::LeftButton, {}, QPoint(30, 30));
    QVERIFY(dialog->isOpen(InfoDlg::CharacterMode));
    QVERIFY(!w->Channels(9)->isEnabled());
}

// The zoom buttons read the document's own zoom: the applet answers "Zoom"
// with 100 whatever the page shows.
void WorkspaceTest::zoomButtons_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("expected");
    QTest::newRow("100 in") << 100 << int(SideMenuBar::ZoomIn) << 200;
    QTest::newRow("200 out") << 200 << int(SideMenuBar::ZoomOut) << 100;
    QTest::newRow("200 in") << 200 << int(SideMenuBar::ZoomIn) << 200;
    QTest::newRow("100 out") << 100 << int(SideMenuBar::ZoomOut) << 100;
    QTest::newRow("150 in") << 150 << int(SideMenuBar::ZoomIn) << 150;
    QTest::newRow("150 out") << 150 << int(SideMenuBar::ZoomOut) << 150;
}

void WorkspaceTest::zoomButtons()
{
    QFETCH(int, start);
    QFETCH(int, button);
    QFETCH(int, expected);
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    Applet *applet = w->activeApplet();
    if (start != 100)
        applet->setProperties(QStringLiteral("Zoom"), start);
    QCOMPARE(applet->Properties(QStringLiteral("Zoom")).toInt(), 100);
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(button));
    QCOMPARE(w->currentRecord().Zoom, expected);
}

void WorkspaceTest::zoomInAndOutKeepsThePageAndItsBoxesAlike()
{
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    typeText(applet->WordProcessors(1), QStringLiteral("拡大する文"));
    const auto layoutNow = [&] {
        WordProcessor *box = applet->WordProcessors(1);
        return std::make_pair(box->geometry(), box->parentWidget()->size());
    };
    const auto first = layoutNow();
    SideMenuBar *bar = w->SideMenuBars(100);
    click(bar->SideMenuBarMiniChannels(SideMenuBar::ZoomIn));
    const auto zoomed = layoutNow();
    QCOMPARE(zoomed.first.size(), first.first.size() * 2);
    QCOMPARE(zoomed.second, first.second * 2);
    click(bar->SideMenuBarMiniChannels(SideMenuBar::ZoomOut));
    QCOMPARE(layoutNow(), first);

    // A copy made at 200 % shows its page and its box at 200 % alike, and
    // 縮小 brings both back.
    click(bar->SideMenuBarMiniChannels(SideMenuBar::ZoomIn));
    click(bar->SideMenuBarMiniChannels(SideMenuBar::Copy));
    QCOMPARE(layoutNow(), zoomed);
    QCOMPARE(applet->WordProcessors(1)->textZoom(), 200);
    click(bar->SideMenuBarMiniChannels(SideMenuBar::ZoomOut));
    QCOMPARE(layoutNow(), first);

    // Reverted at 200 %: the stored document, page and box at 100 %.
    click(bar->SideMenuBarMiniChannels(SideMenuBar::ZoomIn));
    click(bar->SideMenuBarMiniChannels(SideMenuBar::Revert));
    QCOMPARE(w->currentRecord().Zoom, 100);
    QCOMPARE(layoutNow(), first);
}

void WorkspaceTest::fontSizeLadder()
{
    auto *applet = new RecordingApplet;
    w->addApplet(applet);
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    QCOMPARE(w->Document(), 10);
    SideMenuBar *formatBar = w->SideMenuBars(200);

    const auto sizeAfter = [&](double start, int button) {
        applet->values[QStringLiteral("Font Size")] = start;
        click(formatBar->SideMenuBarMiniChannels(button));
        return applet->values.value(QStringLiteral("Font Size")).toDouble();
    };
    const QList<int> ladder = {9, 12, 16, 24, 32, 48, 72, 96};
    for (int step = 0; step + 1 < ladder.size(); ++step) {
        QCOMPARE(sizeAfter(ladder[step], SideMenuBar::Larger), double(ladder[step + 1]));
        QCOMPARE(sizeAfter(ladder[step + 1], SideMenuBar::Smaller), double(ladder[step]));
    }
    QCOMPARE(sizeAfter(96, SideMenuBar::Larger), 96.0);
    QCOMPARE(sizeAfter(9, SideMenuBar::Smaller), 9.0);
    QCOMPARE(sizeAfter(10, SideMenuBar::Larger), 10.0);
    QCOMPARE(sizeAfter(10, SideMenuBar::Smaller), 10.0);
    QCOMPARE(sizeAfter(12.5, SideMenuBar::Larger), 12.5);
    // Sizes that stay are not written at all.
    applet->writes.clear();
    sizeAfter(10, SideMenuBar::Larger);
    QVERIFY(applet->writes.isEmpty());
}

void WorkspaceTest::fontSizeLadderOnTheRealApplet()
{
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    QVERIFY(applet);
    typeText(applet->WordProcessors(1), QStringLiteral("abc"));
    TouchButton *larger = w->SideMenuBars(200)->SideMenuBarMiniChannels(SideMenuBar::Larger);
    TouchButton *smaller = w->SideMenuBars(200)->SideMenuBarMiniChannels(SideMenuBar::Smaller);
    applet->setProperties(QStringLiteral("Font Size"), 12);
    click(larger);
    QCOMPARE(applet->Properties(QStringLiteral("Font Size")).toDouble(), 16.0);
    click(smaller);
    click(smaller);
    QCOMPARE(applet->Properties(QStringLiteral("Font Size")).toDouble(), 9.0);
    applet->setProperties(QStringLiteral("Font Size"), 10);
    click(larger);
    QCOMPARE(applet->Properties(QStringLiteral("Font Size")).toDouble(), 10.0);
}

void WorkspaceTest::alignmentBulletAndTimestamp()
{
    auto *applet = new RecordingApplet;
    w->addApplet(applet);
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    SideMenuBar *bar = w->SideMenuBars(200);
    const int buttons[] = {SideMenuBar::AlignLeft, SideMenuBar::AlignCenter, SideMenuBar::AlignRight};
    const int codes[] = {0, 2, 1};
    for (int i = 0; i < 3; ++i) {
        click(bar->SideMenuBarMiniChannels(buttons[i]));
        QCOMPARE(applet->values.value(QStringLiteral("Alignment")).toInt(), codes[i]);
        // Exactly the button of the paragraph's alignment is pressed.
        for (int j = 0; j < 3; ++j)
            QCOMPARE(bar->SideMenuBarMiniChannels(buttons[j])->value(), i == j);
    }
    TouchButton *bullet = bar->SideMenuBarMiniChannels(SideMenuBar::Bullet);
    click(bullet);
    QVERIFY(applet->values.value(QStringLiteral("Bullet")).toBool());
    QVERIFY(bullet->value());
    click(bullet);
    QVERIFY(!applet->values.value(QStringLiteral("Bullet")).toBool());
    QVERIFY(!bullet->value());
    click(bar->SideMenuBarMiniChannels(SideMenuBar::Timestamp));
    QCOMPARE(applet->updates, QStringList{QStringLiteral("Timestamp")});

    // The document side bar follows the editing view.
    bool shown = false;
    emit applet->propertiesChanged(shown, QVariant(), QStringLiteral("Word Processor"));
    QVERIFY(!w->SideMenuBars(100)->isVisible());
    shown = true;
    emit applet->propertiesChanged(shown, QVariant(), QStringLiteral("Word Processor"));
    QVERIFY(w->SideMenuBars(100)->isVisible());
}

void WorkspaceTest::copyMakesASecondFileTitledCopy()
{
    DocumentRecord original = Database::NewDocument(Database::BlankTemplate);
    original.DocumentTitle = QStringLiteral("家計簿");
    original.Timestamp = QDateTime(QDate(2020, 5, 1), QTime(8, 0, 0));
    original.Pages[0].Items[0].Text = QStringLiteral("{\\rtf1 kakeibo\\par}");
    const QString originalPath = Database::NewFileName(original.Timestamp);
    Database::SaveDocument(originalPath, original, Database::Sequential);
    w->setDocument(Workspace::WelcomeView);

    QTableWidget *recent = w->welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage);
    QCOMPARE(recent->item(1, 0)->text(), QStringLiteral("2020年5月1日"));
    click(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::RecentTab));
    clickCell(recent, 0, 0);
    QCOMPARE(w->currentPath(), originalPath);

    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Copy));
    QCOMPARE(w->Document(), 10);
    QCOMPARE(w->SideMenuBars(100)->titleField()->text(), QStringLiteral("(コピー)"));
    QVERIFY(w->currentPath() != originalPath);
    QCOMPARE(documentFiles().size(), 2);
    QCOMPARE(Database::LoadDocument(originalPath, Database::Sequential).DocumentTitle, QStringLiteral("家計簿"));
    const DocumentRecord copy = Database::LoadDocument(w->currentPath(), Database::Sequential);
    QCOMPARE(copy.DocumentTitle, QStringLiteral("(コピー)"));
    QVERIFY(copy.Pages.first().Items.first().Text.contains(QStringLiteral("kakeibo")));
}

void WorkspaceTest::recentListOrderSearchAndScrolling()
{
    const struct
    {
        const char16_t *title;
        int day;
        const char *body;
    } documents[] = {{u"旅行の計画", 3, "{\\rtf1\\ansi trip\\par}"},
                     {u"", 9, "{\\rtf1\\ansi carrot soup\\par}"},
                     {u"買い物", 1, "{\\rtf1\\ansi Carrots and eggs\\par}"},
                     {u"日記", 7, "{\\rtf1\\ansi rain\\par}"},
                     {u"旅行の写真", 5, "{\\rtf1\\ansi photos\\par}"}};
    for (const auto &d : documents) {
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.DocumentTitle = QString::fromUtf16(d.title);
        record.Timestamp = QDateTime(QDate(2024, 6, d.day), QTime(10, 0, 0));
        record.Pages[0].Items[0].Text = QString::fromLatin1(d.body);
        // Named out of order: the list goes by the save time, not the name.
        Database::SaveDocument(Database::NewFileName(QDateTime(QDate(2023, 1, 10 - d.day), QTime(8, 0, 0))), record,
                               Database::Sequential);
    }
    w->setDocument(Workspace::WelcomeView);
    WelcomeBox *welcome = w->welcomeBox();
    QTableWidget *recent = welcome->MenuBoxFigures(WelcomeBox::RecentPage);
    const auto titles = [recent] {
        QStringList shown;
        for (int column = 0; column < recent->columnCount(); ++column)
            shown.append(recent->item(0, column)->text());
        return shown;
    };
    QCOMPARE(titles(), (QStringList{"(なし)", "日記", "旅行の写真", "旅行の計画", "買い物"}));
    QCOMPARE(recent->item(1, 0)->text(), QStringLiteral("2024年6月9日"));

    // The keyword is looked for in titles and in the text, case ignored.
    click(welcome->MenuBoxMiniChannels(WelcomeBox::RecentTab));
    welcome->keywordField()->setText(QStringLiteral("旅行"));
    click(welcome->MenuBoxMiniChannels(WelcomeBox::SearchButton));
    QCOMPARE(titles(), (QStringList{"旅行の写真", "旅行の計画"}));
    welcome->keywordField()->setText(QStringLiteral("CARROT"));
    click(welcome->MenuBoxMiniChannels(WelcomeBox::SearchButton));
    QCOMPARE(titles(), (QStringList{"(なし)", "買い物"}));
    // The chosen entry is the one shown in that column.
    clickCell(recent, 0, 1);
    QCOMPARE(w->SideMenuBars(100)->titleField()->text(), QStringLiteral("買い物"));
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
    welcome->keywordField()->clear();
    click(welcome->MenuBoxMiniChannels(WelcomeBox::SearchButton));
    QCOMPARE(recent->columnCount(), 5);

    // The scroll buttons move the list a column at a time; the flat bar follows.
    QScrollBar *bar = recent->horizontalScrollBar();
    QVERIFY(bar->maximum() > 0);
    click(welcome->MenuBoxMiniChannels(WelcomeBox::ForwardButton));
    QCOMPARE(bar->value(), 1);
    QCOMPARE(welcome->scrollBar()->HScrollPosition(), 1);
    click(welcome->MenuBoxMiniChannels(WelcomeBox::BackButton));
    QCOMPARE(bar->value(), 0);
    QCOMPARE(welcome->scrollBar()->HScrollPosition(), 0);
    QVERIFY(welcome->MenuBoxMiniChannels(WelcomeBox::ForwardButton)->autoRepeat());
}

void WorkspaceTest::revertAsksAndRestores()
{
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    typeText(applet->WordProcessors(1), QStringLiteral("消える文"));
    w->SideMenuBars(100)->titleField()->setText(QStringLiteral("下書き"));
    TouchButton *revert = w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Revert);

    // No: everything stays.
    answer = false;
    click(revert);
    QCOMPARE(questions.size(), 1);
    QVERIFY(applet->WordProcessors(1)->toPlainText().contains(QStringLiteral("消える文")));
    QCOMPARE(w->SideMenuBars(100)->titleField()->text(), QStringLiteral("下書き"));

    // Yes on a document never saved: the blank document, not the template.
    answer = true;
    click(revert);
    QCOMPARE(questions.size(), 2);
    QCOMPARE(w->Document(), 10);
    QCOMPARE(w->currentRecord().DocumentTitle, QString());
    QCOMPARE(w->SideMenuBars(100)->titleField()->text(), QString());
    QCOMPARE(applet->WordProcessors(1)->toPlainText(), QString());
    QCOMPARE(w->currentRecord().Zoom, Database::NewDocument(1000).Zoom);
    QVERIFY(documentFiles().isEmpty());

    // Yes on a stored document: the stored text comes back.
    typeText(applet->WordProcessors(1), QStringLiteral("保存する文"));
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
    click(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::RecentTab));
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage), 0, 0);
    typeText(applet->WordProcessors(1), QStringLiteral("余計"));
    click(revert);
    QVERIFY(applet->WordProcessors(1)->toPlainText().contains(QStringLiteral("保存する文")));
    QVERIFY(!applet->WordProcessors(1)->toPlainText().contains(QStringLiteral("余計")));
}

void WorkspaceTest::deleteAsksFirst()
{
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
    QCOMPARE(documentFiles().size(), 1);
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage), 0, 0);
    TouchButton *remove = w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Delete);

    // The real question box: "いいえ" keeps the document open and on disk.
    w->setQuestionRoutine(&QuestionBox::ask);
    QString asked;
    const auto answerWith = [&asked](const char *buttonName) {
        QTimer::singleShot(0, [&asked, buttonName] {
            auto *box = qobject_cast<QuestionBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            asked = box->findChild<QLabel *>(QStringLiteral("QuestionText"))->text();
            QCOMPARE(box->yesButton()->caption(), QStringLiteral("はい"));
            QCOMPARE(box->noButton()->caption(), QStringLiteral("いいえ"));
            click(box->findChild<TouchButton *>(QString::fromLatin1(buttonName)));
        });
    };
    answerWith("QuestionNo");
    click(remove);
    QVERIFY(!asked.isEmpty());
    QCOMPARE(w->Document(), 10);
    QCOMPARE(documentFiles().size(), 1);

    answerWith("QuestionYes");
    click(remove);
    QVERIFY(documentFiles().isEmpty());
    QVERIFY(w->welcomeBox()->isVisible());
    QCOMPARE(w->welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage)->columnCount(), 0);
}

void WorkspaceTest::soundQueryRule()
{
    const auto suppressed = [](TouchButton *button) {
        qint16 suppress = 0;
        emit button->soundQuery(suppress);
        return suppress != 0;
    };
    TouchButton *music = w->Channels(5);
    TouchButton *help = w->Channels(3);
    TouchButton *tab = w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::RecentTab);
    TouchButton *save = w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save);

    Globals::MusicOn = false;
    QVERIFY(!suppressed(music)); // music is being switched on: it sounds
    QVERIFY(suppressed(help));
    QVERIFY(suppressed(tab));
    QVERIFY(suppressed(save));
    click(music);
    QVERIFY(Globals::MusicOn);
    QVERIFY(music->value());
    QVERIFY(suppressed(music)); // being switched off: silent
    QVERIFY(!suppressed(help));
    QVERIFY(!suppressed(tab));
    QVERIFY(!suppressed(save));

    // The skin sounds go by control name.
    QVERIFY(help->soundFile().endsWith(QStringLiteral("SKIN/1.WAV")));
    QVERIFY(tab->soundFile().endsWith(QStringLiteral("SKIN/2.WAV")));
    QVERIFY(save->soundFile().endsWith(QStringLiteral("SKIN/2.WAV")));
}

void WorkspaceTest::clockChecksOncePerMinute()
{
    ChimeClock *clock = w->clock();
    QDateTime now(QDate(2026, 11, 23), QTime(10, 0, 5));
    clock->setTimeSource([&now] { return now; });
    QSignalSpy beeps(clock, &ChimeClock::beep);
    const auto timeLines = [] { return spoken.count(QStringLiteral("What time is it now?")); };
    spoken.clear();

    Globals::MusicOn = true;
    Globals::GraphicOn = true;
    clock->tick();
    QCOMPARE(beeps.count(), 1);
    QCOMPARE(timeLines(), 1);
    now = now.addSecs(30); // same minute
    clock->tick();
    QCOMPARE(beeps.count(), 1);
    QCOMPARE(timeLines(), 1);

    const struct
    {
        int minute;
        bool beep;
        bool speak;
    } minutes[] = {{1, false, false}, {10, false, true}, {15, false, true}, {20, false, true}, {29, false, false},
                   {30, true, true},  {40, false, true}, {45, false, true}, {50, false, true}, {59, false, false}};
    for (const auto &m : minutes) {
        const int beepsBefore = int(beeps.count());
        const int linesBefore = timeLines();
        now.setTime(QTime(10, m.minute, 0));
        clock->tick();
        clock->tick();
        QCOMPARE(beeps.count() - beepsBefore, m.beep ? 1 : 0);
        QCOMPARE(timeLines() - linesBefore, m.speak ? 1 : 0);
    }

    // Each check has its own switch.
    Globals::MusicOn = false;
    now.setTime(QTime(11, 0, 0));
    clock->tick();
    QCOMPARE(beeps.count(), 2);
    QCOMPARE(timeLines(), 9);
    Globals::MusicOn = true;
    Globals::GraphicOn = false;
    now.setTime(QTime(11, 30, 0));
    clock->tick();
    QCOMPARE(beeps.count(), 3);
    QCOMPARE(timeLines(), 9);
}

void WorkspaceTest::hintsInTheInformationBar()
{
    TouchButton *settings = w->Channels(4);
    emit settings->pointerEntered();
    QVERIFY(!w->InfoBar()->isVisible()); // "How-to" is off
    Globals::HowToOn = true;
    emit settings->pointerEntered();
    QVERIFY(w->InfoBar()->isVisible());
    QCOMPARE(w->InfoBarTopic()->text(), QStringLiteral("設定"));
    QCOMPARE(w->InfoBarContent()->text(),
             QStringLiteral("クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。"));
    // A hint of two lines keeps its last words: it stays inside the bar's
    // frame (above its shadow) and its type shrinks until all of it fits.
    QCoreApplication::processEvents();
    const QLabel *content = w->InfoBarContent();
    QVERIFY(content->font().pixelSize() >= 17);
    QVERIFY(w->InfoBar()->contentsRect().contains(content->geometry()));
    const QRect room = content->contentsRect();
    const QRect needed = QFontMetrics(content->font()).boundingRect(room, Qt::TextWordWrap | int(content->alignment()), content->text());
    QVERIFY2(needed.height() <= room.height(), qPrintable(QStringLiteral("%1 > %2").arg(needed.height()).arg(room.height())));
    // A longer one takes smaller type; the next short one has its size back.
    const auto fits = [&] {
        QCoreApplication::processEvents();
        const QRect inside = content->contentsRect();
        return QFontMetrics(content->font()).boundingRect(inside, Qt::TextWordWrap | int(content->alignment()), content->text()).height()
               <= inside.height();
    };
    const int twoLines = content->font().pixelSize();
    w->HowTo(QStringLiteral("長いヒント"), content->text().repeated(3));
    QVERIFY(fits());
    QVERIFY(content->font().pixelSize() < twoLines);
    w->HowTo(QStringLiteral("設定"), QStringLiteral("短いヒント"));
    QVERIFY(fits());
    QCOMPARE(content->font().pixelSize(), twoLines);
    emit settings->pointerLeft();
    QCOMPARE(w->InfoBarContent()->text(), QString());

    TouchButton *search = w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::SearchButton);
    emit search->pointerEntered();
    QCOMPARE(w->InfoBarContent()->text(), QStringLiteral("クリックすると、キーワードに関連付けられた情報を検索します。"));
    QCOMPARE(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::BackButton)->tip(),
             QStringLiteral("クリックし続けると、前へ戻っていきます。"));
    QCOMPARE(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::ForwardButton)->tip(),
             QStringLiteral("クリックし続けると、後ろへ進んでいきます。"));
    QCOMPARE(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::CloseButton)->tip(),
             QStringLiteral("クリックすると、[ようこそ] ウィンドウを閉じます。"));
    QCOMPARE(w->welcomeBox()->keywordField()->prompt(), QStringLiteral("検索したいキーワードを入力してください"));

    // Clicking the how-to display hides the bar; the character only speaks
    // with "Graphic" on.
    spoken.clear();
    click(w->findChild<TouchButton *>(QStringLiteral("InfoBarHowToMonitor")));
    QVERIFY(!w->InfoBar()->isVisible());
    QVERIFY(!spoken.contains(QStringLiteral("Let's go home, please.")));
}

// The pad's hints go with the pointer like every other hint; a notice, such
// as why 変換 did nothing, shows even with hints off and outlives the pointer.
void WorkspaceTest::padHintsAndNotices()
{
    InfoDlg *dialog = w->infoDlg();
    click(w->Channels(9));
    Globals::HowToOn = true;
    QAbstractButton *lineBreak = dialog->MiniChannels[10];
    QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
    QApplication::sendEvent(lineBreak, &enter);
    QCOMPARE(w->InfoBarTopic()->text(), QStringLiteral("改行"));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(lineBreak, &leave);
    QCOMPARE(w->InfoBarContent()->text(), QString());

    Globals::HowToOn = false;
    w->InfoBar()->hide();
    if (IME::IMEStatus() >= 4 && IME::IMEStatus() <= 8)
        QSKIP("an input method is on in this session");
    QTest::mouseClick(dialog->MiniChannels[17], Qt::LeftButton);
    QVERIFY(w->InfoBar()->isVisible());
    QCOMPARE(w->InfoBarTopic()->text(), QStringLiteral("変換"));
    QCOMPARE(w->InfoBarContent()->text(),
             QStringLiteral("いまは漢字に変換できません。先に [漢字] をクリックしてから、かなを入力して [変換] をクリックしてください。"));
    QApplication::sendEvent(dialog->MiniChannels[17], &leave);
    QCOMPARE(w->InfoBarTopic()->text(), QStringLiteral("変換"));
}

// While the document's text has the focus, ↑ and ↓ move the caret a line and
// type nothing; in the title field they step between fields as before.
void WorkspaceTest::arrowKeysMoveTheCaretInADocument()
{
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    WordProcessor *box = applet->WordProcessors(1);
    click(w->Channels(9));
    InfoDlg *dialog = w->infoDlg();
    w->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(w));
    box->setFocus();
    box->setPlainText(QStringLiteral("一行目\n二行目\n三行目"));
    box->moveCursor(QTextCursor::End);
    QVERIFY(dialog->Options() & InfoDlg::ArrowKeys);
    // (The offscreen test platform would give the pad the focus on a real
    // click; the end-to-end journey clicks for real.)
    const auto line = [box] { return box->textCursor().block().blockNumber(); };
    dialog->MiniChannels_Click(6);
    QTRY_COMPARE(line(), 1);
    dialog->MiniChannels_Click(6);
    QTRY_COMPARE(line(), 0);
    dialog->MiniChannels_Click(7);
    QTRY_COMPARE(line(), 1);
    QCOMPARE(box->toPlainText(), QStringLiteral("一行目\n二行目\n三行目"));

    w->SideMenuBars(100)->titleField()->setFocus();
    QVERIFY(!(dialog->Options() & InfoDlg::ArrowKeys));
    box->setFocus();
    QVERIFY(dialog->Options() & InfoDlg::ArrowKeys);
}

void WorkspaceTest::nothingOpenLeadsBackToTheDocuments()
{
    TouchButton *back = w->backToStartButton();
    QVERIFY(!back->isVisible());
    click(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::CloseButton));
    QCOMPARE(w->Document(), 0);
    QVERIFY(back->isVisible());
    QCOMPARE(back->caption(), QStringLiteral("ドキュメントを選ぶ"));
    // It stands clear of the main buttons and the information bar.
    QVERIFY(back->geometry().top() > w->Channels(4)->geometry().bottom());
    QVERIFY(back->geometry().bottom() < w->InfoBar()->geometry().top());
    click(back);
    QVERIFY(w->welcomeBox()->isVisible());
    QVERIFY(!back->isVisible());
}

// Leaving a new document names it from the current second; its copy, made in
// the same second, takes the next free one instead of writing over it.
void WorkspaceTest::copyOfANeverSavedDocumentKeepsTheOriginal()
{
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    typeText(applet->WordProcessors(1), QStringLiteral("元の文"));
    w->SideMenuBars(100)->titleField()->setText(QStringLiteral("原本"));
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Copy));
    QStringList titles;
    for (const QString &name : documentFiles()) {
        const DocumentRecord record = Database::LoadDocument(SettingsStore::DocumentFolder() + u'/' + name, Database::Sequential);
        titles.append(record.DocumentTitle);
        // Each header carries the save time its file is named after.
        QCOMPARE(record.Timestamp.toString(u"yyyyMMddHHmmss") + QStringLiteral(".TXT"), name);
        QVERIFY(record.Pages.first().Items.first().Text.contains(QStringLiteral("\\'8c\\'b3")));
    }
    titles.sort();
    QCOMPARE(titles, (QStringList{QStringLiteral("(コピー)"), QStringLiteral("原本")}));
    // A copy of the copy in the same second is a third file.
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Copy));
    const QStringList files = documentFiles();
    QCOMPARE(files.size(), 3);
    QVERIFY(w->currentPath().endsWith(files.last()));

    // Deleting the copy leaves the others.
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Delete));
    QCOMPARE(documentFiles(), files.mid(0, 2));
}

// A document whose file cannot be read is not opened blank, so it is never
// saved blank over its file; the user is told in plain words.
void WorkspaceTest::documentThatCannotBeReadStaysClosed()
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.DocumentTitle = QStringLiteral("読めない");
    record.Timestamp = QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7));
    const QString path = Database::NewFileName(record.Timestamp);
    Database::SaveDocument(path, record, Database::Sequential);
    w->setDocument(Workspace::WelcomeView);
    QStringList told;
    w->setMessageRoutine([&told](QWidget *, const QString &message) { told.append(message); });

    // Gone between the listing and the click, then a folder where the file
    // was: neither can be read.
    for (const bool folder : {false, true}) {
        QVERIFY(QFile::remove(path));
        if (folder)
            QVERIFY(QDir().mkpath(path));
        click(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::RecentTab));
        clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage), 0, 0);
        QCOMPARE(told.size(), 1);
        QCOMPARE(told.first(), QStringLiteral("このドキュメントを開けませんでした。\nファイルが読み取れません。\nファイルはそのまま残してあります。"));
        QVERIFY(w->welcomeBox()->isVisible());
        click(w->Channels(2));
        QCOMPARE(QFileInfo(path).isDir(), folder);
        QCOMPARE(QFileInfo::exists(path), folder);
        told.clear();
        if (!folder) {
            cleanup();
            init();
            w->setMessageRoutine([&told](QWidget *, const QString &message) { told.append(message); });
            Database::SaveDocument(path, record, Database::Sequential);
            w->setDocument(Workspace::WelcomeView);
        }
    }
}

// Reopened, a centred and bulleted document lights 中央揃え and 行頭に記号
// before anything is clicked.
void WorkspaceTest::reopenedDocumentShowsItsFormatAtOnce()
{
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    typeText(applet->WordProcessors(1), QStringLiteral("中央の行"));
    SideMenuBar *bar = w->SideMenuBars(200);
    click(bar->SideMenuBarMiniChannels(SideMenuBar::AlignCenter));
    click(bar->SideMenuBarMiniChannels(SideMenuBar::Bullet));
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
    // As a plain document left them.
    bar->SideMenuBarMiniChannels(SideMenuBar::AlignLeft)->setValue(true);
    bar->SideMenuBarMiniChannels(SideMenuBar::AlignCenter)->setValue(false);
    bar->SideMenuBarMiniChannels(SideMenuBar::Bullet)->setValue(false);

    click(w->welcomeBox()->MenuBoxMiniChannels(WelcomeBox::RecentTab));
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage), 0, 0);
    QCOMPARE(w->Document(), 10);
    QVERIFY(!bar->SideMenuBarMiniChannels(SideMenuBar::AlignLeft)->value());
    QVERIFY(bar->SideMenuBarMiniChannels(SideMenuBar::AlignCenter)->value());
    QVERIFY(!bar->SideMenuBarMiniChannels(SideMenuBar::AlignRight)->value());
    QVERIFY(bar->SideMenuBarMiniChannels(SideMenuBar::Bullet)->value());
}

// A save that fails (the disk full) never drops the text: the document stays
// on the screen, the user is told, and the program does not quit with it.
void WorkspaceTest::failedSaveKeepsTheDocumentOnTheScreen()
{
    QStringList told;
    w->setMessageRoutine([&told](QWidget *, const QString &message) { told.append(message); });
    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    auto *applet = qobject_cast<DatabaseApplet *>(w->activeApplet());
    typeText(applet->WordProcessors(1), QStringLiteral("消えてはいけない文"));
    w->SideMenuBars(100)->titleField()->setText(QStringLiteral("大事"));
    const QString notSaved = QStringLiteral("このドキュメントを保存できませんでした。\n書いた文章は画面に残してあります。\n"
                                            "ディスクの空きを確かめてから、\nもう一度 [保存して閉じる] をクリックしてください。");
    {
        FileSizeLimit full(10);
        click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
        QCOMPARE(told, QStringList{notSaved});
        QCOMPARE(w->Document(), 10);
        QVERIFY(!w->welcomeBox()->isVisible());
        QCOMPARE(applet->WordProcessors(1)->toPlainText(), QStringLiteral("消えてはいけない文"));
        QCOMPARE(w->SideMenuBars(100)->titleField()->text(), QStringLiteral("大事"));
        QVERIFY(w->currentPath().isEmpty());
        // Neither a copy nor quitting goes on without it.
        click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Copy));
        click(w->Channels(2));
        QCOMPARE(told.size(), 3);
        QVERIFY(w->isVisible());
        QCOMPARE(w->Document(), 10);
        QCOMPARE(w->SideMenuBars(100)->titleField()->text(), QStringLiteral("大事"));
    }
    QVERIFY(documentFiles().isEmpty());

    // With room again the same click saves it.
    click(w->SideMenuBars(100)->SideMenuBarMiniChannels(SideMenuBar::Save));
    QCOMPARE(told.size(), 3);
    QVERIFY(w->welcomeBox()->isVisible());
    QCOMPARE(documentFiles().size(), 1);
    const DocumentRecord saved = Database::LoadDocument(SettingsStore::DocumentFolder() + u'/' + documentFiles().first(),
                                                        Database::Sequential);
    QCOMPARE(saved.DocumentTitle, QStringLiteral("大事"));
    QVERIFY(saved.Pages.first().Items.first().Text.contains(QStringLiteral("\\'8f\\'c1")));
}

void WorkspaceTest::systemAndPrinterMenus()
{
    QMenu *menu = w->systemMenu();
    QStringList captions;
    for (QAction *action : menu->actions()) {
        if (!action->isSeparator())
            captions.append(action->text());
    }
    QCOMPARE(captions, (QStringList{"ボリューム", "画面...", "既定のプリンタ", "プリンタ...", "フォント", "日付と時刻...",
                                    "インターネット オプション..."}));
    QMenu *printers = menu->findChild<QMenu *>(QStringLiteral("PrinterMenus"));
    QVERIFY(printers);
    QCOMPARE(printers->title(), QStringLiteral("既定のプリンタ"));
    QCOMPARE(printers->actions().first()->text(), QStringLiteral("(なし)"));
    // The window's own menu opens where it is clicked with the right button.
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(600, 700), w->mapToGlobal(QPoint(600, 700)));
    QApplication::sendEvent(w, &event);
    QTRY_VERIFY(menu->isVisible());
    menu->close();
}

void WorkspaceTest::closingSavesAndSpeaks()
{
    Globals::GraphicOn = true;
    spoken.clear();
    w->Start();
    QCOMPARE(spoken, QStringList{QStringLiteral("What's the date today?")});

    clickCell(w->welcomeBox()->MenuBoxFigures(WelcomeBox::TemplatesPage), 0, 0);
    w->SideMenuBars(100)->titleField()->setText(QStringLiteral("閉じる前"));

    // A closing that is not one of the four known ones is refused.
    spoken.clear();
    QVERIFY(!w->QueryUnload(Workspace::OtherClose));
    QCOMPARE(spoken, QStringList{QStringLiteral("Sorry.")});
    QCOMPARE(w->Document(), 10);

    QSignalSpy unloaded(w, &Workspace::unloaded);
    spoken.clear();
    click(w->Channels(2));
    QCOMPARE(unloaded.count(), 1);
    QCOMPARE(spoken, (QStringList{QStringLiteral("Thank you."), QStringLiteral("Off")}));
    const QStringList files = documentFiles();
    QCOMPARE(files.size(), 1);
    QCOMPARE(Database::LoadDocument(SettingsStore::DocumentFolder() + u'/' + files.first(), 2).DocumentTitle,
             QStringLiteral("閉じる前"));
    // Settings are written back at unload.
    QVERIFY(QFile::exists(SettingsStore::filePath()));
}

void WorkspaceTest::busExecute_data()
{
    QTest::addColumn<int>("unused");
    QTest::newRow("[QUIT]") << 0;
    QTest::newRow("[X]") << 0;
}

void WorkspaceTest::busExecute()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        QSKIP("no session bus");
    QDBusInterface lantern(bus.baseService(), QStringLiteral("/Lantern"), QStringLiteral("jp.fernwick.Lantern"), bus);
    QSignalSpy unloaded(w, &Workspace::unloaded);
    QDBusReply<bool> refused = lantern.call(QStringLiteral("Execute"), QStringLiteral("[FOO]"));
    QVERIFY(refused.isValid());
    QVERIFY(!refused.value());
    QDBusReply<bool> lower = lantern.call(QStringLiteral("Execute"), QStringLiteral("[quit]"));
    QVERIFY(!lower.value());
    QTest::qWait(50);
    QCOMPARE(unloaded.count(), 0);

    const QString command = QString::fromLatin1(QTest::currentDataTag());
    QDBusReply<bool> quit = lantern.call(QStringLiteral("Execute"), command);
    QVERIFY(quit.isValid());
    QVERIFY(quit.value());
    QTRY_COMPARE(unloaded.count(), 1);
    QVERIFY(!w->isVisible());
}

// The window links the program's private-character font once per run: a run
// that ended without unloading left the "Runtime" flag set, and the next one
// leaves the link as it is. Unloading takes the link back.
void WorkspaceTest::fontLinkGuard()
{
    const auto linkedFont = [] {
        Registry registry;
        registry.RootKey = Registry::HKEY_CURRENT_USER;
        QString key = QString::fromLatin1(PrivateCharacters::Key);
        registry.Load(key);
        const QString font = registry.Data(QString::fromLatin1(PrivateCharacters::Current)).toString();
        registry.Unload();
        return font;
    };
    const QString ours = PrivateCharacters::fontPath(QCoreApplication::applicationDirPath());
    delete w;
    w = nullptr;
    QCOMPARE(SettingsStore::Runtime(), false);
    QVERIFY(linkedFont() != ours);

    for (const bool leftOver : {false, true}) {
        SettingsStore::SetRuntime(leftOver);
        Workspace window;
        window.resize(1024, 768);
        window.show();
        window.Start();
        QTRY_VERIFY(!window.waitingForFirstPicture());
        QCOMPARE(SettingsStore::Runtime(), true);
        // Linked now, or left as the last run left it (not linked here).
        QCOMPARE(linkedFont() == ours, !leftOver);
        window.closeWithMode(Workspace::ByCode);
        QCOMPARE(SettingsStore::Runtime(), false);
        QVERIFY(linkedFont() != ours);
    }
}

QTEST_MAIN(WorkspaceTest)
#include "test_workspace.moc"
