#include "tools/HandwritingPad.h"
#include "app/Globals.h"
#include "platform/CodePage932.h"
#include "tools/InkCanvas.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// Sizes in the pad's own units, drawn larger by its scale.
constexpr int CandidateSide = 56;
constexpr int CandidateLegend = 20;
// However small the pad is drawn, a candidate stays readable for weak eyes.
constexpr int SmallestCandidatePixels = 28;
constexpr int ActionLegend = 14;
constexpr int ActionHeight = 36;
constexpr int Spacing = 4;
// The recogniser is asked for more than are shown: some of its characters
// are not in code page 932 and are left out.
constexpr int CandidatesAsked = 3 * HandwritingPad::CandidateCount;

bool fitsCodePage932(const QString &text)
{
    for (const char32_t codePoint : text.toUcs4())
        if (!CodePage932::canEncode(codePoint))
            return false;
    return !text.isEmpty();
}

QToolButton *makeButton(const QString &caption, const QString &tip)
{
    auto *button = new QToolButton;
    button->setText(caption);
    button->setToolTip(tip);
    button->setAccessibleName(caption);
    button->setAccessibleDescription(tip);
    button->setFocusPolicy(Qt::NoFocus);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    return button;
}

} // namespace

HandwritingPad::HandwritingPad(QWidget *parent)
    : QWidget(parent)
{
    m_canvas = new InkCanvas;
    m_canvas->setToolTip(canvasTip());
    m_canvas->setAccessibleDescription(canvasTip());
    m_canvas->installEventFilter(this);
    connect(m_canvas, &InkCanvas::strokeDrawn, this, &HandwritingPad::recognize);

    auto *grid = new QGridLayout;
    grid->setSpacing(Spacing);
    for (int index = 0; index < CandidateCount; ++index) {
        QToolButton *button = makeButton(QString(), candidateTip());
        // The candidate is the button's name; what it is, its description.
        button->setAccessibleDescription(QStringLiteral("候補"));
        QSizePolicy keepPlace = button->sizePolicy();
        keepPlace.setRetainSizeWhenHidden(true);
        button->setSizePolicy(keepPlace);
        button->hide();
        button->installEventFilter(this);
        connect(button, &QToolButton::clicked, this, [this, index] { chooseCandidate(index); });
        grid->addWidget(button, index / CandidateColumns, index % CandidateColumns);
        m_candidateButtons.append(button);
    }

    m_undoButton = makeButton(QStringLiteral("一画戻す"), undoTip());
    m_clearButton = makeButton(QStringLiteral("消す"), clearTip());
    auto *actions = new QHBoxLayout;
    actions->addStretch();
    for (QAbstractButton *button : {m_undoButton, m_clearButton}) {
        button->installEventFilter(this);
        actions->addWidget(button);
    }
    connect(m_undoButton, &QAbstractButton::clicked, this, &HandwritingPad::removeLastStroke);
    connect(m_clearButton, &QAbstractButton::clicked, this, &HandwritingPad::clear);

    auto *right = new QVBoxLayout;
    right->setContentsMargins(0, 0, 0, 0);
    right->addLayout(grid);
    right->addStretch();
    right->addLayout(actions);

    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_canvas, 0, Qt::AlignTop);
    layout->addLayout(right);
    layout->addStretch();
    setScale(1.0);
}

HandwritingPad::~HandwritingPad() = default;

void HandwritingPad::setScale(double scale)
{
    m_canvas->setScale(scale);
    for (QAbstractButton *button : std::as_const(m_candidateButtons)) {
        QFont font = button->font();
        font.setPixelSize(std::max(SmallestCandidatePixels, int(qRound(CandidateLegend * scale))));
        button->setFont(font);
        button->setFixedSize(qRound(CandidateSide * scale), qRound(CandidateSide * scale));
    }
    for (QAbstractButton *button : {m_undoButton, m_clearButton}) {
        QFont font = button->font();
        font.setPixelSize(qRound(ActionLegend * scale));
        button->setFont(font);
        button->setMinimumSize(qRound(2 * ActionHeight * scale), qRound(ActionHeight * scale));
    }
    const int margin = qRound(5 * scale);
    layout()->setContentsMargins(margin, margin, margin, margin);
    layout()->setSpacing(qRound(10 * scale));
    for (QLayout *inner : findChildren<QLayout *>())
        inner->setSpacing(qRound(Spacing * scale));
}

void HandwritingPad::recognize()
{
    showCandidates(offered(m_recognizer.recognize(m_canvas->strokes(), InkCanvas::Side, CandidatesAsked)));
}

QStringList HandwritingPad::offered(const QList<HandwritingRecognizer::Candidate> &candidates)
{
    QStringList texts;
    for (const HandwritingRecognizer::Candidate &candidate : candidates) {
        if (texts.size() == CandidateCount)
            break;
        if (fitsCodePage932(candidate.text) && !texts.contains(candidate.text))
            texts.append(candidate.text);
    }
    return texts;
}

void HandwritingPad::showCandidates(const QStringList &candidates)
{
    m_candidates = candidates;
    for (int index = 0; index < CandidateCount; ++index) {
        QAbstractButton *button = m_candidateButtons[index];
        const QString text = candidates.value(index);
        button->setText(text);
        button->setAccessibleName(text);
        button->setVisible(!text.isEmpty());
    }
}

void HandwritingPad::clear()
{
    m_canvas->clear();
    showCandidates({});
}

void HandwritingPad::removeLastStroke()
{
    m_canvas->removeLastStroke();
    recognize();
}

void HandwritingPad::chooseCandidate(int index)
{
    const QString text = m_candidates.value(index);
    if (text.isEmpty())
        return;
    emit candidateChosen(text);
    clear();
}

bool HandwritingPad::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Enter && Globals::HowToOn) {
        const auto *control = static_cast<QWidget *>(watched);
        const QString topic = control == m_canvas ? control->accessibleName()
                                                  : static_cast<const QAbstractButton *>(control)->text();
        emit HowTo(topic, control->toolTip());
    } else if (event->type() == QEvent::Leave) {
        emit HowTo(QString(), QString());
    }
    return QWidget::eventFilter(watched, event);
}

QString HandwritingPad::canvasTip()
{
    return QStringLiteral("マウスのボタンを押したまま動かすと、文字を書けます。\n"
                          "一画ごとに、似ている文字が右に並びます。");
}

QString HandwritingPad::candidateTip()
{
    return QStringLiteral("クリックすると、この文字を指定した場所に入力します。");
}

QString HandwritingPad::clearTip()
{
    return QStringLiteral("クリックすると、書いた文字をすべて消します。");
}

QString HandwritingPad::unavailableTip()
{
    return QStringLiteral("手書きの文字を読み取るための辞書がインストールされていないため、使えません。");
}

QString HandwritingPad::undoTip()
{
    return QStringLiteral("クリックすると、最後に書いた一画を消します。");
}
