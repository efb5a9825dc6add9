#pragma once

#include <QWidget>

class KeyTable;

// One pad's key picture: square keys on a 30-pixel grid, the first 10 pixels
// from the left and top, each showing the legend of its key in the key
// table. Drawn larger than its own units for legibility (the scale); mouse
// positions are reported back in the pad's own units.
class KeypadView : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Margin = 10;
    static constexpr int KeySize = 30;

    KeypadView(qint32 pad, int columns, int rows, const KeyTable *table, QWidget *parent = nullptr);

    qint32 pad() const { return m_pad; }
    double scale() const { return m_scale; }
    void setScale(double scale);
    // The cell drawn pressed; (0, 0) for none.
    void setHighlight(int column, int row);

    QSize sizeHint() const override;

signals:
    void mouseDown(int x, int y);
    void mouseUp(int x, int y);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPoint toPadUnits(const QPointF &position) const;

    qint32 m_pad;
    int m_columns;
    int m_rows;
    const KeyTable *m_table;
    double m_scale = 1.0;
    int m_highlightColumn = 0;
    int m_highlightRow = 0;
};
