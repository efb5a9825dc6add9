// Renders the touch controls the way the workspace uses them and keeps the
// picture (touch-gallery.png beside the test programs, or $LANTERN_GALLERY),
// so their look can be checked by eye. The checks below are the ones a person
// would make on that picture: no caption cut off, the states tell apart.
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchPanel.h"
#include "platform/touch/TouchTheme.h"
#include "tools/FlatScrollBar.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// Simple pictograms drawn here, so the gallery needs no picture files.
QPixmap pictogram(QChar symbol, const QColor &colour)
{
    QPixmap pixmap(96, 96);
    pixmap.setDevicePixelRatio(2.0);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QRectF(2, 2, 44, 44));
    painter.setPen(Qt::white);
    painter.setFont(TouchTheme::titleFont(28));
    painter.drawText(QRectF(2, 0, 44, 46), Qt::AlignCenter, symbol);
    return pixmap;
}

class Backdrop : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QLinearGradient sky(0, 0, 0, height());
        sky.setColorAt(0, QColor(0xF7, 0xE3, 0xC4));
        sky.setColorAt(1, QColor(0xE9, 0xC9, 0x9C));
        painter.fillRect(rect(), sky);
    }
};

} // namespace

class TestTouchGallery : public QObject
{
    Q_OBJECT

private slots:
    void rendersAFriendlyWorkspace();
};

void TestTouchGallery::rendersAFriendlyWorkspace()
{
    Backdrop window;
    window.resize(1480, 820);

    auto *outer = new QVBoxLayout(&window);
    outer->setContentsMargins(24, 20, 24, 20);
    outer->setSpacing(18);

    auto *mainRow = new QHBoxLayout;
    mainRow->setSpacing(14);
    struct Channel
    {
        QString caption;
        QChar symbol;
        QString tip;
    };
    const QList<Channel> channels = {
        {QStringLiteral("終了"), QChar(0x00D7), QStringLiteral("クリックすると、編集したドキュメントを自動保存して終了します。")},
        {QStringLiteral("ヘルプ"), QChar(u'?'), QStringLiteral("クリックすると、ヘルプを参照します。必要であれば、インターネットに接続して最新情報を確認できます。")},
        {QStringLiteral("設定"), QChar(0x2699), QStringLiteral("クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。")},
        {QStringLiteral("文字入力"), QChar(u'あ'), QStringLiteral("クリックすると、[文字入力] ダイアログを開きます。手書きのように文字入力ができるパッドです。")},
        {QStringLiteral("電卓"), QChar(u'='), QStringLiteral("クリックするたびに、[電卓] ダイアログを開いたり閉じたりします。")},
        {QStringLiteral("印刷"), QChar(u'P'), QStringLiteral("クリックすると、表示されているドキュメントを印刷します。まずはプリンタの準備をしておいてください。")},
    };
    QList<TouchButton *> buttons;
    for (const Channel &channel : channels) {
        auto *button = new TouchButton(channel.caption);
        button->setTip(channel.tip);
        button->setPicture(pictogram(channel.symbol, TouchTheme::accent()));
        mainRow->addWidget(button);
        buttons << button;
    }
    buttons.last()->setEnabled(false);
    buttons[4]->setValue(true);
    mainRow->addSpacing(40);

    // One button in each state, side by side, to compare them by eye.
    auto *plainState = new TouchButton(QStringLiteral("ふつう"));
    auto *hoverState = new TouchButton(QStringLiteral("ポイント中"));
    auto *downState = new TouchButton(QStringLiteral("押している"));
    auto *longState = new TouchButton(QStringLiteral("クリックし続けると、後ろへ進んでいきます。"));
    for (TouchButton *button : {plainState, hoverState, downState, longState})
        mainRow->addWidget(button);
    mainRow->addStretch();
    outer->addLayout(mainRow);

    auto *lower = new QHBoxLayout;
    lower->setSpacing(24);

    auto *start = new TouchPanel(QStringLiteral("スタート"));
    start->setDraggable(true);
    auto *startLayout = new QVBoxLayout(start);
    startLayout->setSpacing(12);
    auto *line1 = new QLabel(QStringLiteral("[新規作成] は、新しいドキュメントを表示・編集できます。"));
    auto *line2 = new QLabel(QStringLiteral("[履歴] は、保存されたドキュメントを再び表示・編集できます。"));
    for (QLabel *line : {line1, line2}) {
        line->setFont(TouchTheme::captionFont(20));
        line->setWordWrap(true);
        line->setStyleSheet(QStringLiteral("color: %1;").arg(TouchTheme::ink().name()));
        startLayout->addWidget(line);
    }
    auto *tabs = new QHBoxLayout;
    auto *newTab = new TouchButton(QStringLiteral("新規作成"));
    auto *historyTab = new TouchButton(QStringLiteral("履歴"));
    newTab->setValue(true);
    tabs->addWidget(newTab);
    tabs->addWidget(historyTab);
    startLayout->addLayout(tabs);
    auto *keyword = new TouchEdit;
    keyword->setPrompt(QStringLiteral("検索したいキーワードを入力してください"));
    startLayout->addWidget(keyword);
    auto *close = new TouchButton(QStringLiteral("閉じる"));
    startLayout->addWidget(close, 0, Qt::AlignRight);
    lower->addWidget(start, 3);

    auto *side = new TouchPanel(QStringLiteral("このドキュメント"));
    auto *sideLayout = new QVBoxLayout(side);
    sideLayout->setSpacing(12);
    auto *titleHeading = new QLabel(QStringLiteral("タイトル"));
    titleHeading->setFont(TouchTheme::titleFont(20));
    titleHeading->setStyleSheet(QStringLiteral("color: %1;").arg(TouchTheme::ink().name()));
    sideLayout->addWidget(titleHeading);
    auto *title = new TouchEdit;
    title->setPrompt(QStringLiteral("タイトルを入力してください"));
    sideLayout->addWidget(title);
    auto *named = new TouchEdit;
    named->setText(QStringLiteral("孫への手紙"));
    sideLayout->addWidget(named);
    auto *check = new TouchButton(QStringLiteral("クリックしたら常に [文字入力] で編集する"));
    check->setToggles(true);
    check->setValue(true);
    sideLayout->addWidget(check);
    auto *hints = new TouchButton(QStringLiteral("ポイントした場所のヒントを表示する"));
    hints->setToggles(true);
    sideLayout->addWidget(hints);
    sideLayout->addStretch();
    lower->addWidget(side, 2);

    // A document list with flat scroll bars: the rows scroll, the columns all
    // fit, so that bar stays in sight greyed out.
    auto *recent = new TouchPanel(QStringLiteral("最近使ったドキュメント"));
    recent->setDraggable(true);
    auto *recentLayout = new QVBoxLayout(recent);
    auto *list = new QTableWidget(12, 1);
    list->horizontalHeader()->hide();
    list->verticalHeader()->hide();
    list->setShowGrid(false);
    list->setFont(TouchTheme::captionFont(20));
    list->setFrameShape(QFrame::NoFrame);
    list->setStyleSheet(QStringLiteral("QTableWidget { background: #FFFFFF; border-radius: 8px; color: %1; selection-color: %1;"
                                       " selection-background-color: %2; }")
                            .arg(TouchTheme::ink().name(), TouchTheme::hoverBottom().name()));
    for (int row = 0; row < list->rowCount(); ++row)
        list->setItem(row, 0, new QTableWidgetItem(QStringLiteral("2026年11月%1日の日記").arg(row + 1)));
    list->horizontalHeader()->setStretchLastSection(true);
    list->verticalHeader()->setDefaultSectionSize(40);
    list->selectRow(1);
    recentLayout->addWidget(list);
    lower->addWidget(recent, 2);
    FlatScrollBar flatBars;
    flatBars.SetWindow(list);
    QVERIFY(flatBars.Initialize());

    outer->addLayout(lower, 1);

    // The information bar: a panel without a title showing the hint of the
    // button under the pointer, as the workspace does.
    auto *infoBar = new TouchPanel;
    auto *infoLayout = new QHBoxLayout(infoBar);
    auto *topic = new QLabel;
    topic->setFont(TouchTheme::titleFont(22));
    auto *content = new QLabel;
    content->setFont(TouchTheme::captionFont(20));
    content->setWordWrap(true);
    for (QLabel *label : {topic, content})
        label->setStyleSheet(QStringLiteral("color: %1;").arg(TouchTheme::ink().name()));
    infoLayout->addWidget(topic);
    infoLayout->addWidget(content, 1);
    outer->addWidget(infoBar);
    for (TouchButton *button : buttons) {
        connect(button, &TouchButton::pointerEntered, infoBar, [=] {
            topic->setText(button->caption());
            content->setText(button->tip());
        });
        connect(button, &TouchButton::pointerLeft, infoBar, [=] {
            topic->clear();
            content->clear();
        });
    }

    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QCoreApplication::sendEvent(hoverState, &enter);
    QCoreApplication::sendEvent(buttons[1], &enter);
    QCOMPARE(topic->text(), QStringLiteral("ヘルプ"));
    downState->setDown(true);

    // Laid out by their own size hints, no caption needs to shrink to fit.
    for (TouchButton *button : window.findChildren<TouchButton *>()) {
        QVERIFY2(button->height() >= button->heightForWidth(button->width()) - 1, qPrintable(button->caption()));
        QVERIFY2(button->width() >= button->minimumSizeHint().width(), qPrintable(button->caption()));
    }

    flatBars.Refresh();
    flatBars.HScrollRange(0, 99);
    flatBars.SetHScrollPage(100);
    QCoreApplication::processEvents();
    QVERIFY(list->horizontalScrollBar()->isVisible());
    QVERIFY(!list->horizontalScrollBar()->isEnabled());

    const QImage shot = window.grab().toImage();
    const QString target = qEnvironmentVariableIsSet("LANTERN_GALLERY")
        ? qEnvironmentVariable("LANTERN_GALLERY")
        : QStringLiteral(LANTERN_PROGRAM_DIR "/../tests/touch-gallery.png");
    QVERIFY(shot.save(target));

    // The pressed calculator button, the raised help button and the disabled
    // print button must be told apart at a glance.
    auto faceColour = [&](TouchButton *button) {
        const QPoint probe = button->mapTo(&window, QPoint(10, button->height() - 12));
        return shot.pixelColor(probe);
    };
    const QColor raised = faceColour(buttons[1]);
    const QColor pressed = faceColour(buttons[4]);
    const QColor disabled = faceColour(buttons[5]);
    QVERIFY2(raised != pressed, qPrintable(raised.name() + pressed.name()));
    QVERIFY2(raised != disabled, qPrintable(raised.name() + disabled.name()));
    QVERIFY(pressed.red() > pressed.blue() + 60);

    // Kept on screen on request, for tools that look at the running window
    // from outside (screen readers, test drivers).
    const int hold = qEnvironmentVariableIntValue("LANTERN_GALLERY_HOLD_MS");
    if (hold > 0)
        QTest::qWait(hold);
}

QTEST_MAIN(TestTouchGallery)
#include "test_touchgallery.moc"
