#pragma once

#include <QWidget>

class InfoDlg;
class Printing;

// The program's single full-screen main window.
class Workspace : public QWidget
{
    Q_OBJECT

public:
    explicit Workspace(QWidget *parent = nullptr);
    ~Workspace() override;

    void setInfoDlg(InfoDlg *dialog);
    InfoDlg *infoDlg() const { return m_infoDlg; }
    void setPrinting(Printing *printing);
    Printing *printing() const { return m_printing; }

    void Reload();
    void ApplySetting();
    void Start();

signals:
    // The window has unloaded: the settings are saved.
    void unloaded();

protected:
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void Unload();

    InfoDlg *m_infoDlg = nullptr;
    Printing *m_printing = nullptr;
    bool m_unloaded = false;
    bool m_linkedFontNow = false;
};
