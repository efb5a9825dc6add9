#pragma once

#include "platform/ime/InputMethodFramework.h"

class StatusNotifierWatcher;

// Fcitx 5 with Mozc. On and off go through Fcitx's controller; Mozc's mode is
// the icon of Fcitx's status notifier item (fcitx_mozc_hiragana ...), which
// changes with the focused input context. Where Fcitx shows no item (its
// panel is another), the controller's state tells on or off, and "on" counts
// as hiragana.
//
// Every call names Fcitx's service without starting it: the bus would
// otherwise start a second fcitx5 by activation.
class Fcitx5Framework : public InputMethodFramework
{
    Q_OBJECT

public:
    static const QString Service;

    Fcitx5Framework();

    // The mode an icon name of Fcitx's item stands for.
    static InputMode modeForIcon(const QString &icon);

    Kind kind() const override { return Fcitx5; }
    bool connected() const override;
    InputMode mode() const override;
    bool modeKnown() const override;
    QString engineName() const override;
    QString engineDescription() const override;
    void setOpen(bool open) override;
    // Qt's Fcitx context hands the widget's hints on by itself.
    void updateContentHints(Qt::InputMethodHints hints) override;

private slots:
    void findItem();
    void readIcon();

private:
    static int state();

    QString m_item; // "service/path" of Fcitx's item, empty while none
    StatusNotifierWatcher *m_watcher = nullptr;
};
