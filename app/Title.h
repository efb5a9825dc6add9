#pragma once

#include <QPixmap>
#include <QWidget>

// The splash window shown while the workspace loads: a lantern glowing on a
// warm evening sky, with the program's name.
class Title : public QWidget
{
    Q_OBJECT

public:
    explicit Title(QWidget *parent = nullptr);
    ~Title() override;

    // The splash picture from `path`, or drawn afresh when that file is
    // missing or not the picture's size.
    static QPixmap picture(const QString &path);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_picture;
};
