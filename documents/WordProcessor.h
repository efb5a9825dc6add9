#pragma once

#include <QFont>
#include <QImage>
#include <QTextEdit>
#include <QTimer>
#include <QVariant>

class QTextDocument;

// One rich-text box of the word-processor applet. Colours and underlining
// never survive in it: after every change, typed or pasted, the changed range
// loses them, with the caret and the selection left where they were. The box
// also shows its text at a zoom of its own, so that a page shown at 200 %
// has its letters twice as big, not only its boxes.
class WordProcessor : public QTextEdit
{
    Q_OBJECT

public:
    explicit WordProcessor(QWidget *parent = nullptr);

    void setVisible(bool visible) override;

    // The control-array index; element 0 is the pattern, never shown.
    int index() const { return m_index; }
    void setIndex(int index) { m_index = index; }

    // The 32-bit value a placed box takes from its Reserved1.
    void setReservedValue(qint32 value) { m_reserved = value; }
    qint32 reservedValue() const { return m_reserved; }

    // The font of text that names none. The box's widget font may grow and
    // shrink with the zoom of the controls; this one does not.
    void setBaseFont(const QFont &font);
    QFont baseFont() const { return m_baseFont; }

    // Letters at percent of their size; 100 is the printed size.
    void setTextZoom(int percent);
    int textZoom() const { return m_textZoom; }

    // The rich-text box's selection members. A selection whose parts differ
    // answers an empty value, as the rich-text box answers Null.
    QVariant selFontSize() const;
    void setSelFontSize(double points);
    // 0 left, 1 right, 2 centre.
    QVariant selAlignment() const;
    void setSelAlignment(int alignment);
    // Whether the selected paragraphs carry a bullet.
    QVariant selBullet() const;
    void setSelBullet(bool bullet);
    // Replaces the selection.
    void setSelText(const QString &text);

    // Runs the clean-up of the changes made so far, if it is still waiting.
    // Returns whether it took anything out.
    bool cleanUpNow();

    // Takes colours and underlining out of characters from..to of a document.
    // Returns whether anything changed.
    static bool stripColourAndUnderline(QTextDocument *document, int from, int to, bool joinUndo);

signals:
    // The text or its formatting changed (after the clean-up of that change).
    void edited();

protected:
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    void changeEvent(QEvent *event) override;

private:
    QList<QTextBlock> selectedBlocks() const;
    void noteChange(int position, int removed, int added);

    bool m_shownBefore = false;
    int m_index = 0;
    qint32 m_reserved = 0;
    int m_textZoom = 100;
    QFont m_baseFont;
    // A picture of no size whose resolution sets how big the letters are laid out.
    QImage m_zoomDevice;
    // The characters changed since the last clean-up, as one range.
    int m_pendingFrom = -1;
    int m_pendingTo = -1;
    bool m_cleaning = false;
    QTimer m_cleanupTimer;
};
