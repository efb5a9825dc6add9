#include "workspace/InformationBar.h"

#include "app/Globals.h"
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchTheme.h"

#include <QHBoxLayout>
#include <QLabel>

#include <algorithm>

namespace {

// How long a notice stays in the information bar.
constexpr int NoticeMilliseconds = 10000;

QLabel *makeLabel(QWidget *parent, int pixelSize, bool bold)
{
    auto *label = new QLabel(parent);
    label->setFont(bold ? TouchTheme::titleFont(pixelSize) : TouchTheme::captionFont(pixelSize));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, TouchTheme::ink());
    label->setPalette(palette);
    return label;
}

} // namespace

InformationBar::InformationBar(QWidget *parent)
    : TouchPanel(parent)
    , m_topic(makeLabel(this, 24, true))
    , m_content(makeLabel(this, 22, false))
    , m_close(new TouchButton(QStringLiteral("閉じる"), this))
{
    setObjectName(QStringLiteral("InfoBar"));
    m_topic->setObjectName(QStringLiteral("InfoBarTopic"));
    m_content->setObjectName(QStringLiteral("InfoBarContent"));
    m_content->setWordWrap(true);
    m_contentFont = m_content->font();
    m_close->setObjectName(QStringLiteral("InfoBarHowToMonitor"));
    m_close->setTip(QStringLiteral("クリックすると、説明を閉じます。"));
    connect(m_close, &QAbstractButton::clicked, this, [this] {
        hide();
        update();
        emit closedByUser();
    });
    m_close->setFont(TouchTheme::captionFont(20));
    m_close->setMinimumSize(96, 40);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(18, 0, 8, 0);
    layout->setSpacing(18);
    layout->addWidget(m_topic);
    layout->addWidget(m_content, 1);
    layout->addWidget(m_close);
    hide();

    m_noticeTimer.setSingleShot(true);
    m_noticeTimer.setInterval(NoticeMilliseconds);
    connect(&m_noticeTimer, &QTimer::timeout, this, [this] {
        m_topic->clear();
        m_content->clear();
        hideIfIdle();
    });
}

void InformationBar::followHints(QWidget *root)
{
    for (TouchButton *button : root->findChildren<TouchButton *>()) {
        connect(button, &TouchButton::pointerEntered, this, [this, button] { showHint(button->caption(), button->tip()); });
        connect(button, &TouchButton::pointerLeft, this, [this] { showHint(QString(), QString()); });
    }
    for (TouchEdit *edit : root->findChildren<TouchEdit *>()) {
        connect(edit, &TouchEdit::pointerEntered, this, [this, edit] {
            showHint(edit->caption(), edit->tip().isEmpty() ? edit->prompt() : edit->tip());
        });
        connect(edit, &TouchEdit::pointerLeft, this, [this] { showHint(QString(), QString()); });
    }
}

void InformationBar::showHint(const QString &topic, const QString &content)
{
    if (topic.isEmpty() && content.isEmpty()) {
        // A notice stays until it has been read, whatever the pointer does.
        if (m_noticeTimer.isActive())
            return;
        m_topic->clear();
        m_content->clear();
        hideIfIdle();
        return;
    }
    if (!Globals::HowToOn || content.isEmpty())
        return;
    m_noticeTimer.stop();
    showText(topic, content);
}

void InformationBar::showNotice(const QString &topic, const QString &content)
{
    showText(topic, content);
    m_noticeTimer.start();
}

// With hints off the bar shows only notices: empty, it goes away. Floating
// over a docked pad it shows only while it has something to say.
void InformationBar::hideIfIdle()
{
    if (m_noticeTimer.isActive())
        return;
    if (!Globals::HowToOn || (m_floating && m_topic->text().isEmpty()))
        hide();
}

void InformationBar::setFloating(bool floating)
{
    if (floating == m_floating)
        return;
    m_floating = floating;
    if (m_floating)
        m_stoodBeforeFloating = isVisible();
    hideIfIdle();
    if (!m_floating && m_stoodBeforeFloating && Globals::HowToOn)
        show();
}

void InformationBar::showText(const QString &topic, const QString &content)
{
    m_topic->setText(topic);
    m_content->setText(content);
    show();
    raise();
    fitHint();
    update();
}

void InformationBar::fitHint()
{
    QLayout *box = layout();
    if (!box)
        return;
    box->activate();
    // The label is as tall as its text; the room is all the bar's height.
    const QRect room(0, 0, m_content->contentsRect().width(),
                     contentsRect().height() - box->contentsMargins().top() - box->contentsMargins().bottom());
    if (room.isEmpty())
        return;
    // From the hint's full size: its design size grown with the screen.
    QFont full = m_contentFont;
    full.setPixelSize(qRound(TouchTheme::pixelSize(m_contentFont) * std::max(1.0, m_typeUnit)));
    m_content->setFont(TouchTheme::fittedFont(full, m_content->text(), room, Qt::TextWordWrap | int(m_content->alignment())));
}

void InformationBar::restoreContentFont()
{
    m_content->setFont(m_contentFont);
}

void InformationBar::keepContentFont()
{
    m_contentFont = m_content->font();
}
