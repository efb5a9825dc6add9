#pragma once

#include <QAbstractButton>

// A big painted button for people who only use the mouse: a large caption that
// wraps and shrinks rather than being cut off, an optional picture above it, a
// clear hover and pressed look, and a lasting pressed state (Value) for check
// boxes, radio groups and tabs.
//
// The tip is the hint that the workspace shows in its information bar while the
// pointer rests on the button (pointerEntered / pointerLeft). Before playing
// its skin sound the button asks its owner through soundQuery, whose handler
// may set the suppress flag (16-bit, non-zero = stay silent); the flag is
// passed by reference, so the handler must be connected directly.
//
// Caption and tip are also the accessible name and description, so that screen
// readers and test drivers find the button by what it says.
class TouchButton : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
    Q_PROPERTY(QString tip READ tip WRITE setTip)
    Q_PROPERTY(bool value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(bool toggles READ toggles WRITE setToggles)
    Q_PROPERTY(QString soundFile READ soundFile WRITE setSoundFile)
    Q_PROPERTY(int index READ index WRITE setIndex)

public:
    explicit TouchButton(QWidget *parent = nullptr);
    explicit TouchButton(const QString &caption, QWidget *parent = nullptr);

    QString caption() const;
    void setCaption(const QString &caption);

    QString tip() const;
    void setTip(const QString &tip);

    // The lasting pressed state. A check or radio button shows it sunken and
    // orange; the momentary press look while the mouse is held is separate.
    bool value() const;
    void setValue(bool pressed);

    // When true, every click inverts the value (a check box).
    bool toggles() const;
    void setToggles(bool toggles);

    void setPicture(const QPixmap &picture);

    QString soundFile() const;
    void setSoundFile(const QString &path);

    // Position in a control array; -1 when the button stands alone.
    int index() const;
    void setIndex(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

    // Where each character of the caption stands on the button as painted,
    // in the button's coordinates; an empty rectangle for a space that a
    // line break took. For screen magnifiers and readers.
    QList<QRect> captionCharacterRects() const;

signals:
    void pointerEntered();
    void pointerLeft();
    void valueChanged(bool pressed);
    void soundQuery(qint16 &suppress);
    void soundPlayed(const QString &path);

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void nextCheckState() override;
    bool hitButton(const QPoint &pos) const override;

private:
    void playSound();
    QRect contentBox() const;
    QRect captionBox(const QRect &content) const;
    int checkMarkSize() const;
    void paintCheckMark(QPainter &painter, const QRect &content) const;
    int captionFlags() const;
    int naturalCaptionWidth() const;
    int widestPieceWidth() const;

    QString m_tip;
    QString m_soundFile;
    bool m_toggles = false;
    bool m_hovered = false;
    int m_index = -1;
};
