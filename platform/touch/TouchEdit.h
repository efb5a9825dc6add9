#pragma once

#include <QLineEdit>

// A large one-line text field with a prompt that stands in it while it is
// empty ("タイトルを入力してください"). The prompt is drawn here rather than as
// Qt's placeholder, which would cut a long prompt short with "..."; this one
// shrinks its type until the whole prompt fits. The IME mode tells which kind of input
// the field wants (4 = hiragana); the input-method bridge reads it, and
// imeModeChanged / focusEntered tell it when to act.
class TouchEdit : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
    Q_PROPERTY(QString tip READ tip WRITE setTip)
    Q_PROPERTY(QString prompt READ prompt WRITE setPrompt)
    Q_PROPERTY(int IMEMode READ imeMode WRITE setImeMode NOTIFY imeModeChanged)
    Q_PROPERTY(int index READ index WRITE setIndex)

public:
    // The input-method modes a field can ask for.
    enum ImeMode {
        ImeNoControl = 0,
        ImeOn = 1,
        ImeOff = 2,
        ImeDisable = 3,
        ImeHiragana = 4,
        ImeKatakanaFull = 5,
        ImeKatakanaHalf = 6,
        ImeAlphaFull = 7,
        ImeAlpha = 8,
        ImeHangulFull = 9,
        ImeHangul = 10,
    };

    explicit TouchEdit(QWidget *parent = nullptr);

    // What the field is for ("タイトル"); its accessible name. Without one the
    // prompt names the field.
    QString caption() const;
    void setCaption(const QString &caption);

    QString tip() const;
    void setTip(const QString &tip);

    QString prompt() const;
    void setPrompt(const QString &prompt);

    int imeMode() const;
    void setImeMode(int mode);

    int index() const;
    void setIndex(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void pointerEntered();
    void pointerLeft();
    void imeModeChanged(int mode);
    void focusEntered();

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void updateAccessibleName();
    void applyLook();
    void paintFrame();

    QString m_caption;
    QString m_prompt;
    bool m_composing = false;
    QString m_tip;
    static constexpr int FrameWidth = 2;
    int m_lookPixelSize = 0;
    bool m_hovered = false;
    int m_imeMode = ImeNoControl;
    int m_index = -1;
};
