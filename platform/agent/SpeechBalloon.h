#pragma once

#include <QColor>
#include <QWidget>

// The word balloon beside the character: large, soft-coloured and easy to
// read, with a tail that points at the character. Like the character it
// floats above the program without taking the focus; clicks go through it to
// whatever lies below.
class SpeechBalloon : public QWidget
{
    Q_OBJECT

public:
    SpeechBalloon();

    void setColours(const QColor &background, const QColor &border, const QColor &text);
    // Shows the words next to the character's window (above it when there is
    // room, below it otherwise).
    void showText(const QString &text, const QRect &character);
    // Keeps the balloon beside the character when the character moves.
    void follow(const QRect &character);
    QString text() const { return m_text; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect textArea() const;

    QString m_text;
    QColor m_background;
    QColor m_border;
    QColor m_textColour;
    bool m_tailDown = true;
    int m_tailX = 0;
};
