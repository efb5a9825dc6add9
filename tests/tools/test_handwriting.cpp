#include "tools/HandwritingPad.h"
#include "tools/InkCanvas.h"
#include "support/PadDriver.h"

#include <QSignalSpy>
#include <QTemporaryFile>

// The handwriting page of the input pad, written on with the mouse and read
// by the system's recogniser with its Japanese model: its place among the
// pads, what it offers after each stroke, and what a chosen candidate types
// into the control that keeps the focus.
class TestHandwriting : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PadDriver> pad;
    InfoDlg *dialog = nullptr;
    HandwritingPad *page = nullptr;

    // Strokes "x,y x,y|x,y ..." in drawing order, in a box of 100: each
    // pressed, dragged along and released, as a hand draws them.
    void draw(const char *drawing)
    {
        for (const QString &line : QString::fromLatin1(drawing).split(u'|')) {
            const QStringList points = line.split(u' ');
            for (qsizetype i = 0; i <= points.size(); ++i) {
                const QStringList xy = points[std::min(i, points.size() - 1)].split(u',');
                const QPointF at = QPointF(xy[0].toDouble(), xy[1].toDouble()) * page->canvas()->width() / 100.0;
                const bool held = i < points.size();
                QMouseEvent event(i == 0 ? QEvent::MouseButtonPress : held ? QEvent::MouseMove
                                                                           : QEvent::MouseButtonRelease,
                                  at, at, Qt::LeftButton, held ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
                QApplication::sendEvent(page->canvas(), &event);
            }
        }
    }

    QStringList shown() const
    {
        QStringList texts;
        for (QAbstractButton *button : page->candidateButtons())
            if (button->isVisible())
                texts << button->text();
        return texts;
    }

private slots:
    void initTestCase()
    {
        // The scale of a 1366 by 768 screen.
        pad = std::make_unique<PadDriver>(QStringLiteral(LANTERN_PROGRAM_DIR), InfoDlg::CharacterMode, 1.58);
        dialog = pad->dialog;
        page = dialog->Handwriting;
        QVERIFY(pad->show());
        if (!page->isAvailable())
            QSKIP("the Japanese handwriting model is not installed");
    }

    // Pad 21 stands in the character pads' place, keeps the dialog's size
    // and place, and is there again when the pad reopens.
    void thePageIsAPadOfItsOwn()
    {
        QAbstractButton *button = dialog->MiniChannels[KeyTable::Handwriting];
        QCOMPARE(button->accessibleName(), QStringLiteral("手書き"));
        const QRect before = dialog->frameGeometry();
        pad->clickButton(KeyTable::Handwriting);
        QVERIFY(button->isChecked() && !dialog->MiniChannels[KeyTable::Hiragana]->isChecked() && page->isVisible());
        for (qint32 other = KeyTable::Alpha; other <= KeyTable::Symbol2; ++other)
            QVERIFY(!dialog->Keypads[other]->isVisible());
        QCOMPARE(dialog->frameGeometry(), before);
        dialog->Finish(InfoDlg::CharacterMode);
        dialog->Begin(InfoDlg::CharacterMode);
        QCOMPARE(dialog->currentPad(), 21);
        QVERIFY(pad->show());
        QCOMPARE(page->canvas()->accessibleName(), QStringLiteral("手書きの枠"));
        QVERIFY(page->canvas()->width() >= 240 && page->canvas()->height() == page->canvas()->width());
    }

    void charactersAreAmongTheFirstFive()
    {
        const std::pair<const char *, const char16_t *> drawings[] = {
            // clang-format off
            {"10,50 90,50", u"一"}, {"25,30 75,30|10,70 90,70", u"二"}, {"20,20 80,20|30,50 70,50|10,82 90,82", u"三"},
            {"10,45 90,45|50,10 50,90", u"十"}, {"30,30 30,70|30,30 70,30 70,70|30,68 70,68", u"口"},
            {"25,10 25,90|25,10 75,10 75,90|25,50 75,50|25,88 75,88", u"日"}, {"50,10 45,50 15,90|48,45 85,90", u"人"},
            {"65,10 30,50 65,90", u"く"}, {"35,10 35,70 45,85 60,85 80,70", u"し"}, {"10,60 35,35 90,75", u"へ"},
            {"25,20 22,55 28,80 35,75|70,30 80,50 82,70", u"い"}, {"35,30 65,30 58,38|30,62 40,72 75,72", u"こ"},
        };
        // clang-format on
        for (const auto &[drawing, character] : drawings) {
            page->clear();
            draw(drawing);
            QVERIFY2(shown().mid(0, 5).contains(QString::fromUtf16(character)),
                     qPrintable(QString::fromUtf16(character) + u' ' + shown().join(u' ')));
        }
    }

    // Read after every stroke; best first, left to right, then top to
    // bottom; a click types the candidate at the caret and clears the square.
    void writingAndChoosing()
    {
        page->clear();
        pad->focus(pad->line, QStringLiteral("あ"));
        draw("10,50 50,50 90,50|50,10 50,50 50,90");
        QCOMPARE(shown(), page->candidates());
        QCOMPARE(shown().size(), 10);
        const QList<QAbstractButton *> &buttons = page->candidateButtons();
        for (qsizetype i = 0; i < buttons.size(); ++i) {
            const QPoint here = buttons[i]->pos(), before = i ? buttons[i - 1]->pos() : QPoint(-1, -1);
            QVERIFY(here.y() > before.y() || (here.y() == before.y() && here.x() > before.x()));
            QCOMPARE(buttons[i]->accessibleName(), buttons[i]->text());
            QCOMPARE(buttons[i]->accessibleDescription(), QStringLiteral("候補"));
            QVERIFY(buttons[i]->font().pixelSize() >= 28);
        }
        // Drawn as small as the pad gets beside the calculator at 1024x768, legends keep 28 px.
        page->setScale(0.9);
        QCOMPARE(buttons.first()->font().pixelSize(), 28);
        page->setScale(1.58);
        pad->clickCentre(buttons[shown().indexOf(QStringLiteral("十"))]);
        QCOMPARE(pad->line->text(), QStringLiteral("あ十"));
        QCOMPARE(QApplication::focusWidget(), pad->line);
        QVERIFY(page->canvas()->strokes().isEmpty() && shown().isEmpty());
    }

    void takingStrokesBack()
    {
        Globals::HowToOn = true;
        QSignalSpy howTo(dialog, &InfoDlg::HowTo);
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(page->undoButton(), &enter);
        QCOMPARE(howTo.first(), (QList<QVariant>{QStringLiteral("一画戻す"), HandwritingPad::undoTip()}));
        draw("10,50 90,50");
        const QStringList afterOne = shown();
        draw("10,80 90,80");
        QVERIFY(shown() != afterOne);
        pad->clickCentre(page->undoButton());
        QCOMPARE(shown(), afterOne);
        pad->clickCentre(page->undoButton());
        pad->clickCentre(page->undoButton());
        QVERIFY(page->canvas()->strokes().isEmpty() && shown().isEmpty());
        draw("10,50 90,50|10,80 90,80");
        pad->clickCentre(page->clearButton());
        QVERIFY(page->canvas()->strokes().isEmpty() && shown().isEmpty());
    }

    // Documents are saved in code page 932: nothing else is offered, each
    // character once, ten at most.
    void onlyWhatCodePage932Holds()
    {
        QList<HandwritingRecognizer::Candidate> answer;
        for (const char16_t *text : {u"𠮷", u"吉", u"①", u"吉", u"丂", u"一", u"二", u"三", u"四", u"五", u"六", u"七", u"八", u"九"})
            answer.append({QString::fromUtf16(text), 0});
        QCOMPARE(HandwritingPad::offered(answer).join(QString()), QStringLiteral("吉①一二三四五六七八"));
    }

    // Without the model (or with a broken one) the page's button says why it
    // cannot be used; the rest of the pad is as it was.
    void withoutTheModel()
    {
        QTemporaryFile broken;
        QVERIFY(broken.open() && broken.write("not a model") > 0);
        broken.close();
        for (const QString &model : {QStringLiteral("/nonexistent/handwriting-ja.model"), broken.fileName()}) {
            qputenv(HandwritingRecognizer::ModelVariable, model.toUtf8());
            InfoDlg bare;
            qunsetenv(HandwritingRecognizer::ModelVariable);
            bare.MiniChannels_Click(KeyTable::Handwriting);
            QCOMPARE(bare.currentPad(), 12);
            QAbstractButton *button = bare.MiniChannels[KeyTable::Handwriting];
            QVERIFY2(!button->isEnabled(), qPrintable(model));
            QCOMPARE(button->accessibleDescription(), QStringLiteral("手書きの文字を読み取るための辞書がインストールされていないため、使えません。"));
            for (QAbstractButton *other : bare.MiniChannels)
                QVERIFY(other == button || other->isEnabled());
        }
        QCOMPARE(HandwritingRecognizer::defaultModelPath(), QStringLiteral("/usr/share/tegaki/models/zinnia/handwriting-ja.model"));
    }
};

QTEST_MAIN(TestHandwriting)
#include "test_handwriting.moc"
