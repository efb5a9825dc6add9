#include "tools/HandwritingPad.h"
#include "tools/InkCanvas.h"
#include "support/PadDriver.h"

#include <QAbstractButton>
#include <QSignalSpy>
#include <QTest>

namespace {

// "x,y x,y|x,y ...": strokes in drawing order, in a box of 100.
using Drawing = const char *;
const Drawing One = "10,50 50,50 90,50";
const Drawing Two = "25,30 50,30 75,30|10,70 50,70 90,70";
const Drawing Ten = "10,45 50,45 90,45|50,10 50,50 50,90";

} // namespace

// The handwriting page of the input pad, written on with the mouse: its
// place among the pads, what it offers after each stroke, and what a chosen
// candidate types into the focused control.
class TestHandwriting : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PadDriver> pad;
    InfoDlg *dialog = nullptr;
    HandwritingPad *page = nullptr;

    void mouse(QEvent::Type type, const QPointF &at, Qt::MouseButtons held)
    {
        InkCanvas *canvas = page->canvas();
        QMouseEvent event(type, at, canvas->mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
        QApplication::sendEvent(canvas, &event);
    }

    // Draws with the left button held, each stroke pressed, moved along and
    // released, as a hand does.
    void draw(Drawing drawing)
    {
        const double unit = page->canvas()->width() / 100.0;
        for (const QString &line : QString::fromLatin1(drawing).split(u'|')) {
            const QStringList points = line.split(u' ');
            for (qsizetype i = 0; i < points.size(); ++i) {
                const QPointF at(points[i].section(u',', 0, 0).toDouble() * unit,
                                 points[i].section(u',', 1, 1).toDouble() * unit);
                mouse(i == 0 ? QEvent::MouseButtonPress : QEvent::MouseMove, at, Qt::LeftButton);
                if (i == points.size() - 1)
                    mouse(QEvent::MouseButtonRelease, at, Qt::NoButton);
            }
        }
    }

    QStringList shownCandidates() const
    {
        QStringList shown;
        for (QAbstractButton *button : page->candidateButtons())
            if (button->isVisible())
                shown << button->text();
        return shown;
    }

private slots:
    void initTestCase()
    {
        pad = std::make_unique<PadDriver>(QStringLiteral(LANTERN_PROGRAM_DIR), InfoDlg::CharacterMode, 1.58);
        dialog = pad->dialog;
        page = dialog->Handwriting;
        QVERIFY(pad->show());
        if (!page->isAvailable())
            QSKIP("the Japanese handwriting model is not installed");
    }

    void init()
    {
        pad->focus(pad->edit);
        pad->clickButton(KeyTable::Handwriting);
        page->clear();
    }

    // Pad 21, selected like the others, in their place: the dialog keeps its
    // size and place, and reopens on the page last used.
    void thePageIsAPadOfItsOwn()
    {
        QAbstractButton *button = dialog->MiniChannels[KeyTable::Handwriting];
        QCOMPARE(button->accessibleName(), QStringLiteral("手書き"));
        QCOMPARE(button->toolTip(), QStringLiteral("クリックすると、マウスで書いた文字を入力できます。"));
        pad->clickButton(KeyTable::Hiragana);
        const QRect before = dialog->frameGeometry();
        pad->clickButton(KeyTable::Handwriting);
        QCOMPARE(dialog->currentPad(), 21);
        QVERIFY(button->isChecked() && !dialog->MiniChannels[KeyTable::Hiragana]->isChecked());
        QVERIFY(page->isVisible());
        for (qint32 other = KeyTable::Alpha; other <= KeyTable::Symbol2; ++other)
            QVERIFY(!dialog->Keypads[other]->isVisible());
        QCOMPARE(dialog->frameGeometry(), before);

        dialog->Finish(InfoDlg::CharacterMode);
        dialog->Begin(InfoDlg::CharacterMode);
        QCOMPARE(dialog->currentPad(), 21);
        QVERIFY(pad->show());
        pad->clickButton(KeyTable::Katakana);
        QVERIFY(!page->isVisible());
        QCOMPARE(dialog->currentPad(), 13);
    }

    // At the scale of a 1366 by 768 screen.
    void largeEnoughToWriteAndRead()
    {
        QCOMPARE(page->canvas()->accessibleName(), QStringLiteral("手書きの枠"));
        QVERIFY(page->canvas()->width() >= 240);
        QCOMPARE(page->canvas()->width(), page->canvas()->height());
        draw(One);
        for (QAbstractButton *button : page->candidateButtons())
            QVERIFY(button->font().pixelSize() >= 28);
    }

    // Every stroke is read at once; the candidates stand best first, left
    // to right, then top to bottom.
    void candidatesAfterEveryStroke()
    {
        draw(One);
        QVERIFY2(shownCandidates().mid(0, 5).contains(QStringLiteral("一")), qPrintable(shownCandidates().join(u' ')));
        page->clear();
        draw(Two);
        QCOMPARE(page->canvas()->strokes().size(), 2);
        const QStringList shown = shownCandidates();
        QVERIFY2(shown.mid(0, 5).contains(QStringLiteral("二")), qPrintable(shown.join(u' ')));
        QVERIFY(shown.size() >= 10);
        QCOMPARE(shown, page->candidates());
        const QList<QAbstractButton *> &buttons = page->candidateButtons();
        for (qsizetype i = 1; i < buttons.size(); ++i) {
            const QPoint previous = buttons[i - 1]->geometry().topLeft(), here = buttons[i]->geometry().topLeft();
            QVERIFY(here.y() > previous.y() || (here.y() == previous.y() && here.x() > previous.x()));
        }
        for (QAbstractButton *button : buttons) {
            QCOMPARE(button->accessibleName(), button->text());
            QCOMPARE(button->accessibleDescription(), QStringLiteral("候補"));
        }
    }

    // A candidate is typed at the caret of the control that keeps the focus,
    // and the square is cleared for the next character.
    void aChosenCandidateIsTyped()
    {
        pad->focus(pad->line, QStringLiteral("あ"));
        draw(Ten);
        const qsizetype at = page->candidates().indexOf(QStringLiteral("十"));
        QVERIFY2(at >= 0 && at < 5, qPrintable(page->candidates().join(u' ')));
        pad->click(page->candidateButtons()[at], page->candidateButtons()[at]->rect().center());
        PadDriver::settle();
        QCOMPARE(pad->line->text(), QStringLiteral("あ十"));
        QCOMPARE(QApplication::focusWidget(), pad->line);
        QVERIFY(page->canvas()->strokes().isEmpty());
        QVERIFY(shownCandidates().isEmpty());
    }

    void takingStrokesBack()
    {
        draw(One);
        const QStringList afterOne = page->candidates();
        draw("10,80 90,80");
        QVERIFY(page->candidates() != afterOne);
        pad->click(page->undoButton(), page->undoButton()->rect().center());
        QCOMPARE(page->canvas()->strokes().size(), 1);
        QCOMPARE(shownCandidates(), afterOne);
        pad->click(page->undoButton(), page->undoButton()->rect().center());
        pad->click(page->undoButton(), page->undoButton()->rect().center());
        QVERIFY(page->canvas()->strokes().isEmpty());
        QVERIFY(shownCandidates().isEmpty());

        draw(Two);
        const QImage written = page->canvas()->grab().toImage();
        pad->click(page->clearButton(), page->clearButton()->rect().center());
        QVERIFY(page->canvas()->strokes().isEmpty());
        QVERIFY(shownCandidates().isEmpty());
        QVERIFY(page->canvas()->grab().toImage() != written);
        QCOMPARE(pad->edit->toPlainText(), QString());
    }

    // The page's controls explain themselves in the information bar.
    void hints()
    {
        Globals::HowToOn = true;
        QSignalSpy howTo(dialog, &InfoDlg::HowTo);
        const std::tuple<QWidget *, const char16_t *, QString> cases[] = {
            {page->clearButton(), u"消す", HandwritingPad::clearTip()},
            {page->undoButton(), u"一画戻す", HandwritingPad::undoTip()},
            {page->canvas(), u"手書きの枠", HandwritingPad::canvasTip()},
        };
        for (const auto &[control, topic, content] : cases) {
            QEvent enter(QEvent::Enter);
            QApplication::sendEvent(control, &enter);
            QCOMPARE(howTo.takeLast(), (QList<QVariant>{QString::fromUtf16(topic), content}));
        }
        QCOMPARE(HandwritingPad::clearTip(), QStringLiteral("クリックすると、書いた文字をすべて消します。"));
        QCOMPARE(HandwritingPad::undoTip(), QStringLiteral("クリックすると、最後に書いた一画を消します。"));
    }

    // Documents are saved in code page 932: nothing else is offered, and a
    // character comes once however often it is answered.
    void onlyWhatCodePage932Holds()
    {
        QList<HandwritingRecognizer::Candidate> answer;
        for (const QString &text : {QStringLiteral("𠮷"), QStringLiteral("吉"), QStringLiteral("①"),
                                    QStringLiteral("吉"), QStringLiteral("丂"), QStringLiteral("一")})
            answer.append({text, 0});
        QCOMPARE(HandwritingPad::offered(answer), QStringList({QStringLiteral("吉"), QStringLiteral("①"),
                                                                QStringLiteral("一")}));
        answer.clear();
        for (int i = 0; i < 12; ++i)
            answer.append({QString::number(i % 10) + QString(QChar(u'あ' + i)), 0});
        QCOMPARE(HandwritingPad::offered(answer).size(), 10);
        QCOMPARE(HandwritingPad::offered(answer).last(), QStringLiteral("9か"));
    }

    // Without the model the page's button says why it cannot be used, and
    // the rest of the pad is as it was.
    void withoutTheModel()
    {
        qputenv(HandwritingRecognizer::ModelVariable, QByteArrayLiteral("/nonexistent/handwriting-ja.model"));
        InfoDlg bare;
        qunsetenv(HandwritingRecognizer::ModelVariable);
        QAbstractButton *button = bare.MiniChannels[KeyTable::Handwriting];
        QVERIFY(!button->isEnabled());
        const QString why = QStringLiteral("手書きの文字を読み取るための辞書がインストールされていないため、使えません。");
        QCOMPARE(button->toolTip(), why);
        QCOMPARE(button->accessibleDescription(), why);
        bare.MiniChannels_Click(KeyTable::Handwriting);
        QCOMPARE(bare.currentPad(), 12);
        QCOMPARE(bare.MiniChannels.size(), 22);
        for (QAbstractButton *other : bare.MiniChannels)
            QVERIFY(other == button || other->isEnabled());
    }
};

QTEST_MAIN(TestHandwriting)
#include "test_handwriting.moc"
