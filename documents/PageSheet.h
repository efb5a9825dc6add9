#pragma once

#include <QWidget>

// A sheet of paper lying on the workspace: a white page with a soft shadow,
// and a margin of workspace around it. The boxes of a document page are
// children of paper(), placed in its coordinates.
class PageSheet : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Margin = 24;

    explicit PageSheet(QWidget *parent = nullptr);

    QWidget *paper() const { return m_paper; }
    void setPaperSize(const QSize &size);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *m_paper;
};
