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

    enum class Arrangement { Column, Pairs };

    // The bar with the given index (100 or 200), with its headings and buttons.
    explicit SideMenuBar(int index, QWidget *parent = nullptr);

    TouchButton *SideMenuBarMiniChannels(int index) const;
    const QList<TouchButton *> &buttons() const { return m_buttons; }
    // The document title field; only on the document bar.
    TouchEdit *titleField() const { return m_title; }

    Arrangement arrangement() const { return m_arrangement; }
    void setArrangement(Arrangement arrangement);
    // The height the bar needs, at the given width, to show all it holds.
    int neededHeight(Arrangement arrangement, int width);

signals:
    void buttonClicked(int index);

private:
    QLabel *heading(const QString &text);
    TouchButton *addButton(int index, const QString &caption, const QString &tip);
    void arrange();

    QGridLayout *m_grid;
    Arrangement m_arrangement = Arrangement::Column;
    QList<TouchButton *> m_buttons;
    QList<QLabel *> m_headings;
    TouchEdit *m_title = nullptr;
};
