#include "app/ControlScaler.h"
#include "platform/Beeper.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchPanel.h"
#include "platform/touch/TouchTheme.h"
#include "support/FileBytes.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Calls = QList<QList<QVariant>>;
const QString titlePrompt = QStringLiteral("タイトルを入力してください");

template<class Widget>
Widget *shown(Widget *widget)
{
    widget->resize(widget->sizeHint());
    widget->show();
    return widget;
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

} // namespace

class TestTouch : public QObject
{
    Q_OBJECT

private slots:
    // Buttons that toggle are clicked on and off in the settings box suite.
    void buttonClickIsMomentary()
    {
        TouchButton push(QStringLiteral("印刷"));
        QSignalSpy clicked(shown(&push), &QAbstractButton::clicked);
        QTest::mousePress(&push, Qt::LeftButton);
        QVERIFY(push.isDown());
        QTest::mouseRelease(&push, Qt::LeftButton);
        QVERIFY(!push.isDown() && !push.value());
        // A release just past the edge still clicks; one well outside does not.
        for (const int past : {3, 40}) {
            QTest::mousePress(&push, Qt::LeftButton);
            QTest::mouseRelease(&push, Qt::LeftButton, {}, QPoint(push.width() + past, 5));
        }
        QCOMPARE(clicked.count(), 2);
        // A tab set pressed by its owner stays pressed through a click.
        push.setValue(true);
        QTest::mouseClick(&push, Qt::LeftButton);
        QVERIFY(push.value());
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
        QVERIFY(writeFileBytes(folder.filePath(QStringLiteral("1.WAV")), Beeper::chimeWave()));
        TouchButton button(QStringLiteral("設定"));
        button.setSoundFile(folder.filePath(file));
        QStringList seen;
        connect(&button, &TouchButton::soundQuery, this, [&](qint16 &flag) { seen << QStringLiteral("query"); flag = suppress; });
        connect(&button, &TouchButton::soundPlayed, this,
                [&](const QString &path) { seen << QStringLiteral("played ") + QFileInfo(path).fileName(); });
        // The sound answers the press itself, not the release.
        QTest::mousePress(shown(&button), Qt::LeftButton);
        QCOMPARE(seen, events);
        QTest::mouseRelease(&button, Qt::LeftButton);
        QCOMPARE(seen, events);
    }

    // Scroll buttons repeat while held; the click sounds once, for the press.
    void buttonRepeatsWhileHeldWhenAsked()
    {
        QTemporaryDir folder;
        QVERIFY(writeFileBytes(folder.filePath(QStringLiteral("2.WAV")), Beeper::chimeWave()));
        TouchButton down(QStringLiteral("下へ"));
        down.setSoundFile(folder.filePath(QStringLiteral("2.WAV")));
        down.setAutoRepeat(true);
        down.setAutoRepeatDelay(100);
        down.setAutoRepeatInterval(40);
        QSignalSpy clicked(shown(&down), &QAbstractButton::clicked);
        QSignalSpy sounded(&down, &TouchButton::soundPlayed);
        QTest::mousePress(&down, Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(clicked.count() >= 3, 3000);
        QTest::mouseRelease(&down, Qt::LeftButton);
        QCOMPARE(sounded.count(), 1);
    }

    void captionsGrowTheButtonInsteadOfBeingCut()
    {
        // Short captions still give a target big enough for an unsteady hand.
        const QSize tiny = TouchButton(QStringLiteral("×")).sizeHint();
        QVERIFY(tiny.width() >= 56 && tiny.height() >= 52);
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
    }

    // Buttons by caption and tip, toggles as check boxes and edits by caption
    // are found that way by the end-to-end journeys; the box and prompt rules here.
    void controlsAreNamedForAssistiveTechnology()
    {
        // A draggable box says so, unless its owner gave it a tip of its own.
        TouchPanel panel(QStringLiteral("スタート")), page;
        page.setTip(QStringLiteral("クリックして選択できます"));
        for (TouchPanel *box : {&panel, &page})
            box->setDraggable(true);
        QCOMPARE(QAccessible::queryAccessibleInterface(&panel)->text(QAccessible::Name), QStringLiteral("スタート"));
        QCOMPARE(QAccessible::queryAccessibleInterface(&panel)->text(QAccessible::Description),
                 QStringLiteral("ドラッグしながら移動できます"));
        QCOMPARE(page.tip(), QStringLiteral("クリックして選択できます"));
        // An edit is named by its prompt until it has a caption.
        TouchEdit edit;
        edit.setPrompt(titlePrompt);
        QCOMPARE(QAccessible::queryAccessibleInterface(&edit)->text(QAccessible::Name), titlePrompt);
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
        const auto drag = [](QWidget *widget, QList<QPoint> path) {
            QTest::mousePress(widget, Qt::LeftButton, {}, path.takeFirst());
            for (const QPoint to : path)
                QTest::mouseMove(widget, to);
            QTest::mouseRelease(widget, Qt::LeftButton, {}, path.last());
        };
        // Each move is 50 to the right of the press, as the panel follows.
        drag(panel, {QPoint(30, 20), QPoint(80, 20), QPoint(80, 20)});
        QCOMPARE(Calls(finished), (Calls{{QPoint(50, 40), QPoint(150, 40)}}));
        // A trembling click does not nudge it; pressing its button clicks the
        // button and leaves the panel in place.
        drag(panel, {QPoint(30, 20), QPoint(32, 21)});
        drag(button, {QPoint(10, 10), QPoint(60, 40), QPoint(10, 10)});
        QCOMPARE(panel->pos(), QPoint(150, 40));
        QCOMPARE(finished.count(), 1);
        QCOMPARE(clicked.count(), 1);
        // Dragged far past the corner, it stops at the parent's edge; a panel
        // that is not draggable stays where it was put.
        drag(panel, {QPoint(30, 20), QPoint(2030, 2020)});
        drag(still, {QPoint(30, 20), QPoint(130, 70)});
        QCOMPARE(panel->pos(), QPoint(800 - 240, 600 - 180));
        QCOMPARE(still->pos(), QPoint(400, 300));
    }

    void editShowsItsPromptWhileEmpty()
    {
        TouchEdit prompted, bare;
        prompted.setPrompt(titlePrompt);
        prompted.resize(480, prompted.sizeHint().height());
        bare.resize(prompted.size());
        QVERIFY(prompted.sizeHint().width() > QFontMetrics(prompted.font()).horizontalAdvance(titlePrompt));
        // Drawn in its own soft colour, the prompt leaves with the first letter
        // and steps aside while the input method composes the first word.
        QVERIFY(promptPixels(prompted) > 40);
        QCOMPARE(promptPixels(bare), 0);
        prompted.setText(QStringLiteral("あ"));
        QVERIFY(promptPixels(prompted) < 10);
        prompted.clear();
        QInputMethodEvent composing(QStringLiteral("にほん"), {}), cancelled(QString(), {});
        QCoreApplication::sendEvent(&prompted, &composing);
        QVERIFY(promptPixels(prompted) < 10);
        QCoreApplication::sendEvent(&prompted, &cancelled);
        QVERIFY(promptPixels(prompted) > 40);
    }

    // Off, the edit takes no input method at all; alphanumeric prefers Latin.
    void editKeepsTheImeModeTheAppletAsksFor()
    {
        TouchEdit edit;
        QCOMPARE(edit.imeMode(), 0);
        QVERIFY(edit.testAttribute(Qt::WA_InputMethodEnabled));
        edit.setImeMode(TouchEdit::ImeDisable);
        QVERIFY(!edit.testAttribute(Qt::WA_InputMethodEnabled));
        edit.setImeMode(TouchEdit::ImeAlpha);
        QVERIFY(edit.testAttribute(Qt::WA_InputMethodEnabled) && (edit.inputMethodHints() & Qt::ImhPreferLatin));
    }
};

QTEST_MAIN(TestTouch)
#include "test_touch.moc"
