#include "app/ControlScaler.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchPanel.h"
#include "platform/touch/TouchTheme.h"

#include <QAccessible>
#include <QDataStream>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// A tenth of a second of quiet, 16-bit mono PCM: enough to be a real sound file.
QString writeWave(const QString &path)
{
    const quint32 samples = 800;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + samples * 2);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(8000) << quint32(16000) << quint16(2) << quint16(16);
    out.writeRawData("data", 4);
    out << quint32(samples * 2);
    for (quint32 i = 0; i < samples; ++i)
        out << qint16(0);
    return path;
}

QString accessibleText(QWidget *widget, QAccessible::Text kind)
{
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
    return face ? face->text(kind) : QStringLiteral("<no interface>");
}

} // namespace

class TestTouch : public QObject
{
    Q_OBJECT

private slots:
    void buttonClickIsMomentaryUnlessItToggles();
    void buttonSoundAsksFirstAndCanBeSuppressed();
    void buttonRepeatsWhileHeldWhenAsked();
    void buttonReportsPointerForHints();
    void captionsGrowTheButtonInsteadOfBeingCut();
    void controlsAreNamedForAssistiveTechnology();
    void panelDragsByItsOwnSurfaceInsideItsParent();
    void panelAsksForItsTuneWhileShownOrPlaying();
    void editShowsItsPromptWhileEmpty();
    void editKeepsTheImeModeTheAppletAsksFor();
};

void TestTouch::buttonClickIsMomentaryUnlessItToggles()
{
    TouchButton push(QStringLiteral("印刷"));
    push.resize(push.sizeHint());
    push.show();
    QSignalSpy clicked(&push, &QAbstractButton::clicked);

    QTest::mousePress(&push, Qt::LeftButton);
    QVERIFY(push.isDown());
    QTest::mouseRelease(&push, Qt::LeftButton);
    QVERIFY(!push.isDown());
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(push.value(), false);
    // A release just past the edge still clicks; one well outside does not.
    QTest::mousePress(&push, Qt::LeftButton);
    QTest::mouseRelease(&push, Qt::LeftButton, {}, QPoint(push.width() + 3, 5));
    QCOMPARE(clicked.count(), 2);
    QTest::mousePress(&push, Qt::LeftButton);
    QTest::mouseRelease(&push, Qt::LeftButton, {}, QPoint(push.width() + 40, 5));
    QCOMPARE(clicked.count(), 2);

    // A tab set pressed by its owner stays pressed through a click.
    push.setValue(true);
    QTest::mouseClick(&push, Qt::LeftButton);
    QCOMPARE(push.value(), true);

    TouchButton check(QStringLiteral("ポイントした場所のヒントを表示する"));
    check.setToggles(true);
    check.resize(check.sizeHint());
    check.show();
    QSignalSpy changed(&check, &TouchButton::valueChanged);
    QTest::mouseClick(&check, Qt::LeftButton);
    QCOMPARE(check.value(), true);
    QTest::mouseClick(&check, Qt::LeftButton);
    QCOMPARE(check.value(), false);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(changed.at(0).at(0).toBool(), true);
    QCOMPARE(changed.at(1).at(0).toBool(), false);
}

void TestTouch::buttonSoundAsksFirstAndCanBeSuppressed()
{
    QTemporaryDir folder;
    const QString wave = writeWave(folder.filePath(QStringLiteral("1.WAV")));
    QVERIFY(!wave.isEmpty());

    TouchButton button(QStringLiteral("設定"));
    button.setSoundFile(wave);
    button.resize(button.sizeHint());
    button.show();

    QStringList events;
    qint16 answer = 0;
    connect(&button, &TouchButton::soundQuery, this, [&](qint16 &suppress) {
        events << QStringLiteral("query");
        suppress = answer;
    });
    connect(&button, &TouchButton::soundPlayed, this, [&](const QString &path) {
        events << QStringLiteral("played ") + QFileInfo(path).fileName();
    });

    // The sound answers the press itself, not the release.
    QTest::mousePress(&button, Qt::LeftButton);
    QCOMPARE(events, QStringList({QStringLiteral("query"), QStringLiteral("played 1.WAV")}));
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(events.size(), 2);

    // Music off: the owner answers with the complement of false, -1.
    events.clear();
    answer = -1;
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(events, QStringList({QStringLiteral("query")}));

    // Any non-zero answer silences it, not only -1.
    events.clear();
    answer = 1;
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(events, QStringList({QStringLiteral("query")}));

    // A skin without the file: still asked, nothing played, nothing broken.
    events.clear();
    answer = 0;
    button.setSoundFile(folder.filePath(QStringLiteral("missing.WAV")));
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(events, QStringList({QStringLiteral("query")}));
}

void TestTouch::buttonRepeatsWhileHeldWhenAsked()
{
    QTemporaryDir folder;
    TouchButton down(QStringLiteral("下へ"));
    down.setSoundFile(writeWave(folder.filePath(QStringLiteral("2.WAV"))));
    down.setAutoRepeat(true);
    down.setAutoRepeatDelay(100);
    down.setAutoRepeatInterval(40);
    down.resize(down.sizeHint());
    down.show();
    QSignalSpy clicked(&down, &QAbstractButton::clicked);
    QSignalSpy sounded(&down, &TouchButton::soundPlayed);

    QTest::mousePress(&down, Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(clicked.count() >= 3, 3000);
    QTest::mouseRelease(&down, Qt::LeftButton);
    const int whileHeld = clicked.count();
    QTest::qWait(200);
    // Letting go stops the repeat; the click sound came once, for the press.
    QVERIFY(clicked.count() <= whileHeld + 1);
    QCOMPARE(sounded.count(), 1);

    TouchButton once(QStringLiteral("削除"));
    once.resize(once.sizeHint());
    once.show();
    QSignalSpy single(&once, &QAbstractButton::clicked);
    QTest::mousePress(&once, Qt::LeftButton);
    QTest::qWait(300);
    QTest::mouseRelease(&once, Qt::LeftButton);
    QCOMPARE(single.count(), 1);
}

void TestTouch::buttonReportsPointerForHints()
{
    QWidget window;
    window.resize(400, 200);
    auto *button = new TouchButton(QStringLiteral("ヘルプ"), &window);
    button->setGeometry(20, 20, 160, 80);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy entered(button, &TouchButton::pointerEntered);
    QSignalSpy left(button, &TouchButton::pointerLeft);

    QTest::mouseMove(&window, QPoint(300, 150));
    QTest::mouseMove(button, QPoint(50, 30));
    QTRY_COMPARE(entered.count(), 1);
    QCOMPARE(left.count(), 0);
    QTest::mouseMove(&window, QPoint(300, 150));
    QTRY_COMPARE(left.count(), 1);
}

void TestTouch::captionsGrowTheButtonInsteadOfBeingCut()
{
    const QString longCaption = QStringLiteral("コンピュータの電源をつけると起動し 終了と同時に電源も切る");
    TouchButton button(longCaption);
    const QSize hint = button.sizeHint();
    const QFontMetrics metrics(button.font());
    // Too long for one line: it wraps to a button about ten characters wide.
    QVERIFY(hint.width() < metrics.horizontalAdvance(longCaption));
    QVERIFY(button.heightForWidth(hint.width()) > button.heightForWidth(metrics.horizontalAdvance(longCaption) + 100));
    QVERIFY(hint.height() >= 2 * metrics.height());

    // Short captions still give a target big enough for an unsteady hand.
    TouchButton tiny(QStringLiteral("×"));
    QVERIFY(tiny.sizeHint().width() >= 56);
    QVERIFY(tiny.sizeHint().height() >= 52);

    // Scaled to 200 %, the button asks for more room with its bigger type.
    TouchButton scaled(QStringLiteral("文字入力"));
    const QSize before = scaled.sizeHint();
    ControlScaler::scale(&scaled, 200);
    QVERIFY(scaled.sizeHint().width() > before.width() * 3 / 2);
    QVERIFY(scaled.sizeHint().height() > before.height() * 3 / 2);

    // Squeezed into a box fixed by a layout, the type shrinks until it fits.
    const QRect box(0, 0, 90, 60);
    const int flags = Qt::AlignCenter | Qt::TextWordWrap;
    const QFont fitted = TouchTheme::fittedFont(TouchTheme::captionFont(24), longCaption, box, flags);
    QVERIFY(fitted.pixelSize() < 24);
    const QRect needed = QFontMetrics(fitted).boundingRect(box, flags, longCaption);
    QVERIFY2(needed.height() <= box.height() || fitted.pixelSize() == TouchTheme::smallestPixelSize(),
             qPrintable(QString::number(fitted.pixelSize())));
    QCOMPARE(TouchTheme::fittedFont(TouchTheme::captionFont(24), QStringLiteral("終了"), box, flags).pixelSize(), 24);
}

void TestTouch::controlsAreNamedForAssistiveTechnology()
{
    const QString tip = QStringLiteral("クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。");
    TouchButton button(QStringLiteral("設定"));
    button.setTip(tip);
    QCOMPARE(button.accessibleName(), QStringLiteral("設定"));
    QCOMPARE(button.accessibleDescription(), tip);
    QCOMPARE(accessibleText(&button, QAccessible::Name), QStringLiteral("設定"));
    QCOMPARE(accessibleText(&button, QAccessible::Description), tip);
    button.setCaption(QStringLiteral("電卓"));
    QCOMPARE(accessibleText(&button, QAccessible::Name), QStringLiteral("電卓"));

    // A plain button reads as a push button; pressed while its value is on.
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(&button);
    QCOMPARE(face->role(), QAccessible::Button);
    QVERIFY(!face->state().pressed);
    QVERIFY(!face->state().checkable);
    button.setValue(true);
    QVERIFY(face->state().pressed);
    // Pressing it through the accessibility interface clicks it.
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicked.count(), 1);

    // A check box reads as one, ticked or not.
    TouchButton check(QStringLiteral("ポイントした場所のヒントを表示する"));
    check.setToggles(true);
    QAccessibleInterface *box = QAccessible::queryAccessibleInterface(&check);
    QCOMPARE(box->role(), QAccessible::CheckBox);
    QVERIFY(box->state().checkable);
    QVERIFY(!box->state().checked);
    box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(check.value());
    QVERIFY(box->state().checked);

    TouchPanel panel(QStringLiteral("スタート"));
    panel.setDraggable(true);
    QCOMPARE(accessibleText(&panel, QAccessible::Name), QStringLiteral("スタート"));
    QCOMPARE(panel.tip(), QStringLiteral("ドラッグしながら移動できます"));
    QCOMPARE(accessibleText(&panel, QAccessible::Description), QStringLiteral("ドラッグしながら移動できます"));
    // A tip given by the owner is not replaced by the drag hint.
    TouchPanel page;
    page.setTip(QStringLiteral("クリックして選択できます"));
    page.setDraggable(true);
    QCOMPARE(page.tip(), QStringLiteral("クリックして選択できます"));

    TouchEdit edit;
    edit.setPrompt(QStringLiteral("タイトルを入力してください"));
    QCOMPARE(accessibleText(&edit, QAccessible::Name), QStringLiteral("タイトルを入力してください"));
    edit.setCaption(QStringLiteral("タイトル"));
    edit.setTip(QStringLiteral("ここにタイトルを書きます"));
    QCOMPARE(accessibleText(&edit, QAccessible::Name), QStringLiteral("タイトル"));
    QCOMPARE(accessibleText(&edit, QAccessible::Description), QStringLiteral("ここにタイトルを書きます"));
}

void TestTouch::panelDragsByItsOwnSurfaceInsideItsParent()
{
    QWidget desk;
    desk.resize(800, 600);
    auto *panel = new TouchPanel(QStringLiteral("スタート"), &desk);
    panel->setGeometry(50, 40, 240, 180);
    panel->setDraggable(true);
    auto *button = new TouchButton(QStringLiteral("閉じる"), panel);
    button->setGeometry(20, 100, 100, 60);
    auto *still = new TouchPanel(QStringLiteral("情報"), &desk);
    still->setGeometry(400, 300, 200, 120);
    desk.show();
    QVERIFY(QTest::qWaitForWindowExposed(&desk));
    QSignalSpy finished(panel, &TouchPanel::dragFinished);

    QTest::mousePress(panel, Qt::LeftButton, {}, QPoint(30, 20));
    QTest::mouseMove(panel, QPoint(80, 20));
    QTest::mouseMove(panel, QPoint(130 - 50, 20)); // the panel has followed by 50 already
    QTest::mouseRelease(panel, Qt::LeftButton, {}, QPoint(30, 20));
    QCOMPARE(panel->pos(), QPoint(150, 40));
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toPoint(), QPoint(50, 40));
    QCOMPARE(finished.at(0).at(1).toPoint(), QPoint(150, 40));

    // A trembling click does not nudge it.
    QTest::mousePress(panel, Qt::LeftButton, {}, QPoint(30, 20));
    QTest::mouseMove(panel, QPoint(32, 21));
    QTest::mouseRelease(panel, Qt::LeftButton, {}, QPoint(32, 21));
    QCOMPARE(panel->pos(), QPoint(150, 40));
    QCOMPARE(finished.count(), 1);

    // Dragged far past the corner, it stops at the parent's edge.
    QTest::mousePress(panel, Qt::LeftButton, {}, QPoint(30, 20));
    QTest::mouseMove(panel, QPoint(30 + 2000, 20 + 2000));
    QTest::mouseRelease(panel, Qt::LeftButton);
    QCOMPARE(panel->pos(), QPoint(800 - 240, 600 - 180));

    // Pressing its button clicks the button and leaves the panel in place.
    const QPoint before = panel->pos();
    QSignalSpy clicked(button, &QAbstractButton::clicked);
    QTest::mousePress(button, Qt::LeftButton, {}, QPoint(10, 10));
    QTest::mouseMove(button, QPoint(60, 40));
    QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(10, 10));
    QCOMPARE(panel->pos(), before);
    QCOMPARE(clicked.count(), 1);

    // A panel that is not draggable stays where it was put.
    QTest::mousePress(still, Qt::LeftButton, {}, QPoint(30, 20));
    QTest::mouseMove(still, QPoint(130, 70));
    QTest::mouseRelease(still, Qt::LeftButton);
    QCOMPARE(still->pos(), QPoint(400, 300));
}

void TestTouch::panelAsksForItsTuneWhileShownOrPlaying()
{
    TouchPanel midi;
    midi.setMusicFile(QStringLiteral("/skin/2.MIDI"));
    QSignalSpy started(&midi, &TouchPanel::musicStarted);
    QSignalSpy stopped(&midi, &TouchPanel::musicStopped);

    midi.show();
    QCOMPARE(started.count(), 1);
    QCOMPARE(started.at(0).at(0).toString(), QStringLiteral("/skin/2.MIDI"));
    QVERIFY(midi.isSoundPlaying());
    midi.setSoundPlaying(true);
    QCOMPARE(started.count(), 1);
    midi.hide();
    QCOMPARE(stopped.count(), 1);
    QVERIFY(!midi.isSoundPlaying());

    // The side bar carries only the state: it turns on and off without a tune.
    TouchPanel side;
    QSignalSpy state(&side, &TouchPanel::soundPlayingChanged);
    QSignalSpy sideStarted(&side, &TouchPanel::musicStarted);
    side.setSoundPlaying(true);
    side.setSoundPlaying(false);
    QCOMPARE(state.count(), 2);
    QCOMPARE(sideStarted.count(), 0);
    QVERIFY(side.property("soundPlaying").isValid());
}

void TestTouch::editShowsItsPromptWhileEmpty()
{
    TouchEdit prompted;
    prompted.setPrompt(QStringLiteral("タイトルを入力してください"));
    prompted.resize(480, prompted.sizeHint().height());
    TouchEdit bare;
    bare.resize(prompted.size());
    QCOMPARE(prompted.prompt(), QStringLiteral("タイトルを入力してください"));

    // The prompt is drawn in its own soft colour and leaves with the first letter.
    auto promptPixels = [](const QImage &image) {
        int count = 0;
        const QColor prompt = TouchTheme::promptInk();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                if (qAbs(c.red() - prompt.red()) < 8 && qAbs(c.green() - prompt.green()) < 8
                    && qAbs(c.blue() - prompt.blue()) < 8)
                    ++count;
            }
        return count;
    };
    QVERIFY(promptPixels(prompted.grab().toImage()) > 40);
    QCOMPARE(promptPixels(bare.grab().toImage()), 0);
    prompted.setText(QStringLiteral("あ"));
    QVERIFY(promptPixels(prompted.grab().toImage()) < 10);

    // The prompt fits in the field the size hint asks for.
    prompted.clear();
    QVERIFY(prompted.sizeHint().width() > QFontMetrics(prompted.font()).horizontalAdvance(prompted.prompt()));
    // While the input method composes the first word, the prompt steps aside.
    QInputMethodEvent composing(QStringLiteral("にほん"), {});
    QCoreApplication::sendEvent(&prompted, &composing);
    QVERIFY(promptPixels(prompted.grab().toImage()) < 10);
    QInputMethodEvent cancelled(QString(), {});
    QCoreApplication::sendEvent(&prompted, &cancelled);
    QVERIFY(promptPixels(prompted.grab().toImage()) > 40);

    // Scaled with the rest of the window, the field grows with its type.
    TouchEdit scaled;
    scaled.setPrompt(QStringLiteral("タイトルを入力してください"));
    const QSize before = scaled.sizeHint();
    ControlScaler::scale(&scaled, 200);
    QCOMPARE(scaled.font().pixelSize(), 48);
    QVERIFY(scaled.sizeHint().height() > before.height() * 3 / 2);
    QVERIFY(scaled.sizeHint().width() > before.width() * 3 / 2);

    // A field too narrow for its prompt still shows it, in smaller type:
    // beside the same field without one, many pixels differ. (Small type has
    // strokes too thin to count pixels of the prompt's very colour.)
    TouchEdit narrow;
    narrow.setPrompt(QStringLiteral("タイトルを入力してください"));
    narrow.resize(200, narrow.sizeHint().height());
    TouchEdit empty;
    empty.resize(narrow.size());
    const QImage with = narrow.grab().toImage();
    const QImage without = empty.grab().toImage();
    int differing = 0;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x)
            differing += with.pixel(x, y) != without.pixel(x, y);
    QVERIFY2(differing > 200, qPrintable(QString::number(differing)));
}

void TestTouch::editKeepsTheImeModeTheAppletAsksFor()
{
    TouchEdit edit;
    QSignalSpy changed(&edit, &TouchEdit::imeModeChanged);
    QCOMPARE(edit.imeMode(), 0);
    // The applet sets it by name, as it does on any edit of the library.
    QVERIFY(edit.setProperty("IMEMode", 4));
    QCOMPARE(edit.imeMode(), 4);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), 4);
    QVERIFY(edit.testAttribute(Qt::WA_InputMethodEnabled));
    edit.setImeMode(4);
    QCOMPARE(changed.count(), 1);

    edit.setImeMode(TouchEdit::ImeDisable);
    QVERIFY(!edit.testAttribute(Qt::WA_InputMethodEnabled));
    edit.setImeMode(TouchEdit::ImeAlpha);
    QVERIFY(edit.testAttribute(Qt::WA_InputMethodEnabled));
    QVERIFY(edit.inputMethodHints() & Qt::ImhPreferLatin);
}

QTEST_MAIN(TestTouch)
#include "test_touch.moc"
