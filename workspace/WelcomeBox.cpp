#include "workspace/WelcomeBox.h"

#include "documents/Database.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchTheme.h"
#include "tools/FlatScrollBar.h"
#include "workspace/CardDelegate.h"

#include <QHBoxLayout>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString GridTip = QStringLiteral("クリックして選択できます");
// The one template the store knows: the blank document.
const QString BlankTemplateCell = QStringLiteral("白紙の文書\r\n何も書かれていない新しいドキュメントを作ります。");

constexpr int PathRole = Qt::UserRole;
constexpr int TemplateRole = Qt::UserRole + 1;

QLabel *line(const QString &text, QWidget *parent, int pixelSize = 22)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setFont(TouchTheme::captionFont(pixelSize));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, TouchTheme::ink());
    label->setPalette(palette);
    return label;
}

QTableWidget *grid(int index, QWidget *parent)
{
    auto *table = new QTableWidget(parent);
    table->setObjectName(QStringLiteral("MenuBoxFigures%1").arg(index));
    table->setProperty("index", index);
    table->setToolTip(GridTip);
    table->setAccessibleDescription(GridTip);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->setShowGrid(false);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setWordWrap(true);
    table->setFocusPolicy(Qt::NoFocus);
    table->setFont(TouchTheme::captionFont(24));
    table->setFrameShape(QFrame::NoFrame);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    QPalette palette = table->palette();
    palette.setColor(QPalette::Base, QColor(0xff, 0xfd, 0xf7));
    palette.setColor(QPalette::Text, TouchTheme::ink());
    palette.setColor(QPalette::Highlight, TouchTheme::accent());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    table->setPalette(palette);
    table->setItemDelegate(new CardDelegate(table));
    // Cards warm up under the pointer.
    table->setMouseTracking(true);
    table->viewport()->setAttribute(Qt::WA_Hover);
    return table;
}

} // namespace

WelcomeBox::WelcomeBox(QWidget *parent)
    : TouchPanel(QStringLiteral("スタート"), parent)
{
    setObjectName(QStringLiteral("MenuBoxes200"));
    setIndex(200);
    setDraggable(true);

    auto *close = addButton(CloseButton, QStringLiteral("閉じる"), QStringLiteral("クリックすると、[ようこそ] ウィンドウを閉じます。"));
    auto *newTab = addButton(TemplatesTab, QStringLiteral("新規作成"), QString());
    auto *recentTab = addButton(RecentTab, QStringLiteral("履歴"), QString());
    newTab->setTip(QStringLiteral("クリックすると、新しいドキュメントを作るためのテンプレートを表示します。"));
    recentTab->setTip(QStringLiteral("クリックすると、保存されたドキュメントの一覧を表示します。"));
    connect(close, &QAbstractButton::clicked, this, &WelcomeBox::closeRequested);
    connect(newTab, &QAbstractButton::clicked, this, [this] { MenuBoxMiniChannels_Click(TemplatesTab); });
    connect(recentTab, &QAbstractButton::clicked, this, [this] { MenuBoxMiniChannels_Click(RecentTab); });

    // The two tabs, what they mean, and the close button on one row.
    auto *intro = new QVBoxLayout;
    intro->setSpacing(2);
    intro->addWidget(line(QStringLiteral("[新規作成] は、新しいドキュメントを表示・編集できます。"), this, 20));
    intro->addWidget(line(QStringLiteral("[履歴] は、保存されたドキュメントを再び表示・編集できます。"), this, 20));
    auto *head = new QHBoxLayout;
    head->setSpacing(16);
    head->addWidget(newTab);
    head->addWidget(recentTab);
    head->addSpacing(8);
    head->addLayout(intro, 1);
    head->addWidget(close);

    m_pages[0] = buildTemplatesPage();
    m_pages[1] = buildRecentPage();

    // Writing that a crash or a power cut kept from being saved.
    m_leftBehind = new QWidget(this);
    // A warm band, so that the offer is seen before anything else.
    m_leftBehind->setAutoFillBackground(true);
    QPalette band = m_leftBehind->palette();
    band.setColor(QPalette::Window, QColor(0xff, 0xe8, 0xc4));
    m_leftBehind->setPalette(band);
    m_leftBehindText = line(QString(), m_leftBehind, 24);
    m_leftBehindButton = new TouchButton(QStringLiteral("その文章を開く"), m_leftBehind);
    m_leftBehindButton->setObjectName(QStringLiteral("LeftBehindButton"));
    m_leftBehindButton->setTip(QStringLiteral("クリックすると、保存されないまま残っていた文章を開きます。"));
    connect(m_leftBehindButton, &QAbstractButton::clicked, this, &WelcomeBox::leftBehindChosen);
    auto *leftBehindRow = new QHBoxLayout(m_leftBehind);
    leftBehindRow->setContentsMargins(12, 8, 12, 8);
    leftBehindRow->setSpacing(16);
    leftBehindRow->addWidget(m_leftBehindText, 1);
    leftBehindRow->addWidget(m_leftBehindButton);
    m_leftBehind->hide();

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addLayout(head);
    layout->addWidget(m_leftBehind);
    layout->addWidget(m_pages[0], 1);
    layout->addWidget(m_pages[1], 1);

    MenuBoxMiniChannels_Click(TemplatesTab);
}

TouchButton *WelcomeBox::addButton(int index, const QString &caption, const QString &tip)
{
    auto *button = new TouchButton(caption, this);
    button->setObjectName(QStringLiteral("MenuBoxMiniChannels%1").arg(index));
    button->setIndex(index);
    button->setTip(tip);
    m_buttons.append(button);
    return button;
}

QWidget *WelcomeBox::buildTemplatesPage()
{
    auto *page = new TouchPanel(QStringLiteral("テンプレート"), this);
    page->setObjectName(QStringLiteral("MenuBoxPages200"));
    page->setIndex(TemplatesPage);
    m_templates = grid(TemplatesPage, page);
    m_templates->setColumnCount(1);
    m_templates->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connect(m_templates, &QTableWidget::cellClicked, this, &WelcomeBox::templateClicked);

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(line(QStringLiteral("次のリストからドキュメントのテンプレートを選択してください。"), page));
    layout->addWidget(m_templates, 1);
    fillTemplates();
    return page;
}

QWidget *WelcomeBox::buildRecentPage()
{
    auto *page = new TouchPanel(QStringLiteral("最近使ったドキュメント"), this);
    page->setObjectName(QStringLiteral("MenuBoxPages201"));
    page->setIndex(RecentPage);

    m_keyword = new TouchEdit(page);
    m_keyword->setObjectName(QStringLiteral("MenuBoxDescriptions200"));
    m_keyword->setIndex(200);
    m_keyword->setCaption(QStringLiteral("キーワード"));
    m_keyword->setPrompt(QStringLiteral("検索したいキーワードを入力してください"));
    m_keyword->setImeMode(TouchEdit::ImeHiragana);
    connect(m_keyword, &QLineEdit::returnPressed, this, &WelcomeBox::search);

    auto *find = new TouchButton(QStringLiteral("検索"), page);
    find->setObjectName(QStringLiteral("MenuBoxMiniChannels%1").arg(SearchButton));
    find->setIndex(SearchButton);
    find->setTip(QStringLiteral("クリックすると、キーワードに関連付けられた情報を検索します。"));
    connect(find, &QAbstractButton::clicked, this, &WelcomeBox::search);
    m_buttons.append(find);

    auto *back = new TouchButton(QStringLiteral("◀ 前へ"), page);
    back->setObjectName(QStringLiteral("MenuBoxMiniChannels%1").arg(BackButton));
    back->setIndex(BackButton);
    back->setTip(QStringLiteral("クリックし続けると、前へ戻っていきます。"));
    auto *forward = new TouchButton(QStringLiteral("次へ ▶"), page);
    forward->setObjectName(QStringLiteral("MenuBoxMiniChannels%1").arg(ForwardButton));
    forward->setIndex(ForwardButton);
    forward->setTip(QStringLiteral("クリックし続けると、後ろへ進んでいきます。"));
    for (TouchButton *button : {back, forward}) {
        button->setAutoRepeat(true);
        button->setAutoRepeatDelay(400);
        button->setAutoRepeatInterval(150);
        m_buttons.append(button);
    }
    connect(back, &QAbstractButton::clicked, this, [this] { scrollBy(-1); });
    connect(forward, &QAbstractButton::clicked, this, [this] { scrollBy(1); });

    // One column per document: its title above, its save time below.
    m_recent = grid(RecentPage, page);
    m_recent->setRowCount(2);
    m_recent->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_recent->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_recent, &QTableWidget::cellClicked, this, &WelcomeBox::documentClicked);
    connect(m_recent->horizontalScrollBar(), &QScrollBar::valueChanged, this, &WelcomeBox::gridScrolled);
    connect(m_recent, &QTableWidget::currentCellChanged, this, [this](int row, int column) {
        if (row < 0 || column < 0)
            return;
        const QRect cell = m_recent->visualRect(m_recent->model()->index(row, column));
        if (!m_recent->viewport()->rect().contains(cell))
            m_recent->horizontalScrollBar()->setValue(column);
    });

    m_recent->installEventFilter(this);
    m_recent->setMinimumHeight(150);

    m_scrollBar = new FlatScrollBar(this);
    m_scrollBar->SetWindow(m_recent);
    m_scrollBar->Initialize();

    auto *searchRow = new QHBoxLayout;
    searchRow->addWidget(m_keyword, 1);
    searchRow->addWidget(find);
    auto *listRow = new QHBoxLayout;
    listRow->addWidget(back);
    listRow->addWidget(m_recent, 1);
    listRow->addWidget(forward);

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(line(QStringLiteral("次のリストからドキュメントを選択してください。"), page));
    layout->addLayout(searchRow);
    layout->addLayout(listRow, 1);
    return page;
}

void WelcomeBox::setBoxSize(const QSize &size)
{
    resize(size);
    fitRecentGrid();
    m_templates->verticalHeader()->setDefaultSectionSize(std::max(96, size.height() / 6));
    for (int row = 0; row < m_templates->rowCount(); ++row)
        m_templates->setRowHeight(row, std::max(96, size.height() / 6));
}

void WelcomeBox::offerLeftBehind(const std::optional<QString> &title)
{
    if (!title) {
        m_leftBehind->hide();
        return;
    }
    const QString name = title->trimmed().isEmpty() ? QStringLiteral("タイトルのない文章") : QStringLiteral("「%1」").arg(title->trimmed());
    m_leftBehindText->setText(QStringLiteral("前回、保存されないまま終わった文章があります。\n%1").arg(name));
    m_leftBehind->show();
}

// The recent grid shows as many whole cards as fit, three at most, and no
// card cut by the grid's edge. The title row takes what the time row leaves
// of the grid's height.
void WelcomeBox::fitRecentGrid()
{
    constexpr int SmallestCard = 200;
    // The viewport follows the grid only after the grid's own resize.
    const QSize view = m_recent->maximumViewportSize();
    const int room = view.width();
    const int cards = std::clamp(room / SmallestCard, 1, 3);
    m_recent->horizontalHeader()->setDefaultSectionSize(std::max(1, room / cards));
    for (int column = 0; column < m_recent->columnCount(); ++column)
        m_recent->setColumnWidth(column, std::max(1, room / cards));
    const int timeHeight = 48;
    m_recent->setRowHeight(1, timeHeight);
    m_recent->setRowHeight(0, std::max(60, view.height() - timeHeight));
}

bool WelcomeBox::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_recent && event->type() == QEvent::Resize)
        fitRecentGrid();
    return TouchPanel::eventFilter(watched, event);
}

void WelcomeBox::fillTemplates()
{
    m_templates->setRowCount(1);
    auto *item = new QTableWidgetItem;
    // The cell holds its lines joined with CR LF; the grid shows them as lines.
    item->setData(Qt::UserRole + 2, BlankTemplateCell);
    item->setText(QString(BlankTemplateCell).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    item->setData(TemplateRole, int(Database::BlankTemplate));
    item->setToolTip(GridTip);
    m_templates->setItem(0, 0, item);
}

void WelcomeBox::fillLists()
{
    m_all = RecentDocuments::list();
    if (!m_keyword->text().trimmed().isEmpty())
        m_shown = RecentDocuments::matching(m_all, m_keyword->text());
    else
        m_shown = m_all;
    fillRecent(m_shown);
}

void WelcomeBox::search()
{
    m_shown = RecentDocuments::matching(m_all, m_keyword->text());
    fillRecent(m_shown);
    MenuBoxMiniChannels_Click(RecentTab);
}

void WelcomeBox::fillRecent(const QList<RecentDocuments::Entry> &entries)
{
    const QDateTime now = m_now.isValid() ? m_now : QDateTime::currentDateTime();
    m_recent->setUpdatesEnabled(false);
    m_recent->clearContents();
    m_recent->setColumnCount(int(entries.size()));
    for (int column = 0; column < entries.size(); ++column) {
        const RecentDocuments::Entry &entry = entries.at(column);
        auto *title = new QTableWidgetItem(RecentDocuments::titleText(entry.title));
        title->setData(PathRole, entry.path);
        title->setTextAlignment(Qt::AlignCenter);
        title->setToolTip(GridTip);
        auto *time = new QTableWidgetItem(RecentDocuments::timeText(entry.timestamp, now));
        time->setData(PathRole, entry.path);
        time->setTextAlignment(Qt::AlignCenter);
        time->setToolTip(GridTip);
        QFont small = m_recent->font();
        small.setPixelSize(20);
        time->setFont(small);
        m_recent->setItem(0, column, title);
        m_recent->setItem(1, column, time);
    }
    m_recent->horizontalScrollBar()->setValue(0);
    m_recent->setUpdatesEnabled(true);
    m_scrollBar->HScrollRange(0, std::max(0, int(entries.size()) - 1));
    m_scrollBar->SetHScrollPosition(0);
}

void WelcomeBox::MenuBoxMiniChannels_Click(int index)
{
    if (index != TemplatesTab && index != RecentTab)
        return;
    const int chosen = index == TemplatesTab ? TemplatesPage : RecentPage;
    for (QWidget *page : m_pages) {
        page->setVisible(page->property("index").toInt() == chosen);
        page->update();
    }
    for (TouchButton *button : m_buttons) {
        if (button->index() == TemplatesTab || button->index() == RecentTab)
            button->setValue(button->index() == index);
    }
}

int WelcomeBox::shownPage() const
{
    return m_pages[1]->isVisibleTo(this) ? RecentPage : TemplatesPage;
}

TouchButton *WelcomeBox::MenuBoxMiniChannels(int index) const
{
    for (TouchButton *button : m_buttons) {
        if (button->index() == index)
            return button;
    }
    return nullptr;
}

QWidget *WelcomeBox::MenuBoxPages(int index) const
{
    return index == TemplatesPage ? m_pages[0] : index == RecentPage ? m_pages[1]
                                                                     : nullptr;
}

QTableWidget *WelcomeBox::MenuBoxFigures(int index) const
{
    return index == TemplatesPage ? m_templates : index == RecentPage ? m_recent
                                                                      : nullptr;
}

void WelcomeBox::templateClicked(int row, int)
{
    if (row < 0 || row >= m_templates->rowCount())
        return;
    const QTableWidgetItem *item = m_templates->item(row, 0);
    if (!item)
        return;
    emit templateChosen(qint16(item->data(TemplateRole).toInt()));
}

void WelcomeBox::documentClicked(int, int column)
{
    if (column < 0 || column >= m_shown.size())
        return;
    emit documentChosen(m_shown.at(column).path);
}

void WelcomeBox::scrollBy(int columns)
{
    QScrollBar *bar = m_recent->horizontalScrollBar();
    bar->setValue(bar->value() + columns);
}

void WelcomeBox::gridScrolled(int leftColumn)
{
    // The bar takes the grid's new left column; the grid repaints once.
    m_recent->setUpdatesEnabled(false);
    m_scrollBar->SetHScrollPosition(leftColumn);
    m_recent->setUpdatesEnabled(true);
}
