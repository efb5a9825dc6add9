#include "workspace/SideMenuBar.h"

#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchTheme.h"

#include <QGridLayout>
#include <QLabel>

namespace {

constexpr int ColumnButtonHeight = 52;
constexpr int ColumnSpacing = 7;
constexpr int PairSpacing = 6;
constexpr int TitleHeightInColumn = 58;

} // namespace

SideMenuBar::SideMenuBar(Bar index, QWidget *parent)
    : TouchPanel(parent)
    , m_grid(new QGridLayout(this))
{
    // Two buttons side by side share the width evenly.
    m_grid->setColumnStretch(0, 1);
    m_grid->setColumnStretch(1, 1);
    setObjectName(QStringLiteral("SideMenuBars%1").arg(index));
    setIndex(index);

    if (index == DocumentBar) {
        setCaption(QStringLiteral("このドキュメント"));
        heading(QStringLiteral("タイトル"));
        m_title = new TouchEdit(this);
        m_title->setObjectName(QStringLiteral("SideMenuBarDescriptions100"));
        m_title->setIndex(100);
        m_title->setCaption(QStringLiteral("タイトル"));
        m_title->setPrompt(QStringLiteral("タイトルを入力してください"));
        m_title->setImeMode(TouchEdit::ImeHiragana);
        addButton(ZoomIn, QStringLiteral("拡大"), QStringLiteral("クリックすると、拡大します。"));
        addButton(ZoomOut, QStringLiteral("縮小"), QStringLiteral("クリックすると、縮小します。"));
        addButton(Revert, QStringLiteral("元に戻す"),
                  QStringLiteral("クリックすると、このドキュメントの今までの作業をすべてキャンセルして、保存された状態に復元します。"));
        addButton(Copy, QStringLiteral("コピー"), QStringLiteral("クリックすると、このドキュメントをコピーします。"));
        addButton(Delete, QStringLiteral("削除"), QStringLiteral("クリックすると、このドキュメントを削除します。"));
        addButton(Save, QStringLiteral("保存して閉じる"), QStringLiteral("クリックすると、このドキュメントを保存します。"));
    } else {
        setCaption(QStringLiteral("文字サイズ"));
        addButton(Larger, QStringLiteral("大きく"), QStringLiteral("クリックすると、文字のサイズを大きくします。"));
        addButton(Smaller, QStringLiteral("小さく"), QStringLiteral("クリックすると、文字のサイズを小さくします。"));
        heading(QStringLiteral("行の揃え"));
        addButton(AlignLeft, QStringLiteral("左揃え"), QStringLiteral("クリックすると、行を左端に揃えます。"));
        addButton(AlignCenter, QStringLiteral("中央揃え"), QStringLiteral("クリックすると、行を中央に揃えます。"));
        addButton(AlignRight, QStringLiteral("右揃え"), QStringLiteral("クリックすると、行を右端に揃えます。"));
        addButton(Bullet, QStringLiteral("行頭に記号"), QStringLiteral("クリックしてチェックすると、行の始めに記号を付けます。"));
        addButton(Timestamp, QStringLiteral("日付を入れる"), QStringLiteral("クリックすると、指定した場所にタイムスタンプを挿入します。"));
    }
    arrange();
}

void SideMenuBar::setArrangement(Arrangement arrangement)
{
    if (arrangement == m_arrangement)
        return;
    m_arrangement = arrangement;
    arrange();
}

int SideMenuBar::neededHeight(Arrangement arrangement, int width)
{
    const Arrangement shown = m_arrangement;
    setArrangement(arrangement);
    const int needed = m_grid->totalHeightForWidth(width);
    setArrangement(shown);
    return needed > 0 ? needed : m_grid->totalMinimumSize().height();
}

// Rebuilds the grid for the arrangement. In one column: headings, the title,
// the buttons one under another (the zoom and size pairs side by side), and
// 保存して閉じる alone at the bottom. In pairs: the title across, then the
// document's buttons two by two; on the format bar the sizes down the left,
// the alignments down the right, and 日付を入れる across the bottom.
void SideMenuBar::arrange()
{
    while (m_grid->count() > 0)
        delete m_grid->takeAt(0);
    for (int row = 0; row < m_grid->rowCount(); ++row)
        m_grid->setRowStretch(row, 0);

    const bool pairs = m_arrangement == Arrangement::Pairs;
    m_grid->setSpacing(pairs ? PairSpacing : ColumnSpacing);
    for (TouchButton *button : std::as_const(m_buttons))
        button->setMinimumHeight(pairs ? 0 : ColumnButtonHeight);
    // In a column the title's prompt takes two lines of readable type; across
    // a pair it has the width for one.
    if (m_title)
        m_title->setMinimumHeight(pairs ? 0 : TitleHeightInColumn);
    for (QLabel *label : std::as_const(m_headings))
        label->setVisible(!pairs);

    const auto put = [this](QWidget *widget, int row, int column, int columns = 1) {
        m_grid->addWidget(widget, row, column, 1, columns);
    };
    const auto button = [this](Action index) { return SideMenuBarMiniChannels(index); };
    int row = 0;
    if (index() == DocumentBar) {
        if (!pairs)
            put(m_headings.at(0), row++, 0, 2);
        put(m_title, row++, 0, 2);
        put(button(ZoomIn), row, 0);
        put(button(ZoomOut), row++, 1);
        if (pairs) {
            put(button(Revert), row, 0);
            put(button(Copy), row++, 1);
            put(button(Delete), row, 0);
            put(button(Save), row++, 1);
        } else {
            for (Action action : {Revert, Copy, Delete})
                put(button(action), row++, 0, 2);
            m_grid->setRowStretch(row++, 1);
            put(button(Save), row++, 0, 2);
        }
    } else if (pairs) {
        const Action left[] = {Larger, Smaller, Bullet};
        const Action right[] = {AlignLeft, AlignCenter, AlignRight};
        for (int i = 0; i < 3; ++i, ++row) {
            put(button(left[i]), row, 0);
            put(button(right[i]), row, 1);
        }
        put(button(Timestamp), row++, 0, 2);
    } else {
        put(button(Larger), row, 0);
        put(button(Smaller), row++, 1);
        put(m_headings.at(0), row++, 0, 2);
        for (Action action : {AlignLeft, AlignCenter, AlignRight, Bullet, Timestamp})
            put(button(action), row++, 0, 2);
        m_grid->setRowStretch(row++, 1);
    }
    if (pairs)
        m_grid->setRowStretch(row, 1);
    m_grid->invalidate();
}

QLabel *SideMenuBar::heading(const QString &text)
{
    auto *label = new QLabel(text, this);
    label->setObjectName(QStringLiteral("SideMenuBarTopics"));
    label->setFont(TouchTheme::titleFont(22));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, TouchTheme::ink());
    label->setPalette(palette);
    m_headings.append(label);
    return label;
}

TouchButton *SideMenuBar::addButton(Action index, const QString &caption, const QString &tip)
{
    auto *button = new TouchButton(caption, this);
    button->setObjectName(QStringLiteral("SideMenuBarMiniChannels%1").arg(index));
    button->setIndex(index);
    button->setTip(tip);
    m_buttons.append(button);
    connect(button, &QAbstractButton::clicked, this, [this, index] { emit buttonClicked(index); });
    return button;
}

TouchButton *SideMenuBar::SideMenuBarMiniChannels(Action index) const
{
    for (TouchButton *button : m_buttons) {
        if (button->index() == index)
            return button;
    }
    return nullptr;
}
