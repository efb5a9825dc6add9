#pragma once

#include "platform/touch/TouchPanel.h"

#include <QList>

class QGridLayout;
class QLabel;
class TouchButton;
class TouchEdit;

// A side bar beside the open document: big buttons under headings. The
// document bar (100) carries the title field and the document actions
// 100-105; the format bar (200) the format actions 200-206.
//
// When the screen is tall enough the buttons stand in one column; when a pad
// takes the bottom of the screen they stand in pairs, so that every one of
// them stays in view.
class SideMenuBar : public TouchPanel
{
    Q_OBJECT

public:
    // The bars, SideMenuBars(index).
    enum Bar : qint16 { DocumentBar = 100,
                        FormatBar = 200 };

    // Their buttons, SideMenuBarMiniChannels(index).
    enum Action : qint16 {
        // Document actions
        ZoomIn = 100,
        ZoomOut = 101,
        Revert = 102,
        Copy = 103,
        Delete = 104,
        Save = 105,
        // Format actions
        Larger = 200,
        Smaller = 201,
        AlignLeft = 202,
        AlignCenter = 203,
        AlignRight = 204,
        Bullet = 205,
        Timestamp = 206,
    };

    enum class Arrangement { Column,
                             Pairs };

    // The bar with the given index (100 or 200), with its headings and buttons.
    explicit SideMenuBar(Bar index, QWidget *parent = nullptr);

    TouchButton *SideMenuBarMiniChannels(Action index) const;
    const QList<TouchButton *> &buttons() const { return m_buttons; }
    // The document title field; only on the document bar.
    TouchEdit *titleField() const { return m_title; }

    Arrangement arrangement() const { return m_arrangement; }
    void setArrangement(Arrangement arrangement);
    // The height the bar needs, at the given width, to show all it holds.
    int neededHeight(Arrangement arrangement, int width);

signals:
    void buttonClicked(SideMenuBar::Action action);

private:
    QLabel *heading(const QString &text);
    TouchButton *addButton(Action index, const QString &caption, const QString &tip);
    void arrange();

    QGridLayout *m_grid;
    Arrangement m_arrangement = Arrangement::Column;
    QList<TouchButton *> m_buttons;
    QList<QLabel *> m_headings;
    TouchEdit *m_title = nullptr;
};
