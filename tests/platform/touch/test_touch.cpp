#include "app/ControlScaler.h"
#include "platform/Beeper.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchPanel.h"
#include "platform/touch/TouchTheme.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

template <class Widget> Widget &shown(Widget &widget)
{
    widget.resize(widget.sizeHint());
    widget.show();
    return widget;
}

// A real sound file for a button to play.
QString writeWave(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(Beeper::chimeWave()) > 0 ? path : QString();
}

QList<QList<QVariant>> calls(const QSignalSpy &spy)
{
    return spy;
}

QAccessibleInterface *face(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget);
}

// Pixels within a few steps of the prompt's own soft colour.
int promptPixels(TouchEdit &edit)
{
    const QImage image = edit.grab().toImage();
    const QColor prompt = TouchTheme::promptInk();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            count += qAbs(c.red() - prompt.red()) < 8 && qAbs(c.green() - prompt.green()) < 8
                     && qAbs(c.blue() - prompt.blue()) < 8;
        }
    return count;
}

const QString titlePrompt = QStringLiteral("タイトルを入力してください");

} // namespace

class TestTouch : public QObject
{
    Q_OBJECT

private slots:
    void buttonClickIsMomentaryUnlessItToggles()
    {
        TouchButton push(QStringLiteral("印刷"));
        QSignalSpy clicked(&shown(push), &QAbstractButton::clicked);
        QTest::mousePress(&push, Qt::LeftButton);
        QVERIFY(push.isDown());
        QTest::mouseRelease(&push, Qt::LeftButton);
        QVERIFY(!push.isDown());
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(push.value(), false);
        // A release just past the edge still clicks; one well outside does not.
        for (const auto &[past, clicks] : {std::pair{3, 2}, std::pair{40, 2}}) {
            QTest::mousePress(&push, Qt::LeftButton);
            QTest::mouseRelease(&push, Qt::LeftButton, {}, QPoint(push.width() + past, 5));
            QCOMPARE(clicked.count(), clicks);
        }
        // A tab set pressed by its owner stays pressed through a click.
        push.setValue(true);
        QTest::mouseClick(&push, Qt::LeftButton);
        QCOMPARE(push.value(), true);

        TouchButton check(QStringLiteral("ポイントした場所のヒントを表示する"));
        check.setToggles(true);
        QSignalSpy changed(&shown(check), &TouchButton::valueChanged);
        QTest::mouseClick(&check, Qt::LeftButton);
        QTest::mouseClick(&check, Qt::LeftButton);
        QCOMPARE(calls(changed), (QList<QList<QVariant>>{{true}, {false}}));
        QCOMPARE(check.value(), false);
    }

    // Before it sounds, a button asks its owner for a 16-bit suppress flag.
    void buttonSoundAsksFirst_data()
    {
        QTest::addColumn<qint16>("suppress");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("events");
        const QStringList asked{QStringLiteral("query")};
        QTest::newRow("music on") << qint16(0) << "1.WAV" << (asked + QStringList{QStringLiteral("played 1.WAV")});
        QTest::newRow("music off: the complement of false") << qint16(-1) << "1.WAV" << asked;
        QTest::newRow("any non-zero flag") << qint16(1) << "1.WAV" << asked;
        QTest::newRow("no such file in the skin") << qint16(0) << "missing.WAV" << asked;
    }

    void buttonSoundAsksFirst()
    {
        QFETCH(qint16, suppress);
        QFETCH(QString, file);
        QFETCH(QStringList, events);
        QTemporaryDir folder;
        QVERIFY(!writeWave(folder.filePath(QStringLiteral("1.WAV"))).isEmpty());
        TouchButton button(QStringLiteral("設定"));
        button.setSoundFile(folder.filePath(file));
        shown(button);
        QStringList seen;
        connect(&button, &TouchButton::soundQuery, this, [&](qint16 &flag) { seen << QStringLiteral("query"); flag = suppress; });
        connect(&button, &TouchButton::soundPlayed, this,
                [&](const QString &path) { seen << QStringLiteral("played ") + QFileInfo(path).fileName(); });
        // The sound answers the press itself, not the release.
        QTest::mousePress(&button, Qt::LeftButton);
        QCOMPARE(seen, events);
        QTest::mouseRelease(&button, Qt::LeftButton);
        QCOMPARE(seen, events);
    }

    void buttonRepeatsWhileHeldWhenAsked()
    {
        QTemporaryDir folder;
        TouchButton down(QStringLiteral("下へ"));
        down.setSoundFile(writeWave(folder.filePath(QStringLiteral("2.WAV"))));
        down.setAutoRepeat(true);
        down.setAutoRepeatDelay(100);
        down.setAutoRepeatInterval(40);
        QSignalSpy clicked(&shown(down), &QAbstractButton::clicked);
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
        QSignalSpy single(&shown(once), &QAbstractButton::clicked);
        QTest::mousePress(&once, Qt::LeftButton);
        QTest::qWait(300);
        QTest::mouseRelease(&once, Qt::LeftButton);
        QCOMPARE(single.count(), 1);
    }

    void buttonReportsPointerForHints()
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

    void captionsGrowTheButtonInsteadOfBeingCut()
    {
        const QString longCaption = QStringLiteral("コンピュータの電源をつけると起動し 終了と同時に電源も切る");
        TouchButton button(longCaption);
        const QSize hint = button.sizeHint();
        const int oneLine = QFontMetrics(button.font()).horizontalAdvance(longCaption);
        // Too long for one line: it wraps to a narrower, taller button.
        QVERIFY(hint.width() < oneLine);
        QVERIFY(button.heightForWidth(hint.width()) > button.heightForWidth(oneLine + 100));
        QVERIFY(hint.height() >= 2 * QFontMetrics(button.font()).height());
        // Short captions still give a target big enough for an unsteady hand.
        QVERIFY(TouchButton(QStringLiteral("×")).sizeHint().width() >= 56);
        QVERIFY(TouchButton(QStringLiteral("×")).sizeHint().height() >= 52);

        // Scaled to 200 %, button and edit ask for more room with their bigger type.
        TouchButton scaled(QStringLiteral("文字入力"));
        TouchEdit edit;
        edit.setPrompt(titlePrompt);
        for (QWidget *widget : {static_cast<QWidget *>(&scaled), static_cast<QWidget *>(&edit)}) {
            const QSize before = widget->sizeHint();
            ControlScaler::scale(widget, 200);
            QVERIFY(widget->sizeHint().width() > before.width() * 3 / 2);
            QVERIFY(widget->sizeHint().height() > before.height() * 3 / 2);
        }
        QCOMPARE(edit.font().pixelSize(), 48);

        // Squeezed into a box fixed by a layout, the type shrinks until it fits.
        const QRect box(0, 0, 90, 60);
        const int flags = Qt::AlignCenter | Qt::TextWordWrap;
        const QFont fitted = TouchTheme::fittedFont(TouchTheme::captionFont(24), longCaption, box, flags);
        QVERIFY(fitted.pixelSize() < 24);
        QVERIFY2(QFontMetrics(fitted).boundingRect(box, flags, longCaption).height() <= box.height()
                     || fitted.pixelSize() == TouchTheme::smallestPixelSize(),
                 qPrintable(QString::number(fitted.pixelSize())));
        QCOMPARE(TouchTheme::fittedFont(TouchTheme::captionFont(24), QStringLiteral("終了"), box, flags).pixelSize(), 24);
    }

    void controlsAreNamedForAssistiveTechnology()
    {
        const QString tip = QStringLiteral("クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。");
        TouchButton button(QStringLiteral("設定"));
        button.setTip(tip);
        QCOMPARE(button.accessibleName(), QStringLiteral("設定"));
        QCOMPARE(face(&button)->text(QAccessible::Description), tip);
        button.setCaption(QStringLiteral("電卓"));
        QCOMPARE(face(&button)->text(QAccessible::Name), QStringLiteral("電卓"));
        // A plain button reads as a push button, pressed while its value is on,
        // and pressing it through the interface clicks it.
        QCOMPARE(face(&button)->role(), QAccessible::Button);
        QVERIFY(!face(&button)->state().pressed && !face(&button)->state().checkable);
        button.setValue(true);
        QVERIFY(face(&button)->state().pressed);
        QSignalSpy clicked(&button, &QAbstractButton::clicked);
        face(&button)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 1);
        // A check box reads as one, ticked or not.
        TouchButton check(QStringLiteral("ポイントした場所のヒントを表示する"));
        check.setToggles(true);
        QCOMPARE(face(&check)->role(), QAccessible::CheckBox);
        QVERIFY(face(&check)->state().checkable && !face(&check)->state().checked);
        face(&check)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(check.value() && face(&check)->state().checked);

        // A draggable box says so, unless its owner gave it a tip of its own.
        TouchPanel panel(QStringLiteral("スタート"));
        panel.setDraggable(true);
        QCOMPARE(face(&panel)->text(QAccessible::Name), QStringLiteral("スタート"));
        QCOMPARE(face(&panel)->text(QAccessible::Description), QStringLiteral("ドラッグしながら移動できます"));
        TouchPanel page;
        page.setTip(QStringLiteral("クリックして選択できます"));
        page.setDraggable(true);
        QCOMPARE(page.tip(), QStringLiteral("クリックして選択できます"));

        // An edit is named by its prompt until it has a caption.
        TouchEdit edit;
        edit.setPrompt(titlePrompt);
        QCOMPARE(face(&edit)->text(QAccessible::Name), titlePrompt);
        edit.setCaption(QStringLiteral("タイトル"));
        edit.setTip(QStringLiteral("ここにタイトルを書きます"));
        QCOMPARE(face(&edit)->text(QAccessible::Name), QStringLiteral("タイトル"));
        QCOMPARE(face(&edit)->text(QAccessible::Description), QStringLiteral("ここにタイトルを書きます"));
    }

    void panelDragsByItsOwnSurfaceInsideItsParent()
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
        QSignalSpy clicked(button, &QAbstractButton::clicked);
        const auto drag = [](QWidget *widget, QPoint from, QList<QPoint> moves) {
            QTest::mousePress(widget, Qt::LeftButton, {}, from);
            for (const QPoint to : moves)
                QTest::mouseMove(widget, to);
            QTest::mouseRelease(widget, Qt::LeftButton, {}, moves.last());
        };

        // Each move is 50 to the right of the press, as the panel follows.
        drag(panel, QPoint(30, 20), {QPoint(80, 20), QPoint(80, 20)});
        QCOMPARE(panel->pos(), QPoint(150, 40));
        QCOMPARE(calls(finished), (QList<QList<QVariant>>{{QPoint(50, 40), QPoint(150, 40)}}));
        // A trembling click does not nudge it.
        drag(panel, QPoint(30, 20), {QPoint(32, 21)});
        QCOMPARE(panel->pos(), QPoint(150, 40));
        QCOMPARE(finished.count(), 1);
        // Pressing its button clicks the button and leaves the panel in place.
        drag(button, QPoint(10, 10), {QPoint(60, 40), QPoint(10, 10)});
        QCOMPARE(panel->pos(), QPoint(150, 40));
        QCOMPARE(clicked.count(), 1);
        // Dragged far past the corner, it stops at the parent's edge.
        drag(panel, QPoint(30, 20), {QPoint(2030, 2020)});
        QCOMPARE(panel->pos(), QPoint(800 - 240, 600 - 180));
        // A panel that is not draggable stays where it was put.
        drag(still, QPoint(30, 20), {QPoint(130, 70)});
        QCOMPARE(still->pos(), QPoint(400, 300));
    }

    void panelAsksForItsTuneWhileShownOrPlaying()
    {
        TouchPanel midi;
        midi.setMusicFile(QStringLiteral("/skin/2.MIDI"));
        QSignalSpy started(&midi, &TouchPanel::musicStarted);
        QSignalSpy stopped(&midi, &TouchPanel::musicStopped);
        midi.show();
        midi.setSoundPlaying(true);
        QCOMPARE(calls(started), QList<QList<QVariant>>{{QStringLiteral("/skin/2.MIDI")}});
        QVERIFY(midi.isSoundPlaying());
        midi.hide();
        QCOMPARE(stopped.count(), 1);
        QVERIFY(!midi.isSoundPlaying());

        // The side bar carries only the state: it turns on and off without a tune.
        TouchPanel side;
        QSignalSpy state(&side, &TouchPanel::soundPlayingChanged);
        QSignalSpy sideStarted(&side, &TouchPanel::musicStarted);
        QVERIFY(side.setProperty("soundPlaying", true));
        side.setSoundPlaying(false);
        QCOMPARE(calls(state), (QList<QList<QVariant>>{{true}, {false}}));
        QCOMPARE(sideStarted.count(), 0);
    }

    void editShowsItsPromptWhileEmpty()
    {
        TouchEdit prompted;
        prompted.setPrompt(titlePrompt);
        prompted.resize(480, prompted.sizeHint().height());
        TouchEdit bare;
        bare.resize(prompted.size());
        QVERIFY(prompted.sizeHint().width() > QFontMetrics(prompted.font()).horizontalAdvance(titlePrompt));
        // Drawn in its own soft colour, the prompt leaves with the first letter
        // and steps aside while the input method composes the first word.
        QVERIFY(promptPixels(prompted) > 40);
        QCOMPARE(promptPixels(bare), 0);
        prompted.setText(QStringLiteral("あ"));
        QVERIFY(promptPixels(prompted) < 10);
        prompted.clear();
        QInputMethodEvent composing(QStringLiteral("にほん"), {});
        QCoreApplication::sendEvent(&prompted, &composing);
        QVERIFY(promptPixels(prompted) < 10);
        QInputMethodEvent cancelled(QString(), {});
        QCoreApplication::sendEvent(&prompted, &cancelled);
        QVERIFY(promptPixels(prompted) > 40);

        // A field too narrow for its prompt still shows it, in smaller type
        // (too thin to count pixels of the prompt's very colour).
        prompted.resize(200, prompted.height());
        bare.resize(prompted.size());
        const QImage with = prompted.grab().toImage(), without = bare.grab().toImage();
        int differing = 0;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x)
                differing += with.pixel(x, y) != without.pixel(x, y);
        QVERIFY2(differing > 200, qPrintable(QString::number(differing)));
    }

    // The applet sets the IME mode by name, as on any edit; 4 is hiragana.
    void editKeepsTheImeModeTheAppletAsksFor()
    {
        TouchEdit edit;
        QSignalSpy changed(&edit, &TouchEdit::imeModeChanged);
        QCOMPARE(edit.imeMode(), 0);
        QVERIFY(edit.setProperty("IMEMode", 4));
        edit.setImeMode(4);
        QCOMPARE(edit.imeMode(), 4);
        QCOMPARE(calls(changed), QList<QList<QVariant>>{{4}});
        QVERIFY(edit.testAttribute(Qt::WA_InputMethodEnabled));
        edit.setImeMode(TouchEdit::ImeDisable);
        QVERIFY(!edit.testAttribute(Qt::WA_InputMethodEnabled));
        edit.setImeMode(TouchEdit::ImeAlpha);
        QVERIFY(edit.testAttribute(Qt::WA_InputMethodEnabled));
        QVERIFY(edit.inputMethodHints() & Qt::ImhPreferLatin);
    }
};

QTEST_MAIN(TestTouch)
#include "test_touch.moc"
