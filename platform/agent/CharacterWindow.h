#pragma once

#include <QImage>
#include <QWidget>

// The character on the screen: a frameless, see-through window that floats
// above the program and never takes the keyboard focus from the document.
// It shows one picture at a time; the user can drag it with the mouse.
class CharacterWindow : public QWidget
{
    Q_OBJECT

public:
    explicit CharacterWindow(QSize size);

    void setFrame(const QImage &image);
    const QImage &frame() const { return m_frame; }

signals:
    void moved();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;

private:
    QImage m_frame;
};
