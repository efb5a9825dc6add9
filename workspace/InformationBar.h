#pragma once

#include "platform/touch/TouchPanel.h"

#include <QFont>
#include <QTimer>

class QLabel;
class TouchButton;

// The bar along the bottom of the workspace, InfoBar: the caption and hint of
// whatever the pointer rests on while "How-to" is on, and notices that stay
// for a while even with hints off. While a pad is docked it floats over the
// document and shows only while it has something to say.
class InformationBar : public TouchPanel
{
    Q_OBJECT

public:
    explicit InformationBar(QWidget *parent = nullptr);

    QLabel *topic() const { return m_topic; }
    QLabel *content() const { return m_content; }

    // Every button and field under root shows its caption and hint here
    // while the pointer rests on it.
    void followHints(QWidget *root);
    // The pointed control's hint; two empty texts clear the bar (a notice
    // stays until its time is up).
    void showHint(const QString &topic, const QString &content);
    // Shown even with hints off, for long enough to read it.
    void showNotice(const QString &topic, const QString &content);
    // Hides the bar when it has nothing to show in the current mode.
    void hideIfIdle();

    // Docked pads make the bar float over the document; once they go, a bar
    // that stood along the bottom before comes back.
    void setFloating(bool floating);
    bool isFloating() const { return m_floating; }

    // How much larger than designed the workspace's type is drawn.
    void setTypeUnit(double unit) { m_typeUnit = unit; }
    // A long hint takes smaller type rather than losing its last words.
    void fitHint();

    // The hint's type is fitted afresh for each hint from the size the font
    // adapter gives it: forget the fitted size before adapting, take the
    // adapted one as the full size after.
    void restoreContentFont();
    void keepContentFont();

signals:
    // The user closed the bar with its own button.
    void closedByUser();

private:
    void showText(const QString &topic, const QString &content);

    QLabel *m_topic;
    QLabel *m_content;
    QFont m_contentFont;
    TouchButton *m_close;
    QTimer m_noticeTimer;
    double m_typeUnit = 1.0;
    bool m_floating = false;
    bool m_stoodBeforeFloating = false;
};
