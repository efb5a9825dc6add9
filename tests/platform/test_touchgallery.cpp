// Renders the touch controls the way the workspace uses them and keeps the
// picture (touch-gallery.png beside the test programs, or $LANTERN_GALLERY),
// so their look can be checked by eye. The checks below are the ones a person
// would make on that picture: no caption cut off, the states tell apart.
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchEdit.h"
#include "platform/touch/TouchPanel.h"
#include "platform/touch/TouchTheme.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
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
    window.resize(1100, 720);

    auto *outer = new QVBoxLayout(&window);
    outer->setContentsMargins(24, 20, 24, 20);
    outer->setSpacing(18);

    auto *mainRow = new QHBoxLayout;
    mainRow->setSpacing(14);
    const QList<std::pair<QString, QChar>> channels = {
        {QStringLiteral("終了"), QChar(0x00D7)},
        {QStringLiteral("ヘルプ"), QChar(u'?')},
        {QStringLiteral("設定"), QChar(0x2699)},
        {QStringLiteral("文字入力"), QChar(u'あ')},
        {QStringLiteral("電卓"), QChar(u'=')},
        {QStringLiteral("印刷"), QChar(u'P')},
    };
    QList<TouchButton *> buttons;
    for (const auto &[caption, symbol] : channels) {
        auto *button = new TouchButton(caption);
        button->setPicture(pictogram(symbol, TouchTheme::accent()));
        mainRow->addWidget(button);
        buttons << button;
    }
    buttons.last()->setEnabled(false);
    buttons[4]->setValue(true);
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

    outer->addLayout(lower, 1);

    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    // Laid out by their own size hints, no caption needs to shrink to fit.
    for (TouchButton *button : window.findChildren<TouchButton *>()) {
        QVERIFY2(button->height() >= button->heightForWidth(button->width()) - 1, qPrintable(button->caption()));
        QVERIFY2(button->width() >= button->minimumSizeHint().width(), qPrintable(button->caption()));
    }

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
}

QTEST_MAIN(TestTouchGallery)
#include "test_touchgallery.moc"
