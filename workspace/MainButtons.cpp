#include "workspace/MainButtons.h"

#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchTheme.h"

namespace {

struct ChannelText
{
    const char16_t *caption;
    const char16_t *tip;
};

// By index.
const ChannelText ChannelTexts[] = {
    {u"製品情報", u"Fernwick Nib 2007 バージョン 1.0　かんたん文書作成ソフト"},
    {u"電源を切る", u"クリックすると、編集したドキュメントを自動保存してコンピュータの電源を切ります。電源をつけると再び起動します。"},
    {u"終了", u"クリックすると、編集したドキュメントを自動保存して終了します。"},
    {u"ヘルプ", u"クリックすると、ヘルプを参照します。必要であれば、インターネットに接続して最新情報を確認できます。"},
    {u"設定", u"クリックすると、[設定] ウィンドウを開きます。背景とユーザー補助の情報を変更できます。"},
    {u"音楽", u"クリックするたびに、音楽・効果音を再生するかどうかを選択します。"},
    {u"アニメ", u"クリックするたびに、音声付きアニメーションを再生するかどうかを選択します。"},
    {u"印刷", u"クリックすると、表示されているドキュメントを印刷します。まずはプリンタの準備をしておいてください。"},
    {u"電卓", u"クリックするたびに、[電卓] ダイアログを開いたり閉じたりします。"},
    {u"文字入力", u"クリックすると、[文字入力] ダイアログを開きます。手書きのように文字入力ができるパッドです。"},
};

} // namespace

QList<TouchButton *> MainButtons::build(QWidget *parent)
{
    QList<TouchButton *> buttons;
    for (int index = 0; index < int(std::size(ChannelTexts)); ++index) {
        auto *button = new TouchButton(QString::fromUtf16(ChannelTexts[index].caption), parent);
        button->setObjectName(QStringLiteral("Channels%1").arg(index));
        button->setIndex(index);
        button->setTip(QString::fromUtf16(ChannelTexts[index].tip));
        button->setFont(TouchTheme::captionFont(26));
        buttons.append(button);
    }
    return buttons;
}
