#pragma once

#include "platform/handwriting/HandwritingRecognizer.h"

#include <QWidget>

// The square a character is written in with the mouse: pressing, moving and
// releasing draws one stroke in thick ink over a faint centre cross. Strokes
// are kept in the square's own units (0 to Side), so that how large it is
// drawn does not change what it reads as.
class InkCanvas : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Side = 160;

    explicit InkCanvas(QWidget *parent = nullptr);

    double scale() const { return m_scale; }
    void setScale(double scale);
    QSize sizeHint() const override;

    const QList<HandwritingRecognizer::Stroke> &strokes() const { return m_strokes; }

public slots:
    void clear();
    void removeLastStroke();

signals:
    // The mouse was released: one more stroke is finished.
    void strokeDrawn();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPointF toOwnUnits(const QPointF &position) const;
    void addPoint(const QPointF &position);

    QList<HandwritingRecognizer::Stroke> m_strokes;
    bool m_drawing = false;
    double m_scale = 1.0;
};
