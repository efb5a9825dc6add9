#include "tools/QuestionBox.h"

#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchTheme.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include <algorithm>

QuestionBox::QuestionBox(const QString &question, QWidget *parent, Kind kind)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_question(new QLabel(question, this))
    , m_yes(new TouchButton(kind == Message ? QStringLiteral("閉じる") : QStringLiteral("はい"), this))
    , m_no(new TouchButton(QStringLiteral("いいえ"), this))
{
    setObjectName(QStringLiteral("QuestionBox"));
    setWindowTitle(QStringLiteral("確認"));
    setModal(true);
    setAttribute(Qt::WA_TranslucentBackground, false);

    m_question->setObjectName(QStringLiteral("QuestionText"));
    m_question->setWordWrap(true);
    m_question->setAlignment(Qt::AlignCenter);
    m_question->setFont(TouchTheme::titleFont(30));
    QPalette ink = m_question->palette();
    ink.setColor(QPalette::WindowText, TouchTheme::ink());
    m_question->setPalette(ink);
    // Each line of the text is a phrase: the box is wide enough for the
    // longest one, so that no line breaks inside a word, as far as the
    // screen allows.
    int widest = 0;
    for (const QString &line : question.split(u'\n'))
        widest = std::max(widest, QFontMetrics(m_question->font()).horizontalAdvance(line));
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        widest = std::min(widest, screen->availableGeometry().width() * 9 / 10 - 96);
    m_question->setMinimumWidth(widest + 4);

    m_yes->setObjectName(QStringLiteral("QuestionYes"));
    m_no->setObjectName(QStringLiteral("QuestionNo"));
    for (TouchButton *button : {m_yes, m_no}) {
        button->setFont(TouchTheme::captionFont(32));
        button->setMinimumSize(200, 90);
    }
    connect(m_yes, &QAbstractButton::clicked, this, &QDialog::accept);
    connect(m_no, &QAbstractButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(40);
    buttons->addStretch();
    buttons->addWidget(m_yes);
    buttons->addWidget(m_no);
    buttons->addStretch();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(48, 40, 48, 40);
    layout->setSpacing(36);
    layout->addWidget(m_question, 1);
    layout->addLayout(buttons);
    setMinimumSize(640, 320);
    if (kind == Message) {
        setWindowTitle(QStringLiteral("お知らせ"));
        m_no->hide();
    }
}

bool QuestionBox::ask(QWidget *parent, const QString &question)
{
    QuestionBox box(question, parent);
    return run(box, parent) == QDialog::Accepted;
}

void QuestionBox::tell(QWidget *parent, const QString &message)
{
    QuestionBox box(message, parent, Message);
    run(box, parent);
}

// In the middle of the window it belongs to, until a button is clicked.
int QuestionBox::run(QuestionBox &box, QWidget *parent)
{
    if (parent) {
        const QRect area = parent->window()->geometry();
        box.adjustSize();
        box.move(area.center() - QPoint(box.width() / 2, box.height() / 2));
    }
    return box.exec();
}

void QuestionBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), TouchTheme::paper());
    painter.setPen(QPen(TouchTheme::accent(), 6));
    painter.drawRect(QRectF(rect()).adjusted(3, 3, -3, -3));
}
