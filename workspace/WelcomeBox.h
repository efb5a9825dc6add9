#pragma once

#include "platform/touch/TouchPanel.h"
#include "workspace/RecentDocuments.h"

#include <QDateTime>
#include <QList>

#include <optional>

class FlatScrollBar;
class QLabel;
class QTableWidget;
class TouchButton;
class TouchEdit;

// The welcome box "スタート": two tabs, [新規作成] with the templates and [履歴]
// with the recently used documents, a keyword search over the documents and
// buttons that scroll the list. Choosing an entry is reported to the window,
// which opens the document.
class WelcomeBox : public TouchPanel
{
    Q_OBJECT

public:
    // Indices of the box's buttons, pages and grids.
    static constexpr int TemplatesPage = 200;
    static constexpr int RecentPage = 201;
    static constexpr int TemplatesTab = 204;
    static constexpr int RecentTab = 205;
    static constexpr int CloseButton = 206;
    static constexpr int SearchButton = 207;
    static constexpr int BackButton = 208;
    static constexpr int ForwardButton = 209;

    explicit WelcomeBox(QWidget *parent = nullptr);

    // Reads the document folder again and fills both lists.
    void fillLists();
    // Fills the recent list with the documents holding the keyword.
    void search();

    // A tab was clicked: shows page 200 for 204 and 201 for 205, and presses
    // that one tab alone.
    void MenuBoxMiniChannels_Click(int index);

    // The page that is shown (200 or 201).
    int shownPage() const;

    TouchButton *MenuBoxMiniChannels(int index) const;
    QWidget *MenuBoxPages(int index) const;
    QTableWidget *MenuBoxFigures(int index) const;
    TouchEdit *keywordField() const { return m_keyword; }
    FlatScrollBar *scrollBar() const { return m_scrollBar; }

    // The listed documents, in the order of the recent grid's columns.
    const QList<RecentDocuments::Entry> &shownDocuments() const { return m_shown; }

    // The time against which the list decides between time and date.
    void setNow(const QDateTime &now) { m_now = now; }

    // Lays the box out for its size.
    void setBoxSize(const QSize &size);

    // Offers back the text of a document that was not saved when the
    // program last ended (its title, perhaps empty); nothing hides the offer.
    void offerLeftBehind(const std::optional<QString> &title);
    TouchButton *leftBehindButton() const { return m_leftBehindButton; }

signals:
    void templateChosen(qint16 templateNumber);
    void documentChosen(const QString &path);
    void leftBehindChosen();
    void closeRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fitRecentGrid();
    QWidget *buildTemplatesPage();
    QWidget *buildRecentPage();
    TouchButton *addButton(int index, const QString &caption, const QString &tip);
    void fillTemplates();
    void fillRecent(const QList<RecentDocuments::Entry> &entries);
    void templateClicked(int row, int column);
    void documentClicked(int row, int column);
    void scrollBy(int columns);
    void gridScrolled(int leftColumn);

    QList<TouchButton *> m_buttons;
    QWidget *m_leftBehind = nullptr;
    QLabel *m_leftBehindText = nullptr;
    TouchButton *m_leftBehindButton = nullptr;
    QWidget *m_pages[2] = {nullptr, nullptr};
    QTableWidget *m_templates = nullptr;
    QTableWidget *m_recent = nullptr;
    TouchEdit *m_keyword = nullptr;
    FlatScrollBar *m_scrollBar = nullptr;
    QList<RecentDocuments::Entry> m_all;
    QList<RecentDocuments::Entry> m_shown;
    QDateTime m_now;
};
