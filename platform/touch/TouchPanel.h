#pragma once

#include <QPixmap>
#include <QPoint>
#include <QWidget>

// A box with rounded corners, a soft shadow and an optional title strip. A
// draggable panel moves with the mouse when its own surface (not one of its
// buttons) is pressed and dragged, and stays inside its parent.
//
// A panel can hold a music file and a sound-playing state: turning the state
// on (or showing a panel that has a tune) asks for the tune to start through
// musicStarted, turning it off through musicStopped. Whoever plays music for
// the program connects to those two. Children belong in contentsRect(), which
// leaves out the title strip and the shadow.
class TouchPanel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
    Q_PROPERTY(QString tip READ tip WRITE setTip)
    Q_PROPERTY(bool draggable READ isDraggable WRITE setDraggable)
    Q_PROPERTY(bool frameActive READ isFrameActive WRITE setFrameActive)
    Q_PROPERTY(bool soundPlaying READ isSoundPlaying WRITE setSoundPlaying NOTIFY soundPlayingChanged)
    Q_PROPERTY(QString musicFile READ musicFile WRITE setMusicFile)
    Q_PROPERTY(int index READ index WRITE setIndex)

public:
    explicit TouchPanel(QWidget *parent = nullptr);
    explicit TouchPanel(const QString &caption, QWidget *parent = nullptr);

    // The hint of every draggable box.
    static QString dragTip();

    QString caption() const;
    void setCaption(const QString &caption);

    QString tip() const;
    void setTip(const QString &tip);

    bool isDraggable() const;
    // Making a panel draggable gives it the drag hint unless it has a tip.
    void setDraggable(bool draggable);

    // Whether the title strip is drawn in the active colour.
    bool isFrameActive() const;
    void setFrameActive(bool active);

    bool isSoundPlaying() const;
    void setSoundPlaying(bool playing);

    QString musicFile() const;
    void setMusicFile(const QString &path);

    int index() const;
    void setIndex(int index);

    QSize sizeHint() const override;

public slots:
    void play();
    void stop();

signals:
    void pointerEntered();
    void pointerLeft();
    void dragFinished(const QPoint &from, const QPoint &to);
    void soundPlayingChanged(bool playing);
    void musicStarted(const QString &path);
    void musicStopped();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void paintFrame(QPainter &painter);
    void invalidateFrame();
    int titleHeight() const;
    QRectF frameRect() const;
    void updateMargins();
    QPoint keptInsideParent(QPoint topLeft) const;

    QString m_tip;
    QString m_musicFile;
    bool m_draggable = false;
    bool m_frameActive = true;
    bool m_soundPlaying = false;
    bool m_dragging = false;
    bool m_dragStarted = false; // the pointer has travelled far enough to move
    QPoint m_pressGlobal;
    QPoint m_startPos;
    int m_index = -1;
};
