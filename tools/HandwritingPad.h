#pragma once

#include "platform/handwriting/HandwritingRecognizer.h"

#include <QList>
#include <QStringList>
#include <QWidget>

class InkCanvas;
class QAbstractButton;

// The handwriting page of the character-input pad: a square to write one
// character in with the mouse, the characters it may be (best first, left to
// right then top to bottom), and buttons to clear the square or take back the
// last stroke. Choosing a candidate hands it to the dialog, which types it
// like any pad key, and clears the square for the next character.
//
// Only characters that code page 932 holds are offered, since documents are
// saved in it.
class HandwritingPad : public QWidget
{
    Q_OBJECT

public:
    static constexpr int CandidateCount = 10;
    static constexpr int CandidateColumns = 5;

    explicit HandwritingPad(QWidget *parent = nullptr);
    ~HandwritingPad() override;

    // Whether a model is there to read handwriting with.
    bool isAvailable() const { return m_recognizer.isAvailable(); }
    // Opens the model; false when it cannot be read.
    bool prepare() { return m_recognizer.open(); }

    void setScale(double scale);

    InkCanvas *canvas() const { return m_canvas; }
    // In reading order; those without a candidate are hidden.
    const QList<QAbstractButton *> &candidateButtons() const { return m_candidateButtons; }
    QAbstractButton *clearButton() const { return m_clearButton; }
    QAbstractButton *undoButton() const { return m_undoButton; }
    QStringList candidates() const { return m_candidates; }

    // What is offered of the recogniser's answer: the first ten characters
    // that code page 932 holds, each once, in the recogniser's order.
    static QStringList offered(const QList<HandwritingRecognizer::Candidate> &candidates);

    // The tips of the page's controls.
    static QString canvasTip();
    static QString candidateTip();
    static QString clearTip();
    static QString undoTip();
    // The tip of the page's button when there is no model.
    static QString unavailableTip();

signals:
    void candidateChosen(const QString &text);
    void HowTo(const QString &topic, const QString &content);

public slots:
    void clear();
    void removeLastStroke();
    void chooseCandidate(int index);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void recognize();

private:
    void showCandidates(const QStringList &candidates);

    HandwritingRecognizer m_recognizer;
    InkCanvas *m_canvas = nullptr;
    QList<QAbstractButton *> m_candidateButtons;
    QAbstractButton *m_clearButton = nullptr;
    QAbstractButton *m_undoButton = nullptr;
    QStringList m_candidates;
};
