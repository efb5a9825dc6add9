#pragma once

#include <QDialog>

class QLabel;
class TouchButton;

// A large yes/no question in the middle of its window: plain words and two
// big buttons, "はい" and "いいえ". Nothing happens until one is clicked;
// closing the box in any other way counts as no. As a message it has one
// button, "閉じる".
class QuestionBox : public QDialog
{
    Q_OBJECT

public:
    enum Kind { Question,
                Message };

    explicit QuestionBox(const QString &question, QWidget *parent = nullptr, Kind kind = Question);

    // Asks and waits for the answer; true for yes.
    static bool ask(QWidget *parent, const QString &question);
    // Tells and waits until the message is closed.
    static void tell(QWidget *parent, const QString &message);

    TouchButton *yesButton() const { return m_yes; }
    TouchButton *noButton() const { return m_no; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    static int run(QuestionBox &box, QWidget *parent);

    QLabel *m_question;
    TouchButton *m_yes;
    TouchButton *m_no;
};
