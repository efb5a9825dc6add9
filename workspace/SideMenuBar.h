#pragma once

#include "platform/touch/TouchPanel.h"

#include <QList>

class QLabel;
class QVBoxLayout;
class TouchButton;
class TouchEdit;

// A side bar beside the open document: a column of big buttons under
// headings. The document bar (100) carries the title field and the document
// actions 100-105; the format bar (200) the format actions 200-206.
class SideMenuBar : public TouchPanel
{
    Q_OBJECT

public:
    static constexpr int DocumentBar = 100;
    static constexpr int FormatBar = 200;

    // Document actions
    static constexpr int ZoomIn = 100;
    static constexpr int ZoomOut = 101;
    static constexpr int Revert = 102;
    static constexpr int Copy = 103;
    static constexpr int Delete = 104;
    static constexpr int Save = 105;
    // Format actions
    static constexpr int Larger = 200;
    static constexpr int Smaller = 201;
    static constexpr int AlignLeft = 202;
    static constexpr int AlignCenter = 203;
    static constexpr int AlignRight = 204;
    static constexpr int Bullet = 205;
    static constexpr int Timestamp = 206;

    // The bar with the given index (100 or 200), with its headings and buttons.
    explicit SideMenuBar(int index, QWidget *parent = nullptr);

    TouchButton *SideMenuBarMiniChannels(int index) const;
    const QList<TouchButton *> &buttons() const { return m_buttons; }
    // The document title field; only on the document bar.
    TouchEdit *titleField() const { return m_title; }

signals:
    void buttonClicked(int index);

private:
    QLabel *heading(const QString &text);
    TouchButton *addButton(int index, const QString &caption, const QString &tip);

    QVBoxLayout *m_layout;
    QList<TouchButton *> m_buttons;
    TouchEdit *m_title = nullptr;
};
