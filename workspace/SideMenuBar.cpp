#include "workspace/SideMenuBar.h"

#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchTheme.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

SideMenuBar::SideMenuBar(int index, QWidget *parent)
    : TouchPanel(parent)
    , m_layout(new QVBoxLayout(this))
{
    setObjectName(QStringLiteral("SideMenuBars%1").arg(index));
    setIndex(index);
    m_layout->setSpacing(8);

    if (index == DocumentBar) {
        setCaption(QStringLiteral("このドキュメント"));
        m_layout->addWidget(heading(QStringLiteral("タイトル")));
        m_title = new TouchEdit(this);
        m_title->setObjectName(QStringLiteral("SideMenuBarDescriptions100"));
        m_title->setIndex(100);
        m_title->setCaption(QStringLiteral("タイトル"));
        m_title->setPrompt(QStringLiteral("タイトルを入力してください"));
        m_title->setImeMode(TouchEdit::ImeHiragana);
        m_layout->addWidget(m_title);
        m_layout->addSpacing(8);

        auto *zoom = new QHBoxLayout;
        zoom->addWidget(addButton(ZoomIn, QStringLiteral("拡大"), QStringLiteral("クリックすると、拡大します。")));
        zoom->addWidget(addButton(ZoomOut, QStringLiteral("縮小"), QStringLiteral("クリックすると、縮小します。")));
        m_layout->addLayout(zoom);
        m_layout->addWidget(addButton(Revert, QStringLiteral("元に戻す"),
                                      QStringLiteral("クリックすると、このドキュメントの今までの作業をすべてキャンセルして、保存された状態に復元します。")));
        m_layout->addWidget(addButton(Copy, QStringLiteral("コピー"), QStringLiteral("クリックすると、このドキュメントをコピーします。")));
        m_layout->addWidget(addButton(Delete, QStringLiteral("削除"), QStringLiteral("クリックすると、このドキュメントを削除します。")));
        m_layout->addStretch();
        m_layout->addWidget(addButton(Save, QStringLiteral("保存して閉じる"), QStringLiteral("クリックすると、このドキュメントを保存します。")));
    } else {
        setCaption(QStringLiteral("文字サイズ"));
        auto *size = new QHBoxLayout;
        size->addWidget(addButton(Larger, QStringLiteral("大きく"), QStringLiteral("クリックすると、文字のサイズを大きくします。")));
        size->addWidget(addButton(Smaller, QStringLiteral("小さく"), QStringLiteral("クリックすると、文字のサイズを小さくします。")));
        m_layout->addLayout(size);
        m_layout->addSpacing(8);
        m_layout->addWidget(heading(QStringLiteral("行の揃え")));
        m_layout->addWidget(addButton(AlignLeft, QStringLiteral("左揃え"), QStringLiteral("クリックすると、行を左端に揃えます。")));
        m_layout->addWidget(addButton(AlignCenter, QStringLiteral("中央揃え"), QStringLiteral("クリックすると、行を中央に揃えます。")));
        m_layout->addWidget(addButton(AlignRight, QStringLiteral("右揃え"), QStringLiteral("クリックすると、行を右端に揃えます。")));
        m_layout->addSpacing(8);
        m_layout->addWidget(addButton(Bullet, QStringLiteral("行頭に記号"), QStringLiteral("クリックしてチェックすると、行の始めに記号を付けます。")));
        m_layout->addWidget(addButton(Timestamp, QStringLiteral("日付を入れる"), QStringLiteral("クリックすると、指定した場所にタイムスタンプを挿入します。")));
        m_layout->addStretch();
    }
}

QLabel *SideMenuBar::heading(const QString &text)
{
    auto *label = new QLabel(text, this);
    label->setObjectName(QStringLiteral("SideMenuBarTopics"));
    label->setFont(TouchTheme::titleFont(22));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, TouchTheme::ink());
    label->setPalette(palette);
    return label;
}

TouchButton *SideMenuBar::addButton(int index, const QString &caption, const QString &tip)
{
    auto *button = new TouchButton(caption, this);
    button->setObjectName(QStringLiteral("SideMenuBarMiniChannels%1").arg(index));
    button->setIndex(index);
    button->setTip(tip);
    button->setMinimumHeight(56);
    m_buttons.append(button);
    connect(button, &QAbstractButton::clicked, this, [this, index] { emit buttonClicked(index); });
    return button;
}

TouchButton *SideMenuBar::SideMenuBarMiniChannels(int index) const
{
    for (TouchButton *button : m_buttons) {
        if (button->index() == index)
            return button;
    }
    return nullptr;
}
